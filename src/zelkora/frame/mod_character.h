/// ModCharacter: the shared procedures of the library that keep no state of
/// their own (readers of settings, and, in their subsystems, the markup
/// stripper and the catalogue list builder). @file
#pragma once

#include "zelkora/platform/platform.h"
#include "zelkora/platform/text.h"

namespace zelkora::ModCharacter {

/// A per-user setting, or `default_value` when it is missing. Reading never
/// creates the key.
Text tGetSetting(const platform::Platform& platform, TextView application, TextView section,
                 TextView key, TextView default_value);

/// The markup stripper: the text with its formula markup markers removed
/// ("A_ub(s)ub_" is "As", "_bb(一、)bb_" "一、"), as clsCharacter::tDelSuperSubSign.
Text tStripMarkup(TextView text);

}  // namespace zelkora::ModCharacter
