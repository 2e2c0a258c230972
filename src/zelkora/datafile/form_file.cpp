// The frame of a form's data file.
#include "zelkora/datafile/form_file.h"
#include "zelkora/frame/catalogue.h"

#include <algorithm>
#include <limits>

#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/record_file.h"
#include "zelkora/datafile/record_numbers.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/error_numbers.h"

namespace zelkora::datafile {

namespace {

// Reads the frame of the open file, handing the records inside to `group`:
// at most `most` records up to the record 0 `eof`.
bool read_frame(clsLoadSave& ls, TextView program, TextView accepted, int32_t most, TextView eof,
                const std::function<bool()>& group) {
  if (!ls.ReadFileOneW() || ls.ID() != record_id::kRevision) return false;
  if (!program.empty()) {
    if (!ls.ReadFileOneW() || ls.ID() != record_id::kProgram) return false;
    if (ls.Member() != program && (accepted.empty() || ls.Member() != accepted)) return false;
  }
  int32_t count = 0;
  for (;;) {
    if (!ls.ReadFileOneW() || ls.bReadMsgError(count, most)) return false;
    if (ls.ID() == record_id::kRevision && ls.Member() == eof) return true;
    if (!group()) return false;
  }
}

}  // namespace

bool FormFile::save(clsLoadSave& ls, TextView file, TextView program,
                    const std::function<bool()>& groups) {
  bool ok = ls.OpenFileA(file, ls.text(text_id::kOutput));
  if (ok) {
    ok = ls.WriteFile_RevisionA();
    if (!program.empty()) ok = ls.WriteFile_TempStrA(program) && ok;
    ok = groups() && ok;
    if (ok) {
      ok = ls.WriteFileEofAndCloseFileA();
    } else {
      // A group that could not be written whole: the file is dropped and the
      // previous one stays.
      take_file(ls.FileOpenID());
      ls.FileOpenID(0);
    }
  }
  if (!ok) ls.error_ = error_id::kDataFileNotSaved;
  return ok;
}

bool FormFile::load(clsLoadSave& ls, TextView file, TextView program, TextView accepted,
                    const std::function<bool()>& group) {
  bool ok = ls.OpenFileA(file, ls.text(text_id::kInput));
  if (ok) {
    const int32_t most = static_cast<int32_t>(
        std::min<int64_t>(ls.records_left(), std::numeric_limits<int32_t>::max() - 1) + 1);
    ok = read_frame(ls, program, accepted, most, ls.text(text_id::kEof), group);
    ls.CloseFileA();
  }
  if (!ok) ls.error_ = error_id::kDataFileNotOpened;
  return ok;
}

}  // namespace zelkora::datafile
