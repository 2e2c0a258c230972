// Commands of the rebar notation.
#include "tools/zelkora/cli.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/numbers.h"

namespace zelkora::cli {

namespace {

// Numbers are printed with "." whatever the user's locale, so that scripts
// read the same output everywhere.
std::string number(double value) {
  return to_utf8(frame::general_number_text(value, frame::NumberSymbols{}));
}

void rebar_command(Args& args, std::ostream& out) {
  args.expect(1);
  clsCharacter chr;
  int32_t count = 0;
  double diameter = 0;
  int32_t error = 0;
  chr.GjTextTurnW(arg_text(args[0]), count, diameter, error);
  out << "count=" << number(count) << "\ndiameter=" << number(diameter)
      << "\nerror=" << number(error) << "\n";
}

void slabbar_command(Args& args, std::ostream& out) {
  args.expect(1);
  clsCharacter chr;
  float diameter = 0;
  float spacing = 0;
  int32_t error = 0;
  chr.BanGjTextTurn(arg_text(args[0]), diameter, spacing, error);
  out << "diameter=" << number(diameter) << "\nspacing=" << number(spacing)
      << "\nerror=" << number(error) << "\n";
}

void arith_command(Args& args, std::ostream& out) {
  args.expect(1);
  clsCharacter chr;
  int16_t sign = 0;
  const Text value = chr.vYsfTextTurnW(arg_text(args[0]), sign);
  out << "value=" << out_text(value) << "\nsign=" << number(sign) << "\n";
}

void grade_command(Args& args, std::ostream& out) {
  args.expect(1);
  clsCharacter chr;
  out << out_text(chr.tGjFhByFy(frame::Variant(arg_text(args[0])))) << "\n";
}

void steelfy_command(Args& args, std::ostream& out) {
  args.expect(1);
  clsCharacter chr;
  double fy = 0;
  const bool known = chr.bSignEnter_SteelFy(arg_text(args[0]), fy);
  out << "known=" << (known ? "true" : "false") << "\nfy=" << number(fy) << "\n";
}

// One of --area AS [--bars N], --round D, --step D N.
void diameter_command(Args& args, std::ostream& out) {
  const std::optional<std::string> area = args.take_option("--area");
  const std::optional<std::string> bars = args.take_option("--bars");
  const std::optional<std::string> round = args.take_option("--round");
  const std::optional<std::vector<std::string>> step = args.take_list("--step", 2);
  args.expect(0);
  if (int{area.has_value()} + int{round.has_value()} + int{step.has_value()} != 1) {
    throw UsageError{"give one of --area AS [--bars N], --round D, --step D N"};
  }
  if (bars && !area) throw UsageError{"--bars goes with --area"};
  if (step && step->size() != 2) throw UsageError{"--step needs a diameter and a step count"};

  clsCharacter chr;
  double diameter = 0;
  if (area) {
    diameter =
        chr.dGjDiameterFromAsW(arg_double(*area, "area"), bars ? arg_int32(*bars, "bars") : 1);
  } else if (round) {
    diameter = chr.dGjDiameterQzW(arg_double(*round, "diameter"));
  } else {
    diameter =
        chr.dChangeSteelD(arg_double((*step)[0], "diameter"), arg_int32((*step)[1], "steps"));
  }
  out << number(diameter) << "\n";
}

void barlist_command(Args& args, std::ostream& out) {
  const std::optional<std::string> first = args.take_option("--first");
  args.expect(1);
  clsCharacter chr;
  Text label = arg_text(args[0]);
  const int16_t list_number = chr.iGJListW(label, first ? arg_text(*first) : Text());
  out << "number=" << list_number << "\nrest=" << out_text(label) << "\n";
}

}  // namespace

std::vector<Command> rebar_commands() {
  return {
      {"rebar", "TEXT", "the bar count and diameter of a bar text such as 4Φ20 (GjTextTurnW)",
       rebar_command},
      {"slabbar", "TEXT", "the diameter and spacing of a slab bar text such as 10@200",
       slabbar_command},
      {"arith", "TEXT", "a number with one operator evaluated, and the operator code",
       arith_command},
      {"grade", "FY", "the grade symbol for a strength, a strength expression or a grade name",
       grade_command},
      {"steelfy", "TEXT", "whether TEXT names a steel grade, and its strength", steelfy_command},
      {"diameter", "--area AS [--bars N] | --round D | --step D N",
       "the bar diameter (mm) for an area (mm2) shared by N bars, a diameter rounded up to the "
       "series, or a diameter N steps up (down when negative) the series",
       diameter_command},
      {"barlist", "TEXT [--first F]",
       "the bar list number of a bar label (F when given and not \"自动\", else the label's last "
       "digits), and the label left before its \"%%\"",
       barlist_command},
  };
}

}  // namespace zelkora::cli
