#include "zelkora/grid/cls_grid_cell_main.h"

namespace zelkora {

clsGridCellMain::clsGridCellMain() : clsGridCellMain(platform::Platform::current()) {}

clsGridCellMain::clsGridCellMain(std::shared_ptr<const platform::Platform> platform)
    : character_(std::make_unique<clsCharacter>(std::move(platform))) {}

clsGridCellMain::~clsGridCellMain() = default;

}  // namespace zelkora
