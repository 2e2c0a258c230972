// A rich-edit control's text in pages.
#include "zelkora/platform/win32gui/rich_edit_pages.h"

#include <algorithm>

namespace zelkora::platform::win32 {

namespace {

constexpr int kMargin = 1440;  // an inch, in twips

FORMATRANGE page_range(HDC dc, HDC target, SIZE page, CHARRANGE chars) {
  FORMATRANGE range{};
  range.hdc = dc;
  range.hdcTarget = target;
  range.rcPage = {0, 0, page.cx, page.cy};
  range.rc = {kMargin, kMargin, page.cx - kMargin, page.cy - kMargin};
  range.chrg = chars;
  return range;
}

LONG format(HWND edit, bool draw, FORMATRANGE& range) {
  return static_cast<LONG>(
      ::SendMessageW(edit, EM_FORMATRANGE, draw, reinterpret_cast<LPARAM>(&range)));
}

}  // namespace

SIZE page_twips(HDC dc) {
  return {::MulDiv(::GetDeviceCaps(dc, PHYSICALWIDTH), 1440, ::GetDeviceCaps(dc, LOGPIXELSX)),
          ::MulDiv(::GetDeviceCaps(dc, PHYSICALHEIGHT), 1440, ::GetDeviceCaps(dc, LOGPIXELSY))};
}

std::vector<CHARRANGE> lay_out_pages(HWND edit, HDC target, SIZE page) {
  // Character positions, a line break one character (not the text's CR LF).
  GETTEXTLENGTHEX how{GTL_NUMCHARS | GTL_PRECISE, 1200};
  const auto length = static_cast<LONG>(
      ::SendMessageW(edit, EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&how), 0));
  std::vector<CHARRANGE> pages;
  LONG at = 0;
  while (at < length) {
    FORMATRANGE range = page_range(target, target, page, {at, -1});
    LONG next = format(edit, false, range);
    // Nothing taken: a page smaller than a line, or a control that does not
    // lay out pages (Wine's rich-edit control answers 0): no pages at all
    // rather than pages that would not hold what they say.
    if (next <= at) {
      pages.clear();
      break;
    }
    next = std::min(next, length);
    pages.push_back({at, next});
    at = next;
  }
  ::SendMessageW(edit, EM_FORMATRANGE, FALSE, 0);  // the control's cache let go
  return pages;
}

void draw_page(HWND edit, HDC dc, HDC target, SIZE page, CHARRANGE chars) {
  FORMATRANGE range = page_range(dc, target, page, chars);
  format(edit, true, range);
  ::SendMessageW(edit, EM_FORMATRANGE, FALSE, 0);
}

HENHMETAFILE page_metafile(HWND edit, HDC target, SIZE page, CHARRANGE chars) {
  // The frame in hundredths of a millimetre.
  const RECT frame{0, 0, ::MulDiv(page.cx, 2540, 1440), ::MulDiv(page.cy, 2540, 1440)};
  HDC dc = ::CreateEnhMetaFileW(target, nullptr, &frame, nullptr);
  if (!dc) return nullptr;
  draw_page(edit, dc, target, page, chars);
  return ::CloseEnhMetaFile(dc);
}

}  // namespace zelkora::platform::win32
