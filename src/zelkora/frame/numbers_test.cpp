// Tests of the shared number rules in both notations.
#include "zelkora/frame/numbers.h"

#include <gtest/gtest.h>

#include "zelkora/platform/fault_test_support.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <utility>

// GCC 12's <regex> draws false "may be used uninitialized" warnings.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <regex>
#pragma GCC diagnostic pop
#else
#include <regex>
#endif

#include "zelkora/platform/fault.h"

namespace zelkora::frame {
namespace {

using namespace std::literals;
using test_support::fault_of;
using test_support::kConversion;
using test_support::kOverflow;

const NumberSymbols kDot{u'.', u','};
const NumberSymbols kComma{u',', u'.'};
const NumberSymbols kCommaSpace{u',', u' '};
constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

Text u16(const std::string& ascii) { return Text(ascii.begin(), ascii.end()); }

// The double that the C++ library reads from plain ASCII text.
double reference(const std::string& ascii) {
  double value = 0;
  std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
  return value;
}

using ParseCase = std::pair<const char16_t*, double>;

// Grouping goes anywhere after the first integer digit; zeros and underflow
// keep their sign.
TEST(ParseNumber, AcceptsTheForms) {
  const ParseCase cases[] = {
      {u"0", 0},           {u"12.5", 12.5},   {u"+7", 7},     {u".5", 0.5},
      {u"5.", 5},          {u"\t-.5 ", -0.5}, {u"007", 7},    {u"1,000", 1000},
      {u"1,00", 100},      {u"1,,0", 10},     {u"1,", 1},     {u"1,.5", 1.5},
      {u"1E5", 1e5},       {u"1e5", 1e5},     {u"1D5", 1e5},  {u"1d5", 1e5},
      {u"1.5D-3", 1.5e-3}, {u"3.0E+5", 3e5},  {u".5e1", 5},   {u"5.E2", 500},
      {u"1,000E3", 1e6},   {u"1E0005", 1e5},  {u"0E400", 0},  {u"-0", -0.0},
      {u"-0.000", -0.0},   {u"+0", 0},        {u"1E-400", 0}, {u"-1E-400", -0.0},
      {u"-2E-324", -0.0},
  };
  for (const auto& [text, expected] : cases) {
    SCOPED_TRACE(to_utf8(text));
    const auto value = parse_number(text, kDot);
    ASSERT_TRUE(value.has_value());
    EXPECT_EQ(*value, expected);
    EXPECT_EQ(std::signbit(*value), std::signbit(expected));
    EXPECT_TRUE(is_numeric(text, kDot));
  }
}

TEST(ParseNumber, RejectsWhatIsNotANumber) {
  const TextView cases[] = {
      u"",    u"   ",  u"+",     u".",       u"-.E5",   u"1E",        u"1e-",   u"E5",   u"--1",
      u"+-1", u"1-",   u"1.2.3", u"1.5,0",   u",5",     u"-,5",       u"1E5.5", u"1E,5", u"1 2",
      u"- 1", u"1 E5", u"1E 5",  u"1x",      u"-1E400", u"1E309",     u"1\n",   u"\n1",  u"0x10",
      u"Inf", u"NaN",  u"1E5E5", u"1\u00A0", u"\uFF11", u"1\u0000"sv, u"1E5,0",
  };
  for (const TextView text : cases) {
    SCOPED_TRACE(to_utf8(text));
    EXPECT_FALSE(parse_number(text, kDot).has_value());
    EXPECT_FALSE(is_numeric(text, kDot));
  }
}

// With a decimal comma "." between digits groups them; a space groups only
// inside the number; no grouping symbol, or one equal to the decimal symbol,
// means no grouping.
TEST(ParseNumber, FollowsTheLocaleSymbols) {
  const NumberSymbols none{u'.', 0}, same{u'.', u'.'};
  const struct {
    const char16_t* text;
    NumberSymbols symbols;
    std::optional<double> value;
  } cases[] = {
      {u"2,5", kComma, 2.5},    {u"1.000,5", kComma, 1000.5}, {u"2.5", kComma, 25},
      {u",5", kComma, 0.5},     {u"1,5E3", kComma, 1500},     {u".5", kComma, {}},
      {u"1,000.5", kComma, {}}, {u"2,5,0", kComma, {}},       {u"1000.5", none, 1000.5},
      {u"1,000", none, {}},     {u"1.5", kCommaSpace, {}},    {u" 1 000,5 ", kCommaSpace, 1000.5},
      {u"1.5", same, 1.5},      {u"1.000.5", same, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.text));
    EXPECT_EQ(parse_number(c.text, c.symbols), c.value);
  }
}

// 2^53 + 1 and + 3 are halfway cases: they go to even.
TEST(ParseNumber, IsCorrectlyRounded) {
  const char* const cases[] = {
      "9007199254740993",        "0.1",
      "9007199254740995",        "3e-324",
      "2.2250738585072011e-308", "2.2250738585072014e-308",
      "1.7976931348623157e308",  "123456789012345678901234567890",
      "4.9406564584124654e-324", "0.000000000000000000000000000123456789",
  };
  for (const char* ascii : cases) {
    SCOPED_TRACE(ascii);
    EXPECT_EQ(parse_number(u16(ascii), kDot), reference(ascii));
  }
}

// Exactly halfway between 1 and the next double rounds to even (1) alone, but
// up when any later digit, however far, is nonzero. Past the largest double
// (after rounding) is no number.
TEST(ParseNumber, RoundsByEveryDigitAndOverflows) {
  const std::string halfway = "1.00000000000000011102230246251565404236316680908203125";
  const double next = std::nextafter(1.0, 2.0);
  const std::string zeros(2000, '0');
  const std::pair<std::string, double> cases[] = {
      {halfway, 1.0},
      {halfway + "1", next},
      {halfway + zeros, 1.0},
      {halfway + zeros + "1", next},
      {halfway + zeros + "0001E0", next},
      {"1" + zeros + "E-2000", 1.0},
      {"0." + zeros + "5E2001", 5.0},
      {"1" + std::string(400, '0'), kInf},
      {"0." + std::string(400, '0') + "1E400", 0.1},
      {"1E-99999999999999999999999", 0.0},
      {"1E+99999999999999999999999", kInf},
      {"1.7976931348623159E308", kInf},
  };
  for (const auto& [text, value] : cases) {
    SCOPED_TRACE(text.substr(0, 60));
    EXPECT_EQ(parse_number(u16(text), kDot),
              std::isinf(value) ? std::nullopt : std::optional<double>(value));
  }
}

// Random short texts, checked against the grammar as a regular expression and
// against the C++ library on the text without its "+", grouping and "D".
TEST(ParseNumber, AgreesWithAReferenceOnRandomTexts) {
  const std::regex grammar(
      R"(^[ \t]*[+-]?([0-9][0-9,]*(\.[0-9]*)?|\.[0-9]+)([EeDd][+-]?[0-9]+)?[ \t]*$)");
  const std::string alphabet = "01590159.,EeD+- \tx";
  std::mt19937 random(7);
  std::uniform_int_distribution<std::size_t> length(0, 9), pick(0, alphabet.size() - 1);
  for (int i = 0; i < 100000; ++i) {
    std::string text(length(random), ' ');
    for (char& c : text) c = alphabet[pick(random)];
    SCOPED_TRACE("\"" + text + "\"");
    const auto value = parse_number(u16(text), kDot);
    if (!std::regex_match(text, grammar)) {
      EXPECT_FALSE(value.has_value());
      continue;
    }
    std::string plain;
    for (char c : text) {
      if (c == 'D' || c == 'd' || c == 'E') c = 'e';
      if (c != ',' && c != ' ' && c != '\t' && !(c == '+' && plain.empty())) plain += c;
    }
    double expected = 0;
    const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), expected);
    ASSERT_EQ(result.ptr, plain.data() + plain.size());
    if (result.ec == std::errc::result_out_of_range) {
      if (plain.find("e-") == std::string::npos) {
        EXPECT_FALSE(value.has_value());
        continue;
      }
      expected = plain[0] == '-' ? -0.0 : 0.0;
    }
    ASSERT_TRUE(value.has_value());
    EXPECT_EQ(*value, expected);
    EXPECT_EQ(std::signbit(*value), std::signbit(expected));
  }
}

TEST(LeadingNumber, ReadsAsFarAsTheNumberGoes) {
  const ParseCase cases[] = {
      {u"  12abc", 12},   {u"\t7", 7},       {u"2,5", 2},     {u"abc", 0},    {u"", 0},
      {u"-", 0},          {u".", 0},         {u"1E", 1},      {u"1e-x", 1},   {u"-.5x", -0.5},
      {u"1.5E3kN", 1500}, {u"1D2", 100},     {u"2.5.3", 2.5}, {u"- 1", 0},    {u"--1", 0},
      {u"1e-400", 0},     {u"12.5 m", 12.5}, {u"3E2E1", 300}, {u"1.e2", 100}, {u"E5", 0},
  };
  for (const auto& [text, value] : cases) {
    SCOPED_TRACE(to_utf8(text));
    EXPECT_EQ(leading_number(text), value);
  }
  for (const char16_t* text : {u"1e400", u"-1E309x", u"1.8E308"}) {
    SCOPED_TRACE(to_utf8(text));
    EXPECT_EQ(fault_of([&] { leading_number(text); }), kOverflow);
  }
}

TEST(ToInteger, RoundsHalfToEven) {
  const std::pair<double, int32_t> cases[] = {
      {0.5, 0},   {1.5, 2},         {2.5, 2},           {-0.5, 0},  {-1.5, -2},
      {-2.5, -2}, {2.4999, 2},      {2.5001, 3},        {-2.6, -3}, {0.49999999999999994, 0},
      {-0.0, 0},  {32767.5, 32768}, {-32768.5, -32768},
  };
  for (const auto& [value, rounded] : cases) {
    SCOPED_TRACE(value);
    EXPECT_EQ(to_int32(value), rounded);
    if (rounded <= 32767) {
      EXPECT_EQ(to_int16(value), rounded);
    }
  }
}

TEST(ToInteger, LimitsOfTheTypes) {
  EXPECT_EQ(to_int16(32767.4), 32767);
  EXPECT_EQ(to_int32(2147483647.49), 2147483647);
  EXPECT_EQ(to_int32(-2147483648.5), std::numeric_limits<int32_t>::min());
  for (double value : {32767.5, -32768.51, -32769.0, 1e10, kNaN, kInf, -kInf}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(fault_of([&] { to_int16(value); }), kOverflow);
  }
  for (double value : {2147483647.5, -2147483648.51, 1e300, kNaN, kInf, -kInf}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(fault_of([&] { to_int32(value); }), kOverflow);
  }
}

TEST(TextToNumber, ConvertsInTheLocaleOrFaults) {
  EXPECT_EQ(text_to_double(u" 1.000,5 ", kComma), 1000.5);
  EXPECT_EQ(text_to_int16(u"2,5", kComma), 2);
  EXPECT_EQ(text_to_int16(u"3,5", kComma), 4);
  EXPECT_EQ(text_to_int32(u"-1,234,567.5", kDot), -1234568);
  EXPECT_EQ(text_to_int32(u"40000", kDot), 40000);
  EXPECT_EQ(fault_of([] { text_to_int16(u"", kDot); }), kConversion);
  EXPECT_EQ(fault_of([] { text_to_int16(u"1E400", kDot); }), kOverflow);
  EXPECT_EQ(fault_of([] { text_to_int16(u"40000", kDot); }), kOverflow);
  EXPECT_EQ(fault_of([] { text_to_double(u"2.5.", kDot); }), kConversion);
  EXPECT_EQ(fault_of([] { text_to_double(u"-1E999", kDot); }), kOverflow);
  EXPECT_EQ(fault_of([] { text_to_int32(u"3e9", kDot); }), kOverflow);
}

// Rounded to 15 digits, then fixed from 1E-4 up to below 1E15; words for
// the values that are not finite.
TEST(GeneralNumberText, WritesUpTo15Digits) {
  const std::pair<double, TextView> cases[] = {
      {-0.0, u"0"},          {1.0 / 3, u"0.333333333333333"},
      {-1, u"-1"},           {-2.0 / 3, u"-0.666666666666667"},
      {100, u"100"},         {123456789012345, u"123456789012345"},
      {12.5, u"12.5"},       {1e14, u"100000000000000"},
      {0.1 + 0.2, u"0.3"},   {99999999999999.99, u"100000000000000"},
      {1.005, u"1.005"},     {999999999999999.9, u"1E+15"},
      {1e15, u"1E+15"},      {1234567890123456.0, u"1.23456789012346E+15"},
      {1.5e20, u"1.5E+20"},  {-2.5e-7, u"-2.5E-07"},
      {0.0001, u"0.0001"},   {0.000099999999999999995, u"0.0001"},
      {1e-4 * 3, u"0.0003"}, {0.00009999, u"9.999E-05"},
      {1e-5, u"1E-05"},      {-1.7976931348623157e308, u"-1.79769313486232E+308"},
      {1e100, u"1E+100"},    {4.9406564584124654e-324, u"4.94065645841247E-324"},
      {kNaN, u"NaN"},        {-kNaN, u"NaN"},
      {kInf, u"Infinity"},   {-kInf, u"-Infinity"},
  };
  for (const auto& [value, text] : cases) {
    SCOPED_TRACE(value);
    EXPECT_EQ(general_number_text(value, kDot), text);
    if (!std::isfinite(value)) {
      EXPECT_FALSE(is_numeric(text, kDot));  // the words do not read back
    }
  }
  // The locale's decimal symbol, and no grouping.
  EXPECT_EQ(general_number_text(-1234.25, kComma), u"-1234,25");
  EXPECT_EQ(general_number_text(1.5e20, kComma), u"1,5E+20");
  EXPECT_EQ(general_number_text(1234567.25, kCommaSpace), u"1234567,25");
}

TEST(GeneralNumberText, AppendKeepsWhatIsThereAndFitsItsRoom) {
  Text out = u"x=";
  out.reserve(64);
  const char16_t* const storage = out.data();
  append_general_number(out, -1.5e-20, kComma);
  append_general_number(out, 0.5, kDot);
  EXPECT_EQ(out, u"x=-1,5E-200.5");
  EXPECT_EQ(out.data(), storage);
}

// Over random bit patterns: writing then reading gives the value rounded to
// 15 significant digits, and writing that again gives the same text.
TEST(GeneralNumberText, ReadsBackAsTheValueRoundedTo15Digits) {
  std::mt19937_64 random(20240611);
  std::uniform_int_distribution<uint64_t> bits;
  for (int checked = 0; checked < 20000;) {
    const uint64_t pattern = bits(random);
    double value;
    static_assert(sizeof value == sizeof pattern);
    std::memcpy(&value, &pattern, sizeof value);
    if (!std::isfinite(value)) continue;
    ++checked;
    char ascii[40];
    *std::to_chars(ascii, ascii + 39, value, std::chars_format::scientific, 14).ptr = '\0';
    for (const NumberSymbols& symbols : {kDot, kComma}) {
      const Text text = general_number_text(value, symbols);
      ASSERT_EQ(parse_number(text, symbols), reference(ascii)) << ascii;
      ASSERT_EQ(general_number_text(reference(ascii), symbols), text) << ascii;
      ASSERT_LE(text.size(), 22u) << ascii;
    }
  }
}

}  // namespace
}  // namespace zelkora::frame
