// Breaking a long equation of a report into lines.
//
//   A ＝ 1.2 × 30.5 + 1.4 × 20.1 + ... + 0.7 × 8.4
//        + 0.6 × 3.2 ＝ 123.4kN·m
//
// The width is counted as the text is shown (markup stripped, code page 936
// bytes) against the allowed width, which is never below 80. The rules:
//
//  - A line may break before an operator: "＝", "+", "−", "-", "·", "×", "/".
//    The operator begins the next line; the blanks before it end the line and
//    are dropped.
//  - Not inside a markup run ("_ub(" ... ")ub_" and the other kinds), not
//    before the right-hand side of the first "＝" begins, and not inside a
//    number: an operator inside a word (a run without blanks) that begins
//    with a number is none ("165.6kN·m", "2.5e-3", "1/2", "1.2×3.45" stay
//    whole), nor is a "+", "-" or "−" that is a sign (at the start, or after
//    an operator, "＝", "=", a comma or an opening bracket) or an exponent's
//    sign ("(1.5e-3)").
//  - Of the break points whose line fits, the last is taken; where none fits,
//    the first, so that a line is never broken elsewhere and always moves on.
//  - The lines after the first are indented to the first right-hand side:
//    by the shown width of the text up to it ("A ＝ " is 5). Without "＝", or
//    when that indent is more than half the width, by 4 blanks.
//  - Trailing blanks are removed from every line; an equation that fits, or
//    has no break point, stays one line.
#pragma once

#include <vector>

#include "zelkora/platform/text.h"

namespace zelkora::typeset {

// The smallest width an equation is broken to.
constexpr int kMinEquationWidth = 80;

// The equation broken into lines by the rules above (raised to 80 when
// `width` is below). An empty equation, or one of blanks, gives no lines.
std::vector<Text> split_equation(TextView equation, int width);

}  // namespace zelkora::typeset
