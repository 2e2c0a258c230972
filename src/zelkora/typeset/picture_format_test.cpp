// Tests of the picture formatter.
#include "zelkora/typeset/picture_format.h"

#include "zelkora/frame/locale_symbols.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace zelkora::typeset {
namespace {

using frame::NumberSymbols;

constexpr NumberSymbols kDot{u'.', u','};
constexpr NumberSymbols kComma{u',', u'.'};
constexpr NumberSymbols kCommaNoGrouping{u',', 0};

struct Case {
  double value;
  const char16_t* pattern;
  const char16_t* expected;
};

void expect_cases(const std::vector<Case>& cases, const NumberSymbols& symbols) {
  for (const Case& c : cases) {
    EXPECT_EQ(to_utf8(format_picture(c.value, c.pattern, symbols)), to_utf8(c.expected))
        << c.value << " with \"" << to_utf8(c.pattern) << "\"";
  }
}

TEST(PictureFormat, RoundsHalfAwayFromZeroOnFifteenDigits) {
  expect_cases(
      {
          {2.675, u"0.00", u"2.68"},  // 2.67499999... in binary
          {1.005, u"0.00", u"1.01"},
          {0.125, u"0.00", u"0.13"},
          {-2.675, u"0.00", u"-2.68"},
          {2.5, u"0", u"3"},
          {-2.5, u"0", u"-3"},
          {0.5, u"#", u"1"},
          {0.45, u"0.0", u"0.5"},
          {1.0000000000000002, u"0.000000000000000", u"1.000000000000000"},
          {123456789012345.67, u"0", u"123456789012346"},
          {9.995, u"0.00", u"10.00"},
          {999.95, u"#,##0.0", u"1,000.0"},
          {0.0049, u"0.00", u"0.00"},
          {0.005, u"0.00", u"0.01"},
          {1e-300, u"0.00", u"0.00"},
      },
      kDot);
}

TEST(PictureFormat, NegativeValueRoundingToZeroLosesItsSign) {
  expect_cases(
      {
          {-0.001, u"0.00", u"0.00"},
          {-0.4, u"0", u"0"},
          {-0.4, u"#", u""},
          {-0.0, u"0.0", u"0.0"},
          {-0.004, u"0.00;(0.00)", u"0.00"},
          {-0.004, u"0.00;(0.00);\"zero\"", u"0.00"},
          // The first section shows more decimals: the value is not
          // zero there, so it keeps its sign.
          {-0.004, u"0.000;(0.0)", u"-0.004"},
      },
      kDot);
}

TEST(PictureFormat, Placeholders) {
  expect_cases(
      {
          {5, u"#.##", u"5."},
          {0.5, u"#.##", u".5"},
          {0.5, u"#0.00", u"0.50"},
          {0, u"#", u""},
          {0, u"#0", u"0"},
          {0.4, u"#0", u"0"},
          {5, u"000", u"005"},
          {12345, u"00", u"12345"},
          {5, u"#0#", u"05"},
          {1.5, u"0.0#", u"1.5"},
          {1.25, u"0.0#", u"1.25"},
          {1.2, u"0.#0", u"1.20"},
          {5.5, u".00", u"5.50"},
          {0.25, u".00", u".25"},
          {123456, u"00-00", u"1234-56"},
          {5, u"##-##", u"-5"},
          {5, u"kN", u"kN"},
          {5, u"0.0kN", u"5.0kN"},
          {5, u"#0mm_up(2)up_", u"5mm_up(2)up_"},
          {1.5, u"0.0.0", u"1.5.0"},
      },
      kDot);
}

TEST(PictureFormat, GroupingAndScaling) {
  expect_cases(
      {
          {1234567.891, u"#,##0.00", u"1,234,567.89"},
          {-1234567.891, u"#,##0.00", u"-1,234,567.89"},
          {999, u"#,##0", u"999"},
          {1000, u"#,##0", u"1,000"},
          {1234, u"0,0", u"1,234"},
          {5, u"000,000", u"000,005"},
          {12345, u"#0,", u"12"},
          {12345678, u"#,##0,", u"12,346"},
          {1234567890, u"0,,", u"1235"},
          {5, u",0", u",5"},
          {5, u"0.0,", u"5.0,"},
          {1e20, u"#,##0", u"100,000,000,000,000,000,000"},
      },
      kDot);
  expect_cases(
      {
          {1234567.891, u"#,##0.00", u"1.234.567,89"},
          {2.5, u"0.00", u"2,50"},
          {12345, u"#0,", u"12"},
      },
      kComma);
  expect_cases({{1234567.891, u"#,##0.00", u"1234567,89"}}, kCommaNoGrouping);
}

TEST(PictureFormat, PercentAndScientific) {
  expect_cases(
      {
          {0.125, u"0.00%", u"12.50%"},
          {0.285, u"0.0%", u"28.5%"},  // 28.499999... when multiplied in binary
          {0.5, u"0%%", u"5000%%"},
          {12345, u"0.00E+00", u"1.23E+04"},
          {12345, u"0.00e+00", u"1.23e+04"},
          {0.00012, u"0.0E-0", u"1.2E-4"},
          {1.5, u"0.0E-00", u"1.5E00"},
          {1.5, u"0.0E+00", u"1.5E+00"},
          {-12345, u"0.00E+00", u"-1.23E+04"},
          {0, u"0.00E+00", u"0.00E+00"},
          {9.999, u"0.0E+0", u"1.0E+1"},
          {12345, u"00.00E+00", u"12.35E+03"},
          {12345, u"##0.0E+0", u"12.3E+3"},
          {999.95, u"##0.0E+0", u"1.0E+3"},
          {0.00123, u"##0.0E+0", u"1.2E-3"},
          {1e-300, u"0.0E+000", u"1.0E-300"},
          {5, u"0E", u"5E"},
          {5, u"0E+", u"5E+"},
          {5, u"0E+x", u"5E+x"},
      },
      kDot);
  expect_cases({{12345, u"0.00E+00", u"1,23E+04"}}, kComma);
}

TEST(PictureFormat, LiteralsAndSections) {
  expect_cases(
      {
          {5, u"\\#0", u"#5"},
          {5, u"0\\", u"5"},
          {5, u"\"#,0.%\"0", u"#,0.%5"},
          {5, u"0\" open", u"5 open"},
          {-5, u"$0", u"-$5"},
          {-3, u"0.0;(0.0)", u"(3.0)"},
          {3, u"0.0;(0.0)", u"3.0"},
          {0, u"0;-0;\"zero\"", u"zero"},
          {0, u"0;-0;", u"0"},
          {-5, u"0;", u"-5"},
          {-5, u";0", u"5"},
          {5, u";0", u"5"},
          {0, u"0;-0;z;ignored", u"z"},
          {-5, u"\"a;b\"0;\\;0", u";5"},
          {5, u"0\U0001F600", u"5\U0001F600"},
          {5, u"\\\U0001F600", u"\U0001F600"},
      },
      kDot);
}

TEST(PictureFormat, NamedFormats) {
  expect_cases(
      {
          {1234.5, u"General Number", u"1234.5"},
          {1e20, u"general number", u"1E+20"},
          {1234.5, u"Fixed", u"1234.50"},
          {1234.5, u"STANDARD", u"1,234.50"},
          {0.125, u"Percent", u"12.50%"},
          {12345, u"Scientific", u"1.23E+04"},
          {0.1 + 0.2, u"", u"0.3"},
          {-2.5, u"", u"-2.5"},
          {5, u"Generalnumber", u"Generalnumber"},  // not a name: letters only
      },
      kDot);
  expect_cases({{1234.5, u"Standard", u"1.234,50"}, {2.5, u"General Number", u"2,5"}}, kComma);

  // A new clsCharacter takes its thousands separator as the second character
  // of 1000 in "Standard" without formatting it; both must agree.
  for (const frame::NumberSymbols symbols :
       {kDot, kComma, frame::NumberSymbols{u'.', 0}, frame::NumberSymbols{u',', u','},
        frame::NumberSymbols{u',', u' '}, frame::NumberSymbols{u'.', u'\u00A0'}}) {
    EXPECT_EQ(frame::system_thousands_separator(symbols),
              format_picture(1000, u"Standard", symbols).substr(1, 1))
        << to_utf8(Text(1, symbols.grouping));
  }
}

TEST(PictureFormat, NonFiniteValuesPrintAClearText) {
  const double inf = std::numeric_limits<double>::infinity();
  expect_cases(
      {
          {inf, u"0.00", u"Infinity"},
          {-inf, u"#,##0", u"-Infinity"},
          {std::nan(""), u"0;(0)", u"NaN"},
      },
      kDot);
}

TEST(PictureFormat, HugeValuesAndLongPatternsAreWrittenWhole) {
  const Text big = format_picture(1.7976931348623157e308, u"0", kDot);
  ASSERT_EQ(big.size(), 309u);
  EXPECT_EQ(big.substr(0, 16), u"1797693134862320");
  EXPECT_EQ(big.substr(15).find_first_not_of(u'0'), Text::npos);

  const Text many(100, u'0');  // more tokens than are kept
  const Text decimals = format_picture(1.5, u"0." + many + u"x", kDot);
  EXPECT_EQ(decimals, u"1.5" + Text(99, u'0') + u"x");
}

// Within fifteen significant digits and away from a tie there, rounding the
// 15-digit form and rounding the binary value agree; std::to_chars does the
// latter.
TEST(PictureFormat, AgreesWithToCharsAwayFromTies) {
  std::mt19937_64 random(20261123);
  std::uniform_real_distribution<double> mantissa(0, 10);
  std::uniform_int_distribution<int> exponent(-6, 12);
  std::uniform_int_distribution<int> decimals(0, 6);
  int compared = 0;
  for (int i = 0; i < 20000; ++i) {
    const double value = mantissa(random) * std::pow(10.0, exponent(random));
    const int d = decimals(random);
    char digits[40];
    auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::scientific, 14).ptr;
    const std::string fifteen(digits, end);
    const int point = std::stoi(fifteen.substr(fifteen.find('e') + 1)) + 1;
    const std::string mantissa_digits = fifteen.substr(0, 1) + fifteen.substr(2, 14);
    const int cut = point + d;  // the first digit that is rounded away
    if (cut >= 15) continue;    // beyond the fifteen digits, which are all that is written
    if (cut >= 0 && cut < 15 && mantissa_digits[static_cast<std::size_t>(cut)] == '5' &&
        mantissa_digits.find_first_not_of('0', static_cast<std::size_t>(cut) + 1) ==
            std::string::npos) {
      continue;  // a tie: the two roundings differ on purpose
    }
    char fixed[400];
    end = std::to_chars(fixed, fixed + sizeof fixed, value, std::chars_format::fixed, d).ptr;
    const Text pattern = d == 0 ? Text(u"0") : u"0." + Text(static_cast<std::size_t>(d), u'0');
    ASSERT_EQ(to_utf8(format_picture(value, pattern, kDot)), std::string(fixed, end))
        << fifteen << " at " << d;
    ++compared;
  }
  EXPECT_GT(compared, 15000);
}

TEST(PictureFormat, AnyPatternFormatsWithoutFault) {
  const Text alphabet = u"0#.,%Ee+-\\\";ab kN_(2)\U0001F600";
  std::mt19937 random(5);
  std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
  std::uniform_int_distribution<std::size_t> length(0, 24);
  const double values[] = {0, -0.0, 1, -1, 0.5, -0.004, 12345.678, -1e300, 1e-300, 9.99999};
  for (int i = 0; i < 3000; ++i) {
    Text pattern(length(random), u' ');
    for (char16_t& c : pattern) c = alphabet[pick(random)];
    for (double v : values) {
      const Text out = format_picture(v, pattern, kDot);
      EXPECT_LT(out.size(), 1000u + 4 * pattern.size()) << to_utf8(pattern);
    }
  }
}

TEST(PictureFormat, RoundedIntegerDigits) {
  const std::pair<double, int> cases[] = {{0, 1},     {0.4, 1},   {9.4, 1},         {9.5, 2},
                                          {-99.5, 3}, {1e15, 16}, {std::nan(""), 1}};
  for (const auto& [value, digits] : cases)
    EXPECT_EQ(rounded_integer_digits(value), digits) << value;
}

}  // namespace
}  // namespace zelkora::typeset
