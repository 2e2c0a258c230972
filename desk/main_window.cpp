// The main window with the program menu.
#include "desk/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>

#include "desk/desk_app.h"
#include "program/about.h"
#include "program/program_menu.h"
#include "program/programs.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/grid/grid_appearance.h"

namespace zelkora::desk {

namespace {

Text qt_version() { return u"Qt " + from_utf8(qVersion()); }

}  // namespace

MainWindow::MainWindow(DeskApp& app) : app_(app), menu_(app.platform()) {
  setWindowTitle(platform::qt::to_qstring(application_name(*app.platform())));
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
  QAction* about = help->addAction(QStringLiteral("关于"), this, [this] {
    // An ordinary box of the program's: a script reads and answers it.
    app_.messages().choose(QMessageBox::Information,
                           about_text(*app_.platform(), AboutHost::kQt, qt_version()),
                           about_title(*app_.platform()), QMessageBox::Ok);
  });
  about->setObjectName(QStringLiteral("about"));
  resize(420, 640);
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
  for (const auto& [row, note] : desk::dim_programs_without_form(menu_, *grid_)) {
    grid_->note_cell(row, grid::kCaptionCol, platform::qt::to_qstring(note));
  }
}

void MainWindow::restore_folding() {
  desk::restore_folding(app_.platform(), menu_, *grid_);
  kept_folding_ = unfolded_groups();
}

void MainWindow::save_folding() {
  std::vector<Text> open = unfolded_groups();
  if (open == kept_folding_) return;
  kept_folding_ = std::move(open);
  keep_folding(app_.platform(), kept_folding_);
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
