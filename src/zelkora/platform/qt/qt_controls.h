/// Qt 6 Widgets behind the simple control interfaces, and the conversions the grid shares.
///
/// The check box, option button, combo box, list box, list view, toolbar,
/// panel, rich-text title box and message box of a desktop form, with the
/// text, unit (twips) and colour conversions.
///
/// Each control is the Qt widget itself, so a form lays it out and connects
/// its signals as with any widget, and hands it to the library as the
/// interface. The semantics are those of the in-memory controls
/// (headless/headless_controls.h, headless/headless_grid.h):
///
///   QtComboBox grade(form);
///   grade.SetStyle(platform::ComboBox::kDropdownList);
///   grade.AddItem(u"C30");
///   grade.AddItem(u"C35");
///   grade.Text(u"C35");             // shows C35; u"C40" would be refused
///   ControlArray<platform::ComboBox> combos;
///   combos.set(0, &grade);
///   load_save.WriteFile_ComboBox_BsA(combos, true); @file
#pragma once

#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QFrame>
#include <QListWidget>
#include <QMessageBox>
#include <QPalette>
#include <QPointer>
#include <QRadioButton>
#include <QString>
#include <QTextEdit>
#include <QToolBar>
#include <QTreeWidget>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "zelkora/platform/controls.h"
#include "zelkora/platform/grid_control.h"
#include "zelkora/platform/headless/headless_grid.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/text.h"

class QAction;

namespace zelkora::platform::qt {

// ---- Conversions -----------------------------------------------------------

/// @{ The library's UTF-16 text as Qt's, and back (both are UTF-16: unit for
/// unit).
QString to_qstring(TextView text);
zelkora::Text to_text(const QString& text);  /// @}

/// A length in twips (1,440 an inch) in pixels at `logical_dpi`, rounded to
/// the nearest pixel (halves away from zero).
int twips_to_pixels(int twips, double logical_dpi);

/// Places `widget` at a placement given in twips, converted at the widget's
/// logical DPI (horizontal for left and width, vertical for top and height).
/// A negative width or height is refused: false, and the widget stays where
/// it was.
bool move_in_twips(QWidget& widget, int32_t left, int32_t top, int32_t width, int32_t height);

/// A colour of the library (0x00BBGGRR, or 0x80000000 | index of the system's
/// scheme) as Qt's; a system colour is taken from `palette` (current colour
/// group): 5 window -> Base, 8 window text -> Text, 11 inactive border ->
/// Midlight, 12 application workspace -> Dark, 13 highlight -> Highlight, 14
/// highlight text -> HighlightedText, 15 button face -> Button, 17 gray text ->
/// halfway between Text and Base, 18 button text -> ButtonText, any other
/// index -> Window.
QColor to_qcolor(uint32_t colour, const QPalette& palette);
/// The colour as text and cells drawn by the library show it: to_qcolor, but
/// on a dark palette (Base darker than middle gray) a colour that is no
/// system colour keeps its hue with its lightness turned over, so that the
/// light grays of headings turn dark and black text light.
QColor readable_colour(uint32_t colour, const QPalette& palette);

// ---- Simple controls -------------------------------------------------------

/// "Value" 0 unchecked, 1 checked, 2 grayed (partially checked); other values
/// are ignored. A user's click makes a grayed or unchecked box checked and a
/// checked one unchecked: only a program grays a box.
class QtCheckBox : public QCheckBox, public platform::CheckBox {
  Q_OBJECT

 public:  /// A box without a caption.
  explicit QtCheckBox(QWidget* parent = nullptr) : QtCheckBox(QString(), parent) {}
  explicit QtCheckBox(const QString& text, QWidget* parent = nullptr);
  ///< A box with the caption `text`.
  int16_t Value() const override;
  void Value(int16_t value) override;
  /// "Enabled" is the widget's own flag (a form may disable a parent too).
  bool Enabled() const override { return !testAttribute(Qt::WA_ForceDisabled); }
  void Enabled(bool enabled) override { setEnabled(enabled); }

 protected:
  void nextCheckState() override;  ///< A click toggles unchecked and checked.
};

/// "Value" true when the button is the chosen one of its group. Unlike a
/// click, Value(false) may leave the group with no button chosen.
class QtOptionButton : public QRadioButton, public platform::OptionButton {
  Q_OBJECT

 public:  /// A button without a caption.
  explicit QtOptionButton(QWidget* parent = nullptr) : QtOptionButton(QString(), parent) {}
  explicit QtOptionButton(const QString& text, QWidget* parent = nullptr);
  ///< A button with the caption `text`.
  bool Value() const override { return isChecked(); }
  void Value(bool value) override;
  bool Enabled() const override { return !testAttribute(Qt::WA_ForceDisabled); }
  void Enabled(bool enabled) override { setEnabled(enabled); }
};

/// A combo box: "Style" kDropdownCombo (editable, the default) or
/// kDropdownList. `Text` is the typed text of an editable box and the current
/// item of a list; a list takes a text only when it is one of its items, and
/// keeps what it shows otherwise. Adding items never changes the text; Clear
/// empties a list but keeps the typed text of an editable box.
class QtComboBox : public QComboBox, public platform::ComboBox {
  Q_OBJECT

 public:
  explicit QtComboBox(QWidget* parent = nullptr);  ///< An editable box (kDropdownCombo).

  int32_t ListCount() const override { return count(); }
  zelkora::Text List(int32_t index) const override;
  void AddItem(TextView item) override;
  void Clear() override;

  zelkora::Text Text() const override;
  void Text(TextView text) override;
  int16_t Style() const override { return isEditable() ? kDropdownCombo : kDropdownList; }
  /// kDropdownCombo or kDropdownList; any other style is ignored.
  void SetStyle(int16_t style);
  /// The colour the form gave the box (the window colour until it gives
  /// one). The box's base is painted in it, a system colour taken from the
  /// palette the box had before it was given any.
  uint32_t BackColor() const override { return back_colour_; }
  void SetBackColor(uint32_t colour);  ///< Sets it and repaints the base.
  bool Enabled() const override { return !testAttribute(Qt::WA_ForceDisabled); }
  void Enabled(bool enabled) override { setEnabled(enabled); }

 private:
  uint32_t back_colour_ = kColourWindow;
  std::optional<QPalette> natural_palette_;
};

/// A list box whose items are selected one by one (a click toggles an item).
class QtListBox : public QListWidget, public platform::ListBox {
  Q_OBJECT

 public:
  explicit QtListBox(QWidget* parent = nullptr);  ///< An empty list.

  int32_t ListCount() const override { return count(); }
  zelkora::Text List(int32_t index) const override;
  void AddItem(TextView item) override;
  void Clear() override { clear(); }
  bool Selected(int32_t index) const override;
  void Selected(int32_t index, bool selected) override;
  bool Enabled() const override { return !testAttribute(Qt::WA_ForceDisabled); }
  void Enabled(bool enabled) override { setEnabled(enabled); }
};

/// A list view in report form: the columns are the header's
/// (setHeaderLabels); items are the top-level items, numbered from 1, their
/// sub-items the texts of columns 1..columns-1.
class QtListView : public QTreeWidget, public platform::ListView {
  Q_OBJECT

 public:
  explicit QtListView(QWidget* parent = nullptr);  ///< An empty list view.

  int32_t ColumnHeadersCount() const override { return columnCount(); }
  int32_t ListItemsCount() const override { return topLevelItemCount(); }
  void ListItemsClear() override { clear(); }
  int32_t ListItemsAdd(TextView text) override;
  zelkora::Text ItemText(int32_t item) const override;
  zelkora::Text SubItem(int32_t item, int32_t sub) const override;
  void SubItem(int32_t item, int32_t sub, TextView text) override;
  void ItemText(int32_t item, TextView text) override;
  /// The current item (selected with it).
  int32_t SelectedItem() const override;
  void SelectedItem(int32_t item) override;
  bool Enabled() const override { return !testAttribute(Qt::WA_ForceDisabled); }
  void Enabled(bool enabled) override { setEnabled(enabled); }

 private:
  QTreeWidgetItem* item_at(int32_t item) const;
};

/// A toolbar whose buttons are its actions in order, numbered from 1; a
/// button's "Value" is 1 when its action is checked.
class QtToolbar : public QToolBar, public platform::Toolbar {
  Q_OBJECT

 public:
  explicit QtToolbar(QWidget* parent = nullptr);  ///< A toolbar without buttons.

  /// Adds a checkable button at the end.
  QAction* AddButton(const QString& text);

  int32_t ButtonsCount() const override;
  int16_t ButtonValue(int32_t index) const override;
  void ButtonValue(int32_t index, int16_t value) override;
  bool Enabled() const override { return !testAttribute(Qt::WA_ForceDisabled); }
  void Enabled(bool enabled) override { setEnabled(enabled); }

 private:
  QAction* button(int32_t index) const;
};

// ---- Panel and title box ---------------------------------------------------
/// The panel that holds a form's grid and title box.
class QtPanel : public QFrame, public platform::Panel {
  Q_OBJECT

 public:
  explicit QtPanel(QWidget* parent = nullptr) : QFrame(parent) {}  ///< An empty panel.

  bool Move(int32_t left, int32_t top, int32_t width, int32_t height) override {
    return move_in_twips(*this, left, top, width, height);
  }
  bool Visible() const override { return !isHidden(); }
  void Visible(bool visible) override { setVisible(visible); }
  bool Enabled() const override { return !testAttribute(Qt::WA_ForceDisabled); }
  void Enabled(bool enabled) override { setEnabled(enabled); }
};

/// The read-only title box. Its state is an in-memory box (`model()`), which
/// sets every rule; the widget shows it: the text, one paragraph per line
/// ("\r\n", or a lone "\r" or "\n"), each character bold or not and in its
/// colour (system colours from the widget's palette), the font size (0
/// keeps the widget's) and the tool tip.
class QtRichTextBox : public QTextEdit, public platform::RichTextBox {
  Q_OBJECT

 public:
  explicit QtRichTextBox(QWidget* parent = nullptr);  ///< An empty, read-only box.

  bool Move(int32_t left, int32_t top, int32_t width, int32_t height) override {
    return move_in_twips(*this, left, top, width, height);
  }
  bool Visible() const override { return !isHidden(); }
  void Visible(bool visible) override { setVisible(visible); }
  bool Enabled() const override { return !testAttribute(Qt::WA_ForceDisabled); }
  void Enabled(bool enabled) override { setEnabled(enabled); }

  zelkora::Text Text() const override { return model_.Text(); }
  void Text(TextView text) override;
  zelkora::Text TextRTF() const override { return model_.TextRTF(); }
  void TextRTF(TextView rtf) override;
  int32_t SelStart() const override { return model_.SelStart(); }
  void SelStart(int32_t start) override { model_.SelStart(start); }
  int32_t SelLength() const override { return model_.SelLength(); }
  void SelLength(int32_t length) override { model_.SelLength(length); }
  zelkora::Text SelText() const override { return model_.SelText(); }
  void SelText(TextView text) override;
  uint32_t SelColor() const override { return model_.SelColor(); }
  void SelColor(uint32_t colour) override;
  zelkora::Text ToolTipText() const override { return model_.ToolTipText(); }
  void ToolTipText(TextView text) override;
  float FontSize() const override { return model_.FontSize(); }
  void FontSize(float size) override;
  /// The in-memory box that holds the state.
  const headless::MemoryRichTextBox& model() const { return model_; }

 protected:
  void changeEvent(QEvent* event) override;  ///< Draws again when the palette or font changes.

 private:
  /// Draws the model into the document.
  void render();

  headless::MemoryRichTextBox model_;
};

// ---- Message box -----------------------------------------------------------

/// The host's modal message box over QMessageBox, in front of `parent`
/// (which may be null, or go away before the box is used). Texts show their
/// "\r\n" as line breaks, as plain text. Diagnostics go to `log`, or to
/// qWarning() when there is none.
class QtMessageBox : public platform::MessageBox {
 public:  /// A box in front of `parent`; diagnostics go to `log`.
  explicit QtMessageBox(QWidget* parent = nullptr,
                        std::function<void(std::string_view)> log = nullptr);

  void warning(TextView text, TextView title) override;
  int32_t question(TextView text, TextView title) override;
  void diagnostic(std::string_view message) override;

  /// A modal box of any buttons (Save, Discard and Cancel, say): the button
  /// the user pressed.
  QMessageBox::StandardButton choose(QMessageBox::Icon icon, TextView text, TextView title,
                                     QMessageBox::StandardButtons buttons);

  /// Called, when set, with each box just before it is shown modally; a
  /// script reads the box here and schedules its click.
  std::function<void(QMessageBox&)> on_show;

 private:
  int exec(QMessageBox::Icon icon, TextView text, TextView title,
           QMessageBox::StandardButtons buttons);

  QPointer<QWidget> parent_;
  std::function<void(std::string_view)> log_;
};

}  // namespace zelkora::platform::qt
