/// A calculation form's property grid on the in-memory controls, worked as a
/// user works it: each action puts the grid where the user's hand would and
/// raises the events a grid control raises, in its order, to the form's
/// handlers. The demo, the `grid` command and the tests drive forms this way.
///
///   HeadlessForm view;
///   grid::FormSession form(platform, view.grid, view.title, view.panel, view.form);
///   view.connect(&form);
///   form.build(63706);
///   view.enter(8);
///   view.type(u"300");
///   bool cancelled = view.leave();
///   std::cout << view.grid.render(&view.title); @file
#pragma once

#include <cstddef>
#include <cstdint>

#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/headless/headless_grid.h"

namespace zelkora::platform::headless {
/// A calculation form's grid on the in-memory controls, worked event by event.
class HeadlessForm {
 public:
  /// The width of the caption column that the suite's forms give the grid.
  static constexpr int32_t kLabelColWidth = 150;
  /// The value column of a property grid.
  static constexpr int32_t kValueCol = 3;

  HeadlessForm() { form.label_col_width = kLabelColWidth; }
  HeadlessForm(const HeadlessForm&) = delete;
  HeadlessForm& operator=(const HeadlessForm&) = delete;

  /// The handlers the grid's events go to; none, and the actions only move
  /// the grid.
  void connect(GridEvents* events) { events_ = events; }

  /// A click into a cell of another row: the row is entered.
  void enter(int32_t row, int32_t col = kValueCol);
  /// Text typed into the active cell, replacing what it held; nothing when
  /// its row is locked or the form refuses the edit (BeforeEdit).
  void type(TextView text);
  /// The active cell is left; true when the form cancelled the leave.
  bool leave();
  /// The list of the active cell opened, and `text` picked from it.
  void pick(TextView text);
  void key(int16_t key_code);  ///< Raises KeyDown with `key_code`.
  /// A click on a cell of the current row (no row is entered).
  void click(int32_t row, int32_t col);
  /// A click on the grid past its last row or column: an open list closes,
  /// and the grid takes the focus from an open editor, as a click past the
  /// editor does.
  void click_empty();
  void double_click();  ///< Raises DblClick.
  void lose_focus();    ///< Raises LostFocus.

  MemoryGrid grid;          ///< The grid.
  MemoryRichTextBox title;  ///< The title box.
  MemoryPanel panel;        ///< The panel.
  MemoryGridForm form;      ///< The form object.

 private:
  friend class HeadlessUser;
  GridEvents* events_ = nullptr;
};

/// A user's hand on the headless form, in whole actions: a click, keys typed,
/// a key that ends or moves an edit, a pick from an open list. Each raises
/// the events the desktop grid raises for it, in the desktop grid's order, with
/// an editor that opens and closes where the desktop grid's does; a test
/// compares the two hosts action by action.
///
///   HeadlessUser user(view);
///   user.click(8, 3);          // LeaveCell of the active cell, EnterRow, Click
///   user.type(u"300");         // KeyDown, BeforeEdit, CellChanging per key
///   user.key(HeadlessUser::kEnter);
class HeadlessUser {
 public:  /// The keys a user presses.
  enum Key { kEnter, kTab, kBackTab, kEscape, kSpace, kF2, kF4, kUp, kDown, kAltDown };

  explicit HeadlessUser(HeadlessForm& view) : view_(view) {}  ///< A hand on `view`.

  /// A click on a cell: another cell is left first (a refusal keeps the
  /// editor and ends the click); a click on the active value cell edits it.
  /// A click on the cell being edited, past its editor, gives the grid the
  /// focus: the editor stays open, its text no longer selected, and keys
  /// typed are lost until an arrow key gives the editor the focus back.
  void click(int32_t row, int32_t col);
  /// A click on the grid past its last row or column: an open list closes,
  /// and the grid takes the focus from an open editor, as a click past the
  /// editor does.
  void click_empty();
  /// Characters typed one key each: outside an editor a key starts the edit
  /// of the active cell (Space does not), inside it every key changes the text.
  void type(TextView text);
  void key(Key key);  ///< A key, as the desktop grid handles it.
  /// `text` chosen from the open list of the cell being edited (its keys:
  /// list_key).
  void pick(TextView text);
  /// Ctrl+A in the open editor: its whole text selected, the next key
  /// replaces it.
  void select_all();
  /// Ctrl+V in the open editor: `text` replaces the selection, one change.
  void paste(TextView text);
  /// The focus goes to another control of the window (a filter box): the
  /// cell whose editor has the focus is left (a refusal keeps its editor and
  /// the focus: false), or the grid, which had the focus (over an open
  /// editor too, which stays open), raises LostFocus. An open list closes
  /// first (the click that closes it goes on to the other control).
  bool focus_away();
  /// A click on a control that takes no focus (a tool button): an open list
  /// closes.
  void click_outside() {
    if (list_open()) close_list();
  }
  /// A box the form shows takes the focus: an open list closes, the editor
  /// stays. When the box closes the window gives the focus back to the grid
  /// when it had it (`grid_had_focus`), and the grid to its open editor.
  /// The editor that had the focus has its text selected whole again (the
  /// cell drawn anew); one the grid held the focus over keeps its caret.
  void box_shown(bool grid_had_focus) {
    if (list_open_) close_list();
    if (!grid_had_focus) return;
    if (editor_focused_) selected_ = true;
    editor_focused_ = true;
  }
  /// A key the grid does not handle itself (Ctrl+Z, say), outside an
  /// editor: KeyDown.
  void other_key(int16_t key_code);
  bool editing() const { return editing_; }  ///< Whether an editor is open.
  /// Whether the open editor's list is open: it takes the keys.
  bool list_open() const { return editing_ && list_open_; }
  /// Whether the open editor's text is selected (a copy takes it whole).
  bool selected() const { return editing_ && selected_; }
  /// Whether the open editor has the focus (else the grid has it).
  bool editor_focused() const { return editing_ && editor_focused_; }
  /// How many editors have opened: an editor that opens takes the focus of
  /// the window, also when the form opens it (a paste from a toggle box).
  std::size_t editors_opened() const { return editors_opened_; }

  /// What the form does with the grid on the user's behalf (the desktop
  /// grid's edit_cell, leave_cell and type_into, and a current cell set by
  /// the form): the same events as the user's own actions.
  /// The cell made active (the active one left first) with its editor open;
  /// false when the leave was cancelled or the edit refused.
  bool edit_cell(int32_t row, int32_t col);
  /// The active cell left as a click elsewhere would; false when refused (the
  /// editor stays open).
  bool leave_cell();
  /// `text` entered into the cell as if typed: made active, edited, the text
  /// taken (one CellChanging) and left. False when a step was refused or the
  /// text is longer than kMaxTypedLength.
  bool type_into(int32_t row, int32_t col, TextView text);
  /// The cell made the active one by the form: an open editor closes
  /// unchecked, EnterRow when the row changes.
  void move_to(int32_t row, int32_t col);

  /// The longest value a cell's editor takes as typed or pasted.
  static constexpr std::size_t kMaxTypedLength = 1024;

 private:
  bool raise_leave();
  /// What the form wrote into the active cell since this user's last action
  /// (or a cell the form made active) is what Escape goes back to.
  void take_form_writes();
  void make_active(int32_t row, int32_t col);
  bool begin_edit();
  void change_text(TextView text);
  /// After a leave by Tab, Shift+Tab (step 1, -1) or Enter: the next
  /// editable row, its editor open; Enter goes on to the next shown row.
  void advance(CellRef from, int step, bool enter);
  /// Up and Down outside an editor: the next shown row in the column they
  /// move in (kept across a merged range, whose first cell becomes active).
  void move_row(int step);
  /// A key while the cell's list is open: Up and Down move its highlight
  /// (from none to the first item), Enter, F4 and Alt+Down pick the
  /// highlighted item (with none, only close the list), Escape closes it;
  /// other keys do nothing.
  void list_key(Key key);
  /// The list closes (a pick, a key, a click elsewhere): the editor's whole
  /// text is selected, the next key replaces it.
  void close_list() {
    list_open_ = false;
    selected_ = true;
  }
  GridEvents* events() const { return view_.events_; }

  HeadlessForm& view_;
  std::size_t max_length_ = kMaxTypedLength;  ///< the open editor's
  bool editing_ = false;
  bool selected_ = false;       ///< the editor's text is selected: a key replaces it
  bool left_ = false;           ///< the active cell was left and not entered or edited since
  zelkora::Text entered_text_;  ///< the active cell's text when it was entered
  /// (or as the form last wrote it), what Escape gives back
  CellRef entered_at_{-1, -1};  ///< the cell entered_text_ is of
  zelkora::Text known_text_;    ///< its text as this user last saw or wrote it
  CellRef cursor_{-1, -1};      ///< where Up and Down last went, their column kept
  bool list_open_ = false;      ///< the editor's list is open: it takes the keys
  int32_t list_item_ = -1;      ///< ... the item it highlights, -1 none
  bool editor_focused_ = true;  ///< the open editor has the focus, not the grid
  std::size_t editors_opened_ = 0;
};

}  // namespace zelkora::platform::headless
