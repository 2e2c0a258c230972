// The Qt program as the random tester's host.
#include "desk/monkey.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidgetItem>

#include "desk/calc_form.h"
#include "desk/desk_app.h"
#include "desk/main_window.h"
#include "desk/script.h"

namespace zelkora::desk {

namespace {

using platform::qt::QtGridControl;
using platform::qt::to_qstring;
using platform::qt::to_text;

constexpr int32_t kValueCol = 3;

class QtMonkeyHost : public MonkeyHost {
 public:
  QtMonkeyHost() : out_(&printed_), runner_(app_, out_) {}
  ~QtMonkeyHost() override { close_forms(); }

  std::shared_ptr<const platform::Platform> platform() const override { return app_.platform(); }
  void run(TextView line, std::string& printed) override {
    printed_.clear();
    const auto take = [&] {
      out_.flush();
      printed += printed_.toUtf8().toStdString();
    };
    try {
      runner_.run(to_qstring(line));
    } catch (...) {
      take();
      throw;
    }
    take();
  }
  FormWork* form() override {
    CalcForm* form = app_.current_form();
    return form ? &form->work() : nullptr;
  }
  FormWork* form_of(int64_t serial) override {
    for (CalcForm* form : app_.open_forms()) {
      if (form->work().serial() == serial) return &form->work();
    }
    return nullptr;
  }
  bool menu_shows(TextView entry) override {
    const int32_t row = app_.main_window().row_of(entry);
    return row > 0 && !app_.main_window().grid().isRowHidden(row);
  }

  bool focus_in_grid() override {
    const QWidget* focus = QApplication::focusWidget();
    CalcForm* form = app_.current_form();
    return form && focus && (focus == &form->grid() || form->grid().isAncestorOf(focus));
  }
  bool focus_in_text_box() override {
    CalcForm* form = app_.current_form();
    QWidget* focus = form ? form->focusWidget() : nullptr;
    const auto* combo = qobject_cast<QComboBox*>(focus);
    return focus && focus->isVisible() &&
           (qobject_cast<QLineEdit*>(focus) || (combo && combo->isEditable()));
  }
  bool editor_undoes() override {
    const QLineEdit* line = focused_line();
    return line && line->isUndoAvailable();
  }
  bool editor_redoes() override {
    const QLineEdit* line = focused_line();
    return line && line->isRedoAvailable();
  }

  bool row_shown(int32_t row) override {
    QtGridControl& grid = form_window().grid();
    return !grid.isRowHidden(row) && grid.rowHeight(row) > 0;
  }
  Text shown_value(int32_t row) override {
    QtGridControl& grid = form_window().grid();
    QString shown = to_qstring(grid.Text(row, kValueCol));
    if (QTableWidgetItem* cell = grid.item(row, kValueCol)) shown = cell->text();
    if (QWidget* editor = grid.indexWidget(grid.model()->index(row, kValueCol))) {
      if (auto* combo = qobject_cast<QComboBox*>(editor)) shown = combo->currentText();
      if (auto* edit = qobject_cast<QLineEdit*>(editor)) shown = edit->text();
    }
    return to_text(shown);
  }
  bool marked_changed() override {
    // The "*" of the title, the title naming the project as the form does.
    CalcForm& form = form_window();
    return form.isWindowModified() && form.windowTitle() == to_qstring(form.work().window_title());
  }
  bool undo_enabled() override {
    return form_window().action(CalcForm::Action::kUndo)->isEnabled();
  }
  bool redo_enabled() override {
    return form_window().action(CalcForm::Action::kRedo)->isEnabled();
  }
  Text refused_count() override { return to_text(form_window().refused_count().text()); }
  Text filter_text() override { return to_text(form_window().filter_box().text()); }
  bool changed_only() override { return form_window().changed_only().isChecked(); }
  bool refused_only() override { return form_window().refused_only().isChecked(); }

  Text clipboard() override { return to_text(QApplication::clipboard()->text()); }
  void clear_clipboard() override { QApplication::clipboard()->clear(); }
  void activate_form() override {
    // Offscreen, nothing makes the form's window active after a box.
    CalcForm* form = app_.current_form();
    if (form && !form->isActiveWindow()) {
      form->activateWindow();
      QApplication::processEvents();
    }
  }
  void close_forms() override {
    if (CalcForm* form = app_.current_form()) form->ask_before_closing(false);
    app_.close_forms();
  }
  std::string trace() override {
    std::string seen;
    if (CalcForm* form = app_.current_form()) {
      seen += "  the view's current " + std::to_string(form->grid().currentRow()) + "," +
              std::to_string(form->grid().currentColumn()) + "\n";
    }
    // Where the keys go next, and what of a text box's text they replace.
    if (QWidget* focus = QApplication::focusWidget()) {
      seen += std::string("  focus: ") + focus->metaObject()->className() + " " +
              focus->objectName().toStdString();
      if (const QLineEdit* line = focused_line()) {
        seen += " selected \"" + line->selectedText().toStdString() + "\"";
      }
      seen += "\n";
    }
    return seen;
  }

 private:
  CalcForm& form_window() { return *app_.current_form(); }
  static QLineEdit* focused_line() {
    QWidget* focus = QApplication::focusWidget();
    auto* combo = qobject_cast<QComboBox*>(focus);
    return combo ? combo->lineEdit() : qobject_cast<QLineEdit*>(focus);
  }

  DeskApp app_;
  QString printed_;
  QTextStream out_;
  ScriptRunner runner_;
};

}  // namespace

std::unique_ptr<MonkeyHost> qt_monkey_host() { return std::make_unique<QtMonkeyHost>(); }

}  // namespace zelkora::desk
