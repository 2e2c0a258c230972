// A calculation form of the desktop program: the property grid of its
// layout with the title box under it (placed by Form_Resize), a toolbar and
// menus (File: New, Open, Save, Save As, Defaults and the recent projects
// of the program from the suite's history; Edit: Undo, Redo, Copy, Paste,
// Reset to default, Next error, Find; Calculate: Calculate, Save report;
// Help: the help of the current row, F1), the form's rules for the items that do not apply, and,
// for the beam, the report of its calculation and a sketch of its section that follows the values
// (the report ends with it as a figure). A value is checked with its row's check expression
// when its cell is left: a refused value is explained in a numbered message, the cell gets its text
// back and keeps the focus, is marked until mended, and the status line counts the refused values.
//
// Over the grid a filter box with two toggles (changed from default,
// refused) keeps the matching rows. The view (unfolded headings and groups,
// current row, top row, the panes' sizes, the caption column's width) is
// kept per form in the user's settings, section "View", key the layout's
// name. The title box grows to show a refusal and the default whole.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QSplitter>
#include <QTextBrowser>
#include <memory>
#include <optional>

#include "desk/programs.h"
#include "desk/section_sketch.h"
#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/grid/form_session.h"
#include "zelkora/grid/value_history.h"
#include "zelkora/platform/qt/qt_controls.h"
#include "zelkora/platform/qt/qt_grid.h"

namespace zelkora::desk {

class CalcForm : public QMainWindow, public platform::GridForm {
  Q_OBJECT

 public:
  enum class Action {
    kNew,
    kOpen,
    kSave,
    kSaveAs,
    kDefaults,
    kCalculate,
    kSaveReport,
    kUndo,
    kRedo,
    kCopy,
    kPaste,
    kResetRow,
    kNextRefused,
    kFind,
    kHelp,
  };

  CalcForm(std::shared_ptr<const platform::Platform> platform, const Program& program,
           QWidget* parent = nullptr);
  ~CalcForm() override;

  const Program& program() const { return program_; }
  platform::qt::QtGridControl& grid() { return *grid_; }
  platform::qt::QtRichTextBox& title_box() { return *title_; }
  clsGridCell& cell();
  QTextBrowser* report() { return report_; }
  QLineEdit& filter_box() { return *filter_; }
  QCheckBox& changed_only() { return *changed_only_; }
  QCheckBox& refused_only() { return *refused_only_; }
  QLabel& refused_count() { return *refused_count_; }
  QSplitter& panes() { return *splitter_; }
  // The sketch of the section beside the values, where the form has one
  // (bDisplayPicture), and the pane it shares with the report; else null.
  SectionView* sketch_view() { return sketch_view_; }
  QSplitter* side_panes() { return side_; }
  // The section the report was last calculated for (its figure).
  const SectionSketch& report_sketch() const { return report_sketch_; }
  grid::ValueHistory& history() { return *history_; }
  // The form's handlers of its grid's events (a tester puts a recorder
  // between them and the grid).
  platform::GridEvents& grid_events();
  QAction* action(Action which) const;
  // The project file, empty before the first save or open.
  const QString& file() const { return file_; }
  bool changed() const { return changed_; }

  // The file the next Open (or, `saving`, the next Save As, Save report or
  // save of a project never saved) takes instead of asking (a script's or a
  // test's; cleared when taken).
  void preset_file(const QString& file, bool saving) {
    (saving ? preset_save_ : preset_open_) = file;
  }
  // Whether closing a changed project asks to save it (not in scripts).
  void ask_before_closing(bool ask) { ask_before_closing_ = ask; }

  // What the actions do.
  void new_project();
  bool open_file(const QString& file);
  bool save_file(const QString& file);
  void load_defaults();
  void calculate();
  bool save_report(const QString& file);
  // The program's recent project files, newest first, as the File menu
  // lists them.
  std::vector<Text> recent_files() const;
  // The suite's help at the page of the current row's caption: its plain
  // text and ".htm" ("截面宽度 b.htm"), or at the start of the help on a
  // heading. Without the help file, or where it cannot be shown, the status
  // line and a message say so; false then.
  bool show_help();

  // The Edit menu.
  bool undo();
  bool redo();
  // The selected rows (or the current one) as "caption<TAB>value" lines.
  QString copied_rows() const;
  // One value into the current cell, or a column of values (one a line;
  // of a "caption<TAB>value" line the value) into the editable rows from
  // the current one down, each entered as if typed. The first refusal stops
  // it and names its row on the status line; false then.
  bool paste_values(const QString& text);
  // The current row's value, a group's values or a heading's back at their
  // defaults.
  void reset_current();
  // The next row whose value is refused, after the current one (and round),
  // its editor open; false when there is none.
  bool next_refused();
  // The shown rows whose values their checks refuse, as last counted.
  const std::vector<int32_t>& refused_rows() const { return refused_; }
  // Applies the filter box and its toggles to the grid.
  void apply_filter();

  // ---- GridForm ----
  int32_t LabelColWidth() override { return kLabelColWidth; }
  void ControlEnable(std::vector<bool>& hidden) override;
  void ControlEnable(std::vector<zelkora::Text>& texts, std::vector<bool>& hidden) override;
  // The beam's form shows a sketch of its section.
  bool bDisplayPicture() override;
  void Let_Text(std::vector<zelkora::Text>& texts) override { texts_ = texts; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  class Events;
  static constexpr int32_t kLabelColWidth = 150;

  void build_actions();
  void build_edit_actions(QMenu* menu, QToolBar* toolbar);
  // Fills the recent-projects menu from the history as it is now.
  void fill_recent_menu(QMenu* menu);
  // Puts the project file at the top of the program's history.
  void remember_file(const QString& file);
  QWidget* build_filter_bar(QWidget* parent);
  // After a value changed: the undo step (unless `step` is false), the
  // marks of refused values and their count, the filter and the actions'
  // states.
  void values_changed(bool step = true);
  // Undo (`back`) or redo: the cell is left first; the row of the step's
  // first item becomes the current one.
  bool step_history(bool back);
  void update_refused();
  void update_edit_actions();
  // Caption, default and refusal of the current row in the title box, under
  // its caption and help.
  void show_row_notes();
  // What a screen reader is told of each value: its caption and help.
  void describe_values();
  // The view kept in the user's settings.
  void restore_view();
  void save_view();
  void place_grid();
  // Where the form's rule puts the title box, or, while it shows a refusal,
  // taller, so that the refusal and the default line show without scrolling
  // (at most half the panel, the grid keeping four rows); the grid takes the
  // rest.
  void fit_title_box();
  // The sketch drawn anew from the current values.
  void update_sketch();
  // The report's HTML with the figure of its section at the end.
  void show_report(const QString& html);
  // The changed mark follows the values: changed while they differ from
  // those last saved, opened or begun anew.
  void update_changed();
  void values_saved();
  // Before the values are replaced (New, Open, a recent project) or the form
  // closes: a changed project asks Save, Discard or Cancel; false to stop.
  bool may_discard_changes();
  // A report of values that have changed since is marked out of date and
  // cannot be saved until it is calculated again.
  void mark_report_stale();
  void update_title();
  // The file of an action: the preset one, or the user's choice.
  QString chosen_file(bool saving, const QString& filter);
  Text form_name() const;

  const Program& program_;
  std::shared_ptr<const platform::Platform> platform_;
  clsErrChr errors_;
  platform::qt::QtPanel* panel_ = nullptr;
  QLabel* heading_ = nullptr;
  platform::qt::QtGridControl* grid_ = nullptr;
  platform::qt::QtRichTextBox* title_ = nullptr;
  QTextBrowser* report_ = nullptr;
  QSplitter* splitter_ = nullptr;
  QSplitter* side_ = nullptr;  // the sketch over the report
  SectionView* sketch_view_ = nullptr;
  SectionSketch report_sketch_;
  QRect title_rule_, grid_rule_;  // where Form_Resize put the title box and the grid
  bool title_grows_ = false;      // the title box shows a refusal
  QLineEdit* filter_ = nullptr;
  QCheckBox* changed_only_ = nullptr;
  QCheckBox* refused_only_ = nullptr;
  QLabel* refused_count_ = nullptr;
  std::unique_ptr<grid::ValueHistory> history_;
  std::vector<int32_t> refused_;
  std::unique_ptr<Events> session_;
  Text add_data_;  // the form's additional text in its data file
  std::vector<zelkora::Text> texts_;
  std::vector<QAction*> actions_;
  std::vector<Text> report_lines_;
  std::vector<Text> report_values_;  // the values the report was calculated from
  QString report_html_;
  bool report_stale_ = false;
  std::vector<Text> saved_values_;   // the values last saved, opened or begun anew
  QString file_;
  std::optional<QString> preset_open_, preset_save_;
  bool changed_ = false;
  bool pasting_ = false;  // a column is being pasted: one step at its end
  bool ask_before_closing_ = true;
};

}  // namespace zelkora::desk
