// clsCharacter: start and end, the symbol table, the accumulator and the
// other shared state.
#include "zelkora/frame/cls_character.h"

#include "zelkora/frame/catalogue.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/column_layout.h"
#include "zelkora/frame/locale_symbols.h"
#include "zelkora/frame/mod_character.h"

namespace zelkora {

namespace {

// The settings read at start, in the order they are read: key number, entry
// and the catalogue id of the default.
struct SymbolSetting {
  const char16_t* number;
  int entry;
  int32_t default_id;
};
constexpr SymbolSetting kSymbolSettings[] = {
    {u"1", clsCharacter::kPf, 36101}, {u"2", clsCharacter::kLf, 36102},
    {u"3", clsCharacter::kF1, 36103}, {u"4", clsCharacter::kF2, 36104},
    {u"5", clsCharacter::kF3, 36105}, {u"12", clsCharacter::kF4, 36112},
};
constexpr SymbolSetting kListDotSetting = {u"8", clsCharacter::kListDot, 36108};

constexpr char16_t kIdeographicSpace = u'\u3000';

}  // namespace

clsCharacter::clsCharacter() : clsCharacter(platform::Platform::current()) {}

clsCharacter::clsCharacter(std::shared_ptr<const platform::Platform> platform)
    : platform_(std::move(platform)), columns_(std::make_unique<frame::ColumnLayout>()) {
  start();
}

clsCharacter::~clsCharacter() {
  // Nothing is written back to the settings store.
  suite_.reset();
}

void clsCharacter::start() {
  catalogue_ = frame::catalogue_for(*platform_);
  suite_ = platform_->suite;
  auto text_of = [this](int32_t id) { return Text(catalogue_->find(id).value_or(TextView())); };

  // While the settings are read, entries 13 and 14 name the section and the
  // key suffix.
  application_ = text_of(text_id::kApplication);
  symbols_[kSquaredMarkup] = text_of(text_id::kOptionsSection);
  symbols_[kCubedMarkup] = text_of(text_id::kComboKeySuffix);
  const Text section = symbols_[kSquaredMarkup];
  const Text suffix = symbols_[kCubedMarkup];
  for (const SymbolSetting& s : kSymbolSettings) {
    const Text value = ModCharacter::tGetSetting(*platform_, application_, section,
                                                 Text(s.number) + suffix, text_of(s.default_id));
    symbols_[s.entry] = Text(trim(value));
  }
  const Text dot = ModCharacter::tGetSetting(*platform_, application_, section,
                                             Text(kListDotSetting.number) + suffix,
                                             text_of(kListDotSetting.default_id));
  symbols_[kListDot] = dot.substr(0, 1);

  continuation_ = Text(1, kIdeographicSpace) + u"\r\n";
  first_indent_ = kFstPreSpace;
  following_indent_ = kSecPreSpace;
  max_chr_now_ = kMaxAllowChr;

  // From here on entries 13 and 14 are the markup forms of the power signs.
  symbols_[kSquaredMarkup] = symbols_[kPf] == u"2" ? Text(u"_up(2)up_") : symbols_[kPf];
  symbols_[kCubedMarkup] = symbols_[kLf] == u"3" ? Text(u"_up(3)up_") : symbols_[kLf];

  delimiter_ = u"|";
  const frame::NumberSymbols system = frame::number_symbols_of(*platform_->locale);
  symbols_[kDecimalSymbol] = frame::system_decimal_symbol(system);
  symbols_[kThousandsSeparator] =
      symbols_[kDecimalSymbol] != u"," ? Text(u",") : frame::system_thousands_separator(system);
  fy_lines_.assign(4, Text());
}

Text clsCharacter::tConEnter1() const { return continuation_; }

Text clsCharacter::tConEnter2() const { return u"\r\n" + continuation_; }

void clsCharacter::TxtReplace(TextView tFind, TextView tReplace, Compare compare) {
  accumulator_ = replace_all(accumulator_, tFind, tReplace, compare);
}

void clsCharacter::Let_List(std::vector<int16_t>& list) { list_ = list; }

void clsCharacter::tFyLine1(TextView text) {
  fy_lines_.assign(4, Text());
  fy_lines_[0] = text;
  accumulator_.append(text);
}

void clsCharacter::tFyLine2(TextView text) {
  fy_lines_.resize(4);
  fy_lines_[1] = text;
}

void clsCharacter::tFyLine1_RF(TextView text) {
  fy_lines_.resize(4);
  fy_lines_[2] = text;
  accumulator_.append(text);
}

void clsCharacter::tFyLine2_RF(TextView text) {
  fy_lines_.resize(4);
  fy_lines_[3] = text;
}

Text clsCharacter::tValue(int32_t index) const {
  switch (index) {
    case 1:
      return symbols_[7];
    case 14:
      return symbols_[11];
    // Entries 8 to 10 are read only inside the library; the value behind
    // 18121 is not settled and reads as empty text.
    default:
      return {};
  }
}

void clsCharacter::tValue(int32_t index, TextView text) {
  switch (index) {
    case 1:
      symbols_[7] = text;
      break;
    case 6:
      symbols_[8] = text;
      break;
    case 7:
      symbols_[9] = text;
      break;
    case 9:
      symbols_[10] = text;
      break;
    case 14:
      symbols_[11] = text;
      break;
    case 18121:
      symbols_[12] = text;
      break;
    default:
      break;
  }
}

frame::NumberSymbols clsCharacter::number_symbols() const {
  frame::NumberSymbols symbols;
  symbols.decimal = tDecimalSymbol().empty() ? u'.' : tDecimalSymbol()[0];
  const char16_t grouping = ThousandsSeparator().empty() ? char16_t{0} : ThousandsSeparator()[0];
  symbols.grouping = (grouping >= u'0' && grouping <= u'9') ? char16_t{0} : grouping;
  return symbols;
}

}  // namespace zelkora
