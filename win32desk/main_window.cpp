// The main window with the program menu.
#include "win32desk/main_window.h"

#include "program/about.h"
#include "program/program_menu.h"
#include "program/programs.h"
#include "win32desk/desk_app.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/platform/win32gui/win32_controls.h"

namespace zelkora::win32desk {

using namespace desk;  // NOLINT: the program layer

namespace {

HMENU build_menu() {
  HMENU bar = ::CreateMenu();
  HMENU file = ::CreatePopupMenu();
  ::AppendMenuW(file, MF_STRING, MainWindow::kQuit, L"退出(&X)\tCtrl+Q");
  HMENU help = ::CreatePopupMenu();
  ::AppendMenuW(help, MF_STRING, MainWindow::kAbout, L"关于(&A)");
  ::AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), L"文件(&F)");
  ::AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(help), L"帮助(&H)");
  return bar;
}

}  // namespace

MainWindow::MainWindow(DeskApp& app) : app_(app), menu_(app.platform()) {
  create(application_name(*app.platform()), build_menu(), 420, 640);
  ACCEL quit{FCONTROL | FVIRTKEY, 'Q', kQuit};
  set_accelerators(::CreateAcceleratorTableW(&quit, 1));
  grid_ = std::make_unique<platform::win32::Win32GridControl>(hwnd());
  status_ = make_status_bar(hwnd(), 1);
  menu_.GridCell(grid_.get());
  menu_.tProMenuIniFile(kMenuFile);
  menu_.GridCell_Initialize();
  grid_->connect_events(this);
  dim_programs_without_form();
  restore_folding();
  status_text(status_, 0, u"单击分组展开，单击程序打开其计算表单");
  layout();
}

MainWindow::~MainWindow() { grid_->connect_events(nullptr); }

void MainWindow::layout() {
  RECT client, bar;
  ::GetClientRect(hwnd(), &client);
  ::SendMessageW(status_, WM_SIZE, 0, 0);
  ::GetWindowRect(status_, &bar);
  ::MoveWindow(grid_->hwnd(), 0, 0, client.right, client.bottom - (bar.bottom - bar.top), TRUE);
}

LRESULT MainWindow::handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      if (grid_) layout();
      return 0;
    case WM_SETFOCUS:
      ::SetFocus(grid_->hwnd());
      return 0;
    case WM_COMMAND:
      if (LOWORD(wparam) == kQuit) {
        ::PostMessageW(hwnd(), WM_CLOSE, 0, 0);
      } else if (LOWORD(wparam) == kAbout) {
        ::MessageBoxW(
            hwnd(),
            platform::win32::to_wide(about_text(*app_.platform(), AboutHost::kWindows)).c_str(),
            platform::win32::to_wide(about_title(*app_.platform())).c_str(),
            MB_OK | MB_ICONINFORMATION);
      }
      return 0;
    case WM_CLOSE:
      // The menu is the program: closing it closes the forms, each asking
      // about its changes; one that stays keeps the program running.
      if (app_.close_forms()) ::DestroyWindow(hwnd());
      return 0;
    case WM_DESTROY:
      ::PostQuitMessage(0);
      return 0;
    default:
      return FrameWindow::handle(message, wparam, lparam);
  }
}

void MainWindow::dim_programs_without_form() {
  for (const auto& [row, note] : desk::dim_programs_without_form(menu_, *grid_)) {
    grid_->note_cell(row, grid::kCaptionCol, note);
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

void MainWindow::open_selected(bool selected, const Text& key) {
  save_folding();  // a click on a group folds or unfolds it
  if (selected) app_.open_program(key);
}

void MainWindow::Click(int32_t /*row*/, int32_t /*col*/) {
  Text page, key;
  open_selected(menu_.GridCell_Click(page, key), key);
}

void MainWindow::DblClick() {
  Text page, key;
  open_selected(menu_.GridCell_Click(page, key), key);
}

void MainWindow::KeyDown(int16_t& key_code, int16_t shift) {
  Text page, key;
  open_selected(menu_.GridCell_KeyDown(key_code, shift, page, key), key);
}

}  // namespace zelkora::win32desk
