// The report of a calculation form as a document: what every host shows in
// its report pane and writes to files.
#pragma once

#include <vector>

#include "zelkora/document/report_document.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// The lines of the form's calculation read (read_report) and its figure
// (the beam's section, the footing's plan), if any and not empty, at the end.
document::Document form_report(const std::vector<Text>& lines, TextView program,
                               const document::Figure* figure);

}  // namespace zelkora::desk
