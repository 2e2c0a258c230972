/// The one exception of the library. Checks and parsers report error numbers;
/// a `Fault` is thrown only where a run-time error reaches the caller:
/// overflow, division by zero, an index out of range, a conversion that cannot
/// be made, a resource or file that is missing. @file
#pragma once

#include <stdexcept>
#include <string>

namespace zelkora {
/// The kinds of run-time error a Fault reports.
enum class FaultKind {
  Overflow,         ///< a number does not fit the type it is narrowed to
  DivisionByZero,   ///< an arithmetic step divides by zero
  IndexOutOfRange,  ///< an array index outside its bounds
  Conversion,       ///< a text that is not a number where one is required
  MissingResource,  ///< a catalogue id or an embedded resource that does not exist
  File,             ///< a file that cannot be opened, read or written
};

/// A short English name of the kind ("overflow"), for messages.
const char* fault_kind_name(FaultKind kind);
/// The one exception of the library: a kind and a message.
class Fault : public std::runtime_error {
 public:  /// A fault of `kind` with the message `what`.
  Fault(FaultKind kind, const std::string& what) : std::runtime_error(what), kind_(kind) {}
  FaultKind kind() const { return kind_; }  ///< The kind of the fault.

 private:
  FaultKind kind_;
};

}  // namespace zelkora
