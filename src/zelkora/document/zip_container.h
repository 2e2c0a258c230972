// A ZIP archive written in memory: the container of a DOCX file (and of any
// other Office Open XML package). Entries are deflated with zlib (or stored),
// each with its CRC-32, and every entry is dated 1980-01-01 00:00, so the same
// entries always give the same bytes.
//
//   ZipWriter zip;
//   zip.add("[Content_Types].xml", types);
//   zip.add("word/document.xml", body);
//   std::string bytes = std::move(zip).finish();
//
// Names are taken as they are (UTF-8, "/" separators). An archive and each
// entry stay below 4 GiB: the writer has no ZIP64 records.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zelkora::document {

class ZipWriter {
 public:
  enum class Method : std::uint16_t { kStore = 0, kDeflate = 8 };

  // `level` is zlib's compression level (1 fastest to 9 smallest).
  explicit ZipWriter(int level = 6);
  ~ZipWriter();

  // Appends an entry: its local header and its data.
  void add(std::string_view name, std::string_view data, Method method = Method::kDeflate);

  // An entry written in pieces, each deflated as it comes, so that a large
  // part is never held whole: begin_entry, write as often as needed,
  // end_entry (no other entry in between).
  void begin_entry(std::string_view name);
  void write(std::string_view data);
  void end_entry();

  // The archive: the entries, then the central directory.
  std::string finish() &&;

 private:
  struct Entry {
    std::string name;
    std::uint32_t crc = 0;
    std::uint32_t compressed = 0;
    std::uint32_t size = 0;
    std::uint32_t offset = 0;
    Method method = Method::kDeflate;
  };

  struct Stream;  // the entry being written in pieces

  void deflate_into_out(int flush);

  int level_;
  std::string out_;
  std::vector<Entry> entries_;
  std::unique_ptr<Stream> stream_;
};

// The data deflated without a zlib header (ZIP's method 8).
std::string raw_deflate(std::string_view data, int level);

// zlib's CRC-32 of the data (going on from the CRC of what came before it).
std::uint32_t crc32_of(std::string_view data, std::uint32_t crc_so_far = 0);

}  // namespace zelkora::document
