// A calculation form on Windows' own controls: a toolbar and the menus
// 文件, 编辑, 计算 and 帮助 with the desktop form's texts and keys, a filter
// box with its two toggles (已修改, 有错误), the property grid in a panel
// with the title box under it (placed by Form_Resize), the table of load
// cases on a form that has them, the sketch of the section right of the
// values on a form that shows one (redrawn as the values change), the
// report pane (a read-only rich-edit
// control showing the report document's RTF) on a form that calculates,
// and a status bar with the count of refused values. What the form does is
// FormWork's; this window only shows it and hands it the user's commands.
// Export PDF is not offered on Windows; 打印 prints the report pane through
// the system's print dialog, 打印预览 shows its pages (print_preview.h).
#pragma once

#include <functional>
#include <memory>

#include "program/form_view.h"
#include "program/form_work.h"
#include "program/programs.h"
#include "win32desk/figure_painter.h"
#include "win32desk/frame_window.h"
#include "zelkora/document/report_document.h"
#include "zelkora/platform/win32gui/win32_controls.h"
#include "zelkora/platform/win32gui/win32_grid.h"
#include "zelkora/platform/win32gui/win32_rich_text.h"

namespace zelkora::win32desk {

class CaseTable;

class CalcForm : public FrameWindow, private desk::FormView {
 public:
  // The commands of the menus and the toolbar (their WM_COMMAND ids).
  enum Command {
    kNew = 100,
    kOpen,
    kSave,
    kSaveAs,
    kDefaults,
    kCalculate,
    kSaveReport,
    kExportDocx,
    kPrint,
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
    kClose,
    kPrintPreview,
    kRecent = 500,  // kRecent + N: recent project N (from 0)
  };

  CalcForm(std::shared_ptr<const platform::Platform> platform, const desk::Program& program);
  ~CalcForm() override;

  const desk::Program& program() const { return program_; }
  desk::FormWork& work() { return *work_; }
  platform::win32::Win32GridControl& grid() { return *grid_; }
  clsGridCell& cell() { return work_->cell(); }
  HWND filter_box() const { return filter_; }
  HWND changed_only() const { return changed_only_; }
  HWND refused_only() const { return refused_only_; }
  HWND toolbar() const { return toolbar_; }
  // The count of refused values as the status bar shows it.
  Text refused_count() const { return status_text(status_, 1); }
  HWND report_pane() const { return report_; }
  // The sketch of the section, on a form that shows one (else null).
  const FigureView* sketch_pane() const { return sketch_.get(); }
  CaseTable* case_table_window() { return cases_.get(); }
  const document::Document& report_document() const { return report_document_; }

  // Shows the window, the grid taking the keys.
  void show();
  // Whether the window is still there.
  bool open() const { return hwnd() != nullptr; }
  // Closes the window as its close box does; false when it stays.
  bool close();
  // A key of the form's accelerators, made its command; true when taken.
  bool translate(MSG& message);

  bool save_report(TextView file);
  bool export_docx(TextView file);
  bool print_report();
  bool preview_report();
  bool show_help() { return work_->show_help(); }
  std::vector<Text> recent_files() const {
    return desk::FormWork::recent_files(platform_, program_);
  }
  void apply_filter();

 protected:
  LRESULT handle(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void build_menus();
  void build_toolbar();
  void build_filter_bar();
  void set_heading_font();
  void command(int id);
  void enable(int id, bool enabled);
  void fill_recent_menu();
  void layout();
  void place_grid();
  void place_title_box();
  void show_report_page(TextView notice);
  void enable_report_actions(bool enabled);
  bool write_report_file(TextView file, TextView action, const std::string& bytes);
  void copy_rows();
  void paste_clipboard();
  void restore_view();
  void save_view();

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
  std::vector<int32_t> selected_rows() const override { return {}; }
  void clear_selection() override {}
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

  const desk::Program& program_;
  std::shared_ptr<const platform::Platform> platform_;
  HMENU menu_ = nullptr;
  HMENU recent_menu_ = nullptr;
  HWND toolbar_ = nullptr;
  HWND status_ = nullptr;
  HWND filter_ = nullptr;
  HWND changed_only_ = nullptr;
  HWND refused_only_ = nullptr;
  HWND report_ = nullptr;
  HWND heading_ = nullptr;
  HFONT heading_font_ = nullptr;
  std::unique_ptr<platform::win32::Panel> panel_;
  std::unique_ptr<platform::win32::Win32GridControl> grid_;
  std::unique_ptr<platform::win32::RichTextBox> title_;
  std::unique_ptr<CaseTable> cases_;
  std::unique_ptr<FigureView> sketch_;
  RECT title_rule_{}, grid_rule_{};  // where Form_Resize put the title box and the grid
  bool title_grows_ = false;
  HWND focus_ = nullptr;         // the child with the focus when the window was left
  bool showing_filter_ = false;  // the form sets the filter's controls itself
  document::Document report_document_;
  std::unique_ptr<desk::FormWork> work_;
};

}  // namespace zelkora::win32desk
