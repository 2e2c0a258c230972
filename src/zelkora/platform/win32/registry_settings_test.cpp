// Tests of the settings store in the registry of the current user, under a
// key of the test's own that is removed at the end.
#include "zelkora/platform/win32/registry_settings.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/win32/wide.h"
#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::platform::win32 {
namespace {

constexpr TextView kApp = u"Zelkora 结构快速设计";

class RegistrySettingsTest : public ::testing::Test {
 protected:
  void TearDown() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, wide(root_).c_str()); }

  bool key_exists(TextView application, TextView section) const {
    HKEY key = nullptr;
    const Text path = *store_.key_path(application, section);
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, wide(path).c_str(), 0, KEY_READ, &key) !=
        ERROR_SUCCESS) {
      return false;
    }
    ::RegCloseKey(key);
    return true;
  }
  // Stores a value of any type, as another program might have.
  void put_raw(TextView section, const wchar_t* name, DWORD type, const void* data, DWORD bytes) {
    HKEY key = nullptr;
    ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, wide(*store_.key_path(kApp, section)).c_str(), 0,
                                nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    ::RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), bytes);
    ::RegCloseKey(key);
  }

  Text root_ = u"Software\\ZelkoraTests-" + from_utf8(std::to_string(std::random_device()()));
  RegistrySettingsStore store_{root_};
};

TEST_F(RegistrySettingsTest, ReadingNeverCreatesAKey) {
  EXPECT_EQ(store_.get(kApp, u"Options", u"1cboOpt"), std::nullopt);
  EXPECT_EQ(store_.get_or(kApp, u"Options", u"1cboOpt", u"2"), u"2");
  EXPECT_FALSE(key_exists(kApp, u"Options"));
  ASSERT_TRUE(store_.set(kApp, u"Options", u"1cboOpt", u"3"));
  EXPECT_TRUE(key_exists(kApp, u"Options"));
  EXPECT_EQ(store_.key_path(kApp, u"Options"), root_ + u"\\Zelkora 结构快速设计\\Options");
}

// Values are strings, stored and read back as they are (Chinese, private-use
// characters, blanks, empty); names are found without regard to case.
TEST_F(RegistrySettingsTest, StringsRoundTripAndNamesIgnoreCase) {
  const struct {
    TextView key, value;
  } cases[] = {{u"3cboOpt", u"φ"},   {u"5cboOpt", u"\uE002"}, {u"1cboOpt", u" 2 "},
               {u"8cboOpt", u"、 "}, {u"Revision", u""},      {u"名称", u"钢筋混凝土"}};
  for (const auto& c : cases) ASSERT_TRUE(store_.set(kApp, u"Options", c.key, c.value));
  for (const auto& c : cases) EXPECT_EQ(store_.get(kApp, u"options", c.key), c.value);
  EXPECT_EQ(store_.get(kApp, u"OPTIONS", u"3CBOOPT"), u"φ");
  EXPECT_EQ(store_.get(kApp, u"Window", u"3cboOpt"), std::nullopt);
}

// Values written by other programs: a string without its terminator, a
// number (read as its decimal text), binary data (missing).
TEST_F(RegistrySettingsTest, ValuesOfOtherProgramsAndRefusedNames) {
  const wchar_t unterminated[] = {L'4', L'0', L'0'};
  put_raw(u"Options", L"a", REG_SZ, unterminated, sizeof unterminated);
  const DWORD number = 12;
  put_raw(u"Options", L"b", REG_DWORD, &number, sizeof number);
  const char bytes[] = {1, 2, 3};
  put_raw(u"Options", L"c", REG_BINARY, bytes, sizeof bytes);
  put_raw(u"Options", L"d", REG_EXPAND_SZ, L"%PATH%", 14);
  EXPECT_EQ(store_.get(kApp, u"Options", u"a"), u"400");
  EXPECT_EQ(store_.get(kApp, u"Options", u"b"), u"12");
  EXPECT_EQ(store_.get(kApp, u"Options", u"c"), std::nullopt);
  EXPECT_EQ(store_.get(kApp, u"Options", u"d"), u"%PATH%");  // not expanded

  // A "\" would name another key.
  EXPECT_FALSE(store_.set(u"A\\B", u"Options", u"k", u"1"));
  EXPECT_FALSE(store_.set(kApp, u"Options\\X", u"k", u"1"));
  EXPECT_FALSE(store_.set(kApp, u"Options", u"k\\j", u"1"));
  EXPECT_FALSE(store_.set(kApp, u"", u"k", u"1"));
  EXPECT_EQ(store_.get(u"A\\B", u"Options", u"k"), std::nullopt);
  EXPECT_FALSE(store_.set(kApp, u"Options", u"big", Text(40000, u'x')));
}

// A clsCharacter reads its symbols from the registry when it starts.
TEST_F(RegistrySettingsTest, SymbolsOfANewObjectComeFromTheRegistry) {
  ASSERT_TRUE(store_.set(kApp, u"Options", u"3cboOpt", u" Ф "));
  ASSERT_TRUE(store_.set(kApp, u"Options", u"1cboOpt", u"2"));
  auto p = Platform::headless();
  p->settings = std::make_shared<RegistrySettingsStore>(root_);
  clsCharacter chr(p);
  EXPECT_EQ(chr.tPubF1(), u"Ф");
  EXPECT_EQ(chr.tPubPf(), u"2");
  EXPECT_EQ(chr.tPubF2(), u"Φ");  // the catalogue's default
}

}  // namespace
}  // namespace zelkora::platform::win32
