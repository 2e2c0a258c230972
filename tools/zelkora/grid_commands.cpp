// Commands of the property grid and the program menu.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/frame/error_numbers.h"
#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/form_session.h"
#include "zelkora/grid/grid_cell_internals.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/headless/headless_form.h"

namespace zelkora::cli {

namespace {

// The layout id of a form name by the library's rule, or a fault naming the name.
int32_t layout_id(TextView name, const clsCharacter& chr) {
  return grid::form_layout_id(name, clsCharacter::Internals::catalogue(chr),
                              clsCharacter::Internals::platform(chr).resources);
}

// The rows of a layout as the grid reads them: one line per row with the
// item index, the descriptor fields (the kind signed, so a collapsed row shows
// -10 or -110; the default field as written) and the event flag.
void layout_command(Args& args, std::ostream& out) {
  args.expect(1);
  const Text name = arg_text(args[0]);
  clsGridCell grid;
  grid.lInterfaceResID(layout_id(name, clsGridCell::Internals::character(grid)));
  grid.ReadLayoutResource();
  grid.SplitRowDescriptors();
  const grid::RowTables& t = clsGridCell::Internals::row_tables(grid);
  std::string text =
      "rows=" + std::to_string(t.rows) + "\nlMax=" + std::to_string(t.max_item) + "\n";
  for (int32_t r = 1; r <= t.rows; ++r) {
    const auto i = static_cast<std::size_t>(r);
    text += std::to_string(r) + "\t" + std::to_string(t.item[i]) + "\t" +
            std::to_string(t.kind[i]) + "\t" + std::to_string(t.caption[i]) + "\t" +
            std::to_string(t.cell[i]) + "\t" + std::to_string(t.list[i]) + "\t" +
            out_text(t.default_field[i]) + "\t" + out_text(t.check[i]) + "\t" +
            (t.event[i] ? "1" : "0") + "\n";
  }
  out << text;
}

// ---- A form's grid, driven by a script ----------------------------------------

// The message box of a scripted form: it keeps what it shows, for printing
// after the grid, and answers its question as the script says.
class ScriptMessageBox : public platform::MessageBox {
 public:
  void warning(TextView text, TextView title) override {
    shown << out_text(title) << "\n" << out_text(replace_all(text, u"\r\n", u"\n"));
    if (!text.ends_with(u"\n")) shown << "\n";
  }
  int32_t question(TextView /*text*/, TextView /*title*/) override { return answer; }
  void diagnostic(std::string_view message) override { shown << message << "\n"; }

  std::ostringstream shown;
  int32_t answer = kYes;
};

// One line of a script.
struct Event {
  enum Kind { kEnter, kType, kLeave, kPick, kKey, kClick, kDefaults, kHide } kind;
  int line = 0;
  Text text;                  // type, pick
  std::vector<int32_t> args;  // enter ROW, key CODE, click ROW COL, defaults answer, hide ITEMs
};

constexpr std::size_t kMaxScript = std::size_t{1} << 20;

std::vector<std::string> script_lines(const std::string& file) {
  // Read as a stream, so that a pipe (a shell's <(...)) serves as well as a file.
  std::ifstream in(std::filesystem::path(std::u8string(file.begin(), file.end())),
                   std::ios::binary);
  std::string bytes;
  char chunk[4096];
  while (in && bytes.size() <= kMaxScript) {
    in.read(chunk, sizeof chunk);
    bytes.append(chunk, static_cast<std::size_t>(in.gcount()));
  }
  if (in.bad() || !in.eof() || bytes.size() > kMaxScript) {
    throw UsageError{"cannot read the script " + file + " (or it is over 1 MiB)"};
  }
  std::vector<std::string> lines;
  std::istringstream split(bytes);
  for (std::string line; std::getline(split, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(std::move(line));
  }
  return lines;
}

// The events of the script, checked against the grid: rows 1..rows, items
// 0..max_item. Blank lines and lines starting with "#" are passed over.
std::vector<Event> parse_script(const std::vector<std::string>& lines, int32_t rows,
                                int32_t max_item) {
  std::vector<Event> events;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const int number = static_cast<int>(i + 1);
    const std::string& line = lines[i];
    const std::string where = "script line " + std::to_string(number) + " \"" + line + "\": ";
    const std::size_t start = line.find_first_not_of(" \t");
    if (start == std::string::npos || line[start] == '#') continue;
    const std::size_t blank = line.find(' ', start);
    const std::string verb = line.substr(start, blank == std::string::npos ? blank : blank - start);
    const std::string rest = blank == std::string::npos ? "" : line.substr(blank + 1);
    std::vector<std::string> words;
    std::istringstream split(rest);
    for (std::string w; split >> w;) words.push_back(w);
    const auto number_in = [&](const std::string& word, const char* what, int32_t lo, int32_t hi) {
      int32_t value = 0;
      try {
        value = arg_int32(word, what);
      } catch (const UsageError& e) {
        throw UsageError{where + e.message};
      }
      if (value < lo || value > hi) {
        throw UsageError{where + what + " " + word + " is outside " + std::to_string(lo) + ".." +
                         std::to_string(hi)};
      }
      return value;
    };
    const auto count = [&](std::size_t n) {
      if (words.size() != n) {
        throw UsageError{where + verb + " takes " + std::to_string(n) + " argument(s)"};
      }
    };
    Event e{Event::kLeave, number, {}, {}};
    if (verb == "enter") {
      count(1);
      e.kind = Event::kEnter;
      e.args = {number_in(words[0], "row", 1, rows)};
    } else if (verb == "type" || verb == "pick") {
      e.kind = verb == "type" ? Event::kType : Event::kPick;
      e.text = arg_text(rest);
    } else if (verb == "leave") {
      count(0);
    } else if (verb == "key") {
      count(1);
      e.kind = Event::kKey;
      e.args = {number_in(words[0], "key code", 0, 32767)};
    } else if (verb == "click") {
      count(2);
      e.kind = Event::kClick;
      e.args = {number_in(words[0], "row", 1, rows), number_in(words[1], "column", 0, 3)};
    } else if (verb == "defaults") {
      count(1);
      if (words[0] != "yes" && words[0] != "cancel") {
        throw UsageError{where + "the answer is yes or cancel"};
      }
      e.kind = Event::kDefaults;
      e.args = {words[0] == "yes" ? platform::MessageBox::kYes : platform::MessageBox::kCancel};
    } else if (verb == "hide") {
      e.kind = Event::kHide;
      for (const std::string& w : words) e.args.push_back(number_in(w, "item", 0, max_item));
    } else {
      throw UsageError{where + "unknown event \"" + verb +
                       "\" (enter, type, leave, pick, key, click, defaults, hide)"};
    }
    events.push_back(std::move(e));
  }
  return events;
}

// Builds the grid of a form headless, with its values at their defaults,
// loads a data file, runs the script, saves, and prints the grid with its
// title box and the messages the form showed. A cancelled leave is printed
// when it happens ("line N: leave cancelled").
void grid_command(Args& args, std::ostream& out) {
  const std::optional<std::string> script = args.take_option("--script");
  const std::optional<std::string> save = args.take_option("--save");
  const std::optional<std::string> load = args.take_option("--load");
  args.expect(1);
  const Text name = arg_text(args[0]);
  const std::vector<std::string> lines =
      script ? script_lines(*script) : std::vector<std::string>();

  auto box = std::make_shared<ScriptMessageBox>();
  auto bundle = std::make_shared<platform::Platform>(*platform::Platform::current());
  bundle->messages = box;
  platform::headless::HeadlessForm view;
  grid::FormSession session(bundle, view.grid, view.title, view.panel, view.form);
  view.connect(&session);
  clsGridCell& cell = session.cell();
  const int32_t id = layout_id(name, clsGridCell::Internals::character(cell));
  // The form's name as the catalogue writes it identifies its data files.
  const Text form_name = clsGridCell::Internals::character(cell).tResStr(id);
  session.build(id);
  const std::vector<Event> events =
      parse_script(lines, clsGridCell::Internals::row_tables(cell).rows, cell.lMaxTextIndex());

  Text add_data;
  if (load && !cell.bLoadOrSaveData(u"Load", file_arg(*load), form_name, {}, add_data)) {
    // The number the datafile commands give the same file; a sound file of
    // another program is not this form's data file (2001) either.
    const int32_t error = data_file_error(*load);
    throw Failure{"cannot load the values of " + args[0] + " from " + *load + " (error " +
                  std::to_string(error != 0 ? error : error_id::kDataFileDamaged) + ")"};
  }
  for (const Event& e : events) {
    switch (e.kind) {
      case Event::kEnter:
        view.enter(e.args[0]);
        break;
      case Event::kType:
        view.type(e.text);
        break;
      case Event::kLeave:
        if (view.leave()) out << "line " << e.line << ": leave cancelled\n";
        break;
      case Event::kPick:
        view.pick(e.text);
        break;
      case Event::kKey:
        view.key(static_cast<int16_t>(e.args[0]));
        break;
      case Event::kClick:
        view.click(e.args[0], e.args[1]);
        break;
      case Event::kDefaults:
        box->answer = e.args[0];
        cell.LoadDefaultEnter(true);
        break;
      case Event::kHide: {
        std::vector<bool> marks(static_cast<std::size_t>(cell.lMaxTextIndex() + 1), false);
        for (int32_t item : e.args) marks[static_cast<std::size_t>(item)] = true;
        cell.LetTextInvalid(marks);
        cell.ControlEnable();
        break;
      }
    }
  }
  if (save && !cell.bLoadOrSaveData(u"Save", file_arg(*save), form_name, {}, add_data)) {
    throw Failure{"cannot save the values of " + args[0] + " to " + *save + " (error " +
                  std::to_string(clsGridCell::Internals::load_save(cell).lLoadSaveMode(u"Save")) +
                  ")"};
  }
  out << out_text(from_utf8(view.grid.render(&view.title)));
  const std::string shown = box->shown.str();
  if (!shown.empty()) out << "========\n" << shown;
}

}  // namespace

std::vector<Command> grid_commands() {
  return {
      {"layout", "NAME",
       "the rows of a grid layout (name without regard to case): rows=, lMax=, then per row: "
       "row, item, kind, caption id, cell, list, default, check, event (0|1), tab-separated",
       layout_command},
      {"grid", "NAME [--script FILE] [--save FILE] [--load FILE]",
       "builds the property grid of a form headless (values at their defaults), loads values "
       "from a data file, runs the script (one event a line: enter ROW, type TEXT, leave, "
       "pick TEXT, key CODE, click ROW COL, defaults yes|cancel, hide ITEM...; \"#\" comments), "
       "saves, then prints the grid, its title box and the messages shown",
       grid_command},
  };
}

}  // namespace zelkora::cli
