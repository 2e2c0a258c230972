// A calculation form of the desktop program.
#include "desk/calc_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QResizeEvent>
#include <QSaveFile>
#include <QSplitter>
#include <QStatusBar>
#include <QTextDocument>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "desk/case_table.h"
#include "desk/report_print.h"
#include "desk/report_view.h"
#include "program/beam_design.h"
#include "program/footing_loads.h"
#include "program/section_figure.h"
#include "zelkora/document/read_report.h"
#include "zelkora/document/writers.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/row_facts.h"
#include "zelkora/typeset/markup.h"

namespace zelkora::desk {

namespace {

using platform::qt::to_qstring;
using platform::qt::to_text;

int to_twips(int pixels, int dpi) { return dpi > 0 ? pixels * 1440 / dpi : pixels * 15; }

}  // namespace

CalcForm::CalcForm(std::shared_ptr<const platform::Platform> platform, const Program& program,
                   QWidget* parent)
    : QMainWindow(parent), program_(program), platform_(platform) {
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
  if (program.load_cases) {
    cases_ = new CaseTable(left);
    column->addWidget(cases_);
  }
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
  if (FormWork::shows_section(program)) {
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

  grid_->value_column(grid::kValueCol);
  refused_count_ = new QLabel(this);
  statusBar()->addPermanentWidget(refused_count_);
  build_actions();
  work_ = std::make_unique<FormWork>(platform, program, static_cast<FormView&>(*this));
  if (cases_) {
    cases_->edited = [this] { work_->cases_changed(); };
    cases_->add = [this] { return work_->add_case(); };
    cases_->remove = [this](int32_t item) { return work_->delete_case(item); };
    cases_->move = [this](int32_t item, int step) { return work_->move_case(item, step); };
  }
  grid_->QTableWidget::setSelectionMode(QAbstractItemView::ExtendedSelection);
  describe_values();
  // The user sets the caption column's width by its edge; it is kept with
  // the view.
  grid_->resizable_column(grid::kCaptionCol);
  resize(program.calculates ? 1000 : 560, 720);
  restore_view();
}

CalcForm::~CalcForm() = default;

platform::ListView* CalcForm::case_table() { return cases_ ? &cases_->table() : nullptr; }

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
  connect(action(Action::kNew), &QAction::triggered, this, [this] { work_->menu_new(); });
  connect(action(Action::kOpen), &QAction::triggered, this, [this] { work_->menu_open(); });
  connect(action(Action::kSave), &QAction::triggered, this, [this] { work_->menu_save(); });
  connect(action(Action::kSaveAs), &QAction::triggered, this, [this] { work_->menu_save_as(); });
  connect(action(Action::kDefaults), &QAction::triggered, this, [this] { load_defaults(); });
  connect(action(Action::kCalculate), &QAction::triggered, this, [this] { calculate(); });
  connect(action(Action::kSaveReport), &QAction::triggered, this, [this] {
    const Text file =
        FormWork::with_extension(work_->chosen_file(true, FormWork::kReportFilter), u"txt");
    if (!file.empty()) save_report(to_qstring(file));
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
  build_report_actions(calc_menu, toolbar);
}

void CalcForm::build_report_actions(QMenu* menu, QToolBar* toolbar) {
  const char* const kTexts[] = {"导出 Word…", "导出 PDF…", "打印…", "打印预览…"};
  for (const char* text : kTexts) {
    auto* action = new QAction(QString::fromUtf8(text), this);
    actions_.push_back(action);
    action->setEnabled(false);
    // Only a form with a report has them.
    action->setVisible(program_.calculates);
    menu->addAction(action);
    toolbar->addAction(action);
  }
  action(Action::kPrint)->setShortcut(QKeySequence::Print);
  const auto export_to = [this](TextView filter, TextView extension,
                                bool (CalcForm::*write)(const QString&)) {
    const Text file = FormWork::with_extension(work_->chosen_file(true, filter), extension);
    if (!file.empty()) (this->*write)(to_qstring(file));
  };
  connect(action(Action::kExportDocx), &QAction::triggered, this,
          [export_to] { export_to(FormWork::kWordFilter, u"docx", &CalcForm::export_docx); });
  connect(action(Action::kExportPdf), &QAction::triggered, this,
          [export_to] { export_to(FormWork::kPdfFilter, u"pdf", &CalcForm::export_pdf); });
  connect(action(Action::kPrint), &QAction::triggered, this, [this] { print_report(); });
  connect(action(Action::kPrintPreview), &QAction::triggered, this, [this] { preview_report(); });
}

void CalcForm::enable_report_actions(bool enabled) {
  for (const Action a : {Action::kSaveReport, Action::kExportDocx, Action::kExportPdf,
                         Action::kPrint, Action::kPrintPreview}) {
    action(a)->setEnabled(enabled);
  }
}

void CalcForm::fill_recent_menu(QMenu* menu) {
  menu->clear();
  const std::vector<Text> files = recent_files();
  for (std::size_t i = 0; i < files.size(); ++i) {
    const QString file = to_qstring(files[i]);
    QString shown = file;  // "&" would mark a shortcut letter
    shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
    QAction* entry = menu->addAction(QStringLiteral("&%1 %2").arg((i + 1) % 10).arg(shown));
    connect(entry, &QAction::triggered, this, [this, file] { work_->open_recent(to_text(file)); });
  }
  if (files.empty()) menu->addAction(QStringLiteral("（无）"))->setEnabled(false);
}

Text CalcForm::choose_file(bool saving, TextView title, TextView file, TextView filter) {
  const QString chosen = saving
                             ? QFileDialog::getSaveFileName(this, to_qstring(title),
                                                            to_qstring(file), to_qstring(filter))
                             : QFileDialog::getOpenFileName(this, to_qstring(title),
                                                            to_qstring(file), to_qstring(filter));
  return to_text(chosen);
}

// ---- Layout of the grid ------------------------------------------------------------

bool CalcForm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == panel_ && event->type() == QEvent::Resize) place_grid();
  return QMainWindow::eventFilter(watched, event);
}

void CalcForm::place_grid() {
  // The grid and the title box are placed by the form's rule, in twips.
  const int width = to_twips(panel_->width(), panel_->logicalDpiX());
  const int height = to_twips(panel_->height(), panel_->logicalDpiY());
  cell().Form_Resize(0, width, height);
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

void CalcForm::show_title(TextView title, bool changed) {
  setWindowTitle(to_qstring(title));
  setWindowModified(changed);
}

void CalcForm::show_status(TextView text, int32_t milliseconds) {
  statusBar()->showMessage(to_qstring(text), milliseconds);
}

void CalcForm::clear_status() { statusBar()->clearMessage(); }

FormView::SaveChanges CalcForm::ask_save_changes(TextView text, TextView title) {
  auto* boxes = dynamic_cast<platform::qt::QtMessageBox*>(platform_->messages.get());
  const QMessageBox::StandardButton answer =
      boxes ? boxes->choose(QMessageBox::Question, text, title,
                            QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel)
            : QMessageBox::Discard;
  if (answer == QMessageBox::Discard) return SaveChanges::kDiscard;
  return answer == QMessageBox::Save ? SaveChanges::kSave : SaveChanges::kCancel;
}

// ---- Calculation ---------------------------------------------------------------------

void CalcForm::show_report(const std::vector<Text>& lines, const std::vector<Text>& values) {
  report_sketch_ = {};
  report_document_ = {};
  if (!report_) return;
  if (lines.empty()) {
    report_->clear();
    enable_report_actions(false);
    return;
  }
  document::Figure figure;
  clsCharacter chr(platform_);
  try {
    if (bDisplayPicture()) {
      report_sketch_ = beam_sketch(values, chr);
      figure = section_figure(report_sketch_);
    } else if (program_.load_cases && work_) {
      figure = footing_figure(footing_sketch(values, work_->cases(), chr));
    }
  } catch (const std::exception&) {
    // No figure rather than no report.
  }
  report_document_ = form_report(lines, program_.menu_key, &figure);
  show_report_page();
  enable_report_actions(true);
}

void CalcForm::show_report_page(const QString& notice) {
  fill_report(*report_->document(), report_document_,
              ReportLook{report_->font(), sketch_figure_colours(report_->palette()), notice});
}

void CalcForm::show_values(const std::vector<Text>& values) {
  if (!sketch_view_) return;
  clsCharacter chr(platform_);
  SectionSketch sketch;
  try {
    sketch = beam_sketch(values, chr);
  } catch (const std::exception&) {
    // Values the design cannot read draw no section.
  }
  sketch_view_->set_sketch(sketch);
}

void CalcForm::show_report_stale() {
  if (!report_) return;
  show_report_page(QStringLiteral("计算书已过期：数据已修改，请再次单击“计算”。"));
  enable_report_actions(false);
}

bool CalcForm::save_report(const QString& file) {
  if (!work_->report_may_leave(u"保存计算书")) return false;
  return write_report_file(file, u"保存计算书", [&](Text* why) {
    QSaveFile out(file);
    const std::string text = to_utf8(document::plain_text(report_document_));
    if (out.open(QIODevice::WriteOnly) &&
        out.write(text.data(), static_cast<qint64>(text.size())) ==
            static_cast<qint64>(text.size()) &&
        out.commit()) {
      return true;
    }
    *why = to_text(out.errorString());
    return false;
  });
}

bool CalcForm::export_docx(const QString& file) {
  if (!work_->report_may_leave(u"导出 Word")) return false;
  return write_report_file(file, u"导出 Word", [&](Text* why) {
    const std::string bytes = document::write_docx(report_document_);
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) &&
        out.write(bytes.data(), static_cast<qint64>(bytes.size())) ==
            static_cast<qint64>(bytes.size()) &&
        out.commit()) {
      return true;
    }
    *why = to_text(out.errorString());
    return false;
  });
}

bool CalcForm::export_pdf(const QString& file) {
  if (!work_->report_may_leave(u"导出 PDF")) return false;
  return write_report_file(file, u"导出 PDF", [&](Text* why) {
    return write_report_pdf(report_document_, to_text(file), why);
  });
}

bool CalcForm::write_report_file(const QString& file, TextView action,
                                 const std::function<bool(Text* why)>& write) {
  Text why;
  if (write(&why)) {
    statusBar()->showMessage(QStringLiteral("计算书已保存到 ") + file, 5000);
    return true;
  }
  const Text said = u"计算书无法保存到“" + to_text(file) + u"”：" + why;
  statusBar()->showMessage(to_qstring(said), 10000);
  platform_->messages->warning(said, action);
  return false;
}

bool CalcForm::print_report() {
  if (!work_->report_may_leave(u"打印")) return false;
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(to_qstring(program_.menu_key));
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted) return false;
  if (desk::print_report(report_document_, printer) > 0) return true;
  platform_->messages->warning(u"计算书无法打印：打印机无法使用。", u"打印");
  return false;
}

bool CalcForm::preview_report() {
  if (!work_->report_may_leave(u"打印预览")) return false;
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(to_qstring(program_.menu_key));
  QPrintPreviewDialog preview(&printer, this);
  preview.setWindowTitle(QStringLiteral("打印预览"));
  connect(&preview, &QPrintPreviewDialog::paintRequested, this,
          [this](QPrinter* on) { desk::print_report(report_document_, *on); });
  preview.exec();
  return true;
}

// ---- The window ----------------------------------------------------------------------

void CalcForm::closeEvent(QCloseEvent* event) {
  if (!work_->may_close()) {
    event->ignore();
    return;
  }
  save_view();
  QMainWindow::closeEvent(event);
}

}  // namespace zelkora::desk
