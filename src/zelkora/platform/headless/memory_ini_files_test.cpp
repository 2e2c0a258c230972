// Tests of the in-memory INI files.
#include "zelkora/platform/headless/memory_ini_files.h"

#include <gtest/gtest.h>

namespace zelkora::platform::headless {
namespace {

TEST(MemoryIniFilesTest, ReadsWhatWasPut) {
  MemoryIniFiles ini;
  ini.put(u"ZK.INI", u"[Options]\r\nLang = \"2\" \r\n");
  EXPECT_EQ(ini.read(u"options", u"LANG", u"0", u"ZK.INI"), u"2");
  EXPECT_EQ(ini.read(u"options", u"LANG", u"0 ", u"zk.ini"), u"0");  // names of files are exact
  EXPECT_EQ(ini.read(u"options", u"none", u"0", u"ZK.INI"), u"0");
  EXPECT_EQ(ini.read(u"a", u"k", u"", u"ZK.INI"), u"");
  EXPECT_EQ(ini.read(u"a", u"k", Text(600, u'x'), u"ZK.INI"), Text(511, u'x'));
}

TEST(MemoryIniFilesTest, WritesLikeAFileOnDisk) {
  MemoryIniFiles ini;
  ASSERT_TRUE(ini.write(u"结构", u"名称", u"4\uE00220", u"a.ini"));
  ASSERT_TRUE(ini.write(u"结构", u"k", u"\uAC00\u20AC", u"a.ini"));
  EXPECT_EQ(ini.content(u"a.ini"), u"[结构]\r\n名称=4\uE00220\r\nk=?\u20AC\r\n");

  ini.put(u"b.ini", u"[a]\nk=1\n; note\n");
  ASSERT_TRUE(ini.write(u"A", u"K", std::nullopt, u"b.ini"));
  EXPECT_EQ(ini.content(u"b.ini"), u"[a]\n; note\n");
}

TEST(MemoryIniFilesTest, MissingFiles) {
  MemoryIniFiles ini;
  EXPECT_TRUE(ini.write(u"a", u"k", std::nullopt, u"none.ini"));
  EXPECT_EQ(ini.content(u"none.ini"), std::nullopt);
  EXPECT_FALSE(ini.write(u"a", u"k", u"1", u""));
  EXPECT_FALSE(ini.write(u"a", u"k=", u"1", u"x.ini"));
  EXPECT_EQ(ini.content(u"x.ini"), std::nullopt);
  ini.put(u"x.ini", u"");
  EXPECT_TRUE(ini.remove(u"x.ini"));
  EXPECT_FALSE(ini.remove(u"x.ini"));
}

}  // namespace
}  // namespace zelkora::platform::headless
