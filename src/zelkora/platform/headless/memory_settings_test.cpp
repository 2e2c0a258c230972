// Tests of the in-memory settings store.
#include "zelkora/platform/headless/memory_settings.h"

#include <gtest/gtest.h>

namespace zelkora::platform::headless {
namespace {

constexpr TextView kApp = u"Zelkora 结构快速设计";

TEST(MemorySettingsStoreTest, ReadsContentOfASettingsFile) {
  const MemorySettingsStore settings(
      u"[Zelkora 结构快速设计/Options]\n1cboOpt = 2\n[Other/Options]\nx=1\n");
  EXPECT_EQ(settings.get(kApp, u"options", u"1CBOOPT"), u"2");
  EXPECT_EQ(settings.get(kApp, u"Options", u"x"), std::nullopt);
  EXPECT_EQ(settings.get(u"Other", u"Options", u"1cboOpt"), std::nullopt);
  EXPECT_EQ(settings.get(kApp, u"", u"1cboOpt"), std::nullopt);
}

TEST(MemorySettingsStoreTest, GetOr) {
  const MemorySettingsStore settings(u"[App/S]\nempty=\nk=v\n");
  const SettingsStore& store = settings;
  EXPECT_EQ(store.get_or(u"App", u"S", u"k", u"d"), u"v");
  EXPECT_EQ(store.get_or(u"App", u"S", u"empty", u"d"), u"");
  EXPECT_EQ(store.get_or(u"App", u"S", u"missing", u"d "), u"d ");
  EXPECT_EQ(store.get_or(u"App", u"T", u"k", u""), u"");
}

TEST(MemorySettingsStoreTest, SetStoresAsTheFileWould) {
  MemorySettingsStore settings;
  ASSERT_TRUE(settings.set(kApp, u"Options", u"1cboOpt", u"2"));
  ASSERT_TRUE(settings.set(kApp, u"OPTIONS", u"1CBOOPT", u"3"));
  ASSERT_TRUE(settings.set(kApp, u"Window", u"Left", u"120"));
  EXPECT_EQ(
      settings.content(),
      u"[Zelkora 结构快速设计/Options]\n1cboOpt=3\n[Zelkora 结构快速设计/Window]\nLeft=120\n");
  EXPECT_EQ(settings.get(kApp, u"window", u"left"), u"120");
  EXPECT_FALSE(settings.set(kApp, u"Options", u"k", u"two\nlines"));
  EXPECT_EQ(settings.get(kApp, u"Options", u"k"), std::nullopt);
}

}  // namespace
}  // namespace zelkora::platform::headless
