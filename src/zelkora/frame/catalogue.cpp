#include "zelkora/frame/catalogue.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <map>
#include <mutex>
#include <sstream>
#include <system_error>

#include "zelkora/platform/embedded.h"

namespace zelkora::frame {

namespace {

constexpr std::string_view kEmbeddedDir = "catalogue/";
constexpr std::string_view kExtension = ".tsv";

std::size_t hash_index(int32_t id, std::size_t mask) {
  return (static_cast<uint32_t>(id) * 0x9E3779B1u) & mask;
}

std::size_t table_size_for(std::size_t texts) {
  std::size_t size = 16;
  while (size < texts * 2) size <<= 1;
  return size;
}

int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Appends the text field of a catalogue line (UTF-8 with escapes) to `out`.
// Returns an empty string on success, else what is wrong.
std::string decode_field(std::string_view field, Text& out) {
  std::size_t pos = 0;
  while (pos < field.size()) {
    const void* hit = std::memchr(field.data() + pos, '\\', field.size() - pos);
    const std::size_t stop =
        hit ? static_cast<std::size_t>(static_cast<const char*>(hit) - field.data()) : field.size();
    std::size_t bad = 0;
    if (!append_utf8(field.substr(pos, stop - pos), out, &bad)) {
      return "invalid UTF-8 at column " + std::to_string(pos + bad + 1);
    }
    if (!hit) break;
    if (stop + 1 >= field.size()) return "a backslash ends the line";
    const char kind = field[stop + 1];
    pos = stop + 2;
    switch (kind) {
      case 't': out.push_back(u'\t'); break;
      case 'n': out.push_back(u'\n'); break;
      case 'r': out.push_back(u'\r'); break;
      case '\\': out.push_back(u'\\'); break;
      case 'u': {
        unsigned value = 0;
        for (int k = 0; k < 4; ++k) {
          const int digit = pos + k < field.size() ? hex_value(field[pos + k]) : -1;
          if (digit < 0) return "\\u needs four hexadecimal digits";
          value = value * 16 + static_cast<unsigned>(digit);
        }
        out.push_back(static_cast<char16_t>(value));
        pos += 4;
        break;
      }
      default:
        return std::string("unknown escape \\") + kind;
    }
  }
  return {};
}

// Reads the id in front of the tab. Returns 0 when it is not a whole number
// from 1 to 2147483647.
int32_t parse_id(std::string_view digits) {
  if (digits.empty() || digits.size() > 10) return 0;
  int64_t value = 0;
  for (char c : digits) {
    if (c < '0' || c > '9') return 0;
    value = value * 10 + (c - '0');
  }
  return value >= 1 && value <= INT32_MAX ? static_cast<int32_t>(value) : 0;
}

struct ParsedText {
  int32_t id;
  uint32_t offset;
  uint32_t length;
  std::size_t line;
};

// True when an id occurs twice among `parsed`; `first_dup` is then the later one.
bool find_duplicate(const std::vector<ParsedText>& parsed, const ParsedText** first_dup) {
  const std::size_t size = table_size_for(parsed.size());
  std::vector<int32_t> seen(size, 0);
  for (const ParsedText& p : parsed) {
    std::size_t i = hash_index(p.id, size - 1);
    while (seen[i] != 0) {
      if (seen[i] == p.id) {
        *first_dup = &p;
        return true;
      }
      i = (i + 1) & (size - 1);
    }
    seen[i] = p.id;
  }
  return false;
}

bool read_file(const std::filesystem::path& path, std::string& content) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream buffer;
  buffer << in.rdbuf();
  content = std::move(buffer).str();
  return !in.bad();
}

// The catalogue files of a resource folder, in name order.
std::vector<std::filesystem::path> catalogue_files(const std::filesystem::path& dir) {
  std::vector<std::filesystem::path> files;
  std::error_code ec;
  std::filesystem::path folder = dir / "catalogue";
  if (!std::filesystem::is_directory(folder, ec)) folder = dir;
  for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end;
       it.increment(ec)) {
    if (it->path().extension() == kExtension && it->is_regular_file(ec)) {
      files.push_back(it->path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::shared_ptr<Catalogue> build(const std::filesystem::path& resource_dir,
                                 std::vector<CatalogueProblem>& problems) {
  auto catalogue = std::make_shared<Catalogue>();
  for (const platform::EmbeddedFile& file : platform::embedded_files()) {
    const std::string_view name = file.name;
    if (name.starts_with(kEmbeddedDir) && name.ends_with(kExtension)) {
      if (auto problem = catalogue->add_file(name, file.bytes())) problems.push_back(*problem);
    }
  }
  if (resource_dir.empty()) return catalogue;
  std::error_code ec;
  if (!std::filesystem::is_directory(resource_dir, ec)) {
    problems.push_back({resource_dir.string(), 0, "the resource folder does not exist"});
    return catalogue;
  }
  for (const std::filesystem::path& path : catalogue_files(resource_dir)) {
    std::string content;
    if (!read_file(path, content)) {
      problems.push_back({path.string(), 0, "the file cannot be read"});
      continue;
    }
    if (auto problem = catalogue->add_file(path.string(), content)) problems.push_back(*problem);
  }
  return catalogue;
}

}  // namespace

std::string CatalogueProblem::describe() const {
  std::string text = file;
  if (line > 0) text += ":" + std::to_string(line);
  text += ": " + message;
  return text;
}

std::optional<TextView> Catalogue::find(int32_t id) const {
  const Slot* slot = find_slot(id);
  if (!slot) return std::nullopt;
  return TextView(pool_.data() + slot->offset, slot->length);
}

const Catalogue::Slot* Catalogue::find_slot(int32_t id) const {
  if (slots_.empty() || id <= 0) return nullptr;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = hash_index(id, mask);; i = (i + 1) & mask) {
    const Slot& slot = slots_[i];
    if (slot.id == id) return &slot;
    if (slot.id == 0) return nullptr;
  }
}

Catalogue::Slot* Catalogue::slot_for(int32_t id) {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = hash_index(id, mask);; i = (i + 1) & mask) {
    Slot& slot = slots_[i];
    if (slot.id == id || slot.id == 0) return &slot;
  }
}

void Catalogue::reserve_slots(std::size_t texts) {
  const std::size_t size = table_size_for(texts);
  if (size <= slots_.size()) return;
  std::vector<Slot> old = std::move(slots_);
  slots_.assign(size, Slot{});
  for (const Slot& slot : old) {
    if (slot.id != 0) *slot_for(slot.id) = slot;
  }
}

std::optional<CatalogueProblem> Catalogue::add_file(std::string_view name,
                                                    std::string_view content) {
  if (content.starts_with("\xEF\xBB\xBF")) content.remove_prefix(3);
  const std::size_t pool_start = pool_.size();
  auto fail = [&](std::size_t line, std::string message) {
    pool_.resize(pool_start);
    return CatalogueProblem{std::string(name), line, std::move(message)};
  };

  std::vector<ParsedText> parsed;
  parsed.reserve(static_cast<std::size_t>(std::count(content.begin(), content.end(), '\n')) + 1);
  pool_.reserve(pool_start + content.size());
  std::size_t line_no = 0;
  std::size_t pos = 0;
  while (pos < content.size()) {
    const void* nl = std::memchr(content.data() + pos, '\n', content.size() - pos);
    const std::size_t end =
        nl ? static_cast<std::size_t>(static_cast<const char*>(nl) - content.data())
           : content.size();
    std::string_view line = content.substr(pos, end - pos);
    pos = end + 1;
    ++line_no;
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty() || line.front() == '#') continue;

    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) return fail(line_no, "no tab after the id");
    const int32_t id = parse_id(line.substr(0, tab));
    if (id == 0) {
      return fail(line_no, "bad id \"" + std::string(line.substr(0, std::min<std::size_t>(tab, 20))) +
                               "\" (a whole number from 1 to 2147483647)");
    }
    const std::size_t offset = pool_.size();
    std::string error = decode_field(line.substr(tab + 1), pool_);
    if (!error.empty()) return fail(line_no, error);
    if (pool_.size() > UINT32_MAX) return fail(line_no, "the catalogue is too large");
    parsed.push_back({id, static_cast<uint32_t>(offset),
                      static_cast<uint32_t>(pool_.size() - offset), line_no});
  }

  const ParsedText* dup = nullptr;
  if (find_duplicate(parsed, &dup)) {
    return fail(dup->line, "id " + std::to_string(dup->id) + " is given twice");
  }

  reserve_slots(count_ + parsed.size());
  for (const ParsedText& p : parsed) {
    Slot* slot = slot_for(p.id);
    if (slot->id == 0) ++count_;
    *slot = Slot{p.id, p.offset, p.length};
  }
  return std::nullopt;
}

std::shared_ptr<const Catalogue> load_catalogue(const std::filesystem::path& resource_dir,
                                                std::vector<CatalogueProblem>* problems) {
  std::vector<CatalogueProblem> found;
  auto catalogue = build(resource_dir, found);
  if (problems) *problems = std::move(found);
  return catalogue;
}

std::shared_ptr<const Catalogue> catalogue_for(const std::filesystem::path& resource_dir,
                                               platform::MessageBox* report) {
  static std::mutex mutex;
  static std::map<std::filesystem::path, std::shared_ptr<const Catalogue>> loaded;
  std::lock_guard lock(mutex);
  auto it = loaded.find(resource_dir);
  if (it != loaded.end()) return it->second;
  std::vector<CatalogueProblem> problems;
  std::shared_ptr<const Catalogue> catalogue = build(resource_dir, problems);
  if (report) {
    for (const CatalogueProblem& problem : problems) {
      report->diagnostic("catalogue file refused: " + problem.describe());
    }
  }
  loaded.emplace(resource_dir, catalogue);
  return catalogue;
}

std::shared_ptr<const Catalogue> catalogue_for(const platform::Platform& platform) {
  return catalogue_for(platform.resource_dir, platform.messages.get());
}

}  // namespace zelkora::frame
