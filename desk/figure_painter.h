// A document::Figure (a vector drawing in mm, report_document.h) painted
// with QPainter: the form's sketch, the report view, the PDF and the printer
// draw it through this one renderer. Lines, outlines and text stay vectors
// on any device (QPdfWriter keeps them so).
//
//   paint_figure(painter, QRectF(0, 0, 320, 260), section_figure(sketch));
//   paint_figure(painter, area, figure, {{0x000000, palette.color(QPalette::Text)}});
//
// The figure is kept in proportion and centred in the area, its caption
// (when it has one) under the drawing in the size of its first text. A
// colour map turns the figure's colours (black on white, for files) into
// the screen's (a light or dark palette); colours not in it stay. Any figure
// paints without harm: points that are not numbers, shapes with too few
// points and absurd sizes are passed over.
#pragma once

#include <QColor>
#include <QRectF>
#include <QTransform>
#include <map>

#include "zelkora/document/figure_placement.h"
#include "zelkora/document/report_document.h"

class QPainter;

namespace zelkora::desk {

using FigureColours = std::map<document::Colour, QColor>;

// Where paint_figure puts the figure's mm in `area` (document::figure_placement
// as a transform). An invalid transform (QTransform of all zero) when nothing
// fits.
QTransform figure_placement(const QRectF& area, const document::Figure& figure);

void paint_figure(QPainter& painter, const QRectF& area, const document::Figure& figure,
                  const FigureColours& colours = {});

}  // namespace zelkora::desk
