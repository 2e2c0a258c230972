// The program menu of a desktop host: the suite's menu file read from the
// library's resources, put before the system's INI files of a platform
// bundle, so that the menu grid (clsGridCellMain) reads it by its name
// while every other INI file stays the system's.
#pragma once

#include "zelkora/platform/platform.h"

namespace zelkora::desk {

// The name under which the program menu is read.
inline constexpr TextView kMenuFile = u"ZK_PROMENU.INI";

// The platform's INI files with the menu from its resources in front
// (written to nowhere); no menu in the resources gives an empty one.
void add_program_menu(platform::Platform& platform);

}  // namespace zelkora::desk
