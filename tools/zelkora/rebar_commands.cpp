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
  };
}

}  // namespace zelkora::cli
