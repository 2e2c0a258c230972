// The run-time errors that reach a caller.
#include "zelkora/platform/fault.h"

namespace zelkora {

const char* fault_kind_name(FaultKind kind) {
  switch (kind) {
    case FaultKind::Overflow:
      return "overflow";
    case FaultKind::DivisionByZero:
      return "division by zero";
    case FaultKind::IndexOutOfRange:
      return "index out of range";
    case FaultKind::Conversion:
      return "conversion error";
    case FaultKind::MissingResource:
      return "missing resource";
    case FaultKind::File:
      return "file error";
  }
  return "fault";
}

}  // namespace zelkora
