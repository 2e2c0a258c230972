// INI files on disk, in code page 936.
#include "zelkora/platform/disk_ini_files.h"

#include <chrono>
#include <string>

#include "zelkora/platform/codepage.h"
#include "zelkora/platform/ini_text.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/whole_file.h"

namespace zelkora::platform {

namespace {

using Clock = std::chrono::steady_clock;

// How long a kept file is taken as it is without a look at its stamp.
constexpr std::chrono::milliseconds kLookAgainAfter{50};
// How long the content of a file that had changed just before it was read
// is taken as it is while its stamp holds.
constexpr std::chrono::milliseconds kReadAgainUnsettled{500};

}  // namespace

struct DiskIniFiles::Kept {
  std::optional<FileStamp> stamp;  // nothing: there was no file
  bool settled = false;            // still for a while when read: keep while the stamp holds
  Clock::time_point read_at;
  Clock::time_point looked_at;  // the stamp last compared
  std::shared_ptr<const ini::Index> index;

  bool holds(const std::optional<FileStamp>& now) const {
    return stamp == now && (settled || Clock::now() - read_at < kReadAgainUnsettled);
  }
};

DiskIniFiles::DiskIniFiles() = default;
DiskIniFiles::~DiskIniFiles() = default;

std::shared_ptr<const ini::Index> DiskIniFiles::index_of(const std::filesystem::path& path) const {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto at = kept_.find(path.native());
    if (at != kept_.end() && Clock::now() - at->second.looked_at < kLookAgainAfter) {
      return at->second.index;
    }
  }
  const std::optional<FileStamp> now = file_stamp(path);
  std::lock_guard<std::mutex> lock(mutex_);
  const auto at = kept_.find(path.native());
  if (at != kept_.end() && at->second.holds(now)) {
    at->second.looked_at = Clock::now();
    return at->second.index;
  }
  std::string bytes;
  FileStamp read_stamp;
  std::optional<FileStamp> stamp = now;
  switch (read_file(path, kMaxFileSize, bytes, &read_stamp)) {
    case ReadStatus::Ok:
      stamp = read_stamp;
      break;
    case ReadStatus::Missing:
      stamp.reset();
      break;
    case ReadStatus::Failed:
      bytes.clear();
      break;
  }
  return keep(path, stamp, is_settled(stamp), codepage::from_ansi(bytes));
}

std::shared_ptr<const ini::Index> DiskIniFiles::keep(const std::filesystem::path& path,
                                                     std::optional<FileStamp> stamp, bool settled,
                                                     Text content) const {
  if (kept_.size() >= kMaxKeptFiles && !kept_.contains(path.native())) kept_.clear();
  auto index = std::make_shared<const ini::Index>(std::move(content));
  const Clock::time_point now = Clock::now();
  kept_[path.native()] = Kept{stamp, settled, now, now, index};
  return index;
}

Text DiskIniFiles::read(TextView section, TextView key, TextView default_value,
                        TextView file) const {
  if (file.empty()) return ini::read_profile_string(u"", section, key, default_value);
  return index_of(path_from_text(file))->read_profile_string(section, key, default_value);
}

bool DiskIniFiles::write(TextView section, TextView key, std::optional<TextView> value,
                         TextView file) {
  if (file.empty()) return false;
  const std::filesystem::path path = path_from_text(file);
  std::string bytes;
  const ReadStatus status = read_file(path, kMaxFileSize, bytes);
  if (status == ReadStatus::Failed) return false;  // never replace what we cannot read
  const Text content = codepage::from_ansi(bytes);
  const std::optional<Text> edited = ini::edit(content, section, key, value);
  if (!edited) return false;
  if (*edited == content) return true;  // nothing to change (removing a missing key)
  const std::string written = codepage::to_ansi(*edited);
  std::lock_guard<std::mutex> lock(mutex_);
  if (!replace_file(path, written, /*create_folders=*/false)) {
    kept_.erase(path.native());
    return false;
  }
  // The file holds what was just written (what a read decodes from it), so
  // it is kept at once, also within the stamp's resolution.
  keep(path, file_stamp(path), true, codepage::from_ansi(written));
  return true;
}

}  // namespace zelkora::platform
