#include "zelkora/platform/codepage.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace zelkora::codepage {
namespace {

struct Mapping {
  const char* name;
  Text text;
  std::string bytes;
};

// Text with a form in code page 936: encodes to exactly these bytes and
// decodes back unchanged.
const Mapping kMappings[] = {
    {"ascii", u"Fy = 360 N/mm2\t\r\n", "Fy = 360 N/mm2\t\r\n"},
    {"steel grade symbol", u"4\uE00220",
     "4\xAA\xA3"
     "20"},
    {"euro sign is one byte", u"\u20AC5",
     "\x80"
     "5"},
    {"chinese", u"结构快速设计", "\xBD\xE1\xB9\xB9\xBF\xEC\xCB\xD9\xC9\xE8\xBC\xC6"},
    {"full-width equals", u"\uFF1D", "\xA3\xBD"},
    {"first gbk code", u"\u4E02", "\x81\x40"},
    {"area 1 first", u"\uE000", "\xAA\xA1"},
    {"area 1 end of first row", u"\uE05D\uE05E", "\xAA\xFE\xAB\xA1"},
    {"area 1 last", u"\uE233", "\xAF\xFE"},
    {"area 2 first", u"\uE234", "\xF8\xA1"},
    {"area 2 last", u"\uE4C5", "\xFE\xFE"},
    {"area 3 first", u"\uE4C6", "\xA1\x40"},
    {"area 3 skips trail 7F", u"\uE504\uE505", "\xA1\x7E\xA1\x80"},
    {"area 3 next row", u"\uE525\uE526", "\xA1\xA0\xA2\x40"},
    {"area 3 last", u"\uE765", "\xA7\xA0"},
    {"empty", u"", ""},
};

TEST(CodepageTest, MappingsEncodeAndDecode) {
  for (const Mapping& m : kMappings) {
    SCOPED_TRACE(m.name);
    EXPECT_EQ(to_ansi(m.text), m.bytes);
    EXPECT_EQ(from_ansi(m.bytes), m.text);
    EXPECT_EQ(display_width(m.text), m.bytes.size());
  }
}

TEST(CodepageTest, AppendKeepsWhatIsThere) {
  std::string out = "x=";
  append_ansi(out, u"\uE002\u20AC");
  EXPECT_EQ(out, "x=\xAA\xA3\x80");
}

struct NoForm {
  const char* name;
  Text text;
  std::string bytes;
};

const NoForm kNoForms[] = {
    {"hangul", u"a\uAC00b", "a?b"},
    {"c1 control", u"\u0080", "?"},
    {"private use past the user areas", u"\uE766", "?"},
    {"surrogate pair is one character", u"x\U0001F600y", "x?y"},
    {"lone high surrogate",
     u"\xD800"
     u"a",
     "?a"},
    {"lone low surrogate", u"a\xDC00", "a?"},
    {"high at the end", u"a\xD83D", "a?"},
    {"two highs then a low", u"\xD800\xD800\xDC00", "??"},
    {"pair then a low", u"\xD800\xDC00\xDC00", "??"},
    {"replacement character", u"\uFFFD", "?"},
};

TEST(CodepageTest, CharactersWithoutFormBecomeOneQuestionMark) {
  for (const NoForm& c : kNoForms) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(to_ansi(c.text), c.bytes);
    EXPECT_EQ(display_width(c.text), c.bytes.size());
  }
}

TEST(CodepageTest, EveryCharacterRoundTripsAndMatchesItsWidth) {
  int with_form = 0;
  for (int i = 1; i < 0x10000; ++i) {
    const auto c = static_cast<char16_t>(i);
    const Text one(1, c);
    const std::string bytes = to_ansi(one);
    ASSERT_EQ(static_cast<int>(bytes.size()), char_width(c)) << std::hex << i;
    if (!has_ansi_form(c)) {
      ASSERT_EQ(bytes, "?") << std::hex << i;
      continue;
    }
    ++with_form;
    ASSERT_EQ(from_ansi(bytes), one) << std::hex << i;
  }
  // ASCII without NUL, the euro sign, GBK's 21791 characters and the 1894
  // characters of the user-defined areas.
  EXPECT_EQ(with_form, 127 + 1 + 21791 + 1894);
}

struct Width {
  Text text;
  std::size_t width;
};

const Width kWidths[] = {
    {u"", 0},       {u"fa \uFF1D 1.0", 9}, {u"f", 1},
    {u"\uFF1D", 2}, {u"钢筋 HRB400", 11},  {u"\uE000\uE001\uE002\uE003", 8},
    {u"\u20AC", 1}, {u"\U0001F600", 1},    {u"\xDC00\xD800", 2},
};

TEST(CodepageTest, DisplayWidth) {
  for (const Width& w : kWidths) {
    SCOPED_TRACE(to_utf8(w.text));
    EXPECT_EQ(display_width(w.text), w.width);
  }
  EXPECT_EQ(char_width(u'a'), 1);
  EXPECT_EQ(char_width(u'\uFF1D'), 2);
  EXPECT_EQ(char_width(u'\uE765'), 2);
  EXPECT_EQ(char_width(u'\uAC00'), 1);
}

struct Prefix {
  Text text;
  std::size_t max_bytes;
  std::size_t units;
};

const Prefix kPrefixes[] = {
    {u"abc", 2, 2},         {u"abc", 5, 3},
    {u"a结", 2, 1},  // the double-byte character is not split
    {u"a结", 3, 2},         {u"结构", 3, 1},
    {u"\U0001F600b", 1, 2},  // a pair fits as its one "?"
    {u"a\U0001F600", 1, 1}, {u"", 4, 0},
    {u"abc", 0, 0},
};

TEST(CodepageTest, PrefixFitting) {
  for (const Prefix& p : kPrefixes) {
    SCOPED_TRACE(to_utf8(p.text) + " in " + std::to_string(p.max_bytes));
    EXPECT_EQ(prefix_fitting(p.text, p.max_bytes), p.units);
  }
}

struct Damaged {
  const char* name;
  std::string bytes;
  Text text;
};

const Damaged kDamaged[] = {
    {"0xFF alone", "\xFF", u"\uFFFD"},
    {"0xFF between letters",
     "a\xFF"
     "b",
     u"a\uFFFDb"},
    {"lead byte at the end", "ab\xB5", u"ab\uFFFD"},
    {"lead byte alone", "\x81", u"\uFFFD"},
    {"lead byte before a line break", "\xB5\r\nk=v", u"\uFFFD\r\nk=v"},
    {"lead byte before =", "\xB5=1", u"\uFFFD=1"},
    {"lead byte before 0x7F", "\x81\x7F", u"\uFFFD\x7F"},
    {"lead byte before 0xFF", "\x81\xFF", u"\uFFFD\uFFFD"},
    {"lead byte before a lead byte", "\xB5\xB5\xB5", u"\u6863\uFFFD"},
    {"well-formed pair without a character",
     "\xA2\xAB"
     "x",
     u"\uFFFDx"},
    {"lead byte before the euro byte", "\x81\x80", u"\u4E90"},
    {"euro byte alone", "\x80", u"\u20AC"},
    {"nul bytes", std::string("a\0\x81\0", 4), Text(u"a\0\uFFFD\0", 4)},
};

TEST(CodepageTest, DamagedBytesGiveReplacementAndGoOn) {
  for (const Damaged& d : kDamaged) {
    SCOPED_TRACE(d.name);
    EXPECT_EQ(from_ansi(d.bytes), d.text);
  }
}

TEST(CodepageTest, RandomBytesDecodeWithinBounds) {
  std::mt19937 random(936);
  std::uniform_int_distribution<int> byte(0, 255);
  std::uniform_int_distribution<int> length(0, 12);
  for (int round = 0; round < 20000; ++round) {
    std::string bytes(length(random), '\0');
    for (char& b : bytes) b = static_cast<char>(byte(random));
    const Text text = from_ansi(bytes);
    ASSERT_LE(text.size(), bytes.size());
    // Whatever was decoded encodes to no more bytes than it came from, and a
    // second round trip is stable.
    const std::string again = to_ansi(text);
    ASSERT_LE(again.size(), bytes.size());
    ASSERT_EQ(to_ansi(from_ansi(again)), again);
  }
}

}  // namespace
}  // namespace zelkora::codepage
