// Tests of the programs' history in the suite's history file.
#include "zelkora/platform/ini_history.h"

#include <gtest/gtest.h>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/disk_ini_files.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora::platform {
namespace {

Text numbered(int n) {
  const std::string digits = std::to_string(n);
  return u"D:\\工程\\" + Text(digits.begin(), digits.end()) + u".zks";
}

TEST(History, SamePathAsEachSystemComparesThem) {
  const struct {
    TextView a, b;
    bool exact, ignoring_case;
  } cases[] = {
      {u"D:\\a\\B.zks", u"D:\\a\\B.zks", true, true},
      {u"D:\\a\\B.zks", u"d:\\A\\b.ZKS", false, true},
      {u"D:\\a\\B.zks", u"D:/a/B.zks", false, true},
      {u"/home/a.zks", u"/home/A.zks", false, true},
      {u"D:\\工程\\梁.zks", u"D:\\工程\\柱.zks", false, false},
      {u"a.zks", u"a.zks ", false, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(same_path(c.a, c.b, PathCase::kExact), c.exact) << to_utf8(c.b);
    EXPECT_EQ(same_path(c.a, c.b, PathCase::kIgnoreCase), c.ignoring_case) << to_utf8(c.b);
  }
}

TEST(History, NewestFirstNoRepeatsAtMostTen) {
  auto ini = std::make_shared<headless::MemoryIniFiles>();
  IniHistory history(ini, u"ZK_History.INI", PathCase::kIgnoreCase);
  for (int n = 1; n <= 12; ++n) ASSERT_TRUE(history.add(u"梁配筋", numbered(n)));
  std::vector<Text> expected;
  for (int n = 12; n >= 3; --n) expected.push_back(numbered(n));
  EXPECT_EQ(history.files(u"梁配筋"), expected);

  // Opened again, in another spelling: to the top, once, in the new spelling.
  ASSERT_TRUE(history.add(u"梁配筋", u"d:/工程/7.ZKS"));
  const std::vector<Text> now = history.files(u"梁配筋");
  ASSERT_EQ(now.size(), 10u);
  EXPECT_EQ(now[0], u"d:/工程/7.ZKS");
  EXPECT_EQ(
      std::count_if(now.begin(), now.end(),
                    [](const Text& f) { return same_path(f, numbered(7), PathCase::kIgnoreCase); }),
      1);
  EXPECT_TRUE(history.files(u"柱配筋").empty()) << "each program has its own list";

  // What cannot be kept is refused and the list stays.
  const Text refused[] = {u"",
                          u"  ",
                          u"a\r\nb.zks",
                          u" D:\\a.zks",
                          u"\"D:\\a.zks\"",
                          Text(256, u'长'),
                          Text(512, u'a'),
                          u"D:\\😀.zks"};
  for (const Text& file : refused) EXPECT_FALSE(history.add(u"梁配筋", file)) << to_utf8(file);
  EXPECT_FALSE(history.add(u"", u"D:\\a.zks"));
  EXPECT_FALSE(history.add(u"[梁]", u"D:\\a.zks"));
  EXPECT_EQ(history.files(u"梁配筋"), now);
  // The longest that reads back: 511 bytes in code page 936.
  for (const Text& longest : {Text(255, u'长') + u"a", Text(511, u'a')}) {
    ASSERT_TRUE(history.add(u"梁配筋", longest));
    EXPECT_EQ(history.files(u"梁配筋").front(), longest);
  }
}

TEST(History, HandEditedFilesReadClean) {
  auto ini = std::make_shared<headless::MemoryIniFiles>();
  ini->put(u"ZK_History.INI",
           u"[梁配筋]\r\n3=C:\\b.zks\r\n1=C:\\a.zks\r\n2=\r\n4=c:\\A.ZKS\r\n12=C:\\z.zks\r\n");
  IniHistory history(ini, u"ZK_History.INI", PathCase::kIgnoreCase);
  EXPECT_EQ(history.files(u"梁配筋"), (std::vector<Text>{u"C:\\a.zks", u"C:\\b.zks"}));
  ASSERT_TRUE(history.add(u"梁配筋", u"C:\\c.zks"));
  EXPECT_EQ(*ini->content(u"ZK_History.INI"),
            u"[梁配筋]\r\n3=C:\\b.zks\r\n1=C:\\c.zks\r\n2=C:\\a.zks\r\n12=C:\\z.zks\r\n");
}

TEST(History, OnDiskInCodePage936AndThroughTheSuite) {
  test_support::ScratchFolder dir("zk-history");
  auto ini = std::make_shared<DiskIniFiles>();
  IniHistory history(ini, dir.text("ZK_History.INI"), PathCase::kExact);
  ASSERT_TRUE(history.add(u"梁配筋", u"/工程/梁.zks"));
  EXPECT_EQ(dir.content("ZK_History.INI"), codepage::to_ansi(u"[梁配筋]\r\n1=/工程/梁.zks\r\n"));

  // clsCharacter reaches the suite's history; quietly nothing without one.
  auto p = Platform::headless();
  clsCharacter chr(p);
  EXPECT_TRUE(chr.bHistoryAdd(u"梁配筋", u"/a.zks"));
  EXPECT_TRUE(chr.bHistoryAdd(u"梁配筋", u"/b.zks"));
  EXPECT_EQ(chr.tHistoryFiles(u"梁配筋"), (std::vector<Text>{u"/b.zks", u"/a.zks"}));
  EXPECT_EQ(p->ini->read(u"梁配筋", u"1", u"", u"ZK_History.INI"), u"/b.zks");
  p->suite = nullptr;
  clsCharacter without(p);
  EXPECT_FALSE(without.bHistoryAdd(u"梁配筋", u"/a.zks"));
  EXPECT_TRUE(without.tHistoryFiles(u"梁配筋").empty());
}

}  // namespace
}  // namespace zelkora::platform
