// The desktop program's scripts (desk/script.h) run on a headless form
// (program/headless_desk_form.h): the same steps, each a whole user action on
// the in-memory grid or the form's work, printing what the desktop run
// prints ("message: TITLE | TEXT" for every box met, "copied: ..."):
//
//   edit ITEM TEXT, pick ITEM TEXT, click ROW COL,
//   key Enter|Tab|Shift+Tab|Space|Escape|Up|Down|Alt+Down|F2|F4|F8,
//   undo, redo, filter [TEXT], copy, paste ITEM TEXT..., defaults yes|cancel,
//   calculate, save FILE, open FILE, new, close, answer yes [FILE]|no|cancel
//
// Boxes are answered as the desktop run answers them: the answer the script
// gave for the next box, else OK or Yes, and Cancel for the question about
// a changed project. The files are the platform's (in memory on
// Platform::headless()).
//
// What the run prints goes to `out` in UTF-8, a line at a time.
//
//   HeadlessScriptRunner runner(*program_of(u"梁配筋计算"), std::cout);
//   runner.run(u"edit 10 300");   // a StepError when the step cannot run
#pragma once

#include <memory>
#include <optional>
#include <ostream>

#include "program/headless_desk_form.h"
#include "program/script_steps.h"
#include "zelkora/platform/platform.h"

namespace zelkora::desk {

class HeadlessScriptRunner {
 public:
  // The program's form opened on `platform` (its message box is replaced
  // by the runner's).
  HeadlessScriptRunner(
      const Program& program, std::ostream& out,
      std::shared_ptr<platform::Platform> platform = platform::Platform::headless());
  ~HeadlessScriptRunner();

  // One step; a StepError (or another std::runtime_error) when it cannot run.
  void run(TextView line);

  // The form; null after a `close` that closed it.
  HeadlessDeskForm* form() { return form_.get(); }
  // The clipboard's text as the runner starts (a copy of another program).
  void set_clipboard(TextView text) { clipboard_ = Text(text); }

 private:
  class Boxes;
  void run_step(TextView line);
  enum class Focus { kGrid, kFilter, kElsewhere };

  HeadlessDeskForm& open_form();
  void edit(TextView args, bool pick);
  void click(TextView args);
  void key(TextView name);
  void filter(TextView text);
  // The filter box's own typing: its text replaced (Ctrl+A, Delete, the
  // keys) or a blank added; its undo and redo (Ctrl+Z, Ctrl+Y while it has
  // the focus).
  void type_filter(const Text& text, bool replace);
  void step_filter(bool back);
  void copy();
  std::optional<Text> copied_text();  // nothing: the clipboard stays
  void type(TextView text);
  void paste_clipboard();
  void paste(TextView args);
  void answer_next(TextView args);
  void close_form();
  void load_case(const CaseStep& step);
  void preset(TextView file, bool saving);

  std::ostream& out_;
  std::shared_ptr<platform::Platform> platform_;
  std::shared_ptr<Boxes> boxes_;
  std::unique_ptr<HeadlessDeskForm> form_;
  Focus focus_ = Focus::kGrid;
  std::vector<Text> filter_undo_;  // the filter box's texts before each change
  std::vector<Text> filter_redo_;  // ... and after each change undone
  bool filter_typing_ = false;     // its last change was typing: more joins it
  bool filter_selected_ = false;   // Ctrl+F selected the box's text
  Text clipboard_;                 // what a copy and the clip step put there
};

}  // namespace zelkora::desk
