// The property grid on Windows' own window: building the beam form's grid,
// drawing it whole, and a keystroke-to-leave cycle (a value typed key by key
// into the cell's editor, then Enter) as window messages; each beside the
// same work on the in-memory grid, the baseline of the run. Run under Wine
// (null graphics driver) or on Windows:
//
//   wine win32_grid_bench.exe [rounds]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

#include "zelkora/grid/form_session.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/win32gui/win32_grid.h"

namespace {

using namespace zelkora;  // NOLINT(google-build-using-namespace)
using platform::win32::Win32GridControl;

constexpr int32_t kBeamSteel = 63706;
constexpr int32_t kRow = 9;  // h, a value every cycle takes
constexpr int32_t kValueCol = 3;

void pump() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

// The median of `rounds` runs of `work` (after `prepare`, not timed), in
// microseconds.
double median_us(int rounds, const std::function<void()>& prepare,
                 const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < rounds; ++i) {
    prepare();
    const auto start = std::chrono::steady_clock::now();
    work();
    times.push_back(
        std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
            .count());
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

struct Win32Form {
  HWND top = ::CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 440, 700, nullptr,
                               nullptr, nullptr, nullptr);
  Win32GridControl grid{top};
  platform::headless::MemoryRichTextBox title;
  platform::headless::MemoryPanel panel;
  platform::headless::MemoryGridForm form;
  grid::FormSession session{platform::Platform::headless(), grid, title, panel, form};

  Win32Form() {
    form.label_col_width = platform::headless::HeadlessForm::kLabelColWidth;
    ::MoveWindow(grid.hwnd(), 0, 0, 420, 620, TRUE);
    ::ShowWindow(top, SW_SHOW);
    grid.connect_events(&session);
  }
  ~Win32Form() { ::DestroyWindow(top); }

  // A key as the system delivers it: down, then its character.
  static void key(WORD virtual_key, wchar_t typed) {
    HWND to = ::GetFocus();
    ::SendMessageW(to, WM_KEYDOWN, virtual_key, 1);
    if (typed) ::SendMessageW(::GetFocus(), WM_CHAR, typed, 1);
  }
};

struct MemoryForm {
  platform::headless::HeadlessForm view;
  grid::FormSession session{platform::Platform::headless(), view.grid, view.title, view.panel,
                            view.form};
  platform::headless::HeadlessUser user{view};
  MemoryForm() { view.connect(&session); }
};

const char16_t* value_of(int i) { return i % 2 ? u"650" : u"600"; }

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 50;
  platform::win32::init_gui();

  Win32Form win32;
  MemoryForm memory;
  const double build_win32 = median_us(
      rounds, [] {},
      [&] {
        win32.session.build(kBeamSteel);
        pump();
      });
  const double build_memory = median_us(
      rounds, [] {}, [&] { memory.session.build(kBeamSteel); });

  RECT client;
  ::GetClientRect(win32.grid.hwnd(), &client);
  HDC screen = ::GetDC(nullptr);
  HDC dc = ::CreateCompatibleDC(screen);
  HBITMAP bitmap = ::CreateCompatibleBitmap(screen, client.right, client.bottom);
  ::SelectObject(dc, bitmap);
  const double paint = median_us(
      rounds, [] {}, [&] { win32.grid.paint(dc, client); });
  ::DeleteDC(dc);
  ::DeleteObject(bitmap);
  ::ReleaseDC(nullptr, screen);

  // The cycle, and its steps: the first key opens the cell's editor, the
  // others go to it, Enter leaves the cell and opens the next row's editor.
  int i = 0;
  double first_key = 0, other_keys = 0, enter = 0;
  const auto prepare = [&] {
    win32.grid.leave_cell();
    win32.grid.SetFocus(kRow, kValueCol);
    pump();
  };
  const auto lap = [](std::chrono::steady_clock::time_point& from) {
    const auto now = std::chrono::steady_clock::now();
    const double us = std::chrono::duration<double, std::micro>(now - from).count();
    from = now;
    return us;
  };
  const double cycle_win32 = median_us(rounds, prepare, [&] {
    const char16_t* value = value_of(++i);
    auto at = std::chrono::steady_clock::now();
    Win32Form::key(static_cast<WORD>(value[0]), static_cast<wchar_t>(value[0]));
    first_key += lap(at);
    for (const char16_t* c = value + 1; *c; ++c) {
      Win32Form::key(static_cast<WORD>(*c), static_cast<wchar_t>(*c));
    }
    other_keys += lap(at);
    Win32Form::key(VK_RETURN, L'\r');
    pump();
    enter += lap(at);
  });
  const bool win32_took = win32.grid.Text(kRow, kValueCol) == value_of(i);
  const double cycle_memory = median_us(
      rounds,
      [&] {
        memory.user.leave_cell();
        memory.view.grid.ActiveCell(kRow, kValueCol);
      },
      [&] {
        memory.user.type(value_of(++i));
        memory.user.key(platform::headless::HeadlessUser::kEnter);
      });
  const bool memory_took = memory.view.grid.Text(kRow, kValueCol) == value_of(i);

  // The form's own cycle (desk_bench's): the row entered, the value written
  // and changed, the cell left through the check (bold mark, ControlEnable),
  // the grid drawn; no editor window.
  double drawing = 0;
  const auto form_cycle = [&](grid::FormSession& session, platform::GridControl& grid) {
    grid.ActiveCell(kRow, kValueCol);
    session.cell().GridCell_EnterRow();
    grid.Text(kRow, kValueCol, value_of(++i));
    session.cell().GridCell_CellChanging();
    static_cast<void>(session.cell().bLeaveCellCanCelA());
    const auto start = std::chrono::steady_clock::now();
    pump();
    drawing +=
        std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
  };
  win32.grid.leave_cell();
  pump();
  const double leave_win32 = median_us(
      rounds, [] {}, [&] { form_cycle(win32.session, win32.grid); });
  const double leave_drawing = drawing / rounds;
  const double leave_memory = median_us(
      rounds, [] {}, [&] { form_cycle(memory.session, memory.view.grid); });

  // The system's own edit box, for scale: its text set, a key typed.
  HWND edit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0, 0, 100,
                                20, win32.top, nullptr, nullptr, nullptr);
  const double edit_text = median_us(
      rounds, [] {}, [&] { ::SetWindowTextW(edit, L"600"); });
  const double edit_key = median_us(
      rounds, [] {}, [&] { ::SendMessageW(edit, WM_CHAR, L'5', 1); });

  std::printf("median of %d rounds, microseconds\n", rounds);
  std::printf("%-44s %10s %10s\n", "", "Win32", "memory");
  std::printf("%-44s %10.1f %10.1f\n", "building the beam form's grid", build_win32, build_memory);
  std::printf("%-44s %10.1f\n", "drawing it whole (memory DC)", paint);
  std::printf("%-44s %10.1f %10.1f\n", "typing a value (3 keys), Enter", cycle_win32, cycle_memory);
  std::printf("%-44s %10.1f\n", "  mean: the first key (opens the editor)", first_key / rounds);
  std::printf("%-44s %10.1f\n", "  mean: the 2 keys in the editor", other_keys / rounds);
  std::printf("%-44s %10.1f\n", "  mean: Enter (leave, next row's editor)", enter / rounds);
  std::printf("%-44s %10.1f %10.1f\n", "the form's leave cycle (enter, value, leave)", leave_win32,
              leave_memory);
  std::printf("%-44s %10.1f\n", "  mean: the grid drawn after it (WM_PAINT)", leave_drawing);
  std::printf("%-44s %10.1f\n", "a bare EDIT: SetWindowText", edit_text);
  std::printf("%-44s %10.1f\n", "a bare EDIT: one WM_CHAR", edit_key);
  std::printf("the last value typed is the cell's: Win32 %s, memory %s\n",
              win32_took ? "yes" : "no", memory_took ? "yes" : "no");
  return 0;
}
