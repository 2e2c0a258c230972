// clsLoadSave: the foundation data, read from a form's tables and kept in the
// project data file. The tables, arrays, records and errors are in
// foundation_data.h.
#include "zelkora/datafile/foundation_data.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <set>
#include <utility>

#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/record_file.h"
#include "zelkora/datafile/record_numbers.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/error_numbers.h"
#include "zelkora/frame/numbers.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/fault.h"

namespace zelkora {

namespace datafile {

int16_t foundation_load_kind(TextView text) {
  struct Word {
    TextView text;
    FoundationLoadKind kind;
  };
  static constexpr std::array<Word, 13> kWords = {{
      {u"永久", FoundationLoadKind::kPermanent},
      {u"恒", FoundationLoadKind::kPermanent},
      {u"恒载", FoundationLoadKind::kPermanent},
      {u"永久荷载", FoundationLoadKind::kPermanent},
      {u"可变", FoundationLoadKind::kVariable},
      {u"活", FoundationLoadKind::kVariable},
      {u"活载", FoundationLoadKind::kVariable},
      {u"可变荷载", FoundationLoadKind::kVariable},
      {u"风", FoundationLoadKind::kWind},
      {u"风载", FoundationLoadKind::kWind},
      {u"风荷载", FoundationLoadKind::kWind},
      {u"地震", FoundationLoadKind::kSeismic},
      {u"地震作用", FoundationLoadKind::kSeismic},
  }};
  const TextView word = trim(text);
  for (const Word& w : kWords) {
    if (w.text == word) return static_cast<int16_t>(w.kind);
  }
  return 0;
}

}  // namespace datafile

namespace {

using datafile::FoundationLoadKind;

// A refused cell: the error number, the cell (1-based, 0 for the whole
// table) and its text.
struct CellFault {
  int32_t error = 0;
  int32_t row = 0;
  int32_t column = 0;
  Text cell;
};

bool blank(TextView text) { return trim(text).empty(); }

Text cell_text(const platform::ListView& view, int32_t item, int32_t column) {
  return column == 0 ? view.ItemText(item) : view.SubItem(item, column);
}

// The rows of the table up to the last with a cell that is not blank.
int32_t rows_in_use(const platform::ListView& view) {
  const int32_t columns = std::max(view.ColumnHeadersCount(), 1);
  for (int32_t item = view.ListItemsCount(); item >= 1; --item) {
    for (int32_t column = 0; column < columns; ++column) {
      if (!blank(cell_text(view, item, column))) return item;
    }
  }
  return 0;
}

// The checked number of a cell, or the fault of the cell (row and column
// 1-based).
std::optional<CellFault> check_number(TextView cell, const frame::NumberSymbols& symbols,
                                      int32_t row, int32_t column, double& out) {
  const std::optional<double> value = frame::parse_number(cell, symbols);
  if (!value) return CellFault{error_id::kCellNotANumber, row, column, Text(cell)};
  if (std::fabs(*value) > datafile::kMaxFoundationForce) {
    return CellFault{error_id::kCellBeyondLimit, row, column, Text(cell)};
  }
  out = *value;
  return std::nullopt;
}

// The checks of a footing's load cases (cells: U2 = 6), in row order and
// each row from left to right; fills the forces and kinds when they pass.
std::optional<CellFault> check_loads(const Array2<Text>& cells, const frame::NumberSymbols& symbols,
                                     Array2<double>& forces, std::vector<int16_t>& kinds) {
  const int32_t n = cells.U1 + 1;
  if (cells.U2 != datafile::kFoundationLoadColumns - 1 || n <= 0) {
    return CellFault{error_id::kNoLoadCase, 0, 0, {}};
  }
  if (n > datafile::kMaxFoundationLoadCases) {
    return CellFault{error_id::kTooManyLoadCases, 0, 0, frame::general_number_text(n, symbols)};
  }
  Array2<double> f(n - 1, datafile::kFoundationForces - 1);
  std::vector<int16_t> k(static_cast<std::size_t>(n));
  std::set<Text> names;
  bool permanent = false;
  for (int32_t i = 0; i < n; ++i) {
    const Text& name = cells(i, datafile::kFoundationNameColumn);
    const Text& kind = cells(i, datafile::kFoundationKindColumn);
    if (blank(name)) return CellFault{error_id::kLoadCaseUnnamed, i + 1, 1, name};
    if (!names.insert(Text(trim(name))).second) {
      return CellFault{error_id::kLoadCaseTwice, i + 1, 1, name};
    }
    k[static_cast<std::size_t>(i)] = datafile::foundation_load_kind(kind);
    if (k[static_cast<std::size_t>(i)] == 0) {
      return CellFault{error_id::kLoadKindUnknown, i + 1, 2, kind};
    }
    permanent = permanent || k[static_cast<std::size_t>(i)] ==
                                 static_cast<int16_t>(FoundationLoadKind::kPermanent);
    for (int32_t j = 0; j < datafile::kFoundationForces; ++j) {
      const int32_t column = datafile::kFoundationFirstForceColumn + j;
      if (auto fault = check_number(cells(i, column), symbols, i + 1, column + 1, f(i, j))) {
        return fault;
      }
    }
  }
  if (!permanent) return CellFault{error_id::kNoPermanentLoad, 0, 0, {}};
  forces = std::move(f);
  kinds = std::move(k);
  return std::nullopt;
}

// The checks of the footing numbers (from the table's column `column`, 0-based).
std::optional<CellFault> check_footings(const std::vector<Text>& numbers, int32_t column) {
  if (numbers.empty()) return CellFault{error_id::kNoFooting, 0, 0, {}};
  std::set<Text> seen;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const int32_t row = static_cast<int32_t>(i) + 1;
    if (blank(numbers[i]))
      return CellFault{error_id::kFootingUnnumbered, row, column + 1, numbers[i]};
    if (!seen.insert(Text(trim(numbers[i]))).second) {
      return CellFault{error_id::kFootingNumberTwice, row, column + 1, numbers[i]};
    }
  }
  return std::nullopt;
}

// One column of the table's rows in use.
std::vector<Text> column_of(const platform::ListView& view, int32_t column) {
  if (column < 0 || column >= std::max(view.ColumnHeadersCount(), 1)) {
    throw Fault(FaultKind::IndexOutOfRange, "a column the table does not have");
  }
  const int32_t rows = rows_in_use(view);
  std::vector<Text> out;
  out.reserve(static_cast<std::size_t>(rows));
  for (int32_t item = 1; item <= rows; ++item) out.push_back(cell_text(view, item, column));
  return out;
}

// The checks that the file's data must pass, as the readers would: the
// footing numbers, one file per footing, and each footing's load cases
// (its rows up to the last that is not blank). The footings' cells into
// `loads`.
bool foundation_valid(const std::vector<Text>& numbers, const std::vector<Text>& files,
                      const std::vector<Array2<Text>>& loads, const frame::NumberSymbols& symbols) {
  if (check_footings(numbers, datafile::kFootingNumberColumn) || files.size() != numbers.size() ||
      loads.size() != numbers.size()) {
    return false;
  }
  Array2<double> forces;
  std::vector<int16_t> kinds;
  return std::all_of(loads.begin(), loads.end(), [&](const Array2<Text>& cells) {
    return !check_loads(cells, symbols, forces, kinds);
  });
}

// The text as the file gives it back: through code page 936, where a
// character with no form becomes "?" (two names may then become one).
Text as_stored(TextView text) { return codepage::from_ansi(codepage::to_ansi(text)); }

// The load cases of footing `k` of the file's 3-D array: its rows up to the
// last that is not blank.
Array2<Text> footing_loads(const Array3<Text>& all, int32_t k) {
  int32_t rows = all.U2 + 1;
  while (rows > 0) {
    bool empty = true;
    for (int32_t j = 0; j <= all.U3 && empty; ++j) empty = blank(all(k, rows - 1, j));
    if (!empty) break;
    --rows;
  }
  Array2<Text> cells(rows - 1, all.U3);
  for (int32_t i = 0; i < rows; ++i) {
    for (int32_t j = 0; j <= all.U3; ++j) cells(i, j) = all(k, i, j);
  }
  return cells;
}

void fill_table(platform::ListView& view, const Array2<Text>& cells) {
  view.ListItemsClear();
  for (int32_t i = 0; i <= cells.U1; ++i) {
    const int32_t item = view.ListItemsAdd(cells(i, 0));
    for (int32_t j = 1; j <= cells.U2; ++j) view.SubItem(item, j, cells(i, j));
  }
}

}  // namespace

void clsLoadSave::clear_cell() {
  error_row_ = 0;
  error_column_ = 0;
  error_place_.clear();
  error_cell_.clear();
}

bool clsLoadSave::refuse_cell(int32_t error, int32_t row, int32_t column, TextView cell) {
  clear_cell();
  error_ = error;
  error_row_ = row;
  error_column_ = column;
  error_cell_ = cell;
  if (row > 0) {
    error_place_ = replace_all(
        replace_all(text(text_id::kCellPlace), u"%%1%", frame::general_number_text(row, symbols_)),
        u"%%2%", frame::general_number_text(column, symbols_));
  }
  return false;
}

// ---- Readers of the tables -------------------------------------------------------

bool clsLoadSave::ReadCellToArray_Com_Text(const platform::ListView& lstView, int32_t iColFirst,
                                           int32_t iColLast, Array2<Text>& tCell,
                                           int32_t iNumColFirst) {
  clear_cell();
  if (iColFirst < 0 || iColLast < iColFirst ||
      iColLast >= std::max(lstView.ColumnHeadersCount(), 1)) {
    throw Fault(FaultKind::IndexOutOfRange, "a column range the table does not have");
  }
  const int32_t rows = rows_in_use(lstView);
  Array2<Text> cells(rows - 1, iColLast - iColFirst);
  for (int32_t i = 0; i < rows; ++i) {
    for (int32_t column = iColFirst; column <= iColLast; ++column) {
      Text& cell = cells(i, column - iColFirst);
      cell = cell_text(lstView, i + 1, column);
      double value = 0;
      if (iNumColFirst >= iColFirst && column >= iNumColFirst) {
        if (auto fault = check_number(cell, symbols_, i + 1, column + 1, value)) {
          return refuse_cell(fault->error, fault->row, fault->column, fault->cell);
        }
      }
    }
  }
  tCell = std::move(cells);
  return true;
}

bool clsLoadSave::ReadCellToArray_Gk_ZhuBh_Text(const platform::ListView& lstView,
                                                std::vector<Text>& tGk_ZhuBh, int32_t iCol) {
  clear_cell();
  std::vector<Text> numbers = column_of(lstView, iCol);
  if (auto fault = check_footings(numbers, iCol)) {
    return refuse_cell(fault->error, fault->row, fault->column, fault->cell);
  }
  tGk_ZhuBh = std::move(numbers);
  return true;
}

bool clsLoadSave::ReadCellToArray_Gk_FileInfo_Text(const platform::ListView& lstView,
                                                   std::vector<Text>& tGk_FileInfo, int32_t iCol) {
  clear_cell();
  std::vector<Text> files = column_of(lstView, iCol);
  if (files.empty()) return refuse_cell(error_id::kNoFooting, 0, 0, {});
  tGk_FileInfo = std::move(files);
  return true;
}

bool clsLoadSave::ReadCellToArray_Gk_Nl_Text(const platform::ListView& lstView,
                                             Array2<Text>& tGk_Nl, Array2<double>& dGk_Nl,
                                             std::vector<int16_t>& iGk_Kind) {
  Array2<Text> cells;
  ReadCellToArray_Com_Text(lstView, 0, datafile::kFoundationLoadColumns - 1, cells);
  Array2<double> forces;
  std::vector<int16_t> kinds;
  if (auto fault = check_loads(cells, symbols_, forces, kinds)) {
    return refuse_cell(fault->error, fault->row, fault->column, fault->cell);
  }
  tGk_Nl = std::move(cells);
  dGk_Nl = std::move(forces);
  iGk_Kind = std::move(kinds);
  return true;
}

// ---- The project data file ------------------------------------------------------

bool clsLoadSave::SaveDataFoundation(const std::vector<Text>& tGk_ZhuBh,
                                     const std::vector<Text>& tGk_FileInfo,
                                     const std::vector<Array2<Text>>& tGk_Nl) {
  datafile::OpenFile* file = file_for(true);
  if (!file) return false;
  // The data is checked as the file will give it back.
  std::vector<Text> numbers;
  for (const Text& number : tGk_ZhuBh) numbers.push_back(as_stored(number));
  std::vector<Array2<Text>> loads = tGk_Nl;
  for (Array2<Text>& cells : loads) {
    for (Text& cell : cells.Values) cell = as_stored(cell);
  }
  if (!foundation_valid(numbers, tGk_FileInfo, loads, symbols_)) {
    file->write_failed = true;
    error_ = error_id::kDataFileNotSaved;
    return false;
  }
  const int32_t footings = static_cast<int32_t>(tGk_ZhuBh.size());
  int32_t most = 0;
  for (const Array2<Text>& cells : tGk_Nl) most = std::max(most, cells.U1 + 1);
  Array3<Text> all(footings - 1, most - 1, datafile::kFoundationLoadColumns - 1);
  for (int32_t k = 0; k < footings; ++k) {
    const Array2<Text>& cells = tGk_Nl[static_cast<std::size_t>(k)];
    for (int32_t i = 0; i <= cells.U1; ++i) {
      for (int32_t j = 0; j <= cells.U2; ++j) all(k, i, j) = cells(i, j);
    }
  }
  bool ok = WriteFile_Array_Str_1A(tGk_ZhuBh, datafile::kFootingNumbersName);
  ok = WriteFile_Array_Str_1A(tGk_FileInfo, datafile::kFootingFilesName) && ok;
  return WriteFile_Array_Str_3A(all, datafile::kFoundationLoadsName) && ok;
}

bool clsLoadSave::bLoadDataFoundation(std::vector<Text>& tGk_ZhuBh, std::vector<Text>& tGk_FileInfo,
                                      std::vector<Array2<Text>>& tGk_Nl, UseBinRecord& uDR,
                                      platform::ControlArray<platform::ListView>* lstNl) {
  const auto damaged = [this] {
    error_ = error_id::kDataFileDamaged;
    return false;
  };
  // Each group: its name record, then its array.
  const auto name = [&](TextView expected) {
    return ReadFileOneA(uDR) &&
           ((uDR.ID == record_id::kName && uDR.Member == expected) || damaged());
  };
  if (uDR.ID != record_id::kName || uDR.Member != datafile::kFootingNumbersName) return damaged();
  std::vector<Text> numbers;
  std::vector<Text> files;
  Array3<Text> all;
  if (!ReadFile_Array_Str_1A(numbers, uDR) || !name(datafile::kFootingFilesName) ||
      !ReadFile_Array_Str_1A(files, uDR) || !name(datafile::kFoundationLoadsName) ||
      !ReadFile_Array_Str_3A(all, uDR)) {
    return false;
  }
  const int32_t footings = static_cast<int32_t>(numbers.size());
  if (all.U1 != footings - 1 || all.U3 != datafile::kFoundationLoadColumns - 1) return damaged();
  std::vector<Array2<Text>> loads;
  loads.reserve(numbers.size());
  for (int32_t k = 0; k < footings; ++k) loads.push_back(footing_loads(all, k));
  if (!foundation_valid(numbers, files, loads, symbols_)) return damaged();

  if (lstNl) {
    for (int32_t k = 0; k < footings; ++k) {
      if (platform::ListView* view = lstNl->Item(k))
        fill_table(*view, loads[static_cast<std::size_t>(k)]);
    }
  }
  tGk_ZhuBh = std::move(numbers);
  tGk_FileInfo = std::move(files);
  tGk_Nl = std::move(loads);
  return true;
}

}  // namespace zelkora
