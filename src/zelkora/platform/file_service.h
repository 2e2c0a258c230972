/// Files of the project data files: byte-wise reading and writing by position,
/// and saving that never destroys the previous file.
///
/// A file opened to be written is a new file beside the target (in the same
/// folder, so that it can be renamed over it). `commit` makes it the target:
/// the pending bytes are flushed and synced, the new file is renamed over the
/// old one and the folder is synced. Until then the target is as it was; a
/// file that is dropped without a commit (a failed write, an error on the
/// caller's side, the end of the object) is removed and leaves the target
/// untouched. A process killed while saving leaves the old target and, at
/// worst, a hidden temporary file beside it.
/// @code{.unparsed}
///   std::error_code error;
///   auto file = files.open(u"/p/a.zks", platform::FileAccess::Replace, error);
///   if (file && file->write(bytes) && file->commit()) ...  // a.zks replaced
/// @endcode
/// Each system has its implementation in its platform folder; the in-memory
/// one has injectable failures, for tests. @file
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <system_error>

#include "zelkora/platform/text.h"

namespace zelkora::platform {
/// How a file is opened.
enum class FileAccess {
  Read,     ///< an existing file, read only
  Replace,  ///< written from empty; replaces (or creates) the target on commit
  Update,   ///< read and written, starting as a copy of the target (empty when
            ///< there is none); replaces (or creates) the target on commit
};

/// One open file. The position starts at 0; reading and writing advance it.
class DataFile {
 public:
  virtual ~DataFile() = default;  ///< without a commit, nothing reaches the target

  /// Reads up to `count` bytes at the position into `out`; returns how many
  /// were read: fewer than `count` at the end of the file or on a read error.
  virtual std::size_t read(char* out, std::size_t count) = 0;
  /// Writes at the position, growing the file as needed. False when the
  /// bytes could not be written (or not be queued: writes may be buffered and
  /// fail later, at the next write or at the commit). After a failure the file
  /// refuses every write and its commit, so the target stays as it was.
  virtual bool write(std::string_view bytes) = 0;
  virtual std::uint64_t position() const = 0;  ///< The position, in bytes from the start.
  /// Moves the position; beyond the end, reads give nothing and a write
  /// fills the gap with zero bytes.
  virtual void seek(std::uint64_t position) = 0;
  virtual std::uint64_t size() const = 0;  ///< The file's size in bytes.
  /// Ends the use of the file. Read: closes it, always true. Replace and
  /// Update: makes what was written the target's content, durably (a file
  /// opened for Update and never written leaves an existing target alone).
  /// False when anything failed; the target is then as it was before the open.
  /// Nothing can be done with the file afterwards.
  virtual bool commit() = 0;
};
/// The files of the project data files, as the platform provides them.
class FileService {
 public:
  virtual ~FileService() = default;
  /// Whether `path` names an existing regular file.
  virtual bool exists(TextView path) const = 0;
  /// Opens `path`; null, with the reason in `error`, when it cannot be opened
  /// (Read: a missing file or one that is not a regular file; Replace and
  /// Update: a folder that cannot take the new file, a target that is not a
  /// regular file or may not be written).
  virtual std::unique_ptr<DataFile> open(TextView path, FileAccess access,
                                         std::error_code& error) = 0;
};

/// Copies the file `from` to `to` through `files`, replacing `to` as a save
/// does (an older `to` stays whole until the copy is complete). False, with
/// the reason in `error`, when it could not be done.
bool copy_file(FileService& files, TextView from, TextView to, std::error_code& error);

/// The extension of a file name, the rule of every implementation: the text
/// after the last "." of the last path component ("/" or "\\" ends a
/// folder), or empty text.
Text file_name_extension(TextView file_name);

}  // namespace zelkora::platform
