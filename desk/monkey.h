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
// On the first failure it prints the step, the rule broken and a script
// made as short as it can make it that breaks the rule again.
//
//   zelkora-desk --monkey 7 --steps 2000 --host qt
#pragma once

#include <QString>
#include <QTextStream>
#include <cstdint>

namespace zelkora::desk {

struct MonkeyRun {
  uint64_t seed = 1;
  int64_t steps = 1000;
  // Stops after this many seconds (0: after `steps`), starting further
  // seeds while time remains.
  double seconds = 0;
  // "qt": the desktop form against the model; "both": and the headless form
  // taking the same steps, compared with it step by step.
  QString host = QStringLiteral("qt");
  // On a finding, its steps kept (not cut down) and the next seed run: a
  // campaign's findings all told.
  bool keep_going = false;
  // Where the run keeps its project files and its steps (a new temporary
  // folder when empty).
  QString folder;
};

// 0 when every rule held; 1 with the finding on `out`; 2 when the run
// could not start (the reason on `err`).
int run_monkey(const MonkeyRun& run, QTextStream& out, QTextStream& err);

// Runs a script (as the tester wrote it: "$DIR" stands for the folder of
// its files) with the same checks after every step; 0 when every rule held,
// 1 with the finding on `out`.
int check_script(const QStringList& script, QTextStream& out, QTextStream& err,
                 bool compare_hosts = false);

}  // namespace zelkora::desk
