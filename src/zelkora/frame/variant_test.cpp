// Tests of the Variant conversions.
#include "zelkora/frame/variant.h"

#include <gtest/gtest.h>

#include "zelkora/platform/fault_test_support.h"

#include <cmath>
#include <sstream>
#include <string>
#include <utility>

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
  const std::pair<Variant, VariantKind> cases[] = {
      {Variant(), VariantKind::Empty},      {Variant(true), VariantKind::Bool},
      {Variant(7), VariantKind::Integer},   {Variant(int16_t{7}), VariantKind::Integer},
      {Variant(2.5), VariantKind::Double},  {Variant(0.5f), VariantKind::Double},
      {Variant(u"abc"), VariantKind::Text}, {Variant(Text(u"abc")), VariantKind::Text},
  };
  for (const auto& [value, kind] : cases) {
    SCOPED_TRACE(shown(value));
    EXPECT_EQ(value.kind(), kind);
    EXPECT_EQ(value.is_empty(), kind == VariantKind::Empty);
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

TEST(Variant, ToTextAndToDouble) {
  const struct {
    Variant value;
    NumberSymbols symbols;
    const char16_t* text;
  } texts[] = {
      {Variant(), kDot, u""},           {Variant(-2147483647 - 1), kDot, u"-2147483648"},
      {Variant(true), kDot, u"True"},   {Variant(1234567), kComma, u"1234567"},
      {Variant(false), kDot, u"False"}, {Variant(u" 1,5 "), kDot, u" 1,5 "},
      {Variant(2.5), kComma, u"2,5"},
  };
  for (const auto& c : texts) {
    SCOPED_TRACE(shown(c.value));
    EXPECT_EQ(c.value.to_text(c.symbols), c.text);
  }
  const struct {
    Variant value;
    NumberSymbols symbols;
    double number;
  } numbers[] = {
      {Variant(), kDot, 0},        {Variant(true), kDot, -1},
      {Variant(false), kDot, 0},   {Variant(-12), kDot, -12},
      {Variant(0.1), kDot, 0.1},   {Variant(u"2,5"), kComma, 2.5},
      {Variant(u"2,5"), kDot, 25}, {Variant(u" -1.5E3 "), kDot, -1500},
  };
  for (const auto& c : numbers) {
    SCOPED_TRACE(shown(c.value));
    EXPECT_EQ(c.value.to_double(c.symbols), c.number);
  }
  EXPECT_EQ(fault_of([] { Variant(u"").to_double(kDot); }), kConversion);
  EXPECT_EQ(fault_of([] { Variant(u"True").to_double(kDot); }), kConversion);
  EXPECT_EQ(fault_of([] { Variant(u"1E400").to_double(kDot); }), kOverflow);
}

TEST(Variant, ToIntegers) {
  const std::pair<Variant, int32_t> cases[] = {
      {Variant(), 0},    {Variant(true), -1},    {Variant(-32768), -32768},
      {Variant(2.5), 2}, {Variant(u" 3.5 "), 4}, {Variant(u"-32768.5"), -32768},
  };
  for (const auto& [value, number] : cases) {
    SCOPED_TRACE(shown(value));
    EXPECT_EQ(value.to_int32(kDot), number);
    EXPECT_EQ(value.to_int16(kDot), number);
  }
  EXPECT_EQ(Variant(2147483647).to_int32(kDot), 2147483647);
  EXPECT_EQ(Variant(u"40000").to_int32(kDot), 40000);
  EXPECT_EQ(fault_of([] { Variant(40000).to_int16(kDot); }), kOverflow);
  EXPECT_EQ(fault_of([] { Variant(std::nan("")).to_int16(kDot); }), kOverflow);
  EXPECT_EQ(fault_of([] { Variant(u"x").to_int16(kDot); }), kConversion);
  EXPECT_EQ(fault_of([] { Variant(2147483647.5).to_int32(kDot); }), kOverflow);
  EXPECT_EQ(fault_of([] { Variant(u"3E9").to_int32(kDot); }), kOverflow);
}

// True and False in any case are words; any other text is read as a number.
TEST(Variant, ToBool) {
  const std::pair<Variant, bool> cases[] = {
      {Variant(), false},      {Variant(true), true},  {Variant(std::nan("")), true},
      {Variant(false), false}, {Variant(0), false},    {Variant(u" false "), false},
      {Variant(-3), true},     {Variant(-0.0), false}, {Variant(u"tRUE"), true},
      {Variant(u"0"), false},  {Variant(u"-1"), true}, {Variant(1e-300), true},
  };
  for (const auto& [value, truth] : cases) {
    SCOPED_TRACE(shown(value));
    EXPECT_EQ(value.to_bool(kDot), truth);
  }
  EXPECT_FALSE(Variant(u",0").to_bool(kComma));  // not a number with a decimal point
  for (const char16_t* text : {u"", u"Tru", u"True1", u"T rue"}) {
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
