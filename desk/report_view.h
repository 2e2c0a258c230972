// A report Document (zelkora/document/report_document.h) as a QTextDocument:
// what the form's report view shows and what report_print.h lays out on
// pages. Paragraphs keep their runs (bold, sub- and superscripts), headings
// and the title stand out, the header's rule is a rule, tables are real
// tables (borders, column alignment and widths), the steel-grade symbols are
// set in the project's font ("Zelkora Grade", loaded by load_grade_font;
// without it the letters A to D stand for them), and a Figure is an object
// of the text painted by figure_painter.h, so that a PDF gets its vectors.
//
//   load_grade_font();                    // once, at program start
//   ReportLook look{browser->font()};
//   fill_report(*browser->document(), doc, look);
//
// Any Document fills without harm: control characters become blanks, tables
// with rows of different lengths are padded, empty documents give an empty
// text.
#pragma once

#include <QFont>
#include <QString>
#include <QTextDocument>

#include "desk/figure_painter.h"
#include "desk/section_sketch.h"
#include "program/form_report.h"
#include "zelkora/document/report_document.h"

class QTextBrowser;

namespace zelkora::desk {

// Adds the grade symbols' font to the application's fonts (once; later
// calls answer the first); true when its family can be used.
bool load_grade_font();

// How the report looks: the body's font, the figure's colours (none: black
// on white), and a notice shown in red above the report (an out-of-date
// report's).
struct ReportLook {
  QFont font;
  FigureColours colours;
  QString notice;
};

// `text` emptied and filled with the document.
void fill_report(QTextDocument& text, const document::Document& document, const ReportLook& look);

}  // namespace zelkora::desk
