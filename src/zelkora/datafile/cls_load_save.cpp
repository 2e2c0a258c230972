// clsLoadSave: start and end, and the record operations of the data file.
#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/frame/catalogue.h"
#include "zelkora/frame/numbers.h"

#include <limits>
#include <string>

#include "zelkora/datafile/record_file.h"
#include "zelkora/datafile/record_numbers.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/error_numbers.h"
#include "zelkora/frame/locale_symbols.h"
#include "zelkora/frame/mod_character.h"

namespace zelkora {

namespace {

Text ascii_lower(Text text) {
  for (char16_t& c : text) {
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + 32);
  }
  return text;
}

}  // namespace

clsLoadSave::clsLoadSave() : clsLoadSave(platform::Platform::current()) {}

clsLoadSave::clsLoadSave(std::shared_ptr<const platform::Platform> platform)
    : platform_(std::move(platform)),
      suite_(platform_->suite),
      files_(platform_->files),
      catalogue_(frame::catalogue_for(*platform_)) {
  if (platform_->locale) symbols_ = frame::number_symbols_of(*platform_->locale);
}

clsLoadSave::~clsLoadSave() {
  // Files still open are closed; one being written is dropped unsaved.
  for (int16_t n = 1; n <= datafile::kMaxFileNumber; ++n) {
    const datafile::OpenFile* file = datafile::open_file(n);
    if (file && file->owner == this) datafile::take_file(n);
  }
  suite_.reset();
}

Text clsLoadSave::text(int32_t id) const { return Text(catalogue_->find(id).value_or(TextView())); }

// ---- Opening and closing -------------------------------------------------------

int16_t clsLoadSave::iFreeFileA() const { return datafile::free_file_number(); }

bool clsLoadSave::backup_switched_on() const {
  if (!platform_->settings) return true;
  const std::optional<Text> value =
      platform_->settings->get(text(text_id::kApplication), text(text_id::kOptionsSection),
                               text(text_id::kCheckKeySuffix) + u"2");
  if (!value) return true;
  const std::optional<double> number = frame::parse_number(*value, symbols_);
  return !number || *number != 0;
}

bool clsLoadSave::make_backup(TextView file_name) {
  if (!backup_switched_on() || !files_->exists(file_name)) return true;
  const Text extension =
      ascii_lower(suite_ ? suite_->extension(file_name) : platform::file_name_extension(file_name));
  if (extension != text(text_id::kExtensionZel) && extension != text(text_id::kExtensionZks))
    return true;
  if (file_name.size() < 3) return true;
  Text backup = Text(file_name.substr(0, file_name.size() - 3)) + text(text_id::kBackupExtension);
  std::error_code error;
  if (!platform::copy_file(*files_, file_name, backup, error)) return false;
  backup_name_ = std::move(backup);
  return true;
}

bool clsLoadSave::OpenFileA(TextView tFileName, TextView tOpenMode) {
  error_ = 0;
  const int16_t number = iFreeFileA();
  file_number_ = 0;
  platform::FileAccess access = platform::FileAccess::Update;
  if (equal_text(tOpenMode, text(text_id::kInput), Compare::Text)) {
    access = platform::FileAccess::Read;
  } else if (equal_text(tOpenMode, text(text_id::kOutput), Compare::Text)) {
    access = platform::FileAccess::Replace;
  }
  if (number == 0 || !files_) {  // all file numbers are taken, or no files at all
    error_ = access == platform::FileAccess::Replace ? error_id::kDataFileNotSaved
                                                     : error_id::kDataFileNotOpened;
    return false;
  }

  if (access == platform::FileAccess::Replace) {
    backup_name_.clear();
    if (!make_backup(tFileName)) {
      error_ = error_id::kDataFileNotSaved;
      return false;
    }
  }
  std::error_code error;
  std::unique_ptr<platform::DataFile> file = files_->open(tFileName, access, error);
  if (!file) {
    error_ = access == platform::FileAccess::Replace ? error_id::kDataFileNotSaved
                                                     : error_id::kDataFileNotOpened;
    return false;
  }
  if (access != platform::FileAccess::Replace) revision_load_.clear();
  auto entry = std::make_unique<datafile::OpenFile>();
  entry->file = std::move(file);
  entry->access = access;
  entry->owner = this;
  datafile::enter_file(number, std::move(entry));
  file_number_ = number;
  return true;
}

bool clsLoadSave::CloseFileA() {
  const std::unique_ptr<datafile::OpenFile> file = datafile::take_file(file_number_);
  if (!file) return false;
  const bool saved = !file->write_failed && file->file->commit();
  if (!saved) error_ = error_id::kDataFileNotSaved;
  return saved;
}

bool clsLoadSave::WriteFileEofAndCloseFileA() {
  const bool written = write_record(record_id::kRevision, text(text_id::kEof));
  return CloseFileA() && written;
}

int64_t clsLoadSave::records_left() const {
  const datafile::OpenFile* file = open_for(false);
  if (!file) return 0;
  const uint64_t size = file->file->size();
  const uint64_t position = file->file->position();
  return position >= size ? 0
                          : static_cast<int64_t>((size - position) / datafile::kRecordHeaderBytes);
}

bool clsLoadSave::at_end_of_file() const {
  const datafile::OpenFile* file = open_for(false);
  return !file || file->file->position() >= file->file->size();
}

// ---- Records ------------------------------------------------------------------

datafile::OpenFile* clsLoadSave::open_for(bool writing) const {
  datafile::OpenFile* file = datafile::open_file(file_number_);
  if (!file) return nullptr;
  const platform::FileAccess other =
      writing ? platform::FileAccess::Read : platform::FileAccess::Replace;
  return file->access == other ? nullptr : file;
}

datafile::OpenFile* clsLoadSave::file_for(bool writing) {
  datafile::OpenFile* file = open_for(writing);
  if (!file) error_ = writing ? error_id::kDataFileNotSaved : error_id::kDataFileDamaged;
  return file;
}

bool clsLoadSave::write_encoded(datafile::OpenFile& file, bool encoded) {
  const bool written = encoded && !file.write_failed && file.file->write(scratch_);
  scratch_.clear();
  if (!written) {
    file.write_failed = true;
    error_ = error_id::kDataFileNotSaved;
  }
  return written;
}

bool clsLoadSave::write_record(int32_t id, TextView member) {
  datafile::OpenFile* file = file_for(true);
  if (!file) return false;
  scratch_.clear();
  return write_encoded(*file, datafile::append_record(scratch_, id, member));
}

bool clsLoadSave::read_into(int32_t& id, Text& member) {
  datafile::OpenFile* file = file_for(false);
  if (!file) return false;
  if (datafile::read_record(*file->file, scratch_, id, member) != datafile::ReadResult::Ok) {
    error_ = error_id::kDataFileDamaged;
    return false;
  }
  if (id == record_id::kRevision && !file->revision_read) {
    file->revision_read = true;
    revision_load_ = member;
  }
  return true;
}

bool clsLoadSave::WriteFileOneA(int32_t ID, TextView tMember) {
  datafile::OpenFile* file = file_for(true);
  if (!file) return false;
  id_ = ID;
  member_ = tMember;
  scratch_.clear();
  return write_encoded(*file, datafile::append_record(scratch_, id_, member_));
}

bool clsLoadSave::ReadFileOneA(UseBinRecord& recBin) { return read_into(recBin.ID, recBin.Member); }

bool clsLoadSave::ReadFileOneW() { return read_into(id_, member_); }

bool clsLoadSave::WriteFileOneStringA(TextView tText) {
  datafile::OpenFile* file = file_for(true);
  if (!file) return false;
  scratch_.clear();
  return write_encoded(*file, datafile::append_text_record(scratch_, tText));
}

Text clsLoadSave::tReadFileOneStringA() {
  datafile::OpenFile* file = file_for(false);
  if (file &&
      datafile::read_text_record(*file->file, scratch_, one_text_) != datafile::ReadResult::Ok) {
    error_ = error_id::kDataFileDamaged;
  }
  return one_text_;
}

bool clsLoadSave::WriteFile_RevisionA() {
  const Text revision =
      ModCharacter::tGetSetting(*platform_, text(text_id::kApplication),
                                text(text_id::kOptionsSection), text(text_id::kRevisionKey), {});
  return write_record(record_id::kRevision, revision);
}

bool clsLoadSave::WriteFile_TempStrA(TextView tAdd) {
  return write_record(record_id::kProgram, tAdd);
}

bool clsLoadSave::WriteFile_100A(TextView tKey, const frame::Variant& vValue) {
  const Text value = vValue.to_text(symbols_);
  variable_key_ = tKey;
  variable_value_ = vValue;
  const bool key_written = write_record(record_id::kName, tKey);
  const bool value_written = write_record(record_id::kIndex, value);
  return key_written && value_written;
}

bool clsLoadSave::WriteFile_100_StrA(TextView tKey, const frame::Variant& vValue) {
  return WriteFile_100A(tKey, vValue);
}

bool clsLoadSave::ReadFile_VariableA(frame::Variant& vVarable, UseBinRecord& uDR) {
  if (!ReadFileOneA(uDR)) return false;
  vVarable = frame::Variant(uDR.Member);
  variable_value_ = vVarable;
  return true;
}

bool clsLoadSave::bReadMsgError(int32_t& L, int32_t lMax) const {
  // A counter at the largest value has counted past every bound already:
  // it stays there and the loop stops.
  if (L == std::numeric_limits<int32_t>::max()) return true;
  ++L;
  return L > lMax;
}

int32_t clsLoadSave::lLoadSaveMode(TextView tMode) const {
  for (const int32_t id : {text_id::kLoad, text_id::kInput, text_id::kDefault}) {
    if (equal_text(tMode, text(id), Compare::Text)) return error_id::kDataFileNotOpened;
  }
  for (const int32_t id : {text_id::kSave, text_id::kSaveAsNewVersion, text_id::kOutput}) {
    if (equal_text(tMode, text(id), Compare::Text)) return error_id::kDataFileNotSaved;
  }
  return 0;
}

}  // namespace zelkora
