// INI files in memory.
#include "zelkora/platform/headless/memory_ini_files.h"

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
  const TextView content = it == files_.end() ? TextView() : TextView(it->second);
  return ini::read_profile_string(content, section, key, default_value);
}

bool MemoryIniFiles::write(TextView section, TextView key, std::optional<TextView> value,
                           TextView file) {
  if (file.empty()) return false;
  const auto it = files_.find(file);
  const TextView content = it == files_.end() ? TextView() : TextView(it->second);
  std::optional<Text> stored_value;
  if (value) stored_value = through_codepage(*value);
  const std::optional<Text> edited =
      ini::edit(content, through_codepage(section), through_codepage(key), stored_value);
  if (!edited) return false;
  if (it == files_.end()) {
    if (!value) return true;  // removing from a missing file creates nothing
    files_.emplace(Text(file), *edited);
  } else {
    it->second = *edited;
  }
  return true;
}

void MemoryIniFiles::put(TextView file, TextView content) { files_[Text(file)] = Text(content); }

std::optional<Text> MemoryIniFiles::content(TextView file) const {
  const auto it = files_.find(file);
  if (it == files_.end()) return std::nullopt;
  return it->second;
}

bool MemoryIniFiles::remove(TextView file) {
  const auto it = files_.find(file);
  if (it == files_.end()) return false;
  files_.erase(it);
  return true;
}

}  // namespace zelkora::platform::headless
