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
//   DiskIniFiles ini;
//   Text lang = ini.read(u"Options", u"Lang", u"0", u"D:\\Zelkora\\ZK_Form.INI");
//   ini.write(u"Options", u"Lang", u"2", u"D:\\Zelkora\\ZK_Form.INI");
#pragma once

#include <cstddef>
#include <optional>

#include "zelkora/platform/platform.h"

namespace zelkora::platform {

class DiskIniFiles final : public IniFiles {
 public:
  static constexpr std::size_t kMaxFileSize = std::size_t{16} << 20;

  Text read(TextView section, TextView key, TextView default_value, TextView file) const override;
  bool write(TextView section, TextView key, std::optional<TextView> value, TextView file) override;
};

}  // namespace zelkora::platform
