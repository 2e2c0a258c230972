// What every settings store shares.
#include "zelkora/platform/platform.h"

namespace zelkora::platform {

Text SettingsStore::get_or(TextView application, TextView section, TextView key,
                           TextView default_value) const {
  std::optional<Text> value = get(application, section, key);
  return value ? std::move(*value) : Text(default_value);
}

}  // namespace zelkora::platform
