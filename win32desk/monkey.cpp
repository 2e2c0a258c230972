// The Windows program as the random tester's host.
#include "win32desk/monkey.h"

#include "zelkora/platform/win32/windows_api.h"  // before the system's other headers

#include <commctrl.h>
#include <richedit.h>

#include <algorithm>

#include "win32desk/calc_form.h"
#include "win32desk/desk_app.h"
#include "win32desk/main_window.h"
#include "win32desk/script.h"

namespace zelkora::win32desk {

namespace {

constexpr int32_t kValueCol = 3;

bool is_class(HWND window, const wchar_t* name) {
  wchar_t seen[32] = {};
  ::GetClassNameW(window, seen, 32);
  return _wcsicmp(seen, name) == 0;
}

class Win32MonkeyHost : public desk::MonkeyHost {
 public:
  Win32MonkeyHost() : runner_(app_, [this](const std::string& line) { printed_ += line; }) {
    app_.pump();
  }
  ~Win32MonkeyHost() override { close_forms(); }

  std::shared_ptr<const platform::Platform> platform() const override { return app_.platform(); }
  void run(TextView line, std::string& printed) override {
    printed_.clear();
    try {
      runner_.run(line);
    } catch (...) {
      printed += printed_;
      throw;
    }
    printed += printed_;
  }
  desk::FormWork* form() override {
    CalcForm* form = app_.current_form();
    if (!form) return nullptr;
    if (form->work().serial() != sized_) {
      // Tall enough to show every row, as the headless form shows them: a
      // grid's lowest row in view decides where Enter takes the focus.
      sized_ = form->work().serial();
      ::SetWindowSubclass(form->hwnd(), taller_than_the_screen, 0, 0);
      RECT frame{};
      ::GetWindowRect(form->hwnd(), &frame);
      ::SetWindowPos(form->hwnd(), nullptr, 0, 0, frame.right - frame.left, kTallForm,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
      app_.pump();
    }
    return &form->work();
  }
  desk::FormWork* form_of(int64_t serial) override {
    for (CalcForm* form : app_.open_forms()) {
      if (form->work().serial() == serial) return &form->work();
    }
    return nullptr;
  }
  bool menu_shows(TextView entry) override {
    MainWindow& menu = app_.main_window();
    const int32_t row = menu.row_of(entry);
    return row > 0 && menu.grid().row_shown(row);
  }

  bool focus_in_grid() override {
    // An open list has the keys (on Qt it has the focus, a window of its own).
    HWND focus = ::GetFocus();
    platform::win32::Win32GridControl& grid = form_window().grid();
    return focus && !grid.list_open() && (focus == grid.hwnd() || ::IsChild(grid.hwnd(), focus));
  }
  bool focus_in_text_box() override {
    // As the form's keys take it: an edit box or a rich-edit box.
    HWND focus = ::GetFocus();
    return focus && ::IsWindowVisible(focus) &&
           (is_class(focus, L"Edit") || is_class(focus, MSFTEDIT_CLASS));
  }
  // An edit box's undo is one step that Ctrl+Z and Ctrl+Y both take back.
  bool editor_undoes() override {
    HWND focus = ::GetFocus();
    return focus && is_class(focus, L"Edit") && ::SendMessageW(focus, EM_CANUNDO, 0, 0);
  }
  bool editor_redoes() override { return editor_undoes(); }

  bool row_shown(int32_t row) override {
    // Shown with a height of its own, or folded away but kept by the filter.
    return form_window().grid().row_shown(row);
  }
  Text shown_value(int32_t row) override {
    platform::win32::Win32GridControl& grid = form_window().grid();
    if (grid.editing() && grid.ActiveCell() == platform::CellRef{row, kValueCol} && grid.editor()) {
      return window_text(grid.editor());
    }
    return grid.Text(row, kValueCol);
  }
  bool marked_changed() override {
    // The title with "*" where "[*]" stands.
    CalcForm& form = form_window();
    return window_text(form.hwnd()) == replace_all(form.work().window_title(), u"[*]", u"*");
  }
  bool undo_enabled() override { return enabled(CalcForm::kUndo); }
  bool redo_enabled() override { return enabled(CalcForm::kRedo); }
  Text refused_count() override { return form_window().refused_count(); }
  Text filter_text() override { return window_text(form_window().filter_box()); }
  bool changed_only() override { return checked(form_window().changed_only()); }
  bool refused_only() override { return checked(form_window().refused_only()); }

  Text clipboard() override { return clipboard_text(); }
  void clear_clipboard() override { set_clipboard({}); }
  void close_forms() override {
    app_.stop_asking();
    app_.close_forms();
    app_.pump();
  }
  std::string trace() override {
    HWND focus = ::GetFocus();
    wchar_t name[64] = {};
    if (focus) ::GetClassNameW(focus, name, 64);
    const Text text = focus ? window_text(focus) : Text();
    RECT frame{};
    if (app_.current_form()) ::GetWindowRect(form_window().hwnd(), &frame);
    return "  focus: " + to_utf8(platform::win32::from_wide(name, wcslen(name))) + " \"" +
           to_utf8(text) + "\"\n  form " + std::to_string(frame.bottom - frame.top) +
           " px tall, lowest row in view " +
           std::to_string(app_.current_form() ? form_window().grid().BottomRow() : 0) + "\n";
  }

 private:
  CalcForm& form_window() { return *app_.current_form(); }
  bool enabled(int command) {
    const UINT state =
        ::GetMenuState(::GetMenu(form_window().hwnd()), static_cast<UINT>(command), MF_BYCOMMAND);
    return state != static_cast<UINT>(-1) && !(state & (MF_GRAYED | MF_DISABLED));
  }
  // The system keeps a window within the screen's size (Wine's null
  // display is 1024 by 768): the tester's form may be taller.
  static LRESULT CALLBACK taller_than_the_screen(HWND window, UINT message, WPARAM wparam,
                                                 LPARAM lparam, UINT_PTR, DWORD_PTR) {
    const LRESULT result = ::DefSubclassProc(window, message, wparam, lparam);
    if (message == WM_GETMINMAXINFO) {
      auto* sizes = reinterpret_cast<MINMAXINFO*>(lparam);
      sizes->ptMaxTrackSize.y = std::max<LONG>(sizes->ptMaxTrackSize.y, kTallForm);
    }
    return result;
  }
  static bool checked(HWND box) { return ::SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED; }

  static constexpr int kTallForm = 1300;
  DeskApp app_;
  int64_t sized_ = 0;  // the form last made tall
  std::string printed_;
  ScriptRunner runner_;
};

}  // namespace

std::unique_ptr<desk::MonkeyHost> win32_monkey_host() {
  return std::make_unique<Win32MonkeyHost>();
}

}  // namespace zelkora::win32desk
