// The number symbols of the user's locale, as a new clsCharacter takes them.
#include "zelkora/frame/locale_symbols.h"

namespace zelkora::frame {

NumberSymbols number_symbols_of(const platform::NumberLocale& locale) {
  NumberSymbols symbols;
  const Text decimal = locale.decimal_symbol();
  const Text grouping = locale.grouping_symbol();
  symbols.decimal = decimal.empty() ? u'.' : decimal[0];
  symbols.grouping = grouping.empty() ? char16_t{0} : grouping[0];
  // A grouping symbol that is the decimal symbol cannot group digits: the
  // locale has none then.
  if (symbols.grouping == symbols.decimal) symbols.grouping = 0;
  return symbols;
}

Text system_decimal_symbol(const NumberSymbols& symbols) {
  return general_number_text(1.5, symbols).substr(1, 1);
}

Text system_thousands_separator(const NumberSymbols& symbols) {
  // "Standard" groups the digits with the grouping symbol; without one, 1000
  // is written "1000.00".
  return symbols.grouping != 0 ? Text(1, symbols.grouping) : Text(u"0");
}

}  // namespace zelkora::frame
