// How the calculations read a form's values: a number in the user's
// notation, a switch ("是", "否", or what the library takes for yes).
#pragma once

#include <optional>

#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/variant.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// The number a value holds (blanks around it allowed), or none.
inline std::optional<double> number_in(TextView text, const clsCharacter& chr) {
  return frame::Variant(Text(trim(text))).number(chr.number_symbols());
}

// Whether a switch item says yes.
inline bool yes(TextView text, const clsCharacter& chr) {
  const Text t(trim(text));
  if (t == u"是") return true;
  if (t == u"否") return false;
  return chr.bAutoText(t);
}

}  // namespace zelkora::desk
