// A Figure (report_document.h) as an Enhanced Metafile: the vector picture
// that Word and LibreOffice place in DOCX (image/x-emf) and RTF (\emfblip).
//
//   std::string emf = figure_emf(figure);
#pragma once

#include <string>

#include "zelkora/document/report_document.h"

namespace zelkora::document {

std::string figure_emf(const Figure& figure);

}  // namespace zelkora::document
