// The calculation of the load combination form: the combinations of the load
// effects and the governing ones, written as a report in formula markup.
#pragma once

#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// The report of the load combination form's values (by item of
// "clsLoadCombination"), one line of markup each; a value that cannot be used
// ends the report with the reason.
std::vector<Text> load_combination_report(const std::vector<Text>& values, clsCharacter& chr);

}  // namespace zelkora::desk
