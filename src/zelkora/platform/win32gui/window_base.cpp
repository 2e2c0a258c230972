// The process set-up, colours and units of the Windows host's controls.
#include "zelkora/platform/win32gui/window_base.h"

#include <commctrl.h>

#include <mutex>

namespace zelkora::platform::win32 {

namespace {

// SetProcessDpiAwarenessContext and GetDpiForWindow came with Windows 10
// 1607/1703: looked up, so that the program starts on older systems too.
template <class Function>
Function user32_function(const char* name) {
  const HMODULE user32 = ::GetModuleHandleW(L"user32.dll");
  return user32
             ? reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(user32, name)))
             : nullptr;
}

}  // namespace

void init_gui() {
  static std::once_flag once;
  std::call_once(once, [] {
    using SetAwareness = BOOL(WINAPI*)(HANDLE);
    // DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2
    if (auto set = user32_function<SetAwareness>("SetProcessDpiAwarenessContext")) {
      set(reinterpret_cast<HANDLE>(static_cast<intptr_t>(-4)));
    }
    INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX),
                                  ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&controls);
    ::LoadLibraryW(L"Msftedit.dll");
  });
}

COLORREF colour_ref(uint32_t colour) {
  if (is_system_colour(colour)) return ::GetSysColor(static_cast<int>(colour & 0xFF));
  return static_cast<COLORREF>(colour & 0x00FFFFFFu);
}

int dpi_of(HWND window) {
  using GetDpi = UINT(WINAPI*)(HWND);
  static const GetDpi get = user32_function<GetDpi>("GetDpiForWindow");
  UINT dpi = window && get ? get(window) : 0;
  if (dpi == 0) {
    // No window yet: the system's (the primary monitor's) DPI, which a new
    // window starts with.
    HDC screen = ::GetDC(nullptr);
    dpi = static_cast<UINT>(::GetDeviceCaps(screen, LOGPIXELSY));
    ::ReleaseDC(nullptr, screen);
  }
  return dpi > 0 ? static_cast<int>(dpi) : 96;
}

int twips_to_pixels(int32_t twips, int dpi) { return ::MulDiv(twips, dpi, 1440); }

int32_t pixels_to_twips(int pixels, int dpi) { return ::MulDiv(pixels, 1440, dpi); }

}  // namespace zelkora::platform::win32
