// The title box over the rich-edit control (win32_rich_text.h).
#include "zelkora/platform/win32gui/win32_rich_text.h"

#include <commctrl.h>
#include <richedit.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "zelkora/platform/win32gui/win32_controls.h"

namespace zelkora::platform::win32 {

namespace {

constexpr UINT_PTR kDpiSubclass = 0x5A4B5254;

// ---- Positions: the control keeps "\r" for a break, the interface "\r\n".

bool break_at(const zelkora::Text& text, std::size_t i) {
  return text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
}

// The interface position of the control's position `at` in `text`.
int32_t outer_position(const zelkora::Text& text, LONG at) {
  std::size_t i = 0;
  for (LONG k = 0; k < at && i < text.size(); ++k) i += break_at(text, i) ? 2 : 1;
  return static_cast<int32_t>(i);
}

// The control's position of the interface position `at` (inside a break:
// the break's start).
LONG inner_position(const zelkora::Text& text, int32_t at) {
  LONG k = 0;
  for (std::size_t i = 0;; ++k) {
    const std::size_t next = i + (i < text.size() && break_at(text, i) ? 2 : 1);
    if (i >= text.size() || next > static_cast<std::size_t>(at)) return k;
    i = next;
  }
}

// ---- Streams ---------------------------------------------------------------

struct Source {
  const std::string& bytes;
  std::size_t at = 0;
};

DWORD CALLBACK read_source(DWORD_PTR cookie, LPBYTE buffer, LONG wanted, LONG* given) {
  auto& source = *reinterpret_cast<Source*>(cookie);
  const auto n = std::min(static_cast<std::size_t>(wanted), source.bytes.size() - source.at);
  std::memcpy(buffer, source.bytes.data() + source.at, n);
  source.at += n;
  *given = static_cast<LONG>(n);
  return 0;
}

DWORD CALLBACK write_sink(DWORD_PTR cookie, LPBYTE buffer, LONG count, LONG* taken) {
  reinterpret_cast<std::string*>(cookie)->append(reinterpret_cast<const char*>(buffer),
                                                 static_cast<std::size_t>(count));
  *taken = count;
  return 0;
}

void stream_in(HWND box, WPARAM format, const std::string& bytes) {
  Source source{bytes};
  EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&source), 0, read_source};
  ::SendMessageW(box, EM_STREAMIN, format, reinterpret_cast<LPARAM>(&stream));
}

std::string stream_out(HWND box, WPARAM format) {
  std::string bytes;
  EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&bytes), 0, write_sink};
  ::SendMessageW(box, EM_STREAMOUT, format, reinterpret_cast<LPARAM>(&stream));
  while (!bytes.empty() && bytes.back() == '\0') bytes.pop_back();  // Wine ends with one
  return bytes;
}

// RTF as the control reads it: bytes, each character beyond ASCII as a
// "\uN" of a group of its own (so that no fallback character follows it,
// whatever "\uc" the text set).
std::string rtf_bytes(TextView rtf) {
  std::string bytes;
  bytes.reserve(rtf.size());
  for (const char16_t c : rtf) {
    if (c < 0x80) {
      bytes += static_cast<char>(c);
    } else {
      bytes += "{\\uc0\\u" + std::to_string(static_cast<int16_t>(c)) + "}";
    }
  }
  return bytes;
}

// The control's RTF as text: a byte beyond ASCII (a character of the code
// page it names) as "\'hh".
zelkora::Text rtf_text(const std::string& bytes) {
  static constexpr char16_t kHex[] = u"0123456789abcdef";
  zelkora::Text text;
  text.reserve(bytes.size());
  for (const char byte : bytes) {
    const auto b = static_cast<unsigned char>(byte);
    if (b < 0x80) {
      text += static_cast<char16_t>(b);
    } else {
      text += u"\\'";
      text += kHex[b >> 4];
      text += kHex[b & 15];
    }
  }
  return text;
}

CHARFORMAT2W char_format(DWORD mask) {
  CHARFORMAT2W format{};
  format.cbSize = sizeof format;
  format.dwMask = mask;
  return format;
}

// The colour of text: the window text colour as the control's automatic
// colour, which follows the user's scheme.
CHARFORMAT2W coloured(uint32_t colour, DWORD mask = 0) {
  CHARFORMAT2W format = char_format(mask | CFM_COLOR);
  if (colour == kColourWindowText) {
    format.dwEffects = CFE_AUTOCOLOR;
  } else {
    format.crTextColor = colour_ref(colour);
  }
  return format;
}

void set_format(HWND box, WPARAM where, const CHARFORMAT2W& format) {
  ::SendMessageW(box, EM_SETCHARFORMAT, where, reinterpret_cast<LPARAM>(&format));
}

}  // namespace

RichTextBox::RichTextBox(HWND parent) {
  init_gui();
  adopt(::CreateWindowExW(
      WS_EX_CLIENTEDGE, MSFTEDIT_CLASS, L"",
      WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_SAVESEL,
      0, 0, 200, 60, parent, nullptr, ::GetModuleHandleW(nullptr), nullptr));
  HWND box = hwnd();
  ::SendMessageW(box, EM_SETBKGNDCOLOR, TRUE, 0);  // the window colour of the scheme
  ::SendMessageW(box, EM_EXLIMITTEXT, 0, 0x7FFFFFFF);
  const LOGFONTW font = message_font(96);
  face_ = font.lfFaceName;
  message_points_ = static_cast<float>(std::abs(font.lfHeight)) * 72 / 96;
  CHARFORMAT2W plain = coloured(kColourWindowText, CFM_FACE | CFM_SIZE | CFM_BOLD);
  plain.yHeight = static_cast<LONG>(message_points_ * 20);
  face_.copy(plain.szFaceName, LF_FACESIZE - 1);
  set_format(box, SCF_DEFAULT, plain);

  tool_tip_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                                CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, box, nullptr,
                                ::GetModuleHandleW(nullptr), nullptr);
  TOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = parent;
  tool.uId = reinterpret_cast<UINT_PTR>(box);
  tool.lpszText = const_cast<wchar_t*>(L"");
  ::SendMessageW(tool_tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  ::SendMessageW(tool_tip_, TTM_SETMAXTIPWIDTH, 0, 400);  // help text goes over lines

  ::SetWindowSubclass(box, on_message, kDpiSubclass, reinterpret_cast<DWORD_PTR>(this));
  follow_dpi(dpi_of(box));
}

RichTextBox::~RichTextBox() {
  ::RemoveWindowSubclass(hwnd(), on_message, kDpiSubclass);
  if (tool_tip_) ::DestroyWindow(tool_tip_);
}

// ---- Text ------------------------------------------------------------------

zelkora::Text RichTextBox::Text() const {
  GETTEXTLENGTHEX length{GTL_USECRLF | GTL_PRECISE | GTL_NUMCHARS, 1200};
  const LRESULT units =
      ::SendMessageW(hwnd(), EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&length), 0);
  if (units <= 0) return {};
  std::wstring buffer(static_cast<std::size_t>(units) + 1, L'\0');
  GETTEXTEX get{static_cast<DWORD>(buffer.size() * sizeof(wchar_t)), GT_USECRLF, 1200, nullptr,
                nullptr};
  const LRESULT got = ::SendMessageW(hwnd(), EM_GETTEXTEX, reinterpret_cast<WPARAM>(&get),
                                     reinterpret_cast<LPARAM>(buffer.data()));
  return from_wide(buffer.data(), static_cast<std::size_t>(std::max<LRESULT>(got, 0)));
}

void RichTextBox::Text(TextView text) {
  // A stream of plain text: never read as RTF, whatever it starts with.
  const std::string bytes(reinterpret_cast<const char*>(text.data()), text.size() * 2);
  stream_in(hwnd(), SF_TEXT | SF_UNICODE, bytes);
  CHARFORMAT2W plain =
      coloured(kColourWindowText, CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE | CFM_STRIKEOUT | CFM_FACE);
  face_.copy(plain.szFaceName, LF_FACESIZE - 1);
  set_format(hwnd(), SCF_ALL, plain);
  apply_font();
  select(zelkora::Text(), 0, 0);
}

zelkora::Text RichTextBox::TextRTF() const {
  // Asked for UTF-8, the control writes every character as it is ("{\\urtf"):
  // in the system's code page it would write a character the code page
  // lacks as its nearest look-alike ("（" as "(" in 1252).
  std::string bytes = stream_out(hwnd(), (CP_UTF8 << 16) | SF_USECODEPAGE | SF_RTF);
  if (bytes.rfind("{\\urtf", 0) != 0) return rtf_text(bytes);
  std::size_t end = 6;
  while (end < bytes.size() && bytes[end] >= '0' && bytes[end] <= '9') ++end;
  bytes.replace(0, end, "{\\rtf1");
  return from_utf8(bytes);
}

void RichTextBox::TextRTF(TextView rtf) {
  if (trim_left(rtf).substr(0, 5) != u"{\\rtf") {  // plain text, as the control takes it
    Text(rtf);
    return;
  }
  stream_in(hwnd(), SF_RTF, rtf_bytes(rtf));
  apply_font();
  select(zelkora::Text(), 0, 0);
}

// ---- Selection -------------------------------------------------------------

RichTextBox::Selection RichTextBox::selection(const zelkora::Text& text) const {
  CHARRANGE range{};
  ::SendMessageW(hwnd(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
  return {outer_position(text, range.cpMin), outer_position(text, range.cpMax)};
}

void RichTextBox::select(const zelkora::Text& text, int32_t start, int32_t end) {
  CHARRANGE range{inner_position(text, start), inner_position(text, end)};
  ::SendMessageW(hwnd(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

int32_t RichTextBox::SelStart() const { return selection(Text()).start; }

void RichTextBox::SelStart(int32_t start) {
  const zelkora::Text text = Text();
  const int32_t at = std::clamp(start, 0, static_cast<int32_t>(text.size()));
  select(text, at, at);
}

int32_t RichTextBox::SelLength() const {
  const Selection s = selection(Text());
  return s.end - s.start;
}

void RichTextBox::SelLength(int32_t length) {
  const zelkora::Text text = Text();
  const int32_t start = selection(text).start;
  select(text, start, start + std::clamp(length, 0, static_cast<int32_t>(text.size()) - start));
}

zelkora::Text RichTextBox::SelText() const {
  const zelkora::Text text = Text();
  const Selection s = selection(text);
  return text.substr(static_cast<std::size_t>(s.start), static_cast<std::size_t>(s.end - s.start));
}

void RichTextBox::SelText(TextView text) {
  // The selection takes the colour first: the text replacing it, or put at
  // the cursor, is written in the selection's format.
  CHARFORMAT2W format = coloured(sel_colour_, CFM_BOLD);
  set_format(hwnd(), SCF_SELECTION, format);
  const std::wstring wide = to_wide(text);
  ::SendMessageW(hwnd(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(wide.c_str()));
}

void RichTextBox::SelColor(uint32_t colour) {
  sel_colour_ = colour;
  set_format(hwnd(), SCF_SELECTION, coloured(colour));
}

// ---- Tool tip and font -----------------------------------------------------

void RichTextBox::ToolTipText(TextView text) {
  tool_tip_text_ = text;
  std::wstring wide = to_wide(text);
  TOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.hwnd = ::GetParent(hwnd());
  tool.uId = reinterpret_cast<UINT_PTR>(hwnd());
  tool.lpszText = wide.data();
  ::SendMessageW(tool_tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

void RichTextBox::FontSize(float size) {
  font_size_ = size;
  apply_font();
}

void RichTextBox::apply_font() {
  CHARFORMAT2W format = char_format(CFM_SIZE);
  format.yHeight = static_cast<LONG>((font_size_ > 0 ? font_size_ : message_points_) * 20 + 0.5f);
  set_format(hwnd(), SCF_ALL, format);
  set_format(hwnd(), SCF_DEFAULT, format);
}

// The control draws points at the system's DPI: on another monitor's, it
// zooms.
void RichTextBox::follow_dpi(int dpi) {
  HDC screen = ::GetDC(nullptr);
  const int system_dpi = screen ? ::GetDeviceCaps(screen, LOGPIXELSY) : 96;
  if (screen) ::ReleaseDC(nullptr, screen);
  const bool same = dpi == system_dpi;
  ::SendMessageW(hwnd(), EM_SETZOOM, same ? 0 : static_cast<WPARAM>(dpi),
                 same ? 0 : static_cast<LPARAM>(system_dpi));
}

LRESULT CALLBACK RichTextBox::on_message(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                                         DWORD_PTR self) {
  auto& box = *reinterpret_cast<RichTextBox*>(self);
  if (message == WM_DPICHANGED) box.follow_dpi(HIWORD(w));
  if (message == WM_DPICHANGED_AFTERPARENT) box.follow_dpi(dpi_of(window));
  return ::DefSubclassProc(window, message, w, l);
}

}  // namespace zelkora::platform::win32
