// Tests of the serial labels of report headings and lists.
#include "zelkora/typeset/serial_labels.h"

#include <gtest/gtest.h>

#include <limits>

#include "zelkora/frame/cls_character.h"

namespace zelkora::typeset {
namespace {

constexpr int32_t kMin = std::numeric_limits<int32_t>::min();
constexpr int32_t kMax = std::numeric_limits<int32_t>::max();

TEST(SerialLabels, ChineseLevelsAtTheirBoundaries) {
  const struct {
    int32_t n;
    Text numeral;  // as the two Chinese levels write it
  } cases[] = {
      {1, u"一"},         {9, u"九"},         {10, u"十"},           {11, u"十一"},
      {19, u"十九"},      {20, u"二十"},      {21, u"二十一"},       {99, u"九十九"},
      {100, u"一百"},     {101, u"一百零一"}, {110, u"一百一十"},    {119, u"一百一十九"},
      {120, u"一百二十"}, {305, u"三百零五"}, {999, u"九百九十九"},  {1000, u"1000"},
      {0, u"0"},          {-1, u"-1"},        {kMax, u"2147483647"}, {kMin, u"-2147483648"},
  };
  clsCharacter chr(platform::Platform::headless());
  for (const auto& c : cases) {
    SCOPED_TRACE(c.n);
    EXPECT_EQ(chr.tChrSerial(c.n), u"_bb(" + c.numeral + u"、)bb_");
    EXPECT_EQ(chr.tChrSerial2(c.n), u"_bb(（" + c.numeral + u"）)bb_");
    EXPECT_EQ(chinese_numeral(c.n).has_value(), c.n >= 1 && c.n <= 999);
  }
}

TEST(SerialLabels, DigitLevelsTakeEveryNumber) {
  clsCharacter chr(platform::Platform::headless());
  const struct {
    int32_t n;
    Text sl, list;
  } cases[] = {
      {1, u"_bb((1))bb_", u"1."},
      {1000, u"_bb((1000))bb_", u"1000."},
      {0, u"_bb((0))bb_", u"0."},
      {kMin, u"_bb((-2147483648))bb_", u"-2147483648."},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(chr.tChrSl(c.n), c.sl);
    EXPECT_EQ(chr.tChrList(c.n), c.list);
  }
  // The user's list dot, as the options dialog stores it.
  auto p = platform::Platform::headless();
  p->settings->set(u"Zelkora 结构快速设计", u"Options", u"8cboOpt", u"、 ");
  EXPECT_EQ(clsCharacter(p).tChrList(12), u"12、");
}

TEST(SerialLabels, RomanNumerals) {
  const struct {
    int32_t n;
    Text roman;
  } cases[] = {
      {1, u"Ⅰ"},        {3, u"Ⅲ"},
      {9, u"Ⅸ"},        {10, u"Ⅹ"},
      {11, u"Ⅺ"},       {12, u"Ⅻ"},
      {13, u"XIII"},    {14, u"XIV"},
      {19, u"XIX"},     {20, u"XX"},
      {40, u"XL"},      {99, u"XCIX"},
      {100, u"C"},      {101, u"CI"},
      {444, u"CDXLIV"}, {999, u"CMXCIX"},
      {1000, u"M"},     {3999, u"MMMCMXCIX"},
      {4000, u"4000"},  {0, u"0"},
      {-5, u"-5"},      {kMax, u"2147483647"},
  };
  clsCharacter chr(platform::Platform::headless());
  for (const auto& c : cases) EXPECT_EQ(chr.tLuoMaNum(c.n), c.roman) << c.n;
}

}  // namespace
}  // namespace zelkora::typeset
