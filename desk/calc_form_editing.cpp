// A calculation form's Edit menu, its filter, the marks of refused values
// and the view it keeps.
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QMenu>
#include <QScrollBar>
#include <QTextEdit>
#include <QStatusBar>
#include <QToolBar>
#include <set>

#include "desk/calc_form.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/row_facts.h"
#include "zelkora/grid/row_filter.h"
#include "zelkora/grid/view_state.h"

namespace zelkora::desk {

namespace {

using platform::qt::to_qstring;
using platform::qt::to_text;

constexpr TextView kViewSection = u"View";
// The colour of a refusal in the title box (dark red).
constexpr uint32_t kRefusalColour = 0x0000B0;

const grid::RowFacts* facts_of(const std::vector<grid::RowFacts>& rows, int32_t row) {
  return row >= 1 && static_cast<std::size_t>(row) <= rows.size()
             ? &rows[static_cast<std::size_t>(row - 1)]
             : nullptr;
}

}  // namespace

// ---- Building ---------------------------------------------------------------------------

QWidget* CalcForm::build_filter_bar(QWidget* parent) {
  auto* bar = new QWidget(parent);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(6, 4, 6, 2);
  filter_ = new QLineEdit(bar);
  filter_->setObjectName(QStringLiteral("filter"));
  filter_->setPlaceholderText(QStringLiteral("筛选：名称、说明或数值"));
  filter_->setClearButtonEnabled(true);
  changed_only_ = new QCheckBox(QStringLiteral("已修改"), bar);
  changed_only_->setToolTip(QStringLiteral("只显示与默认值不同的数据"));
  refused_only_ = new QCheckBox(QStringLiteral("有错误"), bar);
  refused_only_->setToolTip(QStringLiteral("只显示未通过检查的数据"));
  row->addWidget(filter_, 1);
  row->addWidget(changed_only_);
  row->addWidget(refused_only_);
  connect(filter_, &QLineEdit::textChanged, this, [this] { apply_filter(); });
  connect(changed_only_, &QCheckBox::toggled, this, [this] { apply_filter(); });
  connect(refused_only_, &QCheckBox::toggled, this, [this] { apply_filter(); });
  return bar;
}

void CalcForm::build_edit_actions(QMenu* menu, QToolBar* toolbar) {
  const struct {
    Action action;
    const char* text;
    QList<QKeySequence> keys;
  } kActions[] = {
      {Action::kUndo, "撤销", {QKeySequence(Qt::CTRL | Qt::Key_Z)}},
      {Action::kRedo,
       "重做",
       {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)}},
      {Action::kCopy, "复制", {QKeySequence(Qt::CTRL | Qt::Key_C)}},
      {Action::kPaste, "粘贴", {QKeySequence(Qt::CTRL | Qt::Key_V)}},
      {Action::kResetRow, "恢复默认值", {}},
      {Action::kNextRefused, "下一个错误", {QKeySequence(Qt::Key_F8)}},
      {Action::kFind, "筛选", {QKeySequence(Qt::CTRL | Qt::Key_F)}},
  };
  for (const auto& a : kActions) {
    auto* action = new QAction(QString::fromUtf8(a.text), this);
    action->setShortcuts(a.keys);
    actions_.push_back(action);
    menu->addAction(action);
    if (a.action == Action::kUndo || a.action == Action::kRedo) toolbar->addAction(action);
  }
  connect(action(Action::kUndo), &QAction::triggered, this, [this] { undo(); });
  connect(action(Action::kRedo), &QAction::triggered, this, [this] { redo(); });
  connect(action(Action::kCopy), &QAction::triggered, this, [this] {
    // The report or a text box with the focus copies its own selection.
    QWidget* focus = QApplication::focusWidget();
    if (auto* view = qobject_cast<QTextEdit*>(focus)) return view->copy();
    if (auto* line = qobject_cast<QLineEdit*>(focus); line && !grid_->isAncestorOf(line)) {
      return line->copy();
    }
    QApplication::clipboard()->setText(copied_rows());
  });
  connect(action(Action::kPaste), &QAction::triggered, this,
          [this] { paste_values(QApplication::clipboard()->text()); });
  connect(action(Action::kResetRow), &QAction::triggered, this, [this] { reset_current(); });
  connect(action(Action::kNextRefused), &QAction::triggered, this, [this] { next_refused(); });
  connect(action(Action::kFind), &QAction::triggered, this, [this] {
    filter_->setFocus(Qt::ShortcutFocusReason);
    filter_->selectAll();
  });
}

// ---- After a change -----------------------------------------------------------------------

void CalcForm::values_changed(bool step) {
  if (!history_) return;
  if (step) history_->record();
  update_changed();
  update_sketch();
  mark_report_stale();
  update_refused();
  if (grid_->filtered()) apply_filter();
  update_edit_actions();
}

void CalcForm::update_edit_actions() {
  if (!action(Action::kUndo)) return;
  action(Action::kUndo)->setEnabled(history_->can_undo());
  action(Action::kRedo)->setEnabled(history_->can_redo());
}

void CalcForm::update_refused() {
  const std::vector<Text> messages = grid::refusals(cell());
  std::vector<int32_t> now;
  for (const grid::RowFacts& row : grid::row_facts(cell())) {
    const Text& message = messages[static_cast<std::size_t>(row.row - 1)];
    if (row.item >= 0 && !row.hidden && !message.empty()) {
      now.push_back(row.row);
      grid_->mark_cell(row.row, grid::kValueCol, to_qstring(message));
    } else if (grid_->marked(row.row, grid::kValueCol)) {
      grid_->mark_cell(row.row, grid::kValueCol, QString());
    }
  }
  refused_ = now;
  refused_count_->setText(
      now.empty() ? QString() : QStringLiteral("%1 个数据有错误（F8 转到）").arg(now.size()));
}

void CalcForm::show_row_notes() {
  clsGridCell& form_cell = cell();
  const int32_t row = form_cell.lCurrentRow();
  const std::vector<grid::RowFacts> rows = grid::row_facts(form_cell);
  const grid::RowFacts* facts = facts_of(rows, row);
  if (!facts || facts->item < 0) {
    title_grows_ = false;
    fit_title_box();
    return;
  }
  form_cell.tShowRowTitle();  // the notes follow the caption and help once
  platform::RichTextBox& box = *title_;
  const auto append = [&box](TextView text, uint32_t colour) {
    box.SelStart(static_cast<int32_t>(box.Text().size()));
    box.SelLength(0);
    box.SelColor(colour);
    box.SelText(text);
  };
  // The refusal first, then the default; the box grows to show them.
  const Text refused = grid::refusal(form_cell, row);
  if (!refused.empty()) append(u"\r\n" + refused, kRefusalColour);
  append(u"\r\n默认值：" + facts->default_value, platform::kColourButtonText);
  title_grows_ = !refused.empty();
  fit_title_box();
}

void CalcForm::describe_values() {
  for (const grid::RowFacts& row : grid::row_facts(cell())) {
    if (row.item < 0) continue;
    grid_->describe_cell(row.row, grid::kValueCol, to_qstring(row.caption), to_qstring(row.help));
  }
}

// ---- Undo and redo ---------------------------------------------------------------------------

bool CalcForm::undo() { return step_history(true); }

bool CalcForm::redo() { return step_history(false); }

bool CalcForm::step_history(bool back) {
  if (!grid_->leave_cell()) return false;
  statusBar()->clearMessage();
  grid_->clearSelection();
  values_changed();
  if (!(back ? history_->undo() : history_->redo())) return false;
  const int32_t item = back ? history_->redo_item() : history_->undo_item();
  const int32_t row = cell().lGetRowByIndex(item);
  values_changed();
  if (row > 0 && grid_->row_shown(row)) grid_->setCurrentCell(row, grid::kValueCol);
  return true;
}

// ---- Copy and paste
// ------------------------------------------------------------------------------

QString CalcForm::copied_rows() const {
  std::set<int> rows;
  for (const QModelIndex& index : grid_->selectionModel()->selectedIndexes()) {
    rows.insert(index.row());
  }
  if (rows.empty() && grid_->currentRow() > 0) rows.insert(grid_->currentRow());
  QString text;
  for (const int row : rows) {
    if (row < 1 || !grid_->row_shown(row)) continue;
    text += to_qstring(trim(grid_->Text(row, grid::kCaptionCol))) + QLatin1Char('\t') +
            to_qstring(grid_->Text(row, grid::kValueCol)) + QLatin1Char('\n');
  }
  return text;
}

bool CalcForm::paste_values(const QString& text) {
  QStringList lines = text.split(QLatin1Char('\n'));
  for (QString& line : lines) {
    if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
  }
  while (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
  if (lines.isEmpty()) return false;
  int32_t row = grid_->currentRow();
  if (row < 1 || !grid_->row_shown(row) || grid_->Locked(row)) {
    row = grid_->next_editable_row(std::max(row, 0), grid::kValueCol, 1);
  }
  // The whole column is one step of the history, whatever stops it.
  pasting_ = true;
  struct StepAtEnd {
    CalcForm& form;
    ~StepAtEnd() {
      form.pasting_ = false;
      form.values_changed();
    }
  } step_at_end{*this};
  for (int i = 0; i < lines.size(); ++i) {
    if (row < 0) {
      statusBar()->showMessage(
          QStringLiteral("粘贴停止：下面没有可编辑的行，还有 %1 个值未粘贴").arg(lines.size() - i));
      return false;
    }
    const QString value = lines[i].section(QLatin1Char('\t'), -1).trimmed();
    if (!grid_->type_into(row, grid::kValueCol, value)) {
      statusBar()->showMessage(QStringLiteral("粘贴停在第 %1 个值：“%2”不接受“%3”")
                                   .arg(i + 1)
                                   .arg(to_qstring(trim(grid_->Text(row, grid::kCaptionCol))))
                                   .arg(value));
      return false;
    }
    row = grid_->next_editable_row(row, grid::kValueCol, 1);
  }
  return true;
}

// ---- Defaults of a row, the next refused value
// -----------------------------------------------------

void CalcForm::reset_current() {
  if (!grid_->leave_cell()) return;
  values_changed();
  const std::vector<grid::ItemValue> values = grid::defaults_of(cell(), grid_->currentRow());
  if (values.empty()) return;
  grid::write_values(cell(), values);
  values_changed();
}

bool CalcForm::next_refused() {
  update_refused();
  if (refused_.empty()) return false;
  const int32_t current = grid_->currentRow();
  int32_t row = refused_.front();
  for (const int32_t r : refused_) {
    if (r > current) {
      row = r;
      break;
    }
  }
  // A row folded away is unfolded; one the filter hides brings every row back.
  const std::vector<grid::RowFacts> rows = grid::row_facts(cell());
  if (const grid::RowFacts* facts = facts_of(rows, row); facts && facts->folded) {
    if (facts->heading > 0) cell().ExpandHeadingGroup(facts->heading, true);
    if (facts->group > 0) cell().ExpandGroupMembers(facts->group, true);
  }
  if (!grid_->row_shown(row)) {
    filter_->clear();
    changed_only_->setChecked(false);
    refused_only_->setChecked(false);
  }
  return grid_->edit_cell(row, grid::kValueCol);
}

// ---- The filter
// ---------------------------------------------------------------------------------------

void CalcForm::apply_filter() {
  const grid::RowFilter filter{to_text(filter_->text()), changed_only_->isChecked(),
                               refused_only_->isChecked()};
  if (!filter.active()) {
    grid_->show_only({});
    grid::show_kept_rows(cell(), {});
    return;
  }
  const std::vector<grid::RowFacts> rows = grid::row_facts(cell());
  std::vector<bool> refused(rows.size(), false);
  for (const int32_t row : refused_) {
    if (row >= 1 && static_cast<std::size_t>(row) <= refused.size()) {
      refused[static_cast<std::size_t>(row - 1)] = true;
    }
  }
  std::vector<bool> kept = grid::rows_kept(rows, filter, refused);
  // A folded row the filter shows is edited and checked like any other.
  grid::show_kept_rows(cell(), kept);
  grid_->show_only(std::move(kept));
}

// ---- The view kept between sessions
// ---------------------------------------------------------------------

void CalcForm::restore_view() {
  const clsCharacter chr(platform_);
  const std::optional<Text> saved =
      platform_->settings->get(chr.tString(text_id::kApplication), kViewSection, program_.layout);
  if (!saved) return;
  const grid::ViewState view = grid::parse_view_state(*saved);
  clsGridCell& form_cell = cell();
  grid::restore_view(form_cell, view);
  // The panes: the splitter's, then those of the sketch and the report.
  const auto outer = static_cast<std::size_t>(splitter_->count());
  const std::size_t inner = side_ ? static_cast<std::size_t>(side_->count()) : 0;
  if (view.panes.size() == outer || view.panes.size() == outer + inner) {
    splitter_->setSizes(QList<int>(view.panes.begin(), view.panes.begin() + outer));
  }
  if (inner > 0 && view.panes.size() == outer + inner) {
    side_->setSizes(QList<int>(view.panes.begin() + outer, view.panes.end()));
  }
  // A width from a damaged entry leaves the values room on any screen.
  constexpr int32_t kWidestKept = 800;
  if (view.caption > 0) grid_->ColWidth(grid::kCaptionCol, std::min(view.caption, kWidestKept));
  const auto shown_from = [this](int32_t row) {
    return row <= 0 || grid_->row_shown(row) ? row
                                             : grid_->next_editable_row(row, grid::kValueCol, 1);
  };
  if (const int32_t top = shown_from(grid::key_row(form_cell, view.top)); top > 0) {
    grid_->scrollTo(grid_->model()->index(top, grid::kValueCol), QAbstractItemView::PositionAtTop);
  }
  if (const int32_t row = shown_from(grid::key_row(form_cell, view.current)); row > 0) {
    grid_->setCurrentCell(row, grid::kValueCol);
  }
}

void CalcForm::save_view() {
  QList<int> sizes = splitter_->sizes();
  if (side_) sizes += side_->sizes();
  grid::ViewState view =
      grid::capture_view(cell(), grid_->currentRow(), grid_->rowAt(0) < 0 ? 0 : grid_->rowAt(0));
  view.panes.assign(sizes.begin(), sizes.end());
  view.caption = grid_->ColWidth(grid::kCaptionCol);
  const clsCharacter chr(platform_);
  platform_->settings->set(chr.tString(text_id::kApplication), kViewSection, program_.layout,
                           grid::view_state_text(view));
}

}  // namespace zelkora::desk
