// The windows of the Windows host.
#include "win32desk/frame_window.h"

#include "zelkora/platform/win32/windows_api.h"  // before the system's other headers

#include <commctrl.h>

#include <algorithm>

#include "zelkora/platform/win32gui/win32_controls.h"
#include "zelkora/platform/win32gui/window_base.h"

namespace zelkora::win32desk {

namespace {

constexpr wchar_t kClassName[] = L"ZelkoraDeskWindow";

void register_class() {
  static const bool registered = [] {
    WNDCLASSEXW type{};
    type.cbSize = sizeof(type);
    type.style = CS_HREDRAW | CS_VREDRAW;
    type.lpfnWndProc = ::DefWindowProcW;
    type.hInstance = ::GetModuleHandleW(nullptr);
    type.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    type.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    type.hIcon = ::LoadIconW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1));
    type.lpszClassName = kClassName;
    return ::RegisterClassExW(&type) != 0;
  }();
  static_cast<void>(registered);
}

// The offset of a window's client area in its frame.
POINT client_offset(HWND window) {
  RECT frame;
  ::GetWindowRect(window, &frame);
  POINT origin{0, 0};
  ::ClientToScreen(window, &origin);
  return {origin.x - frame.left, origin.y - frame.top};
}

// Wine's WM_PRINT draws no window frame, caption or menu bar: a picture of
// the window (window_shot.h) gets plain ones there.
bool system_prints_frames() {
  static const bool wine =
      ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
  return !wine;
}

// A top-level window's frame, caption and menu bar.
void print_frame(HWND window, HDC dc) {
  RECT frame;
  ::GetWindowRect(window, &frame);
  const POINT client = client_offset(window);
  RECT whole{0, 0, frame.right - frame.left, frame.bottom - frame.top};
  const int saved = ::SaveDC(dc);
  ::ExcludeClipRect(dc, client.x, client.y, client.x + 10000, client.y + 10000);
  ::FillRect(dc, &whole, ::GetSysColorBrush(COLOR_BTNFACE));
  ::DrawEdge(dc, &whole, EDGE_RAISED, BF_RECT);
  const int border = std::max(2, static_cast<int>(client.x));
  RECT caption{border, border, whole.right - border, border + ::GetSystemMetrics(SM_CYCAPTION) - 1};
  ::FillRect(dc, &caption, ::GetSysColorBrush(COLOR_ACTIVECAPTION));
  HFONT font = platform::win32::create_message_font(platform::win32::dpi_of(window));
  HGDIOBJ old = ::SelectObject(dc, font);
  ::SetBkMode(dc, TRANSPARENT);
  ::SetTextColor(dc, ::GetSysColor(COLOR_CAPTIONTEXT));
  const std::wstring title = platform::win32::to_wide(window_text(window));
  RECT text = caption;
  text.left += 6;
  ::DrawTextW(dc, title.c_str(), -1, &text,
              DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
  ::SetTextColor(dc, ::GetSysColor(COLOR_MENUTEXT));
  HMENU menu = ::GetMenu(window);
  for (int i = 0; menu && i < ::GetMenuItemCount(menu); ++i) {
    RECT item;
    wchar_t name[64] = {};
    if (!::GetMenuItemRect(window, menu, static_cast<UINT>(i), &item)) continue;
    ::OffsetRect(&item, -frame.left, -frame.top);
    ::GetMenuStringW(menu, static_cast<UINT>(i), name, 64, MF_BYPOSITION);
    ::DrawTextW(dc, name, -1, &item, DT_SINGLELINE | DT_VCENTER | DT_CENTER);
  }
  ::SelectObject(dc, old);
  ::DeleteObject(font);
  ::RestoreDC(dc, saved);
}

}  // namespace

FrameWindow::~FrameWindow() {
  if (hwnd_) {
    ::SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
    ::SetWindowLongPtrW(hwnd_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(::DefWindowProcW));
    if (::IsWindow(hwnd_)) ::DestroyWindow(hwnd_);
  }
  if (accelerators_) ::DestroyAcceleratorTable(accelerators_);
}

void FrameWindow::create(TextView title, HMENU menu, int width, int height) {
  platform::win32::init_gui();
  register_class();
  const int dpi = platform::win32::dpi_of(nullptr);
  hwnd_ = ::CreateWindowExW(0, kClassName, platform::win32::to_wide(title).c_str(),
                            WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                            ::MulDiv(width, dpi, 96), ::MulDiv(height, dpi, 96), nullptr, menu,
                            ::GetModuleHandleW(nullptr), nullptr);
  ::SetWindowLongPtrW(hwnd_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  ::SetWindowLongPtrW(hwnd_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&window_proc));
}

LRESULT FrameWindow::handle(UINT message, WPARAM wparam, LPARAM lparam) {
  return ::DefWindowProcW(hwnd_, message, wparam, lparam);
}

LRESULT CALLBACK FrameWindow::window_proc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = reinterpret_cast<FrameWindow*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (!self) return ::DefWindowProcW(hwnd, message, wparam, lparam);
  if (message == WM_DPICHANGED) {
    // The window takes the place the system suggests at its new DPI; its
    // children are laid out again as it is sized.
    const auto* place = reinterpret_cast<const RECT*>(lparam);
    ::SetWindowPos(hwnd, nullptr, place->left, place->top, place->right - place->left,
                   place->bottom - place->top, SWP_NOZORDER | SWP_NOACTIVATE);
    return 0;
  }
  if (message == WM_PRINT && (lparam & PRF_NONCLIENT) && !system_prints_frames()) {
    const LRESULT result = ::DefWindowProcW(hwnd, message, wparam, lparam);
    print_frame(hwnd, reinterpret_cast<HDC>(wparam));
    return result;
  }
  if (message == WM_NCDESTROY) {
    self->hwnd_ = nullptr;
    return ::DefWindowProcW(hwnd, message, wparam, lparam);
  }
  return self->handle(message, wparam, lparam);
}

namespace {

// A child's font follower goes with the child.
LRESULT CALLBACK drop_font_follower(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                    UINT_PTR id, DWORD_PTR follower) {
  if (message == WM_NCDESTROY) {
    ::RemoveWindowSubclass(window, &drop_font_follower, id);
    delete reinterpret_cast<platform::win32::FontFollower*>(follower);
  }
  return ::DefSubclassProc(window, message, wparam, lparam);
}

}  // namespace

HWND make_child(HWND parent, const wchar_t* window_class, DWORD style, TextView text, int id,
                DWORD ex_style) {
  HWND child = ::CreateWindowExW(ex_style, window_class, platform::win32::to_wide(text).c_str(),
                                 WS_CHILD | WS_VISIBLE | style, 0, 0, 10, 10, parent,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                 ::GetModuleHandleW(nullptr), nullptr);
  // The message font of the child's DPI, now and when the DPI changes.
  auto* follower = new platform::win32::FontFollower(child);
  ::SetWindowSubclass(child, &drop_font_follower, 1, reinterpret_cast<DWORD_PTR>(follower));
  return child;
}

Text window_text(HWND window) {
  const int length = ::GetWindowTextLengthW(window);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  const int got = ::GetWindowTextW(window, text.data(), length + 1);
  return platform::win32::from_wide(text.data(), static_cast<std::size_t>(got));
}

void set_window_text(HWND window, TextView text) {
  ::SetWindowTextW(window, platform::win32::to_wide(text).c_str());
}

HWND make_status_bar(HWND parent, int parts) {
  HWND bar = make_child(parent, STATUSCLASSNAMEW, SBARS_SIZEGRIP);
  ::SendMessageW(bar, SB_SIMPLE, FALSE, 0);
  int edges[4] = {-1, -1, -1, -1};
  ::SendMessageW(bar, SB_SETPARTS, parts, reinterpret_cast<LPARAM>(edges));
  return bar;
}

void status_text(HWND bar, int part, TextView text) {
  ::SendMessageW(bar, SB_SETTEXTW, part,
                 reinterpret_cast<LPARAM>(platform::win32::to_wide(text).c_str()));
}

Text status_text(HWND bar, int part) {
  const auto length = LOWORD(::SendMessageW(bar, SB_GETTEXTLENGTHW, part, 0));
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  ::SendMessageW(bar, SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text.data()));
  return platform::win32::from_wide(text.c_str(), wcslen(text.c_str()));
}

int scaled(HWND window, int pixels) {
  return ::MulDiv(pixels, platform::win32::dpi_of(window), 96);
}

}  // namespace zelkora::win32desk
