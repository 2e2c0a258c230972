// The report pane of the Windows host.
#include "win32desk/report_pane.h"

#include "zelkora/platform/win32/windows_api.h"  // before the system's other headers

#include <commdlg.h>
#include <richedit.h>
#include <algorithm>

#include "win32desk/frame_window.h"
#include "zelkora/platform/win32gui/rich_edit_pages.h"
#include "zelkora/platform/win32gui/win32_controls.h"

namespace zelkora::win32desk {

HWND make_report_pane(HWND parent) {
  // No font of the window's: the RTF names every font, and a window font
  // given to a rich-edit control would replace them all.
  HWND pane = ::CreateWindowExW(
      WS_EX_CLIENTEDGE, MSFTEDIT_CLASS, L"",
      WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP,
      0, 0, 10, 10, parent, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  ::SendMessageW(pane, EM_SETTARGETDEVICE, 0, 0);  // lines wrap at the pane's width
  return pane;
}

namespace {

struct Source {
  const std::string* bytes;
  std::size_t at = 0;
};

DWORD CALLBACK read_source(DWORD_PTR cookie, LPBYTE buffer, LONG wanted, LONG* got) {
  auto* source = reinterpret_cast<Source*>(cookie);
  const std::size_t left = source->bytes->size() - source->at;
  const std::size_t n = std::min<std::size_t>(left, static_cast<std::size_t>(wanted));
  std::copy_n(source->bytes->data() + source->at, n, buffer);
  source->at += n;
  *got = static_cast<LONG>(n);
  return 0;
}

}  // namespace

void show_rtf(HWND pane, const std::string& rtf, TextView notice) {
  ::SendMessageW(pane, WM_SETREDRAW, FALSE, 0);
  ::SetWindowTextW(pane, L"");
  if (!rtf.empty()) {
    Source source{&rtf};
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&source), 0, &read_source};
    ::SendMessageW(pane, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
  }
  if (!notice.empty()) {
    ::SendMessageW(pane, EM_SETSEL, 0, 0);
    CHARFORMAT2W red{};
    red.cbSize = sizeof(red);
    red.dwMask = CFM_COLOR | CFM_BOLD;
    red.dwEffects = CFE_BOLD;
    red.crTextColor = RGB(200, 0, 0);
    ::SendMessageW(pane, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&red));
    const std::wstring line = platform::win32::to_wide(notice) + L"\r\n";
    ::SendMessageW(pane, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(line.c_str()));
  }
  ::SendMessageW(pane, EM_SETSEL, 0, 0);
  ::SendMessageW(pane, WM_SETREDRAW, TRUE, 0);
  ::InvalidateRect(pane, nullptr, TRUE);
}

int print_pane(HWND pane, HWND owner, TextView document_name) {
  PRINTDLGW dialog{};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = owner;
  dialog.Flags = PD_RETURNDC | PD_NOPAGENUMS | PD_NOSELECTION;
  if (!::PrintDlgW(&dialog) || !dialog.hDC) return 0;
  HDC dc = dialog.hDC;
  const std::wstring name = platform::win32::to_wide(document_name);
  DOCINFOW info{};
  info.cbSize = sizeof(info);
  info.lpszDocName = name.c_str();
  int pages = 0;
  if (::StartDocW(dc, &info) > 0) {
    const SIZE page = platform::win32::page_twips(dc);
    for (const CHARRANGE& chars : platform::win32::lay_out_pages(pane, dc, page)) {
      if (::StartPage(dc) <= 0) break;
      platform::win32::draw_page(pane, dc, dc, page, chars);
      ::EndPage(dc);
      ++pages;
    }
    ::EndDoc(dc);
  }
  ::DeleteDC(dc);
  if (dialog.hDevMode) ::GlobalFree(dialog.hDevMode);
  if (dialog.hDevNames) ::GlobalFree(dialog.hDevNames);
  return pages;
}

bool write_file(TextView file, const std::string& bytes, Text* why) {
  const std::wstring path = platform::win32::to_wide(file);
  HANDLE out = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD written = 0;
  const bool ok =
      out != INVALID_HANDLE_VALUE &&
      ::WriteFile(out, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
      written == bytes.size();
  const DWORD error = ::GetLastError();
  if (out != INVALID_HANDLE_VALUE) ::CloseHandle(out);
  if (!ok && why) {
    wchar_t* message = nullptr;
    ::FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, error, 0, reinterpret_cast<wchar_t*>(&message), 0, nullptr);
    *why = message ? trim(platform::win32::from_wide(message, wcslen(message))) : Text(u"?");
    if (message) ::LocalFree(message);
  }
  return ok;
}

}  // namespace zelkora::win32desk
