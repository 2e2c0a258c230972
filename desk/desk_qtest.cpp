// Tests of the desktop program on real widgets, offscreen: the road of an
// input event through the grid, folding, keys, defaults, project files and
// the menu, driven by real mouse and key events.
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "desk/calc_form.h"
#include "desk/desk_app.h"
#include "desk/main_window.h"
#include "desk/script.h"

namespace zelkora::desk {

using platform::qt::to_qstring;

class DeskTest : public QObject {
  Q_OBJECT

 private:
  // Rows of "clsBeamSteel" (item in brackets).
  static constexpr int kRowWidth = 8;         // [10] b, default 250
  static constexpr int kRowDepth = 9;         // [11] h, default 500
  static constexpr int kRowForces = 12;       // heading 内力设计值
  static constexpr int kRowBars = 17;         // [15] group 通长纵向钢筋, folded
  static constexpr int kRowCount = 18;        // [16]
  static constexpr int kRowDiameter = 19;     // [17]
  static constexpr int kRowRatio = 25;        // [24] As'/As
  static constexpr int kRowOptions = 26;      // heading 选项, folded
  static constexpr int kRowCompression = 27;  // [25] 考虑受压钢筋

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

  static bool bold(CalcForm& form, int row) { return form.grid().item(row, 3)->font().bold(); }
  static QString shown(CalcForm& form, int row) { return form.grid().item(row, 3)->text(); }

 private slots:
  void refusedValueKeepsTheCellAndTheFocus() {
    DeskApp app;
    CalcForm& form = beam(app);
    const QString out = run(app, {QStringLiteral("edit 10 -250")});
    QVERIFY(out.contains(QStringLiteral("message: 输入错误！ | 错误：梁的截面宽度 b ＝ -250 ≤ 0")));
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("250"));
    QWidget* editor = form.grid().indexWidget(form.grid().model()->index(kRowWidth, 3));
    QVERIFY(editor);
    QVERIFY(editor == form.window()->focusWidget() ||
            editor->isAncestorOf(form.window()->focusWidget()));
    // Typed again, the value goes through.
    run(app, {QStringLiteral("edit 10 300")});
    QCOMPARE(shown(form, kRowWidth), QStringLiteral("300"));
    QVERIFY(bold(form, kRowWidth));
  }

  void groupValueSplitsIntoItsMembers() {
    DeskApp app;
    CalcForm& form = beam(app);
    run(app, {QStringLiteral("click 17 1"), QStringLiteral("edit 15 3,20")});
    QVERIFY(!form.grid().isRowHidden(kRowCount));
    QCOMPARE(shown(form, kRowBars), QStringLiteral("3, 20"));
    QCOMPARE(shown(form, kRowCount), QStringLiteral("3"));
    QCOMPARE(shown(form, kRowDiameter), QStringLiteral("20"));
    QCOMPARE(to_qstring(form.cell().tGetText(17)), QStringLiteral("20"));
    const QString out = run(app, {QStringLiteral("edit 15 2,16,3")});
    QVERIFY(out.contains(QStringLiteral("2,16,3")));
    QCOMPARE(shown(form, kRowBars), QStringLiteral("3, 20"));
  }

  void valueTypedBackToItsDefaultLosesItsBold() {
    DeskApp app;
    CalcForm& form = beam(app);
    run(app, {QStringLiteral("edit 11 650")});
    QVERIFY(bold(form, kRowDepth));
    QVERIFY(form.isWindowModified());
    run(app, {QStringLiteral("edit 11 500 ")});
    QVERIFY(!bold(form, kRowDepth));
  }

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

  void menuOpensTheFormOfAProgram() {
    DeskApp app;
    QString out = run(app, {QStringLiteral("menu 基本构件"), QStringLiteral("menu 弯矩")});
    QVERIFY(out.contains(QStringLiteral("不在本程序中")));
    QVERIFY(!app.current_form());
    run(app, {QStringLiteral("menu 梁配筋")});
    QVERIFY(app.current_form());
    QCOMPARE(to_qstring(app.current_form()->program().layout), QStringLiteral("clsBeamSteel"));
    app.current_form()->ask_before_closing(false);
  }

  void beamCalculatesAndTheOthersSaySoPlainly() {
    DeskApp app;
    CalcForm& form = beam(app);
    run(app, {QStringLiteral("edit 4 180"), QStringLiteral("calculate"),
              QStringLiteral("shot zelkora-desk-beam.png")});
    const QString report = form.report()->toPlainText();
    QVERIFY(report.contains(QStringLiteral("选用 3C25")));
    QVERIFY(form.report()->toHtml().contains(QStringLiteral("vertical-align:sub")));
    QVERIFY(QFile::exists(QStringLiteral("zelkora-desk-beam.png")));
    CalcForm* other = app.open_program(u"荷载组合");
    QVERIFY(other);
    other->ask_before_closing(false);
    const QString out = run(app, {QStringLiteral("calculate")});
    QVERIFY(out.contains(QStringLiteral("没有计算")));
  }
};

}  // namespace zelkora::desk

QTEST_MAIN(zelkora::desk::DeskTest)
#include "desk_qtest.moc"
