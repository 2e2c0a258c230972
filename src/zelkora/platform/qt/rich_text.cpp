// The library's marked-up texts as Qt rich text (rich_text.h).
#include "zelkora/platform/qt/rich_text.h"

#include "zelkora/platform/qt/qt_controls.h"
#include "zelkora/typeset/markup.h"

namespace zelkora::platform::qt {

QString markup_to_rich_text(TextView text) { return to_qstring(typeset::markup_to_html(text)); }

}  // namespace zelkora::platform::qt
