// The random tester of the desktop program.
#include "desk/monkey.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QPointer>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <map>
#include <mutex>
#include <optional>
#include <random>
#include <sstream>
#include <thread>

#include "desk/calc_form.h"
#include "desk/desk_app.h"
#include "desk/main_window.h"
#include "desk/script.h"
#include "program/form_model.h"
#include "program/form_state.h"
#include "program/headless_script.h"
#include "zelkora/datafile/foundation_data.h"
#include "zelkora/grid/form_session.h"
#include "zelkora/grid/layout.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/headless/recording_events.h"

namespace zelkora::desk {

namespace {

using platform::qt::QtGridControl;
using platform::qt::to_qstring;
using platform::qt::to_text;

constexpr int32_t kValueCol = 3;
constexpr int32_t kCaptionCol = 2;
const QString kQuestion = QStringLiteral("项目已修改，是否保存？");
// The titles of the boxes that explain a refused value.
const QStringList kRefusalTitles = {QStringLiteral("输入错误！"), QStringLiteral("无效输入！")};

struct Finding {
  int64_t step = 0;  // from 1
  QString rule;
  QString detail;
};

// The forms the tester opens: the menu's group and the program's row.
struct MenuPath {
  const char* group;
  const char* entry;
};
constexpr MenuPath kForms[] = {
    {"基本构件", "梁配筋"}, {"地基基础", "独立基础"}, {"常用工具", "荷载组合"}};

// What the form should show of a row, for a finding.
QString row_name(CalcForm& form, int32_t row) {
  return QStringLiteral("row %1 (%2)")
      .arg(row)
      .arg(to_qstring(trim(form.grid().Text(row, kCaptionCol))));
}

// ---- The events between the grid and the form, given to the model too ------------------

class Recorder : public platform::GridEvents {
 public:
  Recorder(CalcForm& form, FormModel& model)
      : form_(&form), model_(model), log_(form.work().events()) {
    form.work().record_events(this);
  }
  ~Recorder() override {
    if (form_) form_->work().record_events(nullptr);
  }
  std::optional<Finding> finding;
  // The events as the form's handlers got them, written down.
  std::vector<std::string>& log() { return log_.lines; }

  void EnterRow() override {
    const platform::CellRef at = grid().ActiveCell();
    model_.enter_row(at.row);
    to().EnterRow();
  }
  void BeforeEdit(int32_t row, int32_t col, bool& cancel) override {
    to().BeforeEdit(row, col, cancel);
  }
  void CellChanging() override {
    const platform::CellRef at = grid().ActiveCell();
    model_.cell_changing(at.row, at.col, grid().Text(at.row, at.col), grid().editing());
    to().CellChanging();
  }
  void LeaveCell(int32_t row, int32_t col, bool& cancel) override {
    const platform::CellRef at = grid().ActiveCell();
    if ((at != platform::CellRef{row, col}) && !finding) {
      finding = Finding{0, QStringLiteral("the cell left is the active one"),
                        QStringLiteral("left %1,%2 while %3,%4 is active")
                            .arg(row)
                            .arg(col)
                            .arg(at.row)
                            .arg(at.col)};
    }
    sync_filter();
    const bool refused = model_.leave_cell(row, col);
    to().LeaveCell(row, col, cancel);
    if (cancel != refused && !finding) {
      finding = Finding{0, QStringLiteral("a leave is refused exactly when the check refuses"),
                        QStringLiteral("%1: the form %2 the leave")
                            .arg(row_name(*form_, row))
                            .arg(cancel ? QStringLiteral("refused") : QStringLiteral("took"))};
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
  QtGridControl& grid() { return form_->grid(); }
  platform::GridEvents& to() { return log_; }
  // The filter as its box and toggles say, taken by the form as they change:
  // a cell the new filter hides may be left within the step.
  void sync_filter() {
    model_.filter(to_text(form_->filter_box().text()), form_->changed_only().isChecked(),
                  form_->refused_only().isChecked());
  }

  QPointer<CalcForm> form_;
  FormModel& model_;
  platform::headless::RecordingEvents log_;
};

// ---- One run of the program ---------------------------------------------------------------

void prepare_folder(const QString& folder, const Program& foreign_program,
                    const std::shared_ptr<const platform::Platform>& platform);

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
  Session(const QString& folder, uint64_t seed, int form_kind, bool compare_hosts)
      : folder_(folder),
        rng_(seed),
        out_(&printed_),
        runner_(app_, out_),
        form_kind_(form_kind),
        compare_hosts_(compare_hosts) {
    QApplication::clipboard()->clear();  // what an earlier run copied is not this one's
  }
  ~Session() {
    recorder_.reset();
    if (CalcForm* form = app_.current_form()) form->ask_before_closing(false);
    app_.close_forms();
  }

  // The step the user takes next, drawn at random.
  QString next_step();
  // Runs one step and checks the form after it.
  std::optional<Finding> step(const QString& line);

 private:
  int64_t draw(int64_t below) {
    return std::uniform_int_distribution<int64_t>(0, std::max<int64_t>(below, 1) - 1)(rng_);
  }
  bool chance(double p) { return std::uniform_real_distribution<double>(0, 1)(rng_) < p; }
  QString value_for(int32_t item);
  QString file_name();

  void attach();
  void take_form_actions(const QString& line, const Before& before, int32_t boxes_before);
  std::optional<Finding> check(const QString& line);
  std::optional<Finding> check_saved(const QString& file);
  std::optional<Finding> check_copied();
  // The answer the next box takes, as the script's runner gives it.
  QString consume_answer(bool question);

  QString folder_;
  std::mt19937_64 rng_;
  DeskApp app_;
  QString printed_;
  QTextStream out_;
  ScriptRunner runner_;
  QPointer<CalcForm> form_;
  std::unique_ptr<FormModel> model_;
  std::unique_ptr<Recorder> recorder_;
  int form_kind_;
  bool compare_hosts_;
  QString pending_answer_;  // "yes FILE", "no", "cancel" or empty
  // Boxes expected in the step beyond the refusals, and questions.
  int32_t expected_boxes_ = 0;
  bool expect_question_ = false;
  QString saved_file_;
  bool copied_ = false;
  // The projects saved in this run and their values.
  std::map<QString, std::vector<Text>> files_;
  int64_t skipped_ = 0;
  // The same steps on the headless form, compared with the desktop one step
  // by step while it can take them (until the form closes, or a step only
  // the desktop script has).
  std::ostringstream twin_out_;
  std::unique_ptr<HeadlessScriptRunner> twin_;
  std::unique_ptr<platform::headless::RecordingEvents> twin_log_;
  int64_t compared_ = 0;
  void start_twin(CalcForm& form);
  std::optional<Finding> step_twin(const QString& line, bool ran);

 public:
  int64_t skipped() const { return skipped_; }
  int64_t compared() const { return compared_; }

 private:
  void saved_to(const QString& file) {
    model_->saved_to(to_text(file));
    files_[file] = model_->state().values;
  }
};

// ---- Drawing steps -------------------------------------------------------------------------

QString Session::file_name() {
  static const char* const kFiles[] = {"a.zks",     "b.zks",       "c.zks",      "damaged.zks",
                                       "empty.zks", "foreign.zks", "missing.zks"};
  const int64_t at = draw(chance(0.7) ? 3 : 7);
  return QDir(folder_).filePath(QString::fromLatin1(kFiles[at]));
}

QString Session::value_for(int32_t item) {
  const ModelRow* row = nullptr;
  for (const ModelRow& r : model_->rows()) {
    if (r.facts.item == item) row = &r;
  }
  const Text current = model_->state().values[static_cast<std::size_t>(item)];
  switch (draw(12)) {
    case 0:
    case 1:
    case 2: {  // a number near the value
      bool ok = false;
      const double now = to_qstring(current).toDouble(&ok);
      const double base = ok ? now : 100;
      const double factor = std::uniform_real_distribution<double>(0.1, 3.0)(rng_);
      return QString::number(std::round(base * factor * 10) / 10);
    }
    case 3:
    case 4: {  // an item of its list
      const std::vector<Text> list =
          clsCharacter(app_.platform()).ComboBoxList(row ? row->list : 0);
      if (!list.empty()) return to_qstring(list[static_cast<std::size_t>(draw(list.size()))]);
      return to_qstring(row ? row->facts.default_value : Text());
    }
    case 5: {
      static const char* const kBad[] = {"abc", "-1",     "0",    "1e400", "NaN", "--",
                                         "-0",  "1e-300", "0x10", "1,2,3", ",",   "∞"};
      return QString::fromUtf8(kBad[draw(std::size(kBad))]);
    }
    case 6:
      return {};
    case 7:
      return QString(static_cast<int>(draw(3) == 0 ? 1030 : 1 + draw(60)), QLatin1Char('9'));
    case 8: {
      static const char* const kChinese[] = {"混凝土", "梁", "Φ20", "４Φ２０", "是", "否", "C30"};
      return QString::fromUtf8(kChinese[draw(std::size(kChinese))]);
    }
    case 9: {
      static const char* const kJoined[] = {"2,16", "2, 16",  "3,20,1", "16,",
                                            ",2",   "14, 25", "2 ,  18"};
      return QString::fromUtf8(kJoined[draw(std::size(kJoined))]);
    }
    case 10:
      return QStringLiteral(" %1 ").arg(draw(1000));
    default:
      return to_qstring(row ? row->facts.default_value : Text());
  }
}

QString Session::next_step() {
  if (!form_) {
    const MenuPath& path = kForms[form_kind_];
    // The group is unfolded once; then its entry opens the form.
    const int32_t row = app_.main_window().row_of(to_text(QString::fromUtf8(path.entry)));
    return QStringLiteral("menu ") +
           QString::fromUtf8(row > 0 && !app_.main_window().grid().isRowHidden(row) ? path.entry
                                                                                    : path.group);
  }
  const std::vector<ModelRow>& rows = model_->rows();
  const auto rows_count = static_cast<int64_t>(rows.size());
  const auto items = static_cast<int64_t>(model_->state().values.size());
  const bool editing = form_->grid().editing();
  const QWidget* focus = QApplication::focusWidget();
  const bool in_grid = focus && (focus == &form_->grid() || form_->grid().isAncestorOf(focus));
  const int64_t roll = draw(100);
  if (roll < 22) {
    const int64_t item = draw(items);
    return QStringLiteral("edit %1 %2").arg(item).arg(value_for(static_cast<int32_t>(item)));
  }
  if (roll < 30) {
    const int64_t item = draw(items);
    const ModelRow* row = nullptr;
    for (const ModelRow& r : rows) {
      if (r.facts.item == item) row = &r;
    }
    const std::vector<Text> list = clsCharacter(app_.platform()).ComboBoxList(row ? row->list : 0);
    if (list.empty()) return QStringLiteral("key Tab");
    return QStringLiteral("pick %1 %2")
        .arg(item)
        .arg(to_qstring(list[static_cast<std::size_t>(draw(list.size()))]));
  }
  if (roll < 40) return QStringLiteral("click %1 %2").arg(draw(rows_count + 3)).arg(draw(5));
  if (roll < 58) {
    static const char* const kKeys[] = {"Tab", "Shift+Tab", "Enter",  "Escape", "Space",
                                        "Up",  "Down",      "F2",     "F4",     "Alt+Down",
                                        "F8",  "Ctrl+F",    "Ctrl+C", "Tab",    "Enter"};
    return QStringLiteral("key ") + QString::fromLatin1(kKeys[draw(std::size(kKeys))]);
  }
  if (roll < 66) return QStringLiteral("type ") + value_for(static_cast<int32_t>(draw(items)));
  if (roll < 72) {
    if (editing || !in_grid) return QStringLiteral("key Escape");
    return chance(0.6) ? QStringLiteral("undo") : QStringLiteral("redo");
  }
  if (roll < 77) {
    if (editing) return QStringLiteral("key Enter");
    QStringList values;
    const int64_t n = 1 + draw(chance(0.7) ? 3 : 30);
    for (int64_t i = 0; i < n; ++i) {
      QString v = value_for(static_cast<int32_t>(draw(items))).trimmed();
      v.replace(QLatin1Char(' '), QString());
      values << (v.isEmpty() ? QStringLiteral("0") : v);
    }
    return QStringLiteral("clip ") + values.join(QLatin1Char(' '));
  }
  if (roll < 80) return editing ? QStringLiteral("key Enter") : QStringLiteral("key Ctrl+V");
  if (roll < 84) {
    static const char* const kFilters[] = {"",   "钢筋", "b",  "B",      "ｂ", "配筋",
                                           "是", "300",  "zz", "混凝土", "",   "M"};
    return QStringLiteral("filter ") + QString::fromUtf8(kFilters[draw(std::size(kFilters))]);
  }
  if (roll < 86)
    return chance(0.5) ? QStringLiteral("toggle changed") : QStringLiteral("toggle refused");
  if (roll < 88) return QStringLiteral("reset");
  if (roll < 90)
    return chance(0.6) ? QStringLiteral("defaults yes") : QStringLiteral("defaults cancel");
  if (roll < 91) return QStringLiteral("copy");
  if (roll < 93) return QStringLiteral("calculate");
  if (roll < 96)
    return QStringLiteral("save ") +
           QDir(folder_).filePath(QStringLiteral("abc").mid(static_cast<int>(draw(3)), 1) +
                                  QStringLiteral(".zks"));
  // The steps that may ask about changes, at times with an answer given.
  if (model_->changed() && pending_answer_.isEmpty() && chance(0.5)) {
    switch (draw(3)) {
      case 0:
        return QStringLiteral("answer yes ") + QDir(folder_).filePath(QStringLiteral("a.zks"));
      case 1:
        return QStringLiteral("answer no");
      default:
        return QStringLiteral("answer cancel");
    }
  }
  if (roll < 98) return QStringLiteral("open ") + file_name();
  if (roll < 99) return QStringLiteral("new");
  return QStringLiteral("close");
}

// ---- Running a step --------------------------------------------------------------------------

void Session::attach() {
  CalcForm* form = app_.current_form();
  if (form == form_ && (form || !model_)) return;
  recorder_.reset();
  model_.reset();
  form_ = form;
  if (!form) return;
  // The model starts from what the form shows as it opens: its values,
  // marks and folding; the layout's rows from the form's grid.
  clsGridCell& cell = form->cell();
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
  state.unfolded.assign(static_cast<std::size_t>(form->grid().Rows()), true);
  // Rows without a default of their own keep the text they hold when the
  // defaults are loaded: seen on a grid of the same layout in memory.
  platform::headless::HeadlessForm probe_view;
  grid::FormSession probe(app_.platform(), probe_view.grid, probe_view.title, probe_view.panel,
                          probe_view.form);
  probe.build(layout_id(form->program().layout, clsCharacter(app_.platform())));
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
    if (picture) state.unfolded[r] = form->grid().ImageKey(facts.row, 1) != u"+";
    if (facts.item >= 0) {
      const auto i = static_cast<std::size_t>(facts.item);
      state.bold[i] = form->grid().FontBold(facts.row, kValueCol);
      state.hidden[i] = facts.hidden;
      row.keeps_text = i < probed.size() && probed[i] == u"\x01";
    }
    rows.push_back(std::move(row));
  }
  model_ = std::make_unique<FormModel>(app_.platform(), form->program(), std::move(rows),
                                       std::move(state));
  model_->enter_row(cell.lCurrentRow());
  recorder_ = std::make_unique<Recorder>(*form, *model_);
  // Each form opened is compared from its start (one that ended the
  // comparison of the form before is not carried on).
  if (compare_hosts_) start_twin(*form);
}

QString Session::consume_answer(bool question) {
  const QString answer = pending_answer_;
  pending_answer_.clear();
  if (!question) return {};
  // Unanswered, a question of Save, Discard and Cancel is cancelled.
  return answer.isEmpty() ? QStringLiteral("cancel") : answer;
}

std::optional<Finding> Session::step(const QString& line) {
  attach();
  Before before;
  before.form = form_ != nullptr;
  if (form_) {
    before.editing = form_->grid().editing();
    const QWidget* focus = QApplication::focusWidget();
    before.focus_in_grid = focus && (focus == &form_->grid() || form_->grid().isAncestorOf(focus));
    before.changed = model_->changed();
    before.current_row = form_->grid().ActiveCell().row;
    auto* combo = qobject_cast<const QComboBox*>(focus);
    const auto* line = combo ? combo->lineEdit() : qobject_cast<const QLineEdit*>(focus);
    if (line && before.editing && before.focus_in_grid) {
      before.editor_undoes = line->isUndoAvailable();
      before.editor_redoes = line->isRedoAvailable();
    }
  }
  // The form's window active again after a box closed, as the system makes
  // it (offscreen, nothing does).
  if (form_ && !form_->isActiveWindow()) {
    form_->activateWindow();
    QApplication::processEvents();
  }
  // Ctrl+V is the form's paste wherever the focus is, but in a text box: the
  // filter box pastes into itself, a cell's editor too unless the clipboard
  // holds a column.
  bool form_paste = false;
  if (form_ && line == QLatin1String("key Ctrl+V")) {
    QWidget* focus = form_->focusWidget();
    const auto* combo = qobject_cast<QComboBox*>(focus);
    const bool text_box = focus && focus->isVisible() &&
                          (qobject_cast<QLineEdit*>(focus) || (combo && combo->isEditable()));
    const bool column = QApplication::clipboard()->text().trimmed().contains(QLatin1Char('\n'));
    form_paste = !text_box || (before.focus_in_grid && column);
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
    runner_.run(line);
  } catch (const StepError& e) {
    ran = false;  // a step the user could not take changes nothing
    ++skipped_;
    // A click past the cells where the grid fills its view: the headless
    // grid has no view to fill.
    if (QString::fromUtf8(e.what()).contains(QLatin1String("no empty area"))) twin_.reset();
  }
  if (form_paste && model_) model_->paste_ends();
  // A box closed: the system makes the form's window active again at once.
  if (form_ && !form_->isActiveWindow()) {
    form_->activateWindow();
    QApplication::processEvents();
  }
  if (!before.form) {
    attach();
    return std::nullopt;
  }
  if (recorder_ && recorder_->finding) return recorder_->finding;
  if (ran) {
    take_form_actions(line, before, 0);
  } else if (printed_.contains(QLatin1String("message: "))) {
    pending_answer_.clear();  // a step not taken to its end still answered its box
  }
  if (form_) {
    // The filter is what its box and toggles say (the user's typing).
    model_->filter(to_text(form_->filter_box().text()), form_->changed_only().isChecked(),
                   form_->refused_only().isChecked());
  }
  if (!form_) {
    // The form closed: its model, recorder and twin go with it.
    recorder_.reset();
    model_.reset();
    twin_.reset();
    return std::nullopt;
  }
  if (std::optional<Finding> finding = check(line)) {
    // The events of the step, for whoever looks into it.
    QStringList events;
    for (const std::string& event : recorder_->log()) events << QString::fromStdString(event);
    finding->detail += QStringLiteral("\n  events: ") + events.join(QStringLiteral(", "));
    return finding;
  }
  if (qEnvironmentVariableIsSet("ZELKORA_MONKEY_TRACE")) {
    // Each step with its events, on the error stream.
    QStringList events;
    for (const std::string& event : recorder_->log()) events << QString::fromStdString(event);
    std::fprintf(stderr, "%s: %s\n%s", line.toUtf8().constData(),
                 events.join(QStringLiteral(", ")).toUtf8().constData(),
                 printed_.toUtf8().constData());
    const platform::CellRef active = form_->grid().ActiveCell();
    std::fprintf(stderr, "  active %d,%d, the view's current %d,%d\n", active.row, active.col,
                 form_->grid().currentRow(), form_->grid().currentColumn());
    // Where the keys go next, and what of a text box's text they replace.
    if (QWidget* focus = QApplication::focusWidget()) {
      auto* combo = qobject_cast<QComboBox*>(focus);
      QLineEdit* line = combo ? combo->lineEdit() : qobject_cast<QLineEdit*>(focus);
      std::fprintf(stderr, "  focus: %s %s%s\n", focus->metaObject()->className(),
                   focus->objectName().toUtf8().constData(),
                   line ? (" selected \"" + line->selectedText() + "\"").toUtf8().constData() : "");
    }
  }
  // Typing undone or redone in an editor: the headless editor keeps no
  // history of its own.
  const bool undo = line == QLatin1String("undo") || line == QLatin1String("key Ctrl+Z");
  const bool redo = line == QLatin1String("redo") || line == QLatin1String("key Ctrl+Y");
  if ((undo && before.editor_undoes) || (redo && before.editor_redoes)) twin_.reset();
  if (!twin_) recorder_->log().clear();
  return step_twin(line, ran);
}

void Session::start_twin(CalcForm& form) {
  // The system's files and settings, as the desktop form has them.
  twin_ = std::make_unique<HeadlessScriptRunner>(
      form.program(), twin_out_,
      std::make_shared<platform::Platform>(*platform::Platform::environment_default()));
  twin_->set_clipboard(to_text(QApplication::clipboard()->text()));
  // An answer given before the form came up is the next box's on both.
  if (!pending_answer_.isEmpty()) twin_->run(to_text(QStringLiteral("answer ") + pending_answer_));
  twin_log_ = std::make_unique<platform::headless::RecordingEvents>(twin_->form()->work().events());
  twin_->form()->work().record_events(twin_log_.get());
  recorder_->log().clear();
}

// The headless form takes the step too; both print the same, raise the same
// events and show the same state.
std::optional<Finding> Session::step_twin(const QString& line, bool ran) {
  if (!twin_ || !twin_->form()) return std::nullopt;
  twin_out_.str({});
  bool twin_ran = true;
  try {
    twin_->run(to_text(line));
  } catch (const std::exception& e) {
    twin_ran = false;
    // A step of the desktop script alone (a step or key the headless runner
    // lacks, a click beyond the grid's cells) ends the comparison.
    const QString why = QString::fromUtf8(e.what());
    if (why.startsWith(QLatin1String("unknown")) ||
        (why.startsWith(QLatin1String("the grid has no cell")) && ran)) {
      twin_.reset();
      return std::nullopt;
    }
  }
  if (!twin_->form()) {
    twin_.reset();
    return std::nullopt;
  }
  const auto seen = [](const QString& printed, std::vector<std::string>& log, FormWork& work,
                       bool took) {
    QStringList lines = printed.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (!took) lines << QStringLiteral("(not taken)");
    for (const std::string& event : log) lines << QString::fromStdString(event);
    log.clear();
    for (const Text& state : form_state(work)) lines << to_qstring(state);
    return lines;
  };
  const QStringList desktop = seen(printed_, recorder_->log(), form_->work(), ran);
  const QStringList headless = seen(QString::fromStdString(twin_out_.str()), twin_log_->lines,
                                    twin_->form()->work(), twin_ran);
  ++compared_;
  int at = 0;
  while (at < std::max(desktop.size(), headless.size()) && desktop.value(at) == headless.value(at))
    ++at;
  if (at == std::max(desktop.size(), headless.size())) return std::nullopt;
  return Finding{0, QStringLiteral("both hosts alike"),
                 QStringLiteral("desktop \"%1\", headless \"%2\"")
                     .arg(desktop.value(at).left(160), headless.value(at).left(160))};
}

void Session::take_form_actions(const QString& line, const Before& before, int32_t) {
  const QString verb = line.section(QLatin1Char(' '), 0, 0);
  const QString rest = line.section(QLatin1Char(' '), 1).trimmed();
  const int32_t refusals = model_ ? model_->peek_refusals() : 0;
  if (verb == QLatin1String("answer")) {
    pending_answer_ = rest;
    return;
  }
  // The first box of a step takes the answer given before it: a refusal's
  // box, when the step's leave was refused (closing with a value refused).
  const int boxes = static_cast<int>(printed_.count(QStringLiteral("message: ")));
  if (refusals > 0 && boxes > 0) pending_answer_.clear();
  const auto ask = [&](bool changed) -> QString {
    expect_question_ = changed;
    if (!changed) {
      if (boxes > 0) pending_answer_.clear();
      return QStringLiteral("no");
    }
    ++expected_boxes_;
    const QString answer = consume_answer(true);
    // Yes with no file for a project never saved: the file chooser closed
    // unanswered cancels what asked.
    const bool no_file =
        answer.startsWith(QLatin1String("yes")) && model_->file().empty() &&
        (answer == QLatin1String("yes") || printed_.contains(QLatin1String("file dialog: ")));
    // Yes whose save is refused (the value being typed): nothing saved,
    // nothing replaced.
    const bool refused = answer.startsWith(QLatin1String("yes")) && refusals > 0;
    return no_file || refused ? QStringLiteral("cancel") : answer;
  };
  // A save the answer yes makes: to the project's file, else the one given.
  const auto save_on_yes = [&](const QString& answer) {
    const QString file =
        model_->file().empty() ? answer.section(QLatin1Char(' '), 1) : to_qstring(model_->file());
    saved_to(file);
  };
  if (boxes > 0 && verb != QLatin1String("new") && verb != QLatin1String("open") &&
      verb != QLatin1String("close") && verb != QLatin1String("defaults")) {
    pending_answer_.clear();
  }
  if ((verb == QLatin1String("undo") || line == QLatin1String("key Ctrl+Z")) &&
      before.focus_in_grid && !before.editor_undoes && refusals == 0) {
    model_->undo();
  } else if ((verb == QLatin1String("redo") || line == QLatin1String("key Ctrl+Y")) &&
             before.focus_in_grid && !before.editor_redoes && refusals == 0) {
    model_->redo();
  } else if (verb == QLatin1String("defaults")) {
    // The cell is left first: a refused value, and nothing is asked.
    pending_answer_.clear();
    if (refusals == 0) ++expected_boxes_;
    if (refusals == 0 && rest == QLatin1String("yes")) model_->defaults();
  } else if (verb == QLatin1String("reset") && refusals == 0) {
    model_->record_pending();
    model_->reset_row(before.current_row);
  } else if (line == QLatin1String("key F8") && refusals == 0) {
    model_->next_refused(before.current_row);
  } else if ((verb == QLatin1String("new") || verb == QLatin1String("open")) && refusals > 0) {
    // The value being typed refused: nothing asked, nothing replaced.
    expect_question_ = false;
  } else if (verb == QLatin1String("new")) {
    model_->record_pending();  // the value being typed, left first
    const QString answer = ask(model_->changed());
    if (answer.startsWith(QLatin1String("yes"))) save_on_yes(answer);
    if (answer != QLatin1String("cancel")) model_->new_project();
  } else if (verb == QLatin1String("open")) {
    model_->record_pending();
    const bool changed = model_->changed();
    const QString answer = ask(changed);
    if (answer.startsWith(QLatin1String("yes"))) save_on_yes(answer);
    if (answer != QLatin1String("cancel")) {
      const auto known = files_.find(rest);
      if (known != files_.end()) {
        model_->opened(to_text(rest), known->second);
      } else {
        ++expected_boxes_;  // a file no project of this form was saved to
        if (!changed) pending_answer_.clear();
      }
    }
  } else if (verb == QLatin1String("save") && refusals == 0) {
    saved_to(rest);
    saved_file_ = rest;
  } else if (verb == QLatin1String("calculate") && !form_->program().calculates) {
    ++expected_boxes_;
  } else if (verb == QLatin1String("close") && refusals == 0) {
    model_->record_pending();
    const QString answer = ask(model_->changed());
    if (answer.startsWith(QLatin1String("yes"))) save_on_yes(answer);
  } else if (verb == QLatin1String("copy")) {
    copied_ = true;
  }
}

// ---- The rules ---------------------------------------------------------------------------------

std::optional<Finding> Session::check(const QString& line) {
  CalcForm& form = *form_;
  QtGridControl& grid = form.grid();
  const FormModel& model = *model_;
  const auto fail = [](const QString& rule, const QString& detail) {
    return std::optional<Finding>(Finding{0, rule, detail});
  };
  // Boxes: one per refusal, and the questions and warnings the step asks.
  const int32_t refusals = model_->take_refusals();
  const QStringList lines = printed_.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  int32_t refusal_boxes = 0, questions = 0, boxes = 0;
  for (const QString& l : lines) {
    if (!l.startsWith(QLatin1String("message: "))) continue;
    ++boxes;
    const QString title = l.mid(9).section(QStringLiteral(" | "), 0, 0);
    if (kRefusalTitles.contains(title)) ++refusal_boxes;
    if (l.contains(kQuestion)) ++questions;
  }
  if (refusal_boxes != refusals) {
    return fail(QStringLiteral("one message per refusal"),
                QStringLiteral("%1 refusals, %2 boxes: %3")
                    .arg(refusals)
                    .arg(refusal_boxes)
                    .arg(lines.join(QLatin1String(" / "))));
  }
  if ((questions > 0) != expect_question_) {
    return fail(QStringLiteral("a project asks before it is replaced or closed iff it changed"),
                QStringLiteral("asked %1 times; changed: %2").arg(questions).arg(expect_question_));
  }
  if (boxes != refusals + expected_boxes_) {
    return fail(QStringLiteral("no box but the ones the step asks"),
                QStringLiteral("%1 boxes, %2 expected: %3")
                    .arg(boxes)
                    .arg(refusals + expected_boxes_)
                    .arg(lines.join(QLatin1String(" / "))));
  }
  // Values, what the cells show, marks, rows shown.
  std::vector<Text> values;
  form.cell().GetCurrentText(values);
  const ModelState& state = model.state();
  for (const ModelRow& row : model.rows()) {
    const int32_t r = row.facts.row;
    const bool shown = !grid.isRowHidden(r) && grid.rowHeight(r) > 0;
    if (shown != model.row_shown(r)) {
      const Text value =
          row.facts.item >= 0 ? state.values[static_cast<std::size_t>(row.facts.item)] : Text();
      return fail(
          QStringLiteral("the rows shown are those the folding, the rules and the filter say"),
          QStringLiteral("%1 is %2 (value \"%3\", default \"%4\")")
              .arg(row_name(form, r))
              .arg(shown ? "shown" : "not shown")
              .arg(to_qstring(value).left(40), to_qstring(row.facts.default_value).left(40)));
    }
    if (row.facts.item < 0) continue;
    const auto i = static_cast<std::size_t>(row.facts.item);
    if (values[i] != state.values[i]) {
      return fail(QStringLiteral("the item holds the value the rules give it"),
                  QStringLiteral("%1 holds \"%2\", the model \"%3\"")
                      .arg(row_name(form, r))
                      .arg(to_qstring(values[i]).left(80))
                      .arg(to_qstring(state.values[i]).left(80)));
    }
    QString shown_text = to_qstring(grid.Text(r, kValueCol));
    if (QTableWidgetItem* cell = grid.item(r, kValueCol)) shown_text = cell->text();
    if (QWidget* editor = grid.indexWidget(grid.model()->index(r, kValueCol))) {
      if (auto* combo = qobject_cast<QComboBox*>(editor)) shown_text = combo->currentText();
      if (auto* edit = qobject_cast<QLineEdit*>(editor)) shown_text = edit->text();
    }
    if (shown_text != to_qstring(values[i])) {
      return fail(QStringLiteral("a cell shows its item's value"),
                  QStringLiteral("%1 shows \"%2\", holds \"%3\"")
                      .arg(row_name(form, r))
                      .arg(shown_text.left(80))
                      .arg(to_qstring(values[i]).left(80)));
    }
    if (grid.FontBold(r, kValueCol) != state.bold[i]) {
      return fail(
          QStringLiteral("bold marks the values the rules mark"),
          QStringLiteral("%1 is %2bold (value \"%3\", default \"%4\", the model's \"%5\")")
              .arg(row_name(form, r))
              .arg(state.bold[i] ? "not " : "")
              .arg(to_qstring(values[i]).left(40), to_qstring(row.facts.default_value).left(40),
                   to_qstring(model.default_of(i)).left(40)));
    }
  }
  if (form.changed() != model.changed() || form.isWindowModified() != model.changed()) {
    return fail(QStringLiteral("the changed mark iff the values differ from those saved or opened"),
                QStringLiteral("marked %1, changed %2").arg(form.changed()).arg(model.changed()));
  }
  if (form.action(CalcForm::Action::kUndo)->isEnabled() != model.can_undo() ||
      form.action(CalcForm::Action::kRedo)->isEnabled() != model.can_redo()) {
    return fail(QStringLiteral("undo and redo are there when there is a step"),
                QStringLiteral("undo %1 (model %2), redo %3 (model %4)")
                    .arg(form.action(CalcForm::Action::kUndo)->isEnabled())
                    .arg(model.can_undo())
                    .arg(form.action(CalcForm::Action::kRedo)->isEnabled())
                    .arg(model.can_redo()));
  }
  const std::vector<int32_t> model_refused = model.refused_rows();
  const auto refused = static_cast<int>(model_refused.size());
  const QString count =
      refused == 0 ? QString() : QStringLiteral("%1 个数据有错误（F8 转到）").arg(refused);
  // Counted as values are taken: not while one is typed.
  if (!grid.editing() && form.refused_count().text() != count) {
    QStringList rows;
    for (const int32_t r : model_refused) rows << row_name(form, r);
    return fail(QStringLiteral("the count of refused values"),
                QStringLiteral("\"%1\", the model %2: %3")
                    .arg(form.refused_count().text())
                    .arg(refused)
                    .arg(rows.join(QLatin1String(", "))));
  }
  if (!saved_file_.isEmpty()) {
    if (auto finding = check_saved(saved_file_)) return finding;
  }
  if (copied_) {
    if (auto finding = check_copied()) return finding;
  }
  static_cast<void>(line);
  return std::nullopt;
}

// A saved file opens with the values saved and saves again to the same bytes
// (a foundation program's load cases read and written back as they came).
std::optional<Finding> Session::check_saved(const QString& file) {
  const auto it = files_.find(file);
  if (it == files_.end()) return std::nullopt;
  platform::headless::HeadlessForm view;
  grid::FormSession session(app_.platform(), view.grid, view.title, view.panel, view.form);
  const Text layout(form_->program().layout);
  session.build(layout_id(layout, clsCharacter(app_.platform())));
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
  const auto fail = [&](const QString& detail) {
    return std::optional<Finding>(Finding{
        0, QStringLiteral("a saved project opens as saved and saves to the same bytes"), detail});
  };
  if (!session.cell().bLoadOrSaveData(u"Load", to_text(file), layout, {}, add)) {
    return fail(QStringLiteral("%1 does not open").arg(file));
  }
  std::vector<Text> values;
  session.cell().GetCurrentText(values);
  if (values != it->second) return fail(QStringLiteral("%1 opens with other values").arg(file));
  const QString again = file + QStringLiteral(".again");
  if (!session.cell().bLoadOrSaveData(u"Save", to_text(again), layout, {}, add)) {
    return fail(QStringLiteral("%1 does not save again").arg(file));
  }
  QFile a(file), b(again);
  if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly) || a.readAll() != b.readAll()) {
    return fail(QStringLiteral("%1 saved again differs").arg(file));
  }
  return std::nullopt;
}

// Each copied row is "caption<TAB>value" with the row's value.
std::optional<Finding> Session::check_copied() {
  const QString lines =
      printed_.section(QStringLiteral("copied: "), 1).section(QLatin1Char('\n'), 0, 0);
  for (const QString& line : lines.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
    const QString caption = line.section(QLatin1Char('\t'), 0, 0);
    const QString value = line.section(QLatin1Char('\t'), 1);
    for (const ModelRow& row : model_->rows()) {
      if (row.facts.item < 0 || to_qstring(trim(row.facts.caption)) != caption) continue;
      const Text& expected = model_->state().values[static_cast<std::size_t>(row.facts.item)];
      if (to_text(value) != expected) {
        return Finding{0, QStringLiteral("a copied row holds its value"),
                       QStringLiteral("\"%1\" copied as \"%2\", holds \"%3\"")
                           .arg(caption, value, to_qstring(expected))};
      }
      break;
    }
  }
  return std::nullopt;
}

// ---- Runs, the watchdog and the shortest script ------------------------------------------------

// Fresh files for a run: the projects it saves gone, the damaged, empty and
// foreign ones made anew, and settings of its own.
void prepare_folder(const QString& folder, const Program& foreign_program,
                    const std::shared_ptr<const platform::Platform>& platform) {
  QDir dir(folder);
  for (const QString& name : dir.entryList(QDir::Files)) {
    // The run's own record stays: its steps and its findings.
    if (!name.startsWith(QLatin1String("steps")) && !name.startsWith(QLatin1String("finding-"))) {
      dir.remove(name);
    }
  }
  QFile damaged(dir.filePath(QStringLiteral("damaged.zks")));
  if (damaged.open(QIODevice::WriteOnly)) damaged.write("ZKDATA\x01\x02\xff\xfe garbage \x00\x00");
  QFile empty(dir.filePath(QStringLiteral("empty.zks")));
  if (empty.open(QIODevice::WriteOnly)) empty.close();
  platform::headless::HeadlessForm view;
  grid::FormSession foreign(platform, view.grid, view.title, view.panel, view.form);
  const Text layout(foreign_program.layout);
  foreign.build(layout_id(layout, clsCharacter(platform)));
  Text add;
  foreign.cell().bLoadOrSaveData(u"Save", to_text(dir.filePath(QStringLiteral("foreign.zks"))),
                                 layout, {}, add);
}

// Ends the program when a step takes longer than a user would wait.
class Watchdog {
 public:
  explicit Watchdog(QString steps_file) : steps_file_(std::move(steps_file)) {
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
                     steps_file_.toLocal8Bit().constData());
        std::_Exit(3);
      }
    }
  }
  QString steps_file_;
  std::atomic<Clock::rep> last_{0};
  std::mutex mutex_;
  std::condition_variable wake_;
  bool done_ = false;
  std::thread thread_;
};

struct Play {
  QString folder;
  uint64_t seed = 1;
  int form_kind = 0;
  bool compare_hosts = false;
  Watchdog* watchdog = nullptr;
  QFile* steps_file = nullptr;
};

// Runs the lines, or draws `draw` steps when it is above 0 (and adds them to
// `lines`), in a program started afresh; the first finding.
// Steps the form did not take, and steps compared on both hosts.
struct Tally {
  int64_t skipped = 0;
  int64_t compared = 0;
};

std::optional<Finding> play(const Play& p, QStringList& lines, int64_t draw,
                            const QElapsedTimer* clock = nullptr, double seconds = 0,
                            Tally* tally = nullptr) {
  // Before the program starts: it reads its settings as it starts.
  prepare_folder(p.folder, programs()[p.form_kind == 2 ? 0 : 2],
                 platform::Platform::environment_default());
  Session session(p.folder, p.seed, p.form_kind, p.compare_hosts);
  const int64_t count = draw > 0 ? draw : lines.size();
  for (int64_t i = 0; i < count; ++i) {
    if (clock && seconds > 0 && clock->elapsed() > seconds * 1000) break;
    const QString line = draw > 0 ? session.next_step() : lines[static_cast<int>(i)];
    if (draw > 0) lines << line;
    if (p.steps_file) {
      p.steps_file->write(line.toUtf8() + "\n");
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
QStringList shortest(const Play& p, QStringList lines, const QString& rule, double seconds) {
  QElapsedTimer clock;
  clock.start();
  const auto breaks = [&](QStringList candidate) {
    const std::optional<Finding> finding = play(p, candidate, 0);
    return finding && finding->rule == rule;
  };
  int parts = 2;
  while (lines.size() >= 2 && clock.elapsed() < seconds * 1000) {
    const int chunk = (static_cast<int>(lines.size()) + parts - 1) / parts;
    bool shorter = false;
    for (int from = 0; from < lines.size() && clock.elapsed() < seconds * 1000; from += chunk) {
      QStringList candidate = lines.mid(0, from) + lines.mid(from + chunk);
      if (breaks(candidate)) {
        lines = candidate;
        parts = std::max(parts - 1, 2);
        shorter = true;
        break;
      }
    }
    if (!shorter) {
      if (parts >= lines.size()) break;
      parts = std::min(static_cast<int>(lines.size()), parts * 2);
    }
  }
  return lines;
}

int report(const Play& p, const Finding& finding, const QStringList& lines, QTextStream& out,
           double shorten_seconds = 300) {
  out << "monkey: seed " << p.seed << ", step " << finding.step << ": "
      << lines.value(static_cast<int>(finding.step) - 1) << "\n"
      << "broken: " << finding.rule << "\n  " << finding.detail << "\n";
  out.flush();
  const QStringList script =
      shortest(p, lines.mid(0, static_cast<int>(finding.step)), finding.rule, shorten_seconds);
  const QString file = QDir(p.folder).filePath(QStringLiteral("finding-%1.txt").arg(p.seed));
  QFile kept(file);
  if (kept.open(QIODevice::WriteOnly)) {
    kept.write(QStringList(script)
                   .replaceInStrings(p.folder, QStringLiteral("$DIR"))
                   .join(QLatin1Char('\n'))
                   .toUtf8() +
               "\n");
  }
  out << "script (" << script.size() << " of " << finding.step << " steps; zelkora-desk --script "
      << file << " --check" << (p.compare_hosts ? " --host both" : "") << "):\n";
  for (QString line : script) out << "  " << line.replace(p.folder, QStringLiteral("$DIR")) << "\n";
  out.flush();
  return 1;
}

}  // namespace

int run_monkey(const MonkeyRun& run, QTextStream& out, QTextStream& err) {
  if (run.host != QLatin1String("qt") && run.host != QLatin1String("both")) {
    err << "monkey: the host \"" << run.host << "\" is not part of this program (qt, both)\n";
    return 2;
  }
  QTemporaryDir temporary;
  const QString folder = run.folder.isEmpty() ? temporary.path() : run.folder;
  if (!QDir().mkpath(folder)) {
    err << "monkey: cannot make " << folder << "\n";
    return 2;
  }
  qputenv("ZELKORA_SETTINGS", QDir(folder).filePath(QStringLiteral("settings.ini")).toLocal8Bit());
  QFile steps_file(QDir(folder).filePath(QStringLiteral("steps.txt")));
  if (!steps_file.open(QIODevice::WriteOnly)) {
    err << "monkey: cannot write " << steps_file.fileName() << "\n";
    return 2;
  }
  Watchdog watchdog(steps_file.fileName());
  QElapsedTimer clock;
  clock.start();
  int64_t steps = 0;
  Tally total;
  int seeds = 0;
  int findings = 0;
  for (uint64_t seed = run.seed;; ++seed) {
    Play p{folder,
           seed,
           static_cast<int>(seed % std::size(kForms)),
           run.host == QLatin1String("both"),
           &watchdog,
           &steps_file};
    steps_file.resize(0);
    QStringList lines;
    Tally tally;
    const std::optional<Finding> finding = play(p, lines, run.steps, &clock, run.seconds, &tally);
    steps += lines.size();
    total.skipped += tally.skipped;
    total.compared += tally.compared;
    ++seeds;
    if (finding && run.keep_going) {
      // Its steps kept whole, to be cut down later with --check.
      temporary.setAutoRemove(false);
      report(p, *finding, lines, out, 0);
      ++findings;
    } else if (finding) {
      temporary.setAutoRemove(false);
      watchdog.pause();
      p.watchdog = nullptr;
      p.steps_file = nullptr;
      return report(p, *finding, lines, out);
    }
    if (run.seconds <= 0 || clock.elapsed() > run.seconds * 1000) break;
  }
  const double elapsed = static_cast<double>(clock.elapsed()) / 1000;
  out << "monkey: " << steps << " steps (" << total.skipped << " the form did not take, "
      << total.compared << " compared on both hosts), " << seeds << " seeds from " << run.seed
      << " (" << QString::number(elapsed, 'f', 1) << " s, "
      << QString::number(static_cast<double>(steps) / std::max(elapsed, 0.001), 'f', 1)
      << " steps/s): "
      << (findings == 0 ? QStringLiteral("every rule held")
                        : QStringLiteral("%1 findings").arg(findings))
      << "\n";
  return findings == 0 ? 0 : 1;
}

int check_script(const QStringList& script, QTextStream& out, QTextStream& err,
                 bool compare_hosts) {
  QTemporaryDir folder;
  if (!folder.isValid()) {
    err << "monkey: no temporary folder\n";
    return 2;
  }
  // Settings of the script's own while it runs.
  const QByteArray settings = qgetenv("ZELKORA_SETTINGS");
  const bool had_settings = qEnvironmentVariableIsSet("ZELKORA_SETTINGS");
  qputenv("ZELKORA_SETTINGS",
          QDir(folder.path()).filePath(QStringLiteral("settings.ini")).toLocal8Bit());
  struct Restore {
    QByteArray value;
    bool set;
    ~Restore() { set ? qputenv("ZELKORA_SETTINGS", value) : qunsetenv("ZELKORA_SETTINGS"); }
  } restore{settings, had_settings};
  QStringList lines;
  for (const QString& line : script) {
    if (!line.trimmed().isEmpty() && !line.trimmed().startsWith(QLatin1Char('#')))
      lines << line.trimmed();
  }
  // The form the script opens first decides the foreign file's program.
  int kind = 0;
  for (int k = 0; k < static_cast<int>(std::size(kForms)); ++k) {
    if (lines.contains(QStringLiteral("menu ") + QString::fromUtf8(kForms[k].entry))) {
      kind = k;
      break;
    }
  }
  const Play p{folder.path(), 0, kind, compare_hosts, nullptr, nullptr};
  lines.replaceInStrings(QStringLiteral("$DIR"), folder.path());
  if (const std::optional<Finding> finding = play(p, lines, 0)) {
    out << "step " << finding->step << ": " << lines.value(static_cast<int>(finding->step) - 1)
        << "\nbroken: " << finding->rule << "\n  " << finding->detail << "\n";
    return 1;
  }
  out << "every rule held (" << lines.size() << " steps)\n";
  return 0;
}

}  // namespace zelkora::desk
