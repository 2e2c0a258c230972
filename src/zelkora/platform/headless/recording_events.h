// Grid events passed on to a form's handlers and written down, one line
// each, for comparing what two hosts raise for the same user actions:
//
//   RecordingEvents log(session);   // the form's handlers
//   host_grid.connect(&log);        // instead of &session
//   ... the user's actions ...
//   log.lines  // "EnterRow", "LeaveCell 8,3 cancel", "KeyDown 13", ...
//
// Events whose handler may cancel them are written after it ran, with its
// answer; the others before.
#pragma once

#include <string>
#include <vector>

#include "zelkora/platform/grid_control.h"

namespace zelkora::platform::headless {

class RecordingEvents : public GridEvents {
 public:
  explicit RecordingEvents(GridEvents& to) : to_(to) {}

  std::vector<std::string> lines;

  void EnterRow() override {
    lines.emplace_back("EnterRow");
    to_.EnterRow();
  }
  void BeforeEdit(int32_t row, int32_t col, bool& cancel) override {
    to_.BeforeEdit(row, col, cancel);
    lines.push_back("BeforeEdit " + cell(row, col, cancel));
  }
  void CellChanging() override {
    lines.emplace_back("CellChanging");
    to_.CellChanging();
  }
  void LeaveCell(int32_t row, int32_t col, bool& cancel) override {
    to_.LeaveCell(row, col, cancel);
    lines.push_back("LeaveCell " + cell(row, col, cancel));
  }
  void ComboDropDown() override {
    lines.emplace_back("ComboDropDown");
    to_.ComboDropDown();
  }
  void ComboClick() override {
    lines.emplace_back("ComboClick");
    to_.ComboClick();
  }
  void Click(int32_t row, int32_t col) override {
    lines.push_back("Click " + cell(row, col, false));
    to_.Click(row, col);
  }
  void DblClick() override {
    lines.emplace_back("DblClick");
    to_.DblClick();
  }
  void KeyDown(int16_t& key_code, int16_t shift) override {
    lines.push_back("KeyDown " + std::to_string(key_code));
    to_.KeyDown(key_code, shift);
  }
  void LostFocus() override {
    lines.emplace_back("LostFocus");
    to_.LostFocus();
  }

 private:
  static std::string cell(int32_t row, int32_t col, bool cancel) {
    return std::to_string(row) + "," + std::to_string(col) + (cancel ? " cancel" : "");
  }

  GridEvents& to_;
};

}  // namespace zelkora::platform::headless
