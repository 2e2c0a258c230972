// Tests of the settings file.
#include "zelkora/platform/settings_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora::platform {
namespace {

namespace fs = std::filesystem;

constexpr TextView kApp = u"Zelkora 结构快速设计";

class SettingsFileTest : public ::testing::Test {
 protected:
  // A Chinese folder name, which every system must take.
  static constexpr const char* kFile = "用户 设置/settings.ini";

  void put(const std::string& bytes) const { folder_.put(kFile, bytes); }
  std::string bytes() const { return folder_.content(kFile); }
  SettingsFile store() const {
    return SettingsFile(path_, [this](std::string_view m) { messages_.emplace_back(m); });
  }

  test_support::ScratchFolder folder_{"zk-settings"};
  fs::path path_ = folder_ / kFile;
  mutable std::vector<std::string> messages_;
};

TEST_F(SettingsFileTest, StoreWithoutFileHasNoKeysAndStoresNone) {
  SettingsFile settings{fs::path()};
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), std::nullopt);
  EXPECT_FALSE(settings.set(u"App", u"S", u"k", u"1"));
}

TEST_F(SettingsFileTest, ReadsAFileWrittenByHandAndNeverCreatesOne) {
  const SettingsFile settings = store();
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
TEST_F(SettingsFileTest, UnusableFileReadsAsEmptyAndIsReportedOnce) {
  const std::string damaged = "[App/Options]\nk=1\nbad=\xC3\x28\n";
  put(damaged);
  SettingsFile settings = store();
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

TEST_F(SettingsFileTest, SeesChangesMadeByOthers) {
  put("[App/S]\nk=1\n");
  const SettingsFile settings = store();
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), u"1");
  put("[App/S]\nk=2\n");  // same size, rewritten in place
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), u"2");
  ASSERT_TRUE(store().set(u"App", u"S", u"k", u"3"));
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), u"3");
  fs::remove(path_);
  EXPECT_EQ(settings.get(u"App", u"S", u"k"), std::nullopt);
}

TEST_F(SettingsFileTest, SetWritesUtf8CreatingFoldersAndKeepsTheRest) {
  SettingsFile settings = store();
  ASSERT_TRUE(settings.set(kApp, u"Options", u"1cboOpt", u"2"));
  ASSERT_TRUE(settings.set(kApp, u"Options", u"名称", u"钢筋"));
  EXPECT_EQ(bytes(), "[Zelkora 结构快速设计/Options]\n1cboOpt=2\n名称=钢筋\n");
  EXPECT_EQ(settings.get(kApp, u"OPTIONS", u"名称"), u"钢筋");
  // What the file cannot give back as it was is refused: a line break, a
  // lone surrogate anywhere; a pair (a character beyond the BMP) is kept.
  for (const auto& [key, value] : {std::pair<TextView, TextView>{u"k", u"two\nlines"},
                                   {u"k",
                                    u"a\xD800"
                                    u"b"},
                                   {u"k", u"\xDC00"},
                                   {u"k\xDBFF", u"1"}}) {
    EXPECT_FALSE(settings.set(kApp, u"Options", key, value)) << to_utf8(value);
  }
  EXPECT_EQ(settings.get(kApp, u"Options", u"k"), std::nullopt);
  ASSERT_TRUE(settings.set(kApp, u"Options", u"pair", u"\xD840\xDC0B"));
  EXPECT_EQ(settings.get(kApp, u"Options", u"pair"), u"\xD840\xDC0B");

  put("# mine\r\n[App/S]\r\nk = 1\r\n\r\n[App/T]\r\n");
  ASSERT_TRUE(settings.set(u"app", u"s", u"K", u"2"));
  ASSERT_TRUE(settings.set(u"App", u"T", u"j", u"3"));
  EXPECT_EQ(bytes(), "# mine\r\n[App/S]\r\nk = 2\r\n\r\n[App/T]\r\nj=3\r\n");
}

}  // namespace
}  // namespace zelkora::platform
