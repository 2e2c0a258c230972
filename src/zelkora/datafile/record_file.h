// The byte layout of a project data file, and the table of open data files
// by file number. clsLoadSave (cls_load_save.h) is built on these.
//
// A file is a sequence of records with no padding and no separator:
//
//   offset 0  4 bytes  ID, signed, little-endian
//   offset 4  2 bytes  n, the byte length of the member, unsigned, little-endian
//   offset 6  n bytes  the member in code page 936, no terminator
//
// A one-text record is the same without the ID. ID 2000 with "12.5" is
// D0 07 00 00 04 00 31 32 2E 35; an empty member takes the 6 header bytes.
//
//   std::string bytes;
//   datafile::append_record(bytes, 2000, u"12.5");   // false when too long
//   int32_t id = 0; Text member;
//   datafile::read_record(file, scratch, id, member); // ReadResult::Ok
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "zelkora/platform/file_service.h"
#include "zelkora/platform/text.h"

namespace zelkora::datafile {

// The most bytes a member may take in code page 936 (the 2-byte length).
inline constexpr std::size_t kMaxMemberBytes = 65535;
// The bytes of a record before its member: the ID and the length.
inline constexpr int64_t kRecordHeaderBytes = 6;

// ---- Writing ---------------------------------------------------------------

// Appends the bytes of one record to `out`. A member of more than
// kMaxMemberBytes bytes is refused: false, and `out` is as it was.
bool append_record(std::string& out, int32_t id, TextView member);
// The same for a one-text record.
bool append_text_record(std::string& out, TextView member);

// ---- Reading ---------------------------------------------------------------

enum class ReadResult {
  Ok,
  End,      // no byte left at the position
  Damaged,  // fewer bytes left than the header or its length announces
};

// Reads the record at the file's position into `id` and `member`. On
// anything but Ok both are as they were and the position is at the end of
// the file, so the rest of a damaged file is never taken for records. The
// member is checked against the bytes left in the file before anything is
// allocated: `scratch` (kept by the caller between calls) grows to at most
// the size of the longest member actually present.
ReadResult read_record(platform::DataFile& file, std::string& scratch, int32_t& id, Text& member);
// The same for a one-text record.
ReadResult read_text_record(platform::DataFile& file, std::string& scratch, Text& member);

// Decodes a member from code page 936 into `member`, reusing its storage.
void decode_member(std::string_view bytes, Text& member);

// ---- File numbers ------------------------------------------------------------
//
// The data files open in the process, by file number 1 to 255 like the
// classic free-file numbers: a number taken by one object can be used by
// another that is given it. Each file remembers its owner, and the owner
// closes its files when it ends. Everything here belongs to the
// user-interface thread.

inline constexpr int16_t kMaxFileNumber = 255;

struct OpenFile {
  std::unique_ptr<platform::DataFile> file;
  platform::FileAccess access = platform::FileAccess::Read;
  const void* owner = nullptr;
  bool write_failed = false;   // a write failed or was refused: the file cannot be saved
  bool revision_read = false;  // the first record 0 has been read
};

// The lowest free file number, or 0 when all 255 are taken.
int16_t free_file_number();
// The open file of `number`, or null when the number is not open (or out of
// range).
OpenFile* open_file(int16_t number);
// Enters `file` under the free number `number`.
void enter_file(int16_t number, std::unique_ptr<OpenFile> file);
// Takes the file of `number` out of the table (null when it is not open).
std::unique_ptr<OpenFile> take_file(int16_t number);
// How many files are open.
int open_file_count();

}  // namespace zelkora::datafile
