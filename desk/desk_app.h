// The desktop program: the platform bundle it runs on (the system's, with
// Qt's message box and the program menu from the library's resources), the
// main window with the program menu, and the calculation forms it opens.
#pragma once

#include <QTranslator>

#include <QObject>
#include <QPalette>
#include <QPointer>
#include <QString>
#include <memory>
#include <vector>

#include "program/programs.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

// Moves and, where it must, shrinks a window into its screen's available area.
void place_on_screen(QWidget& window);

class CalcForm;
class MainWindow;

// A dark palette as the systems make one (--dark), every role from a dark
// window and a light text colour.
QPalette dark_palette();

class DeskApp : public QObject {
  Q_OBJECT

 public:
  DeskApp();
  ~DeskApp() override;

  const std::shared_ptr<platform::Platform>& platform() const { return platform_; }
  platform::qt::QtMessageBox& messages() { return *messages_; }
  MainWindow& main_window() { return *main_window_; }

  // Opens the form of the program with this menu key (shown), or says that
  // its form is not part of this program; the form, or null.
  CalcForm* open_program(TextView menu_key);
  // Closes every form (each asks about its changes); false when one stays.
  bool close_forms();
  // Opens a project data file in the form of its program (the program is the
  // one whose layout name the file carries); null when no form can read it.
  CalcForm* open_project(const QString& file);
  // The form opened last that is still open, or null.
  CalcForm* current_form() const;
  // The forms open, the last opened last.
  std::vector<CalcForm*> open_forms() const;

 private:
  void install_qt_translation();
  std::shared_ptr<platform::Platform> platform_;
  std::shared_ptr<platform::qt::QtMessageBox> messages_;
  std::unique_ptr<MainWindow> main_window_;
  std::vector<QPointer<CalcForm>> forms_;
  QTranslator qt_translator_;
};

}  // namespace zelkora::desk
