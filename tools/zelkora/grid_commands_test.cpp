// The layout command: the rows of a shipped layout as the grid reads them,
// the name found without regard to case, and an unknown name as a fault.
#include <gtest/gtest.h>

#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/platform/platform.h"

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
       {"rows=31\nlMax=24\n", "\n10\t7\t100\t1392\t1\t5140\t0\t1\t1\n",
        "\n11\t8\t100\t2200\t1\t5142\t500\txS>0_Lx\t0\n"}},
      {{"layout", "clsloadcombination"}, kExitOk, {"rows=25\nlMax=19\n"}},
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

}  // namespace
}  // namespace zelkora::cli
