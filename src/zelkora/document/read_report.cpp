// The lines of a report read into a Document.
#include "zelkora/document/read_report.h"

#include <algorithm>
#include <array>
#include <climits>
#include <string_view>

#include "zelkora/platform/codepage.h"
#include "zelkora/platform/utf8.h"

namespace zelkora::document {

namespace {

constexpr char16_t kIdeographicSpace = u'\u3000';
constexpr char16_t kRuleChar = u'─';

// The header's words (catalogue texts 60030 and the date word, as tCalHead
// writes them).
constexpr std::u16string_view kProjectWord = u"工程名称：";
constexpr std::u16string_view kDateWord = u"计算日期：";

// The operators a broken equation's further line begins with.
// The most rows one table is read from.
constexpr std::size_t kMostTableRows = 200;

constexpr std::u16string_view kEquationStarts = u"＝+＋−－-·×/＜＞≤≥";

// ---- Lines ------------------------------------------------------------------

// The text split at its line ends: CR LF, LF, CR, CR CR LF, and the
// continuation (an ideographic space before CR LF, which goes with the end). A last line end
// opens no further line.
std::vector<TextView> split_lines(TextView text) {
  std::vector<TextView> lines;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c != u'\r' && c != u'\n') continue;
    std::size_t end = i;
    // CR LF, and CR CR LF (CR LF written through a text-mode stream).
    if (c == u'\r' && i + 2 < text.size() && text[i + 1] == u'\r' && text[i + 2] == u'\n') ++i;
    if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
      if (end > start && text[end - 1] == kIdeographicSpace) --end;
      ++i;
    }
    lines.push_back(text.substr(start, end - start));
    start = i + 1;
  }
  if (start < text.size()) lines.push_back(text.substr(start));
  return lines;
}

bool is_blank(char16_t c) { return c == u' ' || c == kIdeographicSpace; }

// The display cells of the blanks a line begins with.
int leading_cells(TextView line) {
  int cells = 0;
  for (char16_t c : line) {
    if (!is_blank(c)) break;
    cells += codepage::char_width(c);
  }
  return cells;
}

TextView without_blanks(TextView line) {
  std::size_t first = 0;
  while (first < line.size() && is_blank(line[first])) ++first;
  std::size_t last = line.size();
  while (last > first && is_blank(line[last - 1])) --last;
  return line.substr(first, last - first);
}

bool is_rule(TextView line) {
  const TextView body = without_blanks(line);
  return body.size() >= 4 &&
         std::all_of(body.begin(), body.end(), [](char16_t c) { return c == kRuleChar; });
}

bool starts_with(TextView text, std::u16string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

// ---- Runs -------------------------------------------------------------------

struct Style {
  bool bold = false;
  Script script = Script::kNormal;
  bool operator==(const Style&) const = default;
};

// One character of a line with its style and the display cells it takes.
struct StyledChar {
  char16_t c;
  Style style;
};

enum class Marker { kNone, kBoldOn, kBoldOff, kSubOn, kSubOff, kSupOn, kSupOff };

Marker marker_at(TextView line, std::size_t i) {
  static constexpr std::array<std::pair<std::u16string_view, Marker>, 6> kMarkers = {{
      {u"_bb(", Marker::kBoldOn},
      {u")bb_", Marker::kBoldOff},
      {u"_ub(", Marker::kSubOn},
      {u")ub_", Marker::kSubOff},
      {u"_up(", Marker::kSupOn},
      {u")up_", Marker::kSupOff},
  }};
  if (line[i] != u'_' && line[i] != u')') return Marker::kNone;
  for (const auto& [text, marker] : kMarkers) {
    if (line.substr(i, 4) == text) return marker;
  }
  return Marker::kNone;
}

void apply(Marker marker, Style& style) {
  switch (marker) {
    case Marker::kBoldOn:
      style.bold = true;
      break;
    case Marker::kBoldOff:
      style.bold = false;
      break;
    case Marker::kSubOn:
      style.script = Script::kSubscript;
      break;
    case Marker::kSupOn:
      style.script = Script::kSuperscript;
      break;
    case Marker::kSubOff:
      if (style.script == Script::kSubscript) style.script = Script::kNormal;
      break;
    case Marker::kSupOff:
      if (style.script == Script::kSuperscript) style.script = Script::kNormal;
      break;
    case Marker::kNone:
      break;
  }
}

// The line's characters with their styles, the markers and "|" gone.
std::vector<StyledChar> styled_chars(TextView line) {
  std::vector<StyledChar> chars;
  chars.reserve(line.size());
  Style style;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const Marker marker = marker_at(line, i);
    if (marker != Marker::kNone) {
      apply(marker, style);
      i += 3;
    } else if (line[i] != u'|') {
      chars.push_back({line[i], style});
    }
  }
  return chars;
}

// Characters into runs: one run per stretch of one style, each grade symbol
// a run of its own kind.
std::vector<Run> runs_of(const StyledChar* first, const StyledChar* last) {
  std::vector<Run> runs;
  for (const StyledChar* p = first; p != last; ++p) {
    const bool symbol = grade_letter(p->c) != 0;
    if (runs.empty() || runs.back().bold != p->style.bold ||
        runs.back().script != p->style.script || runs.back().grade_symbol != symbol) {
      runs.push_back({Text(), p->style.bold, p->style.script, symbol});
    }
    runs.back().text.push_back(p->c);
  }
  return runs;
}

std::vector<Run> runs_of(const std::vector<StyledChar>& chars) {
  return runs_of(chars.data(), chars.data() + chars.size());
}

Text plain_of(const std::vector<Run>& runs) {
  Text text;
  for (const Run& run : runs) text += run.text;
  return text;
}

// ---- Tables -----------------------------------------------------------------

// A line laid out in display cells: for each cell, the character there (the
// index into `chars`) or -1 for a blank.
struct CellLine {
  std::vector<StyledChar> chars;
  std::vector<int> at;  // cell -> index of the character covering it, or -1
};

CellLine cell_line(TextView line) {
  CellLine out{styled_chars(line), {}};
  for (std::size_t i = 0; i < out.chars.size(); ++i) {
    const char16_t c = out.chars[i].c;
    const int width = codepage::char_width(c);
    for (int w = 0; w < width; ++w) out.at.push_back(is_blank(c) ? -1 : static_cast<int>(i));
  }
  return out;
}

// Whether a line could be a padded table row: some text after two blanks.
bool row_like(TextView line) {
  const TextView body = without_blanks(line);
  const std::size_t gap = body.find(u"  ");
  if (gap != TextView::npos) return true;
  return body.find(kIdeographicSpace) != TextView::npos;
}

struct Column {
  int first, last;  // display cells, inclusive
};

// Marks the cells where the line has text.
void mark_used(const CellLine& line, std::vector<bool>& used) {
  if (used.size() < line.at.size()) used.resize(line.at.size(), false);
  for (std::size_t c = 0; c < line.at.size(); ++c) {
    if (line.at[c] >= 0) used[c] = true;
  }
}

// The columns of cells some line has text in: stretches of used cells,
// apart by at least two cells blank in every line.
std::vector<Column> columns_in(const std::vector<bool>& used) {
  const std::size_t width = used.size();
  std::vector<Column> columns;
  for (int c = 0; c < static_cast<int>(width); ++c) {
    if (!used[static_cast<std::size_t>(c)]) continue;
    if (!columns.empty() && c - columns.back().last <= 2) {
      columns.back().last = c;  // a single blank cell joins
    } else {
      columns.push_back({c, c});
    }
  }
  return columns;
}

// The characters of `line` within a column, blanks at its ends dropped.
std::vector<Run> cell_runs(const CellLine& line, const Column& column, int& left_gap,
                           int& right_gap) {
  int first = -1, last = -1;
  for (int c = column.first; c <= column.last && c < static_cast<int>(line.at.size()); ++c) {
    if (line.at[static_cast<std::size_t>(c)] < 0) continue;
    if (first < 0) first = c;
    last = c;
  }
  if (first < 0) {
    left_gap = right_gap = -1;
    return {};
  }
  left_gap = first - column.first;
  right_gap = column.last - last;
  const int begin = line.at[static_cast<std::size_t>(first)];
  const int end = line.at[static_cast<std::size_t>(last)] + 1;
  return runs_of(line.chars.data() + begin, line.chars.data() + end);
}

// Whether the runs hold a digit outside sub- and superscripts (mm², h₀ are
// captions' units and indices, not values).
bool has_digit(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.script != Script::kNormal) continue;
    if (std::any_of(run.text.begin(), run.text.end(),
                    [](char16_t c) { return c >= u'0' && c <= u'9'; })) {
      return true;
    }
  }
  return false;
}

// Whether the runs read as a number: a digit, a sign or a point first.
bool numeric(const std::vector<Run>& runs) {
  if (runs.empty() || runs.front().text.empty()) return false;
  const char16_t c = runs.front().text.front();
  return (c >= u'0' && c <= u'9') || c == u'-' || c == u'+' || c == u'.' || c == u'−';
}

// A column's alignment from where its texts stand, the caption row aside:
// all flush left (and not all numbers of one width): left; all flush right:
// right; else centred.
Align alignment_of(const std::vector<std::pair<int, int>>& spans, bool all_numbers) {
  int first = INT_MAX, last = INT_MIN;
  for (const auto& [f, l] : spans) {
    first = std::min(first, f);
    last = std::max(last, l);
  }
  bool flush_left = true, flush_right = true;
  for (const auto& [f, l] : spans) {
    flush_left = flush_left && f == first;
    flush_right = flush_right && l == last;
  }
  if (flush_left && flush_right) return all_numbers ? Align::kRight : Align::kLeft;
  return flush_left ? Align::kLeft : flush_right ? Align::kRight : Align::kCenter;
}

// A table of the lines, or nothing when they do not make one: two columns
// at least, two rows with text in two of them, and every column with text
// in two rows.
std::optional<Table> table_of(const std::vector<TextView>& lines) {
  std::vector<CellLine> cells;
  std::vector<bool> used;
  for (TextView line : lines) {
    cells.push_back(cell_line(line));
    mark_used(cells.back(), used);
  }
  const std::vector<Column> columns = columns_in(used);
  if (columns.size() < 2) return std::nullopt;
  Table table;
  table.indent = columns.front().first;
  // Per row and column where the text stands (display cells), or -1.
  std::vector<std::vector<std::pair<int, int>>> spans;
  std::vector<int> filled_in(columns.size(), 0);
  int full_rows = 0;
  for (const CellLine& line : cells) {
    std::vector<std::vector<Run>> row;
    std::vector<std::pair<int, int>> at;
    int filled = 0;
    for (std::size_t k = 0; k < columns.size(); ++k) {
      int left = 0, right = 0;
      row.push_back(cell_runs(line, columns[k], left, right));
      at.emplace_back(columns[k].first + left, columns[k].last - right);
      if (row.back().empty()) continue;
      ++filled;
      ++filled_in[k];
    }
    if (filled >= 2) ++full_rows;
    table.rows.push_back(std::move(row));
    spans.push_back(std::move(at));
  }
  // Two rows with two cells, and text in every column twice.
  if (full_rows < 2 ||
      std::any_of(filled_in.begin(), filled_in.end(), [](int n) { return n < 2; })) {
    return std::nullopt;
  }
  // Captions: a first row without a digit over rows with them.
  const auto digits = [](const std::vector<std::vector<Run>>& row) {
    return std::any_of(row.begin(), row.end(), has_digit);
  };
  table.header =
      !digits(table.rows.front()) && std::any_of(table.rows.begin() + 1, table.rows.end(), digits);
  const std::size_t body = table.header ? 1 : 0;
  for (std::size_t k = 0; k < columns.size(); ++k) {
    std::vector<std::pair<int, int>> texts;
    bool all_numbers = true;
    for (std::size_t r = body; r < table.rows.size(); ++r) {
      if (table.rows[r][k].empty()) continue;
      texts.push_back(spans[r][k]);
      all_numbers = all_numbers && numeric(table.rows[r][k]);
    }
    table.align.push_back(texts.empty() ? Align::kLeft : alignment_of(texts, all_numbers));
    const int next = k + 1 < columns.size() ? columns[k + 1].first : columns[k].last + 2;
    table.widths.push_back(next - columns[k].first);
  }
  return table;
}

// ---- Paragraphs -------------------------------------------------------------

// The heading level of a line's serial label: "一、" 1, "（一）" 2, "(1)" 3;
// 0 for none. The label is the line's first bold run.
int heading_level(TextView body) {
  if (!starts_with(body, u"_bb(")) return 0;
  const std::size_t end = body.find(u")bb_");
  if (end == TextView::npos) return 0;
  const TextView label = body.substr(4, end - 4);
  if (label.size() < 2) return 0;
  constexpr std::u16string_view kNumerals = u"零一二三四五六七八九十百0123456789";
  const auto numerals = [&](TextView t) {
    return !t.empty() && std::all_of(t.begin(), t.end(), [&](char16_t c) {
      return kNumerals.find(c) != std::u16string_view::npos;
    });
  };
  if (label.back() == u'、' && numerals(label.substr(0, label.size() - 1))) return 1;
  if (label.front() == u'（' && label.back() == u'）' &&
      numerals(label.substr(1, label.size() - 2)))
    return 2;
  if (label.front() == u'(' && label.back() == u')' && numerals(label.substr(1, label.size() - 2)))
    return 3;
  return 0;
}

Paragraph paragraph_of(TextView line, Paragraph::Kind kind) {
  Paragraph p;
  p.kind = kind;
  p.indent = leading_cells(line);
  p.runs = runs_of(styled_chars(without_blanks(line)));
  return p;
}

class Reader {
 public:
  explicit Reader(const ReadOptions& options) : options_(options) {}

  Document read(TextView markup);

 private:
  std::size_t header(std::size_t first);
  std::size_t rows_from(std::size_t i) const;
  std::size_t table_or_line(std::size_t i);
  void line(TextView text);

  const ReadOptions& options_;
  std::vector<TextView> lines_;
  Document doc_;
  bool in_equation_ = false;
};

// The calculation header from line `first` (its centred bold title: blanks,
// then a bold run) down to the rule; returns the line after it, or `first`
// when there is none.
std::size_t Reader::header(std::size_t first) {
  if (first >= lines_.size()) return first;
  const TextView title = without_blanks(lines_[first]);
  if (leading_cells(lines_[first]) == 0 || !starts_with(title, u"_bb(") || title.size() < 8 ||
      title.substr(title.size() - 4) != u")bb_") {
    return first;
  }
  std::size_t rule = first + 1;
  while (rule < lines_.size() && rule - first < 40 && !is_rule(lines_[rule])) ++rule;
  if (rule >= lines_.size() || !is_rule(lines_[rule])) return first;
  Paragraph head = paragraph_of(lines_[first], Paragraph::Kind::kTitle);
  head.indent = 0;
  head.align = Align::kCenter;
  doc_.title = plain_of(head.runs);
  doc_.blocks.emplace_back(std::move(head));
  for (std::size_t i = first + 1; i < rule; ++i) {
    Paragraph p = paragraph_of(lines_[i], Paragraph::Kind::kText);
    const Text text = plain_of(p.runs);
    if (starts_with(text, kProjectWord) && doc_.project.empty()) {
      doc_.project = Text(without_blanks(TextView(text).substr(kProjectWord.size())));
    }
    if (starts_with(text, kDateWord) && doc_.signature.date.empty()) {
      doc_.signature.date = Text(without_blanks(TextView(text).substr(kDateWord.size())));
    }
    doc_.blocks.emplace_back(std::move(p));
  }
  doc_.blocks.emplace_back(paragraph_of(u"", Paragraph::Kind::kRule));
  return rule + 1;
}

// The end of the rows of a table that could start at line `i`: lines with
// text after two blanks, no heading or rule among them, as long as a further
// line does not join columns (a note under a table whose words cross its
// gaps ends it), at most kMostTableRows of them (a longer run makes tables
// of that many rows, and keeps reading linear).
std::size_t Reader::rows_from(std::size_t i) const {
  std::vector<bool> used;
  std::size_t columns = 0, end = i;
  for (; end < lines_.size() && end - i < kMostTableRows; ++end) {
    const TextView line = lines_[end];
    if (!row_like(line) || heading_level(without_blanks(line)) > 0 || is_rule(line)) break;
    std::vector<bool> with = used;
    mark_used(cell_line(line), with);
    const std::size_t n = columns_in(with).size();
    if (end - i >= 2 && n < columns) break;
    used = std::move(with);
    columns = n;
  }
  return end;
}

// A table from line `i` when the lines there make one, else the line alone.
std::size_t Reader::table_or_line(std::size_t i) {
  const std::size_t end = rows_from(i);
  if (end - i >= 2) {
    std::vector<TextView> block(lines_.begin() + static_cast<std::ptrdiff_t>(i),
                                lines_.begin() + static_cast<std::ptrdiff_t>(end));
    if (std::optional<Table> table = table_of(block)) {
      doc_.blocks.emplace_back(std::move(*table));
      in_equation_ = false;
      return end;
    }
  }
  line(lines_[i]);
  return i + 1;
}

void Reader::line(TextView text) {
  const TextView body = without_blanks(text);
  if (is_rule(text)) {
    doc_.blocks.emplace_back(paragraph_of(u"", Paragraph::Kind::kRule));
    in_equation_ = false;
    return;
  }
  if (const int level = heading_level(body)) {
    Paragraph p = paragraph_of(text, Paragraph::Kind::kHeading);
    p.level = level;
    doc_.blocks.emplace_back(std::move(p));
    in_equation_ = false;
    return;
  }
  // A further line of a broken equation: indented, beginning with an
  // operator, after the equation's first line.
  const bool further = !body.empty() && leading_cells(text) > 0 &&
                       kEquationStarts.find(body.front()) != std::u16string_view::npos;
  const bool equation_line = body.find(u'＝') != TextView::npos;
  Paragraph p = paragraph_of(
      text, further && in_equation_ ? Paragraph::Kind::kEquation : Paragraph::Kind::kText);
  in_equation_ = !body.empty() && (equation_line || (further && in_equation_));
  doc_.blocks.emplace_back(std::move(p));
}

Document Reader::read(TextView markup) {
  lines_ = split_lines(markup);
  std::size_t i = 0;
  while (i < lines_.size() && without_blanks(lines_[i]).empty()) ++i;
  i = header(i);
  if (doc_.blocks.empty()) i = 0;
  while (i < lines_.size()) i = table_or_line(i);
  doc_.program = options_.program;
  if (!options_.project.empty()) doc_.project = options_.project;
  const Text date = doc_.signature.date;
  doc_.signature = options_.signature;
  if (doc_.signature.date.empty()) doc_.signature.date = date;
  return std::move(doc_);
}

// ---- Plain text ---------------------------------------------------------------

Text plain_runs(const std::vector<Run>& runs) {
  Text text;
  for (const Run& run : runs) {
    for (char16_t c : run.text) {
      if (c < 0x20 || c == 0x7F) continue;  // controls have no place in a text file's line
      text.push_back(c);
    }
  }
  return grade_symbols_as_letters(text);
}

Text padded(const Text& text, int width, Align align) {
  const int gap = std::max(0, width - static_cast<int>(codepage::display_width(text)));
  const int left = align == Align::kLeft ? 0 : align == Align::kRight ? gap : gap / 2;
  return Text(static_cast<std::size_t>(left), u' ') + text +
         Text(static_cast<std::size_t>(gap - left), u' ');
}

Text trimmed_right(Text text) {
  while (!text.empty() && text.back() == u' ') text.pop_back();
  return text;
}

constexpr int kPlainWidth = 80;

}  // namespace

Text report_text_from_bytes(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return from_utf8(bytes.substr(3));
  const bool le = bytes.starts_with("\xFF\xFE"), be = bytes.starts_with("\xFE\xFF");
  if (le || be) {
    Text text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
      const auto lo = static_cast<unsigned char>(bytes[le ? i : i + 1]);
      const auto hi = static_cast<unsigned char>(bytes[le ? i + 1 : i]);
      text.push_back(static_cast<char16_t>(hi << 8 | lo));
    }
    return text;
  }
  Text text;
  if (append_utf8(bytes, text)) return text;
  // A few damaged bytes in a UTF-8 file leave it UTF-8 (each a U+FFFD):
  // code page 936 text has hardly any valid multi-byte UTF-8 sequence.
  std::size_t valid = 0, invalid = 0;
  for (std::size_t i = 0, length = 0; i < bytes.size(); i += length) {
    const int32_t c = decode_utf8(bytes, i, length);
    if (c < 0)
      ++invalid;
    else if (c >= 0x80)
      ++valid;
  }
  return valid >= 2 * invalid ? from_utf8(bytes) : codepage::from_ansi(bytes);
}

std::vector<Run> read_runs(TextView line) { return runs_of(styled_chars(line)); }

Document read_report(TextView markup, const ReadOptions& options) {
  return Reader(options).read(markup);
}

Text plain_text(const Document& document) {
  Text out;
  const auto add = [&](Text line) { out += trimmed_right(std::move(line)) + u"\r\n"; };
  // The signature under the header's rule, or first when there is none.
  const auto rule =
      std::find_if(document.blocks.begin(), document.blocks.end(), [](const Block& b) {
        const auto* p = std::get_if<Paragraph>(&b);
        return p && p->kind == Paragraph::Kind::kRule;
      });
  const auto signature = [&] {
    const Signature& s = document.signature;
    const auto name = [](const Text& n) { return n.empty() ? Text(u"________") : n; };
    add(Text(kCalculatedBy) + name(s.calculated_by) + u"  " + kCheckedBy + name(s.checked_by) +
        u"  " + kApprovedBy + name(s.approved_by) + u"  " + kDateCaption + s.date);
  };
  if (rule == document.blocks.end()) signature();
  for (auto it = document.blocks.begin(); it != document.blocks.end(); ++it) {
    if (const auto* p = std::get_if<Paragraph>(&*it)) {
      const Text text = plain_runs(p->runs);
      switch (p->kind) {
        case Paragraph::Kind::kTitle:
          add(padded(text, kPlainWidth, Align::kCenter));
          break;
        case Paragraph::Kind::kRule:
          add(Text(kPlainWidth / 2, kRuleChar));
          break;
        default:
          add(Text(static_cast<std::size_t>(p->indent), u' ') + text);
          break;
      }
    } else if (const auto* t = std::get_if<Table>(&*it)) {
      for (const auto& row : t->rows) {
        Text line(static_cast<std::size_t>(t->indent), u' ');
        for (std::size_t k = 0; k < row.size() && k < t->widths.size(); ++k) {
          line += padded(plain_runs(row[k]), t->widths[k] - 2, t->align[k]) + u"  ";
        }
        add(line);
      }
    } else if (const auto* f = std::get_if<Figure>(&*it)) {
      add(u"[" + f->caption + u"]");
    }
    if (it == rule) signature();
  }
  return out;
}

}  // namespace zelkora::document
