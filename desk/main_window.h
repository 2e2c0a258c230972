// The main window: the program menu of the suite in a grid (clsGridCellMain
// over the menu file). Choosing a program opens its calculation form; the
// groups open as they were when the program last ran.
#pragma once

#include <QMainWindow>

#include "program/program_menu.h"
#include "zelkora/grid/cls_grid_cell_main.h"
#include "zelkora/platform/qt/qt_grid.h"

namespace zelkora::desk {

class DeskApp;

class MainWindow : public QMainWindow, public platform::GridEvents {
  Q_OBJECT

 public:
  explicit MainWindow(DeskApp& app);
  // The grid raises no event into a window that is going (its focus leaves
  // as the window closes).
  ~MainWindow() override { grid_->connect_events(nullptr); }

  platform::qt::QtGridControl& grid() { return *grid_; }
  clsGridCellMain& menu() { return menu_; }
  // The grid row whose caption is `caption` (blanks around it ignored), or 0.
  int32_t row_of(TextView caption) const { return desk::menu_row_of(*grid_, caption); }
  // The captions of the unfolded groups, top down. The folding is kept in
  // the user's settings (section "View", key "Menu") as it changes, and a
  // new menu window opens its groups as they were.
  std::vector<Text> unfolded_groups() const { return desk::unfolded_groups(menu_, *grid_); }

  // The menu grid's events: a click or Space on a group folds or unfolds it,
  // on a program (or Enter, or a double click) opens it.
  void EnterRow() override { menu_.GridCell_EnterRow(); }
  void BeforeEdit(int32_t row, int32_t col, bool& cancel) override;
  void CellChanging() override {}
  void LeaveCell(int32_t, int32_t, bool&) override {}
  void ComboDropDown() override {}
  void ComboClick() override {}
  void Click(int32_t row, int32_t col) override;
  void DblClick() override;
  void KeyDown(int16_t& key_code, int16_t shift) override;
  void LostFocus() override { menu_.GridCell_LostFocus(); }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  // The programs whose forms this program lacks: gray, with a tooltip.
  void dim_programs_without_form();
  void open_selected(bool selected, const Text& page, const Text& key);
  void restore_folding();
  // Keeps the folding when it changed.
  void save_folding();

  DeskApp& app_;
  clsGridCellMain menu_;
  platform::qt::QtGridControl* grid_ = nullptr;
  std::vector<Text> kept_folding_;  // the unfolded groups as last kept
};

}  // namespace zelkora::desk
