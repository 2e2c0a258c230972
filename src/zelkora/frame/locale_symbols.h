// The number symbols of the user's locale, and the two symbols that a new
// clsCharacter derives from them: the decimal symbol is the second character
// of 1.5 as the system writes it, and the thousands separator (where the
// decimal symbol is ",") the second character of 1000 in the system's
// "Standard" format.
#pragma once

#include "zelkora/frame/numbers.h"
#include "zelkora/platform/platform.h"

namespace zelkora::frame {

// The first characters of the locale's decimal and grouping symbols; no
// grouping symbol (0) where the locale has none or gives the decimal symbol.
NumberSymbols number_symbols_of(const platform::NumberLocale& locale);

// The second character of 1.5 in the general number text.
Text system_decimal_symbol(const NumberSymbols& symbols);

// The second character of 1000 in the "Standard" format (grouping, two
// decimals): the grouping symbol, or "0" where the locale groups no digits.
Text system_thousands_separator(const NumberSymbols& symbols);

}  // namespace zelkora::frame
