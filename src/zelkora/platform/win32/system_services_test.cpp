// Tests of the Windows services of the user's system: the environment, the
// number locale, the message box, the program folder, and the INI files
// against the system's own profile calls.
#include "zelkora/platform/win32/system_services.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/disk_ini_files.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/scratch_folder_test_support.h"
#include "zelkora/platform/win32/wide.h"
#include "zelkora/platform/win32/windows_api.h"
// After <windows.h>, whose types it uses.
#include <htmlhelp.h>

namespace zelkora::platform::win32 {
namespace {

EnvLookup fake_env(std::map<std::string, std::string> vars) {
  return [vars](const char* name) -> std::optional<std::string> {
    auto it = vars.find(name);
    if (it == vars.end()) return std::nullopt;
    return it->second;
  };
}

// A run of the suite names the system code page it means to test; a wrong
// one (the host lacks the locale Wine takes it from) fails here rather than
// testing the other code page twice.
TEST(Win32CodePage, IsTheOneTheRunAskedFor) {
  const std::optional<std::string> wanted = process_environment()("ZELKORA_TEST_CODE_PAGE");
  if (!wanted) GTEST_SKIP() << "no code page asked for";
  EXPECT_EQ(std::to_string(::GetACP()), *wanted);
}

// Chinese values survive whatever the ANSI code page: the environment is
// read in UTF-16.
TEST(Win32Environment, IsReadInUtf16AsItIsNow) {
  ASSERT_TRUE(
      ::SetEnvironmentVariableW(L"ZELKORA_TEST_VARIABLE", L"\x7ED3\x6784 D:\\\x9879\x76EE"));
  EXPECT_EQ(process_environment()("ZELKORA_TEST_VARIABLE"), "结构 D:\\项目");
  ASSERT_TRUE(::SetEnvironmentVariableW(L"ZELKORA_TEST_VARIABLE", L""));
  EXPECT_EQ(process_environment()("ZELKORA_TEST_VARIABLE"), "");
  ASSERT_TRUE(::SetEnvironmentVariableW(L"ZELKORA_TEST_VARIABLE", nullptr));
  EXPECT_EQ(process_environment()("ZELKORA_TEST_VARIABLE"), std::nullopt);
  const std::wstring long_value(1000, L'x');
  ASSERT_TRUE(::SetEnvironmentVariableW(L"ZELKORA_TEST_VARIABLE", long_value.c_str()));
  EXPECT_EQ(process_environment()("ZELKORA_TEST_VARIABLE"), std::string(1000, 'x'));
  ::SetEnvironmentVariableW(L"ZELKORA_TEST_VARIABLE", nullptr);
}

TEST(Win32Environment, ProgramFolderHoldsTheProgram) {
  const std::filesystem::path folder = program_folder();
  EXPECT_TRUE(std::filesystem::is_regular_file(folder / "zelkora_tests.exe")) << folder;
}

// The user's regional settings, changed as the control panel changes them,
// and the overrides, which take precedence.
TEST(Win32NumberLocale, FromTheRegionalSettingsAndTheOverrides) {
  const auto get = [](LCTYPE type) {
    wchar_t value[16] = {};
    ::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, value, 16);
    return std::wstring(value);
  };
  const auto set = [](LCTYPE type, const std::wstring& value) {
    return ::SetLocaleInfoW(LOCALE_USER_DEFAULT, type, value.c_str()) != 0;
  };
  const std::wstring decimal = get(LOCALE_SDECIMAL), thousand = get(LOCALE_STHOUSAND),
                     grouping = get(LOCALE_SGROUPING);

  ASSERT_TRUE(set(LOCALE_SDECIMAL, L",") && set(LOCALE_STHOUSAND, L".") &&
              set(LOCALE_SGROUPING, L"3;0"));
  const SystemNumberLocale comma(fake_env({}));
  set(LOCALE_SGROUPING, L"0");
  const SystemNumberLocale ungrouped(fake_env({}));
  const SystemNumberLocale overridden(
      fake_env({{"ZELKORA_DECIMAL_SYMBOL", "."}, {"ZELKORA_GROUPING_SYMBOL", "\xE2\x80\xAF"}}));
  set(LOCALE_SDECIMAL, decimal);
  set(LOCALE_STHOUSAND, thousand);
  set(LOCALE_SGROUPING, grouping);

  EXPECT_EQ(comma.decimal_symbol(), u",");
  EXPECT_EQ(comma.grouping_symbol(), u".");
  EXPECT_EQ(ungrouped.grouping_symbol(), u"");
  EXPECT_EQ(overridden.decimal_symbol(), u".");
  EXPECT_EQ(overridden.grouping_symbol(), u"\u202F");
  EXPECT_EQ(SystemNumberLocale(fake_env({})).decimal_symbol(), from_wide(decimal));
}

// What a box of this process showed, read from its window.
struct ShownBox {
  std::wstring title;
  std::vector<std::wstring> texts;      // of the static controls
  std::map<int, std::wstring> buttons;  // by command id
};

// Waits for the message box titled `title`, reads it and answers with
// `button`. Runs on its own thread while the box is modal on the test's.
ShownBox answer_box(const std::wstring& title, int button) {
  ShownBox shown;
  HWND box = nullptr;
  for (int i = 0; i < 500 && !box; ++i) {
    box = ::FindWindowW(L"#32770", title.c_str());
    if (!box) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  if (!box) return shown;
  shown.title = title;
  ::EnumChildWindows(
      box,
      [](HWND child, LPARAM data) -> BOOL {
        auto& s = *reinterpret_cast<ShownBox*>(data);
        wchar_t text[512] = {};
        ::GetWindowTextW(child, text, 512);
        wchar_t kind[32] = {};
        ::GetClassNameW(child, kind, 32);
        if (std::wstring(kind) == L"Button") {
          s.buttons[::GetDlgCtrlID(child)] = text;
        } else if (text[0]) {
          s.texts.push_back(text);
        }
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&shown));
  ::PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
  return shown;
}

bool can_show_windows() {
  const HWND probe =
      ::CreateWindowW(L"STATIC", L"", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  if (probe) ::DestroyWindow(probe);
  return probe != nullptr;
}

TEST(Win32MessageBox, WarningAndQuestionAreTheSystemsModalBoxes) {
  // A run prepared for it says so (scripts/windows-test.sh); elsewhere a
  // system without a display skips the test.
  if (!can_show_windows()) {
    ASSERT_FALSE(process_environment()("ZELKORA_TEST_BOXES")) << "the boxes could not be shown";
    GTEST_SKIP() << "no window station: a box cannot be shown here";
  }
  Win32MessageBox messages;

  ShownBox warning;
  std::thread reader([&] { warning = answer_box(L"\x6881\x914D\x7B4B", IDOK); });
  messages.warning(u"梁宽 b 必须大于 0。", u"梁配筋");
  reader.join();
  EXPECT_EQ(warning.title, L"\x6881\x914D\x7B4B");
  EXPECT_EQ(warning.texts,
            std::vector<std::wstring>{L"\x6881\x5BBD b \x5FC5\x987B\x5927\x4E8E 0\x3002"});
  EXPECT_EQ(warning.buttons.size(), 1u);
  EXPECT_TRUE(warning.buttons.count(IDOK));

  const std::wstring yes =
      PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_CHINESE ? L"\x662F(&Y)" : L"&Yes";
  for (const auto& [button, answer] :
       {std::pair{IDOK, MessageBox::kYes}, std::pair{IDCANCEL, MessageBox::kCancel}}) {
    ShownBox question;
    std::thread asker([&, button = button] { question = answer_box(L"Defaults", button); });
    EXPECT_EQ(messages.question(u"Load the defaults?", u"Defaults"), answer);
    asker.join();
    EXPECT_EQ(question.texts, std::vector<std::wstring>{L"Load the defaults?"});
    ASSERT_EQ(question.buttons.size(), 2u);
    EXPECT_EQ(question.buttons[IDOK], yes);
    EXPECT_TRUE(question.buttons.count(IDCANCEL));
  }
}

// The suite's help file opens in the system's viewer at a topic; a missing
// one does not. (testdata/Zelkora.chm is made from the pages beside it by a
// help compiler: `chmcmd Zelkora.hhp`.)
TEST(Win32Help, TheSuiteHelpFileOpensAtATopic) {
  if (!can_show_windows()) GTEST_SKIP() << "no window station: the help cannot be shown here";
  test_support::ScratchFolder dir("zk-help");
  std::filesystem::copy_file(
      std::filesystem::path(ZK_SOURCE_DIR) / "src/zelkora/platform/win32/testdata/Zelkora.chm",
      dir / "Zelkora.chm");
  auto p = Platform::headless();
  p->suite = std::make_shared<FolderSuiteServices>(std::vector{dir.path()});
  p->help = std::make_shared<HtmlHelpViewer>();
  EXPECT_TRUE(clsCharacter(p).bShowHelp(u"beam.htm"));
  ::HtmlHelpW(nullptr, nullptr, HH_CLOSE_ALL, 0);
  EXPECT_FALSE(HtmlHelpViewer().show(dir.text("missing.chm"), u""));
}

// The decision behind the INI files: the system's profile calls convert a
// file with the system's ANSI code page, so a GBK file reads right only on a
// Chinese system. The library reads it right on both, and on a Chinese
// system reads every case exactly as the system does.
TEST(Win32IniFiles, GbkFilesReadRightWhateverTheCodePage) {
  test_support::ScratchFolder dir("zk-ini");
  const std::string gbk = codepage::to_ansi(
      u"; 注释\r\n[结构]\r\n名称 = 钢筋混凝土 \r\nGrade=\"HRB400\"\r\nname=second\r\n"
      u"[Options]\r\nLang=2\r\nEmpty=\r\nNoValue\r\n  Indented =  a b  \r\n"
      u"[ Spaced ]\r\nk=v\r\n[List]\r\n1=图例一\r\n2=" +
      Text(600, u'长') + u"\r\n");
  dir.put("ZK_Form.INI", gbk);
  const std::wstring file = dir.path() / "ZK_Form.INI";
  const auto system_read = [&](TextView section, TextView key, TextView default_value) {
    wchar_t value[512] = {};
    const DWORD n =
        ::GetPrivateProfileStringW(wide(section).c_str(), wide(key).c_str(),
                                   wide(default_value).c_str(), value, 512, file.c_str());
    return from_wide(std::wstring_view(value, n));
  };
  DiskIniFiles ini;
  const struct {
    TextView section, key, default_value;
    Text expected;
  } cases[] = {
      {u"结构", u"名称", u"", u"钢筋混凝土"}, {u"结构", u"grade", u"", u"HRB400"},
      {u"结构", u"NAME", u"", u"second"},     {u"options", u"LANG", u"", u"2"},
      {u"Options", u"Empty", u"d", u""},      {u"Options", u"NoValue", u"d", u"d"},
      {u"Options", u"Indented", u"", u"a b"}, {u"Options", u"missing", u" d ", u" d"},
      {u"Spaced", u"k", u"", u"v"},           {u"List", u"1", u"", u"图例一"},
      {u"nosuch", u"k", u"x", u"x"},
  };
  const bool chinese_system = ::GetACP() == 936;
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.section) + "/" + to_utf8(c.key));
    EXPECT_EQ(ini.read(c.section, c.key, c.default_value, text_from_path(file)), c.expected);
    if (chinese_system) {
      EXPECT_EQ(system_read(c.section, c.key, c.default_value), c.expected);
    }
  }
  // The read buffer is the 512 bytes of the classic ANSI call, cut between
  // characters (the system's wide call counts 512 characters instead).
  EXPECT_EQ(ini.read(u"List", u"2", u"", text_from_path(file)), Text(255, u'长'));
  if (!chinese_system) {
    EXPECT_NE(system_read(u"结构", u"名称", u""), u"钢筋混凝土")
        << "the system read GBK right with code page " << ::GetACP();
  }
}

}  // namespace
}  // namespace zelkora::platform::win32
