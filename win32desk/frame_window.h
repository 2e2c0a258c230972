// A top-level window of the Windows host: its window class, its messages
// handed to the object that made it, and the bits every window of the
// program shares (the message font, text in and out, a status bar).
#pragma once

#include <string>

#include "zelkora/platform/text.h"
#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::win32desk {

class FrameWindow {
 public:
  FrameWindow() = default;
  FrameWindow(const FrameWindow&) = delete;
  FrameWindow& operator=(const FrameWindow&) = delete;
  virtual ~FrameWindow();

  HWND hwnd() const { return hwnd_; }
  // The window's accelerators (null: none), for the message loop.
  HACCEL accelerators() const { return accelerators_; }

 protected:
  // Makes the window (hidden) with `title` and `menu`, `width` by `height`
  // pixels at 96 DPI.
  void create(TextView title, HMENU menu, int width, int height);
  virtual LRESULT handle(UINT message, WPARAM wparam, LPARAM lparam);
  void set_accelerators(HACCEL table) { accelerators_ = table; }

 private:
  static LRESULT CALLBACK window_proc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  HWND hwnd_ = nullptr;
  HACCEL accelerators_ = nullptr;
};

// A child window of a system class, in the message font.
HWND make_child(HWND parent, const wchar_t* window_class, DWORD style, TextView text = {},
                int id = 0, DWORD ex_style = 0);
// A window's text, and a text shown in one.
Text window_text(HWND window);
void set_window_text(HWND window, TextView text);
// A status bar at the bottom of `parent` with `parts` parts; the text of one.
HWND make_status_bar(HWND parent, int parts);
void status_text(HWND bar, int part, TextView text);
Text status_text(HWND bar, int part);
// Pixels at 96 DPI as the window's.
int scaled(HWND window, int pixels);

}  // namespace zelkora::win32desk
