// Tests of the form-state writers and readers and of bLoadOrSaveData.
#include "zelkora/datafile/form_state.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <tuple>
#include <utility>

#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/record_file.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_controls.h"
#include "zelkora/platform/headless/memory_files.h"

namespace zelkora {
namespace {

using frame::Variant;
using platform::ControlArray;
using namespace platform::headless;  // NOLINT(google-build-using-namespace)

using Records = std::vector<std::pair<int32_t, Text>>;

// A headless platform over in-memory files, in a notation with a decimal
// comma, so that every number shows which symbols it was written with.
struct Memory {
  std::shared_ptr<platform::Platform> platform = platform::Platform::headless();
  std::shared_ptr<MemoryFileService> files = std::make_shared<MemoryFileService>();
  Memory() {
    platform->files = files;
    platform->locale = std::make_shared<FixedNumberLocale>(u",", u".");
  }
};

// Writes records with `body` between the opening and the closing, nothing else.
void write_file(Memory& m, const std::function<void(clsLoadSave&)>& body) {
  clsLoadSave ls(m.platform);
  ASSERT_TRUE(ls.OpenFileA(u"f", u"OutPut"));
  body(ls);
  ASSERT_TRUE(ls.CloseFileA());
}

void put_records(Memory& m, const Records& records) {
  std::string bytes;
  for (const auto& [id, member] : records) datafile::append_record(bytes, id, member);
  m.files->put(u"f", bytes);
}

Records records_of(Memory& m) {
  clsLoadSave ls(m.platform);
  Records out;
  UseBinRecord rec;
  if (ls.OpenFileA(u"f", u"InPut")) {
    while (ls.ReadFileOneA(rec)) out.emplace_back(rec.ID, rec.Member);
  }
  return out;
}

// The caller's reading loop: every record to `dispatch` until the end of the
// file; false as soon as a reader fails.
bool read_file(Memory& m, const std::function<bool(clsLoadSave&, UseBinRecord&)>& dispatch) {
  clsLoadSave ls(m.platform);
  if (!ls.OpenFileA(u"f", u"InPut")) return false;
  UseBinRecord rec;
  int32_t count = 0;
  while (!ls.at_end_of_file()) {
    if (!ls.ReadFileOneA(rec) || ls.bReadMsgError(count, 10000) || !dispatch(ls, rec)) return false;
  }
  return true;
}

// In-memory controls in a control array of the interface type.
template <class T, class Base>
struct Controls {
  std::vector<std::unique_ptr<T>> owned;
  ControlArray<Base> array;
  T& add(int32_t index) {
    owned.push_back(std::make_unique<T>());
    array.set(index, owned.back().get());
    return *owned.back();
  }
};

using Checks = Controls<MemoryCheckBox, platform::CheckBox>;
using Options = Controls<MemoryOptionButton, platform::OptionButton>;
using Combos = Controls<MemoryComboBox, platform::ComboBox>;

MemoryComboBox& combo(Combos& c, int32_t index, Text text, std::vector<Text> items = {},
                      int16_t style = 0) {
  MemoryComboBox& box = c.add(index);
  box.text = std::move(text);
  box.items = std::move(items);
  box.style = style;
  return box;
}

// The fixed patterns, against the records actually written; a writer given
// no name writes the empty one.
// clang-format off
TEST(FormState, WritersEmitTheirRecordPatterns) {
  struct Case {
    const char* what;
    std::function<void(clsLoadSave&)> write;
    Records expected;
  };
  const Case cases[] = {
      {"check-box array 0..2: nine records",
       [](clsLoadSave& ls) {
         Checks c;
         c.add(0).value = 1;
         c.add(1).value = 0;
         c.add(2).value = 2;
         ls.WriteFile_Check_BsA(c.array, u"复选");
       },
       {{202, u"复选"}, {2000, u"0"}, {2005, u"1"}, {202, u"复选"}, {2000, u"1"}, {2005, u"0"},
        {202, u"复选"}, {2000, u"2"}, {2005, u"2"}}},
      {"2 x 3 array: second index fastest",
       [](clsLoadSave& ls) {
         Array2<Variant> a(1, 2);
         for (int i = 0; i <= 1; ++i) {
           for (int j = 0; j <= 2; ++j) a(i, j) = 10 * i + j + 0.5;
         }
         ls.WriteFile_Array_2A(a, u"dA");
       },
       {{100, u"dA"}, {1001, u"1"}, {1002, u"2"}, {10000, u"0,5"}, {10000, u"1,5"},
        {10000, u"2,5"}, {10000, u"10,5"}, {10000, u"11,5"}, {10000, u"12,5"}}},
      {"option buttons with a gap",
       [](clsLoadSave& ls) {
         MemoryOptionButton a, b;
         b.value = true;
         ControlArray<platform::OptionButton> buttons;
         buttons.set(1, &a);
         buttons.set(3, &b);
         ls.WriteFile_Option_BsA(buttons);
       },
       {{207, u""}, {2000, u"1"}, {2005, u"False"}, {207, u""}, {2000, u"3"},
        {2005, u"True"}}},
      {"toolbar button",
       [](clsLoadSave& ls) {
         MemoryToolbar bar;
         bar.values = {0, 1, 0};
         ls.WriteFile_Toolbar_EditA(2, bar, u"tb");
       },
       {{220, u"tb"}, {2000, u"2"}, {20000, u"1"}, {200005, u"1"}}},
      {"column force record",
       [](clsLoadSave& ls) {
         ls.WriteFile_rColForceA(3, rColForce{true, 7, -1250.5, 2.5, 0, 1e-5, 3e20, -0.25});
       },
       {{453, u""}, {2000, u"3"}, {4001, u"True"}, {4002, u"7"}, {4003, u"-1250,5"},
        {4004, u"2,5"}, {4005, u"0"}, {4006, u"1E-05"}, {4007, u"3E+20"}, {4008, u"-0,25"}}},
      {"combo box with its list",
       [](clsLoadSave& ls) {
         MemoryComboBox box;
         box.items = {u"C30", u"C35"};
         box.text = u"C35";
         ls.WriteFile_ComboBox(4, box, true);
       },
       {{204, u""}, {2000, u"4"}, {2001, u"2"}, {10000, u"C30"}, {10000, u"C35"},
        {2005, u"C35"}}},
      {"list box",
       [](clsLoadSave& ls) {
         MemoryListBox box;
         box.items = {u"a", u"b"};
         box.Selected(1, true);
         ControlArray<platform::ListBox> boxes;
         boxes.set(0, &box);
         ls.WriteFile_ListBox_BsA(boxes);
       },
       {{209, u""}, {2000, u"0"}, {2001, u"2"}, {2005, u"False"}, {2005, u"True"}}},
      {"list view",
       [](clsLoadSave& ls) {
         MemoryListView view;
         view.columns = 2;
         view.SubItem(view.ListItemsAdd(u"甲"), 1, u"1");
         ls.WriteFile_ListViewA(0, view);
       },
       {{225, u""}, {2000, u"0"}, {2001, u"2"}, {2002, u"1"}, {10000, u"甲"},
        {10001, u"1"}}},
      {"empty 3-D array",
       [](clsLoadSave& ls) { ls.WriteFile_Array_Str_3A(Array3<Text>(0, -1, 2), u"t3"); },
       {{100, u"t3"}, {1001, u"0"}, {1002, u"-1"}, {1003, u"2"}}},
  };
  for (const Case& c : cases) {
    Memory m;
    write_file(m, c.write);
    EXPECT_EQ(records_of(m), c.expected) << c.what;
  }
}
// clang-format on

// Every control written without a name and read back through a caller's
// loop that knows the groups by the empty name, into controls that held
// other values.
TEST(FormState, ControlsRoundTrip) {
  Checks checks;
  checks.add(0).value = 1;
  checks.add(2).value = 2;
  checks.add(5).value = 0;
  Options options;
  options.add(1).value = true;
  options.add(3).value = false;
  Combos combos;
  combo(combos, 0, u"自定义 C32", {u"C30", u"C35"});
  combo(combos, 1, u"HRB400", {u"HPB300", u"HRB400"}, platform::ComboBox::kDropdownList);
  combo(combos, 2, u"");
  combo(combos, 3, u"a😀b\uE002");  // no form in code page 936: "?"; U+E002 survives
  Controls<MemoryListBox, platform::ListBox> lists;
  MemoryListBox& list = lists.add(0);
  list.items = {u"一", u"二", u"三"};
  list.Selected(0, true);
  list.Selected(2, true);
  MemoryListView view;
  view.columns = 3;
  view.SubItem(view.ListItemsAdd(u"荷载"), 2, u"12,5");
  view.SubItem(view.ListItemsAdd(u""), 1, u"x");
  MemoryToolbar bar;
  bar.values = {0, 1};
  const rColForce force{true, -3, 1.25, -2.5e-7, 1e15, 0, 99999.125, -7};

  Memory m;
  write_file(m, [&](clsLoadSave& ls) {
    ls.WriteFile_Check_BsA(checks.array);
    ls.WriteFile_Option_BsA(options.array);
    ls.WriteFile_ComboBox_BsA(combos.array, true);
    ls.WriteFile_ListBox_BsA(lists.array);
    ls.WriteFile_ListViewA(4, view);
    ls.WriteFile_Toolbar_EditA(2, bar);
    ls.WriteFile_rColForceA(1, force);
    ls.WriteFile_rColForceA(9, force);  // no such element in the reader's array
  });

  // The targets: other values, other lists, and index 5 missing (a gap).
  Checks checks2;
  checks2.add(0).value = 0;
  checks2.add(2).value = 0;
  Options options2;
  options2.add(1).value = false;
  options2.add(3).value = true;
  Combos combos2;
  combo(combos2, 0, u"old", {u"x"});
  combo(combos2, 1, u"old", {}, platform::ComboBox::kDropdownList);
  combo(combos2, 2, u"old");
  combo(combos2, 3, u"old");
  Controls<MemoryListBox, platform::ListBox> lists2;
  lists2.add(0).items = {u"一", u"二", u"三"};
  lists2.owned[0]->Selected(1, true);
  Controls<MemoryListView, platform::ListView> views2;
  views2.add(4).columns = 3;
  views2.owned[0]->ListItemsAdd(u"old");
  MemoryToolbar bar2;
  bar2.values = {0, 0};
  std::vector<rColForce> forces(3);

  int groups = 0;
  ASSERT_TRUE(read_file(m, [&](clsLoadSave& ls, UseBinRecord& rec) {
    ++groups;
    if (!rec.Member.empty()) return false;  // a group of another name
    switch (rec.ID) {
      case 202:
        return ls.ReadFile_Check_BA(checks2.array, rec);
      case 207:
        return ls.ReadFile_Option_BA(options2.array, rec);
      case 204:
        return ls.ReadFile_ComboBox_BA(combos2.array, rec);
      case 209:
        return ls.ReadFile_ListBox_BW(lists2.array);
      case 225:
        return ls.ReadFile_ListViewA(views2.array, rec);
      case 220:
        return ls.ReadFile_Toolbar_EditA(bar2, rec);
      case 453:
        return ls.ReadFile_rColForceA(forces, rec);
      default:
        return false;  // a record outside any group
    }
  }));
  EXPECT_EQ(groups, 3 + 2 + 4 + 1 + 1 + 1 + 2);
  EXPECT_EQ(checks2.owned[0]->value, 1);
  EXPECT_EQ(checks2.owned[1]->value, 2);
  EXPECT_TRUE(options2.owned[0]->value);
  EXPECT_FALSE(options2.owned[1]->value);
  const std::pair<Text, std::vector<Text>> combos_expected[] = {
      {u"自定义 C32", {u"C30", u"C35"}},
      {u"HRB400", {u"HPB300", u"HRB400"}},
      {u"", {}},
      {u"a?b\uE002", {}},
  };
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(combos2.owned[i]->text, combos_expected[i].first) << i;
    EXPECT_EQ(combos2.owned[i]->items, combos_expected[i].second) << i;
  }
  EXPECT_EQ(lists2.owned[0]->selected, (std::vector<bool>{true, false, true}));
  const MemoryListView& v = *views2.owned[0];
  ASSERT_EQ(v.ListItemsCount(), 2);
  EXPECT_EQ(v.ItemText(1), u"荷载");
  EXPECT_EQ(v.SubItem(1, 2), u"12,5");
  EXPECT_EQ(v.ItemText(2), u"");
  EXPECT_EQ(v.SubItem(2, 1), u"x");
  EXPECT_EQ(bar2.values, (std::vector<int16_t>{0, 1}));
  EXPECT_EQ(forces, (std::vector<rColForce>{{}, force, {}}));
}

TEST(FormState, ArraysRoundTrip) {
  using VA = std::vector<Variant>;
  using TA = std::vector<Text>;
  Array2<Text> t23(1, 2);
  for (int i = 0; i <= 1; ++i) {
    for (int j = 0; j <= 2; ++j) t23(i, j) = Text(1, static_cast<char16_t>(u'a' + 3 * i + j));
  }
  Array3<Text> t3(1, 2, 1);
  for (std::size_t n = 0; n < t3.Values.size(); ++n) t3.Values[n] = Text(n, u'中');
  Array3<Text> t000(0, 0, 0);
  t000(0, 0, 0) = u"只一个";
  Array2<Variant> v2(0, 1);
  v2(0, 0) = 2.5;
  v2(0, 1) = u"文字";

  Memory m;
  write_file(m, [&](clsLoadSave& ls) {
    ls.WriteFile_Array_1A(VA{}, u"v-empty");
    ls.WriteFile_Array_1A(VA{Variant(0)}, u"v0");
    ls.WriteFile_Array_1A(VA{1, 2.5, u"甲", u"", true, Variant()}, u"v");
    ls.WriteFile_Array_Str_1A(TA{}, u"t-empty");
    ls.WriteFile_Array_Str_1A(TA{u""}, u"t0");
    ls.WriteFile_Array_Str_1A(TA{u"a", u"混凝土", u"x😀y"}, u"t");
    ls.WriteFile_Array_2A(v2, u"v2");
    ls.WriteFile_Array_2A(t23, u"t23");
    ls.WriteFile_Array_2A(Array2<Text>(-1, 3), u"t2-empty");
    ls.WriteFile_Array_Str_3A(t3, u"t3");
    ls.WriteFile_Array_Str_3A(t000, u"t000");
  });

  std::map<Text, VA> variants;
  std::map<Text, TA> texts;
  std::map<Text, Array2<Variant>> variants2;
  std::map<Text, Array2<Text>> texts2;
  std::map<Text, Array3<Text>> texts3;
  ASSERT_TRUE(read_file(m, [&](clsLoadSave& ls, UseBinRecord& rec) {
    const Text name = rec.Member;
    if (name.starts_with(u"v2")) return ls.ReadFile_Array_2A(variants2[name], rec);
    if (name.starts_with(u"t2")) return ls.ReadFile_Array_Str_2A(texts2[name], rec);
    if (name == u"t3") return ls.ReadFile_Array_Str_3A(texts3[name], rec);
    if (name == u"t000") return ls.ReadFile_Array_Str_3W(texts3[name]);
    if (name.starts_with(u"v")) return ls.ReadFile_Array_1A(variants[name], rec);
    if (name == u"t") return ls.ReadFile_Array_Str_1W(texts[name]);
    return ls.ReadFile_Array_Str_1A(texts[name], rec);
  }));
  // Variants come back as the texts they were written as.
  EXPECT_EQ(variants[u"v-empty"], VA{});
  EXPECT_EQ(variants[u"v0"], VA{u"0"});
  EXPECT_EQ(variants[u"v"], (VA{u"1", u"2,5", u"甲", u"", u"True", u""}));
  EXPECT_EQ(texts[u"t-empty"], TA{});
  EXPECT_EQ(texts[u"t0"], TA{u""});
  EXPECT_EQ(texts[u"t"], (TA{u"a", u"混凝土", u"x?y"}));
  EXPECT_EQ(variants2[u"v2"].U1, 0);
  EXPECT_EQ(variants2[u"v2"].Values, (VA{u"2,5", u"文字"}));
  EXPECT_EQ(texts2[u"t23"], t23);
  EXPECT_EQ(texts2[u"t2-empty"], Array2<Text>(-1, 3));
  EXPECT_EQ(texts3[u"t3"], t3);
  EXPECT_EQ(texts3[u"t000"], t000);
}

TEST(FormState, ComboBoxTextFollowsTheControl) {
  struct Case {
    int16_t style;
    uint32_t back_color;
    std::vector<Text> items;
    Text expected;  // after "typed" was read back
  };
  const Case cases[] = {
      {0, datafile::kWindowWhite, {}, u"typed"},
      {0, datafile::kSystemWindowColour, {}, u"typed"},
      {0, 0x8000000F, {u"a"}, u"old"},  // greyed: only an item
      {0, 0x8000000F, {u"typed"}, u"typed"},
      {2, datafile::kWindowWhite, {u"a"}, u"old"},
      {2, datafile::kWindowWhite, {u"a", u"typed"}, u"typed"},
  };
  for (const Case& c : cases) {
    Memory m;
    MemoryComboBox source;
    source.text = u"typed";
    write_file(m, [&](clsLoadSave& ls) { ls.WriteFile_ComboBox(0, source); });
    MemoryComboBox target;
    target.text = u"old";
    target.style = c.style;
    target.back_color = c.back_color;
    target.items = c.items;
    ControlArray<platform::ComboBox> boxes;
    boxes.set(0, &target);
    ASSERT_TRUE(read_file(
        m, [&](clsLoadSave& ls, UseBinRecord&) { return ls.ReadFile_ComboBox_BW(boxes); }));
    EXPECT_EQ(target.text, c.expected) << c.style << " " << c.back_color;
    EXPECT_EQ(target.items, c.items);
  }

  // iWriteTag 1 writes the editable entries only.
  Combos combos;
  combo(combos, 0, u"a");
  combo(combos, 1, u"b", {u"b"}, platform::ComboBox::kDropdownList);
  combo(combos, 2, u"c").back_color = 0x8000000F;
  combo(combos, 3, u"d");
  Memory m;
  write_file(m, [&](clsLoadSave& ls) { ls.WriteFile_ComboBox_BsA(combos.array, false, u"c", 1); });
  Records values;
  for (const auto& r : records_of(m)) {
    if (r.first == 2005) values.push_back(r);
  }
  EXPECT_EQ(values, (Records{{2005, u"a"}, {2005, u"d"}}));
}

TEST(FormState, SingleValues) {
  struct Case {
    Text member;
    bool text_ok, int_ok, bool_ok;
    int16_t int_value;
    bool bool_value;
  };
  const Case cases[] = {
      {u"2,5", true, true, true, 2, true},  // half to even
      {u"3,5", true, true, true, 4, true},
      {u"-32768", true, true, true, -32768, true},
      {u"0", true, true, true, 0, false},
      {u" false ", true, false, true, 0, false},
      {u"True", true, false, true, 0, true},
      {u"32767,5", true, false, true, 0, true},  // rounds beyond the integer
      {u"中文", true, false, false, 0, false},
      {u"", true, false, false, 0, false},
  };
  for (const Case& c : cases) {
    Memory m;
    Records records;
    for (int n = 0; n < 4; ++n) records.insert(records.end(), {{100, u"k"}, {2000, c.member}});
    put_records(m, records);
    clsLoadSave ls(m.platform);
    ASSERT_TRUE(ls.OpenFileA(u"f", u"InPut"));
    UseBinRecord rec;
    Text text = u"unchanged";
    int16_t i = 77;
    bool b = !c.bool_value;
    const std::string what = to_utf8(c.member);
    ASSERT_TRUE(ls.ReadFileOneA(rec));
    EXPECT_TRUE(ls.ReadFile_TextA(text, rec));
    EXPECT_EQ(text, c.member);
    ASSERT_TRUE(ls.ReadFileOneW());
    EXPECT_EQ(ls.ReadFile_IntegerW(i), c.int_ok) << what;
    EXPECT_EQ(i, c.int_ok ? c.int_value : 77) << what;
    ASSERT_TRUE(ls.ReadFileOneW());
    EXPECT_EQ(ls.ReadFile_BooleanW(b), c.bool_ok) << what;
    EXPECT_EQ(b, c.bool_ok ? c.bool_value : !c.bool_value) << what;
    ASSERT_TRUE(ls.ReadFileOneW());
    text.clear();
    EXPECT_TRUE(ls.ReadFile_TextW(text));
    EXPECT_EQ(text, c.member);
    EXPECT_EQ(ls.last_error(), c.int_ok && c.bool_ok ? 0 : 2001) << what;
  }
}

// A target of every reader, holding values that no damaged or refused read
// may change (each differs from what the records would set and from a
// cleared target).
struct Targets {
  Checks checks;
  Options options;
  Combos combos;
  MemoryListBox list;
  ControlArray<platform::ListBox> lists;
  MemoryListView view;
  ControlArray<platform::ListView> views;
  MemoryToolbar bar;
  std::vector<rColForce> forces{rColForce{false, 9, 2, 3, 4, 5, 6, 7}};
  std::vector<Variant> variants{Variant(1)};
  std::vector<Text> texts{u"keep"};
  Array2<Variant> variants2{0, 0};
  Array2<Text> texts2{0, 0};
  Array3<Text> texts3{0, 0, 0};
  Variant variant{u"keep"};
  Text text = u"keep";
  int16_t integer = 7;
  bool boolean = true;
  UseBinRecord rec{100, u"name"};

  Targets() {
    checks.add(0).value = 2;
    options.add(0).value = true;
    combo(combos, 0, u"keep", {u"i"});
    list.items = {u"a", u"b"};
    list.Selected(0, true);
    lists.set(0, &list);
    view.ListItemsAdd(u"keep");
    views.set(0, &view);
    bar.values = {0, 1};
    texts2(0, 0) = u"keep";
    texts3(0, 0, 0) = u"keep";
  }
  auto values() const {
    return std::make_tuple(checks.owned[0]->value, options.owned[0]->value, combos.owned[0]->text,
                           combos.owned[0]->items, list.selected, view.ListItemsCount(),
                           view.ItemText(1), bar.values, forces, variants, texts, variants2, texts2,
                           texts3, variant, text, integer, boolean, rec.ID, rec.Member);
  }
  bool unchanged() const { return values() == Targets().values(); }
};

// A damaged group: the reader stops with 2001 and its target is as it was.
TEST(FormState, DamagedGroupsLeaveTheTarget) {
  using Reader = std::function<bool(clsLoadSave&, Targets&, UseBinRecord&)>;
  const Reader check = [](clsLoadSave& ls, Targets& t, UseBinRecord& rec) {
    return ls.ReadFile_Check_BA(t.checks.array, rec);
  };
  const Reader array1 = [](clsLoadSave& ls, Targets& t, UseBinRecord& rec) {
    return ls.ReadFile_Array_Str_1A(t.texts, rec);
  };
  const Reader array2 = [](clsLoadSave& ls, Targets& t, UseBinRecord& rec) {
    return ls.ReadFile_Array_Str_2A(t.texts2, rec);
  };
  const Reader array3 = [](clsLoadSave& ls, Targets& t, UseBinRecord& rec) {
    return ls.ReadFile_Array_Str_3A(t.texts3, rec);
  };
  const Reader combo_box = [](clsLoadSave& ls, Targets& t, UseBinRecord& rec) {
    return ls.ReadFile_ComboBox_BA(t.combos.array, rec);
  };
  const Reader list_view = [](clsLoadSave& ls, Targets& t, UseBinRecord& rec) {
    return ls.ReadFile_ListViewA(t.views, rec);
  };
  const Reader toolbar = [](clsLoadSave& ls, Targets& t, UseBinRecord& rec) {
    return ls.ReadFile_Toolbar_EditA(t.bar, rec);
  };
  const Reader col_force = [](clsLoadSave& ls, Targets& t, UseBinRecord& rec) {
    return ls.ReadFile_rColForceA(t.forces, rec);
  };
  const Records force_head = {{2000, u"0"}, {4001, u"True"}, {4002, u"1"}};
  auto with = [](Records records, Records more) {
    records.insert(records.end(), more.begin(), more.end());
    return records;
  };
  struct Case {
    const char* what;
    Reader read;
    Records after_name;
  };
  const Case cases[] = {
      {"file ends after the index", check, {{2000, u"0"}}},
      {"value out of range", check, {{2000, u"0"}, {2005, u"3"}}},
      {"value not a number", check, {{2000, u"0"}, {2005, u"x"}}},
      {"index not a number", check, {{2000, u"甲"}, {2005, u"1"}}},
      {"value record misnumbered", check, {{2000, u"0"}, {2006, u"1"}}},
      {"bound below -1", array1, {{1001, u"-2"}}},
      {"bound beyond the file", array1, {{1001, u"2000000000"}, {10000, u"a"}}},
      {"bound beyond int32", array1, {{1001, u"1E+12"}}},
      {"element missing", array1, {{1001, u"1"}, {10000, u"a"}, {0, u"EOF"}}},
      {"2-D product beyond the file", array2, {{1001, u"100000"}, {1002, u"100000"}}},
      {"3-D dimension beyond the limit",
       array3,
       {{1001, u"16777216"}, {1002, u"-1"}, {1003, u"0"}}},
      {"combo list beyond the file",
       combo_box,
       {{2000, u"0"}, {2001, u"2000000000"}, {10000, u"a"}}},
      {"combo without its text", combo_box, {{2000, u"0"}, {2006, u"a"}}},
      {"list view items beyond the file",
       list_view,
       {{2000, u"0"}, {2001, u"100000"}, {2002, u"100000"}, {10000, u"a"}}},
      {"list view sub-item misnumbered",
       list_view,
       {{2000, u"0"}, {2001, u"2"}, {2002, u"1"}, {10000, u"a"}, {10000, u"b"}}},
      {"toolbar without its mark", toolbar, {{2000, u"1"}, {200005, u"1"}}},
      {"toolbar value out of range", toolbar, {{2000, u"1"}, {20000, u"1"}, {200005, u"2"}}},
      {"force field not a number", col_force, with(force_head, {{4003, u"1"}, {4004, u"N/A"}})},
      {"force cut short", col_force, with(force_head, {{4003, u"1"}})},
  };
  for (const Case& c : cases) {
    Memory m;
    Records records{{453, u"name"}};
    records.insert(records.end(), c.after_name.begin(), c.after_name.end());
    put_records(m, records);
    clsLoadSave ls(m.platform);
    ASSERT_TRUE(ls.OpenFileA(u"f", u"InPut"));
    UseBinRecord rec;
    ASSERT_TRUE(ls.ReadFileOneA(rec));
    Targets t;
    EXPECT_FALSE(c.read(ls, t, rec)) << c.what;
    EXPECT_TRUE(t.unchanged()) << c.what;
    EXPECT_EQ(ls.last_error(), 2001) << c.what;
  }
}

// A form that forgets to check OpenFileA: on a file number that is not open,
// or open for the other direction, every reader fails with 2001 and leaves
// its target as it was, every writer fails with 2003, and nothing throws.
TEST(FormState, RecordOperationsWithoutAnOpenFileAreErrorNumbers) {
  // Each returns true when every call in it failed.
  using Op = std::function<bool(clsLoadSave&, Targets&)>;
  const std::pair<const char*, Op> readers[] = {
      {"ReadFileOneA", [](clsLoadSave& ls, Targets& t) { return !ls.ReadFileOneA(t.rec); }},
      {"ReadFileOneW",
       [](clsLoadSave& ls, Targets&) {
         ls.ID(7);
         ls.Member(u"keep");
         return !ls.ReadFileOneW() && ls.ID() == 7 && ls.Member() == u"keep";
       }},
      {"tReadFileOneStringA",
       [](clsLoadSave& ls, Targets&) { return ls.tReadFileOneStringA().empty(); }},
      {"ReadFile_VariableA",
       [](clsLoadSave& ls, Targets& t) { return !ls.ReadFile_VariableA(t.variant, t.rec); }},
      {"ReadFile_Check_BA/BW",
       [](clsLoadSave& ls, Targets& t) {
         return !ls.ReadFile_Check_BA(t.checks.array, t.rec) &&
                !ls.ReadFile_Check_BW(t.checks.array);
       }},
      {"ReadFile_Option_BA",
       [](clsLoadSave& ls, Targets& t) { return !ls.ReadFile_Option_BA(t.options.array, t.rec); }},
      {"ReadFile_ComboBox_BA/BW",
       [](clsLoadSave& ls, Targets& t) {
         return !ls.ReadFile_ComboBox_BA(t.combos.array, t.rec) &&
                !ls.ReadFile_ComboBox_BW(t.combos.array);
       }},
      {"ReadFile_ListBox_BA/BW",
       [](clsLoadSave& ls, Targets& t) {
         return !ls.ReadFile_ListBox_BA(t.lists, t.rec) && !ls.ReadFile_ListBox_BW(t.lists);
       }},
      {"ReadFile_Toolbar_EditA",
       [](clsLoadSave& ls, Targets& t) { return !ls.ReadFile_Toolbar_EditA(t.bar, t.rec); }},
      {"ReadFile_ListViewA",
       [](clsLoadSave& ls, Targets& t) { return !ls.ReadFile_ListViewA(t.views, t.rec); }},
      {"ReadFile_rColForceA",
       [](clsLoadSave& ls, Targets& t) { return !ls.ReadFile_rColForceA(t.forces, t.rec); }},
      {"ReadFile_Array_1A / Array_2A",
       [](clsLoadSave& ls, Targets& t) {
         return !ls.ReadFile_Array_1A(t.variants, t.rec) &&
                !ls.ReadFile_Array_2A(t.variants2, t.rec);
       }},
      {"ReadFile_Array_Str_1A/1W/2A/3A/3W",
       [](clsLoadSave& ls, Targets& t) {
         return !ls.ReadFile_Array_Str_1A(t.texts, t.rec) && !ls.ReadFile_Array_Str_1W(t.texts) &&
                !ls.ReadFile_Array_Str_2A(t.texts2, t.rec) &&
                !ls.ReadFile_Array_Str_3A(t.texts3, t.rec) && !ls.ReadFile_Array_Str_3W(t.texts3);
       }},
      {"ReadFile_TextA/W, IntegerW, BooleanW",
       [](clsLoadSave& ls, Targets& t) {
         return !ls.ReadFile_TextA(t.text, t.rec) && !ls.ReadFile_TextW(t.text) &&
                !ls.ReadFile_IntegerW(t.integer) && !ls.ReadFile_BooleanW(t.boolean);
       }},
  };
  const std::pair<const char*, Op> writers[] = {
      {"WriteFileOneA", [](clsLoadSave& ls, Targets&) { return !ls.WriteFileOneA(1, u"x"); }},
      {"WriteFileOneStringA",
       [](clsLoadSave& ls, Targets&) { return !ls.WriteFileOneStringA(u"x"); }},
      {"WriteFile_RevisionA", [](clsLoadSave& ls, Targets&) { return !ls.WriteFile_RevisionA(); }},
      {"WriteFile_TempStrA",
       [](clsLoadSave& ls, Targets&) { return !ls.WriteFile_TempStrA(u"x"); }},
      {"WriteFile_100A/100_StrA",
       [](clsLoadSave& ls, Targets&) {
         return !ls.WriteFile_100A(u"k", Variant(1)) && !ls.WriteFile_100_StrA(u"k", Variant(1));
       }},
      {"control writers",
       [](clsLoadSave& ls, Targets& t) {
         return !ls.WriteFile_Check_BsA(t.checks.array) &&
                !ls.WriteFile_Option_BsA(t.options.array) &&
                !ls.WriteFile_ComboBox_BsA(t.combos.array) &&
                !ls.WriteFile_ComboBox(0, *t.combos.owned[0]) &&
                !ls.WriteFile_ListBox_BsA(t.lists) && !ls.WriteFile_Toolbar_EditA(1, t.bar) &&
                !ls.WriteFile_ListViewA(0, t.view) && !ls.WriteFile_rColForceA(0, t.forces[0]);
       }},
      {"array writers",
       [](clsLoadSave& ls, Targets& t) {
         return !ls.WriteFile_Array_1A(t.variants, u"a") &&
                !ls.WriteFile_Array_Str_1A(t.texts, u"a") &&
                !ls.WriteFile_Array_2A(t.variants2, u"a") &&
                !ls.WriteFile_Array_2A(t.texts2, u"a") &&
                !ls.WriteFile_Array_Str_3A(t.texts3, u"a");
       }},
      {"WriteFileEofAndCloseFileA",
       [](clsLoadSave& ls, Targets&) { return !ls.WriteFileEofAndCloseFileA(); }},
  };

  enum class State { NeverOpened, FailedOpen, Closed, OutOfRange, OpenForOutput, OpenForInput };
  const auto prepare = [](clsLoadSave& ls, State state) {
    switch (state) {
      case State::NeverOpened:
        break;
      case State::FailedOpen:
        ASSERT_FALSE(ls.OpenFileA(u"missing", u"InPut"));
        break;
      case State::Closed:
        ASSERT_TRUE(ls.OpenFileA(u"f", u"InPut"));
        ASSERT_TRUE(ls.CloseFileA());
        break;
      case State::OutOfRange:
        ls.FileOpenID(256);
        break;
      case State::OpenForOutput:
        ASSERT_TRUE(ls.OpenFileA(u"out", u"OutPut"));
        break;
      case State::OpenForInput:
        ASSERT_TRUE(ls.OpenFileA(u"f", u"InPut"));
        break;
    }
  };
  const auto expect_failures = [&](const auto& ops, State state, int32_t error) {
    for (const auto& [what, op] : ops) {
      SCOPED_TRACE(testing::Message() << what << " in state " << static_cast<int>(state));
      Memory m;
      put_records(m, {{0, u"r"}, {100, u"name"}, {10000, u"a"}, {0, u"EOF"}});
      clsLoadSave ls(m.platform);
      prepare(ls, state);
      Targets t;
      bool failed = false;
      EXPECT_NO_THROW(failed = op(ls, t));
      EXPECT_TRUE(failed);
      EXPECT_TRUE(t.unchanged());
      EXPECT_EQ(ls.last_error(), error);
    }
  };
  for (const State state :
       {State::NeverOpened, State::FailedOpen, State::Closed, State::OutOfRange}) {
    expect_failures(readers, state, 2001);
    expect_failures(writers, state, 2003);
  }
  expect_failures(readers, State::OpenForOutput, 2001);
  expect_failures(writers, State::OpenForInput, 2003);
}

// A form with two combo boxes (0 a drop-down list, 2 editable), a check box
// and two option buttons.
struct Form {
  Combos combos;
  Checks checks;
  Options options;
  bool tu_li = false;

  Form(Text c0, Text c2, int16_t check, bool option) {
    combo(combos, 0, std::move(c0), {u"C30", u"C35"}, platform::ComboBox::kDropdownList);
    combo(combos, 2, std::move(c2));
    checks.add(1).value = check;
    options.add(0).value = option;
    options.add(1).value = !option;
    tu_li = option;
  }
  bool run(clsLoadSave& ls, TextView mode, TextView pro1 = u"Zelkora_Beam_V1", TextView pro2 = u"",
           bool restrain = false) {
    return ls.bLoadOrSaveData(mode, u"f", pro1, pro2, restrain, combos.array, &checks.array,
                              &options.array, &tu_li);
  }
  std::tuple<Text, Text, int16_t, bool, bool, bool> state() const {
    return {combos.owned[0]->text,   combos.owned[1]->text,   checks.owned[0]->value,
            options.owned[0]->value, options.owned[1]->value, tu_li};
  }
};

TEST(FormState, LoadOrSaveData) {
  Memory m;
  Form saved(u"C35", u"东立面", 2, true);
  {
    clsLoadSave ls(m.platform);
    ASSERT_TRUE(saved.run(ls, u"Save"));
  }
  // clang-format off
  EXPECT_EQ(records_of(m), (Records{
      {0, u""}, {198, u"Zelkora_Beam_V1"}, {100, u"bfDisplayTuLi"}, {2000, u"True"},
      {204, u"CboB"}, {2000, u"0"}, {2005, u"C35"},
      {204, u"CboB"}, {2000, u"2"}, {2005, u"东立面"},
      {202, u"chkB"}, {2000, u"1"}, {2005, u"2"},
      {207, u"optB"}, {2000, u"0"}, {2005, u"True"},
      {207, u"optB"}, {2000, u"1"}, {2005, u"False"},
      {0, u"EOF"}}));
  // clang-format on

  clsLoadSave ls(m.platform);
  Form loaded(u"C30", u"", 0, false);
  ASSERT_TRUE(loaded.run(ls, u"Load"));
  EXPECT_EQ(loaded.state(), saved.state());
  Form older(u"C30", u"", 0, false);  // a file of the previous version
  EXPECT_TRUE(older.run(ls, u"InPut", u"Zelkora_Beam_V2", u"Zelkora_Beam_V1"));
  EXPECT_EQ(older.state(), saved.state());

  // Restrained: the combo boxes keep their texts until Let_ComboBox_TextA.
  Form restrained(u"C30", u"", 0, false);
  restrained.combos.owned[0]->items.clear();
  ASSERT_TRUE(restrained.run(ls, u"Load", u"Zelkora_Beam_V1", u"", true));
  EXPECT_EQ(restrained.combos.owned[0]->text, u"C30");
  std::vector<Text> held;
  ls.Get_ValText(held);
  EXPECT_EQ(held, (std::vector<Text>{u"C35", u"", u"东立面"}));
  ls.Let_ComboBox_TextA();  // its list is still empty: not an item yet
  EXPECT_EQ(restrained.combos.owned[0]->text, u"C30");
  restrained.combos.owned[0]->items = {u"C35"};
  ls.Let_ComboBox_TextA();
  EXPECT_EQ(restrained.state(), saved.state());

  // Another program's file, a damaged file, an unknown mode: nothing changes.
  const std::string whole = *m.files->bytes(u"f");
  struct Failure {
    const char* what;
    std::string bytes;
    TextView pro1;
    TextView mode;
    int32_t error;
  };
  const Failure failures[] = {
      {"another program", whole, u"Zelkora_Slab_V1", u"Load", 2002},
      {"no EOF", whole.substr(0, whole.size() - 9), u"Zelkora_Beam_V1", u"Load", 2002},
      {"cut in a group", whole.substr(0, whole.size() - 15), u"Zelkora_Beam_V1", u"Default", 2002},
      {"no revision", whole.substr(6), u"", u"Load", 2002},
      {"unknown mode", whole, u"Zelkora_Beam_V1", u"Open", 0},
  };
  for (const Failure& f : failures) {
    m.files->put(u"f", f.bytes);
    clsLoadSave reader(m.platform);
    Form form(u"C30", u"", 0, false);
    const auto before = form.state();
    EXPECT_FALSE(form.run(reader, f.mode, f.pro1)) << f.what;
    EXPECT_EQ(reader.last_error(), f.error) << f.what;
    EXPECT_EQ(form.state(), before) << f.what;
  }

  // A save that fails keeps the previous file.
  m.files->put(u"f", whole);
  m.files->fail_write_at(4);
  clsLoadSave writer(m.platform);
  EXPECT_FALSE(saved.run(writer, u"SaveAsNewVersion"));
  EXPECT_EQ(writer.last_error(), 2003);
  EXPECT_EQ(*m.files->bytes(u"f"), whole);
}

}  // namespace
}  // namespace zelkora
