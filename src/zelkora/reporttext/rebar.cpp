// Rebar notation: the readers and the diameter series, and the clsCharacter
// operations built on them.
#include "zelkora/reporttext/rebar.h"
#include "zelkora/frame/character_internals.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault.h"
#include "zelkora/typeset/picture_format.h"

namespace zelkora::reporttext {

namespace {

constexpr std::size_t kNotFound = TextView::npos;

bool is_digit(char16_t c) { return c >= u'0' && c <= u'9'; }

using frame::leading_value;

template <class Int>
std::optional<Int> rounded(double value) {
  if constexpr (sizeof(Int) == 2) {
    return frame::rounded_int16(value);
  } else {
    return frame::rounded_int32(value);
  }
}

// A text converted to single precision in the locale's notation, or nothing
// where it is not a number or beyond single precision.
std::optional<float> single_of(TextView text, const frame::NumberSymbols& symbols) {
  const std::optional<double> value = frame::parse_number(text, symbols);
  if (!value || std::fabs(*value) > std::numeric_limits<float>::max()) return std::nullopt;
  return static_cast<float>(*value);
}

// True for a non-empty text found inside `whole`: "-." is a piece of "-.+".
bool is_piece_of(TextView text, TextView whole) {
  return !text.empty() && contains_text(whole, text);
}

}  // namespace

// ---- Bar text ------------------------------------------------------------------

BarSeparators bar_separators(TextView f1, TextView f2, TextView f3, TextView f4, TextView dash) {
  return {Text(f1),   Text(f2),        Text(f3),        Text(u" "),     Text(dash),
          Text(u"D"), Text(u"\uE001"), Text(u"\uE000"), Text(u"%%131"), Text(u"%%129"),
          Text(u"Φ"), Text(u"φ"),      Text(u"Φ"),      Text(f4)};
}

BarReading read_bar_text(TextView text, std::span<const Text> separators,
                         const frame::NumberSymbols& symbols) {
  BarReading r;
  const TextView t = trim(text);

  std::size_t p = kNotFound;
  std::size_t length = 0;
  for (const Text& separator : separators) {
    if (separator.empty()) continue;
    p = find_text(t, separator);
    if (p != kNotFound) {
      length = separator.size();
      break;
    }
  }

  if (p == kNotFound) {
    if (!frame::is_numeric(t, symbols)) {
      r.error = error_id::kBarNotNumber;
      return r;
    }
    const std::optional<double> d = leading_value(t);
    if (!d) {
      r.error = error_id::kBarNotNumber;
      return r;
    }
    r.diameter = *d;
    r.count = 1;
    if (*d <= 0) r.error = error_id::kBarNotPositive;
    return r;
  }

  const TextView diameter_text = t.substr(p + length);
  if (!frame::is_numeric(diameter_text, symbols)) {
    r.error = error_id::kBarDiameterNotNumber;
    return r;
  }
  const std::optional<double> d = leading_value(diameter_text);
  if (!d) {
    r.error = error_id::kBarDiameterNotNumber;
    return r;
  }
  r.diameter = *d;
  if (*d <= 0) {
    r.error = error_id::kBarDiameterNotPositive;
    return r;
  }
  if (p == 0) {
    r.count = 1;
    return r;
  }
  const std::optional<double> count = frame::parse_number(t.substr(0, p), symbols);
  const std::optional<int32_t> n = count ? rounded<int32_t>(*count) : std::nullopt;
  if (!n) {
    r.error = error_id::kBarCountNotNumber;
    return r;
  }
  r.count = *n;
  if (*n < 1) r.error = error_id::kBarCountBelowOne;
  return r;
}

// ---- Slab bar text -----------------------------------------------------------

SlabBarReading read_slab_bar_text(TextView text, const frame::NumberSymbols& symbols) {
  SlabBarReading r;
  const TextView t = trim(text);
  std::size_t p = kNotFound;
  for (const TextView separator : {TextView(u"@"), TextView(u"-"), TextView(u" ")}) {
    p = find_text(t, separator);
    if (p != kNotFound) break;
  }
  if (p == kNotFound || p == 0) return r;

  const std::optional<float> spacing = single_of(t.substr(p + 1), symbols);
  if (!spacing) return r;
  r.spacing = *spacing;
  if (!(*spacing > 0)) return r;
  const std::optional<float> diameter = single_of(t.substr(0, p), symbols);
  if (!diameter) return r;
  r.diameter = *diameter;
  if (*diameter > 0) r.error = 0;
  return r;
}

// ---- A number with one operator ----------------------------------------------

ArithmeticReading evaluate_arithmetic(TextView text, const frame::NumberSymbols& symbols) {
  const TextView t = trim(text);
  const char16_t incomplete[] = {u'-', symbols.decimal, u'+'};
  if (t.empty() || is_piece_of(t, TextView(incomplete, 3))) return {Text(u"0"), std::nullopt};

  const ArithmeticReading invalid{Text(t), kNoOperator};
  static constexpr char16_t kOperators[] = {u'*', u'/', u'+', u'-', u'^'};
  std::size_t p = kNotFound;
  int16_t code = kNoOperator;
  for (int16_t i = 0; i < 5 && p == kNotFound; ++i) {
    p = t.find(kOperators[i]);
    code = static_cast<int16_t>(i + 1);
  }
  if (p == kNotFound) return invalid;  // a plain number also keeps code -1

  if (symbols.grouping != 0 && symbols.grouping != symbols.decimal &&
      t.find(symbols.grouping) != kNotFound)
    return invalid;
  const TextView right_text = t.substr(p + 1);
  if (!frame::is_numeric(right_text, symbols)) return invalid;
  const std::optional<double> right = leading_value(right_text);
  if (!right || (code == 2 && *right == 0)) return invalid;

  double result = 0;
  if (p > 0) {
    const TextView left_text = t.substr(0, p);
    if (!frame::is_numeric(left_text, symbols)) return invalid;
    const std::optional<double> left = leading_value(left_text);
    if (!left) return invalid;
    switch (code) {
      case 1:
        result = *left * *right;
        break;
      case 2:
        result = *left / *right;
        break;
      case 3:
        result = *left + *right;
        break;
      case 4:
        result = *left - *right;
        break;
      default:
        result = std::pow(*left, *right);
        break;
    }
  } else {
    switch (code) {
      case 1:
      case 3:
        result = *right;
        break;
      case 2:
        result = 1 / *right;
        break;
      case 4:
        result = -*right;
        break;
      default:
        return invalid;
    }
  }
  // Beyond double, 0 to a negative power, a root of a negative number: the
  // step faults and the text stays as typed.
  if (!std::isfinite(result)) return invalid;
  return {frame::general_number_text(result, symbols), code};
}

Text zero_for_incomplete_number(TextView text) {
  const TextView t = trim(text);
  if (t.empty() || is_piece_of(t, u"-.+")) return u"0";
  return Text(t);
}

// ---- Steel grades ------------------------------------------------------------

namespace {

struct GradeGroup {
  double fy;
  std::array<int32_t, 7> ids;  // 0 ends a shorter group
};

// In the order they are tried. 32505 "HRB 400" holds a blank and so never
// matches a text whose blanks are gone; it stays in its group all the same.
constexpr GradeGroup kGradeGroups[] = {
    {360, {32505, 32509, 32510, 32511, 32502, 32517, 32518}},
    {270, {32514}},
    {435, {32512, 32513, 32519, 32520}},
    {300, {32508, 32515, 32501}},
    {210, {32507, 32500}},
};

}  // namespace

double steel_grade_strength(TextView text, const frame::Catalogue& catalogue) {
  Text name(text);
  std::erase(name, u' ');
  for (const GradeGroup& group : kGradeGroups) {
    for (const int32_t id : group.ids) {
      if (id == 0) break;
      const std::optional<TextView> grade = catalogue.find(id);
      if (grade && *grade == name) return group.fy;
    }
  }
  return 0;
}

int grade_symbol_number(double fy) {
  if (fy <= 270.000001) return 1;
  if (fy <= 300.000001) return 2;
  if (fy <= 360.000001) return 3;
  return 4;
}

// ---- Diameters -----------------------------------------------------------------

double round_up_to_standard_diameter(double d) {
  if (std::isnan(d)) return d;
  for (const double standard : kStandardDiameters) {
    if (standard >= d) return standard;
  }
  if (std::isinf(d)) return d;
  // Rounded as the "#0" picture writes it (half away from zero on the
  // 15-digit form) and read back.
  const Text whole = typeset::format_picture(d, u"#0", frame::NumberSymbols{});
  return leading_value(whole).value_or(d);
}

double diameter_from_area(double as, int32_t bars) {
  // π/4 as the suite's programs write it.
  constexpr double kQuarterPi = 0.785398163397448;
  double d = 0;
  const double quotient = std::fabs(as) / (static_cast<double>(bars) * kQuarterPi);
  if (std::isfinite(quotient) && quotient >= 0) d = std::sqrt(quotient);
  return round_up_to_standard_diameter(d);
}

double diameter_step(double d, bool up) {
  if (up) {
    if (d == 22 || d == 25) return d + 3;
    if (d == 32 || d == 40) return d + 4;
    return d >= 6 ? d + 2 : d + 1;
  }
  if (d == 25 || d == 28) return d - 3;
  if (d == 36 || d == 44) return d - 4;
  return d > 6 ? d - 2 : d - 1;
}

namespace {

// Whole numbers below this size add and subtract exactly.
constexpr double kExactWhole = 4503599627370496.0;  // 2^52

bool exact_whole(double d) { return std::fabs(d) < kExactWhole && d == std::trunc(d); }

}  // namespace

double step_diameter(double d, int64_t steps) {
  const bool up = steps > 0;
  // Counted unsigned so that the most negative count has a magnitude too.
  uint64_t left = up ? static_cast<uint64_t>(steps) : 0 - static_cast<uint64_t>(steps);
  if (!std::isfinite(d)) return d;  // every step leaves it as it is
  while (left > 0) {
    // Past the irregular diameters every step is alike: up beyond 40 by 2,
    // down from 6 by 1, down above 44 by 2 until 44 or less. Whole numbers
    // take such a run in one go, exactly as the single steps add up.
    if (exact_whole(d) && static_cast<double>(left) < kExactWhole / 4) {
      const double n = static_cast<double>(left);
      if (up && d > 40 && d + 2 * n < kExactWhole) return d + 2 * n;
      if (!up && d <= 6 && d - n > -kExactWhole) return d - n;
      if (!up && d > 44) {
        const double run = std::min(n, std::ceil((d - 44) / 2));
        d -= 2 * run;
        left -= static_cast<uint64_t>(run);
        continue;
      }
    }
    const double next = diameter_step(d, up);
    if (next == d) return d;  // too large to move: every further step alike
    d = next;
    --left;
  }
  return d;
}

// ---- Bar list number ---------------------------------------------------------

int16_t bar_list_number(Text& label, TextView first, TextView automatic_word) {
  const TextView chosen = trim(first);
  if (!chosen.empty() && !equal_text(chosen, automatic_word, Compare::Text)) {
    const std::optional<double> value = leading_value(chosen);
    return value ? rounded<int16_t>(*value).value_or(1) : int16_t{1};
  }

  Text work;
  if (contains_text(label, u"%%")) {
    std::vector<Text> pieces = split_text(label, u"%%");
    work = pieces.size() > 1 ? std::move(pieces[1]) : Text();
    label = pieces.empty() ? Text() : std::move(pieces[0]);
  } else {
    work = label;
  }

  // The last run of digits, read from the end.
  std::size_t end = work.size();
  while (end > 0 && !is_digit(work[end - 1])) --end;
  std::size_t begin = end;
  while (begin > 0 && is_digit(work[begin - 1])) --begin;
  if (begin == end) return 1;
  const std::optional<double> value = leading_value(TextView(work).substr(begin, end - begin));
  const std::optional<int16_t> n = value ? rounded<int16_t>(*value) : std::nullopt;
  return n && *n >= 1 ? *n : int16_t{1};
}

}  // namespace zelkora::reporttext

// ---- clsCharacter ----------------------------------------------------------------

namespace zelkora {

using frame::Variant;

namespace {

TextView catalogue_or_empty(const clsCharacter& chr, int32_t id) {
  return clsCharacter::Internals::catalogue_text(chr, id).value_or(TextView());
}

}  // namespace

void clsCharacter::GjTextTurnW(TextView tText, int32_t& lN, double& dD, int32_t& lErr) const {
  const reporttext::BarSeparators separators = reporttext::bar_separators(
      tPubF1(), tPubF2(), tPubF3(), tPubF4(), catalogue_or_empty(*this, text_id::kBarDash));
  const reporttext::BarReading r = reporttext::read_bar_text(tText, separators, number_symbols());
  if (r.diameter) dD = *r.diameter;
  if (r.count) lN = *r.count;
  lErr = r.error;
}

void clsCharacter::GjTextTurnW(TextView tText, int32_t& lN, double& dD) const {
  int32_t lErr = 0;
  GjTextTurnW(tText, lN, dD, lErr);
}

void clsCharacter::GjTextTurn(TextView tText, int16_t& N, float& D, int32_t& lErr) const {
  int32_t lN = N;
  double dD = D;
  int32_t error = lErr;
  GjTextTurnW(tText, lN, dD, error);
  // Both narrowed before either is stored: an overflow leaves all as passed.
  const int16_t n = frame::to_int16(lN);
  if (std::isfinite(dD) && std::fabs(dD) > std::numeric_limits<float>::max()) {
    throw Fault(FaultKind::Overflow, "overflow: a bar diameter does not fit single precision");
  }
  N = n;
  D = static_cast<float>(dD);
  lErr = error;
}

void clsCharacter::GjTextTurn(TextView tText, int16_t& N, float& D) const {
  int32_t lErr = 0;
  GjTextTurn(tText, N, D, lErr);
}

void clsCharacter::BanGjTextTurn(TextView tText, float& sD, float& sA, int32_t& lErr) const {
  const reporttext::SlabBarReading r = reporttext::read_slab_bar_text(tText, number_symbols());
  if (r.spacing) sA = *r.spacing;
  if (r.diameter) sD = *r.diameter;
  lErr = r.error;
}

void clsCharacter::BanGjTextTurn(TextView tText, float& sD, float& sA) const {
  int32_t lErr = 0;
  BanGjTextTurn(tText, sD, sA, lErr);
}

Text clsCharacter::vYsfTextTurnW(TextView tText, int16_t& iSign) const {
  reporttext::ArithmeticReading r = reporttext::evaluate_arithmetic(tText, number_symbols());
  if (r.sign) iSign = *r.sign;
  return std::move(r.text);
}

Text clsCharacter::vYsfTextTurnW(TextView tText) const {
  int16_t iSign = 0;
  return vYsfTextTurnW(tText, iSign);
}

Variant clsCharacter::vYsfTextTurn(const Variant& vText, int16_t& iSign) const {
  return vYsfTextTurnW(vText.to_text(number_symbols()), iSign);
}

Variant clsCharacter::vYsfTextTurn(const Variant& vText) const {
  int16_t iSign = 0;
  return vYsfTextTurn(vText, iSign);
}

Text clsCharacter::tOpinionZeroText(TextView tText) const {
  return reporttext::zero_for_incomplete_number(tText);
}

Text clsCharacter::tGjFhByFy(const Variant& Fy) const {
  const frame::NumberSymbols symbols = number_symbols();
  const Text t = vYsfTextTurnW(tOpinionZeroText(Fy.to_text(symbols)));
  double fy = 0;
  if (frame::is_numeric(t, symbols)) {
    fy = frame::leading_value(t).value_or(0);  // beyond double: as an unknown grade
  } else {
    bSignEnter_SteelFy(t, fy);
  }
  switch (reporttext::grade_symbol_number(fy)) {
    case 1:
      return tPubF1();
    case 2:
      return tPubF2();
    case 3:
      return tPubF3();
    default:
      return tPubF4();
  }
}

bool clsCharacter::bSignEnter_SteelFy(TextView tText, double& dFy) const {
  dFy = reporttext::steel_grade_strength(tText, *catalogue_);
  return dFy != 0;
}

bool clsCharacter::bSignEnter_SteelFy(TextView tText) const {
  double dFy = 0;
  return bSignEnter_SteelFy(tText, dFy);
}

double clsCharacter::dGjDiameterFromAsW(double dAs, int32_t lGs) const {
  return reporttext::diameter_from_area(dAs, lGs);
}

Variant clsCharacter::dGjDiameterFromAs(const Variant& dAs, int32_t lGs) const {
  return dGjDiameterFromAsW(dAs.to_double(number_symbols()), lGs);
}

double clsCharacter::dGjDiameterQzW(double dD) const {
  return reporttext::round_up_to_standard_diameter(dD);
}

Variant clsCharacter::dGjDiameterQz(const Variant& D) const {
  return dGjDiameterQzW(D.to_double(number_symbols()));
}

double clsCharacter::dChangeSteelD(double dD, int32_t lChange) const {
  return reporttext::step_diameter(dD, lChange);
}

double clsCharacter::dChangeGanJinD(const Variant& D, int16_t lChange) const {
  const frame::NumberSymbols symbols = number_symbols();
  if (lChange == 0) return D.to_double(symbols);
  const bool up = lChange > 0;
  const int32_t steps = up ? lChange : -static_cast<int32_t>(lChange);
  // Each step goes through text and back by value, as the forms keep it: with
  // the decimal symbol "," a fraction is lost on the way.
  Text current = D.to_text(symbols);
  double d = 0;
  for (int32_t i = 0; i < steps; ++i) {
    d = reporttext::diameter_step(frame::leading_number(current), up);
    current = frame::general_number_text(d, symbols);
  }
  return d;
}

int16_t clsCharacter::iGJListW(Text& tGjBh, TextView tFirst) const {
  return reporttext::bar_list_number(tGjBh, tFirst, catalogue_or_empty(*this, text_id::kAutomatic));
}

int16_t clsCharacter::iGJList(const Variant& tGjBh) const {
  Text label = tGjBh.to_text(number_symbols());
  return iGJListW(label, catalogue_or_empty(*this, text_id::kAutomatic));
}

bool clsCharacter::bAutoText(TextView tText) const {
  return bTextEqResString(tText, text_id::kAutomatic, Compare::Text);
}

bool clsCharacter::bYesText(TextView tText) const {
  return bTextEqResString(tText, text_id::kYes, Compare::Text);
}

bool clsCharacter::bMinorFlexuralMember(TextView tText) const {
  return bTextEqResString(tText, text_id::kMinorMember, Compare::Text);
}

bool clsCharacter::bDisplaySpGj(TextView tText) const {
  return !bTextEqResString(tText, text_id::kHideProvided, Compare::Text);
}

void clsCharacter::TxtReplaceFy2() {
  fy_lines_.resize(4);
  const bool second_line = !fy_lines_[2].empty();
  const TextView mark = catalogue_or_empty(*this, text_id::kSecondGradeMark);
  if (!mark.empty() && contains_text(accumulator_, mark)) {
    // The lines stay whole, only wrapped.
    accumulator_ = replace_all(accumulator_, fy_lines_[0], SplitSP26(fy_lines_[0]));
    if (second_line) {
      accumulator_ = replace_all(accumulator_, fy_lines_[2], SplitSP26(fy_lines_[2]));
    }
    return;
  }
  // Each line loses the part kept in its companion entry, then is wrapped.
  fy_lines_[1] = replace_all(fy_lines_[0], fy_lines_[1], u"");
  accumulator_ = replace_all(accumulator_, fy_lines_[0], SplitSP26(fy_lines_[1]));
  if (second_line) {
    fy_lines_[3] = replace_all(fy_lines_[2], fy_lines_[3], u"");
    accumulator_ = replace_all(accumulator_, fy_lines_[2], SplitSP26(fy_lines_[3]));
  }
}

}  // namespace zelkora
