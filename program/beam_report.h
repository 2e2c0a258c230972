// The calculation of the beam form: the tension reinforcement of a
// rectangular section under its bending moment, written as a report in
// formula markup.
#pragma once

#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// The report of the beam form's values (by item of "clsBeamSteel"), one
// line of markup each; a value that cannot be used ends the report with the
// reason.
std::vector<Text> beam_report(const std::vector<Text>& values, clsCharacter& chr);

}  // namespace zelkora::desk
