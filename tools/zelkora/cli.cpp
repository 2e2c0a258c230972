// The zelkora tool: arguments, the command table and the exit codes.
#include "tools/zelkora/cli.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "zelkora/frame/numbers.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/utf8.h"

namespace zelkora::cli {

namespace {

std::vector<Command> all_commands() {
  std::vector<Command> commands = frame_commands();
  for (auto* more : {typeset_commands, split_commands, report_commands, rebar_commands,
                     section_commands, checking_commands, datafile_commands, grid_commands,
                     lint_commands, menu_commands, document_commands, demo_commands}) {
    for (Command& c : more()) commands.push_back(std::move(c));
  }
  commands.push_back({"help", "", "lists the commands", nullptr});
  return commands;
}

void print_help(const std::vector<Command>& commands, std::ostream& out) {
  out << "usage: zelkora <command> [args]\n\ncommands:\n";
  for (const Command& c : commands) {
    out << "  " << c.name << (c.usage.empty() ? "" : " ") << c.usage << "\n      " << c.summary
        << "\n";
  }
}

}  // namespace

bool Args::take_flag(std::string_view name) {
  auto it = std::find(args_.begin(), args_.end(), name);
  if (it == args_.end()) return false;
  args_.erase(it);
  return true;
}

std::optional<std::string> Args::take_option(std::string_view name) {
  auto it = std::find(args_.begin(), args_.end(), name);
  if (it == args_.end()) return std::nullopt;
  if (it + 1 == args_.end()) throw UsageError{std::string(name) + " needs a value"};
  std::string value = *(it + 1);
  args_.erase(it, it + 2);
  return value;
}

std::optional<std::vector<std::string>> Args::take_list(std::string_view name, std::size_t most) {
  auto it = std::find(args_.begin(), args_.end(), name);
  if (it == args_.end()) return std::nullopt;
  auto first = it + 1;
  auto last = first;
  while (last != args_.end() && static_cast<std::size_t>(last - first) < most &&
         !last->starts_with("--")) {
    ++last;
  }
  if (first == last) throw UsageError{std::string(name) + " needs at least one value"};
  std::vector<std::string> values(first, last);
  args_.erase(it, last);
  return values;
}

void Args::expect(std::size_t count) const {
  if (args_.size() != count) {
    throw UsageError{"expected " + std::to_string(count) + " argument(s), got " +
                     std::to_string(args_.size())};
  }
}

Text arg_text(std::string_view arg) {
  Text out;
  std::size_t pos = 0;
  while (pos < arg.size()) {
    const std::size_t hit = arg.find("\\u", pos);
    if (hit == std::string_view::npos || hit + 6 > arg.size()) break;
    int value = 0;
    for (std::size_t k = hit + 2; k < hit + 6 && value >= 0; ++k) {
      const int d = hex_digit_value(arg[k]);
      value = d < 0 ? -1 : value * 16 + d;
    }
    if (value < 0) {
      out += from_utf8(arg.substr(pos, hit + 2 - pos));
      pos = hit + 2;
      continue;
    }
    out += from_utf8(arg.substr(pos, hit - pos));
    out.push_back(static_cast<char16_t>(value));
    pos = hit + 6;
  }
  out += from_utf8(arg.substr(pos));
  return out;
}

Text file_arg(std::string_view arg) { return platform::text_from_system_name(arg); }

int32_t arg_int32(std::string_view arg, std::string_view what) {
  int32_t value = 0;
  const char* end = arg.data() + arg.size();
  auto [ptr, ec] = std::from_chars(arg.data(), end, value);
  if (arg.empty() || ec != std::errc() || ptr != end) {
    throw UsageError{std::string(what) + " must be a whole number, not \"" + std::string(arg) +
                     "\""};
  }
  return value;
}

double arg_double(std::string_view arg, std::string_view what) {
  if (arg == "inf") return std::numeric_limits<double>::infinity();
  if (arg == "-inf") return -std::numeric_limits<double>::infinity();
  if (arg == "nan") return std::numeric_limits<double>::quiet_NaN();
  if (auto value = frame::parse_number(from_utf8(arg), frame::NumberSymbols{u'.', 0})) {
    return *value;
  }
  throw UsageError{std::string(what) + " must be a number with \".\" as decimal point, not \"" +
                   std::string(arg) + "\""};
}

std::string out_text(TextView text) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string out;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c >= 0xE000 && c <= 0xF8FF) {
      out += to_utf8(text.substr(start, i - start));
      out += "\\u";
      for (int shift = 12; shift >= 0; shift -= 4) out.push_back(kHex[(c >> shift) & 0xF]);
      start = i + 1;
    }
  }
  out += to_utf8(text.substr(start));
  return out;
}

int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  const std::vector<Command> commands = all_commands();
  if (args.empty() || args[0] == "help" || args[0] == "--help" || args[0] == "-h") {
    print_help(commands, args.empty() ? err : out);
    return args.empty() ? kExitUsage : kExitOk;
  }
  auto it = std::find_if(commands.begin(), commands.end(),
                         [&](const Command& c) { return c.name == args[0] && c.run; });
  if (it == commands.end()) {
    err << "zelkora: unknown command \"" << args[0] << "\" (see zelkora help)\n";
    return kExitUsage;
  }
  Args rest(std::vector<std::string>(args.begin() + 1, args.end()));
  try {
    it->run(rest, out);
    return kExitOk;
  } catch (const Failure& e) {
    err << "zelkora " << it->name << ": " << e.message << "\n";
    return kExitFailed;
  } catch (const UsageError& e) {
    err << "zelkora " << it->name << ": " << e.message << "\nusage: zelkora " << it->name << " "
        << it->usage << "\n";
    return kExitUsage;
  } catch (const Fault& e) {
    err << "zelkora " << it->name << ": " << fault_kind_name(e.kind()) << ": " << e.what() << "\n";
    return kExitFault;
  } catch (const std::exception& e) {
    err << "zelkora " << it->name << ": " << e.what() << "\n";
    return kExitFault;
  }
}

}  // namespace zelkora::cli
