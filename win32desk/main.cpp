// zelkora-desk.exe: the suite's desktop program on Windows' own controls.
//
//   zelkora-desk [PROJECTFILE] [--script FILE [--check [--host win32|both]]] [--quit]
//   zelkora-desk --monkey SEED [--steps N] [--seconds S] [--host win32|both] [--keep-going]
//
// Opens the program menu; a project file opens in its program's form; a
// script of input events runs once the windows are up (win32desk/script.h),
// and with --quit the program ends after it. --check runs the script with
// the random tester's checks after every step; --monkey runs the random
// tester (program/monkey.h); --host both compares every step with the
// headless form.
//
// The program is of the GUI subsystem, so that no console window opens with
// it; what a script prints goes to the standard output the program was given
// (a file or pipe it was started with, as `wine zelkora-desk.exe --script
// s.txt > out.txt` or cmd's redirection give it), else to the console of the
// program that started it (AttachConsole), else nowhere. Bytes are written as
// they are (UTF-8, "\n" line ends), with WriteConsoleW on a console.
#include <cstdio>
#include <cwchar>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "win32desk/calc_form.h"
#include "win32desk/desk_app.h"
#include "win32desk/main_window.h"
#include "win32desk/monkey.h"
#include "win32desk/script.h"
#include "zelkora/platform/win32gui/win32_controls.h"

namespace {

using zelkora::Text;

// One of the standard streams, found as described above.
class Stream {
 public:
  explicit Stream(DWORD which) {
    handle_ = ::GetStdHandle(which);
    if (!usable()) {
      ::AttachConsole(ATTACH_PARENT_PROCESS);
      handle_ = ::GetStdHandle(which);
    }
    DWORD mode = 0;
    console_ = usable() && ::GetConsoleMode(handle_, &mode);
  }
  void operator()(const std::string& bytes) const {
    if (!usable()) return;
    DWORD written = 0;
    if (console_) {
      const std::wstring wide = zelkora::platform::win32::to_wide(zelkora::from_utf8(bytes));
      ::WriteConsoleW(handle_, wide.c_str(), static_cast<DWORD>(wide.size()), &written, nullptr);
    } else {
      ::WriteFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    }
  }

 private:
  bool usable() const { return handle_ && handle_ != INVALID_HANDLE_VALUE; }
  HANDLE handle_;
  bool console_ = false;
};

// An output stream whose text goes to a Stream as it is flushed.
class StreamBuffer : public std::stringbuf {
 public:
  explicit StreamBuffer(const Stream& to) : to_(to) {}
  ~StreamBuffer() override { StreamBuffer::sync(); }
  int sync() override {
    to_(str());
    str({});
    return 0;
  }

 private:
  const Stream& to_;
};

// A whole number of at least 0.
template <typename Number>
bool number_of(const wchar_t* text, Number& value) {
  wchar_t* end = nullptr;
  const double n = std::wcstod(text, &end);
  if (end == text || *end != L'\0' || !(n >= 0)) return false;
  value = static_cast<Number>(n);
  return true;
}

bool read_lines(const std::wstring& file, std::vector<Text>& lines) {
  FILE* in = _wfopen(file.c_str(), L"rb");
  if (!in) return false;
  std::string bytes;
  char buffer[4096];
  for (std::size_t n; (n = fread(buffer, 1, sizeof(buffer), in)) > 0;) bytes.append(buffer, n);
  fclose(in);
  lines = zelkora::split_text(zelkora::from_utf8(bytes), u"\n");
  return true;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  const Stream out(STD_OUTPUT_HANDLE), err(STD_ERROR_HANDLE);
  std::wstring script, project, host = L"win32";
  bool quit = false, usage = false, check = false, host_given = false;
  std::optional<zelkora::desk::MonkeyRun> monkey;
  for (int i = 1; i < argc; ++i) {
    const std::wstring arg = argv[i];
    const bool has_value = i + 1 < argc;
    if (arg == L"--script" && has_value) {
      script = argv[++i];
    } else if (arg == L"--monkey" && has_value && !monkey) {
      monkey.emplace();
      usage = !number_of(argv[++i], monkey->seed);
    } else if (arg == L"--steps" && has_value && monkey) {
      usage = !number_of(argv[++i], monkey->steps);
    } else if (arg == L"--seconds" && has_value && monkey) {
      usage = !number_of(argv[++i], monkey->seconds);
    } else if (arg == L"--keep-going" && monkey) {
      monkey->keep_going = true;
    } else if (arg == L"--host" && has_value) {
      host = argv[++i];
      host_given = true;
    } else if (arg == L"--check") {
      check = true;
    } else if (arg == L"--quit") {
      quit = true;
    } else if (arg.rfind(L"--", 0) != 0 && project.empty()) {
      project = arg;
    } else {
      usage = true;
    }
    if (usage) break;
  }
  if (usage || (check && script.empty()) || (host_given && !check && !monkey) ||
      (host != L"win32" && host != L"both") || (monkey && (check || !script.empty()))) {
    err("usage: zelkora-desk [PROJECTFILE] [--script FILE [--check [--host win32|both]]] "
        "[--quit]\n"
        "       zelkora-desk --monkey SEED [--steps N] [--seconds S] [--host win32|both] "
        "[--keep-going]\n");
    return 2;
  }
  StreamBuffer out_buffer(out), err_buffer(err);
  std::ostream out_stream(&out_buffer), err_stream(&err_buffer);
  if (monkey) {
    monkey->compare_hosts = host == L"both";
    return zelkora::desk::run_monkey(*monkey, zelkora::win32desk::win32_monkey_host, out_stream,
                                     err_stream);
  }
  std::vector<Text> lines;
  if (!script.empty() && !read_lines(script, lines)) {
    err("zelkora-desk: cannot read the script " +
        zelkora::to_utf8(zelkora::platform::win32::from_wide(script.c_str(), script.size())) +
        "\n");
    return 2;
  }
  if (check) {
    std::vector<std::string> steps;
    for (const Text& line : lines) steps.push_back(zelkora::to_utf8(line));
    return zelkora::desk::check_script(steps, zelkora::win32desk::win32_monkey_host, out_stream,
                                       err_stream, host == L"both");
  }
  const Text project_file = zelkora::platform::win32::from_wide(project.c_str(), project.size());
  zelkora::win32desk::DeskApp desk;
  ::ShowWindow(desk.main_window().hwnd(), SW_SHOWNORMAL);
  if (lines.empty() && !quit) {
    if (!project_file.empty()) desk.open_project(project_file);
    return desk.run();
  }
  // The project's boxes are answered as the script's: a run never waits.
  desk.pump();
  const int status = zelkora::win32desk::run_script(desk, lines, out, err, project_file);
  if (quit || status != 0) {
    desk.stop_asking();
    return status;
  }
  return desk.run();
}
