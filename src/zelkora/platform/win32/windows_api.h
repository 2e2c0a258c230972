// <windows.h> as the Windows platform units include it: without the min/max
// macros, and without the macro MessageBox, which would rename the library's
// own `platform::MessageBox` in the files that see both.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#undef MessageBox
