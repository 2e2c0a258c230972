#include "tools/zelkora/cli.h"

namespace zelkora::cli {

std::vector<Command> split_commands() { return {}; }

}  // namespace zelkora::cli
