// Commands of the section properties.
#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>

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

// The dimension `option` ("--B") or its lower-case spelling ("--b").
std::optional<std::string> take_dimension(Args& args, const std::string& option) {
  std::string lower = option;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  std::optional<std::string> value = args.take_option(option);
  std::optional<std::string> alias = args.take_option(lower);
  if (value && alias) throw UsageError{"give " + option + " or " + lower + ", not both"};
  return value ? value : alias;
}

void section_command(Args& args, std::ostream& out) {
  clsSectionProperties sp;
  using Setter = void (clsSectionProperties::*)(double);
  const struct {
    const char* option;
    Setter set;
  } dimensions[] = {
      {"--B", &clsSectionProperties::B_SectionWidth},
      {"--H", &clsSectionProperties::H_SectionDepth},
      {"--Bf", &clsSectionProperties::Bf_FlangeWidth_TensionZone},
      {"--Hf", &clsSectionProperties::Hf_FlangeDepth_TensionZone},
      {"--Bf1", &clsSectionProperties::Bf1_FlangeWidth_CompressionZone},
      {"--Hf1", &clsSectionProperties::Hf1_FlangeDepth_CompressionZone},
      {"--H1", &clsSectionProperties::H1_SectionDepth_Stepped},
  };
  for (const auto& d : dimensions) {
    if (auto value = take_dimension(args, d.option)) (sp.*d.set)(arg_double(*value, d.option + 2));
  }
  if (auto steps = args.take_option("--steps")) {
    sp.StepsNumber_SteppedShape(arg_int32(*steps, "steps"));
  }
  args.expect(1);
  const Section_Shapes shape = shape_of(args[0]);
  sp.Section_Shape(shape);

  // Everything first, so that a fault prints nothing.
  const double inertia = sp.dIx_InertiaMoment();
  const double modulus = sp.dWx_ElasticResistanceMoment();
  const frame::NumberSymbols dot{u'.', 0};
  const auto number = [&](double value) {
    return out_text(frame::general_number_text(value, dot));
  };
  out << "code=" << static_cast<int32_t>(shape) << "\n";
  out << "A=" << number(sp.A_SectionArea()) << "\n";
  out << "Y=" << number(sp.Y_CentroidToTensionEdge()) << "\n";
  out << "I=" << number(inertia) << "\n";
  out << "W=" << number(modulus) << "\n";
}

}  // namespace

std::vector<Command> section_commands() {
  return {
      {"section",
       "SHAPE [--B mm] [--H mm] [--Bf mm] [--Hf mm] [--Bf1 mm] [--Hf1 mm] [--H1 mm] [--steps N]",
       "the shape code, area (m2), centroid distance to the tension edge (m), moment of inertia "
       "(m4) and section modulus (m3) of a cross-section; SHAPE is a shape code or name, sizes "
       "in mm (the options also in lower case)",
       section_command},
  };
}

}  // namespace zelkora::cli
