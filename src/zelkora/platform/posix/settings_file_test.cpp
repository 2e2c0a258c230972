#include "zelkora/platform/posix/settings_file.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace zelkora::platform {
namespace {

namespace fs = std::filesystem;

struct PathCase {
  const char* name;
  std::map<std::string, std::string> environment;
  fs::path expected;
};

const PathCase kPathCases[] = {
    {"explicit file wins",
     {{"ZELKORA_SETTINGS", "/tmp/s.ini"}, {"XDG_CONFIG_HOME", "/x"}, {"HOME", "/home/u"}},
     "/tmp/s.ini"},
    {"config home", {{"XDG_CONFIG_HOME", "/x"}, {"HOME", "/home/u"}}, "/x/zelkora/settings.ini"},
    {"home", {{"HOME", "/home/u"}}, "/home/u/.config/zelkora/settings.ini"},
    {"empty variables count as unset",
     {{"ZELKORA_SETTINGS", ""}, {"XDG_CONFIG_HOME", ""}, {"HOME", "/home/u"}},
     "/home/u/.config/zelkora/settings.ini"},
    {"relative config home is ignored",
     {{"XDG_CONFIG_HOME", "rel"}, {"HOME", "/home/u"}},
     "/home/u/.config/zelkora/settings.ini"},
    {"nothing set", {}, ""},
};

TEST(PosixSettingsPathTest, ChosenFromTheEnvironment) {
  for (const PathCase& c : kPathCases) {
    SCOPED_TRACE(c.name);
    const auto lookup = [&c](const char* name) -> const char* {
      const auto it = c.environment.find(name);
      return it == c.environment.end() ? nullptr : it->second.c_str();
    };
    EXPECT_EQ(PosixSettingsStore::default_path(lookup), c.expected);
  }
}

TEST(PosixSettingsPathTest, DefaultStoreUsesTheProcessEnvironment) {
  const char* old = ::getenv("ZELKORA_SETTINGS");
  const std::string saved = old ? old : "";
  ::setenv("ZELKORA_SETTINGS", "/nonexistent/zk-test/settings.ini", 1);
  EXPECT_EQ(PosixSettingsStore().path(), "/nonexistent/zk-test/settings.ini");
  if (old) {
    ::setenv("ZELKORA_SETTINGS", saved.c_str(), 1);
  } else {
    ::unsetenv("ZELKORA_SETTINGS");
  }
}

constexpr TextView kApp = u"Zelkora 结构快速设计";

class PosixSettingsStoreTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "zk-settings-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
    path_ = folder_ / "zelkora" / "settings.ini";
  }
  void TearDown() override { fs::remove_all(folder_); }

  void put(const std::string& bytes) const {
    fs::create_directories(path_.parent_path());
    std::ofstream(path_, std::ios::binary) << bytes;
  }
  std::string bytes() const {
    std::ifstream in(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  PosixSettingsStore store() const {
    return PosixSettingsStore(path_, [this](std::string_view m) { messages_.emplace_back(m); });
  }

  fs::path folder_;
  fs::path path_;
  mutable std::vector<std::string> messages_;
};

TEST_F(PosixSettingsStoreTest, ReadsAFileWrittenByHand) {
  put("\xEF\xBB\xBF# written by hand\r\n"
      "[Zelkora 结构快速设计/Options]\r\n"
      "1cboOpt = 2\r\n"
      "Title=\"结构 \"\r\n"
      "[Other/Options]\r\n"
      "x=1\r\n");
  const PosixSettingsStore settings = store();
  EXPECT_EQ(settings.get(kApp, u"options", u"1CBOOPT"), u"2");
  EXPECT_EQ(settings.get(u"zelkora 结构快速设计", u"Options", u"Title"), u"结构 ");
  EXPECT_EQ(settings.get(kApp, u"Options", u"x"), std::nullopt);
  EXPECT_EQ(settings.get(kApp, u"Window", u"1cboOpt"), std::nullopt);
  EXPECT_EQ(settings.get_or(kApp, u"Options", u"missing", u"7"), u"7");
  EXPECT_EQ(settings.get_or(kApp, u"Options", u"1cboOpt", u"7"), u"2");
  EXPECT_TRUE(messages_.empty());
}

TEST_F(PosixSettingsStoreTest, ReadingDoesNotCreateTheFile) {
  const PosixSettingsStore settings = store();
  EXPECT_EQ(settings.get(kApp, u"Options", u"1cboOpt"), std::nullopt);
  EXPECT_EQ(settings.get_or(kApp, u"Options", u"1cboOpt", u"0"), u"0");
  EXPECT_FALSE(fs::exists(path_.parent_path()));
  EXPECT_TRUE(messages_.empty());
}

TEST_F(PosixSettingsStoreTest, DamagedFileReadsAsEmptyAndIsReportedOnce) {
  const std::string damaged = "[App/Options]\nk=1\nbad=\xC3\x28\n";
  put(damaged);
  PosixSettingsStore settings = store();
  EXPECT_EQ(settings.get(u"App", u"Options", u"k"), std::nullopt);
  EXPECT_EQ(settings.get(u"App", u"Options", u"k"), std::nullopt);
  EXPECT_FALSE(settings.set(u"App", u"Options", u"k", u"2"));
  ASSERT_EQ(messages_.size(), 1u);
  EXPECT_NE(messages_[0].find("byte 22"), std::string::npos) << messages_[0];
  EXPECT_EQ(bytes(), damaged);

  put("[App/Options]\nk=3\n");  // repaired
  EXPECT_EQ(settings.get(u"App", u"Options", u"k"), u"3");
}

TEST_F(PosixSettingsStoreTest, UnreadableFileReadsAsEmpty) {
  fs::create_directories(path_);  // a folder where the file should be
  PosixSettingsStore settings = store();
  EXPECT_EQ(settings.get(u"App", u"Options", u"k"), std::nullopt);
  EXPECT_FALSE(settings.set(u"App", u"Options", u"k", u"1"));
  EXPECT_EQ(messages_.size(), 1u);
}

TEST_F(PosixSettingsStoreTest, SeesChangesMadeByOthers) {
  put("[App/S]\nk=1\n");
  const PosixSettingsStore settings = store();
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), u"1");
  put("[App/S]\nk=2\n");  // same size, rewritten in place
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), u"2");
  PosixSettingsStore other = store();
  ASSERT_TRUE(other.set(u"App", u"S", u"k", u"3"));
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), u"3");
  fs::remove(path_);
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), std::nullopt);
}

TEST_F(PosixSettingsStoreTest, SetWritesUtf8CreatingFolders) {
  PosixSettingsStore settings = store();
  ASSERT_TRUE(settings.set(kApp, u"Options", u"1cboOpt", u"2"));
  ASSERT_TRUE(settings.set(kApp, u"Options", u"名称", u"钢筋"));
  EXPECT_EQ(bytes(), "[Zelkora 结构快速设计/Options]\n1cboOpt=2\n名称=钢筋\n");
  EXPECT_EQ(settings.get(kApp, u"OPTIONS", u"名称"), u"钢筋");
  EXPECT_FALSE(settings.set(kApp, u"Options", u"k", u"two\nlines"));
  EXPECT_EQ(settings.get(kApp, u"Options", u"k"), std::nullopt);
}

TEST_F(PosixSettingsStoreTest, SetKeepsTheRestOfAHandWrittenFile) {
  put("# mine\r\n[App/S]\r\nk = 1\r\n\r\n[App/T]\r\n");
  PosixSettingsStore settings = store();
  ASSERT_TRUE(settings.set(u"app", u"s", u"K", u"2"));
  ASSERT_TRUE(settings.set(u"App", u"T", u"j", u"3"));
  EXPECT_EQ(bytes(), "# mine\r\n[App/S]\r\nk = 2\r\n\r\n[App/T]\r\nj=3\r\n");
}

TEST(PosixSettingsStoreWithoutFileTest, HasNoKeysAndStoresNone) {
  PosixSettingsStore settings{fs::path()};
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), std::nullopt);
  EXPECT_FALSE(settings.set(u"App", u"S", u"k", u"1"));
}

}  // namespace
}  // namespace zelkora::platform
