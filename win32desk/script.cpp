// The script language on the Windows host.
#include "win32desk/script.h"

#include "zelkora/platform/win32/windows_api.h"  // before the system's other headers

#include <commctrl.h>

#include <algorithm>
#include <cstdlib>

#include <map>
#include <set>
#include <stdexcept>
#include <utility>

#include "program/script_steps.h"
#include "win32desk/calc_form.h"
#include "win32desk/case_table.h"
#include "win32desk/desk_app.h"
#include "win32desk/frame_window.h"
#include "win32desk/main_window.h"
#include "win32desk/print_preview.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/platform/win32gui/win32_controls.h"
#include "zelkora/platform/win32gui/window_shot.h"

namespace zelkora::win32desk {

namespace {

using desk::StepError;
using platform::win32::to_wide;

std::string narrow(TextView text) { return to_utf8(text); }

int number_of(TextView text) {
  try {
    std::size_t used = 0;
    const std::string digits = narrow(text);
    const int n = std::stoi(digits, &used);
    if (used == digits.size()) return n;
  } catch (const std::exception&) {
  }
  throw StepError("\"" + narrow(text) + "\" is not a number");
}

POINT middle_of(const RECT& r) { return {(r.left + r.right) / 2, (r.top + r.bottom) / 2}; }

LPARAM point_param(POINT at) { return MAKELPARAM(at.x, at.y); }

// A key as the script names it: its virtual key and whether Ctrl, Shift or
// Alt is held.
struct KeyPress {
  WORD key;
  bool ctrl = false, shift = false, alt = false;
};

KeyPress key_of(TextView name) {
  static const std::map<Text, KeyPress> kKeys = {
      {u"Enter", {VK_RETURN}},
      {u"Tab", {VK_TAB}},
      {u"Shift+Tab", {VK_TAB, false, true}},
      {u"Space", {VK_SPACE}},
      {u"Escape", {VK_ESCAPE}},
      {u"Up", {VK_UP}},
      {u"Down", {VK_DOWN}},
      {u"Alt+Down", {VK_DOWN, false, false, true}},
      {u"F1", {VK_F1}},
      {u"F2", {VK_F2}},
      {u"F4", {VK_F4}},
      {u"F8", {VK_F8}},
      {u"Ctrl+C", {'C', true}},
      {u"Ctrl+V", {'V', true}},
      {u"Ctrl+Z", {'Z', true}},
      {u"Ctrl+Y", {'Y', true}},
      {u"Ctrl+F", {'F', true}},
  };
  const auto it = kKeys.find(Text(name));
  if (it == kKeys.end()) {
    throw StepError("unknown key \"" + narrow(name) +
                    "\" (Enter, Tab, Shift+Tab, Space, Escape, Up, Down, Alt+Down, F1, F2, F4, F8, "
                    "Ctrl+C, Ctrl+V, Ctrl+Z, Ctrl+Y, Ctrl+F)");
  }
  return it->second;
}

// The list item of a combo box that is `text`, case and all (the system's
// CB_FINDSTRINGEXACT ignores case and finds no empty item); -1 for none.
int list_index(HWND combo, TextView text) {
  const auto count = static_cast<int>(::SendMessageW(combo, CB_GETCOUNT, 0, 0));
  for (int i = 0; i < count; ++i) {
    const auto length = static_cast<int>(::SendMessageW(combo, CB_GETLBTEXTLEN, i, 0));
    if (length < 0) continue;
    std::wstring item(static_cast<std::size_t>(length) + 1, L'\0');
    ::SendMessageW(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(item.data()));
    item.resize(static_cast<std::size_t>(length));
    if (platform::win32::from_wide(item.c_str(), item.size()) == text) return i;
  }
  return -1;
}

Text trimmed_line(TextView line) {
  std::size_t begin = 0, end = line.size();
  const auto blank = [](char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; };
  while (begin < end && blank(line[begin])) ++begin;
  while (end > begin && blank(line[end - 1])) --end;
  return Text(line.substr(begin, end - begin));
}

}  // namespace

Text clipboard_text() {
  Text text;
  if (!::OpenClipboard(nullptr)) return text;
  if (HANDLE data = ::GetClipboardData(CF_UNICODETEXT)) {
    if (const auto* chars = static_cast<const wchar_t*>(::GlobalLock(data))) {
      text = platform::win32::from_wide(chars, wcslen(chars));
      ::GlobalUnlock(data);
    }
  }
  ::CloseClipboard();
  return text;
}

void set_clipboard(TextView text) {
  if (!::OpenClipboard(nullptr)) return;
  ::EmptyClipboard();
  if (!text.empty()) {
    const std::wstring wide = to_wide(text);
    HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, (wide.size() + 1) * sizeof(wchar_t));
    if (memory) {
      std::copy_n(wide.c_str(), wide.size() + 1, static_cast<wchar_t*>(::GlobalLock(memory)));
      ::GlobalUnlock(memory);
      if (!::SetClipboardData(CF_UNICODETEXT, memory)) ::GlobalFree(memory);
    }
  }
  ::CloseClipboard();
}

class Steps {
 public:
  Steps(DeskApp& app, const ScriptOut& out) : app_(app), out_(out) {
    current_ = this;
    hook_ = ::SetWindowsHookExW(WH_CBT, &on_cbt, nullptr, ::GetCurrentThreadId());
  }
  ~Steps() {
    if (hook_) ::UnhookWindowsHookEx(hook_);
    current_ = nullptr;
  }
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  void run(TextView line) {
    const desk::ScriptStep step = desk::parse_step(line);
    const Text& verb = step.verb;
    const Text& rest = step.rest;
    if (verb == u"menu") return menu(rest);
    if (verb == u"edit") return edit(rest, false);
    if (verb == u"pick") return edit(rest, true);
    if (verb == u"click") return click(rest);
    if (verb == u"key") return key(rest);
    if (verb == u"defaults") return defaults(rest);
    if (verb == u"calculate") return press(CalcForm::kCalculate);
    if (verb == u"save") return with_file(CalcForm::kSaveAs, rest);
    if (verb == u"open") return with_file(CalcForm::kOpen, rest);
    if (verb == u"shot") return shot(rest);
    if (verb == u"undo") return chord('Z');
    if (verb == u"redo") return chord('Y');
    if (verb == u"filter") return filter(rest);
    if (verb == u"copy") return copy();
    if (verb == u"paste") return paste(rest);
    if (verb == u"new") return press(CalcForm::kNew);
    if (verb == u"report") return with_file(CalcForm::kSaveReport, rest);
    if (verb == u"export") return export_report(rest);
    if (verb == u"close") return close_form();
    if (verb == u"recent") return recent(rest);
    if (verb == u"answer") return answer_next(rest);
    if (verb == u"type") return type_here(line.size() > 5 ? line.substr(5) : TextView{});
    if (verb == u"toggle") return toggle(rest);
    if (verb == u"reset") return menu_command(CalcForm::kResetRow);
    if (verb == u"mine") return my_defaults(rest);
    if (verb == u"clip") return clip(rest);
    if (verb == u"case") return load_case(desk::parse_case_step(rest));
    if (verb == u"about") {  // 帮助 ▸ 关于 of the menu window
      ::PostMessageW(app_.main_window().hwnd(), WM_COMMAND, MAKEWPARAM(MainWindow::kAbout, 0), 0);
      return settle();
    }
    if (verb == u"preview") return press(CalcForm::kPrintPreview);
    throw StepError("unknown step \"" + narrow(verb) +
                    "\" (menu, edit, pick, click, key, type, defaults, calculate, save, open, "
                    "shot, undo, redo, filter, toggle, copy, clip, paste, reset, mine, new, close, "
                    "answer, report, export, preview, recent, case, about)");
  }

 private:
  // ---- The user's hand ----
  void settle() {
    for (int round = 0; round < 3; ++round) app_.pump();
  }

  void click_at(HWND window, POINT at, bool twice = false) {
    ::PostMessageW(window, WM_MOUSEMOVE, 0, point_param(at));
    ::PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, point_param(at));
    ::PostMessageW(window, WM_LBUTTONUP, 0, point_param(at));
    if (twice) {
      ::PostMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, point_param(at));
      ::PostMessageW(window, WM_LBUTTONUP, 0, point_param(at));
    }
    settle();
  }

  // A key pressed on `window`, the modifiers held in the thread's key state
  // while it is handled.
  void press_key(HWND window, const KeyPress& press) {
    BYTE state[256] = {};
    ::GetKeyboardState(state);
    BYTE held[256];
    std::copy(std::begin(state), std::end(state), std::begin(held));
    if (press.ctrl) held[VK_CONTROL] = held[VK_LCONTROL] = 0x80;
    if (press.shift) held[VK_SHIFT] = held[VK_LSHIFT] = 0x80;
    if (press.alt) held[VK_MENU] = held[VK_LMENU] = 0x80;
    ::SetKeyboardState(held);
    const UINT scan = ::MapVirtualKeyW(press.key, MAPVK_VK_TO_VSC);
    const LPARAM down = 1 | (static_cast<LPARAM>(scan) << 16) | (press.alt ? (1 << 29) : 0);
    const LPARAM up = down | (static_cast<LPARAM>(3) << 30);
    ::PostMessageW(window, press.alt ? WM_SYSKEYDOWN : WM_KEYDOWN, press.key, down);
    ::PostMessageW(window, press.alt ? WM_SYSKEYUP : WM_KEYUP, press.key, up);
    settle();
    ::SetKeyboardState(state);
  }

  void type_text(HWND window, TextView text) {
    for (const char16_t c : text) {
      if (c == u' ') {
        // The space bar is a key of its own (the grid takes its key down);
        // the system's translation gives the character.
        press_key(window, {VK_SPACE});
        continue;
      }
      ::PostMessageW(window, WM_CHAR, c, 1);
      settle();
    }
  }

  // Where the keys go: the window with the focus in the program, else
  // `fallback`.
  HWND focus_or(HWND fallback) const {
    HWND focus = ::GetFocus();
    return focus ? focus : fallback;
  }

  // ---- The windows ----
  CalcForm& form() {
    CalcForm* form = app_.current_form();
    if (!form) throw StepError("no calculation form is open");
    return *form;
  }

  platform::win32::Win32GridControl& grid() {
    CalcForm* form = app_.current_form();
    return form ? form->grid() : app_.main_window().grid();
  }

  void click_cell(platform::win32::Win32GridControl& on, int32_t row, int32_t col) {
    if (row < 0 || col < 0) {
      throw StepError("the grid has no cell " + std::to_string(row) + ", " + std::to_string(col));
    }
    if (row >= on.Rows() || col >= on.Cols()) {
      // Past the last row or column: the grid's empty area, where there is one.
      RECT client{};
      ::GetClientRect(on.hwnd(), &client);
      const POINT corner{client.right - 2, client.bottom - 2};
      if (on.cell_at(corner).row >= 0) throw StepError("the grid has no empty area in view");
      click_at(on.hwnd(), corner);
      return;
    }
    if (!on.row_shown(row)) throw StepError("row " + std::to_string(row) + " is not shown");
    on.scroll_to(row);
    const RECT cell = on.cell_rect(row, col);
    if (cell.right <= cell.left || cell.bottom <= cell.top) {
      throw StepError("row " + std::to_string(row) + " is not shown");
    }
    click_at(on.hwnd(), middle_of(cell));
  }

  // ---- The steps ----
  void menu(TextView caption) {
    MainWindow& window = app_.main_window();
    const int32_t row = window.row_of(caption);
    if (row == 0) throw StepError("the menu has no entry \"" + narrow(caption) + "\"");
    click_cell(window.grid(), row, 2);
  }

  int32_t row_of_item(CalcForm& f, TextView item) {
    return desk::row_of_item(f.cell(), f.grid(), item);
  }

  // The line the open editor types into (a list cell's box has one inside).
  static HWND editor_line(HWND editor) {
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof(parts);
    if (::GetComboBoxInfo(editor, &parts) && parts.hwndItem) return parts.hwndItem;
    return editor;
  }

  void edit(TextView args, bool pick) {
    const desk::FirstWord words = desk::first_word(args);
    CalcForm& f = form();
    platform::win32::Win32GridControl& g = f.grid();
    const int32_t row = row_of_item(f, words.word);
    // An editor open on the cell (a refused value kept it) is typed into as
    // it is, unless its list is open (the list has the keys) or it has not
    // the focus (the filter box has it); otherwise the cell is clicked and
    // F2 opens one.
    const bool open_here = g.editor() && g.ActiveCell().row == row;
    const HWND focus = ::GetFocus();
    if (open_here && (g.list_open() || (focus != g.editor() && !::IsChild(g.editor(), focus)))) {
      throw StepError("the cell cannot be edited");
    }
    if (!open_here) {
      click_cell(g, row, grid::kValueCol);
      press_key(g.hwnd(), {VK_F2});
    }
    HWND editor = g.editor();
    if (!editor) throw StepError("the cell cannot be edited");
    HWND line = editor_line(editor);
    if (pick) {
      COMBOBOXINFO parts{};
      parts.cbSize = sizeof(parts);
      if (line == editor || !::GetComboBoxInfo(editor, &parts)) {
        throw StepError("the cell has no list");
      }
      press_key(line, {VK_F4});  // the list opens, filled as it opens
      if (!::SendMessageW(editor, CB_GETDROPPEDSTATE, 0, 0))
        throw StepError("the list did not open");
      const int at = list_index(editor, words.after);
      if (at < 0) {
        press_key(line, {VK_ESCAPE});
        throw StepError("the list has no \"" + narrow(words.after) + "\"");
      }
      // The item clicked in the open list, scrolled to first as the user would.
      ::SendMessageW(parts.hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(at), 0);
      RECT item{};
      ::SendMessageW(parts.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(at),
                     reinterpret_cast<LPARAM>(&item));
      click_at(parts.hwndList, middle_of(item));
    } else {
      ::SendMessageW(line, EM_SETSEL, 0, -1);  // all of its text is replaced
      type_text(line, words.after);
    }
    press_key(focus_or(line), {VK_RETURN});
  }

  void click(TextView args) {
    const std::vector<Text> words = desk::words_of(args);
    if (words.size() != 2) throw StepError("click takes ROW COL");
    click_cell(grid(), number_of(words[0]), number_of(words[1]));
  }

  HWND key_target() {
    CalcForm* f = app_.current_form();
    HWND window = f ? f->hwnd() : app_.main_window().hwnd();
    HWND focus = ::GetFocus();
    if (focus && (focus == window || ::IsChild(window, focus))) return focus;
    return grid().hwnd();
  }

  void key(TextView name) { press_key(key_target(), key_of(name)); }

  void type_here(TextView text) {
    for (const char16_t c : text) type_text(key_target(), TextView(&c, 1));
  }

  void chord(WORD letter) {
    form();
    press_key(key_target(), {letter, true});
  }

  void toggle(TextView which) {
    CalcForm& f = form();
    HWND box = which == u"changed"   ? f.changed_only()
               : which == u"refused" ? f.refused_only()
                                     : nullptr;
    if (!box) throw StepError("toggle takes changed or refused");
    RECT r;
    ::GetClientRect(box, &r);
    click_at(box, {8, r.bottom / 2});
  }

  void menu_command(int id) {
    CalcForm& f = form();
    if (::GetMenuState(::GetMenu(f.hwnd()), static_cast<UINT>(id), MF_BYCOMMAND) & MF_GRAYED) {
      throw StepError("the menu entry is off");
    }
    ::PostMessageW(f.hwnd(), WM_COMMAND, MAKEWPARAM(id, 0), 0);
    settle();
  }

  void my_defaults(TextView which) {
    if (which != u"save" && which != u"restore") throw StepError("mine takes save or restore");
    menu_command(which == u"save" ? CalcForm::kSaveMyDefaults : CalcForm::kRestoreMyDefaults);
  }

  void filter(TextView text) {
    HWND box = form().filter_box();
    RECT r;
    ::GetClientRect(box, &r);
    click_at(box, middle_of(r));
    ::SendMessageW(box, EM_SETSEL, 0, -1);
    press_key(box, {VK_DELETE});
    type_text(box, text);
  }

  void copy() {
    set_clipboard({});
    chord('C');
    out_(narrow(desk::copied_line(clipboard_text())) + "\n");
  }

  void clip(TextView args) { set_clipboard(desk::lines_of(desk::words_of(args))); }

  void paste(TextView args) {
    const desk::FirstWord words = desk::first_word(args);
    const std::vector<Text> values = desk::words_of(words.after);
    if (words.word.empty() || values.empty()) throw StepError("paste takes ITEM TEXT...");
    CalcForm& f = form();
    click_cell(f.grid(), row_of_item(f, words.word), grid::kValueCol);
    set_clipboard(desk::lines_of(values));
    chord('V');
  }

  void load_case(const desk::CaseStep& step) {
    CaseTable* cases = form().case_table_window();
    if (!cases) throw StepError("the form has no table of load cases");
    HWND table = cases->table().hwnd();
    const auto cell_point = [&](int32_t row, int32_t col) {
      if (row < 1 || row > cases->table().ListItemsCount()) {
        throw StepError("the table has no case " + std::to_string(row));
      }
      ::SendMessageW(table, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row - 1), FALSE);
      return middle_of(cases->cell_rect(row, col));
    };
    if (step.kind == desk::CaseStep::Kind::kSet) {
      click_at(table, cell_point(step.row, step.col), true);
      HWND editor = cases->editor();
      if (!editor) throw StepError("the cell opened no editor");
      COMBOBOXINFO parts{};
      parts.cbSize = sizeof(parts);
      if (::GetComboBoxInfo(editor, &parts)) {
        const std::wstring wanted = to_wide(step.text);
        const auto at =
            static_cast<int>(::SendMessageW(editor, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                            reinterpret_cast<LPARAM>(wanted.c_str())));
        if (at < 0) throw StepError("the list has no " + narrow(step.text));
        // Down from the first item to the one wanted.
        press_key(editor, {VK_HOME});
        for (int i = 0; i < at; ++i) press_key(editor, {VK_DOWN});
      } else {
        ::SendMessageW(editor, EM_SETSEL, 0, -1);
        if (step.text.empty()) press_key(editor, {VK_DELETE});
        type_text(editor, step.text);
      }
      press_key(editor, {VK_RETURN});
      return;
    }
    if (step.kind != desk::CaseStep::Kind::kAdd) click_at(table, cell_point(step.row, 1));
    const CaseTable::Button which = step.kind == desk::CaseStep::Kind::kAdd ? CaseTable::kAdd
                                    : step.kind == desk::CaseStep::Kind::kDelete
                                        ? CaseTable::kDelete
                                    : step.kind == desk::CaseStep::Kind::kUp ? CaseTable::kUp
                                                                             : CaseTable::kDown;
    RECT r;
    ::GetClientRect(cases->button(which), &r);
    click_at(cases->button(which), middle_of(r));
  }

  // A toolbar button clicked.
  void press(int id) {
    CalcForm& f = form();
    HWND bar = f.toolbar();
    RECT r{};
    const bool there =
        ::SendMessageW(bar, TB_GETRECT, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&r)) != 0;
    if (!there || !::SendMessageW(bar, TB_ISBUTTONENABLED, static_cast<WPARAM>(id), 0)) {
      throw StepError("the button is not there or is off");
    }
    click_at(bar, middle_of(r));
  }

  void defaults(TextView reply) {
    if (reply == u"yes") {
      answer_ = IDYES;
    } else if (reply == u"cancel") {
      answer_ = IDCANCEL;
    } else {
      throw StepError("defaults takes yes or cancel");
    }
    press(CalcForm::kDefaults);
  }

  void answer_next(TextView args) {
    const desk::FirstWord words = desk::first_word(args);
    if (words.word == u"yes") {
      answer_ = IDYES;
    } else if (words.word == u"no") {
      answer_ = IDNO;
    } else if (words.word == u"cancel") {
      answer_ = IDCANCEL;
    } else {
      throw StepError("answer takes yes [FILE], no or cancel");
    }
    const Text file = trimmed_line(words.after);
    if (!file.empty()) form().work().preset_file(file, true);
  }

  void recent(TextView n) {
    CalcForm& f = form();
    const int at = number_of(n);
    if (at < 1 || at > static_cast<int>(f.recent_files().size()) || at > 10) {
      throw StepError("the form has no recent project " + narrow(n));
    }
    ::PostMessageW(f.hwnd(), WM_COMMAND, MAKEWPARAM(CalcForm::kRecent + at - 1, 0), 0);
    settle();
  }

  void close_form() {
    ::PostMessageW(form().hwnd(), WM_SYSCOMMAND, SC_CLOSE, 0);
    settle();
  }

  void with_file(int id, TextView file) {
    if (file.empty()) throw StepError("a file is needed");
    form().work().preset_file(Text(file), id != CalcForm::kOpen);
    press(id);
  }

  void export_report(TextView rest) {
    const desk::FirstWord words = desk::first_word(rest);
    if (words.word == u"pdf") throw StepError("export: PDF is not offered on Windows");
    if (words.word != u"docx") throw StepError("export takes docx or pdf and a file");
    with_file(CalcForm::kExportDocx, trimmed_line(words.after));
  }

  void shot(TextView file) {
    CalcForm* f = app_.current_form();
    HWND window = f ? f->hwnd() : app_.main_window().hwnd();
    settle();
    if (file.empty() || !platform::win32::write_window_png(window, to_wide(file))) {
      throw StepError("cannot write the picture " + narrow(file));
    }
  }

  // ---- The boxes met ----
  static LRESULT CALLBACK on_cbt(int code, WPARAM wparam, LPARAM lparam) {
    if (code == HCBT_ACTIVATE && current_) current_->met(reinterpret_cast<HWND>(wparam));
    if (code == HCBT_DESTROYWND && current_)
      current_->answered_.erase(reinterpret_cast<HWND>(wparam));
    return ::CallNextHookEx(nullptr, code, wparam, lparam);
  }

  // A print preview met: its pages counted once it runs, then it is closed
  // (ZELKORA_PREVIEW_SHOT=FILE: a picture of it taken first).
  static void CALLBACK count_preview(HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    if (!current_ || !current_->preview_) return;
    HWND preview = std::exchange(current_->preview_, nullptr);
    if (const char* file = std::getenv("ZELKORA_PREVIEW_SHOT"); file && *file) {
      platform::win32::write_window_png(preview, to_wide(from_utf8(file)));
    }
    current_->out_("print preview: " + std::to_string(preview_pages(preview)) +
                   " pages | closed\n");
    ::PostMessageW(preview, WM_CLOSE, 0, 0);
  }

  // A dialog box met: printed and answered once.
  void met(HWND box) {
    if (preview_pages(box) >= 0 && answered_.insert(box).second) {
      preview_ = box;
      ::SetTimer(nullptr, 0, 0, &count_preview);
      return;
    }
    wchar_t name[16] = {};
    ::GetClassNameW(box, name, 16);
    if (wcscmp(name, L"#32770") != 0 || !answered_.insert(box).second) return;
    const Text title = window_text(box);
    HWND text = ::GetDlgItem(box, 0xFFFF);
    if (!text) {
      out_("file dialog: " + narrow(title) + " | cancelled\n");
      ::PostMessageW(box, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
      return;
    }
    out_(narrow(desk::message_line(title, window_text(text))) + "\n");
    const int wanted = answer_;
    answer_ = 0;
    // The answer given (yes: also a question's OK); else OK or Yes; a box
    // that asks Save, Discard or Cancel is cancelled, so that a script never
    // writes or loses a project unasked.
    int id = 0;
    const auto has = [&](int button) { return ::GetDlgItem(box, button) != nullptr; };
    if (wanted && has(wanted)) id = wanted;
    if (!id && wanted == IDYES && has(IDOK)) id = IDOK;
    if (!id && !has(IDNO)) id = has(IDOK) ? IDOK : has(IDYES) ? IDYES : 0;
    if (!id && has(IDCANCEL)) id = IDCANCEL;
    if (!id) id = IDOK;
    if (HWND button = ::GetDlgItem(box, id)) {
      ::PostMessageW(button, BM_CLICK, 0, 0);
    } else {
      ::PostMessageW(box, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0);
    }
  }

  static inline Steps* current_ = nullptr;
  DeskApp& app_;
  const ScriptOut& out_;
  HHOOK hook_ = nullptr;
  HWND preview_ = nullptr;
  int answer_ = 0;
  std::set<HWND> answered_;
};

ScriptRunner::ScriptRunner(DeskApp& app, ScriptOut out)
    : out_(std::move(out)), steps_(std::make_unique<Steps>(app, out_)) {}

ScriptRunner::~ScriptRunner() = default;

void ScriptRunner::run(TextView line) { steps_->run(line); }

int run_script(DeskApp& app, const std::vector<Text>& lines, const ScriptOut& out,
               const ScriptOut& err, TextView project) {
  Steps steps(app, out);
  if (!project.empty()) app.open_project(project);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const Text line = trimmed_line(lines[i]);
    if (line.empty() || line[0] == u'#') continue;
    try {
      steps.run(line);
    } catch (const std::exception& e) {
      err("script line " + std::to_string(i + 1) + " \"" + to_utf8(line) + "\": " + e.what() +
          "\n");
      return 2;
    }
  }
  return 0;
}

}  // namespace zelkora::win32desk
