// The desktop program on Windows: its platform bundle, windows and loop.
#include "win32desk/desk_app.h"

#include <algorithm>

#include "program/about.h"
#include "program/program_menu.h"
#include "win32desk/calc_form.h"
#include "win32desk/main_window.h"
#include "zelkora/platform/grade_font.h"

namespace zelkora::win32desk {

using namespace desk;  // NOLINT: the program layer

namespace {

// The steel-grade symbols' font (compiled into the library) among the
// process's fonts, for the report pane.
void load_grade_font() {
  const std::string_view ttf = platform::grade_font_ttf();
  DWORD fonts = 0;
  if (!ttf.empty()) {
    ::AddFontMemResourceEx(const_cast<char*>(ttf.data()), static_cast<DWORD>(ttf.size()), nullptr,
                           &fonts);
  }
}

}  // namespace

DeskApp::DeskApp() {
  load_grade_font();
  platform_ = std::make_shared<platform::Platform>(*platform::Platform::environment_default());
  add_program_menu(*platform_);
  main_window_ = std::make_unique<MainWindow>(*this);
}

DeskApp::~DeskApp() {
  stop_asking();
  forms_.clear();
}

CalcForm* DeskApp::open_program(TextView menu_key) {
  const Program* program = program_of(menu_key);
  if (!program) {
    platform_->messages->warning(u"“" + Text(trim(menu_key)) + u"”的计算表单不在本程序中。",
                                 application_name(*platform_));
    return nullptr;
  }
  drop_closed_forms();
  forms_.push_back(std::make_unique<CalcForm>(platform_, *program));
  CalcForm* form = forms_.back().get();
  form->show();
  return form;
}

CalcForm* DeskApp::open_project(TextView file) {
  // The program is named by the file's identifier record: the layout's name.
  const ProjectFileKind kind = project_file_kind(platform_, file);
  const Program* program = kind.layout ? program_of_layout(*kind.layout) : nullptr;
  if (!program) {
    platform_->messages->warning(why_not_opened(kind, file, nullptr), application_name(*platform_));
    return nullptr;
  }
  CalcForm* form = open_program(program->menu_key);
  if (form) form->work().open_file(file);  // a file it cannot read is explained there
  return form;
}

bool DeskApp::close_forms() {
  for (const auto& form : forms_) {
    if (form->open() && !form->close()) return false;
  }
  return true;
}

std::vector<CalcForm*> DeskApp::open_forms() const {
  std::vector<CalcForm*> open;
  for (const auto& form : forms_) {
    if (form->open()) open.push_back(form.get());
  }
  return open;
}

CalcForm* DeskApp::current_form() const {
  for (auto it = forms_.rbegin(); it != forms_.rend(); ++it) {
    if ((*it)->open()) return it->get();
  }
  return nullptr;
}

void DeskApp::stop_asking() {
  for (const auto& form : forms_) form->work().ask_before_closing(false);
}

void DeskApp::drop_closed_forms() {
  std::erase_if(forms_, [](const std::unique_ptr<CalcForm>& form) { return !form->open(); });
}

void DeskApp::dispatch(MSG& message) {
  HWND root = message.hwnd ? ::GetAncestor(message.hwnd, GA_ROOT) : nullptr;
  for (const auto& form : forms_) {
    if (form->open() && form->hwnd() == root && form->translate(message)) return;
  }
  ::TranslateMessage(&message);
  ::DispatchMessageW(&message);
}

bool DeskApp::pump() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      ::PostQuitMessage(static_cast<int>(message.wParam));
      return false;
    }
    dispatch(message);
  }
  return true;
}

int DeskApp::run() {
  MSG message;
  while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
    dispatch(message);
    if (message.message == WM_NULL) drop_closed_forms();
  }
  return static_cast<int>(message.wParam);
}

}  // namespace zelkora::win32desk
