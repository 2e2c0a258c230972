// Foundation data: the load cases of the footings of a foundation program (a
// spread footing, a pile cap), read from the form's tables and kept in the
// project data file by clsLoadSave (cls_load_save.h, section "Foundation
// data"; defined in foundation_data.cpp).
//
// The load table of a footing is a report-form list view, one row per load
// case, seven columns:
//
//   column   0 (item text)  1     2    3     4     5     6
//   caption  工况名称       类别  N    Mx    My    Vx    Vy
//   unit                          kN   kN·m  kN·m  kN    kN
//
// The kind is "永久" (permanent), "可变" (variable), "风" (wind) or "地震"
// (seismic); the usual short and long forms are accepted too: "恒", "恒载",
// "永久荷载" (permanent), "活", "活载", "可变荷载" (variable), "风载",
// "风荷载" (wind), "地震作用" (seismic). Blanks around a name, a kind or a
// number do not count. Rows at the end of a table whose every cell is blank
// (a new-row line the form keeps) are not load cases; a blank row among the
// cases is a case without a name.
//
// The footing table: one row per footing, its number ("J-1", "Z3") in
// column 0 and the file its loads came from in column 1 (may be empty). A
// form of a single footing hands over a one-row table.
//
// The readers (ReadCellToArray_*) check the cells in row order, each row from
// left to right, and stop at the first bad one: the error number is
// last_error(), the cell is error_row() and error_column() (1-based; 0 for a
// fault of the whole table), error_place() says it in words ("第 2 行第 3 列"),
// error_cell() is its text. The numbers, with the fills of their messages
// (clsErrChr::GenMsgErrorW(n, C1 = error_place(), V1 = error_cell())):
//
//   3601000  no load case in the table
//   3601001  more than 50 load cases (V1 the count)
//   3601002  a load case without a name
//   3601003  a name given twice (the second one)
//   3601004  a kind that is none of the above
//   3601005  a force that is not a number in the user's notation
//   3601006  a force beyond ±3E14 (the limits of an "S" entry)
//   3601007  no permanent load case
//   3601010  no footing in the footing table
//   3601011  a footing without a number
//   3601012  a footing number given twice (the second one)
//
// Names and footing numbers are compared after their blanks are removed,
// in binary (case counts). Numbers follow the shared number rules in the
// user's notation (frame/numbers.h): "1,250.5" with the decimal point.
//
// The arrays (all indexed from 0):
//
//   tGk_ZhuBh     std::vector<Text>, one footing number per footing
//   tGk_FileInfo  std::vector<Text>, one file per footing, the same size
//   tGk_Nl        per footing an Array2<Text> (U1 = cases - 1, U2 = 6): the
//                 seven cells of each case as the table holds them
//   dGk_Nl        Array2<double> (U1 = cases - 1, U2 = 4): N, Mx, My, Vx, Vy
//   iGk_Kind      std::vector<int16_t>, one FoundationLoadKind per case
//
// In the project data file, between the program's own records, in the
// patterns of the named arrays (form_state.h):
//
//   100 "Gk_ZhuBh"     1001 K - 1; 10000 per footing
//   100 "Gk_FileInfo"  1001 K - 1; 10000 per footing
//   100 "Gk_Nl"        1001 K - 1; 1002 M - 1; 1003 6; 10000 per cell, the
//                      cell fastest, then the case, then the footing
//
// K footings (at least one), M the most cases of any footing: a footing
// with fewer cases has rows of blank cells after its own. SaveDataFoundation
// writes the three groups only when the data, as the file will give it back
// (texts through code page 936: "😀" and "😁" both come back as "?"), would
// pass the readers' checks; else 2003, no record, and the file can no longer
// be saved, as for a member that is too long. So a file it saved loads, and
// saving what was loaded writes the same bytes. bLoadDataFoundation is handed the name record
// "Gk_ZhuBh" and reads the three groups in that order; a group missing or
// out of order, a count larger than the records left, shapes that do not
// agree, or data the readers would refuse is 2001 and changes nothing.
#pragma once

#include <cstdint>

#include "zelkora/platform/text.h"

namespace zelkora::datafile {

// The kind of a load case.
enum class FoundationLoadKind : int16_t { kPermanent = 1, kVariable = 2, kWind = 3, kSeismic = 4 };

// The columns of the load table, and of one case of tGk_Nl.
inline constexpr int32_t kFoundationLoadColumns = 7;
inline constexpr int32_t kFoundationNameColumn = 0;
inline constexpr int32_t kFoundationKindColumn = 1;
inline constexpr int32_t kFoundationFirstForceColumn = 2;  // N, then Mx, My, Vx, Vy
inline constexpr int32_t kFoundationForces = 5;

// The columns of the footing table.
inline constexpr int32_t kFootingNumberColumn = 0;
inline constexpr int32_t kFootingFileColumn = 1;

// The most load cases of one footing.
inline constexpr int32_t kMaxFoundationLoadCases = 50;
// The largest force an entry may have (the bound of an "S" entry).
inline constexpr double kMaxFoundationForce = 3e14;

// The names of the groups in the project data file.
inline constexpr TextView kFootingNumbersName = u"Gk_ZhuBh";
inline constexpr TextView kFootingFilesName = u"Gk_FileInfo";
inline constexpr TextView kFoundationLoadsName = u"Gk_Nl";

// The kind a cell's text names (blanks around it removed), or 0.
int16_t foundation_load_kind(TextView text);

}  // namespace zelkora::datafile
