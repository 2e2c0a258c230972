// Tests of the POSIX files on a real folder: what only a POSIX system has
// (permissions, symbolic links, inodes) and the failures a test can cause
// there for real (a process killed mid-way, a file size limit that fails a
// write half-way).
#include "zelkora/platform/posix/data_files.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/record_file.h"
#include "zelkora/platform/disk_ini_files.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora::platform::posix {
namespace {

namespace fs = std::filesystem;

std::string record(int32_t id, TextView member) {
  std::string out;
  datafile::append_record(out, id, member);
  return out;
}

// Runs `body` in a child process after `prepare`; the child's exit status.
// With `kill_when_ready`, the child is killed once `body` writes to the pipe
// it is given.
int in_child(void (*prepare)(), const std::function<int(int ready)>& body, bool kill_when_ready) {
  int ready[2];
  EXPECT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(ready[0]);
    prepare();
    std::_Exit(body(ready[1]));
  }
  ::close(ready[1]);
  char c = 0;
  if (kill_when_ready && ::read(ready[0], &c, 1) == 1) ::kill(child, SIGKILL);
  ::close(ready[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  return status;
}

void no_preparation() {}

// A file size limit, so that a write fails half-way as on a full disk.
void limit_file_size() {
  ::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{100000, 100000};
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

TEST(PosixFiles, ReplaceKeepsPermissionsFollowsLinksAndKeepsAnUnwrittenFile) {
  test_support::ScratchFolder dir("zk-posix");
  PosixFileService files;
  dir.put("f", "old");
  ::chmod((dir / "f").c_str(), 0640);
  fs::create_symlink("f", dir / "link");
  std::error_code error;
  auto file = files.open(dir.text("link"), FileAccess::Replace, error);
  ASSERT_TRUE(file) << error.message();
  ASSERT_TRUE(file->write("new"));
  ASSERT_TRUE(file->commit());
  EXPECT_TRUE(fs::is_symlink(dir / "link"));
  EXPECT_EQ(dir.content("f"), "new");
  struct stat st;
  ASSERT_EQ(::stat((dir / "f").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 07777, 0640u);

  // Read and never written: the file itself stays (same inode).
  auto update = files.open(dir.text("f"), FileAccess::Update, error);
  ASSERT_TRUE(update);
  char c;
  EXPECT_EQ(update->read(&c, 1), 1u);
  ASSERT_TRUE(update->commit());
  struct stat after;
  ASSERT_EQ(::stat((dir / "f").c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, st.st_ino);
  EXPECT_TRUE(files.exists(dir.text("link")));

  // The INI files replace theirs the same way.
  const fs::perms perms = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
  dir.put("real.ini", "[a]\nk=1\n");
  fs::permissions(dir / "real.ini", perms);
  fs::create_symlink(dir / "real.ini", dir / "link.ini");
  DiskIniFiles ini;
  ASSERT_TRUE(ini.write(u"a", u"k", u"2", dir.text("link.ini")));
  EXPECT_TRUE(fs::is_symlink(dir / "link.ini"));
  EXPECT_EQ(dir.content("real.ini"), "[a]\nk=2\n");
  EXPECT_EQ(fs::status(dir / "real.ini").permissions() & fs::perms::all, perms);
  EXPECT_EQ(dir.names(), (std::vector<std::string>{"f", "link", "link.ini", "real.ini"}));
}

// A save killed mid-way, or stopped by a full disk, leaves the old file; a
// complete save replaces it.
TEST(PosixFiles, KilledOrFullSaveLeavesTheOldFile) {
  test_support::ScratchFolder dir("zk-posix");
  const std::string old = record(0, u"old") + record(0, u"EOF");
  dir.put("p.zks", old);
  auto platform = Platform::headless();
  platform->files = posix_file_service();
  const Text path = dir.text("p.zks");
  const auto save = [&](bool until_killed) {
    return [&, until_killed](int ready) {
      clsLoadSave ls(platform);
      if (!ls.OpenFileA(path, u"OutPut")) return 2;
      for (int i = 0; i < 200000; ++i) ls.WriteFileOneA(i, u"member");
      if (until_killed) {
        if (::write(ready, "x", 1) != 1) return 3;
        for (;;) ls.WriteFileOneA(1, u"member");
      }
      return ls.WriteFileEofAndCloseFileA() ? 0 : 1;
    };
  };

  const int killed = in_child(no_preparation, save(true), true);
  EXPECT_TRUE(WIFSIGNALED(killed) && WTERMSIG(killed) == SIGKILL) << killed;
  EXPECT_EQ(dir.content("p.zks"), old);
  EXPECT_EQ(dir.content("p.zk$"), old);

  const int full = in_child(limit_file_size, save(false), false);
  EXPECT_TRUE(WIFEXITED(full) && WEXITSTATUS(full) == 1) << full;
  EXPECT_EQ(dir.content("p.zks"), old);

  // The INI files: a write that fails half-way keeps the old file.
  const std::string old_ini = "[a]\r\nk=old\r\n";
  dir.put("zk.ini", old_ini);
  const int ini_full = in_child(
      limit_file_size,
      [&](int) {
        DiskIniFiles ini;
        return ini.write(u"a", u"k", Text(200000, u'x'), dir.text("zk.ini")) ? 1 : 0;
      },
      false);
  EXPECT_TRUE(WIFEXITED(ini_full) && WEXITSTATUS(ini_full) == 0) << "the write should have failed";
  EXPECT_EQ(dir.content("zk.ini"), old_ini);

  clsLoadSave ls(platform);
  ASSERT_TRUE(ls.OpenFileA(path, u"OutPut"));
  ls.WriteFileOneA(1, u"new");
  ASSERT_TRUE(ls.WriteFileEofAndCloseFileA());
  EXPECT_EQ(dir.content("p.zks"), record(1, u"new") + record(0, u"EOF"));
  // The killed save left its hidden temporary file; nothing else is left.
  std::vector<std::string> names = dir.names();
  std::erase_if(names, [](const std::string& n) { return n.starts_with(".p.zks."); });
  EXPECT_EQ(names, (std::vector<std::string>{"p.zk$", "p.zks", "zk.ini"}));
}

// A name that is no UTF-8, as a program's arguments or a folder's entries
// hand it over, finds its file, and a file saved under it gets exactly it.
TEST(PosixFiles, NamesThatAreNoUtf8KeepTheirBytes) {
  test_support::ScratchFolder dir("zk-posix");
  auto platform = Platform::headless();
  platform->files = posix_file_service();
  for (const std::string name : {"a\xFF.zks", "\xE6\xA2\x81\xFE.zks", "\xED\xA0\x80.zks"}) {
    const std::string bytes = (dir.path() / name).native();
    const Text text = text_from_system_name(bytes);
    EXPECT_EQ(path_from_text(text).native(), bytes);
    clsLoadSave ls(platform);
    ASSERT_TRUE(ls.OpenFileA(text, u"OutPut"));
    ls.WriteFileOneA(1, u"梁");
    ASSERT_TRUE(ls.WriteFileEofAndCloseFileA());
    EXPECT_TRUE(fs::exists(fs::path(bytes))) << name;
    ASSERT_TRUE(ls.OpenFileA(text, u"InPut")) << name;
    EXPECT_EQ(text_from_path(fs::path(bytes)), text);
  }
  // Valid UTF-8 and pairs of surrogates read as they always did.
  EXPECT_EQ(text_from_system_name("梁\xF0\xA0\x80\x8B"), u"梁\U0002000B");
  EXPECT_EQ(path_from_text(u"梁\U0002000B").native(), "梁\xF0\xA0\x80\x8B");
}

}  // namespace
}  // namespace zelkora::platform::posix
