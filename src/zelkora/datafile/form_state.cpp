// clsLoadSave: the writers and readers of the form state, and the load/save
// driver of a form. The record patterns are in form_state.h.
#include "zelkora/datafile/form_state.h"
#include "zelkora/datafile/form_file.h"
#include "zelkora/frame/numbers.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>

#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/record_file.h"
#include "zelkora/datafile/record_numbers.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/error_numbers.h"

namespace zelkora {

namespace {

using platform::CheckBox;
using platform::ComboBox;
using platform::ControlArray;
using platform::ListBox;
using platform::ListView;
using platform::OptionButton;

constexpr int32_t kInt32Min = std::numeric_limits<int32_t>::min();
constexpr int32_t kInt32Max = std::numeric_limits<int32_t>::max();

// The names under which bLoadOrSaveData keeps a form's controls.
constexpr TextView kComboBoxes = u"CboB";
constexpr TextView kCheckBoxes = u"chkB";
constexpr TextView kOptionButtons = u"optB";

// "True" or "False" in any case, with blanks around it.
std::optional<bool> boolean_word(TextView text) {
  const TextView word = trim(text);
  if (equal_text(word, u"True", Compare::Text)) return true;
  if (equal_text(word, u"False", Compare::Text)) return false;
  return std::nullopt;
}

// Calls `f(index, element)` for every element of the array, in index order.
template <class T, class F>
void for_each_element(const ControlArray<T>& controls, F f) {
  for (int64_t i = controls.LBound(); i <= controls.UBound(); ++i) {
    if (T* control = controls.Item(static_cast<int32_t>(i))) f(static_cast<int32_t>(i), *control);
  }
}

bool has_item(const ComboBox& combo, TextView text) {
  for (int32_t i = 0; i < combo.ListCount(); ++i) {
    if (combo.List(i) == text) return true;
  }
  return false;
}

// The combo-box rule: an editable entry takes any text, any other combo box
// only one of its items.
void apply_combo_text(ComboBox& combo, TextView text) {
  if (datafile::is_editable_entry(combo) || has_item(combo, text)) combo.Text(text);
}

}  // namespace

namespace datafile {

bool is_editable_entry(const platform::ComboBox& combo) {
  return combo.Style() == platform::ComboBox::kDropdownCombo &&
         (combo.BackColor() == kWindowWhite || combo.BackColor() == kSystemWindowColour);
}

// Writes records for the object, and reads the records that follow a name
// record into the caller's record (`uDR`) or, when it is null, into the
// object's buffer. Every failure to read the pattern is 2001.
class FormRecords {
 public:
  FormRecords(clsLoadSave& ls, UseBinRecord* uDR)
      : ls_(ls), id_(uDR ? uDR->ID : ls.id_), member_(uDR ? uDR->Member : ls.member_) {}

  // ---- Writing ---------------------------------------------------------------

  bool write(int32_t id, TextView member) { return ls_.write_record(id, member); }
  bool write_number(int32_t id, double value) {
    return write(id, frame::general_number_text(value, ls_.symbols_));
  }
  bool write_bool(int32_t id, bool value) { return write(id, value ? u"True" : u"False"); }
  bool write_variant(int32_t id, const frame::Variant& value) {
    return write(id, value.to_text(ls_.symbols_));
  }

  // ---- Reading ---------------------------------------------------------------

  // The next record, whatever its number.
  bool read() { return ls_.read_into(id_, member_); }
  int32_t id() const { return id_; }
  const Text& member() const { return member_; }
  bool fail() {
    ls_.error_ = error_id::kDataFileDamaged;
    return false;
  }

  // The next record, which must have the number `id`.
  bool expect(int32_t id) { return read() && (id_ == id || fail()); }
  bool text(int32_t id, Text& out) {
    if (!expect(id)) return false;
    out = member_;
    return true;
  }
  // The member as a number of the user's notation, rounded half to even,
  // within lo..hi.
  bool to_integer(int32_t lo, int32_t hi, int32_t& out) {
    const std::optional<double> value = frame::parse_number(member_, ls_.symbols_);
    const std::optional<int32_t> rounded = value ? frame::rounded_int32(*value) : std::nullopt;
    if (!rounded || *rounded < lo || *rounded > hi) return fail();
    out = *rounded;
    return true;
  }
  bool integer(int32_t id, int32_t lo, int32_t hi, int32_t& out) {
    return expect(id) && to_integer(lo, hi, out);
  }
  bool integer16(int32_t id, int32_t lo, int32_t hi, int16_t& out) {
    int32_t value = 0;
    if (!integer(id, lo, hi, value)) return false;
    out = static_cast<int16_t>(value);
    return true;
  }
  bool number(int32_t id, double& out) {
    if (!expect(id)) return false;
    const std::optional<double> value = frame::parse_number(member_, ls_.symbols_);
    if (!value) return fail();
    out = *value;
    return true;
  }
  bool boolean(int32_t id, bool& out) {
    if (!expect(id)) return false;
    if (const std::optional<bool> word = boolean_word(member_)) {
      out = *word;
      return true;
    }
    const std::optional<double> value = frame::parse_number(member_, ls_.symbols_);
    if (!value) return fail();
    out = *value != 0;
    return true;
  }
  // A count whose `per` records each must still be in the file.
  bool count(int32_t id, int64_t per, int32_t& out) {
    return integer(id, 0, kInt32Max, out) && (out * per <= records_left() || fail());
  }
  // The bound records 1001, 1002, ... into `upper`; the elements they
  // declare must fit in the records left. Their number into `elements`.
  bool bounds(std::span<int32_t> upper, std::size_t& elements) {
    int64_t total = 1;
    for (std::size_t d = 0; d < upper.size(); ++d) {
      if (!integer(record_id::kBound1 + static_cast<int32_t>(d), -1, kInt32Max - 1, upper[d])) {
        return false;
      }
      if (int64_t{upper[d]} + 1 > kMaxDimension) return fail();
    }
    const bool empty = std::any_of(upper.begin(), upper.end(), [](int32_t u) { return u < 0; });
    const int64_t left = records_left();
    for (const int32_t u : upper) {
      if (empty) break;
      if (total > left / (int64_t{u} + 1)) return fail();
      total *= int64_t{u} + 1;
    }
    elements = empty ? 0 : static_cast<std::size_t>(total);
    return true;
  }
  template <class T>
  bool elements(std::size_t n, std::vector<T>& out) {
    out.reserve(n);
    Text element;
    for (std::size_t i = 0; i < n; ++i) {
      if (!text(record_id::kElement, element)) return false;
      out.emplace_back(element);
    }
    return true;
  }
  // The most records the rest of the file can hold.
  int64_t records_left() const { return ls_.records_left(); }

 private:
  clsLoadSave& ls_;
  int32_t& id_;
  Text& member_;
};

}  // namespace datafile

namespace {

using datafile::FormRecords;

// ---- The groups of records as read, before they reach a control ---------------

struct CheckGroup {
  int32_t index = 0;
  int16_t value = 0;
};

struct OptionGroup {
  int32_t index = 0;
  bool value = false;
};

struct ComboGroup {
  int32_t index = 0;
  bool has_list = false;
  std::vector<Text> list;
  Text text;
};

struct ListBoxGroup {
  int32_t index = 0;
  std::vector<bool> selected;
};

struct ListViewGroup {
  int32_t index = 0;
  int32_t columns = 0;
  std::vector<Text> texts;  // per item: its text, then sub-items 1..columns-1
};

bool read_check(FormRecords& r, CheckGroup& g) {
  return r.integer(record_id::kIndex, kInt32Min, kInt32Max, g.index) &&
         r.integer16(record_id::kValue, 0, 2, g.value);
}

bool read_option(FormRecords& r, OptionGroup& g) {
  return r.integer(record_id::kIndex, kInt32Min, kInt32Max, g.index) &&
         r.boolean(record_id::kValue, g.value);
}

bool read_combo(FormRecords& r, ComboGroup& g) {
  if (!r.integer(record_id::kIndex, kInt32Min, kInt32Max, g.index) || !r.read()) return false;
  if (r.id() == record_id::kCount) {
    int32_t n = 0;
    if (!r.to_integer(0, kInt32Max, n)) return false;
    if (n >= r.records_left()) return r.fail();  // the items and the text
    g.has_list = true;
    if (!r.elements(static_cast<std::size_t>(n), g.list) || !r.read()) return false;
  }
  if (r.id() != record_id::kValue) return r.fail();
  g.text = r.member();
  return true;
}

bool read_list_box(FormRecords& r, ListBoxGroup& g) {
  int32_t n = 0;
  if (!r.integer(record_id::kIndex, kInt32Min, kInt32Max, g.index) ||
      !r.count(record_id::kCount, 1, n)) {
    return false;
  }
  g.selected.reserve(static_cast<std::size_t>(n));
  for (int32_t i = 0; i < n; ++i) {
    bool selected = false;
    if (!r.boolean(record_id::kValue, selected)) return false;
    g.selected.push_back(selected);
  }
  return true;
}

bool read_list_view(FormRecords& r, ListViewGroup& g) {
  int32_t items = 0;
  if (!r.integer(record_id::kIndex, kInt32Min, kInt32Max, g.index) ||
      !r.integer(record_id::kCount, 0, kInt32Max, g.columns) ||
      !r.count(record_id::kItemCount, std::max(g.columns, 1), items)) {
    return false;
  }
  g.texts.reserve(static_cast<std::size_t>(items) *
                  static_cast<std::size_t>(std::max(g.columns, 1)));
  Text text;
  for (int32_t item = 0; item < items; ++item) {
    if (!r.text(record_id::kElement, text)) return false;
    g.texts.push_back(text);
    for (int32_t sub = 1; sub < g.columns; ++sub) {
      if (!r.text(record_id::kSubItem, text)) return false;
      g.texts.push_back(text);
    }
  }
  return true;
}

void apply_combo(ComboBox& combo, const ComboGroup& g) {
  if (g.has_list) {
    combo.Clear();
    for (const Text& item : g.list) combo.AddItem(item);
  }
  apply_combo_text(combo, g.text);
}

void apply_list_view(ListView& view, const ListViewGroup& g) {
  view.ListItemsClear();
  const std::size_t per = static_cast<std::size_t>(std::max(g.columns, 1));
  for (std::size_t first = 0; first < g.texts.size(); first += per) {
    const int32_t item = view.ListItemsAdd(g.texts[first]);
    for (int32_t sub = 1; sub < g.columns; ++sub) {
      view.SubItem(item, sub, g.texts[first + static_cast<std::size_t>(sub)]);
    }
  }
}

// Reads a group and hands it to the control of its index, if there is one.
template <class Group, class T, class Apply>
bool read_into_control(FormRecords& r, bool (*read)(FormRecords&, Group&),
                       ControlArray<T>& controls, Apply apply) {
  Group g;
  if (!read(r, g)) return false;
  if (T* control = controls.Item(g.index)) apply(*control, g);
  return true;
}

bool read_checks(FormRecords& r, ControlArray<CheckBox>& boxes) {
  return read_into_control(r, read_check, boxes,
                           [](CheckBox& box, const CheckGroup& g) { box.Value(g.value); });
}

bool read_combos(FormRecords& r, ControlArray<ComboBox>& boxes) {
  return read_into_control(r, read_combo, boxes, apply_combo);
}

bool read_list_boxes(FormRecords& r, ControlArray<ListBox>& boxes) {
  return read_into_control(r, read_list_box, boxes, [](ListBox& box, const ListBoxGroup& g) {
    for (std::size_t i = 0; i < g.selected.size(); ++i) {
      box.Selected(static_cast<int32_t>(i), g.selected[i]);
    }
  });
}

template <class T>
bool read_array_1(FormRecords& r, std::vector<T>& out) {
  std::array<int32_t, 1> upper{};
  std::size_t n = 0;
  std::vector<T> values;
  if (!r.bounds(upper, n) || !r.elements(n, values)) return false;
  out = std::move(values);
  return true;
}

template <class T>
bool read_array_2(FormRecords& r, Array2<T>& out) {
  std::array<int32_t, 2> upper{};
  std::size_t n = 0;
  Array2<T> array;
  if (!r.bounds(upper, n) || !r.elements(n, array.Values)) return false;
  array.U1 = upper[0];
  array.U2 = upper[1];
  out = std::move(array);
  return true;
}

bool read_array_3(FormRecords& r, Array3<Text>& out) {
  std::array<int32_t, 3> upper{};
  std::size_t n = 0;
  Array3<Text> array;
  if (!r.bounds(upper, n) || !r.elements(n, array.Values)) return false;
  array.U1 = upper[0];
  array.U2 = upper[1];
  array.U3 = upper[2];
  out = std::move(array);
  return true;
}

// The elements an array of these bounds has; Fault when `values` holds fewer.
template <class T>
std::size_t checked_count(std::initializer_list<int32_t> upper, const std::vector<T>& values) {
  std::size_t n = 1;
  for (const int32_t u : upper) {
    if (u < -1) throw Fault(FaultKind::IndexOutOfRange, "array bound below -1");
    n *= static_cast<std::size_t>(u) + 1;
  }
  if (values.size() < n) {
    throw Fault(FaultKind::IndexOutOfRange, "the array holds fewer elements than its bounds");
  }
  return n;
}

template <class T>
bool write_array(FormRecords& w, TextView tName, std::initializer_list<int32_t> upper,
                 const std::vector<T>& values) {
  const std::size_t n = checked_count(upper, values);
  bool ok = w.write(record_id::kName, tName);
  int32_t bound_id = record_id::kBound1;
  for (const int32_t u : upper) ok &= w.write_number(bound_id++, u);
  for (std::size_t i = 0; i < n; ++i) {
    if constexpr (std::is_same_v<T, frame::Variant>) {
      ok &= w.write_variant(record_id::kElement, values[i]);
    } else {
      ok &= w.write(record_id::kElement, values[i]);
    }
  }
  return ok;
}

}  // namespace

// ---- Writers -------------------------------------------------------------------

bool clsLoadSave::WriteFile_Check_BsA(const ControlArray<CheckBox>& ChkB, TextView tName) {
  FormRecords w(*this, nullptr);
  bool ok = true;
  for_each_element(ChkB, [&](int32_t index, const CheckBox& box) {
    ok &= w.write(record_id::kCheckBox, tName);
    ok &= w.write_number(record_id::kIndex, index);
    ok &= w.write_number(record_id::kValue, box.Value());
  });
  return ok;
}

bool clsLoadSave::WriteFile_Option_BsA(const ControlArray<OptionButton>& OptB, TextView tName) {
  FormRecords w(*this, nullptr);
  bool ok = true;
  for_each_element(OptB, [&](int32_t index, const OptionButton& button) {
    ok &= w.write(record_id::kOptionButton, tName);
    ok &= w.write_number(record_id::kIndex, index);
    ok &= w.write_bool(record_id::kValue, button.Value());
  });
  return ok;
}

bool clsLoadSave::WriteFile_ComboBox(int32_t Index, const ComboBox& Cbo, bool bAutoWriteList,
                                     TextView tName) {
  FormRecords w(*this, nullptr);
  bool ok = w.write(record_id::kComboBox, tName);
  ok &= w.write_number(record_id::kIndex, Index);
  if (bAutoWriteList) {
    const int32_t n = Cbo.ListCount();
    ok &= w.write_number(record_id::kCount, n);
    for (int32_t i = 0; i < n; ++i) ok &= w.write(record_id::kElement, Cbo.List(i));
  }
  return w.write(record_id::kValue, Cbo.Text()) && ok;
}

bool clsLoadSave::WriteFile_ComboBox_BsA(const ControlArray<ComboBox>& CboB, bool bAutoWriteList,
                                         TextView tName, int16_t iWriteTag) {
  bool ok = true;
  for_each_element(CboB, [&](int32_t index, const ComboBox& box) {
    if (iWriteTag == 1 && !datafile::is_editable_entry(box)) return;
    ok &= WriteFile_ComboBox(index, box, bAutoWriteList, tName);
  });
  return ok;
}

bool clsLoadSave::WriteFile_ListBox_BsA(const ControlArray<ListBox>& lstB, TextView tName) {
  FormRecords w(*this, nullptr);
  bool ok = true;
  for_each_element(lstB, [&](int32_t index, const ListBox& box) {
    const int32_t n = box.ListCount();
    ok &= w.write(record_id::kListBox, tName);
    ok &= w.write_number(record_id::kIndex, index);
    ok &= w.write_number(record_id::kCount, n);
    for (int32_t i = 0; i < n; ++i) ok &= w.write_bool(record_id::kValue, box.Selected(i));
  });
  return ok;
}

bool clsLoadSave::WriteFile_Toolbar_EditA(int32_t Index, const platform::Toolbar& ToolbarEdit,
                                          TextView tName) {
  FormRecords w(*this, nullptr);
  bool ok = w.write(record_id::kToolbar, tName);
  ok &= w.write_number(record_id::kIndex, Index);
  ok &= w.write(record_id::kToolbarMark, u"1");
  return w.write_number(record_id::kToolbarValue, ToolbarEdit.ButtonValue(Index)) && ok;
}

bool clsLoadSave::WriteFile_ListViewA(int32_t Index, const ListView& lstView, TextView tName) {
  FormRecords w(*this, nullptr);
  const int32_t columns = std::max(lstView.ColumnHeadersCount(), 0);
  const int32_t items = lstView.ListItemsCount();
  bool ok = w.write(record_id::kListView, tName);
  ok &= w.write_number(record_id::kIndex, Index);
  ok &= w.write_number(record_id::kCount, columns);
  ok &= w.write_number(record_id::kItemCount, items);
  for (int32_t item = 1; item <= items; ++item) {
    ok &= w.write(record_id::kElement, lstView.ItemText(item));
    for (int32_t sub = 1; sub < columns; ++sub) {
      ok &= w.write(record_id::kSubItem, lstView.SubItem(item, sub));
    }
  }
  return ok;
}

bool clsLoadSave::WriteFile_rColForceA(int32_t Index, const rColForce& force, TextView tName) {
  FormRecords w(*this, nullptr);
  bool ok = w.write(record_id::kColForce, tName);
  ok &= w.write_number(record_id::kIndex, Index);
  ok &= w.write_bool(record_id::kColForceFirst, force.bCal);
  ok &= w.write_number(record_id::kColForceFirst + 1, force.iLoadCase);
  const double fields[] = {force.N, force.Mx, force.My, force.Vx, force.Vy, force.T};
  int32_t id = record_id::kColForceFirst + 2;
  for (const double field : fields) ok &= w.write_number(id++, field);
  return ok;
}

bool clsLoadSave::WriteFile_Array_1A(const std::vector<frame::Variant>& vArray, TextView tName) {
  FormRecords w(*this, nullptr);
  return write_array(w, tName, {static_cast<int32_t>(vArray.size()) - 1}, vArray);
}

bool clsLoadSave::WriteFile_Array_Str_1A(const std::vector<Text>& tArray, TextView tName) {
  FormRecords w(*this, nullptr);
  return write_array(w, tName, {static_cast<int32_t>(tArray.size()) - 1}, tArray);
}

bool clsLoadSave::WriteFile_Array_2A(const Array2<frame::Variant>& vArray, TextView tName) {
  FormRecords w(*this, nullptr);
  return write_array(w, tName, {vArray.U1, vArray.U2}, vArray.Values);
}

bool clsLoadSave::WriteFile_Array_2A(const Array2<Text>& tArray, TextView tName) {
  FormRecords w(*this, nullptr);
  return write_array(w, tName, {tArray.U1, tArray.U2}, tArray.Values);
}

bool clsLoadSave::WriteFile_Array_Str_3A(const Array3<Text>& tArray, TextView tName) {
  FormRecords w(*this, nullptr);
  return write_array(w, tName, {tArray.U1, tArray.U2, tArray.U3}, tArray.Values);
}

// ---- Readers -------------------------------------------------------------------

bool clsLoadSave::ReadFile_Check_BA(ControlArray<CheckBox>& ChkB, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return read_checks(r, ChkB);
}

bool clsLoadSave::ReadFile_Check_BW(ControlArray<CheckBox>& ChkB) {
  FormRecords r(*this, nullptr);
  return read_checks(r, ChkB);
}

bool clsLoadSave::ReadFile_Option_BA(ControlArray<OptionButton>& OptB, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return read_into_control(r, read_option, OptB, [](OptionButton& button, const OptionGroup& g) {
    button.Value(g.value);
  });
}

bool clsLoadSave::ReadFile_ComboBox_BA(ControlArray<ComboBox>& CboB, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return read_combos(r, CboB);
}

bool clsLoadSave::ReadFile_ComboBox_BW(ControlArray<ComboBox>& CboB) {
  FormRecords r(*this, nullptr);
  return read_combos(r, CboB);
}

bool clsLoadSave::ReadFile_ListBox_BA(ControlArray<ListBox>& lstB, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return read_list_boxes(r, lstB);
}

bool clsLoadSave::ReadFile_ListBox_BW(ControlArray<ListBox>& lstB) {
  FormRecords r(*this, nullptr);
  return read_list_boxes(r, lstB);
}

bool clsLoadSave::ReadFile_Toolbar_EditA(platform::Toolbar& ToolbarEdit, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  int32_t index = 0;
  int16_t value = 0;
  if (!r.integer(record_id::kIndex, kInt32Min, kInt32Max, index) ||
      !r.expect(record_id::kToolbarMark) || !r.integer16(record_id::kToolbarValue, 0, 1, value)) {
    return false;
  }
  ToolbarEdit.ButtonValue(index, value);
  return true;
}

bool clsLoadSave::ReadFile_ListViewA(ControlArray<ListView>& lstView, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return read_into_control(r, read_list_view, lstView, apply_list_view);
}

bool clsLoadSave::ReadFile_rColForceA(std::vector<rColForce>& forces, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  int32_t index = 0;
  rColForce f;
  double* fields[] = {&f.N, &f.Mx, &f.My, &f.Vx, &f.Vy, &f.T};
  if (!r.integer(record_id::kIndex, kInt32Min, kInt32Max, index) ||
      !r.boolean(record_id::kColForceFirst, f.bCal) ||
      !r.integer16(record_id::kColForceFirst + 1, -32768, 32767, f.iLoadCase)) {
    return false;
  }
  int32_t id = record_id::kColForceFirst + 2;
  for (double* field : fields) {
    if (!r.number(id++, *field)) return false;
  }
  if (index >= 0 && static_cast<std::size_t>(index) < forces.size()) {
    forces[static_cast<std::size_t>(index)] = f;
  }
  return true;
}

bool clsLoadSave::ReadFile_Array_1A(std::vector<frame::Variant>& vArray, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return read_array_1(r, vArray);
}

bool clsLoadSave::ReadFile_Array_Str_1A(std::vector<Text>& tArray, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return read_array_1(r, tArray);
}

bool clsLoadSave::ReadFile_Array_Str_1W(std::vector<Text>& tArray) {
  FormRecords r(*this, nullptr);
  return read_array_1(r, tArray);
}

bool clsLoadSave::ReadFile_Array_2A(Array2<frame::Variant>& vArray, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return read_array_2(r, vArray);
}

bool clsLoadSave::ReadFile_Array_Str_2A(Array2<Text>& tArray, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return read_array_2(r, tArray);
}

bool clsLoadSave::ReadFile_Array_Str_3A(Array3<Text>& tArray, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return read_array_3(r, tArray);
}

bool clsLoadSave::ReadFile_Array_Str_3W(Array3<Text>& tArray) {
  FormRecords r(*this, nullptr);
  return read_array_3(r, tArray);
}

bool clsLoadSave::ReadFile_TextA(Text& tText, UseBinRecord& uDR) {
  FormRecords r(*this, &uDR);
  return r.text(record_id::kIndex, tText);
}

bool clsLoadSave::ReadFile_TextW(Text& tText) {
  FormRecords r(*this, nullptr);
  return r.text(record_id::kIndex, tText);
}

bool clsLoadSave::ReadFile_IntegerW(int16_t& iValue) {
  FormRecords r(*this, nullptr);
  return r.integer16(record_id::kIndex, -32768, 32767, iValue);
}

bool clsLoadSave::ReadFile_BooleanW(bool& bValue) {
  FormRecords r(*this, nullptr);
  return r.boolean(record_id::kIndex, bValue);
}

// ---- The held combo-box texts --------------------------------------------------

void clsLoadSave::Let_ComboBox_Text(ControlArray<ComboBox>& CboB) const {
  const int64_t last = std::min<int64_t>(CboB.UBound(), static_cast<int64_t>(val_text_.size()) - 1);
  for (int64_t i = 0; i <= last; ++i) {
    if (ComboBox* box = CboB.Item(static_cast<int32_t>(i))) {
      apply_combo_text(*box, val_text_[static_cast<std::size_t>(i)]);
    }
  }
}

void clsLoadSave::Let_ComboBox_TextA() const {
  if (held_combos_) Let_ComboBox_Text(*held_combos_);
}

// ---- Loading and saving a form -------------------------------------------------

namespace {

// A form's groups as read from its file, applied only once the whole file is.
struct FormGroups {
  std::optional<bool> flag;
  std::vector<ComboGroup> combos;
  std::vector<CheckGroup> checks;
  std::vector<OptionGroup> options;
};

// Applies what was read to the form. With `restrain` the combo boxes stay as
// they are and the texts they would take are returned instead.
std::optional<std::vector<Text>> apply_form(const FormGroups& read, bool restrain,
                                            ControlArray<ComboBox>& CboB,
                                            ControlArray<CheckBox>* ChkB,
                                            ControlArray<OptionButton>* OptB, bool* bDisplayTuLi) {
  if (read.flag) *bDisplayTuLi = *read.flag;
  for (const CheckGroup& g : read.checks) {
    if (CheckBox* box = ChkB->Item(g.index)) box->Value(g.value);
  }
  for (const OptionGroup& g : read.options) {
    if (OptionButton* button = OptB->Item(g.index)) button->Value(g.value);
  }
  if (!restrain) {
    for (const ComboGroup& g : read.combos) {
      if (ComboBox* box = CboB.Item(g.index)) apply_combo(*box, g);
    }
    return std::nullopt;
  }
  std::vector<Text> texts(static_cast<std::size_t>(CboB.UBound() + 1));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (const ComboBox* box = CboB.Item(static_cast<int32_t>(i))) texts[i] = box->Text();
  }
  for (const ComboGroup& g : read.combos) {
    if (g.index >= 0 && static_cast<std::size_t>(g.index) < texts.size()) {
      texts[static_cast<std::size_t>(g.index)] = g.text;
    }
  }
  return texts;
}

}  // namespace

bool clsLoadSave::bLoadOrSaveData(TextView tMode, TextView tDataSaveName, TextView tPro1,
                                  TextView tPro2, bool bRestrainComboBox,
                                  ControlArray<ComboBox>& CboB, ControlArray<CheckBox>* ChkB,
                                  ControlArray<OptionButton>* OptB, bool* bDisplayTuLi) {
  const int32_t mode = lLoadSaveMode(tMode);
  const Text flag_name = text(text_id::kDisplayTuLiName);
  if (mode == error_id::kDataFileNotSaved) {
    return datafile::FormFile::save(*this, tDataSaveName, tPro1, [&] {
      bool ok = true;
      if (bDisplayTuLi != nullptr) ok = WriteFile_100_StrA(flag_name, *bDisplayTuLi);
      ok = WriteFile_ComboBox_BsA(CboB, false, kComboBoxes) && ok;
      if (ChkB) ok = WriteFile_Check_BsA(*ChkB, kCheckBoxes) && ok;
      if (OptB) ok = WriteFile_Option_BsA(*OptB, kOptionButtons) && ok;
      return ok;
    });
  }
  if (mode != error_id::kDataFileNotOpened) return false;

  FormGroups read;
  FormRecords r(*this, nullptr);
  const bool loaded = datafile::FormFile::load(*this, tDataSaveName, tPro1, tPro2, [&] {
    const int32_t id = r.id();
    if (id == record_id::kName && bDisplayTuLi != nullptr && r.member() == flag_name) {
      bool value = false;
      if (!r.boolean(record_id::kIndex, value)) return false;
      read.flag = value;
      return true;
    }
    if (id == record_id::kComboBox && r.member() == kComboBoxes) {
      return read_combo(r, read.combos.emplace_back());
    }
    if (id == record_id::kCheckBox && ChkB && r.member() == kCheckBoxes) {
      return read_check(r, read.checks.emplace_back());
    }
    if (id == record_id::kOptionButton && OptB && r.member() == kOptionButtons) {
      return read_option(r, read.options.emplace_back());
    }
    return true;
  });
  if (!loaded) return false;
  if (auto held = apply_form(read, bRestrainComboBox, CboB, ChkB, OptB, bDisplayTuLi)) {
    val_text_ = std::move(*held);
    held_combos_ = &CboB;
  }
  return true;
}

}  // namespace zelkora
