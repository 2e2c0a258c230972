// The desktop program on Windows: its platform bundle, windows and loop.
#include "win32desk/desk_app.h"

#include <algorithm>

#include "win32desk/calc_form.h"
#include "win32desk/main_window.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/resources.h"

namespace zelkora::win32desk {

using namespace desk;  // NOLINT: the program layer

namespace {

// The program menu from the library's resources, every other INI file from
// the system's INI files.
class MenuIniFiles : public platform::IniFiles {
 public:
  MenuIniFiles(std::shared_ptr<platform::IniFiles> system, Text menu) : system_(std::move(system)) {
    menu_.put(DeskApp::kMenuFile, menu);
  }
  Text read(TextView section, TextView key, TextView default_value, TextView file) const override {
    if (equal_text(file, DeskApp::kMenuFile, Compare::Text)) {
      return menu_.read(section, key, default_value, DeskApp::kMenuFile);
    }
    return system_ ? system_->read(section, key, default_value, file) : Text(default_value);
  }
  bool write(TextView section, TextView key, std::optional<TextView> value,
             TextView file) override {
    return system_ && !equal_text(file, DeskApp::kMenuFile, Compare::Text) &&
           system_->write(section, key, value, file);
  }

 private:
  std::shared_ptr<platform::IniFiles> system_;
  platform::headless::MemoryIniFiles menu_;
};

constexpr std::size_t kMaxMenuBytes = std::size_t{1} << 20;

}  // namespace

DeskApp::DeskApp() {
  platform_ = std::make_shared<platform::Platform>(*platform::Platform::environment_default());
  const std::optional<std::string> menu =
      platform::read_resource(platform_->resources, to_utf8(kMenuFile), kMaxMenuBytes);
  platform_->ini =
      std::make_shared<MenuIniFiles>(platform_->ini, codepage::from_ansi(menu.value_or("")));
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
                                 kTitle);
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
    platform_->messages->warning(why_not_opened(kind, file, nullptr), kTitle);
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
