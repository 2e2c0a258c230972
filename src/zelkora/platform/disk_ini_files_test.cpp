// Tests of the INI files on disk, on a real folder.
#include "zelkora/platform/disk_ini_files.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora::platform {
namespace {

namespace fs = std::filesystem;

class DiskIniFilesTest : public ::testing::Test {
 protected:
  Text file(const char* name) const { return folder_.text(name); }
  void put(const char* name, const std::string& bytes) const { folder_.put(name, bytes); }
  std::string bytes_of(const char* name) const { return folder_.content(name); }
  std::vector<std::string> names_in_folder() const { return folder_.names(); }
  Text read(TextView section, TextView key, const char* name, TextView default_value = u"") {
    return ini_.read(section, key, default_value, file(name));
  }

  test_support::ScratchFolder folder_{"zk-ini"};
  DiskIniFiles ini_;
};

// In GBK: "[结构]" and "名称=4<U+E002>20", a steel grade in a user-defined area.
const std::string kGbkSection = "[\xBD\xE1\xB9\xB9]\r\n";
const std::string kGbkKey = "\xC3\xFB\xB3\xC6=4\xAA\xA3" + std::string("20\r\n");

// A long value is cut to the read buffer, never within a character.
TEST_F(DiskIniFilesTest, ReadsGbkFile) {
  std::string long_value = "ab";
  for (int i = 0; i < 300; ++i) long_value += "\xBD\xE1";  // 结
  put("zk.ini", "[Options]\r\nLang = 2 \r\nPath=\"/opt/zk\"\r\nLong=" + long_value + "\r\n" +
                    kGbkSection + kGbkKey);
  EXPECT_EQ(read(u"OPTIONS", u"lANG", "zk.ini"), u"2");
  EXPECT_EQ(read(u"options", u"path", "zk.ini"), u"/opt/zk");
  EXPECT_EQ(read(u"Options", u"Long", "zk.ini"), u"ab" + Text(254, u'结'));
  EXPECT_EQ(read(u"结构", u"名称", "zk.ini"), u"4\uE00220");
  EXPECT_EQ(read(u"Options", u"None", "zk.ini", u" d  "), u" d");
}

// A file is parsed once; what others change is seen after a look at its
// stamp (within 50 ms), also a change of the same size in the same tick of
// the clock (within half a second); what the library writes at once.
TEST_F(DiskIniFilesTest, KeptFilesFollowEveryChange) {
  using namespace std::chrono_literals;
  put("zk.ini", "[a]\r\nk=1\r\n");
  EXPECT_EQ(read(u"a", u"k", "zk.ini"), u"1");
  put("zk.ini", "[a]\r\nk=22\r\n");
  std::this_thread::sleep_for(60ms);
  EXPECT_EQ(read(u"a", u"k", "zk.ini"), u"22");
  put("zk.ini", "[a]\r\nk=33\r\n");  // the same size, maybe the same tick
  std::this_thread::sleep_for(600ms);
  EXPECT_EQ(read(u"a", u"k", "zk.ini"), u"33");
  ASSERT_TRUE(ini_.write(u"a", u"k", u"4", file("zk.ini")));
  EXPECT_EQ(read(u"a", u"k", "zk.ini"), u"4");
  fs::remove(folder_ / "zk.ini");
  std::this_thread::sleep_for(60ms);
  EXPECT_EQ(read(u"a", u"k", "zk.ini", u"gone"), u"gone");
}

TEST_F(DiskIniFilesTest, MissingOrUnreadableFileGivesDefault) {
  EXPECT_EQ(read(u"a", u"k", "missing.ini", u"def "), u"def");
  fs::create_directory(folder_ / "folder.ini");
  EXPECT_EQ(read(u"a", u"k", "folder.ini", u"def"), u"def");
  EXPECT_EQ(ini_.read(u"a", u"k", u"def", u""), u"def");
}

// Chinese folder and file names work whatever the system's code page.
TEST_F(DiskIniFilesTest, WritesGbkAndReadsBack) {
  fs::create_directory(folder_ / "资料 一");
  const char* name = "资料 一/新.ini";
  ASSERT_TRUE(ini_.write(u"结构", u"名称", u"4\uE00220", file(name)));
  EXPECT_EQ(bytes_of(name), kGbkSection + kGbkKey);
  EXPECT_EQ(read(u"结构", u"名称", name), u"4\uE00220");

  ASSERT_TRUE(ini_.write(u"结构", u"名称", u"\u20AC", file(name)));
  ASSERT_TRUE(ini_.write(u"结构", u"k", u"\uAC00", file(name)));  // no form: "?"
  EXPECT_EQ(bytes_of(name), kGbkSection + "\xC3\xFB\xB3\xC6=\x80\r\nk=?\r\n");
  EXPECT_EQ(folder_.names(), std::vector<std::string>{"资料 一"});
}

TEST_F(DiskIniFilesTest, EditKeepsOtherLinesAndLineEnds) {
  put("lf.ini", "; keep me  \n[a]\nk = 1\n\n[b]\nj=2\n");
  ASSERT_TRUE(ini_.write(u"A", u"K", u"9", file("lf.ini")));
  ASSERT_TRUE(ini_.write(u"b", u"n", u"3", file("lf.ini")));
  ASSERT_TRUE(ini_.write(u"b", u"j", std::nullopt, file("lf.ini")));
  EXPECT_EQ(bytes_of("lf.ini"), "; keep me  \n[a]\nk = 9\n\n[b]\nn=3\n");
  // Removing from a missing file creates nothing.
  EXPECT_TRUE(ini_.write(u"a", u"k", std::nullopt, file("missing.ini")));
  EXPECT_FALSE(fs::exists(folder_ / "missing.ini"));
}

TEST_F(DiskIniFilesTest, DamagedBytesDoNotStopReadingOrWriting) {
  const std::string damaged = "[a]\r\nbad=\xFF\x81\r\nk\xB5=1\r\nok=yes\r\n\x81";
  put("bad.ini", damaged);
  EXPECT_EQ(read(u"a", u"bad", "bad.ini"), u"\uFFFD\uFFFD");
  EXPECT_EQ(read(u"a", u"k\uFFFD", "bad.ini"), u"1");
  EXPECT_EQ(read(u"a", u"ok", "bad.ini"), u"yes");
  // Setting a value that is already there writes nothing; a real change
  // writes the damaged bytes back as "?".
  ASSERT_TRUE(ini_.write(u"a", u"ok", u"yes", file("bad.ini")));
  EXPECT_EQ(bytes_of("bad.ini"), damaged);
  ASSERT_TRUE(ini_.write(u"a", u"ok", u"no", file("bad.ini")));
  EXPECT_EQ(bytes_of("bad.ini"), "[a]\r\nbad=??\r\nk?=1\r\nok=no\r\n?");
}

TEST_F(DiskIniFilesTest, UnwritablePathsFailAndLeaveNothing) {
  fs::create_directory(folder_ / "folder.ini");
  put("plain", "x");
  for (const char* name : {"no/such/folder/zk.ini", "folder.ini", "plain/zk.ini"}) {
    SCOPED_TRACE(name);
    EXPECT_FALSE(ini_.write(u"a", u"k", u"1", file(name)));
  }
  EXPECT_FALSE(ini_.write(u"a", u"k", u"1", u""));
  EXPECT_FALSE(ini_.write(u"a", u"k", u"1\r\n[b]", file("zk.ini")));
  EXPECT_TRUE(fs::is_directory(folder_ / "folder.ini"));
  EXPECT_EQ(names_in_folder(), (std::vector<std::string>{"folder.ini", "plain"}));
}

}  // namespace
}  // namespace zelkora::platform
