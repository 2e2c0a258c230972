/// One calculation form: its clsGridCell on the form's controls, with the
/// grid control's events connected to the handlers the suite's forms use (the
/// A variants, which let the form mark the items that no longer apply). Every
/// host assembles a form this way: the headless one of the demo, the `grid`
/// command and the tests, and a desktop one.
///
///   grid::FormSession form(platform, grid, title, panel, form_object);
///   form.build(63706);              // "clsBeamSteel", values at their defaults
///   host_grid.connect(&form);       // the grid's events reach the form @file
#pragma once

#include <memory>

#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/grid_control.h"

namespace zelkora::grid {
/// A calculation form's grid session: a clsGridCell connected to the grid's events.
class FormSession : public platform::GridEvents {
 public:  /// A session over the form's controls, with `platform`.
  FormSession(std::shared_ptr<const platform::Platform> platform, platform::GridControl& grid,
              platform::RichTextBox& title, platform::Panel& panel, platform::GridForm& form);
  FormSession(const FormSession&) = delete;
  FormSession& operator=(const FormSession&) = delete;

  clsGridCell& cell() { return cell_; }  ///< The clsGridCell behind the grid.

  /// Builds the grid of the layout named by catalogue text `layout`, the
  /// title box's font, and the values at their defaults.
  void build(int32_t layout);

  /// With `check` the form checks a value with its row's check expression
  /// when its cell is left (bLeaveCellCanCelA: a refused value is shown, the
  /// cell restored and the leave cancelled); without, the leave applies the
  /// group rule alone (GridCell_LeaveCellA).
  void check_values_on_leave(bool check) { check_on_leave_ = check; }

  void EnterRow() override { cell_.GridCell_EnterRow(); }
  /// Only the value column is edited; headings are locked rows.
  void BeforeEdit(int32_t row, int32_t col, bool& cancel) override;
  void CellChanging() override { cell_.GridCell_CellChanging(); }
  void LeaveCell(int32_t row, int32_t col, bool& cancel) override;
  void ComboDropDown() override { cell_.GridCell_ComboDropDown(); }
  void ComboClick() override { cell_.GridCell_ComboClickA(); }
  void Click(int32_t row, int32_t col) override { cell_.GridCell_ClickA(row, col); }
  void DblClick() override { cell_.GridCell_DblClickA(); }
  void KeyDown(int16_t& key_code, int16_t shift) override {
    cell_.GridCell_KeyDown(key_code, shift);
  }
  void LostFocus() override { cell_.GridCell_LostFocus(); }

 private:
  clsGridCell cell_;
  platform::GridControl& grid_;
  platform::RichTextBox& title_;
  platform::Panel& panel_;
  platform::GridForm& form_;
  bool check_on_leave_ = false;
};

}  // namespace zelkora::grid
