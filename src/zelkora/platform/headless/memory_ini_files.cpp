// INI files in memory.
#include "zelkora/platform/headless/memory_ini_files.h"

#include <utility>

#include "zelkora/platform/codepage.h"
#include "zelkora/platform/ini_text.h"

namespace zelkora::platform::headless {

namespace {

// The text as it comes back from a file in code page 936.
Text through_codepage(TextView text) { return codepage::from_ansi(codepage::to_ansi(text)); }

}  // namespace

Text MemoryIniFiles::read(TextView section, TextView key, TextView default_value,
                          TextView file) const {
  const auto it = files_.find(file);
  if (it == files_.end()) return ini::read_profile_string(u"", section, key, default_value);
  return it->second->read_profile_string(section, key, default_value);
}

bool MemoryIniFiles::write(TextView section, TextView key, std::optional<TextView> value,
                           TextView file) {
  if (file.empty()) return false;
  const auto it = files_.find(file);
  const TextView content = it == files_.end() ? TextView() : TextView(it->second->content());
  std::optional<Text> stored_value;
  if (value) stored_value = through_codepage(*value);
  std::optional<Text> edited =
      ini::edit(content, through_codepage(section), through_codepage(key), stored_value);
  if (!edited) return false;
  if (it == files_.end() && !value) return true;  // removing from a missing file creates nothing
  put(file, *edited);
  return true;
}

void MemoryIniFiles::put(TextView file, TextView content) {
  files_[Text(file)] = std::make_shared<const ini::Index>(Text(content));
}

std::optional<Text> MemoryIniFiles::content(TextView file) const {
  const auto it = files_.find(file);
  if (it == files_.end()) return std::nullopt;
  return it->second->content();
}

bool MemoryIniFiles::remove(TextView file) {
  const auto it = files_.find(file);
  if (it == files_.end()) return false;
  files_.erase(it);
  return true;
}

}  // namespace zelkora::platform::headless
