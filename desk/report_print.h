// A report Document on pages: PDF (QPdfWriter), the printer and its preview
// (QPrinter). Each page has the document's page size and margins
// (PageSetup), a header (the program's name on the left, the project on the
// right, a rule under them), the body (report_view.h's text laid out to the
// body's size, page after page) and the footer "第 N 页 共 M 页". Text stays
// text: a PDF embeds its fonts and can be searched and copied.
//
//   QPdfWriter pdf(file);
//   const int pages = print_report(doc, pdf);
//   Text why;
//   if (!write_report_pdf(doc, u"beam.pdf", &why)) ...
#pragma once

#include <QPagedPaintDevice>

#include "zelkora/document/report_document.h"

namespace zelkora::desk {

// Paints the document on `device` from its first page on, its page size and
// margins set from the document's; the number of pages, 0 when the device
// cannot be painted on.
int print_report(const document::Document& document, QPagedPaintDevice& device);

// The document as a PDF file; false with the reason in `why` when the file
// cannot be written.
bool write_report_pdf(const document::Document& document, TextView file, Text* why = nullptr);

}  // namespace zelkora::desk
