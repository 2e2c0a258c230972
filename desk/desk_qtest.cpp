// Tests of the desktop program on real widgets, offscreen: the road of an
// input event through the grid, folding, keys, defaults, project files and
// the menu, and the grid's own aids (keyboard, undo, filter, paste, the kept
// view, refused values, defaults of a row, palette, scale and what a screen
// reader is told), the section's sketch, driven by real mouse and key events.
#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleTableInterface>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <sstream>

#include "desk/calc_form.h"
#include "desk/desk_app.h"
#include "desk/main_window.h"
#include "desk/monkey.h"
#include "desk/script.h"
#include "desk/section_sketch.h"
#include "program/form_state.h"
#include "program/headless_script.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/memory_settings.h"
#include "zelkora/platform/headless/recording_events.h"
#include "zelkora/platform/ini_history.h"
#include "zelkora/platform/shared_services.h"

namespace zelkora::desk {

using platform::qt::to_qstring;
using platform::qt::to_text;

class DeskTest : public QObject {
  Q_OBJECT

 private:
  // Rows of "clsBeamSteel" (item in brackets).
  static constexpr int kRowSeismic = 3;       // [9] 抗震等级, a list
  static constexpr int kRowSizes = 7;         // heading 截面尺寸
  static constexpr int kRowWidth = 8;         // [10] b, default 250
  static constexpr int kRowDepth = 9;         // [11] h, default 500
  static constexpr int kRowCover = 10;        // c
  static constexpr int kRowAs = 11;           // as
  static constexpr int kRowMoment = 13;       // M
  static constexpr int kRowForces = 12;       // heading 内力设计值
  static constexpr int kRowBars = 17;         // [15] group 通长纵向钢筋, folded
  static constexpr int kRowCount = 18;        // [16]
  static constexpr int kRowDiameter = 19;     // [17]
  static constexpr int kRowRange = 20;        // [7] group, folded
  static constexpr int kRowLegs = 23;         // [22] n, check I>=2
  static constexpr int kRowRatio = 25;        // [24] As'/As
  static constexpr int kRowOptions = 26;      // heading 选项, folded
  static constexpr int kRowCompression = 27;  // [25] 考虑受压钢筋

  // The user's settings of the run: each test begins without any, none kept
  // from the others or from other runs.
  QTemporaryDir settings_;

  // Runs script lines; what they printed. A step that cannot run fails.
  QString run(DeskApp& app, const QStringList& lines) {
    QString out, err;
    QTextStream out_stream(&out), err_stream(&err);
    const int status = run_script(app, lines, out_stream, err_stream);
    if (status != 0) qWarning("%s", qPrintable(err));
    [&] { QCOMPARE(status, 0); }();
    return out;
  }

  CalcForm& beam(DeskApp& app) {
    CalcForm* form = app.open_program(u"梁配筋计算");
    [&] { QVERIFY(form); }();
    form->ask_before_closing(false);
    QApplication::processEvents();
    return *form;
  }

  // A value that comes from elsewhere (a project file), not typed.
  static void write_from_elsewhere(CalcForm& form, int item, const Text& text) {
    std::vector<Text> values;
    form.cell().GetCurrentText(values);
    values[static_cast<std::size_t>(item)] = text;
    form.cell().LetCurrentText(values);
    form.cell().CellText(item, text);
  }
  static bool bold(CalcForm& form, int row) { return form.grid().item(row, 3)->font().bold(); }
  static QString shown(CalcForm& form, int row) { return form.grid().item(row, 3)->text(); }
  static bool editing(CalcForm& form) { return form.grid().editing(); }
  // The report view's text, the steel-grade symbols as their letters.
  static QString report_text(CalcForm& form) {
    return to_qstring(
        document::grade_symbols_as_letters(platform::qt::to_text(form.report()->toPlainText())));
  }
  static QString item_text(CalcForm& form, int item) {
    return to_qstring(form.cell().tGetText(item));
  }

  // One step of a case: script lines, or keys typed where the focus is
  // ("type TEXT"), an item chosen from the open list without leaving the
  // cell ("choose TEXT"), or 编辑 ▸ 恢复默认值 ("reset"). The messages shown.
  int act(DeskApp& app, CalcForm& form, const QString& line) {
    if (line.startsWith(QLatin1String("type "))) {
      for (const QChar c : line.mid(5)) {  // Chinese too: a key with its text
        const int key = c.unicode() < 0x80 ? c.toUpper().unicode() : 0;
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(c));
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, QString(c));
        QApplication::sendEvent(QApplication::focusWidget(), &press);
        QApplication::sendEvent(QApplication::focusWidget(), &release);
      }
    } else if (line.startsWith(QLatin1String("choose "))) {
      auto* combo =
          qobject_cast<QComboBox*>(form.grid().indexWidget(form.grid().currentIndex()));
      [&] { QVERIFY(combo && combo->view()->isVisible()); }();
      if (!combo) return 0;
      QTest::qWait(QApplication::doubleClickInterval() + 50);
      QAbstractItemView* view = combo->view();
      const QRect at = view->visualRect(view->model()->index(combo->findText(line.mid(7)), 0));
      QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, at.center());
    } else if (line == QLatin1String("reset")) {
      form.action(CalcForm::Action::kResetRow)->trigger();
    } else {
      // Lines joined by "|" run as one script ("answer no|new").
      return static_cast<int>(
          run(app, line.split(QLatin1Char('|'))).count(QStringLiteral("message: ")));
    }
    QApplication::processEvents();
    return 0;
  }

 private slots:
  void initTestCase() {
    qputenv("ZELKORA_SETTINGS", settings_.filePath(QStringLiteral("settings.ini")).toUtf8());
  }
  void init() { QFile::remove(settings_.filePath(QStringLiteral("settings.ini"))); }

  void foldingByThePictureCellAndBySpace() {
    DeskApp app;
    CalcForm& form = beam(app);
    QVERIFY(form.grid().isRowHidden(kRowCompression));
    run(app, {QStringLiteral("click 26 1")});
    QVERIFY(!form.grid().isRowHidden(kRowCompression));
    run(app, {QStringLiteral("click 26 2"), QStringLiteral("key Space")});
    QVERIFY(form.grid().isRowHidden(kRowCompression));
    QVERIFY(form.grid().isRowHidden(kRowCount));
    run(app, {QStringLiteral("click 17 2"), QStringLiteral("key Space")});
    QVERIFY(!form.grid().isRowHidden(kRowCount));
  }

  void enterOnTheLowestShownRowGoesToRowZero() {
    DeskApp app;
    CalcForm& form = beam(app);
    run(app, {QStringLiteral("click 25 3"), QStringLiteral("key Enter")});
    QCOMPARE(form.grid().currentRow(), kRowOptions);  // the next shown row
    run(app, {QStringLiteral("key Enter")});
    QCOMPARE(form.grid().currentRow(), 0);  // from the lowest shown row
  }

  // What the grid shows is what it holds, whichever way a value comes or
  // goes: a list closed without a pick, Escape, the filter, a reset, redo.
  // Expected: "ITEM=TEXT" (the item, its cell and its saved record),
  // "length ITEM=N", "bold ROW=0|1", "hidden ROW", "shown ROW", "editing",
  // "messages N".
  void whatACellShowsIsWhatItHolds_data() {
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("a member opened and closed by Escape")
        << QStringList{"click 17 1", "click 18 3", "key F2", "key Escape", "click 8 3"}
        << QStringList{"16=2", "bold 18=0", "bold 17=0", "messages 0"};
    QTest::newRow("a refused value keeps the focus")
        << QStringList{"edit 10 -250"} << QStringList{"10=250", "editing", "messages 1"};
    QTest::newRow("a refused value typed again")
        << QStringList{"edit 10 -250", "edit 10 300"} << QStringList{"10=300", "bold 8=1"};
    QTest::newRow("refused twice, the next typing stays in its row")
        << QStringList{"edit 10 -1", "key Tab", "edit 14 7", "key Escape", "click 9 2"}
        << QStringList{"10=250", "11=500", "14=20", "messages 2"};
    QTest::newRow("a click while a list is open, typing stays in its row")
        << QStringList{"click 14 3", "key F4", "edit 24 -999", "click 15 2"}
        << QStringList{"19=0", "24=0", "messages 1"};
    QTest::newRow("a default typed back loses its mark")
        << QStringList{"edit 11 650", "edit 11 500"} << QStringList{"11=500", "bold 9=0"};
    QTest::newRow("a group typed marks the group alone")
        << QStringList{"click 17 1", "edit 15 3,20", "click 8 3"}
        << QStringList{"15=3, 20", "16=3", "17=20", "shown 18", "bold 17=1", "bold 18=0",
                       "bold 19=0"};
    QTest::newRow("a group value of too many parts")
        << QStringList{"click 17 1", "edit 15 3,20", "edit 15 2,16,3"}
        << QStringList{"15=3, 20", "16=3", "messages 1"};
    QTest::newRow("a member typed, then Escape")
        << QStringList{"click 17 1", "click 19 3", "key F2", "type 28", "key Escape", "click 8 3"}
        << QStringList{"15=2, 16", "17=16", "bold 19=0"};
    QTest::newRow("an event row typed, then Escape")
        << QStringList{"click 26 1", "click 27 3", "key F2", "type 否", "key Escape",
                       "click 8 3"}
        << QStringList{"25=是", "shown 25"};
    QTest::newRow("accepted, then refused, then Escape")
        << QStringList{"edit 11 600", "edit 11 -1", "key Escape"}
        << QStringList{"11=600", "bold 9=1", "messages 1"};
    QTest::newRow("refused twice, closed, one message each")
        << QStringList{"edit 10 -250", "key Tab", "click 9 3"}
        << QStringList{"10=250", "bold 8=0", "messages 1"};
    QTest::newRow("under the filter a member is checked")
        << QStringList{"filter 根数", "edit 16 0"}
        << QStringList{"16=2", "15=2, 16", "messages 1"};
    QTest::newRow("under the filter a folded row is checked")
        << QStringList{"click 7 1", "filter 宽度", "edit 10 -250"}
        << QStringList{"10=250", "messages 1"};
    QTest::newRow("under the filter a paste is checked")
        << QStringList{"filter 根数", "paste 16 0"} << QStringList{"16=2", "messages 1"};
    QTest::newRow("under the filter the group follows its member")
        << QStringList{"filter 根数", "edit 16 4"} << QStringList{"16=4", "15=4, 16", "bold 18=1"};
    QTest::newRow("a member reset rejoins its group")
        << QStringList{"click 17 1", "edit 16 5", "click 18 3", "reset"}
        << QStringList{"16=2", "15=2, 16", "bold 18=0"};
    QTest::newRow("redo of a group brings back its marks")
        << QStringList{"click 17 1", "edit 15 3,20", "undo", "redo"}
        << QStringList{"15=3, 20", "bold 17=1", "bold 18=0", "bold 19=0"};
    const QString long_text(1100, QLatin1Char('7'));
    QTest::newRow("typing stops at the editor's limit, a longer paste is refused")
        << QStringList{"click 2 3", "key F2", "type " + long_text, "key Enter",
                       "paste 11 " + long_text}
        << QStringList{"length 1=1024", "11=500"};
    QTest::newRow("a pasted column is one step")
        << QStringList{"paste 10 300 600", "undo"} << QStringList{"10=250", "11=500"};
    QTest::newRow("under the filter a pick hides rows at once")
        << QStringList{"click 26 1", "filter 受压", "click 27 3", "key F4", "choose 否"}
        << QStringList{"25=否", "hidden 25"};
  }

  void whatACellShowsIsWhatItHolds() {
    QFETCH(QStringList, steps);
    QFETCH(QStringList, expected);
    DeskApp app;
    CalcForm& form = beam(app);
    int messages = 0;
    for (const QString& step : steps) messages += act(app, form, step);
    const bool editing_now = editing(form);
    std::vector<Text> saved;
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("p.zks"));
    if (!editing_now) {
      QVERIFY(form.save_file(file));
      DeskApp again;
      CalcForm& reopened = beam(again);
      QVERIFY(reopened.open_file(file));
      reopened.cell().GetCurrentText(saved);
    }
    for (const QString& e : expected) {
      const QString what = e.section(QLatin1Char(' '), 0, 0);
      const QString rest = e.section(QLatin1Char(' '), 1);
      if (what == QLatin1String("bold")) {
        QVERIFY2(bold(form, rest.section(QLatin1Char('='), 0, 0).toInt()) ==
                     (rest.section(QLatin1Char('='), 1) == QLatin1String("1")),
                 qPrintable(e));
      } else if (what == QLatin1String("hidden") || what == QLatin1String("shown")) {
        QVERIFY2(!form.grid().row_shown(rest.toInt()) == (what == QLatin1String("hidden")),
                 qPrintable(e));
      } else if (what == QLatin1String("length")) {
        QCOMPARE(item_text(form, rest.section(QLatin1Char('='), 0, 0).toInt()).size(),
                 rest.section(QLatin1Char('='), 1).toInt());
      } else if (what == QLatin1String("editing")) {
        // The editor is open on the value, with the focus.
        QWidget* focus = form.window()->focusWidget();
        QVERIFY(focus && form.grid().isAncestorOf(focus));
      } else if (what == QLatin1String("messages")) {
        QCOMPARE(messages, rest.toInt());
      } else {
        const int item = e.section(QLatin1Char('='), 0, 0).toInt();
        const QString text = e.section(QLatin1Char('='), 1);
        QCOMPARE(item_text(form, item), text);
        QCOMPARE(shown(form, form.cell().lGetRowByIndex(item)), text);
        if (!editing_now) QCOMPARE(to_qstring(saved.at(static_cast<std::size_t>(item))), text);
      }
    }
  }

  // The changed mark follows the values; New and closing ask only when they
  // changed; a report of other values is out of date and is not saved; a
  // name without extension gets one; a failed save says why. "$D" is a
  // folder of the test. Expected: "ITEM=TEXT", "changed 0|1", "messages N",
  // "file NAME" (it exists), "report fresh|stale", "open 0|1".
  void nothingIsLostNothingGoesStale_data() {
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("keys through unchanged cells")
        << QStringList{"click 8 3", "key Tab", "key Enter", "key F2", "key Escape"}
        << QStringList{"changed 0", "messages 0"};
    QTest::newRow("a value typed back") << QStringList{"edit 10 300", "edit 10 250"}
                                        << QStringList{"changed 0"};
    QTest::newRow("New unchanged asks nothing") << QStringList{"new"}
                                                << QStringList{"messages 0", "changed 0"};
    QTest::newRow("New changed, cancelled")
        << QStringList{"edit 10 300", "answer cancel|new"}
        << QStringList{"10=300", "changed 1", "messages 1"};
    QTest::newRow("New changed, discarded")
        << QStringList{"edit 10 300", "answer no|new"}
        << QStringList{"10=250", "changed 0", "messages 1"};
    QTest::newRow("New changed, saved first")
        << QStringList{"edit 10 300", "answer yes $D/first|new"}
        << QStringList{"10=250", "file first.zks", "messages 1"};
    QTest::newRow("closing changed, cancelled")
        << QStringList{"edit 10 300", "answer cancel|close"}
        << QStringList{"open 1", "messages 1"};
    QTest::newRow("Save As without extension") << QStringList{"edit 10 300", "save $D/beam1"}
                                               << QStringList{"file beam1.zks", "changed 0"};
    QTest::newRow("a report of changed values")
        << QStringList{"calculate", "edit 10 300"} << QStringList{"report stale"};
    QTest::newRow("calculated again, saved without extension")
        << QStringList{"calculate", "edit 10 300", "calculate", "report $D/r"}
        << QStringList{"report fresh", "file r.txt"};
    QTest::newRow("a report that cannot be saved")
        << QStringList{"calculate", "report $D/no/such/folder/r.txt"}
        << QStringList{"messages 1"};
    QTest::newRow("exported without extensions")
        << QStringList{"calculate", "export pdf $D/r", "export docx $D/w"}
        << QStringList{"file r.pdf", "file w.docx", "messages 0"};
    QTest::newRow("a PDF that cannot be written")
        << QStringList{"calculate", "export pdf $D/no/such/folder/r.pdf"}
        << QStringList{"messages 1"};
  }

  void nothingIsLostNothingGoesStale() {
    QFETCH(QStringList, steps);
    QFETCH(QStringList, expected);
    QTemporaryDir dir;
    DeskApp app;
    CalcForm& form = beam(app);
    form.ask_before_closing(true);
    QPointer<CalcForm> alive(&form);
    int messages = 0;
    for (QString step : steps) {
      messages += act(app, form, step.replace(QStringLiteral("$D"), dir.path()));
    }
    for (const QString& e : expected) {
      const QString what = e.section(QLatin1Char(' '), 0, 0);
      const QString rest = e.section(QLatin1Char(' '), 1);
      if (what == QLatin1String("changed")) {
        QCOMPARE(form.isWindowModified(), rest == QLatin1String("1"));
      } else if (what == QLatin1String("messages")) {
        QCOMPARE(messages, rest.toInt());
      } else if (what == QLatin1String("file")) {
        QVERIFY2(QFile::exists(dir.filePath(rest)), qPrintable(rest));
      } else if (what == QLatin1String("report")) {
        const bool fresh = rest == QLatin1String("fresh");
        for (const auto a : {CalcForm::Action::kSaveReport, CalcForm::Action::kExportDocx,
                             CalcForm::Action::kExportPdf, CalcForm::Action::kPrint,
                             CalcForm::Action::kPrintPreview}) {
          QCOMPARE(form.action(a)->isEnabled(), fresh);
        }
        // Out of date, nothing takes it, whatever asks.
        int boxes = 0;
        app.messages().on_show = [&boxes](QMessageBox& box) {
          ++boxes;
          QPointer<QMessageBox> open(&box);
          QTimer::singleShot(0, [open] {
            if (open) open->button(QMessageBox::Ok)->click();
          });
        };
        const QString pdf = dir.filePath(QStringLiteral("taken.pdf"));
        const QString docx = dir.filePath(QStringLiteral("taken.docx"));
        QCOMPARE(form.export_pdf(pdf), fresh);
        QCOMPARE(form.export_docx(docx), fresh);
        QCOMPARE(QFile::exists(pdf) && QFile::exists(docx), fresh);
        QCOMPARE(boxes, fresh ? 0 : 2);
        app.messages().on_show = nullptr;
      } else if (what == QLatin1String("open")) {
        QCOMPARE(alive && form.isVisible(), rest == QLatin1String("1"));
      } else {
        QCOMPARE(item_text(form, e.section(QLatin1Char('='), 0, 0).toInt()),
                 e.section(QLatin1Char('='), 1));
      }
    }
    if (alive) form.ask_before_closing(false);
  }

  // A file that cannot be opened is named for what it is: missing, no data
  // file, another program's; a run with --quit never waits on its box.
  void projectFilesThatCannotBeOpenedSaySo() {
    QTemporaryDir dir;
    const QString beam_file = dir.filePath(QStringLiteral("b.zks"));
    const QString text_file = dir.filePath(QStringLiteral("t.zks"));
    {
      DeskApp app;
      QVERIFY(beam(app).save_file(beam_file));
      QFile text(text_file);
      QVERIFY(text.open(QIODevice::WriteOnly));
      text.write("not a data file");
    }
    const struct {
      QString file;
      const char* program;  // the form it is opened in; null: from the command line
      const char* said;
    } cases[] = {
        {dir.filePath(QStringLiteral("none.zks")), nullptr, "找不到文件"},
        {text_file, nullptr, "不是 Zelkora 的原始数据文件"},
        {beam_file, "荷载组合", "是“梁配筋计算”的原始数据文件，不能在“荷载组合”中打开"},
        {text_file, "荷载组合", "数据格式已被破坏"},
    };
    for (const auto& c : cases) {
      DeskApp app;
      QString out, err;
      QTextStream out_stream(&out), err_stream(&err);
      if (c.program) {
        app.open_program(to_text(QString::fromUtf8(c.program)))->ask_before_closing(false);
        QCOMPARE(run_script(app, {QStringLiteral("open ") + c.file}, out_stream, err_stream), 0);
      } else {
        QCOMPARE(run_script(app, {}, out_stream, err_stream, c.file), 0);
        QVERIFY(!app.current_form());
      }
      QVERIFY2(out.contains(QString::fromUtf8(c.said)), qPrintable(out));
    }
  }

  // Qt's own texts in Chinese; Ctrl+C in the report copies the report; a
  // window too low or too large for the screen is moved and shrunk into it;
  // 关于 tells the version.
  void roughEdgesAreMended() {
    DeskApp app;
    CalcForm& form = beam(app);
    QMessageBox box(QMessageBox::Question, QString(), QString(),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    QCOMPARE(box.button(QMessageBox::Cancel)->text(), QStringLiteral("取消"));
    run(app, {QStringLiteral("calculate")});
    form.report()->setFocus();
    form.report()->selectAll();
    QApplication::clipboard()->clear();
    form.action(CalcForm::Action::kCopy)->trigger();
    QVERIFY(QApplication::clipboard()->text().contains(QStringLiteral("梁配筋")));
    QVERIFY(!QApplication::clipboard()->text().contains(QLatin1Char('\t')));
    const QRect area = form.screen()->availableGeometry();
    form.move(area.left(), area.bottom() - 100);
    form.resize(area.width() + 300, form.height());
    place_on_screen(form);
    QVERIFY(area.contains(form.frameGeometry()));
    const QString about = run(app, {QStringLiteral("about")});
    QVERIFY2(about.contains(QRegularExpression(
                 QStringLiteral("^message: 关于 Zelkora 结构快速设计 \\| Zelkora 结构快速设计 版本 "
                                "\\d+\\.\\d+\\.\\d+ 构建 "))) &&
                 about.contains(QStringLiteral(" Qt ") + QString::fromLatin1(qVersion())) &&
                 about.contains(QStringLiteral("Qt 6：GNU LGPL")),
             qPrintable(about));
    // A cut caption tells its whole text; a program without a form here says so.
    const auto tip_at = [](platform::qt::QtGridControl& grid, int row, int col) {
      grid.scrollTo(grid.model()->index(row, col));
      const QPoint at = grid.visualRect(grid.model()->index(row, col)).center();
      QHelpEvent help(QEvent::ToolTip, at, grid.viewport()->mapToGlobal(at));
      QApplication::sendEvent(grid.viewport(), &help);
      return QToolTip::text();
    };
    form.resize(900, form.height());  // room for the captions, at any scale
    QApplication::processEvents();
    form.grid().ColWidth(2, 60);
    QCOMPARE(tip_at(form.grid(), kRowAs, 2), QStringLiteral("纵筋合力点至截面边缘的距离 as"));
    // A double click on the column's edge fits it to the captions: none is cut.
    QTest::mouseDClick(
        form.grid().viewport(), Qt::LeftButton, Qt::NoModifier,
        QPoint(form.grid().columnViewportPosition(3), form.grid().rowViewportPosition(kRowAs) + 4));
    QVERIFY(form.grid().columnWidth(2) > 60);
    tip_at(form.grid(), kRowAs, 2);
    QTRY_COMPARE(QToolTip::text(), QString());  // the tip shown before goes
    MainWindow& menu = app.main_window();
    menu.show();
    run(app, {QStringLiteral("menu 基本构件")});
    const int32_t row = menu.row_of(u"弯矩");
    QCOMPARE(menu.grid().ForeColor(row, 2), platform::kColourGrayText);
    QVERIFY(tip_at(menu.grid(), row, 2).contains(QStringLiteral("不在本程序中")));
    QVERIFY(menu.grid().ForeColor(menu.row_of(u"梁配筋"), 2) != platform::kColourGrayText);
  }

  void hiddenItemsTakeTheirHeadingAlong() {
    DeskApp app;
    CalcForm& form = beam(app);
    run(app, {QStringLiteral("click 26 1"), QStringLiteral("pick 25 否")});
    QVERIFY(form.grid().isRowHidden(kRowRatio));
    run(app, {QStringLiteral("pick 25 是")});
    QVERIFY(!form.grid().isRowHidden(kRowRatio));
    std::vector<bool> hidden(26, false);
    hidden[4] = hidden[5] = hidden[19] = true;  // every item under 内力设计值
    form.cell().LetTextInvalid(hidden);
    form.cell().ControlEnable();
    QVERIFY(form.grid().isRowHidden(kRowForces));
    QVERIFY(form.grid().isRowHidden(kRowForces + 1));
  }

  void defaultsAnsweredWithCancelAndWithYes() {
    DeskApp app;
    CalcForm& form = beam(app);
    run(app, {QStringLiteral("edit 10 300")});
    QString out = run(app, {QStringLiteral("defaults cancel")});
    QVERIFY(out.startsWith(QStringLiteral("message: ")));
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("300"));
    out = run(app, {QStringLiteral("defaults yes")});
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("250"));
    QVERIFY(!bold(form, kRowWidth));
  }

  void savedAndReopenedGivesTheSameRecords() {
    QTemporaryDir dir;
    const QString first = dir.filePath(QStringLiteral("beam.zks"));
    const QString second = dir.filePath(QStringLiteral("again.zks"));
    DeskApp app;
    CalcForm& form = beam(app);
    run(app, {QStringLiteral("click 26 1"), QStringLiteral("edit 0 某办公楼"),
              QStringLiteral("edit 10 300"), QStringLiteral("click 17 1"),
              QStringLiteral("edit 15 3,20"), QStringLiteral("save ") + first});
    QCOMPARE(form.file(), first);
    QVERIFY(!form.isWindowModified());
    QVERIFY(form.windowTitle().contains(QStringLiteral("某办公楼")));
    std::vector<Text> saved;
    form.cell().GetCurrentText(saved);

    CalcForm* reopened = app.open_project(first);
    QVERIFY(reopened && reopened != &form);
    reopened->ask_before_closing(false);
    std::vector<Text> loaded;
    reopened->cell().GetCurrentText(loaded);
    QVERIFY(loaded == saved);
    QCOMPARE(shown(*reopened, kRowWidth), QStringLiteral("300"));
    QVERIFY(bold(*reopened, kRowWidth));
    run(app, {QStringLiteral("save ") + second});
    QFile a(first), b(second);
    QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
    QCOMPARE(a.readAll(), b.readAll());

    const QString out =
        run(app, {QStringLiteral("open ") + dir.filePath(QStringLiteral("none.zks"))});
    QVERIFY(out.contains(QStringLiteral("message: ")));
  }

  // A program opens its form; the groups unfolded are kept for the next
  // menu window, and a damaged entry unfolds none.
  void menuOpensTheFormOfAProgram() {
    DeskApp app;
    QString out = run(app, {QStringLiteral("menu 基本构件"), QStringLiteral("menu 弯矩")});
    QVERIFY(out.contains(QStringLiteral("不在本程序中")));
    QVERIFY(!app.current_form());
    {
      MainWindow again(app);
      QVERIFY(again.unfolded_groups() == std::vector<Text>{u"基本构件"});
      QVERIFY(again.grid().row_shown(again.row_of(u"梁配筋")));
    }
    run(app, {QStringLiteral("menu 基本构件")});
    QVERIFY(MainWindow(app).unfolded_groups().empty());
    app.platform()->settings->set(u"Zelkora 结构快速设计", u"View", u"Menu", u"|基本|\xFFFF||");
    QVERIFY(MainWindow(app).unfolded_groups().empty());
    run(app, {QStringLiteral("menu 基本构件")});
    run(app, {QStringLiteral("menu 梁配筋")});
    QVERIFY(app.current_form());
    QCOMPARE(to_qstring(app.current_form()->program().layout), QStringLiteral("clsBeamSteel"));
    app.current_form()->ask_before_closing(false);
  }

  // Each value the beam form asks for changes the report, and each check
  // ends with its conclusion: "+TEXT" the report holds, "-TEXT" it does not.
  void theBeamReportAnswersEveryValue_data() {
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("expected");
    const QString options = QStringLiteral("click 25 2|key Down|key Space");
    QTest::newRow("defaults") << QStringList{}
                              << QStringList{"+构件编号：KL-1", "+下部受拉纵筋选用 4C18", "+表 11.3.6-1 跨中",
                                             "+各项验算均满足", "-不满足"};
    QTest::newRow("hogging") << QStringList{"edit 4 -150"}
                             << QStringList{"+负弯矩：截面上部受拉", "+上部受拉纵筋选用 2C16+2C20",
                                            "+ξ ＝ 0.35 以下", "+As'/As 不小于 0.3", "-−0."};
    QTest::newRow("HRB335's mark") << QStringList{"pick 12 HRB335"}
                                   << QStringList{"+纵筋 HRB335（Φ）", "+选用 4Φ20", "-C20", "+ξb ＝ 0.55"};
    QTest::newRow("C80") << QStringList{"pick 2 80", "edit 4 420"}
                         << QStringList{"+α1 ＝ 0.94", "+ξb ＝ 0.463", "+4C25（第一排）＋ 3C25（第二排）"};
    QTest::newRow("over-reinforced") << QStringList{"edit 4 400", options, "pick 25 否"}
                                     << QStringList{"+截面超筋", "-选用"};
    QTest::newRow("doubly reinforced") << QStringList{"edit 4 400"}
                                       << QStringList{"+按双筋截面计算", "+受压边所需 As'"};
    QTest::newRow("no bars fit") << QStringList{"edit 7 14,16", "edit 4 400"}
                                 << QStringList{"+直径 14～16mm 的纵筋在两排内放不下"};
    QTest::newRow("non-seismic") << QStringList{"pick 9 非抗震"}
                                 << QStringList{"+8.5.1 条", "+箍筋按构造选用", "-抗震："};
    QTest::newRow("shear and spacing") << QStringList{"edit 5 250", "edit 23 300"}
                                       << QStringList{"+Asv/s ＝ (V − 0.7ft", "+2肢 φ16@300",
                                                      "+不满足：箍筋间距大于最大间距 200mm（表 9.2.9）"};
    QTest::newRow("legs") << QStringList{"edit 5 250", "pick 22 4"} << QStringList{"+4肢 φ10@200"};
    QTest::newRow("torsion") << QStringList{"edit 19 25"}
                             << QStringList{"+受扭承载力", "+βt", "+受扭纵筋：两侧面各不少于"};
    QTest::newRow("As'/As") << QStringList{"pick 24 0.5"} << QStringList{"+As'/As 不小于 0.5"};
    QTest::newRow("options") << QStringList{"edit 1 KL-7", options, "pick 3 是", "pick 6 否"}
                             << QStringList{"+构件编号：KL-7", "+实配 As ＝", "-配筋率 ρ"};
    QTest::newRow("as too small") << QStringList{"edit 18 35", options, "pick 8 否"}
                                  << QStringList{"+大于 as ＝ 35.0mm：应取 as ≥ 37.0mm"};
    QTest::newRow("as from the bars") << QStringList{"edit 18 35"}
                                      << QStringList{"+as ＝ 37.0mm（由所选纵筋的合力点确定）"};
    QTest::newRow("a section out of range") << QStringList{"edit 10 0.001"}
                                            << QStringList{"+截面尺寸超出本计算的范围", "-选用"};
  }

  void theBeamReportAnswersEveryValue() {
    QFETCH(QStringList, steps);
    QFETCH(QStringList, expected);
    DeskApp app;
    CalcForm& form = beam(app);
    for (const QString& step : steps) act(app, form, step);
    run(app, {QStringLiteral("calculate")});
    const QString report = report_text(form);
    for (const QString& e : expected) {
      QVERIFY2(report.contains(e.mid(1)) == e.startsWith(QLatin1Char('+')), qPrintable(e + "\n" + report));
    }
  }

  // The beam's sketch follows its values however they come (typed, even
  // before the cell is left, pasted, undone, set back, opened, begun anew);
  // the report ends with the same section as a figure, also once out of
  // date. The other forms have neither and say so plainly.
  void beamCalculatesAndTheOthersSaySoPlainly() {
    QTemporaryDir dir;
    DeskApp app;
    CalcForm& form = beam(app);
    QVERIFY(form.bDisplayPicture() && form.sketch_view() && form.sketch_view()->isVisible());
    const struct {
      QStringList steps;
      double b, h;
    } follows[] = {
        {{"click 8 3", "key F2", "type 400"}, 400, 500},
        {{"key Enter", "paste 11 650"}, 400, 650},
        {{"undo"}, 400, 500},
        {{"save $D/b.zks", "defaults yes"}, 250, 500},
        {{"open $D/b.zks"}, 400, 500},
        {{"new"}, 250, 500},
        {{"edit 11 -5"}, 250, 500},
    };
    for (const auto& f : follows) {
      for (QString step : f.steps) act(app, form, step.replace(QStringLiteral("$D"), dir.path()));
      QCOMPARE(form.sketch_view()->sketch().b, f.b);
      QCOMPARE(form.sketch_view()->sketch().h, f.h);
    }
    run(app, {QStringLiteral("key Escape"), QStringLiteral("edit 4 180"),
              QStringLiteral("calculate"), QStringLiteral("shot ") + dir.filePath(QStringLiteral("beam.png"))});
    const QString report = report_text(form);
    QVERIFY2(report.contains(QStringLiteral("选用 4C20")), qPrintable(report));
    QVERIFY(form.report()->toHtml().contains(QStringLiteral("vertical-align:sub")));
    QVERIFY(QFile::exists(dir.filePath(QStringLiteral("beam.png"))));
    QCOMPARE(form.report_sketch().h, 500.0);
    QCOMPARE(form.report_sketch().bars.size(), 6u);  // 4C20 below, 2C16 above
    for (const char* change : {"", "edit 10 300"}) {
      if (*change) run(app, {QString::fromUtf8(change)});
      const auto* figure = std::get_if<document::Figure>(&form.report_document().blocks.back());
      QVERIFY2(figure && figure->caption == u"250×500", change);
      QVERIFY2(form.report()->toPlainText().contains(QChar::ObjectReplacementCharacter), change);
    }
    QCOMPARE(form.report_sketch().b, 250.0);  // the report's, not the values'
    for (const char16_t* other : {u"荷载组合", u"独立基础计算"}) {
      CalcForm* form_without = app.open_program(other);
      QVERIFY(form_without);
      form_without->ask_before_closing(false);
      QVERIFY(!form_without->bDisplayPicture() && !form_without->sketch_view());
    }
  }

  // 荷载组合 calculates too: values typed, 选项 unfolded, the wind switched on
  // (its row appears), the edition picked; the report has the governing values that
  // load_combination_cases.csv ("50009 wind") has.
  void loadCombinationCalculates() {
    DeskApp app;
    CalcForm* form = app.open_program(u"荷载组合");
    QVERIFY(form && form->report());
    form->ask_before_closing(false);
    run(app,
        {QStringLiteral("edit 4 100"), QStringLiteral("edit 5 50"), QStringLiteral("click 22 2"),
         QStringLiteral("key Space"), QStringLiteral("pick 18 是"), QStringLiteral("edit 6 35"),
         QStringLiteral("pick 20 GB 50009-2012"), QStringLiteral("pick 8 1.2"),
         QStringLiteral("pick 10 1.4"), QStringLiteral("calculate")});
    const QString report = report_text(*form);
    for (const char* e : {"二、基本组合", "由永久荷载控制的组合", "219.40", "51.00", "G+1.4W右",
                          "频遇组合", "五、结论"})
      QVERIFY2(report.contains(QString::fromUtf8(e)),
               qPrintable(QString::fromUtf8(e) + "\n" + report));
  }

  // 独立基础计算 calculates from its table of load cases: the report holds
  // the cases, the combinations formed (by hand: G + Q = 800 + 240 = 1040,
  // 1.3 × 800 + 1.5 × 240 = 1400 kN) and each check; the cases travel in the
  // project file and come back as they were, the file saved again byte for
  // byte; a bad cell is named where it is and nothing is saved.
  void footingCalculatesFromItsLoadCases() {
    QTemporaryDir dir;
    DeskApp app;
    CalcForm* form = app.open_program(u"独立基础计算");
    QVERIFY(form && form->report() && form->case_table_widget());
    form->ask_before_closing(false);
    run(app, {QStringLiteral("case 1 3 800"), QStringLiteral("case 2 3 240"),
              QStringLiteral("calculate")});
    QString report = report_text(*form);
    for (const char* e :
         {"荷载工况（标准值）", "标准2 ＝ 恒载+活载", "1040.0", "1400.0", "受冲切承载力", "结论"}) {
      QVERIFY2(report.contains(QString::fromUtf8(e)),
               qPrintable(QString::fromUtf8(e) + "\n" + report));
    }
    run(app,
        {QStringLiteral("case add"), QStringLiteral("case 3 2 风"), QStringLiteral("case 3 1 左风"),
         QStringLiteral("case 3 4 60"), QStringLiteral("calculate")});
    QVERIFY(report_text(*form).contains(QStringLiteral("0.6左风")));
    const QString f = dir.filePath(QStringLiteral("f.zks")),
                  g = dir.filePath(QStringLiteral("g.zks"));
    run(app, {QStringLiteral("save ") + f});
    const CaseRows saved = form->work().cases();
    run(app, {QStringLiteral("new")});
    QCOMPARE(form->work().cases(), default_case_rows());
    run(app, {QStringLiteral("open ") + f});
    QCOMPARE(form->work().cases(), saved);
    QVERIFY(!form->changed());
    run(app, {QStringLiteral("save ") + g});
    const auto bytes = [](const QString& name) {
      QFile file(name);
      return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QCOMPARE(bytes(g), bytes(f));
    const QString out = run(app, {QStringLiteral("case 2 3 abc"),
                                  QStringLiteral("save ") + dir.filePath(QStringLiteral("h.zks")),
                                  QStringLiteral("calculate")});
    QVERIFY2(out.contains(QStringLiteral("第 2 行第 3 列")), qPrintable(out));
    QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("h.zks"))));
    QVERIFY(report_text(*form).contains(QStringLiteral("无法计算：荷载工况表第 2 行第 3 列")));
    // Five wind cases: the combinations would double with each, so a kind
    // takes four at most.
    QStringList winds = {QStringLiteral("case 2 3 240")};
    for (int row = 3; row <= 7; ++row) {
      winds << QStringLiteral("case add") << QStringLiteral("case %1 2 风").arg(row);
    }
    run(app, winds << QStringLiteral("calculate"));
    QVERIFY(report_text(*form).contains(QStringLiteral("风荷载的工况有 5 个，本程序最多 4 个")));
  }

  // Any sketch draws, at once and without harm, on a light and a dark
  // palette: the bars in their colours at their centres, standing out from
  // the concrete; a sketch without a size shows its hint.
  void sectionSketchDrawsAnySketch() {
    const auto section = [](double b, double h, std::vector<SectionSketch::Bar> bars,
                            double cover = 20, double stirrup = 8) {
      SectionSketch sketch;
      sketch.b = b;
      sketch.h = h;
      sketch.cover = cover;
      sketch.stirrup_d = stirrup;
      sketch.bars = std::move(bars);
      return sketch;
    };
    std::vector<SectionSketch::Bar> many;
    for (int i = 0; i < 10000; ++i) many.push_back({10.0 + i % 230, 10.0 + i / 25, 12, i % 2 == 0});
    const double nan = std::nan("");
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
      const char* name;
      SectionSketch sketch;
      bool drawn;
      bool bars_apart;  // every bar shows its own colour at its centre
    } cases[] = {
        {"bars", section(250, 500, {{45, 45, 25, true}, {205, 455, 18, false}}), true, true},
        {"empty", SectionSketch{}, false, false},
        {"negative", section(-250, 500, {{45, 45, 25, true}}), false, false},
        {"not numbers", section(nan, inf, {{nan, 1, 1, true}}), false, false},
        {"absurd proportions", section(1e9, 0.001, {{1, 0, 25, true}}), true, false},
        {"wide and flat", section(6000, 150, {{3000, 75, 100, true}}, 20, 10), true, true},
        {"bars outside",
         section(250, 500,
                 {{-1e12, 5, 25, true},
                  {100, 1e300, 1e300, false},
                  {100, 100, -5, true},
                  {nan, nan, nan, true},
                  {125, 250, 40, false}}),
         true, false},
        {"cover and stirrup too large", section(250, 500, {}, 1e9, 1e12), true, false},
        {"ten thousand bars", section(250, 500, many), true, false},
    };
    for (const QPalette& palette : {QApplication::palette(), dark_palette()}) {
      const SketchColours colours = sketch_colours(palette);
      QVERIFY(std::abs(colours.tension.lightness() - colours.concrete.lightness()) >= 90);
      QVERIFY(std::abs(colours.compression.lightness() - colours.concrete.lightness()) >= 40);
      for (const auto& c : cases) {
        QElapsedTimer clock;
        clock.start();
        const QImage image = section_image(c.sketch, QSize(320, 260), 2, palette);
        QVERIFY2(clock.elapsed() < 3000, c.name);
        QCOMPARE(image.size(), QSize(640, 520));
        const QRectF drawn = section_rect(QRectF(0, 0, 320, 260), c.sketch, QApplication::font());
        QVERIFY2(drawn.isNull() != c.drawn, c.name);
        QVERIFY2(QRectF(0, 0, 320, 260).contains(drawn) || !c.drawn, c.name);
        int inked = 0;  // the section, or the hint's words
        for (int y = 0; y < image.height(); y += 2) {
          for (int x = 0; x < image.width(); x += 2) {
            inked += image.pixelColor(x, y) != colours.ground;
          }
        }
        QVERIFY2(inked > 100, c.name);
        if (!c.bars_apart) continue;
        for (const SectionSketch::Bar& bar : c.sketch.bars) {
          const QPointF centre(drawn.left() + bar.x * drawn.width() / c.sketch.b,
                               drawn.bottom() - bar.y * drawn.height() / c.sketch.h);
          const QColor shown = image.pixelColor((centre * 2).toPoint());
          const QColor wanted = bar.tension ? colours.tension : colours.compression;
          QVERIFY2(
              std::abs(shown.red() - wanted.red()) + std::abs(shown.blue() - wanted.blue()) < 24,
              qPrintable(QStringLiteral("%1: %2 for %3").arg(c.name, shown.name(), wanted.name())));
        }
      }
    }
    // Sizes that make no image, and device ratios that make no sense.
    QVERIFY(section_image(cases[0].sketch, QSize(0, 100), 1).isNull());
    QVERIFY(section_image(cases[0].sketch, QSize(100000, 100), 1).isNull());
    QCOMPARE(section_image(cases[0].sketch, QSize(30, 20), nan).size(), QSize(30, 20));
    QCOMPARE(section_image(cases[0].sketch, QSize(30, 20), -2).size(), QSize(30, 20));
  }

  // Tab, Shift+Tab and Enter go to the next or previous value that can be
  // edited, past headings, folded and hidden rows, with its editor open.
  void keysMoveToTheNextEditableValue() {
    const struct {
      const char* name;
      int from;
      QStringList keys;
      int row;
    } cases[] = {
        {"Tab", kRowWidth, {"key Tab"}, kRowDepth},
        {"Shift+Tab", kRowDepth, {"key Shift+Tab"}, kRowWidth},
        {"Tab past a heading", kRowAs, {"key Tab"}, kRowMoment},
        {"Shift+Tab past a heading", kRowMoment, {"key Shift+Tab"}, kRowAs},
        {"Tab past folded members", kRowBars, {"key Tab"}, kRowRange},
        {"Enter", kRowWidth, {"key Enter"}, kRowDepth},
        {"Tab while editing", kRowWidth, {"key F2", "key Tab"}, kRowDepth},
        {"Enter while editing", kRowWidth, {"key F2", "key Enter"}, kRowDepth},
    };
    for (const auto& c : cases) {
      DeskApp app;
      CalcForm& form = beam(app);
      QStringList lines{QStringLiteral("click %1 3").arg(c.from)};
      lines << c.keys;
      run(app, lines);
      QVERIFY2(form.grid().currentRow() == c.row, c.name);
      QVERIFY2(editing(form), c.name);
    }
  }

  void typedTextIsNeverLostAndEscapeRestoresTheEnteredText() {
    DeskApp app;
    CalcForm& form = beam(app);
    // Typed, then Tab: the value is taken, the next row's editor open.
    run(app, {QStringLiteral("click 8 3"), QStringLiteral("key F2")});
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("300"));
    run(app, {QStringLiteral("key Tab")});
    QCOMPARE(item_text(form, 10), QStringLiteral("300"));
    QVERIFY(bold(form, kRowWidth));
    // Typed, then Escape: the text the row had when it was entered.
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("777"));
    run(app, {QStringLiteral("key Escape")});
    QCOMPARE(shown(form, kRowDepth), QStringLiteral("500"));
    QCOMPARE(item_text(form, 11), QStringLiteral("500"));
    // Typed, then the focus goes to another window: the leave runs.
    run(app, {QStringLiteral("key F2")});
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("650"));
    app.main_window().show();
    app.main_window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&app.main_window()));
    QApplication::processEvents();
    QVERIFY(bold(form, kRowDepth));
    QCOMPARE(item_text(form, 11), QStringLiteral("650"));
    // Typed, then the form is closed: the value is left and checked; a
    // refused one keeps the form open.
    form.activateWindow();
    run(app, {QStringLiteral("click 8 3"), QStringLiteral("key F2")});
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("-5"));
    int shown_boxes = 0;
    app.messages().on_show = [&shown_boxes](QMessageBox& box) {
      ++shown_boxes;
      QPointer<QMessageBox> open(&box);
      QTimer::singleShot(0, [open] {
        if (open) open->button(QMessageBox::Ok)->click();
      });
    };
    QVERIFY(!form.close());
    QCOMPARE(shown_boxes, 1);
    QVERIFY(form.isVisible());
    // The cell, the item and what would be saved are the row's text again,
    // so the form now closes without another box.
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("300"));
    QCOMPARE(item_text(form, 10), QStringLiteral("300"));
    QVERIFY(form.close());
    QCOMPARE(shown_boxes, 1);
  }

  void listsOpenWithF4AndAltDown() {
    for (const char* key : {"key F4", "key Alt+Down"}) {
      DeskApp app;
      CalcForm& form = beam(app);
      run(app, {QStringLiteral("click 3 3"), QString::fromLatin1(key)});
      auto* combo = qobject_cast<QComboBox*>(
          form.grid().indexWidget(form.grid().model()->index(kRowSeismic, 3)));
      QVERIFY2(combo && combo->view()->isVisible(), key);
      combo->hidePopup();
    }
  }

  // One step per committed value, with what it changed; a refused value is
  // none; defaults are a step; opening a project starts a new history.
  void undoAndRedoCommittedValues() {
    DeskApp app;
    CalcForm& form = beam(app);
    run(app,
        {QStringLiteral("edit 10 300"), QStringLiteral("click 17 1"),
         QStringLiteral("edit 15 3,20"), QStringLiteral("click 26 1"), QStringLiteral("pick 25 否"),
         QStringLiteral("edit 22 1"), QStringLiteral("key Escape")});
    QCOMPARE(form.history().steps(), std::size_t{3});
    QVERIFY(form.grid().isRowHidden(kRowRatio));
    run(app, {QStringLiteral("click 8 2"), QStringLiteral("undo")});
    QVERIFY(!form.grid().isRowHidden(kRowRatio));
    QCOMPARE(item_text(form, 25), QStringLiteral("是"));
    run(app, {QStringLiteral("undo")});
    QCOMPARE(shown(form, kRowBars), QStringLiteral("2, 16"));
    QCOMPARE(shown(form, kRowCount), QStringLiteral("2"));
    run(app, {QStringLiteral("undo")});
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("250"));
    QVERIFY(!bold(form, kRowWidth));
    QVERIFY(!form.action(CalcForm::Action::kUndo)->isEnabled());
    run(app, {QStringLiteral("redo"), QStringLiteral("redo")});
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("300"));
    QCOMPARE(shown(form, kRowDiameter), QStringLiteral("20"));
    run(app, {QStringLiteral("defaults yes")});
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("250"));
    QVERIFY(form.undo());
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("300"));
    form.new_project();
    QVERIFY(!form.history().can_undo());
  }

  void filterKeepsMatchesAndGivesTheViewBack() {
    DeskApp app;
    CalcForm& form = beam(app);
    run(app, {QStringLiteral("edit 10 300")});
    const struct {
      const char* step;
      std::vector<int> shown;
      std::vector<int> hidden;
    } cases[] = {
        {"filter 截面尺寸", {kRowSizes, kRowWidth, kRowAs}, {kRowMoment, kRowBars}},
        {"filter DMAX", {kRowRange, kRowRange + 1}, {kRowWidth, kRowBars}},
        {"filter 受压", {kRowCompression, kRowOptions}, {kRowWidth}},
        {"filter", {kRowWidth, kRowBars}, {kRowCount, kRowCompression}},
    };
    for (const auto& c : cases) {
      run(app, {QString::fromUtf8(c.step)});
      for (const int row : c.shown) QVERIFY2(!form.grid().isRowHidden(row), c.step);
      for (const int row : c.hidden) QVERIFY2(form.grid().isRowHidden(row), c.step);
    }
    form.changed_only().setChecked(true);
    QVERIFY(!form.grid().isRowHidden(kRowWidth));
    QVERIFY(form.grid().isRowHidden(kRowDepth));
    form.changed_only().setChecked(false);
    // An item that does not apply stays hidden whatever matches.
    run(app, {QStringLiteral("click 26 1"), QStringLiteral("pick 25 否"),
              QStringLiteral("filter As'/As")});
    QVERIFY(form.grid().isRowHidden(kRowRatio));
  }

  void copyAndPasteAColumnOfValues() {
    DeskApp app;
    CalcForm& form = beam(app);
    QString out = run(app, {QStringLiteral("paste 10 300 600 25"), QStringLiteral("click 8 3"),
                            QStringLiteral("copy")});
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("300"));
    QCOMPARE(shown(form, kRowDepth), QStringLiteral("600"));
    QCOMPARE(shown(form, kRowCover), QStringLiteral("25"));
    QVERIFY(bold(form, kRowDepth));
    QVERIFY(out.contains(QStringLiteral("copied: 梁的截面宽度 b\t300")));
    QCOMPARE(form.history().steps(), std::size_t{1});  // the column is one step
    // The first refusal stops the paste and names its row.
    out = run(app, {QStringLiteral("key Escape"), QStringLiteral("click 13 3"),
                    QStringLiteral("paste 10 350 -1 30")});
    QVERIFY(out.contains(QStringLiteral("message: ")));
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("350"));
    QCOMPARE(shown(form, kRowCover), QStringLiteral("25"));
    QVERIFY(form.statusBar()->currentMessage().contains(QStringLiteral("梁的截面高度 h")));
  }

  // A typed value that is refused goes back to the row's text at once; a
  // refused value from elsewhere (a file) is marked, counted and found by F8
  // until it is mended.
  void refusedValuesAreMarkedCountedAndFound() {
    DeskApp app;
    CalcForm& form = beam(app);
    const QString out = run(app, {QStringLiteral("edit 22 1")});
    QCOMPARE(out.count(QStringLiteral("message: ")), 1);
    QCOMPARE(shown(form, kRowLegs), QStringLiteral("2"));
    QCOMPARE(item_text(form, 22), QStringLiteral("2"));
    QVERIFY(!form.grid().marked(kRowLegs, 3));
    QVERIFY(form.refused_count().text().isEmpty());
    run(app, {QStringLiteral("key Escape")});
    write_from_elsewhere(form, 22, u"1");
    run(app, {QStringLiteral("click 8 2"), QStringLiteral("key F8")});
    QCOMPARE(form.grid().currentRow(), kRowLegs);
    QVERIFY(editing(form));
    QVERIFY(form.grid().marked(kRowLegs, 3));
    // The title box shows the refusal and the default whole, unscrolled.
    QVERIFY(form.title_box().toPlainText().contains(QStringLiteral("错误")));
    QVERIFY(form.title_box().toPlainText().contains(QStringLiteral("默认值：2")));
    if (form.grid().height() > 200) {  // else the window is too small for both
      QCOMPARE(form.title_box().verticalScrollBar()->maximum(), 0);
    }
    QVERIFY(form.refused_count().text().startsWith(QStringLiteral("1 ")));
    // Escape keeps it (it is the text the row had); a good value mends it.
    run(app, {QStringLiteral("key Escape")});
    QVERIFY(form.grid().marked(kRowLegs, 3));
    run(app, {QStringLiteral("edit 22 4")});
    QVERIFY(!form.grid().marked(kRowLegs, 3));
    QVERIFY(!form.title_box().toPlainText().contains(QStringLiteral("错误")));
    QVERIFY(form.refused_count().text().isEmpty());
  }

  void defaultsOfARowAHeadingAndTheTitleBox() {
    DeskApp app;
    CalcForm& form = beam(app);
    run(app, {QStringLiteral("edit 10 300"), QStringLiteral("edit 11 600"),
              QStringLiteral("click 8 3")});
    QVERIFY(form.title_box().toPlainText().contains(QStringLiteral("默认值：250")));
    form.reset_current();
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("250"));
    QCOMPARE(shown(form, kRowDepth), QStringLiteral("600"));
    run(app, {QStringLiteral("edit 10 300"), QStringLiteral("click 7 2")});
    form.reset_current();
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("250"));
    QCOMPARE(shown(form, kRowDepth), QStringLiteral("500"));
    QVERIFY(!bold(form, kRowDepth));
    run(app, {QStringLiteral("undo")});
    QCOMPARE(shown(form, kRowDepth), QStringLiteral("600"));
  }

  // 保存为我的默认值 keeps the form's values in ZK_Form.INI beside the
  // suite's history; a form opened later starts from them, and
  // 恢复我的默认值 puts them back after an edit, as one step.
  void myDefaultsAreSavedReopenedAndRestored() {
    DeskApp app;
    QTemporaryDir dir;
    app.platform()->suite = std::make_shared<platform::FolderSuiteServices>(
        std::vector<std::filesystem::path>{},
        std::make_shared<platform::IniHistory>(
            app.platform()->ini, to_text(dir.filePath(QStringLiteral("ZK_History.INI"))),
            platform::PathCase::kExact));
    beam(app);
    run(app, {QStringLiteral("edit 10 300"), QStringLiteral("edit 1 三号楼"),
              QStringLiteral("mine save")});
    QFile file(dir.filePath(QStringLiteral("ZK_Form.INI")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.contains("[clsBeamSteel]\r\n"));
    QVERIFY(bytes.contains("10=300\r\n"));
    QVERIFY(bytes.contains("\n1=\xC8\xFD\xBA\xC5\xC2\xA5\r\n"));  // 三号楼 in code page 936
    run(app, {QStringLiteral("close")});

    CalcForm& again = beam(app);
    QCOMPARE(shown(again, kRowWidth), QStringLiteral("300"));
    QCOMPARE(item_text(again, 1), QStringLiteral("三号楼"));
    QVERIFY(bold(again, kRowWidth));  // not the layout's default
    QVERIFY(!again.isWindowModified());
    QVERIFY(!again.action(CalcForm::Action::kUndo)->isEnabled());
    run(app, {QStringLiteral("edit 10 400"), QStringLiteral("edit 11 600"),
              QStringLiteral("mine restore")});
    QCOMPARE(shown(again, kRowWidth), QStringLiteral("300"));
    QCOMPARE(shown(again, kRowDepth), QStringLiteral("500"));  // saved as it was
    run(app, {QStringLiteral("undo")});
    QCOMPARE(shown(again, kRowWidth), QStringLiteral("400"));
    QCOMPARE(shown(again, kRowDepth), QStringLiteral("600"));
    run(app, {QStringLiteral("defaults yes")});  // the layout's defaults stay the layout's
    QCOMPARE(shown(again, kRowWidth), QStringLiteral("250"));
  }

  void viewIsKeptPerForm() {
    DeskApp app;
    app.platform()->settings = std::make_shared<platform::headless::MemorySettingsStore>();
    int caption = 0;
    {
      CalcForm& form = beam(app);
      form.resize(900, form.height());  // room for the captions, at any scale
      QApplication::processEvents();
      // The caption column's edge dragged 60 pixels to the right.
      platform::qt::QtGridControl& grid = form.grid();
      caption = grid.columnWidth(2) + 60;
      const QPoint edge(grid.columnViewportPosition(3), grid.rowViewportPosition(kRowWidth) + 4);
      const QPoint to = edge + QPoint(60, 0);
      QTest::mousePress(grid.viewport(), Qt::LeftButton, Qt::NoModifier, edge);
      QMouseEvent drag(QEvent::MouseMove, to, grid.viewport()->mapToGlobal(to), Qt::NoButton,
                       Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(grid.viewport(), &drag);
      QTest::mouseRelease(grid.viewport(), Qt::LeftButton, Qt::NoModifier, to);
      QCOMPARE(grid.columnWidth(2), caption);
      run(app, {QStringLiteral("click 7 1"), QStringLiteral("click 17 1"),
                QStringLiteral("click 23 3")});
      form.panes().setSizes({300, 700});
      form.side_panes()->setSizes({200, 500});
      QVERIFY(form.close());
    }
    QApplication::processEvents();
    CalcForm& again = beam(app);
    QVERIFY(again.grid().isRowHidden(kRowWidth));
    QVERIFY(!again.grid().isRowHidden(kRowCount));
    QCOMPARE(again.grid().currentRow(), kRowLegs);
    // The panes keep their share of a window the screen may have made smaller
    // (where it leaves them room: a screen at twice the scale is 400 wide).
    QCOMPARE(again.grid().columnWidth(2), caption);
    const QList<int> panes = again.panes().sizes();
    if (again.width() >= 600) {
      QVERIFY(std::abs(panes.first() * 10 - (panes.first() + panes.last()) * 3) <= 20);
      QCOMPARE(again.side_panes()->sizes().first(), 200);  // the sketch keeps its height
    }
    // A damaged view is read as far as it goes.
    again.ask_before_closing(false);
    QVERIFY(again.close());
    app.platform()->settings->set(u"Zelkora 结构快速设计", u"View", u"clsBeamSteel",
                                  u"open=h99,\xFFFF;row=abc;panes=1,2,3");
    CalcForm& third = beam(app);
    QVERIFY(!third.grid().isRowHidden(kRowWidth));
  }

  // Every colour from the palette: on a dark one, heading and value rows
  // stay readable; rows are as tall as their font needs.
  void darkPaletteAndLargeFonts() {
    const QPalette light = QApplication::palette();
    QApplication::setPalette(dark_palette());
    {
      DeskApp app;
      CalcForm& form = beam(app);
      run(app, {QStringLiteral("edit 10 300"), QStringLiteral("edit 22 1")});
      for (const int row : {kRowSizes, kRowWidth, kRowLegs}) {
        QTableWidgetItem* value = form.grid().item(row, row == kRowSizes ? 2 : 3);
        const int ground = value->background().color().lightness();
        const int text = value->foreground().color().lightness();
        QVERIFY2(ground < 128 && text - ground >= 60,
                 qPrintable(QStringLiteral("%1: %2 on %3").arg(row).arg(text).arg(ground)));
      }
      form.grid().DefaultFontSize(24);
      QFont big = form.grid().item(kRowWidth, 3)->font();
      QVERIFY(form.grid().rowHeight(kRowWidth) >= QFontMetrics(big).height());
    }
    QApplication::setPalette(light);
  }

  void screenReadersHearCaptionValueHelpAndRefusal() {
    DeskApp app;
    CalcForm& form = beam(app);
    write_from_elsewhere(form, 10, u"-5");
    run(app, {QStringLiteral("key F8"), QStringLiteral("key Escape")});
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&form.grid());
    QVERIFY(table && table->tableInterface());
    QAccessibleInterface* cell = table->tableInterface()->cellAt(kRowWidth, 3);
    QVERIFY(cell);
    QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("梁的截面宽度 b"));
    const QStringList told = cell->text(QAccessible::Description).split(QLatin1Char('\n'));
    QCOMPARE(told.value(0), QStringLiteral("值：-5"));
    QVERIFY(told.value(1).startsWith(QStringLiteral("错误")));
    QVERIFY(told.value(2).contains(QStringLiteral("梁的截面宽度（mm）")));
    // A row never entered is described too.
    QAccessibleInterface* other = table->tableInterface()->cellAt(kRowMoment, 3);
    QCOMPARE(other->text(QAccessible::Name), QStringLiteral("弯矩设计值 M"));
  }

  // The File menu lists the program's recent projects, newest first, and
  // opens them; F1 opens the help at the current row's caption, or says
  // plainly that there is none.
  void recentProjectsAndHelp() {
    DeskApp app;
    auto suite = std::make_shared<platform::headless::MemorySuiteServices>();
    auto help = std::make_shared<platform::headless::RecordingHelpViewer>();
    auto messages = std::make_shared<platform::headless::RecordingMessageBox>();
    app.platform()->suite = suite;
    app.platform()->help = help;
    app.platform()->messages = messages;
    CalcForm& form = beam(app);
    QTemporaryDir dir;
    const QString first = dir.filePath(QStringLiteral("一号.zks"));
    const QString second = dir.filePath(QStringLiteral("二号.zks"));
    QVERIFY(form.save_file(first));
    run(app, {QStringLiteral("edit 10 300")});
    QVERIFY(form.save_file(second));
    QVERIFY(form.open_file(first));
    const std::vector<Text> recent = form.recent_files();
    QCOMPARE(recent.size(), std::size_t{2});
    QCOMPARE(to_qstring(recent[0]), QDir::toNativeSeparators(first));
    QMenu* menu = form.findChild<QMenu*>(QStringLiteral("recent"));
    QVERIFY(menu);
    emit menu->aboutToShow();
    QCOMPARE(menu->actions().size(), 2);
    QVERIFY(menu->actions()[1]->text().endsWith(QStringLiteral("二号.zks")));
    menu->actions()[1]->trigger();
    QCOMPARE(form.file(), QDir::toNativeSeparators(second));
    QCOMPARE(item_text(form, 10), QStringLiteral("300"));

    run(app, {QStringLiteral("click 8 3"), QStringLiteral("key F1")});
    QCOMPARE(messages->shown.size(), std::size_t{1});
    QVERIFY(form.statusBar()->currentMessage().contains(QStringLiteral("找不到帮助文件")));
    suite->suite_files[u"Zelkora.chm"] = u"/suite/Zelkora.chm";
    run(app, {QStringLiteral("key F1")});
    QCOMPARE(help->requests.size(), std::size_t{1});
    QCOMPARE(to_qstring(help->requests[0].topic), QStringLiteral("梁的截面宽度 b.htm"));
    QCOMPARE(messages->shown.size(), std::size_t{1});
  }

  // The scripts of the random tester's findings, kept: each breaks a rule
  // when its fix is taken back.
  void keptFindingsHoldEveryRule_data() {
    QTest::addColumn<QString>("file");
    for (const QString& name :
         QDir(QStringLiteral(ZK_SOURCE_DIR "/desk/testdata/monkey")).entryList({"*.txt"})) {
      QTest::newRow(name.toUtf8().constData()) << name;
    }
  }
  void keptFindingsHoldEveryRule() {
    QFETCH(QString, file);
    QFile script(QStringLiteral(ZK_SOURCE_DIR "/desk/testdata/monkey/") + file);
    QVERIFY(script.open(QIODevice::ReadOnly));
    std::vector<std::string> steps;
    for (const QString& line : QString::fromUtf8(script.readAll()).split(QLatin1Char('\n')))
      steps.push_back(line.toStdString());
    std::ostringstream printed;
    const int status = check_script(steps, qt_monkey_host, printed, printed, true);
    QVERIFY2(status == 0, printed.str().c_str());
  }

  // The desktop form and the headless one, driven by the same script step
  // by step, print the same boxes and copies, raise the same grid events and
  // hold the same values, cells, marks, history and changed mark. An
  // "answer" runs with the step after it; "{dir}" is a scratch folder.
  void headlessFormGoesAsTheDesktopForm_data() {
    QTest::addColumn<QStringList>("steps");
    QTest::newRow("typing, refusals, Escape, moving about")
        << QStringList{"click 8 3", "key F2", "edit 10 300", "edit 22 1", "key Escape",
                       "edit 11 600", "key Tab", "key Escape", "key Up", "key Down", "key Down",
                       "edit 0 某 办公楼", "edit 10", "key Escape", "click 17 1", "edit 15 3,20",
                       "click 18 3", "key Up", "key Up", "key Space", "key Down", "click 17 2",
                       "key Space", "key Down", "key Enter", "key Shift+Tab", "edit 15 2,16,3",
                       "key Escape", "click 26 1", "click 27 3", "key Enter", "key Enter",
                       "key Down", "key Tab", "key Up", "click 28 3", "key F2", "key Space",
                       "key Enter", "edit 10 3e2", "edit 11 0x10"};
    QTest::newRow("lists, folding by Space, the rows a pick hides")
        << QStringList{"click 26 1", "pick 25 否", "pick 25 是", "click 5 3", "key F2",
                       "key Down", "key Escape", "key Down", "click 12 2", "key Space",
                       "key Down", "key Down", "key Space", "click 17 1", "key Down", "key F4",
                       "key Enter", "edit 16 9", "click 3 3", "key Alt+Down"};
    QTest::newRow("undo, redo, defaults, a box over an open editor")
        << QStringList{"undo", "edit 10 300", "edit 11 600", "undo", "redo", "redo",
                       "defaults cancel", "defaults yes", "undo", "click 8 3", "key F2", "undo",
                       "undo", "redo", "click 26 1", "pick 25 否", "undo", "redo", "click 8 3",
                       "key F2", "defaults cancel", "key Escape", "key F2", "undo", "key Escape"};
    QTest::newRow("the filter, its box's own keys, F8")
        << QStringList{"edit 10 300", "filter 截面", "key Down", "click 9 3", "key Tab",
                       "filter", "key F8", "filter zzz", "click 8 3", "filter 高度", "key Space",
                       "undo", "undo", "redo", "redo", "filter 截面", "paste 10 300 600 25 40 50",
                       "filter", "key F2", "key F8", "click 8 3", "undo", "filter 受压", "redo",
                       "undo", "pick 25 否", "filter"};
    QTest::newRow("a refusal, an open list, then the filter or a box")
        << QStringList{"edit 11 -5", "filter 钢筋", "click 5 3", "key Alt+Down", "filter 截面",
                       "click 9 3", "key F4", "defaults yes", "edit 11 -5", "edit 10 300",
                       "paste 11 450", "key Enter"};
    QTest::newRow("copy and paste")
        << QStringList{"paste 10 300 600 25", "click 8 3", "copy", "key F2", "copy",
                       "paste 10 350 -1 30", "key Escape", "paste 11 280", "key Enter",
                       "click 13 3", "paste 30 1 2 3 4 5 6 7 8 9", "filter 钢筋", "copy",
                       "click 18 3", "copy", "paste 10 270", "key Enter"};
    QTest::newRow("projects saved, begun anew, opened, calculated, closed")
        << QStringList{"edit 22 1", "new", "calculate", "key Escape", "edit 0 某办公楼",
                       "save {dir}/a", "edit 10 300", "answer cancel", "new", "answer no",
                       "new", "open {dir}/a.zks", "open {dir}/none.zks", "calculate",
                       "edit 10 320", "answer yes {dir}/b.zks", "new", "click 8 3", "key F2",
                       "save {dir}/c.zks", "edit 11 650", "calculate", "edit 10 abc", "key Tab",
                       "answer cancel", "close", "answer no", "close"};
    QTest::newRow("the footing's load cases: edited, moved, saved, calculated, refused")
        << QStringList{"program 独立基础计算",
                       "case 1 3 800",
                       "case add",
                       "case 3 2 风",
                       "case 3 4 60",
                       "case 3 1 左风",
                       "calculate",
                       "save {dir}/f",
                       "case up 3",
                       "case delete 1",
                       "case down 1",
                       "new",
                       "open {dir}/f.zks",
                       "case 2 3 abc",
                       "save {dir}/g",
                       "calculate",
                       "case 2 3 240",
                       "edit 1 J-2",
                       "calculate",
                       "case add",
                       "case 4 2 地震",
                       "calculate"};
  }

  void headlessFormGoesAsTheDesktopForm() {
    QFETCH(QStringList, steps);
    // The beam's form, or the program a first step "program NAME" names.
    Text program = u"梁配筋计算";
    if (steps.value(0).startsWith(QLatin1String("program "))) {
      program = to_text(steps.takeFirst().mid(8));
    }
    QTemporaryDir dir;
    // What a host shows after a step: what it printed, its events, its state.
    const auto seen = [](QString& out, platform::headless::RecordingEvents* log,
                         FormWork* work) {
      QStringList lines = out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
      out.clear();
      for (const std::string& line : log ? log->lines : std::vector<std::string>{}) {
        lines << QString::fromStdString(line);
      }
      if (log) log->lines.clear();
      for (const Text& line : work ? form_state(*work) : std::vector<Text>{u"closed"}) {
        lines << to_qstring(line);
      }
      return lines;
    };
    DeskApp app;
    QPointer<CalcForm> form = app.open_program(program);
    QVERIFY(form);
    QApplication::processEvents();
    platform::headless::RecordingEvents qt_log(form->work().events());
    form->work().record_events(&qt_log);
    QString qt_out, headless_out;
    std::ostringstream headless_stream;
    HeadlessScriptRunner headless(*program_of(program), headless_stream);
    platform::headless::RecordingEvents headless_log(headless.form()->work().events());
    headless.form()->work().record_events(&headless_log);

    QStringList step{QStringLiteral("(opened)")};
    for (int i = 0; i <= steps.size(); ++i) {
      if (i > 0) {
        step = {QString(steps[i - 1]).replace(QStringLiteral("{dir}"), dir.path())};
        while (step.last().startsWith(QLatin1String("answer")) && i < steps.size()) {
          step << QString(steps[i++]).replace(QStringLiteral("{dir}"), dir.path());
        }
        // The form's window active again after a box closed, as the system
        // makes it (offscreen, nothing does).
        if (form && !form->isActiveWindow()) {
          form->activateWindow();
          QApplication::processEvents();
        }
        // A step that cannot run says why, on either host.
        QString err;
        QTextStream qt_stream(&qt_out), err_stream(&err);
        if (run_script(app, step, qt_stream, err_stream) != 0) {
          qt_out += QStringLiteral("cannot: ") + err.section(QStringLiteral("\": "), 1).trimmed();
        }
        try {
          for (const QString& line : step) headless.run(to_text(line));
        } catch (const std::exception& e) {
          headless_stream << "cannot: " << e.what();
        }
        headless_out = QString::fromStdString(headless_stream.str());
        headless_stream.str({});
      }
      const QStringList qt = seen(qt_out, form ? &qt_log : nullptr, form ? &form->work() : nullptr);
      const QStringList hl = seen(headless_out, headless.form() ? &headless_log : nullptr,
                                  headless.form() ? &headless.form()->work() : nullptr);
      // From the first line that differs, a few of each.
      int at = 0;
      while (at < std::max(qt.size(), hl.size()) && qt.value(at) == hl.value(at)) ++at;
      QVERIFY2(at == std::max(qt.size(), hl.size()),
               qPrintable(QString::number(i) + QStringLiteral(" ") + step.join(QLatin1Char('|')) +
                          QStringLiteral(":\n  desktop:  ") +
                          qt.mid(at, 6).join(QStringLiteral("\n            ")) +
                          QStringLiteral("\n  headless: ") +
                          hl.mid(at, 6).join(QStringLiteral("\n            "))));
    }
    if (form) {
      form->work().record_events(nullptr);
      form->ask_before_closing(false);
    }
  }
};

}  // namespace zelkora::desk

QTEST_MAIN(zelkora::desk::DeskTest)
#include "desk_qtest.moc"
