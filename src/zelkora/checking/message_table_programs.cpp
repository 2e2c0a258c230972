// The errors of the calculation programs: the design-rule checks of members
// (GB 50010 concrete, GB 50003 masonry, GB/T 50476 durability) and the result
// files of the structural analysis that the foundation, column and pile
// programs read.
//
// Fills of a design-rule sentence: C1 the member or section ("梁 L1 跨中"), V1
// the value found, V2 its limit; C2, where used, the name or expression of the
// limit. Fills of a result-file message: C1 the floor number (in "WPJ%%1%.OUT",
// "WNL%%1%.OUT" ...), the project name (in "%%1%.RES", "%%1%.REE") or the file
// name; V1 the member that was looked for.
#include "zelkora/checking/message_table.h"

#include <algorithm>

namespace zelkora::checking {

namespace {

constexpr int32_t kDesignRuleTitle = 32006;            // "错误！"
constexpr int32_t kForceFileMissingTitle = 32026;      // "内力标准值数据文件不存在！"
constexpr int32_t kColumnDataTitle = 32029;            // "柱数据输入错误！"
constexpr int32_t kNoFolderTitle = 52600;              // "没有指定工程目录！"
constexpr int32_t kRebarFileMissingTitle = 52602;      // "配筋文件不存在！"
constexpr int32_t kStructureFileMissingTitle = 52604;  // "结构数据文件不存在！"
constexpr int32_t kForceFileDamagedTitle = 52606;      // "内力标准值数据文件错误！"
constexpr int32_t kResultReadTitle = 52608;            // "读取计算结果错误！"
constexpr int32_t kRebarFileReadTitle = 51986;         // "读取配筋文件错误！"
constexpr int32_t kFoundationDataTitle = 52722;        // "基础荷载数据输入错误！"

// "错误：C1 ＝ V1 ＞ V2，": the opening of the design rules written in the form
// of the general input errors.
constexpr MessageText kAboveLimit{53218, C1, V1, V2};
// The value with its limit, in the sentence of the rule.
constexpr MessageText rule(int32_t id) { return {id, C1, V1, V2}; }

constexpr MessageText kCheck{51962};  // "请检查："
// "请检查结构计算是否已经完成，以及工程目录的输入是否正确。"
constexpr MessageText kCheckAnalysisDone{52610};
// "该文件的数据不完整或格式已被破坏，请重新进行结构计算。"
constexpr MessageText kFileDamaged{52612};
// "二、配筋文件“WPJ%%1%.OUT”是否为本工程最新的计算结果。"
constexpr MessageText kRebarFileLatest{51984, C1};
// "不满足《混凝土结构耐久性设计标准》的要求。"
constexpr MessageText kDurabilityNotMet{52152};

constexpr Composition kPrograms[] = {
    // Flexure: the section too small for single reinforcement, ξ above ξb,
    // x below 2a's, tension steel above and below its limits, the flange
    // width, the clear spacing of bars and the crack width.
    {3009, kDesignRuleTitle, {{rule(52300), {52302}}}},
    {3010, kDesignRuleTitle, {{rule(51860)}}},
    {3011, kDesignRuleTitle, {{rule(52304), {52306}}}},
    {3013, kDesignRuleTitle, {{{52200, V1, V2}}}},
    {3015, kDesignRuleTitle, {{rule(52308), {52310}}}},
    {3020, kDesignRuleTitle, {{rule(52312), {52314}}}},
    {3039, kDesignRuleTitle, {{rule(52316), {52318}}}},
    {3049, kDesignRuleTitle, {{rule(52320), {52322}}}},
    // Shear: the section limits (3210 seismic, V1 the coefficient found;
    // 3211 non-seismic, C2 the limiting expression), the stirrup ratio, the
    // stirrup spacing and diameter, the spacing of stirrup legs (3221).
    {3210, kDesignRuleTitle, {{{51872, V1}}}},
    {3211, kDesignRuleTitle, {{kAboveLimit, {52324, C1, C2}}}},
    {3213, kDesignRuleTitle, {{rule(52326), {52328}}}},
    {3219, kDesignRuleTitle, {{rule(52330), {52332}}}},
    {3220, kDesignRuleTitle, {{rule(52334), {52336}}}},
    {3221, kDesignRuleTitle, {{kAboveLimit, {52338, C1, C2}}}},
    // Torsion: the section limit, the strength ratio ζ (V2 the range), the
    // longitudinal steel ratio, the stirrup ratio under shear and torsion.
    {3310, kDesignRuleTitle, {{rule(52340), {52342}}}},
    {3320, kDesignRuleTitle, {{rule(52344), {52346}}}},
    {3322, kDesignRuleTitle, {{rule(52348), {52350}}}},
    {3339, kDesignRuleTitle, {{rule(52352), {52354}}}},
    // Slabs: boundary conditions the program cannot take, a side ratio
    // outside the tables (C2 the range), the thickness, the bar spacing.
    {3500, kDesignRuleTitle, {{{51890}}}},
    {3501, kDesignRuleTitle, {{{53136, C1, V1}, {52356, C1, C2}}}},
    {3502, kDesignRuleTitle, {{rule(52358), {52360}}}},
    {3503, kDesignRuleTitle, {{rule(52362), {52364}}}},
    // Masonry: C1 the kind of unit, V1 and V2 the unit and mortar grades,
    // C2 the table of the code; then the height-to-thickness ratio.
    {4000, kDesignRuleTitle, {{{51894, C1, V1, V2}, {51896, C2}}}},
    {4001, kDesignRuleTitle, {{rule(52366), {52368}}}},
    // Cover: C1 the environment class, V1 the concrete grade; then the cover
    // against its least thickness and against the bar diameter.
    {4100, kDesignRuleTitle, {{{51900, C1, V1}, {51902}}}},
    {4102, kDesignRuleTitle, {{rule(52370), {52372}}}},
    {4103, kDesignRuleTitle, {{rule(52374), {52376}}}},
    // C1 the steel grade, V1 its design strength, V2 the concrete grade.
    {5000, kDesignRuleTitle, {{rule(52102), {52104}}}},
    // Durability: C1 the environmental action grade; 6000 the concrete
    // grade, 6020 the water-binder ratio, 6030 the cover; 6010 any other
    // quantity of the standard above its limit (C2 the limit).
    {6000, kDesignRuleTitle, {{rule(52158), kDurabilityNotMet}}},
    {6010, kDesignRuleTitle, {{kAboveLimit, {52378, C1, C2}}}},
    {6020, kDesignRuleTitle, {{rule(52160), kDurabilityNotMet}}},
    {6030, kDesignRuleTitle, {{rule(52156), kDurabilityNotMet}}},

    // Foundation program: the project folder, then the files it reads.
    {3600101, kNoFolderTitle, {{{52614}, {52616}}}},
    {3600102, 51920, {{{51916, C1}, {51918}}}},
    {3600103, kForceFileMissingTitle, {{{52618}, kCheckAnalysisDone}}},      // WDCNL.OUT
    {3600104, kForceFileMissingTitle, {{{52620}, kCheckAnalysisDone}}},      // DCNL.OUT
    {3600105, kForceFileMissingTitle, {{{52622}, kCheckAnalysisDone}}},      // Pea-F.out
    {3600106, kForceFileMissingTitle, {{{52624}, kCheckAnalysisDone}}},      // Tbsa4.OUT
    {3600107, kForceFileMissingTitle, {{{52626, C1}, kCheckAnalysisDone}}},  // WNL*.OUT
    {3600108, kForceFileMissingTitle, {{{52628, C1}, kCheckAnalysisDone}}},  // NL-*.OUT
    {3600109, kForceFileMissingTitle, {{{52630, C1}, kCheckAnalysisDone}}},  // *.RES
    {3600110, kForceFileMissingTitle, {{{52632, C1}, kCheckAnalysisDone}}},  // *.REE
    {3600111, kForceFileMissingTitle, {{{52634}, kCheckAnalysisDone}}},      // FORCE
    {3600112, kForceFileMissingTitle, {{{52636, C1}, kCheckAnalysisDone}}},  // WWNL*.OUT
    {3600113, kStructureFileMissingTitle, {{{52638}, kCheckAnalysisDone}}},  // Struc
    {3600114, kRebarFileMissingTitle, {{{52640, C1}, kCheckAnalysisDone}}},  // WPJ*.OUT
    // Force files that cannot be read.
    {3600810, 0, {{{61001}}}, CompositionForm::kSplitEntry},       // WDCNL.OUT
    {3600820, kForceFileDamagedTitle, {{{52642}, kFileDamaged}}},  // DCNL.OUT
    {3600830, kForceFileDamagedTitle, {{{52644}, kFileDamaged}}},  // Pea-F.out
    {3600840, kForceFileDamagedTitle, {{{52646}, kFileDamaged}}},  // Tbsa4.OUT
    // Reinforcement files: unreadable, a member not found (V1 the beam,
    // column or wall column), a member's data incomplete, no data at all.
    {3600900, kRebarFileReadTitle, {{{52648, C1}, kFileDamaged}}},
    {3600910, kRebarFileReadTitle, {{{51982, C1, V1}, kCheck, {51964}, kRebarFileLatest}}},
    {3600920, kRebarFileReadTitle, {{{52650, C1, V1}, kCheck, {52652}, kRebarFileLatest}}},
    {3600930, kRebarFileReadTitle, {{{52654, C1, V1}, kCheck, {52656}, kRebarFileLatest}}},
    {3600931, kRebarFileReadTitle, {{{52658, C1, V1}, {52664}}}},
    {3600932, kRebarFileReadTitle, {{{52660, C1, V1}, {52664}}}},
    {3600933, kRebarFileReadTitle, {{{52662, C1, V1}, {52664}}}},
    {3600940, kRebarFileReadTitle, {{{52666, C1}, {52668}}}},

    // Foundation program, the tables of its footings (datafile/foundation_data.h):
    // C1 the cell ("第 2 行第 3 列"), V1 its text (3601001: the number of load
    // cases, above the limit of 50).
    {3601000, kFoundationDataTitle, {{{52726}, {52728}}}},
    {3601001, kFoundationDataTitle, {{{52730, V1, literal(u"50")}, {52732}}}},
    {3601002, kFoundationDataTitle, {{{52734, C1}, {52736}}}},
    {3601003, kFoundationDataTitle, {{{52738, C1, V1}, {52688}}}},
    {3601004, kFoundationDataTitle, {{{52740, C1, V1}, {52742}}}},
    {3601005, kFoundationDataTitle, {{{52744, C1, V1}, {52746}}}},
    {3601006, kFoundationDataTitle, {{{52744, C1, V1}, {52748}}}},
    {3601007, kFoundationDataTitle, {{{52750}, {52752}}}},
    {3601010, kFoundationDataTitle, {{{52754}, {52756}}}},
    {3601011, kFoundationDataTitle, {{{52758, C1}, {52760}}}},
    {3601012, kFoundationDataTitle, {{{52762, C1, V1}, {52764}}}},

    // Column program: the force files it reads, missing (x03 to x05) or
    // unreadable (9x0), and a column not found in them.
    {4600103, kForceFileMissingTitle, {{{52626, C1}, kCheckAnalysisDone}}},  // WNL*.OUT
    {4600104, kForceFileMissingTitle, {{{52628, C1}, kCheckAnalysisDone}}},  // NL-*.OUT
    {4600203, kForceFileMissingTitle, {{{52630, C1}, kCheckAnalysisDone}}},  // *.RES
    {4600204, kForceFileMissingTitle, {{{52632, C1}, kCheckAnalysisDone}}},  // *.REE
    {4600303, kForceFileMissingTitle, {{{52634}, kCheckAnalysisDone}}},      // FORCE
    {4600304, kForceFileMissingTitle, {{{52636, C1}, kCheckAnalysisDone}}},  // WWNL*.OUT
    {4600305, kStructureFileMissingTitle, {{{52638}, kCheckAnalysisDone}}},  // Struc
    {4600900, kForceFileDamagedTitle, {{{52670, C1, V1}, kCheck, {52672}, {52674, C1}}}},
    {4600930, kForceFileDamagedTitle, {{{52676, C1}, kFileDamaged}}},  // WNL*.OUT
    {4600940, kForceFileDamagedTitle, {{{52678, C1}, kFileDamaged}}},  // NL-*.OUT
    {4600950, kForceFileDamagedTitle, {{{52680, C1}, kFileDamaged}}},  // *.RES
    // The load-case table: empty, a load case given twice (C1), a load case
    // missing (C1), a column's section unlike the force file's (C1 the
    // column, V1 and V2 the two sections).
    {4601000, kColumnDataTitle, {{{52682}, {52684}}}},
    {4601100, kColumnDataTitle, {{{52686, C1}, {52688}}}},
    {4601110, 0, {{{61000, C1}}}, CompositionForm::kSplitEntry},
    {4602001, kColumnDataTitle, {{{52690, C1, V1, V2}, {52692}}}},
    // The number of columns to check (see clsErrChr::ColumnNumberCheck: C1
    // "多于" or "少于", C2 "删除" or "添加"); at least one takes no fill.
    {4603001, kColumnDataTitle, {{{52694}, {52696}}}},
    {4603002, kColumnDataTitle, {{{52070, C1}, {52072, C2}}}},
    {4603003, kColumnDataTitle, {{{52698, C1}, {52700, C2}}}},

    // Pile program: C1 the force file, V1 the column under the cap.
    {4701001, kForceFileMissingTitle, {{{52702, C1}, kCheckAnalysisDone}}},
    {4701002, kForceFileDamagedTitle, {{{52704, C1}, kFileDamaged}}},
    {4701003, kForceFileDamagedTitle, {{{52706, C1, V1}, {52708}}}},

    // Reinforcement schemes: a new scheme without a name, a name taken, a
    // scheme that is gone (C1 the name).
    {5101000, 0, {{{52710}, {52712}}}},
    {5101001, 0, {{{52078, C1}, {52080}}}},
    {5101002, 0, {{{52714, C1}, {52716}}}},

    {9005003, 0, {{{52098}}}},
    {9005104, 0, {{{52100}}}},
    // A result file without the chosen floor: C1 the file, V1 the floor,
    // C2 the floors it holds.
    {120313001, kResultReadTitle, {{{52718, C1, V1}, {52720, C2}}}},
};

// Strictly increasing, so that the binary search of find_composition finds
// every number and no number is given twice.
constexpr bool strictly_sorted(std::span<const Composition> table) {
  return std::adjacent_find(table.begin(), table.end(),
                            [](const Composition& a, const Composition& b) {
                              return a.error >= b.error;
                            }) == table.end();
}
static_assert(strictly_sorted(kPrograms));

}  // namespace

std::span<const Composition> program_compositions() { return kPrograms; }

}  // namespace zelkora::checking
