// Help on systems without a viewer of compiled help: the desktop's opener
// ("xdg-open", or the program named by ZELKORA_HELP_OPENER) is handed the
// help file and left to run on its own. It opens the file at its start: the
// openers know no topics inside a compiled help file, so the topic is not
// passed on.
#pragma once

#include <string>

#include "zelkora/platform/platform.h"
#include "zelkora/platform/shared_services.h"

namespace zelkora::platform::posix {

class OpenerHelpViewer : public HelpViewer {
 public:
  explicit OpenerHelpViewer(std::string opener) : opener_(std::move(opener)) {}
  // False when the opener is not on the PATH, the file does not exist or
  // the opener could not be started.
  bool show(TextView file, TextView topic) override;

 private:
  std::string opener_;
};

// The opener of the environment: ZELKORA_HELP_OPENER when set and not empty,
// else "xdg-open".
std::string help_opener(const EnvLookup& env);

}  // namespace zelkora::platform::posix
