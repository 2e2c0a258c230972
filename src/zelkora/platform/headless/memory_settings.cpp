// The settings store in memory.
#include "zelkora/platform/headless/memory_settings.h"

#include "zelkora/platform/ini_text.h"

namespace zelkora::platform::headless {

namespace {

Text section_name(TextView application, TextView section) {
  Text name(application);
  name.push_back(u'/');
  name.append(section);
  return name;
}

}  // namespace

std::optional<Text> MemorySettingsStore::get(TextView application, TextView section,
                                             TextView key) const {
  const std::optional<TextView> value =
      ini::find_value(content_, section_name(application, section), key);
  if (!value) return std::nullopt;
  return Text(*value);
}

bool MemorySettingsStore::set(TextView application, TextView section, TextView key,
                              TextView value) {
  std::optional<Text> edited = ini::edit(content_, section_name(application, section), key,
                                         ini::quoted_if_needed(value), ini::LineEnd::Lf);
  if (!edited) return false;
  content_ = std::move(*edited);
  return true;
}

}  // namespace zelkora::platform::headless
