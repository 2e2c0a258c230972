// The random tester of the desktop program, on any host.
#include "program/monkey.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <mutex>
#include <optional>
#include <random>
#include <sstream>
#include <thread>

#include "program/form_model.h"
#include "program/form_state.h"
#include "program/headless_script.h"
#include "program/white_space.h"
#include "zelkora/datafile/foundation_data.h"
#include "zelkora/grid/form_session.h"
#include "zelkora/grid/layout.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/headless/recording_events.h"

#ifdef _WIN32
#include <stdlib.h>
#endif

namespace zelkora::desk {

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

constexpr int32_t kValueCol = 3;
constexpr int32_t kCaptionCol = 2;
constexpr TextView kQuestion = u"项目已修改，是否保存？";
// The titles of the boxes that explain a refused value.
constexpr TextView kRefusalTitles[] = {u"输入错误！", u"无效输入！"};

struct Finding {
  int64_t step = 0;  // from 1
  std::string rule;
  std::string detail;
};

// The forms the tester opens: the menu's group and the program's row.
struct MenuPath {
  const char* group;
  const char* entry;
};
constexpr MenuPath kForms[] = {
    {"基本构件", "梁配筋"}, {"地基基础", "独立基础"}, {"常用工具", "荷载组合"}};

// ---- Small helpers of text, numbers and files ----------------------------------------------

std::string utf8(TextView text) { return to_utf8(text); }
Text text_of(const std::string& utf8) { return from_utf8(utf8); }

bool starts_with(const std::string& s, std::string_view prefix) {
  return s.compare(0, prefix.size(), prefix) == 0;
}
bool contains(const std::string& s, std::string_view part) {
  return s.find(part) != std::string::npos;
}
// The first `n` characters of a text, as UTF-8.
std::string left(TextView text, std::size_t n) { return utf8(text.substr(0, n)); }

Lines split_lines(const std::string& text, char separator, bool skip_empty = true) {
  Lines lines;
  std::string line;
  std::istringstream in(text);
  while (std::getline(in, line, separator)) {
    if (!skip_empty || !line.empty()) lines.push_back(line);
  }
  return lines;
}

std::string joined(const Lines& lines, std::string_view separator) {
  std::string all;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) all += separator;
    all += lines[i];
  }
  return all;
}

// The first word of a line and the rest, trimmed.
std::string verb_of(const std::string& line) { return line.substr(0, line.find(' ')); }
std::string rest_of(const std::string& line) {
  const std::size_t space = line.find(' ');
  return space == std::string::npos ? std::string() : utf8(trimmed(text_of(line.substr(space))));
}

std::string replaced(std::string text, const std::string& find, const std::string& by) {
  if (find.empty()) return text;
  for (std::size_t at = 0; (at = text.find(find, at)) != std::string::npos; at += by.size()) {
    text.replace(at, find.size(), by);
  }
  return text;
}

// A number as a user would type it: up to six significant digits.
std::string number_text(double value) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%g", value);
  return buffer;
}

std::optional<double> number_in(TextView text) {
  const std::string digits = utf8(trimmed(text));
  if (digits.empty()) return std::nullopt;
  char* end = nullptr;
  const double value = std::strtod(digits.c_str(), &end);
  if (end != digits.c_str() + digits.size()) return std::nullopt;
  return value;
}

fs::path path_of(const std::string& utf8_name) {
  return fs::path(std::u8string(utf8_name.begin(), utf8_name.end()));
}
std::string name_of(const fs::path& path) {
  const std::u8string name = path.u8string();
  return std::string(name.begin(), name.end());
}
std::string file_in(const std::string& folder, const std::string& name) {
  return name_of(path_of(folder) / path_of(name));
}

std::optional<std::string> read_bytes(const std::string& file) {
  std::ifstream in(path_of(file), std::ios::binary);
  if (!in) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(in), {});
}

bool write_bytes(const std::string& file, std::string_view bytes) {
  std::ofstream out(path_of(file), std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return static_cast<bool>(out);
}

void set_environment(const char* name, const std::optional<std::string>& value) {
#ifdef _WIN32
  const std::wstring wide_name(name, name + std::strlen(name));
  const Text text = value ? text_of(*value) : Text();
  const std::wstring wide_value(text.begin(), text.end());
  _wputenv_s(wide_name.c_str(), wide_value.c_str());
#else
  if (value) {
    setenv(name, value->c_str(), 1);
  } else {
    unsetenv(name);
  }
#endif
}

std::optional<std::string> environment(const char* name) {
  if (const char* value = std::getenv(name)) return std::string(value);
  return std::nullopt;
}

// A folder of the run's own, removed at the end unless it is to be kept.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device random;
    for (int attempt = 0; attempt < 100 && path_.empty(); ++attempt) {
      const fs::path candidate =
          fs::temp_directory_path() / ("zelkora-monkey-" + std::to_string(random() % 1000000000));
      std::error_code error;
      if (fs::create_directory(candidate, error)) path_ = name_of(candidate);
    }
  }
  ~TemporaryFolder() {
    std::error_code error;
    if (remove_ && !path_.empty()) fs::remove_all(path_of(path_), error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::string& path() const { return path_; }
  void keep() { remove_ = false; }

 private:
  std::string path_;
  bool remove_ = true;
};

// What the form should show of a row, for a finding.
std::string row_name(FormWork& form, int32_t row) {
  return "row " + std::to_string(row) + " (" +
         utf8(trim(form.view().grid_control().Text(row, kCaptionCol))) + ")";
}

// ---- The events between the grid and the form, given to the model too ------------------

class Recorder : public platform::GridEvents {
 public:
  Recorder(MonkeyHost& host, FormWork& form, FormModel& model)
      : host_(host), form_(form), serial_(form.serial()), model_(model), log_(form.events()) {
    form.record_events(this);
  }
  ~Recorder() override {
    // The form may be gone, or behind another one.
    if (FormWork* form = host_.form_of(serial_)) form->record_events(nullptr);
  }
  std::optional<Finding> finding;
  // The events as the form's handlers got them, written down.
  std::vector<std::string>& log() { return log_.lines; }

  void EnterRow() override {
    model_.enter_row(grid().ActiveCell().row);
    to().EnterRow();
  }
  void BeforeEdit(int32_t row, int32_t col, bool& cancel) override {
    to().BeforeEdit(row, col, cancel);
  }
  void CellChanging() override {
    const platform::CellRef at = grid().ActiveCell();
    model_.cell_changing(at.row, at.col, grid().Text(at.row, at.col), form_.view().editing());
    to().CellChanging();
  }
  void LeaveCell(int32_t row, int32_t col, bool& cancel) override {
    const platform::CellRef at = grid().ActiveCell();
    if ((at != platform::CellRef{row, col}) && !finding) {
      finding = Finding{0, "the cell left is the active one",
                        "left " + std::to_string(row) + "," + std::to_string(col) + " while " +
                            std::to_string(at.row) + "," + std::to_string(at.col) + " is active"};
    }
    // The filter as its box and toggles say, taken by the form as they
    // change: a cell the new filter hides may be left within the step.
    model_.filter(host_.filter_text(), host_.changed_only(), host_.refused_only());
    const bool refused = model_.leave_cell(row, col);
    to().LeaveCell(row, col, cancel);
    if (cancel != refused && !finding) {
      finding = Finding{
          0, "a leave is refused exactly when the check refuses",
          row_name(form_, row) + ": the form " + (cancel ? "refused" : "took") + " the leave"};
    }
  }
  void ComboDropDown() override { to().ComboDropDown(); }
  void ComboClick() override {
    const platform::CellRef at = grid().ActiveCell();
    model_.combo_click(at.row, grid().Text(at.row, at.col));
    to().ComboClick();
  }
  void Click(int32_t row, int32_t col) override {
    model_.click(row, col);
    to().Click(row, col);
  }
  void DblClick() override {
    const platform::CellRef at = grid().ActiveCell();
    model_.double_click(at.row, at.col);
    to().DblClick();
  }
  void KeyDown(int16_t& key_code, int16_t shift) override {
    const platform::CellRef at = grid().ActiveCell();
    model_.key_down(at.row, at.col, key_code);
    to().KeyDown(key_code, shift);
  }
  void LostFocus() override { to().LostFocus(); }

 private:
  platform::GridControl& grid() { return form_.view().grid_control(); }
  platform::GridEvents& to() { return log_; }

  MonkeyHost& host_;
  FormWork& form_;
  int64_t serial_;
  FormModel& model_;
  platform::headless::RecordingEvents log_;
};

// ---- One run of the program ---------------------------------------------------------------

// What the tester saw before a step.
struct Before {
  bool form = false;
  bool editing = false;
  bool focus_in_grid = false;  // the grid or its editor has the focus
  bool changed = false;
  int32_t current_row = 0;
  // The focused editor has typing of its own to undo, or to redo: Ctrl+Z,
  // Ctrl+Y are its own then, not the values' history.
  bool editor_undoes = false;
  bool editor_redoes = false;
};

class Session {
 public:
  Session(const MonkeyHostFactory& host, std::string folder, uint64_t seed, int form_kind,
          bool compare_hosts)
      : folder_(std::move(folder)),
        rng_(seed),
        host_(host()),
        form_kind_(form_kind),
        compare_hosts_(compare_hosts) {
    host_->clear_clipboard();  // what an earlier run copied is not this one's
  }
  ~Session() {
    recorder_.reset();
    host_->close_forms();
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // The step the user takes next, drawn at random.
  std::string next_step();
  // Runs one step and checks the form after it.
  std::optional<Finding> step(const std::string& line);

  int64_t skipped() const { return skipped_; }
  int64_t compared() const { return compared_; }

 private:
  int64_t draw(int64_t below) {
    return std::uniform_int_distribution<int64_t>(0, std::max<int64_t>(below, 1) - 1)(rng_);
  }
  bool chance(double p) { return std::uniform_real_distribution<double>(0, 1)(rng_) < p; }
  template <std::size_t N>
  std::string any_of(const char* const (&choices)[N]) {
    return choices[draw(static_cast<int64_t>(N))];
  }
  std::string value_for(int32_t item);
  std::string file_name();
  std::vector<Text> list_of(int32_t item);

  // The form in front, when it is the one the model follows.
  FormWork* form() {
    FormWork* work = host_->form();
    return work && work->serial() == serial_ ? work : nullptr;
  }
  void attach();
  void forget_form();
  void take_form_actions(const std::string& line, const Before& before);
  std::optional<Finding> check();
  std::optional<Finding> check_saved(const std::string& file);
  std::optional<Finding> check_copied();
  // The answer the next box takes, as the script's runner gives it.
  std::string consume_answer(bool question);
  void start_twin(FormWork& form);
  std::optional<Finding> step_twin(const std::string& line, bool ran);
  std::string events_of_step();
  void saved_to(const std::string& file) {
    model_->saved_to(text_of(file));
    files_[file] = model_->state().values;
  }

  std::string folder_;
  std::mt19937_64 rng_;
  std::unique_ptr<MonkeyHost> host_;
  std::string printed_;
  int64_t serial_ = 0;  // the form the model follows (0: none)
  std::unique_ptr<FormModel> model_;
  std::unique_ptr<Recorder> recorder_;
  int form_kind_;
  bool compare_hosts_;
  std::string pending_answer_;  // "yes FILE", "no", "cancel" or empty
  // Boxes expected in the step beyond the refusals, and questions.
  int32_t expected_boxes_ = 0;
  bool expect_question_ = false;
  std::string saved_file_;
  bool copied_ = false;
  // The projects saved in this run and their values.
  std::map<std::string, std::vector<Text>> files_;
  int64_t skipped_ = 0;
  // The same steps on the headless form, compared with the desktop one step
  // by step while it can take them (until the form closes, or a step only
  // the desktop script has).
  std::ostringstream twin_out_;
  std::unique_ptr<HeadlessScriptRunner> twin_;
  std::unique_ptr<platform::headless::RecordingEvents> twin_log_;
  int64_t compared_ = 0;
};

// ---- Drawing steps -------------------------------------------------------------------------

std::string Session::file_name() {
  static const char* const kFiles[] = {"a.zks",     "b.zks",       "c.zks",      "damaged.zks",
                                       "empty.zks", "foreign.zks", "missing.zks"};
  const int64_t at = draw(chance(0.7) ? 3 : 7);
  return file_in(folder_, kFiles[at]);
}

std::vector<Text> Session::list_of(int32_t item) {
  for (const ModelRow& row : model_->rows()) {
    if (row.facts.item == item) return clsCharacter(host_->platform()).ComboBoxList(row.list);
  }
  return clsCharacter(host_->platform()).ComboBoxList(0);
}

std::string Session::value_for(int32_t item) {
  const ModelRow* row = nullptr;
  for (const ModelRow& r : model_->rows()) {
    if (r.facts.item == item) row = &r;
  }
  const Text current = model_->state().values[static_cast<std::size_t>(item)];
  const std::string default_value = row ? utf8(row->facts.default_value) : std::string();
  switch (draw(12)) {
    case 0:
    case 1:
    case 2: {  // a number near the value
      const double base = number_in(current).value_or(100);
      const double factor = std::uniform_real_distribution<double>(0.1, 3.0)(rng_);
      return number_text(std::round(base * factor * 10) / 10);
    }
    case 3:
    case 4: {  // an item of its list
      const std::vector<Text> list = list_of(item);
      if (!list.empty()) return utf8(list[static_cast<std::size_t>(draw(list.size()))]);
      return default_value;
    }
    case 5: {
      static const char* const kBad[] = {"abc", "-1",     "0",    "1e400", "NaN", "--",
                                         "-0",  "1e-300", "0x10", "1,2,3", ",",   "∞"};
      return any_of(kBad);
    }
    case 6:
      return {};
    case 7:
      return std::string(static_cast<std::size_t>(draw(3) == 0 ? 1030 : 1 + draw(60)), '9');
    case 8: {
      static const char* const kChinese[] = {"混凝土", "梁", "Φ20", "４Φ２０", "是", "否", "C30"};
      return any_of(kChinese);
    }
    case 9: {
      static const char* const kJoined[] = {"2,16", "2, 16",  "3,20,1", "16,",
                                            ",2",   "14, 25", "2 ,  18"};
      return any_of(kJoined);
    }
    case 10:
      return " " + std::to_string(draw(1000)) + " ";
    default:
      return default_value;
  }
}

std::string Session::next_step() {
  FormWork* work = form();
  if (!work) {
    const MenuPath& path = kForms[form_kind_];
    // The group is unfolded once; then its entry opens the form.
    return std::string("menu ") +
           (host_->menu_shows(text_of(path.entry)) ? path.entry : path.group);
  }
  const auto rows_count = static_cast<int64_t>(model_->rows().size());
  const auto items = static_cast<int64_t>(model_->state().values.size());
  const bool editing = work->view().editing();
  const bool in_grid = host_->focus_in_grid();
  const int64_t roll = draw(100);
  const auto item = [&] { return static_cast<int32_t>(draw(items)); };
  if (roll < 22) {
    const int32_t i = item();
    return "edit " + std::to_string(i) + " " + value_for(i);
  }
  if (roll < 30) {
    const int32_t i = item();
    const std::vector<Text> list = list_of(i);
    if (list.empty()) return "key Tab";
    return "pick " + std::to_string(i) + " " +
           utf8(list[static_cast<std::size_t>(draw(list.size()))]);
  }
  if (roll < 40) {
    const int64_t row = draw(rows_count + 3);
    return "click " + std::to_string(row) + " " + std::to_string(draw(5));
  }
  if (roll < 58) {
    static const char* const kKeys[] = {"Tab", "Shift+Tab", "Enter",  "Escape", "Space",
                                        "Up",  "Down",      "F2",     "F4",     "Alt+Down",
                                        "F8",  "Ctrl+F",    "Ctrl+C", "Tab",    "Enter"};
    return std::string("key ") + any_of(kKeys);
  }
  if (roll < 66) return "type " + value_for(item());
  if (roll < 72) {
    if (editing || !in_grid) return "key Escape";
    return chance(0.6) ? "undo" : "redo";
  }
  if (roll < 77) {
    if (editing) return "key Enter";
    Lines values;
    const int64_t n = 1 + draw(chance(0.7) ? 3 : 30);
    for (int64_t i = 0; i < n; ++i) {
      const std::string v = replaced(utf8(trimmed(text_of(value_for(item())))), " ", "");
      values.push_back(v.empty() ? "0" : v);
    }
    return "clip " + joined(values, " ");
  }
  if (roll < 80) return editing ? "key Enter" : "key Ctrl+V";
  if (roll < 84) {
    static const char* const kFilters[] = {"",   "钢筋", "b",  "B",      "ｂ", "配筋",
                                           "是", "300",  "zz", "混凝土", "",   "M"};
    return std::string("filter ") + any_of(kFilters);
  }
  if (roll < 86) return chance(0.5) ? "toggle changed" : "toggle refused";
  if (roll < 88) return "reset";
  if (roll < 90) return chance(0.6) ? "defaults yes" : "defaults cancel";
  if (roll < 91) return "copy";
  if (roll < 93) return "calculate";
  if (roll < 96) return "save " + file_in(folder_, std::string(1, "abc"[draw(3)]) + ".zks");
  // The steps that may ask about changes, at times with an answer given.
  if (model_->changed() && pending_answer_.empty() && chance(0.5)) {
    switch (draw(3)) {
      case 0:
        return "answer yes " + file_in(folder_, "a.zks");
      case 1:
        return "answer no";
      default:
        return "answer cancel";
    }
  }
  if (roll < 98) return "open " + file_name();
  if (roll < 99) return "new";
  return "close";
}

// ---- Running a step --------------------------------------------------------------------------

void Session::forget_form() {
  recorder_.reset();
  model_.reset();
  twin_.reset();
  serial_ = 0;
}

void Session::attach() {
  FormWork* work = host_->form();
  if (work && work->serial() == serial_) return;
  if (!work && !model_) return;
  forget_form();
  if (!work) return;
  serial_ = work->serial();
  // The model starts from what the form shows as it opens: its values,
  // marks and folding; the layout's rows from the form's grid.
  clsGridCell& cell = work->cell();
  platform::GridControl& grid = work->view().grid_control();
  std::vector<bool> events;
  std::vector<Text> checks;
  std::vector<int32_t> lists, captions;
  cell.GetEventRow(events);
  cell.GetCheckSign(checks);
  cell.GetListRes(lists);
  cell.GetResID(captions);
  std::vector<ModelRow> rows;
  ModelState state;
  cell.GetCurrentText(state.values);
  state.bold.assign(state.values.size(), false);
  state.hidden.assign(state.values.size(), false);
  state.unfolded.assign(static_cast<std::size_t>(grid.Rows()), true);
  // Rows without a default of their own keep the text they hold when the
  // defaults are loaded: seen on a grid of the same layout in memory.
  platform::headless::HeadlessForm probe_view;
  grid::FormSession probe(host_->platform(), probe_view.grid, probe_view.title, probe_view.panel,
                          probe_view.form);
  probe.build(layout_id(work->program().layout, clsCharacter(host_->platform())));
  probe.cell().LetCurrentText(std::vector<Text>(state.values.size(), u"\x01"));
  probe.cell().LoadDefaultEnter(false);
  std::vector<Text> probed;
  probe.cell().GetCurrentText(probed);
  for (const grid::RowFacts& facts : grid::row_facts(cell)) {
    ModelRow row;
    row.facts = facts;
    const auto r = static_cast<std::size_t>(facts.row);
    row.event = r < events.size() && events[r];
    row.check = r < checks.size() ? checks[r] : Text();
    row.list = r < lists.size() ? lists[r] : 0;
    row.caption_id = r < captions.size() ? captions[r] : 0;
    const bool picture = facts.kind == grid::kKindHeading || facts.kind == grid::kKindGroup;
    // The layout's folding, as a grid just built shows it.
    row.starts_folded = picture && probe_view.grid.ImageKey(facts.row, 1) == u"+";
    if (picture) state.unfolded[r] = grid.ImageKey(facts.row, 1) != u"+";
    if (facts.item >= 0) {
      const auto i = static_cast<std::size_t>(facts.item);
      state.bold[i] = grid.FontBold(facts.row, kValueCol);
      state.hidden[i] = facts.hidden;
      row.keeps_text = i < probed.size() && probed[i] == u"\x01";
    }
    rows.push_back(std::move(row));
  }
  model_ = std::make_unique<FormModel>(host_->platform(), work->program(), std::move(rows),
                                       std::move(state));
  model_->enter_row(cell.lCurrentRow());
  recorder_ = std::make_unique<Recorder>(*host_, *work, *model_);
  // Each form opened is compared from its start (one that ended the
  // comparison of the form before is not carried on).
  if (compare_hosts_) start_twin(*work);
}

std::string Session::consume_answer(bool question) {
  const std::string answer = pending_answer_;
  pending_answer_.clear();
  if (!question) return {};
  // Unanswered, a question of Save, Discard and Cancel is cancelled.
  return answer.empty() ? "cancel" : answer;
}

std::string Session::events_of_step() { return joined(recorder_->log(), ", "); }

std::optional<Finding> Session::step(const std::string& line) {
  attach();
  Before before;
  if (FormWork* work = form()) {
    before.form = true;
    before.editing = work->view().editing();
    before.focus_in_grid = host_->focus_in_grid();
    before.changed = model_->changed();
    before.current_row = work->view().grid_control().ActiveCell().row;
    if (before.editing && before.focus_in_grid) {
      before.editor_undoes = host_->editor_undoes();
      before.editor_redoes = host_->editor_redoes();
    }
    // The form's window active again after a box closed, as the system
    // makes it.
    host_->activate_form();
  }
  // Ctrl+V is the form's paste wherever the focus is, but in a text box: the
  // filter box pastes into itself, a cell's editor too unless the clipboard
  // holds a column.
  bool form_paste = false;
  if (before.form && line == "key Ctrl+V") {
    const bool column = contains(utf8(trimmed(host_->clipboard())), "\n");
    form_paste = !host_->focus_in_text_box() || (before.focus_in_grid && column);
  }
  if (form_paste) model_->paste_begins();
  printed_.clear();
  expected_boxes_ = 0;
  expect_question_ = false;
  saved_file_.clear();
  copied_ = false;
  if (model_) model_->take_refusals();
  bool ran = true;
  try {
    host_->run(text_of(line), printed_);
  } catch (const StepError& e) {
    ran = false;  // a step the user could not take changes nothing
    ++skipped_;
    // A click past the cells where the grid fills its view: the headless
    // grid has no view to fill.
    if (contains(e.what(), "no empty area")) twin_.reset();
  }
  FormWork* work = form();
  if (form_paste && model_) model_->paste_ends();
  if (work) host_->activate_form();
  if (!before.form) {
    attach();
    return std::nullopt;
  }
  if (recorder_ && recorder_->finding) return recorder_->finding;
  if (ran) {
    take_form_actions(line, before);
  } else if (contains(printed_, "message: ")) {
    pending_answer_.clear();  // a step not taken to its end still answered its box
  }
  if (!work) {
    forget_form();  // the form closed: its model, recorder and twin go with it
    return std::nullopt;
  }
  // The filter is what its box and toggles say (the user's typing).
  model_->filter(host_->filter_text(), host_->changed_only(), host_->refused_only());
  if (std::optional<Finding> finding = check()) {
    // The events of the step, for whoever looks into it.
    finding->detail += "\n  events: " + events_of_step();
    return finding;
  }
  if (environment("ZELKORA_MONKEY_TRACE")) {
    // Each step with its events, on the error stream.
    const platform::CellRef active = work->view().grid_control().ActiveCell();
    std::fprintf(stderr, "%s: %s\n%s  active %d,%d\n%s", line.c_str(), events_of_step().c_str(),
                 printed_.c_str(), active.row, active.col, host_->trace().c_str());
  }
  // Typing undone or redone in an editor: the headless editor keeps no
  // history of its own.
  const bool undo = line == "undo" || line == "key Ctrl+Z";
  const bool redo = line == "redo" || line == "key Ctrl+Y";
  if ((undo && before.editor_undoes) || (redo && before.editor_redoes)) twin_.reset();
  if (!twin_) recorder_->log().clear();
  return step_twin(line, ran);
}

void Session::start_twin(FormWork& form) {
  // The system's files and settings, as the desktop form has them.
  twin_ = std::make_unique<HeadlessScriptRunner>(
      form.program(), twin_out_,
      std::make_shared<platform::Platform>(*platform::Platform::environment_default()));
  twin_->set_clipboard(host_->clipboard());
  // An answer given before the form came up is the next box's on both.
  if (!pending_answer_.empty()) twin_->run(text_of("answer " + pending_answer_));
  twin_log_ = std::make_unique<platform::headless::RecordingEvents>(twin_->form()->work().events());
  twin_->form()->work().record_events(twin_log_.get());
  recorder_->log().clear();
}

// The headless form takes the step too; both print the same, raise the same
// events and show the same state.
std::optional<Finding> Session::step_twin(const std::string& line, bool ran) {
  if (!twin_ || !twin_->form()) return std::nullopt;
  twin_out_.str({});
  bool twin_ran = true;
  try {
    twin_->run(text_of(line));
  } catch (const std::exception& e) {
    twin_ran = false;
    // A step of the desktop script alone (a step or key the headless runner
    // lacks, a click beyond the grid's cells) ends the comparison.
    const std::string why = e.what();
    if (starts_with(why, "unknown") || (starts_with(why, "the grid has no cell") && ran)) {
      twin_.reset();
      return std::nullopt;
    }
  }
  if (!twin_->form()) {
    twin_.reset();
    return std::nullopt;
  }
  const auto seen = [](const std::string& printed, std::vector<std::string>& log, FormWork& work,
                       bool took) {
    Lines lines = split_lines(printed, '\n');
    if (!took) lines.push_back("(not taken)");
    lines.insert(lines.end(), log.begin(), log.end());
    log.clear();
    for (const Text& state : form_state(work)) lines.push_back(utf8(state));
    return lines;
  };
  const Lines desktop = seen(printed_, recorder_->log(), *form(), ran);
  const Lines headless = seen(twin_out_.str(), twin_log_->lines, twin_->form()->work(), twin_ran);
  ++compared_;
  const std::size_t count = std::max(desktop.size(), headless.size());
  const auto at_or_empty = [](const Lines& lines, std::size_t i) {
    return i < lines.size() ? lines[i] : std::string();
  };
  std::size_t at = 0;
  while (at < count && at_or_empty(desktop, at) == at_or_empty(headless, at)) ++at;
  if (at == count) return std::nullopt;
  return Finding{0, "both hosts alike",
                 "desktop \"" + left(text_of(at_or_empty(desktop, at)), 160) + "\", headless \"" +
                     left(text_of(at_or_empty(headless, at)), 160) + "\""};
}

void Session::take_form_actions(const std::string& line, const Before& before) {
  const std::string verb = verb_of(line);
  const std::string rest = rest_of(line);
  const int32_t refusals = model_ ? model_->peek_refusals() : 0;
  if (verb == "answer") {
    pending_answer_ = rest;
    return;
  }
  // The first box of a step takes the answer given before it: a refusal's
  // box, when the step's leave was refused (closing with a value refused).
  int boxes = 0;
  for (std::size_t at = 0; (at = printed_.find("message: ", at)) != std::string::npos; ++at) {
    ++boxes;
  }
  if (refusals > 0 && boxes > 0) pending_answer_.clear();
  const auto ask = [&](bool changed) -> std::string {
    expect_question_ = changed;
    if (!changed) {
      if (boxes > 0) pending_answer_.clear();
      return "no";
    }
    ++expected_boxes_;
    const std::string answer = consume_answer(true);
    // Yes with no file for a project never saved: the file chooser closed
    // unanswered cancels what asked.
    const bool yes = starts_with(answer, "yes");
    const bool no_file =
        yes && model_->file().empty() && (answer == "yes" || contains(printed_, "file dialog: "));
    // Yes whose save is refused (the value being typed): nothing saved,
    // nothing replaced.
    const bool refused = yes && refusals > 0;
    return no_file || refused ? "cancel" : answer;
  };
  // A save the answer yes makes: to the project's file, else the one given.
  const auto save_on_yes = [&](const std::string& answer) {
    saved_to(model_->file().empty() ? rest_of(answer) : utf8(model_->file()));
  };
  if (boxes > 0 && verb != "new" && verb != "open" && verb != "close" && verb != "defaults") {
    pending_answer_.clear();
  }
  if ((verb == "undo" || line == "key Ctrl+Z") && before.focus_in_grid && !before.editor_undoes &&
      refusals == 0) {
    model_->undo();
  } else if ((verb == "redo" || line == "key Ctrl+Y") && before.focus_in_grid &&
             !before.editor_redoes && refusals == 0) {
    model_->redo();
  } else if (verb == "defaults") {
    // The cell is left first: a refused value, and nothing is asked.
    pending_answer_.clear();
    if (refusals == 0) ++expected_boxes_;
    if (refusals == 0 && rest == "yes") model_->defaults();
  } else if (verb == "reset" && refusals == 0) {
    model_->record_pending();
    model_->reset_row(before.current_row);
  } else if (line == "key F8" && refusals == 0) {
    model_->next_refused(before.current_row);
  } else if ((verb == "new" || verb == "open") && refusals > 0) {
    // The value being typed refused: nothing asked, nothing replaced.
    expect_question_ = false;
  } else if (verb == "new") {
    model_->record_pending();  // the value being typed, left first
    const std::string answer = ask(model_->changed());
    if (starts_with(answer, "yes")) save_on_yes(answer);
    if (answer != "cancel") model_->new_project();
  } else if (verb == "open") {
    model_->record_pending();
    const bool changed = model_->changed();
    const std::string answer = ask(changed);
    if (starts_with(answer, "yes")) save_on_yes(answer);
    if (answer != "cancel") {
      const auto known = files_.find(rest);
      if (known != files_.end()) {
        model_->opened(text_of(rest), known->second);
      } else {
        ++expected_boxes_;  // a file no project of this form was saved to
        if (!changed) pending_answer_.clear();
      }
    }
  } else if (verb == "save" && refusals == 0) {
    saved_to(rest);
    saved_file_ = rest;
  } else if (verb == "calculate" && !form()->program().calculates) {
    ++expected_boxes_;
  } else if (verb == "close" && refusals == 0) {
    model_->record_pending();
    const std::string answer = ask(model_->changed());
    if (starts_with(answer, "yes")) save_on_yes(answer);
  } else if (verb == "copy") {
    copied_ = true;
  }
}

// ---- The rules ---------------------------------------------------------------------------------

std::optional<Finding> Session::check() {
  FormWork& work = *form();
  const FormModel& model = *model_;
  const auto fail = [](std::string rule, std::string detail) {
    return std::optional<Finding>(Finding{0, std::move(rule), std::move(detail)});
  };
  // Boxes: one per refusal, and the questions and warnings the step asks.
  const int32_t refusals = model_->take_refusals();
  const Lines lines = split_lines(printed_, '\n');
  int32_t refusal_boxes = 0, questions = 0, boxes = 0;
  for (const std::string& l : lines) {
    if (!starts_with(l, "message: ")) continue;
    ++boxes;
    const std::string title = l.substr(9, l.find(" | ") - std::min<std::size_t>(l.find(" | "), 9));
    const Text box_title = text_of(title);
    if (std::find(std::begin(kRefusalTitles), std::end(kRefusalTitles), box_title) !=
        std::end(kRefusalTitles)) {
      ++refusal_boxes;
    }
    if (contains(l, utf8(kQuestion))) ++questions;
  }
  const std::string all = joined(lines, " / ");
  if (refusal_boxes != refusals) {
    return fail("one message per refusal", std::to_string(refusals) + " refusals, " +
                                               std::to_string(refusal_boxes) + " boxes: " + all);
  }
  if ((questions > 0) != expect_question_) {
    return fail("a project asks before it is replaced or closed iff it changed",
                "asked " + std::to_string(questions) +
                    " times; changed: " + std::to_string(expect_question_));
  }
  if (boxes != refusals + expected_boxes_) {
    return fail("no box but the ones the step asks",
                std::to_string(boxes) + " boxes, " + std::to_string(refusals + expected_boxes_) +
                    " expected: " + all);
  }
  // Values, what the cells show, marks, rows shown.
  std::vector<Text> values;
  work.cell().GetCurrentText(values);
  platform::GridControl& grid = work.view().grid_control();
  const ModelState& state = model.state();
  for (const ModelRow& row : model.rows()) {
    const int32_t r = row.facts.row;
    const bool shown = host_->row_shown(r);
    if (shown != model.row_shown(r)) {
      const Text value =
          row.facts.item >= 0 ? state.values[static_cast<std::size_t>(row.facts.item)] : Text();
      return fail("the rows shown are those the folding, the rules and the filter say",
                  row_name(work, r) + " is " + (shown ? "shown" : "not shown") + " (value \"" +
                      left(value, 40) + "\", default \"" + left(row.facts.default_value, 40) +
                      "\")");
    }
    if (row.facts.item < 0) continue;
    const auto i = static_cast<std::size_t>(row.facts.item);
    if (values[i] != state.values[i]) {
      return fail("the item holds the value the rules give it",
                  row_name(work, r) + " holds \"" + left(values[i], 80) + "\", the model \"" +
                      left(state.values[i], 80) + "\"");
    }
    const Text shown_text = host_->shown_value(r);
    if (shown_text != values[i]) {
      return fail("a cell shows its item's value", row_name(work, r) + " shows \"" +
                                                       left(shown_text, 80) + "\", holds \"" +
                                                       left(values[i], 80) + "\"");
    }
    if (grid.FontBold(r, kValueCol) != state.bold[i]) {
      return fail("bold marks the values the rules mark",
                  row_name(work, r) + " is " + (state.bold[i] ? "not " : "") + "bold (value \"" +
                      left(values[i], 40) + "\", default \"" + left(row.facts.default_value, 40) +
                      "\", the model's \"" + left(model.default_of(i), 40) + "\")");
    }
  }
  if (work.changed() != model.changed() || host_->marked_changed() != model.changed()) {
    return fail("the changed mark iff the values differ from those saved or opened",
                "marked " + std::to_string(work.changed()) + " (the window " +
                    std::to_string(host_->marked_changed()) + "), changed " +
                    std::to_string(model.changed()));
  }
  if (host_->undo_enabled() != model.can_undo() || host_->redo_enabled() != model.can_redo()) {
    return fail("undo and redo are there when there is a step",
                "undo " + std::to_string(host_->undo_enabled()) + " (model " +
                    std::to_string(model.can_undo()) + "), redo " +
                    std::to_string(host_->redo_enabled()) + " (model " +
                    std::to_string(model.can_redo()) + ")");
  }
  const std::vector<int32_t> model_refused = model.refused_rows();
  const Text count = model_refused.empty() ? Text()
                                           : from_utf8(std::to_string(model_refused.size())) +
                                                 u" 个数据有错误（F8 转到）";
  // Counted as values are taken: not while one is typed.
  if (!work.view().editing() && host_->refused_count() != count) {
    Lines rows;
    for (const int32_t r : model_refused) rows.push_back(row_name(work, r));
    return fail("the count of refused values",
                "\"" + utf8(host_->refused_count()) + "\", the model " +
                    std::to_string(model_refused.size()) + ": " + joined(rows, ", "));
  }
  if (!saved_file_.empty()) {
    if (auto finding = check_saved(saved_file_)) return finding;
  }
  if (copied_) {
    if (auto finding = check_copied()) return finding;
  }
  return std::nullopt;
}

// A saved file opens with the values saved and saves again to the same bytes
// (a foundation program's load cases read and written back as they came).
std::optional<Finding> Session::check_saved(const std::string& file) {
  const auto it = files_.find(file);
  if (it == files_.end()) return std::nullopt;
  platform::headless::HeadlessForm view;
  grid::FormSession session(host_->platform(), view.grid, view.title, view.panel, view.form);
  const Text layout(form()->program().layout);
  session.build(layout_id(layout, clsCharacter(host_->platform())));
  std::vector<Text> numbers, files;
  std::vector<Array2<Text>> loads;
  bool foundation = false;
  session.cell().form_groups(
      {[&](clsLoadSave& ls) { return !foundation || ls.SaveDataFoundation(numbers, files, loads); },
       [&](clsLoadSave& ls, UseBinRecord& record) {
         if (record.Member != datafile::kFootingNumbersName) return true;
         foundation = ls.bLoadDataFoundation(numbers, files, loads, record);
         return foundation;
       }});
  Text add;
  const auto fail = [&](const std::string& detail) {
    return std::optional<Finding>(
        Finding{0, "a saved project opens as saved and saves to the same bytes", detail});
  };
  if (!session.cell().bLoadOrSaveData(u"Load", text_of(file), layout, {}, add)) {
    return fail(file + " does not open");
  }
  std::vector<Text> values;
  session.cell().GetCurrentText(values);
  if (values != it->second) return fail(file + " opens with other values");
  const std::string again = file + ".again";
  if (!session.cell().bLoadOrSaveData(u"Save", text_of(again), layout, {}, add)) {
    return fail(file + " does not save again");
  }
  const std::optional<std::string> a = read_bytes(file), b = read_bytes(again);
  if (!a || !b || *a != *b) return fail(file + " saved again differs");
  return std::nullopt;
}

// Each copied row is "caption<TAB>value" with the row's value.
std::optional<Finding> Session::check_copied() {
  const std::size_t at = printed_.find("copied: ");
  if (at == std::string::npos) return std::nullopt;
  const std::string copied = printed_.substr(at + 8, printed_.find('\n', at) - at - 8);
  for (const std::string& line : split_lines(copied, '|')) {
    const std::size_t tab = line.find('\t');
    const std::string caption = line.substr(0, tab);
    const std::string value = tab == std::string::npos ? std::string() : line.substr(tab + 1);
    for (const ModelRow& row : model_->rows()) {
      if (row.facts.item < 0 || utf8(trim(row.facts.caption)) != caption) continue;
      const Text& expected = model_->state().values[static_cast<std::size_t>(row.facts.item)];
      if (text_of(value) != expected) {
        return Finding{
            0, "a copied row holds its value",
            "\"" + caption + "\" copied as \"" + value + "\", holds \"" + utf8(expected) + "\""};
      }
      break;
    }
  }
  return std::nullopt;
}

// ---- Runs, the watchdog and the shortest script ------------------------------------------------

// Fresh files for a run: the projects it saves gone, the damaged, empty and
// foreign ones made anew, and settings of its own.
void prepare_folder(const std::string& folder, const Program& foreign_program,
                    const std::shared_ptr<const platform::Platform>& platform) {
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(path_of(folder), error)) {
    const std::string name = name_of(entry.path().filename());
    // The run's own record stays: its steps and its findings.
    if (entry.is_regular_file() && !starts_with(name, "steps") && !starts_with(name, "finding-")) {
      fs::remove(entry.path(), error);
    }
  }
  write_bytes(file_in(folder, "damaged.zks"), "ZKDATA\x01\x02\xff\xfe garbage ");
  write_bytes(file_in(folder, "empty.zks"), "");
  platform::headless::HeadlessForm view;
  grid::FormSession foreign(platform, view.grid, view.title, view.panel, view.form);
  const Text layout(foreign_program.layout);
  foreign.build(layout_id(layout, clsCharacter(platform)));
  Text add;
  foreign.cell().bLoadOrSaveData(u"Save", text_of(file_in(folder, "foreign.zks")), layout, {}, add);
}

// Ends the program when a step takes longer than a user would wait.
class Watchdog {
 public:
  explicit Watchdog(std::string steps_file) : steps_file_(std::move(steps_file)) {
    thread_ = std::thread([this] { watch(); });
  }
  ~Watchdog() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      done_ = true;
    }
    wake_.notify_all();
    thread_.join();
  }
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;
  void step_begins() { last_ = Clock::now().time_since_epoch().count(); }
  // No step runs: nothing to watch.
  void pause() { last_ = 0; }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr auto kLongest = std::chrono::seconds(60);
  void watch() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!wake_.wait_for(lock, std::chrono::seconds(1), [this] { return done_; })) {
      const Clock::time_point began{Clock::duration(last_.load())};
      if (last_.load() != 0 && Clock::now() - began > kLongest) {
        std::fprintf(stderr, "monkey: a step hangs; the steps so far are in %s\n",
                     steps_file_.c_str());
        std::fflush(stderr);
        std::_Exit(3);
      }
    }
  }
  std::string steps_file_;
  std::atomic<Clock::rep> last_{0};
  std::mutex mutex_;
  std::condition_variable wake_;
  bool done_ = false;
  std::thread thread_;
};

struct Play {
  const MonkeyHostFactory* host = nullptr;
  std::string folder;
  uint64_t seed = 1;
  int form_kind = 0;
  bool compare_hosts = false;
  Watchdog* watchdog = nullptr;
  std::ofstream* steps_file = nullptr;
};

// Steps the form did not take, and steps compared on both hosts.
struct Tally {
  int64_t skipped = 0;
  int64_t compared = 0;
};

using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// Runs the lines, or draws `draw` steps when it is above 0 (and adds them to
// `lines`), in a program started afresh; the first finding.
std::optional<Finding> play(const Play& p, Lines& lines, int64_t draw,
                            const Clock::time_point* start = nullptr, double seconds = 0,
                            Tally* tally = nullptr) {
  // Before the program starts: it reads its settings as it starts.
  prepare_folder(p.folder, programs()[p.form_kind == 2 ? 0 : 2],
                 platform::Platform::environment_default());
  Session session(*p.host, p.folder, p.seed, p.form_kind, p.compare_hosts);
  const int64_t count = draw > 0 ? draw : static_cast<int64_t>(lines.size());
  for (int64_t i = 0; i < count; ++i) {
    if (start && seconds > 0 && seconds_since(*start) > seconds) break;
    const std::string line = draw > 0 ? session.next_step() : lines[static_cast<std::size_t>(i)];
    if (draw > 0) lines.push_back(line);
    if (p.steps_file) {
      *p.steps_file << line << '\n';
      p.steps_file->flush();
    }
    if (p.watchdog) p.watchdog->step_begins();
    std::optional<Finding> finding = session.step(line);
    if (tally) *tally = {session.skipped(), session.compared()};
    if (finding) {
      finding->step = i + 1;
      return finding;
    }
  }
  return std::nullopt;
}

// The shortest script found, by leaving out ever smaller parts, that breaks
// the same rule; at most `seconds` spent.
Lines shortest(const Play& p, Lines lines, const std::string& rule, double seconds) {
  const Clock::time_point start = Clock::now();
  const auto breaks = [&](Lines candidate) {
    const std::optional<Finding> finding = play(p, candidate, 0);
    return finding && finding->rule == rule;
  };
  std::size_t parts = 2;
  while (lines.size() >= 2 && seconds_since(start) < seconds) {
    const std::size_t chunk = (lines.size() + parts - 1) / parts;
    bool shorter = false;
    for (std::size_t from = 0; from < lines.size() && seconds_since(start) < seconds;
         from += chunk) {
      Lines candidate(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(from));
      if (from + chunk < lines.size()) {
        candidate.insert(candidate.end(), lines.begin() + static_cast<std::ptrdiff_t>(from + chunk),
                         lines.end());
      }
      if (breaks(candidate)) {
        lines = candidate;
        parts = std::max<std::size_t>(parts - 1, 2);
        shorter = true;
        break;
      }
    }
    if (!shorter) {
      if (parts >= lines.size()) break;
      parts = std::min(lines.size(), parts * 2);
    }
  }
  return lines;
}

int report(const Play& p, const Finding& finding, const Lines& lines, std::ostream& out,
           double shorten_seconds = 300) {
  const auto step = static_cast<std::size_t>(finding.step);
  out << "monkey: seed " << p.seed << ", step " << finding.step << ": "
      << (step >= 1 && step <= lines.size() ? lines[step - 1] : std::string()) << "\n"
      << "broken: " << finding.rule << "\n  " << finding.detail << "\n";
  out.flush();
  const Lines script =
      shortest(p, Lines(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(step)),
               finding.rule, shorten_seconds);
  const std::string file = file_in(p.folder, "finding-" + std::to_string(p.seed) + ".txt");
  std::string kept;
  for (const std::string& line : script) kept += replaced(line, p.folder, "$DIR") + "\n";
  write_bytes(file, kept);
  out << "script (" << script.size() << " of " << finding.step << " steps; zelkora-desk --script "
      << file << " --check" << (p.compare_hosts ? " --host both" : "") << "):\n";
  for (const std::string& line : script) out << "  " << replaced(line, p.folder, "$DIR") << "\n";
  out.flush();
  return 1;
}

// The settings file of a run, put back as it was when the run ends.
class RunSettings {
 public:
  explicit RunSettings(const std::string& folder) : before_(environment("ZELKORA_SETTINGS")) {
    set_environment("ZELKORA_SETTINGS", file_in(folder, "settings.ini"));
  }
  ~RunSettings() { set_environment("ZELKORA_SETTINGS", before_); }
  RunSettings(const RunSettings&) = delete;
  RunSettings& operator=(const RunSettings&) = delete;

 private:
  std::optional<std::string> before_;
};

}  // namespace

int run_monkey(const MonkeyRun& run, const MonkeyHostFactory& host, std::ostream& out,
               std::ostream& err) {
  TemporaryFolder temporary;
  const std::string folder = run.folder.empty() ? temporary.path() : run.folder;
  std::error_code error;
  if (folder.empty() || (!fs::create_directories(path_of(folder), error) && error)) {
    err << "monkey: cannot make " << (folder.empty() ? "a temporary folder" : folder) << "\n";
    return 2;
  }
  const RunSettings settings(folder);
  const std::string steps_name = file_in(folder, "steps.txt");
  std::ofstream steps_file(path_of(steps_name), std::ios::binary | std::ios::trunc);
  if (!steps_file) {
    err << "monkey: cannot write " << steps_name << "\n";
    return 2;
  }
  Watchdog watchdog(steps_name);
  const Clock::time_point start = Clock::now();
  int64_t steps = 0;
  Tally total;
  int seeds = 0;
  int findings = 0;
  for (uint64_t seed = run.seed;; ++seed) {
    Play p{
        &host,     folder,     seed, static_cast<int>(seed % std::size(kForms)), run.compare_hosts,
        &watchdog, &steps_file};
    steps_file.close();
    steps_file.open(path_of(steps_name), std::ios::binary | std::ios::trunc);
    Lines lines;
    Tally tally;
    const std::optional<Finding> finding = play(p, lines, run.steps, &start, run.seconds, &tally);
    steps += static_cast<int64_t>(lines.size());
    total.skipped += tally.skipped;
    total.compared += tally.compared;
    ++seeds;
    if (finding && run.keep_going) {
      // Its steps kept whole, to be cut down later with --check.
      temporary.keep();
      report(p, *finding, lines, out, 0);
      ++findings;
    } else if (finding) {
      temporary.keep();
      watchdog.pause();
      p.watchdog = nullptr;
      p.steps_file = nullptr;
      return report(p, *finding, lines, out);
    }
    if (run.seconds <= 0 || seconds_since(start) > run.seconds) break;
  }
  const double elapsed = seconds_since(start);
  char rates[64];
  std::snprintf(rates, sizeof rates, "%.1f s, %.1f steps/s", elapsed,
                static_cast<double>(steps) / std::max(elapsed, 0.001));
  out << "monkey: " << steps << " steps (" << total.skipped << " the form did not take, "
      << total.compared << " compared on both hosts), " << seeds << " seeds from " << run.seed
      << " (" << rates << "): "
      << (findings == 0 ? std::string("every rule held") : std::to_string(findings) + " findings")
      << "\n";
  return findings == 0 ? 0 : 1;
}

int check_script(const std::vector<std::string>& script, const MonkeyHostFactory& host,
                 std::ostream& out, std::ostream& err, bool compare_hosts) {
  TemporaryFolder folder;
  if (folder.path().empty()) {
    err << "monkey: no temporary folder\n";
    return 2;
  }
  // Settings of the script's own while it runs.
  const RunSettings settings(folder.path());
  Lines lines;
  for (const std::string& line : script) {
    const std::string step = utf8(trimmed(text_of(line)));
    if (!step.empty() && step[0] != '#') lines.push_back(replaced(step, "$DIR", folder.path()));
  }
  // The form the script opens first decides the foreign file's program.
  int kind = 0;
  for (int k = 0; k < static_cast<int>(std::size(kForms)); ++k) {
    if (std::find(lines.begin(), lines.end(), std::string("menu ") + kForms[k].entry) !=
        lines.end()) {
      kind = k;
      break;
    }
  }
  const Play p{&host, folder.path(), 0, kind, compare_hosts, nullptr, nullptr};
  if (const std::optional<Finding> finding = play(p, lines, 0)) {
    const auto step = static_cast<std::size_t>(finding->step);
    out << "step " << finding->step << ": "
        << (step >= 1 && step <= lines.size() ? lines[step - 1] : std::string())
        << "\nbroken: " << finding->rule << "\n  " << finding->detail << "\n";
    return 1;
  }
  out << "every rule held (" << lines.size() << " steps)\n";
  return 0;
}

}  // namespace zelkora::desk
