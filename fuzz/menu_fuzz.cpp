// A menu file may be damaged or hostile: building the program menu from it
// and clicking its rows never crashes.
#include <cstdint>
#include <memory>

#include "fuzz/fuzz_input.h"
#include "zelkora/grid/cls_grid_cell_main.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_grid.h"
#include "zelkora/platform/headless/memory_ini_files.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zelkora;  // NOLINT(google-build-using-namespace)
  static const auto ini = std::make_shared<platform::headless::MemoryIniFiles>();
  static const auto platform = fuzz::headless_platform([](platform::Platform& p) { p.ini = ini; });
  fuzz::Input in(data, size);
  const uint8_t clicks = in.byte();
  ini->put(u"m.ini", in.texts(1)[0]);
  platform::headless::MemoryGrid grid;
  clsGridCellMain menu(platform);
  menu.GridCell(&grid);
  menu.tProMenuIniFile(u"m.ini");
  try {
    menu.GridCell_Initialize();
    for (int i = 0; i < clicks % 8 && grid.Rows() > 1; ++i) {
      grid.ActiveCell(1 + (i * 7) % (grid.Rows() - 1), 2);
      Text page, key;
      (void)menu.GridCell_Click(page, key);
    }
  } catch (const Fault&) {
  }
  return 0;
}
