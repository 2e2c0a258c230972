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

bool finite(double v) { return std::isfinite(v); }

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
  if (!document::drawable(s)) return;
  const std::vector<double>& p = s.points;
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

QTransform figure_placement(const QRectF& area, const document::Figure& figure) {
  const document::FigurePlacement place =
      document::figure_placement(area.left(), area.top(), area.width(), area.height(), figure);
  if (place.scale <= 0) return QTransform(0, 0, 0, 0, 0, 0);
  return QTransform(place.scale, 0, 0, place.scale, place.left, place.top);
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
    const double size = document::caption_mm(figure);
    const double baseline = document::caption_baseline_mm(figure);
    painter.setPen(colour_of(0x000000, colours));
    draw_text(painter, place.map(QPointF(document::figure_size_mm(figure).width / 2, baseline)),
              size * place.m11(), platform::qt::to_qstring(figure.caption),
              document::Align::kCenter);
  }
  painter.restore();
}

}  // namespace zelkora::desk
