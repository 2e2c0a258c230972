#include "win32desk/figure_painter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "zelkora/platform/win32gui/controls_wintest_support.h"

namespace zelkora::win32desk {
namespace {

using platform::win32::TestWindow;
using platform::win32::u8;

using document::Figure;
using document::Shape;

constexpr document::Colour kWhite = 0xFFFFFF, kInk = 0x800000, kBlue = 0x1F5FC8, kGreen = 0x00C000,
                           kConcrete = 0xEBEBEB;

// A white 32-bit bitmap in a memory device, its pixels read as 0xRRGGBB.
class Bitmap {
 public:
  static constexpr int kSide = 240;
  Bitmap() {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), kSide, -kSide, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    dc_ = ::CreateCompatibleDC(nullptr);
    bitmap_ = ::CreateDIBSection(dc_, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&bits_),
                                 nullptr, 0);
    old_ = ::SelectObject(dc_, bitmap_);
    for (int i = 0; i < kSide * kSide; ++i) bits_[i] = kWhite;
  }
  Bitmap(const Bitmap&) = delete;
  Bitmap& operator=(const Bitmap&) = delete;
  ~Bitmap() {
    ::SelectObject(dc_, old_);
    ::DeleteObject(bitmap_);
    ::DeleteDC(dc_);
  }
  HDC dc() const { return dc_; }
  document::Colour at(int x, int y) const {
    ::GdiFlush();
    return bits_[y * kSide + x] & 0xFFFFFF;
  }
  // The pixels outside `area` that are not white.
  int outside(const RECT& area) const {
    int count = 0;
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const POINT p{x, y};
        count += !::PtInRect(&area, p) && at(x, y) != kWhite;
      }
    }
    return count;
  }

 private:
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ old_;
  uint32_t* bits_ = nullptr;
};

Shape shape(Shape::Kind kind, std::vector<double> points, double stroke_mm,
            std::optional<document::Colour> fill = {}) {
  Shape s;
  s.kind = kind;
  s.points = std::move(points);
  s.stroke_mm = stroke_mm;
  s.fill = fill;
  return s;
}

// 100 × 50 mm: a section (10, 10)–(90, 40), a blue bar of radius 5 at
// (50, 25), and a line from far outside the drawing to far outside it.
Figure section() {
  Figure f;
  f.width_mm = 100;
  f.height_mm = 50;
  f.shapes = {shape(Shape::Kind::kRect, {10, 10, 90, 40}, 0.5, kConcrete),
              shape(Shape::Kind::kEllipse, {45, 20, 55, 30}, 0, kBlue),
              shape(Shape::Kind::kLine, {-1000, -1000, 1000, 1000}, 3)};
  return f;
}

TEST(FigureGdi, DrawsWherePlacementPutsItAndNothingOutside) {
  struct Case {
    const char* name;
    RECT area;
    RECT section;  // in device pixels: scale and centring by hand
    POINT bar;
  };
  const Case cases[] = {
      {"wide area, scale 2", {20, 10, 220, 110}, {40, 30, 200, 90}, {120, 60}},
      {"tall area, centred down, scale 1", {0, 0, 100, 200}, {10, 85, 90, 115}, {50, 100}},
      {"wider than the figure, centred across",
       {0, 100, 240, 150},
       {80, 110, 160, 140},
       {120, 125}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Bitmap bitmap;
    paint_figure(bitmap.dc(), c.area, section(), {{0x000000, kInk}, {kBlue, kGreen}});
    const LONG middle = (c.section.top + c.section.bottom) / 2;
    EXPECT_EQ(bitmap.at(c.section.left, middle), kInk);
    EXPECT_EQ(bitmap.at(c.section.right - 1, middle), kInk);
    EXPECT_EQ(bitmap.at(c.section.left - 2, middle), kWhite);
    EXPECT_EQ(bitmap.at(c.section.left + 3, middle), kConcrete);  // not in the map: stays
    EXPECT_EQ(bitmap.at(c.bar.x, c.bar.y), kGreen);
    EXPECT_EQ(bitmap.outside(c.area), 0);
  }
}

TEST(FigureGdi, CaptionUnderTheDrawingInTheInk) {
  Figure f = section();
  f.shapes.pop_back();
  f.caption = u"250×500";
  Bitmap bitmap;
  const RECT area{0, 0, 240, 240};
  paint_figure(bitmap.dc(), area, f, {{0x000000, kInk}});
  // 100 × 55.6 mm at 2.4 px/mm: the drawing ends at y 53 + 120, the caption
  // line below it.
  int inked = 0;
  for (int y = 174; y < 188; ++y) {
    for (int x = 0; x < 240; ++x) inked += bitmap.at(x, y) != kWhite;
    EXPECT_EQ(bitmap.at(5, y), kWhite);  // centred: not from the left edge
  }
  EXPECT_GT(inked, 10);
}

TEST(FigureGdi, AnyFigurePaintsWithoutHarm) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  const auto with = [](Figure f, Shape s) {
    f.shapes.push_back(std::move(s));
    return f;
  };
  Shape huge_text = shape(Shape::Kind::kText, {50, 25}, 0);
  huge_text.text = u"250";
  huge_text.text_mm = 1e9;
  Figure sizes_nan = section();
  sizes_nan.width_mm = nan;
  Figure sizes_huge = section();
  sizes_huge.width_mm = 1e300;
  sizes_huge.height_mm = 1e-300;
  sizes_huge.caption = u"1e300";
  const Figure figures[] = {
      Figure{},
      sizes_nan,
      sizes_huge,
      with(section(), shape(Shape::Kind::kPolygon, {1, nan, 3, 4, 5, 6}, 1, kBlue)),
      with(section(), shape(Shape::Kind::kPolyline, {1}, 1)),
      with(section(), shape(Shape::Kind::kRect, {0, 0, 1e300, -1e300}, 1, kBlue)),
      with(section(), shape(Shape::Kind::kEllipse, {inf, 0, 1, 1}, 1)),
      with(section(), shape(Shape::Kind::kLine, {0, 0, 100, 50}, 1e12)),
      with(section(), huge_text),
  };
  const RECT area{40, 40, 200, 200};
  for (const Figure& f : figures) {
    Bitmap bitmap;
    const DWORD start = ::GetTickCount();
    paint_figure(bitmap.dc(), area, f);
    EXPECT_LT(::GetTickCount() - start, 3000u);
    EXPECT_EQ(bitmap.outside(area), 0) << u8(f.caption);
  }
}

TEST(FigureView, EmptyShowsTheHintAFigureItself) {
  TestWindow window;
  FigureView view(window.hwnd(), u"输入截面尺寸后显示截面图",
                  [](document::Colour, document::Colour) {
                    return FigureColours{{kBlue, kGreen}};
                  });
  ::MoveWindow(view.hwnd(), 0, 0, 200, 100, FALSE);
  const document::Colour ground = system_colour(COLOR_WINDOW);
  const auto inked = [&](int from_y, int to_y) {
    Bitmap bitmap;
    ::SendMessageW(view.hwnd(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(bitmap.dc()), PRF_CLIENT);
    int count = 0;
    for (int y = from_y; y < to_y; ++y) {
      for (int x = 0; x < 200; ++x) count += bitmap.at(x, y) != ground;
    }
    EXPECT_EQ(bitmap.outside({0, 0, 200, 100}), 0);
    return count;
  };
  // The hint: a line of text across the middle, nothing at the top.
  EXPECT_GT(inked(35, 65), 20);
  EXPECT_EQ(inked(0, 20), 0);
  Figure f = section();
  f.caption = u"250×500";
  view.set_figure(f);
  wchar_t title[32] = {};
  ::GetWindowTextW(view.hwnd(), title, 32);
  EXPECT_EQ(std::wstring(title), L"250×500");
  Bitmap bitmap;
  ::SendMessageW(view.hwnd(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(bitmap.dc()), PRF_CLIENT);
  // 100 × 55.6 mm in 200 × 100 px: scale 1.8, the bar's centre at (100, 45).
  EXPECT_EQ(bitmap.at(100, 45), kGreen);
  EXPECT_EQ(bitmap.at(0, 0), ground);
}

}  // namespace
}  // namespace zelkora::win32desk
