// Commands of number formatting and formula markup.
#include "tools/zelkora/cli.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/typeset/markup.h"
#include "zelkora/typeset/picture_format.h"

namespace zelkora::cli {

namespace {

// The value and the code of a formatting command, and a clsCharacter set up
// by its flags.
struct Formatting {
  clsCharacter chr;
  double value = 0;
  Text code;
  bool fix = false;
};

void read_formatting(Args& args, Formatting& f, bool fix_flag, bool markup_flag) {
  if (fix_flag) f.fix = args.take_flag("--fix");
  if (markup_flag && args.take_flag("--markup")) f.chr.bSuperSub(true);
  args.expect(2);
  f.value = arg_double(args[0], "VALUE");
  f.code = arg_text(args[1]);
}

void cf_command(Args& args, std::ostream& out) {
  clsCharacter chr;
  if (args.take_flag("--markup")) chr.bSuperSub(true);
  args.expect(1);
  const Text pattern = chr.tCF(arg_text(args[0]));
  out << "pattern=" << out_text(pattern) << "\n";
  out << "decimals=" << clsCharacter::Internals::format_decimals(chr) << "\n";
}

void fmt_command(Args& args, std::ostream& out) {
  Formatting f;
  read_formatting(args, f, true, true);
  out << out_text(f.chr.tFmt(f.value, f.code, f.fix)) << "\n";
}

void fmtfix_command(Args& args, std::ostream& out) {
  Formatting f;
  read_formatting(args, f, false, true);
  out << out_text(f.chr.tFmtFix(f.value, f.code)) << "\n";
}

void fmtv_command(Args& args, std::ostream& out) {
  Formatting f;
  read_formatting(args, f, true, true);
  out << out_text(f.chr.tFmtV(f.value, f.code, f.fix)) << "\n";
}

void fmteq_command(Args& args, std::ostream& out) {
  Formatting f;
  read_formatting(args, f, true, false);
  out << out_text(f.chr.tFmtEq(f.value, f.code, f.fix)) << "\n";
}

void fmts_command(Args& args, std::ostream& out) {
  Formatting f;
  const bool space = args.take_flag("--space");
  read_formatting(args, f, true, false);
  out << out_text(f.chr.tFmtS(f.value, f.code, f.fix, space)) << "\n";
}

void format_command(Args& args, std::ostream& out) {
  args.expect(2);
  clsCharacter chr;  // for the user's number symbols
  const double value = arg_double(args[0], "VALUE");
  out << out_text(typeset::format_picture(value, arg_text(args[1]), chr.number_symbols())) << "\n";
}

void strip_command(Args& args, std::ostream& out) {
  const bool split = args.take_flag("--split");
  args.expect(1);
  clsCharacter chr;
  const Text text = arg_text(args[0]);
  out << out_text(split ? chr.tDelSuperSubSplitSign(text) : chr.tDelSuperSubSign(text)) << "\n";
}

void width_command(Args& args, std::ostream& out) {
  args.expect(1);
  out << typeset::markup_display_width(arg_text(args[0])) << "\n";
}

void label_command(Args& args, std::ostream& out) {
  const std::optional<std::string> dot = args.take_option("--dot");
  args.expect(2);
  const int32_t n = arg_int32(args[1], "N");
  clsCharacter chr;
  if (dot) chr.tPubListDot(arg_text(*dot));
  const std::string_view kind = args[0];
  Text label;
  if (kind == "serial") {
    label = chr.tChrSerial(n);
  } else if (kind == "serial2") {
    label = chr.tChrSerial2(n);
  } else if (kind == "sl") {
    label = chr.tChrSl(n);
  } else if (kind == "list") {
    label = chr.tChrList(n);
  } else if (kind == "roman") {
    label = chr.tLuoMaNum(n);
  } else {
    throw UsageError{"the label must be serial, serial2, sl, list or roman, not \"" +
                     std::string(kind) + "\""};
  }
  out << out_text(label) << "\n";
}

}  // namespace

std::vector<Command> typeset_commands() {
  return {
      {"cf", "CODE [--markup]", "the picture pattern and decimals of a format code", cf_command},
      {"fmt", "VALUE CODE [--fix] [--markup]",
       "VALUE formatted by CODE, trailing zeros trimmed (tFmt)", fmt_command},
      {"fmtfix", "VALUE CODE [--markup]", "VALUE formatted by CODE, all decimals (tFmtFix)",
       fmtfix_command},
      {"fmtv", "VALUE CODE [--fix] [--markup]",
       "VALUE with about decimals + 1 significant digits (tFmtV)", fmtv_command},
      {"fmteq", "VALUE CODE [--fix]", "the right-hand side \" ＝ value\" (tFmtEq)", fmteq_command},
      {"fmts", "VALUE CODE [--fix] [--space]", "a signed term \"+value\" (tFmtS)", fmts_command},
      {"format", "VALUE PATTERN", "VALUE written by a picture pattern", format_command},
      {"strip", "TEXT [--split]", "TEXT without formula markup (and without \"|\" with --split)",
       strip_command},
      {"width", "TEXT", "the display width of TEXT: stripped, in code page 936 bytes",
       width_command},
      {"label", "serial|serial2|sl|list|roman N [--dot D]",
       "the label of heading level 1, 2 or 3, of a list item (with the list dot D) or the "
       "Roman numeral of N, in markup",
       label_command},
  };
}

}  // namespace zelkora::cli
