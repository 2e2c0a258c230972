// Commands of the section properties.
#include <charconv>

#include "tools/zelkora/cli.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/numbers.h"
#include "zelkora/section/cls_section_properties.h"

namespace zelkora::cli {

namespace {

// A shape code as a number, else a shape name read by Get_Section_Shape (an
// unknown name is rectangular, as in the forms).
Section_Shapes shape_of(const std::string& arg) {
  int32_t code = 0;
  const char* end = arg.data() + arg.size();
  auto [ptr, ec] = std::from_chars(arg.data(), end, code);
  if (!arg.empty() && ec == std::errc() && ptr == end) return static_cast<Section_Shapes>(code);
  clsCharacter chr;
  Text name = arg_text(arg);
  return chr.Get_Section_Shape(name);
}

void section_command(Args& args, std::ostream& out) {
  clsSectionProperties sp;
  using Setter = void (clsSectionProperties::*)(double);
  const struct {
    const char* option;
    Setter set;
  } dimensions[] = {
      {"--b", &clsSectionProperties::B_SectionWidth},
      {"--h", &clsSectionProperties::H_SectionDepth},
      {"--bf", &clsSectionProperties::Bf_FlangeWidth_TensionZone},
      {"--hf", &clsSectionProperties::Hf_FlangeDepth_TensionZone},
      {"--bf1", &clsSectionProperties::Bf1_FlangeWidth_CompressionZone},
      {"--hf1", &clsSectionProperties::Hf1_FlangeDepth_CompressionZone},
      {"--h1", &clsSectionProperties::H1_SectionDepth_Stepped},
  };
  for (const auto& d : dimensions) {
    if (auto value = args.take_option(d.option)) (sp.*d.set)(arg_double(*value, d.option + 2));
  }
  if (auto steps = args.take_option("--steps")) {
    sp.StepsNumber_SteppedShape(arg_int32(*steps, "steps"));
  }
  args.expect(1);
  sp.Section_Shape(shape_of(args[0]));

  // All four first, so that a fault prints nothing.
  const double inertia = sp.dIx_InertiaMoment();
  const double modulus = sp.dWx_ElasticResistanceMoment();
  const frame::NumberSymbols dot{u'.', 0};
  out << "I=" << out_text(frame::general_number_text(inertia, dot)) << "\n";
  out << "W=" << out_text(frame::general_number_text(modulus, dot)) << "\n";
  out << "A=" << out_text(frame::general_number_text(sp.A_SectionArea(), dot)) << "\n";
  out << "Y=" << out_text(frame::general_number_text(sp.Y_CentroidToTensionEdge(), dot)) << "\n";
}

}  // namespace

std::vector<Command> section_commands() {
  return {
      {"section",
       "SHAPE [--b B] [--h H] [--bf BF] [--hf HF] [--bf1 BF1] [--hf1 HF1] [--h1 H1] [--steps N]",
       "moment of inertia (m4), section modulus (m3), area (m2) and centroid distance to the "
       "tension edge (m) of a cross-section; SHAPE is a shape code or name, sizes in mm",
       section_command},
  };
}

}  // namespace zelkora::cli
