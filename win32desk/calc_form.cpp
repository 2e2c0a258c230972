// A calculation form on Windows' own controls.
#include "win32desk/calc_form.h"

#include "zelkora/platform/win32/windows_api.h"  // before the system's other headers

#include <commctrl.h>
#include <commdlg.h>
#include <richedit.h>

#include <algorithm>

#include "program/beam_design.h"
#include "program/footing_loads.h"
#include "program/form_report.h"
#include "program/section_figure.h"
#include "win32desk/case_table.h"
#include "win32desk/print_preview.h"
#include "win32desk/report_pane.h"
#include "zelkora/document/read_report.h"
#include "zelkora/document/writers.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/row_facts.h"
#include "zelkora/grid/view_state.h"
#include "zelkora/typeset/markup.h"

namespace zelkora::win32desk {

namespace {

using platform::win32::from_wide;
using platform::win32::to_wide;

constexpr UINT_PTR kStatusTimer = 1;
constexpr int kSketchHeight = 260;  // the sketch of the section, at 96 dpi
constexpr int kFilterId = 200, kChangedId = 201, kRefusedId = 202;

struct Entry {
  int id;
  const wchar_t* text;
  BYTE modifiers;  // FCONTROL, FSHIFT; 0 with key 0: no key
  WORD key;
  const wchar_t* keys;  // as the menu shows the key
};

constexpr Entry kFileEntries[] = {
    {CalcForm::kNew, L"新建", FCONTROL, 'N', L"Ctrl+N"},
    {CalcForm::kOpen, L"打开…", FCONTROL, 'O', L"Ctrl+O"},
    {CalcForm::kSave, L"保存", FCONTROL, 'S', L"Ctrl+S"},
    {CalcForm::kSaveAs, L"另存为…", FCONTROL | FSHIFT, 'S', L"Ctrl+Shift+S"},
    {CalcForm::kDefaults, L"默认值", 0, 0, nullptr},
};
constexpr Entry kEditEntries[] = {
    {CalcForm::kUndo, L"撤销", FCONTROL, 'Z', L"Ctrl+Z"},
    {CalcForm::kRedo, L"重做", FCONTROL, 'Y', L"Ctrl+Y"},
    {CalcForm::kCopy, L"复制", FCONTROL, 'C', L"Ctrl+C"},
    {CalcForm::kPaste, L"粘贴", FCONTROL, 'V', L"Ctrl+V"},
    {CalcForm::kResetRow, L"恢复默认值", 0, 0, nullptr},
    {CalcForm::kSaveMyDefaults, L"保存为我的默认值", 0, 0, nullptr},
    {CalcForm::kRestoreMyDefaults, L"恢复我的默认值", 0, 0, nullptr},
    {CalcForm::kNextRefused, L"下一个错误", 0, VK_F8, L"F8"},
    {CalcForm::kFind, L"筛选", FCONTROL, 'F', L"Ctrl+F"},
};
constexpr Entry kCalcEntries[] = {
    {CalcForm::kCalculate, L"计算", 0, VK_F9, L"F9"},
    {CalcForm::kSaveReport, L"保存计算书…", 0, 0, nullptr},
    {CalcForm::kExportDocx, L"导出 Word…", 0, 0, nullptr},
    {CalcForm::kPrint, L"打印…", FCONTROL, 'P', L"Ctrl+P"},
    {CalcForm::kPrintPreview, L"打印预览…", 0, 0, nullptr},
};
constexpr Entry kHelpEntries[] = {
    {CalcForm::kHelp, L"帮助", 0, VK_F1, L"F1"},
};
// The toolbar's buttons, in order.
constexpr int kToolbar[] = {CalcForm::kNew,        CalcForm::kOpen,     CalcForm::kSave,
                            CalcForm::kSaveAs,     CalcForm::kDefaults, CalcForm::kCalculate,
                            CalcForm::kSaveReport, CalcForm::kUndo,     CalcForm::kRedo,
                            CalcForm::kExportDocx, CalcForm::kPrint,    CalcForm::kPrintPreview};
constexpr int kReportCommands[] = {CalcForm::kSaveReport, CalcForm::kExportDocx, CalcForm::kPrint,
                                   CalcForm::kPrintPreview};
// Those only a form with a report has.
constexpr int kReportOnly[] = {CalcForm::kExportDocx, CalcForm::kPrint, CalcForm::kPrintPreview};

template <std::size_t N>
void add_entries(HMENU menu, const Entry (&entries)[N], std::vector<ACCEL>& keys) {
  for (const Entry& e : entries) {
    std::wstring text = e.text;
    if (e.keys) text += std::wstring(L"\t") + e.keys;
    ::AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(e.id), text.c_str());
    if (e.key) {
      keys.push_back({static_cast<BYTE>(FVIRTKEY | e.modifiers), e.key, static_cast<WORD>(e.id)});
    }
  }
}

const wchar_t* text_of(int id) {
  for (const Entry& e : kFileEntries)
    if (e.id == id) return e.text;
  for (const Entry& e : kEditEntries)
    if (e.id == id) return e.text;
  for (const Entry& e : kCalcEntries)
    if (e.id == id) return e.text;
  return L"";
}

// "Zelkora 原始数据文件 (*.zks *.zel)" as a file dialog's filter.
std::wstring dialog_filter(TextView filter) {
  std::wstring text = to_wide(filter);
  std::wstring patterns;
  const std::size_t open = text.rfind(L'('), close = text.rfind(L')');
  if (open != std::wstring::npos && close != std::wstring::npos && close > open) {
    patterns = text.substr(open + 1, close - open - 1);
    std::replace(patterns.begin(), patterns.end(), L' ', L';');
  }
  if (patterns.empty()) patterns = L"*.*";
  std::wstring all = text + L'\0' + patterns + L'\0' + L"所有文件 (*.*)" + L'\0' + L"*.*" + L'\0';
  return all + L'\0';
}

bool is_edit_box(HWND window) {
  wchar_t name[32] = {};
  ::GetClassNameW(window, name, 32);
  return _wcsicmp(name, L"Edit") == 0 || _wcsicmp(name, MSFTEDIT_CLASS) == 0;
}

// A toggle pressed while the grid's cell holds a value its check refuses:
// leaving the cell shows the error box, and the press it came in is lost to
// the box (the focus stays in the cell's editor). The toggle is clicked all
// the same, the filter it sets being the user's, as on the other hosts.
LRESULT CALLBACK toggle_proc(HWND box, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                             DWORD_PTR) {
  const LRESULT result = ::DefSubclassProc(box, message, wparam, lparam);
  if (message != WM_LBUTTONDOWN || ::GetFocus() == box) return result;
  if (::GetCapture() == box) ::ReleaseCapture();
  ::SendMessageW(box, BM_SETSTATE, FALSE, 0);
  const bool checked = ::SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED;
  ::SendMessageW(box, BM_SETCHECK, checked ? BST_UNCHECKED : BST_CHECKED, 0);
  ::SendMessageW(::GetParent(box), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(box), BN_CLICKED),
                 reinterpret_cast<LPARAM>(box));
  return result;
}

}  // namespace

CalcForm::CalcForm(std::shared_ptr<const platform::Platform> platform, const desk::Program& program)
    : program_(program), platform_(std::move(platform)) {
  build_menus();
  create(program.menu_key, menu_, program.calculates ? 1000 : 560, 720);
  build_toolbar();
  status_ = make_status_bar(hwnd(), 2);
  build_filter_bar();
  panel_ = std::make_unique<platform::win32::Panel>(hwnd());
  heading_ = ::CreateWindowExW(0, L"STATIC", platform::win32::to_wide(program.menu_key).c_str(),
                               WS_CHILD | WS_VISIBLE | SS_LEFT, 0, 0, 10, 10, panel_->hwnd(),
                               nullptr, ::GetModuleHandleW(nullptr), nullptr);
  set_heading_font();
  grid_ = std::make_unique<platform::win32::Win32GridControl>(panel_->hwnd());
  grid_->value_column(grid::kValueCol);
  title_ = std::make_unique<platform::win32::RichTextBox>(panel_->hwnd());
  if (program.load_cases) cases_ = std::make_unique<CaseTable>(hwnd());
  if (desk::FormWork::shows_section(program)) {
    sketch_ = std::make_unique<FigureView>(hwnd(), desk::kSketchHint,
                                           [](document::Colour ground, document::Colour ink) {
                                             return desk::sketch_screen_colours(ground, ink);
                                           });
  }
  if (program.calculates) report_ = make_report_pane(hwnd());
  layout();
  work_ = std::make_unique<desk::FormWork>(platform_, program, static_cast<desk::FormView&>(*this));
  if (cases_) {
    cases_->edited = [this] { work_->cases_changed(); };
    cases_->add = [this] { return work_->add_case(); };
    cases_->remove = [this](int32_t item) { return work_->delete_case(item); };
    cases_->move = [this](int32_t item, int step) { return work_->move_case(item, step); };
  }
  enable_report_actions(false);
  // Shown, the grid takes the focus and enters its first shown cell, as on
  // the other hosts; then the view kept by the form last closed.
  int32_t row = 0, col = 0;
  while (row + 1 < grid_->Rows() && !grid_->row_shown(row)) ++row;
  while (col + 1 < grid_->Cols() && grid_->ColWidth(col) <= 0) ++col;
  grid_->move_to(row, col);
  restore_view();
  place_grid();
}

CalcForm::~CalcForm() {
  if (grid_) grid_->connect_events(nullptr);
  work_.reset();
  if (heading_font_) ::DeleteObject(heading_font_);
}

void CalcForm::set_heading_font() {
  // The message font at the window's DPI, bold and a fifth larger.
  LOGFONTW bold = platform::win32::message_font(platform::win32::dpi_of(hwnd()));
  bold.lfWeight = FW_BOLD;
  bold.lfHeight = bold.lfHeight * 6 / 5;
  HFONT old = heading_font_;
  heading_font_ = ::CreateFontIndirectW(&bold);
  ::SendMessageW(heading_, WM_SETFONT, reinterpret_cast<WPARAM>(heading_font_), TRUE);
  if (old) ::DeleteObject(old);
}

// ---- Building --------------------------------------------------------------------------

void CalcForm::build_menus() {
  std::vector<ACCEL> keys;
  menu_ = ::CreateMenu();
  HMENU file = ::CreatePopupMenu(), edit = ::CreatePopupMenu(), calc = ::CreatePopupMenu(),
        help = ::CreatePopupMenu();
  add_entries(file, kFileEntries, keys);
  recent_menu_ = ::CreatePopupMenu();
  ::InsertMenuW(file, kDefaults, MF_BYCOMMAND | MF_POPUP, reinterpret_cast<UINT_PTR>(recent_menu_),
                L"最近的工程");
  ::AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
  ::AppendMenuW(file, MF_STRING, kClose, L"关闭");
  add_entries(edit, kEditEntries, keys);
  keys.push_back({FVIRTKEY | FCONTROL | FSHIFT, 'Z', kRedo});
  add_entries(calc, kCalcEntries, keys);
  if (!program_.calculates) {  // no report to export or print
    for (const int id : kReportOnly) ::DeleteMenu(calc, id, MF_BYCOMMAND);
    std::erase_if(keys, [](const ACCEL& a) { return a.cmd == kPrint; });
  }
  add_entries(help, kHelpEntries, keys);
  ::AppendMenuW(menu_, MF_POPUP, reinterpret_cast<UINT_PTR>(file), L"文件(&F)");
  ::AppendMenuW(menu_, MF_POPUP, reinterpret_cast<UINT_PTR>(edit), L"编辑(&E)");
  ::AppendMenuW(menu_, MF_POPUP, reinterpret_cast<UINT_PTR>(calc), L"计算(&C)");
  ::AppendMenuW(menu_, MF_POPUP, reinterpret_cast<UINT_PTR>(help), L"帮助(&H)");
  set_accelerators(::CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size())));
  fill_recent_menu();
}

void CalcForm::build_toolbar() {
  toolbar_ = make_child(hwnd(), TOOLBARCLASSNAMEW,
                        TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_TOP);
  ::SendMessageW(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  ::SendMessageW(toolbar_, TB_SETBITMAPSIZE, 0, MAKELPARAM(0, 0));
  for (const int id : kToolbar) {
    const bool report_only =
        std::find(std::begin(kReportOnly), std::end(kReportOnly), id) != std::end(kReportOnly);
    if (report_only && !program_.calculates) continue;
    TBBUTTON button{};
    button.iBitmap = I_IMAGENONE;
    button.idCommand = id;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE | BTNS_SHOWTEXT;
    button.iString = reinterpret_cast<INT_PTR>(text_of(id));
    ::SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
  }
  ::SendMessageW(toolbar_, TB_AUTOSIZE, 0, 0);
}

void CalcForm::build_filter_bar() {
  filter_ =
      make_child(hwnd(), L"EDIT", ES_AUTOHSCROLL | WS_TABSTOP, {}, kFilterId, WS_EX_CLIENTEDGE);
  ::SendMessageW(filter_, EM_SETCUEBANNER, TRUE,
                 reinterpret_cast<LPARAM>(L"筛选：名称、说明或数值"));
  changed_only_ =
      make_child(hwnd(), L"BUTTON", BS_AUTOCHECKBOX | WS_TABSTOP, u"已修改", kChangedId);
  refused_only_ =
      make_child(hwnd(), L"BUTTON", BS_AUTOCHECKBOX | WS_TABSTOP, u"有错误", kRefusedId);
  ::SetWindowSubclass(changed_only_, &toggle_proc, 1, 0);
  ::SetWindowSubclass(refused_only_, &toggle_proc, 1, 0);
}

// ---- Layout ------------------------------------------------------------------------------

void CalcForm::layout() {
  RECT client, bar, tools;
  ::GetClientRect(hwnd(), &client);
  ::SendMessageW(toolbar_, TB_AUTOSIZE, 0, 0);
  ::SendMessageW(status_, WM_SIZE, 0, 0);
  ::GetWindowRect(status_, &bar);
  ::GetWindowRect(toolbar_, &tools);
  const int status_height = bar.bottom - bar.top;
  const int top = tools.bottom - tools.top;
  const int bottom = client.bottom - status_height;
  const int width = client.right;
  int edges[2] = {width * 2 / 3, -1};
  ::SendMessageW(status_, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(edges));
  const int left_width = report_ || sketch_ ? width * 11 / 20 : width;
  // Right of the values: the sketch of the section over the report.
  const int side_left = left_width + scaled(hwnd(), 4), side_width = width - side_left;
  int side_top = top;
  if (sketch_) {
    const int sketch_height =
        report_ ? std::min(scaled(hwnd(), kSketchHeight), (bottom - top) / 2) : bottom - top;
    ::MoveWindow(sketch_->hwnd(), side_left, top, side_width, std::max(0, sketch_height), TRUE);
    side_top = top + sketch_height + scaled(hwnd(), 4);
  }
  if (report_) {
    ::MoveWindow(report_, side_left, side_top, side_width, std::max(0, bottom - side_top), TRUE);
  }
  const int pad = scaled(hwnd(), 6), row = scaled(hwnd(), 24), box = scaled(hwnd(), 70);
  ::MoveWindow(filter_, pad, top + pad / 2, std::max(0, left_width - 2 * box - 3 * pad), row, TRUE);
  ::MoveWindow(changed_only_, left_width - 2 * box - pad, top + pad / 2, box, row, TRUE);
  ::MoveWindow(refused_only_, left_width - box - pad / 2, top + pad / 2, box, row, TRUE);
  const int panel_top = top + row + pad;
  int panel_bottom = bottom;
  if (cases_) {
    const int table_height = std::min(scaled(hwnd(), 200), (bottom - panel_top) / 2);
    panel_bottom = bottom - table_height;
    cases_->place({0, panel_bottom, left_width, bottom});
  }
  ::MoveWindow(panel_->hwnd(), 0, panel_top, left_width, std::max(0, panel_bottom - panel_top),
               TRUE);
  place_grid();
}

void CalcForm::place_grid() {
  if (!work_) return;
  // The grid and the title box are placed by the form's rule, in twips.
  RECT area;
  ::GetClientRect(panel_->hwnd(), &area);
  const int dpi = platform::win32::dpi_of(panel_->hwnd());
  ::MoveWindow(heading_, scaled(hwnd(), 8), scaled(hwnd(), 8), std::max(0, int(area.right) - 16),
               scaled(hwnd(), 20), TRUE);
  cell().Form_Resize(0, platform::win32::pixels_to_twips(area.right, dpi),
                     platform::win32::pixels_to_twips(area.bottom, dpi));
  const auto placed = [&](HWND window) {
    RECT r;
    ::GetWindowRect(window, &r);
    ::MapWindowPoints(nullptr, panel_->hwnd(), reinterpret_cast<POINT*>(&r), 2);
    return r;
  };
  title_rule_ = placed(title_->hwnd());
  grid_rule_ = placed(grid_->hwnd());
  place_title_box();
}

void CalcForm::place_title_box() {
  int grow = 0;
  if (title_grows_) {
    // Half the panel at most, and the grid keeps four rows.
    RECT area;
    ::GetClientRect(panel_->hwnd(), &area);
    const int title_height = title_rule_.bottom - title_rule_.top;
    const int most = std::max(title_height, int(area.bottom) / 2);
    const int room = std::max(0, int(grid_rule_.bottom - grid_rule_.top) - scaled(hwnd(), 4 * 20));
    grow = std::clamp(most - title_height, 0, room);
  }
  ::MoveWindow(title_->hwnd(), title_rule_.left, title_rule_.top - grow,
               title_rule_.right - title_rule_.left, title_rule_.bottom - title_rule_.top + grow,
               TRUE);
  ::MoveWindow(grid_->hwnd(), grid_rule_.left, grid_rule_.top, grid_rule_.right - grid_rule_.left,
               grid_rule_.bottom - grid_rule_.top - grow, TRUE);
}

void CalcForm::fit_title_box(bool grows) {
  title_grows_ = grows;
  if (work_) place_title_box();
}

// ---- The window --------------------------------------------------------------------------

void CalcForm::show() {
  ::ShowWindow(hwnd(), SW_SHOWNORMAL);
  ::SetForegroundWindow(hwnd());
  ::SetFocus(grid_->hwnd());  // typing goes to the values
}

bool CalcForm::close() {
  ::SendMessageW(hwnd(), WM_CLOSE, 0, 0);
  return !open();
}

bool CalcForm::translate(MSG& message) {
  // A text box keeps its own editing keys: copy, cut, paste and select all,
  // and undo and redo while it has something to undo.
  if (message.message == WM_KEYDOWN && ::GetKeyState(VK_CONTROL) < 0 && is_edit_box(message.hwnd)) {
    const WPARAM key = message.wParam;
    const bool history = key == 'Z' || key == 'Y';
    if (key == 'C' || key == 'V' || key == 'X' || key == 'A' ||
        (history && ::SendMessageW(message.hwnd, EM_CANUNDO, 0, 0))) {
      return false;
    }
  }
  // Undo and redo with nothing to take back leave their keys to the control
  // that has the focus (the grid's KeyDown), as a disabled command does on
  // the other hosts.
  if (message.message == WM_KEYDOWN && ::GetKeyState(VK_CONTROL) < 0 &&
      (message.wParam == 'Z' || message.wParam == 'Y')) {
    const bool redo = message.wParam == 'Y' || ::GetKeyState(VK_SHIFT) < 0;
    const UINT state = ::GetMenuState(menu_, redo ? kRedo : kUndo, MF_BYCOMMAND);
    if (state != static_cast<UINT>(-1) && (state & MF_GRAYED)) return false;
  }
  return accelerators() && ::TranslateAcceleratorW(hwnd(), accelerators(), &message) != 0;
}

LRESULT CalcForm::handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      if (work_) layout();
      return 0;
    case WM_DPICHANGED:
      set_heading_font();
      break;
    case WM_ACTIVATE:
      // The focus goes back where it was when the window was left (a message
      // box closed over an open editor gives the editor its keys again).
      if (LOWORD(wparam) == WA_INACTIVE) {
        HWND focus = ::GetFocus();
        if (focus && ::IsChild(hwnd(), focus)) focus_ = focus;
      } else if (!HIWORD(wparam)) {
        ::SetFocus(focus_ && ::IsWindow(focus_) && ::IsWindowVisible(focus_) ? focus_
                                                                             : grid_->hwnd());
      }
      return 0;
    case WM_SETFOCUS:
      if (grid_)
        ::SetFocus(focus_ && ::IsWindow(focus_) && ::IsWindowVisible(focus_) ? focus_
                                                                             : grid_->hwnd());
      return 0;
    case WM_COMMAND:
      if (cases_ && cases_->command(wparam, lparam)) return 0;
      if (LOWORD(wparam) == kFilterId && HIWORD(wparam) == EN_CHANGE) {
        if (!showing_filter_) apply_filter();
      } else if ((LOWORD(wparam) == kChangedId || LOWORD(wparam) == kRefusedId) &&
                 HIWORD(wparam) == BN_CLICKED) {
        if (!showing_filter_) apply_filter();
      } else if (lparam == 0 || reinterpret_cast<HWND>(lparam) == toolbar_) {
        command(LOWORD(wparam));
      }
      return 0;
    case WM_NOTIFY:
      if (cases_ && cases_->notify(*reinterpret_cast<NMHDR*>(lparam))) return 0;
      break;
    case WM_INITMENUPOPUP:
      if (reinterpret_cast<HMENU>(wparam) == recent_menu_) fill_recent_menu();
      return 0;
    case WM_TIMER:
      if (wparam == kStatusTimer) {
        ::KillTimer(hwnd(), kStatusTimer);
        status_text(status_, 0, {});
      }
      return 0;
    case WM_CLOSE:
      if (!work_->may_close()) return 0;
      save_view();
      ::DestroyWindow(hwnd());
      return 0;
    default:
      break;
  }
  return FrameWindow::handle(message, wparam, lparam);
}

void CalcForm::command(int id) {
  using desk::FormWork;
  if (id >= kRecent && id < kRecent + 10) {
    const std::vector<Text> files = recent_files();
    const auto at = static_cast<std::size_t>(id - kRecent);
    if (at < files.size()) work_->open_recent(files[at]);
    return;
  }
  const auto to_file = [this](TextView filter, TextView extension) {
    return FormWork::with_extension(work_->chosen_file(true, filter), extension);
  };
  switch (id) {
    case kNew:
      return work_->menu_new();
    case kOpen:
      return work_->menu_open();
    case kSave:
      return work_->menu_save();
    case kSaveAs:
      return work_->menu_save_as();
    case kDefaults:
      return work_->load_defaults();
    case kCalculate:
      return work_->calculate();
    case kSaveReport: {
      const Text file = to_file(FormWork::kReportFilter, u"txt");
      if (!file.empty()) save_report(file);
      return;
    }
    case kExportDocx: {
      const Text file = to_file(FormWork::kWordFilter, u"docx");
      if (!file.empty()) export_docx(file);
      return;
    }
    case kPrint:
      print_report();
      return;
    case kPrintPreview:
      preview_report();
      return;
    case kUndo:
      work_->undo();
      return;
    case kRedo:
      work_->redo();
      return;
    case kCopy:
      return copy_rows();
    case kPaste:
      return paste_clipboard();
    case kResetRow:
      return work_->reset_current();
    case kSaveMyDefaults:
      work_->save_my_defaults();
      return;
    case kRestoreMyDefaults:
      work_->restore_my_defaults();
      return;
    case kNextRefused:
      work_->next_refused();
      return;
    case kFind:
      ::SetFocus(filter_);
      ::SendMessageW(filter_, EM_SETSEL, 0, -1);
      return;
    case kHelp:
      show_help();
      return;
    case kClose:
      ::PostMessageW(hwnd(), WM_CLOSE, 0, 0);
      return;
    default:
      return;
  }
}

void CalcForm::enable(int id, bool enabled) {
  ::EnableMenuItem(menu_, static_cast<UINT>(id), MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
  ::SendMessageW(toolbar_, TB_ENABLEBUTTON, static_cast<WPARAM>(id), MAKELPARAM(enabled, 0));
}

void CalcForm::enable_report_actions(bool enabled) {
  for (const int id : kReportCommands) enable(id, enabled);
}

void CalcForm::fill_recent_menu() {
  while (::GetMenuItemCount(recent_menu_) > 0) ::DeleteMenu(recent_menu_, 0, MF_BYPOSITION);
  const std::vector<Text> files = recent_files();
  for (std::size_t i = 0; i < files.size() && i < 10; ++i) {
    const Text shown = replace_all(files[i], u"&", u"&&");  // "&" would mark a shortcut letter
    const std::wstring entry = L"&" + std::to_wstring((i + 1) % 10) + L" " + to_wide(shown);
    ::AppendMenuW(recent_menu_, MF_STRING, kRecent + i, entry.c_str());
  }
  if (files.empty()) ::AppendMenuW(recent_menu_, MF_STRING | MF_GRAYED, 0, L"（无）");
}

// ---- The Edit menu -------------------------------------------------------------------------

void CalcForm::copy_rows() {
  // A text box with the focus copies its own selection.
  HWND focus = ::GetFocus();
  if (focus && is_edit_box(focus) && !::IsChild(grid_->hwnd(), focus)) {
    ::SendMessageW(focus, WM_COPY, 0, 0);
    return;
  }
  const std::wstring text = to_wide(work_->copied_rows());
  if (!::OpenClipboard(hwnd())) return;
  ::EmptyClipboard();
  HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
  if (memory) {
    std::copy_n(text.c_str(), text.size() + 1, static_cast<wchar_t*>(::GlobalLock(memory)));
    ::GlobalUnlock(memory);
    if (!::SetClipboardData(CF_UNICODETEXT, memory)) ::GlobalFree(memory);
  }
  ::CloseClipboard();
}

void CalcForm::paste_clipboard() {
  Text text;
  if (::OpenClipboard(hwnd())) {
    if (HANDLE data = ::GetClipboardData(CF_UNICODETEXT)) {
      const auto* chars = static_cast<const wchar_t*>(::GlobalLock(data));
      if (chars) text = from_wide(chars, wcslen(chars));
      ::GlobalUnlock(data);
    }
    ::CloseClipboard();
  }
  work_->paste_values(text);
}

// ---- What the work shows -------------------------------------------------------------------

platform::ListView* CalcForm::case_table() { return cases_ ? &cases_->table() : nullptr; }

bool CalcForm::type_into(int32_t row, TextView text) {
  return grid_->type_into(row, grid::kValueCol, text);
}

bool CalcForm::edit_cell(int32_t row) { return grid_->edit_cell(row, grid::kValueCol); }

void CalcForm::make_current(int32_t row) { grid_->move_to(row, grid::kValueCol); }

int32_t CalcForm::next_editable_row(int32_t row, int step) const {
  return grid_->next_editable_row(row, grid::kValueCol, step);
}

void CalcForm::mark_refused(int32_t row, TextView note) {
  grid_->mark_cell(row, grid::kValueCol, note);
}

bool CalcForm::marked(int32_t row) const { return grid_->marked(row, grid::kValueCol); }

void CalcForm::show_title(TextView title, bool changed) {
  set_window_text(hwnd(), replace_all(title, u"[*]", changed ? u"*" : u""));
}

void CalcForm::show_status(TextView text, int32_t milliseconds) {
  status_text(status_, 0, text);
  if (milliseconds > 0) {
    ::SetTimer(hwnd(), kStatusTimer, static_cast<UINT>(milliseconds), nullptr);
  } else {
    ::KillTimer(hwnd(), kStatusTimer);
  }
}

void CalcForm::clear_status() { status_text(status_, 0, {}); }

void CalcForm::show_refused_count(TextView text) { status_text(status_, 1, text); }

void CalcForm::show_history(bool can_undo, bool can_redo) {
  enable(kUndo, can_undo);
  enable(kRedo, can_redo);
}

void CalcForm::apply_filter() {
  const bool editing = grid_->editing();
  work_->set_filter({window_text(filter_),
                     ::SendMessageW(changed_only_, BM_GETCHECK, 0, 0) == BST_CHECKED,
                     ::SendMessageW(refused_only_, BM_GETCHECK, 0, 0) == BST_CHECKED});
  // An editor the filter closed, its row hidden, leaves the focus to the
  // filter box, whose change hid it (as on Qt), not to the grid.
  const HWND focus = ::GetFocus();
  if (editing && !grid_->editing() && (focus == grid_->hwnd() || ::IsChild(grid_->hwnd(), focus))) {
    grid_->hand_focus_to(filter_);
  }
}

void CalcForm::show_filter(const grid::RowFilter& filter) {
  showing_filter_ = true;
  if (window_text(filter_) != filter.text) set_window_text(filter_, filter.text);
  ::SendMessageW(changed_only_, BM_SETCHECK, filter.changed ? BST_CHECKED : BST_UNCHECKED, 0);
  ::SendMessageW(refused_only_, BM_SETCHECK, filter.refused ? BST_CHECKED : BST_UNCHECKED, 0);
  showing_filter_ = false;
}

void CalcForm::show_report(const std::vector<Text>& lines, const std::vector<Text>& values) {
  report_document_ = {};
  if (!report_) return;
  if (lines.empty()) {
    show_rtf(report_, {}, {});
    enable_report_actions(false);
    return;
  }
  document::Figure figure;
  clsCharacter chr(platform_);
  try {
    if (desk::FormWork::shows_section(program_)) {
      figure = desk::section_figure(desk::beam_sketch(values, chr));
    } else if (program_.load_cases && work_) {
      figure = desk::footing_figure(desk::footing_sketch(values, work_->cases(), chr));
    }
  } catch (const std::exception&) {
    // No figure rather than no report.
  }
  report_document_ = desk::form_report(lines, program_.menu_key, &figure);
  show_report_page({});
  enable_report_actions(true);
}

void CalcForm::show_report_page(TextView notice) {
  show_rtf(report_, document::write_rtf(report_document_), notice);
}

void CalcForm::show_values(const std::vector<Text>& values) {
  if (!sketch_) return;
  clsCharacter chr(platform_);
  desk::SectionSketch sketch;
  try {
    sketch = desk::beam_sketch(values, chr);
  } catch (const std::exception&) {
    // Values the design cannot read draw no section.
  }
  sketch_->set_figure(desk::section_figure(sketch));
}

void CalcForm::show_report_stale() {
  if (!report_) return;
  show_report_page(u"计算书已过期：数据已修改，请再次单击“计算”。");
  enable_report_actions(false);
}

bool CalcForm::save_report(TextView file) {
  if (!work_->report_may_leave(u"保存计算书")) return false;
  return write_report_file(file, u"保存计算书", to_utf8(document::plain_text(report_document_)));
}

bool CalcForm::export_docx(TextView file) {
  if (!work_->report_may_leave(u"导出 Word")) return false;
  return write_report_file(file, u"导出 Word", document::write_docx(report_document_));
}

bool CalcForm::print_report() {
  if (!work_->report_may_leave(u"打印")) return false;
  return print_pane(report_, hwnd(), program_.menu_key) > 0;
}

bool CalcForm::preview_report() {
  if (!work_->report_may_leave(u"打印预览")) return false;
  if (preview_pane(report_, hwnd()) == PreviewEnd::kPrint) {
    return print_pane(report_, hwnd(), program_.menu_key) > 0;
  }
  return true;
}

bool CalcForm::write_report_file(TextView file, TextView action, const std::string& bytes) {
  Text why;
  if (write_file(file, bytes, &why)) {
    show_status(u"计算书已保存到 " + Text(file), 5000);
    return true;
  }
  const Text said = u"计算书无法保存到“" + Text(file) + u"”：" + why;
  show_status(said, 10000);
  platform_->messages->warning(said, action);
  return false;
}

Text CalcForm::choose_file(bool saving, TextView title, TextView file, TextView filter) {
  std::wstring chosen(MAX_PATH * 4, L'\0');
  const std::wstring start = to_wide(file);
  std::copy_n(start.c_str(), std::min(start.size(), chosen.size() - 1), chosen.data());
  const std::wstring kinds = dialog_filter(filter);
  const std::wstring caption = to_wide(title);
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = hwnd();
  dialog.lpstrFilter = kinds.c_str();
  dialog.lpstrFile = chosen.data();
  dialog.nMaxFile = static_cast<DWORD>(chosen.size());
  dialog.lpstrTitle = caption.c_str();
  dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY |
                 (saving ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST);
  const BOOL ok = saving ? ::GetSaveFileNameW(&dialog) : ::GetOpenFileNameW(&dialog);
  if (!ok) return {};
  return from_wide(chosen.c_str(), wcslen(chosen.c_str()));
}

desk::FormView::SaveChanges CalcForm::ask_save_changes(TextView text, TextView title) {
  const int answer = ::MessageBoxW(hwnd(), to_wide(text).c_str(), to_wide(title).c_str(),
                                   MB_YESNOCANCEL | MB_ICONQUESTION);
  if (answer == IDNO) return SaveChanges::kDiscard;
  return answer == IDYES ? SaveChanges::kSave : SaveChanges::kCancel;
}

// ---- The view kept between sessions --------------------------------------------------------

void CalcForm::restore_view() {
  const std::optional<grid::ViewState> kept = work_->kept_view();
  if (!kept) return;
  constexpr int32_t kWidestKept = 800;
  if (kept->caption > 0) grid_->ColWidth(grid::kCaptionCol, std::min(kept->caption, kWidestKept));
  work_->restore_kept_view(*kept);
  int32_t top = grid::key_row(cell(), kept->top);
  if (top > 0 && !grid_->row_shown(top)) top = grid_->next_editable_row(top, grid::kValueCol, 1);
  if (top > 0) grid_->scroll_to(top);
  const platform::CellRef at = grid_->ActiveCell();
  if (at.row > 0) grid_->scroll_to(at.row);
}

void CalcForm::save_view() {
  grid::ViewState view = grid::capture_view(cell(), grid_->ActiveCell().row, 0);
  view.caption = grid_->ColWidth(grid::kCaptionCol);
  work_->keep_view(view);
}

}  // namespace zelkora::win32desk
