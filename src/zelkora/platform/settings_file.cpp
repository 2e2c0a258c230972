// The per-user settings store as a UTF-8 INI file.
#include "zelkora/platform/settings_file.h"

#include <string>
#include <utility>

#include "zelkora/platform/ini_text.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/whole_file.h"

namespace zelkora::platform {

namespace {

Text section_name(TextView application, TextView section) {
  Text name;
  name.reserve(application.size() + 1 + section.size());
  name.append(application);
  name.push_back(u'/');
  name.append(section);
  return name;
}

}  // namespace

SettingsFile::SettingsFile(std::filesystem::path file, Diagnostic diagnostic)
    : path_(std::move(file)), diagnostic_(std::move(diagnostic)) {}

void SettingsFile::report(std::string_view problem) const {
  // Once per state of the file: the same damaged file is not reported again.
  const std::optional<FileStamp> now = file_stamp(path_);
  if (reported_ && now == reported_) return;
  reported_ = now;
  if (!diagnostic_) return;
  std::string message = "settings file ";
  message += utf8_from_path(path_);
  message += ": ";
  message += problem;
  message += "; its settings are ignored";
  diagnostic_(message);
}

SettingsFile::Loaded SettingsFile::load(FileStamp* stamp) const {
  Loaded loaded;
  std::string bytes;
  switch (read_file(path_, kMaxFileSize, bytes, stamp)) {
    case ReadStatus::Missing:
      return loaded;
    case ReadStatus::Failed:
      loaded.state = State::Unusable;
      report("cannot be read");
      return loaded;
    case ReadStatus::Ok:
      break;
  }
  std::size_t bad = 0;
  if (!append_utf8(bytes, loaded.content, &bad)) {
    loaded.state = State::Unusable;
    loaded.content.clear();
    report("invalid UTF-8 at byte " + std::to_string(bad));
    return loaded;
  }
  loaded.state = State::Usable;
  return loaded;
}

std::optional<Text> SettingsFile::get(TextView application, TextView section, TextView key) const {
  if (path_.empty()) return std::nullopt;
  const Text name = section_name(application, section);
  std::lock_guard<std::mutex> lock(mutex_);
  const std::optional<FileStamp> now = file_stamp(path_);
  if (!cached_ || !settled_ || now != stamp_) {
    FileStamp read_stamp = now.value_or(FileStamp{});
    Loaded loaded = load(&read_stamp);
    stamp_.reset();
    if (loaded.state != State::Missing) stamp_ = read_stamp;
    cached_ = true;
    settled_ = is_settled(stamp_);
    index_ = std::make_unique<const ini::Index>(std::move(loaded.content));
  }
  const std::optional<TextView> value = index_->find_value(name, key);
  if (!value) return std::nullopt;
  return Text(*value);
}

bool SettingsFile::set(TextView application, TextView section, TextView key, TextView value) {
  if (path_.empty()) return false;
  const Text name = section_name(application, section);
  if (!ini::can_store(name, key, value)) return false;
  // The file is UTF-8: a lone surrogate would come back as U+FFFD.
  if (!is_well_formed(name) || !is_well_formed(key) || !is_well_formed(value)) return false;
  std::lock_guard<std::mutex> lock(mutex_);
  const Loaded loaded = load(nullptr);
  if (loaded.state == State::Unusable) return false;
  const std::optional<Text> edited =
      ini::edit(loaded.content, name, key, ini::quoted_if_needed(value), ini::LineEnd::Lf);
  if (!edited) return false;
  if (loaded.state == State::Usable && *edited == loaded.content) return true;
  cached_ = false;
  return replace_file(path_, to_utf8(*edited), /*create_folders=*/true);
}

}  // namespace zelkora::platform
