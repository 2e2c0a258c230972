/// The error numbers the library's code sets by name (lError_ID of clsErrChr,
/// last_error() of clsLoadSave, the lErr outputs of the rebar readers), each
/// named once. clsErrChr composes the message of each (GenMsgErrorW); a
/// program may use them, and any other number of the catalogue's messages. @file
#pragma once

#include <cstdint>

namespace zelkora::error_id {

// ---- Entries -------------------------------------------------------------------
inline constexpr int32_t kNotANumber = 101;         ///< "应输入有效数值"
inline constexpr int32_t kNotAGrade = 104;          ///< a concrete grade not in the list
inline constexpr int32_t kNotInList = 106;          ///< "应从%%2%中选取或输入"
inline constexpr int32_t kAboveLimit = 120;         ///< above a limit it names ("I": 32767)
inline constexpr int32_t kAboveLong = 121;          ///< an "L" entry above 1E9
inline constexpr int32_t kAboveSingle = 122;        ///< an "S" entry above 3E14
inline constexpr int32_t kBelowSingle = 123;        ///< an "S" or "L" entry below -3E14
inline constexpr int32_t kFailsLess = 153;          ///< a value not below the limit of "<"
inline constexpr int32_t kFailsLessEqual = 154;     ///< above the limit of "<="
inline constexpr int32_t kFailsGreater = 155;       ///< not above the limit of ">"
inline constexpr int32_t kFailsGreaterEqual = 166;  ///< below the limit of ">="
inline constexpr int32_t kFailsEqual = 168;         ///< other than the limit of "="
inline constexpr int32_t kFailsNotEqual = 169;      ///< equal to the limit of "<>"
inline constexpr int32_t kPartCount = 200;          ///< more (or fewer) parts than wanted
inline constexpr int32_t kOutOfRange = 333;         ///< outside an interval
inline constexpr int32_t kSlabBarInvalid = 503;     ///< not a slab bar "10@200"

// ---- Design rules of the calculation programs ------------------------------------
inline constexpr int32_t kXiAboveBalanced = 3010;  ///< ξ above ξb: V1 ξ, V2 ξb

// ---- Project data files ----------------------------------------------------------
inline constexpr int32_t kDataFileDamaged = 2001;    ///< a record cannot be read
inline constexpr int32_t kDataFileNotOpened = 2002;  ///< the file cannot be opened (loading)
inline constexpr int32_t kDataFileNotSaved = 2003;   ///< the file cannot be saved

// ---- Foundation data (clsLoadSave's load cases and footings) -----------------------
inline constexpr int32_t kNoLoadCase = 3601000;          ///< no load case in the table
inline constexpr int32_t kTooManyLoadCases = 3601001;    ///< more than 50
inline constexpr int32_t kLoadCaseUnnamed = 3601002;     ///< a load case without a name
inline constexpr int32_t kLoadCaseTwice = 3601003;       ///< a name given twice
inline constexpr int32_t kLoadKindUnknown = 3601004;     ///< not 永久, 可变, 风, 地震
inline constexpr int32_t kCellNotANumber = 3601005;      ///< a force that is no number
inline constexpr int32_t kCellBeyondLimit = 3601006;     ///< a force beyond ±3E14
inline constexpr int32_t kNoPermanentLoad = 3601007;     ///< no permanent load case
inline constexpr int32_t kNoFooting = 3601010;           ///< no footing in the table
inline constexpr int32_t kFootingUnnumbered = 3601011;   ///< a footing without a number
inline constexpr int32_t kFootingNumberTwice = 3601012;  ///< a footing number given twice

// ---- Bar texts -------------------------------------------------------------------
inline constexpr int32_t kBarNotPositive = 3000100;          ///< no separator, number <= 0
inline constexpr int32_t kBarNotNumber = 3000110;            ///< no separator, not a number
inline constexpr int32_t kBarDiameterNotPositive = 3000120;  ///< a diameter <= 0
inline constexpr int32_t kBarDiameterNotNumber = 3000130;    ///< a diameter that is not a number
inline constexpr int32_t kBarCountBelowOne = 3000140;        ///< a count below one
inline constexpr int32_t kBarCountNotNumber = 3000150;       ///< a count that is not a number

// ---- The library's own -------------------------------------------------------------
/// A point outside a table of values (clsCharacter::dInterpolate): the coordinate's
/// caption, its value and the table's range.
inline constexpr int32_t kOutsideTable = 39997;

// ---- The caller's mistake --------------------------------------------------------
inline constexpr int32_t kInternal = 39999;  ///< an unknown criterion or a damaged table of
                                             ///< values; ends with its number

}  // namespace zelkora::error_id
