// The grid on both hosts: the same user actions, made with real mouse and key
// events on the Qt grid and as whole actions on the headless form, raise the
// same events in the same order and leave the same values, cells and marks.
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <memory>

#include "zelkora/grid/form_session.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/headless/recording_events.h"
#include "zelkora/platform/qt/qt_controls.h"
#include "zelkora/platform/qt/qt_grid.h"

namespace zelkora::platform::qt {
namespace {

constexpr int32_t kBeamSteel = 63706;
constexpr int32_t kValueCol = 3;

using EventLog = headless::RecordingEvents;

// The lines written down, one string.
QString joined(const std::vector<std::string>& lines) {
  QStringList all;
  for (const std::string& line : lines) all << QString::fromStdString(line);
  return all.join(QLatin1Char('\n'));
}

// A platform whose message box writes down what it shows.
std::shared_ptr<Platform> recording_platform() {
  auto platform = Platform::headless();
  platform->messages = std::make_shared<headless::RecordingMessageBox>();
  return platform;
}

std::size_t shown_messages(const Platform& platform) {
  return static_cast<const headless::RecordingMessageBox&>(*platform.messages).shown.size();
}

// What a form holds after the actions: per row its item's text, the value
// cell's text and its bold mark; then the active cell and the messages shown.
QStringList state_of(grid::FormSession& session, const GridControl& grid, const Platform& p) {
  QStringList rows;
  clsGridCell& cell = session.cell();
  for (int32_t row = 1; row < grid.Rows(); ++row) {
    const int32_t item = cell.lGetIndexByRow(row);
    rows << QStringLiteral("%1: %2 | %3%4")
                .arg(row)
                .arg(item >= 0 ? to_qstring(cell.tGetText(item)) : QStringLiteral("-"))
                .arg(to_qstring(grid.Text(row, kValueCol)))
                .arg(grid.FontBold(row, kValueCol) ? QStringLiteral(" bold") : QString());
  }
  rows << QStringLiteral("active: %1,%2").arg(grid.ActiveCell().row).arg(grid.ActiveCell().col);
  rows << QStringLiteral("messages: %1").arg(shown_messages(p));
  return rows;
}

// The beam form on the Qt grid, worked with real events.
struct QtHost {
  std::shared_ptr<Platform> platform = recording_platform();
  QtPanel panel;
  QtGridControl* grid = new QtGridControl(&panel);
  QtRichTextBox* title = new QtRichTextBox(&panel);
  headless::MemoryGridForm form;
  grid::FormSession session{platform, *grid, *title, panel, form};
  EventLog log{session};

  QtHost() {
    form.label_col_width = 150;
    session.check_values_on_leave(true);
    session.build(kBeamSteel);
    grid->value_column(kValueCol);
    grid->connect_events(&log);
    panel.resize(420, 900);
    panel.show();
    static_cast<void>(QTest::qWaitForWindowExposed(&panel));
    panel.activateWindow();
    QApplication::processEvents();
    grid->ActiveCell(1, 1);  // where the focus puts it when the form is shown
  }
  ~QtHost() { grid->connect_events(nullptr); }

  QWidget* focus() {
    QWidget* widget = QApplication::focusWidget();
    return widget ? widget : grid;
  }

  void run(const QString& action) {
    const QString verb = action.section(QLatin1Char(' '), 0, 0);
    const QString rest = action.section(QLatin1Char(' '), 1);
    if (verb == QLatin1String("click")) {
      const int row = rest.section(QLatin1Char(' '), 0, 0).toInt();
      const int col = rest.section(QLatin1Char(' '), 1, 1).toInt();
      grid->scrollTo(grid->model()->index(row, col));
      const QPoint middle(grid->columnViewportPosition(col) + grid->columnWidth(col) / 2,
                          grid->rowViewportPosition(row) + grid->rowHeight(row) / 2);
      QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, middle);
    } else if (verb == QLatin1String("type")) {
      // Each key goes where the focus is, as the editor opens on the first.
      for (const QChar c : rest) QTest::keyClick(focus(), c.toLatin1());
    } else if (verb == QLatin1String("key")) {
      static const QMap<QString, Qt::Key> kKeys = {
          {QStringLiteral("Enter"), Qt::Key_Return}, {QStringLiteral("Tab"), Qt::Key_Tab},
          {QStringLiteral("Backtab"), Qt::Key_Backtab}, {QStringLiteral("Escape"), Qt::Key_Escape},
          {QStringLiteral("Space"), Qt::Key_Space},     {QStringLiteral("F2"), Qt::Key_F2},
          {QStringLiteral("F4"), Qt::Key_F4},           {QStringLiteral("Up"), Qt::Key_Up},
          {QStringLiteral("Down"), Qt::Key_Down},       {QStringLiteral("Alt+Down"), Qt::Key_Down}};
      const Qt::KeyboardModifiers modifiers =
          rest == QLatin1String("Backtab")    ? Qt::ShiftModifier
          : rest == QLatin1String("Alt+Down") ? Qt::AltModifier
                                              : Qt::NoModifier;
      QTest::keyClick(focus(), kKeys.value(rest), modifiers);
    } else if (verb == QLatin1String("pick")) {
      auto* combo = qobject_cast<QComboBox*>(grid->indexWidget(grid->currentIndex()));
      QVERIFY2(combo && combo->view()->isVisible(), qPrintable(action));
      const QRect at = combo->view()->visualRect(combo->view()->model()->index(
          combo->findText(rest), 0));
      QTest::qWait(QApplication::doubleClickInterval() + 50);
      QTest::mouseClick(combo->view()->viewport(), Qt::LeftButton, Qt::NoModifier, at.center());
    }
    QApplication::processEvents();
  }
};

// The same form on the headless controls, worked by whole actions.
struct HeadlessHost {
  std::shared_ptr<Platform> platform = recording_platform();
  headless::HeadlessForm view;
  grid::FormSession session{platform, view.grid, view.title, view.panel, view.form};
  EventLog log{session};
  headless::HeadlessUser user{view};

  HeadlessHost() {
    session.check_values_on_leave(true);
    session.build(kBeamSteel);
    view.connect(&log);
    view.grid.ActiveCell(1, 1);
  }

  void run(const QString& action) {
    const QString verb = action.section(QLatin1Char(' '), 0, 0);
    const QString rest = action.section(QLatin1Char(' '), 1);
    if (verb == QLatin1String("click")) {
      user.click(rest.section(QLatin1Char(' '), 0, 0).toInt(),
                 rest.section(QLatin1Char(' '), 1, 1).toInt());
    } else if (verb == QLatin1String("type")) {
      user.type(to_text(rest));
    } else if (verb == QLatin1String("key")) {
      static const QMap<QString, headless::HeadlessUser::Key> kKeys = {
          {QStringLiteral("Enter"), headless::HeadlessUser::kEnter},
          {QStringLiteral("Tab"), headless::HeadlessUser::kTab},
          {QStringLiteral("Backtab"), headless::HeadlessUser::kBackTab},
          {QStringLiteral("Escape"), headless::HeadlessUser::kEscape},
          {QStringLiteral("Space"), headless::HeadlessUser::kSpace},
          {QStringLiteral("F2"), headless::HeadlessUser::kF2},
          {QStringLiteral("F4"), headless::HeadlessUser::kF4},
          {QStringLiteral("Up"), headless::HeadlessUser::kUp},
          {QStringLiteral("Down"), headless::HeadlessUser::kDown},
          {QStringLiteral("Alt+Down"), headless::HeadlessUser::kAltDown}};
      user.key(kKeys.value(rest));
    } else if (verb == QLatin1String("pick")) {
      user.pick(to_text(rest));
    }
  }
};

}  // namespace

class GridHostsTest : public QObject {
  Q_OBJECT

 private slots:
  void sameActionsSameEventsValuesAndMarks_data() {
    // Rows of the beam form: 3 抗震等级 (list), 5 纵筋的强度等级 (list), 8 b
    // (S>0), 9 h, 10 c, 17 通长纵向钢筋 (group, folded; 18, 19 its members),
    // 23 箍筋的肢数 (I>=2), 1 the heading 基本信息.
    QTest::addColumn<QStringList>("actions");
    QTest::newRow("a click on another value cell") << QStringList{"click 9 3", "click 8 3"};
    QTest::newRow("a click on the active cell edits it, typing and Enter move on")
        << QStringList{"click 8 3", "click 8 3", "type 300", "key Enter", "type 600", "key Tab",
                       "key Escape"};
    QTest::newRow("typing starts an edit; Tab and Shift+Tab")
        << QStringList{"click 9 3", "type 650", "key Tab", "type 30", "key Backtab",
                       "key Backtab"};
    QTest::newRow("a refused value, left again, then Escape")
        << QStringList{"click 8 3", "key F2", "type -250", "key Enter", "key Tab", "type 5",
                       "key Escape", "click 9 3"};
    QTest::newRow("a refusal then a click elsewhere")
        << QStringList{"click 23 3", "type 1", "click 8 3", "type 3", "key Enter"};
    QTest::newRow("a list closed without a pick")
        << QStringList{"click 5 3", "key F2", "key Escape", "click 5 3", "key F2", "key Enter"};
    QTest::newRow("a list opened and picked from")
        << QStringList{"click 5 3", "key F4", "pick HRB335", "key Enter"};
    QTest::newRow("a group opened, its value typed, a member typed")
        << QStringList{"click 17 1", "click 17 3", "type 3,20", "key Enter", "click 19 3",
                       "type 25", "key Enter"};
    QTest::newRow("a group value of too many parts")
        << QStringList{"click 17 3", "type 2,16,3", "key Enter", "key Escape"};
    QTest::newRow("Space folds a heading, typing on it edits nothing")
        << QStringList{"click 1 2", "key Space", "type 2", "key Space", "click 13 3",
                       "type x", "key Enter"};
    QTest::newRow("Up and Down through a heading, in an editor, past the first row")
        << QStringList{"click 11 3", "key Down", "key Down", "key Up", "key Up", "key F2",
                       "key Down", "key Escape", "click 2 3", "key Up", "key Up", "click 12 2",
                       "key Down", "click 12 3", "key Space", "key Down", "key Up", "click 9 3",
                       "key F2", "click 9 3", "key Up", "type 5", "key Enter"};
    QTest::newRow("Alt+Down opens a list, not on a text cell")
        << QStringList{"click 13 3", "key Alt+Down", "click 5 3", "key Alt+Down",
                       "pick HRB335", "key Enter"};
    QTest::newRow("an open list takes the keys: arrows move, Enter and F4 pick, Escape closes")
        << QStringList{"click 5 3", "key F4", "type 3", "key Down", "key Down", "key Up",
                       "key Enter", "key Enter", "key F4", "key Escape", "key Down",
                       "key Escape", "key Down", "click 5 3", "key F2", "type X", "key F4",
                       "key Enter", "key F4", "key Up", "key F4", "type 3", "key F4",
                       "key Escape", "type 4", "key Enter"};
  }

  void sameActionsSameEventsValuesAndMarks() {
    QFETCH(QStringList, actions);
    QtHost qt;
    HeadlessHost headless;
    qt.log.lines.clear();
    headless.log.lines.clear();
    for (const QString& action : actions) {
      qt.run(action);
      headless.run(action);
      qt.log.lines.push_back("-- " + action.toStdString());
      headless.log.lines.push_back("-- " + action.toStdString());
    }
    QCOMPARE(joined(qt.log.lines), joined(headless.log.lines));
    QCOMPARE(state_of(qt.session, *qt.grid, *qt.platform).join(QLatin1Char('\n')),
             state_of(headless.session, headless.view.grid, *headless.platform)
                 .join(QLatin1Char('\n')));
  }
};

}  // namespace zelkora::platform::qt

QTEST_MAIN(zelkora::platform::qt::GridHostsTest)
#include "qt_grid_qtest.moc"
