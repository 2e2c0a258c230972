#include "zelkora/document/xml_text.h"

namespace zelkora::document {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool is_high_surrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool is_low_surrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }
bool is_noncharacter(char32_t c) { return (c >= 0xFDD0 && c <= 0xFDEF) || (c & 0xFFFE) == 0xFFFE; }

void append_ascii(std::string& out, char16_t c) {
  switch (c) {
    case u'&':
      out += "&amp;";
      break;
    case u'<':
      out += "&lt;";
      break;
    case u'>':
      out += "&gt;";
      break;
    case u'"':
      out += "&quot;";
      break;
    case u'\'':
      out += "&apos;";
      break;
    case u'\t':
      out += '\t';
      break;
    default:
      if (c >= 0x20 && c != 0x7F) out += static_cast<char>(c);  // other controls go
  }
}

}  // namespace

void append_utf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

void append_xml_text(std::string& out, TextView text) {
  const std::size_t n = text.size();
  for (std::size_t i = 0; i < n; ++i) {
    const char32_t c = text[i];
    if (c < 0x80) {
      append_ascii(out, static_cast<char16_t>(c));
    } else if (is_high_surrogate(c) && i + 1 < n && is_low_surrogate(text[i + 1])) {
      append_utf8(out, 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00));
      ++i;
    } else if (is_high_surrogate(c) || is_low_surrogate(c) || is_noncharacter(c)) {
      append_utf8(out, kReplacement);
    } else if (c <= 0x9F) {
      // C1 controls: XML takes them, HTML does not; no report needs them.
    } else {
      append_utf8(out, c);
    }
  }
}

}  // namespace zelkora::document
