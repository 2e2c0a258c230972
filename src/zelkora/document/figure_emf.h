// A Figure (report_document.h) as an Enhanced Metafile: the vector picture
// that Word and LibreOffice place in DOCX (image/x-emf) and RTF (\emfblip).
//
//   std::string emf = figure_emf(figure);
//
// One logical unit is 0.01 mm, y down, on a reference device of 96 pixels
// to the inch. Lines and outlines are drawn with a pen of the shape's width
// (none for 0), areas with a solid brush of its fill (none without one);
// text in 宋体 at its height, in the stroke colour, from its baseline anchor
// per its alignment, with the font's own spacing (the file has no widths).
// Coordinates that are no number are 0; the rest are kept within ±10 m.
#pragma once

#include <string>

#include "zelkora/document/report_document.h"

namespace zelkora::document {

std::string figure_emf(const Figure& figure);

// The size a figure's side is drawn at, in millimetres: its own, kept within
// 1 to 1000 mm (1 for a side that is no number).
double figure_side_mm(double mm);

}  // namespace zelkora::document
