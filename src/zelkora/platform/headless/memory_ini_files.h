/// INI files kept in memory: `platform::IniFiles` for tests and headless
/// hosts, with the same reading and editing rules as the files on disk
/// (sections and keys without regard to case, the classic profile calls'
/// 512-byte read buffer). A file is known by its exact name.
///
/// What is written keeps only what a file in code page 936 could keep: a
/// character without a form there is stored as "?", as on disk.
///
///   MemoryIniFiles ini;
///   ini.put(u"ZK.INI", u"[Options]\r\nLang=2\r\n");
///   ini.read(u"Options", u"lang", u"", u"ZK.INI");  // u"2"
///   ini.content(u"ZK.INI");                          // the whole file @file
#pragma once

#include <map>
#include <memory>
#include <optional>

#include "zelkora/platform/platform.h"

namespace zelkora::platform::ini {
class Index;
}  // namespace zelkora::platform::ini

namespace zelkora::platform::headless {
/// INI files kept in memory (see the file).
class MemoryIniFiles final : public IniFiles {
 public:
  Text read(TextView section, TextView key, TextView default_value, TextView file) const override;
  bool write(TextView section, TextView key, std::optional<TextView> value, TextView file) override;

  /// Creates or replaces a file with `content`, taken as it is.
  void put(TextView file, TextView content);
  /// The content of a file, or nothing when there is no such file.
  std::optional<Text> content(TextView file) const;
  /// Removes a file; false when there was none.
  bool remove(TextView file);

 private:
  /// Each file parsed as it is stored: a read is a lookup.
  std::map<Text, std::shared_ptr<const ini::Index>, std::less<>> files_;
};

}  // namespace zelkora::platform::headless
