// Whole-file reading and atomic replacement, for the small files of the
// platform units (INI files, the settings file): both calls work on the whole
// content at once. Each system implements them in its folder.
//
//   std::string bytes;
//   if (platform::read_file(path, kMaxSize, bytes) == platform::ReadStatus::Ok) ...
//   bool ok = platform::replace_file(path, new_bytes, /*create_folders=*/false);
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zelkora::platform {

// What identifies one state of a file: it changes when the file is replaced
// (another file identity) or rewritten (size, modification or change time).
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

// Whether a file read with this stamp (nothing: there was no file) may be
// kept while its stamp stays the same. File times are coarse: a change made
// in the same tick as the state just read would leave the stamp as it is, so
// only a file that has been still for two seconds is settled.
bool is_settled(const std::optional<FileStamp>& stamp);

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

// For the systems' `read_file`: reads a whole open file through `read_at`
// (up to `size` bytes at `at`: the count, 0 at the end, -1 on an error). The
// size the system gave is a hint, as the file may change while it is read,
// but never more than `max_size` bytes are taken.
using ReadAt = std::function<std::int64_t(char* out, std::size_t size, std::uint64_t at)>;
ReadStatus read_whole(const ReadAt& read_at, std::uint64_t size_hint, std::size_t max_size,
                      std::string& bytes);

}  // namespace zelkora::platform
