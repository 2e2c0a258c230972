// The record numbers of the project data files, each named once: the frame
// of a file and the patterns of the form state (the table of form_state.h).
#pragma once

#include <cstdint>

namespace zelkora::record_id {

// ---- The frame -------------------------------------------------------------------
inline constexpr int32_t kRevision = 0;   // the first record; also the "EOF" record
inline constexpr int32_t kName = 100;     // a key of WriteFile_100A, or an array's name
inline constexpr int32_t kProgram = 198;  // WriteFile_TempStrA: the program's file identifier

// ---- Form state --------------------------------------------------------------------
inline constexpr int32_t kCheckBox = 202;
inline constexpr int32_t kComboBox = 204;
inline constexpr int32_t kOptionButton = 207;
inline constexpr int32_t kListBox = 209;
inline constexpr int32_t kToolbar = 220;
inline constexpr int32_t kListView = 225;
inline constexpr int32_t kColForce = 453;
inline constexpr int32_t kBound1 = 1001;
inline constexpr int32_t kBound2 = 1002;
inline constexpr int32_t kBound3 = 1003;
inline constexpr int32_t kIndex = 2000;      // also the value of WriteFile_100A
inline constexpr int32_t kCount = 2001;      // list count; list view columns
inline constexpr int32_t kItemCount = 2002;  // list view items
inline constexpr int32_t kValue = 2005;
inline constexpr int32_t kColForceFirst = 4001;  // to 4008
inline constexpr int32_t kElement = 10000;       // array element, list item, list view item
inline constexpr int32_t kSubItem = 10001;
inline constexpr int32_t kToolbarMark = 20000;
inline constexpr int32_t kToolbarValue = 200005;

}  // namespace zelkora::record_id
