// The cross-section sketch of a beam; see the header.
#include "desk/section_sketch.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desk/figure_painter.h"
#include "program/section_figure.h"
#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

namespace {

// The largest image side made, in device pixels.
constexpr int kMostImageSide = 8192;

}  // namespace

SketchColours sketch_colours(const QPalette& palette) {
  SketchColours c;
  c.ground = palette.color(QPalette::Base);
  c.outline = palette.color(QPalette::Text);
  const auto screen = sketch_screen_colours(c.ground.rgb(), c.outline.rgb());
  c.concrete = QColor::fromRgb(screen.at(figure_colour::kConcrete));
  c.stirrup = QColor::fromRgb(screen.at(figure_colour::kStirrup));
  c.tension = c.outline;
  c.compression = QColor::fromRgb(screen.at(figure_colour::kCompression));
  c.hint = palette.color(QPalette::PlaceholderText);
  return c;
}

FigureColours sketch_figure_colours(const QPalette& palette) {
  const SketchColours c = sketch_colours(palette);
  return {{figure_colour::kInk, c.outline},
          {figure_colour::kConcrete, c.concrete},
          {figure_colour::kStirrup, c.stirrup},
          {figure_colour::kCompression, c.compression}};
}

QRectF section_rect(const QRectF& area, const SectionSketch& sketch, const QFont& /*font*/) {
  const document::Figure figure = section_figure(sketch);
  const QTransform place = figure_placement(area, figure);
  const FigureRect r = section_in_figure(figure);
  if (place.m11() <= 0 || (r.width <= 0 && r.height <= 0)) return {};
  return place.mapRect(QRectF(r.x, r.y, r.width, r.height));
}

void paint_section(QPainter& painter, const QRectF& area, const SectionSketch& sketch,
                   const QPalette& palette) {
  if (!area.isValid() || !std::isfinite(area.width()) || !std::isfinite(area.height())) return;
  const document::Figure figure = section_figure(sketch);
  if (figure_placement(area, figure).m11() > 0) {
    paint_figure(painter, area, figure, sketch_figure_colours(palette));
    return;
  }
  const qreal gap = std::max<qreal>(4, QFontMetricsF(painter.font()).height() * 0.4);
  painter.save();
  painter.setClipRect(area, Qt::IntersectClip);
  painter.setPen(sketch_colours(palette).hint);
  painter.drawText(area.adjusted(gap, gap, -gap, -gap), Qt::AlignCenter | Qt::TextWordWrap,
                   platform::qt::to_qstring(kSketchHint));
  painter.restore();
}

QImage section_image(const SectionSketch& sketch, QSize size, qreal device_pixel_ratio,
                     const QPalette& palette) {
  const qreal ratio = std::isfinite(device_pixel_ratio) && device_pixel_ratio > 0
                          ? std::min<qreal>(device_pixel_ratio, 16)
                          : 1;
  if (size.isEmpty() || size.width() * ratio > kMostImageSide ||
      size.height() * ratio > kMostImageSide) {
    return {};
  }
  QImage image(QSize(static_cast<int>(std::ceil(size.width() * ratio)),
                     static_cast<int>(std::ceil(size.height() * ratio))),
               QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return image;
  image.setDevicePixelRatio(ratio);
  image.fill(sketch_colours(palette).ground);
  QPainter painter(&image);
  paint_section(painter, QRectF(QPointF(0, 0), QSizeF(size)), sketch, palette);
  return image;
}

SectionView::SectionView(QWidget* parent) : QWidget(parent) {
  setAccessibleName(QStringLiteral("截面图"));
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
}

void SectionView::set_sketch(const SectionSketch& sketch) {
  sketch_ = sketch;
  setAccessibleDescription(platform::qt::to_qstring(sketch.caption));
  update();
}

void SectionView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  paint_section(painter, QRectF(rect()), sketch_, palette());
}

}  // namespace zelkora::desk
