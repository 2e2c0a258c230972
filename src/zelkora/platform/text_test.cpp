// Tests of the text helpers.
#include "zelkora/platform/text.h"

#include <gtest/gtest.h>

namespace zelkora {
namespace {

TEST(Utf8, RoundTripsEveryPlane) {
  const Text samples[] = {
      u"",     u"abc",      u"工程名称",         u"4\uE00220", u"f_ub(a)ub_ ＝ 1.0", u"\U0001D400x",
      u"€·°²", u"12345678", u"0123456789abcdef", u"工12345678"};
  for (const Text& s : samples) {
    EXPECT_EQ(from_utf8(to_utf8(s)), s);
    Text strict;
    EXPECT_TRUE(append_utf8(to_utf8(s), strict));
    EXPECT_EQ(strict, s);
  }
}

TEST(Utf8, StrictConversionStopsAtTheFirstBadSequence) {
  struct Case {
    std::string bytes;
    std::size_t bad_offset;
  };
  const Case cases[] = {
      {"ab\x80", 2},              // stray continuation byte
      {"a\xC0\xAF", 1},           // overlong "/"
      {"\xE4\xB8", 0},            // truncated three-byte form
      {"x\xED\xA0\x80", 1},       // encoded surrogate
      {"\xF4\x90\x80\x80", 0},    // above U+10FFFF
      {"ok\xE5\xB7\xA5\xFF", 5},  // 0xFF after a good character
      {"\xE5"
       "a",
       0},  // lead byte followed by ASCII
  };
  for (const Case& c : cases) {
    Text out;
    std::size_t bad = 99;
    EXPECT_FALSE(append_utf8(c.bytes, out, &bad)) << c.bytes;
    EXPECT_EQ(bad, c.bad_offset) << c.bytes;
  }
}

TEST(Utf8, LenientConversionReplacesBadSequences) {
  EXPECT_EQ(from_utf8("a\x80"
                      "b"),
            u"a\uFFFDb");
  EXPECT_EQ(from_utf8("\xE4\xB8"), u"\uFFFD");
  EXPECT_EQ(to_utf8(Text(1, char16_t(0xD800)) + u"x"), "\xEF\xBF\xBDx");
}

TEST(Blanks, OnlyTheSpaceCharacterIsTrimmed) {
  EXPECT_EQ(trim(u"  自动 "), u"自动");
  EXPECT_EQ(trim(u"\t a \t"), u"\t a \t");
  EXPECT_EQ(trim(u"\u3000a"), u"\u3000a");
  EXPECT_EQ(trim_left(u"  a "), u"a ");
  EXPECT_EQ(trim_right(u"  a "), u"  a");
  EXPECT_EQ(trim(u"    "), u"");
}

TEST(Compare, TextModeIgnoresCaseOfLatinGreekCyrillicAndFullWidth) {
  struct Case {
    TextView a, b;
    bool text_equal;
  };
  const Case cases[] = {
      {u"HRB400", u"hrb400", true}, {u"Φ", u"φ", true},       {u"ÄÖ", u"äö", true},
      {u"Ж", u"ж", true},           {u"ＡＢ", u"ａｂ", true}, {u"自动", u"自动", true},
      {u"a", u"b", false},          {u"ß", u"SS", false},     {u"ab", u"abc", false},
      {u"×", u"÷", false},  // U+00D7 and U+00F7 are no letter pair
  };
  for (const Case& c : cases) {
    EXPECT_EQ(equal_text(c.a, c.b, Compare::Text), c.text_equal) << to_utf8(c.a);
    EXPECT_EQ(equal_text(c.a, c.b, Compare::Binary), c.a == c.b) << to_utf8(c.a);
  }
}

TEST(Search, FindReplaceAndSplitFollowTheComparison) {
  EXPECT_EQ(find_text(u"abcABC", u"BC"), 4u);
  EXPECT_EQ(find_text(u"abcABC", u"BC", 0, Compare::Text), 1u);
  EXPECT_EQ(find_text(u"abc", u"", 2), 2u);
  EXPECT_EQ(find_text(u"abc", u"x", 5), TextView::npos);
  EXPECT_EQ(replace_all(u"%%1%+%%1%", u"%%1%", u"x"), u"x+x");
  EXPECT_EQ(replace_all(u"aAa", u"a", u"", Compare::Text), u"");
  EXPECT_EQ(replace_all(u"abc", u"", u"x"), u"abc");
  // Replacement text is not searched again.
  EXPECT_EQ(replace_all(u"aa", u"a", u"aa"), u"aaaa");
}

TEST(Search, SplitKeepsEmptyPartsButGivesNothingForEmptyText) {
  using Parts = std::vector<Text>;
  EXPECT_EQ(split_text(u"是|否", u"|"), (Parts{u"是", u"否"}));
  EXPECT_EQ(split_text(u"|6|8", u"|"), (Parts{u"", u"6", u"8"}));
  EXPECT_EQ(split_text(u"a|", u"|"), (Parts{u"a", u""}));
  EXPECT_EQ(split_text(u"", u"|"), Parts{});
  EXPECT_EQ(split_text(u"abc", u""), Parts{u"abc"});
  EXPECT_EQ(split_text(u"1x2X3", u"x", Compare::Text), (Parts{u"1", u"2", u"3"}));
}

}  // namespace
}  // namespace zelkora
