// The file service of the Windows platform (see platform/file_service.h),
// with wide-character paths throughout.
//
// Reads and writes go through the shared 64 KiB buffer
// (platform/buffered_data_file.h). A file opened to be written is a hidden
// temporary file beside the target (".<name>.<pid>.<n>.tmp"); the commit
// flushes it to the disk (FlushFileBuffers), closes it, gives it the
// target's attributes and renames it over the target in one step
// (MoveFileExW, replacing, write-through). A crash leaves the old file or
// the new one, and at worst the hidden temporary file beside it.
//
// A target that may not be written is refused when it is opened: a folder,
// a read-only file, or a file that another program holds open without
// letting others write (a sharing violation). A file locked after the open
// makes the commit fail and leaves it as it was.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "zelkora/platform/file_service.h"

namespace zelkora::platform::win32 {

class Win32FileService final : public FileService {
 public:
  // Writes `size` bytes at `at` of an open file handle; false, with the
  // system's last error, on failure. The service writes through this
  // function, so that a test can make writes fail as a full disk does.
  using WriteAt =
      std::function<bool(void* handle, const char* data, std::size_t size, std::uint64_t at)>;
  static bool system_write_at(void* handle, const char* data, std::size_t size, std::uint64_t at);

  explicit Win32FileService(WriteAt write_at = system_write_at) : write_at_(std::move(write_at)) {}

  bool exists(TextView path) const override;
  std::unique_ptr<DataFile> open(TextView path, FileAccess access, std::error_code& error) override;

 private:
  WriteAt write_at_;
};

// One service for the whole process: the default of a platform bundle.
std::shared_ptr<FileService> win32_file_service();

}  // namespace zelkora::platform::win32
