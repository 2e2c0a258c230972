// `zelkora demo`: one session of a calculation program, headless, on the
// shipped resources and a fresh temporary folder. The main menu is read and a
// program chosen; that program's form grid is built from its layout; an
// engineer's edits are applied (one refused with its message, one group split,
// one default typed back); the values are checked with their check
// expressions; the project is saved, reloaded into a fresh form and compared;
// and a short report is written: its head, numbered headings, the strengths
// of the form's grades from the library's material tables and a long
// equation broken to the line. Each step prints what the user would
// see.

#include <cmath>
#include <filesystem>
#include <numbers>
#include <random>
#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/frame/material_tables.h"
#include "zelkora/frame/numbers.h"
#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/cls_grid_cell_main.h"
#include "zelkora/grid/form_check.h"
#include "zelkora/grid/form_session.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/grid_cell_internals.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/paths.h"
#include "zelkora/section/cls_section_properties.h"

namespace zelkora::cli {

namespace {

constexpr TextView kMenuFile = u"ZK_PROMENU.INI";
// The program of the menu that the session opens, and its form's layout.
constexpr TextView kProgram = u"梁配筋计算";
constexpr TextView kLayout = u"clsBeamSteel";

// A new folder of the session's own in the system's temporary folder.
std::filesystem::path fresh_temporary_folder() {
  std::error_code ec;
  const std::filesystem::path temp = std::filesystem::temp_directory_path(ec);
  std::random_device random;
  for (int attempt = 0; !ec && attempt < 100; ++attempt) {
    const std::filesystem::path dir = temp / ("zelkora-demo-" + std::to_string(random()));
    if (std::filesystem::create_directory(dir, ec)) return dir;
  }
  throw Failure{"cannot make a temporary folder"};
}

// The message box of the session: prints what it shows at once, framed.
class SessionMessageBox : public platform::MessageBox {
 public:
  explicit SessionMessageBox(std::ostream& out) : out_(out) {}
  void warning(TextView text, TextView title) override {
    out_ << "  ┌ " << out_text(title) << "\n";
    for (const Text& line : split_text(trim(text), u"\r\n")) {
      if (!trim(line).empty()) out_ << "  │ " << out_text(trim(line)) << "\n";
    }
  }
  int32_t question(TextView text, TextView title) override {
    out_ << "  ? " << out_text(title) << ": " << out_text(text) << " -> 是\n";
    return kYes;
  }
  void diagnostic(std::string_view message) override { out_ << "  ! " << message << "\n"; }

 private:
  std::ostream& out_;
};

void step(std::ostream& out, const std::string& title) { out << "\n== " << title << "\n"; }

void indent(std::ostream& out, const std::string& text) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) out << "  " << line << "\n";
}

// Enters the row of `item`, types `text` into its value cell and leaves it,
// as a user would. True when the leave was accepted.
bool edit(grid::FormSession& form, platform::headless::HeadlessForm& view, int32_t item,
          TextView text, std::ostream& out) {
  clsGridCell& cell = form.cell();
  view.enter(cell.lGetRowByIndex(item));
  view.type(text);
  out << "  " << out_text(cell.tGetCaption(item)) << ": \"" << out_text(text) << "\"\n";
  // The form checks the entry with the row's check expression before it
  // lets the cell go; the grid applies the group rule.
  return !cell.bLeaveCellCanCelA();
}

void demo_command(Args& args, std::ostream& out) {
  args.expect(0);
  auto platform = std::make_shared<platform::Platform>(*platform::Platform::current());
  platform->messages = std::make_shared<SessionMessageBox>(out);
  platform->ini = shipped_menu_ini(*platform);
  platform::ScopedPlatform scope(platform);

  out << "Zelkora: one session of a calculation program, headless.\n";

  // 1. The main menu, a group unfolded and a program chosen.
  step(out, "The main menu: unfold 基本构件 and choose " + out_text(kProgram));
  platform::headless::MemoryGrid menu_grid;
  clsGridCellMain menu(platform);
  menu.GridCell(&menu_grid);
  menu.tProMenuIniFile(kMenuFile);
  menu.GridCell_Initialize();
  Text page, key;
  menu_grid.ActiveCell(1, grid::kCaptionCol);
  menu.GridCell_Click(page, key);
  int32_t program_row = 0;
  for (std::size_t i = 1; i < menu.menu_lines().size(); ++i) {
    if (menu.menu_lines()[i].key == kProgram) program_row = static_cast<int32_t>(i);
  }
  menu_grid.ActiveCell(program_row, grid::kCaptionCol);
  menu.GridCell_EnterRow();
  if (!menu.GridCell_Click(page, key)) throw Failure{"the menu has no beam program"};
  std::string drawn = menu_grid.render();
  indent(out, drawn.substr(0, drawn.find("+ 地基基础")) + "  ...");
  out << "  selected=" << out_text(page) << "|" << out_text(key) << "\n";

  // 2. The program's form grid, from its layout, at its default values.
  step(out, "The form " + out_text(kLayout) + ": its grid at the default values");
  platform::headless::HeadlessForm view;
  grid::FormSession session(platform, view.grid, view.title, view.panel, view.form);
  view.connect(&session);
  clsGridCell& form = session.cell();
  const std::optional<int32_t> layout = grid::layout_name_id(
      kLayout, clsCharacter::Internals::catalogue(clsGridCell::Internals::character(form)));
  if (!layout) throw Failure{"the layout clsBeamSteel is missing"};
  session.build(*layout);
  indent(out, view.grid.render());

  // 3. The engineer's edits.
  step(out, "Edits: a refused width, a group split, a default typed back");
  constexpr int32_t kWidth = 10, kDepth = 11, kBars = 15, kBarCount = 16, kBarDiameter = 17;
  constexpr int32_t kProject = 0, kMoment = 4, kConcrete = 2, kSteel = 12;
  edit(session, view, kProject, u"某办公楼 KL-3", out);
  if (!edit(session, view, kWidth, u"-250", out)) {
    out << "  -> refused; the cell keeps its value\n";
  }
  edit(session, view, kWidth, u"300", out);
  edit(session, view, kDepth, u"650", out);
  edit(session, view, kDepth, u"500", out);
  out << "  -> 500 is the default again: its value is no longer bold\n";
  form.ExpandGroupMembers(form.lGetRowByIndex(kBars), true);
  edit(session, view, kBars, u"3,20", out);
  out << "  -> the group reads \"" << out_text(form.tGetText(kBars)) << "\", its members \""
      << out_text(form.tGetText(kBarCount)) << "\" and \"" << out_text(form.tGetText(kBarDiameter))
      << "\"\n";
  edit(session, view, kMoment, u"180", out);
  view.enter(form.lGetRowByIndex(kDepth));
  indent(out, view.grid.render(&view.title));

  // 4. Every value against its check expression.
  step(out, "Every value checked with its check expression");
  std::vector<Text> texts;
  form.GetCurrentText(texts);
  const std::vector<grid::ValueRefusal> refusals = grid::check_form_values(form);
  for (const grid::ValueRefusal& r : refusals) out << "  " << out_text(r.message) << "\n";
  out << "  " << texts.size() << " values, " << refusals.size() << " refused\n";

  // 5. Saved to a project file, reloaded into a fresh form and compared.
  step(out, "Saved, reloaded into a fresh form, compared");
  const std::filesystem::path dir = fresh_temporary_folder();
  const Text file = platform::text_from_path(dir / "beam.zks");
  const Text form_name = clsGridCell::Internals::character(form).tResStr(*layout);
  Text add_data = u"演示";
  const bool saved = form.bLoadOrSaveData(u"Save", file, form_name, {}, add_data);
  platform::headless::HeadlessForm view2;
  grid::FormSession session2(platform, view2.grid, view2.title, view2.panel, view2.form);
  clsGridCell& reloaded = session2.cell();
  reloaded.lInterfaceResID(*layout);
  reloaded.GridCell_InitializeA(&view2.grid, &view2.title, &view2.panel, &view2.form);
  Text add_back;
  const bool loaded = reloaded.bLoadOrSaveData(u"Load", file, form_name, {}, add_back);
  std::vector<Text> texts2;
  reloaded.GetCurrentText(texts2);
  out << "  beam.zks: " << std::filesystem::file_size(dir / "beam.zks") << " bytes, saved "
      << (saved ? "yes" : "no") << ", loaded " << (loaded ? "yes" : "no") << ", values "
      << (texts2 == texts && add_back == add_data ? "identical" : "DIFFERENT") << "\n";
  std::filesystem::remove_all(dir);

  // 6. A short report.
  step(out, "Report");
  clsCharacter& chr = clsGridCell::Internals::character(form);
  const auto number = [&](int32_t item) {
    return frame::parse_number(texts[static_cast<std::size_t>(item)], chr.number_symbols())
        .value_or(0);
  };
  const double b = number(kWidth), h = number(kDepth), m = number(kMoment);
  const auto line = [&](TextView text) {
    out << "  " << out_text(chr.tDelSuperSubSign(text)) << "\n";
  };
  // The head, headings numbered by the serial labels, the strengths of the
  // grades, a long equation broken to the line.
  for (const Text& head :
       split_text(chr.tCalHead(u"梁配筋计算", form.tEngineeringName(), {59899, 59009}),
                  chr.tConEnter1())) {
    if (!head.empty()) line(head);
  }
  line(chr.tChrSerial(1) + u"截面与荷载");
  line(u"  " + chr.tExpStr(u"b", b, u"mmd") + u"，" + chr.tExpStr(u"h", h, u"mmd") + u"，" +
       chr.tExpStr(u"M", m, u"knmd_1"));
  // The material values of the form's grades.
  const std::optional<int32_t> grade = frame::iConcreteGrade(texts[kConcrete]);
  const Text& steel = texts[kSteel];
  const std::optional<double> fc = grade ? frame::dConcreteFc(*grade) : std::nullopt;
  const std::optional<double> alpha1 = grade ? frame::dConcreteAlpha1(*grade) : std::nullopt;
  const std::optional<double> fy = frame::dSteelFy(steel);
  const std::optional<double> xi_b = grade ? frame::dXiB(*grade, steel) : std::nullopt;
  if (!fc || !alpha1 || !fy || !xi_b) throw Failure{"the form's grades have no material values"};
  const double compressive = *fc, stress_block = *alpha1, yield = *fy, balanced = *xi_b;
  line(u"  C" + texts[kConcrete] + u"、" + steel + u"：" +
       chr.tExpStr(u"f_ub(c)ub_", compressive, u"mpad_1") + u"，" +
       chr.tExpStr(u"f_ub(y)ub_", yield, u"mpad_0"));
  int32_t count = 0, error = 0;
  double diameter = 0;
  chr.GjTextTurnW(u"3Φ20", count, diameter, error);
  const double area = count * std::numbers::pi * diameter * diameter / 4;
  line(chr.tChrSerial(2) + u"通长纵向钢筋 3Φ20");
  chr.iMaxChrNow(80);
  const Text equation = u"A_ub(s)ub_ ＝ n·π·d_up(2)up_ / 4 ＝ " + chr.tFmt(count, u"0") +
                        u" × 3.1416 × " + chr.tFmt(diameter, u"0") + u" × " +
                        chr.tFmt(diameter, u"0") + u" / 4" + chr.tFmtEq(area, u"mm2d");
  for (const Text& piece : split_text(chr.SplitEQ(u"  " + equation), chr.tConEnter1())) {
    line(piece);
  }
  clsSectionProperties section;
  section.Section_Shape(Rectangular_Shaped);
  section.B_SectionWidth(b);
  section.H_SectionDepth(h);
  line(u"  " + chr.tExpStr(u"I", section.dIx_InertiaMoment(), u"0.000E+00") + u"m4");
  line(chr.tChrSerial(3) + u"配筋率");
  chr.TxtClear();
  chr.ListOut_Ubound(2);
  chr.ListOut_Initialize(0, 14);
  chr.ListOut_Index_Width(0, 20);
  chr.ListOut_Index_Align(0, zkLeftJustify);
  chr.ListOut_TextAddRow({u"项目", u"计算值", u"限值"}, 0);
  const double rho = area / (b * (h - 40));
  chr.ListOut_TextAddRow({u"配筋率 ρ", chr.tFmt(rho * 100, u"2") + u"%", u"0.20%"}, 0);
  chr.ListOut_TextAddRow(
      {u"受压区高度 ξ", chr.tFmt(rho * yield / (stress_block * compressive), u"3"), chr.tFmt(balanced, u"3")}, 0);
  for (const Text& row : split_text(chr.Txt(), chr.tConEnter1())) {
    if (!trim(row).empty()) line(u"  " + Text(trim_right(row)));
  }
}

}  // namespace

std::vector<Command> demo_commands() {
  return {
      {"demo", "",
       "one session of a calculation program, headless: menu, form grid, edits, checks, save "
       "and reload, report",
       demo_command},
  };
}

}  // namespace zelkora::cli
