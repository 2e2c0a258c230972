// What a calculation form of the desktop program does, whatever shows it:
// the form's session on the grid (values checked when a cell is left), the
// form object with the program's rules, the history of the values, the
// changed mark against the values last saved or opened, the marks and count
// of refused values, the filter, copy and paste, the File menu's project
// files and the calculation's report. It reaches the user only through a
// FormView: the desktop form (desk/calc_form.h) and the headless one
// (program/headless_desk_form.h) run the same work.
//
//   FormWork work(platform, program, view);  // built, values at their defaults
//   work.paste_values(u"300\n600");
//   work.save_file(u"beam.zks");
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "program/form_view.h"
#include "program/load_cases.h"
#include "program/programs.h"
#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/grid/form_session.h"
#include "zelkora/grid/row_filter.h"
#include "zelkora/grid/value_history.h"
#include "zelkora/grid/view_state.h"

namespace zelkora::desk {

class FormWork : public platform::GridForm {
 public:
  // The width of the grid's caption column.
  static constexpr int32_t kLabelColWidth = 150;
  // The kinds of files of the File menu and of the report, as a file
  // chooser lists them.
  static constexpr TextView kProjectFilter = u"Zelkora 原始数据文件 (*.zks *.zel)";
  static constexpr TextView kReportFilter = u"计算书 (*.txt)";
  static constexpr TextView kWordFilter = u"Word 文档 (*.docx)";
  static constexpr TextView kPdfFilter = u"PDF 文件 (*.pdf)";

  FormWork(std::shared_ptr<const platform::Platform> platform, const Program& program,
           FormView& view);
  ~FormWork() override;
  FormWork(const FormWork&) = delete;
  FormWork& operator=(const FormWork&) = delete;

  // Whether the form of the program shows a sketch of its section.
  static bool shows_section(const Program& program);

  const Program& program() const { return program_; }
  FormView& view() const { return view_; }
  // Forms are numbered from 1 as they are made, in the whole process: a
  // form that took the place of another is told from it.
  int64_t serial() const { return serial_; }
  clsGridCell& cell();
  grid::ValueHistory& history() { return *history_; }
  // The form's handlers of the grid's events.
  platform::GridEvents& events();
  // The grid's events go to `recorder` first, which passes them on to
  // events(); null: straight to the handlers.
  void record_events(platform::GridEvents* recorder);

  // The project file, empty before the first save or open.
  const Text& file() const { return file_; }
  bool changed() const { return changed_; }
  // The window's title, "[*]" standing for the changed mark.
  Text window_title() const;
  // The file the next Open (or, `saving`, the next Save As, Save report or
  // save of a project never saved) takes instead of asking (a script's or a
  // test's; cleared when taken).
  void preset_file(Text file, bool saving) {
    (saving ? preset_save_ : preset_open_) = std::move(file);
  }
  // Whether closing a changed project asks to save it (not in scripts).
  void ask_before_closing(bool ask) { ask_before_closing_ = ask; }
  // The file of an action: the preset one, or the user's choice; empty for
  // none.
  Text chosen_file(bool saving, TextView filter);
  // A file name the user gave without an extension gets `extension`, so
  // that the open dialog lists the file and the backup copy is made.
  static Text with_extension(TextView file, TextView extension);

  // ---- The File menu, each entry as the user chooses it: New and Open ask
  // about a changed project first; Save asks for a file before the first.
  void menu_new();
  void menu_open();
  void menu_save();
  void menu_save_as();
  // A project of the recent ones.
  void open_recent(TextView file);
  // The form is about to close: the cell is left, a changed project asks;
  // false to stay open.
  bool may_close();

  // ---- What the entries do.
  void new_project();
  bool open_file(TextView file);
  bool save_file(TextView file);
  void load_defaults();
  void calculate();
  // The report last calculated, and whether the values have changed since.
  const std::vector<Text>& report_lines() const { return report_lines_; }
  bool report_stale() const { return report_stale_; }
  // Whether the report may leave the program (saved, exported, printed):
  // it has been calculated and the values have not changed since. Else the
  // user is told so in a box titled `action`; false then.
  bool report_may_leave(TextView action);

  // ---- The table of load cases (a form with Program::load_cases).
  // Its rows as they are now (none without a table).
  CaseRows cases() const;
  // After the user edited a cell of the table.
  void cases_changed();
  // A new case after the last; its row (from 1).
  int32_t add_case();
  // Case `item` (from 1) deleted; false when there is none or it is the
  // only one.
  bool delete_case(int32_t item);
  // Case `item` moved one row up (`step` -1) or down (1); its new row, or 0
  // when it cannot move.
  int32_t move_case(int32_t item, int step);

  // The program's recent project files, newest first, as the File menu
  // lists them (also before its form is built).
  static std::vector<Text> recent_files(const std::shared_ptr<const platform::Platform>& platform,
                                        const Program& program);
  // The suite's help at the page of the current row's caption: its plain
  // text and ".htm" ("截面宽度 b.htm"), or at the start of the help on a
  // heading. Without the help file, or where it cannot be shown, the status
  // line and a message say so; false then.
  bool show_help();

  // ---- The Edit menu.
  // Undo and redo: the cell is left first; the row of the step's first item
  // becomes the current one.
  bool undo();
  bool redo();
  // The selected rows (or the current one) as "caption<TAB>value" lines.
  Text copied_rows() const;
  // One value into the current cell, or a column of values (one a line; of
  // a "caption<TAB>value" line the value) into the editable rows from the
  // current one down, each entered as if typed. The first refusal stops it
  // and names its row on the status line; false then.
  bool paste_values(TextView text);
  // The current row's value, a group's values or a heading's back at their
  // defaults.
  void reset_current();
  // 保存为我的默认值: the form's values become the user's defaults of its
  // layout (ZK_Form.INI, grid/user_defaults.h), after the cell is left
  // through its check; false when they could not be kept.
  bool save_my_defaults();
  // 恢复我的默认值: the user's defaults put back as one step of the history,
  // checked and marked like any value the program writes; the items without
  // one keep their values. False when there are none.
  bool restore_my_defaults();
  // The next row whose value is refused, after the current one (and round),
  // its editor open; false when there is none.
  bool next_refused();
  // The shown rows whose values their checks refuse, as last counted.
  const std::vector<int32_t>& refused_rows() const { return refused_; }

  // ---- The view kept between sessions (the folding, the current row, and
  // what a host keeps of its own: panes, widths, the top row).
  // The view kept for the program, if any.
  std::optional<grid::ViewState> kept_view() const;
  // The kept view's folding and current row, given back.
  void restore_kept_view(const grid::ViewState& view);
  // The view as it is now kept.
  void keep_view(const grid::ViewState& view);

  // ---- The filter.
  const grid::RowFilter& filter() const { return filter_; }
  // The filter the user set, applied.
  void set_filter(grid::RowFilter filter);
  // `held_row`: a row kept shown while its editor is open (0: none).
  void apply_filter(int32_t held_row = 0);

  // ---- GridForm ----
  int32_t LabelColWidth() override { return kLabelColWidth; }
  void ControlEnable(std::vector<bool>& hidden) override;
  void ControlEnable(std::vector<zelkora::Text>& texts, std::vector<bool>& hidden) override;
  bool bDisplayPicture() override { return shows_section(program_); }
  void Let_Text(std::vector<zelkora::Text>& texts) override { texts_ = texts; }

 private:
  class Events;

  // After a value changed: the undo step (unless `step` is false), the
  // changed mark, the report's date, the marks of refused values and their
  // count, the filter and the history's state.
  void values_changed(bool step = true);
  bool step_history(bool back);
  void update_refused();
  void update_history();
  // Caption, default and refusal of the current row in the title box, under
  // its caption and help.
  void show_row_notes();
  std::vector<Text> values();
  // The changed mark follows the values: changed while they differ from
  // those last saved, opened or begun anew.
  void update_changed();
  void values_saved();
  // The user's defaults over the layout's, as a form opens or begins anew.
  void apply_my_defaults();
  // Before the values are replaced (New, Open) or the form closes: a changed
  // project asks Save, Discard or Cancel; false to stop.
  bool may_discard_changes();
  // A report of values that have changed since is marked out of date.
  void mark_report_stale();
  void update_title();
  // The load cases as the project file keeps them: checked before a save
  // (a refusal is shown, naming the cell), written and read as the
  // foundation data.
  bool cases_can_be_saved();
  bool save_cases(clsLoadSave& ls);
  bool read_cases(clsLoadSave& ls, UseBinRecord& record);
  // Puts the project file at the top of the program's history.
  void remember_file(TextView file);

  const Program& program_;
  std::shared_ptr<const platform::Platform> platform_;
  FormView& view_;
  int64_t serial_;
  clsErrChr errors_;
  std::unique_ptr<Events> session_;
  std::unique_ptr<grid::ValueHistory> history_;
  std::vector<int32_t> refused_;
  grid::RowFilter filter_;
  Text add_data_;  // the form's additional text in its data file
  std::vector<zelkora::Text> texts_;
  std::vector<Text> report_lines_;
  std::vector<Text> report_values_;  // the values the report was calculated from
  bool report_stale_ = false;
  std::vector<Text> saved_values_;  // the values last saved, opened or begun anew
  CaseRows saved_cases_, report_cases_;  // the load cases saved and calculated
  std::optional<CaseRows> opened_cases_;  // the load cases of the file being opened
  Text file_;
  std::optional<Text> preset_open_, preset_save_;
  bool changed_ = false;
  std::optional<std::pair<Text, bool>> shown_title_;  // the title and mark the view shows
  bool pasting_ = false;  // a column is being pasted: one step at its end
  bool ask_before_closing_ = true;
};

}  // namespace zelkora::desk
