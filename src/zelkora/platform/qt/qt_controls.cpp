// The Qt widgets behind the simple control interfaces (qt_controls.h).
#include "zelkora/platform/qt/qt_controls.h"

#include <QAbstractButton>
#include <QAction>
#include <QButtonGroup>
#include <QDebug>
#include <QEvent>
#include <QFont>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <cmath>
#include <utility>

#include "zelkora/platform/grade_font.h"

namespace zelkora::platform::qt {

// ---- Conversions -----------------------------------------------------------

QString to_qstring(TextView text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

zelkora::Text to_text(const QString& text) {
  return zelkora::Text(reinterpret_cast<const char16_t*>(text.utf16()),
                       static_cast<std::size_t>(text.size()));
}

int twips_to_pixels(int twips, double logical_dpi) {
  return static_cast<int>(std::lround(twips * logical_dpi / 1440.0));
}

bool move_in_twips(QWidget& widget, int32_t left, int32_t top, int32_t width, int32_t height) {
  if (width < 0 || height < 0) return false;
  const double dpi_x = widget.logicalDpiX();
  const double dpi_y = widget.logicalDpiY();
  widget.setGeometry(twips_to_pixels(left, dpi_x), twips_to_pixels(top, dpi_y),
                     twips_to_pixels(width, dpi_x), twips_to_pixels(height, dpi_y));
  return true;
}

QColor to_qcolor(uint32_t colour, const QPalette& palette) {
  if (!is_system_colour(colour)) {
    const QColor given(static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
                       static_cast<int>((colour >> 16) & 0xFF));
    return given;
  }
  switch (colour & 0xFF) {
    case 5:
      return palette.color(QPalette::Base);
    case 8:
      return palette.color(QPalette::Text);
    case 11:
      return palette.color(QPalette::Midlight);
    case 12:
      return palette.color(QPalette::Dark);
    case 13:
      return palette.color(QPalette::Highlight);
    case 14:
      return palette.color(QPalette::HighlightedText);
    case 15:
      return palette.color(QPalette::Button);
    case 17: {
      // Halfway between the text and its ground, as the systems' gray text
      // is: readable on the light grays of headings.
      const QColor text = palette.color(QPalette::Text);
      const QColor base = palette.color(QPalette::Base);
      return QColor((text.red() + base.red()) / 2, (text.green() + base.green()) / 2,
                    (text.blue() + base.blue()) / 2);
    }
    case 18:
      return palette.color(QPalette::ButtonText);
    default:
      return palette.color(QPalette::Window);
  }
}

QColor readable_colour(uint32_t colour, const QPalette& palette) {
  const QColor given = to_qcolor(colour, palette);
  if (is_system_colour(colour) || palette.color(QPalette::Base).lightness() >= 128) return given;
  return QColor::fromHsl(given.hslHue(), given.hslSaturation(), 255 - given.lightness());
}

// ---- QtCheckBox ------------------------------------------------------------

QtCheckBox::QtCheckBox(const QString& text, QWidget* parent) : QCheckBox(text, parent) {
  setTristate(true);
}

int16_t QtCheckBox::Value() const {
  switch (checkState()) {
    case Qt::Checked:
      return 1;
    case Qt::PartiallyChecked:
      return 2;
    default:
      return 0;
  }
}

void QtCheckBox::Value(int16_t value) {
  static constexpr Qt::CheckState kStates[] = {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
  if (value >= 0 && value <= 2) setCheckState(kStates[value]);
}

void QtCheckBox::nextCheckState() {
  setCheckState(checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}

// ---- QtOptionButton --------------------------------------------------------

QtOptionButton::QtOptionButton(const QString& text, QWidget* parent) : QRadioButton(text, parent) {}

void QtOptionButton::Value(bool value) {
  if (value || !isChecked()) {
    setChecked(value);
    return;
  }
  // The chosen button of an exclusive group refuses to be unchecked: the
  // group lets it go for this once.
  if (QButtonGroup* buttons = group(); buttons && buttons->exclusive()) {
    buttons->setExclusive(false);
    setChecked(false);
    buttons->setExclusive(true);
  } else {
    const bool exclusive = autoExclusive();
    setAutoExclusive(false);
    setChecked(false);
    setAutoExclusive(exclusive);
  }
}

// ---- QtComboBox ------------------------------------------------------------

QtComboBox::QtComboBox(QWidget* parent) : QComboBox(parent) {
  setInsertPolicy(QComboBox::NoInsert);
  SetStyle(kDropdownCombo);
}

zelkora::Text QtComboBox::List(int32_t index) const { return to_text(itemText(index)); }

void QtComboBox::AddItem(TextView item) {
  // The first item would become the current one; the text stays as it was.
  const QSignalBlocker blocker(this);
  const QString shown = currentText();
  const int current = currentIndex();
  addItem(to_qstring(item));
  if (current < 0) setCurrentIndex(-1);
  if (isEditable() && currentText() != shown) setEditText(shown);
}

void QtComboBox::Clear() {
  const QSignalBlocker blocker(this);
  const QString typed = isEditable() ? currentText() : QString();
  clear();
  if (isEditable()) setEditText(typed);
}

zelkora::Text QtComboBox::Text() const { return to_text(currentText()); }

void QtComboBox::Text(TextView text) {
  const QString wanted = to_qstring(text);
  if (isEditable()) {
    setEditText(wanted);
    return;
  }
  const int index = findText(wanted, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (index >= 0) setCurrentIndex(index);
}

void QtComboBox::SetStyle(int16_t style) {
  if (style != kDropdownCombo && style != kDropdownList) return;
  const bool editable = style == kDropdownCombo;
  if (editable == isEditable()) return;
  const QString shown = currentText();
  setEditable(editable);
  if (editable) setCompleter(nullptr);  // a typed text is taken as it is typed
  Text(to_text(shown));
}

void QtComboBox::SetBackColor(uint32_t colour) {
  back_colour_ = colour;
  if (!natural_palette_) natural_palette_ = palette();
  QPalette painted = palette();
  for (const QPalette::ColorGroup group :
       {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    QPalette natural = *natural_palette_;
    natural.setCurrentColorGroup(group);
    painted.setColor(group, QPalette::Base, to_qcolor(colour, natural));
  }
  setPalette(painted);
}

// ---- QtListBox -------------------------------------------------------------

QtListBox::QtListBox(QWidget* parent) : QListWidget(parent) {
  setSelectionMode(QAbstractItemView::MultiSelection);
}

zelkora::Text QtListBox::List(int32_t index) const {
  const QListWidgetItem* entry = item(index);
  return entry ? to_text(entry->text()) : zelkora::Text();
}

void QtListBox::AddItem(TextView item) { addItem(to_qstring(item)); }

bool QtListBox::Selected(int32_t index) const {
  const QListWidgetItem* entry = item(index);
  return entry && entry->isSelected();
}

void QtListBox::Selected(int32_t index, bool selected) {
  if (QListWidgetItem* entry = item(index)) entry->setSelected(selected);
}

// ---- QtListView ------------------------------------------------------------

QtListView::QtListView(QWidget* parent) : QTreeWidget(parent) {
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
}

QTreeWidgetItem* QtListView::item_at(int32_t item) const {
  return item >= 1 && item <= topLevelItemCount() ? topLevelItem(item - 1) : nullptr;
}

int32_t QtListView::ListItemsAdd(TextView text) {
  auto* entry = new QTreeWidgetItem(this);  // owned by the view, appended at the end
  entry->setText(0, to_qstring(text));
  return topLevelItemCount();
}

zelkora::Text QtListView::ItemText(int32_t item) const {
  const QTreeWidgetItem* entry = item_at(item);
  return entry ? to_text(entry->text(0)) : zelkora::Text();
}

zelkora::Text QtListView::SubItem(int32_t item, int32_t sub) const {
  const QTreeWidgetItem* entry = item_at(item);
  return entry && sub >= 1 && sub < columnCount() ? to_text(entry->text(sub)) : zelkora::Text();
}

void QtListView::SubItem(int32_t item, int32_t sub, TextView text) {
  QTreeWidgetItem* entry = item_at(item);
  if (entry && sub >= 1 && sub < columnCount()) entry->setText(sub, to_qstring(text));
}

void QtListView::ItemText(int32_t item, TextView text) {
  if (QTreeWidgetItem* entry = item_at(item)) entry->setText(0, to_qstring(text));
}

int32_t QtListView::SelectedItem() const {
  QTreeWidgetItem* entry = currentItem();
  return entry && entry->isSelected() ? indexOfTopLevelItem(entry) + 1 : 0;
}

void QtListView::SelectedItem(int32_t item) {
  QTreeWidgetItem* entry = item_at(item);
  if (entry) {
    setCurrentItem(entry);
    entry->setSelected(true);
  } else {
    clearSelection();
    setCurrentItem(nullptr);
  }
}

// ---- QtToolbar -------------------------------------------------------------

QtToolbar::QtToolbar(QWidget* parent) : QToolBar(parent) {}

QAction* QtToolbar::AddButton(const QString& text) {
  QAction* action = addAction(text);
  action->setCheckable(true);
  return action;
}

QAction* QtToolbar::button(int32_t index) const {
  const QList<QAction*> buttons = actions();
  return index >= 1 && index <= buttons.size() ? buttons[index - 1] : nullptr;
}

int32_t QtToolbar::ButtonsCount() const { return static_cast<int32_t>(actions().size()); }

int16_t QtToolbar::ButtonValue(int32_t index) const {
  const QAction* action = button(index);
  return action && action->isChecked() ? 1 : 0;
}

void QtToolbar::ButtonValue(int32_t index, int16_t value) {
  if (QAction* action = button(index)) action->setChecked(value != 0);
}

// ---- QtRichTextBox ---------------------------------------------------------

QtRichTextBox::QtRichTextBox(QWidget* parent) : QTextEdit(parent) {
  setReadOnly(true);
  setAcceptRichText(false);
  document()->setUndoRedoEnabled(false);
  render();
}

void QtRichTextBox::Text(TextView text) {
  model_.Text(text);
  render();
}

void QtRichTextBox::TextRTF(TextView rtf) {
  model_.TextRTF(rtf);
  render();
}

void QtRichTextBox::SelText(TextView text) {
  model_.SelText(text);
  render();
}

void QtRichTextBox::SelColor(uint32_t colour) {
  model_.SelColor(colour);
  render();
}

void QtRichTextBox::ToolTipText(TextView text) {
  model_.ToolTipText(text);
  render();
}

void QtRichTextBox::FontSize(float size) {
  model_.FontSize(size);
  render();
}

void QtRichTextBox::changeEvent(QEvent* event) {
  QTextEdit::changeEvent(event);
  // System colours and the font follow the widget's.
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) render();
}

void QtRichTextBox::render() {
  setToolTip(to_qstring(model_.ToolTipText()));
  QTextDocument& doc = *document();
  doc.clear();
  QFont font = this->font();
  if (model_.FontSize() > 0) font.setPointSizeF(model_.FontSize());
  // The steel-grade symbols (U+E000-U+E003) from the project's font.
  font.setFamilies({font.family(), QString::fromLatin1(platform::kGradeFontFamily)});
  doc.setDefaultFont(font);

  const zelkora::Text text = model_.Text();
  const auto& formats = model_.formats();
  const auto is_break = [](char16_t c) { return c == u'\r' || c == u'\n'; };
  QTextCursor cursor(&doc);
  for (std::size_t i = 0; i < text.size();) {
    if (is_break(text[i])) {
      cursor.insertBlock();
      i += text.compare(i, 2, u"\r\n") == 0 ? 2 : 1;
      continue;
    }
    std::size_t end = i + 1;
    while (end < text.size() && !is_break(text[end]) && formats[end] == formats[i]) ++end;
    QTextCharFormat format;
    format.setFontWeight(formats[i].bold ? QFont::Bold : QFont::Normal);
    format.setForeground(readable_colour(formats[i].colour, palette()));
    cursor.insertText(to_qstring(TextView(text).substr(i, end - i)), format);
    i = end;
  }
}

// ---- QtMessageBox ----------------------------------------------------------

QtMessageBox::QtMessageBox(QWidget* parent, std::function<void(std::string_view)> log)
    : parent_(parent), log_(std::move(log)) {}

void QtMessageBox::warning(TextView text, TextView title) {
  exec(QMessageBox::Warning, text, title, QMessageBox::Ok);
}

int32_t QtMessageBox::question(TextView text, TextView title) {
  return exec(QMessageBox::Question, text, title, QMessageBox::Yes | QMessageBox::Cancel) ==
                 QMessageBox::Yes
             ? kYes
             : kCancel;
}

QMessageBox::StandardButton QtMessageBox::choose(QMessageBox::Icon icon, TextView text,
                                                 TextView title,
                                                 QMessageBox::StandardButtons buttons) {
  return static_cast<QMessageBox::StandardButton>(exec(icon, text, title, buttons));
}

void QtMessageBox::diagnostic(std::string_view message) {
  if (log_) {
    log_(message);
  } else {
    qWarning().noquote() << QString::fromUtf8(message.data(),
                                              static_cast<qsizetype>(message.size()));
  }
}

int QtMessageBox::exec(QMessageBox::Icon icon, TextView text, TextView title,
                       QMessageBox::StandardButtons buttons) {
  const zelkora::Text lines = replace_all(replace_all(text, u"\r\n", u"\n"), u"\r", u"\n");
  QMessageBox box(icon, to_qstring(title), to_qstring(lines), buttons, parent_.data());
  box.setTextFormat(Qt::PlainText);
  if (on_show) on_show(box);
  return box.exec();
}

}  // namespace zelkora::platform::qt
