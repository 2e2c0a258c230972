// A calculation form of the desktop program: the property grid of its
// layout with the title box under it (placed by Form_Resize), a toolbar and
// menus (File: New, Open, Save, Save As, Defaults and the recent projects
// of the program from the suite's history; Edit: Undo, Redo, Copy, Paste,
// Reset to default, Save as my defaults, Restore my defaults, Next error, Find; Calculate:
// Calculate, Save report; Help: the help of the current row, F1; for a form with a report,
// Calculate also has Export Word, Export PDF, Print and Print preview), the form's rules for the
// items that do not apply, and, for the beam, the report of its calculation and a sketch of its
// section that follows the values (the report ends with it as a figure). A value is checked with
// its row's check expression when its cell is left: a refused value is explained in a numbered
// message, the cell gets its text back and keeps the focus, is marked until mended, and the status
// line counts the refused values.
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
#include <functional>
#include <memory>

#include "desk/section_sketch.h"
#include "program/form_view.h"
#include "program/form_work.h"
#include "program/programs.h"
#include "zelkora/document/report_document.h"
#include "zelkora/grid/value_history.h"
#include "zelkora/platform/qt/qt_controls.h"
#include "zelkora/platform/qt/qt_grid.h"

namespace zelkora::desk {

class CaseTable;

class CalcForm : public QMainWindow, private FormView {
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
    kSaveMyDefaults,
    kRestoreMyDefaults,
    kNextRefused,
    kFind,
    kHelp,
    kExportDocx,
    kExportPdf,
    kPrint,
    kPrintPreview,
  };

  CalcForm(std::shared_ptr<const platform::Platform> platform, const Program& program,
           QWidget* parent = nullptr);
  ~CalcForm() override;

  const Program& program() const { return program_; }
  FormWork& work() { return *work_; }
  platform::qt::QtGridControl& grid() { return *grid_; }
  platform::qt::QtRichTextBox& title_box() { return *title_; }
  clsGridCell& cell() { return work_->cell(); }
  QTextBrowser* report() { return report_; }
  QLineEdit& filter_box() { return *filter_; }
  QCheckBox& changed_only() { return *changed_only_; }
  QCheckBox& refused_only() { return *refused_only_; }
  QLabel& refused_count() { return *refused_count_; }
  QSplitter& panes() { return *splitter_; }
  // The sketch of the section beside the values, where the form has one,
  // and the pane it shares with the report; else null.
  SectionView* sketch_view() { return sketch_view_; }
  QSplitter* side_panes() { return side_; }
  // The table of load cases, on a form that has one (else null).
  CaseTable* case_table_widget() { return cases_; }
  // The section the report was last calculated for (its figure).
  const SectionSketch& report_sketch() const { return report_sketch_; }
  // The report last calculated as a document (empty before the first).
  const document::Document& report_document() const { return report_document_; }
  grid::ValueHistory& history() { return work_->history(); }
  // The form's handlers of its grid's events (a tester puts a recorder
  // between them and the grid).
  platform::GridEvents& grid_events() { return work_->events(); }
  QAction* action(Action which) const;
  // The project file, empty before the first save or open.
  QString file() const { return platform::qt::to_qstring(work_->file()); }
  bool changed() const { return work_->changed(); }
  // The beam's form shows a sketch of its section.
  bool bDisplayPicture() const { return FormWork::shows_section(program_); }

  // The file the next Open (or, `saving`, the next Save As, Save report or
  // save of a project never saved) takes instead of asking (a script's or a
  // test's; cleared when taken).
  void preset_file(const QString& file, bool saving) {
    work_->preset_file(platform::qt::to_text(file), saving);
  }
  // Whether closing a changed project asks to save it (not in scripts).
  void ask_before_closing(bool ask) { work_->ask_before_closing(ask); }

  // What the actions do.
  void new_project() { work_->new_project(); }
  bool open_file(const QString& file) { return work_->open_file(platform::qt::to_text(file)); }
  bool save_file(const QString& file) { return work_->save_file(platform::qt::to_text(file)); }
  void load_defaults() { work_->load_defaults(); }
  void calculate() { work_->calculate(); }
  bool save_report(const QString& file);
  // The report as Word (.docx) or PDF, printed, or in the print preview.
  // Like save_report, none of them takes a report out of date (a box says
  // so); a file that cannot be written is reported in a box. false then.
  bool export_docx(const QString& file);
  bool export_pdf(const QString& file);
  bool print_report();
  bool preview_report();
  // The program's recent project files and the help (FormWork's).
  std::vector<Text> recent_files() const { return FormWork::recent_files(platform_, program_); }
  bool show_help() { return work_->show_help(); }

  // The Edit menu (FormWork's).
  bool undo() { return work_->undo(); }
  bool redo() { return work_->redo(); }
  QString copied_rows() const { return platform::qt::to_qstring(work_->copied_rows()); }
  bool paste_values(const QString& text) {
    return work_->paste_values(platform::qt::to_text(text));
  }
  void reset_current() { work_->reset_current(); }
  bool save_my_defaults() { return work_->save_my_defaults(); }
  bool restore_my_defaults() { return work_->restore_my_defaults(); }
  bool next_refused() { return work_->next_refused(); }
  const std::vector<int32_t>& refused_rows() const { return work_->refused_rows(); }
  // Applies the filter box and its toggles to the grid.
  void apply_filter();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void build_actions();
  void build_edit_actions(QMenu* menu, QToolBar* toolbar);
  // Fills the recent-projects menu from the history as it is now.
  void fill_recent_menu(QMenu* menu);
  QWidget* build_filter_bar(QWidget* parent);
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
  void build_report_actions(QMenu* menu, QToolBar* toolbar);
  // The report document in the view, `notice` in red above it.
  void show_report_page(const QString& notice = {});
  // The report's actions follow whether there is a report to take.
  void enable_report_actions(bool enabled);
  // A file of the report written (`write` gives the reason when it fails);
  // its outcome on the status line, a failure in a box titled `action`.
  bool write_report_file(const QString& file, TextView action,
                         const std::function<bool(Text* why)>& write);

  // ---- FormView ----
  platform::GridControl& grid_control() override { return *grid_; }
  platform::RichTextBox& title_box_control() override { return *title_; }
  platform::Panel& panel_control() override { return *panel_; }
  platform::ListView* case_table() override;
  void connect_events(platform::GridEvents* events) override { grid_->connect_events(events); }
  bool leave_cell() override { return grid_->leave_cell(); }
  bool type_into(int32_t row, TextView text) override;
  bool edit_cell(int32_t row) override;
  void make_current(int32_t row) override;
  bool editing() const override { return grid_->editing(); }
  int32_t current_row() const override { return grid_->ActiveCell().row; }
  std::vector<int32_t> selected_rows() const override;
  void clear_selection() override { grid_->clearSelection(); }
  void show_only(std::vector<bool> kept) override { grid_->show_only(std::move(kept)); }
  bool filtered() const override { return grid_->filtered(); }
  bool row_shown(int32_t row) const override { return grid_->row_shown(row); }
  int32_t next_editable_row(int32_t row, int step) const override;
  void mark_refused(int32_t row, TextView note) override;
  bool marked(int32_t row) const override;
  void show_title(TextView title, bool changed) override;
  void show_status(TextView text, int32_t milliseconds) override;
  void clear_status() override;
  void show_refused_count(TextView text) override;
  void show_history(bool can_undo, bool can_redo) override;
  void show_filter(const grid::RowFilter& filter) override;
  void show_values(const std::vector<Text>& values) override;
  void show_report(const std::vector<Text>& lines, const std::vector<Text>& values) override;
  void show_report_stale() override;
  void fit_title_box(bool grows) override;
  Text choose_file(bool saving, TextView title, TextView file, TextView filter) override;
  SaveChanges ask_save_changes(TextView text, TextView title) override;

  const Program& program_;
  std::shared_ptr<const platform::Platform> platform_;
  platform::qt::QtPanel* panel_ = nullptr;
  QLabel* heading_ = nullptr;
  platform::qt::QtGridControl* grid_ = nullptr;
  platform::qt::QtRichTextBox* title_ = nullptr;
  QTextBrowser* report_ = nullptr;
  QSplitter* splitter_ = nullptr;
  QSplitter* side_ = nullptr;  // the sketch over the report
  SectionView* sketch_view_ = nullptr;
  CaseTable* cases_ = nullptr;  // the load cases, on a form that has them
  SectionSketch report_sketch_;
  QRect title_rule_, grid_rule_;  // where Form_Resize put the title box and the grid
  bool title_grows_ = false;      // the title box shows a refusal
  QLineEdit* filter_ = nullptr;
  QCheckBox* changed_only_ = nullptr;
  QCheckBox* refused_only_ = nullptr;
  QLabel* refused_count_ = nullptr;
  std::vector<QAction*> actions_;
  document::Document report_document_;
  std::unique_ptr<FormWork> work_;
};

}  // namespace zelkora::desk
