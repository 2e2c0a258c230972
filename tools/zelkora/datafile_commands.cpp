// Commands of the datafile subsystem: a project data file as text lines, and
// back.
//
// A record is one line "ID<TAB>Member"; in the member a tab, a line break, a
// carriage return and a backslash are written \t \n \r \\ and private-use
// characters \uXXXX, so that every member fits on its line and reads back
// exactly.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "tools/zelkora/cli.h"
#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/record_file.h"
#include "zelkora/datafile/record_numbers.h"
#include "zelkora/frame/catalogue.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/error_numbers.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/utf8.h"

namespace zelkora::cli {

namespace {

// The member of the record that ends a file (catalogue 32031, "EOF").
Text eof_text() {
  const auto catalogue = frame::catalogue_for(*platform::Platform::current());
  return Text(catalogue->find(text_id::kEof).value_or(u"EOF"));
}

bool is_eof(const UseBinRecord& rec, const Text& eof) {
  return rec.ID == record_id::kRevision && rec.Member == eof;
}

std::string escape_member(TextView member) {
  Text escaped;
  escaped.reserve(member.size());
  for (const char16_t c : member) {
    switch (c) {
      case u'\t':
        escaped += u"\\t";
        break;
      case u'\n':
        escaped += u"\\n";
        break;
      case u'\r':
        escaped += u"\\r";
        break;
      case u'\\':
        escaped += u"\\\\";
        break;
      default:
        escaped.push_back(c);
    }
  }
  return out_text(escaped);
}

// The member of a line, or a Failure naming the line: UTF-8 with the escapes
// of the library's text files.
Text unescape_member(std::string_view utf8, std::size_t line) {
  auto fail = [line](const std::string& why) {
    return Failure{"line " + std::to_string(line) + ": " + why + "; nothing was written"};
  };
  Text member;
  std::size_t at = 0;
  while (at < utf8.size()) {
    const std::size_t slash = std::min(utf8.find('\\', at), utf8.size());
    if (!append_utf8(utf8.substr(at, slash - at), member)) {
      throw fail("the member is not valid UTF-8");
    }
    if (slash == utf8.size()) break;
    char16_t unit = 0;
    EscapeProblem problem = EscapeProblem::kNone;
    const std::size_t taken = read_escape(utf8, slash, unit, problem);
    if (problem == EscapeProblem::kShortUnicode) throw fail("\\u needs four hexadecimal digits");
    if (taken == 0) throw fail("unknown escape (use \\t \\n \\r \\\\ \\uXXXX)");
    member.push_back(unit);
    at = slash + taken;
  }
  return member;
}

void append_json_string(std::string& out, TextView text) {
  static constexpr char kHex[] = "0123456789abcdef";
  out.push_back('"');
  std::size_t run = 0;  // start of the characters not yet written
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    const char* escape = nullptr;
    switch (c) {
      case u'"':
        escape = "\\\"";
        break;
      case u'\\':
        escape = "\\\\";
        break;
      case u'\n':
        escape = "\\n";
        break;
      case u'\r':
        escape = "\\r";
        break;
      case u'\t':
        escape = "\\t";
        break;
      case u'\b':
        escape = "\\b";
        break;
      case u'\f':
        escape = "\\f";
        break;
      default:
        break;
    }
    const bool as_code = !escape && (c < 0x20 || (c >= 0xE000 && c <= 0xF8FF));
    if (!escape && !as_code) continue;
    out += to_utf8(text.substr(run, i - run));
    run = i + 1;
    if (escape) {
      out += escape;
    } else {
      out += "\\u";
      for (int shift = 12; shift >= 0; shift -= 4) out.push_back(kHex[(c >> shift) & 0xF]);
    }
  }
  out += to_utf8(text.substr(run));
  out.push_back('"');
}

std::string error_text(int32_t error) { return " (error " + std::to_string(error) + ")"; }

void open_for_reading(clsLoadSave& ls, const std::string& file) {
  if (!ls.OpenFileA(file_arg(file), u"InPut")) {
    throw Failure{"cannot open " + file + error_text(ls.last_error())};
  }
}

std::string damaged(const std::string& file, int records) {
  return file + " is damaged after " + std::to_string(records) + " record(s)" +
         error_text(error_id::kDataFileDamaged);
}

std::string no_eof(const std::string& file) {
  return file + " has no EOF record" + error_text(error_id::kDataFileDamaged);
}

// Every record of the file, to its end.
void dump(Args& args, std::ostream& out) {
  const bool json = args.take_flag("--json");
  args.expect(2);
  const std::string& file = args[1];
  const Text eof_member = eof_text();
  clsLoadSave ls;
  open_for_reading(ls, file);
  UseBinRecord rec;
  int records = 0;
  bool eof = false;
  std::string line;
  if (json) out << "[";
  while (!ls.at_end_of_file()) {
    if (!ls.ReadFileOneA(rec)) {
      if (json) out << (records ? "\n]\n" : "]\n");
      throw Failure{damaged(file, records)};
    }
    line.clear();
    if (json) {
      line = records ? ",\n" : "\n";
      line += "{\"id\":" + std::to_string(rec.ID) + ",\"member\":";
      append_json_string(line, rec.Member);
      line += "}";
    } else {
      line = std::to_string(rec.ID) + "\t" + escape_member(rec.Member) + "\n";
    }
    out << line;
    ++records;
    eof = eof || is_eof(rec, eof_member);
  }
  if (json) out << (records ? "\n]\n" : "]\n");
  if (!eof) throw Failure{no_eof(file)};
}

// The frame of a file as the suite's readers see it: the revision first,
// records up to the first EOF, nothing after it.
struct Frame {
  int records = 0;
  Text revision;
  bool has_revision = false;
  bool eof = false;
  bool damaged = false;
  bool trailing = false;  // bytes after the EOF record
};

Frame read_frame(clsLoadSave& ls) {
  const Text eof_member = eof_text();
  Frame frame;
  UseBinRecord rec;
  while (!frame.eof && !ls.at_end_of_file()) {
    if (!ls.ReadFileOneA(rec)) {
      frame.damaged = true;
      break;
    }
    if (frame.records == 0 && rec.ID == record_id::kRevision) {
      frame.revision = rec.Member;
      frame.has_revision = true;
    }
    ++frame.records;
    frame.eof = is_eof(rec, eof_member);
  }
  frame.trailing = frame.eof && !ls.at_end_of_file();
  return frame;
}

void verify(Args& args, std::ostream& out) {
  args.expect(2);
  const std::string& file = args[1];
  clsLoadSave ls;
  open_for_reading(ls, file);
  const Frame frame = read_frame(ls);
  out << "records=" << frame.records << "\nrevision=" << escape_member(frame.revision)
      << "\neof=" << (frame.eof ? "true" : "false") << "\n";
  if (frame.damaged) throw Failure{damaged(file, frame.records)};
  if (!frame.has_revision) throw Failure{file + " does not start with a revision record (ID 0)"};
  if (!frame.eof) throw Failure{no_eof(file)};
  if (frame.trailing) throw Failure{file + " has bytes after its EOF record"};
}

// Records from standard input, framed by the revision and EOF records.
void write(Args& args, std::ostream& out) {
  args.expect(2);
  const std::string& file = args[1];
  std::vector<UseBinRecord> records;
  std::string line;
  for (std::size_t number = 1; std::getline(std::cin, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty()) continue;
    const std::size_t tab = line.find('\t');
    if (tab == std::string::npos) {
      throw Failure{"line " + std::to_string(number) +
                    ": expected ID<TAB>Member; nothing was written"};
    }
    UseBinRecord rec;
    try {
      rec.ID = arg_int32(std::string_view(line).substr(0, tab), "the ID");
    } catch (const UsageError& e) {
      throw Failure{"line " + std::to_string(number) + ": " + e.message + "; nothing was written"};
    }
    rec.Member = unescape_member(std::string_view(line).substr(tab + 1), number);
    const std::size_t bytes = codepage::display_width(rec.Member);
    if (bytes > datafile::kMaxMemberBytes) {
      throw Failure{"line " + std::to_string(number) + ": the member takes " +
                    std::to_string(bytes) + " bytes in code page 936, at most " +
                    std::to_string(datafile::kMaxMemberBytes) + "; nothing was written"};
    }
    records.push_back(std::move(rec));
  }
  // A frame as dump prints it is replaced by the new one.
  const Text eof_member = eof_text();
  std::size_t first = 0;
  std::size_t last = records.size();
  if (first < last && records[first].ID == record_id::kRevision &&
      !is_eof(records[first], eof_member))
    ++first;
  if (first < last && is_eof(records[last - 1], eof_member)) --last;

  clsLoadSave ls;
  if (!ls.OpenFileA(file_arg(file), u"OutPut")) {
    throw Failure{"cannot save " + file + error_text(ls.last_error())};
  }
  ls.WriteFile_RevisionA();
  for (std::size_t i = first; i < last; ++i) ls.WriteFileOneA(records[i].ID, records[i].Member);
  if (!ls.WriteFileEofAndCloseFileA()) {
    throw Failure{"cannot save " + file + error_text(ls.last_error()) +
                  "; the previous file is unchanged"};
  }
  out << "records=" << (last - first + 2) << "\nbackup=" << out_text(ls.backup_name()) << "\n";
}

void datafile_command(Args& args, std::ostream& out) {
  if (args.size() == 0) throw UsageError{"expected dump, write or verify"};
  const std::string action = args[0];
  if (action == "dump") return dump(args, out);
  if (action == "write") return write(args, out);
  if (action == "verify") return verify(args, out);
  throw UsageError{"unknown action \"" + action + "\": expected dump, write or verify"};
}

}  // namespace

int32_t data_file_error(const std::string& file) {
  clsLoadSave ls;
  if (!ls.OpenFileA(file_arg(file), u"InPut")) return ls.last_error();
  const Frame frame = read_frame(ls);
  return frame.damaged || !frame.has_revision || !frame.eof ? error_id::kDataFileDamaged : 0;
}

std::vector<Command> datafile_commands() {
  return {
      {"datafile", "dump FILE [--json] | write FILE | verify FILE",
       "a project data file: dump prints its records as ID<TAB>Member lines (or JSON); write "
       "saves such lines from standard input between a revision and an EOF record (backup copy "
       "and safe replace); verify prints records=, revision=, eof= and fails on a broken frame; "
       "exit 1 for a damaged file",
       datafile_command},
  };
}

}  // namespace zelkora::cli
