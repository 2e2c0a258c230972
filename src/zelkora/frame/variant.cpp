// Variant: the value of no fixed type and its conversions.
#include "zelkora/frame/variant.h"

#include <charconv>
#include <iterator>
#include <ostream>
#include <string>

#include "zelkora/frame/numbers.h"
#include "zelkora/platform/fault.h"

namespace zelkora::frame {

namespace {

// Helper for std::visit with one lambda per alternative.
template <class... F>
struct Overloaded : F... {
  using F::operator()...;
};
template <class... F>
Overloaded(F...) -> Overloaded<F...>;

Text integer_text(int32_t value) {
  char digits[16];
  char* end = std::to_chars(digits, std::end(digits), value).ptr;
  return Text(digits, end);
}

std::optional<bool> boolean_word(TextView text) {
  const TextView word = trim(text);
  if (equal_text(word, u"True", Compare::Text)) return true;
  if (equal_text(word, u"False", Compare::Text)) return false;
  return std::nullopt;
}

}  // namespace

Text Variant::to_text(const NumberSymbols& symbols) const {
  return std::visit(Overloaded{
                        [](std::monostate) { return Text(); },
                        [](bool b) { return Text(b ? u"True" : u"False"); },
                        [](int32_t i) { return integer_text(i); },
                        [&](double d) { return general_number_text(d, symbols); },
                        [](const Text& t) { return t; },
                    },
                    value_);
}

double Variant::to_double(const NumberSymbols& symbols) const {
  return std::visit(Overloaded{
                        [](std::monostate) { return 0.0; },
                        [](bool b) { return b ? -1.0 : 0.0; },
                        [](int32_t i) { return static_cast<double>(i); },
                        [](double d) { return d; },
                        [&](const Text& t) { return text_to_double(t, symbols); },
                    },
                    value_);
}

std::optional<double> Variant::number(const NumberSymbols& symbols) const {
  if (const auto* text = std::get_if<Text>(&value_)) return parse_number(*text, symbols);
  return to_double(symbols);
}

int32_t Variant::to_int32(const NumberSymbols& symbols) const {
  if (const auto* integer = std::get_if<int32_t>(&value_)) return *integer;
  return frame::to_int32(to_double(symbols));
}

int16_t Variant::to_int16(const NumberSymbols& symbols) const {
  return frame::to_int16(to_double(symbols));
}

bool Variant::to_bool(const NumberSymbols& symbols) const {
  if (const auto* text = std::get_if<Text>(&value_)) {
    if (const auto word = boolean_word(*text)) return *word;
  }
  return to_double(symbols) != 0;
}

std::ostream& operator<<(std::ostream& out, const Variant& value) {
  const NumberSymbols plain{u'.', 0};
  switch (value.kind()) {
    case VariantKind::Empty:
      return out << "Empty";
    case VariantKind::Bool:
      return out << "Bool(" << to_utf8(value.to_text(plain)) << ")";
    case VariantKind::Integer:
      return out << "Integer(" << to_utf8(value.to_text(plain)) << ")";
    case VariantKind::Double:
      return out << "Double(" << to_utf8(value.to_text(plain)) << ")";
    case VariantKind::Text:
      return out << "Text(\"" << to_utf8(value.to_text(plain)) << "\")";
  }
  return out;
}

}  // namespace zelkora::frame
