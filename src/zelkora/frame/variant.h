/// A value of no fixed type, as the suite's forms pass them around: empty, a
/// boolean, an integer, a double or a text. A grid cell, a data-file record or
/// a form control holds one, and reads it back as text or as a number with the
/// library's number rules in the user's notation (frame/number_symbols.h).
/// @code{.unparsed}
///   Variant cell(u"2,5");
///   cell.to_double(NumberSymbols{u',', u'.'})   // 2.5
///   Variant(2.5).to_text(NumberSymbols{})       // "2.5"
///   Variant(true).to_int32(NumberSymbols{})     // -1
///   Variant().to_text(NumberSymbols{})          // ""
/// @endcode
/// The conversions:
///   to_text    empty "", true "True", false "False", an integer in decimal
///              digits, a double as its general number text, a text as it is.
///   to_double  empty 0, true -1, false 0, numbers as they are, a text read
///              with parse_number: not a number -> Fault(Conversion), beyond
///              double -> Fault(Overflow).
///   to_int32 / to_int16  as to_double, then rounded half to even; outside the
///              type -> Fault(Overflow). An integer converts directly.
///   to_bool    empty false, a number true when nonzero (NaN too), a text
///              "True" or "False" in any case and with surrounding blanks, or
///              a numeric text; any other text -> Fault(Conversion).
///   number     to_double without the faults: nothing for a text that is no
///              number (or beyond double), for the library's own use.
///
/// Two variants are equal when they have the same kind and the same value; no
/// conversion takes place (Variant(2) != Variant(2.0)). @file
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <utility>
#include <variant>

#include "zelkora/frame/number_symbols.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/text.h"

namespace zelkora::frame {
/// The kind of value a Variant holds.
enum class VariantKind { Empty, Bool, Integer, Double, Text };
/// A value of no fixed type: empty, a boolean, an integer, a double or a text.
class Variant {
 public:
  /// @{ The constructors are implicit, so that a value passes where a Variant is
  /// expected, as in the forms that use them.
  Variant() = default;
  Variant(bool value) : value_(value) {}             // NOLINT(google-explicit-constructor)
  Variant(int32_t value) : value_(value) {}          // NOLINT(google-explicit-constructor)
  Variant(double value) : value_(value) {}           // NOLINT(google-explicit-constructor)
  Variant(Text value) : value_(std::move(value)) {}  // NOLINT(google-explicit-constructor)
  Variant(TextView value) : value_(Text(value)) {}   // NOLINT(google-explicit-constructor)
  Variant(const char16_t* value)
      : value_(value ? Text(value) : Text()) {}  // NOLINT(google-explicit-constructor)
  /// A narrow string would otherwise become a bool, a character an integer.
  Variant(const char*) = delete;
  Variant(char16_t) = delete;  /// @}
  /// The kind of value held.
  VariantKind kind() const { return static_cast<VariantKind>(value_.index()); }
  bool is_empty() const { return kind() == VariantKind::Empty; }  ///< Whether it holds nothing.
  /// @{ Conversions in the notation `symbols`; number() is to_double without its Fault.
  Text to_text(const NumberSymbols& symbols) const;      ///< The value as text.
  double to_double(const NumberSymbols& symbols) const;  ///< A number; Fault(Conversion) if none.
  [[nodiscard]] std::optional<double> number(const NumberSymbols& symbols) const;
  int32_t to_int32(const NumberSymbols& symbols) const;  ///< to_double, rounded to 32 bits.
  int16_t to_int16(const NumberSymbols& symbols) const;  ///< to_double, rounded to 16 bits.
  bool to_bool(const NumberSymbols& symbols) const;      ///< "True"/"False", or a number not 0.
  /// @}
  friend bool operator==(const Variant&, const Variant&) = default;

 private:
  /// The order of the alternatives is the order of VariantKind.
  std::variant<std::monostate, bool, int32_t, double, Text> value_;
};

/// The kind and value, for test failures and diagnostics: Empty, Bool(True),
/// Integer(7), Double(2.5), Text("abc") (in UTF-8).
std::ostream& operator<<(std::ostream& out, const Variant& value);

}  // namespace zelkora::frame
