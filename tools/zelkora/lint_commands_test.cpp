// The lint-layout command: each rule of the lint found in a deliberately
// broken layout of a program's own (its texts in the program's block, as
// ZELKORA_RESOURCES would bring them), a shipped layout and the example
// program's layout clean, by name and by file.
#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/grid/layout_lint.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/resources.h"
#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora::cli {
namespace {

const std::string kTestData = std::string(ZK_SOURCE_DIR) + "/tools/zelkora/testdata/";

struct Linted {
  int code;
  std::string out, err;
};

Linted lint(const std::string& layout) {
  auto p = platform::Platform::headless();
  p->resources = platform::standard_resources(kTestData + "program");
  platform::ScopedPlatform scope(p);
  std::ostringstream out, err;
  const int code = run({"lint-layout", layout}, out, err);
  return {code, out.str(), err.str()};
}

TEST(LintCommand, FindsEveryProblemOfABrokenLayout) {
  using grid::LayoutRule;
  const struct {
    LayoutRule rule;
    std::string line;  // a whole line of the output
  } cases[] = {
      {LayoutRule::kName,
       "layout: no catalogue text 63700-63752 or 70000-79999 names the layout \"clsBrokenWall\" "
       "(a program registers its own name in its block)"},
      {LayoutRule::kItemGap, "layout: item index 19 is on no row (the indexes run 0 to 20)"},
      {LayoutRule::kFirstRow,
       "line 1, item 0: the first row is an item: a layout starts with a heading"},
      {LayoutRule::kHeading, "line 3, heading: item index -2: a heading's item index is -1"},
      {LayoutRule::kHeadingTwice, "line 4, heading: a second heading with caption 70010 (line 2)"},
      {LayoutRule::kKind,
       "line 5, item 1: kind 120 is no kind of an item row: 100 (item), 110 (group) or 1100 "
       "(group member)"},
      {LayoutRule::kCollapsed,
       "line 6, item 2: only a group row starts collapsed (a negative descriptor id)"},
      {LayoutRule::kCaption, "line 7, item 3: caption 70900 has no catalogue text"},
      {LayoutRule::kExplanation,
       "line 8, item 4: caption 70028 has no explanation (catalogue text 70029)"},
      {LayoutRule::kCell, "line 9, item 5: cell 2 is neither 0 (text) nor 1 (list)"},
      {LayoutRule::kList,
       "line 10, item 6: list 100 is read from the user's INI files (lists 0, 100, 200), not "
       "from the catalogue"},
      {LayoutRule::kList,
       "line 11, item 7: list 36000 has no catalogue text 76000 (list id = text id - 40000)"},
      {LayoutRule::kCheck,
       "line 12, item 8: check \"S>=2oo\": \">=2oo\" cannot be read, and the grid passes over it"},
      {LayoutRule::kDefaultEmpty,
       "line 13, item 9: default \"-9\" names item 9 of list 35001, which the list does not have "
       "(items count from 0)"},
      {LayoutRule::kDefaultRefused,
       "line 14, item 10: default \"100\" is refused by the row's check \"S>=200\" (error 166: "},
      {LayoutRule::kListItemRefused,
       "line 15, item 11: the row's check \"S>=300\" refuses 2 item(s) of list 35002, the first "
       "\"200\" (error 166: "},
      {LayoutRule::kMemberWithoutGroup,
       "line 16, item 12: a group member (kind 1100) without a group row (kind 110) above it"},
      {LayoutRule::kGroupMembers,
       "line 17, item 13: a group has 1 member row(s) (kind 1100) below it, where it needs two "
       "or more"},
      {LayoutRule::kGroupDefault,
       "line 19, item 15: the group's default \"12, 200\" is not its members' defaults joined, "
       "\"12, 150\""},
      {LayoutRule::kUnreadableLine,
       "line 22, item 18: descriptor \"100|70012|1\" has 3 fields where 6 are needed"},
      {LayoutRule::kDescriptorText, "line 23: descriptor 70999 has no catalogue text"},
      {LayoutRule::kLineEnd,
       "line 24: the line ends in a bare LF: the suite's layouts end their lines in CR LF"},
      {LayoutRule::kUnreadableLine, "line 24: \"abc\" has no descriptor id after a comma"},
      {LayoutRule::kItemTwice, "line 25, item 17: item index 17 is on line 21 too"},
      {LayoutRule::kItemRange,
       "line 26, item 40: item index 40 is beyond 20 (rows - headings - 1): the indexes run 0 "
       "to N-1"},
  };
  const Linted broken = lint(kTestData + "clsBrokenWall.txt");
  EXPECT_EQ(broken.code, kExitFailed);
  EXPECT_NE(broken.err.find("problem(s) in the layout"), std::string::npos) << broken.err;
  std::set<LayoutRule> rules;
  for (const auto& c : cases) {
    EXPECT_NE(("\n" + broken.out).find("\n" + c.line), std::string::npos) << c.line << "\n"
                                                                          << broken.out;
    rules.insert(c.rule);
  }
  EXPECT_NE(broken.out.find("\nproblems=26\n"), std::string::npos) << broken.out;
  // No rows at all is the one rule a broken layout with rows cannot show.
  test_support::ScratchFolder dir("zk-lint");
  dir.put("clsEmpty.txt", "\r\n  \r\n");
  EXPECT_NE(lint(platform::utf8_from_path(dir / "clsEmpty.txt")).out.find("the layout has no rows"),
            std::string::npos);
  rules.insert(LayoutRule::kNoRows);
  EXPECT_EQ(rules.size(), static_cast<std::size_t>(LayoutRule::kItemGap) + 1) << "a rule untested";
}

TEST(LintCommand, AShippedLayoutAndAProgramsOwnLintCleanByNameAndFile) {
  for (const std::string& layout :
       std::vector<std::string>{"CLSFOUNDATIONSPREAD", "clsretainingwall",
                                kTestData + "program/layouts/clsRetainingWall.txt"}) {
    const Linted clean = lint(layout);
    EXPECT_EQ(clean.code, kExitOk) << layout << "\n" << clean.out << clean.err;
    EXPECT_EQ(clean.out, "problems=0\n") << layout;
  }
  const Linted missing = lint("clsNoSuchForm");
  EXPECT_EQ(missing.code, kExitFault);
  EXPECT_NE(missing.err.find("\"clsNoSuchForm\" does not exist"), std::string::npos) << missing.err;
  EXPECT_EQ(lint(kTestData + "none.txt").code, kExitFailed);
}

}  // namespace
}  // namespace zelkora::cli
