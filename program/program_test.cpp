// The program layer's own text handling: file names as the forms show and
// keep them, white space, the script language's parsing and what 关于 says.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <regex>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "program/about.h"
#include "program/file_names.h"
#include "program/script_steps.h"
#include "program/white_space.h"
#include "zelkora/platform/paths.h"

namespace zelkora::desk {
namespace {

// Windows, where paths part at "\\" (and "/").
constexpr bool kWindows = std::filesystem::path::preferred_separator != '/';

// Any host drives the programs: they include neither a toolkit, nor a
// window system, nor a host.
TEST(ProgramLayer, IncludesNoToolkitAndNoHost) {
  std::string listed;
  for (const auto& entry : std::filesystem::directory_iterator(ZK_SOURCE_DIR "/program")) {
    std::ifstream in(entry.path());
    for (std::string line; std::getline(in, line);) {
      if (!line.starts_with("#include")) continue;
      for (const char* name : {"<Q", "/qt/", "\"desk/", "/win32", "windows.h"}) {
        if (line.find(name) != std::string::npos) {
          listed += "\n  " + entry.path().filename().string() + ": " + line;
        }
      }
    }
  }
  EXPECT_EQ(listed, "");
}

TEST(FileNames, NameSuffixAndBaseNameOfTheLastPart) {
  struct Case {
    TextView file, name, suffix, base;
    bool windows_only;
  };
  const Case cases[] = {
      {u"/p/梁.tar.zks", u"梁.tar.zks", u"zks", u"梁.tar", false},
      {u"dir.d/file", u"file", u"", u"file", false},
      {u"/x/.bashrc", u".bashrc", u"bashrc", u"", false},
      {u"/x/y/", u"", u"", u"", false},
      {u"a.", u"a.", u"", u"a", false},
      {u"D:\\项目\\梁.zks", u"梁.zks", u"zks", u"梁", true},
      {u"C:a.b", u"a.b", u"b", u"a", true},
  };
  for (const Case& c : cases) {
    if (c.windows_only && !kWindows) continue;
    EXPECT_EQ(file_name(c.file), c.name) << to_utf8(c.file);
    EXPECT_EQ(file_suffix(c.file), c.suffix) << to_utf8(c.file);
    EXPECT_EQ(complete_base_name(c.file), c.base) << to_utf8(c.file);
  }
}

TEST(FileNames, AbsolutePathIsCleanAndNative) {
  const Text here = platform::text_from_path(std::filesystem::current_path());
  const Text sep = kWindows ? u"\\" : u"/";
  EXPECT_EQ(native_absolute_path(u"a/./b/../梁.zks"), here + sep + u"a" + sep + u"梁.zks");
  EXPECT_EQ(native_absolute_path(u"x/.."), here);
  EXPECT_EQ(native_absolute_path(u"a/b/"), here + sep + u"a" + sep + u"b" + sep);
}

TEST(WhiteSpace, TrimmedSimplifiedAndNumbers) {
  EXPECT_EQ(trimmed(u"\u3000 a b\t\r\n\u00a0"), u"a b");
  EXPECT_EQ(simplified(u"  a \u2028\u2029 b\t\nc "), u"a b c");
  EXPECT_EQ(simplified(u"\u0085"), u"");
  const std::pair<TextView, std::optional<int>> numbers[] = {
      {u" 12 ", 12},
      {u"+4", 4},
      {u"-2147483648", std::numeric_limits<int>::min()},
      {u"2147483648", std::nullopt},
      {u"１２", std::nullopt},
      {u"-", std::nullopt},
      {u"1 2", std::nullopt},
      {u"", std::nullopt}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(to_int(text), number) << to_utf8(text);
}

TEST(ScriptSteps, CaseStepsAndPrintedLines) {
  using Kind = CaseStep::Kind;
  struct Case {
    TextView rest;
    Kind kind;
    int32_t row, col;
    TextView text;
  };
  const Case cases[] = {{u"add", Kind::kAdd, 0, 0, u""},
                        {u"up  3", Kind::kUp, 3, 0, u""},
                        {u"2 3  a  b ", Kind::kSet, 2, 3, u"a  b"},
                        {u"2 7", Kind::kSet, 2, 7, u""}};
  for (const Case& c : cases) {
    const CaseStep step = parse_case_step(c.rest);
    EXPECT_EQ(std::tuple(step.kind, step.row, step.col, step.text),
              std::tuple(c.kind, c.row, c.col, Text(c.text)))
        << to_utf8(c.rest);
  }
  for (TextView bad : {u"", u"add 1", u"delete 0", u"2 8 x", u"x 1 y", u"down"}) {
    EXPECT_THROW(parse_case_step(bad), StepError) << to_utf8(bad);
  }
  const ScriptStep step = parse_step(u"edit  10 300 ");
  EXPECT_EQ(std::pair(step.verb, step.rest), std::pair(Text(u"edit"), Text(u"10 300")));
  EXPECT_EQ(message_line(u"梁", u"第一行\r\n  第二行\r第三行"),
            u"message: 梁 | 第一行 第二行 第三行");
  EXPECT_EQ(copied_line(u"1\n2\n"), u"copied: 1|2");
}

// 关于 names the version, the build and each part the host's program
// bundles or links with its licence, and no other host's.
TEST(About, VersionBuildAndTheHostsLicences) {
  struct Case {
    AboutHost host;
    std::vector<TextView> named, not_named;
  };
  const Case cases[] = {
      {AboutHost::kQt,
       {u"\nQt 6：GNU LGPL 第 3 版", u"\nzlib：zlib 许可", u"\nZelkora Grade 字体"},
       {u"MinGW-w64", u"winpthreads", u"GCC 运行库"}},
      {AboutHost::kWindows,
       {u"\nzlib：zlib 许可", u"\nMinGW-w64 运行库：ZPL 2.1", u"\nwinpthreads：MIT 许可",
        u"\nGCC 运行库（libstdc++、libgcc）：GPLv3，附 GCC 运行库例外", u"\nZelkora Grade 字体"},
       {u"Qt", u"LGPL"}},
  };
  const auto platform = platform::Platform::current();
  EXPECT_EQ(about_title(*platform), u"关于 Zelkora 结构快速设计");
  // The commit (or 未知 outside a git checkout), the day, the compiler.
  const std::regex build("版本 " ZELKORA_VERSION
                         "\n构建 ([0-9a-f]{7,}|未知)，\\d{4}-\\d{2}-\\d{2}\n"
                         "(MinGW-w64 GCC|GCC|Clang) \\d+[.\\d]*，(Linux|Windows)( \\S+)?");
  EXPECT_TRUE(std::regex_match(to_utf8(build_text()), build)) << to_utf8(build_text());
  for (const Case& c : cases) {
    const Text text = about_text(*platform, c.host, u"Qt 6.4.2");
    EXPECT_TRUE(text.starts_with(u"Zelkora 结构快速设计\n" + build_text() + u"\nQt 6.4.2\n"));
    for (TextView part : c.named) {
      EXPECT_NE(text.find(part), Text::npos) << to_utf8(part) << " in\n" << to_utf8(text);
    }
    const Text licences = text.substr(text.find(u"\n\n"));
    for (TextView part : c.not_named) {
      EXPECT_EQ(licences.find(part), Text::npos) << to_utf8(part) << " in\n" << to_utf8(text);
    }
  }
}

}  // namespace
}  // namespace zelkora::desk
