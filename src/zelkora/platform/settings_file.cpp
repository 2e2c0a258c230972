// The per-user settings store as a UTF-8 INI file.
#include "zelkora/platform/settings_file.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

#include "zelkora/platform/ini_text.h"
#include "zelkora/platform/paths.h"

namespace zelkora::platform {

namespace {

constexpr std::int64_t kSettledAfterNs = 2'000'000'000;

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
    content_ = std::move(loaded.content);
    stamp_.reset();
    if (loaded.state != State::Missing) stamp_ = read_stamp;
    cached_ = true;
    // File times are coarse: a change made in the same tick as the one just
    // read would leave the stamp as it is. Only a file that has been still
    // for a while is taken from the cache.
    const std::int64_t now_ns = std::chrono::duration_cast<std::chrono::nanoseconds>(
                                    std::chrono::system_clock::now().time_since_epoch())
                                    .count();
    settled_ =
        !stamp_ || std::max(stamp_->modified_ns, stamp_->changed_ns) < now_ns - kSettledAfterNs;
  }
  const std::optional<TextView> value = ini::find_value(content_, name, key);
  if (!value) return std::nullopt;
  return Text(*value);
}

bool SettingsFile::set(TextView application, TextView section, TextView key, TextView value) {
  if (path_.empty()) return false;
  const Text name = section_name(application, section);
  if (!ini::can_store(name, key, value)) return false;
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
