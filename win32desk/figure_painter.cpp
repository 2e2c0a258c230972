// A Figure painted with GDI, and the window showing one; see the header.
#include "win32desk/figure_painter.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "zelkora/document/figure_placement.h"
#include "zelkora/platform/win32/wide.h"
#include "zelkora/platform/win32gui/win32_controls.h"
#include "zelkora/platform/win32gui/window_base.h"

namespace zelkora::win32desk {

using platform::win32::dpi_of;
using platform::win32::init_gui;
using platform::win32::message_font;
using platform::win32::wide;

namespace {

using document::Shape;

constexpr wchar_t kFigureViewClass[] = L"ZelkoraFigureView";
// Device coordinates beyond this are no drawing's: the shape is passed over.
constexpr double kFarthest = 1 << 24;
// The widest pen and the largest text drawn, in pixels.
constexpr double kMostPen = 4096, kMostText = 4096;

COLORREF screen(document::Colour c, const FigureColours& colours) {
  const auto found = colours.find(c & 0xFFFFFF);
  const document::Colour rgb = found != colours.end() ? found->second : c;
  return RGB((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF);
}

// A GDI object selected into the device for a scope, deleted after it.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object, bool owned)
      : dc_(dc), object_(object), owned_(owned), old_(::SelectObject(dc, object)) {}
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;
  ~Selected() {
    ::SelectObject(dc_, old_);
    if (owned_ && object_) ::DeleteObject(object_);
  }

 private:
  HDC dc_;
  HGDIOBJ object_;
  bool owned_;
  HGDIOBJ old_;
};

// A text `pixels` high with its baseline's anchor at `at`.
void draw_text(HDC dc, POINT at, double pixels, TextView text, document::Align align,
               COLORREF colour, const wchar_t* face) {
  if (text.empty() || !(pixels >= 1) || pixels > kMostText) return;
  const std::wstring w = wide(text);
  Selected font(dc,
                ::CreateFontW(-static_cast<int>(std::lround(pixels)), 0, 0, 0, FW_NORMAL, FALSE,
                              FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                              CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH, face),
                true);
  ::SetTextColor(dc, colour);
  ::SetTextAlign(dc, TA_BASELINE | (align == document::Align::kLeft    ? TA_LEFT
                                    : align == document::Align::kRight ? TA_RIGHT
                                                                       : TA_CENTER));
  ::TextOutW(dc, at.x, at.y, w.c_str(), static_cast<int>(w.size()));
}

void draw_shape(HDC dc, const document::FigurePlacement& place, const Shape& s,
                const FigureColours& colours, const wchar_t* face) {
  if (!document::drawable(s)) return;
  std::vector<POINT> points;
  for (std::size_t i = 0; i + 1 < s.points.size(); i += 2) {
    const double x = place.x(s.points[i]), y = place.y(s.points[i + 1]);
    if (!(std::abs(x) < kFarthest && std::abs(y) < kFarthest)) return;
    points.push_back({static_cast<LONG>(std::lround(x)), static_cast<LONG>(std::lround(y))});
  }
  if (s.kind == Shape::Kind::kText) {
    if (std::isfinite(s.text_mm) && s.text_mm > 0) {
      draw_text(dc, points[0], s.text_mm * place.scale, s.text, s.text_align,
                screen(s.stroke, colours), face);
    }
    return;
  }
  const bool stroked = std::isfinite(s.stroke_mm) && s.stroke_mm > 0;
  HGDIOBJ pen = ::GetStockObject(NULL_PEN);
  if (stroked) {
    const LOGBRUSH ink{BS_SOLID, screen(s.stroke, colours), 0};
    const double width = std::clamp(s.stroke_mm * place.scale, 1.0, kMostPen);
    pen = ::ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT | PS_JOIN_ROUND,
                         static_cast<DWORD>(std::lround(width)), &ink, 0, nullptr);
  }
  Selected pen_in(dc, pen, stroked);
  Selected brush_in(
      dc, s.fill ? ::CreateSolidBrush(screen(*s.fill, colours)) : ::GetStockObject(NULL_BRUSH),
      s.fill.has_value());
  const auto box = [&](auto draw) {
    if (points.size() < 2) return;
    // Filled without a pen, GDI leaves out the right and bottom edges.
    const LONG grow = stroked ? 0 : 1;
    draw(dc, std::min(points[0].x, points[1].x), std::min(points[0].y, points[1].y),
         std::max(points[0].x, points[1].x) + grow, std::max(points[0].y, points[1].y) + grow);
  };
  const int count = static_cast<int>(points.size());
  switch (s.kind) {
    case Shape::Kind::kLine:
      if (count >= 2) {
        ::MoveToEx(dc, points[0].x, points[0].y, nullptr);
        ::LineTo(dc, points[1].x, points[1].y);
      }
      break;
    case Shape::Kind::kRect:
      box(::Rectangle);
      break;
    case Shape::Kind::kEllipse:
      box(::Ellipse);
      break;
    case Shape::Kind::kPolyline:
      ::Polyline(dc, points.data(), count);
      break;
    case Shape::Kind::kPolygon:
      ::Polygon(dc, points.data(), count);
      break;
    case Shape::Kind::kText:
      break;
  }
}

void register_figure_view(WNDPROC procedure) {
  static const ATOM atom = [procedure] {
    WNDCLASSEXW type{};
    type.cbSize = sizeof type;
    type.style = CS_HREDRAW | CS_VREDRAW;
    type.lpfnWndProc = procedure;
    type.hInstance = ::GetModuleHandleW(nullptr);
    type.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    type.lpszClassName = kFigureViewClass;
    return ::RegisterClassExW(&type);
  }();
  (void)atom;
}

}  // namespace

void paint_figure(HDC dc, const RECT& area, const document::Figure& figure,
                  const FigureColours& colours, const wchar_t* face) {
  const document::FigurePlacement place = document::figure_placement(
      area.left, area.top, area.right - area.left, area.bottom - area.top, figure);
  if (place.scale <= 0) return;
  LOGFONTW message = message_font(96);
  if (!face) face = message.lfFaceName;
  const int saved = ::SaveDC(dc);
  ::IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
  ::SetBkMode(dc, TRANSPARENT);
  for (const Shape& shape : figure.shapes) draw_shape(dc, place, shape, colours, face);
  if (!figure.caption.empty()) {
    const double size = document::caption_mm(figure) * place.scale;
    const double x = place.x(document::figure_size_mm(figure).width / 2);
    const double y = place.y(document::caption_baseline_mm(figure));
    if (std::abs(x) < kFarthest && std::abs(y) < kFarthest) {
      draw_text(dc, {static_cast<LONG>(std::lround(x)), static_cast<LONG>(std::lround(y))}, size,
                figure.caption, document::Align::kCenter, screen(0x000000, colours), face);
    }
  }
  ::RestoreDC(dc, saved);
}

document::Colour system_colour(int index) {
  const COLORREF c = ::GetSysColor(index);
  return static_cast<document::Colour>(GetRValue(c)) << 16 |
         static_cast<document::Colour>(GetGValue(c)) << 8 | GetBValue(c);
}

FigureView::FigureView(HWND parent, Text hint, ColourRule rule)
    : hint_(std::move(hint)), rule_(std::move(rule)) {
  init_gui();
  register_figure_view(&FigureView::message);
  hwnd_ = ::CreateWindowExW(0, kFigureViewClass, L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 100, parent,
                            nullptr, ::GetModuleHandleW(nullptr), this);
}

FigureView::~FigureView() {
  if (hwnd_) ::DestroyWindow(hwnd_);
}

void FigureView::set_figure(document::Figure figure) {
  figure_ = std::move(figure);
  ::SetWindowTextW(hwnd_, wide(figure_.caption).c_str());
  ::InvalidateRect(hwnd_, nullptr, FALSE);
}

void FigureView::paint(HDC dc) {
  RECT area{};
  ::GetClientRect(hwnd_, &area);
  ::FillRect(dc, &area, ::GetSysColorBrush(COLOR_WINDOW));
  const document::Colour ground = system_colour(COLOR_WINDOW),
                         ink = system_colour(COLOR_WINDOWTEXT);
  const int dpi = dpi_of(hwnd_);
  LOGFONTW font = message_font(dpi);
  if (document::figure_placement(area.left, area.top, area.right, area.bottom, figure_).scale > 0) {
    FigureColours colours = rule_ ? rule_(ground, ink) : FigureColours{};
    colours.emplace(0x000000, ink);
    paint_figure(dc, area, figure_, colours, font.lfFaceName);
    return;
  }
  // The hint, wrapped and centred both ways.
  Selected font_in(dc, ::CreateFontIndirectW(&font), true);
  const int gap = std::max(4, static_cast<int>(std::abs(font.lfHeight)) * 2 / 5);
  RECT room{area.left + gap, area.top + gap, area.right - gap, area.bottom - gap};
  const std::wstring text = wide(hint_);
  RECT need = room;
  ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &need,
              DT_CENTER | DT_WORDBREAK | DT_CALCRECT);
  const LONG height = need.bottom - need.top;
  room.top = std::max(room.top, (room.top + room.bottom - height) / 2);
  ::SetBkMode(dc, TRANSPARENT);
  ::SetTextColor(dc, ::GetSysColor(COLOR_GRAYTEXT));
  const int saved = ::SaveDC(dc);
  ::IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
  ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &room, DT_CENTER | DT_WORDBREAK);
  ::RestoreDC(dc, saved);
}

LRESULT CALLBACK FigureView::message(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTW*>(l);
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  auto* view = reinterpret_cast<FigureView*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  switch (message) {
    case WM_ERASEBKGND:
      return 1;  // paint fills the ground
    case WM_PRINTCLIENT:
      if (view) view->paint(reinterpret_cast<HDC>(w));
      return 0;
    case WM_PAINT: {
      PAINTSTRUCT ps;
      HDC dc = ::BeginPaint(window, &ps);
      RECT client{};
      ::GetClientRect(window, &client);
      // Drawn off the screen first: the pane does not flicker as values change.
      HDC memory = ::CreateCompatibleDC(dc);
      HBITMAP bitmap = ::CreateCompatibleBitmap(dc, std::max<LONG>(1, client.right),
                                                std::max<LONG>(1, client.bottom));
      if (view && memory && bitmap) {
        const HGDIOBJ old = ::SelectObject(memory, bitmap);
        view->paint(memory);
        ::BitBlt(dc, 0, 0, client.right, client.bottom, memory, 0, 0, SRCCOPY);
        ::SelectObject(memory, old);
      } else if (view) {
        view->paint(dc);
      }
      if (bitmap) ::DeleteObject(bitmap);
      if (memory) ::DeleteDC(memory);
      ::EndPaint(window, &ps);
      return 0;
    }
    case WM_SIZE:
      ::InvalidateRect(window, nullptr, FALSE);
      break;
    default:
      break;
  }
  return ::DefWindowProcW(window, message, w, l);
}

}  // namespace zelkora::win32desk
