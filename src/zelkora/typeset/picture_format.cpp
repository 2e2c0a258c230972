// The picture formatter: numbers written by picture patterns.
#include "zelkora/typeset/picture_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace zelkora::typeset {

namespace {

// ---- The decimal form of a number ------------------------------------------

// A non-negative number as decimal digits: value = 0.d0 d1 d2 ... x 10^point.
// `count` digits without trailing zeros; zero has none.
struct Decimal {
  std::array<char, 24> digits{};
  int count = 0;
  int point = 0;

  bool zero() const { return count == 0; }
  // The digit at index i, 0 beyond the stored ones.
  char16_t digit(int i) const {
    return (i >= 0 && i < count) ? static_cast<char16_t>(digits[static_cast<std::size_t>(i)])
                                 : u'0';
  }
};

// The magnitude (finite, not negative) rounded to 15 significant digits.
Decimal decimal_of(double magnitude) {
  Decimal d;
  if (magnitude == 0) return d;
  // "d.dddddddddddddde+XX": the correctly rounded 15-digit form.
  std::array<char, 40> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                    std::chars_format::scientific, 14);
  const char* p = buffer.data();
  int n = 0;
  d.digits[static_cast<std::size_t>(n++)] = *p++;
  if (*p == '.') ++p;
  while (p < result.ptr && *p != 'e') d.digits[static_cast<std::size_t>(n++)] = *p++;
  ++p;  // 'e'
  const bool negative_exponent = p < result.ptr && *p == '-';
  ++p;  // sign
  int exponent = 0;
  while (p < result.ptr) exponent = exponent * 10 + (*p++ - '0');
  d.point = (negative_exponent ? -exponent : exponent) + 1;
  while (n > 0 && d.digits[static_cast<std::size_t>(n - 1)] == '0') --n;
  d.count = n;
  return d;
}

// Keeps the first `keep` digits, rounding half away from zero.
void round_to(Decimal& d, int keep) {
  if (keep >= d.count) return;
  if (keep < 0) {
    d.count = 0;
    return;
  }
  const bool up = d.digits[static_cast<std::size_t>(keep)] >= '5';
  d.count = keep;
  if (up) {
    int i = keep - 1;
    while (i >= 0 && d.digits[static_cast<std::size_t>(i)] == '9') --i;
    if (i < 0) {
      d.digits[0] = '1';
      d.count = 1;
      d.point += 1;
    } else {
      ++d.digits[static_cast<std::size_t>(i)];
      d.count = i + 1;
    }
  }
  while (d.count > 0 && d.digits[static_cast<std::size_t>(d.count - 1)] == '0') --d.count;
}

// ---- Reading a pattern -----------------------------------------------------

enum class Phase { Integer, Fraction, Exponent };

enum class Tok { End, Zero, Hash, Point, Comma, Percent, Exponent, Literal };

// Plain data, so that a list of them costs nothing to set up.
struct Token {
  Tok kind;
  Phase phase;                   // the part of the number the token stands in
  char16_t e;                    // Exponent: "E" or "e"
  bool plus;                     // Exponent: "+" (always a sign) or "-"
  const char16_t* literal_data;  // Literal: the characters to print
  std::size_t literal_size;

  TextView literal() const { return TextView(literal_data, literal_size); }
  void set_literal(TextView text) {
    literal_data = text.data();
    literal_size = text.size();
  }
};

// The tokens of one section, in order.
class Scanner {
 public:
  explicit Scanner(TextView section) : s_(section) {}

  Token next() {
    Token t{Tok::End, phase_, u'E', false, nullptr, 0};
    if (i_ >= s_.size()) return t;
    const char16_t c = s_[i_];
    switch (c) {
      case u'0':
      case u'#':
        ++i_;
        t.kind = c == u'0' ? Tok::Zero : Tok::Hash;
        return t;
      case u'.':
        ++i_;
        if (phase_ == Phase::Integer) {
          phase_ = Phase::Fraction;
          t.kind = Tok::Point;
        } else {
          t.kind = Tok::Literal;
          t.set_literal(TextView(s_.data() + i_ - 1, 1));
        }
        return t;
      case u',':
        ++i_;
        t.kind = Tok::Comma;
        return t;
      case u'%':
        ++i_;
        t.kind = Tok::Percent;
        return t;
      case u'\\': {
        t.kind = Tok::Literal;
        ++i_;
        const std::size_t n = character_length(i_);
        t.set_literal(TextView(s_.data() + std::min(i_, s_.size()), n));
        i_ += n;
        return t;
      }
      case u'"': {
        t.kind = Tok::Literal;
        const std::size_t close = s_.find(u'"', i_ + 1);
        const std::size_t end = close == TextView::npos ? s_.size() : close;
        t.set_literal(TextView(s_.data() + i_ + 1, end - i_ - 1));
        i_ = close == TextView::npos ? s_.size() : close + 1;
        return t;
      }
      case u'E':
      case u'e':
        if (phase_ != Phase::Exponent && i_ + 2 < s_.size() &&
            (s_[i_ + 1] == u'+' || s_[i_ + 1] == u'-') &&
            (s_[i_ + 2] == u'0' || s_[i_ + 2] == u'#')) {
          t.kind = Tok::Exponent;
          t.e = c;
          t.plus = s_[i_ + 1] == u'+';
          i_ += 2;
          phase_ = Phase::Exponent;
          return t;
        }
        break;
      default:
        break;
    }
    t.kind = Tok::Literal;
    const std::size_t n = character_length(i_);
    t.set_literal(TextView(s_.data() + i_, n));
    i_ += n;
    return t;
  }

 private:
  // One character: two units for a surrogate pair, none past the end.
  std::size_t character_length(std::size_t at) const {
    if (at >= s_.size()) return 0;
    const bool pair = s_[at] >= 0xD800 && s_[at] <= 0xDBFF && at + 1 < s_.size() &&
                      s_[at + 1] >= 0xDC00 && s_[at + 1] <= 0xDFFF;
    return pair ? 2 : 1;
  }

  TextView s_;
  std::size_t i_ = 0;
  Phase phase_ = Phase::Integer;
};

// The tokens of a section, read once. A section of more tokens than a
// pattern ever has in practice is read again on each walk instead of kept.
class Tokens {
 public:
  Tokens() = default;
  explicit Tokens(TextView section) : section_(section) {
    Scanner scan(section);
    for (Token t = scan.next(); t.kind != Tok::End; t = scan.next()) {
      if (count_ == kCapacity) {
        kept_ = false;
        break;
      }
      items_[count_++] = t;
    }
  }

  template <class Visit>
  void for_each(Visit&& visit) const {
    if (kept_) {
      for (std::size_t i = 0; i < count_; ++i) visit(items_[i]);
      return;
    }
    Scanner scan(section_);
    for (Token t = scan.next(); t.kind != Tok::End; t = scan.next()) visit(t);
  }

 private:
  static constexpr std::size_t kCapacity = 40;
  TextView section_;
  std::array<Token, kCapacity> items_{};  // the first count_ are set
  std::size_t count_ = 0;
  bool kept_ = true;
};

// What a section asks of the number.
struct Section {
  int int_places = 0;   // digit placeholders before the decimal point
  int int_min = 0;      // integer digits always printed
  int frac_places = 0;  // digit placeholders after it
  int frac_min = 0;     // fraction digits always printed
  int exp_places = 0;
  int exp_min = 1;
  int scale = 0;     // divisions by 1000
  int percents = 0;  // multiplications by 100
  bool point = false;
  bool grouping = false;
  bool scientific = false;
  bool engineering = false;
};

// A "," groups or scales only in the integer part after a placeholder;
// anywhere else it is printed.
bool comma_is_literal(const Token& t, int integer_placeholders_before) {
  return t.phase != Phase::Integer || integer_placeholders_before == 0;
}

Section analyse(const Tokens& tokens) {
  Section sec;
  int first_int_zero = -1;
  int last_frac_zero = -1;
  int first_exp_zero = -1;
  bool int_hash = false;
  int commas_since_placeholder = 0;  // commas in the integer part after its last placeholder so far
  tokens.for_each([&](const Token& t) {
    switch (t.kind) {
      case Tok::Zero:
      case Tok::Hash: {
        const bool zero = t.kind == Tok::Zero;
        if (t.phase == Phase::Integer) {
          if (zero && first_int_zero < 0) first_int_zero = sec.int_places;
          int_hash = int_hash || !zero;
          ++sec.int_places;
          // A comma between two integer placeholders groups the digits.
          if (commas_since_placeholder > 0) sec.grouping = true;
          commas_since_placeholder = 0;
        } else if (t.phase == Phase::Fraction) {
          if (zero) last_frac_zero = sec.frac_places;
          ++sec.frac_places;
        } else {
          if (zero && first_exp_zero < 0) first_exp_zero = sec.exp_places;
          ++sec.exp_places;
        }
        break;
      }
      case Tok::Comma:
        if (!comma_is_literal(t, sec.int_places)) ++commas_since_placeholder;
        break;
      case Tok::Point:
        sec.point = true;
        break;
      case Tok::Percent:
        ++sec.percents;
        break;
      case Tok::Exponent:
        sec.scientific = true;
        break;
      default:
        break;
    }
  });
  // The commas after the last integer placeholder scale by thousands.
  sec.scale = commas_since_placeholder;
  sec.int_min = first_int_zero < 0 ? 0 : sec.int_places - first_int_zero;
  sec.frac_min = last_frac_zero + 1;
  sec.exp_min = std::max(1, first_exp_zero < 0 ? 0 : sec.exp_places - first_exp_zero);
  sec.engineering = sec.scientific && int_hash && sec.int_places > 1;
  return sec;
}

// ---- Writing ----------------------------------------------------------------

// The rounded number a section prints: the digits with the point where the
// section's integer part ends, and the exponent in scientific notation.
struct Rounded {
  Decimal d;
  int exponent = 0;
};

int floor_mod(int a, int k) { return ((a % k) + k) % k; }

Rounded round_for(const Section& sec, double magnitude) {
  Rounded r;
  r.d = decimal_of(magnitude);
  if (r.d.zero()) return r;
  r.d.point += 2 * sec.percents - 3 * sec.scale;
  if (!sec.scientific) {
    round_to(r.d, r.d.point + sec.frac_places);
    return r;
  }
  // The mantissa's integer digits: the placeholder count, or in engineering
  // notation what makes the exponent a multiple of it.
  auto mantissa_digits = [&](int point) {
    return sec.engineering ? floor_mod(point - 1, sec.int_places) + 1 : sec.int_places;
  };
  round_to(r.d, mantissa_digits(r.d.point) + sec.frac_places);
  if (r.d.zero()) return r;
  const int m = mantissa_digits(r.d.point);  // again: a carry may have moved the point
  r.exponent = r.d.point - m;
  r.d.point = m;
  return r;
}

// Writes digits right-aligned into `places` placeholders: digit t of `shown`
// goes to the placeholder it falls on, the ones beyond the placeholders all
// go to the first.
class DigitRun {
 public:
  DigitRun(int places, int shown) : places_(places), shown_(shown) {}

  // The digits that placeholder number `seen` (from the left) prints, as
  // indexes into the shown digits [first, last).
  std::pair<int, int> at_placeholder(int seen) const {
    const int last = shown_ - (places_ - 1 - seen);  // one past the digit of this placeholder
    const int first = seen == 0 ? 0 : last - 1;
    return {std::max(first, 0), std::max(last, 0)};
  }

 private:
  int places_;
  int shown_;
};

// Collects the characters of a number in a buffer on the stack and hands
// them to the output text in few appends.
class Writer {
 public:
  explicit Writer(Text& out) : out_(out) {}
  ~Writer() { flush(); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  void push_back(char16_t c) {
    if (n_ == buffer_.size()) flush();
    buffer_[n_++] = c;
  }
  void append(TextView text) {
    flush();
    out_.append(text);
  }

 private:
  void flush() {
    out_.append(buffer_.data(), n_);
    n_ = 0;
  }

  Text& out_;
  std::array<char16_t, 64> buffer_;
  std::size_t n_ = 0;
};

void write_section(Text& text, const Tokens& tokens, const Section& sec, const Rounded& r,
                   bool minus, const frame::NumberSymbols& symbols) {
  Writer out(text);
  if (minus) out.push_back(u'-');
  const Decimal& d = r.d;

  // Integer digits: the number's own, then leading zeros up to the least
  // count.
  const int int_len = d.zero() ? 0 : std::max(d.point, 0);
  const int shown = std::max(int_len, sec.int_min);
  const int pad = shown - int_len;
  auto write_integer_digits = [&](int first, int last) {
    for (int t = first; t < last; ++t) {
      out.push_back(t < pad ? u'0' : d.digit(t - pad));
      const int left = shown - 1 - t;
      if (sec.grouping && symbols.grouping != 0 && left > 0 && left % 3 == 0) {
        out.push_back(symbols.grouping);
      }
    }
  };
  const DigitRun integer(sec.int_places, shown);

  // Fraction digits: up to the last "0" placeholder, and up to the last
  // nonzero digit.
  const int nonzero = d.zero() ? 0 : std::clamp(d.count - d.point, 0, sec.frac_places);
  const int frac_shown = std::max(sec.frac_min, nonzero);

  // Exponent digits.
  std::array<char, 8> exp_digits;
  const int exp_value = r.exponent < 0 ? -r.exponent : r.exponent;
  const auto exp_end =
      std::to_chars(exp_digits.data(), exp_digits.data() + exp_digits.size(), exp_value).ptr;
  const int exp_len = static_cast<int>(exp_end - exp_digits.data());
  const int exp_shown = std::max(exp_len, sec.exp_min);
  const DigitRun exponent(sec.exp_places, exp_shown);

  int seen_int = 0;
  int seen_frac = 0;
  int seen_exp = 0;
  tokens.for_each([&](const Token& t) {
    switch (t.kind) {
      case Tok::Zero:
      case Tok::Hash:
        if (t.phase == Phase::Integer) {
          const auto [first, last] = integer.at_placeholder(seen_int++);
          write_integer_digits(first, last);
        } else if (t.phase == Phase::Fraction) {
          if (seen_frac < frac_shown) out.push_back(d.digit(d.point + seen_frac));
          ++seen_frac;
        } else {
          const auto [first, last] = exponent.at_placeholder(seen_exp++);
          for (int i = first; i < last; ++i) {
            const int k = i - (exp_shown - exp_len);
            out.push_back(k < 0 ? u'0'
                                : static_cast<char16_t>(exp_digits[static_cast<std::size_t>(k)]));
          }
        }
        break;
      case Tok::Point:
        // Without integer placeholders the integer digits stand before the
        // point.
        if (sec.int_places == 0) write_integer_digits(0, shown);
        out.push_back(symbols.decimal);
        break;
      case Tok::Comma:
        if (comma_is_literal(t, seen_int)) out.push_back(u',');
        break;
      case Tok::Percent:
        out.push_back(u'%');
        break;
      case Tok::Exponent:
        out.push_back(t.e);
        if (r.exponent < 0) {
          out.push_back(u'-');
        } else if (t.plus) {
          out.push_back(u'+');
        }
        break;
      case Tok::Literal:
        out.append(t.literal());
        break;
      case Tok::End:
        break;
    }
  });
}

// The position of the next ";" at or after `from` that is outside quotes and
// escapes, or the end of the pattern.
std::size_t section_end(TextView pattern, std::size_t from) {
  std::size_t i = from;
  while (i < pattern.size()) {
    const char16_t c = pattern[i];
    if (c == u';') return i;
    if (c == u'\\') {
      i += 2;
    } else if (c == u'"') {
      const std::size_t close = pattern.find(u'"', i + 1);
      i = close == TextView::npos ? pattern.size() : close + 1;
    } else {
      ++i;
    }
  }
  return pattern.size();
}

// The sections of a non-empty pattern: up to three; a fourth and later ones
// are ignored.
int split_sections(TextView pattern, std::array<TextView, 3>& sections) {
  int count = 0;
  std::size_t start = 0;
  while (count < 3) {
    const std::size_t end = section_end(pattern, start);
    sections[static_cast<std::size_t>(count++)] = pattern.substr(start, end - start);
    if (end >= pattern.size()) break;
    start = end + 1;
  }
  return count;
}

struct NamedFormat {
  TextView name;
  TextView pattern;  // empty for the general number text
};
constexpr std::array<NamedFormat, 5> kNamedFormats = {{
    {u"General Number", u""},
    {u"Fixed", u"0.00"},
    {u"Standard", u"#,##0.00"},
    {u"Percent", u"0.00%"},
    {u"Scientific", u"0.00E+00"},
}};

TextView resolve_named(TextView pattern) {
  if (pattern.size() < 5 || pattern.size() > 14) return pattern;
  switch (pattern[0]) {
    case u'G':
    case u'g':
    case u'F':
    case u'f':
    case u'S':
    case u's':
    case u'P':
    case u'p':
      break;
    default:
      return pattern;
  }
  for (const NamedFormat& f : kNamedFormats) {
    if (equal_text(pattern, f.name, Compare::Text)) return f.pattern;
  }
  return pattern;
}

// A pattern read into its sections, their tokens and what they ask.
struct CompiledPattern {
  Text source;
  bool valid = false;
  int count = 0;
  std::array<TextView, 3> sections;  // views of `source`
  std::array<Tokens, 3> tokens;
  std::array<Section, 3> analysed;

  void compile(TextView pattern) {
    source.assign(pattern);
    sections = {};
    count = source.empty() ? 1 : split_sections(source, sections);
    for (int i = 0; i < 3; ++i) {
      const auto k = static_cast<std::size_t>(i);
      tokens[k] = Tokens(i < count ? sections[k] : TextView());
      analysed[k] = analyse(tokens[k]);
    }
    valid = true;
  }
};

// The pattern read: a report formats thousands of numbers with a handful of
// patterns, so the last one read is kept by the thread and reused while the
// same pattern comes again.
const CompiledPattern& compile(TextView pattern) {
  thread_local CompiledPattern last;
  CompiledPattern& cached = last;  // one lookup of the thread's copy
  if (!cached.valid || TextView(cached.source) != pattern) cached.compile(pattern);
  return cached;
}

}  // namespace

void append_picture(Text& out, double value, TextView pattern,
                    const frame::NumberSymbols& symbols) {
  if (!std::isfinite(value)) {
    frame::append_general_number(out, value, symbols);
    return;
  }
  const CompiledPattern& compiled = compile(resolve_named(pattern));
  const int count = compiled.count;
  const bool negative = value < 0;
  const bool has_negative = count >= 2 && !compiled.sections[1].empty();
  if (compiled.sections[0].empty() && !(negative && has_negative)) {
    frame::append_general_number(out, value, symbols);
    return;
  }

  const double magnitude = std::fabs(value);
  int chosen = 0;
  if (value == 0 && count == 3 && !compiled.sections[2].empty()) {
    chosen = 2;
  } else if (negative && has_negative) {
    chosen = 1;
  }
  Rounded rounded = round_for(compiled.analysed[chosen], magnitude);
  bool minus = negative && chosen == 0;
  if (negative && rounded.d.zero()) {
    // Written as zero: without its sign, by the first section.
    if (chosen != 0) {
      if (compiled.sections[0].empty()) {
        frame::append_general_number(out, 0.0, symbols);
        return;
      }
      chosen = 0;
      rounded = round_for(compiled.analysed[0], magnitude);
    }
    minus = !rounded.d.zero();
  }
  write_section(out, compiled.tokens[chosen], compiled.analysed[chosen], rounded, minus, symbols);
}

Text format_picture(double value, TextView pattern, const frame::NumberSymbols& symbols) {
  Text out;
  append_picture(out, value, pattern, symbols);
  return out;
}

int rounded_integer_digits(double value) {
  Decimal d = decimal_of(std::isfinite(value) ? std::fabs(value) : 0.0);
  round_to(d, d.point);
  return d.zero() ? 1 : std::max(d.point, 1);
}

}  // namespace zelkora::typeset
