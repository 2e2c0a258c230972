// Whole-file reading and atomic replacement for the POSIX platform units
// (INI files, settings file). Files are small; both calls work on the whole
// content at once.
//
//   std::string bytes;
//   if (posix::read_file(path, kMaxSize, bytes) == posix::ReadStatus::Ok) ...
//   bool ok = posix::replace_file(path, new_bytes, /*create_folders=*/false);
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "zelkora/platform/text.h"

namespace zelkora::platform::posix {

// The path of a file named by library text (UTF-8 on POSIX).
std::filesystem::path path_from_text(TextView file);

// A new, empty file beside `target` (a hidden name in the same folder), open
// for reading and writing; -1 when none could be made.
int create_temporary(const std::filesystem::path& target, std::filesystem::path& temporary);

// Syncs the folder, so that a rename in it is durable; a folder that cannot
// be synced is passed over.
void sync_folder(const std::filesystem::path& folder);

// What identifies one state of a file: it changes when the file is replaced
// (new inode) or rewritten (size, modification or change time).
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t size = 0;
  std::int64_t modified_ns = 0;
  std::int64_t changed_ns = 0;
  bool operator==(const FileStamp&) const = default;
};

// The stamp of the file at `path`, or nothing when there is no file there.
std::optional<FileStamp> file_stamp(const std::filesystem::path& path);

enum class ReadStatus {
  Ok,
  Missing,  // no file at that path
  Failed,   // not a regular file, larger than allowed, or could not be read
};

// Reads the whole regular file at `path` into `bytes` (replacing what it
// held), refusing files of more than `max_size` bytes. `*stamp`, when given,
// receives the stamp of the file that was read.
ReadStatus read_file(const std::filesystem::path& path, std::size_t max_size, std::string& bytes,
                     FileStamp* stamp = nullptr);

// Replaces the file at `path` by `bytes` atomically: the bytes go to a new
// file in the same folder, which is flushed and then renamed over the old
// one, so a reader sees the old file or the new one and never a part. A
// symbolic link is followed; an existing file keeps its permissions, a new
// one gets the default ones. Creates the missing folders when asked to.
// False when the file could not be written; the old file (if any) is then
// unchanged and no temporary file is left behind.
bool replace_file(const std::filesystem::path& path, std::string_view bytes, bool create_folders);

}  // namespace zelkora::platform::posix
