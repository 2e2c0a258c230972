// The desktop program's script language (desk/script.h lists its steps) on
// the Windows host: each step is delivered to the windows as the system
// delivers a user's hand, as window messages (a click's button down and up
// at a cell's point, key downs and characters to the window with the focus,
// Ctrl held in the thread's key state, a menu's or a toolbar's command),
// and the message loop is run until nothing waits. Every message box met is
// printed as "message: TITLE | TEXT" and answered, a file dialog met is
// printed and cancelled (both through a CBT hook on the thread).
//
// A print preview met is counted ("print preview: N pages | closed") and
// closed. Not on Windows: export pdf (no PDF writer there).
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "zelkora/platform/text.h"

namespace zelkora::win32desk {

class DeskApp;

// What a run prints, one line at a time (UTF-8, each ended by "\n").
using ScriptOut = std::function<void(const std::string& line)>;

class Steps;

// The steps of one script, run one at a time on the program's windows.
class ScriptRunner {
 public:
  ScriptRunner(DeskApp& app, ScriptOut out);
  ~ScriptRunner();
  ScriptRunner(const ScriptRunner&) = delete;
  ScriptRunner& operator=(const ScriptRunner&) = delete;

  // One step (a trimmed line); a StepError when it cannot run.
  void run(TextView line);

 private:
  ScriptOut out_;
  std::unique_ptr<Steps> steps_;
};

// The clipboard's text, and text put on it.
Text clipboard_text();
void set_clipboard(TextView text);

// Runs the lines; 0 when every step ran, 2 with the reason on `err` (the
// line's number and text) when one could not. `project`, when given, is
// opened first, its boxes printed and answered as the script's are.
int run_script(DeskApp& app, const std::vector<Text>& lines, const ScriptOut& out,
               const ScriptOut& err, TextView project = {});

}  // namespace zelkora::win32desk
