// Format codes: the short texts ("kn", "knd_2", "3", "mm2d") by which the
// suite names how a number is printed, turned into picture patterns, and the
// trimming of trailing zeros that the tFmt family applies to the result.
//
// A code is read after trimming its blanks and lower-casing its ASCII
// letters: a unit part, then an optional "d" (print the unit's symbol), then
// an optional "_" and one digit (the decimals, overriding the unit's).
//
//   parse_format_code(u"kn")      unit "kn", 1 decimal, no symbol -> "#0.0"
//   parse_format_code(u"KN d_2 ") unit "kn", 2 decimals, symbol  -> "#0.00kN"
//   parse_format_code(u"mm3")     whole numbers (while "m3" has 3 decimals)
//   parse_format_code(u"percent") decimals -1 -> "Percent"
//   parse_format_code(u"0.0E+00") not a code: decimals -10, the pattern is
//                                 the text itself, as given
#pragma once

#include <cstdint>

#include "zelkora/platform/text.h"

namespace zelkora::typeset {

constexpr int16_t kPercentDecimals = -1;
constexpr int16_t kPatternDecimals = -10;

// The power in a unit symbol: none, squared, cubed or fourth.
enum class UnitPower { None, Squared, Cubed, Fourth };

struct FormatCode {
  int16_t decimals = 0;
  bool display = false;  // the unit symbol is printed
  TextView symbol;       // the symbol without its power sign
  UnitPower power = UnitPower::None;
};

// Reads a code. The unit table fixes the decimals of each kind of quantity in
// the suite's reports; an unknown unit part gives kPatternDecimals (the code
// is then a pattern of the caller's own) unless the decimals are overridden.
FormatCode parse_format_code(TextView code);

// The power signs a unit symbol ends with.
struct PowerSigns {
  TextView squared;
  TextView cubed;
  TextView fourth;
};

// Writes the picture pattern of a parsed code into `pattern` (replacing what
// it held): "#0", "#0." and the decimals' zeros, or "Percent", then the unit
// symbol and its power sign when the code asks for it. `code` is the code as
// given, which is the pattern itself when the decimals are kPatternDecimals.
void write_pattern(Text& pattern, const FormatCode& parsed, TextView code, const PowerSigns& signs);

// The pattern of a number with `decimals` decimals (at least 0): "#0" or
// "#0.000".
void write_number_pattern(Text& pattern, int decimals);

// Trims the trailing zeros of the first number in `s` after the decimal
// symbol. A bare number (nothing after its digits) is trimmed and a number
// with a unit symbol keeps its zeros; `fix` crosses the rule. All decimals
// zero drops the decimal symbol too. Without the decimal symbol nothing
// changes.
void trim_trailing_zeros(Text& s, char16_t decimal_symbol, bool fix);

}  // namespace zelkora::typeset
