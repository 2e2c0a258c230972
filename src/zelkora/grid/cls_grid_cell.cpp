#include "zelkora/grid/cls_grid_cell.h"

namespace zelkora {

clsGridCell::clsGridCell() : clsGridCell(platform::Platform::current()) {}

clsGridCell::clsGridCell(std::shared_ptr<const platform::Platform> platform)
    : character_(std::make_unique<clsCharacter>(platform)),
      errors_(std::make_unique<clsErrChr>(platform)),
      load_save_(std::make_unique<clsLoadSave>(platform)) {}

clsGridCell::~clsGridCell() {
  character_.reset();
  errors_.reset();
  load_save_.reset();
}

}  // namespace zelkora
