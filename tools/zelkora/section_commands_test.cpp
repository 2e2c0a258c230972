#include <gtest/gtest.h>

#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/platform/platform.h"

namespace zelkora::cli {
namespace {

TEST(SectionCommands, OutputAndExitCodes) {
  struct Case {
    std::vector<std::string> args;
    int code;
    std::string out;  // stdout, or a piece of stderr for a failure
  };
  const Case cases[] = {
      {{"section", "30261", "--b", "200", "--h", "500"},
       kExitOk,
       "I=0.00208333333333333\nW=0.00833333333333333\nA=0.1\nY=0.25\n"},
      {{"section", "矩形截面", "--h", "500", "--b", "200"},
       kExitOk,
       "I=0.00208333333333333\nW=0.00833333333333333\nA=0.1\nY=0.25\n"},
      {{"section", "环形截面", "--b", "400", "--h", "300"},
       kExitOk,
       "I=0.000859029241215959\nW=0.00572686160810639\nA=0.0549778714378214\nY=0.15\n"},
      {{"section", "30276", "--b", "2000", "--h", "700", "--bf", "1000", "--hf", "300", "--h1",
        "400", "--steps", "2"},
       kExitOk,
       "I=0.0396439393939394\nW=0.134179487179487\nA=1.1\nY=0.295454545454545\n"},
      {{"section", "30270", "--h", "500"}, kExitOk, "I=0\nW=0\nA=0\nY=0.25\n"},
      {{"section", "30267"}, kExitFault, "division by zero"},
      {{"section", "30262", "--h", "500"}, kExitFault, "division by zero"},
      {{"section", "30261", "--b", "x"}, kExitUsage, "b must be a number"},
      {{"section"}, kExitUsage, "expected 1"},
  };
  for (const Case& c : cases) {
    platform::ScopedPlatform scope(platform::Platform::headless());
    std::ostringstream out, err;
    EXPECT_EQ(run(c.args, out, err), c.code) << c.args[1 % c.args.size()] << " " << err.str();
    if (c.code == kExitOk) {
      EXPECT_EQ(out.str(), c.out) << c.args[1];
    } else {
      EXPECT_EQ(out.str(), "");
      EXPECT_NE(err.str().find(c.out), std::string::npos) << err.str();
    }
  }
}

}  // namespace
}  // namespace zelkora::cli
