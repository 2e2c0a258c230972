// The Qt program as the random tester's host (program/monkey.h): its
// script's steps (desk/script.h) on a program started afresh, the focus as
// Qt has it, and what the form's widgets show.
//
//   run_monkey(run, qt_monkey_host, out, err);
#pragma once

#include <memory>

#include "program/monkey.h"

namespace zelkora::desk {

std::unique_ptr<MonkeyHost> qt_monkey_host();

}  // namespace zelkora::desk
