// The desktop program's scripts on a headless form.
#include "desk/headless_script.h"

#include <QStringList>
#include <algorithm>
#include <functional>

#include "zelkora/grid/grid_appearance.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

namespace {

using platform::headless::HeadlessUser;
using platform::qt::to_qstring;
using platform::qt::to_text;

// The keys Ctrl+Z and Ctrl+Y go to the grid as when the form has nothing
// to undo or redo.
constexpr int16_t kKeyZ = 'Z';
constexpr int16_t kKeyY = 'Y';

}  // namespace

// The boxes met, printed and answered as the desktop run answers them.
class HeadlessScriptRunner::Boxes : public platform::headless::RecordingMessageBox {
 public:
  enum class Reply { kNone, kYes, kNo, kCancel };

  explicit Boxes(QTextStream& out) : out_(out) {}

  void warning(TextView text, TextView title) override {
    RecordingMessageBox::warning(text, title);
    met(text, title);
  }
  // Yes and Cancel: Yes unless the script said cancel.
  int32_t question(TextView text, TextView title) override {
    answer = met(text, title) == Reply::kCancel ? kCancel : kYes;
    return RecordingMessageBox::question(text, title);
  }
  // Save, Discard and Cancel: yes saves, no discards, else Cancel.
  FormView::SaveChanges save_changes(TextView text, TextView title) {
    asked.push_back({Text(text), Text(title)});
    switch (met(text, title)) {
      case Reply::kYes:
        return FormView::SaveChanges::kSave;
      case Reply::kNo:
        return FormView::SaveChanges::kDiscard;
      default:
        return FormView::SaveChanges::kCancel;
    }
  }

  Reply reply = Reply::kNone;    // for the next box
  std::function<void()> on_box;  // each box, as it shows

 private:
  Reply met(TextView text, TextView title) {
    if (on_box) on_box();
    out_ << message_line(title, text) << "\n";
    out_.flush();
    const Reply given = reply;
    reply = Reply::kNone;
    return given;
  }

  QTextStream& out_;
};

HeadlessScriptRunner::HeadlessScriptRunner(const Program& program, QTextStream& out,
                                           std::shared_ptr<platform::Platform> platform)
    : out_(out), platform_(std::move(platform)), boxes_(std::make_shared<Boxes>(out)) {
  platform_->messages = boxes_;
  form_ = std::make_unique<HeadlessDeskForm>(platform_, program);
  form_->on_save_changes = [this](TextView text, TextView title) {
    return boxes_->save_changes(text, title);
  };
  boxes_->on_box = [this] {
    if (form_) form_->user().box_shown(focus_ == Focus::kGrid);
  };
}

HeadlessScriptRunner::~HeadlessScriptRunner() = default;

void HeadlessScriptRunner::run(const QString& line) {
  const std::size_t opened = form_ ? form_->user().editors_opened() : 0;
  run_step(line);
  // An editor opened by the step has the focus, wherever it was.
  if (form_ && form_->user().editors_opened() != opened) focus_ = Focus::kGrid;
}

void HeadlessScriptRunner::run_step(const QString& line) {
  const auto [verb, rest] = parse_step(line);
  if (verb == QLatin1String("edit")) return edit(rest, false);
  if (verb == QLatin1String("pick")) return edit(rest, true);
  if (verb == QLatin1String("click")) return click(rest);
  if (verb == QLatin1String("key")) return key(rest);
  // The tool buttons, the menu or the window's close button are clicked: a
  // click closes an open list first.
  static const QStringList kButtons = {"defaults", "calculate", "save", "open",
                                       "new",      "reset",     "mine", "close"};
  if (kButtons.contains(verb)) open_form().user().click_outside();
  if (verb == QLatin1String("defaults")) {
    if (rest != QLatin1String("yes") && rest != QLatin1String("cancel")) {
      throw StepError("defaults takes yes or cancel");
    }
    boxes_->reply = rest == QLatin1String("yes") ? Boxes::Reply::kYes : Boxes::Reply::kCancel;
    return open_form().work().load_defaults();
  }
  if (verb == QLatin1String("mine")) {
    if (rest == QLatin1String("save")) return void(open_form().work().save_my_defaults());
    if (rest == QLatin1String("restore")) return void(open_form().work().restore_my_defaults());
    throw StepError("mine takes save or restore");
  }
  if (verb == QLatin1String("calculate")) return open_form().work().calculate();
  if (verb == QLatin1String("save")) {
    preset(rest, true);
    return open_form().work().menu_save_as();
  }
  if (verb == QLatin1String("open")) {
    preset(rest, false);
    return open_form().work().menu_open();
  }
  if (verb == QLatin1String("undo") || verb == QLatin1String("redo")) {
    HeadlessDeskForm& form = open_form();
    if (form.user().list_open()) return;  // the open list has the keys
    const bool back = verb == QLatin1String("undo");
    // The filter box undoes and redoes its own typing.
    if (focus_ == Focus::kFilter) return step_filter(back);
    // With nothing to undo (redo) the keys reach the grid, if it has the focus.
    if (!(back ? form.can_undo() : form.can_redo())) {
      if (focus_ == Focus::kGrid) form.user().other_key(back ? kKeyZ : kKeyY);
      return;
    }
    back ? form.work().undo() : form.work().redo();
    return;
  }
  if (verb == QLatin1String("filter")) return filter(rest);
  if (verb == QLatin1String("copy")) return copy();
  if (verb == QLatin1String("paste")) return paste(rest);
  if (verb == QLatin1String("new")) return open_form().work().menu_new();
  if (verb == QLatin1String("close")) return close_form();
  if (verb == QLatin1String("answer")) return answer_next(rest);
  if (verb == QLatin1String("type")) return type(line.mid(5));
  if (verb == QLatin1String("clip")) {
    const QStringList values = rest.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    clipboard_ = values.isEmpty() ? QString() : values.join(QLatin1Char('\n')) + QLatin1Char('\n');
    return;
  }
  if (verb == QLatin1String("reset")) return open_form().work().reset_current();
  if (verb == QLatin1String("case")) return load_case(parse_case_step(rest));
  if (verb == QLatin1String("toggle")) {
    if (rest != QLatin1String("changed") && rest != QLatin1String("refused")) {
      throw StepError("toggle takes changed or refused");
    }
    FormWork& work = open_form().work();
    grid::RowFilter filter = work.filter();
    bool& toggle = rest == QLatin1String("changed") ? filter.changed : filter.refused;
    toggle = !toggle;
    // The box clicked takes the focus from the grid (its cell left first).
    HeadlessDeskForm& form = open_form();
    if (focus_ != Focus::kGrid || form.user().focus_away()) focus_ = Focus::kElsewhere;
    work.set_filter(std::move(filter));
    // The editor a refusal kept, gone with its row: the focus is the box's.
    if (!form.user().editing()) focus_ = Focus::kElsewhere;
    return;
  }
  throw StepError("unknown step \"" + verb.toStdString() +
                  "\" (edit, pick, click, key, type, clip, defaults, calculate, save, open, "
                  "undo, redo, filter, toggle, copy, paste, reset, mine, new, close, answer)");
}

HeadlessDeskForm& HeadlessScriptRunner::open_form() {
  if (!form_) throw StepError("no calculation form is open");
  return *form_;
}

void HeadlessScriptRunner::preset(const QString& file, bool saving) {
  if (file.isEmpty()) throw StepError("a file is needed");
  open_form().work().preset_file(to_text(file), saving);
}

void HeadlessScriptRunner::edit(const QString& args, bool pick) {
  const QString item = args.section(QLatin1Char(' '), 0, 0);
  const QString text = args.section(QLatin1Char(' '), 1);
  HeadlessDeskForm& form = open_form();
  platform::GridControl& grid = form.controls().grid;
  HeadlessUser& user = form.user();
  const int32_t row = row_of_item(form.work().cell(), grid, item);
  // An editor the form kept open on the cell (after a refused value) is
  // typed into as it is; otherwise the cell is clicked and F2 opens one.
  if (!(user.editing() && grid.ActiveCell() == platform::CellRef{row, grid::kValueCol})) {
    click(QStringLiteral("%1 %2").arg(row).arg(grid::kValueCol));
    user.key(HeadlessUser::kF2);
  }
  // An open list has the keys (the desktop's grabs them), and an editor
  // that has not the focus (the grid or the filter box has it) takes none:
  // the cell's text is not typed into.
  if (!user.editing() || user.list_open() || focus_ != Focus::kGrid || !user.editor_focused()) {
    throw StepError("the cell cannot be edited");
  }
  user.select_all();
  if (pick) {
    const platform::CellRef at = grid.ActiveCell();
    if (grid.CellType(at.row, at.col) != platform::GridControl::kComboCell) {
      throw StepError("the cell has no list");
    }
    user.key(HeadlessUser::kF4);  // the list opens, filled as it opens
    const std::vector<Text> items = grid.ComboList(at.row, at.col);
    if (std::find(items.begin(), items.end(), to_text(text)) == items.end()) {
      user.key(HeadlessUser::kEscape);  // the list closes again
      throw StepError("the list has no \"" + text.toStdString() + "\"");
    }
    user.pick(to_text(text));
  } else {
    user.type(to_text(text));
  }
  user.key(HeadlessUser::kEnter);
}

void HeadlessScriptRunner::click(const QString& args) {
  bool row_ok = false, col_ok = false;
  const int row = args.section(QLatin1Char(' '), 0, 0).toInt(&row_ok);
  const int col = args.section(QLatin1Char(' '), 1, 1).toInt(&col_ok);
  if (!row_ok || !col_ok) throw StepError("click takes ROW COL");
  HeadlessDeskForm& form = open_form();
  const platform::headless::MemoryGrid& grid = form.controls().grid;
  if (row < 0 || col < 0) {
    throw StepError("the grid has no cell " + std::to_string(row) + ", " + std::to_string(col));
  }
  if (row < grid.Rows() && col < grid.Cols() && (!grid.row_shown(row) || grid.ColWidth(col) <= 0)) {
    throw StepError("row " + std::to_string(row) + " is not shown");
  }
  focus_ = Focus::kGrid;
  if (row >= grid.Rows() || col >= grid.Cols()) {
    form.user().click_empty();  // past the last row or column
  } else {
    form.user().click(row, col);
  }
}

void HeadlessScriptRunner::key(const QString& name) {
  static const QMap<QString, HeadlessUser::Key> kKeys = {
      {QStringLiteral("Enter"), HeadlessUser::kEnter},
      {QStringLiteral("Tab"), HeadlessUser::kTab},
      {QStringLiteral("Shift+Tab"), HeadlessUser::kBackTab},
      {QStringLiteral("Space"), HeadlessUser::kSpace},
      {QStringLiteral("Escape"), HeadlessUser::kEscape},
      {QStringLiteral("Up"), HeadlessUser::kUp},
      {QStringLiteral("Down"), HeadlessUser::kDown},
      {QStringLiteral("Alt+Down"), HeadlessUser::kAltDown},
      {QStringLiteral("F2"), HeadlessUser::kF2},
      {QStringLiteral("F4"), HeadlessUser::kF4},
  };
  HeadlessDeskForm& form = open_form();
  // An open list has the keys, the window's too (the desktop's grabs them).
  if (form.user().list_open()) {
    if (const auto it = kKeys.find(name); it != kKeys.end()) form.user().key(*it);
    return;
  }
  if (name == QLatin1String("F8")) {  // the window's key, wherever the focus is
    if (form.work().next_refused()) focus_ = Focus::kGrid;
    return;
  }
  // The window's keys.
  if (name == QLatin1String("Ctrl+Z")) return run(QStringLiteral("undo"));
  if (name == QLatin1String("Ctrl+Y")) return run(QStringLiteral("redo"));
  if (name == QLatin1String("Ctrl+F")) {
    // The filter box takes the focus from the grid (its cell left first).
    if (focus_ == Focus::kGrid && !form.user().focus_away()) return;
    focus_ = Focus::kFilter;
    filter_selected_ = true;
    return;
  }
  if (name == QLatin1String("Ctrl+C")) {
    if (std::optional<QString> copied = copied_text()) clipboard_ = *copied;
    return;
  }
  if (name == QLatin1String("Ctrl+V")) return paste_clipboard();
  // Keys on another control of the window (a toggle) are not the grid's.
  if (focus_ == Focus::kElsewhere) {
    throw StepError("unknown: the key \"" + name.toStdString() + "\" outside the grid");
  }
  const auto it = kKeys.find(name);
  if (it == kKeys.end()) {
    throw StepError("unknown key \"" + name.toStdString() +
                    "\" (Enter, Tab, Shift+Tab, Space, Escape, Up, Down, Alt+Down, F2, F4, F8)");
  }
  if (focus_ == Focus::kFilter) {
    // The filter box takes a blank; Tab would go on to its toggles.
    if (*it == HeadlessUser::kSpace) return type(QStringLiteral(" "));
    if (*it == HeadlessUser::kTab || *it == HeadlessUser::kBackTab) {
      throw StepError("unknown: Tab from the filter box goes on to its toggles");
    }
    return;
  }
  form.user().key(*it);
}

void HeadlessScriptRunner::filter(const QString& text) {
  HeadlessDeskForm& form = open_form();
  // The click into the box takes the focus from the grid (the text is typed
  // into the box all the same).
  if (focus_ != Focus::kGrid || form.user().focus_away()) focus_ = Focus::kFilter;
  type_filter(to_text(text), true);
  filter_selected_ = false;  // the caret after the text typed
  // The editor a refusal kept, gone with its row: the focus is the box's.
  if (!form.user().editing()) focus_ = Focus::kFilter;
}

void HeadlessScriptRunner::type_filter(const Text& text, bool replace) {
  FormWork& work = open_form().work();
  grid::RowFilter filter = work.filter();
  if (replace && filter.text.empty() && text.empty()) return;
  // The box's changes join into one that an undo takes back whole, until
  // Ctrl+A selects some text (or an undo or redo ran).
  if (!filter_typing_ || (replace && !filter.text.empty())) {
    filter_undo_.push_back(filter.text);
    filter_redo_.clear();
  }
  if (replace) filter.text.clear();
  filter.text += text;
  filter_typing_ = true;
  if (filter.text != work.filter().text) work.set_filter(std::move(filter));
}

void HeadlessScriptRunner::step_filter(bool back) {
  std::vector<Text>& from = back ? filter_undo_ : filter_redo_;
  if (from.empty()) return;
  FormWork& work = open_form().work();
  grid::RowFilter filter = work.filter();
  (back ? filter_redo_ : filter_undo_).push_back(filter.text);
  filter.text = from.back();
  from.pop_back();
  filter_typing_ = false;
  work.set_filter(std::move(filter));
}

std::optional<QString> HeadlessScriptRunner::copied_text() {
  HeadlessDeskForm& form = open_form();
  if (form.user().list_open()) return std::nullopt;  // the open list has the keys
  // A text box with nothing selected copies nothing: the clipboard keeps
  // what it had. The filter box has the text Ctrl+F selected in it.
  if (focus_ == Focus::kFilter) {
    if (!filter_selected_) return std::nullopt;
    return to_qstring(form.work().filter().text);
  }
  // An open editor copies its own selection.
  if (focus_ == Focus::kGrid && form.user().editor_focused()) {
    if (!form.user().selected()) return std::nullopt;
    const platform::CellRef at = form.controls().grid.ActiveCell();
    return to_qstring(form.controls().grid.Text(at.row, at.col));
  }
  // The grid, or a toggle box, which has no copy of its own: the rows.
  return to_qstring(form.work().copied_rows());
}

void HeadlessScriptRunner::copy() {
  // The step empties the clipboard before the key, as the desktop's does.
  clipboard_ = copied_text().value_or(QString());
  out_ << copied_line(clipboard_) << "\n";
  out_.flush();
}

void HeadlessScriptRunner::type(const QString& text) {
  HeadlessDeskForm& form = open_form();
  if (text.isEmpty()) return;  // no key pressed
  if (focus_ == Focus::kFilter) {
    type_filter(to_text(text), filter_selected_);
    filter_selected_ = false;
  } else if (focus_ == Focus::kGrid) {
    form.user().type(to_text(text));
  } else {
    throw StepError("unknown: typing outside the grid");
  }
}

// Ctrl+V: the form's paste wherever the focus is, but in a text box: an
// editor with the focus takes one line itself (a column is the form's).
void HeadlessScriptRunner::paste_clipboard() {
  HeadlessDeskForm& form = open_form();
  if (form.user().list_open()) return;  // the open list has the keys
  if (focus_ == Focus::kFilter) throw StepError("unknown: a paste into the filter box");
  const bool column = clipboard_.trimmed().contains(QLatin1Char('\n'));
  if (focus_ == Focus::kGrid && form.user().editor_focused() && !column) {
    return form.user().paste(to_text(clipboard_));
  }
  if (!clipboard_.isEmpty()) form.work().paste_values(to_text(clipboard_));
}

void HeadlessScriptRunner::paste(const QString& args) {
  const QString item = args.section(QLatin1Char(' '), 0, 0);
  const QStringList values =
      args.section(QLatin1Char(' '), 1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
  if (item.isEmpty() || values.isEmpty()) throw StepError("paste takes ITEM TEXT...");
  HeadlessDeskForm& form = open_form();
  const int32_t row = row_of_item(form.work().cell(), form.controls().grid, item);
  click(QStringLiteral("%1 %2").arg(row).arg(grid::kValueCol));
  const QString text = values.join(QLatin1Char('\n')) + QLatin1Char('\n');
  // One value goes into an open editor that has the focus; a column, or a
  // value where the grid has the focus, is the form's to paste.
  if (form.user().editor_focused() && values.size() == 1) {
    return form.user().paste(to_text(text));
  }
  form.work().paste_values(to_text(text));
}

void HeadlessScriptRunner::answer_next(const QString& args) {
  const QString reply = args.section(QLatin1Char(' '), 0, 0);
  const QString file = args.section(QLatin1Char(' '), 1);
  if (reply == QLatin1String("yes")) {
    boxes_->reply = Boxes::Reply::kYes;
  } else if (reply == QLatin1String("no")) {
    boxes_->reply = Boxes::Reply::kNo;
  } else if (reply == QLatin1String("cancel")) {
    boxes_->reply = Boxes::Reply::kCancel;
  } else {
    throw StepError("answer takes yes [FILE], no or cancel");
  }
  if (!file.isEmpty()) open_form().work().preset_file(to_text(file), true);
}

// A step on the table of load cases.
void HeadlessScriptRunner::load_case(const CaseStep& step) {
  HeadlessDeskForm& form = open_form();
  platform::headless::MemoryListView* table = form.cases();
  if (!table) throw StepError("the form has no table of load cases");
  if (step.kind != CaseStep::Kind::kAdd && step.row > table->ListItemsCount()) {
    throw StepError("the table has no case " + std::to_string(step.row));
  }
  // 添加 is a tool button, which takes no focus; the other steps click the
  // table first, which does.
  if (step.kind == CaseStep::Kind::kAdd) {
    form.user().click_outside();
  } else {
    if (focus_ == Focus::kGrid) form.user().focus_away();
    focus_ = Focus::kElsewhere;
  }
  FormWork& work = form.work();
  switch (step.kind) {
    case CaseStep::Kind::kAdd:
      work.add_case();
      return;
    case CaseStep::Kind::kDelete:
      work.delete_case(step.row);
      return;
    case CaseStep::Kind::kUp:
    case CaseStep::Kind::kDown:
      work.move_case(step.row, step.kind == CaseStep::Kind::kUp ? -1 : 1);
      return;
    case CaseStep::Kind::kSet: {
      static const QStringList kKinds = {"永久", "可变", "风", "地震"};
      if (step.col == 2 && !kKinds.contains(step.text)) {
        throw StepError("the list has no " + step.text.toStdString());
      }
      const Text text = platform::qt::to_text(step.text);
      if (step.col == 1) {
        CaseRows rows = case_rows(*table);
        rows[static_cast<std::size_t>(step.row - 1)][0] = text;
        set_case_rows(*table, rows);
      } else {
        table->SubItem(step.row, step.col - 1, text);
      }
      work.cases_changed();
      return;
    }
  }
}

void HeadlessScriptRunner::close_form() {
  if (open_form().work().may_close()) form_.reset();
}

}  // namespace zelkora::desk
