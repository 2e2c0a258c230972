// INI files on disk, in code page 936.
#include "zelkora/platform/disk_ini_files.h"

#include <string>

#include "zelkora/platform/codepage.h"
#include "zelkora/platform/ini_text.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/whole_file.h"

namespace zelkora::platform {

Text DiskIniFiles::read(TextView section, TextView key, TextView default_value,
                        TextView file) const {
  std::string bytes;
  if (file.empty() || read_file(path_from_text(file), kMaxFileSize, bytes) != ReadStatus::Ok) {
    bytes.clear();
  }
  return ini::read_profile_string(codepage::from_ansi(bytes), section, key, default_value);
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
  return replace_file(path, codepage::to_ansi(*edited), /*create_folders=*/false);
}

}  // namespace zelkora::platform
