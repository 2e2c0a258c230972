// The general input errors (used by the checks and by the forms) and the file
// and program errors.
#include "zelkora/checking/message_table.h"

#include <algorithm>

namespace zelkora::checking {

namespace {

constexpr int32_t kInvalidEntryTitle = 53132;    // "无效输入！"
constexpr int32_t kPictureMissingTitle = 51834;  // "找不到图形文件！"
constexpr auto kLongLimit = u"1000000000";
constexpr auto kWidestLimit = u"300000000000000";
constexpr auto kWidestLowerLimit = u"-300000000000000";

// "错误：C1 为 V1，": the opening of most refused entries.
constexpr MessageText kEnteredAs{53112, C1, V1};

constexpr Composition kGeneral[] = {
    {101, 0, {kEnteredAs, {53114, C1}}},
    {102, 0, {{{53208, C1, V1}, {53210, C1}}}},
    {103, 0, {{{53212, C1, V1}, {53214, C1}}}},
    {104, 0, {kEnteredAs, {53134}}},
    {105, 0, {{{53136, C1, V1}, {53138, C1}}}},
    {106, kInvalidEntryTitle, {kEnteredAs, {53216, C1, C2}}},
    {120, 0, {{{53218, C1, V1, V2}, {53122, C1, C2}}}},
    {121, 0, {{{53218, C1, V1, literal(kLongLimit)}, {53122, C1, literal(kLongLimit)}}}},
    {122, 0, {{{53218, C1, V1, literal(kWidestLimit)}, {53122, C1, literal(kWidestLimit)}}}},
    {123,
     0,
     {{{53220, C1, V1, literal(kWidestLowerLimit)}, {53124, C1, literal(kWidestLowerLimit)}}}},
    {143, 0, {{{53222, catalogue_text(51810), C2}, {53120, catalogue_text(51810), C2}}}},
    {153, 0, {{{53224, C1, V1, V2}, {53120, C1, C2}}}},
    {154, 0, {{{53218, C1, V1, V2}, {53122, C1, C2}}}},
    {155, 0, {{{53226, C1, V1, V2}, {53118, C1, C2}}}},
    {166, 0, {{{53220, C1, V1, V2}, {53124, C1, C2}}}},
    {168, 0, {{{53228, C1, V1, V2}, {53126, C1, C2}}}},
    {169, 0, {{{53136, C1, V1}, {53128, C1, C2}}}},
    {200, kInvalidEntryTitle, {kEnteredAs, {53298, C1}}},
    {202, 0, {kEnteredAs, {53296, C1}}},
    // "When C2 is V2, C1 must not be V1" (203), "... is not V2 ..." (204).
    {203, 0, {kEnteredAs, {53294, C2, V2}, {53292, C1, V1}}},
    {204, 0, {kEnteredAs, {53340, C2, V2}, {53292, C1, V1}}},
    {205, 0, {{{53290}, {53288, C1}}}},
    {333, 0, {kEnteredAs, {53130, C1, C2}}},
    {450, 0, {{{53246}}}},
    {501, 53280, {kEnteredAs, {53282}}},
    {502, 53286, {kEnteredAs, {53284}}},
    // A slab bar text that cannot be read as diameter and spacing.
    {503, 53280, {kEnteredAs, {53342}}},
    // Section dimensions against what the design rules require: 530 a width
    // and 531 a depth below the least allowed, 532 a flange wider than its
    // limit.
    {530, 0, {{{53220, C1, V1, V2}, {53346, C1, C2}}}},
    {531, 0, {{{53220, C1, V1, V2}, {53348, C1, C2}}}},
    {532, 0, {{{53218, C1, V1, V2}, {53350, C1, C2}}}},
    {533, 0, {{{53260, C1, V1, C2}, {53262, C1, C2}}}},
    // C1 the number of steps in words, V1 the step.
    {550, 0, {{{53258, C1, V1}, {53256, V1}}}},
    {551, 0, {{{53254}, {53252}}}},
    // Foundation geometry: 560 a step's width-to-height ratio, 561 a base
    // smaller than the column, 562 an embedment too shallow, 563 a column
    // standing off its base, 564 a pile too near the edge of its cap.
    {560, 0, {{{53352, C1, V1, V2}, {53354, C1, C2}}}},
    {561, 0, {{{53220, C1, V1, V2}, {53356, C1, C2}}}},
    {562, 0, {{{53220, C1, V1, V2}, {53358, C1, C2}}}},
    {563, 0, {{{53136, C1, V1}, {53360, C1}}}},
    {564, 0, {{{53220, C1, V1, V2}, {53362, C1, C2}}}},
    {999, kPictureMissingTitle, {{{51828}, {51830}, {51832}}}},
    {1999, 51840, {{{51836, C1}, {51838}}}},
    {2001, 51846, {{{51842, C1}, {51844}}}},
    {2002, 51852, {{{51848}, {51850}}}},
    {2003, 51858, {{{51854}, {51856}}}},
    {8999, kPictureMissingTitle, {{{51904, C1}, {51906}}}},
    {39990, 32027, {{{53294, C1, V1}, {51908, C2, V2}, {51910}}}},
    // A point outside a table of values: C1 the coordinate, V1 its value, V2
    // the table's range ("15～80").
    {39997, 53286, {{{53318, C1, V1, V2}}}},
    {39998, 0, {{{50606}, {53074}, {53076}}}, CompositionForm::kErrorNumber},
    {39999, 32009, {{{53096}, {53076}}}, CompositionForm::kErrorNumber},
    // A bar text that cannot be read (reporttext/rebar.h): a lone number not
    // above 0 (3000100) or no number (3000110), a diameter after the
    // separator not above 0 (3000120) or no number (3000130), a count below
    // one (3000140) or no number (3000150).
    {3000100, 53280, {kEnteredAs, {53364, C1}}},
    {3000110, 53280, {kEnteredAs, {53366, C1}}},
    {3000120, 53280, {kEnteredAs, {53368, C1}}},
    {3000130, 53280, {kEnteredAs, {53370, C1}}},
    {3000140, 53280, {kEnteredAs, {53372, C1}}},
    {3000150, 53280, {kEnteredAs, {53374, C1}}},
};

constexpr bool sorted(std::span<const Composition> table) {
  return std::is_sorted(table.begin(), table.end(), [](const Composition& a, const Composition& b) {
    return a.error < b.error;
  });
}
static_assert(sorted(kGeneral));

const Composition* find_in(std::span<const Composition> table, int32_t error) {
  auto it = std::lower_bound(table.begin(), table.end(), error,
                             [](const Composition& c, int32_t e) { return c.error < e; });
  return it != table.end() && it->error == error ? &*it : nullptr;
}

}  // namespace

std::span<const Composition> general_compositions() { return kGeneral; }

const Composition* find_composition(int32_t error) {
  if (const Composition* c = find_in(general_compositions(), error)) return c;
  return find_in(program_compositions(), error);
}

}  // namespace zelkora::checking
