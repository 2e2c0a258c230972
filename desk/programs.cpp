// The programs of the desktop program and the rules of their forms.
#include "desk/programs.h"

namespace zelkora::desk {

const std::vector<Program>& programs() {
  // Items of the layouts: clsBeamSteel 24 As'/As under 25 考虑受压钢筋;
  // clsFoundationSpread 22-24 纵筋的直径范围 under 21 底板钢筋自动选筋;
  // clsLoadCombination 7 SEhk under 17 考虑地震作用, 6 SWk under 18 考虑风荷载.
  static const std::vector<Program> kPrograms = {
      {u"梁配筋计算", u"clsBeamSteel", {{25, {24}}}, true},
      {u"独立基础计算", u"clsFoundationSpread", {{21, {22, 23, 24}}}, false},
      {u"荷载组合", u"clsLoadCombination", {{17, {7}}, {18, {6}}}, false},
  };
  return kPrograms;
}

const Program* program_of(TextView menu_key) {
  for (const Program& p : programs()) {
    if (p.menu_key == trim(menu_key)) return &p;
  }
  return nullptr;
}

const Program* program_of_layout(TextView layout) {
  for (const Program& p : programs()) {
    if (equal_text(p.layout, trim(layout), Compare::Text)) return &p;
  }
  return nullptr;
}

void apply_rules(const Program& program, const std::vector<Text>& texts, std::vector<bool>& hidden,
                 const clsCharacter& chr) {
  for (const ItemRule& rule : program.rules) {
    const auto at = static_cast<std::size_t>(rule.switch_item);
    const bool applies = at < texts.size() && chr.bYesText(texts[at]);
    for (const int32_t item : rule.items) {
      const auto i = static_cast<std::size_t>(item);
      if (i < hidden.size()) hidden[i] = !applies;
    }
  }
}

}  // namespace zelkora::desk
