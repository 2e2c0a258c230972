// Serial labels of report headings and lists.
#include "zelkora/typeset/serial_labels.h"

#include <array>
#include <string>

#include "zelkora/frame/cls_character.h"

namespace zelkora::typeset {

namespace {

constexpr std::array<char16_t, 10> kDigits = {u'零', u'一', u'二', u'三', u'四',
                                              u'五', u'六', u'七', u'八', u'九'};

Text decimal(int32_t n) {
  const std::string digits = std::to_string(n);
  return Text(digits.begin(), digits.end());
}

// 1 to 99; `in_hundreds` writes the "一" of 10 to 19 ("一百一十").
Text tens_and_units(int32_t n, bool in_hundreds) {
  Text out;
  const int32_t tens = n / 10;
  const int32_t units = n % 10;
  if (tens > 1 || (tens == 1 && in_hundreds)) out += kDigits[tens];
  if (tens > 0) out += u'十';
  if (units > 0) out += kDigits[units];
  return out;
}

Text bold(TextView text) { return Text(u"_bb(") + Text(text) + u")bb_"; }

}  // namespace

std::optional<Text> chinese_numeral(int32_t n) {
  if (n < 1 || n > 999) return std::nullopt;
  if (n < 100) return tens_and_units(n, false);
  Text out{kDigits[n / 100], u'百'};
  const int32_t rest = n % 100;
  if (rest == 0) return out;
  if (rest < 10) out += u'零';
  return out + tens_and_units(rest, true);
}

std::optional<Text> roman_letters(int32_t n) {
  if (n < 1 || n > 3999) return std::nullopt;
  struct Step {
    int32_t value;
    const char16_t* letters;
  };
  static constexpr std::array<Step, 13> kSteps = {{{1000, u"M"},
                                                   {900, u"CM"},
                                                   {500, u"D"},
                                                   {400, u"CD"},
                                                   {100, u"C"},
                                                   {90, u"XC"},
                                                   {50, u"L"},
                                                   {40, u"XL"},
                                                   {10, u"X"},
                                                   {9, u"IX"},
                                                   {5, u"V"},
                                                   {4, u"IV"},
                                                   {1, u"I"}}};
  Text out;
  for (const Step& step : kSteps) {
    for (; n >= step.value; n -= step.value) out += step.letters;
  }
  return out;
}

Text heading_label(int32_t n) { return bold(chinese_numeral(n).value_or(decimal(n)) + u"、"); }

Text subheading_label(int32_t n) {
  return bold(u"（" + chinese_numeral(n).value_or(decimal(n)) + u"）");
}

Text third_level_label(int32_t n) { return bold(u"(" + decimal(n) + u")"); }

Text list_label(int32_t n, TextView list_dot) { return decimal(n) + Text(list_dot); }

Text roman_label(int32_t n) {
  if (n >= 1 && n <= 12) return Text(1, static_cast<char16_t>(u'Ⅰ' + n - 1));
  return roman_letters(n).value_or(decimal(n));
}

}  // namespace zelkora::typeset

namespace zelkora {

Text clsCharacter::tChrSerial(int32_t n) const { return typeset::heading_label(n); }
Text clsCharacter::tChrSerial2(int32_t n) const { return typeset::subheading_label(n); }
Text clsCharacter::tChrSl(int32_t n) const { return typeset::third_level_label(n); }
Text clsCharacter::tChrList(int32_t n) const { return typeset::list_label(n, tPubListDot()); }
Text clsCharacter::tLuoMaNum(int32_t n) const { return typeset::roman_label(n); }

}  // namespace zelkora
