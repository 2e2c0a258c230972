// The library's marked-up texts as rich text (rich_text.h).
#include "zelkora/typeset/rich_text.h"

#include "zelkora/typeset/markup.h"

namespace zelkora::typeset {

Text markup_to_rich_text(TextView text) { return markup_to_html(text); }

}  // namespace zelkora::typeset
