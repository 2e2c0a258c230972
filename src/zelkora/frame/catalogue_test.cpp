// Tests of the catalogue files, the compiled-in catalogue and resource folders.
#include "zelkora/frame/catalogue.h"

#include <gtest/gtest.h>

#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora::frame {
namespace {

Text text_of(const Catalogue& c, int32_t id) { return Text(c.find(id).value_or(u"<none>")); }

TEST(CatalogueFile, ReadsTextsWithEscapesAndSignificantBlanks) {
  Catalogue c;
  const std::string file =
      "\xEF\xBB\xBF# heading\n"
      "100\tZelkora 结构快速设计\n"
      "\n"
      "32001\t清空列表将删除表格中所有的数据。  \r\n"
      "36105\t\\uE002\n"
      "60033\t ＝ \n"
      "7\ta\\tb\\nc\\rd\\\\e\\u00B2\n"
      "8\t\n"
      "9\t#not a comment";
  ASSERT_FALSE(c.add_file("t.tsv", file).has_value());
  EXPECT_EQ(c.size(), 7u);
  EXPECT_EQ(text_of(c, 100), u"Zelkora 结构快速设计");
  EXPECT_EQ(text_of(c, 32001), u"清空列表将删除表格中所有的数据。  ");
  EXPECT_EQ(text_of(c, 36105), u"\uE002");
  EXPECT_EQ(text_of(c, 60033), u" ＝ ");
  EXPECT_EQ(text_of(c, 7), u"a\tb\nc\rd\\e²");
  EXPECT_EQ(text_of(c, 8), u"");
  EXPECT_EQ(text_of(c, 9), u"#not a comment");
  EXPECT_FALSE(c.find(101).has_value());
  EXPECT_FALSE(c.find(0).has_value());
  EXPECT_FALSE(c.find(-100).has_value());
}

TEST(CatalogueFile, RefusesADamagedFileWholeAndNamesTheLine) {
  struct Case {
    std::string content;
    std::size_t line;
    std::string message_part;
  };
  const Case cases[] = {
      {"1\tok\n12a\tx\n", 2, "bad id"},
      {"1\tok\n0\tx\n", 2, "bad id"},
      {"-5\tx\n", 1, "bad id"},
      {"2147483648\tx\n", 1, "bad id"},
      {"\tx\n", 1, "bad id"},
      {" 5\tx\n", 1, "bad id"},
      {"1\tok\n# c\n5 no tab\n", 3, "no tab"},
      {"5\ta\\xb\n", 1, "unknown escape"},
      {"5\ta\\u12\n", 1, "four hexadecimal"},
      {"5\ta\\u12G4\n", 1, "four hexadecimal"},
      {"5\tend\\", 1, "backslash ends"},
      {"5\ta\n6\tb\n5\tc\n", 3, "given twice"},
      {"5\tok\n6\t\xE5\xB7\n", 2, "invalid UTF-8"},
      {"5\t\xC0\xAF\n", 1, "invalid UTF-8"},
  };
  for (const Case& k : cases) {
    Catalogue c;
    ASSERT_FALSE(c.add_file("base.tsv", "1\tbase\n5\tfive\n").has_value());
    const auto problem = c.add_file("bad.tsv", k.content);
    ASSERT_TRUE(problem.has_value()) << k.content;
    EXPECT_EQ(problem->file, "bad.tsv");
    EXPECT_EQ(problem->line, k.line) << k.content;
    EXPECT_NE(problem->message.find(k.message_part), std::string::npos) << problem->message;
    EXPECT_EQ(problem->describe().rfind("bad.tsv:" + std::to_string(k.line) + ": ", 0), 0u);
    // Nothing of the refused file is taken.
    EXPECT_EQ(c.size(), 2u);
    EXPECT_EQ(text_of(c, 1), u"base");
    EXPECT_EQ(text_of(c, 5), u"five");
    EXPECT_FALSE(c.find(6).has_value());
  }
}

TEST(CatalogueFile, LaterFilesReplaceTextsIdById) {
  Catalogue c;
  ASSERT_FALSE(c.add_file("a.tsv", "1\tone\n2\ttwo\n").has_value());
  ASSERT_FALSE(c.add_file("b.tsv", "2\tzwei\n3\tdrei\n").has_value());
  EXPECT_EQ(c.size(), 3u);
  EXPECT_EQ(text_of(c, 1), u"one");
  EXPECT_EQ(text_of(c, 2), u"zwei");
  EXPECT_EQ(text_of(c, 3), u"drei");
}

TEST(CatalogueFile, KeepsEveryTextThroughTableGrowth) {
  std::string file;
  for (int id = 1; id <= 20000; ++id) {
    file += std::to_string(id * 3) + "\tt" + std::to_string(id) + "\n";
  }
  Catalogue c;
  ASSERT_FALSE(c.add_file("big.tsv", file).has_value());
  ASSERT_EQ(c.size(), 20000u);
  for (int id = 1; id <= 20000; ++id) {
    ASSERT_EQ(text_of(c, id * 3), u"t" + from_utf8(std::to_string(id)));
    ASSERT_FALSE(c.find(id * 3 + 1).has_value());
  }
}

TEST(CompiledInCatalogue, LoadsWithoutProblemsAndHoldsTheLibraryTexts) {
  std::vector<CatalogueProblem> problems;
  const auto c = load_catalogue(platform::standard_resources(), &problems);
  for (const auto& p : problems) ADD_FAILURE() << p.describe();
  EXPECT_EQ(text_of(*c, 100), u"Zelkora 结构快速设计");
  EXPECT_EQ(text_of(*c, 36105), u"\uE002");
  EXPECT_EQ(text_of(*c, 36112), u"\uE003");
  EXPECT_EQ(text_of(*c, 32196), u"|");
  EXPECT_EQ(text_of(*c, 32205), u"-");
  EXPECT_EQ(text_of(*c, 45753), u"|6|8|10|12|14|16|18|20|22|25|28|32|36|40|50|7.1|9|10.7|12.6");
  EXPECT_EQ(text_of(*c, 53218), u"错误：%%1% ＝ %%2% ＞ %%3%，");
  EXPECT_GT(c->size(), 200u);
}

TEST(ResourceFolder, OverridesIdByIdAndRefusesADamagedFile) {
  test_support::ScratchFolder dir("zk-catalogue");
  dir.put("catalogue/a_suite.tsv", "100\tSuite name\n999999\tnew text\n");
  dir.put("catalogue/b_damaged.tsv", "1000\treplaced?\n1001\tbad\\q\n");
  dir.put("catalogue/notes.txt", "not a catalogue file");
  std::vector<CatalogueProblem> problems;
  const auto c = load_catalogue(platform::standard_resources(dir.path()), &problems);
  EXPECT_EQ(text_of(*c, 100), u"Suite name");
  EXPECT_EQ(text_of(*c, 999999), u"new text");
  EXPECT_EQ(text_of(*c, 1000), u"工程名称");  // the damaged file is refused whole
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_NE(problems[0].describe().find("b_damaged.tsv:2: unknown escape"), std::string::npos)
      << problems[0].describe();
}

TEST(ResourceFolder, ReportsProblemsOnceThroughTheMessageBox) {
  test_support::ScratchFolder dir("zk-catalogue");
  dir.put("catalogue/x.tsv", "abc\tdef\n");
  platform::headless::RecordingMessageBox box;
  const auto first = catalogue_for(platform::standard_resources(dir.path()), &box);
  const auto second = catalogue_for(platform::standard_resources(dir.path()), &box);
  EXPECT_EQ(first.get(), second.get());
  ASSERT_EQ(box.diagnostics.size(), 1u);
  EXPECT_NE(box.diagnostics[0].find("x.tsv:1: bad id"), std::string::npos);
}

TEST(ResourceFolder, AMissingFolderKeepsTheCompiledInTexts) {
  std::vector<CatalogueProblem> problems;
  const auto c =
      load_catalogue(platform::standard_resources("/nonexistent/zelkora/resources"), &problems);
  EXPECT_EQ(text_of(*c, 1000), u"工程名称");
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_NE(problems[0].message.find("does not exist"), std::string::npos);
}

}  // namespace
}  // namespace zelkora::frame
