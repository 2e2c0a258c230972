/// The property grid of a calculation form and what surrounds it, as the
/// library drives them: the grid control, the rich-text title box under it,
/// the panel that holds them, and the form object that the grid asks about
/// the form's items. The library reaches them only through these interfaces
/// (the members carry the controls' own names); the headless platform has
/// in-memory implementations.
///
/// Units are the controls' own: row heights and column widths in the grid's
/// pixels, placements (`Move`) in twips. Rows and columns count from 0; row 0
/// of a property grid is the header row, column 0 a hidden column.
///
///   grid.AutoRedraw(false);
///   grid.Rows(rows + 1);
///   grid.Text(3, 2, u"  纵筋直径 d");
///   grid.SetImage(1, 1, u"-");
///   grid.AutoRedraw(true);
///   grid.Refresh(); @file
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/platform/controls.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/text.h"

namespace zelkora::platform {

// ---- Colours ---------------------------------------------------------------
// A colour is 0x00BBGGRR, or a colour of the system's scheme written as
// 0x80000000 | index.
/// The colour 0x00BBGGRR of red, green and blue (0..255 each).
constexpr uint32_t rgb(int red, int green, int blue) {
  return (static_cast<uint32_t>(red) & 0xFF) | (static_cast<uint32_t>(green) & 0xFF) << 8 |
         (static_cast<uint32_t>(blue) & 0xFF) << 16;
}  /// The colour of entry `index` of the system's scheme.
constexpr uint32_t system_colour(int index) {
  return 0x80000000u | (static_cast<uint32_t>(index) & 0xFF);
}  /// Whether `colour` is one of the system's scheme.
constexpr bool is_system_colour(uint32_t colour) { return (colour & 0x80000000u) != 0; }

inline constexpr uint32_t kColourWindow = system_colour(5);           ///< Window background.
inline constexpr uint32_t kColourWindowText = system_colour(8);       ///< Text in windows.
inline constexpr uint32_t kColourInactiveBorder = system_colour(11);  ///< Inactive window border.
inline constexpr uint32_t kColourButtonFace = system_colour(15);      ///< Face of buttons.
inline constexpr uint32_t kColourGrayText = system_colour(17);        ///< Disabled (grayed) text.
inline constexpr uint32_t kColourButtonText = system_colour(18);      ///< Text on buttons.

// ---- Pictures --------------------------------------------------------------

/// A small picture for the grid's image list: `width` x `height` pixels, row
/// by row from the top, each 0xAARRGGBB (alpha 0 is transparent).
struct Picture {
  int32_t width = 0;             ///< Width in pixels.
  int32_t height = 0;            ///< Height in pixels.
  std::vector<uint32_t> pixels;  ///< width x height pixels, 0xAARRGGBB.
};

/// The picture of a collapsible row: a 9 x 9 box with "-" when the row's
/// group is shown (`expanded`), with "+" when it is collapsed.
inline Picture expander_picture(bool expanded) {
  constexpr int32_t n = 9;
  Picture picture{n, n, std::vector<uint32_t>(n * n, 0xFFFFFFFFu)};
  auto set = [&](int32_t x, int32_t y, uint32_t argb) { picture.pixels[y * n + x] = argb; };
  for (int32_t i = 0; i < n; ++i) {
    set(i, 0, 0xFF808080u);
    set(i, n - 1, 0xFF808080u);
    set(0, i, 0xFF808080u);
    set(n - 1, i, 0xFF808080u);
  }
  for (int32_t i = 2; i <= n - 3; ++i) {
    set(i, n / 2, 0xFF000000u);
    if (!expanded) set(n / 2, i, 0xFF000000u);
  }
  return picture;
}

// ---- Controls --------------------------------------------------------------

/// A control with a place on the form.
class WindowControl : public Control {
 public:
  /// Places the control. A control may refuse a placement it cannot take (a
  /// negative width or height): it answers false and stays where it was.
  virtual bool Move(int32_t left, int32_t top, int32_t width, int32_t height) = 0;
  virtual bool Visible() const = 0;        ///< Whether the control is shown.
  virtual void Visible(bool visible) = 0;  ///< Shows or hides the control.
};

/// The panel that holds a form's grid and title box.
class Panel : public WindowControl {};

/// A cell of the grid.
struct CellRef {
  int32_t row = 0;  ///< The row, from 0.
  int32_t col = 0;  ///< The column, from 0.
  friend bool operator==(const CellRef&, const CellRef&) = default;
};

/// The grid control. A row or column outside the grid is the control's
/// subscript error: every member that takes one throws
/// Fault(FaultKind::IndexOutOfRange) for it, as does a negative `Rows` or
/// `Cols`.
class GridControl : public WindowControl {
 public:
  /// `CellType`
  static constexpr int16_t kTextCell = 0;
  static constexpr int16_t kComboCell = 1;  ///< a cell with a drop-down list
  /// `Alignment` (the text is centred vertically)
  static constexpr int16_t kAlignGeneral = 0;  ///< text left, numbers right
  static constexpr int16_t kAlignLeft = 1;     ///< text left
  static constexpr int16_t kAlignCenter = 2;   ///< text centred
  static constexpr int16_t kAlignRight = 3;    ///< text right

  /// -- Size. New rows take `DefaultRowHeight`; cells keep their contents
  /// when rows or columns are added or taken away at the end.
  virtual int32_t Rows() const = 0;
  virtual void Rows(int32_t rows) = 0;  ///< Sets the number of rows.
  virtual int32_t Cols() const = 0;     ///< The number of columns.
  virtual void Cols(int32_t cols) = 0;  ///< Sets the number of columns.
  /// A row of height 0 (or less) is not shown.
  virtual int32_t RowHeight(int32_t row) const = 0;
  virtual void RowHeight(int32_t row, int32_t height) = 0;  ///< Sets a row's height.
  /// The height of every row whose own height was never set.
  virtual int32_t DefaultRowHeight() const = 0;
  virtual void DefaultRowHeight(int32_t height) = 0;      ///< Sets the default row height.
  virtual int32_t ColWidth(int32_t col) const = 0;        ///< The width of `col`, in pixels.
  virtual void ColWidth(int32_t col, int32_t width) = 0;  ///< Sets the width of `col`.

  /// -- Cells. (The member keeps the control's name; the type is
  /// zelkora::Text.)
  virtual zelkora::Text Text(int32_t row, int32_t col) const = 0;
  virtual void Text(int32_t row, int32_t col, TextView text) = 0;     ///< Sets the cell's text.
  virtual int16_t CellType(int32_t row, int32_t col) const = 0;       ///< kTextCell or kComboCell.
  virtual void CellType(int32_t row, int32_t col, int16_t type) = 0;  ///< Sets the cell type.
  virtual bool FontBold(int32_t row, int32_t col) const = 0;  ///< Whether the cell's text is bold.
  virtual void FontBold(int32_t row, int32_t col, bool bold) = 0;  ///< Sets bold.
  virtual uint32_t ForeColor(int32_t row, int32_t col) const = 0;  ///< The cell's text colour.
  virtual void ForeColor(int32_t row, int32_t col, uint32_t colour) = 0;  ///< Sets the text colour.
  virtual uint32_t BackColor(int32_t row, int32_t col) const = 0;         ///< Background.
  virtual void BackColor(int32_t row, int32_t col, uint32_t colour) = 0;  ///< Sets the background.
  virtual int16_t Alignment(int32_t row, int32_t col) const = 0;  ///< kAlignGeneral..kAlignRight.
  virtual void Alignment(int32_t row, int32_t col, int16_t alignment) = 0;  ///< Sets the alignment.
  /// A text the program keeps with the cell; never shown.
  virtual zelkora::Text Tag(int32_t row, int32_t col) const = 0;
  virtual void Tag(int32_t row, int32_t col, TextView tag) = 0;  ///< Sets the tag.
  /// The items the list of a combo cell offers; the library fills it when
  /// the list is about to open.
  virtual std::vector<zelkora::Text> ComboList(int32_t row, int32_t col) const = 0;
  virtual void ComboList(int32_t row, int32_t col, const std::vector<zelkora::Text>& items) = 0;
  /**< Sets the combo list. */
  /// -- Rows and ranges. A locked row cannot be edited by the user.
  virtual bool Locked(int32_t row) const = 0;
  virtual void Locked(int32_t row, bool locked) = 0;  ///< Locks or unlocks `row`.
  /// Merges columns col1..col2 of the row into one cell that shows the text
  /// of the first of them that has one. A row has at most one merged range;
  /// a new one replaces it.
  virtual void Merge(int32_t row, int32_t col1, int32_t col2) = 0;

  /// -- Pictures. `AddPicture` is `Images.AddPicture`: the picture under its
  /// key. `SetImage` shows the picture with that key in the cell (an empty
  /// key takes it away); a key that was never added is a missing resource:
  /// Fault(FaultKind::MissingResource). `ImageKey` is the key shown, or empty.
  virtual void AddPicture(const Picture& picture, TextView key) = 0;
  virtual void SetImage(int32_t row, int32_t col, TextView key) = 0;   ///< Shows picture `key`.
  virtual zelkora::Text ImageKey(int32_t row, int32_t col) const = 0;  ///< Key shown.

  /// -- Drawing. With `AutoRedraw` off, changes are not drawn until it is on
  /// again and the grid is refreshed.
  virtual bool AutoRedraw() const = 0;
  virtual void AutoRedraw(bool redraw) = 0;  ///< Turns drawing on or off.
  virtual void Refresh() = 0;                ///< Draws the grid again.

  /// -- Focus and scrolling.
  virtual CellRef ActiveCell() const = 0;
  virtual void ActiveCell(int32_t row, int32_t col) = 0;  ///< Makes the cell the active cell.
  /// The last row in view (whether or not its height is 0).
  virtual int32_t BottomRow() const = 0;
  /// Makes the cell the active cell and gives the grid the focus.
  virtual void SetFocus(int32_t row, int32_t col) = 0;

  /// -- Appearance, set once when the grid is built.
  virtual void DefaultFontName(TextView name) = 0;
  virtual void DefaultFontSize(float size) = 0;            ///< The default font size, in points.
  virtual void BackColorBkg(uint32_t colour) = 0;          ///< the area below the last row
  virtual void GridColor(uint32_t colour) = 0;             ///< The colour of grid lines.
  virtual void CellBorderColorFixed(uint32_t colour) = 0;  ///< The border colour of fixed cells.
  virtual void CellBorderColor(uint32_t colour) = 0;       ///< The border colour of cells.
  virtual void Appearance(int16_t appearance) = 0;         ///< 0 flat, 1 3D
  virtual void EnterKeyMoveTo(int16_t direction) = 0;      ///< Where Enter moves (control's code).
  virtual void ExtendLastCol(bool extend) = 0;             ///< the last column takes the rest
  virtual void DisplayFocusRect(bool display) = 0;     ///< Whether the focus rectangle is drawn.
  virtual void ReadOnlyFocusRect(int16_t style) = 0;   ///< The focus style of read-only cells.
  virtual void DisplayClientBorder(bool display) = 0;  ///< Whether the client border is drawn.
  virtual void SelectionMode(int16_t mode) = 0;        ///< The control's selection mode code.
};

/// The rich-text box under the grid that shows the current row's caption and
/// help. Positions count UTF-16 units; a line break is "\r\n".
class RichTextBox : public WindowControl {
 public:
  /// The plain text. Setting it replaces everything with unformatted text
  /// and puts the cursor at 0.
  virtual zelkora::Text Text() const = 0;
  virtual void Text(TextView text) = 0;  ///< Replaces the text (unformatted).
  /// The text in rich text format ("{\rtf1 ...}"; "\b " and "\b0 " switch
  /// bold on and off). Setting it replaces everything and puts the cursor at
  /// 0.
  virtual zelkora::Text TextRTF() const = 0;
  virtual void TextRTF(TextView rtf) = 0;  ///< Replaces the text with rich text.
  /// The selection: `SelStart` is the cursor, `SelLength` the number of
  /// selected units after it. Both are kept within the text.
  virtual int32_t SelStart() const = 0;
  virtual void SelStart(int32_t start) = 0;    ///< Moves the cursor.
  virtual int32_t SelLength() const = 0;       ///< The selected length.
  virtual void SelLength(int32_t length) = 0;  ///< Sets the selected length.
  /// Setting `SelText` replaces the selection with the text, in `SelColor`,
  /// not bold, and puts the cursor after it.
  virtual zelkora::Text SelText() const = 0;
  virtual void SelText(TextView text) = 0;  ///< Replaces the selection.
  /// The colour of the selection and of text inserted from now on.
  virtual uint32_t SelColor() const = 0;
  virtual void SelColor(uint32_t colour) = 0;     ///< Sets the selection colour.
  virtual zelkora::Text ToolTipText() const = 0;  ///< The tool tip.
  virtual void ToolTipText(TextView text) = 0;    ///< Sets the tool tip.
  virtual float FontSize() const = 0;             ///< The font size, in points.
  virtual void FontSize(float size) = 0;          ///< Sets the font size.
};

/// The calculation form's own object, which the grid calls by name. What the
/// form does in these is its own business.
class GridForm : public Control {
 public:
  /// The width of the grid's caption column.
  virtual int32_t LabelColWidth() = 0;
  /// The per-item hidden marks (item index 0..lMax); the form sets the marks
  /// of the items that do not apply to the current input.
  virtual void ControlEnable(std::vector<bool>& hidden) = 0;
  /// The same with the per-item current texts.
  virtual void ControlEnable(std::vector<zelkora::Text>& texts, std::vector<bool>& hidden) = 0;
  /// Whether the form shows a picture.
  virtual bool bDisplayPicture() = 0;
  /// The per-item current texts.
  virtual void Let_Text(std::vector<zelkora::Text>& texts) = 0;
};

/// What a grid control raises, in the order it raises them while a user works
/// it. A host hands them to the form's handlers (grid/form_session.h connects
/// them to a clsGridCell); row and column are the grid's own.
class GridEvents {
 public:
  virtual ~GridEvents() = default;
  /// A row was entered (the active cell is in it).
  virtual void EnterRow() = 0;
  /// The user is about to edit the cell; `cancel` true refuses the edit.
  virtual void BeforeEdit(int32_t row, int32_t col, bool& cancel) = 0;
  /// The text of the active cell changed while it was edited.
  virtual void CellChanging() = 0;
  /// The cell is about to be left; `cancel` true keeps the focus in it.
  virtual void LeaveCell(int32_t row, int32_t col, bool& cancel) = 0;
  /// The list of the active cell is about to open.
  virtual void ComboDropDown() = 0;
  /// An item was picked from the list (the cell holds it).
  virtual void ComboClick() = 0;
  virtual void Click(int32_t row, int32_t col) = 0;  ///< The cell was clicked.
  virtual void DblClick() = 0;                       ///< The grid was double-clicked.
  /// A key went down in the grid: 32 Space, 13 Enter, ...
  virtual void KeyDown(int16_t& key_code, int16_t shift) = 0;
  /// The grid lost the focus.
  virtual void LostFocus() = 0;
};

}  // namespace zelkora::platform
