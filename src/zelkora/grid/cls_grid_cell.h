// clsGridCell: the property grid of a calculation form.
//
// The object holds one clsCharacter, one clsErrChr and one clsLoadSave, made
// when it is made and released, in that same order, when it ends.
#pragma once

#include <memory>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/frame/cls_character.h"

namespace zelkora {

class clsGridCell {
 public:
  clsGridCell();
  explicit clsGridCell(std::shared_ptr<const platform::Platform> platform);
  ~clsGridCell();
  clsGridCell(const clsGridCell&) = delete;
  clsGridCell& operator=(const clsGridCell&) = delete;

  // For the library's own subsystems.
  clsCharacter& character() { return *character_; }
  clsErrChr& errors() { return *errors_; }
  clsLoadSave& load_save() { return *load_save_; }

 private:
  std::unique_ptr<clsCharacter> character_;
  std::unique_ptr<clsErrChr> errors_;
  std::unique_ptr<clsLoadSave> load_save_;
};

}  // namespace zelkora
