// Composing a message from its table entry and the fields of clsErrChr.
#include "zelkora/checking/compose_message.h"

#include <string>

#include "zelkora/frame/character_internals.h"

namespace zelkora::checking {

namespace {

Text fill_text(const Fill& fill, const MessageFields& fields, const clsCharacter& chr) {
  switch (fill.kind) {
    case FillKind::kNone:
      return {};
    case FillKind::kCaption1:
      return Text(fields.caption1);
    case FillKind::kValue1:
      return Text(fields.value1);
    case FillKind::kCaption2:
      return Text(fields.caption2);
    case FillKind::kValue2:
      return Text(fields.value2);
    case FillKind::kLiteral:
      return Text(fill.literal);
    case FillKind::kCatalogue:
      return clsCharacter::Internals::language_text_or_none(chr, fill.id);
  }
  return {};
}

// "%%1%" to "%%3%" of `text` replaced by the fills that are there.
Text filled(Text text, const MessageText& m, const MessageFields& fields, const clsCharacter& chr) {
  static constexpr TextView kPlaceholders[] = {u"%%1%", u"%%2%", u"%%3%"};
  const Fill* fills[] = {&m.fill1, &m.fill2, &m.fill3};
  for (int i = 0; i < 3; ++i) {
    if (fills[i]->kind == FillKind::kNone) break;
    text = replace_all(text, kPlaceholders[i], fill_text(*fills[i], fields, chr));
  }
  return text;
}

void join(Text& out, TextView separator, TextView piece, bool& first) {
  if (!first) out.append(separator);
  out.append(piece);
  first = false;
}

}  // namespace

Text compose_message(const Composition& c, const MessageFields& fields, const clsCharacter& chr,
                     TextView separator, Text* title) {
  Text message;
  bool first = true;
  if (c.form == CompositionForm::kSplitEntry) {
    const MessageText& entry = c.texts[0];
    const std::vector<Text> parts =
        split_text(clsCharacter::Internals::language_text_or_none(chr, entry.id), u"|");
    for (std::size_t i = 0; i < parts.size(); ++i) {
      Text part = filled(parts[i], entry, fields, chr);
      if (i == 0) {
        if (title) *title = std::move(part);
      } else {
        join(message, separator, part, first);
      }
    }
    return message;
  }
  for (const MessageText& m : c.texts) {
    if (m.id == 0) break;
    join(message, separator,
         filled(clsCharacter::Internals::language_text_or_none(chr, m.id), m, fields, chr), first);
  }
  if (c.form == CompositionForm::kErrorNumber) {
    const std::string digits = std::to_string(fields.error);
    message.append(digits.begin(), digits.end());
  }
  if (title && c.title != 0) *title = clsCharacter::Internals::language_text_or_none(chr, c.title);
  return message;
}

}  // namespace zelkora::checking
