// The programs of the desktop program and the rules of their forms.
#include "program/programs.h"

#include "program/beam_report.h"
#include "program/footing_loads.h"
#include "program/load_combination_report.h"

#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/record_numbers.h"
#include "zelkora/grid/layout.h"

namespace zelkora::desk {

int32_t layout_id(TextView name, const clsCharacter& chr) {
  return grid::layout_name_id(name, chr).value_or(0);
}

const std::vector<Program>& programs() {
  // Items of the layouts: clsBeamSteel 24 As'/As under 25 考虑受压钢筋;
  // clsFoundationSpread 22-24 纵筋的直径范围 under 21 底板钢筋自动选筋;
  // clsLoadCombination 7 SEhk, 11 γEh, 15 ψE, 16 ψwE under 17 考虑地震作用, 6 SWk
  // and 14 ψw under 18 考虑风荷载 (ψwE, under the earthquake, says in the report
  // when the wind is not considered).
  static const std::vector<Program> kPrograms = {
      {u"梁配筋计算",
       u"clsBeamSteel",
       {{25, {24}}},
       true,
       [](const std::vector<Text>& values, const CaseRows&, clsCharacter& chr) {
         return beam_report(values, chr);
       }},
      {u"独立基础计算",
       u"clsFoundationSpread",
       {{21, {22, 23, 24}}},
       true,
       footing_calculation,
       true},
      {u"荷载组合",
       u"clsLoadCombination",
       {{17, {7, 11, 15, 16}}, {18, {6, 14}}},
       true,
       [](const std::vector<Text>& values, const CaseRows&, clsCharacter& chr) {
         return load_combination_report(values, chr);
       }},
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

ProjectFileKind project_file_kind(const std::shared_ptr<const platform::Platform>& platform,
                                  TextView file) {
  ProjectFileKind kind;
  kind.exists = platform->suite->file_exists(file);
  if (!kind.exists) return kind;
  // The form's identifier record follows the revision record.
  clsLoadSave ls(platform);
  UseBinRecord record;
  if (ls.OpenFileA(file, u"InPut")) {
    for (int i = 0; i < 2 && ls.ReadFileOneA(record); ++i) {
      if (record.ID == record_id::kProgram) kind.layout = record.Member;
    }
    ls.CloseFileA();
  }
  return kind;
}

Text why_not_opened(const ProjectFileKind& kind, TextView file, const Program* program) {
  const Text name = u"“" + Text(file) + u"”";
  if (!kind.exists) return u"找不到文件" + name + u"。";
  if (!kind.layout) return name + u"不是 Zelkora 的原始数据文件，或已损坏。";
  const Program* owner = program_of_layout(*kind.layout);
  if (owner && owner != program && program) {
    return name + u"是“" + Text(owner->menu_key) + u"”的原始数据文件，不能在“" +
           Text(program->menu_key) + u"”中打开。";
  }
  if (!owner) return name + u"是本程序没有的计算程序（" + *kind.layout + u"）的原始数据文件。";
  return name + u"已损坏，无法读出其中的数据。";
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
