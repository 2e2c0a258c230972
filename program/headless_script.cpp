// The desktop program's scripts on a headless form.
#include "program/headless_script.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "program/white_space.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/platform/headless/headless.h"

namespace zelkora::desk {

namespace {

using platform::headless::HeadlessUser;

// The keys Ctrl+Z and Ctrl+Y go to the grid as when the form has nothing
// to undo or redo.
constexpr int16_t kKeyZ = 'Z';
constexpr int16_t kKeyY = 'Y';

bool one_of(TextView word, std::initializer_list<TextView> words) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

// The ROW COL of a click: the first two words (parted by one space each).
std::optional<std::pair<int, int>> cell_of(TextView args) {
  const FirstWord row = first_word(args);
  const std::optional<int> r = to_int(row.word), c = to_int(first_word(row.after).word);
  if (!r || !c) return std::nullopt;
  return std::pair{*r, *c};
}

Text cell_args(int32_t row, int32_t col) {
  return from_utf8(std::to_string(row) + " " + std::to_string(col));
}

}  // namespace

// The boxes met, printed and answered as the desktop run answers them.
class HeadlessScriptRunner::Boxes : public platform::headless::RecordingMessageBox {
 public:
  enum class Reply { kNone, kYes, kNo, kCancel };

  explicit Boxes(std::ostream& out) : out_(out) {}

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
    out_ << to_utf8(message_line(title, text)) << "\n" << std::flush;
    const Reply given = reply;
    reply = Reply::kNone;
    return given;
  }

  std::ostream& out_;
};

HeadlessScriptRunner::HeadlessScriptRunner(const Program& program, std::ostream& out,
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

void HeadlessScriptRunner::run(TextView line) {
  const std::size_t opened = form_ ? form_->user().editors_opened() : 0;
  run_step(line);
  // An editor opened by the step has the focus, wherever it was.
  if (form_ && form_->user().editors_opened() != opened) focus_ = Focus::kGrid;
}

void HeadlessScriptRunner::run_step(TextView line) {
  const auto [verb, rest] = parse_step(line);
  if (verb == u"edit") return edit(rest, false);
  if (verb == u"pick") return edit(rest, true);
  if (verb == u"click") return click(rest);
  if (verb == u"key") return key(rest);
  // The tool buttons, the menu or the window's close button are clicked: a
  // click closes an open list first.
  if (one_of(verb,
             {u"defaults", u"calculate", u"save", u"open", u"new", u"reset", u"mine", u"close"})) {
    open_form().user().click_outside();
  }
  if (verb == u"defaults") {
    if (rest != u"yes" && rest != u"cancel") {
      throw StepError("defaults takes yes or cancel");
    }
    boxes_->reply = rest == u"yes" ? Boxes::Reply::kYes : Boxes::Reply::kCancel;
    return open_form().work().load_defaults();
  }
  if (verb == u"mine") {
    if (rest == u"save") return void(open_form().work().save_my_defaults());
    if (rest == u"restore") return void(open_form().work().restore_my_defaults());
    throw StepError("mine takes save or restore");
  }
  if (verb == u"calculate") return open_form().work().calculate();
  if (verb == u"save") {
    preset(rest, true);
    return open_form().work().menu_save_as();
  }
  if (verb == u"open") {
    preset(rest, false);
    return open_form().work().menu_open();
  }
  if (verb == u"undo" || verb == u"redo") {
    HeadlessDeskForm& form = open_form();
    if (form.user().list_open()) return;  // the open list has the keys
    const bool back = verb == u"undo";
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
  if (verb == u"filter") return filter(rest);
  if (verb == u"copy") return copy();
  if (verb == u"paste") return paste(rest);
  if (verb == u"new") return open_form().work().menu_new();
  if (verb == u"close") return close_form();
  if (verb == u"answer") return answer_next(rest);
  if (verb == u"type") return type(line.substr(std::min<std::size_t>(5, line.size())));
  if (verb == u"clip") {
    clipboard_ = lines_of(words_of(rest));
    return;
  }
  if (verb == u"reset") return open_form().work().reset_current();
  if (verb == u"case") return load_case(parse_case_step(rest));
  if (verb == u"toggle") {
    if (rest != u"changed" && rest != u"refused") {
      throw StepError("toggle takes changed or refused");
    }
    FormWork& work = open_form().work();
    grid::RowFilter filter = work.filter();
    bool& toggle = rest == u"changed" ? filter.changed : filter.refused;
    toggle = !toggle;
    // The box clicked takes the focus from the grid (its cell left first).
    HeadlessDeskForm& form = open_form();
    if (focus_ != Focus::kGrid || form.user().focus_away()) focus_ = Focus::kElsewhere;
    work.set_filter(std::move(filter));
    // The editor a refusal kept, gone with its row: the focus is the box's.
    if (!form.user().editing()) focus_ = Focus::kElsewhere;
    return;
  }
  throw StepError("unknown step \"" + to_utf8(verb) +
                  "\" (edit, pick, click, key, type, clip, defaults, calculate, save, open, "
                  "undo, redo, filter, toggle, copy, paste, reset, mine, new, close, answer)");
}

HeadlessDeskForm& HeadlessScriptRunner::open_form() {
  if (!form_) throw StepError("no calculation form is open");
  return *form_;
}

void HeadlessScriptRunner::preset(TextView file, bool saving) {
  if (file.empty()) throw StepError("a file is needed");
  open_form().work().preset_file(Text(file), saving);
}

void HeadlessScriptRunner::edit(TextView args, bool pick) {
  const auto [item, text] = first_word(args);
  HeadlessDeskForm& form = open_form();
  platform::GridControl& grid = form.controls().grid;
  HeadlessUser& user = form.user();
  const int32_t row = row_of_item(form.work().cell(), grid, item);
  // An editor the form kept open on the cell (after a refused value) is
  // typed into as it is; otherwise the cell is clicked and F2 opens one.
  if (!(user.editing() && grid.ActiveCell() == platform::CellRef{row, grid::kValueCol})) {
    click(cell_args(row, grid::kValueCol));
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
    if (std::find(items.begin(), items.end(), text) == items.end()) {
      user.key(HeadlessUser::kEscape);  // the list closes again
      throw StepError("the list has no \"" + to_utf8(text) + "\"");
    }
    user.pick(text);
  } else {
    user.type(text);
  }
  user.key(HeadlessUser::kEnter);
}

void HeadlessScriptRunner::click(TextView args) {
  const std::optional<std::pair<int, int>> cell = cell_of(args);
  if (!cell) throw StepError("click takes ROW COL");
  const auto [row, col] = *cell;
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

namespace {

// The keys a script names that go to the grid (or an open list).
std::optional<HeadlessUser::Key> grid_key(TextView name) {
  static constexpr std::array<std::pair<TextView, HeadlessUser::Key>, 10> kKeys = {{
      {u"Enter", HeadlessUser::kEnter},
      {u"Tab", HeadlessUser::kTab},
      {u"Shift+Tab", HeadlessUser::kBackTab},
      {u"Space", HeadlessUser::kSpace},
      {u"Escape", HeadlessUser::kEscape},
      {u"Up", HeadlessUser::kUp},
      {u"Down", HeadlessUser::kDown},
      {u"Alt+Down", HeadlessUser::kAltDown},
      {u"F2", HeadlessUser::kF2},
      {u"F4", HeadlessUser::kF4},
  }};
  for (const auto& [key_name, key] : kKeys) {
    if (key_name == name) return key;
  }
  return std::nullopt;
}

}  // namespace

void HeadlessScriptRunner::key(TextView name) {
  const std::optional<HeadlessUser::Key> it = grid_key(name);
  HeadlessDeskForm& form = open_form();
  // An open list has the keys, the window's too (the desktop's grabs them).
  if (form.user().list_open()) {
    if (it) form.user().key(*it);
    return;
  }
  if (name == u"F8") {  // the window's key, wherever the focus is
    if (form.work().next_refused()) focus_ = Focus::kGrid;
    return;
  }
  // The window's keys.
  if (name == u"Ctrl+Z") return run(u"undo");
  if (name == u"Ctrl+Y") return run(u"redo");
  if (name == u"Ctrl+F") {
    // The filter box takes the focus from the grid (its cell left first).
    if (focus_ == Focus::kGrid && !form.user().focus_away()) return;
    focus_ = Focus::kFilter;
    filter_selected_ = true;
    return;
  }
  if (name == u"Ctrl+C") {
    if (std::optional<Text> copied = copied_text()) clipboard_ = std::move(*copied);
    return;
  }
  if (name == u"Ctrl+V") return paste_clipboard();
  // Keys on another control of the window (a toggle) are not the grid's.
  if (focus_ == Focus::kElsewhere) {
    throw StepError("unknown: the key \"" + to_utf8(name) + "\" outside the grid");
  }
  if (!it) {
    throw StepError("unknown key \"" + to_utf8(name) +
                    "\" (Enter, Tab, Shift+Tab, Space, Escape, Up, Down, Alt+Down, F2, F4, F8)");
  }
  if (focus_ == Focus::kFilter) {
    // The filter box takes a blank; Tab would go on to its toggles.
    if (*it == HeadlessUser::kSpace) return type(u" ");
    if (*it == HeadlessUser::kTab || *it == HeadlessUser::kBackTab) {
      throw StepError("unknown: Tab from the filter box goes on to its toggles");
    }
    return;
  }
  form.user().key(*it);
}

void HeadlessScriptRunner::filter(TextView text) {
  HeadlessDeskForm& form = open_form();
  // The click into the box takes the focus from the grid (the text is typed
  // into the box all the same).
  if (focus_ != Focus::kGrid || form.user().focus_away()) focus_ = Focus::kFilter;
  type_filter(Text(text), true);
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

std::optional<Text> HeadlessScriptRunner::copied_text() {
  HeadlessDeskForm& form = open_form();
  if (form.user().list_open()) return std::nullopt;  // the open list has the keys
  // A text box with nothing selected copies nothing: the clipboard keeps
  // what it had. The filter box has the text Ctrl+F selected in it.
  if (focus_ == Focus::kFilter) {
    if (!filter_selected_) return std::nullopt;
    return form.work().filter().text;
  }
  // An open editor copies its own selection.
  if (focus_ == Focus::kGrid && form.user().editor_focused()) {
    if (!form.user().selected()) return std::nullopt;
    const platform::CellRef at = form.controls().grid.ActiveCell();
    return form.controls().grid.Text(at.row, at.col);
  }
  // The grid, or a toggle box, which has no copy of its own: the rows.
  return form.work().copied_rows();
}

void HeadlessScriptRunner::copy() {
  // The step empties the clipboard before the key, as the desktop's does.
  clipboard_ = copied_text().value_or(Text());
  out_ << to_utf8(copied_line(clipboard_)) << "\n" << std::flush;
}

void HeadlessScriptRunner::type(TextView text) {
  HeadlessDeskForm& form = open_form();
  if (text.empty()) return;  // no key pressed
  if (focus_ == Focus::kFilter) {
    type_filter(Text(text), filter_selected_);
    filter_selected_ = false;
  } else if (focus_ == Focus::kGrid) {
    form.user().type(text);
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
  const bool column = trimmed(clipboard_).find(u'\n') != TextView::npos;
  if (focus_ == Focus::kGrid && form.user().editor_focused() && !column) {
    return form.user().paste(clipboard_);
  }
  if (!clipboard_.empty()) form.work().paste_values(clipboard_);
}

void HeadlessScriptRunner::paste(TextView args) {
  const auto [item, after] = first_word(args);
  const std::vector<Text> values = words_of(after);
  if (item.empty() || values.empty()) throw StepError("paste takes ITEM TEXT...");
  HeadlessDeskForm& form = open_form();
  const int32_t row = row_of_item(form.work().cell(), form.controls().grid, item);
  click(cell_args(row, grid::kValueCol));
  const Text text = lines_of(values);
  // One value goes into an open editor that has the focus; a column, or a
  // value where the grid has the focus, is the form's to paste.
  if (form.user().editor_focused() && values.size() == 1) {
    return form.user().paste(text);
  }
  form.work().paste_values(text);
}

void HeadlessScriptRunner::answer_next(TextView args) {
  const auto [reply, file] = first_word(args);
  if (reply == u"yes") {
    boxes_->reply = Boxes::Reply::kYes;
  } else if (reply == u"no") {
    boxes_->reply = Boxes::Reply::kNo;
  } else if (reply == u"cancel") {
    boxes_->reply = Boxes::Reply::kCancel;
  } else {
    throw StepError("answer takes yes [FILE], no or cancel");
  }
  if (!file.empty()) open_form().work().preset_file(Text(file), true);
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
      if (step.col == 2 && !one_of(step.text, {u"永久", u"可变", u"风", u"地震"})) {
        throw StepError("the list has no " + to_utf8(step.text));
      }
      const Text& text = step.text;
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
