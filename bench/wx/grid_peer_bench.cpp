// The peer of desk_bench: the same four operations on wxWidgets'
// wxPropertyGrid, the property grid desktop programs of this kind are often
// built on. A program of its own, linked to nothing of Zelkora, so that
// `make bench-peer` can set the figures of the Qt grid beside a grid users
// know, drawn on the same display in the same run.
//
// The grid: 500 rows, a category (heading) and 20 text properties under it,
// 24 categories in all, in a shown frame of 420 x 620 pixels; captions
// alternate between the beam's width and height, every value is "250", as
// in desk_bench's own rows. Each benchmark lets the grid draw before the
// next iteration, as desk_bench lets Qt draw.
#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/frame.h>
#include <wx/init.h>
#include <wx/propgrid/propgrid.h>
#include <wx/propgrid/props.h>

#include <memory>
#include <string>
#include <vector>

class PeerApp : public wxApp {
 public:
  bool OnInit() override { return true; }
};

namespace {

constexpr int kRows = 500;
constexpr int kRowsPerHeading = 21;  // the heading and 20 items
const wxString kDefault = wxString::FromUTF8("250");

// Draws what the grid invalidated and handles what is pending.
void draw(wxPropertyGrid& grid) {
  grid.Update();
  wxTheApp->Yield(true);
}

// One frame with its grid, shown. A changed value is checked (a number
// above zero, as the rows' check "S>0") and shown bold when it differs from
// the default, which is what a form's handler of the change does.
struct PeerForm {
  wxFrame* frame = nullptr;
  wxPropertyGrid* grid = nullptr;
  int refused = 0;

  PeerForm() {
    frame = new wxFrame(nullptr, wxID_ANY, wxString::FromUTF8("peer"));
    grid = new wxPropertyGrid(frame, wxID_ANY, wxDefaultPosition, wxSize(420, 620),
                              wxPG_DEFAULT_STYLE | wxPG_BOLD_MODIFIED);
    frame->SetClientSize(420, 620);
    grid->SetSize(0, 0, 420, 620);
    grid->Bind(wxEVT_PG_CHANGED, [this](wxPropertyGridEvent& event) {
      wxPGProperty* property = event.GetProperty();
      const wxString value = property->GetValueAsString();
      double number = 0;
      if (!value.ToCDouble(&number) || number <= 0) ++refused;
      property->SetModifiedStatus(value.Strip(wxString::both) != kDefault);
      grid->DrawItem(property);  // the row alone: its editor stays as it is
    });
    frame->Show();
    draw(*grid);
  }
  ~PeerForm() { frame->Destroy(); wxTheApp->Yield(true); }
  PeerForm(const PeerForm&) = delete;
  PeerForm& operator=(const PeerForm&) = delete;

  // The 500 rows, appended frozen (faster here than unfrozen), then drawn
  // once.
  void build() {
    grid->Freeze();
    grid->Clear();
    wxPGProperty* heading = nullptr;
    int item = 0;
    for (int row = 1; row <= kRows; ++row) {
      if (row % kRowsPerHeading == 1) {
        heading = grid->Append(new wxPropertyCategory(wxString::FromUTF8("基本信息"),
                                                      wxString::Format("h%d", row)));
        heading->SetHelpString(wxString::FromUTF8("基本信息——构件的编号与材料"));
        continue;
      }
      const bool height = item % 2 != 0;
      auto* property = new wxStringProperty(
          wxString::FromUTF8(height ? "梁的截面高度 h" : "梁的截面宽度 b"),
          wxString::Format("i%d", item), kDefault);
      grid->AppendIn(heading, property);
      property->SetHelpString(
          wxString::FromUTF8(height ? "h——梁的截面高度（mm）" : "b——梁的截面宽度（mm）"));
      ++item;
    }
    grid->Thaw();
  }

  std::vector<wxPGProperty*> headings() const {
    std::vector<wxPGProperty*> found;
    for (wxPropertyGridIterator it = grid->GetIterator(wxPG_ITERATE_CATEGORIES); !it.AtEnd();
         ++it) {
      found.push_back(*it);
    }
    return found;
  }

  // Shows the rows whose caption, help or value (or those of their
  // category) contain the text, and the categories of the rows shown; an
  // empty text shows every row. Answers the rows shown. Not frozen: Thaw
  // redraws the whole grid even when nothing was hidden, which is slower
  // here than the properties' own refreshes.
  int filter(const wxString& text) {
    int shown = 0;
    for (wxPGProperty* heading : headings()) {
      const bool heading_matches = text.empty() || heading->GetLabel().Contains(text) ||
                                   heading->GetHelpString().Contains(text);
      bool any = false;
      for (unsigned int i = 0; i < heading->GetChildCount(); ++i) {
        wxPGProperty* row = heading->Item(i);
        const bool kept = heading_matches || row->GetLabel().Contains(text) ||
                          row->GetHelpString().Contains(text) ||
                          row->GetValueAsString().Contains(text);
        grid->HideProperty(row, !kept, wxPG_DONT_RECURSE);
        any = any || kept;
        shown += kept ? 1 : 0;
      }
      grid->HideProperty(heading, !any, wxPG_DONT_RECURSE);
      shown += any ? 1 : 0;
    }
    return shown;
  }
};

PeerForm& form() {
  static PeerForm* shared = new PeerForm;  // destroyed with the application
  return *shared;
}

void BM_Build500Rows(benchmark::State& state) {
  PeerForm& f = form();
  for (auto _ : state) {
    f.build();
    draw(*f.grid);
  }
  if (static_cast<int>(f.grid->GetRoot()->GetChildCount()) != 24) {
    state.SkipWithError("the grid does not have 24 headings");
  }
}
BENCHMARK(BM_Build500Rows)->Unit(benchmark::kMillisecond);

// The value of the first item, the row selected (its editor open), set as a
// user's edit sets it: the change event raised and handled, the row drawn.
void BM_LeaveCycle(benchmark::State& state) {
  PeerForm& f = form();
  f.build();
  draw(*f.grid);
  wxPGProperty* width = f.grid->GetProperty("i0");
  f.grid->SelectProperty(width);
  draw(*f.grid);
  int i = 0;
  for (auto _ : state) {
    f.grid->ChangePropertyValue(width, wxString::FromUTF8((i++ % 2) != 0 ? "300" : "250"));
    draw(*f.grid);
  }
  // The last value set was "300" (shown bold) after an even count.
  if (f.refused != 0 || f.grid->IsPropertyModified(width) != ((i % 2) == 0)) {
    state.SkipWithError("the change was not handled");
  }
}
BENCHMARK(BM_LeaveCycle)->Unit(benchmark::kMicrosecond);

// Keystrokes in a filter box, one an iteration, the texts in turn; each
// text but the empty one must keep between `low` and `high` rows.
void filter_run(benchmark::State& state, const std::vector<wxString>& typed, int low, int high) {
  PeerForm& f = form();
  f.build();
  draw(*f.grid);
  std::size_t i = 0;
  for (auto _ : state) {
    const wxString& text = typed[i++ % typed.size()];
    const int shown = f.filter(text);
    draw(*f.grid);
    if (!text.empty() && (shown < low || shown > high)) {
      state.SkipWithError("the filter kept another share of the rows");
      break;
    }
  }
  f.filter(wxString());
  draw(*f.grid);
}

// Texts that keep the height rows and their headings (262 of the 500),
// and the box cleared again.
void BM_FilterHalf500Rows(benchmark::State& state) {
  filter_run(state,
             {wxString::FromUTF8("高"), wxString::FromUTF8("高度"), wxString::FromUTF8("高"),
              wxString()},
             230, 270);
}
BENCHMARK(BM_FilterHalf500Rows)->Unit(benchmark::kMillisecond);

// Keystrokes whose texts keep every row.
void BM_FilterKeystroke500Rows(benchmark::State& state) {
  filter_run(state,
             {wxString::FromUTF8("梁"), wxString::FromUTF8("梁的"), wxString::FromUTF8("梁的截"),
              wxString::FromUTF8("截面"), wxString::FromUTF8("2"), wxString::FromUTF8("25"),
              wxString::FromUTF8("250")},
             kRows, kRows);
}
BENCHMARK(BM_FilterKeystroke500Rows)->Unit(benchmark::kMillisecond);

// Every category collapsed, then every one expanded, one at a time as
// clicks on them do.
void BM_CollapseExpandAll500Rows(benchmark::State& state) {
  PeerForm& f = form();
  f.build();
  draw(*f.grid);
  const std::vector<wxPGProperty*> headings = f.headings();
  for (auto _ : state) {
    for (wxPGProperty* heading : headings) f.grid->Collapse(heading);
    for (wxPGProperty* heading : headings) f.grid->Expand(heading);
    draw(*f.grid);
  }
  if (headings.size() != 24 || !headings.back()->IsExpanded()) {
    state.SkipWithError("the headings were not toggled");
  }
}
BENCHMARK(BM_CollapseExpandAll500Rows)->Unit(benchmark::kMillisecond);

}  // namespace

wxIMPLEMENT_APP_NO_MAIN(PeerApp);

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (!wxEntryStart(argc, argv) || !wxTheApp || !wxTheApp->CallOnInit()) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  wxTheApp->OnExit();
  wxEntryCleanup();
  return 0;
}
