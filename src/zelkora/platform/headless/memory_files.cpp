// Data files in memory, with failures that tests can inject.
#include "zelkora/platform/headless/memory_files.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace zelkora::platform::headless {

struct MemoryFileService::State {
  std::map<Text, std::string, std::less<>> files;
  int writes = 0;
  int fail_write_at = 0;  // the value of `writes` whose write fails; 0 none
  bool fail_open = false;
  bool fail_commit = false;
};

namespace {

class MemoryDataFile final : public DataFile {
 public:
  MemoryDataFile(std::shared_ptr<MemoryFileService::State> state, Text path, FileAccess access,
                 std::string content, bool existed)
      : state_(std::move(state)),
        path_(std::move(path)),
        access_(access),
        content_(std::move(content)),
        existed_(existed) {}

  std::size_t read(char* out, std::size_t count) override {
    if (closed_ || position_ >= content_.size()) return 0;
    const std::size_t n = std::min<std::size_t>(count, content_.size() - position_);
    std::memcpy(out, content_.data() + position_, n);
    position_ += n;
    return n;
  }

  bool write(std::string_view bytes) override {
    if (closed_ || failed_ || access_ == FileAccess::Read) return false;
    if (++state_->writes == state_->fail_write_at) failed_ = true;
    if (failed_) return false;
    if (content_.size() < position_ + bytes.size()) content_.resize(position_ + bytes.size());
    std::memcpy(content_.data() + position_, bytes.data(), bytes.size());
    position_ += bytes.size();
    modified_ = true;
    return true;
  }

  std::uint64_t position() const override { return position_; }
  void seek(std::uint64_t position) override {
    position_ = static_cast<std::size_t>(std::min<std::uint64_t>(position, SIZE_MAX / 2));
  }
  std::uint64_t size() const override { return content_.size(); }

  bool commit() override {
    if (closed_) return false;
    closed_ = true;
    if (access_ == FileAccess::Read) return true;
    if (failed_ || state_->fail_commit) return false;
    if (access_ == FileAccess::Update && !modified_ && existed_) return true;
    state_->files[path_] = std::move(content_);
    return true;
  }

 private:
  std::shared_ptr<MemoryFileService::State> state_;
  Text path_;
  FileAccess access_;
  std::string content_;
  std::size_t position_ = 0;
  bool existed_;
  bool modified_ = false;
  bool failed_ = false;
  bool closed_ = false;
};

}  // namespace

MemoryFileService::MemoryFileService() : state_(std::make_shared<State>()) {}

bool MemoryFileService::exists(TextView path) const {
  return state_->files.find(path) != state_->files.end();
}

std::unique_ptr<DataFile> MemoryFileService::open(TextView path, FileAccess access,
                                                  std::error_code& error) {
  error.clear();
  if (state_->fail_open) {
    error = std::make_error_code(std::errc::permission_denied);
    return nullptr;
  }
  const auto it = state_->files.find(path);
  const bool existed = it != state_->files.end();
  if (access == FileAccess::Read && !existed) {
    error = std::make_error_code(std::errc::no_such_file_or_directory);
    return nullptr;
  }
  std::string content = existed && access != FileAccess::Replace ? it->second : std::string();
  return std::make_unique<MemoryDataFile>(state_, Text(path), access, std::move(content), existed);
}

void MemoryFileService::put(TextView path, std::string bytes) {
  state_->files[Text(path)] = std::move(bytes);
}

std::optional<std::string> MemoryFileService::bytes(TextView path) const {
  const auto it = state_->files.find(path);
  if (it == state_->files.end()) return std::nullopt;
  return it->second;
}

void MemoryFileService::fail_write_at(int n) {
  state_->fail_write_at = n > 0 ? state_->writes + n : 0;
}

void MemoryFileService::fail_open(bool on) { state_->fail_open = on; }

void MemoryFileService::fail_commit(bool on) { state_->fail_commit = on; }

int MemoryFileService::write_count() const { return state_->writes; }

}  // namespace zelkora::platform::headless
