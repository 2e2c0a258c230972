// The calculation of the spread footing form: the soil pressures, punching,
// shear and bending of a footing under a list of loads, written as a report
// in formula markup.
#pragma once

#include <vector>

#include "desk/footing_design.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// The report of the footing form's values (by item of "clsFoundationSpread")
// under `loads`, one line of markup each; a value that cannot be used ends
// the report with the reason.
std::vector<Text> footing_report(const std::vector<Text>& values,
                                 const std::vector<FootingLoad>& loads, clsCharacter& chr);

}  // namespace zelkora::desk
