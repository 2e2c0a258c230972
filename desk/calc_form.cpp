// A calculation form of the desktop program.
#include "desk/calc_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QResizeEvent>
#include <QSaveFile>
#include <QSplitter>
#include <QStatusBar>
#include <QTextDocument>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "desk/beam_design.h"
#include "desk/beam_report.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/error_numbers.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/row_facts.h"
#include "zelkora/typeset/markup.h"

namespace zelkora::desk {

namespace {

using platform::qt::to_qstring;
using platform::qt::to_text;

// Item 0 of every form is the project's name.
constexpr int32_t kProjectItem = 0;

const QString kProjectFilter = QStringLiteral("Zelkora 原始数据文件 (*.zks *.zel)");
const QString kReportFilter = QStringLiteral("计算书 (*.txt)");

// A file name the user gave without an extension gets the default one, so
// that the open dialog lists the file and the backup copy is made.
QString with_extension(const QString& file, TextView extension) {
  if (file.isEmpty() || !QFileInfo(file).suffix().isEmpty()) return file;
  return file + QLatin1Char('.') + to_qstring(extension);
}

int to_twips(int pixels, int dpi) { return dpi > 0 ? pixels * 1440 / dpi : pixels * 15; }

// The steel-grade symbols of the suite's own font (U+E000 to U+E003) as the
// letters that stand for them in plain text (HPB300 A, HRB335 B, HRB400 C,
// HRB500 D), for views and files without that font.
Text with_grade_letters(Text text) {
  for (char16_t& c : text) {
    if (c >= u'\uE000' && c <= u'\uE003') c = static_cast<char16_t>(u'A' + (c - u'\uE000'));
  }
  return text;
}

}  // namespace

// The form's grid events: the session's, and every change of a value marks
// the project changed.
class CalcForm::Events : public grid::FormSession {
 public:
  Events(CalcForm& form, std::shared_ptr<const platform::Platform> platform)
      : FormSession(std::move(platform), *form.grid_, *form.title_, *form.panel_, form),
        form_(form) {}
  void CellChanging() override {
    FormSession::CellChanging();
    form_.update_changed();
    form_.update_sketch();  // the section follows the typing
    // Escape gave the cell back its text: marks and notes follow it.
    if (!form_.grid().editing()) {
      form_.values_changed(false);
      form_.show_row_notes();
    }
  }
  void ComboClick() override {
    FormSession::ComboClick();
    form_.update_changed();
    form_.update_sketch();
    // The rows the pick made (not) apply leave (or join) the filtered view.
    if (form_.grid().filtered()) form_.apply_filter();
  }
  void EnterRow() override {
    FormSession::EnterRow();
    form_.show_row_notes();
  }
  void LeaveCell(int32_t row, int32_t col, bool& cancel) override {
    FormSession::LeaveCell(row, col, cancel);
    // A refused value is no step: the cell and the item are back at the
    // text the row had when it was entered. A pasted column is one step.
    form_.values_changed(!cancel && !form_.pasting_);
    if (cancel) form_.show_row_notes();
  }

 private:
  CalcForm& form_;
};

CalcForm::CalcForm(std::shared_ptr<const platform::Platform> platform, const Program& program,
                   QWidget* parent)
    : QMainWindow(parent), program_(program), platform_(platform), errors_(platform) {
  setAttribute(Qt::WA_DeleteOnClose);
  splitter_ = new QSplitter(Qt::Horizontal, this);
  auto* splitter = splitter_;
  auto* left = new QWidget(splitter);
  auto* column = new QVBoxLayout(left);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(build_filter_bar(left));
  panel_ = new platform::qt::QtPanel(left);
  column->addWidget(panel_, 1);
  panel_->installEventFilter(this);
  heading_ = new QLabel(to_qstring(program.menu_key), panel_);
  QFont heading_font = heading_->font();
  heading_font.setBold(true);
  heading_font.setPointSizeF(heading_font.pointSizeF() * 1.2);
  heading_->setFont(heading_font);
  heading_->move(8, 8);
  grid_ = new platform::qt::QtGridControl(panel_);
  title_ = new platform::qt::QtRichTextBox(panel_);
  splitter->addWidget(left);
  // Right of the values: the sketch of the section over the report, each
  // where the form has it.
  QWidget* side = nullptr;
  if (bDisplayPicture()) {
    side = side_ = new QSplitter(Qt::Vertical, splitter);
    sketch_view_ = new SectionView(side_);
    side_->addWidget(sketch_view_);
    side_->setCollapsible(0, false);
  }
  if (program.calculates) {
    report_ = new QTextBrowser(side_ ? static_cast<QWidget*>(side_) : splitter);
    report_->setPlaceholderText(QStringLiteral("计算书：单击“计算”"));
    if (side_) {
      side_->addWidget(report_);
      side_->setStretchFactor(0, 0);
      side_->setStretchFactor(1, 1);
      side_->setSizes({260, 460});
    } else {
      side = report_;
    }
  }
  if (side) {
    splitter->addWidget(side);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
  }
  setCentralWidget(splitter);

  session_ = std::make_unique<Events>(*this, platform);
  session_->check_values_on_leave(true);
  grid_->connect_events(session_.get());
  const clsCharacter chr(platform);
  session_->build(layout_id(program.layout, chr));
  grid_->value_column(grid::kValueCol);
  grid_->QTableWidget::setSelectionMode(QAbstractItemView::ExtendedSelection);
  history_ = std::make_unique<grid::ValueHistory>(session_->cell());
  refused_count_ = new QLabel(this);
  statusBar()->addPermanentWidget(refused_count_);
  build_actions();
  describe_values();
  update_refused();
  update_edit_actions();
  values_saved();
  update_sketch();
  // The user sets the caption column's width by its edge; it is kept with
  // the view.
  grid_->resizable_column(grid::kCaptionCol);
  resize(program.calculates ? 1000 : 560, 720);
  restore_view();
}

bool CalcForm::bDisplayPicture() {
  return equal_text(program_.layout, u"clsBeamSteel", Compare::Text);
}

CalcForm::~CalcForm() { grid_->connect_events(nullptr); }

clsGridCell& CalcForm::cell() { return session_->cell(); }

platform::GridEvents& CalcForm::grid_events() { return *session_; }

QAction* CalcForm::action(Action which) const {
  const auto at = static_cast<std::size_t>(which);
  return at < actions_.size() ? actions_[at] : nullptr;
}

void CalcForm::build_actions() {
  const struct {
    Action action;
    const char* text;
    QKeySequence keys;
  } kActions[] = {
      {Action::kNew, "新建", QKeySequence::New},
      {Action::kOpen, "打开…", QKeySequence::Open},
      {Action::kSave, "保存", QKeySequence::Save},
      {Action::kSaveAs, "另存为…", QKeySequence::SaveAs},
      {Action::kDefaults, "默认值", QKeySequence()},
      {Action::kCalculate, "计算", QKeySequence(Qt::Key_F9)},
      {Action::kSaveReport, "保存计算书…", QKeySequence()},
  };
  QToolBar* toolbar = addToolBar(QStringLiteral("工具栏"));
  toolbar->setObjectName(QStringLiteral("tools"));
  QMenu* file_menu = menuBar()->addMenu(QStringLiteral("文件"));
  QMenu* edit_menu = menuBar()->addMenu(QStringLiteral("编辑"));
  QMenu* calc_menu = menuBar()->addMenu(QStringLiteral("计算"));
  QMenu* help_menu = menuBar()->addMenu(QStringLiteral("帮助"));
  for (const auto& a : kActions) {
    auto* action = new QAction(QString::fromUtf8(a.text), this);
    if (!a.keys.isEmpty()) action->setShortcut(a.keys);
    actions_.push_back(action);
    toolbar->addAction(action);
    (a.action == Action::kCalculate || a.action == Action::kSaveReport ? calc_menu : file_menu)
        ->addAction(action);
  }
  connect(action(Action::kNew), &QAction::triggered, this, [this] {
    if (may_discard_changes()) new_project();
  });
  connect(action(Action::kOpen), &QAction::triggered, this, [this] {
    if (!may_discard_changes()) return;
    const QString file = chosen_file(false, kProjectFilter);
    if (!file.isEmpty()) open_file(file);
  });
  connect(action(Action::kSave), &QAction::triggered, this, [this] {
    const QString file =
        file_.isEmpty() ? with_extension(chosen_file(true, kProjectFilter), u"zks") : file_;
    if (!file.isEmpty()) save_file(file);
  });
  connect(action(Action::kSaveAs), &QAction::triggered, this, [this] {
    const QString file = with_extension(chosen_file(true, kProjectFilter), u"zks");
    if (!file.isEmpty()) save_file(file);
  });
  connect(action(Action::kDefaults), &QAction::triggered, this, [this] { load_defaults(); });
  connect(action(Action::kCalculate), &QAction::triggered, this, [this] { calculate(); });
  connect(action(Action::kSaveReport), &QAction::triggered, this, [this] {
    const QString file = with_extension(chosen_file(true, kReportFilter), u"txt");
    if (!file.isEmpty()) save_report(file);
  });
  action(Action::kSaveReport)->setEnabled(false);
  build_edit_actions(edit_menu, toolbar);

  QMenu* recent = new QMenu(QStringLiteral("最近的工程"), file_menu);
  recent->setObjectName(QStringLiteral("recent"));
  file_menu->insertMenu(action(Action::kDefaults), recent);
  file_menu->insertSeparator(action(Action::kDefaults));
  connect(recent, &QMenu::aboutToShow, this, [this, recent] { fill_recent_menu(recent); });
  fill_recent_menu(recent);

  auto* help = new QAction(QStringLiteral("帮助"), this);
  help->setShortcut(QKeySequence::HelpContents);
  help->setShortcutContext(Qt::WindowShortcut);
  help_menu->addAction(help);
  actions_.push_back(help);
  connect(help, &QAction::triggered, this, [this] { show_help(); });
}

void CalcForm::fill_recent_menu(QMenu* menu) {
  menu->clear();
  const std::vector<Text> files = recent_files();
  for (std::size_t i = 0; i < files.size(); ++i) {
    const QString file = to_qstring(files[i]);
    QString shown = file;  // "&" would mark a shortcut letter
    shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
    QAction* entry = menu->addAction(QStringLiteral("&%1 %2").arg((i + 1) % 10).arg(shown));
    connect(entry, &QAction::triggered, this, [this, file] {
      if (may_discard_changes()) open_file(file);
    });
  }
  if (files.empty()) menu->addAction(QStringLiteral("（无）"))->setEnabled(false);
}

std::vector<Text> CalcForm::recent_files() const {
  return clsCharacter(platform_).tHistoryFiles(Text(program_.menu_key));
}

void CalcForm::remember_file(const QString& file) {
  const QString path = QFileInfo(file).absoluteFilePath();
  clsCharacter(platform_).bHistoryAdd(Text(program_.menu_key),
                                      to_text(QDir::toNativeSeparators(path)));
}

bool CalcForm::show_help() {
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
  statusBar()->showMessage(to_qstring(why), 10000);
  platform_->messages->warning(why, u"帮助");
  return false;
}

QString CalcForm::chosen_file(bool saving, const QString& filter) {
  if (std::optional<QString>& preset = saving ? preset_save_ : preset_open_) {
    const QString file = *preset;
    preset.reset();
    return file;
  }
  return saving ? QFileDialog::getSaveFileName(this, windowTitle(), file_, filter)
                : QFileDialog::getOpenFileName(this, windowTitle(), file_, filter);
}

Text CalcForm::form_name() const { return Text(program_.layout); }

// ---- Layout of the grid ------------------------------------------------------------

bool CalcForm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == panel_ && event->type() == QEvent::Resize) place_grid();
  return QMainWindow::eventFilter(watched, event);
}

void CalcForm::place_grid() {
  // The grid and the title box are placed by the form's rule, in twips.
  const int width = to_twips(panel_->width(), panel_->logicalDpiX());
  const int height = to_twips(panel_->height(), panel_->logicalDpiY());
  session_->cell().Form_Resize(0, width, height);
  title_rule_ = title_->geometry();
  grid_rule_ = grid_->geometry();
  fit_title_box();
}

void CalcForm::fit_title_box() {
  if (title_rule_.isEmpty() || grid_rule_.isEmpty()) return;
  int grow = 0;
  if (title_grows_) {
    // The text laid out at the box's width, on a copy: the box lays out its own.
    const std::unique_ptr<QTextDocument> text(title_->document()->clone());
    const int frame = title_->frameWidth();
    text->setTextWidth(std::max(1, title_rule_.width() - 2 * frame));
    const int needed = static_cast<int>(std::ceil(text->size().height())) + 2 * frame + 2;
    // Half the panel at most, and the grid keeps four rows: in a window too
    // small for both, the title box scrolls.
    const int most = std::max(title_rule_.height(), panel_->height() / 2);
    const int grid_least = 4 * (QFontMetrics(grid_->font()).height() + 4);
    const int room = std::max(0, grid_rule_.height() - grid_least);
    grow = std::clamp(std::min(needed, most) - title_rule_.height(), 0, room);
  }
  if (title_->geometry() == title_rule_.adjusted(0, -grow, 0, 0)) return;
  title_->setGeometry(title_rule_.adjusted(0, -grow, 0, 0));
  grid_->setGeometry(grid_rule_.adjusted(0, 0, 0, -grow));
  // The current row stays in sight above the grown box.
  if (grow > 0 && grid_->currentIndex().isValid()) grid_->scrollTo(grid_->currentIndex());
}

// ---- The project ---------------------------------------------------------------------

void CalcForm::update_changed() {
  std::vector<Text> now;
  if (session_) session_->cell().GetCurrentText(now);
  const bool changed = now != saved_values_;
  if (changed == changed_) return;
  changed_ = changed;
  update_title();
}

void CalcForm::values_saved() {
  saved_values_.clear();
  session_->cell().GetCurrentText(saved_values_);
  changed_ = false;
  update_title();
}

bool CalcForm::may_discard_changes() {
  update_changed();
  if (!changed_ || !ask_before_closing_) return true;
  auto* boxes = dynamic_cast<platform::qt::QtMessageBox*>(platform_->messages.get());
  const QMessageBox::StandardButton answer =
      boxes ? boxes->choose(QMessageBox::Question, u"项目已修改，是否保存？", to_text(windowTitle()),
                            QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel)
            : QMessageBox::Discard;
  if (answer == QMessageBox::Discard) return true;
  if (answer != QMessageBox::Save) return false;
  const QString file =
      file_.isEmpty() ? with_extension(chosen_file(true, kProjectFilter), u"zks") : file_;
  return !file.isEmpty() && save_file(file);
}

void CalcForm::update_title() {
  const Text project = session_ ? session_->cell().tGetText(kProjectItem) : Text();
  QString name = to_qstring(trim(project));
  if (name.isEmpty()) {
    name = file_.isEmpty() ? QStringLiteral("未命名") : QFileInfo(file_).completeBaseName();
  }
  setWindowTitle(to_qstring(program_.menu_key) + QStringLiteral(" - ") + name +
                 QStringLiteral("[*]"));
  setWindowModified(changed_);
}

void CalcForm::new_project() {
  session_->cell().LoadDefaultEnterA(false);
  history_->clear();
  values_changed();
  file_.clear();
  report_lines_.clear();
  report_sketch_ = {};
  if (report_) report_->clear();
  action(Action::kSaveReport)->setEnabled(false);
  values_saved();
}

bool CalcForm::open_file(const QString& file) {
  if (!session_->cell().bLoadOrSaveData(u"Load", to_text(file), form_name(), {}, add_data_)) {
    const ProjectFileKind kind = project_file_kind(platform_, to_text(file));
    if (kind.layout && !equal_text(*kind.layout, program_.layout, Compare::Text)) {
      platform_->messages->warning(why_not_opened(kind, to_text(file), &program_),
                                   to_text(windowTitle()));
      return false;
    }
    const int32_t error = kind.exists ? error_id::kDataFileDamaged : error_id::kDataFileNotOpened;
    errors_.GenMsgErrorW(error, to_text(QFileInfo(file).fileName()), {}, {}, {}, false);
    return false;
  }
  session_->cell().ControlEnableA(0);
  history_->clear();
  values_changed();
  file_ = file;
  values_saved();
  remember_file(file);
  statusBar()->showMessage(QStringLiteral("已打开 ") + file, 5000);
  return true;
}

bool CalcForm::save_file(const QString& file) {
  // A value still being edited is left first, checked as always.
  if (!grid_->leave_cell()) return false;
  if (!session_->cell().bLoadOrSaveData(u"Save", to_text(file), form_name(), {}, add_data_)) {
    errors_.GenMsgErrorW(error_id::kDataFileNotSaved, to_text(QFileInfo(file).fileName()), {}, {},
                         {}, false);
    return false;
  }
  file_ = file;
  values_saved();
  remember_file(file);
  statusBar()->showMessage(QStringLiteral("已保存 ") + file, 5000);
  return true;
}

void CalcForm::load_defaults() {
  std::vector<Text> before;
  session_->cell().GetCurrentText(before);
  session_->cell().LoadDefaultEnterA(true);
  std::vector<Text> after;
  session_->cell().GetCurrentText(after);
  values_changed();  // one step of the history
}

// ---- Calculation ---------------------------------------------------------------------

void CalcForm::calculate() {
  if (!program_.calculates) {
    platform_->messages->warning(u"本表单只输入、检查、保存和打开数据，没有计算。",
                                 to_text(windowTitle()));
    return;
  }
  if (!grid_->leave_cell()) return;
  std::vector<Text> values;
  session_->cell().GetCurrentText(values);
  clsCharacter chr(platform_);
  chr.bSuperSub(true);  // squares and cubes of units as superscripts
  report_lines_ = beam_report(values, chr);
  report_values_ = values;
  report_stale_ = false;
  Text html;
  for (const Text& line : report_lines_) {
    // Blanks centre the title and indent continuation lines: they are kept.
    html += u"<p style=\"white-space:pre-wrap\">" +
            typeset::markup_to_html(with_grade_letters(line)) + u"</p>";
  }
  report_html_ = to_qstring(html);
  report_sketch_ = {};
  if (bDisplayPicture()) {
    try {
      report_sketch_ = beam_sketch(values, chr);
    } catch (const std::exception&) {
      // No figure rather than no report.
    }
  }
  show_report(report_html_);
  action(Action::kSaveReport)->setEnabled(true);
}

void CalcForm::show_report(const QString& html) {
  // The figure is a resource of the document, which setHtml clears: it is
  // added after.
  const QUrl figure(QStringLiteral("zelkora:section.png"));
  const QSize size(360, 270);
  const QImage image =
      report_sketch_.b > 0 && report_sketch_.h > 0
          ? section_image(report_sketch_, size, report_->devicePixelRatioF(), report_->palette())
          : QImage();
  QString page = html;
  if (!image.isNull()) {
    page += QStringLiteral(
                "<p align=\"center\"><img src=\"%1\" width=\"%2\" height=\"%3\"></p>"
                "<p align=\"center\">截面图</p>")
                .arg(figure.toString())
                .arg(size.width())
                .arg(size.height());
  }
  report_->setHtml(page);
  if (!image.isNull()) {
    report_->document()->addResource(QTextDocument::ImageResource, figure, image);
  }
}

void CalcForm::update_sketch() {
  if (!sketch_view_ || !session_) return;
  std::vector<Text> values;
  session_->cell().GetCurrentText(values);
  clsCharacter chr(platform_);
  SectionSketch sketch;
  try {
    sketch = beam_sketch(values, chr);
  } catch (const std::exception&) {
    // Values the design cannot read draw no section.
  }
  sketch_view_->set_sketch(sketch);
}

void CalcForm::mark_report_stale() {
  if (!report_ || report_lines_.empty() || report_stale_) return;
  std::vector<Text> now;
  session_->cell().GetCurrentText(now);
  if (now == report_values_) return;
  report_stale_ = true;
  show_report(QStringLiteral("<p style=\"color:#b00000\"><b>计算书已过期：数据已修改，"
                             "请再次单击“计算”。</b></p>") +
              report_html_);
  action(Action::kSaveReport)->setEnabled(false);
}

bool CalcForm::save_report(const QString& file) {
  if (report_lines_.empty() || report_stale_) {
    platform_->messages->warning(u"计算书已过期或尚未计算：请先单击“计算”。", u"保存计算书");
    return false;
  }
  clsCharacter chr(platform_);
  QSaveFile out(file);
  if (out.open(QIODevice::WriteOnly)) {
    for (const Text& line : report_lines_) {
      out.write(to_utf8(with_grade_letters(chr.tDelSuperSubSign(line))).c_str());
      out.write("\n");
    }
    if (out.commit()) {
      statusBar()->showMessage(QStringLiteral("计算书已保存到 ") + file, 5000);
      return true;
    }
  }
  const Text why = u"计算书无法保存到“" + to_text(file) + u"”：" + to_text(out.errorString());
  statusBar()->showMessage(to_qstring(why), 10000);
  platform_->messages->warning(why, u"保存计算书");
  return false;
}

// ---- The form object ------------------------------------------------------------------

void CalcForm::ControlEnable(std::vector<bool>& hidden) {
  const clsCharacter chr(platform_);
  apply_rules(program_, texts_, hidden, chr);
  update_title();
}

void CalcForm::ControlEnable(std::vector<zelkora::Text>& texts, std::vector<bool>& hidden) {
  texts_ = texts;
  ControlEnable(hidden);
}

void CalcForm::closeEvent(QCloseEvent* event) {
  // A value still being typed is left, and checked, first.
  if (!grid_->leave_cell()) {
    event->ignore();
    return;
  }
  values_changed();
  if (!may_discard_changes()) {
    event->ignore();
    return;
  }
  save_view();
  QMainWindow::closeEvent(event);
}

}  // namespace zelkora::desk
