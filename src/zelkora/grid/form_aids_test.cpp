// What a desktop host builds on the property grid: the rows' facts and
// refusals, the filter, undo and redo of values, and the kept view.
#include <gtest/gtest.h>

#include <tuple>

#include "zelkora/grid/form_check.h"
#include "zelkora/grid/grid_test_support.h"
#include "zelkora/grid/layout.h"
#include "zelkora/grid/row_facts.h"
#include "zelkora/grid/row_filter.h"
#include "zelkora/grid/value_history.h"
#include "zelkora/grid/view_state.h"

namespace zelkora::grid {
namespace {

using namespace test_support;

constexpr int32_t kRowSeismic = 3;       // [9] 抗震等级
constexpr int32_t kRowDepth = 9;         // [11] h, default 500
constexpr int32_t kRowMoment = 13;       // M
constexpr int32_t kRowMinDiameter = 21;  // member of 纵筋的直径范围
constexpr int32_t kRowCompression = 27;  // [25] 考虑受压钢筋 (是/否), under 选项
constexpr int32_t kItemRatio = 24;
constexpr int32_t kItemCompression = 25;

// The beam form with its checks on leaving, and the rule of the desktop
// program: As'/As does not apply without compression bars.
struct BeamForm : TestForm {
  BeamForm() {
    form.on_control_enable = [](const std::vector<Text>& texts, std::vector<bool>& marks) {
      marks[kItemRatio] = texts[kItemCompression] == u"否";
    };
    build();
    session->check_values_on_leave(true);
  }
};

TEST(RowFacts, KindsPlacesTextsAndRefusals) {
  BeamForm f;
  f.enter_type_leave(kRowWidth, u"300");
  const std::vector<RowFacts> rows = row_facts(*f.cell);
  ASSERT_EQ(rows.size(), static_cast<std::size_t>(kBeamSteelRows));
  const RowFacts& width = rows[kRowWidth - 1];
  EXPECT_EQ(width.kind, kKindItem);
  EXPECT_EQ(width.item, 10);
  EXPECT_EQ(width.heading, kRowSizes);
  EXPECT_EQ(width.caption, u"梁的截面宽度 b");
  EXPECT_EQ(width.value, u"300");
  EXPECT_EQ(width.default_value, u"250");
  EXPECT_EQ(rows[kRowSizes - 1].kind, kKindHeading);
  EXPECT_EQ(rows[kRowSizes - 1].item, -1);
  EXPECT_EQ(rows[kRowCount - 1].group, kRowBars);
  EXPECT_TRUE(rows[kRowCount - 1].folded);
  EXPECT_EQ(rows[kRowCompression - 1].heading, kRowOptions);
  // The title box's help is the row's help.
  f.enter(kRowWidth);
  EXPECT_NE(f.title.Text().find(width.help), Text::npos);

  // A loaded value the check refuses is found without a message.
  const std::size_t shown = f.messages->shown.size();
  std::vector<Text> values;
  f.cell->GetCurrentText(values);
  values[22] = u"1";  // legs: I>=2
  f.cell->LetCurrentText(values);
  values[10] = u"-1";  // width: S>0
  f.cell->LetCurrentText(values);
  EXPECT_NE(refusal(*f.cell, kRowLegs), u"");
  EXPECT_EQ(refusal(*f.cell, kRowSizes), u"");  // a heading has no value
  EXPECT_EQ(refusal(*f.cell, 999), u"");
  // The whole form at once: each refused item once, in row order, with its
  // error and the message of the row's refusal.
  const std::vector<ValueRefusal> refused = check_form_values(*f.cell);
  ASSERT_EQ(refused.size(), 2u);
  EXPECT_EQ(std::tie(refused[0].row, refused[0].item, refused[0].value),
            std::make_tuple(kRowWidth, 10, Text(u"-1")));
  EXPECT_EQ(refused[0].caption, u"梁的截面宽度 b");
  EXPECT_EQ(refused[0].message, refusal(*f.cell, kRowWidth));
  EXPECT_EQ(std::tie(refused[1].row, refused[1].item, refused[1].error),
            std::make_tuple(kRowLegs, 22, 166));
  EXPECT_EQ(f.messages->shown.size(), shown);
  EXPECT_EQ(f.cell->lRowCount(), kBeamSteelRows);
  clsGridCell unsplit(platform::Platform::headless());
  EXPECT_EQ(unsplit.lRowCount(), 0);
  EXPECT_TRUE(check_form_values(unsplit).empty());
}

TEST(RowFilter, KeepsMatchesWithTheirHeadingsAndGroups) {
  BeamForm f;
  f.enter_type_leave(kRowWidth, u"300");
  f.enter_type_leave(kRowLegs, u"4");
  const struct {
    RowFilter filter;
    std::vector<int32_t> kept;     // among them
    std::vector<int32_t> dropped;  // none of them
  } cases[] = {
      // A heading's caption keeps its rows.
      {{u"截面尺寸"}, {kRowSizes, kRowWidth, kRowDepth}, {kRowBasics, kRowMoment}},
      // Latin letters without regard to case; a folded group opens to its members.
      {{u"DMAX"}, {kRowRebar, kRowRange, kRowMinDiameter}, {kRowBars, kRowLegs}},
      // Values are searched too.
      {{u"hrb400"}, {kRowBasics, kRowGrade}, {kRowSizes}},
      {{u"  "}, {kRowBasics, kRowWidth, kRowCompression}, {}},
      {{u"", true}, {kRowSizes, kRowWidth, kRowRebar, kRowLegs}, {kRowDepth, kRowBasics}},
      {{u"肢数", true}, {kRowLegs}, {kRowWidth}},
      {{u"", false, true}, {kRowSizes, kRowDepth}, {kRowWidth, kRowLegs}},
      {{u"没有这样的行"}, {}, {kRowBasics, kRowWidth, kRowName}},
      // A held row (a value just picked in it) stays, with its heading.
      {{u"没有这样的行", false, true, kRowGrade}, {kRowBasics, kRowGrade}, {kRowWidth, kRowDepth}},
  };
  std::vector<bool> refused(kBeamSteelRows, false);
  refused[kRowDepth - 1] = true;
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.filter.text));
    const std::vector<bool> kept = rows_kept(row_facts(*f.cell), c.filter, refused);
    ASSERT_EQ(kept.size(), static_cast<std::size_t>(kBeamSteelRows + 1));
    EXPECT_TRUE(kept[0]);
    for (const int32_t row : c.kept) EXPECT_TRUE(kept[static_cast<std::size_t>(row)]) << row;
    for (const int32_t row : c.dropped) EXPECT_FALSE(kept[static_cast<std::size_t>(row)]) << row;
  }
  EXPECT_FALSE(RowFilter{u" "}.active());
  EXPECT_TRUE((RowFilter{u"", true}.active()));

  // An item that does not apply stays hidden whatever matches.
  f.cell->ExpandHeadingGroup(kRowOptions, true);
  f.enter_type_leave(kRowCompression, u"否");
  EXPECT_FALSE(rows_kept(row_facts(*f.cell), {u"As'/As"}, {})[kRowRatio]);
}

TEST(ContainsText, FoldsLatinCaseAndWidthOnly) {
  const struct {
    const char16_t* text;
    const char16_t* part;
    bool found;
  } cases[] = {
      {u"梁的截面宽度 b", u"B", true},
      {u"ＨＲＢ400", u"ｈｒｂ", true},
      {u"梁的截面宽度 b", u"Ｂ", true},
      {u"HRB400", u"ｈｒｂ４", false},
      {u"HRB400", u"hrb5", false},
      {u"纵筋", u"", true},
      {u"", u"x", false},
      {u"Φ20", u"φ", false},
  };
  for (const auto& c : cases) EXPECT_EQ(contains_text(c.text, c.part), c.found) << to_utf8(c.text);
}

TEST(ValueHistory, UndoAndRedoCommittedValuesWithWhatTheyChanged) {
  BeamForm f;
  ValueHistory history(*f.cell);
  EXPECT_FALSE(history.record());  // nothing changed yet
  EXPECT_FALSE(history.undo());

  f.enter_type_leave(kRowWidth, u"300");
  EXPECT_TRUE(history.record());
  // A group value and its members are one step.
  f.enter_type_leave(kRowBars, u"3,20");
  EXPECT_TRUE(history.record());
  // A refused value is none.
  EXPECT_TRUE(f.enter_type_leave(kRowLegs, u"1"));
  f.enter_type_leave(kRowLegs, u"2");
  EXPECT_FALSE(history.record());
  // A value that hides a row.
  f.cell->ExpandHeadingGroup(kRowOptions, true);
  f.enter_type_leave(kRowCompression, u"否");
  EXPECT_TRUE(history.record());
  EXPECT_FALSE(f.shown(kRowRatio));
  EXPECT_EQ(history.steps(), 3u);

  EXPECT_EQ(history.undo_item(), kItemCompression);
  ASSERT_TRUE(history.undo());
  EXPECT_TRUE(f.shown(kRowRatio));
  EXPECT_EQ(f.cell->tGetText(kItemCompression), u"是");
  ASSERT_TRUE(history.undo());
  EXPECT_EQ(f.value(kRowBars), u"2, 16");
  EXPECT_EQ(f.cell->tGetText(16), u"2");
  EXPECT_EQ(f.cell->tGetText(17), u"16");
  EXPECT_FALSE(f.bold(kRowBars));
  ASSERT_TRUE(history.undo());
  EXPECT_EQ(f.value(kRowWidth), u"250");
  EXPECT_FALSE(f.bold(kRowWidth));
  EXPECT_FALSE(history.undo());

  ASSERT_TRUE(history.redo());
  EXPECT_EQ(f.value(kRowWidth), u"300");
  EXPECT_TRUE(f.bold(kRowWidth));
  EXPECT_EQ(history.redo_item(), 15);
  // The marks come back as the step left them: the group typed, its members
  // rewritten (unmarked), also across another undo.
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(history.redo());
    EXPECT_EQ((std::vector<bool>{f.bold(kRowBars), f.bold(kRowCount), f.bold(kRowDiameter)}),
              (std::vector<bool>{true, false, false}));
    if (round == 0) {
      ASSERT_TRUE(history.undo());
    }
  }
  // A new value drops what was undone.
  f.enter_type_leave(kRowDepth, u"600");
  EXPECT_TRUE(history.record());
  EXPECT_FALSE(history.can_redo());
  // Loading the defaults is a step of its own.
  f.cell->LoadDefaultEnterA(false);
  EXPECT_TRUE(history.record());
  ASSERT_TRUE(history.undo());
  EXPECT_EQ(f.value(kRowDepth), u"600");
  EXPECT_EQ(f.value(kRowWidth), u"300");
  history.clear();
  EXPECT_FALSE(history.can_undo());
}

TEST(ValueEdits, DefaultsOfARowAGroupOrAHeading) {
  BeamForm f;
  f.enter_type_leave(kRowWidth, u"300");
  f.enter_type_leave(kRowDepth, u"600");
  f.enter_type_leave(kRowBars, u"3,20");
  const struct {
    int32_t row;
    std::vector<int32_t> items;
  } cases[] = {
      {kRowWidth, {10}}, {kRowSizes, {10, 11}}, {kRowBars, {15, 16, 17}},
      {kRowCount, {16}}, {kRowBasics, {}},      {0, {}},
  };
  for (const auto& c : cases) {
    std::vector<int32_t> items;
    for (const ItemValue& v : defaults_of(*f.cell, c.row)) items.push_back(v.item);
    EXPECT_EQ(items, c.items) << c.row;
  }
  write_values(*f.cell, defaults_of(*f.cell, kRowSizes));
  EXPECT_EQ(f.value(kRowWidth), u"250");
  EXPECT_FALSE(f.bold(kRowWidth));
  EXPECT_EQ(f.value(kRowDepth), u"500");
  EXPECT_EQ(f.value(kRowBars), u"3, 20");
  // A group and its members stay in step whichever of them is written.
  const struct {
    std::vector<ItemValue> written;
    const char16_t* group;
    const char16_t* count;
    const char16_t* diameter;
  } writes[] = {
      {defaults_of(*f.cell, kRowCount), u"2, 20", u"2", u"20"},
      {{{16, u"5"}}, u"5, 20", u"5", u"20"},
      {{{15, u"4,25"}}, u"4, 25", u"4", u"25"},
      {{{15, u"6"}}, u"6", u"6", u""},
      {{{15, u"2, 16"}, {16, u"2"}, {17, u"16"}}, u"2, 16", u"2", u"16"},
  };
  for (const auto& w : writes) {
    write_values(*f.cell, w.written);
    EXPECT_EQ((std::vector<Text>{f.cell->tGetText(15), f.value(kRowBars), f.cell->tGetText(16),
                                 f.value(kRowCount), f.cell->tGetText(17), f.value(kRowDiameter)}),
              (std::vector<Text>{w.group, w.group, w.count, w.count, w.diameter, w.diameter}));
  }
  EXPECT_FALSE(f.bold(kRowBars));  // back at its default
}

TEST(ViewState, TextReadBackAndDamage) {
  ViewState view;
  view.open = {u"h1", u"15"};
  view.closed = {u"h25"};
  view.current = u"10";
  view.top = u"h1";
  view.panes = {560, 440};
  const Text text = view_state_text(view);
  EXPECT_EQ(text, u"open=h1,15;closed=h25;row=10;top=h1;panes=560,440");
  const ViewState back = parse_view_state(text);
  EXPECT_EQ(back.open, view.open);
  EXPECT_EQ(back.closed, view.closed);
  EXPECT_EQ(back.current, view.current);
  EXPECT_EQ(back.top, view.top);
  EXPECT_EQ(back.panes, view.panes);

  const struct {
    const char16_t* text;
    std::vector<Text> open;
    const char16_t* current;
    std::vector<int32_t> panes;
  } damaged[] = {
      {u"", {}, u"", {}},
      {u"open=h1,x,15,h,-3,1234567890;row=abc;panes=1,-2", {u"h1", u"15"}, u"", {}},
      {u";;=;open;row=7;row=8;panes=99999999999", {}, u"8", {}},
      {u"open = h2 ; row= 4 ;panes= 3 ,4;extra=1", {u"h2"}, u"4", {3, 4}},
      {u"\u0000open=1\u00FF;row=\xD800", {}, u"", {}},
  };
  for (const auto& d : damaged) {
    const ViewState v = parse_view_state(d.text);
    EXPECT_EQ(v.open, d.open) << to_utf8(d.text);
    EXPECT_EQ(v.current, d.current) << to_utf8(d.text);
    EXPECT_EQ(v.panes, d.panes) << to_utf8(d.text);
  }
}

TEST(ViewState, FoldsAndRowsComeBackByItem) {
  BeamForm f;
  EXPECT_EQ(row_key(*f.cell, kRowSizes), u"h10");
  EXPECT_EQ(row_key(*f.cell, kRowWidth), u"10");
  EXPECT_EQ(row_key(*f.cell, 0), u"");
  EXPECT_EQ(key_row(*f.cell, u"h10"), kRowSizes);
  EXPECT_EQ(key_row(*f.cell, u"h11"), 0);  // not the first item under a heading
  EXPECT_EQ(key_row(*f.cell, u"99"), 0);

  f.cell->ExpandHeadingGroup(kRowSizes, false);
  f.cell->ExpandGroupMembers(kRowBars, true);
  f.cell->ExpandHeadingGroup(kRowOptions, true);
  const Text saved = view_state_text(capture_view(*f.cell, kRowCount, kRowRebar));

  BeamForm again;
  // The item of the current row does not apply now: its name still finds it.
  std::vector<bool> hidden(26, false);
  hidden[16] = true;
  again.cell->LetTextInvalid(hidden);
  again.cell->ControlEnable();
  const ViewState view = parse_view_state(saved);
  restore_view(*again.cell, view);
  EXPECT_FALSE(again.shown(kRowWidth));
  EXPECT_TRUE(again.shown(kRowDiameter));
  EXPECT_FALSE(again.shown(kRowCount));
  EXPECT_TRUE(again.shown(kRowCompression));
  EXPECT_EQ(key_row(*again.cell, view.current), kRowCount);
  EXPECT_EQ(key_row(*again.cell, view.top), kRowRebar);
  EXPECT_EQ(view_state_text(capture_view(*again.cell, kRowCount, kRowRebar)), saved);
}

}  // namespace
}  // namespace zelkora::grid
