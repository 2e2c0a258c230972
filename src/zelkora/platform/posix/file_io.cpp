// Whole-file reading and atomic replacement on a POSIX system.
#include "zelkora/platform/posix/file_io.h"
#include "zelkora/platform/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <string>
#include <system_error>

namespace zelkora::platform {

namespace {

std::int64_t nanoseconds(const timespec& t) {
  return static_cast<std::int64_t>(t.tv_sec) * 1'000'000'000 + t.tv_nsec;
}

FileStamp stamp_of(const struct stat& st) {
  FileStamp s;
  s.device = static_cast<std::uint64_t>(st.st_dev);
  s.inode = static_cast<std::uint64_t>(st.st_ino);
  s.size = static_cast<std::uint64_t>(st.st_size);
  s.modified_ns = nanoseconds(st.st_mtim);
  s.changed_ns = nanoseconds(st.st_ctim);
  return s;
}

// Closes a descriptor at the end of the scope.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const { return fd_; }
  // Closes now, reporting whether the close succeeded.
  bool close() {
    const int fd = fd_;
    fd_ = -1;
    return ::close(fd) == 0;
  }

 private:
  int fd_;
};

bool write_all(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t n = ::write(fd, bytes.data(), bytes.size());
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(n));
  }
  return true;
}

}  // namespace

namespace posix {

int create_temporary(const std::filesystem::path& target, std::filesystem::path& temporary) {
  static std::atomic<unsigned> counter{0};
  const std::filesystem::path folder = target.parent_path();
  for (int attempt = 0; attempt < 100; ++attempt) {
    const std::string name = "." + target.filename().string() + "." + std::to_string(::getpid()) +
                             "." + std::to_string(counter++) + ".tmp";
    temporary = folder.empty() ? std::filesystem::path(name) : folder / name;
    const int fd = ::open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd >= 0 || errno != EEXIST) return fd;
  }
  return -1;
}

void sync_folder(const std::filesystem::path& folder) {
  const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd >= 0) {
    ::fsync(fd);
    ::close(fd);
  }
}

}  // namespace posix

std::optional<FileStamp> file_stamp(const std::filesystem::path& path) {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) return std::nullopt;
  return stamp_of(st);
}

ReadStatus read_file(const std::filesystem::path& path, std::size_t max_size, std::string& bytes,
                     FileStamp* stamp) {
  bytes.clear();
  Descriptor fd(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (fd.get() < 0) return errno == ENOENT ? ReadStatus::Missing : ReadStatus::Failed;
  struct stat st;
  if (::fstat(fd.get(), &st) != 0 || !S_ISREG(st.st_mode)) return ReadStatus::Failed;
  if (stamp) *stamp = stamp_of(st);
  return read_whole(
      [&fd](char* out, std::size_t n, std::uint64_t at) -> std::int64_t {
        for (;;) {
          const ssize_t got = ::pread(fd.get(), out, n, static_cast<off_t>(at));
          if (got >= 0 || errno != EINTR) return got;
        }
      },
      static_cast<std::uint64_t>(st.st_size), max_size, bytes);
}

bool replace_file(const std::filesystem::path& path, std::string_view bytes, bool create_folders) {
  if (path.empty() || !path.has_filename()) return false;
  std::error_code ec;
  std::filesystem::path target = path;
  if (std::filesystem::is_symlink(path, ec)) {
    target = std::filesystem::weakly_canonical(path, ec);
    if (ec) return false;
  }
  const std::filesystem::path folder = target.parent_path();
  if (create_folders && !folder.empty()) {
    std::filesystem::create_directories(folder, ec);
    if (ec) return false;
  }

  std::filesystem::path temporary;
  Descriptor fd(posix::create_temporary(target, temporary));
  if (fd.get() < 0) return false;
  struct stat old;
  bool ok = true;
  if (::stat(target.c_str(), &old) == 0) {
    ok = S_ISREG(old.st_mode) && ::fchmod(fd.get(), old.st_mode & 07777) == 0;
  }
  ok = ok && write_all(fd.get(), bytes) && ::fsync(fd.get()) == 0;
  ok = fd.close() && ok;
  ok = ok && ::rename(temporary.c_str(), target.c_str()) == 0;
  if (!ok) {
    ::unlink(temporary.c_str());
    return false;
  }
  posix::sync_folder(folder);
  return true;
}

}  // namespace zelkora::platform
