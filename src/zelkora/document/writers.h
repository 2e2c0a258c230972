/// The writers of a report Document (report_document.h): each returns the
/// whole file as bytes. None fails: every Document, whatever its texts, gives
/// a file that Word, LibreOffice and a browser open.
///
///   std::string docx = write_docx(doc);   // Office Open XML (a zip container)
///   std::string rtf = write_rtf(doc);     // RTF 1.9, code page 936 fonts
///   std::string html = write_html(doc);   // one UTF-8 file, styles inline @file
#pragma once

#include <string>

#include "zelkora/document/report_document.h"

namespace zelkora::document {
/// The document as a Word file (DOCX): the bytes of its ZIP container.
std::string write_docx(const Document& document);
std::string write_rtf(const Document& document);  ///< The document as RTF 1.9.
std::string write_html(const Document& document);
///< The document as one UTF-8 HTML5 file with its styles.
}  // namespace zelkora::document
