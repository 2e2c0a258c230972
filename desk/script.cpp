// Scripts of real input events for the desktop program.
#include "desk/script.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <functional>
#include <stdexcept>

#include "desk/calc_form.h"
#include "desk/case_table.h"
#include "desk/desk_app.h"
#include "desk/main_window.h"

namespace zelkora::desk {

namespace {

using platform::qt::QtGridControl;
using platform::qt::to_qstring;
using platform::qt::to_text;

void settle() { QApplication::processEvents(); }

// A click on the cell as a user makes it: press and release in its middle.
// A click outside an open list closes it first, as the window system does;
// the click then goes on to what is under the mouse. (A test's click goes to
// its widget straight past the list's grab.)
void close_list_for_click(const QWidget* target) {
  QWidget* list = QApplication::activePopupWidget();
  if (!list || list == target || list->isAncestorOf(target)) return;
  if (auto* combo = qobject_cast<QComboBox*>(list->parentWidget())) {
    combo->hidePopup();
  } else {
    list->close();
  }
  settle();
}

void click_cell(QtGridControl& grid, int32_t row, int32_t col) {
  if (row < 0 || col < 0) {
    throw StepError("the grid has no cell " + std::to_string(row) + ", " + std::to_string(col));
  }
  if (row >= grid.rowCount() || col >= grid.columnCount()) {
    // Past the last row or column: the grid's empty area, where there is one.
    const QPoint corner(grid.viewport()->width() - 2, grid.viewport()->height() - 2);
    if (grid.indexAt(corner).isValid()) throw StepError("the grid has no empty area in view");
    close_list_for_click(grid.viewport());
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, corner);
    settle();
    return;
  }
  if (grid.isRowHidden(row) || grid.isColumnHidden(col)) {
    throw StepError("row " + std::to_string(row) + " is not shown");
  }
  grid.scrollTo(grid.model()->index(row, col));
  // The middle of the column in the row, also where columns are merged.
  const QPoint middle(grid.columnViewportPosition(col) + grid.columnWidth(col) / 2,
                      grid.rowViewportPosition(row) + grid.rowHeight(row) / 2);
  close_list_for_click(grid.viewport());
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, middle);
  settle();
}

// Where the keys go: an open list, else the widget that has the focus in the
// window of `widget` (the window need not be the active one, as after a
// message box closed), or `widget`.
QWidget* focus_in(QWidget* widget) {
  // An open list takes the keys, as it grabs the keyboard.
  if (QWidget* popup = QApplication::activePopupWidget()) {
    return popup->focusWidget() ? popup->focusWidget() : popup;
  }
  // An editor just closed may still be the inactive window's focus widget;
  // keys never reach a widget that is not shown.
  QWidget* focus = widget->window()->focusWidget();
  return focus && focus->isVisible() ? focus : widget;
}

// Keys go to the active window, as the user's do: the window of `widget` is
// made the active one first (a form just opened may not be yet).
void activate(QWidget* widget) {
  QWidget* window = widget->window();
  if (window->isActiveWindow()) return;
  window->activateWindow();
  // Offscreen a window may stay inactive; the keys then go where the focus is.
  static_cast<void>(QTest::qWaitForWindowActive(window, 1000));
}

// Characters typed one key press each, with the text the key gives.
void type_text(QWidget* widget, const QString& text) {
  for (const QChar c : text) {
    const int key = c.unicode() < 0x80 ? QChar(c).toUpper().unicode() : 0;
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(c));
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, QString(c));
    QApplication::sendEvent(widget, &press);
    QApplication::sendEvent(widget, &release);
  }
  settle();
}

struct KeyPress {
  Qt::Key key;
  Qt::KeyboardModifiers modifiers;
};

KeyPress key_of(const QString& name) {
  static const QMap<QString, KeyPress> kKeys = {
      {QStringLiteral("Enter"), {Qt::Key_Return, Qt::NoModifier}},
      {QStringLiteral("Tab"), {Qt::Key_Tab, Qt::NoModifier}},
      {QStringLiteral("Shift+Tab"), {Qt::Key_Backtab, Qt::ShiftModifier}},
      {QStringLiteral("Space"), {Qt::Key_Space, Qt::NoModifier}},
      {QStringLiteral("Escape"), {Qt::Key_Escape, Qt::NoModifier}},
      {QStringLiteral("Up"), {Qt::Key_Up, Qt::NoModifier}},
      {QStringLiteral("Down"), {Qt::Key_Down, Qt::NoModifier}},
      {QStringLiteral("Alt+Down"), {Qt::Key_Down, Qt::AltModifier}},
      {QStringLiteral("F1"), {Qt::Key_F1, Qt::NoModifier}},
      {QStringLiteral("F2"), {Qt::Key_F2, Qt::NoModifier}},
      {QStringLiteral("F4"), {Qt::Key_F4, Qt::NoModifier}},
      {QStringLiteral("F8"), {Qt::Key_F8, Qt::NoModifier}},
      {QStringLiteral("Ctrl+C"), {Qt::Key_C, Qt::ControlModifier}},
      {QStringLiteral("Ctrl+V"), {Qt::Key_V, Qt::ControlModifier}},
      {QStringLiteral("Ctrl+Z"), {Qt::Key_Z, Qt::ControlModifier}},
      {QStringLiteral("Ctrl+Y"), {Qt::Key_Y, Qt::ControlModifier}},
      {QStringLiteral("Ctrl+F"), {Qt::Key_F, Qt::ControlModifier}},
  };
  const auto it = kKeys.find(name);
  if (it == kKeys.end()) {
    throw StepError("unknown key \"" + name.toStdString() +
                    "\" (Enter, Tab, Shift+Tab, Space, Escape, Up, Down, Alt+Down, F1, F2, F4, F8, "
                    "Ctrl+C, Ctrl+V, Ctrl+Z, Ctrl+Y, Ctrl+F)");
  }
  return *it;
}

}  // namespace

// A file chooser a script gave no file for is cancelled as it opens, as a
// user would close it, and a print preview is closed once its pages are
// counted: a script never waits for a person.
class FileDialogCloser : public QObject {
 public:
  explicit FileDialogCloser(QTextStream& out) : out_(out) { qApp->installEventFilter(this); }
  ~FileDialogCloser() override { qApp->removeEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* preview = qobject_cast<QPrintPreviewDialog*>(watched);
    if (preview && event->type() == QEvent::Show) {
      // The preview's pages are laid out once it shows: counted, then closed.
      QTimer::singleShot(0, preview, [this, preview] {
        const auto* pages = preview->findChild<QPrintPreviewWidget*>();
        out_ << "print preview: " << (pages ? pages->pageCount() : 0) << " pages | closed\n";
        out_.flush();
        preview->reject();
      });
    }
    auto* dialog = qobject_cast<QFileDialog*>(watched);
    if (dialog && event->type() == QEvent::Show) {
      out_ << "file dialog: " << dialog->windowTitle() << " | cancelled\n";
      out_.flush();
      QTimer::singleShot(0, dialog, &QDialog::reject);
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QTextStream& out_;
};

class ScriptRunner::Steps {
 public:
  Steps(DeskApp& app, QTextStream& out) : app_(app), out_(out), file_dialogs_(out) {
    app_.messages().on_show = [this](QMessageBox& box) { answer(box); };
  }
  ~Steps() { app_.messages().on_show = nullptr; }

  void run(const QString& line) {
    const ScriptStep step = parse_step(to_text(line));
    const QString verb = to_qstring(step.verb), rest = to_qstring(step.rest);
    if (verb == QLatin1String("menu")) return menu(rest);
    if (verb == QLatin1String("edit")) return edit(rest, false);
    if (verb == QLatin1String("pick")) return edit(rest, true);
    if (verb == QLatin1String("click")) return click(rest);
    if (verb == QLatin1String("key")) return key(rest);
    if (verb == QLatin1String("defaults")) return defaults(rest);
    if (verb == QLatin1String("calculate")) return press(CalcForm::Action::kCalculate);
    if (verb == QLatin1String("save")) return with_file(CalcForm::Action::kSaveAs, rest);
    if (verb == QLatin1String("open")) return with_file(CalcForm::Action::kOpen, rest);
    if (verb == QLatin1String("shot")) return shot(rest);
    if (verb == QLatin1String("undo")) return chord(Qt::Key_Z);
    if (verb == QLatin1String("redo")) return chord(Qt::Key_Y);
    if (verb == QLatin1String("filter")) return filter(rest);
    if (verb == QLatin1String("copy")) return copy();
    if (verb == QLatin1String("paste")) return paste(rest);
    if (verb == QLatin1String("new")) return press(CalcForm::Action::kNew);
    if (verb == QLatin1String("report")) return with_file(CalcForm::Action::kSaveReport, rest);
    if (verb == QLatin1String("export")) return export_report(rest);
    if (verb == QLatin1String("preview")) return press(CalcForm::Action::kPrintPreview);
    if (verb == QLatin1String("close")) return close_form();
    if (verb == QLatin1String("recent")) return recent(rest);
    if (verb == QLatin1String("answer")) return answer_next(rest);
    if (verb == QLatin1String("type")) return type_here(line.mid(5));
    if (verb == QLatin1String("toggle")) return toggle(rest);
    if (verb == QLatin1String("reset")) return reset_row();
    if (verb == QLatin1String("mine")) return my_defaults(rest);
    if (verb == QLatin1String("clip")) return clip(rest);
    if (verb == QLatin1String("case")) return load_case(parse_case_step(step.rest));
    if (verb == QLatin1String("about")) return about();
    throw StepError("unknown step \"" + verb.toStdString() +
                    "\" (menu, edit, pick, click, key, type, defaults, calculate, save, open, "
                    "shot, undo, redo, filter, toggle, copy, clip, paste, reset, mine, new, close, "
                    "answer, report, export, preview, recent, case, about)");
  }

 private:
  // Prints the box and clicks its button once its modal loop runs.
  void answer(QMessageBox& box) {
    out_ << to_qstring(message_line(to_text(box.windowTitle()), to_text(box.text()))) << "\n";
    out_.flush();
    QMessageBox::StandardButton wanted = answer_;
    answer_ = QMessageBox::NoButton;
    QAbstractButton* button = wanted != QMessageBox::NoButton ? box.button(wanted) : nullptr;
    // The answer given: yes (also Save), no (also Discard), cancel.
    if (!button && wanted == QMessageBox::Yes) button = box.button(QMessageBox::Save);
    if (!button && wanted == QMessageBox::No) button = box.button(QMessageBox::Discard);
    // Else OK or Yes; a box that has neither (Save, Discard, Cancel) is
    // cancelled, so that a script never writes or loses a project unasked.
    if (!button) button = box.button(QMessageBox::Ok);
    if (!button) button = box.button(QMessageBox::Yes);
    if (!button) button = box.button(QMessageBox::Cancel);
    if (!button && !box.buttons().isEmpty()) button = box.buttons().first();
    QPointer<QAbstractButton> target(button);
    QTimer::singleShot(0, [target] {
      if (target) QTest::mouseClick(target, Qt::LeftButton);
    });
  }

  CalcForm& form() {
    CalcForm* form = app_.current_form();
    if (!form) throw StepError("no calculation form is open");
    return *form;
  }

  QtGridControl& grid() {
    CalcForm* form = app_.current_form();
    return form ? form->grid() : app_.main_window().grid();
  }

  void menu(const QString& caption) {
    MainWindow& window = app_.main_window();
    const int32_t row = window.row_of(to_text(caption));
    if (row == 0) throw StepError("the menu has no entry \"" + caption.toStdString() + "\"");
    click_cell(window.grid(), row, 2);
  }

  int32_t row_of_item(CalcForm& form, const QString& item) {
    return zelkora::desk::row_of_item(form.cell(), form.grid(), to_text(item));
  }

  void edit(const QString& args, bool pick) {
    const QString item = args.section(QLatin1Char(' '), 0, 0);
    const QString text = args.section(QLatin1Char(' '), 1);
    CalcForm& f = form();
    const int32_t row = row_of_item(f, item);
    // An editor the form kept open on the cell (after a refused value) is
    // typed into as it is; otherwise the cell is clicked and F2 opens one.
    QWidget* editor = f.grid().indexWidget(f.grid().model()->index(row, 3));
    // An editor that has not the focus (the grid or another control has it)
    // takes no keys.
    const QWidget* focus = QApplication::focusWidget();
    if (!focus) focus = f.grid().window()->focusWidget();  // the window not active
    if (editor && focus != editor && !editor->isAncestorOf(focus)) {
      throw StepError("the cell cannot be edited");
    }
    if (!editor) {
      click_cell(f.grid(), row, 3);
      QTest::keyClick(&f.grid(), Qt::Key_F2);
      settle();
    }
    editor = focus_in(&f.grid());
    if (!f.grid().isAncestorOf(editor)) throw StepError("the cell cannot be edited");
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);  // all of its text is replaced
    if (pick) {
      auto* combo = qobject_cast<QComboBox*>(editor);
      if (!combo) combo = qobject_cast<QComboBox*>(editor->parentWidget());
      if (!combo) throw StepError("the cell has no list");
      // The arrow of the box opens the list (filled as it opens); the item
      // is clicked in it.
      QTest::mouseClick(combo, Qt::LeftButton, Qt::NoModifier,
                        QPoint(combo->width() - 6, combo->height() / 2));
      // The list takes a click only after a double click's time has passed.
      QTest::qWait(QApplication::doubleClickInterval() + 50);
      QAbstractItemView* view = combo->view();
      if (!view->isVisible()) throw StepError("the list did not open");
      const int at = combo->findText(text);
      if (at < 0) {
        combo->hidePopup();
        settle();
        throw StepError("the list has no \"" + text.toStdString() + "\"");
      }
      // A long list is scrolled to the item first, as the user would.
      view->scrollTo(view->model()->index(at, 0));
      const QRect rect = view->visualRect(view->model()->index(at, 0));
      QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
      settle();
      // The list closes (after flashing the item, on some styles) before the
      // next key, as the user sees it go: on a loaded machine it takes longer.
      QDeadlineTimer closing(5000);
      while (view->isVisible() && !closing.hasExpired()) QTest::qWait(5);
      editor = focus_in(&f.grid());
    } else {
      type_text(editor, text);
    }
    QTest::keyClick(focus_in(&f.grid()), Qt::Key_Return);
    settle();
  }

  void click(const QString& args) {
    bool row_ok = false, col_ok = false;
    const int row = args.section(QLatin1Char(' '), 0, 0).toInt(&row_ok);
    const int col = args.section(QLatin1Char(' '), 1, 1).toInt(&col_ok);
    if (!row_ok || !col_ok) throw StepError("click takes ROW COL");
    click_cell(grid(), row, col);
  }

  void key(const QString& name) {
    const KeyPress press = key_of(name);
    activate(&grid());
    QTest::keyClick(focus_in(&grid()), press.key, press.modifiers);
    settle();
  }

  // Characters typed where the focus is, as they stand (blanks too).
  void type_here(const QString& text) {
    activate(&grid());
    // Each key where the focus is then: the first may open an editor.
    for (const QChar c : text) type_text(focus_in(&grid()), QString(c));
  }

  void toggle(const QString& which) {
    CalcForm& f = form();
    QCheckBox* box = which == QLatin1String("changed")   ? &f.changed_only()
                     : which == QLatin1String("refused") ? &f.refused_only()
                                                         : nullptr;
    if (!box) throw StepError("toggle takes changed or refused");
    close_list_for_click(box);
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    settle();
  }

  // Edit ▸ Reset to default, chosen from the menu.
  void reset_row() {
    QAction* action = form().action(CalcForm::Action::kResetRow);
    if (!action->isEnabled()) throw StepError("恢复默认值 is off");
    close_list_for_click(nullptr);  // the menu is clicked
    action->trigger();
    settle();
  }

  // Edit ▸ 保存为我的默认值 or 恢复我的默认值, chosen from the menu.
  void my_defaults(const QString& which) {
    const bool save = which == QLatin1String("save");
    if (!save && which != QLatin1String("restore")) throw StepError("mine takes save or restore");
    QAction* action = form().action(save ? CalcForm::Action::kSaveMyDefaults
                                         : CalcForm::Action::kRestoreMyDefaults);
    close_list_for_click(nullptr);  // the menu is clicked
    action->trigger();
    settle();
  }

  // Ctrl and a letter where the focus is in the form (its grid).
  void chord(Qt::Key letter) {
    activate(&form());
    QTest::keyClick(focus_in(&grid()), letter, Qt::ControlModifier);
    settle();
  }

  void filter(const QString& text) {
    QLineEdit& box = form().filter_box();
    close_list_for_click(&box);
    QTest::mouseClick(&box, Qt::LeftButton);
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_Delete);
    type_text(&box, text);
  }

  void copy() {
    QApplication::clipboard()->clear();
    chord(Qt::Key_C);
    out_ << to_qstring(copied_line(to_text(QApplication::clipboard()->text()))) << "\n";
    out_.flush();
  }

  // The texts on the clipboard, one a line (nothing: an empty clipboard).
  void clip(const QString& args) {
    const QStringList values = args.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QApplication::clipboard()->setText(
        values.isEmpty() ? QString() : values.join(QLatin1Char('\n')) + QLatin1Char('\n'));
  }

  void paste(const QString& args) {
    const QString item = args.section(QLatin1Char(' '), 0, 0);
    const QStringList values =
        args.section(QLatin1Char(' '), 1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (item.isEmpty() || values.isEmpty()) throw StepError("paste takes ITEM TEXT...");
    CalcForm& f = form();
    click_cell(f.grid(), row_of_item(f, item), 3);
    QApplication::clipboard()->setText(values.join(QLatin1Char('\n')) + QLatin1Char('\n'));
    chord(Qt::Key_V);
  }

  // A step on the table of load cases, by the mouse and the keys.
  void load_case(const CaseStep& step) {
    CalcForm& f = form();
    CaseTable* cases = f.case_table_widget();
    if (!cases) throw StepError("the form has no table of load cases");
    QTreeWidget& table = cases->table();
    const auto cell_point = [&](int32_t row, int32_t col) {
      QTreeWidgetItem* item = table.topLevelItem(row - 1);
      if (!item) throw StepError("the table has no case " + std::to_string(row));
      table.scrollToItem(item);
      const int x = table.header()->sectionViewportPosition(col - 1) +
                    table.header()->sectionSize(col - 1) / 2;
      return QPoint(x, table.visualItemRect(item).center().y());
    };
    const char* button = nullptr;
    switch (step.kind) {
      case CaseStep::Kind::kAdd:
        button = "caseAdd";
        break;
      case CaseStep::Kind::kDelete:
        button = "caseDelete";
        break;
      case CaseStep::Kind::kUp:
        button = "caseUp";
        break;
      case CaseStep::Kind::kDown:
        button = "caseDown";
        break;
      case CaseStep::Kind::kSet: {
        const QPoint at = cell_point(step.row, step.col);
        close_list_for_click(table.viewport());
        QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, at);
        settle();
        // The cell's editor, over the table's viewport (the focus may be
        // elsewhere while the window is not the active one).
        QWidget* editor = nullptr;
        for (QWidget* w : table.viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
          if (w->isVisible() && (qobject_cast<QLineEdit*>(w) || qobject_cast<QComboBox*>(w))) {
            editor = w;
          }
        }
        if (!editor) throw StepError("the cell opened no editor");
        if (auto* box = qobject_cast<QComboBox*>(editor)) {
          const int index = box->findText(to_qstring(step.text));
          if (index < 0) throw StepError("the list has no " + to_utf8(step.text));
          // Down from the first item to the one wanted.
          QTest::keyClick(box, Qt::Key_Home);
          for (int i = 0; i < index; ++i) QTest::keyClick(box, Qt::Key_Down);
        } else {
          QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
          if (step.text.empty()) QTest::keyClick(editor, Qt::Key_Delete);
          type_text(editor, to_qstring(step.text));
        }
        QTest::keyClick(editor, Qt::Key_Return);
        settle();
        return;
      }
    }
    if (step.kind != CaseStep::Kind::kAdd) {
      const QPoint at = cell_point(step.row, 1);
      close_list_for_click(table.viewport());
      QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }
    auto* target = cases->findChild<QToolButton*>(QString::fromLatin1(button));
    if (!target) throw StepError("the table's button is not there");
    close_list_for_click(target);
    QTest::mouseClick(target, Qt::LeftButton);
    settle();
  }

  void press(CalcForm::Action which) {
    CalcForm& f = form();
    QAction* action = f.action(which);
    QWidget* button = nullptr;
    for (QToolBar* toolbar : f.findChildren<QToolBar*>()) {
      if (QWidget* w = toolbar->widgetForAction(action)) button = w;
    }
    if (!button || !action->isEnabled()) throw StepError("the button is not there or is off");
    close_list_for_click(button);
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
  }

  void defaults(const QString& reply) {
    if (reply == QLatin1String("yes")) {
      answer_ = QMessageBox::Yes;
    } else if (reply == QLatin1String("cancel")) {
      answer_ = QMessageBox::Cancel;
    } else {
      throw StepError("defaults takes yes or cancel");
    }
    press(CalcForm::Action::kDefaults);
  }

  // The answer to the next question box; "yes FILE" saves a project never
  // saved into FILE, where the user would choose one.
  void answer_next(const QString& args) {
    static const QMap<QString, QMessageBox::StandardButton> kReplies = {
        {QStringLiteral("yes"), QMessageBox::Yes},
        {QStringLiteral("no"), QMessageBox::No},
        {QStringLiteral("cancel"), QMessageBox::Cancel}};
    const QString reply = args.section(QLatin1Char(' '), 0, 0);
    const QString file = args.section(QLatin1Char(' '), 1);
    if (!kReplies.contains(reply)) throw StepError("answer takes yes [FILE], no or cancel");
    answer_ = kReplies.value(reply);
    if (!file.isEmpty()) form().preset_file(file, true);
  }

  // Entry N (from 1) of 文件 ▸ 最近的工程, as a click on it.
  void recent(const QString& n) {
    CalcForm& f = form();
    auto* menu = f.findChild<QMenu*>(QStringLiteral("recent"));
    if (!menu) throw StepError("the form has no recent projects");
    emit menu->aboutToShow();
    bool ok = false;
    const int at = n.toInt(&ok);
    const QList<QAction*> entries = menu->actions();
    if (!ok || at < 1 || at > entries.size() || !entries[at - 1]->isEnabled()) {
      throw StepError("the form has no recent project " + n.toStdString());
    }
    entries[at - 1]->trigger();
    settle();
  }

  // 帮助 ▸ 关于 of the menu window, as a click on it.
  void about() {
    app_.main_window().findChild<QAction*>(QStringLiteral("about"))->trigger();
    settle();
  }

  // The form's window closed, as its title bar's button does.
  void close_form() {
    CalcForm& f = form();
    close_list_for_click(nullptr);  // the window's close button is clicked
    f.close();
    settle();
  }

  void with_file(CalcForm::Action which, const QString& file) {
    if (file.isEmpty()) throw StepError("a file is needed");
    form().preset_file(file, which != CalcForm::Action::kOpen);
    press(which);
  }

  // 导出 Word or 导出 PDF, the file given.
  void export_report(const QString& rest) {
    const QString kind = rest.section(QLatin1Char(' '), 0, 0);
    const QString file = rest.section(QLatin1Char(' '), 1).trimmed();
    if (kind != QLatin1String("docx") && kind != QLatin1String("pdf")) {
      throw StepError("export takes docx or pdf and a file");
    }
    with_file(kind == QLatin1String("docx") ? CalcForm::Action::kExportDocx
                                            : CalcForm::Action::kExportPdf,
              file);
  }

  void shot(const QString& file) {
    CalcForm* f = app_.current_form();
    QWidget& window = f ? static_cast<QWidget&>(*f) : app_.main_window();
    settle();
    if (file.isEmpty() || !window.grab().save(file)) {
      throw StepError("cannot write the picture " + file.toStdString());
    }
  }

  DeskApp& app_;
  QTextStream& out_;
  QMessageBox::StandardButton answer_ = QMessageBox::NoButton;
  FileDialogCloser file_dialogs_;
};

ScriptRunner::ScriptRunner(DeskApp& app, QTextStream& out)
    : steps_(std::make_unique<Steps>(app, out)) {}

ScriptRunner::~ScriptRunner() = default;

void ScriptRunner::run(const QString& line) { steps_->run(line); }

int run_script(DeskApp& app, const QStringList& lines, QTextStream& out, QTextStream& err,
               const QString& project) {
  ScriptRunner runner(app, out);
  if (!project.isEmpty()) app.open_project(project);
  for (int i = 0; i < lines.size(); ++i) {
    const QString line = lines[i].trimmed();
    if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) continue;
    try {
      runner.run(line);
    } catch (const std::exception& e) {
      err << "script line " << (i + 1) << " \"" << line << "\": " << e.what() << "\n";
      err.flush();
      return 2;
    }
  }
  out.flush();
  return 0;
}

}  // namespace zelkora::desk
