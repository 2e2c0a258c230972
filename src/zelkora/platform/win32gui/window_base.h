// What every native control of the Windows host shares: the process set up
// for the common controls, the rich-edit control and per-monitor DPI; the
// library's colours as the system's (a system colour is the user's scheme,
// high contrast included); twips as the window's pixels; and a control of
// the interfaces over a window handle (enabled, placed, shown).
//
//   win32::init_gui();
//   HWND box = ::CreateWindowExW(0, L"BUTTON", ...);
//   win32::HwndControl<CheckBox> ...  // a control's adapter derives from it
#pragma once

#include <cstdint>

#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::platform::win32 {

// Once per process, before the first window: the common controls (list
// views, toolbars, combo boxes), the rich-edit control of Msftedit.dll, and
// per-monitor DPI awareness where the system has it. Later calls do nothing.
void init_gui();

// The library's colour (0x00BBGGRR, or 0x80000000 | a system colour's index)
// as the colour the system draws: a system colour follows the user's scheme.
COLORREF colour_ref(uint32_t colour);

// The dots per inch of the window's monitor (the system's without a window).
int dpi_of(HWND window);
// Twips (1/1440 inch) as the window's pixels, and back.
int twips_to_pixels(int32_t twips, int dpi);
int32_t pixels_to_twips(int pixels, int dpi);

// A control of the interfaces over a window made by the adapter: Enabled
// greys the window out, Move places it in its parent in twips (a negative
// width or height is refused), Visible shows or hides it. The adapter owns
// the window and destroys it.
template <class Base>
class HwndControl : public Base {
 public:
  HwndControl() = default;
  HwndControl(const HwndControl&) = delete;
  HwndControl& operator=(const HwndControl&) = delete;
  ~HwndControl() override {
    if (hwnd_) ::DestroyWindow(hwnd_);
  }

  HWND hwnd() const { return hwnd_; }

  bool Enabled() const override { return hwnd_ ? ::IsWindowEnabled(hwnd_) != 0 : Base::Enabled(); }
  void Enabled(bool enabled) override {
    Base::Enabled(enabled);
    if (hwnd_) ::EnableWindow(hwnd_, enabled ? TRUE : FALSE);
  }
  bool Move(int32_t left, int32_t top, int32_t width, int32_t height) {
    if (width < 0 || height < 0) return false;
    const int dpi = dpi_of(hwnd_);
    ::MoveWindow(hwnd_, twips_to_pixels(left, dpi), twips_to_pixels(top, dpi),
                 twips_to_pixels(width, dpi), twips_to_pixels(height, dpi), TRUE);
    return true;
  }
  // Whether the window itself is shown (its parent may be hidden).
  bool Visible() const { return (::GetWindowLongW(hwnd_, GWL_STYLE) & WS_VISIBLE) != 0; }
  void Visible(bool visible) { ::ShowWindow(hwnd_, visible ? SW_SHOWNA : SW_HIDE); }

 protected:
  // The window the control shows; taken over by the control.
  void adopt(HWND hwnd) { hwnd_ = hwnd; }

 private:
  HWND hwnd_ = nullptr;
};

}  // namespace zelkora::platform::win32
