// The cross-section of a beam drawn to scale: the concrete b × h, the
// stirrup, the bars, the dimension lines of b and h and the caption under
// them. The form shows it beside its values (SectionView) and the report
// carries it as a figure: both paint the one drawing of section_figure.h
// through figure_painter.h, here in the palette's colours.
//
//   QPainter painter(&image);
//   paint_section(painter, QRectF(0, 0, 320, 260), beam_sketch(values, chr));
//
// Any sketch is drawn without harm: one without a size (b or h not above 0,
// or not a number) shows a short hint instead; bars outside the section or
// outside the area, absurd sizes and very many bars draw what fits.
#pragma once

#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QWidget>

#include "desk/figure_painter.h"
#include "program/beam_design.h"
#include "program/section_figure.h"

class QPainter;

namespace zelkora::desk {

// The colours of the drawing, from the palette (light or dark):
// sketch_screen_colours of its base and text.
struct SketchColours {
  QColor ground, concrete, outline, stirrup, tension, compression, hint;
};
SketchColours sketch_colours(const QPalette& palette);
// The figure's colours (black on white) turned into the palette's.
FigureColours sketch_figure_colours(const QPalette& palette);

// Draws the sketch into `area` (logical coordinates of the painter), on
// whatever the painter's device already shows there: the figure kept in
// proportion and centred, its dimension lines and caption included. The
// painter's font family writes the numbers; the hint is in its font.
void paint_section(QPainter& painter, const QRectF& area, const SectionSketch& sketch,
                   const QPalette& palette = QGuiApplication::palette());

// Where paint_section puts the section b × h in `area` (`font` is not
// needed: the figure sizes its own text); an empty rectangle when it draws
// none (the hint then).
// The point (x, y) of the section in mm, y up from the bottom face, is at
// (left + x · width / b, bottom − y · height / h).
QRectF section_rect(const QRectF& area, const SectionSketch& sketch, const QFont& font);

// The sketch on the palette's base as an image of `size` logical pixels at
// `device_pixel_ratio`; a null image for a size that cannot be made.
QImage section_image(const SectionSketch& sketch, QSize size, qreal device_pixel_ratio,
                     const QPalette& palette = QGuiApplication::palette());

// The sketch as a widget: it follows set_sketch and the palette.
class SectionView : public QWidget {
  Q_OBJECT

 public:
  explicit SectionView(QWidget* parent = nullptr);

  void set_sketch(const SectionSketch& sketch);
  const SectionSketch& sketch() const { return sketch_; }

  QSize minimumSizeHint() const override { return {160, 120}; }
  QSize sizeHint() const override { return {320, 240}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  SectionSketch sketch_;
};

}  // namespace zelkora::desk
