// White space in the program's texts (names, script lines): what Unicode
// counts as a space — tab to carriage return, U+0085, and the space, line and
// paragraph separators (U+0020, U+00A0, U+3000, ...). The library's own
// trim (zelkora/platform/text.h) takes the plain space only.
#pragma once

#include <optional>

#include "zelkora/platform/text.h"

namespace zelkora::desk {

bool is_white_space(char16_t c);

// The text without the white space around it.
TextView trimmed(TextView text);

// Trimmed, and each run of white space inside one plain space.
Text simplified(TextView text);

// A whole decimal number of int's range, with a sign if any and white space
// around it allowed: "12", " -3 ", "+4"; nothing for any other text.
std::optional<int> to_int(TextView text);

}  // namespace zelkora::desk
