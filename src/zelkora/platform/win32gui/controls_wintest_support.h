// What the tests of the native controls share: a shown top-level window to
// hold the controls, and failure messages in UTF-8.
#pragma once

#include <string>

#include "zelkora/platform/text.h"
#include "zelkora/platform/win32gui/window_base.h"

namespace zelkora::platform::win32 {

class TestWindow {
 public:
  TestWindow() {
    init_gui();
    window_ = ::CreateWindowExW(0, L"STATIC", L"测试", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 480,
                                320, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  }
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;
  ~TestWindow() { ::DestroyWindow(window_); }
  HWND hwnd() const { return window_; }

 private:
  HWND window_;
};

inline std::string u8(TextView text) { return to_utf8(text); }

}  // namespace zelkora::platform::win32
