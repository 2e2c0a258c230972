#include "zelkora/frame/variant.h"

#include <gtest/gtest.h>

#include "zelkora/platform/fault_test_support.h"

#include <cmath>
#include <limits>
#include <sstream>
#include <string>

#include "zelkora/platform/fault.h"

namespace zelkora::frame {
namespace {

const NumberSymbols kDot{u'.', u','};
const NumberSymbols kComma{u',', u'.'};

using test_support::fault_of;
using test_support::kConversion;
using test_support::kOverflow;

std::string shown(const Variant& v) {
  std::ostringstream out;
  out << v;
  return out.str();
}

TEST(Variant, ConstructorsChooseTheKind) {
  const int16_t small = 7;
  const float single = 0.5f;
  const struct {
    Variant value;
    VariantKind kind;
  } cases[] = {
      {Variant(), VariantKind::Empty},
      {Variant(true), VariantKind::Bool},
      {Variant(7), VariantKind::Integer},
      {Variant(small), VariantKind::Integer},
      {Variant(2.5), VariantKind::Double},
      {Variant(single), VariantKind::Double},
      {Variant(u"abc"), VariantKind::Text},
      {Variant(Text(u"abc")), VariantKind::Text},
      {Variant(TextView(u"abc")), VariantKind::Text},
      {Variant(u""), VariantKind::Text},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(shown(c.value));
    EXPECT_EQ(c.value.kind(), c.kind);
    EXPECT_EQ(c.value.is_empty(), c.kind == VariantKind::Empty);
  }
}

TEST(Variant, EqualityNeedsTheSameKindAndValue) {
  EXPECT_EQ(Variant(2.5), Variant(2.5));
  EXPECT_EQ(Variant(u"a"), Variant(Text(u"a")));
  EXPECT_EQ(Variant(), Variant());
  EXPECT_NE(Variant(2), Variant(2.0));
  EXPECT_NE(Variant(u"2"), Variant(2));
  EXPECT_NE(Variant(true), Variant(-1));
  EXPECT_NE(Variant(u""), Variant());
  EXPECT_NE(Variant(0), Variant());
  EXPECT_NE(Variant(u"a"), Variant(u"A"));
}

TEST(Variant, ToText) {
  const struct {
    Variant value;
    NumberSymbols symbols;
    const char16_t* text;
  } cases[] = {
      {Variant(), kDot, u""},
      {Variant(true), kDot, u"True"},
      {Variant(false), kDot, u"False"},
      {Variant(0), kDot, u"0"},
      {Variant(-2147483647 - 1), kDot, u"-2147483648"},
      {Variant(1234567), kComma, u"1234567"},
      {Variant(2.5), kDot, u"2.5"},
      {Variant(2.5), kComma, u"2,5"},
      {Variant(1e20), kDot, u"1E+20"},
      {Variant(1.0 / 3), kDot, u"0.333333333333333"},
      {Variant(u" 1,5 "), kDot, u" 1,5 "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(shown(c.value));
    EXPECT_EQ(c.value.to_text(c.symbols), c.text);
  }
}

TEST(Variant, ToDouble) {
  const struct {
    Variant value;
    NumberSymbols symbols;
    double number;
  } cases[] = {
      {Variant(), kDot, 0},        {Variant(true), kDot, -1},
      {Variant(false), kDot, 0},   {Variant(-12), kDot, -12},
      {Variant(0.1), kDot, 0.1},   {Variant(u"2,5"), kComma, 2.5},
      {Variant(u"2,5"), kDot, 25}, {Variant(u" -1.5E3 "), kDot, -1500},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(shown(c.value));
    EXPECT_EQ(c.value.to_double(c.symbols), c.number);
  }
  EXPECT_EQ(fault_of([] { Variant(u"").to_double(kDot); }), kConversion);
  EXPECT_EQ(fault_of([] { Variant(u"True").to_double(kDot); }), kConversion);
  EXPECT_EQ(fault_of([] { Variant(u"1,5,5").to_double(kComma); }), kConversion);
  EXPECT_EQ(fault_of([] { Variant(u"1E400").to_double(kDot); }), kOverflow);
}

TEST(Variant, ToIntegers) {
  const struct {
    Variant value;
    int32_t number;
  } cases[] = {
      {Variant(), 0},
      {Variant(true), -1},
      {Variant(false), 0},
      {Variant(2.5), 2},
      {Variant(3.5), 4},
      {Variant(-2.5), -2},
      {Variant(u"2.5"), 2},
      {Variant(u" 3.5 "), 4},
      {Variant(u"1,234"), 1234},
      {Variant(-32768), -32768},
      {Variant(u"-32768.5"), -32768},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(shown(c.value));
    EXPECT_EQ(c.value.to_int32(kDot), c.number);
    EXPECT_EQ(c.value.to_int16(kDot), c.number);
  }
  EXPECT_EQ(Variant(2147483647).to_int32(kDot), 2147483647);
  EXPECT_EQ(Variant(u"40000").to_int32(kDot), 40000);

  const struct {
    Variant value;
    std::string int16_fault;
  } faults[] = {
      {Variant(40000), kOverflow},    {Variant(32767.5), kOverflow},
      {Variant(u"32768"), kOverflow}, {Variant(std::nan("")), kOverflow},
      {Variant(u"x"), kConversion},   {Variant(u""), kConversion},
  };
  for (const auto& c : faults) {
    SCOPED_TRACE(shown(c.value));
    EXPECT_EQ(fault_of([&] { c.value.to_int16(kDot); }), c.int16_fault);
  }
  EXPECT_EQ(fault_of([] { Variant(2147483647.5).to_int32(kDot); }), kOverflow);
  EXPECT_EQ(fault_of([] { Variant(u"3E9").to_int32(kDot); }), kOverflow);
}

TEST(Variant, ToBool) {
  const struct {
    Variant value;
    NumberSymbols symbols;
    bool truth;
  } cases[] = {
      {Variant(), kDot, false},
      {Variant(true), kDot, true},
      {Variant(false), kDot, false},
      {Variant(0), kDot, false},
      {Variant(-3), kDot, true},
      {Variant(0.0), kDot, false},
      {Variant(-0.0), kDot, false},
      {Variant(1e-300), kDot, true},
      {Variant(std::nan("")), kDot, true},
      {Variant(u"True"), kDot, true},
      {Variant(u"tRUE"), kDot, true},
      {Variant(u" false "), kDot, false},
      {Variant(u"FALSE"), kDot, false},
      {Variant(u"0"), kDot, false},
      {Variant(u"0,0"), kComma, false},
      {Variant(u"0,5"), kComma, true},
      {Variant(u"-1"), kDot, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(shown(c.value));
    EXPECT_EQ(c.value.to_bool(c.symbols), c.truth);
  }
  for (const char16_t* text : {u"", u"yes", u"Tru", u"True1", u"1.5.", u"T rue"}) {
    SCOPED_TRACE(to_utf8(text));
    EXPECT_EQ(fault_of([&] { Variant(text).to_bool(kDot); }), kConversion);
  }
}

TEST(Variant, ShowsKindAndValue) {
  EXPECT_EQ(shown(Variant()), "Empty");
  EXPECT_EQ(shown(Variant(false)), "Bool(False)");
  EXPECT_EQ(shown(Variant(-7)), "Integer(-7)");
  EXPECT_EQ(shown(Variant(1234.5)), "Double(1234.5)");
  EXPECT_EQ(shown(Variant(u"\u7B54")), "Text(\"\xE7\xAD\x94\")");
}

}  // namespace
}  // namespace zelkora::frame
