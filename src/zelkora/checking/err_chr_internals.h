// The library's own access to the state of a clsErrChr, for the grid and the
// tests. Not installed: forms see only the class's properties and methods.
#pragma once

#include "zelkora/checking/cls_err_chr.h"

namespace zelkora {

struct clsErrChr::Internals {
  // The text object every message text comes through.
  static clsCharacter& character(clsErrChr& e) { return *e.character_; }
  static const clsCharacter& character(const clsErrChr& e) { return *e.character_; }
  // The thousands separator copied from the text object at the start.
  static const Text& thousands_separator(const clsErrChr& e) { return e.thousands_separator_; }
  // The caption/value pairs of the last composition.
  static const Text& caption1(const clsErrChr& e) { return e.caption1_; }
  static const Text& value1(const clsErrChr& e) { return e.value1_; }
  static const Text& caption2(const clsErrChr& e) { return e.caption2_; }
  static const Text& value2(const clsErrChr& e) { return e.value2_; }
};

}  // namespace zelkora
