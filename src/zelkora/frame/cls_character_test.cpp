// Tests of the shared state of clsCharacter: symbols, settings, accumulator.
#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/character_internals.h"

#include <gtest/gtest.h>

#include "zelkora/platform/headless/headless.h"

namespace zelkora {
namespace {

constexpr TextView kApp = u"Zelkora 结构快速设计";
constexpr TextView kOptions = u"Options";

// A headless platform whose settings store holds the given "Options" keys.
std::shared_ptr<platform::Platform> platform_with(
    std::initializer_list<std::pair<TextView, TextView>> options, Text decimal = u".",
    Text grouping = u",") {
  auto p = platform::Platform::headless();
  for (const auto& [key, value] : options) p->settings->set(kApp, kOptions, key, value);
  p->locale = std::make_shared<platform::headless::FixedNumberLocale>(decimal, grouping);
  return p;
}

TEST(ClsCharacterStart, DefaultsComeFromTheCatalogue) {
  clsCharacter chr(platform_with({}));
  EXPECT_EQ(chr.tPubListDot(), u".");
  EXPECT_EQ(chr.tPubF1(), u"φ");
  EXPECT_EQ(chr.tPubF2(), u"Φ");
  EXPECT_EQ(chr.tPubF3(), u"\uE002");
  EXPECT_EQ(chr.tPubF4(), u"\uE003");
  EXPECT_EQ(chr.tPubPf(), u"2");
  EXPECT_EQ(chr.tPubLf(), u"3");
  EXPECT_EQ(clsCharacter::Internals::squared_sign_markup(chr), u"_up(2)up_");
  EXPECT_EQ(clsCharacter::Internals::cubed_sign_markup(chr), u"_up(3)up_");
  EXPECT_EQ(chr.tDecimalSymbol(), u".");
  EXPECT_EQ(chr.ThousandsSeparator(), u",");
  EXPECT_EQ(chr.iMaxChrNow(), 80);
  EXPECT_EQ(clsCharacter::Internals::first_line_indent(chr), 0);
  EXPECT_EQ(clsCharacter::Internals::following_line_indent(chr), 4);
  EXPECT_EQ(clsCharacter::Internals::delimiter(chr), u"|");
  EXPECT_EQ(chr.lLanguage(), 0);
  EXPECT_EQ(chr.Txt(), u"");
}

TEST(ClsCharacterStart, SymbolsAreReadTrimmedFromTheSettings) {
  struct Case {
    TextView key, value;
    Text (*read)(const clsCharacter&);
    TextView expected;
  };
  const Case cases[] = {
      {u"3cboOpt", u" A ", [](const clsCharacter& c) { return c.tPubF1(); }, u"A"},
      {u"4cboOpt", u"B", [](const clsCharacter& c) { return c.tPubF2(); }, u"B"},
      {u"5cboOpt", u"\uE001", [](const clsCharacter& c) { return c.tPubF3(); }, u"\uE001"},
      {u"12cboOpt", u" D", [](const clsCharacter& c) { return c.tPubF4(); }, u"D"},
      {u"2cboOpt", u"³ ", [](const clsCharacter& c) { return c.tPubLf(); }, u"³"},
      // The list dot keeps the first character of the untrimmed value.
      {u"8cboOpt", u"、 ", [](const clsCharacter& c) { return c.tPubListDot(); }, u"、"},
      {u"8cboOpt", u" .", [](const clsCharacter& c) { return c.tPubListDot(); }, u" "},
      {u"8cboOpt", u"", [](const clsCharacter& c) { return c.tPubListDot(); }, u""},
      // Keys are found without regard to case, as in the suite's store.
      {u"3CBOOPT", u"Z", [](const clsCharacter& c) { return c.tPubF1(); }, u"Z"},
  };
  for (const Case& k : cases) {
    clsCharacter chr(platform_with({{k.key, k.value}}));
    EXPECT_EQ(k.read(chr), k.expected) << to_utf8(k.key) << "=" << to_utf8(k.value);
  }
}

TEST(ClsCharacterStart, MarkupPowerSignsFollowThePlainOnes) {
  struct Case {
    TextView squared_setting, cubed_setting;
    TextView pf, squared_markup, lf, cubed_markup;
  };
  const Case cases[] = {
      {u"2", u"3", u"2", u"_up(2)up_", u"3", u"_up(3)up_"},
      {u" 2 ", u" 3", u"2", u"_up(2)up_", u"3", u"_up(3)up_"},
      {u"²", u"³", u"²", u"²", u"³", u"³"},
      {u"3", u"2", u"3", u"3", u"2", u"2"},  // each sign is compared with its own digit
  };
  for (const Case& k : cases) {
    clsCharacter chr(
        platform_with({{u"1cboOpt", k.squared_setting}, {u"2cboOpt", k.cubed_setting}}));
    EXPECT_EQ(chr.tPubPf(), k.pf);
    EXPECT_EQ(clsCharacter::Internals::squared_sign_markup(chr), k.squared_markup);
    EXPECT_EQ(chr.tPubLf(), k.lf);
    EXPECT_EQ(clsCharacter::Internals::cubed_sign_markup(chr), k.cubed_markup);
  }
}

TEST(ClsCharacterStart, SettingASymbolLaterChangesThatEntryOnly) {
  auto p = platform_with({});
  clsCharacter chr(p);
  chr.tPubPf(u" x ");
  EXPECT_EQ(chr.tPubPf(), u" x ");
  EXPECT_EQ(clsCharacter::Internals::squared_sign_markup(chr), u"_up(2)up_");
  // Nothing is written back to the store.
  EXPECT_FALSE(p->settings->get(kApp, kOptions, u"1cboOpt").has_value());
  clsCharacter other(p);
  EXPECT_EQ(other.tPubPf(), u"2");
}

TEST(ClsCharacterStart, ReadingTheSettingsCreatesNoKeys) {
  auto p = platform_with({});
  { clsCharacter chr(p); }
  for (TextView key : {u"1cboOpt", u"2cboOpt", u"3cboOpt", u"8cboOpt", u"12cboOpt"}) {
    EXPECT_FALSE(p->settings->get(kApp, kOptions, key).has_value()) << to_utf8(key);
  }
}

TEST(ClsCharacterStart, DecimalSymbolAndThousandsSeparatorFromTheLocale) {
  struct Case {
    Text decimal, grouping;
    TextView expected_decimal, expected_thousands;
  };
  const Case cases[] = {
      {u".", u",", u".", u","},
      {u".", u" ", u".", u","},  // with a decimal point the separator is
                                 // always ","
      {u".", u"", u".", u","},
      {u",", u".", u",", u"."},
      {u",", u"\u00A0", u",", u"\u00A0"},
      {u",", u"", u",", u"0"},   // no grouping: the second character of "1000,00"
      {u",", u",", u",", u"0"},  // a grouping symbol that is the decimal symbol is none
      {u"·", u"'", u"·", u","},
  };
  for (const Case& k : cases) {
    clsCharacter chr(platform_with({}, k.decimal, k.grouping));
    EXPECT_EQ(chr.tDecimalSymbol(), k.expected_decimal) << to_utf8(k.decimal);
    EXPECT_EQ(chr.ThousandsSeparator(), k.expected_thousands) << to_utf8(k.grouping);
  }
}

TEST(ClsCharacterState, ContinuationTexts) {
  clsCharacter chr(platform_with({}));
  EXPECT_EQ(chr.tConEnter1(), u"\u3000\r\n");
  EXPECT_EQ(chr.tConEnter2(), u"\r\n\u3000\r\n");
  EXPECT_EQ(chr.iMaxAllowChr(), 80);
  EXPECT_EQ(chr.iMaxAllowChr_Kh(), 150);
  EXPECT_EQ(chr.iFstPreSpace(), 0);
  EXPECT_EQ(chr.iSecPreSpace(), 4);
}

TEST(ClsCharacterState, TxtAppendsAndReplaces) {
  clsCharacter chr(platform_with({}));
  chr.Txt(u"第一");
  chr.Txt(u"，Abc abc");
  EXPECT_EQ(chr.Txt(), u"第一，Abc abc");
  chr.TxtReplace(u"abc", u"x");
  EXPECT_EQ(chr.Txt(), u"第一，Abc x");
  chr.TxtReplace(u"ABC", u"y", Compare::Text);
  EXPECT_EQ(chr.Txt(), u"第一，y x");
  chr.TxtClear();
  EXPECT_EQ(chr.Txt(), u"");
}

TEST(ClsCharacterState, TValueDirectionsDifferOnPurpose) {
  struct Case {
    int32_t index;
    TextView read_back;
  };
  const Case cases[] = {{1, u"v"},    {6, u""}, {7, u""}, {9, u""},  {14, u"v"},
                        {18121, u""}, {0, u""}, {2, u""}, {-1, u""}, {15, u""}};
  for (const Case& k : cases) {
    clsCharacter chr(platform_with({}));
    chr.tValue(k.index, u"v");
    EXPECT_EQ(chr.tValue(k.index), k.read_back) << k.index;
    // Writing never reaches the named symbols.
    EXPECT_EQ(chr.tPubListDot(), u".");
    EXPECT_EQ(chr.tDecimalSymbol(), u".");
  }
}

TEST(ClsCharacterState, SteelGradeLines) {
  clsCharacter chr(platform_with({}));
  chr.tFyLine2(u"b");  // before any line 1: stored all the same
  chr.tFyLine1(u"A");  // makes the lines anew and appends
  chr.tFyLine2(u"B");
  chr.tFyLine1_RF(u"C");
  chr.tFyLine2_RF(u"D");
  EXPECT_EQ(chr.Txt(), u"AC");
  EXPECT_EQ(clsCharacter::Internals::steel_grade_lines(chr),
            (std::vector<Text>{u"A", u"B", u"C", u"D"}));
  chr.tFyLine1(u"E");
  EXPECT_EQ(clsCharacter::Internals::steel_grade_lines(chr),
            (std::vector<Text>{u"E", u"", u"", u""}));
  EXPECT_EQ(chr.Txt(), u"ACE");
}

TEST(ClsCharacterState, IntegerListIsCopiedBothWays) {
  clsCharacter chr(platform_with({}));
  std::vector<int16_t> in{3, -1, 7};
  chr.Let_List(in);
  in[0] = 99;
  std::vector<int16_t> out;
  chr.Get_List(out);
  EXPECT_EQ(out, (std::vector<int16_t>{3, -1, 7}));
}

TEST(ClsCharacterState, ObjectsShareNoSettings) {
  auto p = platform_with({});
  clsCharacter a(p), b(p);
  a.lLanguage(100000);
  a.bSuperSub(true);
  a.Delimiter(u";");
  EXPECT_EQ(b.lLanguage(), 0);
  EXPECT_FALSE(clsCharacter::Internals::markup_switch(b));
  EXPECT_EQ(clsCharacter::Internals::delimiter(b), u"|");
  EXPECT_TRUE(clsCharacter::Internals::markup_switch(a));
}

TEST(ClsCharacterState, CapturesTheCurrentPlatformWhenMade) {
  auto comma = platform_with({}, u",", u".");
  platform::ScopedPlatform scope(comma);
  clsCharacter chr;
  EXPECT_EQ(chr.tDecimalSymbol(), u",");
  EXPECT_EQ(&clsCharacter::Internals::platform(chr), comma.get());
}

}  // namespace
}  // namespace zelkora
