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
//    the edit), for a combo cell ComboDropDown before its list is filled,
//    then CellChanging for every change of the editor's text and ComboClick
//    for an item picked from the list;
//  - Enter, Tab or a click elsewhere while editing: LeaveCell (a cancel keeps
//    the editor open, showing the cell's text as the form left it); Escape
//    puts back the text the cell had when the edit began;
//  - Space, Enter and the other keys outside an editor: KeyDown; Enter then
//    moves to the next shown row below unless the form moved the focus;
//  - a double click: DblClick; the focus leaving the grid: LostFocus.
// Events raised while the form handles another one (a message box shown
// during a leave) are not raised again.
#pragma once

#include <QMap>
#include <QStyledItemDelegate>
#include <QTableWidget>

#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/headless/headless_grid.h"

namespace zelkora::platform::qt {

class QtGridControl : public QTableWidget, public GridControl {
  Q_OBJECT

 public:
  explicit QtGridControl(QWidget* parent = nullptr);
  ~QtGridControl() override;

  // The handlers of the user's actions; null for none.
  void connect_events(GridEvents* events) { events_ = events; }
  // The state of every cell, as the control keeps it.
  const headless::MemoryGrid& cells() const { return model_; }
  // The font family the grid shows: DefaultFontName where the system has
  // it, else the system's CJK font.
  QString shown_font_family() const { return font_family_; }

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
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  class Delegate;
  friend class Delegate;

  // Drawing the model into the table.
  bool drawing() const { return model_.AutoRedraw(); }
  void draw_all();
  void draw_row(int32_t row);
  void draw_cell(int32_t row, int32_t col);
  void draw_size();
  QFont cell_font(bool bold) const;

  // Events. Each answers whether it was raised; none is raised while the
  // form handles another one.
  bool raise(const std::function<void(GridEvents&)>& event);
  // LeaveCell of the active cell; false when the form cancelled it.
  bool leave_active();
  // After a cancelled leave: the editor (opened again when it was closed)
  // shows the cell's text and has the focus.
  void keep_editing();
  void move_active(int32_t row, int32_t col);
  // The next shown row below `row` (or `row` when there is none).
  int32_t next_shown_row(int32_t row) const;
  void editor_text_changed(int32_t row, int32_t col, const QString& text);
  void editor_picked(int32_t row, int32_t col, const QString& text);

  headless::MemoryGrid model_;
  GridEvents* events_ = nullptr;
  Delegate* delegate_ = nullptr;
  QMap<QString, QIcon> icons_;
  QString font_family_;
  double font_points_ = 9;
  bool dispatching_ = false;       // a handler of the form is running
  bool programmatic_ = false;      // the control itself moves the current cell
  bool left_ = false;              // the active cell was left and not entered or edited since
  QModelIndex pressed_;            // the cell the mouse button went down on
  zelkora::Text edit_start_text_;  // the cell's text when its edit began
};

}  // namespace zelkora::platform::qt
