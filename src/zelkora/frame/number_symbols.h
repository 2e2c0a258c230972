/// The symbols of the user's number notation, in which the library reads and
/// writes numbers: a decimal symbol and a digit-grouping symbol (0 for none).
/// clsCharacter::number_symbols gives those of the user's locale. @file
#pragma once

namespace zelkora::frame {

/// A grouping symbol of 0 means the notation has none. A grouping symbol equal
/// to the decimal symbol is ignored (the decimal symbol wins).
struct NumberSymbols {
  char16_t decimal = u'.';   ///< The decimal symbol.
  char16_t grouping = u',';  ///< The digit-grouping symbol; 0 for none.
};

}  // namespace zelkora::frame
