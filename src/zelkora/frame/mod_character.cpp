// ModCharacter: the shared procedures without state.
#include "zelkora/frame/mod_character.h"

namespace zelkora::ModCharacter {

Text tGetSetting(const platform::Platform& platform, TextView application, TextView section,
                 TextView key, TextView default_value) {
  if (!platform.settings) return Text(default_value);
  return platform.settings->get_or(application, section, key, default_value);
}

}  // namespace zelkora::ModCharacter
