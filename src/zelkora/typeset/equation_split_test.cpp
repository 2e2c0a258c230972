// Tests of breaking long equations.
#include "zelkora/typeset/equation_split.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "zelkora/frame/cls_character.h"
#include "zelkora/typeset/markup.h"

namespace zelkora::typeset {
namespace {

Text rep(std::size_t n, char16_t c) { return Text(n, c); }
Text blanks(std::size_t n) { return Text(n, u' '); }

TEST(SplitEquation, BreaksBeforeOperatorsOutsideRunsAndNumbers) {
  struct Case {
    const char* what;
    Text equation;
    int width;
    std::vector<Text> lines;
  };
  const Text a37 = rep(37, u'1'), b37 = rep(37, u'2');
  const Case cases[] = {
      {"exactly 80 cells stay one line",
       u"A ＝ " + rep(35, u'1') + u" + " + b37,
       80,
       {u"A ＝ " + rep(35, u'1') + u" + " + b37}},
      {"81 cells break before the operator, under the right-hand side",
       u"A ＝ " + rep(36, u'1') + u" + " + b37,
       80,
       {u"A ＝ " + rep(36, u'1'), blanks(5) + u"+ " + b37}},
      {"a width below 80 is 80",
       u"A ＝ " + rep(36, u'1') + u" + " + b37,
       40,
       {u"A ＝ " + rep(36, u'1'), blanks(5) + u"+ " + b37}},
      {"a wider width keeps more",
       u"A ＝ " + rep(36, u'1') + u" + " + b37,
       81,
       {u"A ＝ " + rep(36, u'1') + u" + " + b37}},
      {"markup counts as shown",
       u"M_ub(max)ub_ ＝ " + rep(31, u'1') + u" · " + a37,
       80,
       {u"M_ub(max)ub_ ＝ " + rep(31, u'1') + u" · " + a37}},
      {"never inside a run: the first break point after it",
       u"A ＝ " + rep(74, u'x') + u"_ub(p+q)ub_ + y",
       80,
       {u"A ＝ " + rep(74, u'x') + u"_ub(p+q)ub_", blanks(5) + u"+ y"}},
      {"an exponent's sign is no break point",
       u"A ＝ " + rep(66, u'a') + u" × 2.5e-3 ＝ 9",
       80,
       {u"A ＝ " + rep(66, u'a'), blanks(5) + u"× 2.5e-3 ＝ 9"}},
      {"nor an exponent's sign in brackets",
       u"A ＝ " + rep(66, u'a') + u" × (1.5e-3)",
       80,
       {u"A ＝ " + rep(66, u'a'), blanks(5) + u"× (1.5e-3)"}},
      {"an equals sign inside a number's word is none",
       u"A ＝ " + rep(66, u'a') + u" + 12kN＝12",
       80,
       {u"A ＝ " + rep(66, u'a'), blanks(5) + u"+ 12kN＝12"}},
      {"a sign after a bracket is none",
       u"A ＝ " + rep(70, u'a') + u" × (-3)",
       80,
       {u"A ＝ " + rep(70, u'a'), blanks(5) + u"× (-3)"}},
      {"nor a fraction's stroke",
       u"A ＝ " + rep(70, u'a') + u" × 1/2",
       80,
       {u"A ＝ " + rep(70, u'a'), blanks(5) + u"× 1/2"}},
      {"nor a unit's dot",
       u"A ＝ " + rep(66, u'a') + u" ＝ 12kN·m",
       80,
       {u"A ＝ " + rep(66, u'a'), blanks(5) + u"＝ 12kN·m"}},
      {"a later equals sign and the minus signs break",
       u"V ＝ " + rep(40, u'3') + u" − " + rep(30, u'4') + u" ＝ 12.5kN",
       80,
       {u"V ＝ " + rep(40, u'3') + u" − " + rep(30, u'4'), blanks(5) + u"＝ 12.5kN"}},
      {"without an equals sign: 4 blanks",
       rep(50, u'a') + u" - " + rep(50, u'b'),
       80,
       {rep(50, u'a'), blanks(4) + u"- " + rep(50, u'b')}},
      {"a left-hand side wider than half the line: 4 blanks",
       rep(45, u'L') + u" ＝ " + rep(20, u'r') + u" / " + rep(20, u's'),
       80,
       {rep(45, u'L') + u" ＝ " + rep(20, u'r'), blanks(4) + u"/ " + rep(20, u's')}},
      {"Chinese counts two",
       u"弯矩 ＝ " + rep(35, u'中') + u" + 1",
       80,
       {u"弯矩 ＝ " + rep(35, u'中'), blanks(8) + u"+ 1"}},
      {"nothing to break at: one long line",
       u"A ＝ " + rep(90, u'1'),
       80,
       {u"A ＝ " + rep(90, u'1')}},
      {"no break before the right-hand side",
       rep(85, u'a') + u"+b ＝ c",
       80,
       {rep(85, u'a') + u"+b ＝ c"}},
      {"trailing blanks go", u"A ＝ 1 + 2   ", 80, {u"A ＝ 1 + 2"}},
      {"blanks give no lines", u"   ", 80, {}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(split_equation(c.equation, c.width), c.lines) << c.what;
  }
}

TEST(SplitEquation, LongSumsFillLinesAndLoseNothing) {
  Text equation = u"M ＝ ";
  for (int i = 0; i < 40; ++i) equation += (i ? u" + " : u"") + Text(u"1.2×3.45");
  equation += u" ＝ 165.6kN·m";
  const std::vector<Text> lines = split_equation(equation, 80);
  ASSERT_GT(lines.size(), 4u);
  Text joined;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_LE(markup_display_width(lines[i]), 80u) << i;
    if (i > 0) {
      EXPECT_EQ(lines[i].substr(0, 5), blanks(5)) << i;
      EXPECT_TRUE(lines[i][5] == u'+' || lines[i][5] == u'＝') << i;
      // The next term (up to its next operator) would not have fitted.
      const Text next = lines[i].substr(5);
      const std::size_t cut = std::min(next.find(u" +", 1), next.find(u" ＝", 1));
      EXPECT_GT(markup_display_width(lines[i - 1] + u" " + next.substr(0, cut)), 80u)
          << "line " << i - 1 << " could have taken more";
    }
    joined += (i ? Text(u" ") + lines[i].substr(5) : lines[i]);
  }
  EXPECT_EQ(joined, equation);
}

TEST(SplitEquation, TheReportOperationsJoinWithTheContinuation) {
  clsCharacter chr(platform::Platform::headless());
  const Text equation = u"A ＝ " + rep(36, u'1') + u" + " + rep(37, u'2');
  const Text broken =
      u"A ＝ " + rep(36, u'1') + chr.tConEnter1() + blanks(5) + u"+ " + rep(37, u'2');
  EXPECT_EQ(chr.SplitEQ(equation), broken);
  chr.iMaxChrNow(150);
  EXPECT_EQ(chr.SplitEQ(equation), equation);
  chr.iMaxChrNow(80);
  chr.Txt(u"计算：");
  chr.SplitLineCalEQ(equation);
  chr.SplitLineCalEQ(u"  ");
  EXPECT_EQ(chr.Txt(), u"计算：" + broken + chr.tConEnter1());
}

}  // namespace
}  // namespace zelkora::typeset
