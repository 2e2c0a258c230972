#include "tools/zelkora/cli.h"

namespace zelkora::cli {

std::vector<Command> rebar_commands() { return {}; }

}  // namespace zelkora::cli
