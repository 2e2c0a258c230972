// The library's own access to the state of a clsLoadSave, for the tests. Not
// installed.
#pragma once

#include "zelkora/datafile/cls_load_save.h"

namespace zelkora {

struct clsLoadSave::Internals {
  // The suite service object the object holds.
  static platform::SuiteServices& suite(const clsLoadSave& ls) { return *ls.suite_; }
};

}  // namespace zelkora
