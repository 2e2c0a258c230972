// Form state in a project data file: the record patterns in which a
// calculation form saves its controls and data arrays, and the value types
// that the writers and readers of clsLoadSave take (cls_load_save.h, section
// "Form state"; they are defined in form_state.cpp).
//
// Every writer emits a name record, then the records of its pattern; the
// patterns are listed with their numbers in record_numbers.h.
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
//   ls.WriteFile_Check_BsA(chkB, u"chkB");         // 202 "chkB", 2000, 2005, ...
//   ls.WriteFile_ListBox_BsA(lstB);                // 209 "", 2000, 2001, 2005, ...
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
//     if (rec.ID == 209 && rec.Member == u"") ok = ls.ReadFile_ListBox_BA(lstB, rec);
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

#include "zelkora/datafile/form_values.h"
#include "zelkora/platform/controls.h"

namespace zelkora {

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
