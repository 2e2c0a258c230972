// The grid control over a Qt table: the property grid of a calculation form
// and the program menu on a real widget.
//
// The cells' state is kept by an in-memory grid, the model every rule of the
// interface comes from (sizes, merged ranges, pictures, locked rows, the
// subscript errors), and shown by the table: with AutoRedraw on each change is
// drawn at once, with it off the table is brought up to date by Refresh. Rows
// and columns of the table are those of the grid, row 0 and column 0 (the
// fixed ones) included; the table's own headers are not shown.
//
// The user's actions reach the GridEvents given to connect_events(), in the
// order a grid control raises them:
//  - a click on another cell: LeaveCell of the current cell (a cancel keeps
//    the current cell, its editor and the focus), EnterRow when the row
//    changed, then Click when the button is released on the same cell;
//  - typing or F2 or a double click in a cell: BeforeEdit (a cancel refuses
//    the edit), then CellChanging for every change of the editor's text;
//    for a list cell ComboDropDown when its list is about to open (F4,
//    Alt+Down, its button), and ComboClick for an item picked from the open
//    list (an editor closed without a pick is left as any other);
//  - Enter, Tab, Shift+Tab, a click elsewhere or the focus going to another
//    window while editing: LeaveCell (a cancel keeps the editor open,
//    showing the cell's text as the form left it); Escape puts back the text
//    the cell had when it was entered;
//  - Space, Enter and the other keys outside an editor: KeyDown;
//  - Tab and Shift+Tab (after the leave) move to the next or previous row
//    whose value can be edited (shown and not locked) and open its editor;
//    Enter does the same downwards after its KeyDown, unless the form moved
//    the focus, and goes to the next shown row when no editable one follows;
//    F4 or Alt+Down opens the editor of a list cell with its list open.
//  - a double click: DblClick; the focus leaving the grid: LostFocus.
// Events raised while the form handles another one (a message box shown
// during a leave) are not raised again.
#pragma once

#include <QFont>
#include <QMap>
#include <QPoint>
#include <QStyledItemDelegate>
#include <QTableWidget>

#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/headless/headless_grid.h"

namespace zelkora::platform::qt {

class QtGridControl : public QTableWidget, public GridControl {
  Q_OBJECT

 public:
  // The longest value a cell's editor takes as typed or pasted.
  static constexpr int kMaxTypedLength = static_cast<int>(headless::HeadlessUser::kMaxTypedLength);

  explicit QtGridControl(QWidget* parent = nullptr);
  ~QtGridControl() override;

  // The handlers of the user's actions; null for none.
  void connect_events(GridEvents* events) { events_ = events; }
  // The state of every cell, as the control keeps it.
  const headless::MemoryGrid& cells() const { return model_; }
  // The font family the grid shows: DefaultFontName where the system has
  // it, else the system's CJK font.
  QString shown_font_family() const { return font_family_; }

  // The column Tab, Shift+Tab and Enter move in from row to row (the value
  // column of a property grid); -1, the default: the active cell's column.
  void value_column(int32_t col) { value_col_ = col; }
  // The next row after `row` (`step` 1) or before it (-1) whose cell in
  // `col` is shown and not locked, or -1.
  int32_t next_editable_row(int32_t row, int32_t col, int step) const {
    return model_.next_editable_row(row, col, step);
  }
  // Makes the cell active, as a click on it would (the active cell is left
  // first), and opens its editor as F2 does. False when the leave was
  // cancelled or the edit refused.
  bool edit_cell(int32_t row, int32_t col);
  // Leaves the active cell as a click elsewhere would (LeaveCell, raised
  // once): a refusal keeps its editor open and answers false; otherwise an
  // open editor closes. For a form about to save, calculate, undo or close.
  bool leave_cell();
  // Enters `text` into the cell as if typed: the cell is made active and
  // edited, takes the text (CellChanging) and is left. False when any step
  // was refused (a refused value keeps its editor open) or the text is
  // longer than kMaxTypedLength (nothing happens then).
  bool type_into(int32_t row, int32_t col, const QString& text);
  // Shows only the rows for which kept[row] is true (rows the grid has
  // folded away show too, at the height of the others), or, with an empty
  // vector, the rows as the grid has them.
  void show_only(std::vector<bool> kept);
  bool filtered() const { return model_.filtered(); }
  // Whether a cell's editor is open.
  bool editing() const { return state() == QAbstractItemView::EditingState; }
  bool row_shown(int32_t row) const { return model_.row_shown(row); }
  // Marks a cell, a refused value: drawn on a ground of the palette's base
  // tinted red, `note` its tooltip and part of its description to a screen
  // reader. An empty note clears the mark.
  void mark_cell(int32_t row, int32_t col, const QString& note);
  bool marked(int32_t row, int32_t col) const { return marks_.contains({row, col}); }
  // A note shown as the cell's tooltip (a refusal's mark comes first; a
  // cell without either shows its whole text when the column cuts it).
  void note_cell(int32_t row, int32_t col, const QString& note);
  // What a screen reader is told of a cell: its name (the caption of a
  // value) and description ("值：" and the value, a refusal, the help).
  void describe_cell(int32_t row, int32_t col, const QString& name, const QString& description);
  // Lets the user set the width of column `col` by dragging its right edge
  // (wherever it shows between two cells) or fit it to its texts by a double
  // click there: never narrower than `least`, nor so wide that the columns
  // right of it get less than `least`. The width becomes the column's
  // (ColWidth) and is told by column_width_chosen. -1: no column.
  void resizable_column(int32_t col, int least = 40);
  // Where the edge of the resizable column is: `at` (viewport) within a few
  // pixels of it, in a row where it shows.
  bool on_column_edge(QPoint at) const;

 signals:
  void column_width_chosen(int col, int width);

 public:
  // ---- GridControl ----
  bool Move(int32_t left, int32_t top, int32_t width, int32_t height) override;
  bool Visible() const override { return isVisible(); }
  void Visible(bool visible) override { setVisible(visible); }

  int32_t Rows() const override { return model_.Rows(); }
  void Rows(int32_t rows) override;
  int32_t Cols() const override { return model_.Cols(); }
  void Cols(int32_t cols) override;
  int32_t RowHeight(int32_t row) const override { return model_.RowHeight(row); }
  void RowHeight(int32_t row, int32_t height) override;
  int32_t DefaultRowHeight() const override { return model_.DefaultRowHeight(); }
  void DefaultRowHeight(int32_t height) override;
  int32_t ColWidth(int32_t col) const override { return model_.ColWidth(col); }
  void ColWidth(int32_t col, int32_t width) override;

  zelkora::Text Text(int32_t row, int32_t col) const override { return model_.Text(row, col); }
  void Text(int32_t row, int32_t col, TextView text) override;
  int16_t CellType(int32_t row, int32_t col) const override { return model_.CellType(row, col); }
  void CellType(int32_t row, int32_t col, int16_t type) override;
  bool FontBold(int32_t row, int32_t col) const override { return model_.FontBold(row, col); }
  void FontBold(int32_t row, int32_t col, bool bold) override;
  uint32_t ForeColor(int32_t row, int32_t col) const override { return model_.ForeColor(row, col); }
  void ForeColor(int32_t row, int32_t col, uint32_t colour) override;
  uint32_t BackColor(int32_t row, int32_t col) const override { return model_.BackColor(row, col); }
  void BackColor(int32_t row, int32_t col, uint32_t colour) override;
  int16_t Alignment(int32_t row, int32_t col) const override { return model_.Alignment(row, col); }
  void Alignment(int32_t row, int32_t col, int16_t alignment) override;
  zelkora::Text Tag(int32_t row, int32_t col) const override { return model_.Tag(row, col); }
  void Tag(int32_t row, int32_t col, TextView tag) override { model_.Tag(row, col, tag); }
  std::vector<zelkora::Text> ComboList(int32_t row, int32_t col) const override {
    return model_.ComboList(row, col);
  }
  void ComboList(int32_t row, int32_t col, const std::vector<zelkora::Text>& items) override;

  bool Locked(int32_t row) const override { return model_.Locked(row); }
  void Locked(int32_t row, bool locked) override;
  void Merge(int32_t row, int32_t col1, int32_t col2) override;

  void AddPicture(const Picture& picture, TextView key) override;
  void SetImage(int32_t row, int32_t col, TextView key) override;
  zelkora::Text ImageKey(int32_t row, int32_t col) const override {
    return model_.ImageKey(row, col);
  }

  bool AutoRedraw() const override { return model_.AutoRedraw(); }
  void AutoRedraw(bool redraw) override;
  void Refresh() override;

  CellRef ActiveCell() const override { return model_.ActiveCell(); }
  void ActiveCell(int32_t row, int32_t col) override;
  int32_t BottomRow() const override;
  void SetFocus(int32_t row, int32_t col) override;

  void DefaultFontName(TextView name) override;
  void DefaultFontSize(float size) override;
  void BackColorBkg(uint32_t colour) override;
  void GridColor(uint32_t colour) override;
  void CellBorderColorFixed(uint32_t colour) override { model_.CellBorderColorFixed(colour); }
  void CellBorderColor(uint32_t colour) override { model_.CellBorderColor(colour); }
  void Appearance(int16_t appearance) override;
  void EnterKeyMoveTo(int16_t direction) override { model_.EnterKeyMoveTo(direction); }
  void ExtendLastCol(bool extend) override;
  void DisplayFocusRect(bool display) override;
  void ReadOnlyFocusRect(int16_t style) override { model_.ReadOnlyFocusRect(style); }
  void DisplayClientBorder(bool display) override;
  void SelectionMode(int16_t mode) override;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  // Up and Down go from the active cell by the grid's own rule (the view's
  // current cell may be a merged range's first while another is active).
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  // Typing never moves to a row whose text begins with the keys (the view's
  // own search): keys go to the cell they are typed in, or nowhere.
  void keyboardSearch(const QString& /*search*/) override {}

 private:
  class Delegate;
  friend class Delegate;

  // Drawing the model into the table.
  bool drawing() const { return model_.AutoRedraw(); }
  void draw_all();
  void draw_row(int32_t row);
  void draw_row_height(int32_t row);
  void draw_cell(int32_t row, int32_t col);
  void draw_size();
  // The cells' fonts, plain and bold, and the height a row needs at least:
  // made once per family and size (fonts_changed), not per cell.
  const QFont& cell_font(bool bold) const { return fonts_[bold ? 1 : 0]; }
  void fonts_changed();
  // A change: drawn at once while drawing is on, else kept for Refresh.
  // `col` -1: the whole row (its height, spans and every cell).
  void stale(int32_t row, int32_t col = -1);
  void redraw_row(int32_t row);
  void redraw_cell(int32_t row, int32_t col);
  void redraw_all();

  // Events. Each answers whether it was raised; none is raised while the
  // form handles another one.
  bool raise(const std::function<void(GridEvents&)>& event);
  // LeaveCell of the active cell; false when the form cancelled it.
  bool leave_active();
  // After a cancelled leave: the editor (opened again when it was closed)
  // shows the cell's text and has the focus.
  void keep_editing();
  // The open editor of the cell just left goes, unchecked.
  void drop_editor();
  void move_active(int32_t row, int32_t col);
  // After the active cell was left by Tab, Shift+Tab (`step` 1, -1) or
  // Enter (`enter`): the next editable row, its editor open.
  void advance(CellRef from, int step, bool enter);
  // Whether a modal box (one the form shows) has the focus.
  bool focus_in_box() const;
  // F4, Alt+Down: the editor of a list cell with its list open.
  void open_list();
  int32_t shown_height() const;
  void editor_text_changed(int32_t row, int32_t col, const QString& text);
  void editor_picked(int32_t row, int32_t col, const QString& text);
  // The user's width of the resizable column, kept within its bounds.
  void set_user_width(int width);
  // The width the texts of the resizable column's shown rows need.
  int fitting_width() const;

  headless::MemoryGrid model_;
  GridEvents* events_ = nullptr;
  Delegate* delegate_ = nullptr;
  QMap<QString, QIcon> icons_;
  QString font_family_;
  double font_points_ = 9;
  QFont fonts_[2];  // plain, bold
  int32_t least_row_height_ = 0;
  bool dispatching_ = false;     // a handler of the form is running
  bool programmatic_ = false;    // the control itself moves the current cell
  bool left_ = false;            // the active cell was left and not entered or edited since
  QModelIndex pressed_;          // the cell the mouse button went down on
  bool pressed_active_ = false;  // ... which was the active cell
  QPoint pressed_at_;            // ... where on the screen
  zelkora::Text entered_text_;   // the active cell's text when it was entered
  CellRef entered_at_{-1, -1};   // the cell entered_text_ is of
  CellRef cursor_{-1, -1};       // where Up and Down last went, their column kept
  int32_t value_col_ = -1;
  int32_t resizable_col_ = -1;
  int least_width_ = 40;
  bool resizing_ = false;        // the edge of the resizable column is being dragged
  int grip_ = 0;                 // where on the edge it was taken
  std::vector<uint64_t> stale_;  // per row, the columns changed while drawing was off
  bool stale_all_ = false;       // ... or the size or the font
  QMap<QPair<int32_t, int32_t>, QString> marks_;
  QMap<QPair<int32_t, int32_t>, QString> notes_;
  QMap<QPair<int32_t, int32_t>, QPair<QString, QString>> descriptions_;
};

}  // namespace zelkora::platform::qt
