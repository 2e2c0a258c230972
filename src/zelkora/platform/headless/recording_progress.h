// A progress display that records each call, for tests and headless hosts.
#pragma once

#include <vector>

#include "zelkora/platform/progress.h"

namespace zelkora::platform::headless {

class RecordingProgressDisplay : public ProgressDisplay {
 public:
  struct Call {
    int16_t sign;
    Control* panel;
    int32_t n;
    int32_t l;
    bool operator==(const Call&) const = default;
  };
  void show(int16_t sign, Control* panel, int32_t n, int32_t l) override {
    calls.push_back({sign, panel, n, l});
  }

  std::vector<Call> calls;  // in the order they were made
};

}  // namespace zelkora::platform::headless
