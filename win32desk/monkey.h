// The Windows program as the random tester's host (program/monkey.h): its
// script's steps (win32desk/script.h) as window messages on a program
// started afresh, the focus as the system has it, and what the form's
// windows show.
//
//   run_monkey(run, win32_monkey_host, out, err);
#pragma once

#include <memory>

#include "program/monkey.h"

namespace zelkora::win32desk {

std::unique_ptr<desk::MonkeyHost> win32_monkey_host();

}  // namespace zelkora::win32desk
