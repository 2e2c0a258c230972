// Checking a layout: the rules the grid relies on and the texts it refers to.
#include "zelkora/grid/layout_lint.h"

#include <algorithm>
#include <climits>
#include <map>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/checking/entry_descriptor.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/grid/group_value.h"
#include "zelkora/grid/layout.h"
#include "zelkora/grid/row_facts.h"
#include "zelkora/platform/fault.h"

namespace zelkora::grid {

namespace {

// More items of one list refused than this are counted, not quoted.
constexpr std::size_t kQuotedRefusals = 1;

std::string in_quotes(TextView text) { return "\"" + to_utf8(text) + "\""; }

// The absolute value of a kind, without overflow.
int64_t magnitude(int32_t value) { return value < 0 ? -int64_t{value} : int64_t{value}; }

// A row whose line and descriptor were read.
struct LintRow {
  int32_t line = 0;
  int32_t item = 0;
  RowDescriptor d;
  Text value;  // the default text, as the grid derives it (item rows)
};

class Linter {
 public:
  Linter(TextView name, const std::shared_ptr<const platform::Platform>& platform)
      : name_(name),
        chr_(platform),
        checker_(platform),
        catalogue_(clsCharacter::Internals::catalogue(chr_)) {
    checker_.bMessageIgnore(true);
  }

  std::vector<LayoutProblem> run(TextView text) {
    check_line_ends(text);
    check_name();
    read_rows(text);
    check_rows();
    check_indexes();
    std::stable_sort(
        problems_.begin(), problems_.end(),
        [](const LayoutProblem& a, const LayoutProblem& b) { return a.line < b.line; });
    return std::move(problems_);
  }

 private:
  void add(int32_t line, std::optional<int32_t> item, LayoutRule rule, std::string message) {
    problems_.push_back({line, item, rule, std::move(message)});
  }
  void add(const LintRow& row, LayoutRule rule, std::string message) {
    add(row.line, row.item, rule, std::move(message));
  }
  bool has_text(int64_t id) const {
    return id > 0 && id <= INT32_MAX && catalogue_.contains(static_cast<int32_t>(id));
  }

  // ---- The file ----------------------------------------------------------------

  void check_line_ends(TextView text) {
    int32_t line = 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] != u'\n') continue;
      if (i == 0 || text[i - 1] != u'\r') {
        add(line, std::nullopt, LayoutRule::kLineEnd,
            "the line ends in a bare LF: the suite's layouts end their lines in CR LF");
        return;
      }
      ++line;
    }
  }

  void check_name() {
    const std::optional<int32_t> id = layout_name_id(name_, catalogue_);
    if (!id) {
      add(0, std::nullopt, LayoutRule::kName,
          "no catalogue text " + std::to_string(text_id::kFirstLayoutName) + "-" +
              std::to_string(text_id::kLastLayoutName) + " or " +
              std::to_string(text_id::kFirstProgramText) + "-" +
              std::to_string(text_id::kLastProgramText) + " names the layout " + in_quotes(name_) +
              " (a program registers its own name in its block)");
    } else if (const TextView written = *catalogue_.find(*id); written != name_) {
      add(0, std::nullopt, LayoutRule::kName,
          "catalogue text " + std::to_string(*id) + " writes the name " + in_quotes(written) +
              ", the file " + in_quotes(name_));
    }
  }

  // ---- Reading the rows, as the grid reads them ------------------------------------

  // A fault of the grid's reading as a problem, its place left out.
  void add_fault(int32_t line, std::optional<int32_t> item, const Fault& fault,
                 const std::string& place) {
    std::string message = fault.what();
    if (message.starts_with(place + ": ")) message.erase(0, place.size() + 2);
    const LayoutRule rule = fault.kind() == FaultKind::MissingResource
                                ? LayoutRule::kDescriptorText
                                : LayoutRule::kUnreadableLine;
    add(line, item, rule, std::move(message));
  }

  void read_rows(TextView text) {
    const std::vector<Text> lines = layout_lines(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (trim(lines[i]).empty()) continue;
      const auto line = static_cast<int32_t>(std::min<std::size_t>(i + 1, INT32_MAX));
      read_row(lines[i], line);
    }
  }

  void read_row(TextView text, int32_t line) {
    const std::string place = "line " + std::to_string(line);
    LayoutLine read;
    try {
      read = read_layout_line(text, place, catalogue_);
    } catch (const Fault& fault) {
      add_fault(line, std::nullopt, fault, place);
      return;
    }
    if (!first_item_) first_item_ = read.item;
    indexes_.push_back({line, read.item});
    LintRow row{line, read.item, {}, {}};
    try {
      row.d = split_descriptor(read.descriptor, 6, chr_.number_symbols(), place);
      if (row.item >= 0) {
        row.value = default_text(row.d.default_field, chr_.ComboBoxList(row.d.list), u"", chr_);
      }
    } catch (const Fault& fault) {
      add_fault(line, read.item, fault, place);
      return;
    }
    rows_.push_back(std::move(row));
  }

  // ---- The rows --------------------------------------------------------------------

  void check_rows() {
    if (!first_item_) {
      add(0, std::nullopt, LayoutRule::kNoRows, "the layout has no rows");
      return;
    }
    if (*first_item_ >= 0) {
      add(indexes_.front().first, *first_item_, LayoutRule::kFirstRow,
          "the first row is an item: a layout starts with a heading");
    }
    for (std::size_t r = 0; r < rows_.size(); ++r) {
      const LintRow& row = rows_[r];
      check_caption(row);
      if (row.item < 0) {
        check_heading(row);
      } else {
        check_item_row(row);
        check_group(r);
      }
    }
  }

  void check_caption(const LintRow& row) {
    if (!has_text(row.d.caption)) {
      add(row, LayoutRule::kCaption,
          "caption " + std::to_string(row.d.caption) + " has no catalogue text");
    }
  }

  void check_heading(const LintRow& row) {
    if (row.item != -1) {
      add(row, LayoutRule::kHeading,
          "item index " + std::to_string(row.item) + ": a heading's item index is -1");
    }
    if (magnitude(row.d.kind) != kKindHeading) {
      add(row, LayoutRule::kHeading,
          "kind " + std::to_string(row.d.kind) + " on a heading row (item -1): headings are 10");
    }
    const auto [at, fresh] = heading_lines_.emplace(row.d.caption, row.line);
    if (!fresh) {
      add(row, LayoutRule::kHeadingTwice,
          "a second heading with caption " + std::to_string(row.d.caption) + " (line " +
              std::to_string(at->second) + ")");
    }
  }

  void check_item_row(const LintRow& row) {
    const int64_t kind = magnitude(row.d.kind);
    if (kind != kKindItem && kind != kKindGroup && kind != kKindMember) {
      add(row, LayoutRule::kKind,
          "kind " + std::to_string(row.d.kind) +
              " is no kind of an item row: 100 (item), 110 (group) or 1100 (group member)");
    } else if ((row.d.kind < 0) != (kind == kKindGroup)) {
      add(row, LayoutRule::kCollapsed,
          row.d.kind < 0 ? "only a group row starts collapsed (a negative descriptor id)"
                         : "a group row starts collapsed: write its descriptor id negative");
    }
    if (has_text(row.d.caption) && !has_text(int64_t{row.d.caption} + 1)) {
      add(row, LayoutRule::kExplanation,
          "caption " + std::to_string(row.d.caption) + " has no explanation (catalogue text " +
              std::to_string(int64_t{row.d.caption} + 1) + ")");
    }
    if (row.d.cell != 0 && row.d.cell != 1) {
      add(row, LayoutRule::kCell,
          "cell " + std::to_string(row.d.cell) + " is neither 0 (text) nor 1 (list)");
    }
    check_list(row);
    check_expression(row);
    check_default(row);
  }

  void check_list(const LintRow& row) {
    const int32_t list = row.d.list;
    if (list == 0 || list == 100 || list == 200) {
      add(row, LayoutRule::kList,
          "list " + std::to_string(list) +
              " is read from the user's INI files (lists 0, 100, 200), not from the catalogue");
    } else if (!has_text(int64_t{text_id::kListBase} + list)) {
      add(row, LayoutRule::kList,
          "list " + std::to_string(list) + " has no catalogue text " +
              std::to_string(int64_t{text_id::kListBase} + list) + " (list id = text id - " +
              std::to_string(text_id::kListBase) + ")");
    }
  }

  void check_expression(const LintRow& row) {
    for (const Text& part : checking::parse_entry_descriptor(row.d.check).unreadable) {
      add(row, LayoutRule::kCheck,
          "check " + in_quotes(row.d.check) + ": " + in_quotes(part) +
              " cannot be read, and the grid passes over it");
    }
  }

  // The error number and message with which the row's check refuses `value`.
  std::optional<std::string> refusal(const LintRow& row, TextView value) {
    const int32_t error =
        check_entry(checker_, chr_, row.d.check, row.d.caption, row.d.list, value);
    if (error == 0) return std::nullopt;
    return "error " + std::to_string(error) + ": " +
           to_utf8(chr_.tDelSuperSubSign(replace_all(checker_.tError_Txt(), u"|", u"")));
  }

  void check_default(const LintRow& row) {
    const Text& field = row.d.default_field;
    if (field != u" " && row.value.empty()) {
      add(row, LayoutRule::kDefaultEmpty, "default " + in_quotes(field) + " " + why_empty(row));
    } else if (auto refused = refusal(row, row.value)) {
      add(row, LayoutRule::kDefaultRefused,
          "default " + in_quotes(row.value) + " is refused by the row's check " +
              in_quotes(row.d.check) + " (" + *refused + ")");
    }
    std::size_t count = 0;
    std::string first;
    for (const Text& choice : chr_.ComboBoxList(row.d.list)) {
      if (choice.empty()) continue;
      if (auto refused = refusal(row, choice); refused && count++ < kQuotedRefusals) {
        first = in_quotes(choice) + " (" + *refused + ")";
      }
    }
    if (count > 0) {
      add(row, LayoutRule::kListItemRefused,
          "the row's check " + in_quotes(row.d.check) + " refuses " + std::to_string(count) +
              " item(s) of list " + std::to_string(row.d.list) + ", the first " + first);
    }
  }

  // Why a default field gives an empty text.
  std::string why_empty(const LintRow& row) const {
    const std::optional<double> value =
        frame::parse_number(row.d.default_field, chr_.number_symbols());
    if (!value) return "gives an empty text (\"_text\" is a text, \" \" an empty one)";
    const int32_t n = frame::to_int32(*value);
    if (n >= 1) return "names catalogue text " + std::to_string(n) + ", which is missing";
    return "names item " + std::to_string(-int64_t{n}) + " of list " + std::to_string(row.d.list) +
           ", which the list does not have (items count from 0)";
  }

  // ---- Groups ----------------------------------------------------------------------

  void check_group(std::size_t r) {
    const LintRow& row = rows_[r];
    const int64_t kind = magnitude(row.d.kind);
    if (kind == kKindMember) {
      const int64_t above = r > 0 ? magnitude(rows_[r - 1].d.kind) : 0;
      if (above != kKindGroup && above != kKindMember) {
        add(row, LayoutRule::kMemberWithoutGroup,
            "a group member (kind 1100) without a group row (kind 110) above it");
      }
    }
    if (kind != kKindGroup) return;
    std::vector<Text> members;
    for (std::size_t m = r + 1; m < rows_.size() && rows_[m].d.kind == kKindMember; ++m) {
      members.push_back(rows_[m].value);
    }
    if (members.size() < 2) {
      add(row, LayoutRule::kGroupMembers,
          "a group has " + std::to_string(members.size()) +
              " member row(s) (kind 1100) below it, where it needs two or more");
      return;
    }
    const Text joined = join_group_value(members);
    if (joined != row.value) {
      add(row, LayoutRule::kGroupDefault,
          "the group's default " + in_quotes(row.value) + " is not its members' defaults joined, " +
              in_quotes(joined));
    }
  }

  // ---- Item indexes ----------------------------------------------------------------

  void check_indexes() {
    int64_t headings = 0;
    for (const auto& [line, item] : indexes_) headings += item < 0 ? 1 : 0;
    const int64_t max_item = static_cast<int64_t>(indexes_.size()) - headings - 1;
    std::map<int32_t, int32_t> first_line;
    for (const auto& [line, item] : indexes_) {
      if (item < 0) continue;
      if (item > max_item) {
        add(line, item, LayoutRule::kItemRange,
            "item index " + std::to_string(item) + " is beyond " + std::to_string(max_item) +
                " (rows - headings - 1): the indexes run 0 to N-1");
      }
      const auto [at, fresh] = first_line.emplace(item, line);
      if (!fresh) {
        add(line, item, LayoutRule::kItemTwice,
            "item index " + std::to_string(item) + " is on line " + std::to_string(at->second) +
                " too");
      }
    }
    for (int64_t item = 0; item <= max_item; ++item) {
      if (!first_line.contains(static_cast<int32_t>(item))) {
        add(0, std::nullopt, LayoutRule::kItemGap,
            "item index " + std::to_string(item) + " is on no row (the indexes run 0 to " +
                std::to_string(max_item) + ")");
      }
    }
  }

  Text name_;
  clsCharacter chr_;
  clsErrChr checker_;
  const frame::Catalogue& catalogue_;
  std::vector<LintRow> rows_;
  std::vector<std::pair<int32_t, int32_t>> indexes_;  // line, item of every row read
  std::optional<int32_t> first_item_;
  std::map<int32_t, int32_t> heading_lines_;  // caption, line
  std::vector<LayoutProblem> problems_;
};

}  // namespace

std::string LayoutProblem::describe() const {
  if (line == 0) return "layout: " + message;
  std::string where = "line " + std::to_string(line);
  if (item) where += *item < 0 ? ", heading" : ", item " + std::to_string(*item);
  return where + ": " + message;
}

std::vector<LayoutProblem> lint_layout(TextView text, TextView name,
                                       const std::shared_ptr<const platform::Platform>& platform) {
  return Linter(name, platform).run(text);
}

std::vector<LayoutProblem> lint_named_layout(
    TextView name, const std::shared_ptr<const platform::Platform>& platform) {
  const Text text = load_layout_text(name, platform->resources);
  return lint_layout(text, layout_file_name(name, platform->resources).value_or(Text(name)),
                     platform);
}

}  // namespace zelkora::grid
