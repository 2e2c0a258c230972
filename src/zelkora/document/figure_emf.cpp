#include "zelkora/document/figure_emf.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace zelkora::document {

namespace {

// Record types.
enum : std::uint32_t {
  kHeader = 1,
  kPolyline = 4,
  kPolygon = 3,
  kSetWindowExt = 9,
  kSetWindowOrg = 10,
  kSetViewportExt = 11,
  kSetViewportOrg = 12,
  kEof = 14,
  kSetMapMode = 17,
  kSetBkMode = 18,
  kSetTextAlign = 22,
  kSetTextColor = 24,
  kMoveTo = 27,
  kSelectObject = 37,
  kCreatePen = 38,
  kCreateBrush = 39,
  kDeleteObject = 40,
  kEllipse = 42,
  kRectangle = 43,
  kLineTo = 54,
  kCreateFont = 82,
  kTextOutW = 84,
};

constexpr std::uint32_t kAnisotropic = 8;  // MM_ANISOTROPIC
constexpr std::uint32_t kTransparent = 1;
constexpr std::uint32_t kNullBrush = 0x80000005;  // stock objects
constexpr std::uint32_t kNullPen = 0x80000008;
constexpr std::uint32_t kSystemFont = 0x8000000D;
constexpr std::uint32_t kSolidPen = 0;    // PS_SOLID
constexpr std::uint32_t kSolidBrush = 0;  // BS_SOLID
constexpr std::uint32_t kTaBaseline = 24;
constexpr std::uint32_t kTaCenter = 6;
constexpr std::uint32_t kTaRight = 2;
constexpr std::uint32_t kGbCharset = 134;
constexpr std::uint32_t kHeaderSize = 108;  // with both extensions
constexpr std::uint32_t kLogFontPanoseSize = 320;

// Object handles: 0 is the metafile itself.
constexpr std::uint32_t kPenHandle = 1;
constexpr std::uint32_t kBrushHandle = 2;
constexpr std::uint32_t kFontHandle = 3;

// The reference device: 96 pixels to the inch, so 254 mm are 960 pixels.
constexpr std::int32_t kDevicePixels = 960;
constexpr std::int32_t kDeviceMm = 254;
constexpr double kUnitsPerMm = 100;  // logical units: 0.01 mm
constexpr double kLimitMm = 10000;

class EmfBuffer {
 public:
  void u16(std::uint16_t v) {
    bytes_.push_back(static_cast<char>(v & 0xFF));
    bytes_.push_back(static_cast<char>(v >> 8));
  }
  void u32(std::uint32_t v) {
    u16(static_cast<std::uint16_t>(v & 0xFFFF));
    u16(static_cast<std::uint16_t>(v >> 16));
  }
  void i32(std::int32_t v) { u32(static_cast<std::uint32_t>(v)); }
  void f32(float v) {
    std::uint32_t bits;
    static_assert(sizeof bits == sizeof v);
    std::memcpy(&bits, &v, sizeof bits);
    u32(bits);
  }
  void zeros(std::size_t n) { bytes_.append(n, '\0'); }

  // Starts a record; `end_record` fills in its size.
  void begin_record(std::uint32_t type) {
    record_start_ = bytes_.size();
    u32(type);
    u32(0);
  }
  void end_record() {
    while (bytes_.size() % 4 != 0) bytes_.push_back('\0');
    const auto size = static_cast<std::uint32_t>(bytes_.size() - record_start_);
    for (int k = 0; k < 4; ++k) {
      bytes_[record_start_ + 4 + k] = static_cast<char>((size >> (8 * k)) & 0xFF);
    }
    ++records_;
  }
  // A record of 32-bit fields.
  void record(std::uint32_t type, std::initializer_list<std::int64_t> fields) {
    begin_record(type);
    for (std::int64_t v : fields) u32(static_cast<std::uint32_t>(v));
    end_record();
  }

  std::size_t size() const { return bytes_.size(); }
  std::uint32_t records() const { return records_; }
  std::string& bytes() { return bytes_; }

 private:
  std::string bytes_;
  std::size_t record_start_ = 0;
  std::uint32_t records_ = 0;
};

double finite_or_zero(double v) { return std::isfinite(v) ? v : 0; }

// Millimetres to logical units.
std::int32_t units(double mm) {
  return static_cast<std::int32_t>(
      std::lround(std::clamp(finite_or_zero(mm), -kLimitMm, kLimitMm) * kUnitsPerMm));
}

std::int32_t device_pixels(double mm) {
  return static_cast<std::int32_t>(std::lround(mm * kDevicePixels / kDeviceMm));
}

// 0xRRGGBB as a COLORREF (red in the low byte).
std::uint32_t colorref(Colour c) { return ((c >> 16) & 0xFF) | (c & 0xFF00) | ((c & 0xFF) << 16); }

void put_rect(EmfBuffer& emf, std::int32_t left, std::int32_t top, std::int32_t right,
              std::int32_t bottom) {
  emf.i32(left);
  emf.i32(top);
  emf.i32(right);
  emf.i32(bottom);
}

void put_header(EmfBuffer& emf, double width_mm, double height_mm) {
  emf.begin_record(kHeader);
  put_rect(emf, 0, 0, device_pixels(width_mm), device_pixels(height_mm));  // bounds
  put_rect(emf, 0, 0, units(width_mm), units(height_mm));                  // frame
  emf.u32(0x464D4520);                                                     // " EMF"
  emf.u32(0x00010000);                                                     // version
  emf.u32(0);  // bytes, filled in at the end
  emf.u32(0);  // records, likewise
  emf.u16(4);  // handles: the metafile, a pen, a brush, a font
  emf.u16(0);
  emf.u32(0);  // description
  emf.u32(0);
  emf.u32(0);  // palette entries
  emf.i32(kDevicePixels);
  emf.i32(kDevicePixels);
  emf.i32(kDeviceMm);
  emf.i32(kDeviceMm);
  emf.u32(0);  // pixel format
  emf.u32(0);
  emf.u32(0);  // OpenGL
  emf.u32(kDeviceMm * 1000);
  emf.u32(kDeviceMm * 1000);
  emf.end_record();
}

// 1 logical unit = 0.01 mm: 2540 units to the inch's 96 pixels.
void put_mapping(EmfBuffer& emf) {
  emf.record(kSetMapMode, {kAnisotropic});
  emf.record(kSetWindowOrg, {0, 0});
  emf.record(kSetWindowExt, {2540, 2540});
  emf.record(kSetViewportOrg, {0, 0});
  emf.record(kSetViewportExt, {96, 96});
  emf.record(kSetBkMode, {kTransparent});
}

void select_pen(EmfBuffer& emf, const Shape& shape) {
  const double width = finite_or_zero(shape.stroke_mm);
  if (width <= 0) {
    emf.record(kSelectObject, {kNullPen});
    return;
  }
  emf.record(kCreatePen,
             {kPenHandle, kSolidPen, std::max(units(width), 1), 0, colorref(shape.stroke)});
  emf.record(kSelectObject, {kPenHandle});
}

void select_brush(EmfBuffer& emf, const Shape& shape) {
  if (!shape.fill) {
    emf.record(kSelectObject, {kNullBrush});
    return;
  }
  emf.record(kCreateBrush, {kBrushHandle, kSolidBrush, colorref(*shape.fill), 0});
  emf.record(kSelectObject, {kBrushHandle});
}

// Stock objects back in, then the shape's own deleted.
void release(EmfBuffer& emf, bool pen, bool brush) {
  emf.record(kSelectObject, {kNullPen});
  emf.record(kSelectObject, {kNullBrush});
  if (pen) emf.record(kDeleteObject, {kPenHandle});
  if (brush) emf.record(kDeleteObject, {kBrushHandle});
}

struct Box {
  std::int32_t left, top, right, bottom;
};

Box box_of(const std::vector<double>& p) {
  const std::int32_t x0 = units(p[0]), y0 = units(p[1]), x1 = units(p[2]), y1 = units(p[3]);
  return {std::min(x0, x1), std::min(y0, y1), std::max(x0, x1), std::max(y0, y1)};
}

// A polyline or polygon: bounds, count, 32-bit points.
void put_poly(EmfBuffer& emf, std::uint32_t type, const std::vector<double>& p) {
  const std::size_t count = p.size() / 2;
  Box bounds{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN};
  for (std::size_t k = 0; k < count; ++k) {
    const std::int32_t x = units(p[2 * k]), y = units(p[2 * k + 1]);
    bounds = {std::min(bounds.left, x), std::min(bounds.top, y), std::max(bounds.right, x),
              std::max(bounds.bottom, y)};
  }
  emf.begin_record(type);
  put_rect(emf, bounds.left, bounds.top, bounds.right, bounds.bottom);
  emf.u32(static_cast<std::uint32_t>(count));
  for (std::size_t k = 0; k < count; ++k) {
    emf.i32(units(p[2 * k]));
    emf.i32(units(p[2 * k + 1]));
  }
  emf.end_record();
}

// The shape's text as UTF-16 with lone surrogates replaced.
Text clean_text(TextView text) {
  Text out(text);
  for (std::size_t i = 0; i < out.size(); ++i) {
    const char16_t c = out[i];
    const bool high = c >= 0xD800 && c <= 0xDBFF;
    const bool low = c >= 0xDC00 && c <= 0xDFFF;
    if (high && i + 1 < out.size() && out[i + 1] >= 0xDC00 && out[i + 1] <= 0xDFFF) {
      ++i;
    } else if (high || low) {
      out[i] = 0xFFFD;
    }
  }
  return out;
}

void create_font(EmfBuffer& emf, double height_mm) {
  static constexpr char16_t kFace[] = u"宋体";
  emf.begin_record(kCreateFont);
  emf.u32(kFontHandle);
  const std::size_t start = emf.size();
  emf.i32(-std::max(units(height_mm), 1));  // negative: the em height
  emf.i32(0);                               // width: the font's own
  emf.i32(0);                               // escapement
  emf.i32(0);                               // orientation
  emf.i32(400);                             // weight: normal
  emf.u32(kGbCharset << 24);                // italic, underline, strike-out 0; the character set
  emf.u32(0);                               // precisions, quality, pitch and family
  for (char16_t c : kFace) {
    if (c) emf.u16(c);
  }
  emf.zeros(kLogFontPanoseSize - (emf.size() - start));
  emf.end_record();
  emf.record(kSelectObject, {kFontHandle});
}

void put_text(EmfBuffer& emf, const Shape& shape) {
  const Text text = clean_text(shape.text);
  if (text.empty()) return;
  std::uint32_t align = kTaBaseline;
  if (shape.text_align == Align::kCenter) align |= kTaCenter;
  if (shape.text_align == Align::kRight) align |= kTaRight;
  emf.record(kSetTextAlign, {align});
  emf.record(kSetTextColor, {colorref(shape.stroke)});
  create_font(emf, finite_or_zero(shape.text_mm));

  constexpr std::uint32_t kStringOffset = 76;  // the record's fixed part
  emf.begin_record(kTextOutW);
  put_rect(emf, 0, 0, -1, -1);                                           // bounds: not computed
  emf.u32(1);                                                            // GM_COMPATIBLE
  emf.f32(static_cast<float>(kDeviceMm * kUnitsPerMm / kDevicePixels));  // .01 mm a pixel
  emf.f32(static_cast<float>(kDeviceMm * kUnitsPerMm / kDevicePixels));
  emf.i32(units(shape.points[0]));
  emf.i32(units(shape.points[1]));
  emf.u32(static_cast<std::uint32_t>(text.size()));
  emf.u32(kStringOffset);
  emf.u32(0);                   // options
  put_rect(emf, 0, 0, -1, -1);  // no clipping rectangle
  emf.u32(0);                   // no spacing array: the font's advances
  for (char16_t c : text) emf.u16(c);
  emf.end_record();
  emf.record(kSelectObject, {kSystemFont});  // lets the font go
  emf.record(kDeleteObject, {kFontHandle});
}

void put_shape(EmfBuffer& emf, const Shape& shape) {
  const std::vector<double>& p = shape.points;
  if (shape.kind == Shape::Kind::kText) {
    if (p.size() >= 2) put_text(emf, shape);
    return;
  }
  const bool closed = shape.kind == Shape::Kind::kRect || shape.kind == Shape::Kind::kEllipse ||
                      shape.kind == Shape::Kind::kPolygon;
  const std::size_t needed = shape.kind == Shape::Kind::kPolygon ? 6 : 4;
  if (p.size() < needed) return;
  select_pen(emf, shape);
  if (closed) select_brush(emf, shape);
  switch (shape.kind) {
    case Shape::Kind::kLine:
      emf.record(kMoveTo, {units(p[0]), units(p[1])});
      emf.record(kLineTo, {units(p[2]), units(p[3])});
      break;
    case Shape::Kind::kRect:
    case Shape::Kind::kEllipse: {
      const Box b = box_of(p);
      emf.record(shape.kind == Shape::Kind::kRect ? kRectangle : kEllipse,
                 {b.left, b.top, b.right, b.bottom});
      break;
    }
    case Shape::Kind::kPolyline:
      put_poly(emf, kPolyline, p);
      break;
    case Shape::Kind::kPolygon:
      put_poly(emf, kPolygon, p);
      break;
    case Shape::Kind::kText:
      break;
  }
  release(emf, finite_or_zero(shape.stroke_mm) > 0, closed && shape.fill);
}

void set_u32_at(std::string& bytes, std::size_t at, std::uint32_t v) {
  for (int k = 0; k < 4; ++k) bytes[at + k] = static_cast<char>((v >> (8 * k)) & 0xFF);
}

}  // namespace

double figure_side_mm(double mm) { return std::isfinite(mm) ? std::clamp(mm, 1.0, 1000.0) : 1; }

std::string figure_emf(const Figure& figure) {
  EmfBuffer emf;
  put_header(emf, figure_side_mm(figure.width_mm), figure_side_mm(figure.height_mm));
  put_mapping(emf);
  for (const Shape& shape : figure.shapes) put_shape(emf, shape);
  emf.record(kEof, {0, 16, 20});  // no palette; the offset and this record's size
  std::string& bytes = emf.bytes();
  set_u32_at(bytes, 48, static_cast<std::uint32_t>(bytes.size()));
  set_u32_at(bytes, 52, emf.records());
  return std::move(bytes);
}

}  // namespace zelkora::document
