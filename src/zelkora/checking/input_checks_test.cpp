// Tests of the input checks: check expressions, two values, lists, grades, criteria.
#include <gtest/gtest.h>

#include <limits>
#include "zelkora/checking/err_chr_internals.h"

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/checking/entry_descriptor.h"
#include "zelkora/platform/headless/headless.h"

namespace zelkora {
namespace {

std::unique_ptr<clsErrChr> checker(TextView decimal = u".") {
  auto p = platform::Platform::headless();
  p->locale = std::make_shared<platform::headless::FixedNumberLocale>(
      Text(decimal), decimal == u"," ? u"." : u",");
  return std::make_unique<clsErrChr>(p);
}

// Every check expression that the shipped descriptors use, with an entry
// that passes and one that fails.
TEST(NumericEntry, EveryDescriptorOfTheLayouts) {
  struct Case {
    TextView descriptor, passes, fails;
    int32_t error;
  };
  const Case cases[] = {
      {u"S>0", u"0.001", u"0", 155},
      {u"S>=0", u"0", u"-0.5", 166},
      {u"S", u"-12.5", u"abc", 101},
      {u"15~80", u"80", u"80.5", 333},
      {u"S>=1", u"1", u"0.99", 166},
      {u"L>=2", u"2", u"1", 166},
      {u"0~1.0", u"0", u"1.01", 333},
      {u"I>=0", u"32767", u"-1", 166},
      {u"(0~100)", u"99.9", u"100", 333},
      {u"I>=1", u"1", u"0", 166},
      {u"L>=1", u"1000000000", u"0", 166},
      {u"I>=2", u"2", u"1", 166},
      {u"S>=1.0", u"1.0", u"0.9", 166},
      {u"S>1", u"1.5", u"1", 155},
      {u"(0~1.0", u"1.0", u"0", 333},
      {u"(0~1.0)", u"0.5", u"1.0", 333},
      {u"nS>0", u"", u"-1", 155},
      {u"0~1.0)", u"0", u"1", 333},
      {u"nS", u"", u"x", 101},
      {u"0~90", u"90", u"-1", 333},
      {u"0.15~100)", u"0.15", u"0.14", 333},
      {u"0.1~100)", u"99", u"100", 333},
      {u"0~1.05", u"1.05", u"1.06", 333},
      {u"S>=140", u"140", u"139", 166},
      {u"S>=6", u"6", u"5", 166},
      {u"S>=50", u"50", u"49", 166},
      {u"S>=150", u"1,500", u"149", 166},
      {u"L>=3", u"3", u"2", 166},
      {u"I>=4", u"4", u"3", 166},
      {u"nS>=0", u"  ", u"-1", 166},
      {u"50~1000", u"50", u"1001", 333},
      {u"S<>0", u"-1", u"0", 169},
      {u"0.7~1.0", u"0.7", u"0.69", 333},
      {u"(0~180)", u"179", u"0", 333},
      {u"(45~90", u"90", u"45", 333},
      {u"33~100", u"33", u"32", 333},
      {u"S>=2.5", u"2.5", u"2.4", 166},
      {u"0~1", u"1", u"2", 333},
      {u"1~4", u"4", u"5", 333},
      {u"S>=0.95", u"0.95", u"0.94", 166},
      {u"S>=1.00", u"1", u"0.999", 166},
      {u"xS>0_Lx", u"自动", u"0", 155},
      {u"xS>0_Ly", u"3.6", u"自动的", 101},
      {u"50~150", u"150", u"151", 333},
      {u"50~400", u"400", u"49", 333},
      {u"3~9", u"9", u"10", 333},
      {u"0~45", u"45", u"46", 333},
      {u"0.6~1.7", u"1.7", u"1.8", 333},
      {u"40~80", u"40", u"39", 333},
      {u"0~2.0", u"2", u"2.1", 333},
      {u"S>=0.3", u"0.3", u"0.29", 166},
      {u"20~1200", u"20", u"19", 333},
      {u"15~60", u"60", u"61", 333},
      {u"0.6666~1.0", u"0.6666", u"0.6665", 333},
      {u"(-90~90)", u"-89", u"-90", 333},
      {u"0", u"anything", u"", 0},
      {u"UnCheckNum", u"", u"", 0},
      {u"1", u"是", u"也许", 106},
      {u"S<=5_>=1", u"3", u"0", 166},
      {u"S>0_<=10", u"10", u"11", 154},
      {u"S<5", u"4", u"5", 153},
      {u"[1~2]", u"2", u"3", 333},
  };
  auto err = checker();
  err->lListRes(1050);
  for (const Case& c : cases) {
    err->bMessageIgnore(true);
    err->tCheckNumberSign(c.descriptor);
    err->TextValue1(c.passes);
    err->tCaption1(u"x");
    EXPECT_EQ(err->GenCheckCboEnterNumErrX(), 0)
        << to_utf8(c.descriptor) << " " << to_utf8(c.passes);
    EXPECT_EQ(err->GenCheckCboEnterNumErrW(c.descriptor, u"x", c.fails, true), c.error)
        << to_utf8(c.descriptor) << " " << to_utf8(c.fails);
    EXPECT_EQ(err->lError_ID(), c.error);
    EXPECT_EQ(err->tError_Txt().empty(), c.error == 0) << to_utf8(c.descriptor);
    EXPECT_EQ(checking::parse_entry_descriptor(c.descriptor).unreadable.size(), 0u)
        << to_utf8(c.descriptor);
  }
}

TEST(NumericEntry, LimitsAndTheirMessages) {
  struct Case {
    TextView descriptor, entry;
    int32_t error;
    TextView message;  // empty: not compared
  };
  const Case cases[] = {
      {u"(0~100]", u"0", 333, u"错误：b 为 0，b 有效数值应在 (大于 0、且不大于 100) 的范围内。"},
      {u"0.5~1)", u"1", 333, u"错误：b 为 1，b 有效数值应在 (不小于 0.5、且小于 1) 的范围内。"},
      {u"S>0.0001", u"0", 155, u"错误：b ＝ 0 ≤ 0.0001，b 应大于 0.0001。"},
      {u"S>=1E-7", u"0", 166, u"错误：b ＝ 0 ＜ 1E-07，b 不应小于 1E-07。"},
      {u"L>0", u"1000000001", 121, u"错误：b ＝ 1000000001 ＞ 1000000000，b 不应大于 1000000000。"},
      {u"S", u"3.1e14", 122, u""},
      {u"L", u"-3.1e14", 123, u""},
      {u"S>=0", u"-3.1e14", 166, u""},  // a condition comes first
      {u"I", u"32768", 120, u"错误：b ＝ 32768 ＞ 32767，b 不应大于 32767。"},
      {u"I", u"-32769", 166, u"错误：b ＝ -32769 ＜ -32768，b 不应小于 -32768。"},
      {u"I", u"-32768", 0, u""},
      {u"15~80", u"1e400", 101, u""},
      {u"S>0", u" 1,000.5 ", 0, u""},
      {u"S>zz_>=q", u"-5", 0, u""},  // unreadable conditions are skipped (below)
      {u"S>0", u"", 101, u"错误：b 为 ，b 应输入有效数值。"},
      // Only "(" and ")" exclude their bound; any other bracket includes it.
      {u"{0~100}", u"100", 0, u""},
      {u"{0~100}", u"100.5", 333,
       u"错误：b 为 100.5，b 有效数值应在 (不小于 0、且不大于 100) 的范围内。"},
      {u"<0~100>", u"0", 0, u""},
      {u"<0~100>", u"-1", 333, u""},
      {u"S[0~100}", u"100", 0, u""},
      {u"{0~100)", u"100", 333,
       u"错误：b 为 100，b 有效数值应在 (不小于 0、且小于 100) 的范围内。"},
      {u"(0~100}", u"0", 333, u"错误：b 为 0，b 有效数值应在 (大于 0、且不大于 100) 的范围内。"},
      {u"S>=0_{-5~5>", u"5", 0, u""},
  };
  auto err = checker();
  for (const Case& c : cases) {
    EXPECT_EQ(err->GenCheckCboEnterNumErrW(c.descriptor, u"b", c.entry, true), c.error)
        << to_utf8(c.descriptor) << " " << to_utf8(c.entry);
    if (!c.message.empty()) {
      EXPECT_EQ(err->tError_Txt(), c.message) << to_utf8(c.descriptor);
    }
  }
}

// The parts a check passes over are kept for the lint of layouts; names are
// no such parts.
TEST(NumericEntry, UnreadablePartsAreKept) {
  const std::pair<TextView, std::vector<Text>> cases[] = {
      {u"S>zz_>=q", {u">zz", u">=q"}},
      {u"S>=2oo", {u">=2oo"}},
      {u"Q>5_xS", {u"Q>5"}},
      {u"(0~1.0_ 0~x) _Lx_", {u"0~x)"}},
  };
  for (const auto& [descriptor, unreadable] : cases) {
    EXPECT_EQ(checking::parse_entry_descriptor(descriptor).unreadable, unreadable)
        << to_utf8(descriptor);
  }
}

TEST(NumericEntry, UserNotationPairsSlabBarsAndListWords) {
  auto comma = checker(u",");
  EXPECT_EQ(comma->GenCheckCboEnterNumErrW(u"0~1.0", u"k", u"0,5", true), 0);
  EXPECT_EQ(comma->GenCheckCboEnterNumErrW(u"0~1.0", u"k", u"1,5", true), 333);
  EXPECT_EQ(comma->GenCheckCboEnterNumErrW(u"X,Y", u"p", u"1,5 -2", true), 0);
  EXPECT_EQ(comma->GenCheckCboEnterNumErrW(u"X,Y", u"p", u"1,5", true), 200);

  auto err = checker();
  struct Case {
    TextView descriptor, entry;
    int32_t error;
  };
  const Case cases[] = {
      {u"X,Y", u"1.5, -2", 0}, {u"X,Y", u"1.5", 200},    {u"X,Y", u"1,2,3", 200},
      {u"X,Y", u"a, 2", 200},  {u"BanGJ", u"10@200", 0}, {u"BanGJ", u"10@", 503},
      {u"1", u"C 30", 106},    {u"1", u"否 ", 0},
  };
  err->lListRes(1050);
  for (const Case& c : cases) {
    EXPECT_EQ(err->GenCheckCboEnterNumErrW(c.descriptor, u"p", c.entry, true), c.error)
        << to_utf8(c.descriptor) << " " << to_utf8(c.entry);
  }

  // XL: a list word or a number.
  err->lListRes(1050);
  err->tCheckNumberSign(u"S>0");
  err->TextValue1(u"是");
  EXPECT_EQ(err->GenCheckCboEnterNumErrXL(), 0);
  EXPECT_EQ(err->GenCheckCboEnterNumErrX(), 101);
  err->TextValue1(u"-1");
  EXPECT_EQ(err->GenCheckCboEnterNumErrXL(), 155);
}

// The word "GJ" reads a bar text as the rebar reader does; each error
// number that reader gives has a message of its own.
TEST(NumericEntry, BarTextsAndTheirMessages) {
  struct Case {
    TextView entry;
    int32_t error;
    TextView message;
  };
  const Case cases[] = {
      {u"4Φ20", 0, u""},
      {u" 20 ", 0, u""},
      {u"0", 3000100, u"错误：纵筋 为 0，纵筋 的钢筋直径应大于零。"},
      {u"8X20", 3000110, u"错误：纵筋 为 8X20，纵筋 应按“根数Φ直径”的方式输入钢筋，例如“4Φ20”。"},
      {u"4 -25", 3000120, u"错误：纵筋 为 4 -25，纵筋 中根数后的钢筋直径应大于零。"},
      {u"4Φx", 3000130,
       u"错误：纵筋 为 4Φx，纵筋 中根数后的钢筋直径应输入有效数值，例如“4Φ20”中的“20”。"},
      {u"0Φ20", 3000140, u"错误：纵筋 为 0Φ20，纵筋 中的钢筋根数不应少于 1 根。"},
      {u"aΦ20", 3000150,
       u"错误：纵筋 为 aΦ20，纵筋 中直径前的钢筋根数应输入有效数值，例如“4Φ20”中的“4”。"},
  };
  auto err = checker();
  for (const Case& c : cases) {
    EXPECT_EQ(err->GenCheckCboEnterNumErrW(u"GJ", u"纵筋", c.entry, true), c.error)
        << to_utf8(c.entry);
    EXPECT_EQ(err->tError_Txt(), c.message) << to_utf8(c.entry);
  }
}

TEST(TwoValues, SignsAndValueTexts) {
  struct Case {
    TextView sign;
    double v1, v2;
    int32_t error;
    TextView value1, value2;
  };
  const Case cases[] = {
      {u">=", 2, 2, 0, u"", u""},
      {u"<>", 2, 2, 169, u"2", u"2"},
      {u"=", 0.5, 0.25, 168, u"0.5", u"0.25"},
      {u"=", 5, 2.5, 168, u"5", u"2.5"},
      {u"<", 0.1234567, 0, 153, u"0.123457", u"0"},
      {u"<=", 3, 2, 154, u"3", u"2"},
      {u">", 1e-7, 1, 155, u"1E-07", u"1"},
      {u"?", 1, 2, 0, u"", u""},
      {u"=>", 1, 2, 0, u"", u""},
  };
  auto err = checker();
  for (const Case& c : cases) {
    err->TextValue1(u"");
    err->TextValue2(u"");
    EXPECT_EQ(err->GenCheckConErrW(c.sign, u"a", c.v1, u"b", c.v2, true), c.error)
        << to_utf8(c.sign) << " " << c.v1;
    EXPECT_EQ(clsErrChr::Internals::value1(*err), c.value1) << to_utf8(c.sign) << " " << c.v1;
    EXPECT_EQ(clsErrChr::Internals::value2(*err), c.value2) << to_utf8(c.sign) << " " << c.v1;
  }
  EXPECT_EQ(err->GenCheckConErr(u">", u"a", frame::Variant(u"x"), u"b", 1, true), 101);
  EXPECT_EQ(clsErrChr::Internals::caption1(*err), u"a");
  EXPECT_EQ(err->GenCheckConErr(u">", u"a", frame::Variant(u"3"), u"b", 1, true), 0);
}

TEST(Lists, CallerListsCatalogueListsAndConcreteGrades) {
  auto err = checker();
  const std::vector<Text> list = {u"A", u"B", u"C"};
  EXPECT_EQ(err->GenCheckListErrW(u"k", u"B", list, 2, u"类别", Compare::Binary, true), 0);
  EXPECT_EQ(err->GenCheckListErrW(u"k", u"C", list, 1, u"类别", Compare::Binary, true), 106);
  EXPECT_EQ(clsErrChr::Internals::caption2(*err), u"类别");
  EXPECT_EQ(err->GenCheckListErrW(u"k", u"c", list, 9, u"类别", Compare::Text, true), 0);
  EXPECT_EQ(err->GenCheckListErr(u"k", u"2", {frame::Variant(1), frame::Variant(2)}, 1, u"n",
                                 Compare::Binary, true),
            0);

  struct Case {
    int32_t list;
    TextView entry;
    Compare compare;
    int32_t error;
  };
  const Case cases[] = {
      {5300, u"30", Compare::Binary, 0},   {5300, u" 3 0 ", Compare::Binary, 0},
      {5300, u"85", Compare::Binary, 106}, {1096, u"一 级", Compare::Binary, 0},
      {1050, u"是", Compare::Binary, 0},   {1008, u"", Compare::Binary, 0},
      {7777, u"", Compare::Binary, 106},   {1096, u"非抗震 ", Compare::Text, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(err->CheckCboListErrW(c.list, u"k", c.entry, c.compare, true), c.error)
        << c.list << " " << to_utf8(c.entry);
  }
  EXPECT_EQ(clsErrChr::Internals::caption2(*err), u"输入框的下拉列表项目");

  // A grade is read by its leading number with ".", whatever the notation.
  struct Grade {
    TextView decimal, grade;
    int32_t error;
  };
  const Grade grades[] = {
      {u".", u"7.5", 0},   {u".", u"60", 0},    {u".", u" 30abc", 0},  {u".", u"65", 104},
      {u".", u"C30", 104}, {u".", u"", 104},    {u",", u"7.5", 0},     {u",", u"7,5", 104},
      {u",", u"1.0", 104}, {u",", u"30abc", 0}, {u",", u"1e400", 104},
  };
  for (const Grade& g : grades) {
    auto grade_checker = checker(g.decimal);
    Text message;
    EXPECT_EQ(grade_checker->GenCheckHntQdDj(g.grade, true, message), g.error)
        << to_utf8(g.decimal) << " " << to_utf8(g.grade);
    EXPECT_EQ(message.empty(), g.error == 0);
    EXPECT_EQ(clsErrChr::Internals::caption1(*grade_checker), g.error ? u"混凝土的强度等级" : u"");
  }
}

// With a language offset that overflows the catalogue's ids the texts are
// missing, and the checks still answer with their numbers.
TEST(Lists, ExtremeLanguageOffsetsNeverRaise) {
  for (const int32_t offset :
       {std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::min(), 1'000'000}) {
    auto err = checker();
    err->lLanguage(offset);
    int32_t number = 0;
    Text message;
    EXPECT_NO_THROW(number = err->GenCheckCboEnterNumErrW(u"S>0", u"b", u"-1", true)) << offset;
    EXPECT_NE(number, 0) << offset;
    EXPECT_NO_THROW(number = err->CheckCboListErrW(1050, u"k", u"是", Compare::Binary, true));
    EXPECT_EQ(number, 106) << offset;  // no list in reach: nothing is in it
    EXPECT_NO_THROW(number = err->GenCheckHntQdDj(u"65", true, message));
    EXPECT_EQ(number, 104) << offset;
    EXPECT_EQ(err->GenCheckCboEnterNumErrW(u"S>0", u"b", u"250", true), 0) << offset;
  }
}

TEST(Criteria, ByErrorNumber) {
  struct Case {
    int32_t criterion;
    TextView text, second;
    int32_t error;
  };
  const Case cases[] = {
      {102, u"1", u"", 0},    {102, u"0", u"", 102},  {103, u"0", u"", 0},
      {103, u"-1", u"", 103}, {105, u"0", u"", 105},  {450, u"-5", u"", 450},
      {202, u"a", u"", 0},    {202, u"ab", u"", 202}, {205, u" ", u"", 205},
      {205, u"x", u"", 0},    {155, u"3", u"2", 0},   {155, u"2", u"2", 155},
      {168, u"2", u"2.0", 0}, {169, u"2", u"2", 169}, {154, u"2", u"x", 101},
      {102, u"x", u"", 101},  {7, u"1", u"", 39999},
  };
  auto err = checker();
  for (const Case& c : cases) {
    EXPECT_EQ(err->CheckCriterionErr(c.criterion, u"a", frame::Variant(c.text), u"b",
                                     frame::Variant(c.second), true),
              c.error)
        << c.criterion << " " << to_utf8(c.text);
  }
}

}  // namespace
}  // namespace zelkora
