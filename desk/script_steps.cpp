// Pieces of the desktop program's script language.
#include "desk/script_steps.h"

#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

using platform::qt::to_qstring;
using platform::qt::to_text;

ScriptStep parse_step(const QString& line) {
  return {line.section(QLatin1Char(' '), 0, 0), line.section(QLatin1Char(' '), 1).trimmed()};
}

CaseStep parse_case_step(const QString& rest) {
  const QStringList words = rest.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  CaseStep step;
  const auto number = [&](int at) {
    bool ok = false;
    const int value = at < words.size() ? words[at].toInt(&ok) : 0;
    if (!ok || value < 1) throw StepError("case: a row and a column are numbers from 1");
    return value;
  };
  const QString verb = words.value(0);
  if (verb == QLatin1String("add") && words.size() == 1) return step;
  static const std::pair<const char*, CaseStep::Kind> kMoves[] = {
      {"delete", CaseStep::Kind::kDelete},
      {"up", CaseStep::Kind::kUp},
      {"down", CaseStep::Kind::kDown}};
  for (const auto& [name, kind] : kMoves) {
    if (verb == QLatin1String(name) && words.size() == 2) {
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
  step.text = rest.section(QLatin1Char(' '), 2, -1, QString::SectionSkipEmpty);
  return step;
}

int32_t row_of_item(clsGridCell& cell, const platform::GridControl& grid, const QString& item) {
  bool numeric = false;
  const int index = item.toInt(&numeric);
  if (numeric) {
    if (index < 0 || index > cell.lMaxTextIndex()) {
      throw StepError("the form has no item " + item.toStdString());
    }
    return cell.lGetRowByIndex(index);
  }
  for (int32_t row = 1; row < grid.Rows(); ++row) {
    if (trim(grid.Text(row, 2)) == to_text(item)) return row;
  }
  throw StepError("the form has no row \"" + item.toStdString() + "\"");
}

QString message_line(TextView title, TextView text) {
  // Line breaks as a message box shows them, then one line.
  const Text lines = replace_all(replace_all(text, u"\r\n", u"\n"), u"\r", u"\n");
  return QStringLiteral("message: ") + to_qstring(title) + QStringLiteral(" | ") +
         to_qstring(lines).replace(QLatin1Char('\n'), QLatin1Char(' ')).simplified();
}

QString copied_line(QString lines) {
  if (lines.endsWith(QLatin1Char('\n'))) lines.chop(1);
  return QStringLiteral("copied: ") + lines.replace(QLatin1Char('\n'), QLatin1Char('|'));
}

}  // namespace zelkora::desk
