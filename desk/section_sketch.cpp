// The cross-section sketch of a beam; see the header.
#include "desk/section_sketch.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

namespace {

// The most bars drawn: a real section has a few dozen; what goes beyond
// this is no drawing anyone could read.
constexpr std::size_t kMostBars = 20000;
// The largest image side made, in device pixels.
constexpr int kMostImageSide = 8192;

QColor mixed(const QColor& a, const QColor& b, qreal share_of_b) {
  const auto mix = [share_of_b](int x, int y) {
    return static_cast<int>(std::lround(x + (y - x) * share_of_b));
  };
  return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

bool usable(double v) { return std::isfinite(v) && v > 0; }

QString number_text(double v) { return QLocale::c().toString(v, 'g', 6); }

// A dimension line from `from` to `to` with its two ticks (short slashes at
// 45 degrees, as drawings have them).
void dimension_line(QPainter& painter, QPointF from, QPointF to, qreal tick) {
  painter.drawLine(from, to);
  for (const QPointF at : {from, to}) {
    painter.drawLine(at + QPointF(-tick, tick), at + QPointF(tick, -tick));
  }
}

}  // namespace

SketchColours sketch_colours(const QPalette& palette) {
  SketchColours c;
  c.ground = palette.color(QPalette::Base);
  c.outline = palette.color(QPalette::Text);
  const bool dark = c.ground.lightness() < 128;
  c.concrete = mixed(c.ground, c.outline, 0.12);
  c.stirrup = mixed(c.ground, c.outline, 0.55);
  // The tension bars in the ink of the text, the compression bars blue: both
  // stand out from the concrete on either palette.
  c.tension = c.outline;
  c.compression = dark ? QColor(0x6F, 0xA8, 0xFF) : QColor(0x1F, 0x5F, 0xC8);
  c.hint = palette.color(QPalette::PlaceholderText);
  return c;
}

namespace {

// The room of the drawing: the text's height and the gap between parts.
struct Room {
  qreal fh, gap, left, bottom;
  explicit Room(const QFontMetricsF& metrics)
      : fh(metrics.height()),
        gap(std::max<qreal>(4, fh * 0.4)),
        // The dimension of h on the left; that of b and the caption below.
        left(fh + 3 * gap),
        bottom(2 * fh + 3 * gap) {}
};

QRectF section_in(const QRectF& area, const SectionSketch& sketch, const Room& room) {
  if (!area.isValid() || !std::isfinite(area.width()) || !std::isfinite(area.height()) ||
      !usable(sketch.b) || !usable(sketch.h)) {
    return {};
  }
  const qreal width = area.width() - room.left - 2 * room.gap;
  const qreal height = area.height() - room.bottom - 2 * room.gap;
  const double scale = std::min(width / sketch.b, height / sketch.h);
  if (!usable(scale) || width < 4 || height < 4) return {};
  // The section and its dimensions centred together.
  const QSizeF size(sketch.b * scale, sketch.h * scale);
  return {QPointF(area.center().x() - (room.left + size.width()) / 2 + room.left,
                  area.center().y() - (size.height() + room.bottom) / 2),
          size};
}

}  // namespace

QRectF section_rect(const QRectF& area, const SectionSketch& sketch, const QFont& font) {
  return section_in(area, sketch, Room(QFontMetricsF(font)));
}

void paint_section(QPainter& painter, const QRectF& area, const SectionSketch& sketch,
                   const QPalette& palette) {
  if (!area.isValid() || !std::isfinite(area.width()) || !std::isfinite(area.height())) return;
  const SketchColours colours = sketch_colours(palette);
  painter.save();
  painter.setClipRect(area, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing, true);
  const QFontMetricsF metrics(painter.font());
  const Room room(metrics);
  const qreal fh = room.fh, gap = room.gap;
  const QRectF section = section_in(area, sketch, room);
  if (section.isNull()) {
    painter.setPen(colours.hint);
    painter.drawText(area.adjusted(gap, gap, -gap, -gap), Qt::AlignCenter | Qt::TextWordWrap,
                     platform::qt::to_qstring(kSketchHint));
    painter.restore();
    return;
  }
  const double scale =
      section.width() > 0 ? section.width() / sketch.b : section.height() / sketch.h;
  // A point of the section in mm, y up from the bottom face.
  const auto at = [&](double x, double y) {
    return QPointF(section.left() + x * scale, section.bottom() - y * scale);
  };

  painter.setPen(QPen(colours.outline, 1.2));
  painter.setBrush(colours.concrete);
  painter.drawRect(section);

  // The stirrup: its outer face at the cover, its line as thick as its bar.
  const double cover = sketch.cover, sd = sketch.stirrup_d;
  if (usable(sd) && std::isfinite(cover) && cover >= 0 && 2 * cover + 2 * sd < sketch.b &&
      2 * cover + 2 * sd < sketch.h) {
    const double inset = cover + sd / 2;
    const QRectF line(at(inset, sketch.h - inset), at(sketch.b - inset, inset));
    const qreal radius =
        std::min<qreal>(1.75 * sd * scale, std::min(line.width(), line.height()) / 2);
    painter.setPen(QPen(colours.stirrup, std::max<qreal>(1, sd * scale)));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(line, radius, radius);
  }

  // The bars; those that cannot be in sight are passed over.
  painter.setPen(Qt::NoPen);
  const std::size_t bars = std::min(sketch.bars.size(), kMostBars);
  const qreal most_radius = std::max(area.width(), area.height());
  for (std::size_t i = 0; i < bars; ++i) {
    const SectionSketch::Bar& bar = sketch.bars[i];
    if (!usable(bar.d) || !std::isfinite(bar.x) || !std::isfinite(bar.y)) continue;
    const QPointF centre = at(bar.x, bar.y);
    const qreal radius = std::min<qreal>(std::max<qreal>(bar.d * scale / 2, 1), most_radius);
    if (!std::isfinite(centre.x()) || !std::isfinite(centre.y()) ||
        !area.adjusted(-radius, -radius, radius, radius).contains(centre)) {
      continue;
    }
    painter.setBrush(bar.tension ? colours.tension : colours.compression);
    painter.drawEllipse(centre, radius, radius);
  }

  // The dimension of b under the section, its number over the line, the
  // caption under it; the dimension of h on the left, read from below.
  painter.setPen(QPen(colours.outline, 1));
  painter.setBrush(Qt::NoBrush);
  const qreal tick = gap * 0.6;
  const qreal below = section.bottom() + gap + fh + 2;
  for (const qreal x : {section.left(), section.right()}) {
    painter.drawLine(QPointF(x, section.bottom() + 2), QPointF(x, below + tick));
  }
  dimension_line(painter, QPointF(section.left(), below), QPointF(section.right(), below), tick);
  const qreal text_width =
      std::max(section.width(), metrics.horizontalAdvance(number_text(sketch.b)) + 2);
  painter.drawText(QRectF(section.center().x() - text_width / 2, below - fh - 1, text_width, fh),
                   Qt::AlignHCenter | Qt::AlignBottom, number_text(sketch.b));
  const qreal beside = section.left() - 2 * gap;
  for (const qreal y : {section.top(), section.bottom()}) {
    painter.drawLine(QPointF(section.left() - 2, y), QPointF(beside - tick, y));
  }
  dimension_line(painter, QPointF(beside, section.bottom()), QPointF(beside, section.top()), tick);
  painter.save();
  painter.translate(beside - 2, section.center().y());
  painter.rotate(-90);
  const qreal text_height =
      std::max(section.height(), metrics.horizontalAdvance(number_text(sketch.h)) + 2);
  painter.drawText(QRectF(-text_height / 2, -fh, text_height, fh),
                   Qt::AlignHCenter | Qt::AlignBottom, number_text(sketch.h));
  painter.restore();
  const QString caption = sketch.caption.empty()
                              ? number_text(sketch.b) + QStringLiteral("×") + number_text(sketch.h)
                              : platform::qt::to_qstring(sketch.caption);
  painter.drawText(
      QRectF(section.center().x() - area.width() / 2, below + gap, area.width(), fh + 2),
      Qt::AlignHCenter | Qt::AlignTop, caption);
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
