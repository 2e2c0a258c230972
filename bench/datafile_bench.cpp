// Writing and then reading a million records with 8-byte ASCII members
// through clsLoadSave, against plain buffered fwrite and fread of the same
// bytes, one record a call. The save includes what the baseline does not:
// the code page conversion, the sync and the rename of the safe replace.
// Compare the ratio of the pairs, not the times.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/platform/platform.h"

namespace {

namespace fs = std::filesystem;

constexpr int kRecords = 1'000'000;
constexpr int kRecordBytes = 4 + 2 + 8;

// A folder of its own, removed at the end of the run.
struct Folder {
  fs::path path;
  Folder() {
    std::string pattern = (fs::temp_directory_path() / "zk-bench-XXXXXX").string();
    if (::mkdtemp(pattern.data())) path = pattern;
  }
  ~Folder() {
    std::error_code ec;
    fs::remove_all(path, ec);
  }
};

const fs::path& folder() {
  static Folder f;
  return f.path;
}

std::shared_ptr<zelkora::platform::Platform> disk_platform() {
  auto p = zelkora::platform::Platform::headless();
  p->files = zelkora::platform::Platform::environment_default()->files;  // the system's
  return p;
}

// The member of record i: its eight last decimal digits.
template <typename Char>
void fill_member(Char* member, int i) {
  for (int k = 7; k >= 0; --k, i /= 10) member[k] = static_cast<Char>('0' + i % 10);
}

void write_plain(const std::string& path) {
  char record[kRecordBytes] = {0, 0, 0, 0, 8, 0};
  std::FILE* file = std::fopen(path.c_str(), "wb");
  for (int i = 0; i < kRecords; ++i) {
    for (int k = 0; k < 4; ++k) record[k] = static_cast<char>((i >> (8 * k)) & 0xFF);
    fill_member(record + 6, i);
    std::fwrite(record, 1, kRecordBytes, file);
  }
  std::fclose(file);
}

void BM_FwriteRecords(benchmark::State& state) {
  const std::string path = (folder() / "plain.dat").string();
  for (auto _ : state) write_plain(path);
  state.SetBytesProcessed(state.iterations() * kRecords * kRecordBytes);
}
BENCHMARK(BM_FwriteRecords)->Unit(benchmark::kMillisecond)->UseRealTime();

void save(zelkora::clsLoadSave& ls, const zelkora::Text& path) {
  zelkora::Text member(8, u'0');
  ls.OpenFileA(path, u"OutPut");
  for (int i = 0; i < kRecords; ++i) {
    fill_member(member.data(), i);
    ls.WriteFileOneA(i, member);
  }
  if (!ls.CloseFileA()) std::abort();
}

void BM_SaveRecords(benchmark::State& state) {
  zelkora::clsLoadSave ls(disk_platform());
  const zelkora::Text path = zelkora::from_utf8((folder() / "records.dat").string());
  for (auto _ : state) save(ls, path);
  state.SetBytesProcessed(state.iterations() * kRecords * kRecordBytes);
}
BENCHMARK(BM_SaveRecords)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_FreadRecords(benchmark::State& state) {
  const std::string path = (folder() / "plain.dat").string();
  if (!fs::exists(path)) write_plain(path);
  for (auto _ : state) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    unsigned char header[6];
    char member[65536];
    long sum = 0;
    for (int i = 0; i < kRecords; ++i) {
      if (std::fread(header, 1, 6, file) != 6) std::abort();
      const std::size_t length = header[4] | header[5] << 8;
      if (std::fread(member, 1, length, file) != length) std::abort();
      sum += header[0] + member[length - 1];
    }
    std::fclose(file);
    benchmark::DoNotOptimize(sum);
  }
  state.SetBytesProcessed(state.iterations() * kRecords * kRecordBytes);
}
BENCHMARK(BM_FreadRecords)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_LoadRecords(benchmark::State& state) {
  zelkora::clsLoadSave ls(disk_platform());
  const zelkora::Text path = zelkora::from_utf8((folder() / "records.dat").string());
  if (!fs::exists(folder() / "records.dat")) save(ls, path);
  zelkora::UseBinRecord record;
  for (auto _ : state) {
    ls.OpenFileA(path, u"InPut");
    long sum = 0;
    for (int i = 0; i < kRecords; ++i) {
      if (!ls.ReadFileOneA(record)) std::abort();
      sum += record.ID + record.Member.back();
    }
    ls.CloseFileA();
    benchmark::DoNotOptimize(sum);
  }
  state.SetBytesProcessed(state.iterations() * kRecords * kRecordBytes);
}
BENCHMARK(BM_LoadRecords)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
