#include "zelkora/typeset/markup.h"

#include <algorithm>
#include <array>

#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/mod_character.h"
#include "zelkora/platform/codepage.h"

namespace zelkora::typeset {

namespace {

constexpr std::size_t kMarkerLength = 4;

// The removals in their order; the bold start marker is removed twice.
constexpr std::array<TextView, 7> kPasses = {
    u"_bb(", u"_bb(", u")bb_", u"_up(", u")up_", u"_ub(", u")ub_",
};

// Every occurrence of `marker`, found left to right without overlap in the
// text as it was before this pass, is removed. The write position never passes
// the read position, so the text still to be searched is never overwritten.
std::size_t remove_all(char16_t* data, std::size_t length, TextView marker) {
  std::size_t write = 0;
  std::size_t read = 0;
  while (read < length) {
    if (data[read] == marker[0] && length - read >= kMarkerLength &&
        TextView(data + read, kMarkerLength) == marker) {
      read += kMarkerLength;
      continue;
    }
    data[write++] = data[read++];
  }
  return write;
}

// Every marker contains "_": a text without one has nothing to strip.
bool may_hold_markup(TextView text) { return text.find(u'_') != TextView::npos; }

}  // namespace

std::size_t strip_markup_in_place(char16_t* data, std::size_t length) {
  for (TextView marker : kPasses) length = remove_all(data, length, marker);
  return length;
}

Text strip_markup(TextView text) {
  Text out(text);
  if (!may_hold_markup(text)) return out;
  out.resize(strip_markup_in_place(out.data(), out.size()));
  return out;
}

std::size_t markup_display_width(TextView text) {
  if (!may_hold_markup(text)) return codepage::display_width(text);
  // The stripped copy lives on the stack for a line-sized text, and in a
  // buffer kept by the thread (grown once, then reused) for a longer one.
  constexpr std::size_t kBuffer = 512;
  if (text.size() <= kBuffer) {
    std::array<char16_t, kBuffer> buffer;
    std::copy(text.begin(), text.end(), buffer.begin());
    const std::size_t n = strip_markup_in_place(buffer.data(), text.size());
    return codepage::display_width(TextView(buffer.data(), n));
  }
  thread_local Text scratch;
  scratch.assign(text);
  const std::size_t n = strip_markup_in_place(scratch.data(), scratch.size());
  return codepage::display_width(TextView(scratch.data(), n));
}

Text strip_fields_and_markup(TextView text) {
  Text out(text);
  out.erase(std::remove(out.begin(), out.end(), u'|'), out.end());
  out.resize(strip_markup_in_place(out.data(), out.size()));
  return out;
}

}  // namespace zelkora::typeset

namespace zelkora {

Text ModCharacter::tStripMarkup(TextView text) { return typeset::strip_markup(text); }

Text clsCharacter::tDelSuperSubSign(TextView tText) const { return typeset::strip_markup(tText); }

Text clsCharacter::tDelSuperSubSplitSign(TextView tText) const {
  return typeset::strip_fields_and_markup(tText);
}

}  // namespace zelkora
