#include "zelkora/document/zip_container.h"

#include <zlib.h>

#include <algorithm>
#include <limits>

namespace zelkora::document {

namespace {

constexpr std::uint32_t kLocalHeader = 0x04034b50;
constexpr std::uint32_t kCentralHeader = 0x02014b50;
constexpr std::uint32_t kEndOfCentral = 0x06054b50;
constexpr std::uint16_t kVersion = 20;                       // 2.0: deflate
constexpr std::uint16_t kUtf8Names = 0x0800;                 // general purpose flag bit 11
constexpr std::uint16_t kDosTime = 0;                        // 00:00:00
constexpr std::uint16_t kDosDate = (0 << 9) | (1 << 5) | 1;  // 1980-01-01

void put16(std::string& out, std::uint16_t v) {
  out.push_back(static_cast<char>(v & 0xFF));
  out.push_back(static_cast<char>(v >> 8));
}

void put32(std::string& out, std::uint32_t v) {
  put16(out, static_cast<std::uint16_t>(v & 0xFFFF));
  put16(out, static_cast<std::uint16_t>(v >> 16));
}

std::uint32_t size32(std::size_t n) {
  return static_cast<std::uint32_t>(std::min<std::size_t>(n, 0xFFFFFFFFu));
}

std::uint16_t size16(std::size_t n) {
  return static_cast<std::uint16_t>(std::min<std::size_t>(n, 0xFFFFu));
}

// The fields that the local and the central header share, from "version
// needed" to the extra field's length.
void put_common_fields(std::string& out, std::uint16_t method, std::uint32_t crc,
                       std::uint32_t compressed, std::uint32_t size, std::size_t name_size) {
  put16(out, kVersion);
  put16(out, kUtf8Names);
  put16(out, method);
  put16(out, kDosTime);
  put16(out, kDosDate);
  put32(out, crc);
  put32(out, compressed);
  put32(out, size);
  put16(out, size16(name_size));
  put16(out, 0);  // extra field
}

}  // namespace

std::uint32_t crc32_of(std::string_view data, std::uint32_t crc_so_far) {
  uLong crc = crc_so_far;
  const auto* bytes = reinterpret_cast<const Bytef*>(data.data());
  std::size_t left = data.size();
  while (left > 0) {
    const uInt chunk = static_cast<uInt>(std::min<std::size_t>(left, 1u << 30));
    crc = crc32(crc, bytes, chunk);
    bytes += chunk;
    left -= chunk;
  }
  return static_cast<std::uint32_t>(crc);
}

std::string raw_deflate(std::string_view data, int level) {
  z_stream stream{};
  if (deflateInit2(&stream, std::clamp(level, 1, 9), Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY) !=
      Z_OK) {
    return {};
  }
  std::string out(deflateBound(&stream, static_cast<uLong>(std::min<std::size_t>(
                                            data.size(), std::numeric_limits<uLong>::max()))),
                  '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
  std::size_t in_left = data.size();
  int result = Z_OK;
  while (result != Z_STREAM_END) {
    if (stream.avail_in == 0 && in_left > 0) {
      stream.avail_in = static_cast<uInt>(std::min<std::size_t>(in_left, 1u << 30));
      in_left -= stream.avail_in;
    }
    const std::size_t written = stream.total_out;
    if (written == out.size()) out.resize(out.size() * 2 + 64);
    stream.next_out = reinterpret_cast<Bytef*>(out.data() + written);
    stream.avail_out = static_cast<uInt>(std::min<std::size_t>(out.size() - written, 1u << 30));
    result = deflate(&stream, in_left == 0 ? Z_FINISH : Z_NO_FLUSH);
    if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) break;
  }
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

struct ZipWriter::Stream {
  z_stream z{};
  Entry entry;
  std::size_t data_start = 0;
};

ZipWriter::ZipWriter(int level) : level_(level) {}

ZipWriter::~ZipWriter() {
  if (stream_) deflateEnd(&stream_->z);
}

void ZipWriter::begin_entry(std::string_view name) {
  if (stream_) end_entry();
  stream_ = std::make_unique<Stream>();
  Entry& entry = stream_->entry;
  entry.name = std::string(name.substr(0, 0xFFFF));
  entry.offset = size32(out_.size());
  entry.method = Method::kDeflate;
  entry.crc = static_cast<std::uint32_t>(crc32(0L, Z_NULL, 0));
  // The CRC and the sizes are written once the data is through.
  put32(out_, kLocalHeader);
  put_common_fields(out_, static_cast<std::uint16_t>(Method::kDeflate), 0, 0, 0, entry.name.size());
  out_ += entry.name;
  stream_->data_start = out_.size();
  deflateInit2(&stream_->z, std::clamp(level_, 1, 9), Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
}

void ZipWriter::deflate_into_out(int flush) {
  z_stream& z = stream_->z;
  char buffer[1 << 15];
  int result = Z_OK;
  do {
    z.next_out = reinterpret_cast<Bytef*>(buffer);
    z.avail_out = sizeof buffer;
    result = deflate(&z, flush);
    out_.append(buffer, sizeof buffer - z.avail_out);
  } while (z.avail_out == 0 || (flush == Z_FINISH && result == Z_OK));
}

void ZipWriter::write(std::string_view data) {
  if (!stream_) return;
  Entry& entry = stream_->entry;
  entry.crc = crc32_of(data, entry.crc);
  entry.size = size32(std::size_t{entry.size} + data.size());
  z_stream& z = stream_->z;
  while (!data.empty()) {
    const std::size_t chunk = std::min<std::size_t>(data.size(), 1u << 30);
    z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    z.avail_in = static_cast<uInt>(chunk);
    deflate_into_out(Z_NO_FLUSH);
    data.remove_prefix(chunk);
  }
}

void ZipWriter::end_entry() {
  if (!stream_) return;
  stream_->z.avail_in = 0;
  deflate_into_out(Z_FINISH);
  deflateEnd(&stream_->z);
  Entry entry = std::move(stream_->entry);
  entry.compressed = size32(out_.size() - stream_->data_start);
  stream_.reset();
  std::string fields;
  put32(fields, entry.crc);
  put32(fields, entry.compressed);
  put32(fields, entry.size);
  out_.replace(entry.offset + 14, fields.size(), fields);  // after signature .. date
  entries_.push_back(std::move(entry));
}

void ZipWriter::add(std::string_view name, std::string_view data, Method method) {
  if (stream_) end_entry();
  Entry entry;
  entry.name = std::string(name.substr(0, 0xFFFF));
  entry.crc = crc32_of(data);
  entry.size = size32(data.size());
  entry.offset = size32(out_.size());
  std::string deflated;
  if (method == Method::kDeflate) {
    deflated = raw_deflate(data, level_);
    // Data that does not shrink is stored, as every reader takes that too.
    if (deflated.size() >= data.size()) method = Method::kStore;
  }
  entry.method = method;
  const std::string_view stored = method == Method::kDeflate ? std::string_view(deflated) : data;
  entry.compressed = size32(stored.size());

  put32(out_, kLocalHeader);
  put_common_fields(out_, static_cast<std::uint16_t>(method), entry.crc, entry.compressed,
                    entry.size, entry.name.size());
  out_ += entry.name;
  out_ += stored;
  entries_.push_back(std::move(entry));
}

std::string ZipWriter::finish() && {
  if (stream_) end_entry();
  const std::uint32_t directory_offset = size32(out_.size());
  for (const Entry& entry : entries_) {
    put32(out_, kCentralHeader);
    put16(out_, kVersion);  // made by: MS-DOS, 2.0
    put_common_fields(out_, static_cast<std::uint16_t>(entry.method), entry.crc, entry.compressed,
                      entry.size, entry.name.size());
    put16(out_, 0);  // comment
    put16(out_, 0);  // disk
    put16(out_, 0);  // internal attributes
    put32(out_, 0);  // external attributes
    put32(out_, entry.offset);
    out_ += entry.name;
  }
  const std::uint32_t directory_size = size32(out_.size()) - directory_offset;
  put32(out_, kEndOfCentral);
  put16(out_, 0);  // this disk
  put16(out_, 0);  // the directory's disk
  put16(out_, size16(entries_.size()));
  put16(out_, size16(entries_.size()));
  put32(out_, directory_size);
  put32(out_, directory_offset);
  put16(out_, 0);  // comment
  entries_.clear();
  return std::move(out_);
}

}  // namespace zelkora::document
