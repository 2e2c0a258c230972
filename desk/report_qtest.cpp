// Tests of the report leaving the desktop program: the section as a figure
// and the beam's report as a PDF, read back by poppler's tools.
#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QPdfWriter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>

#include "desk/calc_form.h"
#include "desk/desk_app.h"
#include "desk/report_print.h"
#include "desk/report_view.h"
#include "desk/script.h"
#include "program/footing_figure.h"
#include "program/section_figure.h"
#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

namespace {

// What a poppler tool prints for `file`, or a null string without the tool.
QString poppler(const char* tool, const QStringList& args) {
  const QString program = QStandardPaths::findExecutable(QString::fromLatin1(tool));
  if (program.isEmpty()) return {};
  QProcess process;
  process.start(program, args);
  if (!process.waitForFinished(30000)) return {};
  return QString::fromUtf8(process.readAllStandardOutput());
}

}  // namespace

class ReportTest : public QObject {
  Q_OBJECT

 private slots:
  // The bars stand inside the section in their colours, whatever else the
  // sketch holds; what is not a number or lies off the drawing is left out.
  void sectionFigureKeepsTheBarsInside() {
    const double nan = std::nan("");
    const struct {
      const char* name;
      SectionSketch sketch;
      std::size_t bars;  // drawn
    } cases[] = {
        {"a beam",
         {250,
          500,
          25,
          8,
          {{45, 45, 20, true}, {205, 45, 20, true}, {125, 455, 16, false}},
          u"250×500"},
         3},
        {"wide and flat", {6000, 150, 20, 10, {{3000, 75, 100, true}}, {}}, 1},
        {"bars not numbers or far off",
         {250,
          500,
          25,
          8,
          {{nan, 45, 20, true}, {1e12, 45, 20, true}, {45, 45, -3, true}, {45, 45, 20, false}},
          {}},
         1},
        {"no size", {0, 500, 25, 8, {{45, 45, 20, true}}, {}}, 0},
    };
    for (const auto& c : cases) {
      const document::Figure figure = section_figure(c.sketch);
      const FigureRect section = section_in_figure(figure);
      std::size_t bars = 0;
      for (const document::Shape& shape : figure.shapes) {
        for (std::size_t i = 0; i < shape.points.size(); i += 2) {
          QVERIFY2(shape.points[i] >= -1e-9 && shape.points[i] <= figure.width_mm + 1e-9 &&
                       shape.points[i + 1] >= -1e-9 &&
                       shape.points[i + 1] <= figure.height_mm + 1e-9,
                   c.name);
        }
        if (shape.kind != document::Shape::Kind::kEllipse) continue;
        const double x = (shape.points[0] + shape.points[2]) / 2;
        const double y = (shape.points[1] + shape.points[3]) / 2;
        QVERIFY2(x > section.x && x < section.x + section.width && y > section.y &&
                     y < section.y + section.height,
                 c.name);
        const SectionSketch::Bar& bar = c.sketch.bars[c.sketch.bars.size() - c.bars + bars];
        QCOMPARE(*shape.fill, bar.tension ? figure_colour::kInk : figure_colour::kCompression);
        ++bars;
      }
      QCOMPARE(bars, c.bars);
      QCOMPARE(figure.shapes.empty(), c.sketch.b <= 0);
    }
    QCOMPARE(section_figure(cases[1].sketch).caption, Text(u"6000×150"));
  }

  // The footing's plan: everything inside the drawing, the column where it
  // stands (or left out when it does not fit), each side's pressure a
  // trapezoid or, with the base lifting off, a triangle as long as the part
  // in contact.
  void footingFigureDrawsThePressures() {
    using Profile = FootingSketch::Profile;
    const double nan = std::nan("");
    const struct {
      const char* name;
      FootingSketch sketch;
      int columns;                        // grey rectangles of the column
      std::vector<std::size_t> diagrams;  // corners of each pressure diagram
      double reach = 0;                   // the triangle along b reaches this share of the plan
    } cases[] = {
        {"centred, full contact",
         {2500, 3000, 500, 500, 0, 0, Profile{180, 95, 2500}, Profile{150, 125, 3000}, {}},
         1,
         {4, 4}},
        {"lifting off along b",
         {2000, 2000, 400, 400, 300, 0, Profile{0, 240, 1500}, std::nullopt, {}},
         1,
         {3},
         0.75},
        {"column off the base",
         {1000, 1000, 400, 400, 450, 0, std::nullopt, Profile{100, 100, 1000}, {}},
         0,
         {4}},
        {"pressures not numbers",
         {1500, 1500, 400, 400, 0, 0, Profile{nan, 1, 1500}, std::nullopt, {}},
         1,
         {}},
        {"no base", {0, 1500, 400, 400, 0, 0, Profile{100, 100, 1}, std::nullopt, {}}, 0, {}},
    };
    for (const auto& c : cases) {
      const document::Figure figure = footing_figure(c.sketch);
      QCOMPARE(figure.shapes.empty(), c.sketch.b <= 0);
      int columns = 0;
      std::vector<std::size_t> diagrams;
      for (const document::Shape& shape : figure.shapes) {
        for (std::size_t i = 0; i < shape.points.size(); i += 2) {
          QVERIFY2(shape.points[i] >= -1e-9 && shape.points[i] <= figure.width_mm + 1e-9 &&
                       shape.points[i + 1] >= -1e-9 &&
                       shape.points[i + 1] <= figure.height_mm + 1e-9,
                   c.name);
        }
        if (shape.kind == document::Shape::Kind::kRect && shape.fill == figure_colour::kStirrup)
          ++columns;
        if (shape.kind != document::Shape::Kind::kPolygon) continue;
        diagrams.push_back(shape.points.size() / 2);
        if (c.reach > 0 && diagrams.size() == 1) {
          const document::Shape& plan = figure.shapes.front();
          const double share =
              (plan.points[2] - shape.points[4]) / (plan.points[2] - plan.points[0]);
          QVERIFY2(std::abs(share - c.reach) < 1e-9, c.name);
        }
      }
      QCOMPARE(columns, c.columns);
      QCOMPARE(diagrams, c.diagrams);
    }
  }

  // Documents made by hand, hostile ones too, as PDF: every one gives a file
  // poppler reads, with its texts, table cells and footer; the grade symbol
  // brings its font.
  void documentsAsPdf() {
    using document::Paragraph;
    using document::Run;
    const auto paragraph = [](Paragraph::Kind kind, std::vector<Run> runs) {
      Paragraph p;
      p.kind = kind;
      p.level = kind == Paragraph::Kind::kHeading ? 1 : 0;
      p.runs = std::move(runs);
      return p;
    };
    document::Table table;
    table.header = true;
    table.align = {document::Align::kLeft, document::Align::kRight};
    table.widths = {12, 8};
    table.rows = {
        {{Run{u"钢筋"}}, {Run{u"根数"}}},
        {{Run{u"\uE002", false, document::Script::kNormal, true}, Run{u"20"}}, {Run{u"4"}}},
        {{Run{u"ragged"}}}};
    document::Document tabled;
    tabled.program = u"梁配筋计算";
    tabled.project = u"某办公楼";
    tabled.blocks = {paragraph(Paragraph::Kind::kTitle, {Run{u"计算书"}}),
                     paragraph(Paragraph::Kind::kHeading, {Run{u"一、设计资料", true}}), table,
                     section_figure({250, 500, 25, 8, {{45, 45, 20, true}}, {}})};
    document::Document hostile;
    hostile.project = Text(u"a\x01b\r\n") + Text(1, u'\xD800') + u"<&>";
    hostile.blocks = {paragraph(Paragraph::Kind::kText,
                                {Run{Text(20000, u'长') + u"\n\t\x7F" + Text(1, u'\xDC00')}}),
                      document::Table{}, document::Figure{}};
    const struct {
      const char* name;
      document::Document doc;
      QStringList wanted;  // blanks left out
    } cases[] = {
        {"tabled",
         tabled,
         {"梁配筋计算", "某办公楼", "一、设计资料", "根数", "ragged", "第1页共1页"}},
        {"hostile", hostile, {"长长长", "第1页共"}},
        {"empty", document::Document{}, {"第1页共1页"}},
    };
    QTemporaryDir dir;
    for (const auto& c : cases) {
      const QString pdf = dir.filePath(QString::fromLatin1(c.name) + QStringLiteral(".pdf"));
      QVERIFY2(write_report_pdf(c.doc, platform::qt::to_text(pdf)), c.name);
      const QString text = poppler("pdftotext", {pdf, QStringLiteral("-")});
      if (text.isNull()) QSKIP("pdftotext is not installed");
      const QString joined = QString(text).remove(QLatin1Char(' '));
      for (const QString& wanted : c.wanted) {
        QVERIFY2(joined.contains(wanted), qPrintable(QString::fromLatin1(c.name) + ": " + wanted));
      }
      const QString fonts = poppler("pdffonts", {pdf});
      QCOMPARE(fonts.contains(QStringLiteral("ZelkoraGrade")),
               c.doc == tabled && load_grade_font());
    }
    Text why;
    QVERIFY(!write_report_pdf(
        tabled, platform::qt::to_text(dir.filePath(QStringLiteral("no/such/x.pdf"))), &why));
    QVERIFY(!why.empty());
  }

  // The beam calculated and exported as a user does it: a PDF whose text
  // poppler reads (title, heading, table cell, footer) with its fonts
  // embedded; its pages counted again straight from the document.
  void beamReportAsPdf() {
    QTemporaryDir dir;
    DeskApp app;
    CalcForm* form = app.open_program(u"梁配筋计算");
    QVERIFY(form);
    form->ask_before_closing(false);
    const QString pdf = dir.filePath(QStringLiteral("beam.pdf"));
    QString out, err;
    QTextStream out_stream(&out), err_stream(&err);
    QCOMPARE(run_script(app, {QStringLiteral("calculate"), QStringLiteral("export pdf ") + pdf},
                        out_stream, err_stream),
             0);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QElapsedTimer clock;
    clock.start();
    int pages = 0;
    {
      QPdfWriter writer(&buffer);
      pages = print_report(form->report_document(), writer);
    }
    qInfo("the beam's report as PDF: %d pages, %lld ms", pages, clock.elapsed());
    QVERIFY(pages >= 1 && bytes.startsWith("%PDF"));
    const QString text =
        poppler("pdftotext", {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    if (text.isNull()) QSKIP("pdftotext is not installed");
    // pdftotext leaves out the blanks between Chinese characters.
    const QString joined = QString(text).remove(QLatin1Char(' '));
    for (const char* wanted : {"梁配筋计算", "一、", "第1页共", "选用4"}) {
      QVERIFY2(joined.contains(QString::fromUtf8(wanted)),
               qPrintable(QString::fromUtf8(wanted) + "\n" + text));
    }
    const QString fonts = poppler("pdffonts", {pdf});
    const QStringList rows = fonts.split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(2);
    QVERIFY(!rows.isEmpty());
    for (const QString& row : rows)
      QVERIFY2(row.contains(QStringLiteral(" yes ")), qPrintable(row));
    if (load_grade_font())
      QVERIFY2(fonts.contains(QStringLiteral("ZelkoraGrade")), qPrintable(fonts));
  }
};

}  // namespace zelkora::desk

QTEST_MAIN(zelkora::desk::ReportTest)
#include "report_qtest.moc"
