// For tests: which fault an action throws, as a name that reads well in a
// failure message.
#pragma once

#include <string>

#include "zelkora/platform/fault.h"

namespace zelkora::test_support {

// The name of the fault kind that `f` throws, or "none".
template <class F>
std::string fault_of(F&& f) {
  try {
    f();
  } catch (const Fault& fault) {
    return fault_kind_name(fault.kind());
  }
  return "none";
}

inline const std::string kOverflow = fault_kind_name(FaultKind::Overflow);
inline const std::string kConversion = fault_kind_name(FaultKind::Conversion);
inline const std::string kMissingResource = fault_kind_name(FaultKind::MissingResource);

}  // namespace zelkora::test_support
