// The command that turns a report's markup lines into a document file.
#include "tools/zelkora/cli.h"
#include "zelkora/document/read_report.h"
#include "zelkora/document/writers.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/whole_file.h"

namespace zelkora::cli {

namespace {

// A report larger than this is refused rather than read into memory.
constexpr std::size_t kMostReportBytes = 64u << 20;

std::string document_bytes(const document::Document& doc, std::string_view format) {
  if (format == "docx") return document::write_docx(doc);
  if (format == "rtf") return document::write_rtf(doc);
  if (format == "html") return document::write_html(doc);
  if (format == "text") return to_utf8(document::plain_text(doc));
  throw UsageError{"--to must be docx, rtf, html or text, not \"" + std::string(format) + "\""};
}

void report_command(Args& args, std::ostream& out) {
  const std::optional<std::string> to = args.take_option("--to");
  const std::optional<std::string> program = args.take_option("--program");
  const std::optional<std::string> project = args.take_option("--project");
  const std::optional<std::string> calculated = args.take_option("--calculated-by");
  const std::optional<std::string> checked = args.take_option("--checked-by");
  const std::optional<std::string> approved = args.take_option("--approved-by");
  const std::optional<std::string> date = args.take_option("--date");
  args.expect(2);
  if (!to) throw UsageError{"give the format: --to docx|rtf|html|text"};
  std::string bytes;
  const auto input = platform::path_from_text(file_arg(args[0]));
  switch (platform::read_file(input, kMostReportBytes, bytes)) {
    case platform::ReadStatus::Ok:
      break;
    case platform::ReadStatus::Missing:
      throw Failure{"no file " + args[0]};
    case platform::ReadStatus::Failed:
      throw Failure{"cannot read " + args[0] + " (not a file, or over 64 MiB)"};
  }
  document::ReadOptions options;
  if (program) options.program = arg_text(*program);
  if (project) options.project = arg_text(*project);
  if (calculated) options.signature.calculated_by = arg_text(*calculated);
  if (checked) options.signature.checked_by = arg_text(*checked);
  if (approved) options.signature.approved_by = arg_text(*approved);
  if (date) options.signature.date = arg_text(*date);
  const document::Document doc =
      document::read_report(document::report_text_from_bytes(bytes), options);
  const std::string file = document_bytes(doc, *to);
  if (args[1] == "-") {
    out << file;
    return;
  }
  if (!platform::replace_file(platform::path_from_text(file_arg(args[1])), file, false)) {
    throw Failure{"cannot write " + args[1]};
  }
  out << args[1] << ": " << file.size() << " bytes, " << doc.blocks.size() << " blocks\n";
}

}  // namespace

std::vector<Command> document_commands() {
  return {
      {"report",
       "INPUT --to docx|rtf|html|text OUTPUT [--program P] [--project P] [--calculated-by N] "
       "[--checked-by N] [--approved-by N] [--date D]",
       "the lines of a report in formula markup (a UTF-8, UTF-16 or code page 936 text file) as "
       "a Word, RTF, HTML or plain-text document (OUTPUT - for standard output): headings, "
       "tables, sub- and superscripts, the grade symbols, page header and footer, signatures",
       report_command},
  };
}

}  // namespace zelkora::cli
