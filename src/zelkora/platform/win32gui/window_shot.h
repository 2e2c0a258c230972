// A picture of a window as it draws itself, for tests and bug reports: the
// window and its children drawn into a 32-bit bitmap off the screen (each
// window asked to print itself, as PrintWindow does) and written as a PNG
// file.
//
//   win32::write_window_png(form, L"form.png");
#pragma once

#include <string>

#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::platform::win32 {

// Writes the window, frame included, as a PNG of its size; false when it
// could not be drawn or written. COM is set up for the call when the
// thread has not done so.
bool write_window_png(HWND window, const std::wstring& file);

}  // namespace zelkora::platform::win32
