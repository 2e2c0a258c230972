/// The progress display of a calling program. The library does not know what
/// a progress display looks like: clsCharacter::DisplayProcess hands the
/// display of the platform bundle a sign, the panel to show it on and two
/// counts, and the display does the rest. A bundle without a display makes
/// DisplayProcess do nothing. @file
#pragma once

#include <cstdint>

#include "zelkora/platform/controls.h"

namespace zelkora::platform {
/// The progress display of a calling program.
class ProgressDisplay {
 public:
  virtual ~ProgressDisplay() = default;
  /// One DisplayProcess call, its arguments in the order the display takes
  /// them: the sign, the panel (may be null), N, then L.
  virtual void show(int16_t sign, Control* panel, int32_t n, int32_t l) = 0;
};

}  // namespace zelkora::platform
