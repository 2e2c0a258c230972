// Data files on a POSIX system: positioned reads and writes, safe replace.
#include "zelkora/platform/posix/data_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>

#include "zelkora/platform/posix/file_io.h"

namespace zelkora::platform::posix {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;

std::error_code errno_code() { return {errno, std::generic_category()}; }

bool pwrite_all(int fd, const char* data, std::size_t size, std::uint64_t at) {
  while (size > 0) {
    const ssize_t n = ::pwrite(fd, data, size, static_cast<off_t>(at));
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

ssize_t pread_some(int fd, char* out, std::size_t size, std::uint64_t at) {
  for (;;) {
    const ssize_t n = ::pread(fd, out, size, static_cast<off_t>(at));
    if (n >= 0 || errno != EINTR) return n;
  }
}

class PosixDataFile final : public DataFile {
 public:
  // For Read, `temporary` and `target` are empty.
  PosixDataFile(int fd, FileAccess access, std::uint64_t size, fs::path temporary, fs::path target,
                bool target_existed)
      : fd_(fd),
        access_(access),
        size_(size),
        temporary_(std::move(temporary)),
        target_(std::move(target)),
        target_existed_(target_existed),
        buffer_(new char[kBufferSize]) {}
  ~PosixDataFile() override { close_and_remove(); }
  PosixDataFile(const PosixDataFile&) = delete;
  PosixDataFile& operator=(const PosixDataFile&) = delete;

  std::size_t read(char* out, std::size_t count) override;
  bool write(std::string_view bytes) override;
  std::uint64_t position() const override { return position_; }
  void seek(std::uint64_t position) override { position_ = position; }
  std::uint64_t size() const override { return size_; }
  bool commit() override;

  // Fills the new file with the content of `source` (for Update).
  bool load(const fs::path& source, std::error_code& error);

 private:
  bool flush();
  void advance(std::size_t written) {
    position_ += written;
    size_ = std::max(size_, position_);
    modified_ = true;
  }
  void close_and_remove() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
    temporary_.clear();
  }

  int fd_;
  FileAccess access_;
  std::uint64_t size_;
  std::uint64_t position_ = 0;
  fs::path temporary_;
  fs::path target_;
  bool target_existed_;
  bool modified_ = false;
  bool failed_ = false;
  // The buffer holds `buffered_` bytes of the file from `buffer_at_` on:
  // bytes read ahead, or (when `pending_`) bytes waiting to be written.
  std::unique_ptr<char[]> buffer_;
  std::size_t buffered_ = 0;
  std::uint64_t buffer_at_ = 0;
  bool pending_ = false;
};

bool PosixDataFile::flush() {
  if (pending_ && buffered_ > 0 && !pwrite_all(fd_, buffer_.get(), buffered_, buffer_at_)) {
    failed_ = true;
  }
  pending_ = false;
  buffered_ = 0;
  return !failed_;
}

std::size_t PosixDataFile::read(char* out, std::size_t count) {
  if (fd_ < 0 || failed_ || (pending_ && !flush())) return 0;
  std::size_t done = 0;
  while (done < count && position_ < size_) {
    const std::uint64_t left = std::min<std::uint64_t>(count - done, size_ - position_);
    if (position_ >= buffer_at_ && position_ < buffer_at_ + buffered_) {
      const std::size_t offset = static_cast<std::size_t>(position_ - buffer_at_);
      const std::size_t n =
          static_cast<std::size_t>(std::min<std::uint64_t>(left, buffered_ - offset));
      std::memcpy(out + done, buffer_.get() + offset, n);
      done += n;
      position_ += n;
    } else if (left >= kBufferSize) {
      const ssize_t n = pread_some(fd_, out + done, static_cast<std::size_t>(left), position_);
      if (n <= 0) break;
      done += static_cast<std::size_t>(n);
      position_ += static_cast<std::uint64_t>(n);
    } else {
      const ssize_t n = pread_some(fd_, buffer_.get(), kBufferSize, position_);
      buffer_at_ = position_;
      buffered_ = n > 0 ? static_cast<std::size_t>(n) : 0;
      if (n <= 0) break;
    }
  }
  return done;
}

bool PosixDataFile::write(std::string_view bytes) {
  if (fd_ < 0 || failed_ || access_ == FileAccess::Read) return false;
  if (pending_ && buffer_at_ + buffered_ != position_ && !flush()) return false;
  if (!pending_) {  // bytes read ahead are dropped
    buffered_ = 0;
    buffer_at_ = position_;
    pending_ = true;
  }
  if (buffered_ + bytes.size() > kBufferSize) {
    if (!flush()) return false;
    if (bytes.size() >= kBufferSize) {
      if (!pwrite_all(fd_, bytes.data(), bytes.size(), position_)) {
        failed_ = true;
        return false;
      }
      advance(bytes.size());
      return true;
    }
    buffer_at_ = position_;
    pending_ = true;
  }
  std::memcpy(buffer_.get() + buffered_, bytes.data(), bytes.size());
  buffered_ += bytes.size();
  advance(bytes.size());
  return true;
}

bool PosixDataFile::commit() {
  if (fd_ < 0) return false;
  if (access_ == FileAccess::Read) {
    close_and_remove();
    return true;
  }
  bool ok = !failed_ && flush();
  if (ok && access_ == FileAccess::Update && !modified_ && target_existed_) {
    close_and_remove();
    return true;
  }
  ok = ok && ::fsync(fd_) == 0;
  const int fd = fd_;
  fd_ = -1;
  ok = ::close(fd) == 0 && ok;
  ok = ok && ::rename(temporary_.c_str(), target_.c_str()) == 0;
  if (!ok) {
    close_and_remove();
    return false;
  }
  temporary_.clear();
  sync_folder(target_.parent_path());
  return true;
}

bool PosixDataFile::load(const fs::path& source, std::error_code& error) {
  const int in = ::open(source.c_str(), O_RDONLY | O_CLOEXEC);
  if (in < 0) {
    error = errno_code();
    return false;
  }
  std::uint64_t at = 0;
  for (;;) {
    const ssize_t n = pread_some(in, buffer_.get(), kBufferSize, at);
    if (n < 0 || (n > 0 && !pwrite_all(fd_, buffer_.get(), static_cast<std::size_t>(n), at))) {
      error = errno_code();
      ::close(in);
      return false;
    }
    if (n == 0) break;
    at += static_cast<std::uint64_t>(n);
  }
  ::close(in);
  size_ = at;
  return true;
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
  struct stat st {};
  if (access == FileAccess::Read) {
    // O_NONBLOCK keeps a FIFO from blocking the open; it is refused below.
    const int fd = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
      error = errno_code();
      return nullptr;
    }
    if (::fstat(fd, &st) != 0) {
      error = errno_code();
      ::close(fd);
      return nullptr;
    }
    if (!S_ISREG(st.st_mode)) {
      error = S_ISDIR(st.st_mode) ? std::make_error_code(std::errc::is_a_directory)
                                  : std::make_error_code(std::errc::invalid_argument);
      ::close(fd);
      return nullptr;
    }
    return std::make_unique<PosixDataFile>(fd, access, static_cast<std::uint64_t>(st.st_size),
                                           fs::path(), fs::path(), true);
  }

  fs::path target = file;
  std::error_code ec;
  if (fs::is_symlink(file, ec)) {
    target = fs::weakly_canonical(file, ec);
    if (ec) {
      error = ec;
      return nullptr;
    }
  }
  const bool existed = ::stat(target.c_str(), &st) == 0;
  if (existed) {
    if (!S_ISREG(st.st_mode)) {
      error = S_ISDIR(st.st_mode) ? std::make_error_code(std::errc::is_a_directory)
                                  : std::make_error_code(std::errc::invalid_argument);
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
  if (access == FileAccess::Update && existed && !result->load(target, error)) return nullptr;
  return result;
}

std::shared_ptr<FileService> posix_file_service() {
  static const std::shared_ptr<FileService> service = std::make_shared<PosixFileService>();
  return service;
}

}  // namespace zelkora::platform::posix
