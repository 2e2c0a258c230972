// The main window: the program menu of the suite in a grid (clsGridCellMain
// over the menu file), 文件 ▸ 退出 and 帮助 ▸ 关于, and a status bar.
// Choosing a program opens its calculation form; the groups open as they
// were when the program last ran (the settings' section "View", key
// "Menu").
#pragma once

#include <memory>

#include "program/program_menu.h"
#include "win32desk/frame_window.h"
#include "zelkora/grid/cls_grid_cell_main.h"
#include "zelkora/platform/win32gui/win32_grid.h"

namespace zelkora::win32desk {

class DeskApp;

class MainWindow : public FrameWindow, public platform::GridEvents {
 public:
  enum Command { kQuit = 1, kAbout = 2 };

  explicit MainWindow(DeskApp& app);
  ~MainWindow() override;

  platform::win32::Win32GridControl& grid() { return *grid_; }
  // The grid row whose caption is `caption` (blanks around it ignored), or 0.
  int32_t row_of(TextView caption) const { return desk::menu_row_of(*grid_, caption); }

  // The menu grid's events: a click or Space on a group folds or unfolds it,
  // on a program (or Enter, or a double click) opens it.
  void EnterRow() override { menu_.GridCell_EnterRow(); }
  void BeforeEdit(int32_t, int32_t, bool& cancel) override { cancel = true; }
  void CellChanging() override {}
  void LeaveCell(int32_t, int32_t, bool&) override {}
  void ComboDropDown() override {}
  void ComboClick() override {}
  void Click(int32_t row, int32_t col) override;
  void DblClick() override;
  void KeyDown(int16_t& key_code, int16_t shift) override;
  void LostFocus() override { menu_.GridCell_LostFocus(); }

 protected:
  LRESULT handle(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void layout();
  void dim_programs_without_form();
  void open_selected(bool selected, const Text& key);
  std::vector<Text> unfolded_groups() const { return desk::unfolded_groups(menu_, *grid_); }
  void restore_folding();
  void save_folding();

  DeskApp& app_;
  clsGridCellMain menu_;
  std::unique_ptr<platform::win32::Win32GridControl> grid_;
  HWND status_ = nullptr;
  std::vector<Text> kept_folding_;
};

}  // namespace zelkora::win32desk
