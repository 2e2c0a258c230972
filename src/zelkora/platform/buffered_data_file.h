// The part of a data file on disk that every system shares: one 64 KiB
// buffer for reads ahead and pending writes, the position and size, the
// failure that refuses every later write, and the commit's order of steps.
// A system supplies positioned reads and writes of its file and the two ways
// of ending it: publishing what was written as the target, or discarding it.
//
// The file of Replace and Update is a new file beside the target; Read works
// on the target itself. So a file dropped without a commit, or whose commit
// fails, leaves the target as it was (see platform/file_service.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "zelkora/platform/file_service.h"

namespace zelkora::platform {

class BufferedDataFile : public DataFile {
 public:
  static constexpr std::size_t kBufferSize = std::size_t{64} * 1024;

  std::size_t read(char* out, std::size_t count) final;
  bool write(std::string_view bytes) final;
  std::uint64_t position() const final { return position_; }
  void seek(std::uint64_t position) final { position_ = position; }
  std::uint64_t size() const final { return size_; }
  bool commit() final;

  // Copies the whole of `source` into the new file (Update starts so).
  bool fill_from(DataFile& source);

 protected:
  BufferedDataFile(FileAccess access, std::uint64_t size, bool target_existed);

  // Reads up to `size` bytes at `at`; the count, 0 at the end, -1 on error.
  virtual std::int64_t read_at(char* out, std::size_t size, std::uint64_t at) = 0;
  // Writes all `size` bytes at `at`; false on any failure.
  virtual bool write_at(const char* data, std::size_t size, std::uint64_t at) = 0;
  // Makes the new file the target, durably: flush, close, rename over the
  // target. False when any step failed; `discard` then follows.
  virtual bool publish() = 0;
  // Closes the file and removes the new file, if any. Called once at most by
  // this class; the system's class also calls it when it is destroyed.
  virtual void discard() = 0;

 private:
  bool flush();
  void advance(std::size_t written);
  void end(bool published);

  FileAccess access_;
  std::uint64_t size_;
  std::uint64_t position_ = 0;
  bool target_existed_;
  bool open_ = true;
  bool modified_ = false;
  bool failed_ = false;
  // The buffer holds `buffered_` bytes of the file from `buffer_at_` on:
  // bytes read ahead, or (when `pending_`) bytes waiting to be written.
  std::unique_ptr<char[]> buffer_;
  std::size_t buffered_ = 0;
  std::uint64_t buffer_at_ = 0;
  bool pending_ = false;
};

}  // namespace zelkora::platform
