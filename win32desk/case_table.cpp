// The table of load cases on Windows' own controls.
#include "win32desk/case_table.h"

#include "zelkora/platform/win32/windows_api.h"  // before the system's other headers

#include <commctrl.h>

#include "program/load_cases.h"
#include "win32desk/frame_window.h"

namespace zelkora::win32desk {

namespace {

constexpr int32_t kKindColumn = 2;  // from 1
constexpr const char16_t* kKinds[] = {u"永久", u"可变", u"风", u"地震"};

}  // namespace

CaseTable::CaseTable(HWND parent) : parent_(parent) {
  label_ = make_child(parent, L"STATIC", SS_LEFT | SS_CENTERIMAGE,
                      u"荷载工况（标准值，作用于基础顶面）");
  const char16_t* const texts[] = {u"添加", u"删除", u"上移", u"下移"};
  for (int i = 0; i < 4; ++i) {
    buttons_[i] = make_child(parent, L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP, texts[i], kAdd + i);
  }
  table_ = std::make_unique<platform::win32::ListView>(parent);
  for (const TextView caption : desk::case_captions()) table_->add_column(caption, 70);
}

CaseTable::~CaseTable() {
  if (editor_) ::DestroyWindow(editor_);
  for (HWND button : buttons_) ::DestroyWindow(button);
  ::DestroyWindow(label_);
}

void CaseTable::place(const RECT& area) {
  const int pad = scaled(parent_, 4), row = scaled(parent_, 24), button = scaled(parent_, 48);
  const int width = area.right - area.left;
  ::MoveWindow(label_, area.left + pad, area.top + pad, std::max(0, width - 4 * button - 3 * pad),
               row, TRUE);
  for (int i = 0; i < 4; ++i) {
    ::MoveWindow(buttons_[i], area.right - (4 - i) * button - pad, area.top + pad, button - 2, row,
                 TRUE);
  }
  const int top = area.top + row + 2 * pad;
  ::MoveWindow(table_->hwnd(), area.left + pad, top, std::max(0, width - 2 * pad),
               std::max(0, int(area.bottom) - top - pad), TRUE);
  const int columns = std::max(1, table_->ColumnHeadersCount());
  for (int c = 0; c < columns; ++c) {
    ::SendMessageW(table_->hwnd(), LVM_SETCOLUMNWIDTH, c,
                   std::max(40, (width - 2 * pad - scaled(parent_, 20)) / columns));
  }
}

int32_t CaseTable::current_case() const { return table_->SelectedItem(); }

void CaseTable::select_case(int32_t item) {
  if (item >= 1 && item <= table_->ListItemsCount()) table_->SelectedItem(item);
}

RECT CaseTable::cell_rect(int32_t row, int32_t col) const {
  RECT r{};
  r.top = col - 1;
  r.left = col == 1 ? LVIR_LABEL : LVIR_BOUNDS;
  ::SendMessageW(table_->hwnd(), LVM_GETSUBITEMRECT, static_cast<WPARAM>(row - 1),
                 reinterpret_cast<LPARAM>(&r));
  return r;
}

bool CaseTable::command(WPARAM wparam, LPARAM lparam) {
  const int id = LOWORD(wparam);
  if (id >= kAdd && id <= kDown && reinterpret_cast<HWND>(lparam) == buttons_[id - kAdd]) {
    if (HIWORD(wparam) == BN_CLICKED) press(static_cast<Button>(id));
    return true;
  }
  return editor_ && reinterpret_cast<HWND>(lparam) == editor_;
}

bool CaseTable::notify(const NMHDR& header) {
  if (header.hwndFrom != table_->hwnd()) return false;
  if (header.code == NM_DBLCLK) {
    const auto& activate = reinterpret_cast<const NMITEMACTIVATE&>(header);
    LVHITTESTINFO hit{};
    hit.pt = activate.ptAction;
    ::SendMessageW(table_->hwnd(), LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if (hit.iItem >= 0) open_editor(hit.iItem + 1, hit.iSubItem + 1);
  }
  return true;
}

void CaseTable::press(Button which) {
  close_editor(true);
  const int32_t current = current_case();
  int32_t next = 0;
  if (which == kAdd && add) {
    next = add();
  } else if (which == kDelete && remove && remove(current)) {
    next = std::min(current, table_->ListItemsCount());
  } else if ((which == kUp || which == kDown) && move) {
    next = move(current, which == kUp ? -1 : 1);
    if (next == 0) next = current;
  }
  select_case(next);
}

void CaseTable::open_editor(int32_t item, int32_t sub) {
  close_editor(true);
  RECT r = cell_rect(item, sub);
  edit_item_ = item;
  edit_sub_ = sub;
  const Text text = sub == 1 ? table_->ItemText(item) : table_->SubItem(item, sub - 1);
  if (sub == kKindColumn) {
    editor_ = make_child(table_->hwnd(), L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL);
    for (const char16_t* kind : kKinds) {
      ::SendMessageW(editor_, CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(reinterpret_cast<const wchar_t*>(kind)));
    }
    const LRESULT at =
        ::SendMessageW(editor_, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                       reinterpret_cast<LPARAM>(platform::win32::to_wide(text).c_str()));
    ::SendMessageW(editor_, CB_SETCURSEL, at < 0 ? 0 : at, 0);
    ::MoveWindow(editor_, r.left, r.top, r.right - r.left, scaled(parent_, 160), TRUE);
  } else {
    editor_ = make_child(table_->hwnd(), L"EDIT", ES_AUTOHSCROLL | WS_BORDER, text);
    ::SendMessageW(editor_, EM_SETSEL, 0, -1);
    ::MoveWindow(editor_, r.left, r.top, r.right - r.left, r.bottom - r.top + 2, TRUE);
  }
  ::SetWindowSubclass(editor_, &editor_proc, 1, reinterpret_cast<DWORD_PTR>(this));
  ::SetFocus(editor_);
}

void CaseTable::close_editor(bool take) {
  if (!editor_) return;
  HWND editor = editor_;
  editor_ = nullptr;
  if (take) {
    const Text text = window_text(editor);
    if (edit_sub_ == 1) {
      table_->ItemText(edit_item_, text);
    } else {
      table_->SubItem(edit_item_, edit_sub_ - 1, text);
    }
  }
  ::RemoveWindowSubclass(editor, &editor_proc, 1);
  ::DestroyWindow(editor);
  ::SetFocus(table_->hwnd());
  if (take && edited) edited();
}

LRESULT CALLBACK CaseTable::editor_proc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam,
                                        UINT_PTR /*id*/, DWORD_PTR self) {
  auto* table = reinterpret_cast<CaseTable*>(self);
  if (message == WM_KEYDOWN && (wparam == VK_RETURN || wparam == VK_ESCAPE)) {
    table->close_editor(wparam == VK_RETURN);
    return 0;
  }
  if (message == WM_CHAR && (wparam == L'\r' || wparam == 0x1B)) return 0;
  if (message == WM_GETDLGCODE) return DLGC_WANTALLKEYS;
  return ::DefSubclassProc(hwnd, message, wparam, lparam);
}

}  // namespace zelkora::win32desk
