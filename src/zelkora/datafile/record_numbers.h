/// The record numbers of the project data files, each named once: the frame
/// of a file and the patterns in which clsLoadSave's form-state writers save
/// a form's controls and arrays. A program's own records (WriteFileOneA) take
/// numbers these patterns leave free.
///
/// A file is a sequence of records, each an ID (4 bytes, little-endian), the
/// byte length of its member (2 bytes) and the member in code page 936. It
/// starts with the revision record and ends with record 0 "EOF".
///
/// Every writer emits a name record carrying the caller's name (the empty
/// text when the caller gives none), then the records of its pattern:
/// @code{.unparsed}
///   what                  name  then
///   check box (each)      202   2000 index; 2005 "Value" (0, 1, 2)
///   option button (each)  207   2000 index; 2005 "Value" ("True" / "False")
///   combo box (each)      204   2000 index; [2001 "ListCount"; 10000 per item];
///                               2005 "Text"
///   list box (each)       209   2000 index; 2001 "ListCount"; 2005 "Selected"
///                               per item ("True" / "False")
///   toolbar button        220   2000 Index; 20000 "1"; 200005 "Value" of button Index
///   list view             225   2000 Index; 2001 columns; 2002 items; per item
///                               10000 its text, then 10001 per sub-item 1..columns-1
///   column force record   453   2000 Index; 4001..4008 bCal, iLoadCase, N, Mx,
///                               My, Vx, Vy, T
///   1-D array             100   1001 U; 10000 per element 0..U
///   2-D array             100   1001 U1; 1002 U2; 10000 per element, second index fastest
///   3-D array             100   1001 U1; 1002 U2; 1003 U3; 10000 per element, the
///                               third index fastest, then the second
///   single value          100   2000 the value (WriteFile_100A)
/// @endcode
/// "(each)": the control-array writers repeat the whole group for every
/// element from LBound to UBound, skipping gaps; the index record carries the
/// element's index. A check-box array 0..2 is nine records. @file
#pragma once

#include <cstdint>

namespace zelkora::record_id {

// ---- The frame -------------------------------------------------------------------
inline constexpr int32_t kRevision = 0;   ///< the first record; also the "EOF" record
inline constexpr int32_t kName = 100;     ///< a key of WriteFile_100A, or an array's name
inline constexpr int32_t kProgram = 198;  ///< WriteFile_TempStrA: the program's file identifier

// ---- Form state --------------------------------------------------------------------
inline constexpr int32_t kCheckBox = 202;         ///< check box (each)
inline constexpr int32_t kComboBox = 204;         ///< combo box (each)
inline constexpr int32_t kOptionButton = 207;     ///< option button (each)
inline constexpr int32_t kListBox = 209;          ///< list box (each)
inline constexpr int32_t kToolbar = 220;          ///< toolbar button
inline constexpr int32_t kListView = 225;         ///< list view
inline constexpr int32_t kColForce = 453;         ///< column force record
inline constexpr int32_t kBound1 = 1001;          ///< an array's first upper bound, U or U1
inline constexpr int32_t kBound2 = 1002;          ///< an array's second upper bound, U2
inline constexpr int32_t kBound3 = 1003;          ///< an array's third upper bound, U3
inline constexpr int32_t kIndex = 2000;           ///< also the value of WriteFile_100A
inline constexpr int32_t kCount = 2001;           ///< list count; list view columns
inline constexpr int32_t kItemCount = 2002;       ///< list view items
inline constexpr int32_t kValue = 2005;           ///< the control's "Value", "Text" or "Selected"
inline constexpr int32_t kColForceFirst = 4001;   ///< to 4008
inline constexpr int32_t kElement = 10000;        ///< array element, list item, list view item
inline constexpr int32_t kSubItem = 10001;        ///< a list view item's sub-item
inline constexpr int32_t kToolbarMark = 20000;    ///< a toolbar button's group
inline constexpr int32_t kToolbarValue = 200005;  ///< a toolbar button's "Value"

}  // namespace zelkora::record_id
