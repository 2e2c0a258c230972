// The report of a calculation form as a document.
#include "program/form_report.h"

#include "zelkora/document/read_report.h"

namespace zelkora::desk {

document::Document form_report(const std::vector<Text>& lines, TextView program,
                               const document::Figure* figure) {
  Text markup;
  for (const Text& line : lines) markup += line + u"\r\n";
  document::ReadOptions options;
  options.program = Text(program);
  document::Document doc = document::read_report(markup, options);
  if (figure && !figure->shapes.empty()) doc.blocks.emplace_back(*figure);
  return doc;
}

}  // namespace zelkora::desk
