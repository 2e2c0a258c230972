// The library's own access to the state of a clsCharacter, for the
// subsystems that define its operations and for the tests. Not installed:
// forms see only the class's own properties and methods.
#pragma once

#include <optional>
#include <vector>

#include "zelkora/frame/catalogue.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/column_layout.h"

namespace zelkora {

struct clsCharacter::Internals {
  static const platform::Platform& platform(const clsCharacter& c) { return *c.platform_; }
  static const frame::Catalogue& catalogue(const clsCharacter& c) { return *c.catalogue_; }
  // The catalogue text of `id` (no offset), or nothing.
  static std::optional<TextView> catalogue_text(const clsCharacter& c, int32_t id) {
    return c.catalogue_->find(id);
  }
  // The text of `id` + lLanguage as tString gives it, but a sum that
  // overflows is a missing text (empty) instead of a fault: what the checks
  // and messages read, which never raise.
  static Text language_text_or_none(const clsCharacter& c, int32_t id) {
    return Text(c.language_text(id).value_or(TextView()));
  }
  static bool markup_switch(const clsCharacter& c) { return c.super_sub_; }
  // The squared and cubed signs in markup form (entries 13 and 14).
  static const Text& squared_sign_markup(const clsCharacter& c) {
    return c.symbols_[kSquaredMarkup];
  }
  static const Text& cubed_sign_markup(const clsCharacter& c) { return c.symbols_[kCubedMarkup]; }
  static const Text& delimiter(const clsCharacter& c) { return c.delimiter_; }
  static std::vector<Text>& steel_grade_lines(clsCharacter& c) { return c.fy_lines_; }
  static const std::vector<Text>& steel_grade_lines(const clsCharacter& c) { return c.fy_lines_; }
  static int16_t first_line_indent(const clsCharacter& c) { return c.first_indent_; }
  static int16_t following_line_indent(const clsCharacter& c) { return c.following_indent_; }
  // The settings application name (catalogue text 100).
  static const Text& settings_application(const clsCharacter& c) { return c.application_; }
  // The decimals left by the last tCF.
  static int16_t format_decimals(const clsCharacter& c) { return c.decimals_; }
  static const frame::ColumnLayout& column_layout(const clsCharacter& c) { return *c.columns_; }
};

}  // namespace zelkora
