// Tests of the catalogue operations of clsCharacter and of the value lists.
#include <gtest/gtest.h>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault_test_support.h"

namespace zelkora {
namespace {

class CatalogueAccess : public ::testing::Test {
 protected:
  clsCharacter chr{platform::Platform::headless()};
};

TEST_F(CatalogueAccess, PlaceholdersAreFilledInOrder) {
  EXPECT_EQ(chr.tStringRe2(52200, u"0.25%", u"0.20%"), u"受拉钢筋的配筋率 ρ ＝ 0.25% ＞ 0.20%");
  EXPECT_EQ(chr.tStringRe(51692, u""), u"冲切破坏锥体");
  EXPECT_EQ(chr.tStringRe(52200, u""), u"受拉钢筋的配筋率 ρ ＝  ＞ %%2%");
  // A first replacement holding "%%2%" is replaced again by the second step.
  EXPECT_EQ(chr.tStringRe2(111, u"%%2%", u"甲"), u"甲");
  EXPECT_EQ(chr.tStringRe3(111, u"%%2%", u"%%3%", u"丙"), u"丙");
  EXPECT_EQ(chr.tStringRe3(53218, u"b", u"2e10", u"1000000000"),
            u"错误：b ＝ 2e10 ＞ 1000000000，");
  // Replacements go in as given.
  EXPECT_EQ(chr.tStringRe(111, u"_ub(a)ub_|x"), u"_ub(a)ub_|x");
}

TEST_F(CatalogueAccess, MissingTextsAreEmptyForTheStringFamily) {
  EXPECT_EQ(chr.tString(99999), u"");
  EXPECT_EQ(chr.tStringRe(99999, u"x"), u"");
  EXPECT_EQ(chr.tStringRe3(99999, u"x", u"y", u"z"), u"");
  EXPECT_FALSE(chr.bTextEqResString(u"", 99999));
}

TEST_F(CatalogueAccess, MissingTextsAreFaultsForTheResourceLookups) {
  for (int32_t id : {99999, 0, -1}) {
    EXPECT_EQ(test_support::fault_of([&] { chr.tResStr(id); }), test_support::kMissingResource)
        << id;
  }
  EXPECT_THROW(chr.tResString(int16_t{99}), Fault);
  EXPECT_EQ(chr.tResString(int16_t{500}), u"自动");
}

TEST_F(CatalogueAccess, LanguageOffsetReachesOnlyTheStringFamily) {
  chr.lLanguage(100000);
  EXPECT_EQ(chr.tString(100), u"");
  EXPECT_EQ(chr.tStringRe(111, u"x"), u"");
  EXPECT_EQ(chr.tResStr(100), u"Zelkora 结构快速设计");
  EXPECT_TRUE(chr.bTextEqResString(u"自动", 500));
  chr.lLanguage(-400);
  EXPECT_EQ(chr.tString(501), u"Options");  // 501 - 400 = 101
  chr.lLanguage(0);
  EXPECT_EQ(chr.tString(100), u"Zelkora 结构快速设计");
}

TEST_F(CatalogueAccess, OffsetOverflowIsTheCallersFault) {
  chr.lLanguage(INT32_MAX);
  EXPECT_EQ(test_support::fault_of([&] { chr.tString(1); }), test_support::kOverflow);
  chr.lLanguage(INT32_MIN);
  EXPECT_EQ(test_support::fault_of([&] { chr.tString(-1); }), test_support::kOverflow);
  EXPECT_EQ(chr.tString(1), u"");
}

TEST_F(CatalogueAccess, TextEqualsResourceTrimsOnlyTheInput) {
  struct Case {
    TextView text;
    int32_t id;
    Compare compare;
    bool equal;
  };
  const Case cases[] = {
      {u"  自动 ", 500, Compare::Binary, true},
      {u"自动", 500, Compare::Text, true},
      {u"hrb400", 32509, Compare::Text, true},
      {u"hrb400", 32509, Compare::Binary, false},
      {u"HRB400 ", 32509, Compare::Binary, true},
      {u"\tHRB400", 32509, Compare::Binary, false},  // only blanks are trimmed
      // The catalogue text keeps its two trailing blanks, so a trimmed input
      // can never match it.
      {u"清空列表将删除表格中所有的数据。  ", 32001, Compare::Binary, false},
      {u"清空列表将删除表格中所有的数据。", 32001, Compare::Binary, false},
      {u"", 111, Compare::Binary, false},
  };
  for (const Case& k : cases) {
    EXPECT_EQ(chr.bTextEqResString(k.text, k.id, k.compare), k.equal) << to_utf8(k.text);
  }
}

}  // namespace
}  // namespace zelkora
