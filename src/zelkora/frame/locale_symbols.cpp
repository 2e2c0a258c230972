#include "zelkora/frame/locale_symbols.h"

namespace zelkora::frame {

NumberSymbols number_symbols_of(const platform::NumberLocale& locale) {
  NumberSymbols symbols;
  const Text decimal = locale.decimal_symbol();
  const Text grouping = locale.grouping_symbol();
  symbols.decimal = decimal.empty() ? u'.' : decimal[0];
  symbols.grouping = grouping.empty() ? char16_t{0} : grouping[0];
  return symbols;
}

Text system_decimal_symbol(const NumberSymbols& symbols) {
  return general_number_text(1.5, symbols).substr(1, 1);
}

Text system_thousands_separator(const NumberSymbols& symbols) {
  // 1000 in "Standard" is "1", the grouping symbol, "000", the decimal symbol
  // and "00"; without grouping it is "1000" and so on.
  Text standard = u"1";
  if (symbols.grouping != 0) standard.push_back(symbols.grouping);
  standard += u"000";
  standard.push_back(symbols.decimal);
  standard += u"00";
  return standard.substr(1, 1);
}

}  // namespace zelkora::frame
