// The byte layout of the records, and the table of open data files.
#include "zelkora/datafile/record_file.h"

#include <array>

#include "zelkora/platform/codepage.h"

namespace zelkora::datafile {

namespace {

void put_u16(char* out, std::size_t value) {
  out[0] = static_cast<char>(value & 0xFF);
  out[1] = static_cast<char>((value >> 8) & 0xFF);
}

std::size_t get_u16(const unsigned char* in) {
  return static_cast<std::size_t>(in[0]) | static_cast<std::size_t>(in[1]) << 8;
}

// Appends the length field and the member bytes, or restores `out` to
// `start` and returns false when the member is too long.
bool append_member(std::string& out, std::size_t start, TextView member) {
  const std::size_t length_at = out.size();
  out.append(2, '\0');
  codepage::append_ansi(out, member);
  const std::size_t length = out.size() - length_at - 2;
  if (length > kMaxMemberBytes) {
    out.resize(start);
    return false;
  }
  put_u16(&out[length_at], length);
  return true;
}

// After a failed read the rest of the file is not read as records.
ReadResult fail(platform::DataFile& file, ReadResult result) {
  file.seek(file.size());
  return result;
}

// Reads the member of `length` bytes into `scratch`, when the file has them.
bool read_member(platform::DataFile& file, std::string& scratch, std::size_t length) {
  const std::uint64_t position = file.position();
  const std::uint64_t size = file.size();
  if (position > size || size - position < length) return false;
  if (scratch.size() < length) scratch.resize(length);
  return file.read(scratch.data(), length) == length;
}

std::array<std::unique_ptr<OpenFile>, kMaxFileNumber + 1>& table() {
  static std::array<std::unique_ptr<OpenFile>, kMaxFileNumber + 1> files;
  return files;
}

}  // namespace

bool append_record(std::string& out, int32_t id, TextView member) {
  const std::size_t start = out.size();
  const auto bits = static_cast<uint32_t>(id);
  const char header[4] = {static_cast<char>(bits & 0xFF), static_cast<char>((bits >> 8) & 0xFF),
                          static_cast<char>((bits >> 16) & 0xFF),
                          static_cast<char>((bits >> 24) & 0xFF)};
  out.append(header, 4);
  return append_member(out, start, member);
}

bool append_text_record(std::string& out, TextView member) {
  return append_member(out, out.size(), member);
}

void decode_member(std::string_view bytes, Text& member) {
  // Most members are numbers and names in ASCII, which code page 936 keeps
  // as they are; they are copied into the storage the member already has.
  bool ascii = true;
  for (const char c : bytes) ascii = ascii && static_cast<unsigned char>(c) < 0x80;
  if (ascii) {
    member.resize(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) member[i] = static_cast<char16_t>(bytes[i]);
    return;
  }
  member = codepage::from_ansi(bytes);
}

ReadResult read_record(platform::DataFile& file, std::string& scratch, int32_t& id, Text& member) {
  unsigned char header[6];
  const std::size_t got = file.read(reinterpret_cast<char*>(header), sizeof header);
  if (got == 0) return fail(file, ReadResult::End);
  if (got != sizeof header) return fail(file, ReadResult::Damaged);
  const std::size_t length = get_u16(header + 4);
  if (!read_member(file, scratch, length)) return fail(file, ReadResult::Damaged);
  id = static_cast<int32_t>(
      static_cast<uint32_t>(header[0]) | static_cast<uint32_t>(header[1]) << 8 |
      static_cast<uint32_t>(header[2]) << 16 | static_cast<uint32_t>(header[3]) << 24);
  decode_member(std::string_view(scratch.data(), length), member);
  return ReadResult::Ok;
}

ReadResult read_text_record(platform::DataFile& file, std::string& scratch, Text& member) {
  unsigned char header[2];
  const std::size_t got = file.read(reinterpret_cast<char*>(header), sizeof header);
  if (got == 0) return fail(file, ReadResult::End);
  if (got != sizeof header) return fail(file, ReadResult::Damaged);
  const std::size_t length = get_u16(header);
  if (!read_member(file, scratch, length)) return fail(file, ReadResult::Damaged);
  decode_member(std::string_view(scratch.data(), length), member);
  return ReadResult::Ok;
}

int16_t free_file_number() {
  for (int16_t n = 1; n <= kMaxFileNumber; ++n) {
    if (!table()[n]) return n;
  }
  return 0;
}

OpenFile* open_file(int16_t number) {
  if (number < 1 || number > kMaxFileNumber) return nullptr;
  return table()[number].get();
}

void enter_file(int16_t number, std::unique_ptr<OpenFile> file) {
  table()[number] = std::move(file);
}

std::unique_ptr<OpenFile> take_file(int16_t number) {
  if (number < 1 || number > kMaxFileNumber) return nullptr;
  return std::move(table()[number]);
}

int open_file_count() {
  int count = 0;
  for (const auto& f : table()) count += f ? 1 : 0;
  return count;
}

}  // namespace zelkora::datafile
