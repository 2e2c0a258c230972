// The zelkora command-line tool: every headless operation of the library from
// a shell. Arguments and output are UTF-8; private-use characters of the
// suite's symbol font are written as \uXXXX on output and may be given so on
// input.
//
// Exit codes: 0 when the command ran (also when the operation it ran reported
// an error number: that is output), 1 when a command says its subject failed
// (a damaged data file), 2 for bad usage, 3 for a fault (the message on
// stderr).
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "zelkora/platform/platform.h"
#include "zelkora/platform/text.h"

namespace zelkora::cli {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;
constexpr int kExitFault = 3;

// Thrown by a command for bad usage; the message goes to stderr.
struct UsageError {
  std::string message;
};

// Thrown by a command whose subject failed, after what it printed so far;
// the message goes to stderr and the exit code is 1.
struct Failure {
  std::string message;
};

// The arguments of one command, after its name.
class Args {
 public:
  explicit Args(std::vector<std::string> args) : args_(std::move(args)) {}
  std::size_t size() const { return args_.size(); }
  const std::string& operator[](std::size_t i) const { return args_[i]; }

  // Removes `--name` and returns whether it was there.
  bool take_flag(std::string_view name);
  // Removes `--name VALUE` and returns VALUE, or nothing.
  std::optional<std::string> take_option(std::string_view name);
  // Removes `--name` and up to `most` values after it (at least one).
  std::optional<std::vector<std::string>> take_list(std::string_view name, std::size_t most);
  // Exactly `count` positional arguments must be left.
  void expect(std::size_t count) const;

 private:
  std::vector<std::string> args_;
};

// Converts an argument to text; "\uXXXX" stands for that character.
Text arg_text(std::string_view arg);
// A file name as the system gave it: its bytes kept even where they are no
// UTF-8, so the file is found (no "\uXXXX" escapes here).
Text file_arg(std::string_view arg);
// A whole number argument in the 32-bit range, else a UsageError naming `what`.
int32_t arg_int32(std::string_view arg, std::string_view what);
// A number argument with "." as decimal point ("2.5", "-1e-3"), or "inf",
// "-inf", "nan"; else a UsageError naming `what`.
double arg_double(std::string_view arg, std::string_view what);
// Text for output: UTF-8 with private-use characters as \uXXXX.
std::string out_text(TextView text);

struct Command {
  std::string name;
  std::string usage;  // the arguments, after the name
  std::string summary;
  std::function<void(Args&, std::ostream&)> run;
};

// The commands of each subsystem, for the command table.
std::vector<Command> frame_commands();
std::vector<Command> typeset_commands();
std::vector<Command> split_commands();
std::vector<Command> report_commands();
std::vector<Command> rebar_commands();
std::vector<Command> section_commands();
std::vector<Command> checking_commands();
std::vector<Command> datafile_commands();
std::vector<Command> grid_commands();
std::vector<Command> lint_commands();
std::vector<Command> menu_commands();
std::vector<Command> document_commands();
std::vector<Command> demo_commands();

// In-memory INI files holding the program menu of the platform's resources,
// under its name "ZK_PROMENU.INI"; Failure when there is none.
std::shared_ptr<platform::IniFiles> shipped_menu_ini(const platform::Platform& platform);

// What is wrong with a project data file as the suite's readers see it: 2002
// when it cannot be opened, 2001 when a record is damaged or the revision or
// the EOF record is missing, 0 when nothing is.
int32_t data_file_error(const std::string& file);

// Runs one command line (without the program name) and returns the exit code.
int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace zelkora::cli
