// Pieces of the desktop program's script language.
#include "program/script_steps.h"

#include <array>
#include <utility>

#include "program/white_space.h"

namespace zelkora::desk {

FirstWord first_word(TextView text) {
  const std::size_t space = text.find(u' ');
  if (space == TextView::npos) return {Text(text), {}};
  return {Text(text.substr(0, space)), Text(text.substr(space + 1))};
}

std::vector<Text> words_of(TextView text) {
  std::vector<Text> words;
  for (Text& word : split_text(text, u" ")) {
    if (!word.empty()) words.push_back(std::move(word));
  }
  return words;
}

Text lines_of(const std::vector<Text>& texts) {
  Text lines;
  for (const Text& text : texts) lines += text + u"\n";
  return lines;
}

ScriptStep parse_step(TextView line) {
  FirstWord parts = first_word(line);
  return {std::move(parts.word), Text(trimmed(parts.after))};
}

namespace {

// From the start of the third word to the end of the last: "ROW COL TEXT".
Text text_after_two_words(TextView rest) {
  std::size_t at = 0;
  for (int word = 0; word < 3; ++word) {
    at = rest.find_first_not_of(u' ', at);
    if (at == TextView::npos) return {};
    if (word < 2) at = std::min(rest.find(u' ', at), rest.size());
  }
  return Text(rest.substr(at, rest.find_last_not_of(u' ') + 1 - at));
}

}  // namespace

CaseStep parse_case_step(TextView rest) {
  const std::vector<Text> words = words_of(rest);
  CaseStep step;
  const auto number = [&](std::size_t at) {
    const std::optional<int> value = at < words.size() ? to_int(words[at]) : std::nullopt;
    if (!value || *value < 1) throw StepError("case: a row and a column are numbers from 1");
    return *value;
  };
  const TextView verb = words.empty() ? TextView() : TextView(words[0]);
  if (verb == u"add" && words.size() == 1) return step;
  static constexpr std::array<std::pair<TextView, CaseStep::Kind>, 3> kMoves = {{
      {u"delete", CaseStep::Kind::kDelete},
      {u"up", CaseStep::Kind::kUp},
      {u"down", CaseStep::Kind::kDown},
  }};
  for (const auto& [name, kind] : kMoves) {
    if (verb == name && words.size() == 2) {
      step.kind = kind;
      step.row = number(1);
      return step;
    }
  }
  if (words.size() < 2)
    throw StepError("case takes add, delete ROW, up ROW, down ROW or ROW COL TEXT");
  step.kind = CaseStep::Kind::kSet;
  step.row = number(0);
  step.col = number(1);
  if (step.col > 7) throw StepError("case: the table has 7 columns");
  step.text = text_after_two_words(rest);
  return step;
}

int32_t row_of_item(clsGridCell& cell, const platform::GridControl& grid, TextView item) {
  if (const std::optional<int> index = to_int(item)) {
    if (*index < 0 || *index > cell.lMaxTextIndex()) {
      throw StepError("the form has no item " + to_utf8(item));
    }
    return cell.lGetRowByIndex(*index);
  }
  for (int32_t row = 1; row < grid.Rows(); ++row) {
    if (trim(grid.Text(row, 2)) == item) return row;
  }
  throw StepError("the form has no row \"" + to_utf8(item) + "\"");
}

Text message_line(TextView title, TextView text) {
  // Line breaks as a message box shows them, then one line.
  const Text lines = replace_all(replace_all(text, u"\r\n", u"\n"), u"\r", u"\n");
  return u"message: " + Text(title) + u" | " + simplified(replace_all(lines, u"\n", u" "));
}

Text copied_line(TextView lines) {
  if (!lines.empty() && lines.back() == u'\n') lines.remove_suffix(1);
  return u"copied: " + replace_all(lines, u"\n", u"|");
}

}  // namespace zelkora::desk
