// The shared number rules: reading typed numbers, rounding, writing numbers.
#include "zelkora/frame/numbers.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <system_error>

#include "zelkora/platform/fault.h"

namespace zelkora::frame {

namespace {

// ---- Reading ---------------------------------------------------------------

enum class Outcome { Number, NotNumber, Overflow };

bool is_blank(char16_t c) { return c == u' ' || c == u'\t'; }
bool is_digit(char16_t c) { return c >= u'0' && c <= u'9'; }
bool is_exponent_letter(char16_t c) { return c == u'E' || c == u'e' || c == u'D' || c == u'd'; }

// The significant digits of a number as it is read, normalised to
// "[-]0.<digits>e<exponent>" in a buffer on the stack so that std::from_chars
// gives the correctly rounded double. Leading zeros are not stored. Beyond
// kMaxDigits only a sticky "some later digit was nonzero" is kept: every
// halfway point between two doubles has at most 767 significant digits, so
// the kept digits plus one final "1" round exactly as the full text does.
class DecimalDigits {
 public:
  explicit DecimalDigits(bool negative) : negative_(negative) {
    buffer_[0] = '-';
    buffer_[1] = '0';
    buffer_[2] = '.';
  }

  void integer_digit(char16_t c) {
    if (c == u'0' && count_ == 0) return;
    store(c);
    ++point_;
  }

  void fraction_digit(char16_t c) {
    if (c == u'0' && count_ == 0) {
      --point_;
      return;
    }
    store(c);
  }

  // The value times 10^exponent10.
  Outcome value(int64_t exponent10, double& out) {
    if (count_ == 0) return zero(out);
    // The value lies in [10^(point-1), 10^point).
    const int64_t point = point_ + exponent10;
    if (point > kMaxPoint) return Outcome::Overflow;
    if (point < kMinPoint) return zero(out);
    char* end = buffer_ + kFirstDigit + count_;
    if (sticky_) *end++ = '1';
    *end++ = 'e';
    end = std::to_chars(end, std::end(buffer_), point).ptr;
    char* begin = buffer_ + 1;
    if (negative_) *--begin = '-';
    const auto result = std::from_chars(begin, end, out);
    if (result.ec == std::errc()) return Outcome::Number;
    // Out of range: an overflow, or a subnormal too small that rounds to zero.
    return point > 0 ? Outcome::Overflow : zero(out);
  }

 private:
  static constexpr std::size_t kMaxDigits = 780;
  static constexpr std::size_t kFirstDigit = 3;  // after "-0."
  static constexpr int64_t kMaxPoint = 309;      // 10^309 > DBL_MAX
  static constexpr int64_t kMinPoint = -330;     // 10^-330 < half the least subnormal

  void store(char16_t c) {
    if (count_ < kMaxDigits) {
      buffer_[kFirstDigit + count_++] = static_cast<char>(c);
    } else if (c != u'0') {
      sticky_ = true;
    }
  }

  Outcome zero(double& out) const {
    out = negative_ ? -0.0 : 0.0;
    return Outcome::Number;
  }

  char buffer_[kFirstDigit + kMaxDigits + 16];  // left uninitialised: filled as read
  std::size_t count_ = 0;
  int64_t point_ = 0;
  bool sticky_ = false;
  bool negative_;
};

// A read position in a text.
class Cursor {
 public:
  explicit Cursor(TextView text) : text_(text) {}

  bool at_end() const { return pos_ == text_.size(); }
  char16_t peek() const { return at_end() ? char16_t{0} : text_[pos_]; }
  bool at_digit() const { return !at_end() && is_digit(text_[pos_]); }
  void advance() { ++pos_; }
  std::size_t position() const { return pos_; }
  void rewind(std::size_t pos) { pos_ = pos; }

  // Takes `c` when it is next; a 0 symbol is never taken.
  bool take(char16_t c) {
    if (c == 0 || at_end() || text_[pos_] != c) return false;
    ++pos_;
    return true;
  }

  void skip_blanks() {
    while (!at_end() && is_blank(text_[pos_])) ++pos_;
  }

  // Takes a "+" or "-" when it is next; true for "-".
  bool take_sign() { return !take(u'+') && take(u'-'); }

  bool take_exponent_letter() {
    if (at_end() || !is_exponent_letter(text_[pos_])) return false;
    ++pos_;
    return true;
  }

  // The run of digits at the position, saturating far beyond any exponent a
  // double can use.
  int64_t take_exponent_digits() {
    constexpr int64_t kSaturated = 1'000'000'000;
    int64_t value = 0;
    for (; at_digit(); ++pos_) {
      if (value < kSaturated) value = value * 10 + (text_[pos_] - u'0');
    }
    return value;
  }

 private:
  TextView text_;
  std::size_t pos_ = 0;
};

// Reads "[+|-]" at the cursor into a fresh DecimalDigits.
DecimalDigits start_number(Cursor& cursor) { return DecimalDigits(cursor.take_sign()); }

// Reads the mantissa; true when it had at least one digit. A grouping
// symbol is taken in the integer part after its first digit.
bool read_mantissa(Cursor& cursor, DecimalDigits& digits, char16_t decimal, char16_t grouping) {
  bool any = false;
  for (;; cursor.advance()) {
    const char16_t c = cursor.peek();
    if (cursor.at_digit()) {
      digits.integer_digit(c);
      any = true;
    } else if (!(any && grouping != 0 && c == grouping)) {
      break;
    }
  }
  if (cursor.take(decimal)) {
    for (; cursor.at_digit(); cursor.advance()) {
      digits.fraction_digit(cursor.peek());
      any = true;
    }
  }
  return any;
}

// Reads "(E|e|D|d)[+|-]digits" when it is complete; otherwise leaves the
// cursor where it was and reports false.
bool read_exponent(Cursor& cursor, int64_t& exponent10) {
  const std::size_t start = cursor.position();
  if (cursor.take_exponent_letter()) {
    const bool negative = cursor.take_sign();
    if (cursor.at_digit()) {
      const int64_t magnitude = cursor.take_exponent_digits();
      exponent10 = negative ? -magnitude : magnitude;
      return true;
    }
  }
  cursor.rewind(start);
  return false;
}

Outcome read_typed_number(TextView text, const NumberSymbols& symbols, double& out) {
  const char16_t grouping = symbols.grouping == symbols.decimal ? char16_t{0} : symbols.grouping;
  Cursor cursor(text);
  cursor.skip_blanks();
  DecimalDigits digits = start_number(cursor);
  if (!read_mantissa(cursor, digits, symbols.decimal, grouping)) return Outcome::NotNumber;
  int64_t exponent10 = 0;
  read_exponent(cursor, exponent10);  // an incomplete one ("1E") stays unread
  cursor.skip_blanks();
  if (!cursor.at_end()) return Outcome::NotNumber;
  return digits.value(exponent10, out);
}

// ---- Faults ----------------------------------------------------------------

// Shows the start of a text in a message, however long the text is.
std::string quoted(TextView text) {
  constexpr std::size_t kShown = 40;
  std::string shown = to_utf8(text.substr(0, kShown));
  return "\"" + shown + (text.size() > kShown ? "...\"" : "\"");
}

std::string shortest(double value) {
  char buffer[32];
  return std::string(buffer, std::to_chars(buffer, std::end(buffer), value).ptr);
}

[[noreturn]] void throw_overflow(const std::string& what) {
  throw Fault(FaultKind::Overflow, "overflow: " + what);
}

// ---- Integers --------------------------------------------------------------

// `value` (finite) rounded to a whole number, halves to the even neighbour.
double round_half_even(double value) {
  const double floor = std::floor(value);
  const double fraction = value - floor;  // exact for every double
  if (fraction > 0.5) return floor + 1;
  if (fraction < 0.5) return floor;
  return std::fmod(floor, 2.0) == 0 ? floor : floor + 1;
}

template <class Int>
std::optional<Int> rounded_integer(double value) {
  if (std::isfinite(value)) {
    const double rounded = round_half_even(value);
    if (rounded >= std::numeric_limits<Int>::min() && rounded <= std::numeric_limits<Int>::max()) {
      return static_cast<Int>(rounded);
    }
  }
  return std::nullopt;
}

template <class Int>
Int rounded_or_fault(double value, const char* type_name) {
  const std::optional<Int> rounded = rounded_integer<Int>(value);
  if (!rounded) throw_overflow(shortest(value) + " does not fit " + type_name);
  return *rounded;
}

// ---- Writing ---------------------------------------------------------------

// A finite nonzero magnitude rounded to 15 significant digits:
// 0.d1d2...dn times 10^(exponent + 1), i.e. d1.d2...dn times 10^exponent,
// without trailing zeros.
struct SignificantDigits {
  char digits[15];
  int count;
  int exponent;
};

SignificantDigits round_to_15_digits(double magnitude) {
  // "d.dddddddddddddde[+-]xx": correctly rounded from the binary value.
  char text[32];
  const char* end =
      std::to_chars(text, std::end(text), magnitude, std::chars_format::scientific, 14).ptr;
  SignificantDigits result{};
  result.digits[0] = text[0];
  for (int i = 1; i < 15; ++i) result.digits[i] = text[i + 1];
  result.count = 15;
  while (result.count > 1 && result.digits[result.count - 1] == '0') --result.count;
  const char* exponent = text + 17;  // after "d.dddddddddddddde"
  if (*exponent == '+') ++exponent;
  std::from_chars(exponent, end, result.exponent);
  return result;
}

// The writers below put characters at `out` and return the new end; the
// caller's buffer has room for the longest general number text.
char16_t* put_ascii(char16_t* out, const char* text) {
  while (*text) *out++ = static_cast<char16_t>(*text++);
  return out;
}

char16_t* put_zeros(char16_t* out, int count) {
  for (; count > 0; --count) *out++ = u'0';
  return out;
}

char16_t* put_fixed(char16_t* out, const SignificantDigits& d, char16_t decimal) {
  if (d.exponent < 0) {
    *out++ = u'0';
    *out++ = decimal;
    out = put_zeros(out, -d.exponent - 1);
    for (int i = 0; i < d.count; ++i) *out++ = d.digits[i];
    return out;
  }
  const int integer_digits = d.exponent + 1;
  for (int i = 0; i < d.count && i < integer_digits; ++i) *out++ = d.digits[i];
  out = put_zeros(out, integer_digits - d.count);
  if (d.count > integer_digits) {
    *out++ = decimal;
    for (int i = integer_digits; i < d.count; ++i) *out++ = d.digits[i];
  }
  return out;
}

char16_t* put_scientific(char16_t* out, const SignificantDigits& d, char16_t decimal) {
  *out++ = d.digits[0];
  if (d.count > 1) {
    *out++ = decimal;
    for (int i = 1; i < d.count; ++i) *out++ = d.digits[i];
  }
  *out++ = u'E';
  *out++ = d.exponent < 0 ? u'-' : u'+';
  const int magnitude = d.exponent < 0 ? -d.exponent : d.exponent;
  if (magnitude < 10) *out++ = u'0';
  char text[8];
  *std::to_chars(text, text + 7, magnitude).ptr = '\0';
  return put_ascii(out, text);
}

char16_t* put_general(char16_t* out, double value, char16_t decimal) {
  if (std::isnan(value)) return put_ascii(out, "NaN");
  if (std::signbit(value) && value != 0) *out++ = u'-';
  if (std::isinf(value)) return put_ascii(out, "Infinity");
  if (value == 0) return put_ascii(out, "0");
  const SignificantDigits d = round_to_15_digits(std::fabs(value));
  const bool fixed = d.exponent >= -4 && d.exponent < 15;
  return fixed ? put_fixed(out, d, decimal) : put_scientific(out, d, decimal);
}

}  // namespace

std::optional<double> parse_number(TextView text, const NumberSymbols& symbols) {
  double value = 0;
  if (read_typed_number(text, symbols, value) != Outcome::Number) return std::nullopt;
  return value;
}

bool is_numeric(TextView text, const NumberSymbols& symbols) {
  return parse_number(text, symbols).has_value();
}

std::optional<double> leading_value(TextView text) {
  Cursor cursor(text);
  cursor.skip_blanks();
  DecimalDigits digits = start_number(cursor);
  if (!read_mantissa(cursor, digits, u'.', 0)) return 0.0;
  int64_t exponent10 = 0;
  read_exponent(cursor, exponent10);
  double value = 0;
  if (digits.value(exponent10, value) == Outcome::Overflow) return std::nullopt;
  return value;
}

double leading_number(TextView text) {
  const std::optional<double> value = leading_value(text);
  if (!value) throw_overflow(quoted(text) + " is beyond the range of a double");
  return *value;
}

std::optional<int16_t> rounded_int16(double value) { return rounded_integer<int16_t>(value); }

std::optional<int32_t> rounded_int32(double value) { return rounded_integer<int32_t>(value); }

int16_t to_int16(double value) { return rounded_or_fault<int16_t>(value, "a 16-bit integer"); }

int32_t to_int32(double value) { return rounded_or_fault<int32_t>(value, "a 32-bit integer"); }

double text_to_double(TextView text, const NumberSymbols& symbols) {
  double value = 0;
  switch (read_typed_number(text, symbols, value)) {
    case Outcome::Number:
      return value;
    case Outcome::Overflow:
      throw_overflow(quoted(text) + " is beyond the range of a double");
    case Outcome::NotNumber:
      break;
  }
  throw Fault(FaultKind::Conversion, "conversion error: " + quoted(text) + " is not a number");
}

int16_t text_to_int16(TextView text, const NumberSymbols& symbols) {
  return to_int16(text_to_double(text, symbols));
}

int32_t text_to_int32(TextView text, const NumberSymbols& symbols) {
  return to_int32(text_to_double(text, symbols));
}

Text general_number_text(double value, const NumberSymbols& symbols) {
  Text out;
  append_general_number(out, value, symbols);
  return out;
}

void append_general_number(Text& out, double value, const NumberSymbols& symbols) {
  char16_t buffer[32];
  out.append(buffer, put_general(buffer, value, symbols.decimal));
}

}  // namespace zelkora::frame
