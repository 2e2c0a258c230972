// The input of a harness cut into the pieces a call takes: numbers from its
// first bytes, then texts (UTF-16 units, two bytes each) split at U+0000, or
// the rest as bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/text.h"

namespace fuzz {

// The headless platform bundle with what a harness changes in it.
inline std::shared_ptr<zelkora::platform::Platform> headless_platform(
    const std::function<void(zelkora::platform::Platform&)>& adapt) {
  auto platform = zelkora::platform::Platform::headless();
  adapt(*platform);
  return platform;
}

class Input {
 public:
  Input(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  // The next byte, or 0 past the end.
  uint8_t byte() { return at_ < size_ ? data_[at_++] : 0; }
  // The next two bytes as a small signed number.
  int16_t number() {
    const auto high = static_cast<unsigned>(byte());
    return static_cast<int16_t>((high << 8) | byte());
  }
  double real() {
    double value = 0;
    if (size_ - at_ >= sizeof value) {
      std::memcpy(&value, data_ + at_, sizeof value);
      at_ += sizeof value;
    }
    return value;
  }
  // The rest as texts, split at U+0000; at least `count` of them.
  std::vector<zelkora::Text> texts(std::size_t count) {
    std::vector<zelkora::Text> out(1);
    for (; at_ + 1 < size_; at_ += 2) {
      char16_t unit = 0;
      std::memcpy(&unit, data_ + at_, 2);
      if (unit == 0) {
        out.emplace_back();
      } else {
        out.back().push_back(unit);
      }
    }
    at_ = size_;
    if (out.size() < count) out.resize(count);
    return out;
  }
  std::string bytes() {
    std::string out(reinterpret_cast<const char*>(data_) + at_, size_ - at_);
    at_ = size_;
    return out;
  }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t at_ = 0;
};

}  // namespace fuzz
