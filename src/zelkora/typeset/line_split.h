// Line splitting: breaking report lines that are wider than the report width.
//
// Two kinds of breaking live here.
//
// `split_single_line` (clsCharacter::SplitSngLineToMulLine) breaks one logical
// line at a separator the caller names, so that no physical line is wider than
// the allowed width, and indents the continuation lines:
//
//   split_single_line(u"a = 1, b = 2, ...", u", ", u"\r\n", 0, 4, 80);
//
// It measures the raw line (markers count with their characters) and never
// breaks inside a part.
//
// `wrap_text` (clsCharacter::SplitTextToMulLine and SplitSP26) wraps a whole
// text to a width by itself. Its width is the width as shown: markup
// stripped, code page 936 bytes (`markup_display_width`), indent included,
// trailing blanks not counted. Its break rules:
//
//  - CR, LF and CR LF are hard line breaks; each paragraph between them starts
//    on a new line with the first-line indent, and every further line of it
//    gets the following-line indent. An empty paragraph gives an empty line;
//    a line break at the very end of the text starts no further line.
//  - A run of blanks is a break point; the blanks at a break are dropped.
//  - A line may break after Chinese punctuation that closes or separates
//    (，。；：、！？）」』】》 ... and the ideographic space), before a Chinese
//    opening bracket, and before or after a Chinese ideograph.
//  - No line starts with closing punctuation (Chinese or ASCII ",.;:!?)]}%")
//    and no line ends with an opening bracket (（「『【《 ... or "([{"); a break
//    point that would do either is not one.
//  - Never inside a markup run ("_ub(" ... ")ub_" and the other kinds, when
//    the end marker follows), and never just before a subscript or
//    superscript start marker: a script stays with its base. A bold run may
//    begin a line.
//  - Of the break points whose line fits, the last is taken. A word without a
//    break point that is wider than the line is cut at the width, preferably
//    outside a markup run, but never inside a marker or a surrogate pair. A
//    line always takes at least one shown character, even one wider than the
//    line, so wrapping always moves on.
//  - The first line of a paragraph keeps the paragraph's own leading blanks;
//    the following lines start at their first non-blank. Trailing blanks of
//    every line, the indent included, are removed.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "zelkora/platform/text.h"

namespace zelkora::typeset {

// Any narrower width asked of `split_single_line` is raised to this one.
constexpr int16_t kMinSingleLineWidth = 80;

// The line broken at `separator`, every physical line followed by `line_end`,
// the first one `indent` blanks in, the others `indent` + `indent_add`; or
// nothing for a line of blanks only.
//
// The separator is found without regard to case. The separator at a break is
// dropped; the separators within a line are kept. The first part is never
// measured on its own, a part wider than the width stands alone on its line,
// and only the last part is trimmed when it starts a line. A negative indent
// (or sum of indents) counts as none. The sum `indent` + `indent_add` is a
// 16-bit sum: when a continuation line is needed and it overflows,
// Fault(Overflow) is thrown.
std::optional<Text> split_single_line(TextView line, TextView separator, TextView line_end,
                                      int16_t indent = 0, int16_t indent_add = 0,
                                      int16_t max_width = 0);

// The page that `wrap_text` fills. Negative indents count as none.
struct WrapLayout {
  int width = 80;            // display cells of a line, indent included
  int first_indent = 0;      // blanks before the first line of a paragraph
  int following_indent = 4;  // blanks before each further line
};

// The text wrapped into lines, by the rules above. An empty text gives no
// lines.
std::vector<Text> wrap_text(TextView text, const WrapLayout& layout);

// The lines, each followed by `line_end`.
Text join_lines(const std::vector<Text>& lines, TextView line_end);

// A text without line breaks that fits on its first line, as it is (trailing
// blanks and all); any other text wrapped, with `line_break` between the
// lines and none after the last.
Text wrap_between(TextView text, const WrapLayout& layout, TextView line_break);

}  // namespace zelkora::typeset
