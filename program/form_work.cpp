// What a calculation form does, whatever shows it.
#include "program/form_work.h"

#include <algorithm>
#include <atomic>
#include <string>

#include "program/file_names.h"
#include "program/white_space.h"
#include "zelkora/controls/form_controls.h"
#include "zelkora/datafile/foundation_data.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/error_numbers.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/row_facts.h"
#include "zelkora/grid/user_defaults.h"
#include "zelkora/typeset/markup.h"

namespace zelkora::desk {

namespace {

int64_t next_serial() {
  static std::atomic<int64_t> made{0};
  return ++made;
}

// Item 0 of every form is the project's name.
constexpr int32_t kProjectItem = 0;
// The settings' section of the kept views, an entry per layout.
constexpr TextView kViewSection = u"View";
// The colour of a refusal in the title box (dark red).
constexpr uint32_t kRefusalColour = 0x0000B0;

Text number(std::size_t n) { return from_utf8(std::to_string(n)); }

// A box's or a file dialog's title: the form's, without the mark of a changed
// project ("[*]", which only the form's own title bar turns into "*").
Text box_title(TextView window_title) { return replace_all(window_title, u"[*]", u""); }

const grid::RowFacts* facts_of(const std::vector<grid::RowFacts>& rows, int32_t row) {
  return row >= 1 && static_cast<std::size_t>(row) <= rows.size()
             ? &rows[static_cast<std::size_t>(row - 1)]
             : nullptr;
}

}  // namespace

// The form's grid events: the session's, and every change of a value marks
// the project changed.
class FormWork::Events : public grid::FormSession {
 public:
  Events(FormWork& work, std::shared_ptr<const platform::Platform> platform)
      : FormSession(std::move(platform), work.view_.grid_control(), work.view_.title_box_control(),
                    work.view_.panel_control(), work),
        work_(work) {}
  void CellChanging() override {
    FormSession::CellChanging();
    work_.update_changed();
    work_.view_.show_values(work_.values());  // the section follows the typing
    // Escape gave the cell back its text: marks and notes follow it.
    if (!work_.view_.editing()) {
      work_.values_changed(false);
      work_.show_row_notes();
    }
  }
  void ComboClick() override {
    FormSession::ComboClick();
    work_.update_changed();
    work_.view_.show_values(work_.values());
    // The rows the pick made (not) apply leave (or join) the filtered view;
    // its own row stays until its cell is left, through the check.
    if (work_.view_.filtered()) work_.apply_filter(work_.view_.current_row());
  }
  void EnterRow() override {
    FormSession::EnterRow();
    work_.show_row_notes();
  }
  void LeaveCell(int32_t row, int32_t col, bool& cancel) override {
    FormSession::LeaveCell(row, col, cancel);
    // A refused value is no step: the cell and the item are back at the
    // text the row had when it was entered. A pasted column is one step.
    work_.values_changed(!cancel && !work_.pasting_);
    if (cancel) work_.show_row_notes();
  }

 private:
  FormWork& work_;
};

FormWork::FormWork(std::shared_ptr<const platform::Platform> platform, const Program& program,
                   FormView& view)
    : program_(program),
      platform_(platform),
      view_(view),
      serial_(next_serial()),
      errors_(platform) {
  session_ = std::make_unique<Events>(*this, platform);
  session_->check_values_on_leave(true);
  view_.connect_events(session_.get());
  const clsCharacter chr(platform);
  session_->build(layout_id(program.layout, chr));
  if (platform::ListView* table = view_.case_table()) {
    set_case_rows(*table, default_case_rows());
    // The load cases travel in the project file as the foundation data.
    session_->cell().form_groups(
        {[this](clsLoadSave& ls) { return save_cases(ls); },
         [this](clsLoadSave& ls, UseBinRecord& record) { return read_cases(ls, record); }});
  }
  apply_my_defaults();
  history_ = std::make_unique<grid::ValueHistory>(session_->cell());
  update_refused();
  update_history();
  values_saved();
  view_.show_values(values());
}

FormWork::~FormWork() { view_.connect_events(nullptr); }

bool FormWork::shows_section(const Program& program) {
  return equal_text(program.layout, u"clsBeamSteel", Compare::Text);
}

clsGridCell& FormWork::cell() { return session_->cell(); }

platform::GridEvents& FormWork::events() { return *session_; }

void FormWork::record_events(platform::GridEvents* recorder) {
  view_.connect_events(recorder ? recorder : session_.get());
}

std::vector<Text> FormWork::values() {
  std::vector<Text> now;
  if (session_) session_->cell().GetCurrentText(now);
  return now;
}

Text FormWork::with_extension(TextView file, TextView extension) {
  if (file.empty() || !file_suffix(file).empty()) return Text(file);
  return Text(file) + u"." + Text(extension);
}

Text FormWork::chosen_file(bool saving, TextView filter) {
  if (std::optional<Text>& preset = saving ? preset_save_ : preset_open_) {
    Text file = std::move(*preset);
    preset.reset();
    return file;
  }
  return view_.choose_file(saving, box_title(window_title()), file_, filter);
}

void FormWork::remember_file(TextView file) {
  clsCharacter(platform_).bHistoryAdd(Text(program_.menu_key), native_absolute_path(file));
}

// ---- The project ---------------------------------------------------------------------

void FormWork::update_changed() {
  changed_ = values() != saved_values_ || cases() != saved_cases_;
  update_title();  // the project's name in it may have changed too
}

void FormWork::values_saved() {
  saved_values_ = values();
  saved_cases_ = cases();
  changed_ = false;
  update_title();
}

bool FormWork::may_discard_changes() {
  update_changed();
  if (!changed_ || !ask_before_closing_) return true;
  switch (view_.ask_save_changes(u"项目已修改，是否保存？", box_title(window_title()))) {
    case FormView::SaveChanges::kDiscard:
      return true;
    case FormView::SaveChanges::kCancel:
      return false;
    case FormView::SaveChanges::kSave:
      break;
  }
  const Text file =
      file_.empty() ? with_extension(chosen_file(true, kProjectFilter), u"zks") : file_;
  return !file.empty() && save_file(file);
}

Text FormWork::window_title() const {
  const Text project = session_ ? session_->cell().tGetText(kProjectItem) : Text();
  Text name(trimmed(project));
  if (name.empty()) {
    name = file_.empty() ? Text(u"未命名") : Text(complete_base_name(file_));
  }
  return Text(program_.menu_key) + u" - " + name + u"[*]";
}

void FormWork::update_title() {
  std::pair<Text, bool> title{window_title(), changed_};
  if (shown_title_ == title) return;
  view_.show_title(title.first, title.second);
  shown_title_ = std::move(title);
}

// 新建 and 打开 replace the project as closing it does: the value being typed
// is left through its check first (refused, nothing is replaced), then the
// changes are dealt with.
void FormWork::menu_new() {
  if (may_close()) new_project();
}

void FormWork::menu_open() {
  if (!may_close()) return;
  const Text file = chosen_file(false, kProjectFilter);
  if (!file.empty()) open_file(file);
}

void FormWork::open_recent(TextView file) {
  if (may_close()) open_file(file);
}

void FormWork::menu_save() {
  const Text file =
      file_.empty() ? with_extension(chosen_file(true, kProjectFilter), u"zks") : file_;
  if (!file.empty()) save_file(file);
}

void FormWork::menu_save_as() {
  const Text file = with_extension(chosen_file(true, kProjectFilter), u"zks");
  if (!file.empty()) save_file(file);
}

bool FormWork::may_close() {
  // A value still being typed is left, and checked, first.
  if (!view_.leave_cell()) return false;
  values_changed();
  return may_discard_changes();
}

void FormWork::new_project() {
  session_->cell().LoadDefaultEnterA(false);
  if (platform::ListView* table = view_.case_table()) set_case_rows(*table, default_case_rows());
  apply_my_defaults();
  history_->clear();
  values_changed();
  file_.clear();
  report_lines_.clear();
  view_.show_report({}, {});
  values_saved();
}

bool FormWork::open_file(TextView file) {
  opened_cases_.reset();
  if (!session_->cell().bLoadOrSaveData(u"Load", file, Text(program_.layout), {}, add_data_)) {
    const ProjectFileKind kind = project_file_kind(platform_, file);
    if (kind.layout && !equal_text(*kind.layout, program_.layout, Compare::Text)) {
      platform_->messages->warning(why_not_opened(kind, file, &program_),
                                   box_title(window_title()));
      return false;
    }
    const int32_t error = kind.exists ? error_id::kDataFileDamaged : error_id::kDataFileNotOpened;
    errors_.GenMsgErrorW(error, Text(file_name(file)), {}, {}, {}, false);
    return false;
  }
  // A file without load cases (saved before the form had its table) leaves
  // the table empty.
  if (platform::ListView* table = view_.case_table()) {
    set_case_rows(*table, opened_cases_.value_or(CaseRows()));
  }
  session_->cell().ControlEnableA(0);
  history_->clear();
  values_changed();
  file_ = Text(file);
  values_saved();
  remember_file(file);
  view_.show_status(u"已打开 " + Text(file), 5000);
  return true;
}

bool FormWork::save_file(TextView file) {
  // A value still being edited is left first, checked as always.
  if (!view_.leave_cell()) return false;
  if (!cases_can_be_saved()) return false;
  if (!session_->cell().bLoadOrSaveData(u"Save", file, Text(program_.layout), {}, add_data_)) {
    errors_.GenMsgErrorW(error_id::kDataFileNotSaved, Text(file_name(file)), {}, {}, {}, false);
    return false;
  }
  file_ = Text(file);
  values_saved();
  remember_file(file);
  view_.show_status(u"已保存 " + Text(file), 5000);
  return true;
}

void FormWork::load_defaults() {
  // A value still being typed is left first, checked as always: it is not
  // taken unchecked by the step, nor left open on a row the defaults hide.
  if (!view_.leave_cell()) return;
  session_->cell().LoadDefaultEnterA(true);
  values_changed();  // one step of the history
}

// ---- Calculation ---------------------------------------------------------------------

void FormWork::calculate() {
  if (!program_.calculates) {
    platform_->messages->warning(u"本表单只输入、检查、保存和打开数据，没有计算。",
                                 box_title(window_title()));
    return;
  }
  if (!view_.leave_cell()) return;
  const std::vector<Text> now = values();
  clsCharacter chr(platform_);
  chr.bSuperSub(true);  // squares and cubes of units as superscripts
  report_lines_ = program_.report ? program_.report(now, cases(), chr) : std::vector<Text>{};
  report_values_ = now;
  report_cases_ = cases();
  report_stale_ = false;
  view_.show_report(report_lines_, report_values_);
}

bool FormWork::report_may_leave(TextView action) {
  if (!report_lines_.empty() && !report_stale_) return true;
  platform_->messages->warning(u"计算书已过期或尚未计算：请先单击“计算”。", action);
  return false;
}

void FormWork::mark_report_stale() {
  if (!program_.calculates || report_lines_.empty() || report_stale_) return;
  if (values() == report_values_ && cases() == report_cases_) return;
  report_stale_ = true;
  view_.show_report_stale();
}

// ---- The load cases -------------------------------------------------------------------

CaseRows FormWork::cases() const {
  const platform::ListView* table = view_.case_table();
  return table ? case_rows(*table) : CaseRows();
}

void FormWork::cases_changed() {
  update_changed();
  mark_report_stale();
}

int32_t FormWork::add_case() {
  platform::ListView* table = view_.case_table();
  if (!table) return 0;
  CaseRows rows = case_rows(*table);
  if (static_cast<int32_t>(rows.size()) >= kMostCases) {
    platform_->messages->warning(
        u"荷载工况最多 " + from_utf8(std::to_string(kMostCases)) + u" 个。",
        box_title(window_title()));
    return 0;
  }
  rows.push_back(new_case_row(rows));
  set_case_rows(*table, rows);
  cases_changed();
  return static_cast<int32_t>(rows.size());
}

bool FormWork::delete_case(int32_t item) {
  platform::ListView* table = view_.case_table();
  if (!table) return false;
  CaseRows rows = case_rows(*table);
  if (item < 1 || item > static_cast<int32_t>(rows.size()) || rows.size() == 1) return false;
  rows.erase(rows.begin() + (item - 1));
  set_case_rows(*table, rows);
  cases_changed();
  return true;
}

int32_t FormWork::move_case(int32_t item, int step) {
  platform::ListView* table = view_.case_table();
  const int32_t by = step < 0 ? -1 : 1;
  if (!table || !controls::bLstView_MoveRow(*table, item, by)) return 0;
  cases_changed();
  return item + by;
}

bool FormWork::cases_can_be_saved() {
  const platform::ListView* table = view_.case_table();
  if (!table) return true;
  clsLoadSave ls(platform_);
  Array2<Text> cells;
  Array2<double> forces;
  std::vector<int16_t> kinds;
  if (ls.ReadCellToArray_Gk_Nl_Text(*table, cells, forces, kinds)) return true;
  errors_.GenMsgErrorW(ls.last_error(), ls.error_place(), ls.error_cell(), {}, {}, false);
  return false;
}

bool FormWork::save_cases(clsLoadSave& ls) {
  Array2<Text> cells;
  Array2<double> forces;
  std::vector<int16_t> kinds;
  if (!ls.ReadCellToArray_Gk_Nl_Text(*view_.case_table(), cells, forces, kinds)) return false;
  // The footing's number is the form's own (item 1); the table needs one.
  const std::vector<Text> now = values();
  Text number = now.size() > 1 ? Text(trim(now[1])) : Text();
  if (number.empty()) number = u"1";
  return ls.SaveDataFoundation({number}, {Text()}, {cells});
}

bool FormWork::read_cases(clsLoadSave& ls, UseBinRecord& record) {
  if (record.Member != datafile::kFootingNumbersName) return true;
  std::vector<Text> numbers, files;
  std::vector<Array2<Text>> loads;
  if (!ls.bLoadDataFoundation(numbers, files, loads, record) || loads.empty()) return false;
  CaseRows rows;
  const Array2<Text>& cells = loads.front();
  for (int32_t i = 0; i <= cells.U1; ++i) {
    std::vector<Text> row;
    for (int32_t c = 0; c <= cells.U2; ++c) row.push_back(cells(i, c));
    rows.push_back(std::move(row));
  }
  opened_cases_ = std::move(rows);
  return true;
}

// ---- The form object ------------------------------------------------------------------

void FormWork::ControlEnable(std::vector<bool>& hidden) {
  const clsCharacter chr(platform_);
  apply_rules(program_, texts_, hidden, chr);
  update_title();
}

void FormWork::ControlEnable(std::vector<zelkora::Text>& texts, std::vector<bool>& hidden) {
  texts_ = texts;
  ControlEnable(hidden);
}

// ---- After a change -----------------------------------------------------------------------

void FormWork::values_changed(bool step) {
  if (!history_) return;
  if (step) history_->record();
  update_changed();
  view_.show_values(values());
  mark_report_stale();
  update_refused();
  if (view_.filtered()) apply_filter();
  update_history();
}

void FormWork::update_history() { view_.show_history(history_->can_undo(), history_->can_redo()); }

void FormWork::update_refused() {
  const std::vector<Text> messages = grid::refusals(cell());
  std::vector<int32_t> now;
  for (const grid::RowFacts& row : grid::row_facts(cell())) {
    const Text& message = messages[static_cast<std::size_t>(row.row - 1)];
    if (row.item >= 0 && !row.hidden && !message.empty()) {
      now.push_back(row.row);
      view_.mark_refused(row.row, message);
    } else if (view_.marked(row.row)) {
      view_.mark_refused(row.row, {});
    }
  }
  refused_ = now;
  view_.show_refused_count(now.empty() ? Text() : number(now.size()) + u" 个数据有错误（F8 转到）");
}

void FormWork::show_row_notes() {
  clsGridCell& form_cell = cell();
  const int32_t row = form_cell.lCurrentRow();
  const std::vector<grid::RowFacts> rows = grid::row_facts(form_cell);
  const grid::RowFacts* facts = facts_of(rows, row);
  if (!facts || facts->item < 0) {
    view_.fit_title_box(false);
    return;
  }
  form_cell.tShowRowTitle();  // the notes follow the caption and help once
  platform::RichTextBox& box = view_.title_box_control();
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
  view_.fit_title_box(!refused.empty());
}

// ---- Undo and redo ---------------------------------------------------------------------------

bool FormWork::undo() { return step_history(true); }

bool FormWork::redo() { return step_history(false); }

bool FormWork::step_history(bool back) {
  if (!view_.leave_cell()) return false;
  view_.clear_status();
  view_.clear_selection();
  values_changed();
  if (!(back ? history_->undo() : history_->redo())) return false;
  const int32_t item = back ? history_->redo_item() : history_->undo_item();
  const int32_t row = cell().lGetRowByIndex(item);
  values_changed();
  if (row > 0 && view_.row_shown(row)) view_.make_current(row);
  return true;
}

// ---- Copy and paste ------------------------------------------------------------------------

Text FormWork::copied_rows() const {
  std::vector<int32_t> rows = view_.selected_rows();
  if (rows.empty() && view_.current_row() > 0) rows.push_back(view_.current_row());
  platform::GridControl& grid = view_.grid_control();
  Text text;
  for (const int32_t row : rows) {
    if (row < 1 || !view_.row_shown(row)) continue;
    text += Text(trim(grid.Text(row, grid::kCaptionCol))) + u"\t" +
            grid.Text(row, grid::kValueCol) + u"\n";
  }
  return text;
}

bool FormWork::paste_values(TextView text) {
  std::vector<Text> lines = split_text(text, u"\n");
  for (Text& line : lines) {
    if (!line.empty() && line.back() == u'\r') line.pop_back();
  }
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  if (lines.empty()) return false;
  platform::GridControl& grid = view_.grid_control();
  int32_t row = view_.current_row();
  if (row < 1 || !view_.row_shown(row) || grid.Locked(row)) {
    row = view_.next_editable_row(std::max(row, 0), 1);
  }
  // The whole column is one step of the history, whatever stops it.
  pasting_ = true;
  struct StepAtEnd {
    FormWork& work;
    ~StepAtEnd() {
      work.pasting_ = false;
      work.values_changed();
    }
  } step_at_end{*this};
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (row < 0) {
      view_.show_status(
          u"粘贴停止：下面没有可编辑的行，还有 " + number(lines.size() - i) + u" 个值未粘贴", 0);
      return false;
    }
    const std::size_t tab = lines[i].rfind(u'\t');
    const Text value(
        trimmed(tab == Text::npos ? TextView(lines[i]) : TextView(lines[i]).substr(tab + 1)));
    if (!view_.type_into(row, value)) {
      view_.show_status(u"粘贴停在第 " + number(i + 1) + u" 个值：“" +
                            Text(trim(grid.Text(row, grid::kCaptionCol))) + u"”不接受“" + value +
                            u"”",
                        0);
      return false;
    }
    row = view_.next_editable_row(row, 1);
  }
  return true;
}

// ---- Defaults of a row, the next refused value ---------------------------------------------

void FormWork::reset_current() {
  if (!view_.leave_cell()) return;
  values_changed();
  const std::vector<grid::ItemValue> defaults = grid::defaults_of(cell(), view_.current_row());
  if (defaults.empty()) return;
  grid::write_values(cell(), defaults);
  values_changed();
}

// ---- The user's own defaults -------------------------------------------------------------

void FormWork::apply_my_defaults() {
  const std::vector<grid::ItemValue> mine = grid::load_user_defaults(cell(), program_.layout);
  if (!mine.empty()) grid::write_values(cell(), mine);
}

bool FormWork::save_my_defaults() {
  if (!view_.leave_cell()) return false;
  values_changed();
  const grid::SavedUserDefaults saved = grid::save_user_defaults(cell(), program_.layout);
  if (!saved.written) {
    platform_->messages->warning(
        u"不能保存我的默认值：文件“" + grid::user_defaults_file(*platform_) + u"”不能写入。",
        box_title(window_title()));
    return false;
  }
  Text note = u"已保存为我的默认值";
  if (!saved.left_out.empty()) {
    note += u"（" + number(saved.left_out.size()) + u" 个数据不能保存，仍用原默认值）";
  }
  view_.show_status(note, 5000);
  return true;
}

bool FormWork::restore_my_defaults() {
  if (!view_.leave_cell()) return false;
  values_changed();
  const std::vector<grid::ItemValue> mine = grid::load_user_defaults(cell(), program_.layout);
  if (mine.empty()) {
    view_.show_status(u"没有保存的我的默认值", 5000);
    return false;
  }
  grid::write_values(cell(), mine);
  values_changed();  // one step of the history
  return true;
}

bool FormWork::next_refused() {
  // The cell being typed in is left first, through its check, while the
  // filter or the folding that shows it is as it was.
  if (!view_.leave_cell()) return false;
  update_refused();
  if (refused_.empty()) return false;
  const int32_t current = view_.current_row();
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
  if (!view_.row_shown(row)) {
    set_filter({});
    view_.show_filter(filter_);
  }
  return view_.edit_cell(row);
}

// ---- The view kept between sessions -------------------------------------------------------

std::optional<grid::ViewState> FormWork::kept_view() const {
  const clsCharacter chr(platform_);
  const std::optional<Text> saved =
      platform_->settings->get(chr.tString(text_id::kApplication), kViewSection, program_.layout);
  if (!saved) return std::nullopt;
  return grid::parse_view_state(*saved);
}

void FormWork::restore_kept_view(const grid::ViewState& view) {
  grid::restore_view(cell(), view);
  // The current row, or the first shown one after it.
  int32_t row = grid::key_row(cell(), view.current);
  if (row > 0 && !view_.row_shown(row)) row = view_.next_editable_row(row, 1);
  if (row > 0) view_.make_current(row);
}

void FormWork::keep_view(const grid::ViewState& view) {
  const clsCharacter chr(platform_);
  platform_->settings->set(chr.tString(text_id::kApplication), kViewSection, program_.layout,
                           grid::view_state_text(view));
}

// ---- The filter ---------------------------------------------------------------------------

void FormWork::set_filter(grid::RowFilter filter) {
  filter_ = std::move(filter);
  apply_filter();
  // An editor does not stay on a row the filter hid: keys would edit a row
  // the user cannot see. Its cell is left through the check (a refused value
  // goes back to the row's value, and its editor goes all the same).
  if (view_.editing() && !view_.row_shown(view_.current_row())) view_.leave_cell();
}

void FormWork::apply_filter(int32_t held_row) {
  if (!filter_.active()) {
    view_.show_only({});
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
  grid::RowFilter filter = filter_;
  if (view_.editing()) filter.held_row = held_row;
  std::vector<bool> kept = grid::rows_kept(rows, filter, refused);
  // A folded row the filter shows is edited and checked like any other.
  grid::show_kept_rows(cell(), kept);
  view_.show_only(std::move(kept));
}

std::vector<Text> FormWork::recent_files(const std::shared_ptr<const platform::Platform>& platform,
                                         const Program& program) {
  return clsCharacter(platform).tHistoryFiles(Text(program.menu_key));
}

bool FormWork::show_help() {
  Text topic;
  const int32_t row = cell().lCurrentRow();
  for (const grid::RowFacts& facts : grid::row_facts(cell())) {
    if (facts.row == row && facts.item >= 0) {
      topic = Text(trim(typeset::strip_fields_and_markup(facts.caption))) + u".htm";
    }
  }
  if (clsCharacter(platform_).bShowHelp(topic)) return true;
  const bool missing = platform_->suite->full_path(u"Zelkora.chm").empty();
  const Text why = missing ? Text(u"找不到帮助文件 Zelkora.chm，本程序没有帮助。")
                           : Text(u"帮助文件 Zelkora.chm 无法打开：系统没有能打开它的程序。");
  view_.show_status(why, 10000);
  platform_->messages->warning(why, u"帮助");
  return false;
}

}  // namespace zelkora::desk
