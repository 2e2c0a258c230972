// Commands of line splitting: breaking a line at a separator and wrapping a
// text to a width.
#include <limits>

#include "tools/zelkora/cli.h"
#include "zelkora/frame/cls_character.h"

namespace zelkora::cli {

namespace {

// A 16-bit option, 0 when it is not given.
int16_t int16_option(Args& args, std::string_view name, std::string_view what) {
  const auto value = args.take_option(name);
  if (!value) return 0;
  const int32_t n = arg_int32(*value, what);
  if (n < std::numeric_limits<int16_t>::min() || n > std::numeric_limits<int16_t>::max()) {
    throw UsageError{std::string(what) + " must be from -32768 to 32767, not " + *value};
  }
  return static_cast<int16_t>(n);
}

void split_command(Args& args, std::ostream& out) {
  const int16_t indent = int16_option(args, "--indent", "N");
  const int16_t indent_add = int16_option(args, "--indent-add", "N");
  const int16_t width = int16_option(args, "--width", "N");
  args.expect(2);
  clsCharacter chr;
  Text lines;
  chr.SplitSngLineToMulLine(arg_text(args[0]), lines, arg_text(args[1]), u"\n", indent, indent_add,
                            width);
  out << out_text(lines);
}

void wrap_command(Args& args, std::ostream& out) {
  const int16_t width = int16_option(args, "--width", "N");
  const int16_t first = int16_option(args, "--first", "N");
  const int16_t following = int16_option(args, "--following", "N");
  args.expect(1);
  clsCharacter chr;
  std::vector<Text> lines;
  Text joined;
  chr.SplitTextToMulLine(arg_text(args[0]), lines, joined, u"\n", width, first, following);
  for (const Text& line : lines) out << out_text(line) << "\n";
}

void equation_command(Args& args, std::ostream& out) {
  const int16_t width = int16_option(args, "--width", "N");
  args.expect(1);
  clsCharacter chr;
  if (width > 0) chr.iMaxChrNow(width);
  const Text broken = chr.SplitEQ(arg_text(args[0]));
  if (!broken.empty()) out << out_text(replace_all(broken, chr.tConEnter1(), u"\n")) << "\n";
}

}  // namespace

std::vector<Command> split_commands() {
  return {
      {"split", "TEXT SEPARATOR [--indent N] [--indent-add N] [--width N]",
       "TEXT broken at SEPARATOR into lines of at most N bytes (80 at least), the first indented "
       "by --indent, the others by --indent + --indent-add",
       split_command},
      {"wrap", "TEXT [--width N] [--first N] [--following N]",
       "TEXT wrapped to N cells as shown (default 80), one line per output line; --first and "
       "--following indent the first and the further lines of each paragraph",
       wrap_command},
      {"equation", "TEXT [--width N]",
       "the equation TEXT broken before its operators into lines of N cells as shown (80 at "
       "least), the further lines under its first right-hand side",
       equation_command},
  };
}

}  // namespace zelkora::cli
