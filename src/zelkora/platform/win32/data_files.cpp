// Data files on Windows: positioned reads and writes, safe replace.
#include "zelkora/platform/win32/data_files.h"

#include <filesystem>

#include "zelkora/platform/buffered_data_file.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/win32/file_io.h"
#include "zelkora/platform/win32/wide.h"

namespace zelkora::platform::win32 {

namespace {

namespace fs = std::filesystem;

class Win32DataFile final : public BufferedDataFile {
 public:
  // For Read, `temporary` and `target` are empty.
  Win32DataFile(Handle file, FileAccess access, std::uint64_t size, fs::path temporary,
                fs::path target, DWORD target_attributes, const Win32FileService::WriteAt& write)
      : BufferedDataFile(access, size, target_attributes != INVALID_FILE_ATTRIBUTES),
        file_(std::move(file)),
        temporary_(std::move(temporary)),
        target_(std::move(target)),
        target_attributes_(target_attributes),
        write_(write) {}
  ~Win32DataFile() override { discard(); }
  Win32DataFile(const Win32DataFile&) = delete;
  Win32DataFile& operator=(const Win32DataFile&) = delete;

 protected:
  std::int64_t read_at(char* out, std::size_t size, std::uint64_t at) override {
    return win32::read_at(file_.get(), out, size, at);
  }
  bool write_at(const char* data, std::size_t size, std::uint64_t at) override {
    return write_(file_.get(), data, size, at);
  }
  bool publish() override {
    bool ok = ::FlushFileBuffers(file_.get()) != 0;
    ok = file_.close() && ok;
    const DWORD attributes =
        target_attributes_ == INVALID_FILE_ATTRIBUTES ? FILE_ATTRIBUTE_NORMAL : target_attributes_;
    if (!ok || !move_over(temporary_, target_, attributes)) return false;
    temporary_.clear();
    return true;
  }
  void discard() override {
    file_.close();
    if (!temporary_.empty()) ::DeleteFileW(temporary_.c_str());
    temporary_.clear();
  }

 private:
  Handle file_;
  fs::path temporary_;
  fs::path target_;
  DWORD target_attributes_;
  Win32FileService::WriteAt write_;
};

std::error_code not_a_file(DWORD attributes) {
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0
             ? std::make_error_code(std::errc::is_a_directory)
             : std::make_error_code(std::errc::invalid_argument);
}

std::unique_ptr<DataFile> open_for_reading(const fs::path& file, std::error_code& error,
                                           const Win32FileService::WriteAt& write) {
  const DWORD attributes = ::GetFileAttributesW(file.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    error = not_a_file(attributes);
    return nullptr;
  }
  Handle handle(::CreateFileW(file.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!handle) {
    error = last_error();
    return nullptr;
  }
  LARGE_INTEGER size{};
  if (::GetFileType(handle.get()) != FILE_TYPE_DISK) {
    error = not_a_file(0);
    return nullptr;
  }
  if (!::GetFileSizeEx(handle.get(), &size)) {
    error = last_error();
    return nullptr;
  }
  return std::make_unique<Win32DataFile>(std::move(handle), FileAccess::Read,
                                         static_cast<std::uint64_t>(size.QuadPart), fs::path(),
                                         fs::path(), FILE_ATTRIBUTE_NORMAL, write);
}

// Refuses a target that exists but may not be written, as a classic open for
// writing would: a folder, a read-only file, a file locked by another handle.
bool writable_target(const fs::path& target, DWORD attributes, std::error_code& error) {
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    error = not_a_file(attributes);
    return false;
  }
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    error = std::make_error_code(std::errc::permission_denied);
    return false;
  }
  Handle probe(::CreateFileW(target.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!probe) error = last_error();
  return static_cast<bool>(probe);
}

}  // namespace

bool Win32FileService::system_write_at(void* handle, const char* data, std::size_t size,
                                       std::uint64_t at) {
  return win32::write_at(static_cast<HANDLE>(handle), data, size, at);
}

bool Win32FileService::exists(TextView path) const {
  if (path.empty()) return false;
  const DWORD attributes = ::GetFileAttributesW(path_from_text(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::unique_ptr<DataFile> Win32FileService::open(TextView path, FileAccess access,
                                                 std::error_code& error) {
  error.clear();
  const fs::path target = path_from_text(path);
  if (target.empty() || !target.has_filename()) {
    error = std::make_error_code(std::errc::no_such_file_or_directory);
    return nullptr;
  }
  if (access == FileAccess::Read) return open_for_reading(target, error, write_at_);

  const DWORD attributes = ::GetFileAttributesW(target.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD why = ::GetLastError();
    if (!is_missing_file_error(why)) {
      error = {static_cast<int>(why), std::system_category()};
      return nullptr;
    }
  } else if (!writable_target(target, attributes, error)) {
    return nullptr;
  }
  fs::path temporary;
  Handle file = create_temporary(target, temporary);
  if (!file) {
    error = last_error();
    return nullptr;
  }
  // From here on the file removes its temporary when it is dropped.
  auto result = std::make_unique<Win32DataFile>(std::move(file), access, 0, temporary, target,
                                                attributes, write_at_);
  if (access == FileAccess::Update && attributes != INVALID_FILE_ATTRIBUTES) {
    const std::unique_ptr<DataFile> source = open_for_reading(target, error, write_at_);
    if (!source) return nullptr;
    if (!result->fill_from(*source)) {
      error = std::make_error_code(std::errc::io_error);
      return nullptr;
    }
  }
  return result;
}

std::shared_ptr<FileService> win32_file_service() {
  static const std::shared_ptr<FileService> service = std::make_shared<Win32FileService>();
  return service;
}

}  // namespace zelkora::platform::win32
