/// clsGridCell: the property grid of a calculation form.
///
/// The object holds one clsCharacter, one clsErrChr and one clsLoadSave, made
/// when it is made and released, in that same order, when it ends.
///
/// A form's life with its grid:
///
///   zelkora::clsGridCell cell;
///   cell.lInterfaceResID(63706);                        // layout "clsBeamSteel"
///   cell.GridCell_InitializeA(&grid, &title, &panel, &form);
///   cell.LoadDefaultEnter(false);                       // values start at their defaults
///   // the grid control's events, forwarded by the form:
///   cell.GridCell_EnterRow();                           // title box: caption and help
///   cell.GridCell_CellChanging();                       // the item takes the cell's text
///   bool cancel = false;
///   cell.GridCell_LeaveCellA(row, col, cancel);         // group rule, bold, ControlEnableA
///   if (!cell.bLeaveCellCanCelA()) calculate(cell.tGetText(10));
///   Text add;
///   cell.bLoadOrSaveData(u"Save", u"/p/beam.zks", u"clsBeamSteel", {}, add); @file
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/grid_control.h"

namespace zelkora {

namespace grid {
struct RowTables;
struct ItemTables;
struct Tables;
}  // namespace grid
/// The property grid of a calculation form.
class clsGridCell {
 public:
  clsGridCell();  ///< Uses the current platform bundle.
  explicit clsGridCell(std::shared_ptr<const platform::Platform> platform);  ///< Uses `platform`.
  ~clsGridCell();
  clsGridCell(const clsGridCell&) = delete;
  clsGridCell& operator=(const clsGridCell&) = delete;

  // ---- Descriptors and layouts ----
  //
  // The rows come from a layout (a resource file layouts/<name>.txt, a row a
  // line: the item, -1 for a heading, and the catalogue id of the row's
  // property descriptor of six fields, negative for a row shown collapsed),
  // named by the catalogue text
  // lInterfaceResID, or from the form itself (LetGridCellText). Row tables are
  // indexed 1..R, item tables 0..lMax; faults name the layout and the line.
  //
  //   grid.lInterfaceResID(63706);   // "clsBeamSteel"
  //   grid.GetTextResID();           // reads the layout once
  //   std::vector<Text> checks;
  //   grid.GetCheckSign(checks);     // checks[item]
  /// The catalogue id of the layout's name.
  int32_t lInterfaceResID() const { return interface_res_id_; }
  void lInterfaceResID(int32_t id) { interface_res_id_ = id; }  ///< Sets the layout's id.

  /// Reads the layout named by catalogue text lInterfaceResID into the row
  /// tables (item index, descriptor text, event flag), R and lMax. An id
  /// outside the layout names (grid/layout.h), a missing name text or layout
  /// throws Fault(MissingResource).
  void ReadLayoutResource();
  /// Splits the descriptor of every row into kind, caption, cell, list,
  /// default and check, and sizes the item tables to 0..lMax (empty texts,
  /// clear hidden marks).
  void SplitRowDescriptors();
  /// The form's own rows instead of a layout: texts[1..lU] are descriptors
  /// with a seventh field, the item index; bEvent[1..lU] the event flags.
  /// Sets R = lU and lMax, splits the rows and sizes the item tables.
  void LetGridCellText(const std::vector<Text>& texts, const std::vector<bool>& bEvent, int32_t lU,
                       int32_t lMax);
  /// Reads the layout unless rows are already there (once per object), then
  /// replaces the caption, list and check tables by tables indexed by item.
  void GetTextResID();

  /// @{ Copies of the tables: by row (1..R), or by item (0..lMax) for the caption,
  /// list and check tables after GetTextResID.
  void GetEventRow(std::vector<bool>& X) const;
  void GetResID(std::vector<int32_t>& X) const;
  void GetListRes(std::vector<int32_t>& X) const;
  void GetCheckSign(std::vector<Text>& X) const;
  int32_t lMaxTextIndex() const;  /// @}
  /// R, the number of rows (1..R) of the form; 0 before the descriptors are
  /// split (lInterfaceResID and GetTextResID, or the form's own rows).
  int32_t lRowCount() const;

  /// The text row lRow (1..R) starts with (grid::default_text, with the row's
  /// list and its item's current text). Fault(IndexOutOfRange) for a row
  /// outside 1..R or before the descriptors are split.
  Text tDefaultText(int32_t lRow) const;

  /// The library's own access to the object's state; defined in
  /// grid/grid_cell_internals.h, which is not installed.
  struct Internals;

  // ---- Grid construction ----
  //
  // The controls are the form's: the object keeps plain pointers to them and
  // never owns them, so the form keeps them alive as long as it forwards
  // events here (or sets the pointers back to null first). Every operation
  // that needs a control it has not been given does nothing (reads answer
  // empty, 0 or false), except GridCell_Initialize, which needs the grid.
  //
  // The grid has R + 1 rows and 4 columns: row 0 the header (height 0),
  // column 0 hidden, 1 the "+"/"-" picture, 2 the caption (LabelColWidth +
  // 15), 3 the value (the rest). Member rows of a group (kind 1000 and up)
  // show their caption two blanks in. The row height is the user's option
  // "cboOpt11", read once when the object is made and used as it stands.
  //
  // The caption column width comes from the form object (LabelColWidth of
  // platform::GridForm) when the grid is built; without a form object the
  // width set here is used. Without a form object the calls the grid makes on
  // the form (Let_Text, ControlEnable, bDisplayPicture) are left out.

  platform::GridControl* GridCell() const { return grid_; }         ///< The grid control.
  void GridCell(platform::GridControl* grid) { grid_ = grid; }      ///< Sets the grid.
  platform::RichTextBox* GridTitle() const { return title_; }       ///< The title box.
  void GridTitle(platform::RichTextBox* title) { title_ = title; }  ///< Sets the title box.
  platform::Panel* pnlM() const { return panel_; }                  ///< The panel that holds both.
  void pnlM(platform::Panel* panel) { panel_ = panel; }             ///< Sets the panel.
  /// @{ The form's object: ClsSubProgram and cZcx name the same one.
  platform::GridForm* cZcx() const { return form_; }
  void cZcx(platform::GridForm* form) { form_ = form; }
  void ClsSubProgram(platform::GridForm* form) { form_ = form; }  /// @}

  /// Sets the four controls, then builds the grid.
  void GridCell_InitializeA(platform::GridControl* GcX, platform::RichTextBox* GtX,
                            platform::Panel* pnlX, platform::GridForm* cX);
  /// Builds the grid: reads LabelColWidth from the form, reads and splits the
  /// layout when lInterfaceResID is set (else the form's own rows of
  /// LetGridCellText are used), derives the default texts, and sets up the
  /// grid, its rows and their collapsed states. The value cells stay empty
  /// until the form loads values (LoadDefaultEnter, bLoadOrSaveData).
  /// Fault(MissingResource) without a grid control or without rows.
  void GridCell_Initialize();
  /// The title box's font size: 9.
  void GridTitle_Initialize();
  /// Places the grid (left 0, top 750, the width, the height - 1860) and the
  /// title box (left 0, top height - 1080, the width, 840), in twips; nothing
  /// when the form is minimised (lWinState 1). A placement a control refuses
  /// (a form too small) is left out.
  void Form_Resize(int32_t lWinState, int32_t lScaleWidth, int32_t lScaleHeight);
  /// The caption column's width without a form object.
  int32_t LabelColWidth() const { return label_col_width_; }
  void LabelColWidth(int32_t width) { label_col_width_ = width; }  ///< Sets the width.

  /// Writes the text into the value cell of the item's row (the first row
  /// with that item index); the item's current text is not changed. An item
  /// with no row, or no grid, does nothing.
  void CellText(int32_t Index, TextView text);
  /// The item's current text. Fault(IndexOutOfRange) outside 0..lMax.
  Text tGetText(int32_t Index) const;
  /// The caption (catalogue text) of the first row with that item index;
  /// empty when there is none.
  Text tGetCaption(int32_t Index) const;
  /// The item index of row 1..R (-1 for a heading). Fault(IndexOutOfRange)
  /// for any other row.
  int32_t lGetIndexByRow(int32_t Row) const;
  /// The first row 1..R with that item index, 0 when there is none.
  int32_t lGetRowByIndex(int32_t Index) const;
  /// The current text of item 0, the project name (empty without items).
  Text tEngineeringName() const;
  /// @{ A flag the form sets and reads back (and bLoadOrSaveData keeps).
  bool bDisplayTuLi() const { return display_tu_li_; }
  void bDisplayTuLi(bool on) { display_tu_li_ = on; }  /// @}
  /// Asks the form whether it shows a picture; false without a form.
  bool bDisplayPicture();

  /// @{ The values of a group row's members: the group's joined value split at
  /// ",", each part trimmed. SplitText110 splits the
  /// current text of item Index into texts[0..N-1] (parts it lacks are empty;
  /// N counts within 0..kMaxItems); SplitText110A splits the text tIndex into
  /// all its parts. Both return the number of parts the text has (none for an
  /// empty text), so a caller sees a value with more parts than members.
  int32_t SplitText110(int32_t Index, int32_t N, std::vector<Text>& texts) const;
  int32_t SplitText110A(TextView tIndex, std::vector<Text>& texts) const;  /// @}

  /// The title box for the current row: the caption in bold, a line break and
  /// the help, which is catalogue text caption id + 1, or else, for a caption
  /// "name symbol" of two parts, "symbol——name"; "。" follows the help. The
  /// selection colour is the system's button text colour (18), the cursor at
  /// 0, and the tooltip the help.
  void tShowRowTitle();

  /// Shows (bExpand) or collapses the rows under the heading in row lRow, up
  /// to the next heading. Showing them puts every group row back into its
  /// layout state: "+" with its members collapsed when its layout id was
  /// negative, "-" with them shown otherwise. Rows whose item is hidden stay at
  /// height 0. Fault(IndexOutOfRange) for a row outside 1..R.
  void ExpandHeadingGroup(int32_t lRow, bool bExpand);
  /// The same for the member rows directly below the group row lRow; members
  /// of a group that is itself collapsed stay collapsed.
  void ExpandGroupMembers(int32_t lRow, bool bExpand);

  // ---- Cell editing cycle ----
  //
  // The form forwards the grid control's events. Handlers without a row
  // argument act on the grid's active cell and make it the current cell
  // (lCurrentRow, lCurrentCol); GridCell_LeaveCell acts on the current cell
  // as the form or GridCell_LeaveCellA/B set it. Nothing happens before the
  // grid is built, and changes are not taken as edits while the grid is
  // being built or reset (the loading flag).
  //
  // A value differs from its default when the two, trimmed, differ without
  // regard to case: its value cell is then bold. Leaving a cell applies the
  // group rule: a group row's value ("2,16") is split into its members ("2",
  // "16"; parts it lacks are empty) and its own parts are rewritten joined
  // with ", " ("2, 16"; "2" alone stays "2");
  // a value of more parts than members is refused with error 200 through the
  // object's clsErrChr (shown), the cell and the item get the text the row
  // had when it was entered back, and the leave is cancelled. Leaving a
  // member row rejoins its group. Only the edited row's bold mark is
  // updated: the rows the group rule rewrote keep theirs, and leaving a row
  // that was not edited changes no mark.

  int32_t lCurrentRow() const { return current_row_; }   ///< The current row.
  void lCurrentRow(int32_t row) { current_row_ = row; }  ///< Sets the current row.
  int32_t lCurrentCol() const { return current_col_; }   ///< The current column.
  void lCurrentCol(int32_t col) { current_col_ = col; }  ///< Sets the current column.
  /// @{ A flag the form sets and reads back.
  bool bRestrain() const { return restrain_; }
  void bRestrain(bool on) { restrain_ = on; }  /// @}

  /// Keeps the value cell's text (the text a refused value returns to) and
  /// shows the row's caption and help in the title box.
  void GridCell_EnterRow();
  /// The value cell of an item row changed: the item takes its text.
  void GridCell_CellChanging();
  /// The group rule and the bold mark of the current cell (value column, item
  /// row, not collapsed); Cancel true when the value is refused.
  void GridCell_LeaveCell(bool& Cancel);
  /// @{ Makes Row, Col current, leaves the cell, and unless cancelled runs
  /// ControlEnableA (A) or ControlEnableB (B) for the row.
  void GridCell_LeaveCellA(int32_t Row, int32_t Col, bool& Cancel);
  void GridCell_LeaveCellB(int32_t Row, int32_t Col, bool& Cancel);  /// @}
  /// @{ An item was picked from the value cell's list (the cell holds it): the
  /// item takes it, the group rule applies as when the cell is left, and the
  /// picked row's bold mark follows. A/B then run ControlEnableA /
  /// ControlEnableB.
  void GridCell_ComboClick();
  void GridCell_ComboClickA();
  void GridCell_ComboClickB();  /// @}
  /// Fills the value cell's list with the row's value list (ComboBoxList of
  /// its list id) before it opens.
  void GridCell_ComboDropDown();
  /// Space (32) on a heading toggles it, on a group row outside the value
  /// column toggles its members. Enter (13) on the lowest row shown moves the
  /// focus to row 0 of the active column (the hidden header row: the focus
  /// leaves the last row there on purpose). Other keys are the grid's.
  void GridCell_KeyDown(int16_t& KeyCode, int16_t Shift);
  /// @{ A click on the picture column of a heading or group row toggles it.
  /// ClickA takes the clicked cell from the form and makes it current.
  void GridCell_Click();
  void GridCell_ClickA(int32_t Row, int32_t Col);  /// @}
  /// @{ A double click toggles a heading or a group row (outside the value
  /// column) as Space does; A/B then run ControlEnableA / ControlEnableB.
  void GridCell_DblClick();
  void GridCell_DblClickA();
  void GridCell_DblClickB();  /// @}
  /// Ends the edit of the active cell: the item takes the value cell's text,
  /// so that a value typed last reaches the form that reads the values now.
  void GridCell_LostFocus();

  /// @{ Resets every item to its default text, after asking the user when bMsg
  /// (vbLoadDefaultData of the object's clsCharacter; the answer 2 cancels
  /// and changes nothing). All bold marks are cleared. A/B then run
  /// ControlEnableA(0) / ControlEnableB(0).
  void LoadDefaultEnter(bool bMsg);
  void LoadDefaultEnterA(bool bMsg);
  void LoadDefaultEnterB(bool bMsg);  /// @}

  /// Applies the hidden marks: an item row that is not collapsed gets height
  /// 0 when its item is hidden, else the row height; a heading keeps the row
  /// height while at least one item row under it is not hidden, else 0.
  void ControlEnable();
  /// @{ After a change in row Row (0: no particular row): for a row with the
  /// event flag, or for none, and unless values are being loaded, the form is
  /// told the current texts (Let_Text) and sets the hidden marks
  /// (ControlEnable), which are then applied. B passes texts and marks in one
  /// call. The form receives a copy of the texts; the marks are the object's
  /// own and keep their size 0..lMax whatever the form does.
  void ControlEnableA(int32_t Row);
  void ControlEnableB(int32_t Row);  /// @}

  /// @{ All current texts (0..lMax) out, or in: the table keeps 0..lMax,
  /// elements the array does not reach become empty, elements beyond lMax are
  /// ignored. The cells are not changed (CellText does that).
  void GetCurrentText(std::vector<Text>& X) const;
  void LetCurrentText(const std::vector<Text>& X);  /// @}
  /// Replaces the hidden marks (as LetCurrentText: 0..lMax, missing ones
  /// false). ControlEnable applies them.
  void LetTextInvalid(const std::vector<bool>& bIn);

  /// @{ Whether leaving the active cell must be cancelled, for a form about to
  /// calculate or close: the row's check expression (GetCheckSign) with its
  /// list (lListRes) through clsErrChr::GenCheckCboEnterNumErrX, for a value
  /// changed since the row was entered (a value the program wrote, from a
  /// file or an undo, is not checked here), then the group rule of leaving. A refused value
  /// is shown as a message, the cell and the item get the row's text from when it was entered
  /// back (as for a refused group value), and the answer is true; otherwise the cell is left
  /// as GridCell_LeaveCellA/B leaves it
  /// (with ControlEnableA / ControlEnableB).
  bool bLeaveCellCanCelA();
  bool bLeaveCellCanCelB();  /// @}

  // ---- Saving and loading the grid's values ----
  //
  /// tMode "Save", "SaveAsNewVersion" or "OutPut" writes the file
  /// tDataSaveName: record 0 the revision, record 198 tPro1 (when not empty),
  /// "bfDisplayTuLi" (catalogue 37000) the flag, "tAddData" (37006) the text
  /// tAddData, "tCellText" (37007) the current texts 0..lMax, record 0 "EOF".
  /// "Load", "InPut" or "Default" reads such a file: record 0 first, then,
  /// when tPro1 is not empty, record 198 equal to tPro1 or tPro2 (the file
  /// belongs to the form); records it does not know are passed over. Nothing
  /// changes until the file has been read up to "EOF"; then bDisplayTuLi,
  /// tAddData and the current texts (as far as the saved array and 0..lMax
  /// both reach) take the saved values, and the value cells and their bold
  /// marks are refilled. Any other mode does nothing and answers false.
  /// False when the file cannot be written or read; nothing is shown, and
  /// the number to report is lLoadSaveMode(tMode) of clsLoadSave.
  bool bLoadOrSaveData(TextView tMode, TextView tDataSaveName, TextView tPro1, TextView tPro2,
                       Text& tAddData);

  /// Groups a form keeps in its data file beside the grid's values (a
  /// foundation program's load cases, say). `save` writes them after the
  /// values; false fails the save. `load` is handed each name record (ID 100)
  /// the grid does not know, as `record`, and reads the rest of its group
  /// through `ls`; false is a damaged file. A form keeps what `load` read
  /// aside and takes it only when bLoadOrSaveData has answered true.
  struct FormGroups {
    std::function<bool(clsLoadSave& ls)> save;  ///< Writes the groups; false fails the save.
    std::function<bool(clsLoadSave& ls, UseBinRecord& record)> load;  ///< Reads a group (above).
  };
  void form_groups(FormGroups groups) { form_groups_ = std::move(groups); }
  ///< Sets the groups the form keeps.
 private:
  /// Sets the loading flag for its life. Left by a fault, it also switches
  /// the grid's drawing back on.
  class LoadingScope {
   public:
    explicit LoadingScope(clsGridCell& cell);
    ~LoadingScope();
    LoadingScope(const LoadingScope&) = delete;
    LoadingScope& operator=(const LoadingScope&) = delete;

   private:
    clsGridCell& cell_;
    int faults_;
  };

  /// Row helpers (rows 1..R); the caption, list and check of a row come from
  /// the per-row tables, or through the row's item once GetTextResID has
  /// indexed them by item.
  bool ready() const { return built_ && grid_ != nullptr; }
  bool valid_row(int32_t row) const;
  int32_t kind_of(int32_t row) const;  ///< absolute
  int32_t item_of(int32_t row) const;
  /// The row's item index when it has one within 0..lMax, else -1.
  int32_t value_item(int32_t row) const;
  int32_t caption_of(int32_t row) const;
  int32_t list_of(int32_t row) const;
  Text check_of(int32_t row) const;
  bool is_heading(int32_t row) const;
  bool item_hidden(int32_t row) const;
  /// Collapsed and not shown by a filter: left out of the editing cycle.
  bool folded_away(int32_t row) const;
  int32_t shown_height(int32_t row) const;
  /// The member rows directly below a group row: [first, last], empty when
  /// last < first.
  std::pair<int32_t, int32_t> members_of(int32_t group_row) const;
  /// The group row above a member row, or 0.
  int32_t group_of(int32_t member_row) const;
  void take_active_cell();
  void set_value(int32_t row, TextView text);
  void update_bold(int32_t row);
  void restore_entered_text(int32_t row);
  void keep_entered_text();
  /// Collapsed flags and heights of rows first..last under a heading that is
  /// shown (`shown`) or collapsed; group rows back to their layout state.
  void show_rows(int32_t first, int32_t last, bool shown);
  void toggle(int32_t row, int32_t col);
  /// The leave step on the current cell: with `check`, the row's check
  /// expression first. False when the value is refused.
  bool leave_current_cell(bool check);
  /// The group rule on row `row` after its item took a new text. False when
  /// the value is refused.
  bool apply_group_rule(int32_t row);
  void pick_from_list();
  void refill_cells();
  bool save_values(TextView tDataSaveName, TextView tPro1, TextView tAddData);
  bool load_values(TextView tDataSaveName, TextView tPro1, TextView tPro2, Text& tAddData);
  /// The default texts of the items, derived from the tables (every
  /// non-heading row; a layout whose item index exceeds lMax throws
  /// Fault(IndexOutOfRange)).
  void derive_default_texts();

  std::shared_ptr<const platform::Platform> platform_;
  std::unique_ptr<clsCharacter> character_;
  std::unique_ptr<clsErrChr> errors_;
  std::unique_ptr<clsLoadSave> load_save_;

  /// Descriptors and layouts.
  int32_t interface_res_id_ = 0;
  bool rows_loaded_ = false;  ///< a layout was read, or the form gave its rows
  std::unique_ptr<grid::Tables> tables_;
  grid::RowTables& rows_;
  grid::ItemTables& items_;

  /// Grid construction.
  platform::GridControl* grid_ = nullptr;
  platform::RichTextBox* title_ = nullptr;
  platform::Panel* panel_ = nullptr;
  platform::GridForm* form_ = nullptr;
  int32_t label_col_width_ = 0;
  int32_t row_height_ = 0;
  bool built_ = false;
  bool display_tu_li_ = false;
  FormGroups form_groups_;
  std::vector<bool> collapsed_;  ///< per row 1..R
  /// Rows a filter of the host shows although they are collapsed (1..R, or
  /// empty for none): they take part in the editing cycle like any shown row.
  std::vector<bool> revealed_;

  /// Cell editing cycle.
  int32_t current_row_ = 0;
  int32_t current_col_ = 0;
  int32_t edited_row_ = 0;
  Text entered_text_;  ///< the value cell's text when its row was entered
  bool loading_ = false;
  bool restrain_ = false;
};

}  // namespace zelkora
