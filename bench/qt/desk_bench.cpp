// The property grid on real Qt widgets, offscreen: building a form's grid
// (the shipped beam layout, and a form of 500 rows of its own), one
// keystroke-to-leave cycle (type, leave, check, bold, ControlEnable), and
// saving and opening a project, one keystroke in the filter box over the
// 500 rows, and 100 steps undone and redone. Each is measured beside the same
// work on the in-memory controls, the baseline of the run.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <filesystem>
#include <memory>

#include "zelkora/grid/form_session.h"
#include "zelkora/grid/row_filter.h"
#include "zelkora/grid/value_history.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/qt/qt_controls.h"
#include "zelkora/platform/qt/qt_grid.h"

namespace {

using namespace zelkora;  // NOLINT(google-build-using-namespace)

constexpr int32_t kBeamSteel = 63706;
constexpr int32_t kRowWidth = 8;  // item 10, check "S>0"

// The controls of one form: real widgets, or the in-memory ones.
struct QtForm {
  platform::qt::QtPanel panel;
  platform::qt::QtGridControl* grid = new platform::qt::QtGridControl(&panel);
  platform::qt::QtRichTextBox* title = new platform::qt::QtRichTextBox(&panel);
  platform::headless::MemoryGridForm form;
  QtForm() {
    form.label_col_width = 150;
    panel.resize(420, 700);
    panel.show();
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

// A form's own rows: headings of 20 items each, 500 rows in all.
std::vector<Text> own_rows(int32_t rows, int32_t& max_item) {
  std::vector<Text> texts{Text()};
  max_item = -1;
  for (int32_t r = 1; r <= rows; ++r) {
    if (r % 21 == 1) {
      texts.push_back(u"10|1346|1|||0|-1");
    } else {
      ++max_item;
      texts.push_back(u"100|2490|0|0|_250|S>0|" + from_utf8(std::to_string(max_item)));
    }
  }
  return texts;
}

// A grid of 500 own rows built on the form's controls.
template <class Form>
void build_500_rows(clsGridCell& cell, Form& form) {
  int32_t max_item = 0;
  const std::vector<Text> rows = own_rows(500, max_item);
  cell.LetGridCellText(rows, std::vector<bool>(rows.size(), false), 500, max_item);
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

// Enter the width's row, type a value, leave: the check, the bold mark and
// the form's ControlEnable run; the grid draws what changed.
template <class Form>
void BM_LeaveCycle(benchmark::State& state) {
  Form form;
  grid::FormSession session(bench_platform(), form.grid_control(), form.title_box(), form.panel,
                            form.form);
  session.check_values_on_leave(true);
  session.build(kBeamSteel);
  platform::GridControl& grid = form.grid_control();
  int i = 0;
  for (auto _ : state) {
    grid.ActiveCell(kRowWidth, 3);
    session.EnterRow();
    grid.Text(kRowWidth, 3, (i++ % 2) != 0 ? u"300" : u"250");
    session.CellChanging();
    bool cancel = false;
    session.LeaveCell(kRowWidth, 3, cancel);
    QApplication::processEvents();
    if (cancel) state.SkipWithError("the value was refused");
  }
}
BENCHMARK(BM_LeaveCycle<HeadlessForm>)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LeaveCycle<QtForm>)->Unit(benchmark::kMicrosecond);

// One keystroke in the filter box over 500 rows: the rows' facts, the
// rows kept, the table showing them.
template <class Form>
void BM_FilterKeystroke500Rows(benchmark::State& state) {
  Form form;
  clsGridCell cell(bench_platform());
  build_500_rows(cell, form);
  const Text typed[] = {u"梁", u"梁的", u"梁的截", u"截面", u"2", u"25", u"250", u"b", u""};
  std::size_t i = 0;
  for (auto _ : state) {
    const grid::RowFilter filter{typed[i++ % std::size(typed)]};
    form.show_only(filter.active() ? grid::rows_kept(grid::row_facts(cell), filter, {})
                                   : std::vector<bool>());
    QApplication::processEvents();
  }
}
BENCHMARK(BM_FilterKeystroke500Rows<HeadlessForm>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FilterKeystroke500Rows<QtForm>)->Unit(benchmark::kMillisecond);

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
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
