// The controls of a calling form as the library sees them. A form hands its
// controls to the library's classes; the library reaches them only through
// these interfaces, and the headless implementations serve tests and hosts
// without a user interface.
#pragma once

namespace zelkora::platform {

// Any control or object of the calling form.
class Control {
 public:
  virtual ~Control() = default;
};

}  // namespace zelkora::platform
