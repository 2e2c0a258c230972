// Commands of the library frame: catalogue texts and the shared symbols.
#include "tools/zelkora/cli.h"
#include "zelkora/frame/catalogue.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/frame/cls_character.h"

namespace zelkora::cli {

namespace {

void text_command(Args& args, std::ostream& out) {
  clsCharacter chr;
  if (auto lang = args.take_option("--lang")) chr.lLanguage(arg_int32(*lang, "N"));
  const auto re = args.take_list("--re", 3);
  args.expect(1);
  const int32_t id = arg_int32(args[0], "ID");
  Text result;
  if (!re) {
    result = chr.tString(id);
  } else if (re->size() == 1) {
    result = chr.tStringRe(id, arg_text((*re)[0]));
  } else if (re->size() == 2) {
    result = chr.tStringRe2(id, arg_text((*re)[0]), arg_text((*re)[1]));
  } else {
    result = chr.tStringRe3(id, arg_text((*re)[0]), arg_text((*re)[1]), arg_text((*re)[2]));
  }
  out << out_text(result) << "\n";
}

void res_command(Args& args, std::ostream& out) {
  args.expect(1);
  clsCharacter chr;
  out << out_text(chr.tResStr(arg_int32(args[0], "ID"))) << "\n";
}

void eqres_command(Args& args, std::ostream& out) {
  const Compare compare = args.take_flag("--text") ? Compare::Text : Compare::Binary;
  args.expect(2);
  clsCharacter chr;
  out << (chr.bTextEqResString(arg_text(args[0]), arg_int32(args[1], "ID"), compare) ? "true"
                                                                                     : "false")
      << "\n";
}

void symbols_command(Args& args, std::ostream& out) {
  args.expect(0);
  clsCharacter chr;
  const std::pair<const char*, Text> lines[] = {
      {"tPubListDot", chr.tPubListDot()},
      {"tPubF1", chr.tPubF1()},
      {"tPubF2", chr.tPubF2()},
      {"tPubF3", chr.tPubF3()},
      {"tPubF4", chr.tPubF4()},
      {"tPubPf", chr.tPubPf()},
      {"tPubLf", chr.tPubLf()},
      {"squared", clsCharacter::Internals::squared_sign_markup(chr)},
      {"cubed", clsCharacter::Internals::cubed_sign_markup(chr)},
      {"tDecimalSymbol", chr.tDecimalSymbol()},
      {"ThousandsSeparator", chr.ThousandsSeparator()},
  };
  for (const auto& [name, value] : lines) out << name << "=" << out_text(value) << "\n";
}

void check_resources_command(Args& args, std::ostream& out) {
  if (args.size() > 1) args.expect(1);
  const platform::ResourceSources sources = args.size() == 1
                                                ? platform::standard_resources(args[0])
                                                : platform::Platform::current()->resources;
  std::vector<frame::CatalogueProblem> problems;
  const auto catalogue = frame::load_catalogue(sources, &problems);
  out << "texts=" << catalogue->size() << "\n";
  out << "problems=" << problems.size() << "\n";
  for (const frame::CatalogueProblem& p : problems) out << "problem=" << p.describe() << "\n";
}

}  // namespace

std::vector<Command> frame_commands() {
  return {
      {"text", "ID [--lang N] [--re T1 [T2 [T3]]]",
       "catalogue text ID + language offset N, with %%1% %%2% %%3% replaced by T1 T2 T3",
       text_command},
      {"res", "ID", "catalogue text ID without offset; a missing id is a fault", res_command},
      {"eqres", "TEXT ID [--text]",
       "whether TEXT, trimmed, equals catalogue text ID (--text: without regard to case)",
       eqres_command},
      {"symbols", "", "the shared symbols of a new clsCharacter, as name=value lines",
       symbols_command},
      {"check-resources", "[DIR]",
       "loads the catalogue of a resource folder (default: ZELKORA_RESOURCES) and lists its "
       "problems",
       check_resources_command},
  };
}

}  // namespace zelkora::cli
