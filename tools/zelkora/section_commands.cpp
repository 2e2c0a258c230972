#include "tools/zelkora/cli.h"

namespace zelkora::cli {

std::vector<Command> section_commands() { return {}; }

}  // namespace zelkora::cli
