// The program menu of a desktop host: the suite's menu file read from the
// library's resources, put before the system's INI files of a platform
// bundle, so that the menu grid (clsGridCellMain) reads it by its name
// while every other INI file stays the system's.
#pragma once

#include <utility>
#include <vector>

#include "zelkora/grid/cls_grid_cell_main.h"
#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/platform.h"

namespace zelkora::desk {

// The name under which the program menu is read.
inline constexpr TextView kMenuFile = u"ZK_PROMENU.INI";

// The platform's INI files with the menu from its resources in front
// (written to nowhere); no menu in the resources gives an empty one.
void add_program_menu(platform::Platform& platform);

// ---- The menu grid of a host's main window (clsGridCellMain over the grid).
// The grid row whose caption is `caption` (blanks around it ignored), or 0.
int32_t menu_row_of(const platform::GridControl& grid, TextView caption);
// The programs whose forms this program lacks, greyed: their rows, each with
// the note a host shows as its tooltip.
std::vector<std::pair<int32_t, Text>> dim_programs_without_form(const clsGridCellMain& menu,
                                                                platform::GridControl& grid);
// The captions of the unfolded groups, top down.
std::vector<Text> unfolded_groups(const clsGridCellMain& menu, const platform::GridControl& grid);
// The folding is kept in the user's settings (section "View", key "Menu")
// as it changes: `groups` kept, and the kept groups unfolded again as a
// click unfolds them (the active cell put back) when a menu opens.
void keep_folding(const std::shared_ptr<const platform::Platform>& platform,
                  const std::vector<Text>& groups);
void restore_folding(const std::shared_ptr<const platform::Platform>& platform,
                     clsGridCellMain& menu, platform::GridControl& grid);

}  // namespace zelkora::desk
