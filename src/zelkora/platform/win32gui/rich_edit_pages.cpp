// A rich-edit control's text in pages.
#include "zelkora/platform/win32gui/rich_edit_pages.h"

#include <algorithm>
#include <string>

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

// The control's own layout of lines on the screen, for a system whose
// control does not lay out pages (Wine 8): a hidden copy of the control as
// wide as the page's text at the screen's DPI, each page the lines whose
// bottoms it holds, drawn as the copy draws itself.
class ScreenLines {
 public:
  ScreenLines(HWND edit, SIZE page) {
    HDC screen = ::GetDC(nullptr);
    dpi_ = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    width_ = ::MulDiv(page.cx - 2 * kMargin, dpi_, 1440);
    height_ = ::MulDiv(page.cy - 2 * kMargin, dpi_, 1440);
    copy_ = ::CreateWindowExW(0, MSFTEDIT_CLASS, L"", WS_POPUP | ES_MULTILINE, 0, 0,
                              std::max(1, width_), std::max(1, height_), nullptr, nullptr,
                              ::GetModuleHandleW(nullptr), nullptr);
    std::string rtf;
    EDITSTREAM out{reinterpret_cast<DWORD_PTR>(&rtf), 0, &write_out};
    ::SendMessageW(edit, EM_STREAMOUT, SF_RTF, reinterpret_cast<LPARAM>(&out));
    Source source{&rtf};
    EDITSTREAM in{reinterpret_cast<DWORD_PTR>(&source), 0, &read_in};
    ::SendMessageW(copy_, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&in));
    const auto lines = static_cast<int>(::SendMessageW(copy_, EM_GETLINECOUNT, 0, 0));
    for (int i = 0; i < lines; ++i) {
      const auto first = static_cast<LONG>(::SendMessageW(copy_, EM_LINEINDEX, i, 0));
      tops_.push_back({first, y_of(first)});
    }
  }
  ScreenLines(const ScreenLines&) = delete;
  ScreenLines& operator=(const ScreenLines&) = delete;
  ~ScreenLines() { ::DestroyWindow(copy_); }

  std::vector<CHARRANGE> pages(LONG length) const {
    std::vector<CHARRANGE> pages;
    if (height_ <= 0 || width_ <= 0) return pages;
    std::size_t first = 0;
    for (std::size_t i = 0; i < tops_.size(); ++i) {
      if (bottom(i) - tops_[i].y > height_) return {};  // a page that holds no line
      if (bottom(i) - tops_[first].y <= height_ || i == first) continue;
      pages.push_back({tops_[first].at, tops_[i].at});
      first = i;
    }
    if (first < tops_.size() && tops_[first].at < length)
      pages.push_back({tops_[first].at, length});
    return pages;
  }

  void draw(HDC dc, CHARRANGE chars) const {
    std::size_t first = 0, end = 0;
    for (std::size_t i = 0; i < tops_.size(); ++i) {
      if (tops_[i].at < chars.cpMin) first = i + 1;
      if (tops_[i].at < chars.cpMax) end = i + 1;
    }
    if (first >= end) return;
    const int top = tops_[first].y, tall = std::min(height_, bottom(end - 1) - top);
    // The copy as tall as the text down to the page's end, drawn with its
    // origin moved up to the page's top (a scroll would stop short of the
    // top of a last page shorter than the window).
    ::SetWindowPos(copy_, nullptr, 0, 0, width_, top + tall,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    HDC memory = ::CreateCompatibleDC(dc);
    HDC screen = ::GetDC(nullptr);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, width_, height_);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(memory, bitmap);
    const RECT all{0, 0, width_, height_};
    ::FillRect(memory, &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    ::SetViewportOrgEx(memory, 0, -top, nullptr);
    ::SendMessageW(copy_, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory), PRF_CLIENT);
    ::SetViewportOrgEx(memory, 0, 0, nullptr);
    const int x = ::MulDiv(kMargin, ::GetDeviceCaps(dc, LOGPIXELSX), 1440);
    const int y = ::MulDiv(kMargin, ::GetDeviceCaps(dc, LOGPIXELSY), 1440);
    ::StretchBlt(dc, x, y, ::MulDiv(width_, ::GetDeviceCaps(dc, LOGPIXELSX), dpi_),
                 ::MulDiv(tall, ::GetDeviceCaps(dc, LOGPIXELSY), dpi_), memory, 0, 0, width_, tall,
                 SRCCOPY);
    ::SelectObject(memory, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
  }

 private:
  struct Line {
    LONG at;
    int y;
  };
  struct Source {
    const std::string* bytes;
    std::size_t at = 0;
  };

  static DWORD CALLBACK write_out(DWORD_PTR cookie, LPBYTE bytes, LONG n, LONG* done) {
    reinterpret_cast<std::string*>(cookie)->append(reinterpret_cast<const char*>(bytes),
                                                   static_cast<std::size_t>(n));
    *done = n;
    return 0;
  }
  static DWORD CALLBACK read_in(DWORD_PTR cookie, LPBYTE bytes, LONG wanted, LONG* got) {
    auto* source = reinterpret_cast<Source*>(cookie);
    const std::size_t n =
        std::min(source->bytes->size() - source->at, static_cast<std::size_t>(wanted));
    std::copy_n(source->bytes->data() + source->at, n, bytes);
    source->at += n;
    *got = static_cast<LONG>(n);
    return 0;
  }

  int y_of(LONG at) const {
    POINTL point{};
    ::SendMessageW(copy_, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&point), at);
    return point.y;
  }
  // The bottom of line i: the next line's top; the last line as tall as the one before.
  int bottom(std::size_t i) const {
    if (i + 1 < tops_.size()) return tops_[i + 1].y;
    const int tall = i > 0 ? tops_[i].y - tops_[i - 1].y : ::MulDiv(20, dpi_, 96);
    return tops_[i].y + tall;
  }

  HWND copy_ = nullptr;
  int dpi_ = 96, width_ = 0, height_ = 0;
  std::vector<Line> tops_;
};

// Whether the control lays out pages itself.
bool lays_out(HWND edit, HDC target, SIZE page) {
  FORMATRANGE range = page_range(target, target, page, {0, -1});
  const bool some = format(edit, false, range) > 0;
  ::SendMessageW(edit, EM_FORMATRANGE, FALSE, 0);
  return some;
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
  if (length > 0 && !lays_out(edit, target, page)) return ScreenLines(edit, page).pages(length);
  LONG at = 0;
  while (at < length) {
    FORMATRANGE range = page_range(target, target, page, {at, -1});
    LONG next = format(edit, false, range);
    // Nothing taken: a page smaller than a line; no pages at all rather
    // than pages that would not hold what they say.
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
  if (!lays_out(edit, target, page)) return ScreenLines(edit, page).draw(dc, chars);
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
