// The picture formatter: a number written by a picture pattern, the way every
// report number of the suite is written.
//
//   NumberSymbols dot;                                  // "." and ","
//   format_picture(2.675, u"0.00", dot)                 // "2.68"
//   format_picture(1234567.8, u"#,##0.00", dot)         // "1,234,567.80"
//   format_picture(0.125, u"Percent", dot)              // "12.50%"
//   format_picture(12345, u"0.00E+00", dot)             // "1.23E+04"
//   format_picture(-3, u"0.0;(0.0)", dot)               // "(3.0)"
//   format_picture(2.5, u"0.00", {u',', u'.'})          // "2,50"
//
// The language:
//   0        a digit, or 0 where the number has none
//   #        a digit, or nothing where the number has none
//   .        the decimal point (the first "." of a section), printed as the
//            locale's decimal symbol, even when no digit follows ("#." of 5
//            is "5.")
//   ,        between digit placeholders of the integer part: digit grouping
//            by thousands, printed as the locale's grouping symbol (nothing
//            when the locale groups no digits); after the last integer
//            placeholder: the number divided by 1000 for each such comma
//            ("#0," of 12345 is "12"); anywhere else a literal ","
//   %        the number multiplied by 100, and "%" printed
//   E+ E- e+ e-  followed by a digit placeholder: scientific notation. "E+"
//            always prints the exponent's sign, "E-" only a minus. The
//            mantissa gets as many integer digits as the integer part has
//            placeholders; with a "#" among them the exponent is a multiple of
//            that count ("##0.0E+0" is engineering notation). The exponent has
//            at least as many digits as its placeholders from the first "0"
//            on, and at least one.
//   \x       the character x as it is; a "\" at the end prints nothing
//   "..."    the characters between the quotes as they are (an unclosed
//            quote runs to the end of the section)
//   ;        separates up to three sections: positive and zero values; negative
//            values (written without their minus sign); zero. Text after a
//            third ";" is ignored. An empty or missing section is replaced by
//            the first; a negative value then gets a "-" at the very front.
//   anything else is printed as it stands (a second ".", letters, blanks,
//   "kN", "_up(2)up_").
// Integer digits beyond the placeholders are all printed at the first one;
// "0" placeholders set the least number of digits from the first "0" on
// ("#0" of 0.4 is "0", "#" of 0.4 is ""). Fraction digits up to the last "0"
// placeholder are always printed, "#" ones only up to the last nonzero digit.
//
// Named formats, matched without regard to case: "General Number" (the
// general number text of numbers.h), "Fixed" ("0.00"), "Standard"
// ("#,##0.00"), "Percent" ("0.00%"), "Scientific" ("0.00E+00"). An empty
// pattern, or an empty first section, gives the general number text.
//
// Rounding is half away from zero on the value's decimal form rounded to 15
// significant digits, so 2.675 with "0.00" gives "2.68", 1.005 gives "1.01"
// and 0.125 gives "0.13". A negative value that rounds to zero is written as
// zero: without its sign, by the first section. NaN and the infinities are
// written "NaN", "Infinity" and "-Infinity" whatever the pattern.
//
// Nothing here throws or allocates beyond the growth of the output text.
#pragma once

#include "zelkora/frame/numbers.h"
#include "zelkora/platform/text.h"

namespace zelkora::typeset {

// Appends `value` written by `pattern` to `out`.
void append_picture(Text& out, double value, TextView pattern, const frame::NumberSymbols& symbols);

Text format_picture(double value, TextView pattern, const frame::NumberSymbols& symbols);

// The number of digits of |value| rounded to a whole number as the formatter
// rounds it ("#0"): 1 for 0 and for 0.4, 2 for 9.5.
int rounded_integer_digits(double value);

}  // namespace zelkora::typeset
