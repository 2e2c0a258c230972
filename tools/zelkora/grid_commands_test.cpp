// The layout command: the rows of a shipped layout as the grid reads them,
// the name found without regard to case, and an unknown name as a fault.
// The grid command: a form's grid driven by a script, saved and loaded.
#include <gtest/gtest.h>

#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/platform/headless/memory_files.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora::cli {
namespace {

TEST(GridCommands, LayoutPrintsOneLinePerRow) {
  platform::ScopedPlatform scope(platform::Platform::headless());
  const struct {
    std::vector<std::string> args;
    int code;
    std::vector<std::string> pieces;  // in stdout when it ran, else in stderr
  } cases[] = {
      {{"layout", "CLSBEAMSTEEL"},
       kExitOk,
       {"rows=31\nlMax=25\n1\t-1\t10\t1346\t1\t0\t\t0\t0\n2\t1\t100\t1002\t1\t9000\t\t0\t0\n",
        "\n17\t15\t-110\t1370\t1\t5752\t_2, 16\t0\t0\n18\t16\t1100\t1372\t1\t5754\t_2\tI>=1\t0\n",
        "\n26\t-1\t-10\t1348\t1\t0\t\t0\t0\n", "\n29\t6\t100\t1384\t1\t1050\t0\t1\t1\n",
        "\n31\t0\t100\t1000\t0\t1008\t \t0\t0\n"}},
      {{"layout", "clsFoundationSpread"},
       kExitOk,
       {"rows=37\nlMax=30\n", "\n10\t7\t100\t1392\t1\t5140\t0\t1\t1\n",
        "\n11\t8\t100\t2200\t1\t5142\t500\txS>0_Lx\t0\n"}},
      {{"layout", "clsloadcombination"}, kExitOk, {"rows=27\nlMax=21\n"}},
      {{"layout", "clsNoSuchForm"}, kExitFault, {"no layout is called \"clsNoSuchForm\""}},
      {{"layout", "clsFormZhRq12"}, kExitFault, {"missing resource", "clsFormZhRq12"}},
      {{"layout"}, kExitUsage, {"expected 1"}},
  };
  for (const auto& c : cases) {
    std::ostringstream out, err;
    EXPECT_EQ(run(c.args, out, err), c.code) << c.args.back() << " " << err.str();
    const std::string& text = c.code == kExitOk ? out.str() : err.str();
    for (const std::string& piece : c.pieces) {
      EXPECT_NE(text.find(piece), std::string::npos) << c.args.back() << ": " << piece;
    }
  }
}

TEST(GridCommands, GridRunsAScriptAndPrintsTheGridAndItsMessages) {
  platform::ScopedPlatform scope(platform::Platform::headless());  // data files in memory
  test_support::ScratchFolder dir("zk-grid");
  const std::string script = platform::utf8_from_path(dir / "script.txt");
  const struct {
    std::string script;
    std::vector<std::string> args;
    int code;
    std::vector<std::string> pieces;  // in stdout when it ran, else in stderr
  } cases[] = {
      {"",
       {"clsBeamSteel"},
       kExitOk,
       {"- 基本信息\n  构件编号                           KL-1\n",
        "\n+ 通长纵向钢筋                       2, 16\n",
        "\n  箍筋的肢数 n                       2\n", "\n+ 选项\n--------\n"}},
      {"# a group of two members takes three values, then two\n"
       "enter 17\ntype 2,16,3\nleave\ntype 3,20\nleave\n"
       "enter 8\ntype 300\nleave\nhide 4 5 19\n",
       {"clsBeamSteel", "--save", "beam.zks"},
       kExitOk,
       {"line 4: leave cancelled\n- 基本信息\n", "\n+ 通长纵向钢筋                       *3, 20*\n",
        "\n  梁的截面宽度 b                     *300*\n", "\n- 配筋\n",
        "--------\n*梁的截面宽度 b*\nb——梁的截面宽度（mm）。\n========\n无效输入！\n"}},
      {"click 26 1\nenter 31\ntype 办公楼\nleave\nkey 13\n",
       {"clsbeamsteel", "--load", "beam.zks"},
       kExitOk,
       {"\n  梁的截面宽度 b                     *300*\n", "\n- 选项\n",
        "\n  工程名称                           *办公楼*\n--------\n*工程名称*\n"}},
      {"enter 8\ntype 300\nleave\ndefaults cancel\n",
       {"clsBeamSteel"},
       kExitOk,
       {"\n  梁的截面宽度 b                     *300*\n"}},
      {"enter 8\ntype 300\nleave\ndefaults yes\n",
       {"clsBeamSteel"},
       kExitOk,
       {"\n  梁的截面宽度 b                     250\n"}},
      {"", {"clsBeamSteel", "--load", "none.zks"}, kExitFailed, {"cannot load"}},
      {"enter 8\nenter 0\n", {"clsBeamSteel"}, kExitUsage, {"script line 2 \"enter 0\""}},
      {"\nclick 3\n", {"clsBeamSteel"}, kExitUsage, {"script line 2", "takes 2"}},
      {"defaults maybe\n", {"clsBeamSteel"}, kExitUsage, {"line 1", "yes or cancel"}},
      {"hide 1 26\n", {"clsBeamSteel"}, kExitUsage, {"line 1", "item 26 is outside 0..25"}},
      {"jump 3\n", {"clsBeamSteel"}, kExitUsage, {"line 1", "unknown event \"jump\""}},
  };
  for (const auto& c : cases) {
    std::vector<std::string> args = {"grid"};
    args.insert(args.end(), c.args.begin(), c.args.end());
    if (!c.script.empty()) {
      dir.put("script.txt", c.script);
      args.insert(args.end(), {"--script", script});
    }
    std::ostringstream out, err;
    EXPECT_EQ(run(args, out, err), c.code) << c.script << err.str();
    const std::string& text = c.code == kExitOk ? out.str() : err.str();
    for (const std::string& piece : c.pieces) {
      EXPECT_NE(text.find(piece), std::string::npos) << c.script << "\n---\n" << text;
    }
  }
}

// The same file gets the same error number whichever command reads it.
TEST(GridCommands, ADataFileGetsOneErrorNumberInEveryCommand) {
  auto bundle = platform::Platform::headless();
  auto files = std::static_pointer_cast<platform::headless::MemoryFileService>(bundle->files);
  platform::ScopedPlatform scope(bundle);
  std::ostringstream saved, saving;
  ASSERT_EQ(run({"grid", "clsBeamSteel", "--save", "beam.zks"}, saved, saving), kExitOk);
  const std::string whole = files->bytes(u"beam.zks").value_or("");
  files->put(u"cut.zks", whole.substr(0, whole.size() - 3));
  files->put(u"empty.zks", "");
  const std::pair<std::string, std::string> cases[] = {
      {"cut.zks", "(error 2001)"}, {"empty.zks", "(error 2001)"}, {"none.zks", "(error 2002)"}};
  for (const auto& [file, number] : cases) {
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"datafile", "dump", file},
          std::vector<std::string>{"grid", "clsBeamSteel", "--load", file}}) {
      std::ostringstream out, err;
      EXPECT_EQ(run(args, out, err), kExitFailed) << args[0] << " " << file;
      EXPECT_NE(err.str().find(number), std::string::npos) << args[0] << ": " << err.str();
    }
  }
}

}  // namespace
}  // namespace zelkora::cli
