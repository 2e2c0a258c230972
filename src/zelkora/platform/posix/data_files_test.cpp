// Tests of the POSIX data files on a real folder.
#include "zelkora/platform/posix/data_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "zelkora/platform/headless/memory_files.h"

namespace zelkora::platform::posix {
namespace {

namespace fs = std::filesystem;

class PosixDataFilesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "zk-df-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
  }
  void TearDown() override { fs::remove_all(folder_); }

  Text path(const char* name) const { return from_utf8((folder_ / name).string()); }
  void put(const char* name, const std::string& bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
  }
  std::string content(const char* name) const {
    std::ifstream in(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  std::size_t entries() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), {}));
  }

  fs::path folder_;
  PosixFileService files_;
};

// The buffered file against the in-memory one, under the same mix of reads,
// writes and seeks, with pieces around the buffer size.
TEST_F(PosixDataFilesTest, BufferedUpdateBehavesLikeMemory) {
  std::mt19937 random(7);
  std::string start(100000, '\0');
  for (char& c : start) c = static_cast<char>(random());
  put("f", start);
  headless::MemoryFileService memory;
  memory.put(u"f", start);

  std::error_code error;
  auto disk = files_.open(path("f"), FileAccess::Update, error);
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
  EXPECT_EQ(content("f"), start);  // nothing reaches the file before the commit
  ASSERT_TRUE(disk->commit());
  ASSERT_TRUE(model->commit());
  EXPECT_EQ(content("f"), memory.bytes(u"f"));
  EXPECT_EQ(entries(), 1u);
}

TEST_F(PosixDataFilesTest, ReplaceKeepsPermissionsFollowsLinksAndRefusesWhatItCannotReplace) {
  put("f", "old");
  ::chmod((folder_ / "f").c_str(), 0640);
  fs::create_symlink("f", folder_ / "link");
  std::error_code error;
  auto file = files_.open(path("link"), FileAccess::Replace, error);
  ASSERT_TRUE(file) << error.message();
  ASSERT_TRUE(file->write("new"));
  ASSERT_TRUE(file->commit());
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(content("f"), "new");
  struct stat st;
  ASSERT_EQ(::stat((folder_ / "f").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 07777, 0640u);

  // Read and never written: the file itself stays (same inode).
  auto update = files_.open(path("f"), FileAccess::Update, error);
  ASSERT_TRUE(update);
  char c;
  EXPECT_EQ(update->read(&c, 1), 1u);
  ASSERT_TRUE(update->commit());
  struct stat after;
  ASSERT_EQ(::stat((folder_ / "f").c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, st.st_ino);

  fs::create_directory(folder_ / "dir");
  for (const char* name : {"dir", "missing/f"}) {
    EXPECT_FALSE(files_.open(path(name), FileAccess::Replace, error)) << name;
    EXPECT_TRUE(error) << name;
  }
  for (const char* name : {"dir", "missing"}) {
    EXPECT_FALSE(files_.open(path(name), FileAccess::Read, error)) << name;
    EXPECT_TRUE(error) << name;
  }
  EXPECT_TRUE(files_.exists(path("link")));
  EXPECT_FALSE(files_.exists(path("dir")));
  EXPECT_EQ(entries(), 3u);  // no temporary file left behind
}

}  // namespace
}  // namespace zelkora::platform::posix
