#include "tools/zelkora/cli.h"

namespace zelkora::cli {

std::vector<Command> typeset_commands() { return {}; }

}  // namespace zelkora::cli
