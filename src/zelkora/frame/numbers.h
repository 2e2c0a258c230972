// The number rules that the whole library shares: how a typed text is read
// as a number, how a number becomes an integer, and how a number is written
// back as text. Every unit that reads or shows a number goes through these
// functions, so that one input box, one report table and one data file all
// agree on what "1,000.5" or "2.5" means.
//
// The user's notation is passed in as `NumberSymbols` (the decimal symbol and
// the digit-grouping symbol of the number locale):
//
//   NumberSymbols dot;                       // "1,234.5"
//   NumberSymbols comma{u',', u'.'};         // "1.234,5"
//   parse_number(u" 1,234.5 ", dot)          // 1234.5
//   parse_number(u"2,5", comma)              // 2.5
//   is_numeric(u"1E", dot)                   // false
//   leading_number(u"  12.5 kN")             // 12.5 (always "." as decimal point)
//   to_int32(2.5)                            // 2 (half to even)
//   general_number_text(0.1 + 0.2, dot)      // "0.3"
//
// Blanks around a number are spaces and horizontal tabs (a value pasted from a
// spreadsheet keeps its tab). Digits are the ASCII digits only.
//
// Inside the library the readings that cannot fail are used: parse_number,
// leading_value, rounded_int16 and rounded_int32 answer nothing where there
// is no value. The throwing forms are for the operations whose run-time
// errors reach the caller: the integer conversions throw
// `Fault(FaultKind::Overflow)` for a value outside the type (and for NaN);
// the text conversions throw `Fault(FaultKind::Conversion)` for a text that is
// not a number, and `Fault(FaultKind::Overflow)` for a well-formed number
// beyond the range of double ("1E400"). Nothing else here throws.
#pragma once

#include <cstdint>
#include <optional>

#include "zelkora/frame/number_symbols.h"
#include "zelkora/platform/text.h"

namespace zelkora::frame {

// ---- Reading a typed number ------------------------------------------------
//
// Grammar, after surrounding blanks are removed:
//   [+|-] mantissa [exponent]
//   mantissa: digits [decimal [digits]]  |  decimal digits
//             the integer digits may carry grouping symbols anywhere after the
//             first digit ("1,000", "1,00", "1,,0", "1," are all accepted), never
//             before it (",5" and "-,5" are not numbers); no grouping in the
//             fraction or the exponent
//   exponent: (E|e|D|d) [+|-] digit...
// The value is the correctly rounded double. A number beyond the range of
// double is not a number; one below the smallest subnormal becomes zero
// (keeping its sign).
//
// With decimal "," and grouping ".": "2,5" is 2.5, "1.000,5" is 1000.5, and
// "2.5" is 25, because "." is then a grouping symbol between digits.

// The value of `text`, or nothing when it is not a number in this notation.
[[nodiscard]] std::optional<double> parse_number(TextView text, const NumberSymbols& symbols);

// True when `text` is a number in this notation (parse_number has a value).
bool is_numeric(TextView text, const NumberSymbols& symbols);

// The number at the start of `text`, reading as far as the text can continue
// a number: blanks skipped, one optional sign, digits, "." as decimal point
// (whatever the locale), an optional exponent E/D with optional sign. No
// grouping. Text without a number gives 0; an exponent without digits is not
// read ("1E" gives 1, "1E+x" gives 1). A number beyond the range of double
// throws Fault(Overflow).
double leading_number(TextView text);
// The same without the fault: nothing for a number beyond the range of double.
[[nodiscard]] std::optional<double> leading_value(TextView text);

// ---- Integers --------------------------------------------------------------
//
// Rounding is half to even: 0.5 -> 0, 1.5 -> 2, 2.5 -> 2, -2.5 -> -2. A value
// that is outside the type after rounding, NaN and the infinities throw
// Fault(Overflow): 32767.5 rounds to 32768 and overflows an int16_t, while
// -32768.5 rounds to -32768 and fits.

int16_t to_int16(double value);
int32_t to_int32(double value);
// The same without the fault: nothing where the value does not fit.
[[nodiscard]] std::optional<int16_t> rounded_int16(double value);
[[nodiscard]] std::optional<int32_t> rounded_int32(double value);

// The text conversions: parse_number, then (for the integers) the rounding
// above. Not a number: Fault(Conversion); beyond double or the integer type:
// Fault(Overflow).
double text_to_double(TextView text, const NumberSymbols& symbols);
int16_t text_to_int16(TextView text, const NumberSymbols& symbols);
int32_t text_to_int32(TextView text, const NumberSymbols& symbols);

// ---- Writing a number --------------------------------------------------------
//
// The general number text: the value rounded to 15 significant digits, then
// written without trailing zeros and without grouping, with the locale's
// decimal symbol. Fixed notation when 1E-4 <= |rounded| < 1E15, otherwise
// scientific with a signed exponent of at least two digits: "1.5E+20",
// "1E-05", "-2.5E-07", "4.94065645841247E-324". Zero of either sign is "0".
// NaN is "NaN" and the infinities are "Infinity" and "-Infinity" (none of
// which reads back as a number).

Text general_number_text(double value, const NumberSymbols& symbols);

// Appends the general number text to `out`; allocates nothing but the growth
// of `out`.
void append_general_number(Text& out, double value, const NumberSymbols& symbols);

}  // namespace zelkora::frame
