// The print preview of the Windows host (print_preview.h).
#include "win32desk/print_preview.h"

#include "zelkora/platform/win32/windows_api.h"  // before the system's other headers

#include <commdlg.h>

#include <algorithm>
#include <vector>

#include "win32desk/frame_window.h"
#include "zelkora/platform/win32gui/rich_edit_pages.h"
#include "zelkora/platform/win32gui/win32_controls.h"

namespace zelkora::win32desk {

namespace {

constexpr wchar_t kPagesProperty[] = L"ZelkoraPreviewPages";
enum Button { kPrevious = 101, kNext, kPrint, kClose };  // clear of IDOK, IDCANCEL

// The device the pages are laid out for: the default printer's, else the
// screen's with an A4 sheet.
class Target {
 public:
  Target() {
    PRINTDLGW defaults{};
    defaults.lStructSize = sizeof(defaults);
    defaults.Flags = PD_RETURNDEFAULT | PD_RETURNDC;
    if (::PrintDlgW(&defaults) && defaults.hDC) {
      dc_ = defaults.hDC;
      page_ = platform::win32::page_twips(dc_);
      if (const auto* names = static_cast<const DEVNAMES*>(::GlobalLock(defaults.hDevNames))) {
        const auto* device = reinterpret_cast<const wchar_t*>(names) + names->wDeviceOffset;
        said_ = u"打印机：" + platform::win32::from_wide(device, wcslen(device));
        ::GlobalUnlock(defaults.hDevNames);
      }
    }
    if (defaults.hDevMode) ::GlobalFree(defaults.hDevMode);
    if (defaults.hDevNames) ::GlobalFree(defaults.hDevNames);
    if (!dc_ || page_.cx <= 0 || page_.cy <= 0) {
      if (dc_) ::DeleteDC(dc_);
      dc_ = nullptr;
      screen_ = ::GetDC(nullptr);
      page_ = platform::win32::kA4Twips;
      said_ = u"没有打印机：A4 纸（210 × 297 毫米），按屏幕排版";
    }
  }
  Target(const Target&) = delete;
  Target& operator=(const Target&) = delete;
  ~Target() {
    if (dc_) ::DeleteDC(dc_);
    if (screen_) ::ReleaseDC(nullptr, screen_);
  }

  HDC dc() const { return dc_ ? dc_ : screen_; }
  SIZE page() const { return page_; }
  const Text& said() const { return said_; }

 private:
  HDC dc_ = nullptr;
  HDC screen_ = nullptr;
  SIZE page_{};
  Text said_;
};

class PreviewWindow : public FrameWindow {
 public:
  PreviewWindow(HWND pane, HWND owner) : pane_(pane), owner_(owner) {
    pages_ = platform::win32::lay_out_pages(pane_, target_.dc(), target_.page());
    create(u"打印预览", nullptr, 720, 860);
    ::SetWindowLongPtrW(hwnd(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    ::SetPropW(hwnd(), kPagesProperty,
               reinterpret_cast<HANDLE>(static_cast<INT_PTR>(pages_.size()) + 1));
    const std::pair<int, const char16_t*> buttons[] = {
        {kPrevious, u"上一页"}, {kNext, u"下一页"}, {kPrint, u"打印…"}, {kClose, u"关闭"}};
    for (const auto& [id, text] : buttons) {
      buttons_.push_back(make_child(hwnd(), L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP, text, id));
    }
    page_label_ = make_child(hwnd(), L"STATIC", SS_LEFT | SS_CENTERIMAGE);
    target_label_ = make_child(hwnd(), L"STATIC", SS_LEFT | SS_CENTERIMAGE, target_.said());
    layout();
    turn_to(0);
  }
  ~PreviewWindow() override {
    if (sheet_) ::DeleteEnhMetaFile(sheet_);
  }

  PreviewEnd run() {
    ::EnableWindow(owner_, FALSE);
    ::ShowWindow(hwnd(), SW_SHOW);
    ::SetFocus(buttons_[pages_.size() > 1 ? 1 : 3]);
    MSG message;
    while (open_ && ::GetMessageW(&message, nullptr, 0, 0) > 0) {
      const bool mine = ::GetAncestor(message.hwnd, GA_ROOT) == hwnd();
      if (mine && message.message == WM_KEYDOWN && key(message.wParam)) continue;
      if (mine && ::IsDialogMessageW(hwnd(), &message)) continue;  // Tab, Space, Enter
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
    if (open_) ::PostQuitMessage(static_cast<int>(message.wParam));  // the program's end
    ::EnableWindow(owner_, TRUE);
    if (hwnd()) ::DestroyWindow(hwnd());
    ::SetActiveWindow(owner_);
    return end_;
  }

 protected:
  LRESULT handle(UINT message, WPARAM wparam, LPARAM lparam) override {
    switch (message) {
      case WM_COMMAND:
        command(LOWORD(wparam));
        return 0;
      case WM_SIZE:
        layout();
        return 0;
      case WM_ERASEBKGND:
        return 1;  // the page area is painted whole
      case WM_PAINT: {
        PAINTSTRUCT paint;
        HDC dc = ::BeginPaint(hwnd(), &paint);
        paint_buffered(dc);
        ::EndPaint(hwnd(), &paint);
        return 0;
      }
      case WM_PRINTCLIENT:
        draw(reinterpret_cast<HDC>(wparam));
        return 0;
      case WM_CLOSE:
        open_ = false;
        return 0;
      case WM_DESTROY:
        ::RemovePropW(hwnd(), kPagesProperty);
        open_ = false;
        break;
      default:
        break;
    }
    return FrameWindow::handle(message, wparam, lparam);
  }

 private:
  void command(int id) {
    switch (id) {
      case kPrevious:
        return turn_to(page_ - 1);
      case kNext:
        return turn_to(page_ + 1);
      case kPrint:
        end_ = PreviewEnd::kPrint;
        open_ = false;
        return;
      case kClose:
      case IDCANCEL:
        open_ = false;
        return;
      default:
        return;
    }
  }

  bool key(WPARAM key) {
    const bool ctrl = ::GetKeyState(VK_CONTROL) < 0;
    switch (key) {
      case VK_PRIOR:
      case VK_LEFT:
      case VK_UP:
        turn_to(page_ - 1);
        return true;
      case VK_NEXT:
      case VK_RIGHT:
      case VK_DOWN:
        turn_to(page_ + 1);
        return true;
      case VK_HOME:
        turn_to(0);
        return true;
      case VK_END:
        turn_to(static_cast<int>(pages_.size()) - 1);
        return true;
      case VK_ESCAPE:
        command(kClose);
        return true;
      case 'P':
        if (ctrl) command(kPrint);
        return ctrl;
      default:
        return false;
    }
  }

  void turn_to(int page) {
    const int count = static_cast<int>(pages_.size());
    page = std::clamp(page, 0, std::max(0, count - 1));
    if (page == page_ && sheet_) return;
    page_ = page;
    if (sheet_) ::DeleteEnhMetaFile(sheet_);
    sheet_ = count > 0 ? platform::win32::page_metafile(pane_, target_.dc(), target_.page(),
                                                        pages_[static_cast<std::size_t>(page)])
                       : nullptr;
    set_window_text(page_label_,
                    count > 0
                        ? u"第 " + to_text(page_ + 1) + u" 页，共 " + to_text(count) + u" 页"
                        : Text(::GetWindowTextLengthW(pane_) > 0 ? u"无法分页：页面容不下一行文字"
                                                                 : u"没有可打印的内容"));
    ::EnableWindow(buttons_[0], page_ > 0);
    ::EnableWindow(buttons_[1], page_ + 1 < count);
    ::EnableWindow(buttons_[2], count > 0);
    if (HWND focus = ::GetFocus(); focus && !::IsWindowEnabled(focus)) ::SetFocus(hwnd());
    RECT area = sheet_area();
    ::InvalidateRect(hwnd(), &area, FALSE);
  }

  static Text to_text(int n) {
    const std::wstring digits = std::to_wstring(n);
    return platform::win32::from_wide(digits.c_str(), digits.size());
  }

  int bar_height() const { return scaled(hwnd(), 62); }

  RECT sheet_area() const {
    RECT area;
    ::GetClientRect(hwnd(), &area);
    area.top = std::min(area.bottom, static_cast<LONG>(bar_height()));
    return area;
  }

  void layout() {
    const int gap = scaled(hwnd(), 6), width = scaled(hwnd(), 76), height = scaled(hwnd(), 26);
    int x = gap;
    for (HWND button : buttons_) {
      ::MoveWindow(button, x, gap, width, height, TRUE);
      x += width + gap;
    }
    RECT client;
    ::GetClientRect(hwnd(), &client);
    const int right = std::max(x + gap, static_cast<int>(client.right) - gap);
    ::MoveWindow(page_label_, x + gap, gap, right - x - gap, height, TRUE);
    // The device the pages are laid out for, on a line of its own.
    ::MoveWindow(target_label_, gap, 2 * gap + height, right - gap, scaled(hwnd(), 20), TRUE);
    ::InvalidateRect(hwnd(), nullptr, FALSE);
  }

  // Painted off the screen first, so that sizing the window does not flicker.
  void paint_buffered(HDC dc) {
    RECT client;
    ::GetClientRect(hwnd(), &client);
    HDC memory = ::CreateCompatibleDC(dc);
    HBITMAP bitmap =
        ::CreateCompatibleBitmap(dc, std::max(1L, client.right), std::max(1L, client.bottom));
    HGDIOBJ old = ::SelectObject(memory, bitmap);
    draw(memory);
    ::BitBlt(dc, 0, 0, client.right, client.bottom, memory, 0, 0, SRCCOPY);
    ::SelectObject(memory, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
  }

  void draw(HDC dc) {
    RECT client;
    ::GetClientRect(hwnd(), &client);
    RECT bar = client;
    bar.bottom = bar_height();
    ::FillRect(dc, &bar, ::GetSysColorBrush(COLOR_BTNFACE));
    RECT area = sheet_area();
    ::FillRect(dc, &area, ::GetSysColorBrush(COLOR_APPWORKSPACE));
    if (!sheet_) return;
    // The sheet as large as the area holds it, its sides in the page's ratio.
    const int gap = scaled(hwnd(), 14), shadow = scaled(hwnd(), 4);
    const long room_x = area.right - area.left - 2 * gap, room_y = area.bottom - area.top - 2 * gap;
    if (room_x <= 0 || room_y <= 0) return;
    const SIZE page = target_.page();
    long width = room_x, height = ::MulDiv(room_x, page.cy, page.cx);
    if (height > room_y) {
      height = room_y;
      width = ::MulDiv(room_y, page.cx, page.cy);
    }
    const long left = area.left + (area.right - area.left - width) / 2;
    const long top = area.top + gap;
    RECT sheet{left, top, left + width, top + height};
    RECT below = sheet;
    ::OffsetRect(&below, shadow, shadow);
    ::FillRect(dc, &below, ::GetSysColorBrush(COLOR_3DDKSHADOW));
    ::FillRect(dc, &sheet, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    ::FrameRect(dc, &sheet, ::GetSysColorBrush(COLOR_3DSHADOW));
    const int saved = ::SaveDC(dc);
    ::IntersectClipRect(dc, sheet.left, sheet.top, sheet.right, sheet.bottom);
    ::SetStretchBltMode(dc, HALFTONE);
    ::PlayEnhMetaFile(dc, sheet_, &sheet);
    ::RestoreDC(dc, saved);
  }

  HWND pane_, owner_;
  Target target_;
  std::vector<CHARRANGE> pages_;
  std::vector<HWND> buttons_;
  HWND page_label_ = nullptr, target_label_ = nullptr;
  HENHMETAFILE sheet_ = nullptr;
  int page_ = 0;
  bool open_ = true;
  PreviewEnd end_ = PreviewEnd::kClosed;
};

}  // namespace

PreviewEnd preview_pane(HWND pane, HWND owner) { return PreviewWindow(pane, owner).run(); }

int preview_pages(HWND window) {
  const auto stored = reinterpret_cast<INT_PTR>(::GetPropW(window, kPagesProperty));
  return static_cast<int>(stored) - 1;
}

}  // namespace zelkora::win32desk
