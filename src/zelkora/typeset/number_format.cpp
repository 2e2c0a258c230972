// Format codes and the tFmt family of clsCharacter.
#include "zelkora/typeset/number_format.h"
#include "zelkora/frame/catalogue_ids.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault.h"
#include "zelkora/typeset/picture_format.h"

namespace zelkora::typeset {

namespace {

// The suite's house style: the decimals of each kind of quantity, and the
// symbol printed after it. "mm3" prints whole numbers while "m3" prints three
// decimals, "cm2" one decimal while "m2" two: these are kept on purpose.
struct Unit {
  TextView name;
  int16_t decimals;
  TextView symbol;
  UnitPower power;
};
constexpr int16_t kNotInTable = kPatternDecimals;
constexpr std::array<Unit, 36> kUnits = {{
    {u"0", 0, u"", UnitPower::None},
    {u"1", 1, u"", UnitPower::None},
    {u"2", 2, u"", UnitPower::None},
    {u"3", 3, u"", UnitPower::None},
    {u"4", 4, u"", UnitPower::None},
    {u"5", 5, u"", UnitPower::None},
    {u"6", 6, u"", UnitPower::None},
    {u"n", 0, u"N", UnitPower::None},
    {u"mm", 0, u"mm", UnitPower::None},
    {u"mm2", 0, u"mm", UnitPower::Squared},
    {u"mm3", 0, u"mm", UnitPower::Cubed},
    {u"n/mm2", 0, u"N/mm", UnitPower::Squared},
    {u"mn/m4", 0, u"MN/m", UnitPower::Fourth},
    {u"nmm", 0, u"N·mm", UnitPower::None},
    {u"kn", 1, u"kN", UnitPower::None},
    {u"kpa", 1, u"kPa", UnitPower::None},
    {u"dec", 1, u"°", UnitPower::None},
    {u"cm", 1, u"cm", UnitPower::None},
    {u"cm2", 1, u"cm", UnitPower::Squared},
    {u"m2", 2, u"m", UnitPower::Squared},
    {u"kn/m", 2, u"kN/m", UnitPower::None},
    {u"kn/m3", 2, u"kN/m", UnitPower::Cubed},
    {u"knm2", 2, u"kN·m", UnitPower::Squared},
    {u"cm4", 2, u"cm", UnitPower::Fourth},
    {u"％", 2, u"％", UnitPower::None},
    {u"%", 2, u"%", UnitPower::None},
    {u"m", 3, u"m", UnitPower::None},
    {u"m3", 3, u"m", UnitPower::Cubed},
    {u"mpa", 3, u"MPa", UnitPower::None},
    {u"kn/m2", 3, u"kN/m", UnitPower::Squared},
    {u"knm", 3, u"kN·m", UnitPower::None},
    {u"m/s2", 3, u"m/s", UnitPower::Squared},
    {u"m4", 4, u"m", UnitPower::Fourth},
    {u"pjl", 5, u"", UnitPower::None},
    {u"percent", kPercentDecimals, u"", UnitPower::None},
    // A symbol without decimals of its own: the cubic centimetre.
    {u"cm3", kNotInTable, u"cm", UnitPower::Cubed},
}};

char16_t ascii_lower(char16_t c) {
  return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c;
}

constexpr std::size_t kLongestUnit = [] {
  std::size_t longest = 0;
  for (const Unit& u : kUnits) longest = std::max(longest, u.name.size());
  return longest;
}();

// The unit named by `name`, its ASCII letters in any case.
const Unit* find_unit(TextView name) {
  if (name.size() > kLongestUnit) return nullptr;
  std::array<char16_t, kLongestUnit> lower;
  for (std::size_t i = 0; i < name.size(); ++i) lower[i] = ascii_lower(name[i]);
  const TextView key(lower.data(), name.size());
  for (const Unit& u : kUnits) {
    if (u.name == key) return &u;
  }
  return nullptr;
}

}  // namespace

FormatCode parse_format_code(TextView code) {
  // A code of any length is read the same way: only its last three
  // characters and its unit part are looked at, never copied.
  const TextView trimmed = trim(code);
  const std::size_t n = trimmed.size();
  const auto at = [&](std::size_t i) { return ascii_lower(trimmed[i]); };

  FormatCode parsed;
  bool override = false;
  if (n >= 3 && at(n - 2) == u'_') {
    override = true;
    const char16_t digit = at(n - 1);
    parsed.decimals = (digit >= u'0' && digit <= u'9') ? static_cast<int16_t>(digit - u'0') : 0;
  }
  if (n >= 2) parsed.display = at(override ? n - 3 : n - 1) == u'd';
  const std::size_t unit_length = n - (parsed.display ? 1 : 0) - (override ? 2 : 0);

  const Unit* unit = find_unit(trimmed.substr(0, unit_length));
  if (!override) parsed.decimals = unit ? unit->decimals : kNotInTable;
  if (unit && parsed.display) {
    parsed.symbol = unit->symbol;
    parsed.power = unit->power;
  }
  return parsed;
}

void write_number_pattern(Text& pattern, int decimals) {
  pattern.assign(u"#0");
  if (decimals > 0) {
    pattern.push_back(u'.');
    pattern.append(static_cast<std::size_t>(decimals), u'0');
  }
}

void write_pattern(Text& pattern, const FormatCode& parsed, TextView code,
                   const PowerSigns& signs) {
  if (parsed.decimals == kPatternDecimals) {
    pattern.assign(code);
  } else if (parsed.decimals == kPercentDecimals) {
    pattern.assign(u"Percent");
  } else {
    write_number_pattern(pattern, parsed.decimals);
  }
  if (!parsed.display) return;
  pattern.append(parsed.symbol);
  switch (parsed.power) {
    case UnitPower::Squared:
      pattern.append(signs.squared);
      break;
    case UnitPower::Cubed:
      pattern.append(signs.cubed);
      break;
    case UnitPower::Fourth:
      pattern.append(signs.fourth);
      break;
    case UnitPower::None:
      break;
  }
}

void trim_trailing_zeros(Text& s, char16_t decimal_symbol, bool fix) {
  const std::size_t point = s.find(decimal_symbol);
  if (point == Text::npos) return;
  const auto is_digit = [](char16_t c) { return c >= u'0' && c <= u'9'; };
  std::size_t end = point + 1;  // one past the last digit of the number
  while (end < s.size() && is_digit(s[end])) ++end;
  const bool bare = end == s.size();
  if (fix == bare) return;
  std::size_t keep = end;  // one past the last nonzero decimal
  while (keep > point + 1 && s[keep - 1] == u'0') --keep;
  if (keep == end) return;
  if (keep == point + 1) keep = point;  // all zero: the decimal symbol goes too
  s.erase(keep, end - keep);
}

}  // namespace zelkora::typeset

namespace zelkora {

namespace {

constexpr TextView kEquationEquals = u" ＝ ";
constexpr TextView kFourthMarkup = u"_up(4)up_";
constexpr TextView kFourthPlain = u"4";

}  // namespace

const Text& clsCharacter::format_pattern(TextView tEnter) {
  if (pattern_code_valid_ && TextView(pattern_code_) == tEnter) return pattern_;
  const typeset::FormatCode parsed = typeset::parse_format_code(tEnter);
  decimals_ = parsed.decimals;
  typeset::PowerSigns signs;
  if (super_sub_) {
    signs = {symbols_[kSquaredMarkup], symbols_[kCubedMarkup], kFourthMarkup};
  } else {
    signs = {tPubPf(), tPubLf(), kFourthPlain};
  }
  typeset::write_pattern(pattern_, parsed, tEnter, signs);
  pattern_code_.assign(tEnter);
  pattern_code_valid_ = true;
  return pattern_;
}

Text clsCharacter::tCF(TextView tEnter) { return format_pattern(tEnter); }

Text clsCharacter::tCFD(TextView tEnter, const frame::Variant& vVal) {
  // The code again with its "d", and the decimals of vVal when it holds a
  // whole number from 0 to 9. A pattern of the caller's own stays as it is.
  const Text code(trim(tEnter));
  const typeset::FormatCode parsed = typeset::parse_format_code(code);
  if (parsed.decimals == typeset::kPatternDecimals) return format_pattern(tEnter);
  const bool override = code.size() >= 3 && code[code.size() - 2] == u'_';
  const std::size_t unit_length = code.size() - (override ? 2 : 0) - (parsed.display ? 1 : 0);
  Text suffix = override ? code.substr(code.size() - 2) : Text();
  // Anything else than a count of decimals leaves the code's own.
  const std::optional<double> value =
      vVal.is_empty() ? std::nullopt : vVal.number(number_symbols());
  const std::optional<int32_t> decimals = value ? frame::rounded_int32(*value) : std::nullopt;
  if (decimals && *decimals >= 0 && *decimals <= 9) {
    suffix = u"_";
    suffix.push_back(static_cast<char16_t>(u'0' + *decimals));
  }
  return format_pattern(code.substr(0, unit_length) + u"d" + suffix);
}

Text clsCharacter::tFmtFix(double dVal, TextView tEnter) {
  Text s;
  typeset::append_picture(s, dVal, format_pattern(tEnter), number_symbols());
  return s;
}

Text clsCharacter::tFmt(double dVal, TextView tEnter, bool bFix) {
  const frame::NumberSymbols symbols = number_symbols();
  Text s;
  s.reserve(24);
  typeset::append_picture(s, dVal, format_pattern(tEnter), symbols);
  if (decimals_ >= 1) typeset::trim_trailing_zeros(s, symbols.decimal, bFix);
  return s;
}

Text clsCharacter::tFmtV(double dVal, TextView tEnter, bool bFix) {
  format_pattern(tEnter);
  const int16_t d = decimals_;
  if (d >= 1) {
    // About d + 1 significant digits: fewer decimals for a large value, more
    // for a small one; a large value is never rounded to tens.
    const double magnitude = std::fabs(dVal);
    // The digits of the whole part: 9.996 has one, however it rounds.
    const int n = typeset::rounded_integer_digits(std::trunc(magnitude));
    int decimals = d;
    if (n >= 2) {
      decimals = d - n + 1;
    } else if (magnitude < 1) {
      constexpr std::array<double, 6> kPowers = {1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
      int k = 1;
      while (k <= 5 && !(kPowers[static_cast<std::size_t>(k - 1)] * magnitude >= 1)) ++k;
      decimals = d + k;
    }
    Text number;
    typeset::write_number_pattern(number, std::max(decimals, 0));
    const Text old = [&] {
      Text t;
      typeset::write_number_pattern(t, d);
      return t;
    }();
    // The pattern's own number part is replaced; the unit symbol stays.
    pattern_ = replace_all(pattern_, old, number);
    pattern_code_valid_ = false;
  }
  Text s;
  typeset::append_picture(s, dVal, pattern_, number_symbols());
  if (d >= 1) typeset::trim_trailing_zeros(s, number_symbols().decimal, bFix);
  return s;
}

Text clsCharacter::tFmtEq(double dVal, TextView tEnter, bool bFix) {
  return Text(kEquationEquals) + tFmt(dVal, tEnter, bFix);
}

Text clsCharacter::tFmtEq1(double dVal, TextView tEnter, bool bFix) {
  // A blank, the equation prefix (never set), the equals sign and a blank.
  Text s = u" " + equation_prefix_ + u"＝ ";
  return s + tFmt(dVal, tEnter, bFix);
}

Text clsCharacter::tFmtS(double dVal, TextView tEnter, bool bFix, bool bSpace) {
  const bool minus = dVal < 0;
  Text s = bSpace ? Text(minus ? u" - " : u" + ") : Text(minus ? u"-" : u"+");
  return s + tFmt(std::fabs(dVal), tEnter, bFix);
}

Text clsCharacter::tExpRes(int32_t lRes, double dVal, TextView tEnter, bool bFix) {
  // A failed lookup (an id beyond the range with the offset) is trapped: the
  // value stands alone.
  const std::optional<TextView> name = language_text(lRes);
  const std::optional<TextView> equals = language_text(text_id::kEquals);
  Text expression = name && equals ? Text(*name) + Text(*equals) : Text();
  return expression + tFmt(dVal, tEnter, bFix);
}

Text clsCharacter::tExpStr(TextView tStr, double dVal, TextView tEnter, bool bFix) {
  return Text(tStr) + tString(text_id::kEquals) + tFmt(dVal, tEnter, bFix);
}

Text clsCharacter::tTurn_MultipleLastChr(TextView tOldText, TextView tLastChr, double dChr,
                                         bool bIgnoreCase) const {
  const Compare mode = bIgnoreCase ? Compare::Text : Compare::Binary;
  const int32_t repeat = std::max(frame::to_int32(dChr), 0);
  std::size_t end = tOldText.size();
  if (!tLastChr.empty()) {
    while (end >= tLastChr.size() &&
           equal_text(tOldText.substr(end - tLastChr.size(), tLastChr.size()), tLastChr, mode)) {
      end -= tLastChr.size();
    }
  }
  Text s(tOldText.substr(0, end));
  for (int32_t i = 0; i < repeat && !tLastChr.empty(); ++i) s.append(tLastChr);
  return s;
}

}  // namespace zelkora
