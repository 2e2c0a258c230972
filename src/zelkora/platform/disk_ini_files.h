// The suite's INI files on disk: `platform::IniFiles` over real files in code
// page 936, with the semantics of the classic private-profile calls (see
// platform/ini_text.h for how a file is read and edited).
//
// The files are read and written by the library itself, not through the
// system's profile calls, and converted with the library's own code page 936
// tables: so a GBK file reads the same whatever the system's ANSI code page
// (a Western Windows would turn its Chinese into "?").
//
// A file name is a path as given, relative to the current folder when it is
// not absolute. A missing or unreadable file reads as an empty one. Writing
// creates the file, but not its folder, and replaces it atomically, so a
// failed write leaves the old file as it was. Bytes that are not valid in
// code page 936 read as U+FFFD and are written back as "?". Files larger than
// `kMaxFileSize` are treated as unreadable.
//
// A file is read and parsed once and kept with its stamp (platform/
// whole_file.h) until the stamp changes: a read is then a lookup, whatever
// the file's size (the menu reads up to 9,900 keys of one file, a list up to
// 999), and the stamp is looked at again after 50 ms. So a change by another
// program is seen within 50 ms; the stamp may not show a second change made
// in the same tick of the file system's clock, so a file that had changed in
// the two seconds before it was read is read again after half a second. A
// file the library wrote is kept at once.
//
// The last kMaxKeptFiles files are kept.
//
//   DiskIniFiles ini;
//   Text lang = ini.read(u"Options", u"Lang", u"0", u"D:\\Zelkora\\ZK_Form.INI");
//   ini.write(u"Options", u"Lang", u"2", u"D:\\Zelkora\\ZK_Form.INI");
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "zelkora/platform/ini_text.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/whole_file.h"

namespace zelkora::platform {

class DiskIniFiles final : public IniFiles {
 public:
  static constexpr std::size_t kMaxFileSize = std::size_t{16} << 20;
  static constexpr std::size_t kMaxKeptFiles = 32;

  DiskIniFiles();
  ~DiskIniFiles() override;

  Text read(TextView section, TextView key, TextView default_value, TextView file) const override;
  bool write(TextView section, TextView key, std::optional<TextView> value, TextView file) override;

 private:
  struct Kept;
  // The parsed file, read again unless it was still when read last and its
  // stamp has not changed since.
  std::shared_ptr<const ini::Index> index_of(const std::filesystem::path& path) const;
  // Keeps a file's content, parsed; under the lock.
  std::shared_ptr<const ini::Index> keep(const std::filesystem::path& path,
                                         std::optional<FileStamp> stamp, bool settled,
                                         Text content) const;

  mutable std::mutex mutex_;
  mutable std::unordered_map<std::filesystem::path::string_type, Kept> kept_;
};

}  // namespace zelkora::platform
