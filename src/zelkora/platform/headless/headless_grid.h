/// In-memory property grid, title box, panel and form object: they keep all
/// their state, answer every call of platform/grid_control.h, record the calls
/// whose order matters, and draw themselves as text for tests, the command
/// line and people.
/// @code{.unparsed}
///   MemoryGrid grid;
///   MemoryRichTextBox title;
///   ... build the grid through clsGridCell ...
///   std::cout << grid.render(&title);
/// @endcode
/// The drawing (`render`) is one line per shown row (RowHeight above 0), top
/// to bottom, row 0 included when it is shown:
/// @code{.unparsed}
///   <picture> <caption, padded>  <value>
/// @endcode
///  - picture: the image key of column 1 ("+", "-"), or a blank;
///  - caption: the text of column 2 as it is (member rows carry their two
///    leading blanks), padded with blanks to the widest caption of the grid
///    (display width: a Chinese character takes two cells), counted over all
///    rows, shown or not, so that opening a group does not shift the column;
///  - value: the text of column 3, between "*" when the cell is bold;
///  - a row whose caption cell is merged into a range shows the picture and
///    the text of the range alone: `"<picture> <text>"`;
///  - trailing blanks are cut; control characters in a cell show as blanks.
///    Column 0, the columns after 3, widths, colours and alignment are not
///    drawn.
///
/// With a title box, a line of eight "-" follows, then the box's lines: one
/// per paragraph, bold runs between "*". For example:
///
///   - 基本参数
///     混凝土强度等级  C30
///     纵筋直径 d      *20*
///   + 荷载
///   --------
///   *纵筋直径 d*
///   d——纵筋直径。 @file
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "zelkora/platform/fault.h"
#include "zelkora/platform/grid_control.h"

namespace zelkora::platform::headless {

/// Placement and visibility: refuses a negative width or height.
template <class Base>
class MemoryWindow : public Base {
 public:  /// Places it; refuses a negative size.
  bool Move(int32_t l, int32_t t, int32_t w, int32_t h) override {
    if (w < 0 || h < 0) return false;
    left = l;
    top = t;
    width = w;
    height = h;
    return true;
  }
  bool Visible() const override { return visible; }  ///< Whether it is shown.
  void Visible(bool v) override { visible = v; }     ///< Shows or hides it.

  int32_t left = 0;     ///< Left edge (twips).
  int32_t top = 0;      ///< Top edge (twips).
  int32_t width = 0;    ///< Width (twips).
  int32_t height = 0;   ///< Height (twips).
  bool visible = true;  ///< Whether it is shown.
};

class MemoryPanel : public MemoryWindow<Panel> {};

class MemoryRichTextBox;

/// The grid. A fresh grid has no rows or columns, and settings that differ
/// from those the library sets when it builds a grid, so a test sees each
/// one that was set.
///
/// `calls` records, in order: "Rows=<n>", "Cols=<n>", "AutoRedraw=0|1",
/// "Refresh", "Merge <row> <col1> <col2>", "AddPicture <key>" and
/// "SetFocus <row> <col>". Cell and row settings are not recorded; read them
/// back.
class MemoryGrid : public MemoryWindow<GridControl> {
 public:  /// The whole state of one cell.
  struct Cell {
    zelkora::Text text;                       ///< The text.
    zelkora::Text tag;                        ///< The tag (never shown).
    zelkora::Text image_key;                  ///< The key of the picture shown; empty for none.
    std::vector<zelkora::Text> combo_list;    ///< The items of a combo cell's list.
    int16_t cell_type = kTextCell;            ///< kTextCell or kComboCell.
    int16_t alignment = kAlignGeneral;        ///< kAlignGeneral..kAlignRight.
    bool font_bold = false;                   ///< Bold text.
    uint32_t fore_color = kColourWindowText;  ///< Text colour.
    uint32_t back_color = kColourWindow;      ///< Background colour.
  };

  int32_t Rows() const override { return static_cast<int32_t>(rows_.size()); }
  void Rows(int32_t rows) override;
  int32_t Cols() const override { return cols_; }
  void Cols(int32_t cols) override;
  int32_t RowHeight(int32_t row) const override;
  void RowHeight(int32_t row, int32_t height) override;
  int32_t DefaultRowHeight() const override { return default_row_height_; }
  void DefaultRowHeight(int32_t row_height) override { default_row_height_ = row_height; }
  int32_t ColWidth(int32_t col) const override;
  void ColWidth(int32_t col, int32_t width) override;

  zelkora::Text Text(int32_t row, int32_t col) const override { return cell(row, col).text; }
  void Text(int32_t row, int32_t col, TextView text) override { at(row, col).text = text; }
  int16_t CellType(int32_t row, int32_t col) const override { return cell(row, col).cell_type; }
  void CellType(int32_t row, int32_t col, int16_t type) override { at(row, col).cell_type = type; }
  bool FontBold(int32_t row, int32_t col) const override { return cell(row, col).font_bold; }
  void FontBold(int32_t row, int32_t col, bool bold) override { at(row, col).font_bold = bold; }
  uint32_t ForeColor(int32_t row, int32_t col) const override { return cell(row, col).fore_color; }
  void ForeColor(int32_t row, int32_t col, uint32_t c) override { at(row, col).fore_color = c; }
  uint32_t BackColor(int32_t row, int32_t col) const override { return cell(row, col).back_color; }
  void BackColor(int32_t row, int32_t col, uint32_t c) override { at(row, col).back_color = c; }
  int16_t Alignment(int32_t row, int32_t col) const override { return cell(row, col).alignment; }
  void Alignment(int32_t row, int32_t col, int16_t a) override { at(row, col).alignment = a; }
  zelkora::Text Tag(int32_t row, int32_t col) const override { return cell(row, col).tag; }
  void Tag(int32_t row, int32_t col, TextView tag) override { at(row, col).tag = tag; }
  std::vector<zelkora::Text> ComboList(int32_t row, int32_t col) const override {
    return cell(row, col).combo_list;
  }
  void ComboList(int32_t row, int32_t col, const std::vector<zelkora::Text>& items) override {
    at(row, col).combo_list = items;
  }

  bool Locked(int32_t row) const override;
  void Locked(int32_t row, bool locked) override;
  void Merge(int32_t row, int32_t col1, int32_t col2) override;

  void AddPicture(const Picture& picture, TextView key) override;
  void SetImage(int32_t row, int32_t col, TextView key) override;
  zelkora::Text ImageKey(int32_t row, int32_t col) const override {
    return cell(row, col).image_key;
  }

  bool AutoRedraw() const override { return auto_redraw_; }
  void AutoRedraw(bool redraw) override;
  void Refresh() override { calls.emplace_back("Refresh"); }

  CellRef ActiveCell() const override { return active_; }
  void ActiveCell(int32_t row, int32_t col) override;
  int32_t BottomRow() const override;
  void SetFocus(int32_t row, int32_t col) override;

  void DefaultFontName(TextView name) override { default_font_name = name; }
  void DefaultFontSize(float size) override { default_font_size = size; }
  void BackColorBkg(uint32_t c) override { back_color_bkg = c; }
  void GridColor(uint32_t c) override { grid_color = c; }
  void CellBorderColorFixed(uint32_t c) override { cell_border_color_fixed = c; }
  void CellBorderColor(uint32_t c) override { cell_border_color = c; }
  void Appearance(int16_t a) override { appearance = a; }
  void EnterKeyMoveTo(int16_t d) override { enter_key_move_to = d; }
  void ExtendLastCol(bool e) override { extend_last_col = e; }
  void DisplayFocusRect(bool d) override { display_focus_rect = d; }
  void ReadOnlyFocusRect(int16_t s) override { read_only_focus_rect = s; }
  void DisplayClientBorder(bool d) override { display_client_border = d; }
  void SelectionMode(int16_t m) override { selection_mode = m; }

  /// -- A filter over the rows (the form's, not the control's): only the rows
  /// with kept[row] true show, also those the grid has folded away; an empty
  /// vector, the rows as the grid has them.
  void show_only(std::vector<bool> kept) { kept_ = std::move(kept); }
  bool filtered() const { return !kept_.empty(); }  ///< Whether a filter is set.
  /// Whether the user sees the row: kept by the filter, or, without one (and
  /// for row 0), of a height above 0.
  bool row_shown(int32_t row) const;
  /// The next row after `row` (`step` 1) or before it (-1) whose cell in
  /// `col` is shown and not locked, or -1; the row Tab, Shift+Tab and Enter
  /// go to.
  int32_t next_editable_row(int32_t row, int32_t col, int step) const;
  /// The next shown row below `row`, or `row` when there is none.
  int32_t next_shown_row(int32_t row) const;
  /// Where Up (`step` -1) or Down (1) go from the active cell `at`: the next
  /// shown row, in the column they move in. `cursor` is where they last went:
  /// its column is kept across a merged range (whose first cell becomes the
  /// active one) and updated. With no shown row that way: `at`.
  CellRef vertical_step(CellRef at, CellRef& cursor, int step) const;

  /// The whole state of a cell (throws for a cell outside the grid).
  const Cell& cell(int32_t row, int32_t col) const;
  /// The merged range of the row as {col1, col2}; {0, -1} when it has none.
  std::pair<int32_t, int32_t> merged(int32_t row) const;
  /// The pictures added, by key, in order.
  const std::vector<std::pair<zelkora::Text, Picture>>& pictures() const { return pictures_; }

  /// The grid as a user sees it (format above), with the title box below it
  /// when one is given: lines, or UTF-8 with "\n" after every line.
  std::vector<zelkora::Text> render_lines(const MemoryRichTextBox* title = nullptr) const;
  std::string render(const MemoryRichTextBox* title = nullptr) const;
  ///< The same as one UTF-8 string.
  std::vector<std::string> calls;  ///< The recorded calls, in order (see above).
  /// The last row in view; -1: every row fits, the last row of the grid.
  int32_t bottom_row = -1;
  bool focused = false;  ///< Whether the grid has the focus (SetFocus).

  zelkora::Text default_font_name;              ///< DefaultFontName as set.
  float default_font_size = 0;                  ///< DefaultFontSize as set.
  uint32_t back_color_bkg = system_colour(12);  ///< BackColorBkg as set.
  uint32_t grid_color = rgb(192, 192, 192);     ///< GridColor as set.
  uint32_t cell_border_color_fixed = 0;         ///< CellBorderColorFixed as set.
  uint32_t cell_border_color = 0;               ///< CellBorderColor as set.
  int16_t appearance = 1;                       ///< Appearance as set.
  int16_t enter_key_move_to = 0;                ///< EnterKeyMoveTo as set.
  bool extend_last_col = false;                 ///< ExtendLastCol as set.
  bool display_focus_rect = true;               ///< DisplayFocusRect as set.
  int16_t read_only_focus_rect = 1;             ///< ReadOnlyFocusRect as set.
  bool display_client_border = true;            ///< DisplayClientBorder as set.
  int16_t selection_mode = 0;                   ///< SelectionMode as set.

 private:
  struct Row {
    std::vector<Cell> cells;
    int32_t height = 0;
    bool height_set = false;  ///< else DefaultRowHeight
    bool locked = false;
    int32_t merge_first = 0;
    int32_t merge_last = -1;
  };
  Cell& at(int32_t row, int32_t col);
  void check_row(int32_t row) const;
  void check_col(int32_t col) const;

  std::vector<Row> rows_;
  int32_t cols_ = 0;
  std::vector<int32_t> col_widths_;
  int32_t default_row_height_ = 18;
  bool auto_redraw_ = true;
  CellRef active_;
  std::vector<std::pair<zelkora::Text, Picture>> pictures_;
  std::vector<bool> kept_;  ///< the rows a filter keeps; empty: no filter
};

/// The title box. It keeps the text with a format per character.
class MemoryRichTextBox : public MemoryWindow<RichTextBox> {
 public:  /// The format of one character.
  struct Format {
    bool bold = false;                    ///< Bold.
    uint32_t colour = kColourWindowText;  ///< The colour.
    friend bool operator==(const Format&, const Format&) = default;
  };

  zelkora::Text Text() const override { return text_; }
  void Text(TextView text) override;
  /// Written with the colours resolved to the system's default scheme, text
  /// beyond ASCII as "\uN?" and every line break as "\par". Reading takes
  /// "\b", "\b0", "\plain", "\cf" with "\colortbl", "\par", "\line", "\tab",
  /// "\u" with "\uc", "\'hh" (code page 936) and the escapes "\\", "\{",
  /// "\}"; other control words are passed over, and the groups of the font
  /// table, the style sheet, pictures and "\*" destinations are skipped.
  zelkora::Text TextRTF() const override;
  void TextRTF(TextView rtf) override;
  int32_t SelStart() const override { return sel_start_; }
  void SelStart(int32_t start) override;
  int32_t SelLength() const override { return sel_length_; }
  void SelLength(int32_t length) override;
  zelkora::Text SelText() const override;
  void SelText(TextView text) override;
  uint32_t SelColor() const override { return sel_color_; }
  void SelColor(uint32_t colour) override;
  zelkora::Text ToolTipText() const override { return tool_tip_text; }
  void ToolTipText(TextView text) override { tool_tip_text = text; }
  float FontSize() const override { return font_size; }
  void FontSize(float size) override { font_size = size; }

  /// The format of each character of `Text()`.
  const std::vector<Format>& formats() const { return formats_; }

  /// One line per paragraph, bold runs between "*", trailing blanks cut.
  std::vector<zelkora::Text> render_lines() const;
  std::string render() const;  ///< The same as one UTF-8 string.

  zelkora::Text tool_tip_text;  ///< ToolTipText as set.
  float font_size = 0;          ///< FontSize as set.

 private:
  zelkora::Text text_;
  std::vector<Format> formats_;
  int32_t sel_start_ = 0;
  int32_t sel_length_ = 0;
  uint32_t sel_color_ = kColourWindowText;
};

/// The form object. It answers from its public members and records each call
/// with the arguments it received. `ControlEnable` hands the marks to
/// `on_control_enable` when one is set (with the texts of the call, or those
/// of the last `Let_Text` for the one-argument form); else it writes
/// `hidden` over the marks it receives, as far as both reach.
class MemoryGridForm : public GridForm {
 public:  /// One call the form received.
  struct Call {
    std::string name;                  ///< "LabelColWidth", "bDisplayPicture", "Let_Text",
                                       ///< "ControlEnable(hidden)", "ControlEnable(texts, hidden)"
    std::vector<zelkora::Text> texts;  ///< The texts received (Let_Text, ControlEnable).
    std::vector<bool> hidden;          ///< as received
  };

  int32_t LabelColWidth() override;
  void ControlEnable(std::vector<bool>& marks) override;
  void ControlEnable(std::vector<zelkora::Text>& texts, std::vector<bool>& marks) override;
  bool bDisplayPicture() override;
  void Let_Text(std::vector<zelkora::Text>& texts) override;

  /// The names of the calls, in order.
  std::vector<std::string> call_names() const;

  int32_t label_col_width = 120;  ///< What LabelColWidth answers.
  bool display_picture = false;   ///< What bDisplayPicture answers.
  std::vector<bool> hidden;       ///< The marks ControlEnable writes without `on_control_enable`.
  std::function<void(const std::vector<zelkora::Text>& texts, std::vector<bool>& marks)>
      on_control_enable;    ///< Called by ControlEnable when set (see above).
  std::vector<Call> calls;  ///< The calls received, in order.

 private:
  void answer(const std::vector<zelkora::Text>& texts, std::vector<bool>& marks);
  std::vector<zelkora::Text> last_texts_;
};

}  // namespace zelkora::platform::headless
