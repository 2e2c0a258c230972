// The frame of a form's data file, the one protocol of every form that saves
// and loads itself in one call (clsLoadSave::bLoadOrSaveData for a form's
// controls, clsGridCell::bLoadOrSaveData for a property grid's values):
//
//   record 0     the revision (WriteFile_RevisionA)
//   record 198   the program's file identifier, when the form gives one
//   ...          the form's named groups
//   record 0     "EOF"
//
// Saving writes the whole file or leaves the previous one. Loading reads the
// whole file before the form changes anything: the revision first, then
// (when the form gives one) an identifier equal to the program's or to the
// one it also accepts, then every record up to "EOF", at most as many as the
// file can hold. A failure answers false with last_error() the number that
// lLoadSaveMode gives the mode: 2003 for a save, 2002 for a load (a file that
// cannot be opened, is damaged, or belongs to another program).
#pragma once

#include <functional>

#include "zelkora/platform/text.h"

namespace zelkora {
class clsLoadSave;
}

namespace zelkora::datafile {

struct FormFile {
  // Saves `file`: the frame around the records that `groups` writes (true
  // when they all were written).
  static bool save(clsLoadSave& ls, TextView file, TextView program,
                   const std::function<bool()>& groups);

  // Loads `file`: each record between the frame is read into the object's
  // buffer (ID, Member) and handed to `group`, which reads the rest of a
  // group it knows through the W readers and ignores any other record; false
  // from `group` is a damaged file.
  static bool load(clsLoadSave& ls, TextView file, TextView program, TextView accepted,
                   const std::function<bool()>& group);
};

}  // namespace zelkora::datafile
