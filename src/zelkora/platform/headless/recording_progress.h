/// A progress display that records each call, for tests and headless hosts. @file
#pragma once

#include <vector>

#include "zelkora/platform/progress.h"

namespace zelkora::platform::headless {
/// A progress display that records each call.
class RecordingProgressDisplay : public ProgressDisplay {
 public:  /// One call's arguments.
  struct Call {
    int16_t sign;                                  ///< The sign.
    Control* panel;                                ///< The panel.
    int32_t n;                                     ///< N.
    int32_t l;                                     ///< L.
    bool operator==(const Call&) const = default;  ///< Member-wise equality.
  };
  void show(int16_t sign, Control* panel, int32_t n, int32_t l) override {
    calls.push_back({sign, panel, n, l});
  }

  std::vector<Call> calls;  ///< in the order they were made
};

}  // namespace zelkora::platform::headless
