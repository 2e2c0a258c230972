// clsLoadSave: project data files and the saving and restoring of form state.
// The object holds one suite service object, for its questions about files.
#pragma once

#include <memory>

#include "zelkora/platform/platform.h"

namespace zelkora {

class clsLoadSave {
 public:
  clsLoadSave();
  explicit clsLoadSave(std::shared_ptr<const platform::Platform> platform);
  ~clsLoadSave();
  clsLoadSave(const clsLoadSave&) = delete;
  clsLoadSave& operator=(const clsLoadSave&) = delete;

  // For the library's own subsystems.
  const platform::Platform& platform() const { return *platform_; }
  platform::SuiteServices& suite() const { return *suite_; }

 private:
  std::shared_ptr<const platform::Platform> platform_;
  std::shared_ptr<platform::SuiteServices> suite_;
};

}  // namespace zelkora
