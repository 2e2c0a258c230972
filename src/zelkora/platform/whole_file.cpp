// The reading loop that every system's whole-file reading shares.
#include "zelkora/platform/whole_file.h"

#include <algorithm>
#include <chrono>

namespace zelkora::platform {

bool is_settled(const std::optional<FileStamp>& stamp) {
  constexpr std::int64_t kSettledAfterNs = 2'000'000'000;
  if (!stamp) return true;
  const std::int64_t now_ns = std::chrono::duration_cast<std::chrono::nanoseconds>(
                                  std::chrono::system_clock::now().time_since_epoch())
                                  .count();
  return std::max(stamp->modified_ns, stamp->changed_ns) < now_ns - kSettledAfterNs;
}

ReadStatus read_whole(const ReadAt& read_at, std::uint64_t size_hint, std::size_t max_size,
                      std::string& bytes) {
  bytes.clear();
  if (size_hint > max_size) return ReadStatus::Failed;
  bytes.resize(static_cast<std::size_t>(size_hint) + 1);
  std::size_t used = 0;
  for (;;) {
    if (used == bytes.size()) {
      if (bytes.size() > max_size) break;
      bytes.resize(std::min(max_size + 1, bytes.size() * 2));
    }
    const std::int64_t n = read_at(bytes.data() + used, bytes.size() - used, used);
    if (n < 0) {
      bytes.clear();
      return ReadStatus::Failed;
    }
    if (n == 0) break;
    used += static_cast<std::size_t>(n);
  }
  if (used > max_size) {
    bytes.clear();
    return ReadStatus::Failed;
  }
  bytes.resize(used);
  return ReadStatus::Ok;
}

}  // namespace zelkora::platform
