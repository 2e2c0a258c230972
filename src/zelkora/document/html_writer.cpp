// write_html: a report Document as one UTF-8 HTML5 file with its styles
// inline: the page header on top, the blocks as paragraphs, headings, tables
// and inline SVG figures, the grade symbols in the project's font (embedded
// as a data: URL) or as the letters A to D, and an @page rule for printing.
// The body is well-formed XML too (void elements closed, no named entities).
#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "zelkora/document/figure_emf.h"
#include "zelkora/document/writer_support.h"
#include "zelkora/document/writers.h"
#include "zelkora/document/xml_text.h"
#include "zelkora/platform/grade_font.h"

namespace zelkora::document {

namespace {

// ---- Text ---------------------------------------------------------------------

// The text as HTML character data (or an attribute value).
void append_text(std::string& out, TextView text) { append_xml_text(out, text); }

// A grade-symbol run: the symbols in the grade font, or their letters when
// the library has no font to embed.
void append_grade_symbols(std::string& out, TextView text, bool have_font) {
  if (have_font) out += "<span class=\"g\">";
  for (char16_t c : text) {
    const char16_t letter = grade_letter(c);
    if (letter && !have_font) {
      out += static_cast<char>(letter);
    } else {
      append_text(out, TextView(&c, 1));
    }
  }
  if (have_font) out += "</span>";
}

void append_run(std::string& out, const Run& run, bool have_font) {
  const char* tag = run.script == Script::kSubscript     ? "sub"
                    : run.script == Script::kSuperscript ? "sup"
                                                         : nullptr;
  if (run.bold) out += "<b>";
  if (tag) (out += '<', out += tag, out += '>');
  if (run.grade_symbol) {
    append_grade_symbols(out, run.text, have_font);
  } else {
    append_text(out, run.text);
  }
  if (tag) (out += "</", out += tag, out += '>');
  if (run.bold) out += "</b>";
}

void append_runs(std::string& out, const std::vector<Run>& runs, bool have_font) {
  for (const Run& run : runs) append_run(out, run, have_font);
}

const char* align_class(Align align) {
  switch (sane_align(align)) {
    case Align::kCenter:
      return "c";
    case Align::kRight:
      return "r";
    default:
      return "l";
  }
}

// ---- The head --------------------------------------------------------------------

void append_base64(std::string& out, std::string_view bytes) {
  static constexpr char kDigits[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::size_t i = 0;
  for (; i + 2 < bytes.size(); i += 3) {
    const unsigned v = static_cast<unsigned char>(bytes[i]) << 16 |
                       static_cast<unsigned char>(bytes[i + 1]) << 8 |
                       static_cast<unsigned char>(bytes[i + 2]);
    for (int shift : {18, 12, 6, 0}) out += kDigits[(v >> shift) & 63];
  }
  if (i == bytes.size()) return;
  const bool two = i + 1 < bytes.size();
  const unsigned v = static_cast<unsigned char>(bytes[i]) << 16 |
                     (two ? static_cast<unsigned char>(bytes[i + 1]) << 8 : 0);
  out += kDigits[(v >> 18) & 63];
  out += kDigits[(v >> 12) & 63];
  out += two ? kDigits[(v >> 6) & 63] : '=';
  out += '=';
}

bool has_grade_symbols(const std::vector<Run>& runs) {
  return std::any_of(runs.begin(), runs.end(), [](const Run& run) { return run.grade_symbol; });
}

bool has_grade_symbols(const Document& document) {
  for (const Block& block : document.blocks) {
    if (const auto* paragraph = std::get_if<Paragraph>(&block)) {
      if (has_grade_symbols(paragraph->runs)) return true;
    } else if (const auto* table = std::get_if<Table>(&block)) {
      for (const auto& row : table->rows) {
        for (const auto& cell : row) {
          if (has_grade_symbols(cell)) return true;
        }
      }
    }
  }
  return false;
}

void append_font_face(std::string& out, std::string_view ttf) {
  out += "@font-face{font-family:\"";
  out += platform::kGradeFontFamily;
  out += "\";src:url(data:font/ttf;base64,";
  append_base64(out, ttf);
  out += ") format(\"truetype\")}\n";
}

void append_page_rule(std::string& out, const PageSetup& page) {
  out += "@page{size:" + decimal(page.width_mm) + "mm " + decimal(page.height_mm) + "mm;";
  out += "margin:" + decimal(page.top_mm) + "mm " + decimal(page.right_mm) + "mm " +
         decimal(page.bottom_mm) + "mm " + decimal(page.left_mm) + "mm;";
  out += "@bottom-center{font-size:9pt;content:\"";
  append_text(out, kFooterPage);
  out += "\" counter(page) \"";
  append_text(out, kFooterOf);
  out += "\" counter(pages) \"";
  append_text(out, kFooterEnd);
  out += "\"}}\n";
}

// The style sheet. "$body", "$h1", "$title", "$width" and "$grade" stand for
// the body font's size, the level-1 heading's and the title's (points), the
// text's width (mm) and the grade font's family.
constexpr std::string_view kStyleSheet =
    R"(body{margin:1em auto;max-width:$widthmm;font-family:"Times New Roman","宋体",SimSun,"Noto Serif CJK SC",serif;font-size:$bodypt;line-height:1.5;color:#000;background:#fff}
@media print{body{margin:0;max-width:none}}
p,h1,h2,h3{margin:0;white-space:pre-wrap;font-size:$bodypt}
h1{font-size:$h1pt}
h1.title{text-align:center;font-size:$titlept}
header.page{display:flex;justify-content:space-between;gap:2em;font-size:9pt;border-bottom:1px solid #000;margin-bottom:1em}
hr{border:0;border-top:1px solid #000;margin:0.25em 0}
table{border-collapse:collapse}
td,th{border:1px solid #000;padding:0 0.3em;white-space:pre-wrap;font-weight:normal;vertical-align:top}
thead th{font-weight:bold}
.l{text-align:left}.c{text-align:center}.r{text-align:right}
.g{font-family:"$grade"}
figure{margin:0.5em 0;text-align:center}
)";

void append_style(std::string& out, const PageSetup& page, bool grade_font) {
  const std::pair<std::string_view, std::string> values[] = {
      {"$body", decimal(page.font_pt, 2)},
      {"$h1", decimal(page.font_pt * 8 / 7, 2)},      // 五号 → 小四
      {"$title", decimal(page.font_pt * 10 / 7, 2)},  // 五号 → 小三
      {"$width", decimal(page.width_mm - page.left_mm - page.right_mm)},
      {"$grade", platform::kGradeFontFamily},
  };
  out += "<style>\n";
  if (grade_font) append_font_face(out, platform::grade_font_ttf());
  append_page_rule(out, page);
  std::string_view rest = kStyleSheet;
  for (std::size_t at = rest.find('$'); at != std::string_view::npos; at = rest.find('$')) {
    out += rest.substr(0, at);
    rest.remove_prefix(at);
    for (const auto& [name, value] : values) {
      if (!rest.starts_with(name)) continue;
      out += value;
      rest.remove_prefix(name.size());
      break;
    }
  }
  out += rest;
  out += "</style>\n";
}

void append_head(std::string& out, const Document& document, const PageSetup& page,
                 bool grade_font) {
  out += "<!DOCTYPE html>\n<html lang=\"zh-CN\">\n<head>\n<meta charset=\"utf-8\"/>\n<title>";
  append_text(out, document.title);
  out += "</title>\n";
  append_style(out, page, grade_font);
  out += "</head>\n";
}

void append_page_header(std::string& out, const Document& document) {
  out += "<header class=\"page\"><span>";
  append_text(out, document.program);
  out += "</span> <span>";  // a blank for readers without flex boxes
  append_text(out, document.project);
  out += "</span></header>\n";
}

// ---- Blocks -------------------------------------------------------------------------

// The length of display cells: a cell is half the body font. In points, which
// every reader of HTML knows (LibreOffice's import, Qt's rich text).
std::string cells_length(int cells, double font_pt) {
  return decimal(std::clamp(cells, 0, 400) * font_pt / 2, 2) + "pt";
}

// ` style="margin-left:…pt"` for an indent of display cells, or nothing.
void append_indent(std::string& out, int cells, double font_pt) {
  if (cells <= 0) return;
  out += " style=\"margin-left:" + cells_length(cells, font_pt) + '"';
}

void append_paragraph(std::string& out, const Paragraph& paragraph, double font_pt,
                      bool have_font) {
  std::string tag = "p";
  std::string attributes;
  switch (paragraph.kind) {
    case Paragraph::Kind::kTitle:
      tag = "h1";
      attributes = " class=\"title\"";
      break;
    case Paragraph::Kind::kHeading:
      tag = "h" + std::to_string(heading_level(paragraph));
      break;
    case Paragraph::Kind::kRule:
      out += "<hr/>\n";
      return;
    default:
      break;
  }
  if (paragraph.kind != Paragraph::Kind::kTitle && sane_align(paragraph.align) != Align::kLeft) {
    attributes = std::string(" class=\"") + align_class(paragraph.align) + "\"";
  }
  append_indent(attributes, paragraph.indent, font_pt);
  out += '<' + tag + attributes + '>';
  append_runs(out, paragraph.runs, have_font);
  if (runs_width(paragraph.runs) == 0) out += "<br/>";  // an empty line keeps its height
  out += "</" + tag + ">\n";
}

void append_signature(std::string& out, const Signature& signature) {
  out += "<p class=\"signature\">";
  bool first = true;
  for (const SignatureField& field : signature_fields(signature)) {
    if (!first) append_text(out, kSignatureGap);
    first = false;
    append_text(out, field.caption);
    if (field.value.empty()) {
      out += "<u class=\"blank\">";
      for (int i = 0; i < kSignatureBlankCells; ++i) out += "&#160;";
      out += "</u>";
    } else {
      append_text(out, field.value);
    }
  }
  out += "</p>\n";
}

void append_row(std::string& out, const std::vector<std::vector<Run>>& row,
                const std::vector<Column>& columns, const char* cell_tag, bool have_font) {
  out += "<tr>";
  for (std::size_t c = 0; c < columns.size(); ++c) {
    out += '<';
    out += cell_tag;
    out += " class=\"";
    out += align_class(columns[c].align);
    out += "\">";
    if (c < row.size()) append_runs(out, row[c], have_font);
    out += "</";
    out += cell_tag;
    out += '>';
  }
  out += "</tr>\n";
}

// The border attributes are for readers without CSS tables (a rich-text view).
void append_table(std::string& out, const Table& table, double font_pt, bool have_font) {
  const std::vector<Column> columns = table_columns(table);
  if (columns.empty()) return;
  out += "<table border=\"1\" cellspacing=\"0\" cellpadding=\"2\"";
  append_indent(out, table_indent(table), font_pt);
  out += ">\n<colgroup>";
  for (const Column& column : columns) {
    // one display cell more than the text, for the proportional fonts
    out += "<col style=\"width:" + cells_length(column.width + 1, font_pt) + "\"/>";
  }
  out += "</colgroup>\n";
  std::size_t first_body_row = 0;
  if (table.header && !table.rows.empty()) {
    out += "<thead>";
    append_row(out, table.rows[0], columns, "th", have_font);
    out += "</thead>\n";
    first_body_row = 1;
  }
  out += "<tbody>\n";
  for (std::size_t r = first_body_row; r < table.rows.size(); ++r) {
    append_row(out, table.rows[r], columns, "td", have_font);
  }
  out += "</tbody>\n</table>\n";
}

// ---- Figures ------------------------------------------------------------------------

std::string colour_text(Colour colour) {
  static constexpr char kHex[] = "0123456789abcdef";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) text += kHex[(colour >> shift) & 15];
  return text;
}

std::string mm(double value) {
  return decimal(std::clamp(std::isfinite(value) ? value : 0, -1e6, 1e6));
}

void append_attribute(std::string& out, const char* name, const std::string& value) {
  out += ' ';
  out += name;
  out += "=\"";
  out += value;
  out += '"';
}

void append_paint(std::string& out, const Shape& shape) {
  append_attribute(out, "fill", shape.fill ? colour_text(*shape.fill) : "none");
  const bool stroked = std::isfinite(shape.stroke_mm) && shape.stroke_mm > 0;
  append_attribute(out, "stroke", stroked ? colour_text(shape.stroke) : "none");
  if (stroked) append_attribute(out, "stroke-width", mm(shape.stroke_mm));
}

std::string points_text(const std::vector<double>& points) {
  std::string text;
  for (std::size_t i = 0; i + 1 < points.size(); i += 2) {
    if (!text.empty()) text += ' ';
    text += mm(points[i]) + ',' + mm(points[i + 1]);
  }
  return text;
}

void append_box_shape(std::string& out, const Shape& shape) {
  const auto& p = shape.points;
  const double x0 = std::min(p[0], p[2]), x1 = std::max(p[0], p[2]);
  const double y0 = std::min(p[1], p[3]), y1 = std::max(p[1], p[3]);
  if (shape.kind == Shape::Kind::kRect) {
    out += "<rect";
    append_attribute(out, "x", mm(x0));
    append_attribute(out, "y", mm(y0));
    append_attribute(out, "width", mm(x1 - x0));
    append_attribute(out, "height", mm(y1 - y0));
  } else {
    out += "<ellipse";
    append_attribute(out, "cx", mm((x0 + x1) / 2));
    append_attribute(out, "cy", mm((y0 + y1) / 2));
    append_attribute(out, "rx", mm((x1 - x0) / 2));
    append_attribute(out, "ry", mm((y1 - y0) / 2));
  }
}

void append_text_shape(std::string& out, const Shape& shape) {
  const char* anchor = shape.text_align == Align::kLeft    ? "start"
                       : shape.text_align == Align::kRight ? "end"
                                                           : "middle";
  out += "<text";
  append_attribute(out, "x", mm(shape.points[0]));
  append_attribute(out, "y", mm(shape.points[1]));
  append_attribute(out, "font-size", mm(std::clamp(shape.text_mm, 0.1, 1000.0)));
  append_attribute(out, "text-anchor", anchor);
  append_attribute(out, "fill", colour_text(shape.stroke));  // as in the metafile
  append_attribute(out, "stroke", "none");
  out += '>';
  append_text(out, shape.text);
  out += "</text>\n";
}

void append_shape(std::string& out, const Shape& shape) {
  const auto& p = shape.points;
  switch (shape.kind) {
    case Shape::Kind::kText:
      if (p.size() >= 2) append_text_shape(out, shape);
      return;
    case Shape::Kind::kLine:
      if (p.size() < 4) return;
      out += "<line";
      append_attribute(out, "x1", mm(p[0]));
      append_attribute(out, "y1", mm(p[1]));
      append_attribute(out, "x2", mm(p[2]));
      append_attribute(out, "y2", mm(p[3]));
      break;
    case Shape::Kind::kRect:
    case Shape::Kind::kEllipse:
      if (p.size() < 4) return;
      append_box_shape(out, shape);
      break;
    case Shape::Kind::kPolyline:
    case Shape::Kind::kPolygon:
      if (p.size() < 4) return;
      out += shape.kind == Shape::Kind::kPolygon ? "<polygon" : "<polyline";
      append_attribute(out, "points", points_text(p));
      break;
    default:
      return;
  }
  append_paint(out, shape);
  out += "/>\n";
}

void append_figure(std::string& out, const Figure& figure) {
  const std::string width = mm(figure_side_mm(figure.width_mm));
  const std::string height = mm(figure_side_mm(figure.height_mm));
  out += "<figure>\n<svg xmlns=\"http://www.w3.org/2000/svg\"";
  append_attribute(out, "width", width + "mm");
  append_attribute(out, "height", height + "mm");
  append_attribute(out, "viewBox", "0 0 " + width + ' ' + height);
  out += ">\n";
  for (const Shape& shape : figure.shapes) append_shape(out, shape);
  out += "</svg>\n<figcaption>";
  append_text(out, figure.caption);
  out += "</figcaption>\n</figure>\n";
}

void append_block(std::string& out, const Block& block, double font_pt, bool have_font) {
  if (const auto* paragraph = std::get_if<Paragraph>(&block)) {
    append_paragraph(out, *paragraph, font_pt, have_font);
  } else if (const auto* table = std::get_if<Table>(&block)) {
    append_table(out, *table, font_pt, have_font);
  } else if (const auto* figure = std::get_if<Figure>(&block)) {
    append_figure(out, *figure);
  }
}

}  // namespace

std::string write_html(const Document& document) {
  const PageSetup page = sane_page(document.page);
  const bool grade_font = !platform::grade_font_ttf().empty() && has_grade_symbols(document);
  std::string out;
  out.reserve(8192 + document.blocks.size() * 120);
  append_head(out, document, page, grade_font);
  out += "<body>\n";
  append_page_header(out, document);
  out += "<main>\n";
  const std::size_t signature_at = signature_position(document.blocks);
  for (std::size_t i = 0; i <= document.blocks.size(); ++i) {
    if (i == signature_at) append_signature(out, document.signature);
    if (i < document.blocks.size()) append_block(out, document.blocks[i], page.font_pt, grade_font);
  }
  out += "</main>\n</body>\n</html>\n";
  return out;
}

}  // namespace zelkora::document
