// clsLoadSave: project data files and the saving and restoring of form state.
// The object holds one suite service object, for its questions about files.
//
// A project data file is a sequence of records (`UseBinRecord`: an ID and a
// text member; the byte layout is in record_file.h), opened by the revision
// record and closed by the record 0 "EOF":
//
//   zelkora::clsLoadSave ls;
//   if (ls.OpenFileA(u"/p/beam.zks", u"OutPut")) {  // a.zks copied to a.zk$ first
//     ls.WriteFile_RevisionA();                       // record 0, the revision
//     ls.WriteFile_100A(u"dB", 250.0);                // records 100 "dB", 2000 "250"
//     if (!ls.WriteFileEofAndCloseFileA()) report(ls.last_error());  // 2003
//   }
//
//   int32_t count = 0;
//   if (ls.OpenFileA(u"/p/beam.zks", u"InPut")) {
//     do {
//       ls.ReadFileOneW();                            // ls.ID(), ls.Member()
//       if (ls.bReadMsgError(count, 100000)) { report(2001); break; }
//     } while (!(ls.ID() == 0 && ls.Member() == u"EOF"));
//     ls.CloseFileA();
//   }
//
// Failures are error numbers, read with `last_error()` (0 when none) and
// mostly also the false result of the operation; `OpenFileA` clears it:
//  - 2002: the file could not be opened for reading ("InPut", and the
//    read-and-write mode);
//  - 2001: a record could not be read (the end of the file, a damaged
//    record); the record buffer is then as it was;
//  - 2003: the file could not be saved: it could not be created, the backup
//    copy could not be made, a write failed, a member was too long, or the
//    final replacement failed. The previous file is then as it was.
// A Fault (FaultKind::File) is thrown for a file number that is not open
// (or not open for what is asked: reading a file opened for "OutPut",
// writing one opened for "InPut"), and by `iFreeFileA` when all 255 numbers
// are taken. `CloseFileA` on a number that is not open does nothing.
//
// Saving never destroys the previous file: "OutPut" writes a new file beside
// the target, which replaces the target only when it is closed complete
// (flushed, synced, renamed, folder synced). Any failure before that point,
// also a process killed while saving, leaves the old file as it was.
//
// The modes of `OpenFileA`, compared without regard to case: "InPut"
// (catalogue 35152) reads; "OutPut" (35150) writes a new content; any other
// text, or none, reads and writes. The read-and-write mode works on a copy
// of the file (or on an empty file when there is none) that replaces the
// file when it is closed; an existing file opened so and never written is
// left alone (a missing one is then created empty, as a binary open does).
//
// The backup copy. Opening for "OutPut" a file that exists and whose
// extension, in lower case, is "zel" (catalogue 35169) or "zks" (35168)
// copies it first to the same name with the last three characters replaced
// by "zk$" (35170), overwriting an older copy (itself safely, so a failed
// copy leaves the older copy whole). The user setting "chkOpt2" (section
// "Options" of the application, catalogue 100, 101, 103) switches it: any
// numeric value other than 0 switches it on, a numeric 0 ("0", " 0 ", "0.0")
// off, and a missing or non-numeric setting on, since users expect the copy.
// A copy that cannot be made fails the opening with 2003 rather than let the
// save go on without it.
//
// Members are written in code page 936, with at most 65,535 bytes: a longer
// member is refused (no record is written, never a truncated one), the
// error number is 2003 and the file can no longer be saved: closing it
// leaves the old file. Values (`WriteFile_100A`) are written as text with
// the shared number rules in the user's notation, as the readers of the
// form state read them back.
//
// Reading never trusts the file: a length is checked against the bytes left
// before anything is allocated, a short or damaged record leaves the buffer
// as it was and moves to the end of the file, so every later read fails too
// and the caller's loop ends through `bReadMsgError`.
//
// File numbers are the process's (1 to 255, see record_file.h): `FileOpenID`
// may be handed to another object. When the object ends, the files it opened
// and did not close are closed; one being written is dropped (the old file
// stays), since a save that was never closed is not complete.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "zelkora/frame/catalogue.h"
#include "zelkora/frame/numbers.h"
#include "zelkora/frame/variant.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/text.h"

namespace zelkora {

namespace datafile {
struct OpenFile;
}

// The unit of a data file.
struct UseBinRecord {
  int32_t ID = 0;
  Text Member;
};

class clsLoadSave {
 public:
  clsLoadSave();
  explicit clsLoadSave(std::shared_ptr<const platform::Platform> platform);
  ~clsLoadSave();
  clsLoadSave(const clsLoadSave&) = delete;
  clsLoadSave& operator=(const clsLoadSave&) = delete;

  // ---- Opening and closing -----------------------------------------------

  // Takes the next free file number into FileOpenID and opens the file in
  // the mode named by `tOpenMode` (see above). False, with FileOpenID 0 and
  // the error number set, when it could not be opened.
  bool OpenFileA(TextView tFileName, TextView tOpenMode = {});
  // The lowest free file number.
  int16_t iFreeFileA() const;
  // Closes FileOpenID; a file being written replaces its target now. False
  // (2003) when the file could not be saved, or when the number was not open.
  bool CloseFileA();
  // Writes record 0 "EOF" (catalogue 32031), then closes the file.
  bool WriteFileEofAndCloseFileA();

  // ---- Records -------------------------------------------------------------

  // Fills the record buffer and appends it at the current position.
  bool WriteFileOneA(int32_t ID, TextView tMember);
  // Reads the next record into `recBin`, or into the object's buffer.
  bool ReadFileOneA(UseBinRecord& recBin);
  bool ReadFileOneW();
  // Appends, or reads into the object's one-text buffer, a one-text record.
  // A failed read returns the buffer as it was.
  bool WriteFileOneStringA(TextView tText);
  Text tReadFileOneStringA();

  // Record 0 with the revision text of the user settings (application
  // catalogue 100, section 101, key "Revision" 202; empty when missing).
  bool WriteFile_RevisionA();
  // Record 198 with `tAdd`.
  bool WriteFile_TempStrA(TextView tAdd);
  // Record 100 with `tKey`, then record 2000 with the value as text; the
  // pair is kept in VariableKey and VariableValue. The two are one
  // operation under two names.
  bool WriteFile_100A(TextView tKey, const frame::Variant& vValue);
  bool WriteFile_100_StrA(TextView tKey, const frame::Variant& vValue);
  // Reads the next record into `uDR` and hands its member (as text) to
  // `vVarable` and to VariableValue. On a failed read all three stay.
  bool ReadFile_VariableA(frame::Variant& vVarable, UseBinRecord& uDR);

  // The reader's guard: adds 1 to `L` and returns whether `L` now exceeds
  // `lMax`. Like every optional argument without a declared default, lMax is
  // 0 when omitted, so a reading loop passes its own bound. `L` at the
  // largest 32-bit value throws Fault(Overflow).
  bool bReadMsgError(int32_t& L, int32_t lMax = 0) const;
  // The error number to report when an operation of the mode fails: 2002
  // for "Load" (35153), "InPut" (35152) and "Default" (35154), 2003 for
  // "Save" (35151), "SaveAsNewVersion" (35155) and "OutPut" (35150)
  // (compared without regard to case), 0 for any other text.
  int32_t lLoadSaveMode(TextView tMode) const;

  // ---- Properties ----------------------------------------------------------

  int32_t ID() const { return id_; }
  void ID(int32_t id) { id_ = id; }
  const Text& Member() const { return member_; }
  void Member(TextView member) { member_ = member; }
  int16_t FileOpenID() const { return file_number_; }
  void FileOpenID(int16_t number) { file_number_ = number; }
  const Text& VariableKey() const { return variable_key_; }
  void VariableKey(TextView key) { variable_key_ = key; }
  const frame::Variant& VariableValue() const { return variable_value_; }
  void VariableValue(const frame::Variant& value) { variable_value_ = value; }
  // The member of the first record 0 read from the file opened last
  // (cleared when a file is opened for reading).
  const Text& RevisionLoad() const { return revision_load_; }
  void RevisionLoad(TextView revision) { revision_load_ = revision; }

  // ---- For the library and its tools ---------------------------------------

  // The error number of the last failure since OpenFileA, or 0.
  int32_t last_error() const { return error_; }
  // The name of the backup copy made by the last opening for "OutPut", or
  // empty text when it made none.
  const Text& backup_name() const { return backup_name_; }
  // Whether the file of FileOpenID has no byte left at its position.
  bool at_end_of_file() const;

  const platform::Platform& platform() const { return *platform_; }
  platform::SuiteServices& suite() const { return *suite_; }

 private:
  Text text(int32_t id) const;
  bool backup_switched_on() const;
  bool make_backup(TextView file_name);
  datafile::OpenFile& file_for(bool writing) const;
  bool write_record(int32_t id, TextView member);
  bool write_encoded(datafile::OpenFile& file, bool encoded);
  bool read_into(int32_t& id, Text& member);

  std::shared_ptr<const platform::Platform> platform_;
  std::shared_ptr<platform::SuiteServices> suite_;
  std::shared_ptr<platform::FileService> files_;
  std::shared_ptr<const frame::Catalogue> catalogue_;
  frame::NumberSymbols symbols_;

  int32_t id_ = 0;
  Text member_;
  int16_t file_number_ = 0;
  Text variable_key_;
  frame::Variant variable_value_;
  Text revision_load_;
  Text one_text_;
  Text backup_name_;
  int32_t error_ = 0;
  std::string scratch_;  // bytes of the record being read or written
};

}  // namespace zelkora
