// A Figure painted with QPainter; see the header.
#include "desk/figure_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

namespace {

using document::Shape;

// The text is laid out in a font of this pixel size and scaled to its height.
constexpr int kTextPixels = 64;
constexpr double kCaptionMm = 3.5;  // a caption without a text shape to size it

bool finite(double v) { return std::isfinite(v); }

double caption_mm(const document::Figure& figure) {
  for (const Shape& s : figure.shapes) {
    if (s.kind == Shape::Kind::kText && finite(s.text_mm) && s.text_mm > 0) return s.text_mm;
  }
  return kCaptionMm;
}

QColor colour_of(document::Colour c, const FigureColours& colours) {
  const auto found = colours.find(c);
  return found != colours.end() ? found->second : QColor::fromRgb(c & 0xFFFFFF);
}

// A text with its anchor at `at` (the baseline), `height` its font's size.
void draw_text(QPainter& painter, QPointF at, qreal height, const QString& text,
               document::Align align) {
  QFont font = painter.font();
  font.setPixelSize(kTextPixels);
  const qreal advance = QFontMetricsF(font).horizontalAdvance(text);
  const qreal shift = align == document::Align::kLeft    ? 0
                      : align == document::Align::kRight ? -advance
                                                         : -advance / 2;
  painter.save();
  painter.setFont(font);
  painter.translate(at);
  painter.scale(height / kTextPixels, height / kTextPixels);
  painter.drawText(QPointF(shift, 0), text);
  painter.restore();
}

void draw_shape(QPainter& painter, const QTransform& place, const Shape& s,
                const FigureColours& colours) {
  const std::vector<double>& p = s.points;
  if (p.size() < 2 || !std::all_of(p.begin(), p.end(), finite)) return;
  const qreal unit = place.m11();
  QPolygonF points;
  for (std::size_t i = 0; i + 1 < p.size(); i += 2) points << place.map(QPointF(p[i], p[i + 1]));
  const bool stroked = finite(s.stroke_mm) && s.stroke_mm > 0;
  QPen pen = stroked ? QPen(colour_of(s.stroke, colours), std::max<qreal>(s.stroke_mm * unit, 0.5))
                     : QPen(Qt::NoPen);
  pen.setJoinStyle(Qt::RoundJoin);
  painter.setPen(pen);
  painter.setBrush(s.fill ? QBrush(colour_of(*s.fill, colours)) : QBrush(Qt::NoBrush));
  switch (s.kind) {
    case Shape::Kind::kLine:
      if (points.size() >= 2) painter.drawLine(points[0], points[1]);
      break;
    case Shape::Kind::kRect:
      if (points.size() >= 2) painter.drawRect(QRectF(points[0], points[1]).normalized());
      break;
    case Shape::Kind::kEllipse:
      if (points.size() >= 2) painter.drawEllipse(QRectF(points[0], points[1]).normalized());
      break;
    case Shape::Kind::kPolyline:
      painter.drawPolyline(points);
      break;
    case Shape::Kind::kPolygon:
      painter.drawPolygon(points);
      break;
    case Shape::Kind::kText:
      if (finite(s.text_mm) && s.text_mm > 0 && !s.text.empty()) {
        painter.setPen(colour_of(s.stroke, colours));
        draw_text(painter, points[0], s.text_mm * unit, platform::qt::to_qstring(s.text),
                  s.text_align);
      }
      break;
  }
}

}  // namespace

QSizeF figure_size_mm(const document::Figure& figure) {
  const qreal w = finite(figure.width_mm) ? std::max(0.0, figure.width_mm) : 0;
  qreal h = finite(figure.height_mm) ? std::max(0.0, figure.height_mm) : 0;
  if (!figure.caption.empty()) h += kCaptionLines * caption_mm(figure);
  return {w, h};
}

QTransform figure_placement(const QRectF& area, const document::Figure& figure) {
  const QSizeF size = figure_size_mm(figure);
  if (!area.isValid() || !finite(area.width()) || !finite(area.height()) || size.width() <= 0 ||
      size.height() <= 0) {
    return QTransform(0, 0, 0, 0, 0, 0);
  }
  const qreal scale = std::min(area.width() / size.width(), area.height() / size.height());
  if (!finite(scale) || scale <= 0) return QTransform(0, 0, 0, 0, 0, 0);
  const QPointF corner(area.center().x() - size.width() * scale / 2,
                       area.center().y() - size.height() * scale / 2);
  return QTransform(scale, 0, 0, scale, corner.x(), corner.y());
}

void paint_figure(QPainter& painter, const QRectF& area, const document::Figure& figure,
                  const FigureColours& colours) {
  const QTransform place = figure_placement(area, figure);
  if (place.m11() <= 0) return;
  painter.save();
  painter.setClipRect(area, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing, true);
  for (const Shape& shape : figure.shapes) draw_shape(painter, place, shape, colours);
  if (!figure.caption.empty()) {
    const double size = caption_mm(figure);
    const double baseline = std::max(0.0, figure.height_mm) + size * 1.15;
    painter.setPen(colour_of(0x000000, colours));
    draw_text(painter, place.map(QPointF(std::max(0.0, figure.width_mm) / 2, baseline)),
              size * place.m11(), platform::qt::to_qstring(figure.caption),
              document::Align::kCenter);
  }
  painter.restore();
}

}  // namespace zelkora::desk
