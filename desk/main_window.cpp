// The main window with the program menu.
#include "desk/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>

#include "desk/desk_app.h"
#include "program/program_menu.h"
#include "program/programs.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/grid/grid_appearance.h"

namespace zelkora::desk {

MainWindow::MainWindow(DeskApp& app) : app_(app), menu_(app.platform()) {
  setWindowTitle(QStringLiteral("Zelkora 结构快速设计"));
  grid_ = new platform::qt::QtGridControl(this);
  setCentralWidget(grid_);
  menu_.GridCell(grid_);
  menu_.tProMenuIniFile(kMenuFile);
  menu_.GridCell_Initialize();
  grid_->connect_events(this);
  dim_programs_without_form();
  restore_folding();
  statusBar()->showMessage(QStringLiteral("单击分组展开，单击程序打开其计算表单"));
  QMenu* file = menuBar()->addMenu(QStringLiteral("文件"));
  QAction* quit = file->addAction(QStringLiteral("退出"), this, [this] { close(); });
  quit->setShortcut(QKeySequence::Quit);
  QMenu* help = menuBar()->addMenu(QStringLiteral("帮助"));
  help->addAction(QStringLiteral("关于"), this, [this] {
    QMessageBox::about(this, QStringLiteral("关于 Zelkora 结构快速设计"), about_text());
  });
  resize(420, 640);
}

QString MainWindow::about_text() {
  return QStringLiteral("Zelkora 结构快速设计\n版本 %1，构建于 %2\nQt %3")
      .arg(QStringLiteral(ZELKORA_VERSION), QStringLiteral(__DATE__), QString::fromLatin1(qVersion()));
}

void MainWindow::closeEvent(QCloseEvent* event) {
  // The menu is the program: closing it closes the forms, each asking about
  // its changes; one that stays keeps the program running.
  if (!app_.close_forms()) {
    event->ignore();
    return;
  }
  QMainWindow::closeEvent(event);
  QApplication::quit();
}

void MainWindow::dim_programs_without_form() {
  const std::vector<clsGridCellMain::MenuLine>& lines = menu_.menu_lines();
  for (std::size_t row = 1; row < lines.size() && row < static_cast<std::size_t>(grid_->Rows());
       ++row) {
    if (!lines[row].selectable || program_of(lines[row].key)) continue;
    const auto r = static_cast<int32_t>(row);
    grid_->ForeColor(r, 2, platform::kColourGrayText);
    grid_->note_cell(r, 2, QStringLiteral("“%1”的计算表单不在本程序中。")
                               .arg(platform::qt::to_qstring(lines[row].key)));
  }
}

namespace {

constexpr TextView kViewSection = u"View";
constexpr TextView kMenuKey = u"Menu";
// Group captions are joined by "|", which the menu file uses between a
// group and its programs and so is in no caption.
constexpr char16_t kGroupSeparator = u'|';

}  // namespace

QStringList MainWindow::unfolded_groups() const {
  QStringList groups;
  const std::vector<clsGridCellMain::MenuLine>& lines = menu_.menu_lines();
  for (std::size_t row = 1; row < lines.size() && row < static_cast<std::size_t>(grid_->Rows());
       ++row) {
    const auto r = static_cast<int32_t>(row);
    if (lines[row].kind == clsGridCellMain::kGroupLine &&
        grid_->ImageKey(r, grid::kPictureCol) == grid::kExpandedKey) {
      groups << platform::qt::to_qstring(trim(lines[row].caption));
    }
  }
  return groups;
}

void MainWindow::restore_folding() {
  const std::shared_ptr<platform::Platform>& platform = app_.platform();
  if (!platform->settings) return;
  const clsCharacter chr(platform);
  const std::optional<Text> saved =
      platform->settings->get(chr.tString(text_id::kApplication), kViewSection, kMenuKey);
  if (!saved) return;
  const QStringList open = platform::qt::to_qstring(*saved).split(QChar(kGroupSeparator));
  // A group is unfolded as a click unfolds it; the active cell is put back.
  const platform::CellRef active = grid_->ActiveCell();
  const std::vector<clsGridCellMain::MenuLine>& lines = menu_.menu_lines();
  for (std::size_t row = 1; row < lines.size() && row < static_cast<std::size_t>(grid_->Rows());
       ++row) {
    const auto r = static_cast<int32_t>(row);
    if (lines[row].kind != clsGridCellMain::kGroupLine ||
        !open.contains(platform::qt::to_qstring(trim(lines[row].caption))) ||
        grid_->ImageKey(r, grid::kPictureCol) == grid::kExpandedKey) {
      continue;
    }
    grid_->ActiveCell(r, grid::kCaptionCol);
    Text page, key;
    menu_.GridCell_Click(page, key);
  }
  grid_->ActiveCell(active.row, active.col);
  kept_folding_ = unfolded_groups();
}

void MainWindow::save_folding() {
  const QStringList open = unfolded_groups();
  const std::shared_ptr<platform::Platform>& platform = app_.platform();
  if (open == kept_folding_ || !platform->settings) return;
  kept_folding_ = open;
  const clsCharacter chr(platform);
  platform->settings->set(chr.tString(text_id::kApplication), kViewSection, kMenuKey,
                          platform::qt::to_text(open.join(QChar(kGroupSeparator))));
}

int32_t MainWindow::row_of(TextView caption) const {
  for (int32_t row = 1; row < grid_->Rows(); ++row) {
    if (trim(grid_->Text(row, 2)) == trim(caption)) return row;
  }
  return 0;
}

void MainWindow::BeforeEdit(int32_t /*row*/, int32_t /*col*/, bool& cancel) { cancel = true; }

void MainWindow::open_selected(bool selected, const Text& /*page*/, const Text& key) {
  // A click on a group folds or unfolds it.
  save_folding();
  if (selected) app_.open_program(key);
}

void MainWindow::Click(int32_t /*row*/, int32_t /*col*/) {
  Text page, key;
  open_selected(menu_.GridCell_Click(page, key), page, key);
}

void MainWindow::DblClick() {
  Text page, key;
  open_selected(menu_.GridCell_Click(page, key), page, key);
}

void MainWindow::KeyDown(int16_t& key_code, int16_t shift) {
  Text page, key;
  open_selected(menu_.GridCell_KeyDown(key_code, shift, page, key), page, key);
}

}  // namespace zelkora::desk
