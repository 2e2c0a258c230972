// The main window with the program menu.
#include "desk/main_window.h"

#include <QStatusBar>

#include "desk/desk_app.h"

namespace zelkora::desk {

MainWindow::MainWindow(DeskApp& app) : app_(app), menu_(app.platform()) {
  setWindowTitle(QStringLiteral("Zelkora 结构快速设计"));
  grid_ = new platform::qt::QtGridControl(this);
  setCentralWidget(grid_);
  menu_.GridCell(grid_);
  menu_.tProMenuIniFile(DeskApp::kMenuFile);
  menu_.GridCell_Initialize();
  grid_->connect_events(this);
  statusBar()->showMessage(QStringLiteral("单击分组展开，单击程序打开其计算表单"));
  resize(420, 640);
}

int32_t MainWindow::row_of(TextView caption) const {
  for (int32_t row = 1; row < grid_->Rows(); ++row) {
    if (trim(grid_->Text(row, 2)) == trim(caption)) return row;
  }
  return 0;
}

void MainWindow::BeforeEdit(int32_t /*row*/, int32_t /*col*/, bool& cancel) { cancel = true; }

void MainWindow::open_selected(bool selected, const Text& /*page*/, const Text& key) {
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
