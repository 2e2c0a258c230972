// Splitting and wrapping lines.
#include "zelkora/typeset/line_split.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/fault.h"
#include "zelkora/typeset/markup.h"

namespace zelkora::typeset {

namespace {

constexpr char16_t kBlank = u' ';
constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

bool is_high_surrogate(char16_t c) { return (c & 0xFC00) == 0xD800; }
bool is_low_surrogate(char16_t c) { return (c & 0xFC00) == 0xDC00; }

std::size_t blanks(int count) { return count > 0 ? static_cast<std::size_t>(count) : 0; }

// ---- Single-line splitting --------------------------------------------------

// The width of a line as it grows, without measuring it again for each piece:
// its code page width and the blanks at its end, so its width without
// trailing blanks is the difference.
struct Extent {
  std::size_t width = 0;
  std::size_t trailing = 0;
  char16_t last = 0;

  Extent plus(TextView piece) const {
    if (piece.empty()) return *this;
    Extent e = *this;
    e.width += codepage::display_width(piece);
    // A surrogate pair formed across the join is one "?".
    if (is_high_surrogate(last) && is_low_surrogate(piece.front())) --e.width;
    const std::size_t end_blanks = piece.size() - trim_right(piece).size();
    e.trailing = end_blanks == piece.size() ? trailing + end_blanks : end_blanks;
    e.last = piece.back();
    return e;
  }
  std::size_t shown() const { return width - trailing; }
};

// A line being built, with its extent.
struct GrowingLine {
  Text text;
  Extent extent;

  void start(std::size_t indent, TextView piece) {
    text.assign(indent, kBlank);
    extent = Extent().plus(text).plus(piece);
    text.append(piece);
  }
  void append(TextView piece) {
    extent = extent.plus(piece);
    text.append(piece);
  }
  TextView trimmed() const { return TextView(text).substr(0, text.size() - extent.trailing); }
};

int16_t continuation_indent(int16_t indent, int16_t indent_add) {
  const int sum = int{indent} + int{indent_add};
  if (sum < std::numeric_limits<int16_t>::min() || sum > std::numeric_limits<int16_t>::max()) {
    throw Fault(FaultKind::Overflow, "the indent " + std::to_string(indent) + " + " +
                                         std::to_string(indent_add) +
                                         " overflows a 16-bit integer");
  }
  return static_cast<int16_t>(sum);
}

// ---- Wrapping -----------------------------------------------------------------

// The markers of the markup: start and end of each kind, the start at the
// even index. Kinds: 0 subscript, 1 superscript, 2 bold.
constexpr std::array<TextView, 6> kMarkers = {u"_ub(", u")ub_", u"_up(", u")up_", u"_bb(", u")bb_"};
constexpr std::size_t kMarkerLength = 4;
constexpr int kBoldKind = 2;

int marker_at(TextView text, std::size_t i) {
  if (text.size() - i < kMarkerLength || (text[i] != u'_' && text[i] != u')')) return -1;
  const TextView here = text.substr(i, kMarkerLength);
  for (std::size_t m = 0; m < kMarkers.size(); ++m) {
    if (here == kMarkers[m]) return static_cast<int>(m);
  }
  return -1;
}

bool is_ideograph(char16_t c) {
  return (c >= 0x3400 && c <= 0x4DBF) || (c >= 0x4E00 && c <= 0x9FFF) ||
         (c >= 0xF900 && c <= 0xFAFF);
}

// Chinese punctuation that closes or separates, and the ideographic space: a
// line may break after it, and none begins with it.
constexpr TextView kChineseClosing = u"，。；：、！？）」』】》〉〕］｝”’…％．　";
// ASCII punctuation that no line begins with.
constexpr TextView kAsciiClosing = u",.;:!?)]}%";
// Chinese opening brackets: a line may break before one.
constexpr TextView kChineseOpening = u"（「『【《〈〔［｛“‘";
constexpr TextView kAsciiOpening = u"([{";

bool in(TextView set, char16_t c) { return set.find(c) != TextView::npos; }
bool is_closing(char16_t c) { return in(kChineseClosing, c) || in(kAsciiClosing, c); }
bool is_opening(char16_t c) { return in(kChineseOpening, c) || in(kAsciiOpening, c); }

// One piece that a line never splits: a marker, a surrogate pair or one
// character.
struct Atom {
  std::size_t pos;
  std::size_t cells;  // shown width; a marker none
  int marker;         // index into kMarkers, or -1 for a shown character
  char16_t first;     // its first unit
  bool shown() const { return marker < 0; }
  bool blank() const { return marker < 0 && first == kBlank; }
};

// A point where a line may end: the line ends before atom `end`, the next
// line starts at atom `next` (after the blanks dropped at the break).
struct BreakPoint {
  std::size_t end;
  std::size_t next;
};

// One paragraph (a text between hard line breaks) cut into atoms, with its
// break points.
class Paragraph {
 public:
  explicit Paragraph(TextView text) : text_(text) {
    cut_atoms();
    mark_runs();
    find_break_points();
  }

  std::vector<Text> wrap(const WrapLayout& layout) const {
    std::vector<Text> lines;
    const std::size_t count = atoms_.size();
    const std::size_t content_end = last_content();
    std::size_t start = 0;
    std::size_t next_break = 0;
    bool first = true;
    do {
      const std::size_t indent = blanks(first ? layout.first_indent : layout.following_indent);
      const long long room = static_cast<long long>(layout.width) - static_cast<long long>(indent);
      std::size_t content = start;
      while (content < content_end && atoms_[content].blank()) ++content;
      while (next_break < breaks_.size() && breaks_[next_break].end <= content) ++next_break;

      std::size_t end = content_end;
      std::size_t next = count;
      if (content < content_end && !fits(start, content_end, room)) {
        const std::size_t taken = last_fitting_break(start, next_break, room);
        if (taken != kNone) {
          end = breaks_[taken].end;
          next = breaks_[taken].next;
          next_break = taken + 1;
        } else {
          const std::size_t limit =
              next_break < breaks_.size() ? breaks_[next_break].end : content_end;
          end = cut(start, content, limit, room);
          next = end;
        }
      }
      Text line(indent, kBlank);
      line.append(slice(start, end));
      line.resize(trim_right(line).size());
      lines.push_back(std::move(line));

      start = next;
      while (start < count && atoms_[start].blank()) ++start;
      first = false;
    } while (start < content_end);
    return lines;
  }

 private:
  std::size_t pos(std::size_t atom) const {
    return atom < atoms_.size() ? atoms_[atom].pos : text_.size();
  }
  TextView slice(std::size_t from, std::size_t to) const {
    return text_.substr(pos(from), pos(to) - pos(from));
  }

  void cut_atoms() {
    for (std::size_t i = 0; i < text_.size();) {
      const int m = marker_at(text_, i);
      if (m >= 0) {
        atoms_.push_back({i, 0, m, text_[i]});
        i += kMarkerLength;
      } else if (is_high_surrogate(text_[i]) && i + 1 < text_.size() &&
                 is_low_surrogate(text_[i + 1])) {
        atoms_.push_back({i, 1, -1, text_[i]});
        i += 2;
      } else {
        atoms_.push_back(
            {i, static_cast<std::size_t>(codepage::char_width(text_[i])), -1, text_[i]});
        i += 1;
      }
    }
    cells_.assign(atoms_.size() + 1, 0);
    for (std::size_t k = 0; k < atoms_.size(); ++k) cells_[k + 1] = cells_[k] + atoms_[k].cells;
  }

  // `sticky_[k]`: the boundary before atom k must not end a line, because it
  // lies inside a markup run (a start marker and the next marker of its kind,
  // which ends it) or just before a subscript or superscript start.
  void mark_runs() {
    sticky_.assign(atoms_.size() + 1, false);
    std::array<std::size_t, 3> open = {kNone, kNone, kNone};
    for (std::size_t k = 0; k < atoms_.size(); ++k) {
      const int m = atoms_[k].marker;
      if (m < 0) continue;
      const int kind = m / 2;
      if (m % 2 == 0) {
        open[kind] = k;
        if (kind != kBoldKind) sticky_[k] = true;
      } else if (open[kind] != kNone) {
        std::fill(sticky_.begin() + static_cast<std::ptrdiff_t>(open[kind]) + 1,
                  sticky_.begin() + static_cast<std::ptrdiff_t>(k) + 1, true);
        open[kind] = kNone;
      }
    }
  }

  std::size_t shown_before(std::size_t k) const {
    while (k > 0) {
      if (atoms_[--k].shown()) return k;
    }
    return kNone;
  }
  std::size_t shown_from(std::size_t k) const {
    while (k < atoms_.size() && !atoms_[k].shown()) ++k;
    return k < atoms_.size() ? k : kNone;
  }

  void find_break_points() {
    std::size_t prev = kNone;  // the last shown atom
    for (std::size_t k = 0; k < atoms_.size(); ++k) {
      const Atom& a = atoms_[k];
      if (!a.shown()) continue;
      if (a.blank()) {
        std::size_t run_end = k;
        while (run_end < atoms_.size() && atoms_[run_end].blank()) ++run_end;
        add_blank_break(k, run_end);
        prev = run_end - 1;
        k = run_end - 1;
        continue;
      }
      if (prev != kNone && !atoms_[prev].blank()) add_gap_break(prev, k);
      prev = k;
    }
  }

  // The blanks of atoms [from, to) as a break point: they are dropped.
  void add_blank_break(std::size_t from, std::size_t to) {
    if (from == 0 || to == atoms_.size() || sticky_[from]) return;
    const std::size_t before = shown_before(from);
    const std::size_t after = shown_from(to);
    if (before == kNone || after == kNone) return;
    if (is_opening(atoms_[before].first) || is_closing(atoms_[after].first)) return;
    breaks_.push_back({from, to});
  }

  // The boundary between shown atoms a and b (only markers between them).
  void add_gap_break(std::size_t a, std::size_t b) {
    const char16_t left = atoms_[a].first;
    const char16_t right = atoms_[b].first;
    if (is_opening(left) || is_closing(right)) return;
    if (!in(kChineseClosing, left) && !is_ideograph(left) && !is_ideograph(right) &&
        !in(kChineseOpening, right)) {
      return;
    }
    // Between the two, a line ends after the end markers and before the
    // start markers.
    std::size_t at = b;
    for (std::size_t k = a + 1; k < b; ++k) {
      if (atoms_[k].marker % 2 == 0) {
        at = k;
        break;
      }
    }
    if (sticky_[at]) return;
    breaks_.push_back({at, at});
  }

  // The last atom that is not a blank, plus one.
  std::size_t last_content() const {
    std::size_t end = atoms_.size();
    while (end > 0 && atoms_[end - 1].blank()) --end;
    return end;
  }

  // Whether atoms [from, to) fit `room` cells as shown. The cell sums decide
  // quickly; the line itself is measured as the stripper sees it, which
  // differs only for markers formed or overlapped by stripping.
  bool fits(std::size_t from, std::size_t to, long long room) const {
    if (room < 0 || static_cast<long long>(cells_[to] - cells_[from]) > room) return false;
    return static_cast<long long>(markup_display_width(trim_right(slice(from, to)))) <= room;
  }
  bool cells_fit(std::size_t from, std::size_t to, long long room) const {
    return room >= 0 && static_cast<long long>(cells_[to] - cells_[from]) <= room;
  }

  // The last break point from `first` on whose line fits, or kNone.
  std::size_t last_fitting_break(std::size_t start, std::size_t first, long long room) const {
    std::size_t last = first;
    while (last < breaks_.size() && cells_fit(start, breaks_[last].end, room)) ++last;
    while (last > first) {
      --last;
      if (fits(start, breaks_[last].end, room)) return last;
    }
    return kNone;
  }

  // Where a word that runs from `content` (the line's first non-blank) to
  // `limit` and is wider than the line is cut: the last atom boundary whose
  // line fits, outside a markup run if there is one; else just after the
  // first shown atom.
  std::size_t cut(std::size_t start, std::size_t content, std::size_t limit, long long room) const {
    const std::size_t shown = shown_from(content);
    if (shown == kNone || shown >= limit) return limit;
    std::size_t last = shown + 1;
    while (last < limit && cells_fit(start, last, room)) ++last;
    for (const bool loose : {false, true}) {
      for (std::size_t k = last; k-- > shown + 1;) {
        if ((loose || !sticky_[k]) && fits(start, k, room)) return k;
      }
    }
    return shown + 1;
  }

  TextView text_;
  std::vector<Atom> atoms_;
  std::vector<std::size_t> cells_;  // cells_[k]: shown width of atoms [0, k)
  std::vector<bool> sticky_;
  std::vector<BreakPoint> breaks_;
};

}  // namespace

std::optional<Text> split_single_line(TextView line, TextView separator, TextView line_end,
                                      int16_t indent, int16_t indent_add, int16_t max_width) {
  if (trim(line).empty()) return std::nullopt;
  const std::vector<Text> parts = split_text(trim_left(line), separator, Compare::Text);
  const std::size_t width = static_cast<std::size_t>(std::max(max_width, kMinSingleLineWidth));

  Text out;
  GrowingLine current;
  current.start(blanks(indent), parts[0]);
  const std::size_t last = parts.size() - 1;
  if (last == 0) {
    out.append(current.trimmed()).append(line_end);
    return out;
  }
  for (std::size_t i = 1; i <= last; ++i) {
    // The separator goes in as the caller wrote it, whatever case it was
    // found in.
    if (current.extent.plus(separator).plus(parts[i]).shown() <= width) {
      current.append(separator);
      current.append(parts[i]);
      if (i == last) out.append(current.trimmed()).append(line_end);
      continue;
    }
    out.append(current.trimmed()).append(line_end);
    const std::size_t next_indent = blanks(continuation_indent(indent, indent_add));
    if (i == last) {
      out.append(next_indent, kBlank).append(trim(parts[i])).append(line_end);
    } else {
      current.start(next_indent, parts[i]);
    }
  }
  return out;
}

std::vector<Text> wrap_text(TextView text, const WrapLayout& layout) {
  std::vector<Text> lines;
  std::size_t from = 0;
  while (from < text.size()) {
    std::size_t end = text.find_first_of(u"\r\n", from);
    if (end == TextView::npos) end = text.size();
    for (Text& line : Paragraph(text.substr(from, end - from)).wrap(layout)) {
      lines.push_back(std::move(line));
    }
    if (end == text.size()) break;
    const bool crlf = text[end] == u'\r' && end + 1 < text.size() && text[end + 1] == u'\n';
    from = end + (crlf ? 2 : 1);
  }
  return lines;
}

Text join_lines(const std::vector<Text>& lines, TextView line_end) {
  Text out;
  for (const Text& line : lines) out.append(line).append(line_end);
  return out;
}

Text wrap_between(TextView text, const WrapLayout& layout, TextView line_break) {
  const std::vector<Text> lines = wrap_text(text, layout);
  if (lines.size() == 1 && lines[0] == trim_right(text)) return Text(text);
  Text out;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) out.append(line_break);
    out.append(lines[i]);
  }
  return out;
}

}  // namespace zelkora::typeset

namespace zelkora {

void clsCharacter::SplitSngLineToMulLine(TextView tSngLine, Text& tMulLine, TextView tSplit,
                                         TextView tEnter, int16_t iPreSpace, int16_t iPreSpaceAdd,
                                         int16_t iMaxChr) const {
  if (auto broken =
          typeset::split_single_line(tSngLine, tSplit, tEnter, iPreSpace, iPreSpaceAdd, iMaxChr)) {
    tMulLine = std::move(*broken);
  }
}

int32_t clsCharacter::SplitTextToMulLine(TextView tText, std::vector<Text>& tLines, Text& tMulLine,
                                         TextView tEnter, int16_t iMaxChr, int16_t iFstPreSpace,
                                         int16_t iSecPreSpace) const {
  const typeset::WrapLayout layout{iMaxChr > 0 ? iMaxChr : iMaxChrNow(), iFstPreSpace,
                                   iSecPreSpace};
  tLines = typeset::wrap_text(tText, layout);
  tMulLine = typeset::join_lines(tLines, tEnter);
  return static_cast<int32_t>(tLines.size());
}

Text clsCharacter::SplitSP26(TextView tText) const {
  const typeset::WrapLayout layout{iMaxChrNow(), first_indent_, following_indent_};
  return typeset::wrap_between(tText, layout, tConEnter1());
}

}  // namespace zelkora
