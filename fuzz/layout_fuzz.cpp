// Layouts and descriptors come from resource folders and from forms: reading
// or linting one, building a grid from a form's rows and editing every row of it never
// crashes; what goes wrong is a Fault that names its place.
#include <cstdint>
#include <string>

#include "fuzz/fuzz_input.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/layout.h"
#include "zelkora/grid/layout_lint.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_form.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zelkora;  // NOLINT(google-build-using-namespace)
  static const auto platform = platform::Platform::headless();
  static const clsCharacter chr(platform);
  fuzz::Input in(data, size);
  const uint8_t choice = in.byte();
  const std::vector<Text> t = in.texts(3);
  try {
    (void)grid::read_layout(t[0], "F", clsCharacter::Internals::catalogue(chr));
  } catch (const Fault& fault) {
    if (std::string(fault.what()).find("\"F\"") == std::string::npos) __builtin_trap();
  }
  // The lint reads what the grid reads and reports, never throws.
  (void)grid::lint_layout(t[0], u"F", platform);

  std::vector<Text> rows = split_text(t[1], u"\n");
  rows.insert(rows.begin(), Text());
  if (rows.size() > 200) return 0;
  platform::headless::HeadlessForm view;
  clsGridCell cell(platform);
  try {
    const auto upper = static_cast<int32_t>(rows.size() - 1);
    cell.LetGridCellText(rows, std::vector<bool>(rows.size(), (choice & 1) != 0), upper,
                         static_cast<int32_t>(choice >> 1) % 64 - 1);
    cell.GridCell_InitializeA(&view.grid, &view.title, &view.panel, &view.form);
    cell.LoadDefaultEnter(false);
    std::vector<Text> typed = split_text(t[2], u"\n");
    if (typed.empty()) typed.emplace_back();
    for (int32_t r = 1; r <= upper; ++r) {
      view.grid.ActiveCell(r, 3);
      cell.GridCell_EnterRow();
      view.grid.Text(r, 3, typed[static_cast<std::size_t>(r) % typed.size()]);
      bool cancel = false;
      cell.GridCell_LeaveCellA(r, 3, cancel);
    }
  } catch (const Fault&) {
  }
  return 0;
}
