#include "zelkora/platform/ini_text.h"

#include <gtest/gtest.h>

#include <optional>

namespace zelkora::platform::ini {
namespace {

const Text kSample =
    u"; suite settings\r\n"
    u"top=before any section\r\n"
    u"[Options]\r\n"
    u"Lang = 2 \r\n"
    u"Path=\t\"C:\\Zelkora\\\" \r\n"
    u"Single='x y'\r\n"
    u"Mixed=\"abc'\r\n"
    u"OnlyQuote=\"\r\n"
    u";Hidden=1\r\n"
    u"  ; Indented=1\r\n"
    u"no equals here\r\n"
    u"=no key\r\n"
    u"Lang=3\r\n"
    u"Empty=\r\n"
    u"Eq=a=b\r\n"
    u"[ spaced ]  \r\n"
    u"k=v\r\n"
    u"\t[Options]\r\n"
    u"Late=1\r\n"
    u"[结构]\r\n"
    u"名称 = 钢筋\r\n"
    u"[Ünï]\r\n"
    u"ÄBC=1\r\n"
    u"[broken\r\n"
    u"after=1\r\n"
    u"[last]\n"
    u"tail=end";

struct Lookup {
  const char* name;
  Text section;
  Text key;
  std::optional<Text> value;
};

const Lookup kLookups[] = {
    {"trimmed value", u"Options", u"Lang", u"2"},
    {"section and key in other case", u"OPTIONS", u"lang", u"2"},
    {"names asked with blanks", u" Options\t", u" lang ", u"2"},
    {"double quotes removed", u"Options", u"Path", u"C:\\Zelkora\\"},
    {"single quotes removed", u"Options", u"Single", u"x y"},
    {"quotes that do not match stay", u"Options", u"Mixed", u"\"abc'"},
    {"a lone quote stays", u"Options", u"OnlyQuote", u"\""},
    {"comment", u"Options", u"Hidden", std::nullopt},
    {"indented comment", u"Options", u"; Indented", std::nullopt},
    {"line without =", u"Options", u"no equals here", std::nullopt},
    {"empty key", u"Options", u"", std::nullopt},
    {"empty value", u"Options", u"Empty", u""},
    {"value with =", u"Options", u"Eq", u"a=b"},
    {"later duplicate section ignored", u"Options", u"Late", std::nullopt},
    {"header with blanks", u"spaced", u"K", u"v"},
    {"chinese names", u"结构", u"名称", u"钢筋"},
    {"latin-1 case", u"ünÏ", u"äbc", u"1"},
    {"header without ] is ignored", u"Ünï", u"after", u"1"},
    {"LF line and no final line end", u"LAST", u"tail", u"end"},
    {"key before any section", u"", u"top", std::nullopt},
    {"missing section", u"Nope", u"Lang", std::nullopt},
    {"missing key", u"Options", u"Nope", std::nullopt},
};

TEST(IniTextTest, FindValue) {
  for (const Lookup& c : kLookups) {
    SCOPED_TRACE(c.name);
    const std::optional<TextView> found = find_value(kSample, c.section, c.key);
    ASSERT_EQ(found.has_value(), c.value.has_value());
    if (found) {
      EXPECT_EQ(Text(*found), *c.value);
    }
  }
}

TEST(IniTextTest, FindValueEdgeContents) {
  EXPECT_EQ(find_value(u"", u"a", u"k"), std::nullopt);
  EXPECT_EQ(find_value(u"\uFEFF[a]\nk=1", u"a", u"k"), TextView(u"1"));
  EXPECT_EQ(find_value(u"[a]\r\n\r\nk=1\r\n", u"a", u"k"), TextView(u"1"));
  // A lone CR is not a line end.
  EXPECT_EQ(find_value(u"[a]\rk=1\n", u"a", u"k"), std::nullopt);
}

TEST(IniTextTest, ReadProfileString) {
  const Text kContent = u"[s]\r\nk= v \r\n";
  EXPECT_EQ(read_profile_string(kContent, u"S", u"K", u"def"), u"v");
  EXPECT_EQ(read_profile_string(kContent, u"s", u"x", u"  def  "), u"  def");
  EXPECT_EQ(read_profile_string(u"", u"s", u"k", u""), u"");

  // The read buffer holds 511 bytes of code page 936.
  const Text ascii(600, u'a');
  EXPECT_EQ(read_profile_string(u"[s]\nk=" + ascii, u"s", u"k", u""), Text(511, u'a'));
  const Text chinese(300, u'结');
  const Text odd = read_profile_string(u"[s]\nk=a" + chinese, u"s", u"k", u"");
  EXPECT_EQ(odd, u"a" + Text(255, u'结'));  // 1 + 510 bytes
  const Text even = read_profile_string(u"[s]\nk=ab" + chinese, u"s", u"k", u"");
  EXPECT_EQ(even, u"ab" + Text(254, u'结'));  // 2 + 508 bytes: no half character
  EXPECT_EQ(read_profile_string(u"", u"s", u"k", chinese), Text(255, u'结'));
}

struct Edit {
  const char* name;
  Text content;
  Text section;
  Text key;
  std::optional<Text> value;
  Text expected;
};

const Edit kEdits[] = {
    {"replace keeps spelling and blanks", u"[Options]\r\nLang = 2 \r\nx=1\r\n", u"OPTIONS", u"lang",
     u"5", u"[Options]\r\nLang = 5\r\nx=1\r\n"},
    {"replace a quoted value", u"[a]\nk=\"x\"\n", u"a", u"k", u"y", u"[a]\nk=y\n"},
    {"replace on the last line without line end", u"[a]\nk=1", u"a", u"k", u"22", u"[a]\nk=22"},
    {"replace in the first of two sections", u"[a]\nk=1\n[A]\nk=2\n", u"a", u"k", u"9",
     u"[a]\nk=9\n[A]\nk=2\n"},
    {"comments and odd lines kept", u"; c1  \r\n[a]\r\n ;k=old\r\n\tjunk\r\nk=1\r\n", u"a", u"k",
     u"2", u"; c1  \r\n[a]\r\n ;k=old\r\n\tjunk\r\nk=2\r\n"},
    {"new key after the last key line", u"[a]\r\nk=1\r\n; note\r\n\r\n[b]\r\nz=1\r\n", u"a", u"n",
     u"2", u"[a]\r\nk=1\r\nn=2\r\n; note\r\n\r\n[b]\r\nz=1\r\n"},
    {"new key in a section without keys", u"[a]\n; none yet\n[b]\n", u"a", u"k", u"v",
     u"[a]\nk=v\n; none yet\n[b]\n"},
    {"new key after a last line without line end", u"[a]\r\nk=1", u"a", u"j", u"2",
     u"[a]\r\nk=1\r\nj=2\r\n"},
    {"new key in the first of two sections", u"[a]\nk=1\n[a]\nj=2\n", u"a", u"j", u"3",
     u"[a]\nk=1\nj=3\n[a]\nj=2\n"},
    {"key before the first section is not the section's", u"k=0\r\n[a]\r\n", u"a", u"k", u"1",
     u"k=0\r\n[a]\r\nk=1\r\n"},
    {"new section in an LF file", u"[a]\nk=1\n", u"b", u"n", u"2", u"[a]\nk=1\n[b]\nn=2\n"},
    {"new section after a last line without line end", u"[a]\r\nk=1", u" b ", u" n ", u"2",
     u"[a]\r\nk=1\r\n[b]\r\nn=2\r\n"},
    {"new file", u"", u"结构", u"名称", u"钢筋", u"[结构]\r\n名称=钢筋\r\n"},
    {"file of a byte order mark", u"\uFEFF", u"a", u"k", u"1", u"\uFEFF[a]\r\nk=1\r\n"},
    {"empty value", u"[a]\nk=1\n", u"a", u"k", u"", u"[a]\nk=\n"},
    {"remove", u"[a]\r\nk=1\r\nj=2\r\n", u"A", u"K", std::nullopt, u"[a]\r\nj=2\r\n"},
    {"remove every line of the key", u"[a]\nk=1\nK = 2\n[b]\nk=3\n", u"a", u"k", std::nullopt,
     u"[a]\n[b]\nk=3\n"},
    {"remove the last line without line end", u"[a]\r\nj=2\r\nk=1", u"a", u"k", std::nullopt,
     u"[a]\r\nj=2\r\n"},
    {"remove a missing key", u"[a]\nj=2\n", u"a", u"k", std::nullopt, u"[a]\nj=2\n"},
    {"remove in a missing section", u"[a]\nk=2\n", u"b", u"k", std::nullopt, u"[a]\nk=2\n"},
};

TEST(IniTextTest, Edit) {
  for (const Edit& c : kEdits) {
    SCOPED_TRACE(c.name);
    const std::optional<Text> out = edit(c.content, c.section, c.key, c.value);
    ASSERT_TRUE(out.has_value());
    EXPECT_EQ(*out, c.expected);
    // What was written reads back.
    const std::optional<TextView> back = find_value(*out, c.section, c.key);
    ASSERT_EQ(back.has_value(), c.value.has_value());
    if (back) {
      EXPECT_EQ(Text(*back), *c.value);
    }
  }
}

TEST(IniTextTest, NewLineEndOnlyForContentWithoutOne) {
  EXPECT_EQ(edit(u"", u"a", u"k", u"1", LineEnd::Lf), u"[a]\nk=1\n");
  EXPECT_EQ(edit(u"[a]", u"a", u"k", u"1", LineEnd::Lf), u"[a]\nk=1\n");
  EXPECT_EQ(edit(u"[a]\r\n", u"b", u"k", u"1", LineEnd::Lf), u"[a]\r\n[b]\r\nk=1\r\n");
}

struct Refused {
  const char* name;
  Text section;
  Text key;
  std::optional<Text> value;
};

const Refused kRefused[] = {
    {"empty section", u"", u"k", u"v"},
    {"blank section", u" \t", u"k", u"v"},
    {"empty key", u"a", u"", u"v"},
    {"blank key on removal", u"a", u"  ", std::nullopt},
    {"key with =", u"a", u"k=x", u"v"},
    {"key like a comment", u"a", u";k", u"v"},
    {"key like a header", u"a", u"[k]", u"v"},
    {"line break in the value", u"a", u"k", u"1\n[b]"},
    {"carriage return in the value", u"a", u"k", u"1\r"},
    {"line break in the section", u"a\nb", u"k", u"v"},
    {"line break in the key", u"a", u"k\r\nj", u"v"},
};

TEST(IniTextTest, EntriesThatCannotBeStored) {
  for (const Refused& c : kRefused) {
    SCOPED_TRACE(c.name);
    const std::optional<TextView> value =
        c.value ? std::optional<TextView>(*c.value) : std::nullopt;
    EXPECT_FALSE(can_store(c.section, c.key, value));
    EXPECT_EQ(edit(u"[a]\nk=1\n", c.section, c.key, value), std::nullopt);
  }
  EXPECT_TRUE(can_store(u"a]b/Options", u"1cboOpt", u"quoted \"value\""));
}

}  // namespace
}  // namespace zelkora::platform::ini

namespace zelkora::platform::ini {
namespace {

TEST(QuotedIfNeeded, EveryValueReadsBackExactly) {
  const TextView values[] = {u" .", u"、 ", u"\"a\"", u"'b'", u"plain", u"", u"\t",
                             u"\"", u"a\"", u" \"x\" ", u"中 文"};
  for (TextView v : values) {
    const std::optional<Text> content = edit(u"", u"Options", u"8cboOpt", quoted_if_needed(v));
    ASSERT_TRUE(content.has_value());
    EXPECT_EQ(find_value(*content, u"Options", u"8cboOpt"), std::optional<TextView>(v))
        << to_utf8(v);
  }
  EXPECT_EQ(quoted_if_needed(u"plain"), u"plain");
}

}  // namespace
}  // namespace zelkora::platform::ini
