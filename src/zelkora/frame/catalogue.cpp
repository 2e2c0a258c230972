// The text catalogue: parsing catalogue files into the table, loading the sources.
#include "zelkora/frame/catalogue.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <system_error>

#include "zelkora/platform/resources.h"
#include "zelkora/platform/utf8.h"

namespace zelkora::frame {

namespace {

constexpr std::string_view kCatalogueFolder = "catalogue";
constexpr std::string_view kExtension = ".tsv";
constexpr std::size_t kMaxFileSize = 64u << 20;

// The lines of a file: its line feeds and one more.
std::size_t line_count(std::string_view content) {
  std::size_t lines = 1;
  for (const char *p = content.data(), *end = p + content.size();
       (p = static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(end - p))));
       ++p) {
    ++lines;
  }
  return lines;
}

// A table at most 70 % full.
std::size_t table_size_for(std::size_t texts) {
  std::size_t size = 16;
  while (size * 7 < texts * 10) size <<= 1;
  return size;
}

// The catalogue files of a source, in name order: "catalogue/*.tsv", or the
// "*.tsv" files at the top of a folder without "catalogue/".
std::vector<std::string> catalogue_files(const platform::ResourceSource& source) {
  const std::string folder = platform::folder_of(source, kCatalogueFolder);
  std::vector<std::string> paths;
  for (const std::string& name : source.files(folder)) {
    if (name.ends_with(kExtension)) paths.push_back(folder.empty() ? name : folder + "/" + name);
  }
  return paths;
}

std::shared_ptr<Catalogue> build(const platform::ResourceSources& sources,
                                 std::vector<CatalogueProblem>& problems) {
  auto catalogue = std::make_shared<Catalogue>();
  // All files are read first, so that the table is sized once for all.
  std::vector<std::pair<std::string, std::string>> files;
  std::size_t lines = 0;
  for (const auto& source : sources) {
    if (!source->available()) {
      problems.push_back({source->origin(), 0, "the resource folder does not exist"});
      continue;
    }
    for (const std::string& path : catalogue_files(*source)) {
      std::optional<std::string> content = source->read(path, kMaxFileSize);
      if (!content) {
        problems.push_back(
            {source->location(path), 0, "the file cannot be read (or is over 64 MiB)"});
        continue;
      }
      lines += line_count(*content);
      files.emplace_back(source->location(path), std::move(*content));
    }
  }
  catalogue->reserve(lines);
  for (const auto& [path, content] : files) {
    if (auto problem = catalogue->add_file(path, content)) problems.push_back(*problem);
  }
  return catalogue;
}

// The sources as one key: their origins in order.
std::string key_of(const platform::ResourceSources& sources) {
  std::string key;
  for (const auto& source : sources) key += source->origin() + '\n';
  return key;
}

}  // namespace

std::string CatalogueProblem::describe() const {
  std::string text = file;
  if (line > 0) text += ":" + std::to_string(line);
  text += ": " + message;
  return text;
}

Catalogue::Slot* Catalogue::slot_for(int32_t id) {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = hash_index(id);; i = (i + 1) & mask) {
    Slot& slot = slots_[i];
    if (slot.id == id || slot.id == 0) return &slot;
  }
}

void Catalogue::reserve_slots(std::size_t texts) {
  const std::size_t size = table_size_for(texts);
  if (size <= slots_.size()) return;
  std::vector<Slot> old = std::move(slots_);
  slots_.assign(size, Slot{});
  shift_ = 32;
  for (std::size_t n = size; n > 1; n >>= 1) --shift_;
  for (const Slot& slot : old) {
    if (slot.id != 0) *slot_for(slot.id) = slot;
  }
}

// One pass over the file: each line's id is read, its text decoded from
// UTF-8 (with its escapes) straight into the file's chunk, and the text
// entered into the table. A problem puts the table back as it was.
std::optional<CatalogueProblem> Catalogue::add_file(std::string_view name,
                                                    std::string_view content) {
  if (content.starts_with("\xEF\xBB\xBF")) content.remove_prefix(3);
  const auto* p = reinterpret_cast<const unsigned char*>(content.data());
  const unsigned char* const end = p + content.size();

  const std::size_t lines = line_count(content);
  reserve_slots(count_ + lines);
  // What the file changes in the table, to undo it exactly on a problem:
  // slots it filled, and slots whose text it replaced with their old value.
  // (The table does not grow while the file is read, and no slot is changed
  // twice, since a second change would be an id given twice.)
  const std::size_t count_before = count_;
  std::vector<uint32_t> filled;
  filled.reserve(lines);
  std::vector<std::pair<uint32_t, Slot>> replaced;

  auto chunk = std::make_unique_for_overwrite<char16_t[]>(content.size() + 1);
  char16_t* const chunk_begin = chunk.get();
  char16_t* const chunk_end = chunk_begin + content.size() + 1;
  char16_t* dst = chunk_begin;

  std::size_t line_no = 0;
  const unsigned char* line_start = p;
  auto fail = [&](std::string message) {
    for (uint32_t index : filled) slots_[index] = Slot{};
    for (const auto& [index, old] : replaced) slots_[index] = old;
    count_ = count_before;
    return CatalogueProblem{std::string(name), line_no, std::move(message)};
  };
  auto column = [&](const unsigned char* at) {
    return std::to_string(static_cast<std::size_t>(at - line_start) + 1);
  };

  while (p < end) {
    ++line_no;
    line_start = p;
    if (*p == '#' || *p == '\n' || (*p == '\r' && (p + 1 == end || p[1] == '\n'))) {
      const void* nl = std::memchr(p, '\n', static_cast<std::size_t>(end - p));
      p = nl ? static_cast<const unsigned char*>(nl) + 1 : end;
      continue;
    }

    // The id: decimal digits, then a tab.
    int64_t id = 0;
    const unsigned char* digits = p;
    while (p < end && *p >= '0' && *p <= '9' && p - digits <= 10) id = id * 10 + (*p++ - '0');
    if (p == end || *p != '\t' || p == digits || id < 1 || id > INT32_MAX) {
      const unsigned char* eol = p;
      while (eol < end && *eol != '\n' && *eol != '\t') ++eol;
      if (eol == end || *eol != '\t') return fail("no tab after the id");
      const std::string shown(reinterpret_cast<const char*>(digits),
                              std::min<std::size_t>(static_cast<std::size_t>(eol - digits), 20));
      return fail("bad id \"" + shown + "\" (a whole number from 1 to 2147483647)");
    }
    ++p;

    // The text, up to the end of the line; a CR before the line feed ends it.
    const void* line_feed = std::memchr(p, '\n', static_cast<std::size_t>(end - p));
    const unsigned char* const next_line =
        line_feed ? static_cast<const unsigned char*>(line_feed) + 1 : end;
    const unsigned char* text_end = line_feed ? next_line - 1 : end;
    if (text_end > p && text_end[-1] == '\r') --text_end;
    char16_t* const text = dst;
    while (p < text_end) {
      // A run of UTF-8 up to the next escape, then the escape.
      const void* slash = std::memchr(p, '\\', static_cast<std::size_t>(text_end - p));
      const unsigned char* const run_end =
          slash ? static_cast<const unsigned char*>(slash) : text_end;
      const std::string_view run(reinterpret_cast<const char*>(p),
                                 static_cast<std::size_t>(run_end - p));
      std::size_t stopped = 0;
      dst = decode_utf8_into(run, dst, stopped);
      if (stopped != run.size()) return fail("invalid UTF-8 at column " + column(p + stopped));
      p = run_end;
      if (p == text_end) break;
      if (p + 1 == text_end) return fail("a backslash ends the line");
      EscapeProblem problem = EscapeProblem::kNone;
      const std::size_t taken =
          read_escape(std::string_view(reinterpret_cast<const char*>(p),
                                       static_cast<std::size_t>(text_end - p)),
                      0, *dst, problem);
      if (problem == EscapeProblem::kShortUnicode) return fail("\\u needs four hexadecimal digits");
      if (problem == EscapeProblem::kUnknown) {
        return fail(std::string("unknown escape \\") + static_cast<char>(p[1]));
      }
      ++dst;
      p += taken;
    }
    p = next_line;

    Slot* slot = slot_for(static_cast<int32_t>(id));
    if (slot->id == id && slot->text >= chunk_begin && slot->text < chunk_end) {
      return fail("id " + std::to_string(id) + " is given twice");
    }
    const auto index = static_cast<uint32_t>(slot - slots_.data());
    if (slot->id == 0) {
      ++count_;
      filled.push_back(index);
    } else {
      replaced.emplace_back(index, *slot);
    }
    *slot = Slot{static_cast<int32_t>(id), static_cast<uint32_t>(dst - text), text};
  }
  chunks_.push_back(std::move(chunk));
  return std::nullopt;
}

std::shared_ptr<const Catalogue> load_catalogue(const platform::ResourceSources& sources,
                                                std::vector<CatalogueProblem>* problems) {
  std::vector<CatalogueProblem> found;
  auto catalogue = build(sources, found);
  if (problems) *problems = std::move(found);
  return catalogue;
}

std::shared_ptr<const Catalogue> catalogue_for(const platform::ResourceSources& sources,
                                               platform::MessageBox* report) {
  static std::mutex mutex;
  static std::map<std::string, std::shared_ptr<const Catalogue>> loaded;
  std::lock_guard lock(mutex);
  const std::string key = key_of(sources);
  auto it = loaded.find(key);
  if (it != loaded.end()) return it->second;
  std::vector<CatalogueProblem> problems;
  std::shared_ptr<const Catalogue> catalogue = build(sources, problems);
  if (report) {
    for (const CatalogueProblem& problem : problems) {
      report->diagnostic("catalogue file refused: " + problem.describe());
    }
  }
  loaded.emplace(key, catalogue);
  return catalogue;
}

std::shared_ptr<const Catalogue> catalogue_for(const platform::Platform& platform) {
  return catalogue_for(platform.resources, platform.messages.get());
}

}  // namespace zelkora::frame
