// INI files on a POSIX system, in code page 936.
#include "zelkora/platform/posix/ini_files.h"

#include <string>

#include "zelkora/platform/codepage.h"
#include "zelkora/platform/ini_text.h"
#include "zelkora/platform/posix/file_io.h"

namespace zelkora::platform::posix {

Text PosixIniFiles::read(TextView section, TextView key, TextView default_value,
                         TextView file) const {
  std::string bytes;
  if (file.empty() ||
      posix::read_file(posix::path_from_text(file), kMaxFileSize, bytes) != posix::ReadStatus::Ok) {
    bytes.clear();
  }
  return ini::read_profile_string(codepage::from_ansi(bytes), section, key, default_value);
}

bool PosixIniFiles::write(TextView section, TextView key, std::optional<TextView> value,
                          TextView file) {
  if (file.empty()) return false;
  const std::filesystem::path path = posix::path_from_text(file);
  std::string bytes;
  const posix::ReadStatus status = posix::read_file(path, kMaxFileSize, bytes);
  if (status == posix::ReadStatus::Failed) return false;  // never replace what we cannot read
  const Text content = codepage::from_ansi(bytes);
  const std::optional<Text> edited = ini::edit(content, section, key, value);
  if (!edited) return false;
  if (*edited == content) return true;  // nothing to change (removing a missing key)
  return posix::replace_file(path, codepage::to_ansi(*edited), /*create_folders=*/false);
}

}  // namespace zelkora::platform::posix
