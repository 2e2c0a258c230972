// Pieces of the desktop program's script language.
#include "desk/script_steps.h"

#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

using platform::qt::to_qstring;
using platform::qt::to_text;

ScriptStep parse_step(const QString& line) {
  return {line.section(QLatin1Char(' '), 0, 0), line.section(QLatin1Char(' '), 1).trimmed()};
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
