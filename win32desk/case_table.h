// The table of load cases of a form that has them (program/load_cases.h)
// on Windows' own controls: a list view whose cells are edited in place (a
// double click opens an editor over the cell, Enter takes its text; the
// kind is chosen from a list), and the buttons 添加, 删除, 上移 and 下移
// over it. What the buttons do and what an edit means is the form's work.
#pragma once

#include <functional>
#include <memory>

#include "zelkora/platform/win32gui/win32_controls.h"

namespace zelkora::win32desk {

class CaseTable {
 public:
  enum Button { kAdd = 300, kDelete, kUp, kDown };

  explicit CaseTable(HWND parent);
  ~CaseTable();

  platform::win32::ListView& table() { return *table_; }
  HWND button(Button which) const { return buttons_[which - kAdd]; }
  // The open editor of a cell, or null.
  HWND editor() const { return editor_; }
  // Places the label, the buttons and the table in `area` of the parent.
  void place(const RECT& area);
  // The row (from 1) of the current case, 0 for none; a row made current.
  int32_t current_case() const;
  void select_case(int32_t item);
  // The parent's WM_COMMAND and WM_NOTIFY of the table's parts; true when
  // taken.
  bool command(WPARAM wparam, LPARAM lparam);
  bool notify(const NMHDR& header);
  // The place of cell (row, col) (from 1) in the list view's client area.
  RECT cell_rect(int32_t row, int32_t col) const;

  std::function<void()> edited;
  std::function<int32_t()> add;
  std::function<bool(int32_t item)> remove;
  std::function<int32_t(int32_t item, int step)> move;

 private:
  static LRESULT CALLBACK editor_proc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
  void press(Button which);
  void open_editor(int32_t item, int32_t sub);
  void close_editor(bool take);

  HWND parent_;
  HWND label_ = nullptr;
  HWND buttons_[4] = {};
  std::unique_ptr<platform::win32::ListView> table_;
  HWND editor_ = nullptr;
  int32_t edit_item_ = 0, edit_sub_ = 0;
};

}  // namespace zelkora::win32desk
