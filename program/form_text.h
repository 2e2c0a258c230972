// How the calculations read a form's values: a number in the user's
// notation, a switch ("是", "否", or what the library takes for yes).
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/variant.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// The number a value holds (blanks around it allowed), or none.
inline std::optional<double> number_in(TextView text, const clsCharacter& chr) {
  return frame::Variant(Text(trim(text))).number(chr.number_symbols());
}

// Whether a switch item says yes.
inline bool yes(TextView text, const clsCharacter& chr) {
  const Text t(trim(text));
  if (t == u"是") return true;
  if (t == u"否") return false;
  return chr.bAutoText(t);
}

// A form's values read item by item (by item index); a value that cannot
// be read is named in `unread` (when given) and leaves its target as it was.
class FormValues {
 public:
  FormValues(const std::vector<Text>& values, const clsCharacter& chr, std::vector<Text>* unread)
      : values_(values), chr_(chr), unread_(unread) {}
  // The item's value without blanks around it; empty for an item not there.
  Text text(int32_t item) const {
    const auto at = static_cast<std::size_t>(item);
    return at < values_.size() ? Text(trim(values_[at])) : Text();
  }
  void fail(TextView what) const {
    if (unread_) unread_->emplace_back(what);
  }
  void read(int32_t item, double& into, TextView what) const {
    if (const auto v = number_in(text(item), chr_)) {
      into = *v;
    } else {
      fail(what);
    }
  }

 private:
  const std::vector<Text>& values_;
  const clsCharacter& chr_;
  std::vector<Text>* unread_;
};

}  // namespace zelkora::desk
