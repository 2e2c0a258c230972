// A calculation form's Edit menu, its filter, the marks of refused values,
// the title box and the view it keeps.
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QMenu>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTextEdit>
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
      {Action::kSaveMyDefaults, "保存为我的默认值", {}},
      {Action::kRestoreMyDefaults, "恢复我的默认值", {}},
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
  connect(action(Action::kSaveMyDefaults), &QAction::triggered, this,
          [this] { save_my_defaults(); });
  connect(action(Action::kRestoreMyDefaults), &QAction::triggered, this,
          [this] { restore_my_defaults(); });
  connect(action(Action::kNextRefused), &QAction::triggered, this, [this] { next_refused(); });
  connect(action(Action::kFind), &QAction::triggered, this, [this] {
    filter_->setFocus(Qt::ShortcutFocusReason);
    filter_->selectAll();
  });
}

// ---- What the work shows -----------------------------------------------------------------

void CalcForm::show_history(bool can_undo, bool can_redo) {
  action(Action::kUndo)->setEnabled(can_undo);
  action(Action::kRedo)->setEnabled(can_redo);
}

void CalcForm::mark_refused(int32_t row, TextView note) {
  grid_->mark_cell(row, grid::kValueCol, to_qstring(note));
}

bool CalcForm::marked(int32_t row) const { return grid_->marked(row, grid::kValueCol); }

void CalcForm::show_refused_count(TextView text) { refused_count_->setText(to_qstring(text)); }

void CalcForm::fit_title_box(bool grows) {
  title_grows_ = grows;
  fit_title_box();
}

bool CalcForm::type_into(int32_t row, TextView text) {
  return grid_->type_into(row, grid::kValueCol, to_qstring(text));
}

bool CalcForm::edit_cell(int32_t row) { return grid_->edit_cell(row, grid::kValueCol); }

void CalcForm::make_current(int32_t row) { grid_->setCurrentCell(row, grid::kValueCol); }

int32_t CalcForm::next_editable_row(int32_t row, int step) const {
  return grid_->next_editable_row(row, grid::kValueCol, step);
}

std::vector<int32_t> CalcForm::selected_rows() const {
  std::set<int32_t> rows;
  for (const QModelIndex& index : grid_->selectionModel()->selectedIndexes()) {
    rows.insert(index.row());
  }
  return {rows.begin(), rows.end()};
}

void CalcForm::describe_values() {
  for (const grid::RowFacts& row : grid::row_facts(cell())) {
    if (row.item < 0) continue;
    grid_->describe_cell(row.row, grid::kValueCol, to_qstring(row.caption), to_qstring(row.help));
  }
}

// ---- The filter
// ---------------------------------------------------------------------------------------

void CalcForm::apply_filter() {
  work_->set_filter(
      {to_text(filter_->text()), changed_only_->isChecked(), refused_only_->isChecked()});
}

void CalcForm::show_filter(const grid::RowFilter& filter) {
  const QSignalBlocker quiet_text(filter_), quiet_changed(changed_only_),
      quiet_refused(refused_only_);
  filter_->setText(to_qstring(filter.text));
  changed_only_->setChecked(filter.changed);
  refused_only_->setChecked(filter.refused);
}

// ---- The view kept between sessions
// ---------------------------------------------------------------------

void CalcForm::restore_view() {
  const std::optional<grid::ViewState> kept = work_->kept_view();
  if (!kept) return;
  const grid::ViewState& view = *kept;
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
  work_->restore_kept_view(view);
  int32_t top = grid::key_row(cell(), view.top);
  if (top > 0 && !grid_->row_shown(top)) top = grid_->next_editable_row(top, grid::kValueCol, 1);
  if (top > 0) {
    grid_->scrollTo(grid_->model()->index(top, grid::kValueCol), QAbstractItemView::PositionAtTop);
  }
  grid_->scrollTo(grid_->currentIndex());  // the current row in sight
}

void CalcForm::save_view() {
  QList<int> sizes = splitter_->sizes();
  if (side_) sizes += side_->sizes();
  grid::ViewState view =
      grid::capture_view(cell(), grid_->currentRow(), grid_->rowAt(0) < 0 ? 0 : grid_->rowAt(0));
  view.panes.assign(sizes.begin(), sizes.end());
  view.caption = grid_->ColWidth(grid::kCaptionCol);
  work_->keep_view(view);
}

}  // namespace zelkora::desk
