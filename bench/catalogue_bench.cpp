// Loading and looking up the text catalogue, against baselines in the same
// run: copying and UTF-8-decoding the same bytes (the floor of any loader),
// and std::unordered_map for lookups.
//
// The synthetic catalogue has the shipped catalogue's shape: 8,224 texts in
// sparse blocks of ids, mostly Chinese, 2 to 22 characters (12 on average),
// some markup, "|" lists and escapes.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <unordered_map>

#include "zelkora/frame/catalogue.h"

namespace {

using zelkora::frame::Catalogue;

struct Synthetic {
  std::string file;
  std::vector<int32_t> ids;
};

const Synthetic& synthetic() {
  static const Synthetic s = [] {
    Synthetic out;
    std::mt19937 rng(42);
    const char* chinese[] = {"钢", "筋", "混", "凝", "土", "强", "度", "等", "级", "截", "面",
                             "宽", "高", "弯", "矩", "设", "计", "值", "的", "应", "不", "小"};
    const char* ascii[] = {"M", "V", "b", "h", "_ub(0)ub_", "|", " ", "0", "1", "2", "5", "."};
    // Lengths and the share of Chinese as in the library's own catalogue
    // (12.4 characters and 24 bytes a text on average).
    std::uniform_int_distribution<int> length(2, 22), pick_cn(0, 21), pick_as(0, 11), kind(0, 9),
        gap(1, 8);
    int32_t id = 98;
    out.file = "# synthetic catalogue\n";
    for (int i = 0; i < 8224; ++i) {
      id += gap(rng);
      if (i % 1000 == 999) id = (id / 1000 + 2) * 1000;  // a new block at a round number
      out.ids.push_back(id);
      out.file += std::to_string(id) + "\t";
      const int n = length(rng);
      for (int k = 0; k < n; ++k)
        out.file += kind(rng) < 6 ? chinese[pick_cn(rng)] : ascii[pick_as(rng)];
      if (i % 97 == 0) out.file += "\\uE002";
      out.file += "\n";
    }
    return out;
  }();
  return s;
}

void BM_LoadCatalogue(benchmark::State& state) {
  const std::string& file = synthetic().file;
  for (auto _ : state) {
    Catalogue c;
    auto problem = c.add_file("synthetic.tsv", file);
    benchmark::DoNotOptimize(problem);
    benchmark::DoNotOptimize(c.size());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * file.size()));
  state.counters["texts"] = 8224;
  state.counters["bytes"] = static_cast<double>(file.size());
}
BENCHMARK(BM_LoadCatalogue)->Unit(benchmark::kMicrosecond);

void BM_Baseline_CopyBytes(benchmark::State& state) {
  const std::string& file = synthetic().file;
  for (auto _ : state) {
    std::string copy = file;
    benchmark::DoNotOptimize(copy.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * file.size()));
}
BENCHMARK(BM_Baseline_CopyBytes)->Unit(benchmark::kMicrosecond);

void BM_Baseline_DecodeUtf8(benchmark::State& state) {
  const std::string& file = synthetic().file;
  for (auto _ : state) {
    zelkora::Text text;
    benchmark::DoNotOptimize(zelkora::append_utf8(file, text));
    benchmark::DoNotOptimize(text.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * file.size()));
}
BENCHMARK(BM_Baseline_DecodeUtf8)->Unit(benchmark::kMicrosecond);

// The whole first load of a resource folder: the compiled-in catalogue, the
// folder's file read from disk and overlaid.
void BM_LoadResourceFolder(benchmark::State& state) {
  const auto dir = std::filesystem::temp_directory_path() / "zelkora_catalogue_bench";
  std::filesystem::create_directories(dir / "catalogue");
  std::ofstream(dir / "catalogue" / "suite.tsv", std::ios::binary) << synthetic().file;
  for (auto _ : state) {
    auto c = zelkora::frame::load_catalogue(zelkora::platform::standard_resources(dir), nullptr);
    benchmark::DoNotOptimize(c->size());
  }
  std::filesystem::remove_all(dir);
}
BENCHMARK(BM_LoadResourceFolder)->Unit(benchmark::kMicrosecond);

std::vector<int32_t> shuffled_ids() {
  std::vector<int32_t> ids = synthetic().ids;
  std::shuffle(ids.begin(), ids.end(), std::mt19937(7));
  return ids;
}

void BM_Find(benchmark::State& state) {
  Catalogue c;
  c.add_file("synthetic.tsv", synthetic().file);
  const std::vector<int32_t> ids = shuffled_ids();
  for (auto _ : state) {
    std::size_t total = 0;
    for (int32_t id : ids) total += c.find(id)->size();
    benchmark::DoNotOptimize(total);
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * ids.size()));
}
BENCHMARK(BM_Find);

void BM_Baseline_UnorderedMapFind(benchmark::State& state) {
  Catalogue c;
  c.add_file("synthetic.tsv", synthetic().file);
  std::unordered_map<int32_t, zelkora::TextView> map;
  for (int32_t id : synthetic().ids) map.emplace(id, *c.find(id));
  const std::vector<int32_t> ids = shuffled_ids();
  for (auto _ : state) {
    std::size_t total = 0;
    for (int32_t id : ids) total += map.find(id)->second.size();
    benchmark::DoNotOptimize(total);
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * ids.size()));
}
BENCHMARK(BM_Baseline_UnorderedMapFind);

}  // namespace

BENCHMARK_MAIN();
