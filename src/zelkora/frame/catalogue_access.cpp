// clsCharacter: fetching catalogue texts, with the language offset and the
// placeholders "%%1%", "%%2%" and "%%3%".
#include <string>

#include "zelkora/frame/catalogue.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/mod_character.h"
#include "zelkora/platform/fault.h"

namespace zelkora {

namespace {

constexpr TextView kPlaceholder1 = u"%%1%";
constexpr TextView kPlaceholder2 = u"%%2%";
constexpr TextView kPlaceholder3 = u"%%3%";

// The value lists built from the INI files named in the user settings.
constexpr TextView kLegendListSetting = u"TuLiIniFile";
constexpr TextView kSchemeListSetting = u"BanPjFaIniFile";
constexpr TextView kListSection = u"List";
constexpr int kMaxSettingsListItems = 999;

[[noreturn]] void missing_text(int32_t id) {
  throw Fault(FaultKind::MissingResource,
              "catalogue text " + std::to_string(id) + " does not exist");
}

}  // namespace

Text clsCharacter::tResString(int16_t id) const { return tResStr(id); }

Text clsCharacter::tResStr(int32_t id) const {
  const std::optional<TextView> text = catalogue_->find(id);
  if (!text) missing_text(id);
  return Text(*text);
}

std::optional<TextView> clsCharacter::language_text(int32_t id) const {
  int32_t shifted = 0;
  if (__builtin_add_overflow(id, language_, &shifted)) return std::nullopt;
  return catalogue_->find(shifted).value_or(TextView());
}

Text clsCharacter::tString(int32_t id) const {
  const std::optional<TextView> text = language_text(id);
  if (!text) {
    throw Fault(FaultKind::Overflow, "catalogue id " + std::to_string(id) + " + language offset " +
                                         std::to_string(language_) + " overflows");
  }
  return Text(*text);
}

// The substitutions run in the order %%1%, %%2%, %%3%, so a replacement that
// itself holds a later placeholder is replaced again by the later step.
Text clsCharacter::tStringRe(int32_t id, TextView tReplace) const {
  return replace_all(tString(id), kPlaceholder1, tReplace);
}

Text clsCharacter::tStringRe2(int32_t id, TextView tReplace1, TextView tReplace2) const {
  return replace_all(tStringRe(id, tReplace1), kPlaceholder2, tReplace2);
}

Text clsCharacter::tStringRe3(int32_t id, TextView tReplace1, TextView tReplace2,
                              TextView tReplace3) const {
  return replace_all(tStringRe2(id, tReplace1, tReplace2), kPlaceholder3, tReplace3);
}

// Only `text` is trimmed: a catalogue text with a trailing blank never matches.
bool clsCharacter::bTextEqResString(TextView text, int32_t lRes, Compare compare) const {
  const std::optional<TextView> resource = catalogue_->find(lRes);
  return resource && equal_text(trim(text), *resource, compare);
}

std::vector<Text> clsCharacter::ComboBoxList(int32_t lList) const {
  if (lList == 0 || lList == 100 || lList == 200) {
    const Text section(catalogue_->find(text_id::kSettingsSection).value_or(TextView()));
    const TextView key = lList == 200 ? kSchemeListSetting : kLegendListSetting;
    const Text file = ModCharacter::tGetSetting(*platform_, application_, section, key, u"");
    std::vector<Text> items;
    if (trim(file).empty() || !platform_->ini) return items;
    for (int k = 1; k <= kMaxSettingsListItems; ++k) {
      const std::u16string number(from_utf8(std::to_string(k)));
      Text item = platform_->ini->read(kListSection, number, u"", trim(file));
      if (item.empty()) break;
      items.push_back(std::move(item));
    }
    return items;
  }
  int32_t id = 0;
  if (__builtin_add_overflow(lList, text_id::kListBase, &id)) return {};
  // A list id that overflows with the offset is no list, as one past lMax is.
  return split_text(language_text(id).value_or(TextView()), u"|");
}

}  // namespace zelkora
