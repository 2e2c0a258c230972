// write_docx: a Document as Office Open XML WordprocessingML in a ZIP
// container. The parts:
//
//   [Content_Types].xml, _rels/.rels, docProps/core.xml (the title)
//   word/document.xml         the blocks, the signature block, the section
//   word/styles.xml           Normal (宋体 / Times New Roman at the page's
//                             size), Title, Heading1-3 with outline levels,
//                             Equation, Caption, Header, Footer, ReportTable
//   word/settings.xml, word/fontTable.xml (+ its rels and the embedded
//                             grade font, obfuscated, when the library has it)
//   word/header1.xml          program left, project right, a rule below
//   word/footer1.xml          "第 {PAGE} 页 共 {NUMPAGES} 页", centred
//   word/media/figureN.emf    the figures
//
// Lengths: one display cell is half the body font's size; Word counts in
// twips (1/20 pt), DrawingML in EMU (36,000 to the millimetre).
#include <algorithm>
#include <cctype>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "zelkora/document/figure_emf.h"
#include "zelkora/document/writers.h"
#include "zelkora/document/xml_text.h"
#include "zelkora/document/zip_container.h"
#include "zelkora/platform/grade_font.h"

namespace zelkora::document {

namespace {

constexpr std::string_view kXmlDeclaration =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr std::string_view kWordNamespaces =
    " xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\""
    " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"";
constexpr std::string_view kDrawingNamespaces =
    " xmlns:wp=\"http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing\""
    " xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\""
    " xmlns:pic=\"http://schemas.openxmlformats.org/drawingml/2006/picture\"";
constexpr std::string_view kRelationshipType =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

constexpr std::string_view kEastAsianFont = "宋体";
constexpr std::string_view kWesternFont = "Times New Roman";
// The embedded font's key: any GUID; a fixed one keeps the output the same.
constexpr std::string_view kFontKey = "{6F1C2B7A-94D3-4E05-8A61-3C2E9B0D5F47}";
constexpr int kCellMargin = 57;  // twips, about 1 mm each side of a cell's text
constexpr int kBlankCells = 12;  // the underlined blank to sign on
constexpr double kEmuPerMm = 36000;

// The relationship ids of word/document.xml.
constexpr std::string_view kStylesId = "rIdStyles";
constexpr std::string_view kSettingsId = "rIdSettings";
constexpr std::string_view kFontTableId = "rIdFonts";
constexpr std::string_view kHeaderId = "rIdHeader";
constexpr std::string_view kFooterId = "rIdFooter";

// ---- Numbers --------------------------------------------------------------

double finite_in(double v, double low, double high, double fallback) {
  return std::isfinite(v) ? std::clamp(v, low, high) : fallback;
}

int twips_of_mm(double mm) { return static_cast<int>(std::lround(mm * 1440 / 25.4)); }

void append_int(std::string& out, long long v) { out += std::to_string(v); }

// The page in twips and the body font, every value within what Word takes.
struct Layout {
  double font_pt = 10.5;
  int page_width = 0, page_height = 0;
  int top = 0, bottom = 0, left = 0, right = 0;

  int text_width() const { return std::max(page_width - left - right, 1440); }
  // Display cells to twips: a cell is half the font's size.
  int cells(int n) const { return static_cast<int>(std::lround(n * font_pt * 10)); }
  int half_points(double scale = 1) const {
    return static_cast<int>(std::lround(font_pt * 2 * scale));
  }
};

Layout layout_of(const PageSetup& page) {
  Layout l;
  l.font_pt = finite_in(page.font_pt, 5, 72, 10.5);
  const double width = finite_in(page.width_mm, 50, 558, 210);
  const double height = finite_in(page.height_mm, 50, 558, 297);
  l.page_width = twips_of_mm(width);
  l.page_height = twips_of_mm(height);
  l.top = twips_of_mm(finite_in(page.top_mm, 0, height / 3, 25));
  l.bottom = twips_of_mm(finite_in(page.bottom_mm, 0, height / 3, 20));
  l.left = twips_of_mm(finite_in(page.left_mm, 0, width / 3, 25));
  l.right = twips_of_mm(finite_in(page.right_mm, 0, width / 3, 20));
  return l;
}

// ---- Runs -------------------------------------------------------------------

void append_fonts(std::string& out, std::string_view family) {
  out += "<w:rFonts w:ascii=\"";
  out += family;
  out += "\" w:hAnsi=\"";
  out += family;
  out += "\" w:eastAsia=\"";
  out += family;
  out += "\" w:cs=\"";
  out += family;
  out += "\"/>";
}

// The text of a run: w:t pieces, a tab as w:tab.
void append_run_text(std::string& out, TextView text) {
  while (!text.empty()) {
    const std::size_t tab = text.find(u'\t');
    const TextView piece = text.substr(0, tab);
    if (!piece.empty()) {
      out += "<w:t xml:space=\"preserve\">";
      append_xml_text(out, piece);
      out += "</w:t>";
    }
    if (tab == TextView::npos) break;
    out += "<w:tab/>";
    text.remove_prefix(tab + 1);
  }
}

void append_run(std::string& out, const Run& run) {
  if (run.text.empty()) return;
  out += "<w:r>";
  if (run.grade_symbol || run.bold || run.script != Script::kNormal) {
    out += "<w:rPr>";
    if (run.grade_symbol) append_fonts(out, platform::kGradeFontFamily);
    if (run.bold) out += "<w:b/><w:bCs/>";
    if (run.script == Script::kSuperscript) out += "<w:vertAlign w:val=\"superscript\"/>";
    if (run.script == Script::kSubscript) out += "<w:vertAlign w:val=\"subscript\"/>";
    out += "</w:rPr>";
  }
  append_run_text(out, run.text);
  out += "</w:r>";
}

void append_runs(std::string& out, const std::vector<Run>& runs) {
  for (const Run& run : runs) append_run(out, run);
}

// A run of plain text, or an underlined blank to write on when it is empty.
void append_field_text(std::string& out, TextView text) {
  if (!text.empty()) {
    append_run(out, Run{.text = Text(text)});
    return;
  }
  out += "<w:r><w:rPr><w:u w:val=\"single\"/></w:rPr><w:t xml:space=\"preserve\">";
  out.append(kBlankCells, ' ');
  out += "</w:t></w:r>";
}

// ---- Paragraphs -------------------------------------------------------------

std::string_view jc_of(Align align) {
  switch (align) {
    case Align::kCenter:
      return "center";
    case Align::kRight:
      return "right";
    case Align::kLeft:
      break;
  }
  return "left";
}

void append_style(std::string& out, std::string_view style) {
  out += "<w:pStyle w:val=\"";
  out += style;
  out += "\"/>";
}

void append_indent(std::string& out, const Layout& layout, int indent_cells) {
  const int cells = std::clamp(indent_cells, 0, 400);
  if (cells == 0) return;
  out += "<w:ind w:left=\"";
  append_int(out, layout.cells(cells));
  out += "\"/>";
}

void append_paragraph(std::string& out, const Paragraph& p, const Layout& layout) {
  using Kind = Paragraph::Kind;
  out += "<w:p><w:pPr>";
  switch (p.kind) {
    case Kind::kTitle:
      append_style(out, "Title");
      break;
    case Kind::kHeading: {
      const char level = static_cast<char>('0' + std::clamp(p.level, 1, 3));
      append_style(out, std::string("Heading") + level);
      break;
    }
    case Kind::kEquation:
      append_style(out, "Equation");
      break;
    case Kind::kRule:
      append_style(out, "Rule");
      break;
    case Kind::kText:
      break;
  }
  if (p.kind != Kind::kTitle) {
    append_indent(out, layout, p.indent);
    if (p.align != Align::kLeft) {
      out += "<w:jc w:val=\"";
      out += jc_of(p.align);
      out += "\"/>";
    }
  }
  out += "</w:pPr>";
  if (p.kind != Kind::kRule) append_runs(out, p.runs);  // the rule is the border
  out += "</w:p>";
}

// ---- Tables -----------------------------------------------------------------

void append_cell(std::string& out, int width, std::string_view jc, const std::vector<Run>* runs) {
  out += "<w:tc><w:tcPr><w:tcW w:w=\"";
  append_int(out, width);
  out += "\" w:type=\"dxa\"/></w:tcPr><w:p><w:pPr><w:jc w:val=\"";
  out += jc;
  out += "\"/></w:pPr>";
  if (runs) append_runs(out, *runs);
  out += "</w:p></w:tc>";
}

void append_table_width(std::string& out, const std::vector<int>& widths) {
  long long total = 0;
  for (int w : widths) total += w;
  out += "<w:tblW w:w=\"";
  append_int(out, total);
  out += "\" w:type=\"dxa\"/>";
}

void append_grid_columns(std::string& out, const std::vector<int>& widths) {
  out += "<w:tblGrid>";
  for (int w : widths) {
    out += "<w:gridCol w:w=\"";
    append_int(out, w);
    out += "\"/>";
  }
  out += "</w:tblGrid>";
}

// Writes nothing and answers false for a table without rows or columns.
bool append_table(std::string& out, const Table& table, const Layout& layout) {
  std::size_t columns = std::max(table.align.size(), table.widths.size());
  for (const auto& row : table.rows) columns = std::max(columns, row.size());
  if (table.rows.empty() || columns == 0) return false;
  std::vector<int> widths(columns);
  long long total = 0;
  for (std::size_t c = 0; c < columns; ++c) {
    const int cells = c < table.widths.size() ? std::clamp(table.widths[c], 1, 400) : 4;
    widths[c] = layout.cells(cells) + 2 * kCellMargin;
    total += widths[c];
  }
  // A table wider than the text narrows to it, each column in proportion.
  const long long room =
      std::max<long long>(layout.text_width() - layout.cells(std::clamp(table.indent, 0, 400)),
                          layout.text_width() / 2);
  if (total > room) {
    for (int& w : widths)
      w = static_cast<int>(std::max<long long>(w * room / total, 2 * kCellMargin + 1));
  }
  out += "<w:tbl><w:tblPr><w:tblStyle w:val=\"ReportTable\"/>";
  append_table_width(out, widths);
  if (table.indent > 0) {
    out += "<w:tblInd w:w=\"";
    append_int(out, layout.cells(std::clamp(table.indent, 0, 400)));
    out += "\" w:type=\"dxa\"/>";
  }
  out += "<w:tblLayout w:type=\"fixed\"/></w:tblPr>";
  append_grid_columns(out, widths);
  for (std::size_t r = 0; r < table.rows.size(); ++r) {
    const auto& row = table.rows[r];
    out += "<w:tr><w:trPr><w:cantSplit/>";
    if (table.header && r == 0) out += "<w:tblHeader/>";
    out += "</w:trPr>";
    for (std::size_t c = 0; c < columns; ++c) {
      const Align align = c < table.align.size() ? table.align[c] : Align::kLeft;
      if (table.header && r == 0 && c < row.size()) {
        std::vector<Run> caption = row[c];  // the captions in bold, as in RTF and HTML
        for (Run& run : caption) run.bold = true;
        append_cell(out, widths[c], jc_of(Align::kCenter), &caption);
      } else {
        append_cell(out, widths[c], jc_of(align), c < row.size() ? &row[c] : nullptr);
      }
    }
    out += "</w:tr>";
  }
  out += "</w:tbl>";
  return true;
}

// The signature block: a borderless row of 计算 / 校对 / 审核 / 日期.
void append_signature(std::string& out, const Signature& s, const Layout& layout) {
  const int width = layout.text_width() / 4;
  out += "<w:tbl><w:tblPr><w:tblW w:w=\"";
  append_int(out, width * 4);
  out +=
      "\" w:type=\"dxa\"/><w:tblBorders><w:top w:val=\"nil\"/><w:left w:val=\"nil\"/>"
      "<w:bottom w:val=\"nil\"/><w:right w:val=\"nil\"/><w:insideH w:val=\"nil\"/>"
      "<w:insideV w:val=\"nil\"/></w:tblBorders><w:tblLayout w:type=\"fixed\"/></w:tblPr>";
  append_grid_columns(out, {width, width, width, width});
  out += "<w:tr>";
  const std::pair<const char16_t*, const Text*> fields[] = {{kCalculatedBy, &s.calculated_by},
                                                            {kCheckedBy, &s.checked_by},
                                                            {kApprovedBy, &s.approved_by},
                                                            {kDateCaption, &s.date}};
  for (const auto& [caption, value] : fields) {
    out += "<w:tc><w:tcPr><w:tcW w:w=\"";
    append_int(out, width);
    out += "\" w:type=\"dxa\"/></w:tcPr><w:p>";
    append_run(out, Run{.text = caption});
    append_field_text(out, *value);
    out += "</w:p></w:tc>";
  }
  out += "</w:tr></w:tbl>";
}

// ---- Figures ----------------------------------------------------------------

// A figure as an inline picture of word/media/figureN.emf, centred, its
// caption below.
void append_figure(std::string& out, const Figure& figure, int number) {
  const auto emu = [](double mm) { return std::llround(figure_side_mm(mm) * kEmuPerMm); };
  const std::string cx = std::to_string(emu(figure.width_mm));
  const std::string cy = std::to_string(emu(figure.height_mm));
  const std::string n = std::to_string(number);
  out +=
      "<w:p><w:pPr><w:keepNext/><w:jc w:val=\"center\"/></w:pPr><w:r><w:drawing>"
      "<wp:inline distT=\"0\" distB=\"0\" distL=\"0\" distR=\"0\"><wp:extent cx=\"" +
      cx + "\" cy=\"" + cy +
      "\"/><wp:effectExtent l=\"0\" t=\"0\" r=\"0\" b=\"0\"/><wp:docPr id=\"" + n +
      "\" name=\"Figure " + n +
      "\"/><wp:cNvGraphicFramePr><a:graphicFrameLocks noChangeAspect=\"1\"/>"
      "</wp:cNvGraphicFramePr><a:graphic><a:graphicData "
      "uri=\"http://schemas.openxmlformats.org/drawingml/2006/picture\"><pic:pic>"
      "<pic:nvPicPr><pic:cNvPr id=\"" +
      n + "\" name=\"figure" + n +
      ".emf\"/><pic:cNvPicPr/></pic:nvPicPr><pic:blipFill><a:blip r:embed=\"rIdFigure" + n +
      "\"/><a:stretch><a:fillRect/></a:stretch></pic:blipFill><pic:spPr><a:xfrm>"
      "<a:off x=\"0\" y=\"0\"/><a:ext cx=\"" +
      cx + "\" cy=\"" + cy +
      "\"/></a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom></pic:spPr></pic:pic>"
      "</a:graphicData></a:graphic></wp:inline></w:drawing></w:r></w:p>";
  if (!figure.caption.empty()) {
    out += "<w:p><w:pPr><w:pStyle w:val=\"Caption\"/></w:pPr>";
    append_run(out, Run{.text = figure.caption});
    out += "</w:p>";
  }
}

// ---- The parts --------------------------------------------------------------

bool is_rule(const Block& block) {
  const auto* p = std::get_if<Paragraph>(&block);
  return p && p->kind == Paragraph::Kind::kRule;
}

void append_section(std::string& out, const Layout& l) {
  out += "<w:sectPr><w:headerReference w:type=\"default\" r:id=\"";
  out += kHeaderId;
  out += "\"/><w:footerReference w:type=\"default\" r:id=\"";
  out += kFooterId;
  out += "\"/><w:pgSz w:w=\"" + std::to_string(l.page_width) + "\" w:h=\"" +
         std::to_string(l.page_height) + "\"/><w:pgMar w:top=\"" + std::to_string(l.top) +
         "\" w:right=\"" + std::to_string(l.right) + "\" w:bottom=\"" + std::to_string(l.bottom) +
         "\" w:left=\"" + std::to_string(l.left) + "\" w:header=\"" + std::to_string(l.top / 2) +
         "\" w:footer=\"" + std::to_string(l.bottom / 2) +
         "\" w:gutter=\"0\"/><w:cols w:space=\"425\"/></w:sectPr>";
}

// word/document.xml, deflated into the package as it is written (a long
// report's XML is never held whole).
void document_part(const Document& doc, const Layout& layout, ZipWriter& zip) {
  constexpr std::size_t kPiece = 1 << 16;
  std::string out;
  out.reserve(kPiece + 4096);
  zip.begin_entry("word/document.xml");
  out += kXmlDeclaration;
  out += "<w:document";
  out += kWordNamespaces;
  out += kDrawingNamespaces;
  out += "><w:body>";
  const auto rule = std::find_if(doc.blocks.begin(), doc.blocks.end(), is_rule);
  bool signed_yet = false;
  bool last_was_table = false;  // two tables in a row would run together
  const auto sign = [&] {
    append_signature(out, doc.signature, layout);
    signed_yet = true;
    last_was_table = true;
  };
  if (rule == doc.blocks.end()) sign();
  int figures = 0;
  for (auto block = doc.blocks.begin(); block != doc.blocks.end(); ++block) {
    if (const auto* p = std::get_if<Paragraph>(&*block)) {
      append_paragraph(out, *p, layout);
      last_was_table = false;
    } else if (const auto* t = std::get_if<Table>(&*block)) {
      if (last_was_table) out += "<w:p/>";
      if (append_table(out, *t, layout)) last_was_table = true;
    } else if (const auto* f = std::get_if<Figure>(&*block)) {
      append_figure(out, *f, ++figures);
      last_was_table = false;
    }
    if (block == rule && !signed_yet) sign();
    if (out.size() >= kPiece) {
      zip.write(out);
      out.clear();
    }
  }
  if (last_was_table) out += "<w:p/>";  // a table never ends the body
  append_section(out, layout);
  out += "</w:body></w:document>";
  zip.write(out);
  zip.end_entry();
}

void append_relationship(std::string& out, std::string_view id, std::string_view type,
                         std::string_view target) {
  out += "<Relationship Id=\"";
  out += id;
  out += "\" Type=\"";
  if (!type.starts_with("http")) out += kRelationshipType;
  out += type;
  out += "\" Target=\"";
  out += target;
  out += "\"/>";
}

constexpr std::string_view kRelationshipsStart =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";

std::string document_relationships(int figures) {
  std::string out(kXmlDeclaration);
  out += kRelationshipsStart;
  append_relationship(out, kStylesId, "styles", "styles.xml");
  append_relationship(out, kSettingsId, "settings", "settings.xml");
  append_relationship(out, kFontTableId, "fontTable", "fontTable.xml");
  append_relationship(out, kHeaderId, "header", "header1.xml");
  append_relationship(out, kFooterId, "footer", "footer1.xml");
  for (int n = 1; n <= figures; ++n) {
    const std::string number = std::to_string(n);
    append_relationship(out, "rIdFigure" + number, "image", "media/figure" + number + ".emf");
  }
  out += "</Relationships>";
  return out;
}

std::string package_relationships() {
  std::string out(kXmlDeclaration);
  out += kRelationshipsStart;
  append_relationship(out, "rIdDocument", "officeDocument", "word/document.xml");
  append_relationship(
      out, "rIdCore",
      "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties",
      "docProps/core.xml");
  out += "</Relationships>";
  return out;
}

std::string content_types(bool font) {
  std::string out(kXmlDeclaration);
  out +=
      "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
      "<Default Extension=\"rels\" "
      "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
      "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
      "<Default Extension=\"emf\" ContentType=\"image/x-emf\"/>";
  if (font) {
    out +=
        "<Default Extension=\"odttf\" "
        "ContentType=\"application/vnd.openxmlformats-officedocument.obfuscatedFont\"/>";
  }
  constexpr std::string_view kWordType =
      "application/vnd.openxmlformats-officedocument.wordprocessingml.";
  const std::pair<std::string_view, std::string_view> parts[] = {
      {"/word/document.xml", "document.main+xml"}, {"/word/styles.xml", "styles+xml"},
      {"/word/settings.xml", "settings+xml"},      {"/word/fontTable.xml", "fontTable+xml"},
      {"/word/header1.xml", "header+xml"},         {"/word/footer1.xml", "footer+xml"}};
  for (const auto& [part, type] : parts) {
    out += "<Override PartName=\"";
    out += part;
    out += "\" ContentType=\"";
    out += kWordType;
    out += type;
    out += "\"/>";
  }
  out +=
      "<Override PartName=\"/docProps/core.xml\" "
      "ContentType=\"application/vnd.openxmlformats-package.core-properties+xml\"/></Types>";
  return out;
}

std::string core_properties(const Document& doc) {
  std::string out(kXmlDeclaration);
  out +=
      "<cp:coreProperties "
      "xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
      "xmlns:dc=\"http://purl.org/dc/elements/1.1/\"><dc:title>";
  append_xml_text(out, doc.title);
  out += "</dc:title><dc:subject>";
  append_xml_text(out, doc.project);
  out += "</dc:subject></cp:coreProperties>";
  return out;
}

std::string paragraph_style(std::string_view id, std::string_view name, std::string_view ppr,
                            std::string_view rpr) {
  std::string out = "<w:style w:type=\"paragraph\" w:styleId=\"";
  out += id;
  out += "\"><w:name w:val=\"";
  out += name;
  out += "\"/><w:basedOn w:val=\"Normal\"/><w:next w:val=\"Normal\"/><w:qFormat/><w:pPr>";
  out += ppr;
  out += "</w:pPr><w:rPr>";
  out += rpr;
  out += "</w:rPr></w:style>";
  return out;
}

std::string size_of(int half_points) {
  const std::string v = std::to_string(half_points);
  return "<w:sz w:val=\"" + v + "\"/><w:szCs w:val=\"" + v + "\"/>";
}

std::string heading_style(int level, const Layout& l) {
  const std::string n = std::to_string(level);
  const double scale[] = {1.5, 1.3, 1.15, 1.0};
  return paragraph_style("Heading" + n, "heading " + n,
                         "<w:keepNext/><w:spacing w:before=\"120\" w:after=\"60\"/>"
                         "<w:outlineLvl w:val=\"" +
                             std::to_string(level - 1) + "\"/>",
                         "<w:b/><w:bCs/>" + size_of(l.half_points(scale[level])));
}

std::string styles_part(const Layout& l) {
  std::string out(kXmlDeclaration);
  out += "<w:styles";
  out += kWordNamespaces;
  out += "><w:docDefaults><w:rPrDefault><w:rPr><w:rFonts w:ascii=\"";
  out += kWesternFont;
  out += "\" w:hAnsi=\"";
  out += kWesternFont;
  out += "\" w:eastAsia=\"";
  out += kEastAsianFont;
  out += "\" w:cs=\"";
  out += kWesternFont;
  out += "\"/><w:kern w:val=\"2\"/>" + size_of(l.half_points()) +
         "<w:lang w:val=\"en-US\" w:eastAsia=\"zh-CN\" w:bidi=\"ar-SA\"/></w:rPr></w:rPrDefault>"
         "<w:pPrDefault><w:pPr><w:spacing w:after=\"0\" w:line=\"240\" w:lineRule=\"auto\"/>"
         "</w:pPr></w:pPrDefault></w:docDefaults>"
         "<w:style w:type=\"paragraph\" w:default=\"1\" w:styleId=\"Normal\"><w:name "
         "w:val=\"Normal\"/><w:qFormat/><w:pPr><w:widowControl w:val=\"0\"/></w:pPr><w:rPr>";
  out += "<w:rFonts w:ascii=\"";
  out += kWesternFont;
  out += "\" w:hAnsi=\"";
  out += kWesternFont;
  out += "\" w:eastAsia=\"";
  out += kEastAsianFont;
  out += "\"/>";
  out += size_of(l.half_points()) +
         "</w:rPr></w:style>"
         "<w:style w:type=\"character\" w:default=\"1\" w:styleId=\"DefaultParagraphFont\">"
         "<w:name w:val=\"Default Paragraph Font\"/><w:uiPriority w:val=\"1\"/><w:semiHidden/>"
         "<w:unhideWhenUsed/></w:style>"
         "<w:style w:type=\"table\" w:default=\"1\" w:styleId=\"TableNormal\"><w:name "
         "w:val=\"Normal Table\"/><w:uiPriority w:val=\"99\"/><w:semiHidden/><w:unhideWhenUsed/>"
         "<w:tblPr><w:tblInd w:w=\"0\" w:type=\"dxa\"/><w:tblCellMar><w:top w:w=\"0\" "
         "w:type=\"dxa\"/><w:left w:w=\"" +
         std::to_string(kCellMargin) +
         "\" w:type=\"dxa\"/><w:bottom w:w=\"0\" w:type=\"dxa\"/>"
         "<w:right w:w=\"" +
         std::to_string(kCellMargin) + "\" w:type=\"dxa\"/></w:tblCellMar></w:tblPr></w:style>";
  out += paragraph_style("Title", "Title",
                         "<w:spacing w:before=\"120\" w:after=\"120\"/><w:jc w:val=\"center\"/>",
                         "<w:b/><w:bCs/>" + size_of(l.half_points(1.5)));
  for (int level = 1; level <= 3; ++level) out += heading_style(level, l);
  out += paragraph_style("Equation", "Equation", "<w:keepLines/>", "");
  out += paragraph_style("Rule", "Rule",
                         "<w:pBdr><w:bottom w:val=\"single\" w:sz=\"8\" w:space=\"1\" "
                         "w:color=\"auto\"/></w:pBdr><w:spacing w:after=\"120\" w:line=\"120\" "
                         "w:lineRule=\"exact\"/>",
                         "");
  out +=
      paragraph_style("Caption", "caption",
                      "<w:spacing w:before=\"60\" w:after=\"120\"/><w:jc w:val=\"center\"/>", "");
  const std::string right_tab =
      "<w:tabs><w:tab w:val=\"right\" w:pos=\"" + std::to_string(l.text_width()) + "\"/></w:tabs>";
  out += paragraph_style("Header", "header",
                         "<w:pBdr><w:bottom w:val=\"single\" w:sz=\"6\" w:space=\"1\" "
                         "w:color=\"auto\"/></w:pBdr>" +
                             right_tab,
                         size_of(18));
  out += paragraph_style("Footer", "footer", "<w:jc w:val=\"center\"/>", size_of(18));
  out +=
      "<w:style w:type=\"table\" w:styleId=\"ReportTable\"><w:name w:val=\"Report Table\"/>"
      "<w:basedOn w:val=\"TableNormal\"/><w:tblPr><w:tblBorders>";
  for (std::string_view side : {"top", "left", "bottom", "right", "insideH", "insideV"}) {
    out += "<w:";
    out += side;
    out += " w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"auto\"/>";
  }
  out += "</w:tblBorders></w:tblPr></w:style></w:styles>";
  return out;
}

std::string settings_part(bool font) {
  std::string out(kXmlDeclaration);
  out += "<w:settings";
  out += kWordNamespaces;
  out += "><w:zoom w:percent=\"100\"/>";
  if (font) out += "<w:embedTrueTypeFonts/>";
  out +=
      "<w:defaultTabStop w:val=\"420\"/>"
      "<w:characterSpacingControl w:val=\"doNotCompress\"/><w:compat><w:compatSetting "
      "w:name=\"compatibilityMode\" w:uri=\"http://schemas.microsoft.com/office/word\" "
      "w:val=\"15\"/></w:compat></w:settings>";
  return out;
}

std::string font_table_part(bool font) {
  std::string out(kXmlDeclaration);
  out += "<w:fonts";
  out += kWordNamespaces;
  out += "><w:font w:name=\"";
  out += kEastAsianFont;
  out +=
      "\"><w:altName w:val=\"SimSun\"/><w:charset w:val=\"86\"/><w:family w:val=\"auto\"/>"
      "<w:pitch w:val=\"variable\"/></w:font><w:font w:name=\"";
  out += kWesternFont;
  out +=
      "\"><w:charset w:val=\"00\"/><w:family w:val=\"roman\"/><w:pitch w:val=\"variable\"/>"
      "</w:font><w:font w:name=\"";
  out += platform::kGradeFontFamily;
  out += "\"><w:charset w:val=\"00\"/><w:family w:val=\"auto\"/><w:pitch w:val=\"variable\"/>";
  if (font) {
    out += "<w:embedRegular r:id=\"rIdGradeFont\" w:fontKey=\"";
    out += kFontKey;
    out += "\"/>";
  }
  out += "</w:font></w:fonts>";
  return out;
}

std::string font_table_relationships() {
  std::string out(kXmlDeclaration);
  out += kRelationshipsStart;
  append_relationship(out, "rIdGradeFont", "font", "fonts/font1.odttf");
  out += "</Relationships>";
  return out;
}

std::string header_part(const Document& doc) {
  std::string out(kXmlDeclaration);
  out += "<w:hdr";
  out += kWordNamespaces;
  out += "><w:p><w:pPr><w:pStyle w:val=\"Header\"/></w:pPr>";
  append_run(out, Run{.text = doc.program});
  out += "<w:r><w:tab/></w:r>";
  append_run(out, Run{.text = doc.project});
  out += "</w:p></w:hdr>";
  return out;
}

// A field: its instruction and the result shown until a reader updates it.
void append_field(std::string& out, std::string_view instruction) {
  out +=
      "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText "
      "xml:space=\"preserve\"> ";
  out += instruction;
  out +=
      " </w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>"
      "<w:r><w:t>1</w:t></w:r><w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";
}

std::string footer_part() {
  std::string out(kXmlDeclaration);
  out += "<w:ftr";
  out += kWordNamespaces;
  out += "><w:p><w:pPr><w:pStyle w:val=\"Footer\"/></w:pPr>";
  append_run(out, Run{.text = kFooterPage});
  append_field(out, "PAGE");
  append_run(out, Run{.text = kFooterOf});
  append_field(out, "NUMPAGES");
  append_run(out, Run{.text = kFooterEnd});
  out += "</w:p></w:ftr>";
  return out;
}

int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return c - 'a' + 10;
}

// The font with its first 32 bytes XORed with the key's 16 bytes, which are
// the key's hexadecimal digits read as bytes from its last pair to its first.
std::string obfuscated_font(std::string_view ttf, std::string_view key) {
  std::string digits;
  for (char c : key) {
    if (std::isxdigit(static_cast<unsigned char>(c))) digits += c;
  }
  unsigned char bytes[16];
  for (int i = 0; i < 16; ++i) {
    bytes[15 - i] =
        static_cast<unsigned char>(hex_value(digits[2 * i]) * 16 + hex_value(digits[2 * i + 1]));
  }
  std::string out(ttf);
  for (std::size_t i = 0; i < std::min<std::size_t>(out.size(), 32); ++i) {
    out[i] = static_cast<char>(static_cast<unsigned char>(out[i]) ^ bytes[i % 16]);
  }
  return out;
}

}  // namespace

std::string write_docx(const Document& document) {
  const Layout layout = layout_of(document.page);
  const std::string_view font = platform::grade_font_ttf();
  int figures = 0;
  for (const Block& block : document.blocks) figures += std::holds_alternative<Figure>(block);

  ZipWriter zip;
  zip.add("[Content_Types].xml", content_types(!font.empty()));
  zip.add("_rels/.rels", package_relationships());
  zip.add("docProps/core.xml", core_properties(document));
  document_part(document, layout, zip);
  zip.add("word/_rels/document.xml.rels", document_relationships(figures));
  zip.add("word/styles.xml", styles_part(layout));
  zip.add("word/settings.xml", settings_part(!font.empty()));
  zip.add("word/fontTable.xml", font_table_part(!font.empty()));
  zip.add("word/header1.xml", header_part(document));
  zip.add("word/footer1.xml", footer_part());
  int number = 0;
  for (const Block& block : document.blocks) {
    if (const auto* figure = std::get_if<Figure>(&block)) {
      zip.add("word/media/figure" + std::to_string(++number) + ".emf", figure_emf(*figure));
    }
  }
  if (!font.empty()) {
    zip.add("word/_rels/fontTable.xml.rels", font_table_relationships());
    zip.add("word/fonts/font1.odttf", obfuscated_font(font, kFontKey));
  }
  return std::move(zip).finish();
}

}  // namespace zelkora::document
