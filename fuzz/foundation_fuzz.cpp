// The foundation data of a program's form (datafile/foundation_data.h).
// The first byte chooses what the rest is:
//  - even: the cells of a load table, seven to a row, texts split at U+0000.
//    A refused table leaves the outputs as they were and names an error of
//    the table's and a cell inside it; an accepted one has 1 to 50 cases,
//    known kinds, a permanent case and forces within ±3E14. Saved (unless
//    the save refuses it with 2003), it loads back and saves again to the
//    same bytes.
//  - odd: a project data file of any bytes, read by a program's loop that
//    hands the name record "Gk_ZhuBh" to bLoadDataFoundation. A refusal is
//    2001 and leaves the arrays and the table as they were; what is accepted
//    fills the table and saves, loads and saves again to the same bytes.
#include <cmath>
#include <cstdint>
#include <string>

#include "fuzz/fuzz_input.h"
#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/foundation_data.h"
#include "zelkora/platform/headless/headless_controls.h"
#include "zelkora/platform/headless/memory_files.h"

namespace {

using zelkora::Array2;
using zelkora::Text;
using zelkora::platform::headless::MemoryListView;

struct Data {
  std::vector<Text> numbers;
  std::vector<Text> files;
  std::vector<Array2<Text>> loads;
  friend bool operator==(const Data&, const Data&) = default;
};

const auto files = std::make_shared<zelkora::platform::headless::MemoryFileService>();
const auto platform =
    fuzz::headless_platform([](zelkora::platform::Platform& p) { p.files = files; });

bool save(const Data& d, std::string& bytes) {
  zelkora::clsLoadSave ls(platform);
  if (!ls.OpenFileA(u"f", u"OutPut")) __builtin_trap();
  ls.WriteFile_100A(u"before", 1.5);
  const bool saved = ls.SaveDataFoundation(d.numbers, d.files, d.loads);
  if (!saved && ls.last_error() != 2003) __builtin_trap();
  if (ls.WriteFileEofAndCloseFileA() != saved) __builtin_trap();
  bytes = files->bytes(u"f").value_or("");
  return saved;
}

// The program's loop over the file "f"; true when it reached "EOF" and every
// foundation group it met was read.
bool load(Data& d, zelkora::platform::ControlArray<zelkora::platform::ListView>* views) {
  zelkora::clsLoadSave ls(platform);
  if (!ls.OpenFileA(u"f", u"InPut")) __builtin_trap();
  zelkora::UseBinRecord rec;
  int32_t count = 0;
  while (ls.ReadFileOneA(rec) && !(rec.ID == 0 && rec.Member == u"EOF")) {
    if (ls.bReadMsgError(count, 100000)) return false;
    if (rec.ID == 100 && rec.Member == u"Gk_ZhuBh") {
      const Data before = d;
      if (!ls.bLoadDataFoundation(d.numbers, d.files, d.loads, rec, views)) {
        if (ls.last_error() != 2001 || !(d == before)) __builtin_trap();
        return false;
      }
    }
  }
  return rec.ID == 0 && rec.Member == u"EOF";
}

// Saved, loaded back, saved again to the same bytes.
void round_trip(const Data& d) {
  std::string first, second;
  if (!save(d, first)) return;
  Data back;
  if (!load(back, nullptr) || !save(back, second) || second != first) __builtin_trap();
}

void table(fuzz::Input& in) {
  const std::vector<Text> texts = in.texts(1);
  MemoryListView view;
  view.columns = 7;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i % 7 == 0)
      view.ListItemsAdd(texts[i]);
    else
      view.SubItem(view.ListItemsCount(), static_cast<int32_t>(i % 7), texts[i]);
  }
  zelkora::clsLoadSave ls(platform);
  Array2<Text> cells(0, 0);
  Array2<double> forces(0, 0);
  std::vector<int16_t> kinds{9};
  if (!ls.ReadCellToArray_Gk_Nl_Text(view, cells, forces, kinds)) {
    const int32_t e = ls.last_error();
    if (e < 3601000 || e > 3601007) __builtin_trap();
    if (ls.error_row() > view.ListItemsCount() || ls.error_column() > 7) __builtin_trap();
    if ((ls.error_row() == 0) != ls.error_place().empty()) __builtin_trap();
    if (!(cells == Array2<Text>(0, 0)) || !(forces == Array2<double>(0, 0)) || kinds.size() != 1) {
      __builtin_trap();
    }
    return;
  }
  if (cells.U1 < 0 || cells.U1 >= 50 || cells.U2 != 6 || forces.U1 != cells.U1 || forces.U2 != 4 ||
      kinds.size() != static_cast<std::size_t>(cells.U1) + 1) {
    __builtin_trap();
  }
  bool permanent = false;
  for (const int16_t k : kinds) {
    if (k < 1 || k > 4) __builtin_trap();
    permanent = permanent || k == 1;
  }
  if (!permanent) __builtin_trap();
  for (const double f : forces.Values) {
    if (!(std::fabs(f) <= 3e14)) __builtin_trap();
  }
  round_trip(Data{{u"J-1"}, {u""}, {cells}});
}

// Footing numbers no file can give (a lone surrogate never comes out of
// code page 936).
const std::vector<Text> kKept{Text(1, char16_t{0xD800})};

void file(fuzz::Input& in) {
  files->put(u"f", in.bytes());
  MemoryListView view;
  view.columns = 7;
  view.ListItemsAdd(u"kept");
  zelkora::platform::ControlArray<zelkora::platform::ListView> views;
  views.set(0, &view);
  Data d{kKept, {}, {}};
  if (!load(d, &views)) {
    if (d.numbers == kKept && (view.ListItemsCount() != 1 || view.ItemText(1) != u"kept")) {
      __builtin_trap();
    }
    return;
  }
  if (d.numbers == kKept) return;  // no foundation group in the file
  if (d.files.size() != d.numbers.size() || d.loads.size() != d.numbers.size()) __builtin_trap();
  if (view.ListItemsCount() != d.loads[0].U1 + 1) __builtin_trap();
  round_trip(d);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::Input in(data, size);
  if (in.byte() % 2 == 0) {
    table(in);
  } else {
    file(in);
  }
  return 0;
}
