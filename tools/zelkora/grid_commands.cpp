// Commands of the property grid and the program menu.
#include "tools/zelkora/cli.h"

namespace zelkora::cli {

std::vector<Command> grid_commands() { return {}; }

}  // namespace zelkora::cli
