// The command that checks a layout, a shipped one by name or a program's own
// file, against the rules of the grid and the catalogue texts it refers to.
#include "tools/zelkora/cli.h"
#include "zelkora/grid/layout_lint.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/whole_file.h"

namespace zelkora::cli {

namespace {

// As the grid reads layouts: a larger file is refused.
constexpr std::size_t kMostLayoutBytes = std::size_t{1} << 20;

// An argument names a file when it ends in ".txt" or holds a folder.
bool names_file(TextView arg) {
  return arg.find_first_of(u"/\\") != TextView::npos ||
         (arg.size() > 4 && equal_text(arg.substr(arg.size() - 4), u".txt", Compare::Text));
}

// The layout name of a file: its name without the folder and ".txt".
Text layout_name_of(TextView file) {
  const std::size_t slash = file.find_last_of(u"/\\");
  TextView name = slash == TextView::npos ? file : file.substr(slash + 1);
  if (name.size() > 4 && equal_text(name.substr(name.size() - 4), u".txt", Compare::Text)) {
    name.remove_suffix(4);
  }
  return Text(name);
}

std::vector<grid::LayoutProblem> lint_file(const std::string& arg) {
  const Text file = file_arg(arg);
  std::string bytes;
  if (platform::read_file(platform::path_from_text(file), kMostLayoutBytes, bytes) !=
      platform::ReadStatus::Ok) {
    throw Failure{"cannot read the layout file " + arg + " (or it is over 1 MiB)"};
  }
  return grid::lint_layout(codepage::from_ansi(bytes), layout_name_of(file),
                           platform::Platform::current());
}

// One line per problem, then problems=N; exit 1 when there are any.
void lint_layout_command(Args& args, std::ostream& out) {
  args.expect(1);
  const Text name = arg_text(args[0]);
  const std::vector<grid::LayoutProblem> problems =
      names_file(name) ? lint_file(args[0])
                       : grid::lint_named_layout(name, platform::Platform::current());
  std::string text;
  for (const grid::LayoutProblem& p : problems) text += out_text(from_utf8(p.describe())) + "\n";
  out << text << "problems=" << problems.size() << "\n";
  if (!problems.empty()) {
    throw Failure{std::to_string(problems.size()) + " problem(s) in the layout " + args[0]};
  }
}

}  // namespace

std::vector<Command> lint_commands() {
  return {
      {"lint-layout", "NAME|FILE",
       "checks a layout (a name of the resources without regard to case, or a GBK file ending "
       "in .txt or given with its folder) against the rules of the grid and the catalogue texts "
       "it refers to (with those of ZELKORA_RESOURCES): one line per problem (line, item, why), "
       "then problems=N; exit 1 when there are any",
       lint_layout_command},
  };
}

}  // namespace zelkora::cli
