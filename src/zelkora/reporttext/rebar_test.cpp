// Tests of the rebar notation in both notations.
#include "zelkora/reporttext/rebar.h"
#include "zelkora/frame/character_internals.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>
#include <tuple>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault_test_support.h"
#include "zelkora/platform/headless/headless.h"

namespace zelkora {
namespace {

using frame::Variant;
using test_support::fault_of;
using test_support::kConversion;
using test_support::kOverflow;

std::shared_ptr<platform::Platform> platform_with_decimal(TextView decimal) {
  auto p = platform::Platform::headless();
  p->locale = std::make_shared<platform::headless::FixedNumberLocale>(
      Text(decimal), decimal == u"," ? u"." : u",");
  return p;
}

// Outputs that a call has not written keep these values.
constexpr int32_t kCountBefore = 77;
constexpr double kDiameterBefore = 7.5;

TEST(BarText, CountDiameterAndError) {
  struct Case {
    TextView decimal, text;
    int32_t count;
    double diameter;
    int32_t error;
  };
  constexpr int32_t N = kCountBefore;
  constexpr double D = kDiameterBefore;
  // The list order decides, not the position: "2φ10 4Φ20" splits at φ, "4 -25"
  // at the blank. Outputs are written only as far as the reading got; the
  // count is converted and rounded half to even; the diameter is numeric in
  // the locale but read by value ("2.5" is 25 in the "," locale).
  const Case cases[] = {
      {u".", u"4Φ20", 4, 20, 0},         {u".", u"  20  ", 1, 20, 0},
      {u".", u"3-25", 3, 25, 0},         {u".", u"Φ20", 1, 20, 0},
      {u".", u"-20", 1, 20, 0},          {u".", u"2D16", 2, 16, 0},
      {u".", u"2\uE00116", 2, 16, 0},    {u".", u"2\uE00016", 2, 16, 0},
      {u".", u"2%%13112", 2, 12, 0},     {u".", u"2%%12912", 2, 12, 0},
      {u".", u"2\uE00216", 2, 16, 0},    {u".", u"2φ10 4Φ20", N, D, 3000130},
      {u".", u"4 -25", N, -25, 3000120}, {u".", u"0-20", 0, 20, 3000140},
      {u".", u"a-20", N, 20, 3000150},   {u".", u"4-x", N, D, 3000130},
      {u".", u"0", 1, 0, 3000100},       {u".", u"", N, D, 3000110},
      {u".", u"Φ", N, D, 3000130},       {u".", u"1e400", N, D, 3000110},
      {u".", u"4Φ1e400", N, D, 3000130}, {u".", u"2.5Φ20", 2, 20, 0},
      {u".", u"0.4Φ20", 0, 20, 3000140}, {u".", u"1,000Φ20", 1000, 20, 0},
      {u".", u"4Φ20,5", 4, 20, 0},       {u",", u"4Φ20,5", 4, 20, 0},
      {u",", u"2,5Φ20", 2, 20, 0},       {u",", u"0,5", 1, 0, 3000100},
      {u",", u"4Φ0,5", N, 0, 3000120},   {u",", u"4Φ2.5", 4, 2.5, 0},
      {u",", u"4Φ.5", N, D, 3000130},
  };
  for (const Case& c : cases) {
    clsCharacter chr(platform_with_decimal(c.decimal));
    int32_t count = kCountBefore;
    double diameter = kDiameterBefore;
    int32_t error = -1;
    chr.GjTextTurnW(c.text, count, diameter, error);
    EXPECT_EQ(std::tie(count, diameter, error), std::tie(c.count, c.diameter, c.error))
        << to_utf8(c.decimal) << " " << to_utf8(c.text);
  }
}

TEST(BarText, GradeSymbolsJoinTheSeparatorList) {
  clsCharacter chr(platform_with_decimal(u"."));
  chr.tPubF4(u"#");
  chr.tPubF1(u"");  // an empty symbol separates nothing
  int32_t count = 0;
  double diameter = 0;
  int32_t error = -1;
  chr.GjTextTurnW(u"3#20", count, diameter, error);
  EXPECT_EQ(std::make_tuple(count, diameter, error), std::make_tuple(3, 20.0, 0));
  chr.GjTextTurnW(u"5φ12", count, diameter, error);  // the fixed "φ" still separates
  EXPECT_EQ(std::make_tuple(count, diameter, error), std::make_tuple(5, 12.0, 0));
}

TEST(BarText, NarrowFormOverflowsAndLeavesOutputs) {
  struct Case {
    TextView text;
    int16_t count;
    float diameter;
    int32_t error;
    std::string fault;
  };
  const Case cases[] = {
      {u"32767Φ20", 32767, 20, 0, "none"},
      {u"4Φ2.5", 4, 2.5f, 0, "none"},
      {u"a-20", 9, 20, 3000150, "none"},
      {u"99999999999Φ20", 9, 20, 3000150, "none"},  // beyond 32 bits: an error
      {u"32768Φ20", 9, 1.5f, 42, kOverflow},
      {u"4Φ1e39", 9, 1.5f, 42, kOverflow},
  };
  clsCharacter chr(platform_with_decimal(u"."));
  for (const Case& c : cases) {
    int16_t count = 9;
    float diameter = 1.5f;
    int32_t error = 42;
    EXPECT_EQ(fault_of([&] { chr.GjTextTurn(c.text, count, diameter, error); }), c.fault)
        << to_utf8(c.text);
    EXPECT_EQ(count, c.count) << to_utf8(c.text);
    EXPECT_EQ(diameter, c.diameter) << to_utf8(c.text);
    EXPECT_EQ(error, c.error) << to_utf8(c.text);
  }
}

TEST(SlabBarText, DiameterSpacingAndError) {
  struct Case {
    TextView decimal, text;
    float diameter, spacing;
    int32_t error;
  };
  constexpr float D = 3, A = 99;  // the caller's values; "10@x" fails even so
  const Case cases[] = {
      {u".", u"10@200", 10, 200, 0},    {u".", u" 10 @ 200 ", 10, 200, 0},
      {u".", u"10-200", 10, 200, 0},    {u".", u"10 200", 10, 200, 0},
      {u".", u"@200", D, A, 503},       {u".", u"10@x", D, A, 503},
      {u".", u"x@200", D, 200, 503},    {u".", u"0@200", 0, 200, 503},
      {u".", u"10@-200", D, -200, 503}, {u".", u"10@200@300", D, A, 503},
      {u".", u"10@1e39", D, A, 503},    {u".", u"10", D, A, 503},
      {u",", u"10@2,5", 10, 2.5f, 0},   {u",", u"8@1.500", 8, 1500, 0},
  };
  for (const Case& c : cases) {
    clsCharacter chr(platform_with_decimal(c.decimal));
    float diameter = D, spacing = A;
    int32_t error = -1;
    chr.BanGjTextTurn(c.text, diameter, spacing, error);
    EXPECT_EQ(std::tie(diameter, spacing, error), std::tie(c.diameter, c.spacing, c.error))
        << to_utf8(c.text);
  }
}

TEST(Arithmetic, ValueAndOperatorCode) {
  struct Case {
    TextView decimal, text, value;
    int16_t sign;
  };
  constexpr int16_t U = 9;  // left unchanged
  constexpr int16_t X = reporttext::kNoOperator;
  // One operator only ("3+1" is no number); "1e" is no number either; a fault
  // (0^-1, beyond double) leaves the text. In the "," locale the parts are
  // read by value (1,5 is 1) and the result is written in the locale.
  const Case cases[] = {
      {u".", u"1.5*2", u"3", 1},
      {u".", u"*1.2", u"1.2", 1},
      {u".", u"/4", u"0.25", 2},
      {u".", u"-5", u"-5", 4},
      {u".", u"2^10", u"1024", 5},
      {u".", u"2*-3", u"-6", 1},
      {u".", u" 360*0.9 ", u"324", 1},
      {u".", u"^2", u"^2", X},
      {u".", u"abc", u"abc", X},
      {u".", u"", u"0", U},
      {u".", u"-", u"0", U},
      {u".", u"-.", u"0", U},
      {u".", u"-.+", u"0", U},
      {u".", u"-+", u"-+", X},
      {u".", u"1,000*2", u"1,000*2", X},
      {u".", u"2*3+1", u"2*3+1", X},
      {u".", u"1e-5", u"1e-5", X},
      {u".", u"0^-1", u"0^-1", X},
      {u",", u"10/4", u"2,5", 2},
      {u",", u"1,5*2", u"2", 1},
      {u",", u"1/0,5", u"1/0,5", X},
      {u",", u"1.000*2", u"1.000*2", X},
      {u",", u"-,", u"0", U},
      {u",", u"-.", u"-.", X},
  };
  for (const Case& c : cases) {
    clsCharacter chr(platform_with_decimal(c.decimal));
    int16_t sign = U;
    EXPECT_EQ(to_utf8(chr.vYsfTextTurnW(c.text, sign)), to_utf8(c.value))
        << to_utf8(c.decimal) << " " << to_utf8(c.text);
    EXPECT_EQ(sign, c.sign) << to_utf8(c.decimal) << " " << to_utf8(c.text);
  }
  clsCharacter chr(platform_with_decimal(u"."));
  EXPECT_EQ(chr.vYsfTextTurn(Variant(2.5)), Variant(u"2.5"));
}

TEST(Arithmetic, IncompleteNumbersAlwaysUseThePoint) {
  const std::pair<TextView, TextView> cases[] = {
      {u"", u"0"},   {u" - ", u"0"}, {u".", u"0"},   {u"+", u"0"}, {u"-.", u"0"},
      {u".+", u"0"}, {u"-.+", u"0"}, {u"-+", u"-+"}, {u",", u","}, {u" 12 ", u"12"},
  };
  clsCharacter chr(platform_with_decimal(u","));
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(chr.tOpinionZeroText(text), expected) << to_utf8(text);
  }
}

TEST(SteelGrade, NamesAndStrengths) {
  struct Case {
    TextView text;
    double fy;
  };
  const Case cases[] = {
      {u"HRB 400", 360}, {u"HRB400", 360},        {u" RRB400 ", 360}, {u"Ⅲ级", 360},
      {u"HPB300", 270},  {u"H R B 5 0 0 E", 435}, {u"HRB335", 300},   {u"HPB 235", 210},
      {u"Ⅰ级", 210},     {u"hrb400", 0},          {u"HRB400\t", 0},   {u"Ⅳ级", 0},
      {u"", 0},
  };
  clsCharacter chr(platform_with_decimal(u"."));
  for (const Case& c : cases) {
    double fy = -1;
    EXPECT_EQ(chr.bSignEnter_SteelFy(c.text, fy), c.fy != 0) << to_utf8(c.text);
    EXPECT_EQ(fy, c.fy) << to_utf8(c.text);
  }
}

TEST(SteelGrade, SymbolForStrength) {
  struct Case {
    TextView decimal;
    Variant fy;
    TextView symbol;
  };
  // In the "," locale the strength is read by value: 360,5 is 360, 1,2 is 1.
  const Case cases[] = {
      {u".", Variant(270), u"F1"},         {u".", Variant(270.000001), u"F1"},
      {u".", Variant(270.0000011), u"F2"}, {u".", Variant(300), u"F2"},
      {u".", Variant(300.0000011), u"F3"}, {u".", Variant(360), u"F3"},
      {u".", Variant(360.5), u"F4"},       {u".", Variant(u"300*1.2"), u"F3"},
      {u".", Variant(u"HRB500"), u"F4"},   {u".", Variant(u"HPB300"), u"F1"},
      {u".", Variant(u"unknown"), u"F1"},  {u".", Variant(), u"F1"},
      {u".", Variant(u"1e400"), u"F1"},    {u",", Variant(360.5), u"F3"},
      {u",", Variant(u"300*1,2"), u"F2"},  {u",", Variant(u"400"), u"F4"},
  };
  for (const Case& c : cases) {
    clsCharacter chr(platform_with_decimal(c.decimal));
    chr.tPubF1(u"F1");
    chr.tPubF2(u"F2");
    chr.tPubF3(u"F3");
    chr.tPubF4(u"F4");
    EXPECT_EQ(to_utf8(chr.tGjFhByFy(c.fy)), to_utf8(c.symbol)) << c.fy;
  }
}

TEST(Diameter, RoundedUpToTheSeries) {
  const double inf = std::numeric_limits<double>::infinity();
  const std::pair<double, double> cases[] = {
      {-5, 6},    {0, 6},         {6, 6},    {6.0001, 8}, {20, 20},       {20.1, 22},
      {22.5, 25}, {29, 30},       {33, 36},  {50, 50},    {50.4, 50},     {50.5, 51},
      {50.6, 51}, {1234.5, 1235}, {-inf, 6}, {inf, inf},  {1e300, 1e300},
  };
  clsCharacter chr(platform_with_decimal(u","));
  for (const auto& [d, expected] : cases) EXPECT_EQ(chr.dGjDiameterQzW(d), expected) << d;
  EXPECT_TRUE(std::isnan(chr.dGjDiameterQzW(std::nan(""))));
  EXPECT_EQ(chr.dGjDiameterQz(Variant(u"20,1")), Variant(22.0));
  EXPECT_EQ(fault_of([&] { chr.dGjDiameterQz(Variant(u"x")); }), kConversion);
}

TEST(Diameter, FromArea) {
  struct Case {
    double as;
    int32_t bars;
    double d;
  };
  const Case cases[] = {
      {314, 1, 20}, {314.16, 1, 22}, {-314, 1, 20}, {628, 2, 20},  {0, 1, 6},
      {314, 0, 6},  {314, -1, 6},    {0, 0, 6},     {2100, 1, 52},
  };
  clsCharacter chr(platform_with_decimal(u"."));
  for (const Case& c : cases) {
    EXPECT_EQ(chr.dGjDiameterFromAsW(c.as, c.bars), c.d) << c.as << " / " << c.bars;
  }
  EXPECT_EQ(chr.dGjDiameterFromAs(Variant(u"314")), Variant(20.0));
  EXPECT_EQ(fault_of([&] { chr.dGjDiameterFromAs(Variant(u"abc")); }), kConversion);
}

TEST(Diameter, StepsUpAndDown) {
  struct Case {
    double d;
    int32_t change;
    double expected;
  };
  const Case cases[] = {
      {36, 1, 38},
      {40, -1, 38},
      {20, 3, 28},
      {8, -2, 5},
      {8, -3, 4},
      {6, 1, 8},
      {6, -1, 5},
      {5, 1, 6},
      {22, 1, 25},
      {25, 1, 28},
      {28, 1, 30},
      {32, 1, 36},
      {40, 1, 44},
      {25, -1, 22},
      {28, -1, 25},
      {36, -1, 32},
      {44, -1, 40},
      {7, -1, 5},
      {20, 0, 20},
      // Beyond the irregular diameters every step is alike.
      {20, INT32_MAX, 44 + 2 * (double{INT32_MAX} - 9)},
      {20, INT32_MIN, 6 - (2147483648.0 - 7)},
      {1e17, 1, 1e17},
  };
  clsCharacter chr(platform_with_decimal(u"."));
  for (const Case& c : cases) {
    EXPECT_EQ(chr.dChangeSteelD(c.d, c.change), c.expected) << c.d << " by " << c.change;
  }
}

TEST(Diameter, ManyStepsEqualSingleSteps) {
  clsCharacter chr(platform_with_decimal(u"."));
  for (const double start : {-3.0, 0.0, 5.0, 5.5, 6.0, 7.0, 20.0, 21.0, 44.0, 45.0, 46.0, 101.0}) {
    double up = start, down = start;
    for (int32_t n = 1; n <= 60; ++n) {
      up = chr.dChangeSteelD(up, 1);
      down = chr.dChangeSteelD(down, -1);
      ASSERT_EQ(chr.dChangeSteelD(start, n), up) << start << " up " << n;
      ASSERT_EQ(chr.dChangeSteelD(start, -n), down) << start << " down " << n;
    }
  }
}

TEST(Diameter, VariantStepsGoThroughText) {
  struct Case {
    TextView decimal;
    Variant d;
    int16_t change;
    double expected;
  };
  const Case cases[] = {
      {u".", Variant(20), 1, 22},    {u".", Variant(u" 20"), 1, 22},
      {u".", Variant(28), -2, 22},   {u".", Variant(22.5), 1, 24.5},
      {u",", Variant(22.5), 1, 25},  {u",", Variant(22.5), 2, 28},  // 22,5 reads as 22
      {u".", Variant(u"abc"), 1, 1}, {u",", Variant(u"2,5"), 0, 2.5},
      {u".", Variant(36), 0, 36},
  };
  for (const Case& c : cases) {
    clsCharacter chr(platform_with_decimal(c.decimal));
    EXPECT_EQ(chr.dChangeGanJinD(c.d, c.change), c.expected) << c.d << " by " << c.change;
  }
  clsCharacter chr(platform_with_decimal(u"."));
  EXPECT_EQ(fault_of([&] { chr.dChangeGanJinD(Variant(u"abc"), 0); }), kConversion);
  EXPECT_EQ(fault_of([&] { chr.dChangeGanJinD(Variant(u"1e400"), 1); }), kOverflow);
}

TEST(BarList, NumberAndLabel) {
  struct Case {
    TextView label, first;
    int16_t number;
    TextView label_after;
  };
  // An explicit text is taken by value ("abc" is 0, "7.5" is 8).
  const Case cases[] = {
      {u"L%%KZ12", u"", 12, u"L"},
      {u"KZ", u"自动", 1, u"KZ"},
      {u"A12", u"7", 7, u"A12"},
      {u"A12", u" 自动 ", 12, u"A12"},
      {u"A12", u"abc", 0, u"A12"},
      {u"A12", u"-3", -3, u"A12"},
      {u"A12", u"7.5", 8, u"A12"},
      {u"A12", u"99999", 1, u"A12"},
      {u"KZ12a", u"", 12, u"KZ12a"},
      {u"12KZ3", u"", 3, u"12KZ3"},
      {u"a%%b%%c7", u"", 1, u"a"},
      {u"%%", u"", 1, u""},
      {u"KZ0", u"", 1, u"KZ0"},
      {u"KZ007", u"", 7, u"KZ007"},
      {u"KZ32767", u"", 32767, u"KZ32767"},
      {u"KZ99999", u"", 1, u"KZ99999"},
  };
  clsCharacter chr(platform_with_decimal(u"."));
  for (const Case& c : cases) {
    Text label(c.label);
    EXPECT_EQ(chr.iGJListW(label, c.first), c.number)
        << to_utf8(c.label) << " " << to_utf8(c.first);
    EXPECT_EQ(label, c.label_after) << to_utf8(c.label);
  }
  EXPECT_EQ(chr.iGJList(Variant(u"L%%KZ12")), 12);
  EXPECT_EQ(chr.iGJList(Variant(u"KZ")), 1);
}

TEST(AnswerWords, TrimmedAndWithoutCase) {
  clsCharacter chr(platform_with_decimal(u"."));
  EXPECT_TRUE(chr.bAutoText(u" 自动 "));
  EXPECT_FALSE(chr.bAutoText(u"自动选择"));
  EXPECT_TRUE(chr.bYesText(u"是 "));
  EXPECT_FALSE(chr.bYesText(u"否"));
  EXPECT_TRUE(chr.bMinorFlexuralMember(u"次要构件"));
  EXPECT_FALSE(chr.bMinorFlexuralMember(u"主要构件"));
  EXPECT_FALSE(chr.bDisplaySpGj(u" 不显示实配钢筋"));
  EXPECT_TRUE(chr.bDisplaySpGj(u"显示实配钢筋"));
  EXPECT_TRUE(chr.bDisplaySpGj(u""));
}

TEST(SteelGradeLines, ReplacedInTheAccumulator) {
  const Text long_line = u"钢筋抗拉强度设计值 " + Text(45, u'甲') + u"（HRB400）";
  clsCharacter chr(platform_with_decimal(u"."));
  // Without the mark: each line loses its companion text, then is wrapped.
  chr.Txt(u"前 ");
  chr.tFyLine1(u"fy＝360（HRB400）");
  chr.tFyLine2(u"（HRB400）");
  chr.Txt(u" 中 ");
  chr.tFyLine1_RF(long_line);
  chr.tFyLine2_RF(u"（HRB400）");
  chr.TxtReplaceFy2();
  const Text wrapped = chr.SplitSP26(u"钢筋抗拉强度设计值 " + Text(45, u'甲'));
  ASSERT_NE(wrapped.find(chr.tConEnter1()), Text::npos);  // the line is long enough to wrap
  EXPECT_EQ(chr.Txt(), u"前 fy＝360 中 " + wrapped);
  EXPECT_EQ(clsCharacter::Internals::steel_grade_lines(chr)[1], u"fy＝360");
  EXPECT_EQ(clsCharacter::Internals::steel_grade_lines(chr)[3],
            u"钢筋抗拉强度设计值 " + Text(45, u'甲'));

  // With the mark "（Ⅱ）" in the text: the lines stay whole, only wrapped.
  clsCharacter marked(platform_with_decimal(u"."));
  marked.Txt(u"（Ⅱ）");
  marked.tFyLine1(long_line);
  marked.tFyLine2(u"（HRB400）");
  marked.TxtReplaceFy2();
  EXPECT_EQ(marked.Txt(), u"（Ⅱ）" + marked.SplitSP26(long_line));
  EXPECT_EQ(clsCharacter::Internals::steel_grade_lines(marked)[1], u"（HRB400）");

  // A store that lost its entries is made four again.
  clsCharacter bare(platform_with_decimal(u"."));
  bare.Txt(u"abc");
  clsCharacter::Internals::steel_grade_lines(bare).clear();
  bare.TxtReplaceFy2();
  EXPECT_EQ(bare.Txt(), u"abc");
  EXPECT_EQ(clsCharacter::Internals::steel_grade_lines(bare).size(), 4u);
}

// Random texts of the notation's own characters and worse: no reader may
// throw (except the narrow bar form, by design), hang, or return a success
// that breaks its own promise.
TEST(RebarRobustness, RandomTexts) {
  const TextView pieces[] = {
      u"0",      u"1", u"2", u"5",  u"9",     u"Φ",      u"φ",      u"\uE000", u"\uE001", u"\uE002",
      u"\uE003", u"@", u"*", u"/",  u"+",     u"-",      u"^",      u".",      u",",      u"e",
      u"E",      u"D", u" ", u"%%", u"%%131", u"\xD800", u"\xDC00", u"自动",   u"HRB",    u"400"};
  std::mt19937 random(20240611);
  std::vector<Text> texts = {Text(100000, u'9'), Text(100000, u'-'),
                             Text(50000, u'1') + u"Φ" + Text(50000, u'2'),
                             u"1" + Text(400, u'0') + u",5e-400", Text(100000, u'\xD800')};
  for (int i = 0; i < 3000; ++i) {
    Text t;
    const int length = std::uniform_int_distribution<int>(0, 12)(random);
    for (int k = 0; k < length; ++k) {
      t += pieces[std::uniform_int_distribution<std::size_t>(0, std::size(pieces) - 1)(random)];
    }
    texts.push_back(t);
  }
  for (const TextView decimal : {TextView(u"."), TextView(u",")}) {
    clsCharacter chr(platform_with_decimal(decimal));
    for (const Text& t : texts) {
      SCOPED_TRACE(to_utf8(t.substr(0, 60)));
      int32_t count = 0, error = 0;
      double diameter = 0;
      chr.GjTextTurnW(t, count, diameter, error);
      if (error == 0) {
        EXPECT_GE(count, 1);
        EXPECT_GT(diameter, 0);
      } else {
        EXPECT_TRUE(error >= 3000100 && error <= 3000150 && error % 10 == 0) << error;
      }
      int16_t n = 0;
      float d = 0;
      const std::string narrow = fault_of([&] { chr.GjTextTurn(t, n, d, error); });
      EXPECT_TRUE(narrow == "none" || narrow == kOverflow) << narrow;

      float sd = 0, sa = 0;
      chr.BanGjTextTurn(t, sd, sa, error);
      EXPECT_TRUE(error == 503 || (error == 0 && sd > 0 && sa > 0)) << error;

      int16_t sign = 99;
      const Text value = chr.vYsfTextTurnW(t, sign);
      EXPECT_TRUE(sign == 99 || (sign >= -1 && sign <= 5)) << sign;
      if (sign > 0) {
        EXPECT_TRUE(frame::is_numeric(value, chr.number_symbols()));
      }

      EXPECT_FALSE(chr.tOpinionZeroText(t).empty());
      EXPECT_FALSE(chr.tGjFhByFy(Variant(t)).empty());
      double fy = 0;
      EXPECT_EQ(chr.bSignEnter_SteelFy(t, fy), fy != 0);
      Text label = t;
      EXPECT_NE(chr.iGJListW(label, {}), 0);
      label = t;
      chr.iGJListW(label, t);
    }
  }
}

}  // namespace
}  // namespace zelkora
