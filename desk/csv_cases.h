// The tables of cases that the calculations' tests read
// (desk/testdata/*.csv, written by the scripts beside them): a header row of
// column names, then one case a row; a field in double quotes may hold
// commas.
#pragma once

#include <QFile>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <map>
#include <utility>
#include <vector>

namespace zelkora::desk {

using CsvRow = std::map<QString, QString>;

// The rows of desk/testdata/`name` (none when it cannot be read).
inline std::vector<CsvRow> read_csv(const QString& name) {
  QFile file(QStringLiteral(ZK_SOURCE_DIR "/desk/testdata/") + name);
  std::vector<CsvRow> rows;
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) return rows;
  QTextStream in(&file);
  in.setEncoding(QStringConverter::Utf8);
  const QStringList header = in.readLine().split(QLatin1Char(','));
  while (!in.atEnd()) {
    const QString line = in.readLine();
    if (line.trimmed().isEmpty()) continue;
    QStringList fields;
    QString field;
    bool quoted = false;
    for (const QChar c : line) {
      if (c == QLatin1Char('"')) {
        quoted = !quoted;
      } else if (c == QLatin1Char(',') && !quoted) {
        fields << std::exchange(field, QString());
      } else {
        field += c;
      }
    }
    fields << field;
    CsvRow row;
    for (qsizetype i = 0; i < header.size() && i < fields.size(); ++i) row[header[i]] = fields[i];
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace zelkora::desk
