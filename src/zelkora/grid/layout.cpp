// Reading layouts and property descriptors, and the default texts of items.
#include "zelkora/grid/layout.h"

#include <algorithm>
#include <system_error>

#include "zelkora/frame/character_internals.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/resources.h"

namespace zelkora::grid {

namespace {

constexpr std::string_view kLayoutFolder = "layouts";
constexpr std::size_t kMaxLayoutFile = std::size_t{1} << 20;
constexpr std::size_t kShownChars = 60;

std::string describe_place(std::string_view source, int32_t line) {
  if (source.empty()) return "the form's row " + std::to_string(line);
  return "layout \"" + std::string(source) + "\", line " + std::to_string(line);
}

// A text quoted for a message, cut to a readable length.
std::string shown(TextView text) {
  std::string out = "\"" + to_utf8(text.substr(0, kShownChars));
  if (text.size() > kShownChars) out += "...";
  return out + "\"";
}

// The numeric reading of a field as a 32-bit integer.
int32_t numeric_reading(TextView field, const std::string& place, const char* what) {
  const std::optional<double> value = frame::leading_value(field);
  const std::optional<int32_t> number = value ? frame::rounded_int32(*value) : std::nullopt;
  if (!number) {
    throw Fault(FaultKind::Overflow,
                place + ": " + what + " " + shown(field) + " is beyond 32 bits");
  }
  return *number;
}

// The integer conversion of a descriptor field.
int32_t whole_number(TextView field, const frame::NumberSymbols& symbols, const std::string& place,
                     TextView descriptor, int number) {
  const std::optional<double> value = frame::parse_number(field, symbols);
  const std::string which =
      place + ": field " + std::to_string(number) + " of descriptor " + shown(descriptor) + " is ";
  if (!value) throw Fault(FaultKind::Conversion, which + shown(field) + ", not a whole number");
  const std::optional<int32_t> whole = frame::rounded_int32(*value);
  if (!whole) throw Fault(FaultKind::Overflow, which + shown(field) + ", beyond 32 bits");
  return *whole;
}

std::vector<Text> descriptor_fields(TextView descriptor, std::size_t needed,
                                    const std::string& place) {
  std::vector<Text> fields = split_text(descriptor, u"|");
  if (fields.size() < needed) {
    throw Fault(FaultKind::IndexOutOfRange, place + ": descriptor " + shown(descriptor) + " has " +
                                                std::to_string(fields.size()) + " fields where " +
                                                std::to_string(needed) + " are needed");
  }
  return fields;
}

void check_table_bounds(std::size_t size, int32_t count, const char* what) {
  if (count >= 0 && size <= static_cast<std::size_t>(count)) {
    throw Fault(FaultKind::IndexOutOfRange, std::string(what) + " has elements up to " +
                                                std::to_string(static_cast<int64_t>(size) - 1) +
                                                ", rows 1 to " + std::to_string(count) +
                                                " are needed");
  }
}

}  // namespace

std::string RowTables::place(int32_t row) const {
  const bool known = row >= 0 && static_cast<std::size_t>(row) < line.size();
  return describe_place(source, known ? line[static_cast<std::size_t>(row)] : row);
}

void ItemTables::resize(int32_t max_item) {
  const std::size_t size = max_item < 0 ? 0 : static_cast<std::size_t>(max_item) + 1;
  current.assign(size, Text());
  defaults.assign(size, Text());
  hidden.assign(size, false);
}

// ---- Layouts -----------------------------------------------------------------

namespace {

// The file of the layout in one source: the exact name "<name>.txt" wins,
// otherwise the first name in name order that differs only in case.
std::optional<std::string> layout_file(const platform::ResourceSource& source, TextView wanted) {
  std::optional<std::string> found;
  for (const std::string& file : source.files(platform::folder_of(source, kLayoutFolder))) {
    const Text name = from_utf8(file);
    if (name == wanted) return file;
    if (!found && equal_text(name, wanted, Compare::Text)) found = file;
  }
  return found;
}

}  // namespace

namespace {

// The source that has the layout `name`, the last first, and its file there.
struct LayoutFile {
  const platform::ResourceSource* source = nullptr;
  std::string file;
};

std::optional<LayoutFile> find_layout_file(TextView name,
                                           const platform::ResourceSources& sources) {
  if (name.empty()) return std::nullopt;
  const Text wanted = Text(name) + u".txt";
  for (auto it = sources.rbegin(); it != sources.rend(); ++it) {
    if (std::optional<std::string> file = layout_file(**it, wanted)) {
      return LayoutFile{it->get(), std::move(*file)};
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> find_layout_bytes(TextView name,
                                             const platform::ResourceSources& sources) {
  const std::optional<LayoutFile> found = find_layout_file(name, sources);
  if (!found) return std::nullopt;
  const platform::ResourceSource& source = *found->source;
  const std::string folder = platform::folder_of(source, kLayoutFolder);
  const std::string path = folder.empty() ? found->file : folder + "/" + found->file;
  std::optional<std::string> bytes = source.read(path, kMaxLayoutFile);
  if (!bytes) {
    throw Fault(FaultKind::File,
                "layout file " + source.location(path) + " cannot be read (or is over 1 MiB)");
  }
  return bytes;
}

std::optional<Text> layout_file_name(TextView name, const platform::ResourceSources& sources) {
  const std::optional<LayoutFile> found = find_layout_file(name, sources);
  if (!found) return std::nullopt;
  const Text file = from_utf8(found->file);
  return file.substr(0, file.size() - 4);
}

Text load_layout_text(TextView name, const platform::ResourceSources& sources) {
  const std::optional<std::string> bytes = find_layout_bytes(name, sources);
  if (!bytes) {
    throw Fault(FaultKind::MissingResource, "layout " + shown(name) + " does not exist");
  }
  return codepage::from_ansi(*bytes);
}

bool is_layout_name_id(int32_t id) {
  return (id >= text_id::kFirstLayoutName && id <= text_id::kLastLayoutName) ||
         (id >= text_id::kFirstProgramText && id <= text_id::kLastProgramText);
}

namespace {

std::optional<int32_t> name_id_in(TextView name, const frame::Catalogue& catalogue, int32_t first,
                                  int32_t last) {
  for (int32_t id = first; id <= last; ++id) {
    const std::optional<TextView> text = catalogue.find(id);
    if (text && equal_text(*text, name, Compare::Text)) return id;
  }
  return std::nullopt;
}

}  // namespace

std::optional<int32_t> layout_name_id(TextView name, const frame::Catalogue& catalogue) {
  if (trim(name).empty()) return std::nullopt;
  if (auto id = name_id_in(name, catalogue, text_id::kFirstLayoutName, text_id::kLastLayoutName)) {
    return id;
  }
  return name_id_in(name, catalogue, text_id::kFirstProgramText, text_id::kLastProgramText);
}

std::optional<int32_t> layout_name_id(TextView name, const clsCharacter& chr) {
  return layout_name_id(name, clsCharacter::Internals::catalogue(chr));
}

int32_t form_layout_id(TextView name, const frame::Catalogue& catalogue,
                       const platform::ResourceSources& sources) {
  const std::optional<int32_t> id = layout_name_id(name, catalogue);
  if (!id) {
    throw Fault(FaultKind::MissingResource,
                "no layout is called " + shown(name) + " (no catalogue text " +
                    std::to_string(text_id::kFirstLayoutName) + "-" +
                    std::to_string(text_id::kLastLayoutName) + " or " +
                    std::to_string(text_id::kFirstProgramText) + "-" +
                    std::to_string(text_id::kLastProgramText) + " names it)");
  }
  if (!find_layout_bytes(name, sources)) {
    throw Fault(FaultKind::MissingResource,
                "no layout is called " + shown(name) + " (catalogue text " + std::to_string(*id) +
                    " names it, but there is no file layouts/" + to_utf8(name) + ".txt)");
  }
  return *id;
}

std::vector<Text> layout_lines(TextView text) {
  // Lines end in CR LF as the suite writes them, or in a bare LF as an
  // editor on Linux leaves them: both read the same.
  std::vector<Text> pieces = split_text(text, u"\n");
  for (Text& piece : pieces) {
    if (!piece.empty() && piece.back() == u'\r') piece.pop_back();
  }
  return pieces;
}

LayoutLine read_layout_line(TextView piece, const std::string& place,
                            const frame::Catalogue& catalogue) {
  const std::vector<Text> fields = split_text(piece, u",");
  if (fields.size() < 2) {
    throw Fault(FaultKind::IndexOutOfRange,
                place + ": " + shown(piece) + " has no descriptor id after a comma");
  }
  LayoutLine line;
  line.item = numeric_reading(fields[0], place, "the item index");
  line.id = numeric_reading(fields[1], place, "the descriptor id");
  if (line.id == INT32_MIN) {
    throw Fault(FaultKind::Overflow,
                place + ": descriptor id " + shown(fields[1]) + " has no positive counterpart");
  }
  const int32_t abs_id = line.id < 0 ? -line.id : line.id;
  const std::optional<TextView> descriptor = catalogue.find(abs_id);
  if (!descriptor) {
    throw Fault(FaultKind::MissingResource,
                place + ": descriptor " + std::to_string(abs_id) + " has no catalogue text");
  }
  line.descriptor = line.id < 0 ? u"-" + Text(*descriptor) : Text(*descriptor);
  line.event = fields.size() > 2 && trim(fields[2]) == u"1";
  return line;
}

RowTables read_layout(TextView text, std::string_view name, const frame::Catalogue& catalogue) {
  RowTables t;
  t.source = std::string(name);
  const std::vector<Text> pieces = layout_lines(text);
  const std::size_t bound = pieces.size() + 1;
  t.item.reserve(bound);
  t.descriptor.reserve(bound);
  t.event.reserve(bound);
  t.line.reserve(bound);
  t.item.push_back(0);
  t.descriptor.emplace_back();
  t.event.push_back(false);
  t.line.push_back(0);

  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (trim(pieces[i]).empty()) continue;
    const auto line = static_cast<int32_t>(std::min<std::size_t>(i + 1, INT32_MAX));
    LayoutLine read = read_layout_line(pieces[i], describe_place(name, line), catalogue);
    if (read.item < 0) ++t.headings;
    t.item.push_back(read.item);
    t.descriptor.push_back(std::move(read.descriptor));
    t.event.push_back(read.event);
    t.line.push_back(line);
  }
  t.rows = static_cast<int32_t>(t.item.size() - 1);
  t.max_item = t.rows - t.headings - 1;
  return t;
}

// ---- Descriptors -----------------------------------------------------------

RowDescriptor split_descriptor(TextView descriptor, int fields, const frame::NumberSymbols& symbols,
                               const std::string& place) {
  const std::vector<Text> f =
      descriptor_fields(descriptor, static_cast<std::size_t>(fields), place);
  RowDescriptor d;
  d.kind = whole_number(f[0], symbols, place, descriptor, 1);
  d.caption = whole_number(f[1], symbols, place, descriptor, 2);
  d.cell = whole_number(f[2], symbols, place, descriptor, 3);
  d.list = numeric_reading(f[3], place, "the list id");
  d.default_field = f[4];
  d.check = f[5];
  if (fields >= 7) d.item = whole_number(f[6], symbols, place, descriptor, 7);
  return d;
}

namespace {

// Splits every row into local tables first, so that a fault leaves `t` as it was.
void fill_split_tables(RowTables& t, int fields, const frame::NumberSymbols& symbols) {
  const auto size = static_cast<std::size_t>(t.rows) + 1;
  std::vector<int32_t> kind(size), caption(size), cell(size), list(size), item = t.item;
  std::vector<Text> default_field(size), check(size);
  for (std::size_t r = 1; r < size; ++r) {
    RowDescriptor d =
        split_descriptor(t.descriptor[r], fields, symbols, t.place(static_cast<int32_t>(r)));
    kind[r] = d.kind;
    caption[r] = d.caption;
    cell[r] = d.cell;
    list[r] = d.list;
    default_field[r] = std::move(d.default_field);
    check[r] = std::move(d.check);
    if (fields >= 7) item[r] = d.item;
  }
  t.kind = std::move(kind);
  t.caption = std::move(caption);
  t.cell = std::move(cell);
  t.list = std::move(list);
  t.default_field = std::move(default_field);
  t.check = std::move(check);
  t.item = std::move(item);
  t.split = true;
  t.indexed_by_item = false;
}

}  // namespace

void split_row_descriptors(RowTables& rows, const frame::NumberSymbols& symbols) {
  fill_split_tables(rows, 6, symbols);
}

RowTables rows_from_descriptors(const std::vector<Text>& texts, const std::vector<bool>& events,
                                int32_t rows, int32_t max_item,
                                const frame::NumberSymbols& symbols) {
  if (rows < 0) {
    throw Fault(FaultKind::IndexOutOfRange,
                "the form's row count " + std::to_string(rows) + " is negative");
  }
  if (max_item < -1 || max_item > kMaxItems) {
    throw Fault(FaultKind::IndexOutOfRange, "the form's highest item index " +
                                                std::to_string(max_item) + " is outside -1 to " +
                                                std::to_string(kMaxItems));
  }
  check_table_bounds(texts.size(), rows, "the form's descriptor array");
  check_table_bounds(events.size(), rows, "the form's event array");

  RowTables t;
  t.rows = rows;
  const auto size = static_cast<std::size_t>(rows) + 1;
  t.descriptor.assign(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(size));
  t.descriptor[0].clear();
  t.event.assign(events.begin(), events.begin() + static_cast<std::ptrdiff_t>(size));
  t.event[0] = false;
  t.item.assign(size, 0);
  t.line.resize(size);
  for (std::size_t r = 0; r < size; ++r) t.line[r] = static_cast<int32_t>(r);
  fill_split_tables(t, 7, symbols);
  for (std::size_t r = 1; r < size; ++r) {
    if (t.item[r] < 0) ++t.headings;
  }
  t.max_item = max_item;
  return t;
}

void index_by_item(RowTables& rows, const frame::NumberSymbols& symbols) {
  const std::size_t size = rows.max_item < 0 ? 0 : static_cast<std::size_t>(rows.max_item) + 1;
  std::vector<int32_t> caption(size), list(size);
  std::vector<Text> check(size);
  for (int32_t r = 1; r <= rows.rows; ++r) {
    const int32_t item = rows.item[static_cast<std::size_t>(r)];
    if (item < 0) continue;
    const std::string place = rows.place(r);
    if (item > rows.max_item) {
      throw Fault(FaultKind::IndexOutOfRange, place + ": item index " + std::to_string(item) +
                                                  " is beyond the highest item index " +
                                                  std::to_string(rows.max_item) +
                                                  " (rows - headings - 1)");
    }
    const TextView descriptor = rows.descriptor[static_cast<std::size_t>(r)];
    const std::vector<Text> f = descriptor_fields(descriptor, 6, place);
    const auto i = static_cast<std::size_t>(item);
    caption[i] = whole_number(f[1], symbols, place, descriptor, 2);
    list[i] = numeric_reading(f[3], place, "the list id");
    check[i] = f[5];
  }
  rows.caption = std::move(caption);
  rows.list = std::move(list);
  rows.check = std::move(check);
  rows.indexed_by_item = true;
}

// ---- Default values ----------------------------------------------------------

Text default_text(TextView default_field, const std::vector<Text>& list, TextView current,
                  const clsCharacter& chr) {
  if (const std::optional<double> value =
          frame::parse_number(default_field, chr.number_symbols())) {
    const int32_t n = frame::to_int32(*value);
    if (n >= 1) return chr.tString(n);
    const auto position = static_cast<std::size_t>(-static_cast<int64_t>(n));
    return position < list.size() ? list[position] : Text();
  }
  if (default_field.empty()) {
    if (!current.empty()) return Text(current);
    return list.empty() ? Text() : list.front();
  }
  if (default_field == u" ") return {};
  return Text(default_field.substr(1));
}

}  // namespace zelkora::grid
