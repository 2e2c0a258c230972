#include "zelkora/platform/posix/ini_files.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace zelkora::platform {
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
    return names;
  }

  fs::path folder_;
  PosixIniFiles ini_;
};

// GBK on disk: "; 注释", "[结构]", "名称=4<U+E002>20".
const std::string kFile =
    "; \xD7\xA2\xCA\xCD\r\n"
    "[Options]\r\n"
    "Lang = 2 \r\n"
    "Path=\"/opt/zk\"\r\n"
    ";Hidden=1\r\n"
    "Lang=3\r\n"
    "[options]\r\n"
    "Late=1\r\n"
    "[\xBD\xE1\xB9\xB9]\r\n"
    "\xC3\xFB\xB3\xC6=4\xAA\xA3"
    "20\r\n";

struct Read {
  const char* name;
  Text section;
  Text key;
  Text default_value;
  Text expected;
};

const Read kReads[] = {
    {"trimmed", u"Options", u"Lang", u"x", u"2"},
    {"case", u"OPTIONS", u"lANG", u"x", u"2"},
    {"quotes", u"options", u"path", u"x", u"/opt/zk"},
    {"comment", u"Options", u"Hidden", u"x", u"x"},
    {"second section of the name", u"Options", u"Late", u"x", u"x"},
    {"chinese and a steel grade", u"结构", u"名称", u"x", u"4\uE00220"},
    {"missing key, default loses trailing blanks", u"Options", u"None", u" d  ", u" d"},
    {"missing section", u"None", u"Lang", u"", u""},
};

TEST_F(PosixIniFilesTest, ReadsGbkFile) {
  put("zk.ini", kFile);
  for (const Read& r : kReads) {
    SCOPED_TRACE(r.name);
    EXPECT_EQ(ini_.read(r.section, r.key, r.default_value, file("zk.ini")), r.expected);
  }
}

TEST_F(PosixIniFilesTest, MissingOrUnreadableFileGivesDefault) {
  EXPECT_EQ(ini_.read(u"a", u"k", u"def ", file("missing.ini")), u"def");
  fs::create_directory(folder_ / "folder.ini");
  EXPECT_EQ(ini_.read(u"a", u"k", u"def", file("folder.ini")), u"def");
  EXPECT_EQ(ini_.read(u"a", u"k", u"def", u""), u"def");
}

TEST_F(PosixIniFilesTest, ValueIsCutToTheReadBuffer) {
  std::string odd = "[a]\r\nk=a";
  std::string even = "[a]\r\nk=ab";
  for (int i = 0; i < 300; ++i) {
    odd += "\xBD\xE1";  // 结
    even += "\xBD\xE1";
  }
  put("odd.ini", odd);
  put("even.ini", even);
  EXPECT_EQ(ini_.read(u"a", u"k", u"", file("odd.ini")), u"a" + Text(255, u'结'));
  EXPECT_EQ(ini_.read(u"a", u"k", u"", file("even.ini")), u"ab" + Text(254, u'结'));
}

TEST_F(PosixIniFilesTest, WritesGbkAndReadsBack) {
  ASSERT_TRUE(ini_.write(u"结构", u"名称", u"4\uE00220", file("new.ini")));
  EXPECT_EQ(bytes_of("new.ini"),
            "[\xBD\xE1\xB9\xB9]\r\n\xC3\xFB\xB3\xC6=4\xAA\xA3"
            "20\r\n");
  EXPECT_EQ(ini_.read(u"结构", u"名称", u"", file("new.ini")), u"4\uE00220");

  ASSERT_TRUE(ini_.write(u"结构", u"名称", u"\u20AC", file("new.ini")));
  ASSERT_TRUE(ini_.write(u"结构", u"k", u"\uAC00", file("new.ini")));  // no form: "?"
  EXPECT_EQ(bytes_of("new.ini"), "[\xBD\xE1\xB9\xB9]\r\n\xC3\xFB\xB3\xC6=\x80\r\nk=?\r\n");
}

TEST_F(PosixIniFilesTest, EditKeepsOtherLinesAndLineEnds) {
  put("lf.ini", "; keep me  \n[a]\nk = 1\n\n[b]\nj=2\n");
  ASSERT_TRUE(ini_.write(u"A", u"K", u"9", file("lf.ini")));
  ASSERT_TRUE(ini_.write(u"b", u"n", u"3", file("lf.ini")));
  ASSERT_TRUE(ini_.write(u"b", u"j", std::nullopt, file("lf.ini")));
  EXPECT_EQ(bytes_of("lf.ini"), "; keep me  \n[a]\nk = 9\n\n[b]\nn=3\n");
}

TEST_F(PosixIniFilesTest, RemovingFromMissingFileCreatesNothing) {
  EXPECT_TRUE(ini_.write(u"a", u"k", std::nullopt, file("missing.ini")));
  EXPECT_FALSE(fs::exists(folder_ / "missing.ini"));
}

TEST_F(PosixIniFilesTest, DamagedBytesDoNotStopReadingOrWriting) {
  put("bad.ini", "[a]\r\nbad=\xFF\x81\r\nk\xB5=1\r\nok=yes\r\n\x81");
  EXPECT_EQ(ini_.read(u"a", u"bad", u"", file("bad.ini")), u"\uFFFD\uFFFD");
  EXPECT_EQ(ini_.read(u"a", u"k\uFFFD", u"", file("bad.ini")), u"1");
  EXPECT_EQ(ini_.read(u"a", u"ok", u"", file("bad.ini")), u"yes");
  // Setting a value that is already there writes nothing.
  ASSERT_TRUE(ini_.write(u"a", u"ok", u"yes", file("bad.ini")));
  EXPECT_EQ(bytes_of("bad.ini"), "[a]\r\nbad=\xFF\x81\r\nk\xB5=1\r\nok=yes\r\n\x81");
  // A real change writes the damaged bytes back as "?".
  ASSERT_TRUE(ini_.write(u"a", u"ok", u"no", file("bad.ini")));
  EXPECT_EQ(bytes_of("bad.ini"), "[a]\r\nbad=??\r\nk?=1\r\nok=no\r\n?");
}

TEST_F(PosixIniFilesTest, UnwritablePathsFailAndLeaveNothing) {
  EXPECT_FALSE(ini_.write(u"a", u"k", u"1", file("no/such/folder/zk.ini")));
  EXPECT_FALSE(fs::exists(folder_ / "no"));

  fs::create_directory(folder_ / "folder.ini");
  EXPECT_FALSE(ini_.write(u"a", u"k", u"1", file("folder.ini")));
  EXPECT_TRUE(fs::is_directory(folder_ / "folder.ini"));

  put("plain", "x");
  EXPECT_FALSE(ini_.write(u"a", u"k", u"1", file("plain/zk.ini")));
  EXPECT_FALSE(ini_.write(u"a", u"k", u"1", u""));
  EXPECT_FALSE(ini_.write(u"a", u"k", u"1\r\n[b]", file("zk.ini")));
  std::vector<std::string> names = names_in_folder();
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"folder.ini", "plain"}));
}

TEST_F(PosixIniFilesTest, FailedWriteKeepsTheOldFile) {
  const std::string old = "[a]\r\nk=old\r\n";
  put("zk.ini", old);
  // A file size limit makes the write fail half-way through, in a child
  // process so the limit stays there.
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{64, 64};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    PosixIniFiles ini;
    const bool written = ini.write(u"a", u"k", Text(1000, u'x'), file("zk.ini"));
    std::_Exit(written ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0) << "the write should have failed";
  EXPECT_EQ(bytes_of("zk.ini"), old);
  EXPECT_EQ(names_in_folder(), std::vector<std::string>{"zk.ini"});
}

TEST_F(PosixIniFilesTest, WriteKeepsPermissionsAndFollowsLinks) {
  put("real.ini", "[a]\nk=1\n");
  fs::permissions(folder_ / "real.ini",
                  fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  fs::create_symlink(folder_ / "real.ini", folder_ / "link.ini");
  ASSERT_TRUE(ini_.write(u"a", u"k", u"2", file("link.ini")));
  EXPECT_TRUE(fs::is_symlink(folder_ / "link.ini"));
  EXPECT_EQ(bytes_of("real.ini"), "[a]\nk=2\n");
  EXPECT_EQ(fs::status(folder_ / "real.ini").permissions() & fs::perms::all,
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

}  // namespace
}  // namespace zelkora::platform
