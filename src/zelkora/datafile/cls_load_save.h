/// clsLoadSave: project data files and the saving and restoring of form state.
/// The object holds one suite service object, for its questions about files.
///
/// A project data file is a sequence of records (`UseBinRecord`: an ID and a
/// text member; the layout and the numbers in record_numbers.h), opened by the revision
/// record and closed by the record 0 "EOF":
/// @code{.unparsed}
///   zelkora::clsLoadSave ls;
///   if (ls.OpenFileA(u"/p/beam.zks", u"OutPut")) {  // a.zks copied to a.zk$ first
///     ls.WriteFile_RevisionA();                       // record 0, the revision
///     ls.WriteFile_100A(u"dB", 250.0);                // records 100 "dB", 2000 "250"
///     if (!ls.WriteFileEofAndCloseFileA()) report(ls.last_error());  // 2003
///   }
/// @endcode
///   int32_t count = 0;
///   if (ls.OpenFileA(u"/p/beam.zks", u"InPut")) {
///     do {
///       ls.ReadFileOneW();                            // ls.ID(), ls.Member()
///       if (ls.bReadMsgError(count, 100000)) { report(2001); break; }
///     } while (!(ls.ID() == 0 && ls.Member() == u"EOF"));
///     ls.CloseFileA();
///   }
///
/// Failures are error numbers, read with `last_error()` (0 when none) and
/// mostly also the false result of the operation; `OpenFileA` clears it:
///  - 2002: the file could not be opened for reading ("InPut", and the
///    read-and-write mode);
///  - 2001: a record could not be read (the end of the file, a damaged
///    record); the record buffer is then as it was;
///  - 2003: the file could not be saved: it could not be created, the backup
///    copy could not be made, a write failed, a member was too long, or the
///    final replacement failed. The previous file is then as it was.
/// Nothing here throws for a bad file number. A record operation on a number
/// that is not open (a failed OpenFileA leaves FileOpenID 0), or not open for
/// what is asked (reading a file opened for "OutPut", writing one opened for
/// "InPut"), changes nothing and fails: every reader (ReadFileOneA/W,
/// tReadFileOneStringA, the form-state readers) with 2001 and its outputs as
/// they were, every writer with 2003. When all 255 numbers are taken,
/// `iFreeFileA` answers 0 and OpenFileA fails with 2002 (reading) or 2003
/// (writing). `CloseFileA` on a number that is not open does nothing and
/// answers false.
///
/// Saving never destroys the previous file: "OutPut" writes a new file beside
/// the target, which replaces the target only when it is closed complete
/// (flushed, synced, renamed, folder synced). Any failure before that point,
/// also a process killed while saving, leaves the old file as it was.
///
/// The modes of `OpenFileA`, compared without regard to case: "InPut"
/// (catalogue 35152) reads; "OutPut" (35150) writes a new content; any other
/// text, or none, reads and writes. The read-and-write mode works on a copy
/// of the file (or on an empty file when there is none) that replaces the
/// file when it is closed; an existing file opened so and never written is
/// left alone (a missing one is then created empty, as a binary open does).
///
/// The backup copy. Opening for "OutPut" a file that exists and whose
/// extension, in lower case, is "zel" (catalogue 35169) or "zks" (35168)
/// copies it first to the same name with the last three characters replaced
/// by "zk$" (35170), overwriting an older copy (itself safely, so a failed
/// copy leaves the older copy whole). The user setting "chkOpt2" (section
/// "Options" of the application, catalogue 100, 101, 103) switches it: any
/// numeric value other than 0 switches it on, a numeric 0 ("0", " 0 ", "0.0")
/// off, and a missing or non-numeric setting on, since users expect the copy.
/// A copy that cannot be made fails the opening with 2003 rather than let the
/// save go on without it.
///
/// Members are written in code page 936, with at most 65,535 bytes: a longer
/// member is refused (no record is written, never a truncated one), the
/// error number is 2003 and the file can no longer be saved: closing it
/// leaves the old file. Values (`WriteFile_100A`) are written as text with
/// the shared number rules in the user's notation, as the readers of the
/// form state read them back.
///
/// Reading never trusts the file: a length is checked against the bytes left
/// before anything is allocated, a short or damaged record leaves the buffer
/// as it was and moves to the end of the file, so every later read fails too
/// and the caller's loop ends through `bReadMsgError`.
///
/// File numbers are the process's (1 to 255, shared by every object): `FileOpenID`
/// may be handed to another object. When the object ends, the files it opened
/// and did not close are closed; one being written is dropped (the old file
/// stays), since a save that was never closed is not complete. @file
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "zelkora/datafile/form_values.h"
#include "zelkora/frame/number_symbols.h"
#include "zelkora/frame/variant.h"
#include "zelkora/platform/controls.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/text.h"

namespace zelkora {

namespace frame {
class Catalogue;
}
namespace datafile {
struct OpenFile;
class FormRecords;
struct FormFile;
}  // namespace datafile

/// The unit of a data file.
struct UseBinRecord {
  int32_t ID = 0;  ///< The record number.
  Text Member;     ///< The record's text.
};
/// Project data files, and the saving and restoring of a form's state.
class clsLoadSave {
 public:
  clsLoadSave();  ///< Uses the current platform bundle.
  explicit clsLoadSave(std::shared_ptr<const platform::Platform> platform);  ///< Uses `platform`.
  ~clsLoadSave();
  clsLoadSave(const clsLoadSave&) = delete;
  clsLoadSave& operator=(const clsLoadSave&) = delete;

  // ---- Opening and closing -----------------------------------------------

  /// Takes the next free file number into FileOpenID and opens the file in
  /// the mode named by `tOpenMode` (see above). False, with FileOpenID 0 and
  /// the error number set, when it could not be opened.
  bool OpenFileA(TextView tFileName, TextView tOpenMode = {});
  /// The lowest free file number, or 0 when all are taken.
  int16_t iFreeFileA() const;
  /// Closes FileOpenID; a file being written replaces its target now. False
  /// (2003) when the file could not be saved; false, with the error number as
  /// it was, when the number was not open.
  bool CloseFileA();
  /// Writes record 0 "EOF" (catalogue 32031), then closes the file.
  bool WriteFileEofAndCloseFileA();

  // ---- Records -------------------------------------------------------------

  /// Fills the record buffer and appends it at the current position.
  bool WriteFileOneA(int32_t ID, TextView tMember);
  /// @{ Reads the next record into `recBin`, or into the object's buffer.
  bool ReadFileOneA(UseBinRecord& recBin);
  bool ReadFileOneW();  /// @}
  /// @{ Appends, or reads into the object's one-text buffer, a one-text record.
  /// A failed read returns the buffer as it was.
  bool WriteFileOneStringA(TextView tText);
  Text tReadFileOneStringA();  /// @}

  /// Record 0 with the revision text of the user settings (application
  /// catalogue 100, section 101, key "Revision" 202; empty when missing).
  bool WriteFile_RevisionA();
  /// Record 198 with `tAdd`.
  bool WriteFile_TempStrA(TextView tAdd);
  /// @{ Record 100 with `tKey`, then record 2000 with the value as text; the
  /// pair is kept in VariableKey and VariableValue. The two are one
  /// operation under two names.
  bool WriteFile_100A(TextView tKey, const frame::Variant& vValue);
  bool WriteFile_100_StrA(TextView tKey, const frame::Variant& vValue);  /// @}
  /// Reads the next record into `uDR` and hands its member (as text) to
  /// `vVarable` and to VariableValue. On a failed read all three stay.
  bool ReadFile_VariableA(frame::Variant& vVarable, UseBinRecord& uDR);

  /// The reader's guard: adds 1 to `L` and returns whether `L` now exceeds
  /// `lMax`. Like every optional argument without a declared default, lMax is
  /// 0 when omitted, so a reading loop passes its own bound. `L` at the
  /// largest 32-bit value stays there and the answer is true: one more record
  /// is more than any bound allows.
  bool bReadMsgError(int32_t& L, int32_t lMax = 0) const;
  /// The error number to report when an operation of the mode fails: 2002
  /// for "Load" (35153), "InPut" (35152) and "Default" (35154), 2003 for
  /// "Save" (35151), "SaveAsNewVersion" (35155) and "OutPut" (35150)
  /// (compared without regard to case), 0 for any other text.
  int32_t lLoadSaveMode(TextView tMode) const;

  // ---- Properties ----------------------------------------------------------

  int32_t ID() const { return id_; }                          ///< The ID of the record buffer.
  void ID(int32_t id) { id_ = id; }                           ///< Sets the buffer's ID.
  const Text& Member() const { return member_; }              ///< The member of the record buffer.
  void Member(TextView member) { member_ = member; }          ///< Sets the buffer's member.
  int16_t FileOpenID() const { return file_number_; }         ///< The open file number; 0 for none.
  void FileOpenID(int16_t number) { file_number_ = number; }  ///< Sets the file number.
  const Text& VariableKey() const { return variable_key_; }   ///< Key of the last WriteFile_100A.
  void VariableKey(TextView key) { variable_key_ = key; }     ///< Sets the key.
  const frame::Variant& VariableValue() const { return variable_value_; }       ///< The last value.
  void VariableValue(const frame::Variant& value) { variable_value_ = value; }  ///< Sets the value.
  /// The member of the first record 0 read from the file opened last
  /// (cleared when a file is opened for reading).
  const Text& RevisionLoad() const { return revision_load_; }
  void RevisionLoad(TextView revision) { revision_load_ = revision; }  ///< Sets the revision.

  // ---- Form state ----------------------------------------------------------
  //
  // The record patterns are in record_numbers.h. A reader is handed the name
  // record the caller's loop has just met and reads the rest of the group;
  // every record must carry the pattern's number and a value of the right
  // kind and range, and a control or array is changed only after its whole
  // group has been read. Writers return whether every record was written (a failed
  // write is 2003, as for WriteFileOneA); readers take the target first and
  // the record just read (`uDR`, A) last, or read through the object's
  // buffer (W), and return false with 2001 and the target as it was when the
  // group cannot be read. Like every optional argument without a declared
  // default, a name left out is the empty text: the caller's loop then knows
  // the group by an empty member.

  /// @{ Every element of the array, from LBound to UBound, gaps skipped.
  bool WriteFile_Check_BsA(const platform::ControlArray<platform::CheckBox>& ChkB,
                           TextView tName = {});
  bool WriteFile_Option_BsA(const platform::ControlArray<platform::OptionButton>& OptB,
                            TextView tName = {});  /// @}
  /// Every element (iWriteTag 0), or only those whose text is an editable
  /// entry (iWriteTag 1); with bAutoWriteList also each one's list.
  bool WriteFile_ComboBox_BsA(const platform::ControlArray<platform::ComboBox>& CboB,
                              bool bAutoWriteList = false, TextView tName = {},
                              int16_t iWriteTag = 0);
  /// One combo box, under the index `Index`.
  bool WriteFile_ComboBox(int32_t Index, const platform::ComboBox& Cbo, bool bAutoWriteList = false,
                          TextView tName = {});
  bool WriteFile_ListBox_BsA(const platform::ControlArray<platform::ListBox>& lstB,
                             TextView tName = {});  ///< Every element of the array.
  /// Button `Index` of the toolbar.
  bool WriteFile_Toolbar_EditA(int32_t Index, const platform::Toolbar& ToolbarEdit,
                               TextView tName = {});
  /// The list view, under the index `Index` of the caller's control array.
  bool WriteFile_ListViewA(int32_t Index, const platform::ListView& lstView, TextView tName = {});
  /// The record, under the index `Index` of the caller's array of records.
  bool WriteFile_rColForceA(int32_t Index, const rColForce& force, TextView tName = {});
  /// @{ Arrays indexed 0..U (size U + 1; an empty vector has U = -1).
  bool WriteFile_Array_1A(const std::vector<frame::Variant>& vArray, TextView tName);
  bool WriteFile_Array_Str_1A(const std::vector<Text>& tArray, TextView tName);
  bool WriteFile_Array_2A(const Array2<frame::Variant>& vArray, TextView tName);
  bool WriteFile_Array_2A(const Array2<Text>& tArray, TextView tName);
  bool WriteFile_Array_Str_3A(const Array3<Text>& tArray, TextView tName);  /// @}
  /// @{ Readers of the groups above: A from the record just read (`uDR`), W via the buffer.
  bool ReadFile_Check_BA(platform::ControlArray<platform::CheckBox>& ChkB, UseBinRecord& uDR);
  bool ReadFile_Check_BW(platform::ControlArray<platform::CheckBox>& ChkB);
  bool ReadFile_Option_BA(platform::ControlArray<platform::OptionButton>& OptB, UseBinRecord& uDR);
  bool ReadFile_ComboBox_BA(platform::ControlArray<platform::ComboBox>& CboB, UseBinRecord& uDR);
  bool ReadFile_ComboBox_BW(platform::ControlArray<platform::ComboBox>& CboB);
  bool ReadFile_ListBox_BA(platform::ControlArray<platform::ListBox>& lstB, UseBinRecord& uDR);
  bool ReadFile_ListBox_BW(platform::ControlArray<platform::ListBox>& lstB);
  bool ReadFile_Toolbar_EditA(platform::Toolbar& ToolbarEdit, UseBinRecord& uDR);
  bool ReadFile_ListViewA(platform::ControlArray<platform::ListView>& lstView, UseBinRecord& uDR);
  /// Element Index of `forces`; ignored when the vector has no such element.
  bool ReadFile_rColForceA(std::vector<rColForce>& forces, UseBinRecord& uDR);  /// @}
  /// @{ Variant elements come back as texts (the record's member), which read
  /// as numbers with the same rules they were written with.
  bool ReadFile_Array_1A(std::vector<frame::Variant>& vArray, UseBinRecord& uDR);
  bool ReadFile_Array_Str_1A(std::vector<Text>& tArray, UseBinRecord& uDR);
  bool ReadFile_Array_Str_1W(std::vector<Text>& tArray);
  bool ReadFile_Array_2A(Array2<frame::Variant>& vArray, UseBinRecord& uDR);
  bool ReadFile_Array_Str_2A(Array2<Text>& tArray, UseBinRecord& uDR);
  bool ReadFile_Array_Str_3A(Array3<Text>& tArray, UseBinRecord& uDR);
  bool ReadFile_Array_Str_3W(Array3<Text>& tArray);  /// @}
  /// @{ A single value, from the value record 2000 that follows a key record
  /// 100 (WriteFile_100A): a text as it is, an integer rounded half to even
  /// within -32768..32767, a boolean from "True"/"False" (any case) or a
  /// number (nonzero is true).
  bool ReadFile_TextA(Text& tText, UseBinRecord& uDR);
  bool ReadFile_TextW(Text& tText);
  bool ReadFile_IntegerW(int16_t& iValue);
  bool ReadFile_BooleanW(bool& bValue);  /// @}

  /// The text array held between calls: element i is the text of combo box i.
  void Let_ValText(const std::vector<Text>& X) { val_text_ = X; }
  void Get_ValText(std::vector<Text>& X) const { X = val_text_; }  ///< Copies the held texts out.
  /// Gives each combo box i of the array the held text i, under the
  /// combo-box rule; elements beyond the held texts are left alone.
  void Let_ComboBox_Text(platform::ControlArray<platform::ComboBox>& CboB) const;
  /// The same for the combo boxes of the last restrained load of
  /// bLoadOrSaveData (that control array must still exist); nothing when there
  /// was none.
  void Let_ComboBox_TextA() const;

  /// Saves ("Save", "SaveAsNewVersion", "OutPut") or loads ("Load", "InPut",
  /// "Default") the form's combo boxes, check boxes and option buttons and
  /// the flag bDisplayTuLi in the file tDataSaveName. The file is: record 0
  /// the revision; record 198 tPro1 (when not empty); 100 "bfDisplayTuLi"
  /// (catalogue 37000) / 2000 the flag (when given); the combo boxes under
  /// "CboB" (texts only), the check boxes under "chkB", the option buttons
  /// under "optB"; record 0 "EOF".
  /// Loading needs record 0 first and, when tPro1 is not empty, record 198
  /// equal to tPro1 or to tPro2 (a second identifier the program accepts,
  /// such as its previous version's; never written); it skips records it does
  /// not know and changes the controls only when the whole file has been read
  /// up to "EOF". With bRestrainComboBox the combo boxes are not changed:
  /// their texts become the held text array (the current texts, replaced by
  /// the saved ones), for Let_ComboBox_TextA once the form has filled the
  /// lists. On failure the result is false and last_error() is
  /// lLoadSaveMode(tMode) (2002 or 2003); the previous file and the controls
  /// stay as they were. Any other mode does nothing and returns false.
  bool bLoadOrSaveData(TextView tMode, TextView tDataSaveName, TextView tPro1, TextView tPro2,
                       bool bRestrainComboBox, platform::ControlArray<platform::ComboBox>& CboB,
                       platform::ControlArray<platform::CheckBox>* ChkB = nullptr,
                       platform::ControlArray<platform::OptionButton>* OptB = nullptr,
                       bool* bDisplayTuLi = nullptr);

  // ---- Foundation data -----------------------------------------------------
  //
  // The load cases of a foundation program's footings, read from the form's
  // tables (a name, a kind 永久, 可变, 风 or 地震, then the forces; at most 50
  // cases) into arrays; the error numbers are error_id::kNoLoadCase to
  // kFootingNumberTwice (frame/error_numbers.h). The readers take the form's table and fill their
  // arrays only when every cell passes; otherwise they return false with the error number in
  // last_error(), the first bad cell in error_row(), error_column(),
  // error_place() and error_cell(), and the arrays as they were. A column
  // outside the table is the caller's mistake: Fault(IndexOutOfRange).

  /// Columns iColFirst..iColLast (0 the item text) of every row up to the last
  /// that is not blank into tCell (U1 = rows - 1, U2 = iColLast - iColFirst),
  /// the texts as the cells hold them. With iNumColFirst in the range, the
  /// columns from it to iColLast must hold numbers (3601005, 3601006).
  bool ReadCellToArray_Com_Text(const platform::ListView& lstView, int32_t iColFirst,
                                int32_t iColLast, Array2<Text>& tCell, int32_t iNumColFirst = -1);
  /// The footing numbers of the footing table (column iCol): at least one,
  /// none blank, none twice (3601010, 3601011, 3601012).
  bool ReadCellToArray_Gk_ZhuBh_Text(const platform::ListView& lstView,
                                     std::vector<Text>& tGk_ZhuBh, int32_t iCol = 0);
  /// The files of the footing table (column iCol), one per footing, blank
  /// allowed; at least one footing (3601010).
  bool ReadCellToArray_Gk_FileInfo_Text(const platform::ListView& lstView,
                                        std::vector<Text>& tGk_FileInfo, int32_t iCol = 1);
  /// The load cases of a footing's load table (seven columns): the cells as
  /// they are (tGk_Nl, U2 = 6), the forces (dGk_Nl, U2 = 4: N, Mx, My, Vx, Vy)
  /// and the kinds (iGk_Kind, datafile::FoundationLoadKind); 3601000 to
  /// 3601007.
  bool ReadCellToArray_Gk_Nl_Text(const platform::ListView& lstView, Array2<Text>& tGk_Nl,
                                  Array2<double>& dGk_Nl, std::vector<int16_t>& iGk_Kind);
  /// Writes the groups "Gk_ZhuBh", "Gk_FileInfo" and "Gk_Nl" (element k of
  /// tGk_Nl: the cells of footing k, as ReadCellToArray_Gk_Nl_Text gives
  /// them). Data the readers would refuse, or arrays of different sizes, is
  /// 2003 with no record written, and the file can then no longer be saved.
  bool SaveDataFoundation(const std::vector<Text>& tGk_ZhuBh, const std::vector<Text>& tGk_FileInfo,
                          const std::vector<Array2<Text>>& tGk_Nl);
  /// Handed the name record "Gk_ZhuBh" (uDR) that the caller's loop has just
  /// read, reads the three groups into temporaries, checks them as the
  /// readers do, and only then sets the arrays and, when given, fills the load
  /// table lstNl(k) of each footing k the array has. Anything else is 2001
  /// with the arrays and the tables as they were.
  bool bLoadDataFoundation(std::vector<Text>& tGk_ZhuBh, std::vector<Text>& tGk_FileInfo,
                           std::vector<Array2<Text>>& tGk_Nl, UseBinRecord& uDR,
                           platform::ControlArray<platform::ListView>* lstNl = nullptr);

  /// @{ The cell of the last refusal of a table reader (both 1-based; 0 when
  /// the fault is the whole table's, as a table without a load case), the
  /// place in words ("第 2 行第 3 列", catalogue 52724; empty for the whole
  /// table) and the cell's text (for 3601001 the count of load cases). Each
  /// reader clears them first.
  int32_t error_row() const { return error_row_; }
  int32_t error_column() const { return error_column_; }
  const Text& error_place() const { return error_place_; }
  const Text& error_cell() const { return error_cell_; }  /// @}

  // ---- For the library and its tools ---------------------------------------

  /// The error number of the last failure since OpenFileA, or 0.
  int32_t last_error() const { return error_; }
  /// The name of the backup copy made by the last opening for "OutPut", or
  /// empty text when it made none.
  const Text& backup_name() const { return backup_name_; }
  /// Whether the file of FileOpenID has no byte left at its position.
  bool at_end_of_file() const;

  /// The library's own access to the object's state; defined in
  /// datafile/load_save_internals.h, which is not installed.
  struct Internals;

 private:
  Text text(int32_t id) const;
  bool backup_switched_on() const;
  bool make_backup(TextView file_name);
  /// The open file of FileOpenID when it is open for reading (or for
  /// writing), else null.
  datafile::OpenFile* open_for(bool writing) const;
  /// The same, setting the error number (2001 reading, 2003 writing) when
  /// there is none.
  datafile::OpenFile* file_for(bool writing);
  bool write_record(int32_t id, TextView member);
  bool write_encoded(datafile::OpenFile& file, bool encoded);
  bool read_into(int32_t& id, Text& member);
  /// Sets the error number and the cell of a table reader's refusal.
  bool refuse_cell(int32_t error, int32_t row, int32_t column, TextView cell);
  void clear_cell();
  /// The most records the rest of the open file can hold.
  int64_t records_left() const;
  friend class datafile::FormRecords;
  friend struct datafile::FormFile;

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
  int32_t error_row_ = 0;
  int32_t error_column_ = 0;
  Text error_place_;
  Text error_cell_;
  std::string scratch_;  ///< bytes of the record being read or written

  /// The held texts of Let_ValText, and the combo boxes of Let_ComboBox_TextA.
  std::vector<Text> val_text_;
  platform::ControlArray<platform::ComboBox>* held_combos_ = nullptr;
};

}  // namespace zelkora
