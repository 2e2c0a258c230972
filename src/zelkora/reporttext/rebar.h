// Rebar notation: reading reinforcement as it is typed on the suite's forms
// and written on Chinese structural drawings, and stepping bar diameters
// through the standard series. The clsCharacter operations of this group
// (GjTextTurnW, BanGjTextTurn, vYsfTextTurnW, tGjFhByFy, dGjDiameterQzW,
// iGJListW, ...) are thin wrappers around the free functions here.
//
//   read_bar_text(u"4Φ20", separators, dot)      // count 4, diameter 20
//   read_slab_bar_text(u"10@200", dot)           // diameter 10, spacing 200
//   evaluate_arithmetic(u"360*0.9", dot)         // "324", operator 1
//   round_up_to_standard_diameter(20.1)          // 22
//   step_diameter(36, 1)                         // 38 (and 40 steps down to 38)
//
// Two number readings are used on purpose, exactly where stated below:
//   numeric     the locale-aware test of frame::is_numeric (signs, the
//               locale's decimal and grouping symbols, exponent, blanks);
//   value of    frame::leading_number: the number at the start of the text
//               with "." as decimal point, the rest ignored. So with the
//               decimal symbol ",", "2,5" is numeric but its value is 2.
//   converted   frame::parse_number in the locale's notation, where the
//               reading says so (the bar count, the slab bar parts).
//
// Nothing here shows a message or throws: failures come back as error
// numbers, as an untouched output or as the input text. Texts of any length
// and content (lone surrogates, 100k characters, "1e400") are safe.
//
// Decisions where the rules leave room, kept here so the forms can rely on
// them:
//  - An empty separator (a grade symbol set to empty text) never occurs in a
//    text; it is skipped rather than found at the first position.
//  - A run-time fault ends a reading quietly with an error number, not with
//    success: a bar count beyond 32 bits gives kBarCountNotNumber and leaves
//    the count untouched; a diameter beyond double (possible only where ","
//    is the decimal symbol and the integer digits run on) gives
//    kBarDiameterNotNumber, or kBarNotNumber for a text without separator.
//  - A slab bar part that is not numeric fails the reading whatever the
//    caller's output held before; a part beyond single precision is treated
//    as not numeric (error 503, that output untouched).
//  - An arithmetic step that faults (a result beyond double, 0^-1, a root of
//    a negative number) makes the text invalid: operator -1, text unchanged.
//  - The digit-group check of the arithmetic uses the grouping symbol of the
//    numeric test: where the locale groups no digits (ThousandsSeparator then
//    reads as a digit), no text is refused for containing that digit.
//  - A bar list number beyond the 16-bit range, from either the explicit
//    text or the digits of the label, gives list 1.
//  - A zero or negative number of bars in the diameter-from-area reading,
//    like any other fault of its square root, leaves the diameter at 0, so
//    the result is the smallest standard diameter, 6.
//  - Above 50 a diameter is rounded as the "#0" picture rounds it; NaN comes
//    back as it is, +infinity too, -infinity gives 6.
//  - The catalogue texts of this group (the separator "-", the grade names,
//    the answer words, "（Ⅱ）") are read without the language offset, like
//    bTextEqResString: they are keywords, not captions.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "zelkora/frame/catalogue.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/error_numbers.h"
#include "zelkora/frame/numbers.h"
#include "zelkora/platform/text.h"

namespace zelkora::reporttext {

// ---- Bar text: count, separator, diameter ----------------------------------

// The separators of a bar text in the order they are tried (the order, not
// the position in the text, decides): the grade symbols F1, F2, F3, a blank,
// the dash, "D", U+E001, U+E000, "%%131", "%%129", "Φ", "φ", "Φ" once more,
// and F4.
using BarSeparators = std::array<Text, 14>;
BarSeparators bar_separators(TextView f1, TextView f2, TextView f3, TextView f4, TextView dash);

// What a bar text gave. `error` is 0 or one of the kBar... numbers; the
// count and diameter are set only as far as the reading got, so a failed
// reading may still carry a diameter (a count part that is not a number) or
// a count (a count below one).
struct BarReading {
  int32_t error = 0;
  std::optional<int32_t> count;
  std::optional<double> diameter;
};

// Reads a trimmed bar text. With a separator: the diameter part after it
// must be numeric and its value above 0; an empty count part (the text
// begins with the separator: "Φ20", "-20") is one bar; otherwise the count
// part is converted in the locale's notation and rounded half to even, and
// must be at least 1. Without a separator a numeric text is one bar of that
// diameter.
BarReading read_bar_text(TextView text, std::span<const Text> separators,
                         const frame::NumberSymbols& symbols);

// ---- Slab bar text: diameter, separator, spacing ---------------------------

// What a slab bar text gave: `error` 0 or kSlabBarInvalid; the spacing may
// be set on a failed reading (the diameter part failed).
struct SlabBarReading {
  int32_t error = error_id::kSlabBarInvalid;
  std::optional<float> diameter;
  std::optional<float> spacing;
};

// Reads "10@200", "10-200" or "10 200": the first of "@", "-", " " that
// occurs, not in first position; both parts numeric, converted in the
// locale's notation to single precision, and above 0.
SlabBarReading read_slab_bar_text(TextView text, const frame::NumberSymbols& symbols);

// ---- A number with one operator ----------------------------------------------

inline constexpr int16_t kNoOperator = -1;

struct ArithmeticReading {
  Text text;                    // the result as general number text, or the input
  std::optional<int16_t> sign;  // the operator code; nothing: leave it as it was
};

// Evaluates a trimmed text with at most one operator. Empty text and the
// pieces of "-", decimal symbol, "+" give "0" and no operator code. The
// first of "*" (1), "/" (2), "+" (3), "-" (4), "^" (5) that occurs is the
// operator; the part after it must be numeric and is read by value, as is a
// part before it. A leading operator takes the part after it alone: "*" and
// "+" give it, "/" its reciprocal, "-" its negative, "^" is invalid. Invalid
// text comes back trimmed with code -1, as does a plain number.
ArithmeticReading evaluate_arithmetic(TextView text, const frame::NumberSymbols& symbols);

// The trimmed text, or "0" where it is empty or a piece of "-.+" (always ".").
Text zero_for_incomplete_number(TextView text);

// ---- Steel grades ------------------------------------------------------------

// The design strength fy (N/mm²) of a grade name, 0 for none: every blank
// removed, then compared exactly with the grade names of the catalogue, group
// by group (360, 270, 435, 300, 210).
double steel_grade_strength(TextView text, const frame::Catalogue& catalogue);

// Which grade symbol (1 to 4, tPubF1 to tPubF4) goes with a strength:
// 1 up to 270, 2 up to 300, 3 up to 360, 4 above (each limit plus 1e-6).
int grade_symbol_number(double fy);

// ---- Diameters -----------------------------------------------------------------

inline constexpr std::array<double, 16> kStandardDiameters = {6,  8,  10, 12, 14, 16, 18, 20,
                                                              22, 25, 28, 30, 32, 36, 40, 50};

// The smallest standard diameter at or above `d` (6 for anything up to 6);
// above 50 `d` rounded to a whole number.
double round_up_to_standard_diameter(double d);

// The standard diameter for an area `as` (mm², sign ignored) shared by
// `bars` bars.
double diameter_from_area(double as, int32_t bars);

// One step up or down: up 22 -> 25, 25 -> 28, 32 -> 36, 40 -> 44, otherwise
// +2 from 6 on and +1 below; down 25 -> 22, 28 -> 25, 36 -> 32, 44 -> 40,
// otherwise -2 above 6 and -1 from 6 down. The directions are not inverses.
double diameter_step(double d, bool up);

// `steps` steps up (positive) or down (negative), exactly as that many
// single steps give, in time independent of the count for whole diameters.
double step_diameter(double d, int64_t steps);

// ---- Bar list number ---------------------------------------------------------

// The list number of a bar label. A trimmed `first` that is not empty and
// not `automatic_word` (compared without case) gives its value, rounded half
// to even. Otherwise a label holding "%%" keeps its first piece in `label`
// and the second is read; the last run of digits of what is read is the
// number, 1 where there is none or it is below 1.
int16_t bar_list_number(Text& label, TextView first, TextView automatic_word);

}  // namespace zelkora::reporttext
