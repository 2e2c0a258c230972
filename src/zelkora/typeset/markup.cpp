// Formula markup: stripping markers, and the display width.
#include "zelkora/typeset/markup.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

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

// Four units read as one number, to compare with a marker at once.
constexpr std::uint64_t pack(TextView four) {
  return static_cast<std::uint64_t>(four[0]) | static_cast<std::uint64_t>(four[1]) << 16 |
         static_cast<std::uint64_t>(four[2]) << 32 | static_cast<std::uint64_t>(four[3]) << 48;
}
std::uint64_t load_four(const char16_t* p) { return pack(TextView(p, kMarkerLength)); }

// Whether a start marker begins, or an end marker ends, at position i.
bool starts_marker_at(TextView text, std::size_t i) {
  if (text.size() - i < kMarkerLength) return false;
  const std::uint64_t m = load_four(text.data() + i);
  return m == pack(u"_bb(") || m == pack(u"_up(") || m == pack(u"_ub(");
}
bool ends_marker_at(TextView text, std::size_t i) {
  if (i + 1 < kMarkerLength) return false;
  const std::uint64_t m = load_four(text.data() + i + 1 - kMarkerLength);
  return m == pack(u")bb_") || m == pack(u")up_") || m == pack(u")ub_");
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
  // When every "_" is the first character of a start marker or the last of an
  // end marker, and never both, the markers do not overlap and no removal can
  // form a new one out of its neighbours (a new marker needs a "_" that no
  // marker owns). Each removal then takes away one marker of four one-cell
  // characters, and the width follows without building the stripped text.
  std::size_t markers = 0;
  bool plain_markers = true;
  auto check_underscore = [&](std::size_t i) {
    if (starts_marker_at(text, i) == ends_marker_at(text, i)) plain_markers = false;
    ++markers;
  };
  std::size_t i = 0;
#ifdef __SSE2__
  // Eight units at a time: most have no "_".
  const __m128i underscore = _mm_set1_epi16(u'_');
  for (; i + 8 <= text.size() && plain_markers; i += 8) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
    unsigned hits = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(v, underscore)));
    while (hits != 0) {
      const unsigned lane = static_cast<unsigned>(__builtin_ctz(hits)) / 2;
      check_underscore(i + lane);
      hits &= ~(3u << (lane * 2));
    }
  }
#endif
  for (; i < text.size() && plain_markers; ++i) {
    if (text[i] == u'_') check_underscore(i);
  }
  if (plain_markers) return codepage::display_width(text) - kMarkerLength * markers;

  // Otherwise the passes are run on a copy: on the stack for a line-sized
  // text, in a buffer kept by the thread (grown once, then reused) for a
  // longer one.
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

Text markup_to_html(TextView text) {
  struct Marker {
    TextView start, end, open_tag, close_tag;
  };
  static constexpr Marker kMarkers[] = {
      {u"_bb(", u")bb_", u"<b>", u"</b>"},
      {u"_up(", u")up_", u"<sup>", u"</sup>"},
      {u"_ub(", u")ub_", u"<sub>", u"</sub>"},
  };
  Text out;
  out.reserve(text.size() + text.size() / 4);
  std::vector<const Marker*> open;
  std::size_t i = 0;
  while (i < text.size()) {
    const TextView rest = text.substr(i);
    const Marker* started = nullptr;
    const Marker* ended = nullptr;
    for (const Marker& m : kMarkers) {
      if (rest.starts_with(m.start)) started = &m;
      if (rest.starts_with(m.end)) ended = &m;
    }
    if (started) {
      out += started->open_tag;
      open.push_back(started);
      i += kMarkerLength;
      continue;
    }
    if (ended) {
      // Close the runs opened after it, then it; an end without its start
      // is dropped.
      if (std::find(open.begin(), open.end(), ended) != open.end()) {
        while (open.back() != ended) {
          out += open.back()->close_tag;
          open.pop_back();
        }
        out += ended->close_tag;
        open.pop_back();
      }
      i += kMarkerLength;
      continue;
    }
    const char16_t c = text[i++];
    switch (c) {
      case u'&':
        out += u"&amp;";
        break;
      case u'<':
        out += u"&lt;";
        break;
      case u'>':
        out += u"&gt;";
        break;
      case u'"':
        out += u"&quot;";
        break;
      case u'|':
        break;
      case u'\r':
        if (i < text.size() && text[i] == u'\n') ++i;
        out += u"<br>";
        break;
      case u'\n':
        out += u"<br>";
        break;
      default:
        out.push_back(c);
    }
  }
  while (!open.empty()) {
    out += open.back()->close_tag;
    open.pop_back();
  }
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
