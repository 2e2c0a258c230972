// Tests of the format codes and the tFmt family.
#include "zelkora/typeset/number_format.h"
#include "zelkora/frame/character_internals.h"

#include <gtest/gtest.h>

#include <cmath>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault_test_support.h"
#include "zelkora/platform/headless/headless.h"

namespace zelkora {
namespace {

std::shared_ptr<platform::Platform> platform_with_decimal(Text decimal, Text grouping) {
  auto p = platform::Platform::headless();
  p->locale = std::make_shared<platform::headless::FixedNumberLocale>(decimal, grouping);
  return p;
}

struct CodeCase {
  const char16_t* code;
  bool markup;
  const char16_t* pattern;
  int16_t decimals;
};

TEST(FormatCode, PatternsAndDecimals) {
  const CodeCase cases[] = {
      {u"kn", false, u"#0.0", 1},
      {u" KN  ", false, u"#0.0", 1},
      {u"knd", false, u"#0.0kN", 1},
      {u"knd_2", false, u"#0.00kN", 2},
      {u"kn_2", false, u"#0.00", 2},
      {u"kn_0", false, u"#0", 0},
      {u"kn_x", false, u"#0", 0},  // the override's digit reads as 0
      {u"mm2d", false, u"#0mm2", 0},
      {u"mm2d", true, u"#0mm_up(2)up_", 0},
      {u"mm3d", true, u"#0mm_up(3)up_", 0},
      {u"m3d", false, u"#0.000m3", 3},
      {u"cm2d", false, u"#0.0cm2", 1},
      {u"m2d", false, u"#0.00m2", 2},
      {u"cm4d", true, u"#0.00cm_up(4)up_", 2},
      {u"m4d", false, u"#0.0000m4", 4},
      {u"mn/m4d", false, u"#0MN/m4", 0},
      {u"knmd", false, u"#0.000kN·m", 3},
      {u"knm2d", true, u"#0.00kN·m_up(2)up_", 2},
      {u"kn/m3d", false, u"#0.00kN/m3", 2},
      {u"n/mm2d", false, u"#0N/mm2", 0},
      {u"nmmd", false, u"#0N·mm", 0},
      {u"decd", false, u"#0.0°", 1},
      {u"m/s2d", true, u"#0.000m/s_up(2)up_", 3},
      {u"％d", false, u"#0.00％", 2},
      {u"pjld", false, u"#0.00000", 5},
      {u"3", false, u"#0.000", 3},
      {u"0", false, u"#0", 0},
      {u"percent", false, u"Percent", -1},
      {u"Percentd", false, u"Percent", -1},
      {u"0.00E+00", false, u"0.00E+00", -10},
      {u" Fixed ", false, u" Fixed ", -10},  // a pattern stays as given
      {u"", false, u"", -10},
      {u"d", false, u"d", -10},
      {u"cm3d", false, u"cm3dcm3", -10},  // a symbol without decimals of its own
      {u"d_2", false, u"#0.00", 2},
      // Codes of any length are read the same way.
      {u"abcdefghijklmno_2", false, u"#0.00", 2},
      {u"abcdefghijklmnopqrstuvwxyzd_3", false, u"#0.000", 3},
      {u"#,##0.000000000000;-#,##0.0d", false, u"#,##0.000000000000;-#,##0.0d", -10},
  };
  clsCharacter chr(platform_with_decimal(u".", u","));
  for (const CodeCase& c : cases) {
    chr.bSuperSub(c.markup);
    EXPECT_EQ(to_utf8(chr.tCF(c.code)), to_utf8(c.pattern)) << to_utf8(c.code);
    EXPECT_EQ(clsCharacter::Internals::format_decimals(chr), c.decimals) << to_utf8(c.code);
  }
}

TEST(FormatCode, PowerSignsFollowTheSwitchAndThePlainSigns) {
  clsCharacter chr(platform_with_decimal(u".", u","));
  EXPECT_EQ(chr.tFmt(2, u"mm2d"), u"2mm2");
  chr.bSuperSub(true);
  EXPECT_EQ(chr.tFmt(2, u"mm2d"), u"2mm_up(2)up_");
  chr.bSuperSub(false);
  chr.tPubPf(u"²");
  EXPECT_EQ(chr.tFmt(2, u"mm2d"), u"2mm²");
  chr.tPubLf(u"³");
  EXPECT_EQ(chr.tFmt(2, u"mm3d"), u"2mm³");
  EXPECT_EQ(chr.tFmt(2, u"m4d"), u"2.0000m4");  // a unit symbol keeps the zeros
}

struct FmtCase {
  double value;
  const char16_t* code;
  bool fix;
  const char16_t* dot;    // with "." as decimal symbol
  const char16_t* comma;  // with ","
};

TEST(Fmt, TrimsByTheCrossedRule) {
  const FmtCase cases[] = {
      {2.5, u"3", false, u"2.5", u"2,5"},
      {2.5, u"3", true, u"2.500", u"2,500"},
      {2.5, u"knd_3", false, u"2.500kN", u"2,500kN"},
      {2.5, u"knd_3", true, u"2.5kN", u"2,5kN"},
      {3.0, u"2", false, u"3", u"3"},
      {3.0, u"knd_2", true, u"3kN", u"3kN"},
      {-3.0, u"2", false, u"-3", u"-3"},
      {100.0, u"2", false, u"100", u"100"},  // zeros before the point stay
      {2.675, u"2", false, u"2.68", u"2,68"},
      {-0.001, u"2", false, u"0", u"0"},
      {0.1 + 0.2, u"6", false, u"0.3", u"0,3"},
      {1234.5, u"mm", false, u"1235", u"1235"},  // no decimals: nothing to trim
      {0.5, u"percent", false, u"50.00%", u"50,00%"},
      {0.5, u"%d", false, u"50.00%", u"50,00%"},  // "%" in a pattern multiplies
      {12345, u"0.00E+00", false, u"1.23E+04", u"1,23E+04"},
      {2.5, u"", false, u"2.5", u"2,5"},
      {std::nan(""), u"2", false, u"NaN", u"NaN"},
  };
  clsCharacter dot(platform_with_decimal(u".", u","));
  clsCharacter comma(platform_with_decimal(u",", u"."));
  for (const FmtCase& c : cases) {
    EXPECT_EQ(to_utf8(dot.tFmt(c.value, c.code, c.fix)), to_utf8(c.dot))
        << c.value << " " << to_utf8(c.code);
    EXPECT_EQ(to_utf8(comma.tFmt(c.value, c.code, c.fix)), to_utf8(c.comma))
        << c.value << " " << to_utf8(c.code);
  }
  EXPECT_EQ(dot.tFmtFix(2.5, u"knd_3"), u"2.500kN");
  EXPECT_EQ(comma.tFmtFix(3, u"2"), u"3,00");
}

TEST(Fmt, TrimmingOfAFormattedText) {
  struct Case {
    const char16_t* in;
    bool fix;
    const char16_t* out;
  };
  const Case cases[] = {
      {u"2.500", false, u"2.5"},       {u"2.500", true, u"2.500"},
      {u"2.500kN", false, u"2.500kN"}, {u"2.500kN", true, u"2.5kN"},
      {u"3.00", false, u"3"},          {u"3.00m2", true, u"3m2"},
      {u"2.55", false, u"2.55"},       {u"250", false, u"250"},
      {u".50", false, u".5"},          {u"-0.0", false, u"-0"},
      {u"1.0E+04", false, u"1.0E+04"},
  };
  for (const Case& c : cases) {
    Text s = c.in;
    typeset::trim_trailing_zeros(s, u'.', c.fix);
    EXPECT_EQ(to_utf8(s), to_utf8(c.out)) << to_utf8(c.in) << " fix " << c.fix;
  }
}

TEST(Fmt, SignificantDigits) {
  const FmtCase cases[] = {
      {123.456, u"3", false, u"123.5", u"123,5"},
      {12.3456, u"3", false, u"12.35", u"12,35"},
      {1.23456, u"3", false, u"1.235", u"1,235"},
      {0.0123456, u"3", false, u"0.01235", u"0,01235"},
      {1234.5, u"3", false, u"1235", u"1235"},
      {-1234.5, u"3", false, u"-1235", u"-1235"},
      {9.96, u"1", false, u"10", u"10"},
      {9.996, u"3", false, u"9.996", u"9,996"},  // one digit in the whole part
      {99.996, u"3", false, u"100", u"100"},
      {0, u"3", false, u"0", u"0"},
      {1e-9, u"2", false, u"0", u"0"},  // k stops at 6
      {0.0004, u"3", false, u"0.0004", u"0,0004"},
      {12.5, u"knd_3", false, u"12.50kN", u"12,50kN"},
      {12.5, u"knd_3", true, u"12.5kN", u"12,5kN"},
      {12.5, u"mm", false, u"13", u"13"},  // no decimals: the pattern stays
  };
  clsCharacter dot(platform_with_decimal(u".", u","));
  clsCharacter comma(platform_with_decimal(u",", u"."));
  for (const FmtCase& c : cases) {
    EXPECT_EQ(to_utf8(dot.tFmtV(c.value, c.code, c.fix)), to_utf8(c.dot)) << c.value;
    EXPECT_EQ(to_utf8(comma.tFmtV(c.value, c.code, c.fix)), to_utf8(c.comma)) << c.value;
  }
  // tFmtV leaves the code's own pattern to the next call.
  EXPECT_EQ(dot.tFmt(1.23456, u"3", true), u"1.235");
}

TEST(Fmt, EquationsTermsAndExpressions) {
  clsCharacter chr(platform_with_decimal(u".", u","));
  EXPECT_EQ(chr.tFmtEq(2.5, u"knd"), u" ＝ 2.5kN");
  EXPECT_EQ(chr.tFmtEq1(2.5, u"knd"), chr.tFmtEq(2.5, u"knd"));
  EXPECT_EQ(chr.tFmtS(2.5, u"2"), u"+2.5");
  EXPECT_EQ(chr.tFmtS(0, u"2", false, true), u" + 0");
  EXPECT_EQ(chr.tFmtS(-2.5, u"2", false, true), u" - 2.5");
  EXPECT_EQ(chr.tFmtS(-0.001, u"2"), u"-0");  // the sign of the unrounded value
  EXPECT_EQ(chr.tExpStr(u"N", 2.5, u"knd"), u"N ＝ 2.5kN");
  EXPECT_EQ(chr.tExpRes(1000, 2.5, u"2"), chr.tString(1000) + u" ＝ 2.5");
  chr.lLanguage(1000000);  // no texts at these ids: both are empty
  EXPECT_EQ(chr.tExpRes(1000, 2.5, u"2"), u"2.5");
  chr.lLanguage(2147483000);  // the id overflows: trapped
  EXPECT_EQ(chr.tExpRes(1000, 2.5, u"2"), u"2.5");
}

TEST(Fmt, CodeWithSymbolAndGivenDecimals) {
  clsCharacter chr(platform_with_decimal(u".", u","));
  EXPECT_EQ(chr.tCFD(u"kn"), u"#0.0kN");
  EXPECT_EQ(chr.tCFD(u"knd_3"), u"#0.000kN");
  EXPECT_EQ(chr.tCFD(u"kn_3", 1), u"#0.0kN");
  EXPECT_EQ(chr.tCFD(u"mpa", u"2"), u"#0.00MPa");
  EXPECT_EQ(chr.tCFD(u"mpa", 12), u"#0.000MPa");  // not a digit: the unit's own
  EXPECT_EQ(chr.tCFD(u"mpa", u"x"), u"#0.000MPa");
  EXPECT_EQ(chr.tCFD(u"0.0E+00", 2), u"0.0E+00");  // a pattern of the caller's own
}

TEST(Fmt, RepeatedLastCharacter) {
  struct Case {
    const char16_t* text;
    const char16_t* last;
    double count;
    bool ignore_case;
    const char16_t* out;
  };
  const Case cases[] = {
      {u"计算结果。。。", u"。", 1, false, u"计算结果。"},
      {u"计算结果", u"。", 1, false, u"计算结果。"},
      {u"a,,,", u",", 0, false, u"a"},
      {u"abXx", u"x", 2, false, u"abXxx"},
      {u"abXx", u"x", 2, true, u"abxx"},
      {u"ababab", u"ab", 1, false, u"ab"},
      {u"abc", u"", 3, false, u"abc"},
      {u"abc", u"c", -2, false, u"ab"},
      {u"abc", u"c", 1.5, false, u"abcc"},  // 1.5 rounds half to even: 2
  };
  clsCharacter chr(platform_with_decimal(u".", u","));
  for (const Case& c : cases) {
    EXPECT_EQ(to_utf8(chr.tTurn_MultipleLastChr(c.text, c.last, c.count, c.ignore_case)),
              to_utf8(c.out))
        << to_utf8(c.text);
  }
  // A count that is no 32-bit number reaches the caller as an overflow.
  for (const double count : {std::nan(""), 1e18, -1e18}) {
    EXPECT_EQ(test_support::fault_of([&] { chr.tTurn_MultipleLastChr(u"a", u"。", count); }),
              test_support::kOverflow)
        << count;
  }
}

}  // namespace
}  // namespace zelkora
