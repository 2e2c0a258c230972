// The desktop program on Windows' own controls: the platform bundle it runs
// on (the system's, with the system's message box, and the program menu
// from the library's resources), the main window with the program menu, the
// calculation forms it opens, and the message loop they share.
#pragma once

#include <memory>
#include <vector>

#include "program/programs.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::win32desk {

class CalcForm;
class MainWindow;

class DeskApp {
 public:
  DeskApp();
  ~DeskApp();
  DeskApp(const DeskApp&) = delete;
  DeskApp& operator=(const DeskApp&) = delete;

  const std::shared_ptr<platform::Platform>& platform() const { return platform_; }
  MainWindow& main_window() { return *main_window_; }

  // Opens the form of the program with this menu key (shown), or says that
  // its form is not part of this program; the form, or null.
  CalcForm* open_program(TextView menu_key);
  // Opens a project data file in the form of its program; null when no
  // form can read it (a box says why).
  CalcForm* open_project(TextView file);
  // Closes every form (each asks about its changes); false when one stays.
  bool close_forms();
  // The form opened last that is still open, or null.
  CalcForm* current_form() const;
  // The forms open, the last opened last.
  std::vector<CalcForm*> open_forms() const;
  // Every open form ends without asking (a script's run is over).
  void stop_asking();

  // One message through the accelerators of its window's form, then to
  // its window.
  void dispatch(MSG& message);
  // The messages waiting, each dispatched; false once the program is to
  // end (WM_QUIT, posted again for the loop).
  bool pump();
  // The message loop until the program ends; its exit code.
  int run();

 private:
  // Forms whose windows are gone are deleted (outside their messages).
  void drop_closed_forms();

  std::shared_ptr<platform::Platform> platform_;
  std::unique_ptr<MainWindow> main_window_;
  std::vector<std::unique_ptr<CalcForm>> forms_;
};

}  // namespace zelkora::win32desk
