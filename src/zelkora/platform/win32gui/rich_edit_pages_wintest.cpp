#include "zelkora/platform/win32gui/rich_edit_pages.h"

#include <gtest/gtest.h>

#include <string>

#include "zelkora/platform/win32gui/controls_wintest_support.h"

namespace zelkora::platform::win32 {
namespace {

// `lines` numbered lines, one paragraph each; the text as the control keeps
// its characters (a line break one character).
std::wstring numbered_lines(int lines) {
  std::wstring text;
  for (int i = 0; i < lines; ++i) {
    if (i > 0) text += L'\r';
    text += L"第 " + std::to_wstring(i + 1) + L" 行：计算书的一行文字 Mu = 125.0 kN·m";
  }
  return text;
}

class PagesTest : public ::testing::Test {
 protected:
  PagesTest() {
    edit_ = ::CreateWindowExW(0, MSFTEDIT_CLASS, L"", WS_CHILD | ES_MULTILINE, 0, 0, 300, 200,
                              window_.hwnd(), nullptr, ::GetModuleHandleW(nullptr), nullptr);
    screen_ = ::GetDC(nullptr);
  }
  ~PagesTest() override { ::ReleaseDC(nullptr, screen_); }

  TestWindow window_;
  HWND edit_;
  HDC screen_;
};

TEST_F(PagesTest, NoPageForAnEmptyTextNorForAPageThatHoldsNoLine) {
  ::SetWindowTextW(edit_, L"");
  EXPECT_TRUE(lay_out_pages(edit_, screen_, kA4Twips).empty());
  ::SetWindowTextW(edit_, numbered_lines(3).c_str());
  EXPECT_TRUE(lay_out_pages(edit_, screen_, {kA4Twips.cx, 2 * 1440 + 20}).empty());
}

TEST_F(PagesTest, PagesHoldTheWholeTextInOrderEachEndingAtALineEnd) {
  const SIZE a5{kA4Twips.cx, kA4Twips.cy / 2};
  struct Case {
    int lines;
    SIZE page;
    int fewest, most;
  } const cases[] = {
      {1, kA4Twips, 1, 1}, {30, kA4Twips, 1, 1}, {400, kA4Twips, 4, 20}, {400, a5, 10, 60}};
  for (const Case& c : cases) {
    const std::wstring text = numbered_lines(c.lines);
    ::SetWindowTextW(edit_, text.c_str());
    const std::vector<CHARRANGE> pages = lay_out_pages(edit_, screen_, c.page);
    SCOPED_TRACE(std::to_string(c.lines) + " lines, page " + std::to_string(c.page.cy));
    EXPECT_GE(pages.size(), static_cast<std::size_t>(c.fewest));
    EXPECT_LE(pages.size(), static_cast<std::size_t>(c.most));
    LONG at = 0;
    for (const CHARRANGE& page : pages) {
      EXPECT_EQ(page.cpMin, at);
      EXPECT_GT(page.cpMax, page.cpMin);
      // A page breaks between lines, not inside one.
      if (page.cpMax < static_cast<LONG>(text.size())) {
        EXPECT_EQ(text[page.cpMax - 1], L'\r');
      }
      at = page.cpMax;
    }
    EXPECT_EQ(at, static_cast<LONG>(text.size()));
  }
  // A half page holds fewer lines than a whole one.
  ::SetWindowTextW(edit_, numbered_lines(400).c_str());
  EXPECT_GT(lay_out_pages(edit_, screen_, a5).size(),
            lay_out_pages(edit_, screen_, kA4Twips).size());
}

TEST_F(PagesTest, APageDrawsItsTextInsideTheMargins) {
  ::SetWindowTextW(edit_, numbered_lines(400).c_str());
  const std::vector<CHARRANGE> pages = lay_out_pages(edit_, screen_, kA4Twips);
  ASSERT_FALSE(pages.empty());
  HENHMETAFILE page = page_metafile(edit_, screen_, kA4Twips, pages.front());
  ASSERT_NE(page, nullptr);
  // Played at 2 pixels a millimetre on white: an inch of margin is 51 pixels.
  const int width = 420, height = 594;
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  HDC dc = ::CreateCompatibleDC(screen_);
  HBITMAP bitmap = ::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ old = ::SelectObject(dc, bitmap);
  const RECT all{0, 0, width, height};
  ::FillRect(dc, &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
  ASSERT_TRUE(::PlayEnhMetaFile(dc, page, &all));
  ::GdiFlush();
  int inside = 0, outside = 0;
  const auto* pixels = static_cast<const DWORD*>(bits);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      if ((pixels[y * width + x] & 0xFFFFFF) == 0xFFFFFF) continue;
      const bool in = x >= 48 && x < width - 48 && y >= 48 && y < height - 48;
      ++(in ? inside : outside);
    }
  }
  EXPECT_GT(inside, 1000);
  EXPECT_EQ(outside, 0);
  ::SelectObject(dc, old);
  ::DeleteObject(bitmap);
  ::DeleteDC(dc);
  ::DeleteEnhMetaFile(page);
}

}  // namespace
}  // namespace zelkora::platform::win32
