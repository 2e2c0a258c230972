// Library text as the wide-character Win32 calls take it, and the system's
// last error as an error code.
#pragma once

#include <string>
#include <string_view>
#include <system_error>

#include "zelkora/platform/text.h"

namespace zelkora::platform::win32 {

// UTF-16 unit for unit (wchar_t is 16 bits on Windows).
std::wstring wide(TextView text);
Text from_wide(std::wstring_view text);

// GetLastError() in the system category.
std::error_code last_error();

}  // namespace zelkora::platform::win32
