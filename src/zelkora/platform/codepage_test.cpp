// Tests of the code page 936 conversion.
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

// Text with a form in code page 936: encodes to exactly these bytes, decodes
// back unchanged, and is as wide as its bytes. The user-defined areas: area 1
// is AAA1-AFFE, area 2 F8A1-FEFE, area 3 A140-A7A0 (trail bytes skip 7F).
TEST(CodepageTest, MappingsEncodeAndDecode) {
  const Mapping mappings[] = {
      {"ascii", u"Fy = 360 N/mm2\t\r\n", "Fy = 360 N/mm2\t\r\n"},
      {"euro sign is one byte", u"\u20ACz", "\x80z"},
      {"chinese", u"结构设计", "\xBD\xE1\xB9\xB9\xC9\xE8\xBC\xC6"},
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
  };
  for (const Mapping& m : mappings) {
    SCOPED_TRACE(m.name);
    EXPECT_EQ(to_ansi(m.text), m.bytes);
    EXPECT_EQ(from_ansi(m.bytes), m.text);
    EXPECT_EQ(display_width(m.text), m.bytes.size());
  }
  std::string out = "x=";
  append_ansi(out, u"\uE002\u20AC");
  EXPECT_EQ(out, "x=\xAA\xA3\x80");
}

// A surrogate pair is one character; a lone surrogate is one too.
TEST(CodepageTest, CharactersWithoutFormBecomeOneQuestionMark) {
  const Mapping cases[] = {
      {"hangul", u"a\uAC00b", "a?b"},
      {"c1 control", u"\u0080", "?"},
      {"private use past the user areas", u"\uE766", "?"},
      {"surrogate pair", u"x\U0001F600y", "x?y"},
      {"lone high surrogate", u"\xD800z", "?z"},
      {"lone low surrogate", u"a\xDC00", "a?"},
      {"high at the end", u"a\xD83D", "a?"},
      {"low then high", u"\xDC00\xD800", "??"},
      {"two highs then a low", u"\xD800\xD800\xDC00", "??"},
      {"pair then a low", u"\xD800\xDC00\xDC00", "??"},
  };
  for (const Mapping& c : cases) {
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
  // ASCII without NUL, the euro sign, GBK's 21791 characters and the 1894 of
  // the user-defined areas.
  EXPECT_EQ(with_form, 127 + 1 + 21791 + 1894);
}

// The width of long texts, counted eight units at a time, against the sum of
// the units' own widths: every unit value in every position of a block, in
// runs of one value and in random order.
TEST(CodepageTest, WidthOfLongTextsIsTheSumOfItsCharacters) {
  auto reference = [](const Text& text) {
    std::size_t width = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const bool pair =
          i + 1 < text.size() && (text[i] & 0xFC00) == 0xD800 && (text[i + 1] & 0xFC00) == 0xDC00;
      width += pair ? 1 : static_cast<std::size_t>(char_width(text[i]));
      if (pair) ++i;
    }
    return width;
  };
  Text all;
  for (int i = 0; i < 0x10000; ++i) all.append(3, static_cast<char16_t>(i));
  for (std::size_t offset = 0; offset < 8; ++offset) {
    const TextView view = TextView(all).substr(offset);
    ASSERT_EQ(display_width(view), reference(Text(view))) << offset;
  }
  std::mt19937 random(9);
  for (int round = 0; round < 200; ++round) {
    Text text(static_cast<std::size_t>(random() % 64), u' ');
    for (char16_t& c : text) {
      const unsigned kind = random() % 4;
      c = kind == 0   ? static_cast<char16_t>(random() % 0x80)
          : kind == 1 ? static_cast<char16_t>(0x4DF8 + random() % 0x5A00)
                      : static_cast<char16_t>(random() % 0x10000);
    }
    ASSERT_EQ(display_width(text), reference(text)) << round;
    ASSERT_EQ(to_ansi(text).size(), reference(text)) << round;
  }
}

// A double-byte character is never split; a surrogate pair fits as one "?".
TEST(CodepageTest, PrefixFitting) {
  const struct {
    Text text;
    std::size_t max_bytes;
    std::size_t units;
  } cases[] = {
      {u"abc", 2, 2}, {u"abc", 5, 3},         {u"abc", 0, 0},         {u"a结", 2, 1},
      {u"a结", 3, 2}, {u"\U0001F600b", 1, 2}, {u"a\U0001F600", 1, 1},
  };
  for (const auto& p : cases) {
    SCOPED_TRACE(to_utf8(p.text) + " in " + std::to_string(p.max_bytes));
    EXPECT_EQ(prefix_fitting(p.text, p.max_bytes), p.units);
  }
}

TEST(CodepageTest, DamagedBytesGiveReplacementAndGoOn) {
  const Mapping cases[] = {
      {"0xFF", u"a\uFFFDz", "a\xFFz"},
      {"lead byte at the end", u"ab\uFFFD", "ab\xB5"},
      {"lead byte before a line break", u"\uFFFD\r\nk=v", "\xB5\r\nk=v"},
      {"lead byte before 0x7F", u"\uFFFD\x7F", "\x81\x7F"},
      {"lead byte before 0xFF", u"\uFFFD\uFFFD", "\x81\xFF"},
      {"lead byte before a lead byte", u"\u6863\uFFFD", "\xB5\xB5\xB5"},
      {"well-formed pair without a character", u"\uFFFDx", "\xA2\xABx"},
      {"lead byte before the euro byte", u"\u4E90", "\x81\x80"},
      {"euro byte alone", u"\u20AC", "\x80"},
      {"nul bytes", Text(u"a\0\uFFFD\0", 4), std::string("a\0\x81\0", 4)},
  };
  for (const Mapping& d : cases) {
    SCOPED_TRACE(d.name);
    EXPECT_EQ(from_ansi(d.bytes), d.text);
  }
}

// Random bytes decode to no more units than bytes; that text encodes to no
// more bytes, and a second round trip is stable.
TEST(CodepageTest, RandomBytesDecodeWithinBounds) {
  std::mt19937 random(936);
  std::uniform_int_distribution<int> byte(0, 255), length(0, 12);
  for (int round = 0; round < 20000; ++round) {
    std::string bytes(length(random), '\0');
    for (char& b : bytes) b = static_cast<char>(byte(random));
    const Text text = from_ansi(bytes);
    ASSERT_LE(text.size(), bytes.size());
    const std::string again = to_ansi(text);
    ASSERT_LE(again.size(), bytes.size());
    ASSERT_EQ(to_ansi(from_ansi(again)), again);
  }
}

}  // namespace
}  // namespace zelkora::codepage
