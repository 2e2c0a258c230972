// The message compositions of clsErrChr, kept as data: for each error number
// the catalogue texts that make up its message, what fills their
// placeholders, and the title that replaces the box's default title.
//
// A composition fetches its texts in order, fills "%%1%", "%%2%" and "%%3%"
// of each from its fills (in that order), and joins the texts with the line
// separator of the moment (see clsErrChr). Two special forms exist:
//
//   kSplitEntry   one catalogue entry "title|line 1|line 2|line 3": the part
//                 before the first "|" becomes the title and every later part
//                 a line, each filled from the entry's fills;
//   kErrorNumber  the last text is followed by the error number in decimal
//                 ("错误号：39998").
//
// The general input errors and the file errors live in message_table.cpp; the
// design-rule and result-file errors of the calculation programs in
// message_table_programs.cpp. Both arrays are sorted by error number.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace zelkora::checking {

enum class FillKind : uint8_t {
  kNone,
  kCaption1,   // tCaption1
  kValue1,     // TextValue1
  kCaption2,   // tCaption2
  kValue2,     // TextValue2
  kLiteral,    // a fixed text of the composition ("1000000000")
  kCatalogue,  // a catalogue text (fetched with the language offset)
};

struct Fill {
  FillKind kind = FillKind::kNone;
  std::u16string_view literal{};
  int32_t id = 0;
};

inline constexpr Fill C1{FillKind::kCaption1};
inline constexpr Fill V1{FillKind::kValue1};
inline constexpr Fill C2{FillKind::kCaption2};
inline constexpr Fill V2{FillKind::kValue2};
constexpr Fill literal(std::u16string_view text) { return Fill{FillKind::kLiteral, text, 0}; }
constexpr Fill catalogue_text(int32_t id) { return Fill{FillKind::kCatalogue, {}, id}; }

// One catalogue text of a message and the fills of its placeholders; id 0
// marks an unused slot.
struct MessageText {
  int32_t id = 0;
  Fill fill1{}, fill2{}, fill3{};
};

enum class CompositionForm : uint8_t { kTexts, kSplitEntry, kErrorNumber };

struct Composition {
  int32_t error = 0;
  int32_t title = 0;  // catalogue id of the box title; 0 keeps the default
  std::array<MessageText, 4> texts{};
  CompositionForm form = CompositionForm::kTexts;
};

// The two tables, each sorted by error number.
std::span<const Composition> general_compositions();
std::span<const Composition> program_compositions();

// The composition of an error number, or null when no composition knows it.
const Composition* find_composition(int32_t error);

}  // namespace zelkora::checking
