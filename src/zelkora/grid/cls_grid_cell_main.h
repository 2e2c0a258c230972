/// clsGridCellMain: the program menu grid of the suite's main form.
///
/// The menu is an INI file (the shipped one is resources/ZK_PROMENU.INI):
/// sections [1], [2], ... one per group, read up to the first whose key "0"
/// (the group's caption) is empty, at most 99; in each, keys 1, 2, ... the
/// programs, up to the first empty value, at most 99; then [Others], whose
/// caption is added even when empty. A program is "group|program" or
/// "group|program|shown caption":
/// @code{.unparsed}
///   [1]
///   0=基本构件
///   1=基本构件|弯矩                                  shows 弯矩
///   16=基本构件|柱正截面承载力计算|正截面承载力     shows 正截面承载力
/// @endcode
///   zelkora::clsGridCellMain menu;
///   menu.GridCell(&grid);                   // the main form's grid control
///   menu.tProMenuIniFile(u"/opt/zelkora/ZK_PROMENU.INI");
///   menu.GridCell_Initialize();
///   Text page, key;
///   if (menu.GridCell_Click(page, key)) open(page, key);  // "基本构件", "弯矩"
///
/// The grid is built like the property grid of clsGridCell: one row
/// per menu line, the groups as heading rows with "+"/"-" pictures, the page
/// key and the key of a row in the Tags of its columns 0 and 1. Group lines
/// carry the kind -10 of a collapsed heading, so the menu opens with its
/// groups folded; a click or the Space key on a group unfolds it. Entering an
/// entry row highlights its caption (the system's highlight colours) until
/// another row is entered or the grid loses the focus. @file
#pragma once

#include <memory>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/grid_control.h"

namespace zelkora {
/// The program menu of the suite shown in a property grid.
class clsGridCellMain {
 public:
  /// Kinds of menu lines.
  static constexpr int32_t kGroupLine = -10;
  static constexpr int32_t kEntryLine = 100;  ///< a program entry
  /// One line of the menu file.
  struct MenuLine {
    Text text;                  ///< The line's text.
    int32_t kind = kEntryLine;  ///< kGroupLine or kEntryLine.
    bool selectable = false;    ///< entries
    Text page_key;              ///< the group caption
    Text key;                   ///< the program's name
    Text caption;               ///< what the grid shows
  };
  /// @{ Starts with the current platform bundle, or with the one given.
  clsGridCellMain();
  explicit clsGridCellMain(std::shared_ptr<const platform::Platform> platform);  /// @}
  ~clsGridCellMain();
  clsGridCellMain(const clsGridCellMain&) = delete;
  clsGridCellMain& operator=(const clsGridCellMain&) = delete;

  platform::GridControl* GridCell() const { return grid_; }     ///< The grid control.
  void GridCell(platform::GridControl* grid) { grid_ = grid; }  ///< Sets the grid.
  void tProMenuIniFile(TextView path) { menu_file_ = path; }    ///< Sets the menu file's path.
  void lCurrentRow(int32_t row) { current_row_ = row; }         ///< Sets the current row.
  int32_t lCurrentRow() const { return current_row_; }          ///< The current row.

  /// Reads the menu file and builds the grid (a grid must be set).
  void GridCell_Initialize();
  /// The entry of the active row: true with its page key and key. A group row
  /// toggles and answers false; row 0 or no row answers false.
  bool GridCell_Click(Text& tPageKey, Text& tKey);
  /// Space acts as a click. Enter on the lowest shown row moves the focus to
  /// row 0 of the active column. Other keys answer false.
  bool GridCell_KeyDown(int16_t& KeyCode, int16_t Shift, Text& tPageKey, Text& tKey);
  void GridCell_EnterRow();   ///< Highlights the active row and makes it the current one.
  void GridCell_LostFocus();  ///< Takes the highlight away.

  /// Appends a menu line unless `text` is empty; true (stop) when it is.
  bool bAddMenuLine(TextView text, int32_t kind);

  /// The menu as read from its file: line n is grid row n (element 0 unused).
  const std::vector<MenuLine>& menu_lines() const { return lines_; }

 private:
  /// Reads the menu file into the lines (GridCell_Initialize does this first).
  void read_menu();
  void toggle_group(int32_t row, bool expand);
  void highlight(int32_t row, bool on);

  std::unique_ptr<clsCharacter> character_;
  platform::GridControl* grid_ = nullptr;
  Text menu_file_;
  int32_t current_row_ = 0;
  int32_t highlighted_row_ = 0;
  int32_t row_height_ = 0;
  std::vector<MenuLine> lines_;  ///< menu line n is grid row n (element 0 unused)
};

}  // namespace zelkora
