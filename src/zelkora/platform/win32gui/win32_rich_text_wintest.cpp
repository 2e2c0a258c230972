#include "zelkora/platform/win32gui/win32_rich_text.h"

#include <commctrl.h>
#include <gtest/gtest.h>
#include <richedit.h>

#include <functional>

#include "zelkora/document/writers.h"
#include "zelkora/platform/headless/headless_grid.h"
#include "zelkora/platform/win32gui/controls_wintest_support.h"
#include "zelkora/platform/win32gui/win32_controls.h"

namespace zelkora::platform::win32 {
namespace {

using headless::MemoryRichTextBox;

// A character's format: "B" bold or "-", then the colour the system draws.
std::string format_code(bool bold, COLORREF colour) {
  std::string code = bold ? "B" : "-";
  code += std::to_string(colour);
  code += ' ';
  return code;
}

// The text and the formats of its characters, line breaks left out.
std::string contents_of(const MemoryRichTextBox& box) {
  std::string out = u8(box.Text()) + "|";
  for (std::size_t i = 0; i < box.Text().size(); ++i) {
    const MemoryRichTextBox::Format f = box.formats()[i];
    if (box.Text()[i] != u'\r' && box.Text()[i] != u'\n')
      out += format_code(f.bold, colour_ref(f.colour));
  }
  return out;
}

// The same, as the control keeps them (it moves the selection).
std::string contents_of(const RichTextBox& box) {
  std::string out = u8(box.Text()) + "|";
  const HWND control = box.hwnd();
  wchar_t text[256] = {};
  GETTEXTEX get{sizeof text, GT_DEFAULT, 1200, nullptr, nullptr};
  const auto length = ::SendMessageW(control, EM_GETTEXTEX, reinterpret_cast<WPARAM>(&get),
                                     reinterpret_cast<LPARAM>(text));
  for (LONG at = 0; at < length; ++at) {
    if (text[at] == L'\r') continue;
    CHARRANGE one{at, at + 1};
    ::SendMessageW(control, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&one));
    CHARFORMAT2W f{};
    f.cbSize = sizeof f;
    ::SendMessageW(control, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&f));
    const bool automatic = (f.dwEffects & CFE_AUTOCOLOR) != 0;
    out += format_code((f.dwEffects & CFE_BOLD) != 0,
                       automatic ? ::GetSysColor(COLOR_WINDOWTEXT) : f.crTextColor);
  }
  return out;
}

// Start, length and text of the selection, and its colour.
std::string selection_of(const platform::RichTextBox& box) {
  std::string out;
  for (const std::string& part : {std::to_string(box.SelStart()), std::to_string(box.SelLength()),
                                  u8(box.SelText()), std::to_string(box.SelColor())}) {
    out.append(part).append(" | ");
  }
  return out;
}

constexpr char16_t kCaptionRtf[] = u"{\\rtf1 \\b Caption\\b0 \\par help}";

// The title as the grid writes it: markers in the box's colour, turned
// into bold switches in the box's own RTF.
void write_title(platform::RichTextBox& box) {
  box.Text(u"");
  box.SelColor(kColourButtonText);
  box.SelText(u"_bb(纵筋直径 d)bb_\r\nd——纵筋直径。");
  box.TextRTF(replace_all(replace_all(box.TextRTF(), u"_bb(", u"\\b "), u")bb_", u"\\b0 "));
  box.SelStart(0);
}

// A paragraph of a report as the library's document writer puts it.
zelkora::Text report_rtf() {
  document::Document report;
  document::Paragraph line;
  line.runs = {{u"纵筋直径 ", true}, {u"d = 20 mm"}};
  report.blocks.emplace_back(line);
  return from_utf8(document::write_rtf(report));
}

TEST(RichTextBox, AnswersAsTheInMemoryBox) {
  const struct {
    const char* what;
    std::function<void(platform::RichTextBox&)> calls;
    // The RTF ends in "\\par", which the control takes for its own last
    // paragraph mark: no break at the end.
    bool last_par = false;
  } cases[] = {
      {"a bold caption from RTF", [](platform::RichTextBox& b) { b.TextRTF(kCaptionRtf); }},
      {"text put at the end in red, not bold",
       [](platform::RichTextBox& b) {
         b.TextRTF(kCaptionRtf);
         b.SelStart(1000);
         b.SelColor(rgb(255, 0, 0));
         b.SelText(u" (kN)\r\n荷载");
       }},
      {"the bold caption replaced in gray text",
       [](platform::RichTextBox& b) {
         b.TextRTF(kCaptionRtf);
         b.SelStart(0);
         b.SelLength(7);
         b.SelColor(kColourGrayText);
         b.SelText(u"标题");
       }},
      {"a selection coloured in place",
       [](platform::RichTextBox& b) {
         b.Text(u"abc");
         b.SelStart(1);
         b.SelLength(2);
         b.SelColor(rgb(0, 0, 255));
       }},
      {"plain text after rich text",
       [](platform::RichTextBox& b) {
         b.TextRTF(kCaptionRtf);
         b.Text(u"{\\rtf1 x}");
       }},
      {"plain text given as RTF", [](platform::RichTextBox& b) { b.TextRTF(u"钢筋\r\nHRB400"); }},
      {"RTF with characters beyond ASCII",
       [](platform::RichTextBox& b) { b.TextRTF(u"{\\rtf1\\uc2 \\b 标题\\b0\\par 说明（mm）}"); }},
      {"the document writer's RTF", [](platform::RichTextBox& b) { b.TextRTF(report_rtf()); },
       true},
      {"the title as the grid writes it", write_title},
  };
  TestWindow window;
  for (const auto& c : cases) {
    MemoryRichTextBox memory;
    RichTextBox native(window.hwnd());
    c.calls(memory);
    c.calls(native);
    EXPECT_EQ(selection_of(native), selection_of(memory)) << c.what;
    std::string expected = contents_of(memory);
    if (c.last_par) expected.erase(expected.find("\r\n|"), 2);
    EXPECT_EQ(contents_of(native), expected) << c.what;
    RichTextBox copy(window.hwnd());
    copy.TextRTF(native.TextRTF());
    EXPECT_EQ(contents_of(copy), expected) << c.what << ", through TextRTF:\n"
                                           << u8(native.TextRTF());
  }
}

// The selection in units of the interface, kept within the text.
TEST(RichTextBox, SelectsAsTheInMemoryBox) {
  const struct { int32_t start, length; } cases[] = {{6, 4}, {1, 50}, {10, 3}, {-3, -1}, {8, 0}};
  TestWindow window;
  for (const auto& c : cases) {
    MemoryRichTextBox memory;
    RichTextBox native(window.hwnd());
    for (platform::RichTextBox* box : {static_cast<platform::RichTextBox*>(&memory),
                                       static_cast<platform::RichTextBox*>(&native)}) {
      box->Text(u"纵筋直径 d\r\n说明");
      box->SelStart(c.start);
      box->SelLength(c.length);
    }
    EXPECT_EQ(selection_of(native), selection_of(memory)) << c.start << ", " << c.length;
  }
}

// Where the control differs from the in-memory box: it keeps paragraphs,
// not the break characters it was given.
TEST(RichTextBox, EveryBreakIsAParagraph) {
  TestWindow window;
  RichTextBox box(window.hwnd());
  box.Text(u"a\r\nb\nc\r\r说");
  EXPECT_EQ(box.Text(), u"a\r\nb\r\nc\r\n\r\n说");
  box.SelStart(2);  // between "\r" and "\n"
  EXPECT_EQ(box.SelStart(), 1);
  box.SelStart(3);
  box.SelText(u"1\n2");
  EXPECT_EQ(box.Text(), u"a\r\n1\r\n2b\r\nc\r\n\r\n说");
  EXPECT_EQ(box.SelStart(), 7);
}

// The control's size of all its text, in points.
float points_of(const RichTextBox& box) {
  ::SendMessageW(box.hwnd(), EM_SETSEL, 0, -1);
  CHARFORMAT2W format{};
  format.cbSize = sizeof format;
  ::SendMessageW(box.hwnd(), EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
  return (format.dwMask & CFM_SIZE) ? static_cast<float>(format.yHeight) / 20 : -1;
}

TEST(RichTextBox, IsAReadOnlyBoxWithItsToolTipSizeAndZoom) {
  TestWindow window;
  RichTextBox box(window.hwnd());
  EXPECT_TRUE(::GetWindowLongW(box.hwnd(), GWL_STYLE) & ES_READONLY);
  box.ToolTipText(u"d——纵筋直径。");
  wchar_t shown[80] = {};
  TOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.hwnd = window.hwnd();
  tool.uId = reinterpret_cast<UINT_PTR>(box.hwnd());
  tool.lpszText = shown;
  ::SendMessageW(box.tool_tip(), TTM_GETTEXTW, 80, reinterpret_cast<LPARAM>(&tool));
  EXPECT_EQ(from_wide(shown, wcslen(shown)), box.ToolTipText());

  const float own = points_of(box);
  EXPECT_GT(own, 5);
  box.FontSize(10.5f);
  box.TextRTF(u"{\\rtf1\\fs40 big}");
  EXPECT_EQ(points_of(box), 10.5f) << "the box's size, not the text's";
  box.Text(u"x");
  EXPECT_EQ(points_of(box), 10.5f);
  box.FontSize(0);
  EXPECT_EQ(points_of(box), own);

  ::SendMessageW(box.hwnd(), WM_DPICHANGED, MAKEWPARAM(192, 192), 0);
  int numerator = 0;
  int denominator = 0;
  ::SendMessageW(box.hwnd(), EM_GETZOOM, reinterpret_cast<WPARAM>(&numerator),
                 reinterpret_cast<LPARAM>(&denominator));
  EXPECT_EQ(numerator * 96, denominator * 192);
}

}  // namespace
}  // namespace zelkora::platform::win32
