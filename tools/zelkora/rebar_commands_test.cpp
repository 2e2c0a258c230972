#include <gtest/gtest.h>

#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/platform/headless/headless.h"

namespace zelkora::cli {
namespace {

// The output lines of each command, and numbers written with "." whatever the
// user's decimal symbol.
TEST(RebarCommands, OutputInBothNotations) {
  struct Case {
    Text decimal;
    std::vector<std::string> args;
    std::string out;
  };
  const Case cases[] = {
      {u".", {"rebar", "4Φ20"}, "count=4\ndiameter=20\nerror=0\n"},
      {u".", {"rebar", "a-20"}, "count=0\ndiameter=20\nerror=3000150\n"},
      {u",", {"rebar", "3Φ2.5"}, "count=3\ndiameter=2.5\nerror=0\n"},
      {u".", {"slabbar", "10@200"}, "diameter=10\nspacing=200\nerror=0\n"},
      {u",", {"slabbar", "8@12,5"}, "diameter=8\nspacing=12.5\nerror=0\n"},
      {u".", {"arith", "*1.2"}, "value=1.2\nsign=1\n"},
      {u",", {"arith", "10/4"}, "value=2,5\nsign=2\n"},
      {u".", {"arith", ""}, "value=0\nsign=0\n"},
      {u".", {"grade", "400"}, "\\uE003\n"},
      {u".", {"grade", "300*1.2"}, "\\uE002\n"},
      {u".", {"steelfy", "HRB 400"}, "known=true\nfy=360\n"},
      {u".", {"steelfy", "hrb400"}, "known=false\nfy=0\n"},
  };
  for (const Case& c : cases) {
    auto p = platform::Platform::headless();
    p->locale = std::make_shared<platform::headless::FixedNumberLocale>(
        c.decimal, c.decimal == u"," ? u"." : u",");
    platform::ScopedPlatform scope(p);
    std::ostringstream out, err;
    EXPECT_EQ(run(c.args, out, err), kExitOk) << c.args[1] << " " << err.str();
    EXPECT_EQ(out.str(), c.out) << c.args[0] << " " << c.args[1];
  }
}

}  // namespace
}  // namespace zelkora::cli
