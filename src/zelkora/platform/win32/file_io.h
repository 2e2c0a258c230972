// The Windows helpers of the platform's file units: an open handle that
// closes itself, the temporary file beside a target, and the durable
// replacement of the target by it. (The whole-file calls of
// platform/whole_file.h are implemented in file_io.cpp.)
//
// Paths are UTF-16 end to end: every call takes the wide form of a
// std::filesystem::path, so names outside the ANSI code page work.
#pragma once

#include <cstdint>
#include <filesystem>

#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::platform::win32 {

// A file handle, closed at the end of its scope.
class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() { close(); }
  Handle(Handle&& other) noexcept : handle_(other.release()) {}
  Handle& operator=(Handle&& other) noexcept {
    if (this != &other) {
      close();
      handle_ = other.release();
    }
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }
  HANDLE release() {
    HANDLE h = handle_;
    handle_ = INVALID_HANDLE_VALUE;
    return h;
  }
  // Closes now; false when the system reported a failure.
  bool close() {
    if (handle_ == INVALID_HANDLE_VALUE) return true;
    return ::CloseHandle(release()) != 0;
  }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

// The share mode of every handle the platform opens: others may read,
// write, rename and delete, as a classic file handle allows them to.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Whether a system error says that there is no file at a path.
bool is_missing_file_error(DWORD error);

// A new, empty, hidden file beside `target` (".<name>.<pid>.<n>.tmp" in the
// same folder), open for reading and writing; an invalid handle, with the
// system's last error, when none could be made.
Handle create_temporary(const std::filesystem::path& target, std::filesystem::path& temporary);

// Makes the closed file `temporary` the target: gives it `attributes` (the
// target's, or normal for a new target) and renames it over the target in
// one step, through to the disk. False, with the system's last error, when
// it could not be done; the target is then as it was.
bool move_over(const std::filesystem::path& temporary, const std::filesystem::path& target,
               DWORD attributes);

// Writes all `size` bytes at `at` of an open file; false, with the system's
// last error, on any failure.
bool write_at(HANDLE file, const char* data, std::size_t size, std::uint64_t at);

// Reads up to `size` bytes at `at`; the count, 0 at the end, -1 on error.
std::int64_t read_at(HANDLE file, char* out, std::size_t size, std::uint64_t at);

}  // namespace zelkora::platform::win32
