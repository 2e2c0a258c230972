// The system's controls behind the simple control interfaces (win32_controls.h).
#include "zelkora/platform/win32gui/win32_controls.h"

#include <commctrl.h>

#include <vector>

namespace zelkora::platform::win32 {

namespace {

// The subclasses of a control: its font, the check box's click.
constexpr UINT_PTR kFontSubclass = 0x5A4B4631;
constexpr UINT_PTR kClickSubclass = 0x5A4B4332;

// SystemParametersInfoForDpi came with Windows 10 1607.
using MetricsForDpi = BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT);

}  // namespace

LOGFONTW message_font(int dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  const HMODULE user32 = ::GetModuleHandleW(L"user32.dll");
  const auto for_dpi = user32 ? reinterpret_cast<MetricsForDpi>(reinterpret_cast<void*>(
                                    ::GetProcAddress(user32, "SystemParametersInfoForDpi")))
                              : nullptr;
  if (for_dpi &&
      for_dpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi))) {
    return metrics.lfMessageFont;
  }
  ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  HDC screen = ::GetDC(nullptr);
  const int system_dpi = screen ? ::GetDeviceCaps(screen, LOGPIXELSY) : 96;
  if (screen) ::ReleaseDC(nullptr, screen);
  metrics.lfMessageFont.lfHeight = ::MulDiv(metrics.lfMessageFont.lfHeight, dpi, system_dpi);
  return metrics.lfMessageFont;
}

namespace {

// A text the control hands out through a buffer of `length` units.
template <class Fill>
zelkora::Text read_text(LRESULT length, Fill fill) {
  if (length <= 0) return {};
  std::vector<wchar_t> buffer(static_cast<std::size_t>(length) + 1);
  const LRESULT got = fill(buffer.data());
  return got > 0 ? from_wide(buffer.data(), static_cast<std::size_t>(got)) : zelkora::Text();
}

}  // namespace

std::wstring to_wide(TextView text) { return std::wstring(text.begin(), text.end()); }

zelkora::Text from_wide(const wchar_t* text, std::size_t length) {
  return zelkora::Text(text, text + length);
}

HFONT create_message_font(int dpi) {
  const LOGFONTW font = message_font(dpi);
  return ::CreateFontIndirectW(&font);
}

// ---- FontFollower ----------------------------------------------------------

FontFollower::FontFollower(HWND window) : window_(window) {
  if (!window_) return;
  apply(dpi_of(window_));
  ::SetWindowSubclass(window_, on_message, kFontSubclass, reinterpret_cast<DWORD_PTR>(this));
}

FontFollower::~FontFollower() {
  if (window_) {
    ::RemoveWindowSubclass(window_, on_message, kFontSubclass);
    ::SendMessageW(window_, WM_SETFONT, 0, FALSE);
  }
  if (font_) ::DeleteObject(font_);
}

void FontFollower::apply(int dpi) {
  HFONT old = font_;
  font_ = create_message_font(dpi);
  ::SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
  if (old) ::DeleteObject(old);
}

LRESULT CALLBACK FontFollower::on_message(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                                          DWORD_PTR self) {
  auto& follower = *reinterpret_cast<FontFollower*>(self);
  if (message == WM_DPICHANGED) follower.apply(HIWORD(w));
  if (message == WM_DPICHANGED_AFTERPARENT) follower.apply(dpi_of(window));
  return ::DefSubclassProc(window, message, w, l);
}

// ---- CheckBox and OptionButton ---------------------------------------------

CheckBox::CheckBox(HWND parent, TextView caption)
    : NativeControl(parent, L"BUTTON", BS_AUTO3STATE, to_wide(caption).c_str()) {
  ::SetWindowSubclass(hwnd(), on_message, kClickSubclass, reinterpret_cast<DWORD_PTR>(this));
}

CheckBox::~CheckBox() { ::RemoveWindowSubclass(hwnd(), on_message, kClickSubclass); }

// A click has the box set its next state, which would gray a checked box.
LRESULT CALLBACK CheckBox::on_message(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                                      DWORD_PTR self) {
  if (message == BM_SETCHECK && !reinterpret_cast<CheckBox*>(self)->setting_) {
    w = ::DefSubclassProc(window, BM_GETCHECK, 0, 0) == BST_CHECKED ? BST_UNCHECKED : BST_CHECKED;
  }
  return ::DefSubclassProc(window, message, w, l);
}

int16_t CheckBox::Value() const {
  switch (send(BM_GETCHECK)) {
    case BST_CHECKED:
      return 1;
    case BST_INDETERMINATE:
      return 2;
    default:
      return 0;
  }
}

void CheckBox::Value(int16_t value) {
  static constexpr WPARAM kStates[] = {BST_UNCHECKED, BST_CHECKED, BST_INDETERMINATE};
  if (value < 0 || value > 2) return;
  setting_ = true;
  send(BM_SETCHECK, kStates[value]);
  setting_ = false;
}

OptionButton::OptionButton(HWND parent, TextView caption, bool first_of_group)
    : NativeControl(parent, L"BUTTON", BS_AUTORADIOBUTTON | (first_of_group ? WS_GROUP : 0),
                    to_wide(caption).c_str()) {}

bool OptionButton::Value() const { return send(BM_GETCHECK) == BST_CHECKED; }

namespace {

bool is_option_button(HWND window) {
  wchar_t name[16] = {};
  ::GetClassNameW(window, name, 16);
  const LONG type = ::GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK;
  return ::lstrcmpiW(name, L"BUTTON") == 0 &&
         (type == BS_AUTORADIOBUTTON || type == BS_RADIOBUTTON);
}

// The other option buttons of the window's group: its siblings from the
// last one before it that starts a group (WS_GROUP) to the next one that
// does.
std::vector<HWND> group_of(HWND button) {
  HWND first = button;
  while (!(::GetWindowLongW(first, GWL_STYLE) & WS_GROUP)) {
    HWND before = ::GetWindow(first, GW_HWNDPREV);
    if (!before) break;
    first = before;
  }
  std::vector<HWND> group;
  for (HWND w = first; w; w = ::GetWindow(w, GW_HWNDNEXT)) {
    if (w != first && (::GetWindowLongW(w, GWL_STYLE) & WS_GROUP)) break;
    if (w != button && is_option_button(w)) group.push_back(w);
  }
  return group;
}

}  // namespace

void OptionButton::Value(bool value) {
  if (value) {
    for (HWND other : group_of(hwnd())) ::SendMessageW(other, BM_SETCHECK, BST_UNCHECKED, 0);
  }
  send(BM_SETCHECK, value ? BST_CHECKED : BST_UNCHECKED);
}

// ---- ComboBox --------------------------------------------------------------

ComboBox::ComboBox(HWND parent, int16_t style)
    : NativeControl(parent, L"COMBOBOX",
                    (style == kDropdownList ? CBS_DROPDOWNLIST : CBS_DROPDOWN) | CBS_AUTOHSCROLL |
                        CBS_HASSTRINGS | WS_VSCROLL),
      parent_(parent) {
  ::MoveWindow(hwnd(), 0, 0, 100, 200, FALSE);  // the height takes in the opened list
  if (parent_) {
    ::SetWindowSubclass(parent_, on_parent_message, reinterpret_cast<UINT_PTR>(this),
                        reinterpret_cast<DWORD_PTR>(this));
  }
}

ComboBox::~ComboBox() {
  if (parent_) ::RemoveWindowSubclass(parent_, on_parent_message, reinterpret_cast<UINT_PTR>(this));
  if (brush_) ::DeleteObject(brush_);
}

bool ComboBox::Move(int32_t left, int32_t top, int32_t width, int32_t height) {
  constexpr int32_t kListTwips = 3000;  // about ten items
  return height >= 0 && NativeControl::Move(left, top, width, height + kListTwips);
}

int32_t ComboBox::ListCount() const { return static_cast<int32_t>(send(CB_GETCOUNT)); }

zelkora::Text ComboBox::List(int32_t index) const {
  if (index < 0 || index >= ListCount()) return {};
  return read_text(send(CB_GETLBTEXTLEN, static_cast<WPARAM>(index)), [&](wchar_t* buffer) {
    return send(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer));
  });
}

void ComboBox::AddItem(TextView item) {
  send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(to_wide(item).c_str()));
}

void ComboBox::Clear() {
  const zelkora::Text typed = Style() == kDropdownCombo ? Text() : zelkora::Text();
  send(CB_RESETCONTENT);
  if (Style() == kDropdownCombo) Text(typed);
}

zelkora::Text ComboBox::Text() const {
  return read_text(::GetWindowTextLengthW(hwnd()), [&](wchar_t* buffer) {
    return ::GetWindowTextW(hwnd(), buffer, ::GetWindowTextLengthW(hwnd()) + 1);
  });
}

void ComboBox::Text(TextView text) {
  if (Style() == kDropdownCombo) {
    ::SetWindowTextW(hwnd(), to_wide(text).c_str());
    return;
  }
  // CB_FINDSTRINGEXACT ignores case: the items are compared here.
  for (int32_t i = 0; i < ListCount(); ++i) {
    if (List(i) == text) {
      send(CB_SETCURSEL, static_cast<WPARAM>(i));
      return;
    }
  }
}

int16_t ComboBox::Style() const {
  return (::GetWindowLongW(hwnd(), GWL_STYLE) & 3) == CBS_DROPDOWNLIST ? kDropdownList
                                                                       : kDropdownCombo;
}

void ComboBox::set_back_color(uint32_t colour) {
  back_colour_ = colour;
  if (brush_) ::DeleteObject(brush_);
  brush_ = is_system_colour(colour) ? nullptr : ::CreateSolidBrush(colour_ref(colour));
  ::InvalidateRect(hwnd(), nullptr, TRUE);
}

bool ComboBox::is_part(HWND window) const {
  if (window == hwnd()) return true;
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  return ::GetComboBoxInfo(hwnd(), &info) && (window == info.hwndItem || window == info.hwndList);
}

HBRUSH ComboBox::back_brush(HDC dc) {
  ::SetBkColor(dc, colour_ref(back_colour_));
  ::SetTextColor(dc, ::GetSysColor(COLOR_WINDOWTEXT));
  // A system colour's brush follows the user's scheme.
  return brush_ ? brush_ : ::GetSysColorBrush(static_cast<int>(back_colour_ & 0xFF));
}

// The box and its parts ask its parent for their colours.
LRESULT CALLBACK ComboBox::on_parent_message(HWND window, UINT message, WPARAM w, LPARAM l,
                                             UINT_PTR, DWORD_PTR self) {
  auto& box = *reinterpret_cast<ComboBox*>(self);
  const bool colour_asked =
      message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX || message == WM_CTLCOLORSTATIC;
  if (colour_asked && ::IsWindowEnabled(box.hwnd()) && box.is_part(reinterpret_cast<HWND>(l))) {
    return reinterpret_cast<LRESULT>(box.back_brush(reinterpret_cast<HDC>(w)));
  }
  return ::DefSubclassProc(window, message, w, l);
}

// ---- ListBox ---------------------------------------------------------------

ListBox::ListBox(HWND parent)
    : NativeControl(
          parent, L"LISTBOX",
          LBS_MULTIPLESEL | LBS_NOTIFY | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT | WS_VSCROLL, L"",
          WS_EX_CLIENTEDGE) {}

int32_t ListBox::ListCount() const { return static_cast<int32_t>(send(LB_GETCOUNT)); }

zelkora::Text ListBox::List(int32_t index) const {
  if (index < 0 || index >= ListCount()) return {};
  return read_text(send(LB_GETTEXTLEN, static_cast<WPARAM>(index)), [&](wchar_t* buffer) {
    return send(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer));
  });
}

void ListBox::AddItem(TextView item) {
  send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(to_wide(item).c_str()));
}

void ListBox::Clear() { send(LB_RESETCONTENT); }

bool ListBox::Selected(int32_t index) const {
  return index >= 0 && index < ListCount() && send(LB_GETSEL, static_cast<WPARAM>(index)) > 0;
}

void ListBox::Selected(int32_t index, bool selected) {
  // Index -1 would be every item.
  if (index >= 0 && index < ListCount()) send(LB_SETSEL, selected ? TRUE : FALSE, index);
}

// ---- ListView --------------------------------------------------------------

ListView::ListView(HWND parent)
    : NativeControl(parent, WC_LISTVIEWW,
                    LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER, L"",
                    WS_EX_CLIENTEDGE) {
  send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
}

void ListView::add_column(TextView title, int width) {
  std::wstring text = to_wide(title);
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
  column.cx = ::MulDiv(width, dpi_of(hwnd()), 96);
  column.pszText = text.data();
  column.iSubItem = ColumnHeadersCount();
  send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(column.iSubItem), reinterpret_cast<LPARAM>(&column));
}

int32_t ListView::ColumnHeadersCount() const {
  const HWND header = reinterpret_cast<HWND>(send(LVM_GETHEADER));
  return header ? static_cast<int32_t>(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)) : 0;
}

int32_t ListView::ListItemsCount() const { return static_cast<int32_t>(send(LVM_GETITEMCOUNT)); }

void ListView::ListItemsClear() { send(LVM_DELETEALLITEMS); }

int32_t ListView::ListItemsAdd(TextView text) {
  std::wstring wide = to_wide(text);
  LVITEMW entry{};
  entry.mask = LVIF_TEXT;
  entry.iItem = ListItemsCount();
  entry.pszText = wide.data();
  const LRESULT at = send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&entry));
  return at < 0 ? 0 : static_cast<int32_t>(at) + 1;
}

// A view without columns still has its items' own texts.
bool ListView::valid(int32_t item, int32_t sub) const {
  return item >= 1 && item <= ListItemsCount() && sub >= 0 &&
         (sub == 0 || sub < ColumnHeadersCount());
}

zelkora::Text ListView::cell(int32_t item, int32_t sub) const {
  if (!valid(item, sub)) return {};
  // The view answers the length it copied: the buffer grows until it fits.
  for (int size = 256;; size *= 4) {
    std::vector<wchar_t> buffer(static_cast<std::size_t>(size));
    LVITEMW entry{};
    entry.iSubItem = sub;
    entry.pszText = buffer.data();
    entry.cchTextMax = size;
    const LRESULT got =
        send(LVM_GETITEMTEXTW, static_cast<WPARAM>(item - 1), reinterpret_cast<LPARAM>(&entry));
    if (got < size - 1) return from_wide(entry.pszText, static_cast<std::size_t>(got));
  }
}

void ListView::set_cell(int32_t item, int32_t sub, TextView text) {
  if (!valid(item, sub)) return;
  std::wstring wide = to_wide(text);
  LVITEMW entry{};
  entry.iSubItem = sub;
  entry.pszText = wide.data();
  send(LVM_SETITEMTEXTW, static_cast<WPARAM>(item - 1), reinterpret_cast<LPARAM>(&entry));
}

zelkora::Text ListView::ItemText(int32_t item) const { return cell(item, 0); }

zelkora::Text ListView::SubItem(int32_t item, int32_t sub) const {
  return sub > 0 ? cell(item, sub) : zelkora::Text();
}

void ListView::SubItem(int32_t item, int32_t sub, TextView text) {
  if (sub > 0) set_cell(item, sub, text);
}

void ListView::ItemText(int32_t item, TextView text) { set_cell(item, 0, text); }

int32_t ListView::SelectedItem() const {
  return static_cast<int32_t>(send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED)) + 1;
}

void ListView::SelectedItem(int32_t item) {
  LVITEMW state{};
  state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
  if (!valid(item, 0)) return;
  state.state = LVIS_SELECTED | LVIS_FOCUSED;
  send(LVM_SETITEMSTATE, static_cast<WPARAM>(item - 1), reinterpret_cast<LPARAM>(&state));
  send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(item - 1), FALSE);
}

// ---- Toolbar ---------------------------------------------------------------

Toolbar::Toolbar(HWND parent)
    : NativeControl(
          parent, TOOLBARCLASSNAMEW,
          TBSTYLE_FLAT | TBSTYLE_LIST | CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN) {
  send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
  send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
}

void Toolbar::add_button(TextView text) {
  std::wstring wide = to_wide(text);
  wide.push_back(L'\0');  // a list of strings ends with an empty one
  TBBUTTON button{};
  button.iBitmap = I_IMAGENONE;
  button.idCommand = ButtonsCount() + 1;
  button.fsState = TBSTATE_ENABLED;
  button.fsStyle = BTNS_CHECK | BTNS_AUTOSIZE | BTNS_SHOWTEXT;
  button.iString = send(TB_ADDSTRINGW, 0, reinterpret_cast<LPARAM>(wide.c_str()));
  send(TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
  send(TB_AUTOSIZE);
}

int32_t Toolbar::ButtonsCount() const { return static_cast<int32_t>(send(TB_BUTTONCOUNT)); }

int Toolbar::command_of(int32_t index) const {
  TBBUTTON button{};
  if (index < 1 || index > ButtonsCount() ||
      !send(TB_GETBUTTON, static_cast<WPARAM>(index - 1), reinterpret_cast<LPARAM>(&button))) {
    return 0;
  }
  return button.idCommand;
}

int16_t Toolbar::ButtonValue(int32_t index) const {
  const int command = command_of(index);
  return command && send(TB_ISBUTTONCHECKED, static_cast<WPARAM>(command)) ? 1 : 0;
}

void Toolbar::ButtonValue(int32_t index, int16_t value) {
  if (const int command = command_of(index)) {
    send(TB_CHECKBUTTON, static_cast<WPARAM>(command), MAKELPARAM(value != 0, 0));
  }
}

// ---- Panel -----------------------------------------------------------------

namespace {

constexpr wchar_t kPanelClass[] = L"ZelkoraPanel";

LRESULT CALLBACK panel_message(HWND window, UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
      if (HWND parent = ::GetParent(window)) return ::SendMessageW(parent, message, w, l);
      break;
    default:
      break;
  }
  return ::DefWindowProcW(window, message, w, l);
}

void register_panel_class() {
  static const ATOM atom = [] {
    WNDCLASSEXW type{};
    type.cbSize = sizeof type;
    type.lpfnWndProc = panel_message;
    type.hInstance = ::GetModuleHandleW(nullptr);
    type.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    // The index brush follows the user's scheme.
    type.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
    type.lpszClassName = kPanelClass;
    return ::RegisterClassExW(&type);
  }();
  (void)atom;
}

}  // namespace

Panel::Panel(HWND parent) {
  init_gui();
  register_panel_class();
  adopt(::CreateWindowExW(WS_EX_CONTROLPARENT, kPanelClass, L"",
                          WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 100, 100, parent, nullptr,
                          ::GetModuleHandleW(nullptr), nullptr));
}

}  // namespace zelkora::platform::win32
