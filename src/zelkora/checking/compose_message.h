// Composing the message of one error from its composition and the fields of
// clsErrChr.
#pragma once

#include <cstdint>

#include "zelkora/checking/message_table.h"
#include "zelkora/frame/cls_character.h"

namespace zelkora::checking {

struct MessageFields {
  int32_t error = 0;
  TextView caption1, value1, caption2, value2;
};

// The texts of `composition`, filled and joined with `separator`. When
// `title` is given, it receives the composition's own title, if it has one.
Text compose_message(const Composition& composition, const MessageFields& fields,
                     const clsCharacter& chr, TextView separator, Text* title);

}  // namespace zelkora::checking
