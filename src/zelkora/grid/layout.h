// Layouts and property descriptors: what rows the property grid of a
// calculation form has, and what each row shows, offers, starts with and
// checks.
//
// A *layout* is a GBK text of CR LF lines (bare LF lines read the same), one
// grid row a line, top to bottom:
//
//   -1,25000,   '''基本信息            a heading (item -1), descriptor 25000
//   1,25502,          '''构件编号      item 1, descriptor 25502
//   6,25803,1,        '''显示配筋率    item 6; "1" in field 3: raises an event
//   15,-25603,        '''通长纵筋      a negative id: the row starts collapsed
//
// Fields 1 and 2 are read with the leading-number rule (frame/numbers.h), so a
// comment standing right after the id ("10,26306    '''...") is harmless;
// field 3 sets the event flag only when it is exactly "1" after trimming; the
// rest of the line is a comment and never read. Lines of blanks are skipped.
// Item indexes are the rows' keys into the form's values and cover 0 to N-1,
// N = rows - headings; the tables are sized from that count (lMax = rows -
// headings - 1), not from the indexes.
//
// A *property descriptor* is a catalogue text of six fields, each ended by
// "|": kind (10 heading, 100 item, 110 group, 1100 group member), caption id,
// cell type (1 list cell, 0 text cell), list id (numeric reading, empty = 0),
// default, check ("10|1346|1|||0|", "110|1370|1|5752|_2, 16|0|"). A row the
// layout marks collapsed reads its descriptor with a "-" in front, so its kind
// is negative (-10, -110); that sign is the only record of the collapsed state.
// A form that supplies its rows itself appends a seventh field, the item index
// ("100|1002|1|9000||0|1").
//
// Layouts are found by name, without regard to case, in the bundle's resource
// sources (platform/resources.h), the last first: as `layouts/<name>.txt` (or
// `<name>.txt` at the top of a folder without `layouts/`), so a resource
// folder overrides the layouts compiled into the library.
//
// The name of a form's layout is a catalogue text, and its id is what the
// grid is given (clsGridCell::lInterfaceResID): an id of the suite's layout
// names 63700-63752 or of a program's own block 70000-79999
// (frame/catalogue_ids.h). A program registers a form of its own with two
// files of its resource folder: a catalogue text "7xxxx<TAB>clsMyForm" and
// `layouts/clsMyForm.txt`. The library, the tool and the desktop program
// take names by this one rule (layout_name_id, form_layout_id).
//
// Every damage is a Fault that names the layout and the line (or the row of a
// form's own descriptors): a layout that does not exist or a descriptor id
// without catalogue text MissingResource, a descriptor with fewer than six
// fields (seven for a form's own) IndexOutOfRange, a kind, caption or cell
// type that is no whole number Conversion, a number beyond 32 bits Overflow.
// Nothing here reads outside a table.
//
//   const Text text = grid::load_layout_text(u"clsbeamsteel", platform.resources);
//   grid::RowTables rows = grid::read_layout(text, "clsBeamSteel", catalogue);
//   grid::split_row_descriptors(rows, symbols);  // rows.kind[r], rows.caption[r], ...
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "zelkora/frame/catalogue.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/numbers.h"
#include "zelkora/platform/resources.h"
#include "zelkora/platform/text.h"

namespace zelkora {
class clsCharacter;
}

namespace zelkora::grid {

// Row kinds of a descriptor (absolute values).
inline constexpr int32_t kKindHeading = 10;
inline constexpr int32_t kKindItem = 100;
inline constexpr int32_t kKindGroup = 110;
inline constexpr int32_t kKindMember = 1100;

// The most items a form may declare for its own rows (LetGridCellText), so
// that a wrong count cannot allocate without bound.
inline constexpr int32_t kMaxItems = 65535;

// The per-row tables of a grid (index 1..rows, element 0 unused) and the
// counts. Reading a layout fills `item`, `descriptor`, `event` and `line`;
// splitting the descriptors fills the others. `caption`, `list` and `check`
// are replaced by tables indexed by item (0..max_item) when
// `indexed_by_item` is set (clsGridCell::GetTextResID).
struct RowTables {
  std::string source;  // the layout name, for messages; empty for a form's own rows
  int32_t rows = 0;    // R
  int32_t headings = 0;
  int32_t max_item = -1;  // lMax = R - headings - 1

  std::vector<int32_t> item;     // item index, -1 (any negative) for a heading
  std::vector<Text> descriptor;  // "-" + catalogue text for a collapsed row
  std::vector<bool> event;
  std::vector<int32_t> line;  // line of the layout (of the form's array) the row came from

  std::vector<int32_t> kind;  // signed: -10 / -110 for a collapsed row
  std::vector<int32_t> caption;
  std::vector<int32_t> cell;
  std::vector<int32_t> list;
  std::vector<Text> default_field;
  std::vector<Text> check;
  bool split = false;
  bool indexed_by_item = false;

  // "layout "clsBeamSteel", line 12" or "the form's row 3".
  std::string place(int32_t row) const;
};

// The per-item tables (index 0..max_item).
struct ItemTables {
  std::vector<Text> current;   // what the form reads and writes
  std::vector<Text> defaults;  // what loading the defaults restores
  std::vector<bool> hidden;    // the item does not apply; its row is hidden

  void resize(int32_t max_item);
};

// The tables of one grid: by row and by item.
struct Tables {
  RowTables rows;
  ItemTables items;
};

// ---- Layouts ---------------------------------------------------------------

// The GBK bytes of the layout `name` from the last source that has it, or
// nothing when none has. A file that cannot be read (or is over 1 MiB) throws
// Fault(File).
std::optional<std::string> find_layout_bytes(TextView name,
                                             const platform::ResourceSources& sources);

// The name of the file of the layout `name` as the last source that has it
// writes it, without ".txt" ("clsbeamsteel" gives "clsBeamSteel"), or nothing.
std::optional<Text> layout_file_name(TextView name, const platform::ResourceSources& sources);

// The decoded text of the layout `name`; Fault(MissingResource) when there is
// none.
Text load_layout_text(TextView name, const platform::ResourceSources& sources);

// Whether catalogue id `id` may name a layout: 63700..63752 or 70000..79999.
bool is_layout_name_id(int32_t id);

// The catalogue id whose text is `name` without regard to case: the suite's
// names first, then the program's block, each from its lowest id.
std::optional<int32_t> layout_name_id(TextView name, const frame::Catalogue& catalogue);
// The same in the catalogue of `chr`.
std::optional<int32_t> layout_name_id(TextView name, const clsCharacter& chr);

// The catalogue id of the form `name` (without regard to case) by the rule
// above; Fault(MissingResource) naming the name when no id of the blocks
// names it or no source has its layout file.
int32_t form_layout_id(TextView name, const frame::Catalogue& catalogue,
                       const platform::ResourceSources& sources);

// The lines of a layout text without their line ends (CR LF or a bare LF);
// element i is line i + 1.
std::vector<Text> layout_lines(TextView text);

// One line of a layout as read_layout reads it.
struct LayoutLine {
  int32_t item = 0;
  int32_t id = 0;   // the descriptor id as written: negative for a collapsed row
  Text descriptor;  // "-" + catalogue text for a collapsed row
  bool event = false;
};

// Reads one line that is not blank; the faults of read_layout, each message
// starting with `place`.
LayoutLine read_layout_line(TextView line, const std::string& place,
                            const frame::Catalogue& catalogue);

// Reads a decoded layout text (steps 2 to 4 of reading a layout): the rows,
// their item indexes, descriptor texts and event flags, the heading count and
// lMax. `name` goes into the messages of faults.
RowTables read_layout(TextView text, std::string_view name, const frame::Catalogue& catalogue);

// ---- Descriptors -----------------------------------------------------------

// The six fields of a descriptor, and the item index of a form's own
// seven-field descriptor.
struct RowDescriptor {
  int32_t kind = 0;
  int32_t caption = 0;
  int32_t cell = 0;
  int32_t list = 0;
  Text default_field;
  Text check;
  int32_t item = 0;  // seven-field descriptors only
};

// Splits one descriptor: fields 1-3 (and 7) by integer conversion in the
// notation of `symbols`, field 4 by the numeric reading, fields 5 and 6 as
// they stand. `fields` is 6 or 7. `place` names the descriptor in faults.
RowDescriptor split_descriptor(TextView descriptor, int fields, const frame::NumberSymbols& symbols,
                               const std::string& place);

// Splits the descriptor of every row into kind, caption, cell, list, default
// and check (per row) and clears `indexed_by_item`.
void split_row_descriptors(RowTables& rows, const frame::NumberSymbols& symbols);

// The form's own rows: texts[1..rows] are seven-field descriptors and
// events[1..rows] their event flags (element 0 unused). Fault(IndexOutOfRange)
// when an array is shorter, `rows` is negative or `max_item` is outside
// -1..kMaxItems.
RowTables rows_from_descriptors(const std::vector<Text>& texts, const std::vector<bool>& events,
                                int32_t rows, int32_t max_item,
                                const frame::NumberSymbols& symbols);

// Replaces the caption, list and check tables by tables indexed by item
// (0..max_item), from the descriptor fields 2, 4 and 6 of every non-heading
// row. An item index beyond max_item throws Fault(IndexOutOfRange).
void index_by_item(RowTables& rows, const frame::NumberSymbols& symbols);

// ---- Default values ----------------------------------------------------------

// The text a row starts with, from its default field D, its list and its
// current text:
//  1. D numeric (in the notation of `chr`): n = D rounded half to even; n < 1
//     gives list item |n| (the empty text when the list has no such item),
//     n >= 1 catalogue text n (tString: with the language offset, empty when
//     missing);
//  2. D empty: the current text, or list item 0 when the current text is empty;
//  3. D anything else but a single blank: D without its first character
//     ("_628" gives "628", "_2, 16" gives "2, 16");
//  4. D a single blank: the empty text.
// A numeric D beyond 32 bits throws Fault(Overflow).
Text default_text(TextView default_field, const std::vector<Text>& list, TextView current,
                  const clsCharacter& chr);

}  // namespace zelkora::grid
