// The report of a form as the Windows host shows and keeps it: the report
// document (program/form_report.h) shown in a read-only rich-edit control
// through the library's RTF writer, written to files, and printed through
// the control's page layout.
#pragma once

#include <string>
#include <vector>

#include "zelkora/document/report_document.h"
#include "zelkora/platform/text.h"
#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::win32desk {

// A read-only rich-edit control for the report, a child of `parent`.
HWND make_report_pane(HWND parent);
// The pane shows `rtf` (empty: nothing), `notice` in red above it.
void show_rtf(HWND pane, const std::string& rtf, TextView notice);
// The pane's text on the printer the user chooses (PrintDlgW), one page
// after another; the pages printed (0: none, or the dialog cancelled).
int print_pane(HWND pane, HWND owner, TextView document_name);
// Bytes written to a file (made or replaced); false with the system's
// reason in `why` when they could not be.
bool write_file(TextView file, const std::string& bytes, Text* why);

}  // namespace zelkora::win32desk
