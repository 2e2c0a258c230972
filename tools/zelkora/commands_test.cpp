// The wiring of the subsystem commands: output lines, numbers written with
// "." whatever the user's decimal symbol, and the exit codes of bad usage and
// faults.
#include <gtest/gtest.h>

#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/platform/headless/headless.h"

namespace zelkora::cli {
namespace {

struct Case {
  std::vector<std::string> args;
  int code;
  std::string out;  // stdout, or a piece of stderr for a failure
  Text decimal = u".";
};

void expect_commands(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    auto p = platform::Platform::headless();
    p->locale = std::make_shared<platform::headless::FixedNumberLocale>(
        c.decimal, c.decimal == u"," ? u"." : u",");
    platform::ScopedPlatform scope(p);
    std::ostringstream out, err;
    EXPECT_EQ(run(c.args, out, err), c.code) << c.args[1 % c.args.size()] << " " << err.str();
    if (c.code == kExitOk) {
      EXPECT_EQ(out.str(), c.out) << c.args[0] << " " << c.args[1 % c.args.size()];
    } else {
      EXPECT_EQ(out.str(), "");
      EXPECT_NE(err.str().find(c.out), std::string::npos) << err.str();
    }
  }
}

TEST(SubsystemCommands, Section) {
  expect_commands({
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
  });
}

TEST(SubsystemCommands, SplitAndWrap) {
  const std::string a = std::string(50, 'a'), b = std::string(50, 'b');
  expect_commands({
      {{"split", a + " " + b, " ", "--indent", "1", "--indent-add", "2"},
       kExitOk,
       " " + a + "\n   " + b + "\n"},
      {{"split", "   ", ","}, kExitOk, ""},
      {{"split", "x\\uE002", ","}, kExitOk, "x\\uE002\n"},
      {{"wrap", "甲乙丙，丁戊", "--width", "7", "--following", "2"},
       kExitOk,
       "甲乙\n  丙，\n  丁戊\n"},
      {{"wrap", ""}, kExitOk, ""},
      {{"split", "a b", " ", "--width", "8O"}, kExitUsage, "whole number"},
      {{"split", "a b", " ", "--width", "40000"}, kExitUsage, "-32768 to 32767"},
      {{"wrap", "a", "--first"}, kExitUsage, "needs a value"},
      {{"wrap", "a", "b"}, kExitUsage, "expected 1"},
      {{"split", "a b", " ", "--indent", "30000", "--indent-add", "30000"}, kExitFault, "overflow"},
  });
}

TEST(SubsystemCommands, RebarInBothNotations) {
  expect_commands({
      {{"rebar", "4Φ20"}, kExitOk, "count=4\ndiameter=20\nerror=0\n", u"."},
      {{"rebar", "a-20"}, kExitOk, "count=0\ndiameter=20\nerror=3000150\n", u"."},
      {{"rebar", "3Φ2.5"}, kExitOk, "count=3\ndiameter=2.5\nerror=0\n", u","},
      {{"slabbar", "10@200"}, kExitOk, "diameter=10\nspacing=200\nerror=0\n", u"."},
      {{"slabbar", "8@12,5"}, kExitOk, "diameter=8\nspacing=12.5\nerror=0\n", u","},
      {{"arith", "*1.2"}, kExitOk, "value=1.2\nsign=1\n", u"."},
      {{"arith", "10/4"}, kExitOk, "value=2,5\nsign=2\n", u","},
      {{"arith", ""}, kExitOk, "value=0\nsign=0\n", u"."},
      {{"grade", "400"}, kExitOk, "\\uE003\n", u"."},
      {{"grade", "300*1.2"}, kExitOk, "\\uE002\n", u"."},
      {{"steelfy", "HRB 400"}, kExitOk, "known=true\nfy=360\n", u"."},
      {{"steelfy", "hrb400"}, kExitOk, "known=false\nfy=0\n", u"."},
  });
}

}  // namespace
}  // namespace zelkora::cli
