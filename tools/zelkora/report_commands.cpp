#include "tools/zelkora/cli.h"

namespace zelkora::cli {

std::vector<Command> report_commands() { return {}; }

}  // namespace zelkora::cli
