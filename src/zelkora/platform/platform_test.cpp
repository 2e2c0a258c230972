// Tests of the platform bundles and their scopes.
#include "zelkora/platform/platform.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>

#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/posix/environment.h"

namespace zelkora::platform {
namespace {

posix::EnvLookup fake_env(std::map<std::string, std::string> vars) {
  return [vars](const char* name) -> std::optional<std::string> {
    auto it = vars.find(name);
    if (it == vars.end()) return std::nullopt;
    return it->second;
  };
}

TEST(CurrentPlatform, ScopesNestAndRestore) {
  const auto outer = Platform::headless();
  const auto inner = Platform::headless();
  const auto before = Platform::current();
  {
    ScopedPlatform a(outer);
    EXPECT_EQ(Platform::current(), outer);
    {
      ScopedPlatform b(inner);
      EXPECT_EQ(Platform::current(), inner);
    }
    EXPECT_EQ(Platform::current(), outer);
  }
  EXPECT_EQ(Platform::current(), before);
  EXPECT_EQ(Platform::current(), Platform::environment_default());
}

TEST(CurrentPlatform, EveryPartIsThere) {
  for (const auto& p :
       {Platform::headless(), std::const_pointer_cast<Platform>(Platform::environment_default())}) {
    EXPECT_TRUE(p->settings && p->ini && p->messages && p->locale && p->suite);
  }
}

TEST(EnvironmentLocale, SymbolsFromLocaleAndOverrides) {
  struct Case {
    std::map<std::string, std::string> env;
    Text decimal, grouping;
  };
  const Case cases[] = {
      {{}, u".", u""},  // the C locale groups no digits
      {{{"LC_ALL", "C.UTF-8"}}, u".", u""},
      {{{"LANG", "xx_NOWHERE.UTF-8"}}, u".", u","},  // an unknown locale keeps the fallbacks
      {{{"ZELKORA_DECIMAL_SYMBOL", ","}, {"ZELKORA_GROUPING_SYMBOL", "."}}, u",", u"."},
      {{{"ZELKORA_GROUPING_SYMBOL", ""}}, u".", u""},
      {{{"ZELKORA_DECIMAL_SYMBOL", ""}}, u".", u""},  // an empty decimal symbol is ignored
      {{{"ZELKORA_GROUPING_SYMBOL", "\xE2\x80\xAF"}}, u".", u"\u202F"},
  };
  for (const Case& c : cases) {
    posix::EnvironmentNumberLocale locale(fake_env(c.env));
    EXPECT_EQ(locale.decimal_symbol(), c.decimal);
    EXPECT_EQ(locale.grouping_symbol(), c.grouping);
  }
}

TEST(SuiteServices, ExtensionIsTakenFromTheLastPathComponent) {
  struct Case {
    TextView name, extension;
  };
  const Case cases[] = {{u"a.zks", u"zks"},
                        {u"dir.v2/a", u""},
                        {u"C:\\x.y\\ab.ZEL", u"ZEL"},
                        {u"archive.tar.gz", u"gz"},
                        {u"noext", u""},
                        {u"trailing.", u""},
                        {u"", u""},
                        {u".hidden", u"hidden"}};
  posix::FileSuiteServices files;
  headless::MemorySuiteServices memory;
  for (const Case& c : cases) {
    EXPECT_EQ(files.extension(c.name), c.extension) << to_utf8(c.name);
    EXPECT_EQ(memory.extension(c.name), c.extension) << to_utf8(c.name);
  }
}

TEST(SuiteServices, FindsSuiteFilesInTheResourceFolderWithoutRegardToCase) {
  const auto dir =
      std::filesystem::temp_directory_path() / ("zelkora_suite_" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir);
  std::ofstream(dir / "zelkora.CHM") << "help";
  posix::FileSuiteServices suite(dir);
  EXPECT_EQ(suite.full_path(u"Zelkora.chm"), from_utf8((dir / "zelkora.CHM").string()));
  EXPECT_EQ(suite.full_path(u"missing.chm"), u"");
  EXPECT_TRUE(suite.file_exists(from_utf8((dir / "zelkora.CHM").string())));
  EXPECT_FALSE(suite.file_exists(from_utf8(dir.string())));  // a folder is no file
  EXPECT_FALSE(suite.file_exists(u""));
  EXPECT_EQ(posix::FileSuiteServices().full_path(u"Zelkora.chm"), u"");
  // History is absent unless the suite provides it.
  EXPECT_TRUE(suite.history(u"prog").empty());
  EXPECT_FALSE(suite.add_history(u"prog", u"entry"));
  std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace zelkora::platform
