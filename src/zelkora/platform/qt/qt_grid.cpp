// The grid control over a Qt table: drawing the model, and the user's actions
// as the grid's events.
#include "zelkora/platform/qt/qt_grid.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFontDatabase>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>

#include "zelkora/platform/grade_font.h"
#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::platform::qt {

namespace {

QPixmap to_pixmap(const Picture& picture) {
  QImage image(picture.width, picture.height, QImage::Format_ARGB32);
  for (int32_t y = 0; y < picture.height; ++y) {
    for (int32_t x = 0; x < picture.width; ++x) {
      const std::size_t at = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                             static_cast<std::size_t>(x);
      image.setPixel(x, y, at < picture.pixels.size() ? picture.pixels[at] : 0u);
    }
  }
  return QPixmap::fromImage(image);
}

// The fonts tried, in order, where the name the grid was given is missing:
// the CJK fonts of the common systems.
const char* const kCjkFamilies[] = {
    "SimSun",
    "NSimSun",
    "Microsoft YaHei",
    "Noto Sans CJK SC",
    "Noto Serif CJK SC",
    "Source Han Sans SC",
    "WenQuanYi Micro Hei",
    "WenQuanYi Zen Hei",
    "AR PL UMing CN",
    "Droid Sans Fallback",
};

QString available_family(const QString& wanted) {
  const QStringList families = QFontDatabase::families();
  if (families.contains(wanted)) return wanted;
  // "宋体" is SimSun.
  if (wanted == QStringLiteral("宋体") && families.contains(QStringLiteral("SimSun"))) {
    return QStringLiteral("SimSun");
  }
  for (const char* family : kCjkFamilies) {
    if (families.contains(QString::fromLatin1(family))) return QString::fromLatin1(family);
  }
  return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

bool looks_numeric(TextView text) {
  bool ok = false;
  to_qstring(trim(text)).toDouble(&ok);
  return ok;
}

Qt::Alignment qt_alignment(int16_t alignment, TextView text) {
  switch (alignment) {
    case GridControl::kAlignLeft:
      return Qt::AlignLeft | Qt::AlignVCenter;
    case GridControl::kAlignCenter:
      return Qt::AlignHCenter | Qt::AlignVCenter;
    case GridControl::kAlignRight:
      return Qt::AlignRight | Qt::AlignVCenter;
    default:  // general: text left, numbers right
      return (looks_numeric(text) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
  }
}

// The stale mark of a whole row (QtGridControl::stale_).
constexpr uint64_t kWholeRow = ~uint64_t{0};

// The ground of a refused value: the palette's base with a fifth of red.
QColor refused_ground(const QPalette& palette) {
  const QColor base = palette.color(QPalette::Base);
  return QColor((base.red() * 4 + 255) / 5, base.green() * 4 / 5, base.blue() * 4 / 5);
}

}  // namespace

// ---- The cell editors ---------------------------------------------------------

namespace {

// The editor of a list cell: an editable combo box whose list is filled just
// before it opens, and which reports a pick only for an item chosen from
// its open list, which closes the list first (the box also reports
// "activated" whenever its line loses the focus or takes Enter on a text
// that matches an item: that is no pick, the cell is left as any other).
// The grid moving its active cell itself (a paste, Enter, the form) selects
// that cell alone, whatever modifier keys are down (Ctrl of Ctrl+V would
// add it to the selection, and a copy would take the rows pasted into).
constexpr QItemSelectionModel::SelectionFlags kSelectOnly = QItemSelectionModel::ClearAndSelect;

class ListEditor : public QComboBox {
 public:
  ListEditor(QWidget* parent, std::function<std::vector<zelkora::Text>()> fill,
             std::function<void(const QString&)> picked)
      : QComboBox(parent), fill_(std::move(fill)), picked_(std::move(picked)) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    // What is typed is the value: no item of the list completes it behind
    // the form's back ("8" would show as "800", the item holding "8").
    setCompleter(nullptr);
    QObject::connect(this, &QComboBox::activated, this, [this](int item) {
      if (closing_popup_) picked_(itemText(item));
    });
    view()->installEventFilter(this);
  }

  void set_items(const std::vector<zelkora::Text>& items) {
    const QString text = currentText();
    clear();
    for (const zelkora::Text& item : items) addItem(to_qstring(item));
    // The list opens on the cell's value, or on no item when the value is
    // none of them.
    setCurrentIndex(findText(text));
    setEditText(text);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (watched != view() || !key) return QComboBox::eventFilter(watched, event);
    // The open list's keys, the grid's rule on every host: Up and Down move
    // its highlight (from none to the first item), Enter, F4 and Alt+Down
    // pick the highlighted item (with none, only close the list), Escape
    // closes it; it takes no other key (no search by typing).
    event->accept();
    if (event->type() == QEvent::KeyPress) list_key(*static_cast<QKeyEvent*>(event));
    return true;
  }

  void showPopup() override {
    set_items(fill_());
    QComboBox::showPopup();
    // The box would highlight its first item for a value that is none.
    if (currentIndex() < 0) view()->selectionModel()->clear();
  }
  void hidePopup() override {
    // The box hides its list also when it is hidden itself (its cell left),
    // list open or not: only an open list's closing makes a pick.
    if (!view()->isVisible()) return QComboBox::hidePopup();
    closing_popup_ = true;
    QComboBox::hidePopup();
    // Once the list has closed (and given its pick), the whole text is
    // selected: the next key replaces it.
    QMetaObject::invokeMethod(
        this,
        [this] {
          closing_popup_ = false;
          lineEdit()->selectAll();
        },
        Qt::QueuedConnection);
  }

 protected:
  // The arrows move between rows, as in a text cell, and the wheel scrolls
  // the grid: neither steps through the list behind the cell's back (only
  // Alt+Down and F4 open it).
  void keyPressEvent(QKeyEvent* event) override {
    const bool step = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                      event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
    if (step && !(event->modifiers() & Qt::AltModifier)) return event->ignore();
    QComboBox::keyPressEvent(event);
  }
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }

 private:
  void list_key(const QKeyEvent& event) {
    const QModelIndex at = view()->currentIndex();
    const int last = count() - 1;
    const bool alt = event.modifiers() & Qt::AltModifier;
    const int key = event.key() == Qt::Key_Down && alt ? Qt::Key_F4 : event.key();
    switch (key) {
      case Qt::Key_Up:
      case Qt::Key_Down: {
        const int step = key == Qt::Key_Up ? -1 : 1;
        const int to = at.isValid() ? std::clamp(at.row() + step, 0, last) : 0;
        if (last >= 0) view()->setCurrentIndex(view()->model()->index(to, modelColumn()));
        return;
      }
      case Qt::Key_Return:
      case Qt::Key_Enter:
      case Qt::Key_F4:
        hidePopup();
        if (!at.isValid()) return;
        setCurrentIndex(at.row());
        picked_(itemText(at.row()));
        return;
      case Qt::Key_Escape:
        hidePopup();
        return;
      default:
        return;
    }
  }

  std::function<std::vector<zelkora::Text>()> fill_;
  std::function<void(const QString&)> picked_;
  bool closing_popup_ = false;  // the list is closing: its choice is a pick
};

}  // namespace

// A line edit for a text cell, an editable combo box for a combo cell (its
// items are the cell's list when the editor opens). Every change of the
// text and every pick goes to the grid at once.
class QtGridControl::Delegate : public QStyledItemDelegate {
 public:
  explicit Delegate(QtGridControl& grid) : QStyledItemDelegate(&grid), grid_(grid) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                        const QModelIndex& index) const override {
    const int32_t row = index.row();
    const int32_t col = index.column();
    QtGridControl& grid = grid_;
    if (grid.model_.CellType(row, col) == kComboCell) {
      auto* combo = new ListEditor(
          parent,
          [&grid, row, col] {
            // The list is about to open: the form fills it.
            grid.raise([](GridEvents& e) { e.ComboDropDown(); });
            return grid.model_.ComboList(row, col);
          },
          [&grid, row, col](const QString& text) { grid.editor_picked(row, col, text); });
      combo->setFont(grid.cell_font(false));
      combo->set_items(grid.model_.ComboList(row, col));
      QObject::connect(
          combo->lineEdit(), &QLineEdit::textEdited, combo,
          [&grid, row, col](const QString& text) { grid.editor_text_changed(row, col, text); });
      combo->installEventFilter(&grid);
      return combo;
    }
    auto* line = new QLineEdit(parent);
    line->setFont(grid.cell_font(false));
    line->setFrame(false);
    QObject::connect(line, &QLineEdit::textEdited, line, [&grid, row, col](const QString& text) {
      grid.editor_text_changed(row, col, text);
    });
    line->installEventFilter(&grid);
    return line;
  }

  void setEditorData(QWidget* editor, const QModelIndex& index) const override {
    const QString text = to_qstring(grid_.model_.Text(index.row(), index.column()));
    auto* combo = qobject_cast<QComboBox*>(editor);
    QLineEdit* line = combo ? combo->lineEdit() : qobject_cast<QLineEdit*>(editor);
    if (!line) return;
    // The editor lays its whole text out again at every key: a value takes
    // at most kMaxTypedLength characters as typed (a longer one from a file
    // keeps its length), so a keystroke costs the same in every cell.
    line->setMaxLength(std::max<int>(kMaxTypedLength, static_cast<int>(text.size())));
    if (combo) {
      combo->setEditText(text);
    } else {
      line->setText(text);
    }
    line->selectAll();
  }

  // The model already holds every change of the text; the table item is
  // drawn from it.
  void setModelData(QWidget* /*editor*/, QAbstractItemModel* /*model*/,
                    const QModelIndex& index) const override {
    grid_.draw_cell(index.row(), index.column());
  }

 private:
  QtGridControl& grid_;
};

// ---- The control ----------------------------------------------------------------

QtGridControl::QtGridControl(QWidget* parent) : QTableWidget(parent) {
  delegate_ = new Delegate(*this);
  setItemDelegate(delegate_);
  horizontalHeader()->hide();
  verticalHeader()->hide();
  verticalHeader()->setMinimumSectionSize(1);
  horizontalHeader()->setMinimumSectionSize(1);
  // A click on the active cell edits it at once (mouseReleaseEvent): the
  // view's own slow edit would swallow the keys typed while it waits.
  setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                  QAbstractItemView::AnyKeyPressed);
  setSelectionBehavior(QAbstractItemView::SelectItems);
  QTableWidget::setSelectionMode(QAbstractItemView::SingleSelection);
  setTabKeyNavigation(true);
  // Sideways by pixels: scrolled by whole columns, a grid narrower than its
  // columns (the last one stretched) would put the value column out of
  // sight when a value cell is scrolled to.
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  // A cell shows one line, elided where it is too narrow: drawn without
  // laying the text out for wrapping.
  setWordWrap(false);
  font_family_ = available_family(QStringLiteral("宋体"));
  fonts_changed();
}

QtGridControl::~QtGridControl() = default;

// ---- Drawing ----------------------------------------------------------------------

void QtGridControl::fonts_changed() {
  for (const bool bold : {false, true}) {
    QFont& font = fonts_[bold ? 1 : 0];
    font = QFont(font_family_);
    // The steel-grade symbols (U+E000-U+E003) from the project's font.
    font.setFamilies({font_family_, QString::fromLatin1(platform::kGradeFontFamily)});
    font.setPointSizeF(font_points_ > 0 ? font_points_ : 9);
    font.setBold(bold);
  }
  // At least the height the bold font needs, whatever the scale.
  least_row_height_ = QFontMetrics(fonts_[1]).height() + 4;
}

void QtGridControl::draw_size() {
  if (rowCount() != model_.Rows()) setRowCount(model_.Rows());
  if (columnCount() != model_.Cols()) setColumnCount(model_.Cols());
  for (int32_t col = 0; col < model_.Cols(); ++col) {
    const int32_t width = model_.ColWidth(col);
    setColumnHidden(col, width <= 0);
    if (width > 0) setColumnWidth(col, width);
  }
}

void QtGridControl::draw_all() {
  draw_size();
  clearSpans();
  {
    // Every cell anew: the view is told once, not cell by cell and role by
    // role (the table's model changes no rows here, only their items).
    const QSignalBlocker quiet(QTableWidget::model());
    for (int32_t row = 0; row < model_.Rows(); ++row) draw_row(row);
  }
  viewport()->update();
}

int32_t QtGridControl::shown_height() const {
  // A row the grid folded away but a filter shows: the height of the shown
  // ones; never less than the font needs, at any scale.
  int32_t height = model_.DefaultRowHeight();
  for (int32_t row = 1; row < model_.Rows() && height <= 0; ++row) {
    height = model_.RowHeight(row);
  }
  return std::max(height, least_row_height_);
}

void QtGridControl::draw_row(int32_t row) {
  draw_row_height(row);
  const auto [first, last] = model_.merged(row);
  if (last > first) {
    setSpan(row, first, 1, last - first + 1);
  } else if (rowSpan(row, 0) > 1 || columnSpan(row, 0) > 1) {
    setSpan(row, 0, 1, 1);
  }
  for (int32_t col = 0; col < model_.Cols(); ++col) draw_cell(row, col);
}

void QtGridControl::draw_cell(int32_t row, int32_t col) {
  if (row >= rowCount() || col >= columnCount()) return;
  const headless::MemoryGrid::Cell& cell = model_.cell(row, col);
  // A new item is filled before the table takes it: one change for the
  // view, not one a role. An item's setters tell the view only of a role
  // whose value changed.
  QTableWidgetItem* item = this->item(row, col);
  const bool fresh = item == nullptr;
  if (fresh) item = new QTableWidgetItem;
  // A merged range shows the picture of its first column and the text of
  // the first of its columns that has one.
  zelkora::Text text = cell.text;
  zelkora::Text image = cell.image_key;
  const auto [first, last] = model_.merged(row);
  if (last > first && col == first) {
    text.clear();
    for (int32_t c = first; c <= last && text.empty(); ++c) text = model_.Text(row, c);
  }
  const bool bold_source =
      last > first && col == first
          ? [&] {
              for (int32_t c = first; c <= last; ++c) {
                if (!model_.Text(row, c).empty()) return model_.FontBold(row, c);
              }
              return cell.font_bold;
            }()
          : cell.font_bold;
  uint32_t fore = cell.fore_color;
  if (last > first && col == first) {
    for (int32_t c = first; c <= last; ++c) {
      if (!model_.Text(row, c).empty()) {
        fore = model_.ForeColor(row, c);
        break;
      }
    }
  }
  const QPalette& shown = palette();
  item->setText(to_qstring(text));
  item->setFont(cell_font(bold_source));
  item->setForeground(readable_colour(fore, shown));
  const QString mark = marks_.value({row, col});
  item->setBackground(mark.isEmpty() ? readable_colour(cell.back_color, shown)
                                     : refused_ground(shown));
  const QPair<QString, QString> described = descriptions_.value({row, col});
  item->setData(Qt::AccessibleTextRole,
                described.first.isEmpty() ? QVariant() : QVariant(described.first));
  // A named cell is a value: Qt's table cells have no value of their own
  // to tell, so the description begins with it, then the refusal, the help.
  QStringList told;
  if (!described.first.isEmpty()) told << QStringLiteral("值：") + to_qstring(text);
  if (!mark.isEmpty()) told << mark;
  if (!described.second.isEmpty()) told << described.second;
  const QString description = told.join(QLatin1Char('\n'));
  item->setData(Qt::AccessibleDescriptionRole,
                description.isEmpty() ? QVariant() : QVariant(description));
  item->setToolTip(mark);
  item->setTextAlignment(qt_alignment(cell.alignment, text));
  item->setData(Qt::DecorationRole,
                image.empty() ? QVariant() : QVariant(icons_.value(to_qstring(image))));
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (!model_.Locked(row)) flags |= Qt::ItemIsEditable;
  if (fresh || item->flags() != flags) item->setFlags(flags);  // setFlags always tells the view
  if (fresh) setItem(row, col, item);
}

// ---- Size ----------------------------------------------------------------------------

bool QtGridControl::Move(int32_t left, int32_t top, int32_t width, int32_t height) {
  return move_in_twips(*this, left, top, width, height);
}

// A setter that leaves the model as it was draws nothing: the table already
// shows it (a grid built again over the same rows draws only what differs).

void QtGridControl::Rows(int32_t rows) {
  const bool same = model_.Rows() == rows;
  model_.Rows(rows);
  if (!same) redraw_all();
}

void QtGridControl::Cols(int32_t cols) {
  const bool same = model_.Cols() == cols;
  model_.Cols(cols);
  if (!same) redraw_all();
}

void QtGridControl::RowHeight(int32_t row, int32_t height) {
  if (model_.RowHeight(row) == height) return;
  model_.RowHeight(row, height);
  if (drawing()) {
    draw_row_height(row);
  } else {
    stale(row);
  }
}

void QtGridControl::draw_row_height(int32_t row) {
  // Only what changed reaches the table's header: each change of a section
  // lays the view out again.
  const bool shown = row_shown(row);
  if (isRowHidden(row) == shown) setRowHidden(row, !shown);
  if (!shown) return;
  // At least the height the font needs, whatever the scale.
  const int32_t height = model_.RowHeight(row);
  const int32_t wanted = std::max(height > 0 ? height : shown_height(), least_row_height_);
  if (rowHeight(row) != wanted) setRowHeight(row, wanted);
}

void QtGridControl::mark_cell(int32_t row, int32_t col, const QString& note) {
  if (note.isEmpty() ? marks_.remove({row, col}) == 0 : marks_.value({row, col}) == note) return;
  if (!note.isEmpty()) marks_.insert({row, col}, note);
  redraw_cell(row, col);
}

void QtGridControl::note_cell(int32_t row, int32_t col, const QString& note) {
  if (note.isEmpty()) {
    notes_.remove({row, col});
  } else {
    notes_.insert({row, col}, note);
  }
}

bool QtGridControl::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTableWidget::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QModelIndex index = indexAt(help->pos());
  QString tip;
  if (index.isValid()) {
    const QPair<int32_t, int32_t> at{index.row(), index.column()};
    tip = marks_.value(at, notes_.value(at));
    if (tip.isEmpty()) {
      const QString text = index.data(Qt::DisplayRole).toString();
      const QFont font = index.data(Qt::FontRole).value<QFont>();
      const int room =
          visualRect(index).width() - 2 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin) - 4;
      if (QFontMetrics(font).horizontalAdvance(text) > room) tip = text;
    }
  }
  if (tip.isEmpty()) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(help->globalPos(), tip, viewport(), visualRect(index));
  }
  return true;
}

void QtGridControl::describe_cell(int32_t row, int32_t col, const QString& name,
                                  const QString& description) {
  descriptions_.insert({row, col}, {name, description});
  redraw_cell(row, col);
}

// ---- The user's column width --------------------------------------------------------

namespace {

// How near the edge of a column the mouse takes it, in pixels.
constexpr int kEdgeGrip = 4;

}  // namespace

void QtGridControl::resizable_column(int32_t col, int least) {
  resizable_col_ = col;
  least_width_ = std::max(least, 1);
  viewport()->setMouseTracking(col >= 0);
}

bool QtGridControl::on_column_edge(QPoint at) const {
  const int32_t col = resizable_col_;
  if (col < 0 || col >= columnCount() || isColumnHidden(col)) return false;
  const int row = rowAt(at.y());
  if (row < 0) return false;
  // A merged range hides the edge inside it.
  const auto [first, last] = model_.merged(row);
  if (last > first && first <= col && col < last) return false;
  const int edge = columnViewportPosition(col) + columnWidth(col);
  return std::abs(at.x() - edge) <= kEdgeGrip;
}

void QtGridControl::set_user_width(int width) {
  const int32_t col = resizable_col_;
  if (col < 0 || col >= model_.Cols()) return;
  const int most =
      std::max(least_width_, viewport()->width() - columnViewportPosition(col) - least_width_);
  const int wanted = std::clamp(width, least_width_, most);
  if (wanted != columnWidth(col)) ColWidth(col, wanted);
}

int QtGridControl::fitting_width() const {
  const int32_t col = resizable_col_;
  int widest = least_width_;
  const int padding = 2 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 8;
  for (int32_t row = 1; row < model_.Rows() && row < rowCount(); ++row) {
    const auto [first, last] = model_.merged(row);
    if (!row_shown(row) || (last > first && first <= col && col <= last)) continue;
    const QFontMetrics metrics(cell_font(model_.FontBold(row, col)));
    widest =
        std::max(widest, metrics.horizontalAdvance(to_qstring(model_.Text(row, col))) + padding);
  }
  return widest;
}

void QtGridControl::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (resizing_) {
    set_user_width(at.x() - columnViewportPosition(resizable_col_) + grip_);
    event->accept();
    return;
  }
  if (resizable_col_ >= 0 && event->buttons() == Qt::NoButton) {
    if (on_column_edge(at)) {
      viewport()->setCursor(Qt::SplitHCursor);
    } else {
      viewport()->unsetCursor();
    }
  }
  QTableWidget::mouseMoveEvent(event);
}

void QtGridControl::show_only(std::vector<bool> kept) {
  model_.show_only(std::move(kept));
  for (int32_t row = 0; row < model_.Rows(); ++row) draw_row_height(row);
}

void QtGridControl::DefaultRowHeight(int32_t height) {
  const bool same = model_.DefaultRowHeight() == height;
  model_.DefaultRowHeight(height);
  if (same) return;
  verticalHeader()->setDefaultSectionSize(std::max(height, 1));
  redraw_all();
}

void QtGridControl::ColWidth(int32_t col, int32_t width) {
  const bool same = model_.ColWidth(col) == width;
  model_.ColWidth(col, width);
  if (drawing()) {
    draw_size();
  } else if (!same) {
    stale_all_ = true;  // Refresh sizes the columns
  }
}

// ---- Cells ---------------------------------------------------------------------------

void QtGridControl::Text(int32_t row, int32_t col, TextView text) {
  // What the form writes into the active cell is what Escape goes back to.
  if (entered_at_ == CellRef{row, col}) entered_text_ = zelkora::Text(text);
  if (!drawing()) {
    // The table shows the cell as the model has it unless it is stale. A
    // merged range shows its text in its first column.
    if (model_.Text(row, col) != text) {
      const auto [first, last] = model_.merged(row);
      stale(row, last > first && col >= first && col <= last ? first : col);
    }
    model_.Text(row, col, text);
    return;
  }
  model_.Text(row, col, text);
  const auto [first, last] = model_.merged(row);
  draw_cell(row, last > first && col >= first && col <= last ? first : col);
  // An open editor of the cell shows what the form wrote.
  if (QWidget* editor = indexWidget(QTableWidget::model()->index(row, col));
      editor && !dispatching_) {
    delegate_->setEditorData(editor, QTableWidget::model()->index(row, col));
  }
}

void QtGridControl::CellType(int32_t row, int32_t col, int16_t type) {
  model_.CellType(row, col, type);
}

void QtGridControl::FontBold(int32_t row, int32_t col, bool bold) {
  const bool same = model_.FontBold(row, col) == bold;
  model_.FontBold(row, col, bold);
  if (!same) redraw_row(row);
}

void QtGridControl::ForeColor(int32_t row, int32_t col, uint32_t colour) {
  const bool same = model_.ForeColor(row, col) == colour;
  model_.ForeColor(row, col, colour);
  if (!same) redraw_row(row);
}

void QtGridControl::BackColor(int32_t row, int32_t col, uint32_t colour) {
  const bool same = model_.BackColor(row, col) == colour;
  model_.BackColor(row, col, colour);
  if (!same) redraw_cell(row, col);
}

void QtGridControl::Alignment(int32_t row, int32_t col, int16_t alignment) {
  const bool same = model_.Alignment(row, col) == alignment;
  model_.Alignment(row, col, alignment);
  if (!same) redraw_cell(row, col);
}

void QtGridControl::ComboList(int32_t row, int32_t col, const std::vector<zelkora::Text>& items) {
  model_.ComboList(row, col, items);
}

void QtGridControl::Locked(int32_t row, bool locked) {
  const bool same = model_.Locked(row) == locked;
  model_.Locked(row, locked);
  if (!same) redraw_row(row);
}

void QtGridControl::Merge(int32_t row, int32_t col1, int32_t col2) {
  model_.Merge(row, col1, col2);
  redraw_row(row);
}

void QtGridControl::AddPicture(const Picture& picture, TextView key) {
  model_.AddPicture(picture, key);
  icons_.insert(to_qstring(key), QIcon(to_pixmap(picture)));
}

void QtGridControl::SetImage(int32_t row, int32_t col, TextView key) {
  const bool same = model_.ImageKey(row, col) == key;
  model_.SetImage(row, col, key);
  if (!same) redraw_row(row);
}

// ---- Drawing switch -------------------------------------------------------------------

void QtGridControl::AutoRedraw(bool redraw) {
  // The table is left as it is while drawing is off (changes are kept for
  // Refresh), so it needs no switch of its own: turning a widget's updates
  // back on repaints all of it, the rows nothing changed in too.
  model_.AutoRedraw(redraw);
}

void QtGridControl::Refresh() {
  model_.Refresh();
  if (!drawing()) return;
  // What changed while drawing was off: every row after a change of size or
  // font, else the rows and cells touched.
  if (stale_all_) {
    draw_all();
  } else {
    const auto draw_stale = [this](int32_t row) {
      const uint64_t cols = stale_[static_cast<std::size_t>(row)];
      if (cols == kWholeRow) {
        draw_row(row);
        return;
      }
      for (int32_t col = 0; col < 64 && col < model_.Cols(); ++col) {
        if ((cols >> col) & 1u) draw_cell(row, col);
      }
    };
    std::vector<int32_t> rows;
    for (std::size_t row = 0; row < stale_.size(); ++row) {
      if (stale_[row] != 0 && static_cast<int32_t>(row) < model_.Rows()) {
        rows.push_back(static_cast<int32_t>(row));
      }
    }
    if (rows.size() <= 1) {
      for (const int32_t row : rows) draw_stale(row);
    } else {
      // Many rows: the view is told once. The row of an open editor is
      // drawn on its own, so that the editor shows what the form wrote.
      const int32_t editor_row = editing() ? currentRow() : -1;
      {
        const QSignalBlocker quiet(QTableWidget::model());
        for (const int32_t row : rows) {
          if (row != editor_row) draw_stale(row);
        }
      }
      if (std::find(rows.begin(), rows.end(), editor_row) != rows.end()) draw_stale(editor_row);
      viewport()->update();
    }
  }
  stale_all_ = false;
  stale_.assign(stale_.size(), 0);
}

void QtGridControl::stale(int32_t row, int32_t col) {
  if (row < 0) return;
  if (static_cast<std::size_t>(row) >= stale_.size()) {
    stale_.resize(static_cast<std::size_t>(row) + 1);
  }
  // Columns beyond 63 count as the whole row.
  stale_[static_cast<std::size_t>(row)] |= col >= 0 && col < 63 ? uint64_t{1} << col : kWholeRow;
}

void QtGridControl::redraw_row(int32_t row) {
  if (drawing()) {
    draw_row(row);
  } else {
    stale(row);
  }
}

void QtGridControl::redraw_cell(int32_t row, int32_t col) {
  if (drawing()) {
    draw_cell(row, col);
  } else {
    stale(row, col);
  }
}

void QtGridControl::redraw_all() {
  if (drawing()) {
    draw_all();
  } else {
    stale_all_ = true;
  }
}

// ---- Focus and scrolling -------------------------------------------------------------

void QtGridControl::move_active(int32_t row, int32_t col) {
  const bool was = programmatic_;
  programmatic_ = true;
  setCurrentCell(row, col, kSelectOnly);
  programmatic_ = was;
}

void QtGridControl::ActiveCell(int32_t row, int32_t col) {
  model_.ActiveCell(row, col);
  move_active(row, col);
}

int32_t QtGridControl::BottomRow() const {
  const int32_t last = model_.Rows() - 1;
  const int row = rowAt(viewport()->height() - 1);
  return row < 0 ? last : row;
}

void QtGridControl::SetFocus(int32_t row, int32_t col) {
  model_.SetFocus(row, col);
  move_active(row, col);
  setFocus(Qt::OtherFocusReason);
}

// ---- Appearance ----------------------------------------------------------------------------

void QtGridControl::DefaultFontName(TextView name) {
  model_.DefaultFontName(name);
  const QString family = available_family(to_qstring(name));
  if (family == font_family_ && font() == cell_font(false)) return;
  font_family_ = family;
  fonts_changed();
  setFont(cell_font(false));
  redraw_all();
}

void QtGridControl::DefaultFontSize(float size) {
  model_.DefaultFontSize(size);
  if (static_cast<double>(size) == font_points_ && font() == cell_font(false)) return;
  font_points_ = size;
  fonts_changed();
  setFont(cell_font(false));
  redraw_all();
}

void QtGridControl::BackColorBkg(uint32_t colour) {
  model_.BackColorBkg(colour);
  QPalette shown = palette();
  shown.setColor(QPalette::Base, readable_colour(colour, palette()));
  setPalette(shown);
}

void QtGridControl::GridColor(uint32_t colour) {
  model_.GridColor(colour);
  // A style sheet set again, even the same, styles the widget anew.
  const QString sheet = QStringLiteral("QTableView { gridline-color: %1; }")
                            .arg(readable_colour(colour, palette()).name());
  if (styleSheet() != sheet) setStyleSheet(sheet);
}

void QtGridControl::Appearance(int16_t appearance) {
  model_.Appearance(appearance);
  setFrameShadow(appearance == 0 ? QFrame::Plain : QFrame::Sunken);
}

void QtGridControl::ExtendLastCol(bool extend) {
  model_.ExtendLastCol(extend);
  horizontalHeader()->setStretchLastSection(extend);
}

void QtGridControl::DisplayFocusRect(bool display) {
  model_.DisplayFocusRect(display);
  setFocusPolicy(Qt::StrongFocus);
}

void QtGridControl::DisplayClientBorder(bool display) {
  model_.DisplayClientBorder(display);
  setFrameShape(display ? QFrame::StyledPanel : QFrame::NoFrame);
}

void QtGridControl::SelectionMode(int16_t mode) {
  model_.SelectionMode(mode);
  // Every mode of the suite's grids selects one cell at a time here.
  QTableWidget::setSelectionMode(QAbstractItemView::SingleSelection);
}

// ---- Events --------------------------------------------------------------------------------

bool QtGridControl::raise(const std::function<void(GridEvents&)>& event) {
  if (!events_ || dispatching_) return false;
  dispatching_ = true;
  event(*events_);
  dispatching_ = false;
  return true;
}

bool QtGridControl::leave_active() {
  if (left_) return true;
  const CellRef at = model_.ActiveCell();
  bool cancel = false;
  if (!raise([&](GridEvents& e) { e.LeaveCell(at.row, at.col, cancel); })) return !dispatching_;
  left_ = !cancel;
  // The value taken is what Escape goes back to in an edit of the cell
  // begun without entering it again (after a paste into it, say).
  if (!cancel) {
    entered_at_ = at;
    entered_text_ = model_.Text(at.row, at.col);
  }
  return !cancel;
}

void QtGridControl::keep_editing() {
  const CellRef at = model_.ActiveCell();
  const QModelIndex index = QTableWidget::model()->index(at.row, at.col);
  move_active(at.row, at.col);
  QWidget* editor = indexWidget(index);
  // The value it went back to took the row out of the filter's view: no
  // editor stays on a row not shown.
  if (!row_shown(at.row)) {
    if (editor) QTableWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
    return;
  }
  if (!editor) {
    QTableWidget::edit(index);
    editor = indexWidget(index);
  }
  if (editor) {
    delegate_->setEditorData(editor, index);
    activateWindow();
    editor->setFocus(Qt::OtherFocusReason);
    // Its text selected, as when the cell was entered: what is typed next
    // replaces the value it went back to. (Once the focus change that left
    // the cell has ended: its end takes the selection away.)
    auto* combo = qobject_cast<QComboBox*>(editor);
    if (QLineEdit* line = combo ? combo->lineEdit() : qobject_cast<QLineEdit*>(editor)) {
      line->selectAll();
      QMetaObject::invokeMethod(line, &QLineEdit::selectAll, Qt::QueuedConnection);
    }
  }
}

bool QtGridControl::edit_cell(int32_t row, int32_t col) {
  if (row < 0 || row >= model_.Rows() || col < 0 || col >= model_.Cols()) return false;
  const CellRef active = model_.ActiveCell();
  if (state() == QAbstractItemView::EditingState && active == CellRef{row, col}) return true;
  if (!(active == CellRef{row, col})) {
    if (!leave_active()) {
      keep_editing();
      return false;
    }
    if (state() == QAbstractItemView::EditingState) {
      QTableWidget::closeEditor(indexWidget(currentIndex()), QAbstractItemDelegate::NoHint);
    }
    setCurrentCell(row, col, kSelectOnly);
  }
  scrollTo(QTableWidget::model()->index(row, col));
  if (indexWidget(QTableWidget::model()->index(row, col))) return true;  // already open
  return edit(QTableWidget::model()->index(row, col), QAbstractItemView::EditKeyPressed, nullptr);
}

bool QtGridControl::eventFilter(QObject* watched, QEvent* event) {
  // Undo and Redo in an editor with nothing of its own to undo or redo go
  // on to the window's actions (the values' history), and so does a paste
  // of several lines.
  if (event->type() == QEvent::ShortcutOverride) {
    // A list cell's box has the focus and hands keys to its line directly.
    auto* line = qobject_cast<QLineEdit*>(watched);
    if (auto* combo = qobject_cast<QComboBox*>(watched)) line = combo->lineEdit();
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool undo = key->matches(QKeySequence::Undo);
    const bool redo = key->matches(QKeySequence::Redo) ||
                      (key->key() == Qt::Key_Y && key->modifiers() == Qt::ControlModifier);
    // A column of values (more than one line) is pasted by the window too.
    const bool column_paste =
        key->matches(QKeySequence::Paste) &&
        QApplication::clipboard()->text().trimmed().contains(QLatin1Char('\n'));
    if (line && ((undo && !line->isUndoAvailable()) || (redo && !line->isRedoAvailable()) ||
                 column_paste)) {
      event->ignore();
      return true;
    }
  }
  return QTableWidget::eventFilter(watched, event);
}

bool QtGridControl::leave_cell() {
  if (!leave_active()) {
    keep_editing();
    return false;
  }
  if (QWidget* editor = indexWidget(currentIndex())) {
    QTableWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
    draw_cell(currentIndex().row(), currentIndex().column());
  }
  return true;
}

bool QtGridControl::type_into(int32_t row, int32_t col, const QString& text) {
  if (text.size() > kMaxTypedLength) return false;  // never cut short
  if (!edit_cell(row, col)) return false;
  QWidget* editor = indexWidget(QTableWidget::model()->index(row, col));
  if (auto* combo = qobject_cast<QComboBox*>(editor)) {
    combo->setEditText(text);
  } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
    line->setText(text);
  } else {
    return false;
  }
  editor_text_changed(row, col, text);
  if (!leave_active()) {
    keep_editing();
    return false;
  }
  closeEditor(editor, QAbstractItemDelegate::NoHint);
  return true;
}

void QtGridControl::advance(CellRef from, int step, bool enter) {
  const int32_t col = value_col_ >= 0 ? value_col_ : from.col;
  const int32_t next = next_editable_row(from.row, col, step);
  if (next >= 0) {
    edit_cell(next, col);
  } else if (enter) {
    const int32_t below = model_.next_shown_row(from.row);
    if (below != from.row) setCurrentCell(below, from.col, kSelectOnly);
  }
}

void QtGridControl::open_list() {
  const CellRef at = model_.ActiveCell();
  if (model_.CellType(at.row, at.col) != kComboCell || !edit_cell(at.row, at.col)) return;
  if (auto* combo = qobject_cast<QComboBox*>(indexWidget(currentIndex()))) combo->showPopup();
}

void QtGridControl::editor_text_changed(int32_t row, int32_t col, const QString& text) {
  model_.Text(row, col, to_text(text));
  left_ = false;
  raise([](GridEvents& e) { e.CellChanging(); });
}

void QtGridControl::editor_picked(int32_t row, int32_t col, const QString& text) {
  model_.Text(row, col, to_text(text));
  left_ = false;
  raise([](GridEvents& e) { e.ComboClick(); });
}

void QtGridControl::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  // The view would close the editor of the cell left as if Enter had ended
  // it (and the grid would move on from there): the cell was left already,
  // its editor just goes.
  if (QWidget* editor = previous.isValid() ? indexWidget(previous) : nullptr) {
    QTableWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
    draw_cell(previous.row(), previous.column());
  }
  QTableWidget::currentChanged(current, previous);
  if (!current.isValid()) return;
  model_.ActiveCell(current.row(), current.column());
  entered_at_ = {current.row(), current.column()};
  entered_text_ = model_.Text(current.row(), current.column());
  if (programmatic_) return;
  left_ = false;
  if (current.row() != previous.row()) raise([](GridEvents& e) { e.EnterRow(); });
}

QModelIndex QtGridControl::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (action != MoveUp && action != MoveDown) return QTableWidget::moveCursor(action, modifiers);
  const CellRef at = model_.ActiveCell();
  const CellRef to = model_.vertical_step(at, cursor_, action == MoveUp ? -1 : 1);
  if (to == at) return currentIndex();
  return QTableWidget::model()->index(to.row, to.col);
}

void QtGridControl::mousePressEvent(QMouseEvent* event) {
  // The cell under the mouse, also inside a merged range (whose table item
  // is its first column's): the column is the one pointed at.
  const QPoint at = event->position().toPoint();
  if (event->button() == Qt::LeftButton && on_column_edge(at)) {
    // The edge of the resizable column: a width, not a cell; the active
    // cell and its editor stay as they are.
    resizing_ = true;
    grip_ = columnViewportPosition(resizable_col_) + columnWidth(resizable_col_) - at.x();
    event->accept();
    return;
  }
  const int row = rowAt(at.y());
  const int col = columnAt(at.x());
  const CellRef active = model_.ActiveCell();
  if (row >= 0 && col >= 0 && (row != active.row || col != active.col) && !leave_active()) {
    event->accept();
    keep_editing();
    return;
  }
  pressed_ = row >= 0 && col >= 0 ? QTableWidget::model()->index(row, col) : QModelIndex();
  pressed_active_ = row == active.row && col == active.col;
  pressed_at_ = event->globalPosition().toPoint();
  // The leave may have laid the rows out anew (the row left gone from the
  // filter's view, rows its value hides or shows): the press goes to the
  // cell that was under the mouse, wherever it is now; gone, to none.
  if (pressed_.isValid() && (rowAt(at.y()) != row || columnAt(at.x()) != col)) {
    if (!row_shown(row)) {
      pressed_ = QModelIndex();
      event->accept();
      return;
    }
    const QPointF moved(event->position().x(), visualRect(pressed_).center().y());
    QMouseEvent again(event->type(), moved, event->scenePosition(), event->globalPosition(),
                      event->button(), event->buttons(), event->modifiers());
    QTableWidget::mousePressEvent(&again);
  } else {
    QTableWidget::mousePressEvent(event);
  }
  // Inside a merged range the view keeps its first column current: the
  // cell under the mouse is the active one, entered anew.
  if (pressed_.isValid() && !(model_.ActiveCell() == CellRef{row, col})) {
    model_.ActiveCell(row, col);
    left_ = false;
  }
}

void QtGridControl::mouseReleaseEvent(QMouseEvent* event) {
  if (resizing_) {
    resizing_ = false;
    event->accept();
    emit column_width_chosen(resizable_col_, columnWidth(resizable_col_));
    return;
  }
  QTableWidget::mouseReleaseEvent(event);
  const QPoint at = event->position().toPoint();
  // Released where it was pressed, the mouse not moved: a click on the cell
  // pressed, also when the press moved the rows under it (leaving a refused
  // value, the title box above gave the grid back its height, which scrolls
  // it). Moved to another cell: no click.
  const bool still = (event->globalPosition().toPoint() - pressed_at_).manhattanLength() <
                     QApplication::startDragDistance();
  const int row = still ? pressed_.row() : rowAt(at.y());
  const int col = still ? pressed_.column() : columnAt(at.x());
  if (pressed_.isValid() && row == pressed_.row() && col == pressed_.column()) {
    model_.ActiveCell(row, col);
    raise([&](GridEvents& e) { e.Click(row, col); });
    if (pressed_active_ && event->button() == Qt::LeftButton && !editing() &&
        model_.ActiveCell() == CellRef{row, col}) {
      edit(pressed_, QAbstractItemView::EditKeyPressed, nullptr);
    }
  }
  pressed_ = QModelIndex();
}

void QtGridControl::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && on_column_edge(event->position().toPoint())) {
    set_user_width(fitting_width());
    event->accept();
    emit column_width_chosen(resizable_col_, columnWidth(resizable_col_));
    return;
  }
  raise([](GridEvents& e) { e.DblClick(); });
  QTableWidget::mouseDoubleClickEvent(event);
}

void QtGridControl::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  // While a cell is edited its editor's keys end the edit through
  // closeEditor, which leaves the cell. The keys that move to another row
  // (the editor passes them on) leave it through the check first and move,
  // as Enter does; keys that move within a line and reach the grid past the
  // editor (which lost the focus to a click on its cell) give the editor the
  // focus back.
  if (state() == QAbstractItemView::EditingState) {
    const bool rows = key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
                      key == Qt::Key_PageDown;
    const bool within =
        key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Home || key == Qt::Key_End;
    QWidget* editor = indexWidget(currentIndex());
    // Alt+Down and F4 with the grid holding the focus over the editor (the
    // editor's own open its list) are lost, as keys that would edit are:
    // the view would move the cell without leaving it.
    const bool list_key =
        key == Qt::Key_F4 || (key == Qt::Key_Down && (event->modifiers() & Qt::AltModifier));
    if (list_key && window()->focusWidget() == this) {
      event->accept();
      return;
    }
    if (rows && !(event->modifiers() & Qt::AltModifier)) {
      if (!leave_active()) {
        keep_editing();
        event->accept();
        return;
      }
      drop_editor();  // also where there is no row that way
      QTableWidget::keyPressEvent(event);
      return;
    }
    // Tab and Enter the grid takes while it has the focus over the editor
    // (not those an editor passes on after ending its own edit) leave the
    // cell as from a cell not edited (below).
    const bool ends = (key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Return ||
                       key == Qt::Key_Enter) &&
                      window()->focusWidget() == this;
    if (within && editor) {
      editor->setFocus(Qt::OtherFocusReason);
      event->accept();
      return;
    }
    // Escape the grid takes over the editor ends the edit as the editor's
    // own Escape does: the text the cell had when it was entered.
    if (key == Qt::Key_Escape && editor && window()->focusWidget() == this) {
      closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
      event->accept();
      return;
    }
    if (!ends) {
      QTableWidget::keyPressEvent(event);
      return;
    }
  }
  const CellRef at = model_.ActiveCell();
  auto key_down = [&](int16_t code) {
    raise([&](GridEvents& e) {
      int16_t key_code = code;
      e.KeyDown(key_code, static_cast<int16_t>(event->modifiers() & Qt::ShiftModifier ? 1 : 0));
    });
  };
  switch (key) {
    case Qt::Key_Space:
      key_down(32);
      event->accept();
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
      if (!leave_active()) {
        event->accept();
        return;
      }
      drop_editor();
      key_down(13);
      // The form may have moved the focus (to row 0 from the lowest row).
      if (model_.ActiveCell() == at && model_.enter_key_move_to != 0) advance(at, 1, true);
      event->accept();
      return;
    }
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      if (leave_active()) {
        drop_editor();
        advance(at, key == Qt::Key_Tab ? 1 : -1, false);
      }
      event->accept();
      return;
    case Qt::Key_F4:
      open_list();
      event->accept();
      return;
    case Qt::Key_Down:
      if (event->modifiers() & Qt::AltModifier) {
        open_list();
        event->accept();
        return;
      }
      [[fallthrough]];
    case Qt::Key_Up:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      if (!leave_active()) {
        event->accept();
        return;
      }
      QTableWidget::keyPressEvent(event);
      return;
    default:
      if (key > 0 && key < 0x1000000) key_down(static_cast<int16_t>(key & 0x7FFF));
      QTableWidget::keyPressEvent(event);
      return;
  }
}

void QtGridControl::drop_editor() {
  // The grid had the focus over it (its cell clicked again, or past the
  // cells): the cell was left, its editor goes, as on any other way out.
  const QModelIndex at = currentIndex();
  if (QWidget* editor = at.isValid() ? indexWidget(at) : nullptr) {
    QTableWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
    draw_cell(at.row(), at.column());
  }
}

bool QtGridControl::focus_in_box() const {
  if (QApplication::activeModalWidget()) return true;
  // While a modal box is being shown it may not be the active modal widget
  // yet: the window that has the focus tells.
  const QWidget* to = QApplication::focusWidget();
  const QWidget* box = to ? to->window() : QApplication::activeWindow();
  return box && box != window() && box->isModal();
}

void QtGridControl::focusInEvent(QFocusEvent* event) {
  QTableWidget::focusInEvent(event);
  // The window active again (a box closed) while a cell is edited: the
  // editor has the focus, as before.
  if (event->reason() != Qt::ActiveWindowFocusReason || !editing()) return;
  if (QWidget* editor = indexWidget(currentIndex())) editor->setFocus(Qt::ActiveWindowFocusReason);
}

void QtGridControl::focusOutEvent(QFocusEvent* event) {
  QTableWidget::focusOutEvent(event);
  // The focus going to the grid's own editor, or to a box the form shows,
  // is no loss.
  QWidget* to = QApplication::focusWidget();
  if (to && isAncestorOf(to)) return;
  if (focus_in_box() || QApplication::activePopupWidget()) return;
  raise([](GridEvents& e) { e.LostFocus(); });
}

bool QtGridControl::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
  if (!index.isValid() || trigger == QAbstractItemView::NoEditTriggers) {
    return QTableWidget::edit(index, trigger, event);
  }
  // The view asks on every move and click whether to edit: only the
  // triggers the grid edits on (and the control's own edits) open an editor.
  if (trigger != QAbstractItemView::AllEditTriggers && !(editTriggers() & trigger)) {
    return QTableWidget::edit(index, trigger, event);
  }
  // A locked row, or one not shown (folded, hidden, or kept out by the
  // filter while it stays the current row), is not edited: keys typed
  // there would change a value the user cannot see.
  if (model_.Locked(index.row()) || !row_shown(index.row())) return false;
  // A click's slow edit after F2 already opened the editor: nothing anew.
  if (state() == QAbstractItemView::EditingState && indexWidget(index)) return true;
  if (trigger != QAbstractItemView::AllEditTriggers) {  // the user's edit, not the control's
    bool cancel = false;
    raise([&](GridEvents& e) { e.BeforeEdit(index.row(), index.column(), cancel); });
    if (cancel) return false;
  }
  if (!QTableWidget::edit(index, trigger, event)) return false;
  if (!(entered_at_ == CellRef{index.row(), index.column()})) {
    entered_at_ = {index.row(), index.column()};
    entered_text_ = model_.Text(index.row(), index.column());
  }
  left_ = false;
  return true;
}

void QtGridControl::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  const CellRef at = model_.ActiveCell();
  if (hint == QAbstractItemDelegate::RevertModelCache) {
    // Escape: the text the cell had when it was entered, which the form
    // takes again (also after a refused value, whose typed text it kept).
    if (entered_at_ == at) model_.Text(at.row, at.col, entered_text_);
    QTableWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
    raise([](GridEvents& e) { e.CellChanging(); });
    draw_cell(at.row, at.col);
    return;
  }
  if (dispatching_) {
    // The form shows a box while it handles the leave: the editor goes, and
    // comes back if the leave is cancelled.
    QTableWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
    return;
  }
  if (hint == QAbstractItemDelegate::NoHint && !left_ && QApplication::focusWidget() == this) {
    // The focus went from the editor to the grid: a click in the grid, which
    // leaves the cell itself (once, one message if it is refused).
    return;
  }
  if (hint == QAbstractItemDelegate::NoHint && !left_ && focus_in_box()) {
    // A box the form shows (a question about the project) took the focus:
    // the editor stays, and has it again when the box closes (focusInEvent).
    return;
  }
  if (!leave_active()) {
    keep_editing();
    return;
  }
  QTableWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
  draw_cell(at.row, at.col);
  switch (hint) {
    case QAbstractItemDelegate::EditNextItem:
      advance(at, 1, false);
      return;
    case QAbstractItemDelegate::EditPreviousItem:
      advance(at, -1, false);
      return;
    case QAbstractItemDelegate::SubmitModelCache:
      // Enter ends the edit as it ends any other: the key goes to the form,
      // then the grid moves down unless the form moved the focus.
      raise([](GridEvents& e) {
        int16_t key_code = 13;
        e.KeyDown(key_code, 0);
      });
      if (model_.ActiveCell() == at && model_.enter_key_move_to != 0) advance(at, 1, true);
      return;
    default:
      return;
  }
}

}  // namespace zelkora::platform::qt
