// The random tester of the desktop program: seeded, reproducible sequences
// of a user's input (steps of the script language, desk/script.h) on a
// calculation form, with the form checked against its model
// (program/form_model.h) after every step:
//
//   - what each cell shows is its item's value, in bold exactly where the
//     model has the mark; the rows shown are the ones the folding, the
//     form's rules and the filter say;
//   - a leave is refused exactly when the check refuses the value, with one
//     message; undo and redo give back the values and marks of their step;
//   - the changed mark follows the values last saved or opened, and a
//     changed project asks before it is replaced or closed;
//   - a saved file opens with the same values and saves again to the same
//     bytes; a copied row holds the row's value; the count of refused
//     values is the model's.
//
// With `compare_hosts`, the headless form (program/headless_script.h) takes
// every step too and must print the same, raise the same events and show
// the same state. The tester drives any host through a MonkeyHost: the Qt
// program (desk/monkey_qt.cpp) and the Windows one (win32desk/monkey.cpp).
// On the first failure it prints the step, the rule broken and a script
// made as short as it can make it that breaks the rule again.
//
//   zelkora-desk --monkey 7 --steps 2000 --host both
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "program/form_work.h"
#include "zelkora/platform/platform.h"

namespace zelkora::desk {

// What the tester needs of a desktop program: its script's steps, taken as
// the user's hand, and what its windows show beyond the form's work.
class MonkeyHost {
 public:
  virtual ~MonkeyHost() = default;

  virtual std::shared_ptr<const platform::Platform> platform() const = 0;
  // One step as the host's script runs it, what it printed added to
  // `printed` (UTF-8); a StepError when the user could not take it.
  virtual void run(TextView line, std::string& printed) = 0;
  // The work of the form in front, or null when none is open.
  virtual FormWork* form() = 0;
  // The work of the open form with this serial (FormWork::serial), or null.
  virtual FormWork* form_of(int64_t serial) = 0;
  // Whether the program menu shows the row of a program (its group unfolded).
  virtual bool menu_shows(TextView entry) = 0;

  // ---- Where the keys go.
  // The grid or its editor has the focus.
  virtual bool focus_in_grid() = 0;
  // The focus is in a text box that takes a paste of its own (the filter
  // box, a cell's text editor).
  virtual bool focus_in_text_box() = 0;
  // The focused cell editor has typing of its own to undo, or to redo.
  virtual bool editor_undoes() = 0;
  virtual bool editor_redoes() = 0;

  // ---- What the window shows.
  virtual bool row_shown(int32_t row) = 0;
  // The text in the row's value cell, or in its editor while that is open.
  virtual Text shown_value(int32_t row) = 0;
  // The window's changed mark.
  virtual bool marked_changed() = 0;
  virtual bool undo_enabled() = 0;
  virtual bool redo_enabled() = 0;
  virtual Text refused_count() = 0;
  // The filter as its box and toggles say.
  virtual Text filter_text() = 0;
  virtual bool changed_only() = 0;
  virtual bool refused_only() = 0;

  // ---- The system.
  virtual Text clipboard() = 0;
  virtual void clear_clipboard() = 0;
  // The form's window made active again, as the system does after a box.
  virtual void activate_form() {}
  // Every form closed without asking.
  virtual void close_forms() = 0;
  // What the host tells of its focus and view after a step, for a trace.
  virtual std::string trace() { return {}; }
};

// A program started afresh.
using MonkeyHostFactory = std::function<std::unique_ptr<MonkeyHost>()>;

struct MonkeyRun {
  uint64_t seed = 1;
  int64_t steps = 1000;
  // Stops after this many seconds (0: after `steps`), starting further
  // seeds while time remains.
  double seconds = 0;
  // The headless form takes the same steps, compared step by step.
  bool compare_hosts = false;
  // On a finding, its steps kept (not cut down) and the next seed run: a
  // campaign's findings all told.
  bool keep_going = false;
  // Where the run keeps its project files and its steps (a new temporary
  // folder when empty); UTF-8.
  std::string folder;
};

// 0 when every rule held; 1 with the finding on `out`; 2 when the run
// could not start (the reason on `err`).
int run_monkey(const MonkeyRun& run, const MonkeyHostFactory& host, std::ostream& out,
               std::ostream& err);

// Runs a script (as the tester wrote it: "$DIR" stands for the folder of
// its files) with the same checks after every step; 0 when every rule held,
// 1 with the finding on `out`.
int check_script(const std::vector<std::string>& script, const MonkeyHostFactory& host,
                 std::ostream& out, std::ostream& err, bool compare_hosts = false);

}  // namespace zelkora::desk
