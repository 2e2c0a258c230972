// Wide text and the last error.
#include "zelkora/platform/win32/wide.h"

#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::platform::win32 {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

std::wstring wide(TextView text) { return std::wstring(text.begin(), text.end()); }

Text from_wide(std::wstring_view text) { return Text(text.begin(), text.end()); }

std::error_code last_error() {
  return {static_cast<int>(::GetLastError()), std::system_category()};
}

}  // namespace zelkora::platform::win32
