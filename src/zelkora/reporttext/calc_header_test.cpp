// Tests of the calculation header of a report.
#include <gtest/gtest.h>

#include <cstdint>

#include "zelkora/frame/cls_character.h"
#include "zelkora/typeset/markup.h"

namespace zelkora {
namespace {

TEST(CalculationHeader, TitleProjectStandardsDateAndRule) {
  clsCharacter chr(platform::Platform::headless());
  const Text end = chr.tConEnter1();
  const Text rule80(40, u'─');
  const struct {
    const char* what;
    int16_t width;
    std::vector<int32_t> standards;
    Text expected;
  } cases[] = {
      {"two standards, one id without a text",
       80,
       {59899, 1, 59009},
       Text(30, u' ') + u"_bb(钢筋混凝土梁配筋计算)bb_" + end + u"工程名称：三号楼" + end +
           u"设计依据：" + end + u"    1.《混凝土结构设计规范》（GB 50010－2010）" + end +
           u"    2.《建筑结构荷载规范》（GB 50009－2012）" + end + u"计算日期：2026-11-25" + end +
           rule80 + end},
      {"no standards, a narrow width is 80",
       40,
       {},
       Text(30, u' ') + u"_bb(钢筋混凝土梁配筋计算)bb_" + end + u"工程名称：三号楼" + end +
           u"计算日期：2026-11-25" + end + rule80 + end},
      {"a wide line",
       150,
       {},
       Text(65, u' ') + u"_bb(钢筋混凝土梁配筋计算)bb_" + end + u"工程名称：三号楼" + end +
           u"计算日期：2026-11-25" + end + Text(75, u'─') + end},
  };
  for (const auto& c : cases) {
    chr.iMaxChrNow(c.width);
    EXPECT_EQ(chr.tCalHead(u"钢筋混凝土梁配筋计算", u"三号楼", c.standards, u"2026-11-25"),
              c.expected)
        << c.what;
  }
}

TEST(CalculationHeader, IdsThatOverflowWithTheLanguageOffsetAreLeftOut) {
  clsCharacter chr(platform::Platform::headless());
  chr.lLanguage(1);
  const Text head = chr.tCalHead(u"梁", u"", {INT32_MAX}, u"2026-11-25");
  EXPECT_EQ(head.find(u"设计依据"), Text::npos);
}

TEST(CalculationHeader, AppendsToTheReportAndDatesItToday) {
  clsCharacter chr(platform::Platform::headless());
  chr.Txt(u"前言");
  chr.CalHead(Text(41, u'长'), u"", {});
  const Text& report = chr.Txt();
  EXPECT_EQ(report.substr(0, 7), u"前言_bb(长") << "no blanks before a title wider than the line";
  const std::size_t date = report.find(u"计算日期：");
  ASSERT_NE(date, Text::npos);
  const Text day = report.substr(date + 5, 10);
  EXPECT_TRUE(day[4] == u'-' && day[7] == u'-' && day.substr(0, 2) == u"20") << "yyyy-mm-dd";
}

}  // namespace
}  // namespace zelkora
