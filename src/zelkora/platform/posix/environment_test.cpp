// Tests of the POSIX readings of the environment.
#include "zelkora/platform/posix/environment.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <map>

namespace zelkora::platform::posix {
namespace {

namespace fs = std::filesystem;

EnvLookup fake_env(std::map<std::string, std::string> vars) {
  return [vars](const char* name) -> std::optional<std::string> {
    auto it = vars.find(name);
    if (it == vars.end()) return std::nullopt;
    return it->second;
  };
}

TEST(PosixEnvironment, NumberSymbolsFromTheLocaleAndTheOverrides) {
  struct Case {
    std::map<std::string, std::string> env;
    Text decimal, grouping;
  };
  const Case cases[] = {
      {{}, u".", u""},  // the C locale groups no digits
      {{{"LC_ALL", "C.UTF-8"}}, u".", u""},
      {{{"LANG", "xx_NOWHERE.UTF-8"}}, u".", u","},  // an unknown locale keeps the fallbacks
      {{{"ZELKORA_DECIMAL_SYMBOL", ","}, {"ZELKORA_GROUPING_SYMBOL", "."}}, u",", u"."},
      {{{"ZELKORA_GROUPING_SYMBOL", ""}}, u".", u""},
      {{{"ZELKORA_DECIMAL_SYMBOL", ""}}, u".", u""},  // an empty decimal symbol is ignored
      {{{"ZELKORA_GROUPING_SYMBOL", "\xE2\x80\xAF"}}, u".", u"\u202F"},
  };
  for (const Case& c : cases) {
    EnvironmentNumberLocale locale(fake_env(c.env));
    EXPECT_EQ(locale.decimal_symbol(), c.decimal);
    EXPECT_EQ(locale.grouping_symbol(), c.grouping);
  }
}

// ZELKORA_SETTINGS, else an absolute XDG_CONFIG_HOME, else HOME; an empty
// variable counts as unset.
TEST(PosixEnvironment, SettingsFileChosenFromTheEnvironment) {
  const fs::path home = "/home/u/.config/zelkora/settings.ini";
  const struct {
    std::map<std::string, std::string> env;
    fs::path expected;
  } cases[] = {
      {{{"ZELKORA_SETTINGS", "/tmp/s.ini"}, {"XDG_CONFIG_HOME", "/x"}, {"HOME", "/home/u"}},
       "/tmp/s.ini"},
      {{{"XDG_CONFIG_HOME", "/x"}, {"HOME", "/home/u"}}, "/x/zelkora/settings.ini"},
      {{{"HOME", "/home/u"}}, home},
      {{{"ZELKORA_SETTINGS", ""}, {"XDG_CONFIG_HOME", ""}, {"HOME", "/home/u"}}, home},
      {{{"XDG_CONFIG_HOME", "rel"}, {"HOME", "/home/u"}}, home},
      {{}, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    EXPECT_EQ(settings_file_path(fake_env(c.env)), c.expected);
  }
}

TEST(PosixEnvironment, ProcessEnvironmentIsReadAsItIsNow) {
  ::setenv("ZELKORA_TEST_VARIABLE", "结构", 1);
  EXPECT_EQ(process_environment()("ZELKORA_TEST_VARIABLE"), "结构");
  ::unsetenv("ZELKORA_TEST_VARIABLE");
  EXPECT_EQ(process_environment()("ZELKORA_TEST_VARIABLE"), std::nullopt);
}

}  // namespace
}  // namespace zelkora::platform::posix
