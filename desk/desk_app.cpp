// The desktop program: its platform bundle, main window and forms.
#include "desk/desk_app.h"

#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QScreen>
#include <algorithm>

#include "desk/calc_form.h"
#include "desk/main_window.h"
#include "desk/report_view.h"
#include "program/about.h"
#include "program/program_menu.h"
#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/record_numbers.h"

namespace zelkora::desk {

QPalette dark_palette() {
  QPalette dark(QColor(53, 53, 53), QColor(40, 40, 40));
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::AlternateBase, QColor(45, 45, 45));
  for (const QPalette::ColorRole role :
       {QPalette::Text, QPalette::WindowText, QPalette::ButtonText, QPalette::BrightText}) {
    dark.setColor(role, QColor(230, 230, 230));
  }
  dark.setColor(QPalette::Disabled, QPalette::Text, QColor(130, 130, 130));
  dark.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(130, 130, 130));
  dark.setColor(QPalette::Highlight, QColor(42, 110, 180));
  dark.setColor(QPalette::HighlightedText, QColor(255, 255, 255));
  dark.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
  return dark;
}

DeskApp::DeskApp() {
  install_qt_translation();
  load_grade_font();
  platform_ = std::make_shared<platform::Platform>(*platform::Platform::environment_default());
  messages_ = std::make_shared<platform::qt::QtMessageBox>(nullptr);
  platform_->messages = messages_;
  add_program_menu(*platform_);
  main_window_ = std::make_unique<MainWindow>(*this);
}

DeskApp::~DeskApp() {
  for (const QPointer<CalcForm>& form : forms_) {
    if (form) {
      form->ask_before_closing(false);
      delete form.data();
    }
  }
}

void DeskApp::install_qt_translation() {
  // Qt's own buttons and dialogs speak the system's language where Qt has it
  // (Debian's qt6-translations-l10n), else Chinese, the language of the suite.
  const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  if (qt_translator_.load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"), folder) ||
      qt_translator_.load(QStringLiteral("qtbase_zh_CN"), folder)) {
    QCoreApplication::installTranslator(&qt_translator_);
  }
}

void place_on_screen(QWidget& window) {
  // Inside the screen's available area: its status line never off the screen.
  const QScreen* screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
  if (!screen) return;
  const QRect area = screen->availableGeometry();
  QRect frame = window.frameGeometry();
  const QSize extra = frame.size() - window.size();
  const QSize fits(std::min(window.width(), area.width() - extra.width()),
                   std::min(window.height(), area.height() - extra.height()));
  if (fits != window.size()) window.resize(fits);
  frame = window.frameGeometry();
  frame.moveRight(std::min(frame.right(), area.right()));
  frame.moveBottom(std::min(frame.bottom(), area.bottom()));
  frame.moveLeft(std::max(frame.left(), area.left()));
  frame.moveTop(std::max(frame.top(), area.top()));
  window.move(frame.topLeft());
}

CalcForm* DeskApp::open_program(TextView menu_key) {
  const Program* program = program_of(menu_key);
  if (!program) {
    messages_->warning(u"“" + Text(trim(menu_key)) + u"”的计算表单不在本程序中。",
                       application_name(*platform_));
    return nullptr;
  }
  auto* form = new CalcForm(platform_, *program);
  forms_.emplace_back(form);
  form->show();
  place_on_screen(*form);
  form->raise();
  form->activateWindow();
  form->grid().setFocus(Qt::ActiveWindowFocusReason);  // typing goes to the values
  return form;
}

CalcForm* DeskApp::open_project(const QString& file) {
  // The program is named by the file's identifier record: the layout's name.
  const Text path = platform::qt::to_text(file);
  const ProjectFileKind kind = project_file_kind(platform_, path);
  const Program* program = kind.layout ? program_of_layout(*kind.layout) : nullptr;
  if (!program) {
    messages_->warning(why_not_opened(kind, path, nullptr), application_name(*platform_));
    return nullptr;
  }
  CalcForm* form = open_program(program->menu_key);
  if (form) form->open_file(file);  // a file it cannot read is explained there
  return form;
}

bool DeskApp::close_forms() {
  for (const QPointer<CalcForm>& form : forms_) {
    if (form && form->isVisible() && !form->close()) return false;
  }
  return true;
}

std::vector<CalcForm*> DeskApp::open_forms() const {
  std::vector<CalcForm*> open;
  for (const QPointer<CalcForm>& form : forms_) {
    if (form && form->isVisible()) open.push_back(form.data());
  }
  return open;
}

CalcForm* DeskApp::current_form() const {
  for (auto it = forms_.rbegin(); it != forms_.rend(); ++it) {
    if (*it && (*it)->isVisible()) return it->data();
  }
  return nullptr;
}

}  // namespace zelkora::desk
