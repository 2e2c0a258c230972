// A calculation form of the desktop program: the property grid of its
// layout with the title box under it (placed by Form_Resize), a toolbar and
// a menu (New, Open, Save, Save As, Defaults, Calculate, Save report), the
// form's rules for the items that do not apply, and, for the beam, the
// report of its calculation. A value is checked with its row's check
// expression when its cell is left: a refused value is explained in a
// numbered message, the cell gets its text back and keeps the focus.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QTextBrowser>
#include <memory>
#include <optional>

#include "desk/programs.h"
#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/grid/form_session.h"
#include "zelkora/platform/qt/qt_controls.h"
#include "zelkora/platform/qt/qt_grid.h"

namespace zelkora::desk {

class CalcForm : public QMainWindow, public platform::GridForm {
  Q_OBJECT

 public:
  enum class Action { kNew, kOpen, kSave, kSaveAs, kDefaults, kCalculate, kSaveReport };

  CalcForm(std::shared_ptr<const platform::Platform> platform, const Program& program,
           QWidget* parent = nullptr);
  ~CalcForm() override;

  const Program& program() const { return program_; }
  platform::qt::QtGridControl& grid() { return *grid_; }
  platform::qt::QtRichTextBox& title_box() { return *title_; }
  clsGridCell& cell();
  QTextBrowser* report() { return report_; }
  QAction* action(Action which) const;
  // The project file, empty before the first save or open.
  const QString& file() const { return file_; }
  bool changed() const { return changed_; }

  // The file the next Open, Save As or Save report takes instead of asking
  // (a script's or a test's; cleared when taken).
  void preset_file(const QString& file) { preset_ = file; }
  // Whether closing a changed project asks to save it (not in scripts).
  void ask_before_closing(bool ask) { ask_before_closing_ = ask; }

  // What the actions do.
  void new_project();
  bool open_file(const QString& file);
  bool save_file(const QString& file);
  void load_defaults();
  void calculate();
  bool save_report(const QString& file);

  // ---- GridForm ----
  int32_t LabelColWidth() override { return kLabelColWidth; }
  void ControlEnable(std::vector<bool>& hidden) override;
  void ControlEnable(std::vector<zelkora::Text>& texts, std::vector<bool>& hidden) override;
  bool bDisplayPicture() override { return false; }
  void Let_Text(std::vector<zelkora::Text>& texts) override { texts_ = texts; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  class Events;
  static constexpr int32_t kLabelColWidth = 150;

  void build_actions();
  void place_grid();
  void mark_changed(bool changed);
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
  std::unique_ptr<Events> session_;
  Text add_data_;  // the form's additional text in its data file
  std::vector<zelkora::Text> texts_;
  std::vector<QAction*> actions_;
  std::vector<Text> report_lines_;
  QString file_;
  std::optional<QString> preset_;
  bool changed_ = false;
  bool ask_before_closing_ = true;
};

}  // namespace zelkora::desk
