// column_form: a calculation program of the suite on Zelkora's Qt host. The
// property grid of its own layout (resources/), the values checked, the
// axial compression check of a column (column.h), the report as rich text,
// and the values saved to and opened from a project data file.
//
//   column_form                              the form in a window
//   column_form --check [--open F] [--save F] [ITEM=VALUE ...]
//       without a window: opens F, sets the items, saves to F, calculates
//       and prints the report's text; exit 0 when the column passes, 1 when
//       it does not or a value is refused, 2 when a file or an argument fails
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <utility>

#include "column.h"
#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/form_session.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/qt/qt_controls.h"
#include "zelkora/platform/qt/qt_grid.h"
#include "zelkora/platform/resources.h"
#include "zelkora/typeset/rich_text.h"

namespace {

using zelkora::Text;
using zelkora::platform::qt::to_qstring;
using zelkora::platform::qt::to_text;
namespace zqt = zelkora::platform::qt;

constexpr int32_t kLayout = 70000;               // catalogue text "ColumnForm", the layout's name
constexpr char16_t kFormName[] = u"ColumnForm";  // record 198 of the data files

// [guide:platform]
// The platform of a desktop program: the system's, with the Qt message box,
// and the program's own resource folder (its layout and texts) after the
// folder ZELKORA_RESOURCES names, so that the program's texts win.
std::shared_ptr<zelkora::platform::Platform> program_platform() {
  auto platform = std::make_shared<zelkora::platform::Platform>(
      *zelkora::platform::Platform::environment_default());
  platform->messages = std::make_shared<zqt::QtMessageBox>();
  const QString folder = QCoreApplication::applicationDirPath() + QStringLiteral("/resources");
  platform->resources.push_back(
      zelkora::platform::folder_resources(std::filesystem::path(folder.toStdU16String())));
  return platform;
}
// [/guide:platform]

// [guide:form]
class ColumnForm : public QWidget, public zelkora::platform::GridForm {
 public:
  explicit ColumnForm(std::shared_ptr<const zelkora::platform::Platform> platform) {
    auto* tools = new QToolBar(this);
    tools->addAction(QStringLiteral("计算"), this, [this] { calculate(); });
    tools->addAction(QStringLiteral("打开"), this, [this] { open_chosen(); });
    tools->addAction(QStringLiteral("保存"), this, [this] { save_chosen(); });
    auto* sides = new QHBoxLayout;
    sides->addWidget(panel_, 1);
    sides->addWidget(report_, 1);
    auto* column = new QVBoxLayout(this);
    column->addWidget(tools);
    column->addLayout(sides, 1);
    panel_->installEventFilter(this);
    grid_->value_column(3);
    session_ =
        std::make_unique<zelkora::grid::FormSession>(platform, *grid_, *title_, *panel_, *this);
    session_->check_values_on_leave(true);  // a refused value is explained as its cell is left
    grid_->connect_events(session_.get());
    session_->build(kLayout);  // the rows of ColumnForm.txt, values at their defaults
    resize(900, 520);
  }
  // [/guide:form]

  // [guide:values]
  // The form's values, after the active cell has been left through its check.
  std::vector<Text> values() {
    session_->cell().bLeaveCellCanCelA();
    std::vector<Text> texts;
    session_->cell().GetCurrentText(texts);
    return texts;
  }
  // Puts `text` into item `item`, as a project file would: the program's own
  // check (read_column) sees it before any calculation.
  bool set_value(int32_t item, const Text& text) {
    std::vector<Text> texts = values();
    if (item < 0 || item >= static_cast<int32_t>(texts.size())) return false;
    texts[static_cast<std::size_t>(item)] = text;
    session_->cell().LetCurrentText(texts);
    session_->cell().CellText(item, text);
    return true;
  }
  // [/guide:values]

  // [guide:calculate]
  // Checks the values and calculates; the report (or the refusal) is shown as
  // rich text. True when the column passes.
  bool calculate() {
    Text refusal;
    column_form::Outcome outcome;
    session_->cell().bLeaveCellCanCelA();  // the active cell left through its check
    if (const auto column = column_form::read_column(session_->cell(), refusal)) {
      outcome = column_form::check_column(*column);
    } else {
      outcome.refusal = refusal;
    }
    Text markup = outcome.refusal;
    for (const Text& line : outcome.lines) markup += line + u"\r\n";
    report_->setHtml(to_qstring(zelkora::typeset::markup_to_rich_text(markup)));
    return outcome.refusal.empty() && outcome.passes;
  }
  // [/guide:calculate]
  QString report_text() const { return report_->toPlainText(); }

  // [guide:files]
  // Saves the values (with the form's name, record 198) or opens them; false
  // when the file cannot be written, or read as a file of this form.
  bool save(const QString& path) {
    values();
    Text extra;
    return session_->cell().bLoadOrSaveData(u"Save", to_text(path), kFormName, {}, extra);
  }
  bool open(const QString& path) {
    Text extra;
    return session_->cell().bLoadOrSaveData(u"Load", to_text(path), kFormName, {}, extra);
  }
  // [/guide:files]

  // GridForm: what the grid asks of its form.
  int32_t LabelColWidth() override { return 150; }
  void ControlEnable(std::vector<bool>&) override {}  // every item applies
  void ControlEnable(std::vector<Text>&, std::vector<bool>&) override {}
  bool bDisplayPicture() override { return false; }
  void Let_Text(std::vector<Text>&) override {}

 protected:
  // The grid and its title box are placed in the panel by the library's
  // rule, in twips.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == panel_ && event->type() == QEvent::Resize) {
      session_->cell().Form_Resize(0, panel_->width() * 1440 / panel_->logicalDpiX(),
                                   panel_->height() * 1440 / panel_->logicalDpiY());
    }
    return QWidget::eventFilter(watched, event);
  }

 private:
  void open_chosen() {
    const QString path = QFileDialog::getOpenFileName(this, {}, {}, QStringLiteral("*.zks"));
    if (!path.isEmpty() && !open(path)) report_->setPlainText(QStringLiteral("无法打开 ") + path);
  }
  void save_chosen() {
    const QString path = QFileDialog::getSaveFileName(this, {}, {}, QStringLiteral("*.zks"));
    if (!path.isEmpty() && !save(path)) report_->setPlainText(QStringLiteral("无法保存 ") + path);
  }

  zqt::QtPanel* panel_ = new zqt::QtPanel(this);
  zqt::QtGridControl* grid_ = new zqt::QtGridControl(panel_);
  zqt::QtRichTextBox* title_ = new zqt::QtRichTextBox(panel_);
  QTextBrowser* report_ = new QTextBrowser(this);
  std::unique_ptr<zelkora::grid::FormSession> session_;
};

// The scripted run of --check; its exit code.
int run_check(ColumnForm& form, const QStringList& args) {
  QString save_to;
  for (qsizetype i = 0; i < args.size(); ++i) {
    const QString& arg = args[i];
    const bool file_option = arg == QStringLiteral("--open") || arg == QStringLiteral("--save");
    if (file_option && i + 1 < args.size()) {
      if (arg == QStringLiteral("--save")) {
        save_to = args[++i];
      } else if (!form.open(args[++i])) {
        std::fprintf(stderr, "column_form: cannot open %s\n", qUtf8Printable(args[i]));
        return 2;
      }
      continue;
    }
    const qsizetype equals = arg.indexOf(u'=');
    bool numeric = false;
    const int item = arg.left(equals).toInt(&numeric);
    if (equals < 0 || !numeric || !form.set_value(item, to_text(arg.mid(equals + 1)))) {
      std::fprintf(stderr, "column_form: not an item's value: %s\n", qUtf8Printable(arg));
      return 2;
    }
  }
  if (!save_to.isEmpty() && !form.save(save_to)) {
    std::fprintf(stderr, "column_form: cannot save %s\n", qUtf8Printable(save_to));
    return 2;
  }
  const bool passes = form.calculate();
  std::puts(qUtf8Printable(form.report_text()));
  return passes ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const zelkora::platform::ScopedPlatform scope(program_platform());
  try {
    ColumnForm form(zelkora::platform::Platform::current());
    QStringList args = QApplication::arguments().mid(1);
    if (!args.isEmpty() && args.front() == QStringLiteral("--check")) {
      return run_check(form, args.mid(1));
    }
    form.show();
    return QApplication::exec();
  } catch (const std::exception& fault) {  // a damaged layout or catalogue
    std::fprintf(stderr, "column_form: %s\n", fault.what());
    return 2;
  }
}
