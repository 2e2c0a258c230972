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

// The regular expressions of GCC 12 draw false "may be used uninitialized"
// warnings under the sanitizers.
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

const NumberSymbols kDot{u'.', u','};
const NumberSymbols kComma{u',', u'.'};
const NumberSymbols kDotNoGrouping{u'.', 0};
const NumberSymbols kCommaSpace{u',', u' '};

Text u16(const std::string& ascii) { return Text(ascii.begin(), ascii.end()); }

// The double that the C++ library reads from plain ASCII scientific text.
double reference(const std::string& ascii) {
  double value = 0;
  std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
  return value;
}

using test_support::fault_of;
using test_support::kConversion;
using test_support::kOverflow;

struct ParseCase {
  const char16_t* text;
  double value;
};

// ---- parse_number ----------------------------------------------------------

TEST(ParseNumber, AcceptsTheForms) {
  const ParseCase cases[] = {
      {u"0", 0},
      {u"12.5", 12.5},
      {u"+7", 7},
      {u"-7", -7},
      {u".5", 0.5},
      {u"5.", 5},
      {u"-.5", -0.5},
      {u"  42  ", 42},
      {u"\t42\t", 42},
      {u" \t-3.25 ", -3.25},
      {u"007", 7},
      {u"0.000", 0},
      {u"1,000", 1000},
      {u"1,00", 100},
      {u"12,34,567.5", 1234567.5},
      {u"1,,0", 10},
      {u"1,", 1},
      {u"1,.5", 1.5},
      {u"-1,234.75", -1234.75},
      {u"1E5", 1e5},
      {u"1e5", 1e5},
      {u"1D5", 1e5},
      {u"1d5", 1e5},
      {u"1.5D-3", 1.5e-3},
      {u"3.0E+5", 3e5},
      {u".5e1", 5},
      {u"5.E2", 500},
      {u"1,000E3", 1e6},
      {u"1E0005", 1e5},
      {u"0E400", 0},
      {u"  1E-2 ", 0.01},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.text));
    const auto value = parse_number(c.text, kDot);
    ASSERT_TRUE(value.has_value());
    EXPECT_EQ(*value, c.value);
    EXPECT_TRUE(is_numeric(c.text, kDot));
  }
}

TEST(ParseNumber, RejectsWhatIsNotANumber) {
  const TextView cases[] = {
      u"",      u"   ",  u"\t",    u"+",       u"-",      u".",         u"+.",
      u"-.E5",  u"1E",   u"1E+",   u"1e-",     u"E5",     u".E5",       u"--1",
      u"+-1",   u"-+1",  u"1-",    u"1.2.3",   u"1..2",   u"1.5,0",     u",5",
      u"-,5",   u",",    u"1E5.5", u"1E5,0",   u"1E,5",   u"1 2",       u"- 1",
      u"1 E5",  u"1E 5", u"1x",    u"x1",      u"abc",    u"1E400",     u"-1E400",
      u"1E309", u"1\n",  u"\n1",   u"0x10",    u"1_000",  u"(1)",       u"1%",
      u"Inf",   u"NaN",  u"1E5E5", u"1\u00A0", u"\uFF11", u"1\u0000"sv, u"1.7976931348623159E308",
  };
  for (const TextView text : cases) {
    SCOPED_TRACE(to_utf8(text));
    EXPECT_FALSE(parse_number(text, kDot).has_value());
    EXPECT_FALSE(is_numeric(text, kDot));
  }
}

TEST(ParseNumber, FollowsTheLocaleSymbols) {
  struct Case {
    const char16_t* text;
    NumberSymbols symbols;
    std::optional<double> value;
  };
  const Case cases[] = {
      // Decimal comma, grouping point: "." between digits groups them.
      {u"2,5", kComma, 2.5},
      {u"1.000,5", kComma, 1000.5},
      {u"2.5", kComma, 25},
      {u"1.234.567", kComma, 1234567},
      {u",5", kComma, 0.5},
      {u"5,", kComma, 5},
      {u"-1.5E3", kComma, -15e3},
      {u"1,5E3", kComma, 1500},
      {u".5", kComma, std::nullopt},
      {u"1,000.5", kComma, std::nullopt},
      {u"2,5,0", kComma, std::nullopt},
      // No grouping at all.
      {u"1000.5", kDotNoGrouping, 1000.5},
      {u"1,000", kDotNoGrouping, std::nullopt},
      // Space as grouping: the blanks inside group, those around are blanks.
      {u"1 000,5", kCommaSpace, 1000.5},
      {u" 1 000 ", kCommaSpace, 1000},
      {u"1.5", kCommaSpace, std::nullopt},
      // A grouping symbol equal to the decimal symbol is ignored.
      {u"1.5", NumberSymbols{u'.', u'.'}, 1.5},
      {u"1.000.5", NumberSymbols{u'.', u'.'}, std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.text));
    EXPECT_EQ(parse_number(c.text, c.symbols), c.value);
  }
}

TEST(ParseNumber, IsCorrectlyRounded) {
  const char* const cases[] = {
      "0.1",
      "0.3",
      "9007199254740993",  // 2^53 + 1: the halfway case goes to even
      "9007199254740995",
      "2.2250738585072011e-308",
      "2.2250738585072014e-308",
      "1.7976931348623157e308",
      "4.9406564584124654e-324",
      "3e-324",
      "123456789012345678901234567890",
      "0.000000000000000000000000000123456789",
      "1.00000000000000011102230246251565404236316680908203125",  // exactly halfway
      "1.00000000000000011102230246251565404236316680908203124",
      "1.00000000000000011102230246251565404236316680908203126",
  };
  for (const char* ascii : cases) {
    SCOPED_TRACE(ascii);
    const auto value = parse_number(u16(ascii), kDot);
    ASSERT_TRUE(value.has_value());
    EXPECT_EQ(*value, reference(ascii));
  }
}

TEST(ParseNumber, LongTextsRoundByEveryDigit) {
  // The exact halfway point between 1 and the next double: rounds to even
  // (1) alone, but up when any later digit, however far, is nonzero.
  const std::string halfway = "1.00000000000000011102230246251565404236316680908203125";
  const double next = std::nextafter(1.0, 2.0);
  const std::string zeros(2000, '0');
  struct Case {
    std::string text;
    double value;
  };
  const Case cases[] = {
      {halfway + zeros, 1.0},
      {halfway + zeros + "1", next},
      {halfway + zeros + "0001E0", next},
      {"1" + zeros + "E-2000", 1.0},
      {"0." + zeros + "5E2001", 5.0},
      {"1" + std::string(400, '0'), std::numeric_limits<double>::infinity()},  // overflow
      {"0." + std::string(400, '0') + "1E400", 0.1},
      {"1E-99999999999999999999999", 0.0},
      {"1E+99999999999999999999999", std::numeric_limits<double>::infinity()},  // overflow
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text.substr(0, 60));
    const auto value = parse_number(u16(c.text), kDot);
    if (std::isinf(c.value)) {
      EXPECT_FALSE(value.has_value());
    } else {
      ASSERT_TRUE(value.has_value());
      EXPECT_EQ(*value, c.value);
    }
  }
}

// Random short texts over the characters that matter, read by parse_number
// and by a plain reference: the grammar as a regular expression, then the C++
// library on the text without its "+", grouping and "D".
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
      const bool underflow = plain.find("e-") != std::string::npos;
      if (!underflow) {
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

TEST(ParseNumber, UnderflowKeepsTheSign) {
  const struct {
    const char16_t* text;
    bool negative;
  } cases[] = {{u"1E-400", false}, {u"-1E-400", true}, {u"-2E-324", true},
               {u"-0", true},      {u"-0.000", true},  {u"+0", false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.text));
    const auto value = parse_number(c.text, kDot);
    ASSERT_TRUE(value.has_value());
    EXPECT_EQ(*value, 0.0);
    EXPECT_EQ(std::signbit(*value), c.negative);
  }
}

// ---- leading_number --------------------------------------------------------

TEST(LeadingNumber, ReadsAsFarAsTheNumberGoes) {
  const ParseCase cases[] = {
      {u"12", 12},     {u"  12abc", 12}, {u"\t7", 7},     {u"2,5", 2},  {u"abc", 0},
      {u"", 0},        {u"-", 0},        {u".", 0},       {u"+.", 0},   {u"1E", 1},
      {u"1E+", 1},     {u"1e-x", 1},     {u"-.5x", -0.5}, {u"+3", 3},   {u"1.5E3kN", 1500},
      {u"1D2", 100},   {u"2.5.3", 2.5},  {u"1 2", 1},     {u"- 1", 0},  {u"--1", 0},
      {u"1e-400", 0},  {u"5.", 5},       {u"1,000", 1},   {u"0x1F", 0}, {u"12.5 m", 12.5},
      {u"3E2E1", 300}, {u"1.e2", 100},   {u"E5", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.text));
    EXPECT_EQ(leading_number(c.text), c.value);
  }
}

TEST(LeadingNumber, OverflowIsAFault) {
  for (const char16_t* text : {u"1e400", u"-1E309x", u"1.8E308"}) {
    SCOPED_TRACE(to_utf8(text));
    EXPECT_EQ(fault_of([&] { leading_number(text); }), kOverflow);
  }
}

// ---- Integers --------------------------------------------------------------

TEST(ToInteger, RoundsHalfToEven) {
  const struct {
    double value;
    int32_t rounded;
  } cases[] = {
      {0.5, 0},         {1.5, 2},           {2.5, 2},
      {3.5, 4},         {-0.5, 0},          {-1.5, -2},
      {-2.5, -2},       {-3.5, -4},         {2.4999, 2},
      {2.5001, 3},      {-2.6, -3},         {0.49999999999999994, 0},
      {-0.0, 0},        {1e-300, 0},        {7, 7},
      {32767.5, 32768}, {-32768.5, -32768}, {4503599627370495.5 / 1e9, 4503600},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    EXPECT_EQ(to_int32(c.value), c.rounded);
    if (c.rounded >= -32768 && c.rounded <= 32767) {
      EXPECT_EQ(to_int16(c.value), c.rounded);
    }
  }
}

TEST(ToInteger, LimitsOfTheTypes) {
  EXPECT_EQ(to_int16(32767.4), 32767);
  EXPECT_EQ(to_int16(-32768.5), -32768);
  EXPECT_EQ(to_int32(2147483647.49), 2147483647);
  EXPECT_EQ(to_int32(-2147483648.5), std::numeric_limits<int32_t>::min());

  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  for (double value : {32767.5, -32768.51, -32769.0, 1e10, nan, inf, -inf}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(fault_of([&] { to_int16(value); }), kOverflow);
  }
  for (double value : {2147483647.5, -2147483648.51, 1e300, nan, inf, -inf}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(fault_of([&] { to_int32(value); }), kOverflow);
  }
}

TEST(TextToNumber, ConvertsInTheLocaleOrFaults) {
  EXPECT_EQ(text_to_double(u" 1.000,5 ", kComma), 1000.5);
  EXPECT_EQ(text_to_int16(u"2,5", kComma), 2);
  EXPECT_EQ(text_to_int16(u"3,5", kComma), 4);
  EXPECT_EQ(text_to_int32(u"-1,234,567.5", kDot), -1234568);

  const struct {
    const char16_t* text;
    std::string kind;
  } faults[] = {
      {u"", kConversion},    {u"abc", kConversion},   {u"1E", kConversion}, {u"1E400", kOverflow},
      {u"40000", kOverflow}, {u"32767.5", kOverflow}, {u"3e9", kOverflow},
  };
  for (const auto& c : faults) {
    SCOPED_TRACE(to_utf8(c.text));
    EXPECT_EQ(fault_of([&] { text_to_int16(c.text, kDot); }), c.kind);
  }
  EXPECT_EQ(fault_of([] { text_to_double(u"2.5.", kDot); }), kConversion);
  EXPECT_EQ(fault_of([] { text_to_double(u"-1E999", kDot); }), kOverflow);
  EXPECT_EQ(fault_of([] { text_to_int32(u"3e9", kDot); }), kOverflow);
  EXPECT_EQ(text_to_int32(u"40000", kDot), 40000);
}

// ---- General number text ---------------------------------------------------

TEST(GeneralNumberText, WritesUpTo15Digits) {
  const struct {
    double value;
    const char16_t* text;
  } cases[] = {
      {0, u"0"},
      {-0.0, u"0"},
      {1, u"1"},
      {-1, u"-1"},
      {12.5, u"12.5"},
      {0.1 + 0.2, u"0.3"},
      {1.0 / 3, u"0.333333333333333"},
      {2.0 / 3, u"0.666666666666667"},
      {-2.0 / 3, u"-0.666666666666667"},
      {100, u"100"},
      {1e14, u"100000000000000"},
      {123456789012345, u"123456789012345"},
      {1234567890123456.0, u"1.23456789012346E+15"},
      {123456789012345678.0, u"1.23456789012346E+17"},
      {999999999999999.9, u"1E+15"},
      {99999999999999.99, u"100000000000000"},  // the 16th digit rounds up
      {1e15, u"1E+15"},
      {1.5e20, u"1.5E+20"},
      {1e-5, u"1E-05"},
      {-2.5e-7, u"-2.5E-07"},
      {0.0001, u"0.0001"},
      {0.00012345, u"0.00012345"},
      {0.000099999999999999995, u"0.0001"},  // rounds up into the fixed range
      {0.00009999, u"9.999E-05"},
      {1e100, u"1E+100"},
      {-1.7976931348623157e308, u"-1.79769313486232E+308"},
      {4.9406564584124654e-324, u"4.94065645841247E-324"},
      {2.675, u"2.675"},
      {1.005, u"1.005"},
      {1234.5, u"1234.5"},
      {0.1, u"0.1"},
      {1e-4 * 3, u"0.0003"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    EXPECT_EQ(general_number_text(c.value, kDot), c.text);
  }
}

TEST(GeneralNumberText, UsesTheLocaleDecimalSymbolAndNoGrouping) {
  const struct {
    double value;
    NumberSymbols symbols;
    const char16_t* text;
  } cases[] = {
      {1234.5, kComma, u"1234,5"},
      {-0.25, kComma, u"-0,25"},
      {1.5e20, kComma, u"1,5E+20"},
      {1234567.25, kDot, u"1234567.25"},
      {1234567.25, kCommaSpace, u"1234567,25"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    EXPECT_EQ(general_number_text(c.value, c.symbols), c.text);
  }
}

TEST(GeneralNumberText, NonFiniteValuesAreWordsThatDoNotReadBack) {
  const struct {
    double value;
    const char16_t* text;
  } cases[] = {
      {std::numeric_limits<double>::quiet_NaN(), u"NaN"},
      {-std::numeric_limits<double>::quiet_NaN(), u"NaN"},
      {std::numeric_limits<double>::infinity(), u"Infinity"},
      {-std::numeric_limits<double>::infinity(), u"-Infinity"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    const Text text = general_number_text(c.value, kDot);
    EXPECT_EQ(text, c.text);
    EXPECT_FALSE(is_numeric(text, kDot));
  }
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

// Writing then reading gives the value rounded to 15 significant digits, and
// writing that again gives the same text: over a wide spread of magnitudes.
TEST(GeneralNumberText, ReadsBackAsTheValueRoundedTo15Digits) {
  std::mt19937_64 random(20240611);
  std::uniform_int_distribution<uint64_t> bits;
  int checked = 0;
  while (checked < 20000) {
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
      const auto back = parse_number(text, symbols);
      ASSERT_TRUE(back.has_value()) << ascii;
      ASSERT_EQ(*back, reference(ascii)) << ascii;
      ASSERT_EQ(general_number_text(*back, symbols), text) << ascii;
      ASSERT_LE(text.size(), 22u) << ascii;
    }
  }
}

}  // namespace
}  // namespace zelkora::frame
