// Tests of the Windows data files on a real folder: what a save does when
// the target is locked by another handle, when a write fails half-way as on
// a full disk, and when the saving process is killed; read-only and hidden
// targets.
#include "zelkora/platform/win32/data_files.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/record_file.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/scratch_folder_test_support.h"
#include "zelkora/platform/shared_services.h"
#include "zelkora/platform/win32/file_io.h"
#include "zelkora/platform/win32/wide.h"

namespace zelkora::platform::win32 {
namespace {

std::string record(int32_t id, TextView member) {
  std::string out;
  datafile::append_record(out, id, member);
  return out;
}

const std::string kOld = record(0, u"old") + record(0, u"EOF");
constexpr const char* kProject = "项目/梁 KL-1.zks";

class Win32DataFilesTest : public ::testing::Test {
 protected:
  void SetUp() override { dir_.put(kProject, kOld); }

  std::shared_ptr<Platform> platform_with(std::shared_ptr<FileService> files) const {
    auto p = Platform::headless();
    p->files = std::move(files);
    return p;
  }
  // Saves a project of `records` records; true when it succeeded.
  static bool save(clsLoadSave& ls, const Text& path, int records) {
    if (!ls.OpenFileA(path, u"OutPut")) return false;
    for (int i = 0; i < records; ++i) ls.WriteFileOneA(i, u"member");
    return ls.WriteFileEofAndCloseFileA();
  }
  // Opens the project with a handle that shares nothing, as an editor that
  // locks its file would.
  Handle lock_project() const {
    return Handle(::CreateFileW((dir_ / kProject).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  }
  // The folder's names without the backup copy.
  std::vector<std::string> project_folder() const { return dir_.names("项目"); }

  test_support::ScratchFolder dir_{"zk-win32"};
  const Text path_ = dir_.text(kProject);
};

TEST_F(Win32DataFilesTest, ALockedTargetIsNeverReplaced) {
  clsLoadSave ls(platform_with(win32_file_service()));
  {
    // Locked before the save: refused at once.
    Handle lock = lock_project();
    ASSERT_TRUE(lock);
    EXPECT_FALSE(ls.OpenFileA(path_, u"OutPut"));
    EXPECT_EQ(ls.last_error(), 2003);
  }
  // Locked while saving: the replacement fails and the file stays whole.
  ASSERT_TRUE(ls.OpenFileA(path_, u"OutPut"));
  ls.WriteFileOneA(1, u"new");
  {
    Handle lock = lock_project();
    ASSERT_TRUE(lock);
    EXPECT_FALSE(ls.WriteFileEofAndCloseFileA());
    EXPECT_EQ(ls.last_error(), 2003);
  }
  EXPECT_EQ(dir_.content(kProject), kOld);
  EXPECT_EQ(project_folder(), (std::vector<std::string>{"梁 KL-1.zk$", "梁 KL-1.zks"}));
  // Unlocked, the save goes through.
  ASSERT_TRUE(save(ls, path_, 1));
  EXPECT_EQ(dir_.content(kProject), record(0, u"member") + record(0, u"EOF"));
}

TEST_F(Win32DataFilesTest, AWriteFailingHalfWayLeavesTheOldFile) {
  // A disk that is full after 100,000 bytes.
  std::uint64_t written = 0;
  auto full_disk = std::make_shared<Win32FileService>(
      [&written](void* handle, const char* data, std::size_t size, std::uint64_t at) {
        written += size;
        if (written > 100000) {
          ::SetLastError(ERROR_DISK_FULL);
          return false;
        }
        return Win32FileService::system_write_at(handle, data, size, at);
      });
  clsLoadSave ls(platform_with(full_disk));
  EXPECT_FALSE(save(ls, path_, 20000));
  EXPECT_EQ(ls.last_error(), 2003);
  EXPECT_GT(written, 100000u);
  EXPECT_EQ(dir_.content(kProject), kOld);
  EXPECT_EQ(project_folder(), (std::vector<std::string>{"梁 KL-1.zk$", "梁 KL-1.zks"}));
}

TEST_F(Win32DataFilesTest, ReadOnlyTargetsAreRefusedAndAttributesKept) {
  const std::wstring file = dir_ / kProject;
  clsLoadSave ls(platform_with(win32_file_service()));
  ASSERT_TRUE(::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_FALSE(ls.OpenFileA(path_, u"OutPut"));
  EXPECT_EQ(ls.last_error(), 2003);
  EXPECT_EQ(dir_.content(kProject), kOld);

  ASSERT_TRUE(::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE));
  ASSERT_TRUE(save(ls, path_, 1));
  const DWORD after = ::GetFileAttributesW(file.c_str());
  EXPECT_EQ(after & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE),
            DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE});
  EXPECT_EQ(dir_.content(kProject), record(0, u"member") + record(0, u"EOF"));
  // The backup copy is a plain file.
  EXPECT_EQ(::GetFileAttributesW((dir_ / "项目/梁 KL-1.zk$").c_str()) & FILE_ATTRIBUTE_HIDDEN, 0u);
}

// Run by the test below in a child process: saves into the file named by
// ZELKORA_TEST_SAVE until it is killed, after telling it is well under way
// by creating that name + ".ready".
TEST(Win32DataFilesChild, DISABLED_SaveUntilKilled) {
  const std::optional<std::string> target = process_environment()("ZELKORA_TEST_SAVE");
  ASSERT_TRUE(target);
  auto p = Platform::headless();
  p->files = win32_file_service();
  clsLoadSave ls(p);
  ASSERT_TRUE(ls.OpenFileA(from_utf8(*target), u"OutPut"));
  for (int i = 0; i < 200000; ++i) ls.WriteFileOneA(i, u"member");
  Handle(::CreateFileW(wide(from_utf8(*target + ".ready")).c_str(), GENERIC_WRITE, 0, nullptr,
                       CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  for (;;) ls.WriteFileOneA(1, u"member");
}

TEST_F(Win32DataFilesTest, ASaveKilledMidWayLeavesTheOldFile) {
  wchar_t program[MAX_PATH] = {};
  ASSERT_GT(::GetModuleFileNameW(nullptr, program, MAX_PATH), 0u);
  std::wstring command = L"\"" + std::wstring(program) +
                         L"\" --gtest_also_run_disabled_tests "
                         L"--gtest_filter=Win32DataFilesChild.DISABLED_SaveUntilKilled";
  ASSERT_TRUE(::SetEnvironmentVariableW(L"ZELKORA_TEST_SAVE", wide(path_).c_str()));
  // The child's output goes nowhere.
  SECURITY_ATTRIBUTES inherit{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  Handle nowhere(
      ::CreateFileW(L"NUL", GENERIC_WRITE, kShareAll, &inherit, OPEN_EXISTING, 0, nullptr));
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = nowhere.get();
  PROCESS_INFORMATION child{};
  const BOOL started = ::CreateProcessW(program, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                        nullptr, &startup, &child);
  ::SetEnvironmentVariableW(L"ZELKORA_TEST_SAVE", nullptr);
  ASSERT_TRUE(started);
  const std::filesystem::path ready = dir_ / (std::string(kProject) + ".ready");
  for (int i = 0; i < 3000 && !std::filesystem::exists(ready); ++i) {
    if (::WaitForSingleObject(child.hProcess, 10) == WAIT_OBJECT_0) break;
  }
  const bool under_way = std::filesystem::exists(ready);
  ::TerminateProcess(child.hProcess, 9);
  ::WaitForSingleObject(child.hProcess, INFINITE);
  ::CloseHandle(child.hThread);
  ::CloseHandle(child.hProcess);
  ASSERT_TRUE(under_way) << "the child did not start saving";

  EXPECT_EQ(dir_.content(kProject), kOld);
  EXPECT_EQ(dir_.content("项目/梁 KL-1.zk$"), kOld);
  // What is left beside it: the backup, the marker and, at worst, the hidden
  // temporary file of the killed save.
  std::vector<std::string> names = project_folder();
  std::erase_if(names, [](const std::string& n) { return n.starts_with(".梁 KL-1.zks."); });
  EXPECT_EQ(names, (std::vector<std::string>{"梁 KL-1.zk$", "梁 KL-1.zks", "梁 KL-1.zks.ready"}));
}

}  // namespace
}  // namespace zelkora::platform::win32
