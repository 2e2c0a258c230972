// clsGridCellMain: the program menu grid of the suite's main form. The
// object holds one clsCharacter, for the menu file and the catalogue texts.
#pragma once

#include <memory>

#include "zelkora/frame/cls_character.h"

namespace zelkora {

class clsGridCellMain {
 public:
  clsGridCellMain();
  explicit clsGridCellMain(std::shared_ptr<const platform::Platform> platform);
  ~clsGridCellMain();
  clsGridCellMain(const clsGridCellMain&) = delete;
  clsGridCellMain& operator=(const clsGridCellMain&) = delete;

  // For the library's own subsystems.
  clsCharacter& character() { return *character_; }

 private:
  std::unique_ptr<clsCharacter> character_;
};

}  // namespace zelkora
