// Tests of the settings file.
#include "zelkora/platform/posix/settings_file.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace zelkora::platform::posix {
namespace {

namespace fs = std::filesystem;

// ZELKORA_SETTINGS, else an absolute XDG_CONFIG_HOME, else HOME; an empty
// variable counts as unset (nullptr).
TEST(PosixSettingsPathTest, ChosenFromTheEnvironment) {
  const fs::path home = "/home/u/.config/zelkora/settings.ini";
  const struct {
    const char* settings;
    const char* config_home;
    const char* home;
    fs::path expected;
  } cases[] = {
      {"/tmp/s.ini", "/x", "/home/u", "/tmp/s.ini"},
      {nullptr, "/x", "/home/u", "/x/zelkora/settings.ini"},
      {nullptr, nullptr, "/home/u", home},
      {"", "", "/home/u", home},
      {nullptr, "rel", "/home/u", home},
      {nullptr, nullptr, nullptr, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    const auto lookup = [&c](const char* name) -> const char* {
      const std::string_view n = name;
      return n == "ZELKORA_SETTINGS"  ? c.settings
             : n == "XDG_CONFIG_HOME" ? c.config_home
             : n == "HOME"            ? c.home
                                      : nullptr;
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

TEST(PosixSettingsPathTest, StoreWithoutFileHasNoKeysAndStoresNone) {
  PosixSettingsStore settings{fs::path()};
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), std::nullopt);
  EXPECT_FALSE(settings.set(u"App", u"S", u"k", u"1"));
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

TEST_F(PosixSettingsStoreTest, ReadsAFileWrittenByHandAndNeverCreatesOne) {
  const PosixSettingsStore settings = store();
  EXPECT_EQ(settings.get_or(kApp, u"Options", u"1cboOpt", u"0"), u"0");
  EXPECT_FALSE(fs::exists(path_.parent_path()));

  put("\xEF\xBB\xBF# written by hand\r\n[Zelkora 结构快速设计/Options]\r\n1cboOpt = 2\r\n"
      "Title=\"结构 \"\r\n[Other/Options]\r\nx=1\r\n");
  EXPECT_EQ(settings.get(kApp, u"options", u"1CBOOPT"), u"2");
  EXPECT_EQ(settings.get(u"zelkora 结构快速设计", u"Options", u"Title"), u"结构 ");
  EXPECT_EQ(settings.get(kApp, u"Options", u"x"), std::nullopt);
  EXPECT_EQ(settings.get(kApp, u"Window", u"1cboOpt"), std::nullopt);
  EXPECT_EQ(settings.get_or(kApp, u"Options", u"missing", u"7"), u"7");
  EXPECT_EQ(settings.get_or(kApp, u"Options", u"1cboOpt", u"7"), u"2");
  EXPECT_TRUE(messages_.empty());
}

// Not UTF-8 or unreadable: no keys, reported once, never overwritten.
TEST_F(PosixSettingsStoreTest, UnusableFileReadsAsEmptyAndIsReportedOnce) {
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

  fs::remove(path_);
  fs::create_directories(path_);  // a folder where the file should be
  EXPECT_EQ(settings.get(u"App", u"Options", u"k"), std::nullopt);
  EXPECT_FALSE(settings.set(u"App", u"Options", u"k", u"1"));
  EXPECT_EQ(messages_.size(), 2u);
}

TEST_F(PosixSettingsStoreTest, SeesChangesMadeByOthers) {
  put("[App/S]\nk=1\n");
  const PosixSettingsStore settings = store();
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), u"1");
  put("[App/S]\nk=2\n");  // same size, rewritten in place
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), u"2");
  ASSERT_TRUE(store().set(u"App", u"S", u"k", u"3"));
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), u"3");
  fs::remove(path_);
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), std::nullopt);
}

TEST_F(PosixSettingsStoreTest, SetWritesUtf8CreatingFoldersAndKeepsTheRest) {
  PosixSettingsStore settings = store();
  ASSERT_TRUE(settings.set(kApp, u"Options", u"1cboOpt", u"2"));
  ASSERT_TRUE(settings.set(kApp, u"Options", u"名称", u"钢筋"));
  EXPECT_EQ(bytes(), "[Zelkora 结构快速设计/Options]\n1cboOpt=2\n名称=钢筋\n");
  EXPECT_EQ(settings.get(kApp, u"OPTIONS", u"名称"), u"钢筋");
  EXPECT_FALSE(settings.set(kApp, u"Options", u"k", u"two\nlines"));
  EXPECT_EQ(settings.get(kApp, u"Options", u"k"), std::nullopt);

  put("# mine\r\n[App/S]\r\nk = 1\r\n\r\n[App/T]\r\n");
  ASSERT_TRUE(settings.set(u"app", u"s", u"K", u"2"));
  ASSERT_TRUE(settings.set(u"App", u"T", u"j", u"3"));
  EXPECT_EQ(bytes(), "# mine\r\n[App/S]\r\nk = 2\r\n\r\n[App/T]\r\nj=3\r\n");
}

}  // namespace
}  // namespace zelkora::platform::posix
