// The grid control on Windows' own means: the property grid of a calculation
// form in a window class of the project's own, drawn with GDI.
//
// The cells' state is kept by an in-memory grid, the model every rule of the
// interface comes from (sizes, merged ranges, pictures, locked rows, the
// filter, the subscript errors); the window draws it (double-buffered, with
// AutoRedraw off nothing until Refresh). Rows and columns are the grid's, row
// 0 included; a row of height 0 and a column of width 0 or less (column 0)
// take no space. Grid pixels are scaled by the window's DPI.
//
// The user's hand is a headless::HeadlessUser over that model: the window
// turns its messages into the user's whole actions (a click, a key, a
// character, a pick from the open list, the focus going away), so the
// events reach the GridEvents given to connect_events() in the order of the
// other hosts by construction:
//  - a click (the button released on the cell it went down on) on another
//    cell: LeaveCell (a cancel keeps the cell, its editor and the focus),
//    EnterRow when the row changed, then Click; a click on the active value
//    cell edits it; a double click: DblClick, then the cell is edited;
//  - a character typed in the grid: KeyDown (ASCII), BeforeEdit, then the
//    editor opens holding it; Space outside an editor: KeyDown 32;
//  - in the editor (an EDIT, or a drop-down COMBOBOX for a list cell) every
//    change of its text, by any key (Backspace, Delete, a character typed
//    over a selection within the text), reaches the model at once and raises
//    CellChanging; Enter, Tab, Shift+Tab, Up, Down, Escape, F2, F4 and
//    Alt+Down are the user's keys (Escape puts back the text the cell had when
//    entered); F4 and Alt+Down on a list cell raise ComboDropDown, fill the
//    list from ComboList and open it; an item chosen from it raises
//    ComboClick;
//  - the focus going to another window: the edited cell is left (a refusal
//    keeps the editor and takes the focus back), or LostFocus.
// Events raised while the form handles another one (a message box shown
// during a leave) are not raised again.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/headless/headless_grid.h"
#include "zelkora/platform/win32gui/window_base.h"

namespace zelkora::platform::win32 {

class Win32GridControl : public HwndControl<GridControl> {
 public:
  // The longest value a cell's editor takes as typed or pasted.
  static constexpr std::size_t kMaxTypedLength = headless::HeadlessUser::kMaxTypedLength;

  // A child window of `parent` (a top-level window without one).
  explicit Win32GridControl(HWND parent);
  ~Win32GridControl() override;

  // The handlers of the user's actions; null for none.
  void connect_events(GridEvents* events);
  // The state of every cell, as the control keeps it.
  const headless::MemoryGrid& cells() const { return view_.grid; }

  // The column Tab, Shift+Tab and Enter move in from row to row: the value
  // column of a property grid (column 3), the only one the user's hand
  // moves in.
  void value_column(int32_t col) { value_col_ = col; }
  int32_t value_column() const { return value_col_; }
  int32_t next_editable_row(int32_t row, int32_t col, int step) const {
    return view_.grid.next_editable_row(row, col, step);
  }
  // Makes the cell active, as a click on it would (the active cell is left
  // first), and opens its editor as F2 does. False when the leave was
  // cancelled or the edit refused.
  bool edit_cell(int32_t row, int32_t col);
  // Leaves the active cell as a click elsewhere would; a refusal keeps its
  // editor open and answers false.
  bool leave_cell();
  // Makes the cell the active one, any editor closed without a check, as
  // a form does when it puts the user at a row (after an undo).
  void move_to(int32_t row, int32_t col);
  // Enters `text` into the cell as if typed, then leaves it; false when a
  // step was refused or the text is longer than kMaxTypedLength.
  bool type_into(int32_t row, int32_t col, TextView text);
  // Shows only the rows for which kept[row] is true, or, with an empty
  // vector, the rows as the grid has them.
  void show_only(std::vector<bool> kept);
  bool filtered() const { return view_.grid.filtered(); }
  bool editing() const { return user_.editing(); }
  bool list_open() const { return user_.list_open(); }  ///< the list cell's list is down
  /// The focus handed to `window` by the program, not taken by the user (the
  /// editor that had it closed): the grid raises no LostFocus.
  void hand_focus_to(HWND window);
  bool row_shown(int32_t row) const { return view_.grid.row_shown(row); }
  // Marks a cell, a refused value: drawn on the window colour tinted red,
  // `note` its tooltip. An empty note clears the mark.
  void mark_cell(int32_t row, int32_t col, TextView note);
  bool marked(int32_t row, int32_t col) const { return marks_.count({row, col}) != 0; }
  // A note shown as the cell's tooltip (a mark's comes first).
  void note_cell(int32_t row, int32_t col, TextView note);

  // The open editor's window (the COMBOBOX of a list cell), or null.
  HWND editor() const { return shown_editor_; }
  // The cell's place in the window's client area (empty for a cell that
  // takes no space), and the cell under a point of it ({-1, -1}: none).
  RECT cell_rect(int32_t row, int32_t col) const;
  CellRef cell_at(POINT at) const;
  // Scrolls the least that shows the row whole.
  void scroll_to(int32_t row);
  // Draws the grid as it is shown into `dc`, over `area` (client
  // coordinates).
  void paint(HDC dc, const RECT& area) const;

  // ---- GridControl ----
  int32_t Rows() const override { return view_.grid.Rows(); }
  void Rows(int32_t rows) override;
  int32_t Cols() const override { return view_.grid.Cols(); }
  void Cols(int32_t cols) override;
  int32_t RowHeight(int32_t row) const override { return view_.grid.RowHeight(row); }
  void RowHeight(int32_t row, int32_t height) override;
  int32_t DefaultRowHeight() const override { return view_.grid.DefaultRowHeight(); }
  void DefaultRowHeight(int32_t height) override;
  int32_t ColWidth(int32_t col) const override { return view_.grid.ColWidth(col); }
  void ColWidth(int32_t col, int32_t width) override;

  zelkora::Text Text(int32_t row, int32_t col) const override { return view_.grid.Text(row, col); }
  void Text(int32_t row, int32_t col, TextView text) override;
  int16_t CellType(int32_t row, int32_t col) const override {
    return view_.grid.CellType(row, col);
  }
  void CellType(int32_t row, int32_t col, int16_t type) override {
    view_.grid.CellType(row, col, type);
  }
  bool FontBold(int32_t row, int32_t col) const override { return view_.grid.FontBold(row, col); }
  void FontBold(int32_t row, int32_t col, bool bold) override;
  uint32_t ForeColor(int32_t row, int32_t col) const override {
    return view_.grid.ForeColor(row, col);
  }
  void ForeColor(int32_t row, int32_t col, uint32_t colour) override;
  uint32_t BackColor(int32_t row, int32_t col) const override {
    return view_.grid.BackColor(row, col);
  }
  void BackColor(int32_t row, int32_t col, uint32_t colour) override;
  int16_t Alignment(int32_t row, int32_t col) const override {
    return view_.grid.Alignment(row, col);
  }
  void Alignment(int32_t row, int32_t col, int16_t alignment) override;
  zelkora::Text Tag(int32_t row, int32_t col) const override { return view_.grid.Tag(row, col); }
  void Tag(int32_t row, int32_t col, TextView tag) override { view_.grid.Tag(row, col, tag); }
  std::vector<zelkora::Text> ComboList(int32_t row, int32_t col) const override {
    return view_.grid.ComboList(row, col);
  }
  void ComboList(int32_t row, int32_t col, const std::vector<zelkora::Text>& items) override {
    view_.grid.ComboList(row, col, items);
  }

  bool Locked(int32_t row) const override { return view_.grid.Locked(row); }
  void Locked(int32_t row, bool locked) override;
  void Merge(int32_t row, int32_t col1, int32_t col2) override;

  void AddPicture(const Picture& picture, TextView key) override;
  void SetImage(int32_t row, int32_t col, TextView key) override;
  zelkora::Text ImageKey(int32_t row, int32_t col) const override {
    return view_.grid.ImageKey(row, col);
  }

  bool AutoRedraw() const override { return view_.grid.AutoRedraw(); }
  void AutoRedraw(bool redraw) override { view_.grid.AutoRedraw(redraw); }
  void Refresh() override;

  CellRef ActiveCell() const override { return view_.grid.ActiveCell(); }
  void ActiveCell(int32_t row, int32_t col) override;
  int32_t BottomRow() const override;
  void SetFocus(int32_t row, int32_t col) override;

  void DefaultFontName(TextView name) override;
  void DefaultFontSize(float size) override;
  void BackColorBkg(uint32_t colour) override;
  void GridColor(uint32_t colour) override;
  void CellBorderColorFixed(uint32_t colour) override { view_.grid.CellBorderColorFixed(colour); }
  void CellBorderColor(uint32_t colour) override { view_.grid.CellBorderColor(colour); }
  void Appearance(int16_t appearance) override { view_.grid.Appearance(appearance); }
  void EnterKeyMoveTo(int16_t direction) override { view_.grid.EnterKeyMoveTo(direction); }
  void ExtendLastCol(bool extend) override;
  void DisplayFocusRect(bool display) override;
  void ReadOnlyFocusRect(int16_t style) override { view_.grid.ReadOnlyFocusRect(style); }
  void DisplayClientBorder(bool display) override { view_.grid.DisplayClientBorder(display); }
  void SelectionMode(int16_t mode) override { view_.grid.SelectionMode(mode); }

 private:
  // The form's handlers, not raised again while one of them runs.
  struct Relay;

  static LRESULT CALLBACK window_proc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  static LRESULT CALLBACK editor_proc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam,
                                      UINT_PTR id, DWORD_PTR self);
  LRESULT handle(UINT message, WPARAM wparam, LPARAM lparam);
  // A key in the editor: true when it was the user's key (taken).
  bool editor_key(UINT message, WPARAM wparam, LPARAM lparam);
  void editor_lost_focus(HWND to);

  // The user's actions: run, then the window shows the model.
  template <class Action>
  auto act(Action action);
  bool key_down(WPARAM key, bool alt);
  void mouse_down(POINT at);
  void mouse_up(POINT at);
  void editor_changed();
  void list_closed(bool picked);
  bool box_takes_focus(HWND to) const;

  // Showing the model: the editor over the active cell (opened, filled,
  // placed, focused as the user's hand has it), the active cell in view.
  void show_state();
  void show_editor();
  void place_editor();
  bool focus_in(HWND window) const;
  void set_editor_text(const zelkora::Text& text);
  bool editor_shows(TextView text) const;

  // Geometry, in the window's pixels.
  int scaled(int32_t pixels) const { return ::MulDiv(pixels, dpi_, 96); }
  int row_pixels(int32_t row) const;
  int col_pixels(int32_t col) const;
  int content_height() const;
  void layout_changed();
  void update_scroll_bar();
  void scroll_by(int pixels);

  // The whole window, or a row, to be drawn anew.
  void changed();
  void row_changed(int32_t row);
  // The active cell in view, its editor over it, its focus drawn.
  void active_shown();
  // The memory the window is drawn into, at least its size.
  HDC buffer(HDC window_dc);
  void make_fonts();
  HFONT font(bool bold) const { return fonts_[bold ? 1 : 0]; }
  void show_tip(POINT at);

  headless::HeadlessForm view_;
  headless::HeadlessUser user_{view_};
  std::unique_ptr<Relay> relay_;
  HWND edit_ = nullptr;
  HWND combo_ = nullptr;
  HWND combo_line_ = nullptr;  // the edit box inside it
  HWND shown_editor_ = nullptr;
  HWND editor_placed_ = nullptr;  // the editor last placed, and where
  RECT editor_place_{};
  int combo_height_ = 0;
  bool dropped_ = false;      // the list cell's list is open
  bool list_filled_ = false;  // ... and filled from ComboList
  // What the open editor shows, as far as the grid set it or read it.
  zelkora::Text shown_text_;
  bool shown_text_known_ = false;  // the cell height the list cell's box was given
  SCROLLINFO scroll_bar_{};        // as last set
  bool invalid_ = false;           // the window waits to be drawn whole
  CellRef drawn_active_{-1, -1};   // the cell whose focus was last drawn
  HDC buffer_dc_ = nullptr;        // what the window is drawn into
  HBITMAP buffer_bitmap_ = nullptr;
  SIZE buffer_size_{};
  HWND tip_ = nullptr;
  bool syncing_ = false;  // the window itself changes the editor or the focus
  std::size_t editors_opened_ = 0;
  int32_t list_item_ = -1;  // the open list's highlighted item, as the user's keys move it
  CellRef pressed_{-1, -1};
  CellRef tip_cell_{-1, -1};
  int32_t value_col_ = headless::HeadlessForm::kValueCol;
  int dpi_ = 96;
  int scroll_ = 0;  // pixels of rows above the window's top
  int wheel_ = 0;   // the wheel's turn not yet scrolled
  zelkora::Text font_name_ = u"宋体";
  float font_size_ = 9;
  HFONT fonts_[2] = {nullptr, nullptr};
  int least_row_height_ = 0;
  std::map<zelkora::Text, HBITMAP> pictures_;  // 32-bit, alpha premultiplied
  std::map<std::pair<int32_t, int32_t>, zelkora::Text> marks_;
  std::map<std::pair<int32_t, int32_t>, zelkora::Text> notes_;
};

}  // namespace zelkora::platform::win32
