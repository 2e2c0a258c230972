// The suite's INI files read key by key, as the program menu and the value
// lists read them: the menu of 99 groups of 99 programs opened from a file on
// disk (each open with a new reader: the file parsed once), the same file
// padded with comment lines to 4.4 MB, and a list check against a 4 MB list
// file after its first read. The baseline of each is the same work on the
// in-memory files, parsed once when they are put.
#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/grid/cls_grid_cell_main.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/disk_ini_files.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_grid.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/paths.h"

namespace {

using namespace zelkora;  // NOLINT(google-build-using-namespace)
namespace fs = std::filesystem;

// A folder of its own, removed at the end of the run.
struct Folder {
  fs::path path = fs::temp_directory_path() /
                  ("zk-ini-bench-" +
                   std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
  Folder() { fs::create_directories(path); }
  ~Folder() {
    std::error_code ec;
    fs::remove_all(path, ec);
  }
};

const fs::path& folder() {
  static const Folder f;
  return f.path;
}

// 99 groups of 99 programs; `padding` comment lines after each entry.
Text menu_text(int padding) {
  Text text = u"[AppVersion]\r\nProMenuRevision=2560\r\n";
  const Text comment = u"; " + Text(60, u'注') + u"\r\n";
  for (int g = 1; g <= 99; ++g) {
    const Text group = u"第" + from_utf8(std::to_string(g)) + u"组构件";
    text += u"[" + from_utf8(std::to_string(g)) + u"]\r\n0=" + group + u"\r\n";
    for (int e = 1; e <= 99; ++e) {
      const Text n = from_utf8(std::to_string(e));
      text += n + u"=" + group + u"|程序" + n + u"计算|程序" + n + u"\r\n";
      for (int p = 0; p < padding; ++p) text += comment;
    }
  }
  return text;
}

// A list of `items` values, padded with comments to about `bytes` bytes.
Text list_text(int items, std::size_t bytes) {
  Text text = u"[List]\r\n";
  for (int i = 1; i <= items; ++i) {
    text += from_utf8(std::to_string(i)) + u"=图例" + from_utf8(std::to_string(i)) + u"\r\n";
  }
  const Text comment = u"; " + Text(100, u'x') + u"\r\n";
  while (codepage::to_ansi(text).size() < bytes) text += comment;
  return text;
}

// Written in code page 936, dated an hour back (a file that has been still).
Text put_file(const std::string& name, const Text& content) {
  const fs::path path = folder() / name;
  std::ofstream(path, std::ios::binary) << codepage::to_ansi(content);
  fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(1));
  return platform::text_from_path(path);
}

std::shared_ptr<platform::Platform> with_ini(std::shared_ptr<platform::IniFiles> ini) {
  auto p = platform::Platform::headless();
  p->ini = std::move(ini);
  return p;
}

int32_t open_menu(const std::shared_ptr<platform::Platform>& platform, const Text& file) {
  platform::headless::MemoryGrid grid;
  clsGridCellMain menu(platform);
  menu.GridCell(&grid);
  menu.tProMenuIniFile(file);
  menu.GridCell_Initialize();
  return grid.Rows();
}

void menu_on_disk(benchmark::State& state, int padding) {
  const Text file = put_file("menu" + std::to_string(padding) + ".ini", menu_text(padding));
  for (auto _ : state) {
    const int32_t rows = open_menu(with_ini(std::make_shared<platform::DiskIniFiles>()), file);
    if (rows != 1 + 99 * 100 + 1) state.SkipWithError("the menu is not all there");
  }
}

void menu_in_memory(benchmark::State& state, int padding) {
  auto ini = std::make_shared<platform::headless::MemoryIniFiles>();
  ini->put(u"menu.ini", menu_text(padding));
  const auto platform = with_ini(ini);
  for (auto _ : state) {
    if (open_menu(platform, u"menu.ini") != 1 + 99 * 100 + 1) {
      state.SkipWithError("the menu is not all there");
    }
  }
}

void BM_Menu99x99InMemory(benchmark::State& state) { menu_in_memory(state, 0); }
void BM_Menu99x99OnDisk(benchmark::State& state) { menu_on_disk(state, 0); }
void BM_Menu99x99PaddedTo4MBInMemory(benchmark::State& state) { menu_in_memory(state, 7); }
void BM_Menu99x99PaddedTo4MBOnDisk(benchmark::State& state) { menu_on_disk(state, 7); }
BENCHMARK(BM_Menu99x99InMemory)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Menu99x99OnDisk)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Menu99x99PaddedTo4MBInMemory)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Menu99x99PaddedTo4MBOnDisk)->Unit(benchmark::kMillisecond);

// A list check (list 0: the legend list file the settings name) against a
// list of 999 values in a 4 MB file, the file read before.
template <bool kOnDisk>
void BM_ListCheck4MB(benchmark::State& state) {
  const Text list = list_text(999, std::size_t{4} << 20);
  std::shared_ptr<platform::Platform> platform;
  Text file = u"list.ini";
  if (kOnDisk) {
    file = put_file("list.ini", list);
    platform = with_ini(std::make_shared<platform::DiskIniFiles>());
  } else {
    auto ini = std::make_shared<platform::headless::MemoryIniFiles>();
    ini->put(file, list);
    platform = with_ini(ini);
  }
  const clsCharacter chr(platform);
  platform->settings->set(clsCharacter::Internals::settings_application(chr), u"Settings",
                          u"TuLiIniFile", file);
  clsErrChr err(platform);
  if (err.CheckCboListErrW(0, u"图例", u"图例999", Compare::Binary, true) != 0) {
    state.SkipWithError("the list is not all there");
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(err.CheckCboListErrW(0, u"图例", u"图例500", Compare::Binary, true));
  }
}
BENCHMARK(BM_ListCheck4MB<false>)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ListCheck4MB<true>)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
