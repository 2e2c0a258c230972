// Commands of the data files.
#include "tools/zelkora/cli.h"

namespace zelkora::cli {

std::vector<Command> datafile_commands() { return {}; }

}  // namespace zelkora::cli
