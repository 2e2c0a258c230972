// Tests of the private-profile rules.
#include "zelkora/platform/ini_text.h"

#include <gtest/gtest.h>

#include <optional>

namespace zelkora::platform::ini {
namespace {

std::optional<Text> found(TextView content, TextView section, TextView key) {
  const std::optional<TextView> value = find_value(content, section, key);
  return value ? std::optional<Text>(*value) : std::nullopt;
}

const Text kSample =
    u"; suite settings\r\ntop=before any section\r\n"
    u"[Options]\r\nLang = 2 \r\n"
    u"Path=\t\"C:\\Zelkora\\\" \r\nSingle='x y'\r\nMixed=\"abc'\r\nOnlyQuote=\"\r\n"
    u";Hidden=1\r\n  ; Indented=1\r\nno equals here\r\n=no key\r\n"
    u"Lang=3\r\nEmpty=\r\nEq=a=b\r\n"
    u"[ spaced ]  \r\nk=v\r\n"
    u"\t[Options]\r\nLate=1\r\n"
    u"[Ünï]\r\nÄBC=1\r\n[broken\r\nafter=1\r\n"
    u"[last]\ntail=end";

TEST(IniTextTest, FindValue) {
  const struct {
    const char* name;
    Text section;
    Text key;
    std::optional<Text> value;
  } cases[] = {
      {"trimmed value, first of two", u"Options", u"Lang", u"2"},
      {"names in other case and with blanks", u" OPTIONS\t", u" lang ", u"2"},
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
      {"latin-1 case", u"ünÏ", u"äbc", u"1"},
      {"header without ] is ignored", u"Ünï", u"after", u"1"},
      {"LF line and no final line end", u"LAST", u"tail", u"end"},
      {"key before any section", u"", u"top", std::nullopt},
      {"missing section", u"Nope", u"Lang", std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(found(kSample, c.section, c.key), c.value);
  }
  EXPECT_EQ(found(u"", u"a", u"k"), std::nullopt);
  EXPECT_EQ(found(u"\uFEFF[a]\nk=1", u"a", u"k"), u"1");
  EXPECT_EQ(found(u"[a]\r\n\r\nk=1\r\n", u"a", u"k"), u"1");
  EXPECT_EQ(found(u"[a]\rk=1\n", u"a", u"k"), std::nullopt);  // a lone CR ends no line
}

// The value or the default without trailing blanks, cut to the 511 bytes of
// code page 936 that the read buffer holds, never within a character.
TEST(IniTextTest, ReadProfileString) {
  const Text kContent = u"[s]\r\nk= v \r\n";
  EXPECT_EQ(read_profile_string(kContent, u"S", u"K", u"def"), u"v");
  EXPECT_EQ(read_profile_string(kContent, u"s", u"x", u"  def  "), u"  def");
  EXPECT_EQ(read_profile_string(u"[s]\nk=" + Text(600, u'a'), u"s", u"k", u""), Text(511, u'a'));
  const Text chinese(300, u'结');
  EXPECT_EQ(read_profile_string(u"[s]\nk=a" + chinese, u"s", u"k", u""), u"a" + Text(255, u'结'));
  EXPECT_EQ(read_profile_string(u"[s]\nk=ab" + chinese, u"s", u"k", u""), u"ab" + Text(254, u'结'));
  EXPECT_EQ(read_profile_string(u"", u"s", u"k", chinese), Text(255, u'结'));
}

TEST(IniTextTest, Edit) {
  const struct {
    const char* name;
    Text content;
    Text section;
    Text key;
    std::optional<Text> value;
    Text expected;
  } cases[] = {
      {"replace keeps spelling and blanks", u"[Options]\r\nLang = 2 \r\nx=1\r\n", u"OPTIONS",
       u"lang", u"5", u"[Options]\r\nLang = 5\r\nx=1\r\n"},
      {"replace a quoted value", u"[a]\nk=\"x\"\n", u"a", u"k", u"y", u"[a]\nk=y\n"},
      {"replace on a last line without line end", u"[a]\nk=1", u"a", u"k", u"22", u"[a]\nk=22"},
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
      {"a key before the first section is not the section's", u"k=0\r\n[a]\r\n", u"a", u"k", u"1",
       u"k=0\r\n[a]\r\nk=1\r\n"},
      {"new section in an LF file", u"[a]\nk=1\n", u"b", u"n", u"2", u"[a]\nk=1\n[b]\nn=2\n"},
      {"new section after a last line without line end", u"[a]\r\nk=1", u" b ", u" n ", u"2",
       u"[a]\r\nk=1\r\n[b]\r\nn=2\r\n"},
      {"new file", u"", u"结构", u"名称", u"钢筋", u"[结构]\r\n名称=钢筋\r\n"},
      {"file of a byte order mark", u"\uFEFF", u"a", u"k", u"1", u"\uFEFF[a]\r\nk=1\r\n"},
      {"remove", u"[a]\r\nk=1\r\nj=2\r\n", u"A", u"K", std::nullopt, u"[a]\r\nj=2\r\n"},
      {"remove every line of the key", u"[a]\nk=1\nK = 2\n[b]\nk=3\n", u"a", u"k", std::nullopt,
       u"[a]\n[b]\nk=3\n"},
      {"remove a last line without line end", u"[a]\r\nj=2\r\nk=1", u"a", u"k", std::nullopt,
       u"[a]\r\nj=2\r\n"},
      {"remove in a missing section", u"[a]\nk=2\n", u"b", u"k", std::nullopt, u"[a]\nk=2\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const std::optional<Text> out = edit(c.content, c.section, c.key, c.value);
    ASSERT_TRUE(out.has_value());
    EXPECT_EQ(*out, c.expected);
    EXPECT_EQ(found(*out, c.section, c.key), c.value);  // what was written reads back
  }
  // The new line end is used only for content without one.
  EXPECT_EQ(edit(u"", u"a", u"k", u"1", LineEnd::Lf), u"[a]\nk=1\n");
  EXPECT_EQ(edit(u"[a]", u"a", u"k", u"1", LineEnd::Lf), u"[a]\nk=1\n");
  EXPECT_EQ(edit(u"[a]\r\n", u"b", u"k", u"1", LineEnd::Lf), u"[a]\r\n[b]\r\nk=1\r\n");
}

// Blank names, a key that reads as something else, and line breaks anywhere.
TEST(IniTextTest, EntriesThatCannotBeStored) {
  const struct {
    Text section;
    Text key;
    std::optional<TextView> value;
  } cases[] = {
      {u" \t", u"k", u"v"}, {u"a", u"  ", std::nullopt}, {u"a", u"k=x", u"v"},
      {u"a", u";k", u"v"},  {u"a", u"[k]", u"v"},        {u"a", u"k", u"1\n[b]"},
      {u"a", u"k", u"1\r"}, {u"a\nb", u"k", u"v"},       {u"a", u"k\r\nj", u"v"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.section + u"|" + c.key + u"|" + Text(c.value.value_or(u"-"))));
    EXPECT_FALSE(can_store(c.section, c.key, c.value));
    EXPECT_EQ(edit(u"[a]\nk=1\n", c.section, c.key, c.value), std::nullopt);
  }
  EXPECT_TRUE(can_store(u"a]b/Options", u"1cboOpt", u"quoted \"value\""));
}

TEST(IniTextTest, QuotedIfNeededReadsBackExactly) {
  const TextView values[] = {u" .", u"、 ", u"\"a\"", u"'b'",     u"plain", u"",
                             u"\t", u"\"",  u"a\"",   u" \"x\" ", u"中 文"};
  for (TextView v : values) {
    const std::optional<Text> content = edit(u"", u"Options", u"8cboOpt", quoted_if_needed(v));
    ASSERT_TRUE(content.has_value());
    EXPECT_EQ(found(*content, u"Options", u"8cboOpt"), Text(v)) << to_utf8(v);
  }
  EXPECT_EQ(quoted_if_needed(u"plain"), u"plain");
}

}  // namespace
}  // namespace zelkora::platform::ini
