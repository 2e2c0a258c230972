// A calculation form's property grid on the in-memory controls, worked as a
// user works it: each action puts the grid where the user's hand would and
// raises the events a grid control raises, in its order, to the form's
// handlers. The demo, the `grid` command and the tests drive forms this way.
//
//   HeadlessForm view;
//   grid::FormSession form(platform, view.grid, view.title, view.panel, view.form);
//   view.connect(&form);
//   form.build(63706);
//   view.enter(8);
//   view.type(u"300");
//   bool cancelled = view.leave();
//   std::cout << view.grid.render(&view.title);
#pragma once

#include <cstdint>

#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/headless/headless_grid.h"

namespace zelkora::platform::headless {

class HeadlessForm {
 public:
  // The width of the caption column that the suite's forms give the grid.
  static constexpr int32_t kLabelColWidth = 150;
  // The value column of a property grid.
  static constexpr int32_t kValueCol = 3;

  HeadlessForm() { form.label_col_width = kLabelColWidth; }
  HeadlessForm(const HeadlessForm&) = delete;
  HeadlessForm& operator=(const HeadlessForm&) = delete;

  // The handlers the grid's events go to; none, and the actions only move
  // the grid.
  void connect(GridEvents* events) { events_ = events; }

  // A click into a cell of another row: the row is entered.
  void enter(int32_t row, int32_t col = kValueCol);
  // Text typed into the active cell, replacing what it held; nothing when
  // its row is locked or the form refuses the edit (BeforeEdit).
  void type(TextView text);
  // The active cell is left; true when the form cancelled the leave.
  bool leave();
  // The list of the active cell opened, and `text` picked from it.
  void pick(TextView text);
  void key(int16_t key_code);
  // A click on a cell of the current row (no row is entered).
  void click(int32_t row, int32_t col);
  void double_click();
  void lose_focus();

  MemoryGrid grid;
  MemoryRichTextBox title;
  MemoryPanel panel;
  MemoryGridForm form;

 private:
  GridEvents* events_ = nullptr;
};

}  // namespace zelkora::platform::headless
