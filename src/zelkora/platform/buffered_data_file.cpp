// The shared buffering of data files on disk.
#include "zelkora/platform/buffered_data_file.h"

#include <algorithm>
#include <cstring>

namespace zelkora::platform {

BufferedDataFile::BufferedDataFile(FileAccess access, std::uint64_t size, bool target_existed)
    : access_(access),
      size_(size),
      target_existed_(target_existed),
      buffer_(new char[kBufferSize]) {}

void BufferedDataFile::advance(std::size_t written) {
  position_ += written;
  size_ = std::max(size_, position_);
  modified_ = true;
}

bool BufferedDataFile::flush() {
  if (pending_ && buffered_ > 0 && !write_at(buffer_.get(), buffered_, buffer_at_)) {
    failed_ = true;
  }
  pending_ = false;
  buffered_ = 0;
  return !failed_;
}

std::size_t BufferedDataFile::read(char* out, std::size_t count) {
  if (!open_ || failed_ || (pending_ && !flush())) return 0;
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
      const std::int64_t n = read_at(out + done, static_cast<std::size_t>(left), position_);
      if (n <= 0) break;
      done += static_cast<std::size_t>(n);
      position_ += static_cast<std::uint64_t>(n);
    } else {
      const std::int64_t n = read_at(buffer_.get(), kBufferSize, position_);
      buffer_at_ = position_;
      buffered_ = n > 0 ? static_cast<std::size_t>(n) : 0;
      if (n <= 0) break;
    }
  }
  return done;
}

bool BufferedDataFile::write(std::string_view bytes) {
  if (!open_ || failed_ || access_ == FileAccess::Read) return false;
  if (pending_ && buffer_at_ + buffered_ != position_ && !flush()) return false;
  if (!pending_) {  // bytes read ahead are dropped
    buffered_ = 0;
    buffer_at_ = position_;
    pending_ = true;
  }
  if (buffered_ + bytes.size() > kBufferSize) {
    if (!flush()) return false;
    if (bytes.size() >= kBufferSize) {
      if (!write_at(bytes.data(), bytes.size(), position_)) {
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

void BufferedDataFile::end(bool published) {
  open_ = false;
  if (!published) discard();
}

bool BufferedDataFile::commit() {
  if (!open_) return false;
  if (access_ == FileAccess::Read) {
    end(false);
    return true;
  }
  const bool written = !failed_ && flush();
  if (written && access_ == FileAccess::Update && !modified_ && target_existed_) {
    end(false);  // read and never written: the target stays as it is
    return true;
  }
  const bool published = written && publish();
  end(published);
  return published;
}

bool BufferedDataFile::fill_from(DataFile& source) {
  std::uint64_t at = 0;
  for (;;) {
    const std::size_t n = source.read(buffer_.get(), kBufferSize);
    if (n == 0) break;
    if (!write_at(buffer_.get(), n, at)) return false;
    at += n;
  }
  if (at != source.size()) return false;
  size_ = at;
  return true;
}

}  // namespace zelkora::platform
