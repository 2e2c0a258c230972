// For the tests of the property grid: a calculation form with the headless
// controls and its clsGridCell, and the rows of the layout "clsBeamSteel".
#pragma once

#include <memory>

#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/form_session.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/headless/headless_grid.h"

namespace zelkora::grid::test_support {

// "clsBeamSteel" and some of its rows (item in brackets).
inline constexpr int32_t kBeamSteel = 63706;
inline constexpr int32_t kRowBasics = 1;     // heading 基本信息
inline constexpr int32_t kRowGrade = 5;      // [12] 纵筋的强度等级, default HRB400
inline constexpr int32_t kRowSizes = 7;      // heading 截面尺寸
inline constexpr int32_t kRowWidth = 8;      // [10] b, default 250, check S>0
inline constexpr int32_t kRowForces = 12;    // heading 内力设计值, rows 13-15
inline constexpr int32_t kRowTorsion = 15;   // [19] T, event row
inline constexpr int32_t kRowRebar = 16;     // heading 配筋
inline constexpr int32_t kRowBars = 17;      // [15] group 通长纵向钢筋, folded
inline constexpr int32_t kRowCount = 18;     // [16] member 根数 n
inline constexpr int32_t kRowDiameter = 19;  // [17] member 直径 d
inline constexpr int32_t kRowRange = 20;     // [7] group 纵筋的直径范围, folded
inline constexpr int32_t kRowLegs = 23;      // [22] 箍筋的肢数 n, check I>=2
inline constexpr int32_t kRowRatio = 25;     // [24] As'/As
inline constexpr int32_t kRowOptions = 26;   // heading 选项, folded
inline constexpr int32_t kRowName = 31;      // [0] 工程名称
inline constexpr int32_t kBeamSteelRows = 31;

// The headless form session of a test: a fresh headless platform whose
// message box records what it shows, the form's in-memory controls, and its
// clsGridCell with the grid's events connected.
struct TestForm {
  std::shared_ptr<platform::Platform> platform = platform::Platform::headless();
  std::shared_ptr<platform::headless::RecordingMessageBox> messages =
      std::make_shared<platform::headless::RecordingMessageBox>();
  platform::headless::HeadlessForm view;
  platform::headless::MemoryGrid& grid = view.grid;
  platform::headless::MemoryRichTextBox& title = view.title;
  platform::headless::MemoryPanel& panel = view.panel;
  platform::headless::MemoryGridForm& form = view.form;
  std::unique_ptr<FormSession> session;
  clsGridCell* cell = nullptr;

  TestForm() { platform->messages = messages; }

  // Makes the object (now, so that it reads the settings as they are) and
  // builds the grid of the layout, with the values at their defaults.
  clsGridCell& build(int32_t layout = kBeamSteel) {
    make();
    session->build(layout);
    return *cell;
  }
  clsGridCell& make() {
    session = std::make_unique<FormSession>(platform, grid, title, panel, form);
    view.connect(session.get());
    cell = &session->cell();
    return *cell;
  }

  // The events of a user, as the grid control raises them.
  void enter(int32_t row, int32_t col = 3) { view.enter(row, col); }
  void type(TextView text) { view.type(text); }
  // True when the leave was cancelled.
  bool leave() { return view.leave(); }
  bool enter_type_leave(int32_t row, TextView text) {
    enter(row);
    type(text);
    return leave();
  }

  Text value(int32_t row) const { return grid.Text(row, 3); }
  bool bold(int32_t row) const { return grid.FontBold(row, 3); }
  bool shown(int32_t row) const { return grid.RowHeight(row) > 0; }
};

}  // namespace zelkora::grid::test_support
