// The property grid on real Qt widgets: building a form's grid (the shipped
// beam layout, and a form of 500 rows of its own), one keystroke-to-leave
// cycle over the 500 rows (type, leave, check, bold, ControlEnable), saving
// and opening a project, keystrokes in the filter box over the 500 rows (texts that keep
// every row, and texts that keep half of them), every heading collapsed and
// expanded again, and 100 steps undone and redone. Each is measured beside
// the same work on the in-memory controls, the baseline of the run.
//
// The grid is 420 x 620 pixels in a shown window, the title box below it.
// It runs on the platform plugin it is given (`-platform xcb` on an X
// display, as `make bench-peer` runs it beside grid_peer_bench), offscreen
// when none is given.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <memory>

#include "zelkora/grid/form_session.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/row_filter.h"
#include "zelkora/grid/value_history.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/qt/qt_controls.h"
#include "zelkora/platform/qt/qt_grid.h"

namespace {

using namespace zelkora;  // NOLINT(google-build-using-namespace)

constexpr int32_t kBeamSteel = 63706;
using grid::kValueCol;
constexpr int32_t kFirstItemRow = 2;  // of the own rows: under the first heading

// The controls of one form: real widgets, or the in-memory ones.
struct QtForm {
  platform::qt::QtPanel panel;
  platform::qt::QtGridControl* grid = new platform::qt::QtGridControl(&panel);
  platform::qt::QtRichTextBox* title = new platform::qt::QtRichTextBox(&panel);
  platform::headless::MemoryGridForm form;
  QtForm() {
    form.label_col_width = 150;
    panel.resize(420, 700);
    grid->setGeometry(0, 0, 420, 620);
    title->setGeometry(0, 620, 420, 80);
    panel.show();
    QApplication::processEvents();
  }
  platform::GridControl& grid_control() { return *grid; }
  platform::RichTextBox& title_box() { return *title; }
  void show_only(std::vector<bool> kept) { grid->show_only(std::move(kept)); }
};

struct HeadlessForm {
  platform::headless::HeadlessForm view;
  platform::headless::MemoryPanel& panel = view.panel;
  platform::headless::MemoryGridForm& form = view.form;
  platform::GridControl& grid_control() { return view.grid; }
  platform::RichTextBox& title_box() { return view.title; }
  void show_only(const std::vector<bool>& /*kept*/) {}
};

std::shared_ptr<platform::Platform> bench_platform() {
  static const auto platform = [] {
    auto p = platform::Platform::headless();
    // Data files on disk, as a desktop program has them.
    p->files = platform::Platform::environment_default()->files;
    return p;
  }();
  return platform;
}

template <class Form>
void BM_BuildBeamGrid(benchmark::State& state) {
  Form form;
  for (auto _ : state) {
    grid::FormSession session(bench_platform(), form.grid_control(), form.title_box(), form.panel,
                              form.form);
    session.build(kBeamSteel);
    QApplication::processEvents();
  }
}
BENCHMARK(BM_BuildBeamGrid<HeadlessForm>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildBeamGrid<QtForm>)->Unit(benchmark::kMillisecond);

// A form's own rows: headings of 20 items each, 500 rows in all (24
// headings); the items' captions alternate between the beam's width and its
// height, every value is 250.
constexpr int32_t kOwnRows = 500;
constexpr int32_t kRowsPerHeading = 21;

std::vector<Text> own_rows(int32_t rows, int32_t& max_item) {
  std::vector<Text> texts{Text()};
  max_item = -1;
  for (int32_t r = 1; r <= rows; ++r) {
    if (r % kRowsPerHeading == 1) {
      texts.push_back(u"10|1346|1|||0|-1");
    } else {
      ++max_item;
      const Text caption = max_item % 2 == 0 ? u"2490" : u"2492";
      texts.push_back(u"100|" + caption + u"|0|0|_250|S>0|" + from_utf8(std::to_string(max_item)));
    }
  }
  return texts;
}

// A grid of 500 own rows built on the form's controls; the first item's row
// raises the form's event, so leaving it runs ControlEnable.
template <class Form>
void build_500_rows(clsGridCell& cell, Form& form) {
  int32_t max_item = 0;
  const std::vector<Text> rows = own_rows(kOwnRows, max_item);
  std::vector<bool> events(rows.size(), false);
  events[kFirstItemRow] = true;
  cell.LetGridCellText(rows, events, kOwnRows, max_item);
  cell.GridCell_InitializeA(&form.grid_control(), &form.title_box(), &form.panel, &form.form);
  cell.LoadDefaultEnter(false);
}

template <class Form>
void BM_Build500Rows(benchmark::State& state) {
  Form form;
  for (auto _ : state) {
    clsGridCell cell(bench_platform());
    build_500_rows(cell, form);
    QApplication::processEvents();
  }
}
BENCHMARK(BM_Build500Rows<HeadlessForm>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Build500Rows<QtForm>)->Unit(benchmark::kMillisecond);

// Over the 500 rows: enter the first item's row, type a value, leave: the
// check, the bold mark and the form's ControlEnable run; the grid draws what
// changed.
template <class Form>
void BM_LeaveCycle(benchmark::State& state) {
  Form form;
  clsGridCell cell(bench_platform());
  build_500_rows(cell, form);
  QApplication::processEvents();
  platform::GridControl& grid = form.grid_control();
  int i = 0;
  for (auto _ : state) {
    grid.ActiveCell(kFirstItemRow, kValueCol);
    cell.GridCell_EnterRow();
    grid.Text(kFirstItemRow, kValueCol, (i++ % 2) != 0 ? u"300" : u"250");
    cell.GridCell_CellChanging();
    const bool cancel = cell.bLeaveCellCanCelA();
    QApplication::processEvents();
    if (cancel) state.SkipWithError("the value was refused");
  }
  // The last value typed was 300 (bold) after an even count.
  if (grid.FontBold(kFirstItemRow, kValueCol) != (i % 2 == 0)) {
    state.SkipWithError("the bold mark does not follow the value");
  }
}
BENCHMARK(BM_LeaveCycle<HeadlessForm>)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LeaveCycle<QtForm>)->Unit(benchmark::kMicrosecond);

// Keystrokes in the filter box over the 500 rows, one an iteration, the
// texts in turn: the rows' facts, the rows kept, the table showing them.
// Each text but the empty one (the box cleared) must keep between `low` and
// `high` of the rows.
template <class Form>
void filter_keystrokes(benchmark::State& state, const std::vector<Text>& typed, int32_t low,
                       int32_t high) {
  Form form;
  clsGridCell cell(bench_platform());
  build_500_rows(cell, form);
  QApplication::processEvents();
  std::size_t i = 0;
  for (auto _ : state) {
    const grid::RowFilter filter{typed[i++ % typed.size()]};
    std::vector<bool> kept =
        filter.active() ? grid::rows_kept(grid::row_facts(cell), filter, {}) : std::vector<bool>();
    const auto shown = kept.empty() ? kOwnRows : std::count(kept.begin() + 1, kept.end(), true);
    form.show_only(std::move(kept));
    QApplication::processEvents();
    if (filter.active() && (shown < low || shown > high)) {
      state.SkipWithError("the filter kept another share of the rows");
      break;
    }
  }
}

// Texts that keep every row: the work of a keystroke that hides nothing.
template <class Form>
void BM_FilterKeystroke500Rows(benchmark::State& state) {
  filter_keystrokes<Form>(state, {u"梁", u"梁的", u"梁的截", u"截面", u"2", u"25", u"250"},
                          kOwnRows, kOwnRows);
}
BENCHMARK(BM_FilterKeystroke500Rows<HeadlessForm>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FilterKeystroke500Rows<QtForm>)->Unit(benchmark::kMillisecond);

// "高" and "高度" keep the height rows and their headings (262 of the 500),
// typed, taken back and the box cleared, as a user does.
template <class Form>
void BM_FilterHalf500Rows(benchmark::State& state) {
  filter_keystrokes<Form>(state, {u"高", u"高度", u"高", u""}, 230, 270);
}
BENCHMARK(BM_FilterHalf500Rows<HeadlessForm>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FilterHalf500Rows<QtForm>)->Unit(benchmark::kMillisecond);

// Every heading of the 500 rows collapsed, then every one expanded, one at a
// time as a click on its picture does (the click handled by the grid's
// object, which toggles the heading); the grid draws once after.
template <class Form>
void BM_CollapseExpandAll500Rows(benchmark::State& state) {
  Form form;
  clsGridCell cell(bench_platform());
  build_500_rows(cell, form);
  QApplication::processEvents();
  platform::GridControl& grid = form.grid_control();
  std::vector<int32_t> headings;
  for (int32_t row = 1; row <= kOwnRows; row += kRowsPerHeading) headings.push_back(row);
  const auto toggle_all = [&] {
    for (const int32_t row : headings) cell.GridCell_ClickA(row, grid::kPictureCol);
  };
  for (auto _ : state) {
    toggle_all();  // collapsed
    toggle_all();  // expanded
    QApplication::processEvents();
  }
  if (grid.RowHeight(kFirstItemRow) <= 0 || grid.RowHeight(kOwnRows) <= 0) {
    state.SkipWithError("the rows were not expanded again");
  }
}
BENCHMARK(BM_CollapseExpandAll500Rows<HeadlessForm>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CollapseExpandAll500Rows<QtForm>)->Unit(benchmark::kMillisecond);

// 100 committed values over the 500 rows undone, then redone (200 steps).
template <class Form>
void BM_UndoRedo100Steps(benchmark::State& state) {
  Form form;
  clsGridCell cell(bench_platform());
  build_500_rows(cell, form);
  grid::ValueHistory history(cell);
  for (int32_t step = 0; step < 100; ++step) {
    grid::write_values(cell, {{step * 4, from_utf8(std::to_string(300 + step))}});
    history.record();
  }
  // Each step as the desktop form takes it: the values written back, then
  // every value checked again for the marks of refused ones.
  std::size_t refused = 0;
  const auto marks = [&] { refused += grid::refusals(cell).size(); };
  for (auto _ : state) {
    while (history.undo()) marks();
    while (history.redo()) marks();
    QApplication::processEvents();
  }
  benchmark::DoNotOptimize(refused);
  if (history.steps() != 100) state.SkipWithError("the steps were not kept");
}
BENCHMARK(BM_UndoRedo100Steps<HeadlessForm>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoRedo100Steps<QtForm>)->Unit(benchmark::kMillisecond);

template <class Form>
void BM_SaveAndOpenProject(benchmark::State& state) {
  Form form;
  grid::FormSession session(bench_platform(), form.grid_control(), form.title_box(), form.panel,
                            form.form);
  session.build(kBeamSteel);
  const Text file =
      from_utf8((std::filesystem::temp_directory_path() / "zelkora_desk_bench.zks").string());
  Text add;
  for (auto _ : state) {
    if (!session.cell().bLoadOrSaveData(u"Save", file, u"clsBeamSteel", {}, add) ||
        !session.cell().bLoadOrSaveData(u"Load", file, u"clsBeamSteel", {}, add)) {
      state.SkipWithError("the project could not be saved or opened");
    }
    QApplication::processEvents();
  }
  std::filesystem::remove(to_utf8(file));
}
BENCHMARK(BM_SaveAndOpenProject<HeadlessForm>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveAndOpenProject<QtForm>)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  // Offscreen unless a platform plugin is given.
  const bool given = qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ||
                     std::any_of(argv + 1, argv + argc, [](const char* arg) {
                       return std::strcmp(arg, "-platform") == 0 ||
                              std::strcmp(arg, "--platform") == 0;
                     });
  if (!given) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
