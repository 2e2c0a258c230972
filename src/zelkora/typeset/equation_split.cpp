// Breaking a long equation into lines at its operators.
#include "zelkora/typeset/equation_split.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "zelkora/frame/cls_character.h"
#include "zelkora/typeset/markup.h"

namespace zelkora::typeset {

namespace {

constexpr char16_t kEquals = u'＝';
constexpr TextView kOperators = u"＝+−-·×/";
constexpr TextView kSigns = u"+−-";
// After these a "+", "-" or "−" is a sign.
constexpr TextView kSignContext = u"＝=+−-·×/*,，(（[【{";
constexpr int kFallbackIndent = 4;

bool is_digit(char16_t c) { return c >= u'0' && c <= u'9'; }
bool is_blank(char16_t c) { return c == u' '; }
bool is_in(TextView set, char16_t c) { return set.find(c) != TextView::npos; }

// Marks the units inside markup runs: a run begins at its start marker and
// ends after its end marker; a start marker without an end marker opens none.
// The next end marker of each kind is remembered, so the text is read once.
std::vector<bool> inside_runs(TextView text) {
  struct Run {
    TextView start, end;
    std::size_t next_end = 0;  // the first end marker at or after `searched`
    std::size_t searched = 0;
    bool found_any = true;
  };
  std::array<Run, 3> runs = {Run{u"_ub(", u")ub_"}, Run{u"_up(", u")up_"}, Run{u"_bb(", u")bb_"}};
  std::vector<bool> inside(text.size(), false);
  for (std::size_t i = 0; i < text.size(); ++i) {
    for (Run& run : runs) {
      if (text.substr(i, run.start.size()) != run.start) continue;
      const std::size_t from = i + run.start.size();
      if (run.found_any && (run.searched == 0 || run.next_end < from)) {
        run.next_end = text.find(run.end, from);
        run.searched = from;
        run.found_any = run.next_end != TextView::npos;
      }
      if (!run.found_any) continue;
      const std::size_t after = run.next_end + run.end.size();
      std::fill(inside.begin() + static_cast<std::ptrdiff_t>(i),
                inside.begin() + static_cast<std::ptrdiff_t>(after), true);
      i = after - 1;
      break;
    }
  }
  return inside;
}

// The last non-blank unit before `at`, or 0 when there is none.
char16_t previous_non_blank(TextView text, std::size_t at) {
  while (at > 0 && is_blank(text[at - 1])) --at;
  return at == 0 ? u'\0' : text[at - 1];
}

// Whether the word (a run without blanks) that begins at `word` and holds
// `at` begins with a number: a number with its unit or a product written
// without blanks ("165.6kN·m", "1/2", "1.2×3.45") is not broken.
bool in_number_word(TextView text, std::size_t word, std::size_t at) {
  if (word == at) return false;  // the operator begins the word
  if (is_in(kSigns, text[word])) ++word;
  return word < at && is_digit(text[word]);
}

bool is_number_part(TextView text, std::size_t word, std::size_t at) {
  const char16_t c = text[at];
  if (in_number_word(text, word, at)) return true;
  if (!is_in(kSigns, c)) return false;
  const bool digit_after = at + 1 < text.size() && is_digit(text[at + 1]);
  if (at >= 2 && (text[at - 1] == u'e' || text[at - 1] == u'E') && is_digit(text[at - 2]) &&
      digit_after) {
    return true;  // an exponent's sign
  }
  const char16_t before = previous_non_blank(text, at);
  return before == u'\0' || is_in(kSignContext, before);
}

// Where the right-hand side of the first "＝" begins, or nothing.
std::optional<std::size_t> first_right_hand_side(TextView text) {
  std::size_t at = text.find(kEquals);
  if (at == TextView::npos) return std::nullopt;
  for (++at; at < text.size() && is_blank(text[at]);) ++at;
  return at;
}

std::vector<std::size_t> break_points(TextView text, std::size_t from) {
  const std::vector<bool> inside = inside_runs(text);
  std::vector<std::size_t> points;
  std::size_t word = 0;  // where the word around i begins
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (is_blank(text[i])) {
      word = i + 1;
    } else if (i >= from && !inside[i] && is_in(kOperators, text[i]) &&
               !is_number_part(text, word, i)) {
      points.push_back(i);
    }
  }
  return points;
}

// The text cut at its break points into pieces (the first before the first
// break point, each other one from its operator on), with their shown widths
// and their trailing blanks. No marker spans a break point (the operators are
// no marker characters and no break point lies inside a run), so a line's
// width is the sum of its pieces' widths less the last one's trailing blanks.
struct Piece {
  std::size_t begin;
  int64_t width;
  int64_t trailing_blanks;
};

std::vector<Piece> pieces(TextView text, const std::vector<std::size_t>& points) {
  std::vector<Piece> out;
  std::size_t begin = 0;
  for (std::size_t k = 0; k <= points.size(); ++k) {
    const std::size_t end = k < points.size() ? points[k] : text.size();
    const TextView piece = text.substr(begin, end - begin);
    out.push_back({begin, static_cast<int64_t>(markup_display_width(piece)),
                   static_cast<int64_t>(piece.size() - trim_right(piece).size())});
    begin = end;
  }
  return out;
}

}  // namespace

std::vector<Text> split_equation(TextView equation, int width) {
  const TextView text = trim_right(equation);
  if (trim(text).empty()) return {};
  width = std::max(width, kMinEquationWidth);
  const std::optional<std::size_t> rhs = first_right_hand_side(text);
  int indent = rhs ? static_cast<int>(markup_display_width(text.substr(0, *rhs))) : kFallbackIndent;
  if (indent > width / 2) indent = kFallbackIndent;

  const std::vector<Piece> parts = pieces(text, break_points(text, rhs.value_or(0) + 1));
  const auto line_of = [&](std::size_t first, std::size_t end, int prefix) {
    const std::size_t to = end < parts.size() ? parts[end].begin : text.size();
    return Text(static_cast<std::size_t>(prefix), u' ') +
           Text(trim_right(text.substr(parts[first].begin, to - parts[first].begin)));
  };
  std::vector<Text> lines;
  int prefix = 0;  // the indent of the line being filled
  for (std::size_t first = 0; first < parts.size();) {
    // Pieces first..end-1 make the line: as many as fit, at least one.
    std::size_t end = first + 1;
    int64_t sum = prefix + parts[first].width;
    while (end < parts.size() && sum + parts[end].width - parts[end].trailing_blanks <= width) {
      sum += parts[end].width;
      ++end;
    }
    lines.push_back(line_of(first, end, prefix));
    first = end;
    prefix = indent;
  }
  return lines;
}

}  // namespace zelkora::typeset

namespace zelkora {

Text clsCharacter::SplitEQ(TextView tEq) const {
  Text joined;
  for (const Text& line : typeset::split_equation(tEq, iMaxChrNow())) {
    if (!joined.empty()) joined += tConEnter1();
    joined += line;
  }
  return joined;
}

void clsCharacter::SplitLineCalEQ(TextView tEq) {
  const Text broken = SplitEQ(tEq);
  if (broken.empty()) return;
  Txt(broken);
  Txt(tConEnter1());
}

}  // namespace zelkora
