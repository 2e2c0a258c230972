// Whole-file reading and atomic replacement on Windows, and the helpers the
// data files share with them.
#include "zelkora/platform/win32/file_io.h"

#include <algorithm>
#include <atomic>
#include <string>

#include "zelkora/platform/whole_file.h"

namespace zelkora::platform {

namespace win32 {

namespace {

constexpr std::size_t kMaxChunk = std::size_t{1} << 30;  // what one call moves at most

OVERLAPPED at_offset(std::uint64_t at) {
  OVERLAPPED ov{};
  ov.Offset = static_cast<DWORD>(at);
  ov.OffsetHigh = static_cast<DWORD>(at >> 32);
  return ov;
}

}  // namespace

bool is_missing_file_error(DWORD error) {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
         error == ERROR_INVALID_NAME;
}

Handle create_temporary(const std::filesystem::path& target, std::filesystem::path& temporary) {
  static std::atomic<unsigned> counter{0};
  const std::filesystem::path folder = target.parent_path();
  for (int attempt = 0; attempt < 100; ++attempt) {
    const std::wstring name = L"." + target.filename().wstring() + L"." +
                              std::to_wstring(::GetCurrentProcessId()) + L"." +
                              std::to_wstring(counter++) + L".tmp";
    temporary = folder.empty() ? std::filesystem::path(name) : folder / name;
    Handle file(::CreateFileW(temporary.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ,
                              nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED, nullptr));
    if (file || ::GetLastError() != ERROR_FILE_EXISTS) return file;
  }
  return Handle();
}

bool move_over(const std::filesystem::path& temporary, const std::filesystem::path& target,
               DWORD attributes) {
  constexpr DWORD kSettable = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN |
                              FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_OFFLINE |
                              FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_TEMPORARY;
  attributes &= kSettable;
  return ::SetFileAttributesW(temporary.c_str(), attributes ? attributes : FILE_ATTRIBUTE_NORMAL) &&
         ::MoveFileExW(temporary.c_str(), target.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

bool write_at(HANDLE file, const char* data, std::size_t size, std::uint64_t at) {
  while (size > 0) {
    OVERLAPPED ov = at_offset(at);
    DWORD written = 0;
    const DWORD chunk = static_cast<DWORD>(std::min(size, kMaxChunk));
    if (!::WriteFile(file, data, chunk, &written, &ov) || written == 0) return false;
    data += written;
    size -= written;
    at += written;
  }
  return true;
}

std::int64_t read_at(HANDLE file, char* out, std::size_t size, std::uint64_t at) {
  OVERLAPPED ov = at_offset(at);
  DWORD got = 0;
  const DWORD chunk = static_cast<DWORD>(std::min(size, kMaxChunk));
  if (!::ReadFile(file, out, chunk, &got, &ov)) {
    return ::GetLastError() == ERROR_HANDLE_EOF ? 0 : -1;
  }
  return got;
}

}  // namespace win32

namespace {

using win32::Handle;

// 100-nanosecond ticks since 1601 as nanoseconds since 1970.
std::int64_t unix_nanoseconds(LARGE_INTEGER ticks) {
  constexpr std::int64_t kTicksTo1970 = 116444736000000000;
  return (ticks.QuadPart - kTicksTo1970) * 100;
}

std::optional<FileStamp> stamp_of(HANDLE file) {
  BY_HANDLE_FILE_INFORMATION info{};
  FILE_BASIC_INFO basic{};
  if (!::GetFileInformationByHandle(file, &info) ||
      !::GetFileInformationByHandleEx(file, FileBasicInfo, &basic, sizeof basic)) {
    return std::nullopt;
  }
  FileStamp s;
  s.device = info.dwVolumeSerialNumber;
  s.inode = (std::uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow;
  s.size = (std::uint64_t{info.nFileSizeHigh} << 32) | info.nFileSizeLow;
  s.modified_ns = unix_nanoseconds(basic.LastWriteTime);
  s.changed_ns = unix_nanoseconds(basic.ChangeTime);
  return s;
}

}  // namespace

std::optional<FileStamp> file_stamp(const std::filesystem::path& path) {
  Handle file(::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, win32::kShareAll, nullptr,
                            OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!file) return std::nullopt;
  return stamp_of(file.get());
}

ReadStatus read_file(const std::filesystem::path& path, std::size_t max_size, std::string& bytes,
                     FileStamp* stamp) {
  bytes.clear();
  Handle file(::CreateFileW(path.c_str(), GENERIC_READ, win32::kShareAll, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file)
    return win32::is_missing_file_error(::GetLastError()) ? ReadStatus::Missing
                                                          : ReadStatus::Failed;
  LARGE_INTEGER size{};
  if (::GetFileType(file.get()) != FILE_TYPE_DISK || !::GetFileSizeEx(file.get(), &size)) {
    return ReadStatus::Failed;
  }
  if (stamp) {
    const std::optional<FileStamp> s = stamp_of(file.get());
    if (!s) return ReadStatus::Failed;
    *stamp = *s;
  }
  return read_whole([&file](char* out, std::size_t n,
                            std::uint64_t at) { return win32::read_at(file.get(), out, n, at); },
                    static_cast<std::uint64_t>(size.QuadPart), max_size, bytes);
}

bool replace_file(const std::filesystem::path& path, std::string_view bytes, bool create_folders) {
  if (path.empty() || !path.has_filename()) return false;
  const std::filesystem::path folder = path.parent_path();
  std::error_code ec;
  if (create_folders && !folder.empty()) {
    std::filesystem::create_directories(folder, ec);
    if (ec) return false;
  }
  const DWORD old = ::GetFileAttributesW(path.c_str());
  if (old != INVALID_FILE_ATTRIBUTES &&
      (old & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
    return false;  // not a file, or one that may not be written
  }
  std::filesystem::path temporary;
  Handle file = win32::create_temporary(path, temporary);
  if (!file) return false;
  bool ok =
      win32::write_at(file.get(), bytes.data(), bytes.size(), 0) && ::FlushFileBuffers(file.get());
  ok = file.close() && ok;
  const DWORD attributes = old == INVALID_FILE_ATTRIBUTES ? FILE_ATTRIBUTE_NORMAL : old;
  if (!ok || !win32::move_over(temporary, path, attributes)) {
    ::DeleteFileW(temporary.c_str());
    return false;
  }
  return true;
}

}  // namespace zelkora::platform
