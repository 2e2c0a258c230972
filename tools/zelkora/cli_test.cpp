// Tests of the tool's arguments, output and exit codes.
#include "tools/zelkora/cli.h"

#include <gtest/gtest.h>

#include <sstream>

#include "zelkora/platform/headless/headless.h"

namespace zelkora::cli {
namespace {

struct Result {
  int code;
  std::string out, err;
};

Result run_cli(std::vector<std::string> args, std::shared_ptr<platform::Platform> p = nullptr) {
  platform::ScopedPlatform scope(p ? p : platform::Platform::headless());
  std::ostringstream out, err;
  const int code = run(args, out, err);
  return {code, out.str(), err.str()};
}

TEST(Cli, CatalogueCommands) {
  struct Case {
    std::vector<std::string> args;
    std::string out;
  };
  const Case cases[] = {
      {{"text", "100"}, "Zelkora 结构快速设计\n"},
      {{"text", "52200", "--re", "0.25%", "0.20%"}, "受拉钢筋的配筋率 ρ ＝ 0.25% ＞ 0.20%\n"},
      {{"text", "53218", "--re", "b", "2e10", "1000000000"}, "错误：b ＝ 2e10 ＞ 1000000000，\n"},
      {{"text", "111", "--re", "%%2%", "x"}, "x\n"},
      {{"text", "--lang", "100000", "100"}, "\n"},
      {{"text", "501", "--lang", "-400"}, "Options\n"},
      {{"text", "99999"}, "\n"},
      {{"text", "36105"}, "\\uE002\n"},
      {{"res", "36112"}, "\\uE003\n"},
      {{"res", "41050"}, "是|否\n"},
      {{"eqres", "  自动 ", "500"}, "true\n"},
      {{"eqres", "hrb400", "32509"}, "false\n"},
      {{"eqres", "hrb400", "32509", "--text"}, "true\n"},
      {{"eqres", "\\uE002", "36105"}, "true\n"},
      {{"eqres", "x", "99999"}, "false\n"},
  };
  for (const Case& c : cases) {
    const Result r = run_cli(c.args);
    EXPECT_EQ(r.code, kExitOk) << c.args[0] << " " << r.err;
    EXPECT_EQ(r.out, c.out) << c.args[0] << " " << c.args[1];
  }
}

TEST(Cli, SymbolsInOrder) {
  EXPECT_EQ(run_cli({"symbols"}).out,
            "tPubListDot=.\ntPubF1=φ\ntPubF2=Φ\ntPubF3=\\uE002\ntPubF4=\\uE003\ntPubPf=2\n"
            "tPubLf=3\nsquared=_up(2)up_\ncubed=_up(3)up_\ntDecimalSymbol=.\n"
            "ThousandsSeparator=,\n");
  auto comma = platform::Platform::headless();
  comma->locale = std::make_shared<platform::headless::FixedNumberLocale>(u",", u".");
  comma->settings->set(u"Zelkora 结构快速设计", u"Options", u"1cboOpt", u"²");
  const std::string out = run_cli({"symbols"}, comma).out;
  EXPECT_NE(out.find("tPubPf=²\n"), std::string::npos);
  EXPECT_NE(out.find("squared=²\n"), std::string::npos);
  EXPECT_NE(out.find("tDecimalSymbol=,\nThousandsSeparator=.\n"), std::string::npos);
}

TEST(Cli, UsageErrorsAndFaults) {
  struct Case {
    std::vector<std::string> args;
    int code;
    std::string err_part;
  };
  const Case cases[] = {
      {{}, kExitUsage, "usage"},
      {{"nonsense"}, kExitUsage, "unknown command"},
      {{"text"}, kExitUsage, "expected 1"},
      {{"text", "12x"}, kExitUsage, "whole number"},
      {{"text", "99999999999"}, kExitUsage, "whole number"},
      {{"text", "1", "--lang"}, kExitUsage, "needs a value"},
      {{"text", "1", "--re"}, kExitUsage, "at least one"},
      {{"text", "1", "--re", "a", "b", "c", "d"}, kExitUsage, "expected 1"},
      {{"res", "99999"}, kExitFault, "catalogue text 99999 does not exist"},
      {{"text", "1", "--lang", "2147483647"}, kExitFault, "overflow"},
      {{"eqres", "x"}, kExitUsage, "expected 2"},
      {{"symbols", "extra"}, kExitUsage, "expected 0"},
  };
  for (const Case& c : cases) {
    const Result r = run_cli(c.args);
    EXPECT_EQ(r.code, c.code) << (c.args.empty() ? "" : c.args[0]);
    EXPECT_NE(r.err.find(c.err_part), std::string::npos) << r.err;
    EXPECT_EQ(r.out, "");
  }
}

TEST(Cli, HelpListsEveryCommand) {
  const Result r = run_cli({"help"});
  EXPECT_EQ(r.code, kExitOk);
  for (const char* name : {"text", "res", "eqres", "symbols", "check-resources", "help"}) {
    EXPECT_NE(r.out.find(std::string("  ") + name), std::string::npos) << name;
  }
}

TEST(Cli, ArgumentEscapes) {
  EXPECT_EQ(arg_text("4\\uE00220"), u"4\uE00220");
  EXPECT_EQ(arg_text("\\u12"), u"\\u12");
  EXPECT_EQ(arg_text("a\\uZZZZb"), u"a\\uZZZZb");
  EXPECT_EQ(out_text(u"4\uE00220\uF8FF\uE000"), "4\\uE00220\\uF8FF\\uE000");
}

}  // namespace
}  // namespace zelkora::cli
