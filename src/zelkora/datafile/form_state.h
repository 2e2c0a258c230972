// Form state in a project data file: the record patterns in which a
// calculation form saves its controls and data arrays, and the value types
// that the writers and readers of clsLoadSave take (cls_load_save.h, section
// "Form state"; they are defined in form_state.cpp).
//
// Every writer emits a name record carrying the caller's name, then the
// records of its pattern:
//
//   what                  name  then
//   check box (each)      202   2000 index; 2005 "Value" (0, 1, 2)
//   option button (each)  207   2000 index; 2005 "Value" ("True" / "False")
//   combo box (each)      204   2000 index; [2001 "ListCount"; 10000 per item];
//                               2005 "Text"
//   list box (each)       209   2000 index; 2001 "ListCount"; 2005 "Selected"
//                               per item ("True" / "False")
//   toolbar button        220   2000 Index; 20000 "1"; 200005 "Value" of button Index
//   list view             225   2000 Index; 2001 columns; 2002 items; per item
//                               10000 its text, then 10001 per sub-item 1..columns-1
//   column force record   453   2000 Index; 4001..4008 bCal, iLoadCase, N, Mx,
//                               My, Vx, Vy, T
//   1-D array             100   1001 U; 10000 per element 0..U
//   2-D array             100   1001 U1; 1002 U2; 10000 per element, second index fastest
//   3-D array             100   1001 U1; 1002 U2; 1003 U3; 10000 per element, the
//                               third index fastest, then the second
//   single value          100   2000 the value (WriteFile_100A)
//
// "(each)": the control-array writers repeat the whole group for every
// element from LBound to UBound, skipping gaps; the index record carries the
// element's index. A check-box array 0..2 is nine records.
//
// Values are texts: numbers in the general number text of the user's
// notation (the number symbols of the clsLoadSave object, as WriteFile_100A
// writes them; 15 significant digits), booleans "True" and "False", texts in
// code page 936 as the record layer stores them, so a character with no form
// there (an emoji, a character outside GBK) comes back as "?".
//
// Reading. A reader is handed the name record the caller's loop has just met
// (the caller dispatches on ID and Member) and reads the rest of the group
// itself: the A readers into the caller's record `uDR`, the W readers into
// the object's buffer (ID, Member), like ReadFileOneA and ReadFileOneW. Every
// record must carry the number of the pattern and a value of the right kind
// and range (a check box takes 0..2, a toolbar button 0..1; integers are
// rounded half to even, as everywhere). Otherwise, and when the file ends or
// is damaged, the reader returns false with error 2001 and leaves its target
// as it was: a control or array is changed only after its whole group has
// been read. A bound below -1, or more elements than the file has records
// left (or more than kMaxDimension in one dimension), is refused before
// anything is allocated. An index with no control in the caller's array (a
// gap, or a control the form no longer has) is read and ignored.
//
//   zelkora::clsLoadSave ls;
//   ls.OpenFileA(u"beam.zks", u"OutPut");
//   ls.WriteFile_RevisionA();
//   ls.WriteFile_Check_BsA(chkB);                  // 202 "chkB", 2000, 2005, ...
//   ls.WriteFile_Array_Str_1A(tCell, u"tCell");
//   ls.WriteFileEofAndCloseFileA();
//
//   ls.OpenFileA(u"beam.zks", u"InPut");
//   zelkora::UseBinRecord rec;
//   int32_t count = 0;
//   bool ok = true;
//   while (ok && ls.ReadFileOneA(rec) && !(rec.ID == 0 && rec.Member == u"EOF")) {
//     if (ls.bReadMsgError(count, 100000)) break;
//     if (rec.ID == 202 && rec.Member == u"chkB") ok = ls.ReadFile_Check_BA(chkB, rec);
//     if (rec.ID == 100 && rec.Member == u"tCell") ok = ls.ReadFile_Array_Str_1A(tCell, rec);
//   }
//   ls.CloseFileA();                               // !ok: ls.last_error() == 2001
//
// The combo boxes. A combo box's text is an editable entry when its "Style"
// is the drop-down combo and its "BackColor" is the window colour (white, or
// the system window colour); any other combo box (a drop-down list, or one a
// form has greyed to lock it) shows one of its items. A reader gives an
// editable entry the saved text as it is, and any other combo box the saved
// text only when it is one of its items (after the saved list, if any, has
// been restored); otherwise the combo box keeps its text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "zelkora/platform/controls.h"
#include "zelkora/platform/fault.h"

namespace zelkora {

// One set of column forces of a load case, as the column forms keep them.
// Fields in record order 4001..4008; forces in kN, moments in kN·m.
struct rColForce {
  bool bCal = false;      // 4001: the case takes part in the calculation
  int16_t iLoadCase = 0;  // 4002: the number of the load case
  double N = 0;           // 4003: axial force
  double Mx = 0;          // 4004: moment about the x axis
  double My = 0;          // 4005: moment about the y axis
  double Vx = 0;          // 4006: shear along x
  double Vy = 0;          // 4007: shear along y
  double T = 0;           // 4008: torque
  friend bool operator==(const rColForce&, const rColForce&) = default;
};

// A two-dimensional array with the bounds 0..U1 and 0..U2 (an upper bound of
// -1 is an empty dimension), held in one vector with the second index
// running fastest: element (i, j) is Values[i * (U2 + 1) + j].
template <class T>
struct Array2 {
  int32_t U1 = -1;
  int32_t U2 = -1;
  std::vector<T> Values;

  Array2() = default;
  Array2(int32_t u1, int32_t u2) : U1(u1), U2(u2), Values(extent(u1) * extent(u2)) {}

  T& operator()(int32_t i, int32_t j) { return Values[offset(i, j)]; }
  const T& operator()(int32_t i, int32_t j) const { return Values[offset(i, j)]; }
  friend bool operator==(const Array2&, const Array2&) = default;

 private:
  static std::size_t extent(int32_t upper) {
    if (upper < -1) throw Fault(FaultKind::IndexOutOfRange, "array bound below -1");
    return static_cast<std::size_t>(upper) + 1;
  }
  std::size_t offset(int32_t i, int32_t j) const {
    if (i < 0 || i > U1 || j < 0 || j > U2) {
      throw Fault(FaultKind::IndexOutOfRange, "array index out of range");
    }
    return static_cast<std::size_t>(i) * extent(U2) + static_cast<std::size_t>(j);
  }
};

// A three-dimensional array with the bounds 0..U1, 0..U2, 0..U3, the third
// index running fastest, then the second: element (i, j, k) is
// Values[(i * (U2 + 1) + j) * (U3 + 1) + k].
template <class T>
struct Array3 {
  int32_t U1 = -1;
  int32_t U2 = -1;
  int32_t U3 = -1;
  std::vector<T> Values;

  Array3() = default;
  Array3(int32_t u1, int32_t u2, int32_t u3)
      : U1(u1), U2(u2), U3(u3), Values(extent(u1) * extent(u2) * extent(u3)) {}

  T& operator()(int32_t i, int32_t j, int32_t k) { return Values[offset(i, j, k)]; }
  const T& operator()(int32_t i, int32_t j, int32_t k) const { return Values[offset(i, j, k)]; }
  friend bool operator==(const Array3&, const Array3&) = default;

 private:
  static std::size_t extent(int32_t upper) {
    if (upper < -1) throw Fault(FaultKind::IndexOutOfRange, "array bound below -1");
    return static_cast<std::size_t>(upper) + 1;
  }
  std::size_t offset(int32_t i, int32_t j, int32_t k) const {
    if (i < 0 || i > U1 || j < 0 || j > U2 || k < 0 || k > U3) {
      throw Fault(FaultKind::IndexOutOfRange, "array index out of range");
    }
    return (static_cast<std::size_t>(i) * extent(U2) + static_cast<std::size_t>(j)) * extent(U3) +
           static_cast<std::size_t>(k);
  }
};

namespace datafile {

// The most elements a reader accepts in one dimension of an array (whatever
// the file holds, the elements of all dimensions together must also fit in
// the records it has left).
inline constexpr int64_t kMaxDimension = int64_t{1} << 24;

// The window colours of a combo box whose text can be typed.
inline constexpr uint32_t kWindowWhite = 0xFFFFFF;
inline constexpr uint32_t kSystemWindowColour = 0x80000005;

// Whether the combo box's text is an editable entry (see above).
bool is_editable_entry(const platform::ComboBox& combo);

// Reads and writes the groups of records for clsLoadSave (form_state.cpp).
class FormRecords;

}  // namespace datafile
}  // namespace zelkora
