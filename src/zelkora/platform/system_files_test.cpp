// Tests of the system's data files (the file service of the default
// bundle: POSIX or Windows) on a real folder.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "zelkora/platform/headless/memory_files.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora::platform {
namespace {

namespace fs = std::filesystem;

FileService& system_files() { return *Platform::environment_default()->files; }

// The buffered file against the in-memory one, under the same mix of reads,
// writes and seeks, with pieces around the buffer size.
TEST(SystemFiles, BufferedUpdateBehavesLikeMemory) {
  test_support::ScratchFolder dir("zk-files");
  std::mt19937 random(7);
  std::string start(100000, '\0');
  for (char& c : start) c = static_cast<char>(random());
  dir.put("f", start);
  headless::MemoryFileService memory;
  memory.put(u"f", start);

  std::error_code error;
  auto disk = system_files().open(dir.text("f"), FileAccess::Update, error);
  auto model = memory.open(u"f", FileAccess::Update, error);
  ASSERT_TRUE(disk && model);
  const std::size_t sizes[] = {1, 6, 100, 65535, 65536, 70000, 140000};
  for (int step = 0; step < 300; ++step) {
    const std::size_t size = sizes[random() % std::size(sizes)];
    switch (random() % 3) {
      case 0: {
        const std::uint64_t to = random() % (model->size() + 10);
        disk->seek(to);
        model->seek(to);
        break;
      }
      case 1: {
        std::string a(size, '\0'), b(size, '\0');
        ASSERT_EQ(disk->read(a.data(), size), model->read(b.data(), size)) << step;
        ASSERT_EQ(a, b) << step;
        break;
      }
      default: {
        const std::string bytes(size, static_cast<char>('a' + step % 26));
        ASSERT_TRUE(disk->write(bytes));
        ASSERT_TRUE(model->write(bytes));
      }
    }
    ASSERT_EQ(disk->position(), model->position()) << step;
    ASSERT_EQ(disk->size(), model->size()) << step;
  }
  EXPECT_EQ(dir.content("f"), start);  // nothing reaches the file before the commit
  ASSERT_TRUE(disk->commit());
  ASSERT_TRUE(model->commit());
  EXPECT_EQ(dir.content("f"), memory.bytes(u"f"));
  EXPECT_EQ(dir.names(), std::vector<std::string>{"f"});
}

// Chinese names work; a folder, a missing folder and a missing file are
// refused with a reason; a file dropped without a commit leaves nothing.
TEST(SystemFiles, OpensWhatItCanAndLeavesNoTemporaryFiles) {
  test_support::ScratchFolder dir("zk-files");
  FileService& files = system_files();
  std::error_code error;
  fs::create_directory(dir / "项目");
  auto file = files.open(dir.text("项目/梁 配筋.zks"), FileAccess::Replace, error);
  ASSERT_TRUE(file) << error.message();
  ASSERT_TRUE(file->write("新"));
  ASSERT_TRUE(file->commit());
  EXPECT_FALSE(file->write("x"));
  EXPECT_EQ(dir.content("项目/梁 配筋.zks"), "新");
  EXPECT_TRUE(files.exists(dir.text("项目/梁 配筋.zks")));
  auto dropped = files.open(dir.text("项目/梁 配筋.zks"), FileAccess::Replace, error);
  ASSERT_TRUE(dropped && dropped->write("lost"));
  dropped.reset();
  EXPECT_EQ(dir.content("项目/梁 配筋.zks"), "新");

  for (const char* name : {"项目", "missing/f"}) {
    EXPECT_FALSE(files.open(dir.text(name), FileAccess::Replace, error)) << name;
    EXPECT_TRUE(error) << name;
  }
  for (const char* name : {"项目", "missing"}) {
    EXPECT_FALSE(files.open(dir.text(name), FileAccess::Read, error)) << name;
    EXPECT_TRUE(error) << name;
  }
  EXPECT_FALSE(files.exists(dir.text("项目")));
  EXPECT_FALSE(files.exists(u""));
  EXPECT_EQ(dir.names("项目"), std::vector<std::string>{"梁 配筋.zks"});
}

}  // namespace
}  // namespace zelkora::platform
