// write_rtf: a report Document as RTF 1.9 in the form Word and the Windows
// rich-edit controls read. Fonts: \f0 宋体 (code page 936), \f1 Times New
// Roman for ASCII, \f2 the grade-symbol font. Every non-ASCII character is
// \uN with its code page 936 bytes (or "?") for readers without Unicode.
#include <algorithm>
#include <climits>
#include <cmath>
#include <string>

#include "zelkora/document/figure_emf.h"
#include "zelkora/document/writer_support.h"
#include "zelkora/document/writers.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/grade_font.h"

namespace zelkora::document {

namespace {

enum Font : int { kSong = 0, kTimes = 1, kGrade = 2 };

constexpr int kCellGapTwips = 60;     // \trgaph: a cell's inner margin
constexpr int kSmallHalfPoints = 18;  // header and footer: 9 pt
constexpr char kBorder[] = "\\brdrs\\brdrw10";

int twips_of_mm(double mm) { return static_cast<int>(std::lround(mm * 1440 / 25.4)); }

// The measures of one document, in twips and half points.
struct Measures {
  int body = 21;   // \fs of the body text
  int title = 30;  // \fs of the title
  int heading[3] = {24, 21, 21};
  int cell = 105;  // twips of one display cell: half the body font
  int text_width = 0;
};

Measures measures_of(const PageSetup& page) {
  Measures m;
  m.body = static_cast<int>(std::lround(page.font_pt * 2));
  m.title = static_cast<int>(std::lround(page.font_pt * 2 * 10 / 7));      // 五号 → 小三
  m.heading[0] = static_cast<int>(std::lround(page.font_pt * 2 * 8 / 7));  // 五号 → 小四
  m.heading[1] = m.heading[2] = m.body;
  m.cell = static_cast<int>(std::lround(page.font_pt * 10));
  m.text_width = twips_of_mm(page.width_mm - page.left_mm - page.right_mm);
  return m;
}

void append_int(std::string& out, long long value) { out += std::to_string(value); }

void append_word(std::string& out, const char* word, long long value) {
  out += word;
  append_int(out, value);
}

constexpr char kHex[] = "0123456789abcdef";

void append_hex_byte(std::string& out, unsigned char byte) {
  out += "\\'";
  out += kHex[byte >> 4];
  out += kHex[byte & 15];
}

bool is_high_surrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool is_low_surrogate(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

// Writes text inside one group of its own, switching fonts as the characters
// need: ASCII in Times New Roman, the rest in 宋体, the grade symbols (when
// `grade` is set) in the grade font. The group starts in \f0 and \uc1.
// Without `fonts` (the document's information) no font is named.
class TextWriter {
 public:
  explicit TextWriter(std::string& out, bool fonts = true) : out_(out), fonts_(fonts) {}

  void write(TextView text, bool grade) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      const char16_t c = text[i];
      if (grade && grade_letter(c)) {
        use_font(kGrade);
        unicode(c, static_cast<char>(grade_letter(c)));
      } else if (c < 0x80) {
        ascii(c);
      } else if (is_high_surrogate(c) && i + 1 < text.size() && is_low_surrogate(text[i + 1])) {
        use_font(kSong);
        unicode(c, '?');
        unicode(text[++i], '?');
      } else if (is_high_surrogate(c) || is_low_surrogate(c)) {
        use_font(kSong);
        unicode(u'\uFFFD', '?');
      } else {
        use_font(kSong);
        cjk(c);
      }
    }
  }

 private:
  void use_font(Font font) {
    if (!fonts_ || font == font_) return;
    font_ = font;
    append_word(out_, "\\f", font);
    out_ += ' ';
  }

  void set_skip(int bytes) {
    if (bytes == skip_) return;
    skip_ = bytes;
    append_word(out_, "\\uc", bytes);
  }

  // \uN (N signed 16-bit) with a one-character fallback.
  void unicode(char16_t c, char fallback) {
    set_skip(1);
    append_word(out_, "\\u", static_cast<std::int16_t>(c));
    out_ += fallback;
  }

  void ascii(char16_t c) {
    if (c == u'\t') {
      out_ += "\\tab ";
      return;
    }
    if (c == u'\n') {
      out_ += "\\line ";
      return;
    }
    if (c < 0x20 || c == 0x7F) return;  // other control characters: dropped
    if (c != u' ') use_font(kTimes);
    if (c == u'\\' || c == u'{' || c == u'}') out_ += '\\';
    out_ += static_cast<char>(c);
  }

  // \uN with the code page 936 bytes as the fallback, or "?".
  void cjk(char16_t c) {
    char16_t one[1] = {c};
    const std::string bytes =
        codepage::has_ansi_form(c) ? codepage::to_ansi(TextView(one, 1)) : std::string("?");
    if (bytes == "?") {
      unicode(c, '?');
      return;
    }
    set_skip(static_cast<int>(bytes.size()));
    append_word(out_, "\\u", static_cast<std::int16_t>(c));
    for (unsigned char byte : bytes) append_hex_byte(out_, byte);
  }

  std::string& out_;
  bool fonts_;
  Font font_ = kSong;
  int skip_ = 1;
};

void write_text(std::string& out, TextView text, bool grade = false) {
  out += '{';
  TextWriter(out).write(text, grade);
  out += '}';
}

void write_run(std::string& out, const Run& run) {
  out += '{';
  if (run.bold) out += "\\b";
  if (run.script == Script::kSubscript) out += "\\sub";
  if (run.script == Script::kSuperscript) out += "\\super";
  if (out.back() != '{') out += ' ';  // ends the last word; a blank after "{" would be text
  TextWriter(out).write(run.text, run.grade_symbol);
  out += '}';
}

void write_runs(std::string& out, const std::vector<Run>& runs) {
  for (const Run& run : runs) write_run(out, run);
}

const char* alignment_word(Align align) {
  switch (sane_align(align)) {
    case Align::kCenter:
      return "\\qc";
    case Align::kRight:
      return "\\qr";
    default:
      return "\\ql";
  }
}

// ---- The document's head ----------------------------------------------------

void write_font_table(std::string& out) {
  out += "{\\fonttbl{\\f0\\fnil\\fcharset134\\fprq2 ";
  for (unsigned char byte : codepage::to_ansi(u"宋体")) append_hex_byte(out, byte);
  out += "{\\*\\falt SimSun};}{\\f1\\froman\\fcharset0\\fprq2 Times New Roman;}";
  out += "{\\f2\\fnil\\fcharset0\\fprq2 ";
  out += platform::kGradeFontFamily;
  out += ";}}\n";
}

void write_style_sheet(std::string& out, const Measures& m) {
  out += "{\\stylesheet{\\ql\\f0";
  append_word(out, "\\fs", m.body);
  out += "\\snext0 Normal;}";
  for (int level = 1; level <= 3; ++level) {
    append_word(out, "{\\s", level);
    append_word(out, "\\ql\\keepn\\outlinelevel", level - 1);
    append_word(out, "\\b\\f0\\fs", m.heading[level - 1]);
    append_word(out, "\\sbasedon0\\snext0 heading ", level);
    out += ";}";
  }
  out += "}\n";
}

void write_info(std::string& out, const Document& document) {
  out += "{\\info{\\title ";
  TextWriter(out, false).write(document.title, false);
  out += "}}\n";
}

void write_page(std::string& out, const PageSetup& page) {
  const int top = twips_of_mm(page.top_mm), bottom = twips_of_mm(page.bottom_mm);
  append_word(out, "\\paperw", twips_of_mm(page.width_mm));
  append_word(out, "\\paperh", twips_of_mm(page.height_mm));
  append_word(out, "\\margl", twips_of_mm(page.left_mm));
  append_word(out, "\\margr", twips_of_mm(page.right_mm));
  append_word(out, "\\margt", top);
  append_word(out, "\\margb", bottom);
  out += "\\viewkind1\\uc1\n\\sectd";
  append_word(out, "\\headery", top / 2);
  append_word(out, "\\footery", bottom / 2);
  out += '\n';
}

// Program on the left, project at the right margin, a rule beneath.
void write_header(std::string& out, const Document& document, const Measures& m) {
  out += "{\\header\\pard\\plain\\ql\\tqr";
  append_word(out, "\\tx", m.text_width);
  out += "\\brdrb";
  out += kBorder;
  append_word(out, "\\brsp20\\f0\\fs", kSmallHalfPoints);
  out += ' ';
  write_text(out, document.program);
  out += "\\tab ";
  write_text(out, document.project);
  out += "\\par}\n";
}

void write_page_field(std::string& out, const char* field) {
  out += "{\\field{\\*\\fldinst ";
  out += field;
  out += "}{\\fldrslt 1}}";
}

// "第 N 页 共 M 页", centred.
void write_footer(std::string& out) {
  append_word(out, "{\\footer\\pard\\plain\\qc\\f0\\fs", kSmallHalfPoints);
  out += ' ';
  write_text(out, kFooterPage);
  write_page_field(out, "PAGE");
  write_text(out, kFooterOf);
  write_page_field(out, "NUMPAGES");
  write_text(out, kFooterEnd);
  out += "\\par}\n";
}

// ---- Blocks -------------------------------------------------------------------

void start_paragraph(std::string& out, const char* align, int indent_twips, int size) {
  out += "\\pard\\plain";
  out += align;
  if (indent_twips > 0) append_word(out, "\\li", indent_twips);
  append_word(out, "\\f0\\fs", size);
  out += ' ';
}

void write_paragraph(std::string& out, const Paragraph& paragraph, const Measures& m) {
  const int indent = std::clamp(paragraph.indent, 0, 400) * m.cell;
  switch (paragraph.kind) {
    case Paragraph::Kind::kTitle:
      start_paragraph(out, "\\qc\\b", indent, m.title);
      break;
    case Paragraph::Kind::kHeading: {
      const int level = heading_level(paragraph);
      append_word(out, "\\pard\\plain\\s", level);
      out += alignment_word(paragraph.align);
      append_word(out, "\\keepn\\outlinelevel", level - 1);
      if (indent > 0) append_word(out, "\\li", indent);
      append_word(out, "\\b\\f0\\fs", m.heading[level - 1]);
      out += ' ';
      break;
    }
    case Paragraph::Kind::kRule:  // the border stands for the rule's dashes
      start_paragraph(out, "\\ql\\brdrb\\brdrs\\brdrw10\\brsp20", indent, m.body);
      out += "\\par\n";
      return;
    default:
      start_paragraph(out, alignment_word(paragraph.align), indent, m.body);
  }
  write_runs(out, paragraph.runs);
  out += "\\par\n";
}

void write_signature(std::string& out, const Signature& signature, const Measures& m) {
  start_paragraph(out, "\\ql", 0, m.body);
  bool first = true;
  for (const SignatureField& field : signature_fields(signature)) {
    if (!first) write_text(out, kSignatureGap);
    first = false;
    write_text(out, field.caption);
    if (!field.value.empty()) {
      write_text(out, field.value);
      continue;
    }
    out += "{\\ul ";
    for (int i = 0; i < kSignatureBlankCells; ++i) out += "\\~";
    out += '}';
  }
  out += "\\par\n";
}

void write_cell_borders(std::string& out) {
  for (const char* side : {"\\clbrdrt", "\\clbrdrl", "\\clbrdrb", "\\clbrdrr"}) {
    out += side;
    out += kBorder;
  }
}

void write_row_definition(std::string& out, const std::vector<Column>& columns, int left,
                          bool header, const Measures& m) {
  append_word(out, "\\trowd\\trgaph", kCellGapTwips);
  append_word(out, "\\trleft", left);
  if (header) out += "\\trhdr";
  // A cell of one more display cell than its text, for the proportional
  // fonts; a table wider than the text narrows to it, each column in
  // proportion.
  long long total = 0;
  for (const Column& column : columns) total += (column.width + 1LL) * m.cell + 2 * kCellGapTwips;
  const long long room = std::max<long long>(m.text_width - left, m.text_width / 2);
  long long edge = left;
  for (const Column& column : columns) {
    const long long width = (column.width + 1LL) * m.cell + 2 * kCellGapTwips;
    edge += total > room ? std::max<long long>(width * room / total, 2 * kCellGapTwips + 1) : width;
    write_cell_borders(out);
    append_word(out, "\\cellx", static_cast<int>(std::min<long long>(edge, INT_MAX)));
  }
  out += '\n';
}

void write_table(std::string& out, const Table& table, const Measures& m) {
  const std::vector<Column> columns = table_columns(table);
  if (columns.empty()) return;
  const int left = table_indent(table) * m.cell;
  for (std::size_t r = 0; r < table.rows.size(); ++r) {
    const auto& row = table.rows[r];
    const bool header = table.header && r == 0;
    write_row_definition(out, columns, left, header, m);
    for (std::size_t c = 0; c < columns.size(); ++c) {
      out += "\\pard\\plain\\intbl";
      out += alignment_word(columns[c].align);
      append_word(out, "\\f0\\fs", m.body);
      out += header ? "\\b " : " ";
      if (c < row.size()) write_runs(out, row[c]);
      out += "\\cell";
    }
    out += "\\row\n";
  }
}

void write_picture(std::string& out, const Figure& figure, std::string_view emf) {
  const double width = figure_side_mm(figure.width_mm);
  const double height = figure_side_mm(figure.height_mm);
  out += "{\\pict\\emfblip";
  append_word(out, "\\picw", std::lround(width * 100));
  append_word(out, "\\pich", std::lround(height * 100));
  append_word(out, "\\picwgoal", twips_of_mm(width));
  append_word(out, "\\pichgoal", twips_of_mm(height));
  out += '\n';
  for (std::size_t i = 0; i < emf.size(); ++i) {
    const auto byte = static_cast<unsigned char>(emf[i]);
    out += kHex[byte >> 4];
    out += kHex[byte & 15];
    if (i % 64 == 63) out += '\n';
  }
  out += '}';
}

void write_figure(std::string& out, const Figure& figure, const Measures& m) {
  const std::string emf = figure_emf(figure);
  if (!emf.empty()) {
    start_paragraph(out, "\\qc\\keepn", 0, m.body);
    write_picture(out, figure, emf);
    out += "\\par\n";
  }
  start_paragraph(out, "\\qc", 0, m.body);
  write_text(out, figure.caption);
  out += "\\par\n";
}

void write_block(std::string& out, const Block& block, const Measures& m) {
  if (const auto* paragraph = std::get_if<Paragraph>(&block)) {
    write_paragraph(out, *paragraph, m);
  } else if (const auto* table = std::get_if<Table>(&block)) {
    write_table(out, *table, m);
  } else if (const auto* figure = std::get_if<Figure>(&block)) {
    write_figure(out, *figure, m);
  }
}

}  // namespace

std::string write_rtf(const Document& document) {
  const PageSetup page = sane_page(document.page);
  const Measures m = measures_of(page);
  std::string out;
  out.reserve(4096 + document.blocks.size() * 160);
  out += "{\\rtf1\\ansi\\ansicpg936\\deff0\\deflang1033\\deflangfe2052\n";
  write_font_table(out);
  write_style_sheet(out, m);
  write_info(out, document);
  write_page(out, page);
  write_header(out, document, m);
  write_footer(out);
  const std::size_t signature_at = signature_position(document.blocks);
  for (std::size_t i = 0; i <= document.blocks.size(); ++i) {
    if (i == signature_at) write_signature(out, document.signature, m);
    if (i < document.blocks.size()) write_block(out, document.blocks[i], m);
  }
  out += "}\n";
  return out;
}

}  // namespace zelkora::document
