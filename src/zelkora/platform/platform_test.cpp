// Tests of the platform bundles and their scopes.
#include "zelkora/platform/platform.h"

#include <gtest/gtest.h>

#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/scratch_folder_test_support.h"
#include "zelkora/platform/shared_services.h"

namespace zelkora::platform {
namespace {

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
  FolderSuiteServices files;
  headless::MemorySuiteServices memory;
  for (const Case& c : cases) {
    EXPECT_EQ(files.extension(c.name), c.extension) << to_utf8(c.name);
    EXPECT_EQ(memory.extension(c.name), c.extension) << to_utf8(c.name);
  }
}

// The first folder that has the file wins; names are compared without
// regard to case, and Chinese names work on every system.
TEST(SuiteServices, FindsSuiteFilesInTheirFoldersWithoutRegardToCase) {
  test_support::ScratchFolder dir("zk-suite");
  dir.put("资源/zelkora.CHM", "help");
  dir.put("程序/Zelkora.chm", "help");
  dir.put("程序/规范.pdf", "pdf");
  FolderSuiteServices suite({dir / "none", dir / "资源", dir / "程序"});
  EXPECT_EQ(suite.full_path(u"Zelkora.chm"), dir.text("资源/zelkora.CHM"));
  EXPECT_EQ(suite.full_path(u"规范.PDF"), dir.text("程序/规范.pdf"));
  EXPECT_EQ(suite.full_path(u"missing.chm"), u"");
  EXPECT_TRUE(suite.file_exists(dir.text("资源/zelkora.CHM")));
  EXPECT_FALSE(suite.file_exists(dir.text("资源")));  // a folder is no file
  EXPECT_FALSE(suite.file_exists(u""));
  EXPECT_EQ(FolderSuiteServices().full_path(u"Zelkora.chm"), u"");
  // History is absent unless the suite provides it.
  EXPECT_TRUE(suite.history(u"prog").empty());
  EXPECT_FALSE(suite.add_history(u"prog", u"entry"));
}

// ZELKORA_RESOURCES lists folders; a later one overrides an earlier one,
// and all of them the compiled-in files.
TEST(Resources, FolderListInOrderLaterOverridesEarlier) {
  const std::string sep(1, kFolderListSeparator);
  const std::pair<std::optional<std::string>, std::vector<std::string>> lists[] = {
      {std::nullopt, {}},
      {"", {}},
      {"/a", {"/a"}},
      {"/a" + sep + "/资源 b", {"/a", "/资源 b"}},
      {sep + "/a" + sep + sep + "/b" + sep, {"/a", "/b"}},
  };
  for (const auto& [value, expected] : lists) {
    const EnvLookup env = [&](const char* name) {
      return std::string_view(name) == "ZELKORA_RESOURCES" ? value : std::nullopt;
    };
    std::vector<std::filesystem::path> wanted;
    for (const std::string& folder : expected) wanted.push_back(path_from_utf8(folder));
    EXPECT_EQ(resource_folders(env), wanted) << value.value_or("(unset)");
  }

  test_support::ScratchFolder dir("zk-resources");
  dir.put("suite/ZK_PROMENU.INI", "suite");
  dir.put("suite/layouts/a.txt", "suite");
  dir.put("program/layouts/a.txt", "program");
  const ResourceSources sources = standard_resources(
      {dir / "suite", dir / "missing", std::filesystem::path(), dir / "program"});
  ASSERT_EQ(sources.size(), 4u);  // the empty path is skipped, the missing folder kept
  EXPECT_EQ(read_resource(sources, "layouts/a.txt", 100), "program");
  EXPECT_EQ(read_resource(sources, "ZK_PROMENU.INI", 100), "suite");
  EXPECT_TRUE(read_resource(sources, "catalogue/catalogue.tsv", 1 << 20).has_value());
}

}  // namespace
}  // namespace zelkora::platform
