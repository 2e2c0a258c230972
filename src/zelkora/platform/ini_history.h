/// The history of the suite's programs: the most recent project files of each
/// program, kept in the INI file "ZK_History.INI" (code page 936, like every
/// INI file of the suite), a section per program, newest first:
/// @code{.unparsed}
///   [梁配筋]
///   1=D:\工程\三号楼\L1.zks
///   2=D:\工程\二号楼\L7.zks
/// @endcode
/// At most ten files; a file added again moves to the top, compared as the
/// system compares paths (Windows: without case, "/" and "\" alike; elsewhere
/// exactly). Reading skips empty and repeated keys, so a hand-edited file
/// reads as a clean list. @file
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "zelkora/platform/platform.h"

namespace zelkora::platform {
/// How paths are compared: exactly, or without case ("/" and "\\" alike).
enum class PathCase { kExact, kIgnoreCase };

/// Whether two paths name the same file as a system of this kind compares
/// them (text only: no links followed, no file opened).
bool same_path(TextView a, TextView b, PathCase path_case);
/// The recent files of each program in an INI history file.
class IniHistory {
 public:
  static constexpr int kLength = 10;  ///< The number of files kept per program.
  /// The name of the suite's history file.
  static constexpr TextView kFileName = u"ZK_History.INI";
  /// The history in the INI file `file` of `ini`, paths compared as `path_case` says.
  IniHistory(std::shared_ptr<IniFiles> ini, Text file, PathCase path_case)
      : ini_(std::move(ini)), file_(std::move(file)), path_case_(path_case) {}

  /// The files of `program`, newest first.
  std::vector<Text> files(TextView program) const;
  /// Puts `file` at the top of the list of `program`. False, with the list
  /// left as it was, for a program or file that would not read back as it is
  /// written: empty, with a line break, blanks or quotes around it, a
  /// character that code page 936 cannot hold, or longer than the INI read
  /// buffer (511 bytes in code page 936). False too when the file could not
  /// be written: each key is replaced safely, but a failure after the first
  /// key may leave the list with one file twice (reading skips the repeat)
  /// and another gone.
  bool add(TextView program, TextView file);
  /// The history file.
  const Text& file() const { return file_; }

 private:
  std::shared_ptr<IniFiles> ini_;
  Text file_;
  PathCase path_case_;
};

}  // namespace zelkora::platform
