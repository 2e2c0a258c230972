// The POSIX platform's own readings of the environment: the user's number
// locale and the place of the settings file.
#pragma once

#include <filesystem>

#include "zelkora/platform/shared_services.h"

namespace zelkora::platform::posix {

// The decimal and grouping symbols of LC_NUMERIC of the environment, read
// with newlocale (never setlocale); `ZELKORA_DECIMAL_SYMBOL` and
// `ZELKORA_GROUPING_SYMBOL`, when set, take precedence (an empty grouping
// symbol means none).
class EnvironmentNumberLocale : public NumberLocale {
 public:
  explicit EnvironmentNumberLocale(const EnvLookup& env = process_environment());
  Text decimal_symbol() const override { return decimal_; }
  Text grouping_symbol() const override { return grouping_; }

 private:
  Text decimal_;
  Text grouping_;
};

// The settings file: $ZELKORA_SETTINGS, else
// $XDG_CONFIG_HOME/zelkora/settings.ini (an absolute XDG_CONFIG_HOME only),
// else $HOME/.config/zelkora/settings.ini; an empty variable counts as unset.
// An empty path when none of them is set.
std::filesystem::path settings_file_path(const EnvLookup& env = process_environment());

}  // namespace zelkora::platform::posix
