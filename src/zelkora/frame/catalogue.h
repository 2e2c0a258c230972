// The text catalogue: every user-visible text of the library, and much of its
// data, by catalogue id.
//
// A catalogue is built from catalogue files (UTF-8, one `id<TAB>text` per
// line, `#` comment lines, escapes \t \n \r \\ \uXXXX, trailing blanks
// significant) and is read-only afterwards. Lookups are O(1) and return views
// into the catalogue's own storage.
//
//   const Catalogue& cat = *catalogue_for(platform);
//   if (auto text = cat.find(1000)) ...   // "工程名称"
//
// `catalogue_for` loads the catalogue files of the bundle's resource sources
// (platform/resources.h), each overlaying the ones before it id by id, once
// per process and list of sources.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "zelkora/platform/platform.h"
#include "zelkora/platform/resources.h"
#include "zelkora/platform/text.h"

namespace zelkora::frame {

// What was wrong with a catalogue file: the file, the line (1-based) and why.
struct CatalogueProblem {
  std::string file;
  std::size_t line = 0;
  std::string message;

  // "file:line: message"
  std::string describe() const;
};

class Catalogue {
 public:
  Catalogue() = default;

  // The text of `id`, or nothing.
  std::optional<TextView> find(int32_t id) const {
    const Slot* slot = find_slot(id);
    if (!slot) return std::nullopt;
    return TextView(slot->text, slot->length);
  }
  bool contains(int32_t id) const { return find(id).has_value(); }
  std::size_t size() const { return count_; }

  // Makes room for `texts` texts in all, so that adding them does not grow
  // the table again.
  void reserve(std::size_t texts) { reserve_slots(texts); }

  // Parses one catalogue file and adds its texts, replacing texts of the same
  // ids. A file with any problem (a bad id, a missing tab, a bad escape, an id
  // given twice, invalid UTF-8) adds nothing at all and the first problem is
  // returned. `name` is used in the problem only.
  std::optional<CatalogueProblem> add_file(std::string_view name, std::string_view content);

 private:
  struct Slot {
    int32_t id = 0;  // 0: empty slot (ids are positive)
    uint32_t length = 0;
    const char16_t* text = nullptr;  // into one of `chunks_`
  };

  // Fibonacci hashing: the high bits of the product spread ids of any
  // pattern, also the long runs of consecutive ids of one block.
  std::size_t hash_index(int32_t id) const {
    return (static_cast<uint32_t>(id) * 0x9E3779B1u) >> shift_;
  }
  const Slot* find_slot(int32_t id) const {
    if (slots_.empty() || id <= 0) return nullptr;
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t i = hash_index(id);; i = (i + 1) & mask) {
      const Slot& slot = slots_[i];
      if (slot.id == id) return &slot;
      if (slot.id == 0) return nullptr;
    }
  }
  void reserve_slots(std::size_t texts);
  Slot* slot_for(int32_t id);

  // The decoded texts of each file added, never moved once written.
  std::vector<std::unique_ptr<char16_t[]>> chunks_;
  std::vector<Slot> slots_;  // open addressing, power-of-two size, linear probing
  unsigned shift_ = 31;      // 32 - log2(slots_.size()): the hash takes the high bits
  std::size_t count_ = 0;
};

// The catalogue of `sources`: the `catalogue/*.tsv` files of each source (or
// the `*.tsv` files at its top when it has no such folder) in name order, a
// later source overriding an earlier one id by id. A damaged file is refused
// whole and reported through `report` (when given); the texts it would have
// replaced stay as they were. Loaded once per process and list of sources;
// later calls return the same catalogue.
std::shared_ptr<const Catalogue> catalogue_for(const platform::ResourceSources& sources,
                                               platform::MessageBox* report);

// The catalogue of the given platform bundle.
std::shared_ptr<const Catalogue> catalogue_for(const platform::Platform& platform);

// Builds a catalogue as `catalogue_for` does, without the process cache, and
// collects the problems instead of reporting them.
std::shared_ptr<const Catalogue> load_catalogue(const platform::ResourceSources& sources,
                                                std::vector<CatalogueProblem>* problems);

}  // namespace zelkora::frame
