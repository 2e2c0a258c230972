// The grid control on Windows' own means: drawing the model with GDI, and
// the window's messages as the user's actions.
#include "zelkora/platform/win32gui/win32_grid.h"

#include <commctrl.h>

#include <algorithm>
#include <cwchar>
#include <string>

namespace zelkora::platform::win32 {

namespace {

constexpr wchar_t kClassName[] = L"ZelkoraGrid";
constexpr UINT_PTR kEditId = 1;
constexpr UINT_PTR kComboId = 2;
// A list closed by itself (a click outside it): taken once its pick, if
// any, has come.
constexpr UINT kListClosed = WM_APP + 1;
// Not in every SDK's headers.
constexpr UINT kDpiChanged = 0x02E0;
constexpr UINT kDpiChangedAfterParent = 0x02E3;
// How many rows a notch of the wheel scrolls, and the items an open list
// shows before it scrolls.
constexpr int kWheelRows = 3;
constexpr int kListRows = 8;

const wchar_t* wide(const zelkora::Text& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

zelkora::Text window_text(HWND window) {
  const int length = ::GetWindowTextLengthW(window);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  const int got = ::GetWindowTextW(window, text.data(), length + 1);
  return zelkora::Text(reinterpret_cast<const char16_t*>(text.data()),
                       static_cast<std::size_t>(got));
}

// Chinese faces are asked for in the GB2312 character set, so that the
// system maps them (and "宋体") to its Chinese font.
bool chinese_face(const zelkora::Text& name) {
  static const char16_t* const kFaces[] = {u"SimSun", u"NSimSun",  u"SimHei",
                                           u"KaiTi",  u"FangSong", u"Microsoft YaHei"};
  if (std::any_of(name.begin(), name.end(), [](char16_t c) { return c >= 0x80; })) return true;
  return std::any_of(std::begin(kFaces), std::end(kFaces),
                     [&](const char16_t* face) { return name == face; });
}

bool looks_numeric(const zelkora::Text& text) {
  std::wstring wide_text(text.begin(), text.end());
  const auto first = wide_text.find_first_not_of(L' ');
  if (first == std::wstring::npos) return false;
  const wchar_t* start = wide_text.c_str() + first;
  wchar_t* end = nullptr;
  std::wcstod(start, &end);
  if (end == start) return false;
  while (*end == L' ') ++end;
  return *end == L'\0';
}

UINT text_format(int16_t alignment, const zelkora::Text& text) {
  const UINT base = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
  switch (alignment) {
    case GridControl::kAlignCenter:
      return base | DT_CENTER;
    case GridControl::kAlignRight:
      return base | DT_RIGHT;
    case GridControl::kAlignLeft:
      return base | DT_LEFT;
    default:  // general: text left, numbers right
      return base | (looks_numeric(text) ? DT_RIGHT : DT_LEFT);
  }
}

// The ground of a refused value: the window colour with a fifth of red.
COLORREF refused_ground() {
  const COLORREF base = ::GetSysColor(COLOR_WINDOW);
  return RGB((GetRValue(base) * 4 + 255) / 5, GetGValue(base) * 4 / 5, GetBValue(base) * 4 / 5);
}

// A picture as a 32-bit top-down DIB, its alpha premultiplied (AlphaBlend's).
HBITMAP picture_bitmap(const Picture& picture) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = picture.width;
  info.bmiHeader.biHeight = -picture.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  HBITMAP bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (!bitmap) return nullptr;
  auto* out = static_cast<uint32_t*>(bits);
  const std::size_t count =
      static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
  for (std::size_t i = 0; i < count; ++i) {
    const uint32_t argb = i < picture.pixels.size() ? picture.pixels[i] : 0u;
    const uint32_t alpha = argb >> 24;
    const auto channel = [&](int shift) { return ((argb >> shift) & 0xFF) * alpha / 255 << shift; };
    out[i] = alpha << 24 | channel(16) | channel(8) | channel(0);
  }
  return bitmap;
}

void fill(HDC dc, const RECT& area, COLORREF colour) {
  ::SetDCBrushColor(dc, colour);
  ::FillRect(dc, &area, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
}

// The grid lines of a cell: its right and bottom edges.
void cell_lines(HDC dc, const RECT& cell, COLORREF colour) {
  fill(dc, {cell.right - 1, cell.top, cell.right, cell.bottom}, colour);
  fill(dc, {cell.left, cell.bottom - 1, cell.right, cell.bottom}, colour);
}

}  // namespace

// ---- The window -------------------------------------------------------------------

// The form's handlers, not raised again while one of them runs (a message
// box shown during a leave takes the focus: no second leave).
struct Win32GridControl::Relay : GridEvents {
  GridEvents* to = nullptr;
  bool busy = false;
  template <class Call>
  void raise(Call call) {
    if (!to || busy) return;
    busy = true;
    struct Busy {
      bool& flag;
      ~Busy() { flag = false; }
    } running{busy};
    call(*to);
  }
  void EnterRow() override {
    raise([](GridEvents& e) { e.EnterRow(); });
  }
  void BeforeEdit(int32_t row, int32_t col, bool& cancel) override {
    raise([&](GridEvents& e) { e.BeforeEdit(row, col, cancel); });
  }
  void CellChanging() override {
    raise([](GridEvents& e) { e.CellChanging(); });
  }
  void LeaveCell(int32_t row, int32_t col, bool& cancel) override {
    raise([&](GridEvents& e) { e.LeaveCell(row, col, cancel); });
  }
  void ComboDropDown() override {
    raise([](GridEvents& e) { e.ComboDropDown(); });
  }
  void ComboClick() override {
    raise([](GridEvents& e) { e.ComboClick(); });
  }
  void Click(int32_t row, int32_t col) override {
    raise([&](GridEvents& e) { e.Click(row, col); });
  }
  void DblClick() override {
    raise([](GridEvents& e) { e.DblClick(); });
  }
  void KeyDown(int16_t& key_code, int16_t shift) override {
    raise([&](GridEvents& e) { e.KeyDown(key_code, shift); });
  }
  void LostFocus() override {
    raise([](GridEvents& e) { e.LostFocus(); });
  }
};

template <class Action>
auto Win32GridControl::act(Action action) {
  // Whatever the action answers, the window then shows the model.
  struct Shown {
    Win32GridControl& grid;
    ~Shown() { grid.show_state(); }
  } shown{*this};
  return action();
}

Win32GridControl::Win32GridControl(HWND parent) : relay_(std::make_unique<Relay>()) {
  init_gui();
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  WNDCLASSEXW window_class{};
  if (!::GetClassInfoExW(instance, kClassName, &window_class)) {
    window_class = {};
    window_class.cbSize = sizeof(window_class);
    window_class.style = CS_DBLCLKS;
    window_class.lpfnWndProc = &Win32GridControl::window_proc;
    window_class.hInstance = instance;
    window_class.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    window_class.lpszClassName = kClassName;
    ::RegisterClassExW(&window_class);
  }
  const DWORD style = (parent ? WS_CHILD | WS_VISIBLE | WS_TABSTOP : WS_OVERLAPPEDWINDOW) |
                      WS_VSCROLL | WS_CLIPCHILDREN;
  ::CreateWindowExW(WS_EX_CLIENTEDGE, kClassName, L"", style, 0, 0, 400, 300, parent, nullptr,
                    instance, this);
  dpi_ = dpi_of(hwnd());
  make_fonts();
  edit_ = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | ES_AUTOHSCROLL, 0, 0, 10, 10, hwnd(),
                            reinterpret_cast<HMENU>(kEditId), instance, nullptr);
  combo_ = ::CreateWindowExW(0, L"COMBOBOX", L"",
                             WS_CHILD | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL, 0, 0, 10, 100,
                             hwnd(), reinterpret_cast<HMENU>(kComboId), instance, nullptr);
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof(parts);
  ::GetComboBoxInfo(combo_, &parts);
  combo_line_ = parts.hwndItem;
  for (HWND editor : {edit_, combo_line_}) {
    if (editor)
      ::SetWindowSubclass(editor, &Win32GridControl::editor_proc, 0,
                          reinterpret_cast<DWORD_PTR>(this));
    ::SendMessageW(editor, WM_SETFONT, reinterpret_cast<WPARAM>(font(false)), FALSE);
  }
  ::SendMessageW(combo_, WM_SETFONT, reinterpret_cast<WPARAM>(font(false)), FALSE);
  view_.connect(relay_.get());
  scroll_bar_.nMax = -1;  // never set
  update_scroll_bar();
}

void Win32GridControl::connect_events(GridEvents* events) { relay_->to = events; }

Win32GridControl::~Win32GridControl() {
  relay_->to = nullptr;
  if (hwnd()) {
    for (HWND editor : {edit_, combo_line_}) {
      if (editor) ::RemoveWindowSubclass(editor, &Win32GridControl::editor_proc, 0);
    }
    ::SetWindowLongPtrW(hwnd(), GWLP_USERDATA, 0);
    if (tip_) ::DestroyWindow(tip_);
  }
  for (HFONT& f : fonts_) {
    if (f) ::DeleteObject(f);
  }
  for (auto& [key, bitmap] : pictures_) ::DeleteObject(bitmap);
  if (buffer_dc_) ::DeleteDC(buffer_dc_);
  if (buffer_bitmap_) ::DeleteObject(buffer_bitmap_);
}

LRESULT CALLBACK Win32GridControl::window_proc(HWND hwnd, UINT message, WPARAM wparam,
                                               LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* self =
        static_cast<Win32GridControl*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
    ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    self->adopt(hwnd);
  }
  auto* self = reinterpret_cast<Win32GridControl*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  return self ? self->handle(message, wparam, lparam)
              : ::DefWindowProcW(hwnd, message, wparam, lparam);
}

LRESULT Win32GridControl::handle(UINT message, WPARAM wparam, LPARAM lparam) {
  const auto point = [&] {
    return POINT{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
  };
  switch (message) {
    case WM_PAINT: {
      PAINTSTRUCT ps;
      HDC dc = ::BeginPaint(hwnd(), &ps);
      invalid_ = false;
      const RECT& area = ps.rcPaint;
      if (AutoRedraw() && area.right > area.left && area.bottom > area.top) {
        // Double-buffered: drawn into memory, then shown at once.
        HDC memory = buffer(dc);
        paint(memory, area);
        ::BitBlt(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, memory,
                 area.left, area.top, SRCCOPY);
      }
      ::EndPaint(hwnd(), &ps);
      return 0;
    }
    case WM_PRINTCLIENT: {
      RECT client;
      ::GetClientRect(hwnd(), &client);
      paint(reinterpret_cast<HDC>(wparam), client);
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_SIZE:
      update_scroll_bar();
      place_editor();
      changed();
      return 0;
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE:
    case WM_THEMECHANGED:
      // The system colours follow the user's scheme: drawn anew.
      ::InvalidateRect(hwnd(), nullptr, FALSE);
      break;
    case kDpiChanged:
    case kDpiChangedAfterParent:
      dpi_ = dpi_of(hwnd());
      make_fonts();
      layout_changed();
      break;
    case WM_VSCROLL: {
      SCROLLINFO info{};
      info.cbSize = sizeof(info);
      info.fMask = SIF_ALL;
      ::GetScrollInfo(hwnd(), SB_VERT, &info);
      const int line = row_pixels(0) > 0 ? row_pixels(0) : scaled(DefaultRowHeight());
      const int page = static_cast<int>(info.nPage);
      switch (LOWORD(wparam)) {
        case SB_LINEUP:
          scroll_by(-line);
          break;
        case SB_LINEDOWN:
          scroll_by(line);
          break;
        case SB_PAGEUP:
          scroll_by(-page);
          break;
        case SB_PAGEDOWN:
          scroll_by(page);
          break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
          scroll_by(info.nTrackPos - scroll_);
          break;
        case SB_TOP:
          scroll_by(-scroll_);
          break;
        case SB_BOTTOM:
          scroll_by(content_height());
          break;
        default:
          break;
      }
      return 0;
    }
    case WM_MOUSEWHEEL: {
      wheel_ += GET_WHEEL_DELTA_WPARAM(wparam);
      const int notches = wheel_ / WHEEL_DELTA;
      wheel_ -= notches * WHEEL_DELTA;
      scroll_by(-notches * kWheelRows * scaled(DefaultRowHeight()));
      return 0;
    }
    case WM_LBUTTONDOWN:
      mouse_down(point());
      return 0;
    case WM_LBUTTONUP:
      mouse_up(point());
      return 0;
    case WM_LBUTTONDBLCLK:
      // The press of the second click: DblClick, then the cell edited (as
      // F2 would); its release is no click.
      pressed_ = {-1, -1};
      act([this] {
        view_.double_click();
        user_.key(headless::HeadlessUser::kF2);
      });
      return 0;
    case WM_MOUSEMOVE:
      show_tip(point());
      break;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      // Of the keys with Alt the grid takes Alt+Down alone (Alt+F4 closes
      // the window).
      if (message == WM_SYSKEYDOWN && wparam != VK_DOWN) break;
      if (key_down(wparam, message == WM_SYSKEYDOWN && (lparam & (1 << 29)))) return 0;
      break;
    case WM_CHAR:
      // Space is a key of its own (KeyDown); control characters are keys.
      if (wparam >= 0x20 && wparam != L' ') {
        const zelkora::Text typed(1, static_cast<char16_t>(wparam));
        act([&] { user_.type(typed); });
      }
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS | DLGC_WANTCHARS | DLGC_WANTARROWS | DLGC_WANTTAB;
    case WM_SETFOCUS:
      // The window has the focus again (a box closed): so has the editor
      // that had it.
      if (!syncing_ && shown_editor_ && user_.editor_focused()) ::SetFocus(shown_editor_);
      row_changed(ActiveCell().row);
      return 0;
    case WM_KILLFOCUS: {
      const HWND to = reinterpret_cast<HWND>(wparam);
      row_changed(ActiveCell().row);
      if (syncing_ || relay_->busy || (to && ::IsChild(hwnd(), to)) || box_takes_focus(to))
        return 0;
      act([this] { user_.focus_away(); });
      return 0;
    }
    case WM_COMMAND: {
      const UINT code = HIWORD(wparam);
      if ((LOWORD(wparam) == kEditId && code == EN_CHANGE) ||
          (LOWORD(wparam) == kComboId && code == CBN_EDITCHANGE)) {
        editor_changed();
      } else if (LOWORD(wparam) == kComboId && code == CBN_SELENDOK) {
        list_closed(true);
      } else if (LOWORD(wparam) == kComboId && code == CBN_DROPDOWN && !syncing_ &&
                 !user_.list_open()) {
        // The list's button: the list opens as by F4.
        dropped_ = true;
        act([this] { user_.key(headless::HeadlessUser::kF4); });
      } else if (LOWORD(wparam) == kComboId && code == CBN_CLOSEUP && !syncing_) {
        dropped_ = false;
        ::PostMessageW(hwnd(), kListClosed, 0, 0);
      }
      return 0;
    }
    case kListClosed:
      list_closed(false);
      return 0;
    case WM_NOTIFY: {
      auto* header = reinterpret_cast<NMHDR*>(lparam);
      if (header->hwndFrom == tip_ && header->code == TTN_GETDISPINFOW) {
        auto* info = reinterpret_cast<NMTTDISPINFOW*>(lparam);
        const std::pair<int32_t, int32_t> at{tip_cell_.row, tip_cell_.col};
        static zelkora::Text shown;
        shown = marks_.count(at) ? marks_[at] : notes_.count(at) ? notes_[at] : zelkora::Text();
        info->lpszText = const_cast<wchar_t*>(wide(shown));
        return 0;
      }
      break;
    }
    default:
      break;
  }
  return ::DefWindowProcW(hwnd(), message, wparam, lparam);
}

// ---- The user's actions -----------------------------------------------------------

bool Win32GridControl::key_down(WPARAM key, bool alt) {
  using User = headless::HeadlessUser;
  const bool shift = ::GetKeyState(VK_SHIFT) < 0;
  const auto press = [this](User::Key k) {
    act([&] { user_.key(k); });
    return true;
  };
  switch (key) {
    case VK_RETURN:
      return press(User::kEnter);
    case VK_TAB:
      return press(shift ? User::kBackTab : User::kTab);
    case VK_ESCAPE:
      return press(User::kEscape);
    case VK_SPACE:
      return press(User::kSpace);
    case VK_F2:
      return press(User::kF2);
    case VK_F4:
      return press(User::kF4);
    case VK_UP:
      return press(User::kUp);
    case VK_DOWN:
      return press(alt ? User::kAltDown : User::kDown);
    case VK_LEFT:
    case VK_RIGHT:
    case VK_HOME:
    case VK_END:
      // The grid holds the focus over an open editor: the keys that move
      // within a line give it back.
      if (user_.editing() && !user_.editor_focused()) act([this] { user_.box_shown(true); });
      return true;
    default:
      break;
  }
  // A key with Ctrl (Ctrl+Z, say) the grid does not handle: KeyDown.
  const bool letter = (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9');
  if (::GetKeyState(VK_CONTROL) < 0 && letter) {
    act([&] { user_.other_key(static_cast<int16_t>(key)); });
    return true;
  }
  return false;
}

void Win32GridControl::mouse_down(POINT at) {
  pressed_ = cell_at(at);
  ::SetCapture(hwnd());
  // The grid takes the focus from another window; from its own editor only
  // as the click decides.
  if (!focus_in(hwnd())) {
    syncing_ = true;
    ::SetFocus(hwnd());
    syncing_ = false;
  }
  if (pressed_.row < 0) act([this] { user_.click_empty(); });
}

void Win32GridControl::mouse_up(POINT at) {
  if (::GetCapture() == hwnd()) ::ReleaseCapture();
  const CellRef released = cell_at(at);
  const CellRef pressed = pressed_;
  pressed_ = {-1, -1};
  if (pressed.row < 0 || !(released == pressed)) return;
  act([&] { user_.click(pressed.row, pressed.col); });
}

void Win32GridControl::editor_changed() {
  if (syncing_ || !shown_editor_) return;
  const zelkora::Text text = window_text(shown_editor_);
  shown_text_ = text;
  shown_text_known_ = true;
  // A full editor refuses a key, yet tells of a change (Wine does): nothing
  // changed. Any other change of its text (a key, Backspace, Delete, a
  // paste) is the user's one change of the cell's text, even to the text it
  // had.
  const CellRef at = ActiveCell();
  const HWND line = shown_editor_ == combo_ ? combo_line_ : shown_editor_;
  const auto limit = static_cast<std::size_t>(::SendMessageW(line, EM_GETLIMITTEXT, 0, 0));
  if (text == view_.grid.Text(at.row, at.col) && text.size() >= limit) return;
  act([&] {
    user_.select_all();
    user_.paste(text);
  });
}

void Win32GridControl::list_closed(bool picked) {
  if (syncing_ || !user_.list_open()) return;
  const auto item = static_cast<int>(::SendMessageW(combo_, CB_GETCURSEL, 0, 0));
  if (!picked || item < 0) {
    act([this] { user_.click_outside(); });
    return;
  }
  const auto length = static_cast<std::size_t>(::SendMessageW(combo_, CB_GETLBTEXTLEN, item, 0));
  std::wstring text(length + 1, L'\0');
  ::SendMessageW(combo_, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text.data()));
  text.resize(length);
  const zelkora::Text chosen(text.begin(), text.end());
  act([&] { user_.pick(chosen); });
}

LRESULT CALLBACK Win32GridControl::editor_proc(HWND hwnd, UINT message, WPARAM wparam,
                                               LPARAM lparam, UINT_PTR /*id*/, DWORD_PTR self) {
  auto* grid = reinterpret_cast<Win32GridControl*>(self);
  switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_CHAR:
      if (grid->editor_key(message, wparam, lparam)) return 0;
      break;
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS | ::DefSubclassProc(hwnd, message, wparam, lparam);
    case WM_KILLFOCUS:
      grid->editor_lost_focus(reinterpret_cast<HWND>(wparam));
      break;
    default:
      break;
  }
  return ::DefSubclassProc(hwnd, message, wparam, lparam);
}

bool Win32GridControl::editor_key(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_CHAR) {
    // The keys' own characters, and anything typed while the list is open
    // (it takes no search), go nowhere.
    return wparam == L'\r' || wparam == L'\t' || wparam == 0x1B || wparam == L'\n' ||
           user_.list_open();
  }
  const bool alt = message == WM_SYSKEYDOWN && (lparam & (1 << 29));
  if (message == WM_SYSKEYDOWN && wparam != VK_DOWN) return false;  // Alt+F4 closes the window
  const bool list = user_.list_open();
  switch (wparam) {
    case VK_RETURN:
    case VK_TAB:
    case VK_ESCAPE:
    case VK_F2:
    case VK_F4:
    case VK_UP:
    case VK_DOWN:
      break;
    default:
      return list;  // the open list takes no other key
  }
  if (list && (wparam == VK_UP || wparam == VK_DOWN) && !alt) {
    // The list's highlight moves as the user's keys move it (from none to
    // the first item), the cell keeping its text until a pick.
    const CellRef at = ActiveCell();
    const auto items = static_cast<int32_t>(view_.grid.ComboList(at.row, at.col).size());
    if (items > 0) {
      list_item_ =
          list_item_ < 0 ? 0 : std::clamp(list_item_ + (wparam == VK_UP ? -1 : 1), 0, items - 1);
    }
    syncing_ = true;
    ::SendMessageW(combo_, CB_SETCURSEL, static_cast<WPARAM>(list_item_), 0);
    shown_text_known_ = false;
    syncing_ = false;
  }
  return key_down(wparam, alt);
}

void Win32GridControl::editor_lost_focus(HWND to) {
  // To the grid, or within the list cell's box: the user's click decides.
  if (syncing_ || relay_->busy || to == hwnd() || to == combo_ || (to && ::IsChild(combo_, to)) ||
      box_takes_focus(to))
    return;
  act([this] { user_.focus_away(); });
}

void Win32GridControl::hand_focus_to(HWND window) {
  const bool was = syncing_;
  syncing_ = true;
  ::SetFocus(window);
  syncing_ = was;
}

bool Win32GridControl::box_takes_focus(HWND to) const {
  // A modal box the form shows (a message, a question, a file dialog) is no
  // loss of the focus: the grid has it again as the box closes, as on the
  // other hosts. Such a box disables the window it is shown over, or is a
  // dialog owned by it.
  const HWND form = ::GetAncestor(hwnd(), GA_ROOT);
  if (!::IsWindowEnabled(form)) return true;
  const HWND box = to ? ::GetAncestor(to, GA_ROOT) : nullptr;
  wchar_t name[16] = {};
  if (!box || box == form || !::GetClassNameW(box, name, 16) || wcscmp(name, L"#32770") != 0)
    return false;
  for (HWND owner = ::GetWindow(box, GW_OWNER); owner; owner = ::GetWindow(owner, GW_OWNER)) {
    if (owner == form) return true;
  }
  return false;
}

// ---- Showing the user's hand --------------------------------------------------------

bool Win32GridControl::focus_in(HWND window) const {
  const HWND focus = ::GetFocus();
  return window && focus && (focus == window || ::IsChild(window, focus));
}

void Win32GridControl::set_editor_text(const zelkora::Text& text) {
  const bool was = syncing_;
  syncing_ = true;
  ::SetWindowTextW(shown_editor_, wide(text));
  syncing_ = was;
  shown_text_ = text;
  shown_text_known_ = true;
}

bool Win32GridControl::editor_shows(TextView text) const {
  return shown_text_known_ ? shown_text_ == text : window_text(shown_editor_) == text;
}

void Win32GridControl::show_state() {
  const bool was = syncing_;
  syncing_ = true;
  show_editor();
  syncing_ = was;
  active_shown();
}

void Win32GridControl::active_shown() {
  const CellRef at = ActiveCell();
  if (at.row >= 0 && at.row < Rows()) scroll_to(at.row);
  place_editor();
  if (at == drawn_active_) return;
  // Its focus goes from one cell to the other.
  if (drawn_active_.row >= 0 && drawn_active_.row < Rows()) row_changed(drawn_active_.row);
  row_changed(at.row);
  drawn_active_ = at;
}

void Win32GridControl::show_editor() {
  const CellRef at = ActiveCell();
  const bool open = user_.editing() && at.row < Rows() && at.col < Cols();
  HWND want = open ? (CellType(at.row, at.col) == kComboCell ? combo_ : edit_) : nullptr;
  const bool fresh = open && (want != shown_editor_ || user_.editors_opened() != editors_opened_);
  editors_opened_ = user_.editors_opened();
  if (shown_editor_ && shown_editor_ != want) {
    if (shown_editor_ == combo_ && dropped_) ::SendMessageW(combo_, CB_SHOWDROPDOWN, FALSE, 0);
    dropped_ = list_filled_ = false;
    const bool had_focus = focus_in(shown_editor_);
    ::ShowWindow(shown_editor_, SW_HIDE);
    if (had_focus) ::SetFocus(hwnd());
  }
  // What the grid knows an editor shows is of the one it last showed.
  if (shown_editor_ != want) shown_text_known_ = false;
  shown_editor_ = want;
  if (!want) return;
  place_editor();
  const zelkora::Text text = view_.grid.Text(at.row, at.col);
  HWND line = want == combo_ ? combo_line_ : edit_;
  const auto fill_list = [&] {
    ::SendMessageW(combo_, CB_RESETCONTENT, 0, 0);
    const std::vector<zelkora::Text> items = view_.grid.ComboList(at.row, at.col);
    for (const zelkora::Text& item : items) {
      ::SendMessageW(combo_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(item)));
    }
    const auto found = std::find(items.begin(), items.end(), text);
    list_item_ = found == items.end() ? -1 : static_cast<int32_t>(found - items.begin());
    ::SendMessageW(combo_, CB_SETCURSEL, static_cast<WPARAM>(list_item_), 0);
    shown_text_known_ = false;
  };
  if (fresh) {
    // As many characters as it opened with, at least the typed most.
    const WPARAM limit = std::max(kMaxTypedLength, text.size());
    ::SendMessageW(line, EM_LIMITTEXT, limit, 0);
    if (!editor_shows(text)) set_editor_text(text);
    if (!::IsWindowVisible(want)) ::ShowWindow(want, SW_SHOWNA);
  } else if (!editor_shows(text)) {
    set_editor_text(text);
  }
  if (want == combo_ && user_.list_open()) {
    // Filled when it opens, as the form filled it at ComboDropDown.
    if (!list_filled_) {
      fill_list();
      set_editor_text(text);
      list_filled_ = true;
    }
    if (!dropped_) {
      ::SendMessageW(combo_, CB_SHOWDROPDOWN, TRUE, 0);
      // The system's box, dropped by a key, takes the first item that
      // begins with its text ("20" for "2"): the text stays the cell's, and
      // the list marks the item that is that text, or none.
      if (window_text(combo_line_) != text) set_editor_text(text);
      COMBOBOXINFO parts{};
      parts.cbSize = sizeof(parts);
      if (::GetComboBoxInfo(combo_, &parts)) {
        ::SendMessageW(parts.hwndList, LB_SETCURSEL, static_cast<WPARAM>(list_item_), 0);
      }
    }
    dropped_ = true;
  } else if (want == combo_) {
    if (dropped_) {
      ::SendMessageW(combo_, CB_SHOWDROPDOWN, FALSE, 0);
      set_editor_text(text);
    }
    dropped_ = list_filled_ = false;
  }
  if (user_.editor_focused() && !focus_in(want)) {
    ::SetFocus(line);
  } else if (!user_.editor_focused() && focus_in(want)) {
    ::SetFocus(hwnd());
  }
  if (user_.selected()) {
    ::SendMessageW(line, EM_SETSEL, 0, -1);
  } else if (fresh || !user_.editor_focused()) {
    const auto end = static_cast<WPARAM>(::GetWindowTextLengthW(line));
    ::SendMessageW(line, EM_SETSEL, end, static_cast<LPARAM>(end));
  }
}

void Win32GridControl::place_editor() {
  if (!shown_editor_) return;
  const CellRef at = ActiveCell();
  const RECT cell = cell_rect(at.row, at.col);
  const int width = std::max<int>(cell.right - cell.left - 1, 1);
  const int height = std::max<int>(cell.bottom - cell.top - 1, 1);
  // Only a place that changed is given: each move lays the box out anew.
  const RECT place =
      shown_editor_ == combo_
          ? RECT{cell.left, cell.top, cell.left + width, cell.top + height * (kListRows + 1)}
          : RECT{cell.left + 2, cell.top + 1, cell.left + 2 + std::max(width - 2, 1),
                 cell.top + 1 + std::max(height - 1, 1)};
  if (shown_editor_ == editor_placed_ && ::EqualRect(&place, &editor_place_)) return;
  if (shown_editor_ == combo_ && height != combo_height_) {
    ::SendMessageW(combo_, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), std::max(height - 6, 8));
    combo_height_ = height;
  }
  // Moved to the next row, the same size: not laid out anew.
  const bool same_size = shown_editor_ == editor_placed_ &&
                         place.right - place.left == editor_place_.right - editor_place_.left &&
                         place.bottom - place.top == editor_place_.bottom - editor_place_.top;
  ::SetWindowPos(shown_editor_, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | (same_size ? SWP_NOSIZE : 0));
  editor_placed_ = shown_editor_;
  editor_place_ = place;
}

// ---- What the form does with the grid ------------------------------------------------

bool Win32GridControl::edit_cell(int32_t row, int32_t col) {
  return act([&] { return user_.edit_cell(row, col); });
}

bool Win32GridControl::leave_cell() {
  return act([&] { return user_.leave_cell(); });
}

void Win32GridControl::move_to(int32_t row, int32_t col) {
  act([&] { user_.move_to(row, col); });
}

bool Win32GridControl::type_into(int32_t row, int32_t col, TextView text) {
  return act([&] { return user_.type_into(row, col, text); });
}

void Win32GridControl::show_only(std::vector<bool> kept) {
  view_.grid.show_only(std::move(kept));
  layout_changed();
}

void Win32GridControl::mark_cell(int32_t row, int32_t col, TextView note) {
  if (note.empty()) {
    marks_.erase({row, col});
  } else {
    marks_[{row, col}] = zelkora::Text(note);
    show_tip({-1, -1});
  }
  row_changed(row);
}

void Win32GridControl::note_cell(int32_t row, int32_t col, TextView note) {
  if (note.empty()) {
    notes_.erase({row, col});
  } else {
    notes_[{row, col}] = zelkora::Text(note);
    show_tip({-1, -1});
  }
}

void Win32GridControl::show_tip(POINT at) {
  if (!tip_ && (!marks_.empty() || !notes_.empty())) {
    // One tool over the whole grid; its text is the cell's under the mouse.
    tip_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0,
                             0, 0, 0, hwnd(), nullptr, ::GetModuleHandleW(nullptr), nullptr);
    TOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = hwnd();
    tool.uId = reinterpret_cast<UINT_PTR>(hwnd());
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    ::SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
  if (!tip_ || at.x < 0) return;
  const CellRef cell = cell_at(at);
  if (cell == tip_cell_) return;
  tip_cell_ = cell;
  ::SendMessageW(tip_, TTM_UPDATE, 0, 0);
}

// ---- Geometry -------------------------------------------------------------------------

int Win32GridControl::row_pixels(int32_t row) const {
  if (!view_.grid.row_shown(row)) return 0;
  int32_t height = RowHeight(row);
  // A row the grid folded away but a filter shows: the default height, or
  // that of the first row that has one.
  for (int32_t r = 1; height <= 0 && r < Rows(); ++r) height = RowHeight(r);
  if (height <= 0) height = DefaultRowHeight();
  return std::max(scaled(height), least_row_height_);
}

int Win32GridControl::col_pixels(int32_t col) const {
  const int32_t width = ColWidth(col);
  if (width <= 0) return 0;
  int pixels = scaled(width);
  if (view_.grid.extend_last_col) {
    int32_t last = Cols() - 1;
    while (last > 0 && ColWidth(last) <= 0) --last;
    if (col == last) {
      RECT client;
      ::GetClientRect(hwnd(), &client);
      int left = 0;
      for (int32_t c = 0; c < col; ++c) left += col_pixels(c);
      pixels = std::max<int>(pixels, client.right - left);
    }
  }
  return pixels;
}

int Win32GridControl::content_height() const {
  int height = 0;
  for (int32_t row = 0; row < Rows(); ++row) height += row_pixels(row);
  return height;
}

RECT Win32GridControl::cell_rect(int32_t row, int32_t col) const {
  RECT cell{0, -scroll_, 0, -scroll_};
  if (row < 0 || row >= Rows() || col < 0 || col >= Cols()) return {};
  for (int32_t r = 0; r < row; ++r) cell.top += row_pixels(r);
  for (int32_t c = 0; c < col; ++c) cell.left += col_pixels(c);
  cell.bottom = cell.top + row_pixels(row);
  cell.right = cell.left + col_pixels(col);
  return cell;
}

CellRef Win32GridControl::cell_at(POINT at) const {
  CellRef cell{-1, -1};
  int y = -scroll_;
  for (int32_t row = 0; row < Rows() && cell.row < 0; ++row) {
    const int height = row_pixels(row);
    if (at.y >= y && at.y < y + height) cell.row = row;
    y += height;
  }
  int x = 0;
  for (int32_t col = 0; col < Cols() && cell.col < 0; ++col) {
    const int width = col_pixels(col);
    if (at.x >= x && at.x < x + width) cell.col = col;
    x += width;
  }
  return cell.row < 0 || cell.col < 0 ? CellRef{-1, -1} : cell;
}

int32_t Win32GridControl::BottomRow() const {
  RECT client;
  ::GetClientRect(hwnd(), &client);
  int y = -scroll_;
  for (int32_t row = 0; row < Rows(); ++row) {
    y += row_pixels(row);
    if (y >= client.bottom) return row;
  }
  return Rows() - 1;
}

void Win32GridControl::scroll_to(int32_t row) {
  if (!hwnd() || row < 0 || row >= Rows()) return;
  RECT client;
  ::GetClientRect(hwnd(), &client);
  const RECT cell = cell_rect(row, 0);
  if (cell.top < 0) {
    scroll_by(cell.top);
  } else if (cell.bottom > client.bottom) {
    scroll_by(std::min<int>(cell.bottom - client.bottom, cell.top));
  }
}

void Win32GridControl::scroll_by(int pixels) {
  RECT client;
  ::GetClientRect(hwnd(), &client);
  const int most = std::max<int>(content_height() - client.bottom, 0);
  const int to = std::clamp(scroll_ + pixels, 0, most);
  if (to == scroll_) return;
  scroll_ = to;
  update_scroll_bar();
  place_editor();
  changed();
}

void Win32GridControl::update_scroll_bar() {
  if (!hwnd()) return;
  RECT client;
  ::GetClientRect(hwnd(), &client);
  const int height = content_height();
  scroll_ = std::clamp(scroll_, 0, std::max<int>(height - client.bottom, 0));
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMin = 0;
  info.nMax = std::max(height - 1, 0);
  info.nPage = static_cast<UINT>(std::max<LONG>(client.bottom, 0));
  info.nPos = scroll_;
  if (info.nMax == scroll_bar_.nMax && info.nPage == scroll_bar_.nPage &&
      info.nPos == scroll_bar_.nPos) {
    return;
  }
  scroll_bar_ = info;
  ::SetScrollInfo(hwnd(), SB_VERT, &info, TRUE);
}

void Win32GridControl::layout_changed() {
  if (!AutoRedraw()) return;  // Refresh lays the grid out
  update_scroll_bar();
  place_editor();
  changed();
}

void Win32GridControl::row_changed(int32_t row) {
  if (!hwnd() || !AutoRedraw() || invalid_ || row < 0 || row >= Rows()) return;
  RECT strip = cell_rect(row, 0);
  RECT client;
  ::GetClientRect(hwnd(), &client);
  strip.left = 0;
  strip.right = client.right;
  if (strip.bottom <= std::max<LONG>(strip.top, 0) || strip.top >= client.bottom) return;
  ::InvalidateRect(hwnd(), &strip, FALSE);
}

HDC Win32GridControl::buffer(HDC window_dc) {
  RECT client;
  ::GetClientRect(hwnd(), &client);
  if (!buffer_dc_) buffer_dc_ = ::CreateCompatibleDC(window_dc);
  if (!buffer_bitmap_ || client.right > buffer_size_.cx || client.bottom > buffer_size_.cy) {
    buffer_size_ = {std::max<LONG>(client.right, 1), std::max<LONG>(client.bottom, 1)};
    HBITMAP bitmap = ::CreateCompatibleBitmap(window_dc, buffer_size_.cx, buffer_size_.cy);
    ::SelectObject(buffer_dc_, bitmap);
    if (buffer_bitmap_) ::DeleteObject(buffer_bitmap_);
    buffer_bitmap_ = bitmap;
  }
  return buffer_dc_;
}

void Win32GridControl::changed() {
  // Once until the window is drawn: the whole of it is drawn anew then.
  if (!hwnd() || !AutoRedraw() || invalid_) return;
  invalid_ = true;
  ::InvalidateRect(hwnd(), nullptr, FALSE);
}

// ---- Drawing ----------------------------------------------------------------------------

void Win32GridControl::make_fonts() {
  for (const bool bold : {false, true}) {
    HFONT& f = fonts_[bold ? 1 : 0];
    if (f) ::DeleteObject(f);
    LOGFONTW logical{};
    logical.lfHeight = -::MulDiv(static_cast<int>(font_size_ * 10 + 0.5f), dpi_, 720);
    logical.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    logical.lfCharSet = chinese_face(font_name_) ? GB2312_CHARSET : DEFAULT_CHARSET;
    logical.lfQuality = CLEARTYPE_QUALITY;
    const std::size_t length = std::min<std::size_t>(font_name_.size(), LF_FACESIZE - 1);
    std::copy_n(font_name_.begin(), length, logical.lfFaceName);
    f = ::CreateFontIndirectW(&logical);
  }
  // At least the height the bold font needs, whatever the scale.
  HDC dc = ::GetDC(hwnd());
  HGDIOBJ old = ::SelectObject(dc, font(true));
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(dc, &metrics);
  ::SelectObject(dc, old);
  ::ReleaseDC(hwnd(), dc);
  least_row_height_ = static_cast<int>(metrics.tmHeight) + 4;
  for (HWND editor : {edit_, combo_}) {
    if (editor) ::SendMessageW(editor, WM_SETFONT, reinterpret_cast<WPARAM>(font(false)), TRUE);
  }
}

void Win32GridControl::paint(HDC dc, const RECT& area) const {
  const headless::MemoryGrid& grid = view_.grid;
  fill(dc, area, colour_ref(grid.back_color_bkg));
  ::SetBkMode(dc, TRANSPARENT);
  const COLORREF lines = colour_ref(grid.grid_color);
  HGDIOBJ old_font = ::SelectObject(dc, font(false));
  int top = -scroll_;
  for (int32_t row = 0; row < Rows() && top < area.bottom; ++row) {
    const int height = row_pixels(row);
    const int bottom = top + height;
    if (height <= 0 || bottom <= area.top) {
      top = bottom;
      continue;
    }
    const auto [first, last] = grid.merged(row);
    int left = 0;
    for (int32_t col = 0; col < Cols(); ++col) {
      const int width = col_pixels(col);
      if (width <= 0) continue;
      RECT cell{left, top, left + width, bottom};
      left += width;
      const bool in_range = last > first && col >= first && col <= last;
      if (in_range && col != first) continue;
      // A merged range is one cell: the picture of its first column, the
      // text (with its bold and colour) of the first column that has one.
      int32_t source = col;
      if (in_range) {
        for (int32_t c = col + 1; c <= last; ++c) cell.right += col_pixels(c);
        left = cell.right;
        for (int32_t c = first; c <= last; ++c) {
          if (!grid.Text(row, c).empty()) {
            source = c;
            break;
          }
        }
      }
      const headless::MemoryGrid::Cell& shown = grid.cell(row, source);
      const headless::MemoryGrid::Cell& own = grid.cell(row, col);
      fill(dc, cell, marks_.count({row, col}) ? refused_ground() : colour_ref(own.back_color));
      cell_lines(dc, cell, lines);
      RECT text_area{cell.left + 2, cell.top, cell.right - 3, cell.bottom - 1};
      const auto picture = pictures_.find(own.image_key);
      if (!own.image_key.empty() && picture != pictures_.end()) {
        BITMAP size{};
        ::GetObjectW(picture->second, sizeof(size), &size);
        const int w = scaled(size.bmWidth);
        const int h = scaled(size.bmHeight);
        const int y = cell.top + (cell.bottom - cell.top - h) / 2;
        HDC source_dc = ::CreateCompatibleDC(dc);
        HGDIOBJ old = ::SelectObject(source_dc, picture->second);
        const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
        ::GdiAlphaBlend(dc, cell.left + 2, y, w, h, source_dc, 0, 0, size.bmWidth, size.bmHeight,
                        blend);
        ::SelectObject(source_dc, old);
        ::DeleteDC(source_dc);
        text_area.left += w + 3;
      }
      if (!shown.text.empty()) {
        ::SelectObject(dc, font(shown.font_bold));
        ::SetTextColor(dc, colour_ref(shown.fore_color));
        ::DrawTextW(dc, wide(shown.text), static_cast<int>(shown.text.size()), &text_area,
                    text_format(own.alignment, shown.text));
      }
    }
    top = bottom;
  }
  // The active cell's focus, while the grid has it.
  const CellRef at = grid.ActiveCell();
  if (grid.display_focus_rect && ::GetFocus() == hwnd() && at.row < Rows() && at.col < Cols()) {
    RECT cell = cell_rect(at.row, at.col);
    if (cell.bottom > cell.top && cell.right > cell.left) {
      ::InflateRect(&cell, -1, -1);
      ::SetTextColor(dc, RGB(0, 0, 0));
      ::SetBkColor(dc, RGB(255, 255, 255));
      ::DrawFocusRect(dc, &cell);
    }
  }
  ::SelectObject(dc, old_font);
}

// ---- GridControl ----------------------------------------------------------------------

// A setter that leaves the model as it was draws nothing; one that changes
// a cell draws its row, one that changes sizes the whole grid.

void Win32GridControl::Rows(int32_t rows) {
  if (rows == Rows()) return;
  view_.grid.Rows(rows);
  layout_changed();
}

void Win32GridControl::Cols(int32_t cols) {
  if (cols == Cols()) return;
  view_.grid.Cols(cols);
  layout_changed();
}

void Win32GridControl::RowHeight(int32_t row, int32_t height) {
  if (view_.grid.RowHeight(row) == height) return;
  view_.grid.RowHeight(row, height);
  layout_changed();
}

void Win32GridControl::DefaultRowHeight(int32_t height) {
  if (DefaultRowHeight() == height) return;
  view_.grid.DefaultRowHeight(height);
  layout_changed();
}

void Win32GridControl::ColWidth(int32_t col, int32_t width) {
  if (view_.grid.ColWidth(col) == width) return;
  view_.grid.ColWidth(col, width);
  layout_changed();
}

void Win32GridControl::Text(int32_t row, int32_t col, TextView text) {
  const bool same = view_.grid.Text(row, col) == text;
  view_.grid.Text(row, col, text);
  // An open editor of the cell shows what the form wrote (after a handler,
  // the action's end shows it).
  if (shown_editor_ && !relay_->busy && ActiveCell() == CellRef{row, col} && !editor_shows(text)) {
    set_editor_text(zelkora::Text(text));
  }
  if (!same) row_changed(row);
}

void Win32GridControl::FontBold(int32_t row, int32_t col, bool bold) {
  if (view_.grid.FontBold(row, col) == bold) return;
  view_.grid.FontBold(row, col, bold);
  row_changed(row);
}

void Win32GridControl::ForeColor(int32_t row, int32_t col, uint32_t colour) {
  if (view_.grid.ForeColor(row, col) == colour) return;
  view_.grid.ForeColor(row, col, colour);
  row_changed(row);
}

void Win32GridControl::BackColor(int32_t row, int32_t col, uint32_t colour) {
  if (view_.grid.BackColor(row, col) == colour) return;
  view_.grid.BackColor(row, col, colour);
  row_changed(row);
}

void Win32GridControl::Alignment(int32_t row, int32_t col, int16_t alignment) {
  if (view_.grid.Alignment(row, col) == alignment) return;
  view_.grid.Alignment(row, col, alignment);
  row_changed(row);
}

void Win32GridControl::Locked(int32_t row, bool locked) {
  view_.grid.Locked(row, locked);
  row_changed(row);
}

void Win32GridControl::Merge(int32_t row, int32_t col1, int32_t col2) {
  view_.grid.Merge(row, col1, col2);
  row_changed(row);
}

void Win32GridControl::AddPicture(const Picture& picture, TextView key) {
  view_.grid.AddPicture(picture, key);
  HBITMAP& bitmap = pictures_[zelkora::Text(key)];
  if (bitmap) ::DeleteObject(bitmap);
  bitmap = picture_bitmap(picture);
}

void Win32GridControl::SetImage(int32_t row, int32_t col, TextView key) {
  if (view_.grid.ImageKey(row, col) == key) return;
  view_.grid.SetImage(row, col, key);
  row_changed(row);
}

void Win32GridControl::Refresh() {
  view_.grid.Refresh();
  layout_changed();
}

void Win32GridControl::ActiveCell(int32_t row, int32_t col) {
  view_.grid.ActiveCell(row, col);
  active_shown();
}

void Win32GridControl::SetFocus(int32_t row, int32_t col) {
  view_.grid.SetFocus(row, col);
  active_shown();
  ::SetFocus(hwnd());
}

void Win32GridControl::DefaultFontName(TextView name) {
  view_.grid.DefaultFontName(name);
  if (font_name_ == name) return;
  font_name_ = zelkora::Text(name);
  make_fonts();
  layout_changed();
}

void Win32GridControl::DefaultFontSize(float size) {
  view_.grid.DefaultFontSize(size);
  if (size <= 0 || font_size_ == size) return;
  font_size_ = size;
  make_fonts();
  layout_changed();
}

void Win32GridControl::BackColorBkg(uint32_t colour) {
  view_.grid.BackColorBkg(colour);
  changed();
}

void Win32GridControl::GridColor(uint32_t colour) {
  view_.grid.GridColor(colour);
  changed();
}

void Win32GridControl::ExtendLastCol(bool extend) {
  view_.grid.ExtendLastCol(extend);
  changed();
}

void Win32GridControl::DisplayFocusRect(bool display) {
  view_.grid.DisplayFocusRect(display);
  changed();
}

}  // namespace zelkora::platform::win32
