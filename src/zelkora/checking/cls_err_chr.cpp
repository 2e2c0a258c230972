// clsErrChr: messages composed from their table, and the input checks.
#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/frame/numbers.h"

#include <cmath>

#include "zelkora/checking/compose_message.h"
#include "zelkora/checking/entry_descriptor.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/error_numbers.h"
#include "zelkora/frame/value_table.h"
#include "zelkora/typeset/markup.h"

namespace zelkora {

namespace {

constexpr TextView kShownSeparator = u"  \r\n\r\n";

}  // namespace

clsErrChr::clsErrChr() : clsErrChr(platform::Platform::current()) {}

clsErrChr::clsErrChr(std::shared_ptr<const platform::Platform> platform)
    : character_(std::make_unique<clsCharacter>(std::move(platform))),
      thousands_separator_(character_->ThousandsSeparator()) {}

clsErrChr::~clsErrChr() = default;

// ---- Messages -----------------------------------------------------------------

void clsErrChr::GenMsgError(int32_t lErr, TextView tCap1, const Variant& vT1, TextView tCap2,
                            const Variant& vT2, bool bMsgIgnore) {
  const frame::NumberSymbols symbols = character_->number_symbols();
  GenMsgErrorW(lErr, tCap1, vT1.to_text(symbols), tCap2, vT2.to_text(symbols), bMsgIgnore);
}

void clsErrChr::GenMsgError(int32_t lErr, TextView tCap1, const Variant& vT1, TextView tCap2,
                            const Variant& vT2, bool bMsgIgnore, Text& tErr) {
  GenMsgError(lErr, tCap1, vT1, tCap2, vT2, bMsgIgnore);
  tErr = error_text_;
}

void clsErrChr::GenMsgErrorW(int32_t lErr, TextView tCap1, TextView Text1, TextView tCap2,
                             TextView Text2, bool bMsgIgnore) {
  error_id_ = lErr;
  caption1_ = tCap1;
  value1_ = Text1;
  caption2_ = tCap2;
  value2_ = Text2;
  message_ignore_ = bMsgIgnore;
  GenMsgErrorX();
}

void clsErrChr::GenMsgErrorW(int32_t lErr, TextView tCap1, TextView Text1, TextView tCap2,
                             TextView Text2, bool bMsgIgnore, Text& tErr) {
  GenMsgErrorW(lErr, tCap1, Text1, tCap2, Text2, bMsgIgnore);
  tErr = error_text_;
}

void clsErrChr::GenMsgErrorX() {
  if (error_id_ == 0) {
    error_text_.clear();
    return;
  }
  const bool show = !message_ignore_;
  const TextView separator = show ? kShownSeparator : TextView();
  Text title = show ? text_of(text_id::kInputErrorTitle) : Text();
  if (const checking::Composition* c = checking::find_composition(error_id_)) {
    const checking::MessageFields fields{error_id_, caption1_, value1_, caption2_, value2_};
    error_text_ =
        checking::compose_message(*c, fields, *character_, separator, show ? &title : nullptr);
  }
  error_text_.append(separator);
  if (show) {
    clsCharacter::Internals::platform(*character_)
        .messages->warning(typeset::strip_fields_and_markup(error_text_), title);
  }
}

void clsErrChr::GenMsgErrorA(int32_t lErr) {
  error_id_ = lErr;
  GenMsgErrorX();
}

void clsErrChr::ErrorAddCon(int32_t lErr, TextView tErr, std::vector<int32_t>& lErrCon,
                            std::vector<Text>& tErrCon) const {
  // An array with upper bound 0 (one element, or none yet) grows to 0..1.
  const std::size_t size = std::max<std::size_t>(lErrCon.size(), 1) + 1;
  lErrCon.resize(size);
  tErrCon.resize(size);
  lErrCon.back() = lErr;
  tErrCon.back() = Text(tErr);
}

void clsErrChr::ColumnNumberCheck(int32_t lError, int32_t lCount) {
  error_id_ = lError;
  const int32_t required = lError == 4603002 ? 2 : lError == 4603003 ? 3 : 0;
  if (required != 0) {
    const bool too_many = lCount > required;
    caption1_ = text_of(too_many ? text_id::kMoreThan : text_id::kFewerThan);
    caption2_ = text_of(too_many ? text_id::kRemove : text_id::kAdd);
  }
  GenMsgErrorX();
}

// ---- Checks -------------------------------------------------------------------

Text clsErrChr::text_of(int32_t id) const {
  return clsCharacter::Internals::language_text_or_none(*character_, id);
}

Text clsErrChr::number_text(double value) {
  const double magnitude = std::fabs(value);
  if (magnitude >= 0.000001 && magnitude < 1) return character_->tFmt(value, u"6");
  return frame::general_number_text(value, character_->number_symbols());
}

int32_t clsErrChr::accept() {
  error_id_ = 0;
  error_text_.clear();
  return 0;
}

int32_t clsErrChr::refuse(int32_t error) {
  error_id_ = error;
  GenMsgErrorX();
  return error_id_;
}

int32_t clsErrChr::GenCheckCboEnterNumErr(TextView tCheck, TextView tCaption, const Variant& vText,
                                          bool bMsgIgnore) {
  return GenCheckCboEnterNumErrW(tCheck, tCaption, vText.to_text(character_->number_symbols()),
                                 bMsgIgnore);
}

int32_t clsErrChr::GenCheckCboEnterNumErrW(TextView tCheck, TextView tCaption, TextView Text,
                                           bool bMsgIgnore) {
  check_sign_ = tCheck;
  caption1_ = tCaption;
  value1_ = Text;
  message_ignore_ = bMsgIgnore;
  return GenCheckCboEnterNumErrX();
}

int32_t clsErrChr::GenCheckCboEnterNumErrX() { return check_numeric_entry(false); }

int32_t clsErrChr::GenCheckCboEnterNumErrXL() { return check_numeric_entry(true); }

int32_t clsErrChr::check_numeric_entry(bool accept_list_items) {
  using checking::EntryCheck;
  accept();
  const checking::EntryDescriptor d = checking::parse_entry_descriptor(check_sign_);
  switch (d.check) {
    case EntryCheck::kNone:
      return 0;
    case EntryCheck::kListItem:
      return CheckCboListErrX();
    case EntryCheck::kCoordinatePair:
      return check_coordinate_pair();
    case EntryCheck::kSlabBar:
      return check_slab_bar();
    case EntryCheck::kBar:
      return check_bar();
    case EntryCheck::kNumber:
      break;
  }
  const TextView entry = trim(value1_);
  if (entry.empty() && d.allow_empty) return 0;
  if (d.allow_auto && character_->bTextEqResString(entry, text_id::kAutomatic)) return 0;
  if (accept_list_items && in_catalogue_list(value1_, Compare::Binary)) return 0;
  const std::optional<double> value = frame::parse_number(entry, character_->number_symbols());
  if (!value) return refuse(error_id::kNotANumber);

  for (const checking::Condition& c : d.conditions) {
    if (c.interval) {
      if (checking::within(c, *value)) continue;
      Text range = u"(";
      range += text_of(c.lower_open ? text_id::kAboveWord : text_id::kNotBelowWord);
      range += number_text(c.lower);
      range += text_of(c.upper_open ? text_id::kAndBelowWord : text_id::kAndNotAboveWord);
      range += number_text(c.upper);
      range += u")";
      caption2_ = range;
      value2_ = std::move(range);
      return refuse(error_id::kOutOfRange);
    }
    if (checking::holds(c.relation, *value, c.limit)) continue;
    value2_ = number_text(c.limit);
    caption2_ = value2_;
    return refuse(checking::relation_error(c.relation));
  }

  const checking::NumberType& type = d.type;
  const bool above = *value > type.largest;
  if (above || *value < type.least) {
    const int32_t fixed = above ? type.above_error : type.below_error;
    if (fixed != 0) return refuse(fixed);
    value2_ = number_text(above ? type.largest : type.least);
    caption2_ = value2_;
    return refuse(above ? error_id::kAboveLimit : error_id::kFailsGreaterEqual);
  }
  return 0;
}

// "x, y": two numbers separated by a comma (with blanks as they come), or by
// blanks alone where "," is the user's decimal symbol.
int32_t clsErrChr::check_coordinate_pair() {
  const frame::NumberSymbols symbols = character_->number_symbols();
  const TextView entry = trim(value1_);
  std::vector<Text> parts;
  if (symbols.decimal != u',') {
    parts = split_text(entry, u",");
  } else {
    for (const Text& p : split_text(entry, u" ")) {
      if (!trim(p).empty()) parts.push_back(p);
    }
  }
  bool valid = parts.size() == 2;
  for (const Text& p : parts) valid = valid && frame::parse_number(trim(p), symbols).has_value();
  return valid ? 0 : refuse(error_id::kPartCount);
}

// A slab bar "10@200" and a bar text "4Φ20": the error number of the
// rebar reader's reading, 0 when it reads.
int32_t clsErrChr::check_slab_bar() {
  float diameter = 0, spacing = 0;
  int32_t error = 0;
  character_->BanGjTextTurn(value1_, diameter, spacing, error);
  return error == 0 ? 0 : refuse(error);
}

int32_t clsErrChr::check_bar() {
  int32_t count = 0, error = 0;
  double diameter = 0;
  character_->GjTextTurnW(value1_, count, diameter, error);
  return error == 0 ? 0 : refuse(error);
}

bool clsErrChr::in_catalogue_list(TextView text, Compare compare) const {
  const std::vector<Text> items = character_->ComboBoxList(list_res_);
  const auto found = [&](TextView wanted) {
    for (const Text& item : items) {
      if (equal_text(item, wanted, compare)) return true;
    }
    return false;
  };
  return found(trim(text)) || found(replace_all(text, u" ", u""));
}

int32_t clsErrChr::GenCheckListErr(TextView tCap1, TextView Text, const std::vector<Variant>& vList,
                                   int32_t lU, TextView tListName, Compare compare,
                                   bool bMsgIgnore) {
  const frame::NumberSymbols symbols = character_->number_symbols();
  std::vector<zelkora::Text> list;
  list.reserve(vList.size());
  for (const Variant& v : vList) list.push_back(v.to_text(symbols));
  return GenCheckListErrW(tCap1, Text, list, lU, tListName, compare, bMsgIgnore);
}

int32_t clsErrChr::GenCheckListErrW(TextView tCap1, TextView Text,
                                    const std::vector<zelkora::Text>& vList, int32_t lU,
                                    TextView tListName, Compare compare, bool bMsgIgnore) {
  message_ignore_ = bMsgIgnore;
  const int64_t last = std::min<int64_t>(lU, static_cast<int64_t>(vList.size()) - 1);
  for (int64_t i = 0; i <= last; ++i) {
    if (equal_text(Text, vList[static_cast<std::size_t>(i)], compare)) return 0;
  }
  caption1_ = tCap1;
  value1_ = Text;
  caption2_ = tListName;
  return refuse(error_id::kNotInList);
}

int32_t clsErrChr::CheckCboListErr(int32_t lList, TextView tCaption, const Variant& vText,
                                   Compare compare, bool bMsgIgnore) {
  return CheckCboListErrW(lList, tCaption, vText.to_text(character_->number_symbols()), compare,
                          bMsgIgnore);
}

int32_t clsErrChr::CheckCboListErrW(int32_t lList, TextView tCaption, TextView Text,
                                    Compare compare, bool bMsgIgnore) {
  list_res_ = lList;
  caption1_ = tCaption;
  value1_ = Text;
  message_ignore_ = bMsgIgnore;
  return CheckCboListErrX(compare);
}

int32_t clsErrChr::CheckCboListErrX(Compare compare) {
  error_id_ = in_catalogue_list(value1_, compare) ? 0 : error_id::kNotInList;
  caption2_ = text_of(text_id::kListItemsName);
  GenMsgErrorX();
  return error_id_;
}

int32_t clsErrChr::GenCheckConErr(TextView tCheck, TextView tCap1, const Variant& vValue1,
                                  TextView tCap2, const Variant& vValue2, bool bMsgIgnore) {
  const frame::NumberSymbols symbols = character_->number_symbols();
  const auto number = [&](const Variant& v) -> std::optional<double> {
    if (v.kind() != frame::VariantKind::Text) return v.to_double(symbols);
    return frame::parse_number(v.to_text(symbols), symbols);
  };
  const std::optional<double> first = number(vValue1);
  const std::optional<double> second = number(vValue2);
  if (!first || !second) {
    const bool first_bad = !first;
    GenMsgErrorW(error_id::kNotANumber, first_bad ? tCap1 : tCap2,
                 (first_bad ? vValue1 : vValue2).to_text(symbols), {}, {}, bMsgIgnore);
    return error_id_;
  }
  return GenCheckConErrW(tCheck, tCap1, *first, tCap2, *second, bMsgIgnore);
}

int32_t clsErrChr::GenCheckConErrW(TextView tCheck, TextView tCap1, double dVal1, TextView tCap2,
                                   double dVal2, bool bMsgIgnore) {
  check_sign_ = tCheck;
  caption1_ = tCap1;
  number1_ = dVal1;
  caption2_ = tCap2;
  number2_ = dVal2;
  message_ignore_ = bMsgIgnore;
  return GenCheckConErrX();
}

int32_t clsErrChr::GenCheckConErrX() {
  accept();
  checking::Relation relation{};
  const std::size_t length = checking::read_relation(check_sign_, relation, true);
  if (length == 0 || length != check_sign_.size()) return 0;
  if (checking::holds(relation, number1_, number2_)) return 0;
  value1_ = number_text(number1_);
  value2_ = number_text(number2_);
  return refuse(checking::relation_error(relation));
}

int32_t clsErrChr::CheckCriterionErr(int32_t lCheck, TextView tCaption, const Variant& vText,
                                     TextView tCap2, const Variant& vText2, bool bMsgIgnore) {
  const frame::NumberSymbols symbols = character_->number_symbols();
  caption1_ = tCaption;
  value1_ = vText.to_text(symbols);
  caption2_ = tCap2;
  value2_ = vText2.to_text(symbols);
  message_ignore_ = bMsgIgnore;
  return CheckCriterionErrX(lCheck);
}

int32_t clsErrChr::CheckCriterionErrX(int32_t lCheck) {
  using checking::Relation;
  accept();
  const frame::NumberSymbols symbols = character_->number_symbols();
  const TextView entry = trim(value1_);
  switch (lCheck) {
    case 202:
      return entry.size() == 1 ? 0 : refuse(202);
    case 205:
      return entry.empty() ? refuse(205) : 0;
    default:
      break;
  }
  // The numeric criteria: against zero, or against the second value.
  struct Criterion {
    int32_t error;
    Relation relation;
    bool against_second;
  };
  static constexpr Criterion kCriteria[] = {
      {102, Relation::kGreater, false},     {103, Relation::kGreaterEqual, false},
      {105, Relation::kNotEqual, false},    {450, Relation::kGreater, false},
      {120, Relation::kLessEqual, true},    {153, Relation::kLess, true},
      {154, Relation::kLessEqual, true},    {155, Relation::kGreater, true},
      {166, Relation::kGreaterEqual, true}, {168, Relation::kEqual, true},
      {169, Relation::kNotEqual, true},
  };
  const Criterion* criterion = nullptr;
  for (const Criterion& c : kCriteria) {
    if (c.error == lCheck) criterion = &c;
  }
  if (criterion == nullptr) return refuse(error_id::kInternal);
  const std::optional<double> value = frame::parse_number(entry, symbols);
  if (!value) return refuse(error_id::kNotANumber);
  double limit = 0;
  if (criterion->against_second) {
    const std::optional<double> second = frame::parse_number(trim(value2_), symbols);
    if (!second) {
      caption1_ = caption2_;
      value1_ = value2_;
      return refuse(error_id::kNotANumber);
    }
    limit = *second;
  }
  return checking::holds(criterion->relation, *value, limit) ? 0 : refuse(criterion->error);
}

int32_t clsErrChr::GenCheckHntQdDj(TextView tC, bool bMsgIgnore) {
  // The numeric value of the grade: its leading number with "." ("C30" is 0,
  // "30abc" 30), whatever the user's decimal symbol.
  const std::optional<double> grade = frame::leading_value(tC);
  const Text separator = text_of(text_id::kListSeparator);
  for (const Text& item : split_text(text_of(text_id::kConcreteGrades), separator)) {
    const std::optional<double> listed = frame::parse_number(item, frame::NumberSymbols{u'.', 0});
    if (grade && listed && *grade == *listed) return accept();
  }
  GenMsgErrorW(error_id::kNotAGrade, text_of(text_id::kConcreteGradeCaption), tC, {}, {},
               bMsgIgnore);
  return error_id_;
}

int32_t clsErrChr::GenCheckHntQdDj(TextView tC, bool bMsgIgnore, Text& tErr) {
  const int32_t error = GenCheckHntQdDj(tC, bMsgIgnore);
  tErr = error == 0 ? Text() : error_text_;
  return error;
}

}  // namespace zelkora

namespace zelkora {

int32_t clsErrChr::GenCheckInterpolateErrW(TextView tTable, TextView tCapX, double dX,
                                           double& dValue, bool bMsgIgnore) {
  return report_table_value(frame::interpolate(tTable, dX), tCapX, dX, {}, 0, dValue, bMsgIgnore);
}

int32_t clsErrChr::GenCheckInterpolate2ErrW(TextView tTable, TextView tCapX, double dX,
                                            TextView tCapY, double dY, double& dValue,
                                            bool bMsgIgnore) {
  return report_table_value(frame::interpolate(tTable, dX, dY), tCapX, dX, tCapY, dY, dValue,
                            bMsgIgnore);
}

int32_t clsErrChr::report_table_value(const frame::TableValue& found, TextView tCapX, double dX,
                                      TextView tCapY, double dY, double& dValue, bool bMsgIgnore) {
  if (found.fault == frame::TableFault::kNone) {
    dValue = found.value;
    return accept();
  }
  const bool column = found.fault == frame::TableFault::kOutsideColumns;
  // A damaged table has no range; its message names none.
  const Text range = found.fault == frame::TableFault::kDamaged
                         ? Text()
                         : number_text(found.low) + u"～" + number_text(found.high);
  GenMsgErrorW(frame::error_number(found.fault), column ? tCapY : tCapX,
               number_text(column ? dY : dX), {}, range, bMsgIgnore);
  return error_id_;
}

}  // namespace zelkora
