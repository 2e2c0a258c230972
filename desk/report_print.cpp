// A report Document on pages; see the header.
#include "desk/report_print.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

#include "desk/report_view.h"
#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

namespace {

using platform::qt::to_qstring;

constexpr double kHeaderPt = 9;

// A length in mm that makes sense, or `fallback`.
double mm_or(double mm, double fallback, double most) {
  return std::isfinite(mm) && mm >= 0 && mm <= most ? mm : fallback;
}

struct Geometry {
  QSizeF page_mm;
  QMarginsF margins_mm;
};

Geometry geometry_of(const document::PageSetup& page) {
  Geometry g;
  g.page_mm = QSizeF(mm_or(page.width_mm, 210, 2000), mm_or(page.height_mm, 297, 2000));
  if (g.page_mm.width() < 50) g.page_mm.setWidth(210);
  if (g.page_mm.height() < 50) g.page_mm.setHeight(297);
  g.margins_mm = QMarginsF(mm_or(page.left_mm, 25, g.page_mm.width() / 3),
                           mm_or(page.top_mm, 25, g.page_mm.height() / 3),
                           mm_or(page.right_mm, 20, g.page_mm.width() / 3),
                           mm_or(page.bottom_mm, 20, g.page_mm.height() / 3));
  return g;
}

QFont body_font(const document::PageSetup& page) {
  QFont font = QGuiApplication::font();
  font.setPointSizeF(
      std::isfinite(page.font_pt) && page.font_pt >= 4 && page.font_pt <= 72 ? page.font_pt : 10.5);
  return font;
}

QString footer(int page, int pages) {
  return to_qstring(document::kFooterPage) + QString::number(page) +
         to_qstring(document::kFooterOf) + QString::number(pages) +
         to_qstring(document::kFooterEnd);
}

// The header over the body and the footer under it.
void paint_margins(QPainter& painter, const document::Document& doc, const QRectF& body,
                   qreal per_mm, int page, int pages) {
  QFont font = body_font(doc.page);
  font.setPointSizeF(kHeaderPt);
  painter.setFont(font);
  painter.setPen(Qt::black);
  const QFontMetricsF metrics(font, painter.device());
  const qreal rule_y = body.top() - 4 * per_mm;
  const QRectF header(body.left(), rule_y - metrics.height() - per_mm, body.width(),
                      metrics.height());
  painter.drawText(header, Qt::AlignLeft | Qt::AlignBottom, to_qstring(doc.program));
  painter.drawText(header, Qt::AlignRight | Qt::AlignBottom, to_qstring(doc.project));
  painter.setPen(QPen(Qt::black, 0.3 * per_mm));
  painter.drawLine(QPointF(body.left(), rule_y), QPointF(body.right(), rule_y));
  const QRectF bottom(body.left(), body.bottom() + 6 * per_mm, body.width(), metrics.height());
  painter.drawText(bottom, Qt::AlignHCenter | Qt::AlignTop, footer(page, pages));
}

}  // namespace

int print_report(const document::Document& doc, QPagedPaintDevice& device) {
  const Geometry g = geometry_of(doc.page);
  const QPageSize size =
      std::abs(g.page_mm.width() - 210) < 0.5 && std::abs(g.page_mm.height() - 297) < 0.5
          ? QPageSize(QPageSize::A4)
          : QPageSize(g.page_mm, QPageSize::Millimeter);
  device.setPageLayout(
      QPageLayout(size, QPageLayout::Portrait, QMarginsF(), QPageLayout::Millimeter));
  QPainter painter;
  if (!painter.begin(&device)) return 0;
  // The painter's origin is the paper's corner; its units the device's.
  const qreal per_mm = device.logicalDpiX() / 25.4;
  const QMarginsF& m = g.margins_mm;
  const QRectF body(m.left() * per_mm, m.top() * per_mm,
                    (g.page_mm.width() - m.left() - m.right()) * per_mm,
                    (g.page_mm.height() - m.top() - m.bottom()) * per_mm);

  QTextDocument text;
  text.documentLayout()->setPaintDevice(&device);
  // The page first, so that the text is laid out once, to the page's size.
  text.setDocumentMargin(0);
  text.setPageSize(body.size());
  fill_report(text, doc, ReportLook{body_font(doc.page), {}, {}});
  const int pages = std::max(1, text.pageCount());
  QAbstractTextDocumentLayout::PaintContext context;
  context.palette.setColor(QPalette::Text, Qt::black);
  for (int page = 0; page < pages; ++page) {
    if (page > 0 && !device.newPage()) break;
    paint_margins(painter, doc, body, per_mm, page + 1, pages);
    painter.save();
    painter.translate(body.left(), body.top() - page * body.height());
    context.clip = QRectF(0, page * body.height(), body.width(), body.height());
    painter.setClipRect(context.clip);
    text.documentLayout()->draw(&painter, context);
    painter.restore();
  }
  painter.end();
  return pages;
}

bool write_report_pdf(const document::Document& doc, TextView file, Text* why) {
  QSaveFile out(to_qstring(file));
  if (out.open(QIODevice::WriteOnly)) {
    {
      QPdfWriter pdf(&out);
      pdf.setTitle(to_qstring(doc.title));
      pdf.setCreator(QGuiApplication::applicationName());
      pdf.setResolution(600);
      if (print_report(doc, pdf) == 0) {
        if (why) *why = u"无法生成 PDF";
        out.cancelWriting();
        return false;
      }
    }
    if (out.commit()) return true;
  }
  if (why) *why = platform::qt::to_text(out.errorString());
  return false;
}

}  // namespace zelkora::desk
