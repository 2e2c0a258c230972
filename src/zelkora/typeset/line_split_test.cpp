// Tests of splitting and wrapping lines.
#include "zelkora/typeset/line_split.h"

#include <gtest/gtest.h>

#include <random>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault_test_support.h"
#include "zelkora/typeset/markup.h"

namespace zelkora::typeset {
namespace {

Text rep(std::size_t n, TextView unit) {
  Text out;
  for (std::size_t i = 0; i < n; ++i) out.append(unit);
  return out;
}

// ---- Single-line splitting ----------------------------------------------------

TEST(SplitSingleLine, BreaksAtTheSeparator) {
  struct Case {
    const char* what;
    Text line;
    Text separator;
    int16_t indent, indent_add, width;
    Text expected;  // lines ended by "\n"
  };
  const Text a50 = rep(50, u"a"), b50 = rep(50, u"b"), x90 = rep(90, u"x"), b90 = rep(90, u"b");
  const Case cases[] = {
      {"no separator: indent, trailing blanks gone", u"  abc  ", u",", 2, 4, 80, u"  abc\n"},
      {"two halves: the separator at the break is dropped", a50 + u" " + b50, u" ", 2, 4, 80,
       u"  " + a50 + u"\n      " + b50 + u"\n"},
      {"80 bytes stay on one line", rep(39, u"a") + u" " + rep(40, u"b"), u" ", 0, 4, 80,
       rep(39, u"a") + u" " + rep(40, u"b") + u"\n"},
      {"81 bytes break", rep(40, u"a") + u" " + rep(40, u"b"), u" ", 0, 4, 80,
       rep(40, u"a") + u"\n    " + rep(40, u"b") + u"\n"},
      {"a width below 80 is 80", rep(39, u"a") + u" " + rep(40, u"b"), u" ", 0, 4, 40,
       rep(39, u"a") + u" " + rep(40, u"b") + u"\n"},
      {"a wider width is kept", rep(40, u"a") + u" " + rep(40, u"b"), u" ", 0, 4, 81,
       rep(40, u"a") + u" " + rep(40, u"b") + u"\n"},
      {"40 Chinese characters fit", rep(20, u"甲") + u"、" + rep(19, u"乙"), u"、", 0, 4, 80,
       rep(20, u"甲") + u"、" + rep(19, u"乙") + u"\n"},
      {"41 do not", rep(20, u"甲") + u"、" + rep(20, u"乙"), u"、", 0, 4, 80,
       rep(20, u"甲") + u"\n    " + rep(20, u"乙") + u"\n"},
      {"trailing blanks of a candidate do not count",
       rep(40, u"a") + u" " + rep(39, u"b") + u"    ", u" ", 0, 4, 80,
       rep(40, u"a") + u" " + rep(39, u"b") + u"\n"},
      {"markers count as written", rep(70, u"x") + u" _ub(ab)ub_", u" ", 0, 4, 80,
       rep(70, u"x") + u"\n    _ub(ab)ub_\n"},
      {"a wide first part stands alone", x90 + u" y", u" ", 1, 2, 80, u" " + x90 + u"\n   y\n"},
      {"a wide middle part stands alone", u"a " + b90 + u" c", u" ", 0, 4, 80,
       u"a\n    " + b90 + u"\n    c\n"},
      {"only the last part is trimmed on a new line",
       rep(60, u"a") + u",  " + rep(30, u"b") + u",  " + rep(70, u"c") + u"  ", u",", 0, 4, 80,
       rep(60, u"a") + u"\n      " + rep(30, u"b") + u"\n    " + rep(70, u"c") + u"\n"},
      {"separators inside a line are kept", u"  a, b, c", u", ", 0, 4, 80, u"a, b, c\n"},
      {"found without regard to case", rep(60, u"a") + u"AND" + rep(30, u"b"), u"and", 0, 4, 80,
       rep(60, u"a") + u"\n    " + rep(30, u"b") + u"\n"},
      {"and written as the caller gave it", u"x AND y", u"and", 0, 4, 80, u"x and y\n"},
      {"an empty separator splits nothing", u"a b", u"", 0, 4, 80, u"a b\n"},
      {"a negative indent is none", rep(40, u"a") + u" " + rep(40, u"b"), u" ", -3, 1, 80,
       rep(40, u"a") + u"\n" + rep(40, u"b") + u"\n"},
  };
  for (const Case& c : cases) {
    const auto out = split_single_line(c.line, c.separator, u"\n", c.indent, c.indent_add, c.width);
    ASSERT_TRUE(out.has_value()) << c.what;
    EXPECT_EQ(to_utf8(*out), to_utf8(c.expected)) << c.what;
  }
}

TEST(SplitSingleLine, BlankLineLeavesTheTargetAlone) {
  clsCharacter chr(platform::Platform::headless());
  for (TextView blank : {u"", u"   "}) {
    Text target = u"before";
    chr.SplitSngLineToMulLine(blank, target, u" ", u"\r\n", 2, 4, 80);
    EXPECT_EQ(target, u"before");
  }
  Text target = u"before";
  chr.SplitSngLineToMulLine(u"x", target, u" ", u"\r\n");
  EXPECT_EQ(target, u"x\r\n");
}

TEST(SplitSingleLine, IndentSumOverflowsOnlyWhenALineBreaks) {
  clsCharacter chr(platform::Platform::headless());
  const Text two_lines = rep(50, u"a") + u" " + rep(50, u"b");
  for (int16_t indent : {int16_t{30000}, int16_t{-30000}}) {
    Text target = u"before";
    EXPECT_EQ(test_support::fault_of([&] {
                chr.SplitSngLineToMulLine(two_lines, target, u" ", u"\n", indent, indent);
              }),
              test_support::kOverflow)
        << indent;
    EXPECT_EQ(target, u"before");
  }
  // A line that fits needs no continuation indent.
  Text target;
  chr.SplitSngLineToMulLine(u"a b", target, u" ", u"\n", 0, 32767);
  EXPECT_EQ(target, u"a b\n");
}

// ---- Wrapping -------------------------------------------------------------------

struct WrapCase {
  const char* what;
  Text text;
  int width, first, following;
  std::vector<Text> lines;
};

void expect_wraps(const std::vector<WrapCase>& cases) {
  for (const WrapCase& c : cases) {
    const std::vector<Text> lines = wrap_text(c.text, {c.width, c.first, c.following});
    std::vector<std::string> got, want;
    for (const Text& l : lines) got.push_back(to_utf8(l));
    for (const Text& l : c.lines) want.push_back(to_utf8(l));
    EXPECT_EQ(got, want) << c.what;
  }
}

TEST(WrapText, BreakPoints) {
  expect_wraps({
      {"empty text", u"", 80, 0, 4, {}},
      {"at a blank, the blanks dropped", u"aaaa    bbbb cccc", 9, 0, 0, {u"aaaa", u"bbbb cccc"}},
      {"exactly the width fits", u"aaaa bbbb", 9, 0, 0, {u"aaaa bbbb"}},
      {"one more breaks", u"aaaa bbbb", 8, 0, 0, {u"aaaa", u"bbbb"}},
      {"after Chinese punctuation", u"ab，cd", 4, 0, 0, {u"ab，", u"cd"}},
      {"between ideographs", u"甲乙丙丁", 5, 0, 0, {u"甲乙", u"丙丁"}},
      {"closing punctuation stays at the end", u"甲乙丙，丁戊", 8, 0, 0, {u"甲乙丙，", u"丁戊"}},
      {"and never begins a line", u"甲乙丙，丁戊", 7, 0, 0, {u"甲乙", u"丙，丁", u"戊"}},
      {"an opening bracket never ends a line",
       u"甲乙（丙丁）",
       6,
       0,
       0,
       {u"甲乙", u"（丙", u"丁）"}},
      {"not after an opening bracket before a blank", u"ab ( cd", 4, 0, 0, {u"ab", u"( cd"}},
  });
}

TEST(WrapText, WidthAsShown) {
  expect_wraps({
      {"markup does not count", u"f_ub(a)ub_ ＝ 1.0", 9, 0, 0, {u"f_ub(a)ub_ ＝ 1.0"}},
      {"one cell less", u"f_ub(a)ub_ ＝ 1.0", 8, 0, 0, {u"f_ub(a)ub_ ＝", u"1.0"}},
      {"a script stays with its base", u"甲乙_ub(丙)ub_", 4, 0, 0, {u"甲", u"乙_ub(丙)ub_"}},
      {"a bold run may begin a line", u"甲乙_bb(丙丁)bb_", 4, 0, 0, {u"甲乙", u"_bb(丙丁)bb_"}},
      {"a blank inside a run is no break point",
       u"_bb(aaa bbb)bb_ ccc",
       7,
       0,
       0,
       {u"_bb(aaa bbb)bb_", u"ccc"}},
  });
}

TEST(WrapText, WordsWiderThanTheLineAreCut) {
  expect_wraps({
      {"at the width", u"abcdefghij", 4, 0, 0, {u"abcd", u"efgh", u"ij"}},
      {"never inside a surrogate pair", u"a\U0001F600b", 2, 0, 0, {u"a\U0001F600", u"b"}},
      {"never inside a double-byte character", u"αβγ", 3, 0, 0, {u"α", u"β", u"γ"}},
      {"one character at least", u"αβ", 1, 0, 0, {u"α", u"β"}},
      {"outside a run when it can", u"xx_ub(ab)ub_yy", 3, 0, 0, {u"x", u"x_ub(ab)ub_", u"yy"}},
      {"inside one, never inside a marker",
       u"xx_ub(ab)ub_yy",
       2,
       0,
       0,
       {u"x", u"x_ub(a", u"b)ub_y", u"y"}},
      {"an indent wider than the line", u"ab cd", 3, 0, 6, {u"ab", u"      c", u"      d"}},
  });
}

TEST(WrapText, ParagraphsAndIndents) {
  expect_wraps({
      {"CR LF, CR and LF", u"ab\r\ncd\ref\ngh", 80, 0, 4, {u"ab", u"cd", u"ef", u"gh"}},
      {"an empty paragraph is an empty line", u"ab\n\ncd", 80, 2, 4, {u"  ab", u"", u"  cd"}},
      {"a break at the end starts no line", u"ab\r\n", 80, 0, 4, {u"ab"}},
      {"first and following indents",
       u"aaaa bbbb cccc dddd",
       10,
       2,
       4,
       {u"  aaaa", u"    bbbb", u"    cccc", u"    dddd"}},
      {"each paragraph starts with the first indent",
       u"aaaa bbbb\ncc",
       8,
       1,
       3,
       {u" aaaa", u"   bbbb", u" cc"}},
      {"negative indents are none", u"aaaa bbbb", 5, -2, -4, {u"aaaa", u"bbbb"}},
      {"leading blanks kept, trailing gone", u"  ab   ", 80, 0, 4, {u"  ab"}},
      {"blank-only text", u"   ", 80, 0, 4, {u""}},
  });
}

// Random texts of report pieces: every line fits unless it holds a single
// shown character, and the lines hold the text's characters in order, only
// blanks and line breaks dropped.
TEST(WrapText, RandomTextsFitAndLoseNothing) {
  const TextView pieces[] = {u"甲",   u"乙",   u"，",   u"。",   u"（",   u"）",
                             u"a",    u"bc",   u"1.25", u" ",    u"  ",   u"_ub(",
                             u")ub_", u"_bb(", u")bb_", u"_up(", u")up_", u"\U0001F600",
                             u"α",    u"＝",   u"(",    u")",    u"\n"};
  std::mt19937 rng(7);
  auto without_blanks = [](TextView t) {
    Text out;
    for (char16_t c : t) {
      if (c != u' ' && c != u'\n') out.push_back(c);
    }
    return out;
  };
  for (int round = 0; round < 400; ++round) {
    Text text;
    const int n = static_cast<int>(rng() % 40);
    for (int i = 0; i < n; ++i) text.append(pieces[rng() % std::size(pieces)]);
    const WrapLayout layout{static_cast<int>(rng() % 24) + 1, static_cast<int>(rng() % 4),
                            static_cast<int>(rng() % 6)};
    const std::vector<Text> lines = wrap_text(text, layout);
    Text joined;
    for (const Text& line : lines) {
      joined += line;
      if (static_cast<int>(markup_display_width(line)) <= layout.width) continue;
      const Text shown = strip_markup(trim(line));
      const bool one =
          shown.size() <= 1 || (shown.size() == 2 && shown[0] >= 0xD800 && shown[0] < 0xDC00);
      EXPECT_TRUE(one) << to_utf8(text) << " -> [" << to_utf8(line) << "] width " << layout.width;
    }
    EXPECT_EQ(to_utf8(without_blanks(joined)), to_utf8(without_blanks(text)));
  }
}

// ---- The clsCharacter members -------------------------------------------------------

class LineSplitMembers : public ::testing::Test {
 protected:
  clsCharacter chr{platform::Platform::headless()};
};

TEST_F(LineSplitMembers, SplitTextToMulLineFillsAllThreeResults) {
  std::vector<Text> lines = {u"old"};
  Text joined = u"old";
  EXPECT_EQ(chr.SplitTextToMulLine(u"aaaa bbbb\ncc", lines, joined, u"\r\n", 6, 0, 2), 3);
  EXPECT_EQ(lines, (std::vector<Text>{u"aaaa", u"  bbbb", u"cc"}));
  EXPECT_EQ(joined, u"aaaa\r\n  bbbb\r\ncc\r\n");
  EXPECT_EQ(chr.SplitTextToMulLine(u"", lines, joined, u"\r\n"), 0);
  EXPECT_TRUE(lines.empty());
  EXPECT_EQ(joined, u"");
  // A missing width is the object's current one.
  const Text long_line = rep(30, u"ab ");
  EXPECT_EQ(chr.SplitTextToMulLine(long_line, lines, joined, u"\n"), 2);
  chr.iMaxChrNow(30);
  EXPECT_EQ(chr.SplitTextToMulLine(long_line, lines, joined, u"\n"), 3);
}

TEST_F(LineSplitMembers, SplitSP26WrapsToTheCurrentWidth) {
  const Text fits = u"混凝土强度等级 C30，f_ub(c)ub_ ＝ 14.3N/mm_up(2)up_  ";
  EXPECT_EQ(chr.SplitSP26(fits), fits);
  EXPECT_EQ(chr.SplitSP26(u""), u"");
  const Text strength =
      u"钢筋 HRB400，f_ub(y)ub_ ＝ 360N/mm_up(2)up_，E_ub(s)ub_ ＝ 2.0×10_up(5)up_N/mm_up(2)up_；"
      u"混凝土 C30，f_ub(c)ub_ ＝ 14.3N/mm_up(2)up_，f_ub(t)ub_ ＝ 1.43N/mm_up(2)up_";
  // The first line takes 79 cells; the next term would pass 80.
  EXPECT_EQ(to_utf8(chr.SplitSP26(strength)),
            to_utf8(u"钢筋 HRB400，f_ub(y)ub_ ＝ 360N/mm_up(2)up_，E_ub(s)ub_ ＝ "
                    u"2.0×10_up(5)up_N/mm_up(2)up_；混凝土 C30，f_ub(c)ub_ ＝ 14.3N/mm_up(2)up_，"
                    u"\u3000\r\n    f_ub(t)ub_ ＝ 1.43N/mm_up(2)up_"));
  chr.iMaxChrNow(20);
  EXPECT_EQ(to_utf8(chr.SplitSP26(u"混凝土 C30，f_ub(c)ub_ ＝ 14.3N/mm_up(2)up_")),
            to_utf8(u"混凝土 C30，f_ub(c)ub_ ＝\u3000\r\n    14.3N/mm_up(2)up_"));
}

}  // namespace
}  // namespace zelkora::typeset
