#include <gtest/gtest.h>

#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/platform/platform.h"

namespace zelkora::cli {
namespace {

TEST(SplitCommands, OutputAndExitCodes) {
  struct Case {
    std::vector<std::string> args;
    int code;
    std::string out;  // stdout, or a piece of stderr for a failure
  };
  const std::string a = std::string(50, 'a'), b = std::string(50, 'b');
  const Case cases[] = {
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
  };
  for (const Case& c : cases) {
    platform::ScopedPlatform scope(platform::Platform::headless());
    std::ostringstream out, err;
    EXPECT_EQ(run(c.args, out, err), c.code) << c.args[1] << " " << err.str();
    if (c.code == kExitOk) {
      EXPECT_EQ(out.str(), c.out) << c.args[1];
    } else {
      EXPECT_NE(err.str().find(c.out), std::string::npos) << err.str();
    }
  }
}

}  // namespace
}  // namespace zelkora::cli
