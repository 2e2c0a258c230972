// Data files on a POSIX system: positioned reads and writes, safe replace.
#include "zelkora/platform/posix/data_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "zelkora/platform/buffered_data_file.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/posix/file_io.h"

namespace zelkora::platform::posix {

namespace {

namespace fs = std::filesystem;

std::error_code errno_code() { return {errno, std::generic_category()}; }

std::error_code not_a_file(const struct stat& st) {
  return S_ISDIR(st.st_mode) ? std::make_error_code(std::errc::is_a_directory)
                             : std::make_error_code(std::errc::invalid_argument);
}

class PosixDataFile final : public BufferedDataFile {
 public:
  // For Read, `temporary` and `target` are empty.
  PosixDataFile(int fd, FileAccess access, std::uint64_t size, fs::path temporary, fs::path target,
                bool target_existed)
      : BufferedDataFile(access, size, target_existed),
        fd_(fd),
        temporary_(std::move(temporary)),
        target_(std::move(target)) {}
  ~PosixDataFile() override { discard(); }
  PosixDataFile(const PosixDataFile&) = delete;
  PosixDataFile& operator=(const PosixDataFile&) = delete;

 protected:
  std::int64_t read_at(char* out, std::size_t size, std::uint64_t at) override {
    for (;;) {
      const ssize_t n = ::pread(fd_, out, size, static_cast<off_t>(at));
      if (n >= 0 || errno != EINTR) return n;
    }
  }

  bool write_at(const char* data, std::size_t size, std::uint64_t at) override {
    while (size > 0) {
      const ssize_t n = ::pwrite(fd_, data, size, static_cast<off_t>(at));
      if (n < 0) {
        if (errno == EINTR) continue;
        return false;
      }
      data += n;
      size -= static_cast<std::size_t>(n);
      at += static_cast<std::uint64_t>(n);
    }
    return true;
  }

  bool publish() override {
    bool ok = ::fsync(fd_) == 0;
    const int fd = fd_;
    fd_ = -1;
    ok = ::close(fd) == 0 && ok;
    if (!ok || ::rename(temporary_.c_str(), target_.c_str()) != 0) return false;
    temporary_.clear();
    sync_folder(target_.parent_path());
    return true;
  }

  void discard() override {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
    temporary_.clear();
  }

 private:
  int fd_;
  fs::path temporary_;
  fs::path target_;
};

std::unique_ptr<DataFile> open_for_reading(const fs::path& file, std::error_code& error) {
  // O_NONBLOCK keeps a FIFO from blocking the open; it is refused below.
  const int fd = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) {
    error = errno_code();
    return nullptr;
  }
  struct stat st {};
  const bool stated = ::fstat(fd, &st) == 0;
  if (!stated || !S_ISREG(st.st_mode)) {
    error = stated ? not_a_file(st) : errno_code();
    ::close(fd);
    return nullptr;
  }
  return std::make_unique<PosixDataFile>(
      fd, FileAccess::Read, static_cast<std::uint64_t>(st.st_size), fs::path(), fs::path(), true);
}

}  // namespace

bool PosixFileService::exists(TextView path) const {
  struct stat st {};
  return !path.empty() && ::stat(path_from_text(path).c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

std::unique_ptr<DataFile> PosixFileService::open(TextView path, FileAccess access,
                                                 std::error_code& error) {
  error.clear();
  const fs::path file = path_from_text(path);
  if (file.empty() || !file.has_filename()) {
    error = std::make_error_code(std::errc::no_such_file_or_directory);
    return nullptr;
  }
  if (access == FileAccess::Read) return open_for_reading(file, error);

  fs::path target = file;
  std::error_code ec;
  if (fs::is_symlink(file, ec)) {
    target = fs::weakly_canonical(file, ec);
    if (ec) {
      error = ec;
      return nullptr;
    }
  }
  struct stat st {};
  const bool existed = ::stat(target.c_str(), &st) == 0;
  if (existed) {
    if (!S_ISREG(st.st_mode)) {
      error = not_a_file(st);
      return nullptr;
    }
    if (::access(target.c_str(), W_OK) != 0) {
      error = errno_code();
      return nullptr;
    }
  } else if (errno != ENOENT) {
    error = errno_code();
    return nullptr;
  }
  fs::path temporary;
  const int fd = create_temporary(target, temporary);
  if (fd < 0) {
    error = errno_code();
    return nullptr;
  }
  // From here on the file removes its temporary when it is dropped.
  auto result = std::make_unique<PosixDataFile>(fd, access, 0, temporary, target, existed);
  if (existed && ::fchmod(fd, st.st_mode & 07777) != 0) {
    error = errno_code();
    return nullptr;
  }
  if (access == FileAccess::Update && existed) {
    const std::unique_ptr<DataFile> source = open_for_reading(target, error);
    if (!source) return nullptr;
    if (!result->fill_from(*source)) {
      error = std::make_error_code(std::errc::io_error);
      return nullptr;
    }
  }
  return result;
}

std::shared_ptr<FileService> posix_file_service() {
  static const std::shared_ptr<FileService> service = std::make_shared<PosixFileService>();
  return service;
}

}  // namespace zelkora::platform::posix
