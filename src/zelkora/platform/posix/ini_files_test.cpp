// Tests of the POSIX INI files on a real folder.
#include "zelkora/platform/posix/ini_files.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace zelkora::platform::posix {
namespace {

namespace fs = std::filesystem;

class PosixIniFilesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "zk-ini-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
  }
  void TearDown() override { fs::remove_all(folder_); }

  Text file(const char* name) const { return from_utf8((folder_ / name).string()); }
  void put(const char* name, const std::string& bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
  }
  std::string bytes_of(const char* name) const {
    std::ifstream in(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  std::vector<std::string> names_in_folder() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }
  Text read(TextView section, TextView key, const char* name, TextView default_value = u"") {
    return ini_.read(section, key, default_value, file(name));
  }

  fs::path folder_;
  PosixIniFiles ini_;
};

// In GBK: "[结构]" and "名称=4<U+E002>20", a steel grade in a user-defined area.
const std::string kGbkSection = "[\xBD\xE1\xB9\xB9]\r\n";
const std::string kGbkKey = "\xC3\xFB\xB3\xC6=4\xAA\xA3" + std::string("20\r\n");

// A long value is cut to the read buffer, never within a character.
TEST_F(PosixIniFilesTest, ReadsGbkFile) {
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

TEST_F(PosixIniFilesTest, MissingOrUnreadableFileGivesDefault) {
  EXPECT_EQ(read(u"a", u"k", "missing.ini", u"def "), u"def");
  fs::create_directory(folder_ / "folder.ini");
  EXPECT_EQ(read(u"a", u"k", "folder.ini", u"def"), u"def");
  EXPECT_EQ(ini_.read(u"a", u"k", u"def", u""), u"def");
}

TEST_F(PosixIniFilesTest, WritesGbkAndReadsBack) {
  ASSERT_TRUE(ini_.write(u"结构", u"名称", u"4\uE00220", file("new.ini")));
  EXPECT_EQ(bytes_of("new.ini"), kGbkSection + kGbkKey);
  EXPECT_EQ(read(u"结构", u"名称", "new.ini"), u"4\uE00220");

  ASSERT_TRUE(ini_.write(u"结构", u"名称", u"\u20AC", file("new.ini")));
  ASSERT_TRUE(ini_.write(u"结构", u"k", u"\uAC00", file("new.ini")));  // no form: "?"
  EXPECT_EQ(bytes_of("new.ini"), kGbkSection + "\xC3\xFB\xB3\xC6=\x80\r\nk=?\r\n");
}

TEST_F(PosixIniFilesTest, EditKeepsOtherLinesAndLineEnds) {
  put("lf.ini", "; keep me  \n[a]\nk = 1\n\n[b]\nj=2\n");
  ASSERT_TRUE(ini_.write(u"A", u"K", u"9", file("lf.ini")));
  ASSERT_TRUE(ini_.write(u"b", u"n", u"3", file("lf.ini")));
  ASSERT_TRUE(ini_.write(u"b", u"j", std::nullopt, file("lf.ini")));
  EXPECT_EQ(bytes_of("lf.ini"), "; keep me  \n[a]\nk = 9\n\n[b]\nn=3\n");
  // Removing from a missing file creates nothing.
  EXPECT_TRUE(ini_.write(u"a", u"k", std::nullopt, file("missing.ini")));
  EXPECT_FALSE(fs::exists(folder_ / "missing.ini"));
}

TEST_F(PosixIniFilesTest, DamagedBytesDoNotStopReadingOrWriting) {
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

TEST_F(PosixIniFilesTest, UnwritablePathsFailAndLeaveNothing) {
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

TEST_F(PosixIniFilesTest, FailedWriteKeepsTheOldFile) {
  const std::string old = "[a]\r\nk=old\r\n";
  put("zk.ini", old);
  // A file size limit, in a child process, makes the write fail half-way.
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{64, 64};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    PosixIniFiles ini;
    std::_Exit(ini.write(u"a", u"k", Text(1000, u'x'), file("zk.ini")) ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0) << "the write should have failed";
  EXPECT_EQ(bytes_of("zk.ini"), old);
  EXPECT_EQ(names_in_folder(), std::vector<std::string>{"zk.ini"});
}

TEST_F(PosixIniFilesTest, WriteKeepsPermissionsAndFollowsLinks) {
  const fs::perms perms = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
  put("real.ini", "[a]\nk=1\n");
  fs::permissions(folder_ / "real.ini", perms);
  fs::create_symlink(folder_ / "real.ini", folder_ / "link.ini");
  ASSERT_TRUE(ini_.write(u"a", u"k", u"2", file("link.ini")));
  EXPECT_TRUE(fs::is_symlink(folder_ / "link.ini"));
  EXPECT_EQ(bytes_of("real.ini"), "[a]\nk=2\n");
  EXPECT_EQ(fs::status(folder_ / "real.ini").permissions() & fs::perms::all, perms);
}

}  // namespace
}  // namespace zelkora::platform::posix
