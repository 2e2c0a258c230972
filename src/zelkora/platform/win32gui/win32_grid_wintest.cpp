// The grid on Windows: the same user actions, as window messages to the
// Win32 grid and as whole actions on the headless form, raise the same events
// in the same order and leave the same values; and the grid draws what
// matters where it should.
#include "zelkora/platform/win32gui/win32_grid.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "zelkora/grid/form_session.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/headless/recording_events.h"

namespace zelkora::platform::win32 {
namespace {

constexpr int32_t kBeamSteel = 63706;
constexpr int32_t kValueCol = 3;
using User = headless::HeadlessUser;

std::shared_ptr<Platform> recording_platform() {
  auto platform = Platform::headless();
  platform->messages = std::make_shared<headless::RecordingMessageBox>();
  return platform;
}

void pump() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

// What a form holds after the actions: per row the value cell's text and
// bold mark, the active cell, the messages shown.
std::string state_of(const GridControl& grid, const Platform& platform) {
  std::ostringstream out;
  for (int32_t row = 1; row < grid.Rows(); ++row) {
    std::string value;
    for (const char16_t c : grid.Text(row, kValueCol)) value += c < 0x80 ? char(c) : '?';
    out << row << ": " << value << (grid.FontBold(row, kValueCol) ? " bold" : "") << "\n";
  }
  out << "active: " << grid.ActiveCell().row << "," << grid.ActiveCell().col << "\nmessages: "
      << static_cast<const headless::RecordingMessageBox&>(*platform.messages).shown.size();
  return out.str();
}

std::string joined(const std::vector<std::string>& lines) {
  std::string all;
  for (const std::string& line : lines) all += line + "\n";
  return all;
}

// An action: a verb and what follows it ("click 8 3", "type 300", "key Tab",
// "pick HRB335", "wheel 2", "away").
std::pair<std::string, std::string> split(const std::string& action) {
  const auto blank = action.find(' ');
  if (blank == std::string::npos) return {action, ""};
  return {action.substr(0, blank), action.substr(blank + 1)};
}

const std::map<std::string, User::Key> kKeys = {
    {"Enter", User::kEnter},     {"Tab", User::kTab},     {"Backtab", User::kBackTab},
    {"Escape", User::kEscape},   {"Space", User::kSpace}, {"F2", User::kF2},
    {"F4", User::kF4},           {"Up", User::kUp},       {"Down", User::kDown},
    {"Alt+Down", User::kAltDown}};

// The beam form on the Win32 grid, worked with window messages.
struct Win32Host {
  std::shared_ptr<Platform> platform = recording_platform();
  HWND top = ::CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 480, 700, nullptr,
                               nullptr, nullptr, nullptr);
  HWND other = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 430, 0, 40, 20, top,
                                 nullptr, nullptr, nullptr);
  Win32GridControl grid{top};
  headless::MemoryRichTextBox title;
  headless::MemoryPanel panel;
  headless::MemoryGridForm form;
  grid::FormSession session{platform, grid, title, panel, form};
  headless::RecordingEvents log{session};

  Win32Host() {
    form.label_col_width = 150;
    session.check_values_on_leave(true);
    session.build(kBeamSteel);
    grid.value_column(kValueCol);
    grid.connect_events(&log);
    ::MoveWindow(grid.hwnd(), 0, 0, 420, 400, TRUE);
    ::ShowWindow(top, SW_SHOW);
    ::SetForegroundWindow(top);
    ::SetFocus(grid.hwnd());
    pump();
    grid.ActiveCell(1, 1);
  }
  ~Win32Host() {
    grid.connect_events(nullptr);
    ::DestroyWindow(top);
  }

  static void send_key(WORD key, wchar_t typed, bool shift = false, bool alt = false) {
    BYTE keys[256];
    ::GetKeyboardState(keys);
    const BYTE was = keys[VK_SHIFT];
    keys[VK_SHIFT] = shift ? 0x80 : 0;
    ::SetKeyboardState(keys);
    HWND to = ::GetFocus();
    ::SendMessageW(to, alt ? WM_SYSKEYDOWN : WM_KEYDOWN, key, alt ? 1 | (1 << 29) : 1);
    if (typed) ::SendMessageW(::GetFocus() == to ? to : ::GetFocus(), WM_CHAR, typed, 1);
    pump();
    keys[VK_SHIFT] = was;
    ::SetKeyboardState(keys);
  }

  void click(POINT at) {
    const LPARAM where = MAKELPARAM(at.x, at.y);
    ::SendMessageW(grid.hwnd(), WM_LBUTTONDOWN, MK_LBUTTON, where);
    ::SendMessageW(grid.hwnd(), WM_LBUTTONUP, 0, where);
  }

  void run(const std::string& action) {
    const auto [verb, rest] = split(action);
    if (verb == "click") {
      int row = 0, col = 0;
      std::istringstream(rest) >> row >> col;
      RECT client;
      ::GetClientRect(grid.hwnd(), &client);
      RECT cell = grid.cell_rect(row, col);
      if (cell.top < 0 || cell.bottom > client.bottom) grid.scroll_to(row);
      cell = grid.cell_rect(row, col);
      click({(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2});
    } else if (verb == "type") {
      for (const char c : rest) send_key(static_cast<WORD>(::VkKeyScanW(c) & 0xFF), c);
    } else if (verb == "key") {
      static const std::map<std::string, std::pair<WORD, wchar_t>> kVirtual = {
          {"Enter", {VK_RETURN, L'\r'}},
          {"Tab", {VK_TAB, L'\t'}},
          {"Backtab", {VK_TAB, L'\t'}},
          {"Escape", {VK_ESCAPE, 0x1B}},
          {"Space", {VK_SPACE, L' '}},
          {"F2", {VK_F2, 0}},
          {"F4", {VK_F4, 0}},
          {"Up", {VK_UP, 0}},
          {"Down", {VK_DOWN, 0}},
          {"Alt+Down", {VK_DOWN, 0}}};
      const auto [key, typed] = kVirtual.at(rest);
      send_key(key, typed, rest == "Backtab", rest == "Alt+Down");
    } else if (verb == "pick") {
      // A click on the item in the open list.
      ASSERT_TRUE(grid.editor() && ::SendMessageW(grid.editor(), CB_GETDROPPEDSTATE, 0, 0))
          << action;
      std::wstring item(rest.begin(), rest.end());
      const LRESULT index =
          ::SendMessageW(grid.editor(), CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                         reinterpret_cast<LPARAM>(item.c_str()));
      COMBOBOXINFO parts{};
      parts.cbSize = sizeof(parts);
      ::GetComboBoxInfo(grid.editor(), &parts);
      RECT at{};
      ::SendMessageW(parts.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&at));
      const LPARAM where = MAKELPARAM((at.left + at.right) / 2, (at.top + at.bottom) / 2);
      ::SendMessageW(parts.hwndList, WM_MOUSEMOVE, 0, where);
      ::SendMessageW(parts.hwndList, WM_LBUTTONDOWN, MK_LBUTTON, where);
      ::SendMessageW(parts.hwndList, WM_LBUTTONUP, 0, where);
    } else if (verb == "wheel") {
      ::SendMessageW(grid.hwnd(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA * std::stoi(rest)), 0);
    } else if (verb == "away") {
      ::SetFocus(other);
    }
    pump();
  }
};

// The same form on the headless controls, worked by whole actions.
struct HeadlessHost {
  std::shared_ptr<Platform> platform = recording_platform();
  headless::HeadlessForm view;
  grid::FormSession session{platform, view.grid, view.title, view.panel, view.form};
  headless::RecordingEvents log{session};
  User user{view};

  HeadlessHost() {
    session.check_values_on_leave(true);
    session.build(kBeamSteel);
    view.connect(&log);
    view.grid.ActiveCell(1, 1);
  }

  void run(const std::string& action) {
    const auto [verb, rest] = split(action);
    if (verb == "click") {
      int row = 0, col = 0;
      std::istringstream(rest) >> row >> col;
      user.click(row, col);
    } else if (verb == "type") {
      user.type(zelkora::Text(rest.begin(), rest.end()));
    } else if (verb == "key") {
      user.key(kKeys.at(rest));
    } else if (verb == "pick") {
      user.pick(zelkora::Text(rest.begin(), rest.end()));
    } else if (verb == "away") {
      user.focus_away();
    }  // the wheel scrolls, raising nothing
  }
};

// Rows of the beam form: 1 the heading 基本信息 (locked), 3 抗震等级 (list),
// 5 纵筋的强度等级 (list), 8 b (S>0), 9 h, 17 通长纵向钢筋 (group, folded: 18,
// 19 hidden), 23 箍筋的肢数 (I>=2).
const struct {
  const char* name;
  std::vector<std::string> actions;
} kScenarios[] = {
    {"a click on another value cell", {"click 9 3", "click 8 3"}},
    {"a click on the active cell edits it, typing and Enter move on",
     {"click 8 3", "click 8 3", "type 300", "key Enter", "type 600", "key Tab", "key Escape"}},
    {"typing starts an edit; Tab and Shift+Tab",
     {"click 9 3", "type 650", "key Tab", "type 30", "key Backtab", "key Backtab"}},
    {"a refused value, left again, then Escape",
     {"click 8 3", "key F2", "type -250", "key Enter", "key Tab", "type 5", "key Escape",
      "click 9 3"}},
    {"a refusal then a click elsewhere",
     {"click 23 3", "type 1", "click 8 3", "type 3", "key Enter"}},
    {"a refused value keeps the focus from another window",
     {"click 8 3", "type -5", "away", "type 0", "key Enter", "away"}},
    {"a list closed without a pick",
     {"click 5 3", "key F2", "key Escape", "click 5 3", "key F2", "key Enter"}},
    {"a list opened and picked from", {"click 5 3", "key F4", "pick HRB335", "key Enter"}},
    {"an open list takes the keys",
     {"click 5 3", "key Alt+Down", "type 3", "key Down", "key Down", "key Up", "key Enter",
      "key Enter", "key F4", "key Escape", "key Down", "key Escape", "click 13 3", "key Alt+Down"}},
    {"a group opened, a member typed; clicks on a heading and past hidden rows",
     {"click 1 2", "click 20 3", "click 17 1", "click 19 3", "type 25", "key Enter"}},
    {"Space folds a heading, typing on it edits nothing",
     {"click 1 2", "key Space", "type 2", "key Space", "click 13 3", "type x", "key Enter"}},
    {"Up and Down through a heading and in an editor",
     {"click 11 3", "key Down", "key Up", "key Up", "key F2", "key Down", "key Escape", "click 9 3",
      "key F2", "click 9 3", "key Up", "type 5", "key Enter"}},
    {"the wheel scrolls, a click hits the row under the mouse",
     {"wheel 2", "click 12 3", "wheel -1", "click 10 3", "type 7", "key Enter"}},
};

class GridHosts : public testing::TestWithParam<std::size_t> {};

TEST_P(GridHosts, SameActionsSameEventsAndValues) {
  init_gui();
  const auto& scenario = kScenarios[GetParam()];
  Win32Host win32;
  HeadlessHost headless;
  win32.log.lines.clear();
  headless.log.lines.clear();
  for (const std::string& action : scenario.actions) {
    win32.run(action);
    headless.run(action);
    win32.log.lines.push_back("-- " + action);
    headless.log.lines.push_back("-- " + action);
    EXPECT_EQ(win32.grid.editing(), headless.user.editing()) << action;
  }
  EXPECT_EQ(joined(win32.log.lines), joined(headless.log.lines)) << scenario.name;

  EXPECT_EQ(state_of(win32.grid, *win32.platform),
            state_of(headless.view.grid, *headless.platform));
}

INSTANTIATE_TEST_SUITE_P(Scenarios, GridHosts,
                         testing::Range<std::size_t>(0, std::size(kScenarios)));

TEST(Win32Grid, TheEditorIsAnEditOrAListOverTheCellItsTextSelected) {
  init_gui();
  Win32Host host;
  host.grid.CellType(9, 3, GridControl::kTextCell);  // the form's value cells are lists
  host.run("click 9 3");
  host.run("key F2");
  wchar_t kind[16] = {};
  ASSERT_TRUE(host.grid.editor());
  ::GetClassNameW(host.grid.editor(), kind, 16);
  EXPECT_STREQ(kind, L"Edit");
  DWORD from = 1, to = 0;
  ::SendMessageW(host.grid.editor(), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                 reinterpret_cast<LPARAM>(&to));
  EXPECT_EQ(from, 0u);
  EXPECT_EQ(static_cast<int>(to), ::GetWindowTextLengthW(host.grid.editor()));
  EXPECT_EQ(::GetFocus(), host.grid.editor());
  EXPECT_EQ(::SendMessageW(host.grid.editor(), EM_GETLIMITTEXT, 0, 0),
            static_cast<LRESULT>(Win32GridControl::kMaxTypedLength));
  RECT editor{}, cell = host.grid.cell_rect(9, 3);
  ::GetWindowRect(host.grid.editor(), &editor);
  ::MapWindowPoints(nullptr, host.grid.hwnd(), reinterpret_cast<POINT*>(&editor), 2);
  EXPECT_TRUE(editor.left >= cell.left && editor.right <= cell.right && editor.top >= cell.top &&
              editor.bottom <= cell.bottom);
  // Caret moves and Delete inside the text reach the cell.
  const zelkora::Text before = host.grid.Text(9, 3);
  Win32Host::send_key(VK_HOME, 0);
  Win32Host::send_key(VK_DELETE, 0);
  EXPECT_EQ(host.grid.Text(9, 3), before.substr(1));
  host.run("key Escape");
  EXPECT_EQ(host.grid.editor(), nullptr);
  EXPECT_EQ(host.grid.Text(9, 3), before) << "Escape puts the text back";
  // A refused value keeps its editor open, with the focus and the text
  // selected whole.
  host.run("click 8 3");
  host.run("type -5");
  host.run("key Enter");
  EXPECT_TRUE(host.grid.ActiveCell() == (CellRef{8, 3}));
  ASSERT_TRUE(host.grid.editor());
  HWND line = ::GetFocus();
  EXPECT_TRUE(::IsChild(host.grid.editor(), line));
  ::SendMessageW(line, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  EXPECT_EQ(from, 0u);
  EXPECT_EQ(static_cast<int>(to), ::GetWindowTextLengthW(line));
  host.run("key Escape");
  host.run("click 5 3");
  host.run("key F4");
  ASSERT_TRUE(host.grid.editor());
  ::GetClassNameW(host.grid.editor(), kind, 16);
  EXPECT_STREQ(kind, L"ComboBox");
  EXPECT_GT(::SendMessageW(host.grid.editor(), CB_GETCOUNT, 0, 0), 1);
}

// ---- Drawing ---------------------------------------------------------------------

// A grid of five rows drawn into memory: 0 a header, 1 a merged heading with
// an open group's picture, 2 hidden (red), 3 the same text plain and bold,
// 4 a green cell, a folded group's picture and a marked cell.
struct Drawn {
  HWND top = ::CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300, nullptr,
                               nullptr, nullptr, nullptr);
  Win32GridControl grid{top};
  std::vector<uint32_t> pixels;
  int width = 0;

  Drawn() {
    grid.Cols(4);
    grid.Rows(5);
    for (const auto& [col, w] : {std::pair{0, 0}, {1, 20}, {2, 100}, {3, 100}})
      grid.ColWidth(col, w);
    grid.AddPicture(expander_picture(true), u"-");
    grid.AddPicture(expander_picture(false), u"+");
    grid.Merge(1, 1, 3);
    grid.Text(1, 2, u"HEAD");
    grid.SetImage(1, 1, u"-");
    grid.RowHeight(2, 0);
    for (int32_t col = 0; col < 4; ++col) grid.BackColor(2, col, rgb(255, 0, 0));
    grid.Text(3, 2, u"WWWW");
    grid.Text(3, 3, u"WWWW");
    grid.FontBold(3, 3, true);
    grid.BackColor(4, 3, rgb(0, 160, 0));
    grid.SetImage(4, 1, u"+");
    grid.mark_cell(4, 2, u"bad");
    ::MoveWindow(grid.hwnd(), 0, 0, 300, 200, FALSE);
    draw();
  }
  ~Drawn() { ::DestroyWindow(top); }

  void draw() {
    RECT client;
    ::GetClientRect(grid.hwnd(), &client);
    width = client.right;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = client.right;
    info.bmiHeader.biHeight = -client.bottom;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC dc = ::CreateCompatibleDC(nullptr);
    HBITMAP bitmap = ::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    ::SendMessageW(grid.hwnd(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    ::GdiFlush();
    const auto* p = static_cast<const uint32_t*>(bits);
    pixels.assign(p, p + client.right * client.bottom);
    ::SelectObject(dc, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(dc);
  }
  COLORREF at(int x, int y) const {
    const uint32_t bgr = pixels[static_cast<std::size_t>(y * width + x)];
    return RGB(bgr >> 16 & 0xFF, bgr >> 8 & 0xFF, bgr & 0xFF);
  }
  // How dark the cell's text is: the sum of the darkness of its pixels.
  long ink(int32_t row, int32_t col) const {
    const RECT cell = grid.cell_rect(row, col);
    long sum = 0;
    for (int y = cell.top + 1; y < cell.bottom - 1; ++y) {
      for (int x = cell.left + 1; x < cell.right - 1; ++x) sum += 255 - GetGValue(at(x, y));
    }
    return sum;
  }
};

TEST(Win32Grid, DrawsHiddenRowsMergedRangesBoldColoursAndPictures) {
  init_gui();
  Drawn drawn;
  const Win32GridControl& grid = drawn.grid;
  // Column 0 and row 2 take no space: nothing red is drawn.
  EXPECT_EQ(grid.cell_rect(0, 1).left, 0);
  EXPECT_EQ(grid.cell_rect(2, 2).bottom - grid.cell_rect(2, 2).top, 0);
  EXPECT_EQ(grid.cell_rect(3, 2).top, grid.cell_rect(1, 2).bottom);
  for (std::size_t i = 0; i < drawn.pixels.size(); ++i)
    ASSERT_NE(drawn.pixels[i] & 0xFFFFFF, 0xFF0000u) << i;
  // The heading is one cell: no grid line between its columns 2 and 3, as
  // there is in the header row.
  const int edge = grid.cell_rect(1, 2).right - 1;
  const auto middle = [&](int32_t row) {
    return (grid.cell_rect(row, 2).top + grid.cell_rect(row, 2).bottom) / 2;
  };
  EXPECT_EQ(drawn.at(edge, middle(0)), RGB(192, 192, 192));
  EXPECT_NE(drawn.at(edge, middle(1)), RGB(192, 192, 192));
  // Bold text is darker than the same text plain.
  EXPECT_GT(drawn.ink(3, 2), 0);
  EXPECT_GT(drawn.ink(3, 3), drawn.ink(3, 2) * 11 / 10);
  // The back colour, and a marked cell on the window colour tinted red.
  const RECT green = grid.cell_rect(4, 3);
  EXPECT_EQ(drawn.at(green.right - 5, middle(4)), RGB(0, 160, 0));
  const COLORREF window = ::GetSysColor(COLOR_WINDOW);
  EXPECT_EQ(
      drawn.at(grid.cell_rect(4, 2).right - 5, middle(4)),
      RGB((GetRValue(window) * 4 + 255) / 5, GetGValue(window) * 4 / 5, GetBValue(window) * 4 / 5));
  // The fold glyphs: a grey box, a bar across, and down only in "+".
  for (const auto& [row, expanded] : {std::pair{1, true}, {4, false}}) {
    const RECT cell = grid.cell_rect(row, 1);
    const int x = cell.left + 2;
    const int y = cell.top + (cell.bottom - cell.top - 9) / 2;
    EXPECT_EQ(drawn.at(x, y), RGB(128, 128, 128)) << row;
    EXPECT_EQ(drawn.at(x + 4, y + 4), RGB(0, 0, 0)) << row;
    EXPECT_EQ(drawn.at(x + 4, y + 2), expanded ? RGB(255, 255, 255) : RGB(0, 0, 0)) << row;
  }
}

TEST(Win32Grid, DrawsNothingWithAutoRedrawOffUntilRefreshed) {
  init_gui();
  Drawn drawn;
  Win32GridControl& grid = drawn.grid;
  ::ShowWindow(drawn.top, SW_SHOW);
  pump();
  ::ValidateRect(grid.hwnd(), nullptr);
  EXPECT_FALSE(::GetUpdateRect(grid.hwnd(), nullptr, FALSE));
  grid.AutoRedraw(false);
  grid.Text(3, 2, u"x");
  grid.RowHeight(3, 40);
  EXPECT_FALSE(::GetUpdateRect(grid.hwnd(), nullptr, FALSE));
  grid.AutoRedraw(true);
  grid.Refresh();
  EXPECT_TRUE(::GetUpdateRect(grid.hwnd(), nullptr, FALSE));
  EXPECT_THROW(grid.Text(5, 0), Fault);
}

}  // namespace
}  // namespace zelkora::platform::win32
