// Commands of the messages and input checks. Messages are composed with the
// ignore flag on; with --show the message box prints the title on one line
// and the shown text after it, before the command's own output.
#include "tools/zelkora/cli.h"
#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/frame/numbers.h"

namespace zelkora::cli {

namespace {

// The message box of the command line: the title, then the text with its
// CR LF pairs as line ends.
class PrintingMessageBox : public platform::MessageBox {
 public:
  explicit PrintingMessageBox(std::ostream& out) : out_(out) {}
  void warning(TextView text, TextView title) override {
    out_ << out_text(title) << "\n" << out_text(replace_all(text, u"\r\n", u"\n"));
    if (!text.ends_with(u"\n")) out_ << "\n";
  }
  void diagnostic(std::string_view message) override { out_ << message << "\n"; }

 private:
  std::ostream& out_;
};

struct Checker {
  bool show;
  std::unique_ptr<clsErrChr> err;
};

Checker make_checker(Args& args, std::ostream& out) {
  const bool show = args.take_flag("--show");
  auto platform = std::make_shared<platform::Platform>(*platform::Platform::current());
  platform->messages = std::make_shared<PrintingMessageBox>(out);
  return {show, std::make_unique<clsErrChr>(platform)};
}

// The message on one line, CR and LF written as \r and \n.
std::string one_line(TextView text) {
  return out_text(replace_all(replace_all(text, u"\r", u"\\r"), u"\n", u"\\n"));
}

void print_result(const clsErrChr& err, std::ostream& out) {
  out << "error=" << err.lError_ID() << "\nmessage=" << one_line(err.tError_Txt()) << "\n";
}

Text option_text(Args& args, std::string_view name) {
  const auto value = args.take_option(name);
  return value ? arg_text(*value) : Text();
}

void message_command(Args& args, std::ostream& out) {
  Checker c = make_checker(args, out);
  const Text c1 = option_text(args, "--c1"), v1 = option_text(args, "--v1");
  const Text c2 = option_text(args, "--c2"), v2 = option_text(args, "--v2");
  args.expect(1);
  c.err->GenMsgErrorW(arg_int32(args[0], "error number"), c1, v1, c2, v2, !c.show);
  out << one_line(c.err->tError_Txt()) << "\n";
}

void check_command(Args& args, std::ostream& out) {
  Checker c = make_checker(args, out);
  if (const auto list = args.take_option("--list")) c.err->lListRes(arg_int32(*list, "list"));
  args.expect(3);
  c.err->GenCheckCboEnterNumErrW(arg_text(args[0]), arg_text(args[1]), arg_text(args[2]), !c.show);
  print_result(*c.err, out);
}

void compare_command(Args& args, std::ostream& out) {
  Checker c = make_checker(args, out);
  const Text c1 = option_text(args, "--c1"), c2 = option_text(args, "--c2");
  args.expect(3);
  c.err->GenCheckConErrW(arg_text(args[0]), c1, arg_double(args[1], "value 1"), c2,
                         arg_double(args[2], "value 2"), !c.show);
  print_result(*c.err, out);
}

void listcheck_command(Args& args, std::ostream& out) {
  Checker c = make_checker(args, out);
  const Compare compare = args.take_flag("--text") ? Compare::Text : Compare::Binary;
  args.expect(3);
  c.err->CheckCboListErrW(arg_int32(args[0], "list"), arg_text(args[1]), arg_text(args[2]), compare,
                          !c.show);
  print_result(*c.err, out);
}

void gradecheck_command(Args& args, std::ostream& out) {
  Checker c = make_checker(args, out);
  args.expect(1);
  c.err->GenCheckHntQdDj(arg_text(args[0]), !c.show);
  print_result(*c.err, out);
}

}  // namespace

std::vector<Command> checking_commands() {
  return {
      {"message", "ERR [--c1 T] [--v1 T] [--c2 T] [--v2 T] [--show]",
       "the message of an error number with its fields filled (line breaks as \\r\\n)",
       message_command},
      {"check", "DESCRIPTOR CAPTION TEXT [--list L] [--show]",
       "checks a typed entry against a check expression (\"S>0\", \"15~80\", \"(0~1.0\", "
       "\"1\" with --list)",
       check_command},
      {"compare", "SIGN V1 V2 [--c1 T] [--c2 T] [--show]",
       "checks that V1 stands in relation SIGN (< <= > >= = <>) to V2", compare_command},
      {"listcheck", "LISTID CAPTION TEXT [--text] [--show]",
       "checks that TEXT is an item of a catalogue value list (--text: ignore case)",
       listcheck_command},
      {"gradecheck", "TEXT [--show]", "checks a concrete strength grade (\"30\")",
       gradecheck_command},
  };
}

}  // namespace zelkora::cli
