// The calculation header at the head of a report.
#include <algorithm>
#include <ctime>

#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/typeset/markup.h"

namespace zelkora {

namespace {

constexpr char16_t kRule = u'─';

// Today in the user's time zone, yyyy-mm-dd. (std::localtime shares its
// result between calls; the library runs on the user-interface thread only.)
Text today() {
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);  // NOLINT(concurrency-mt-unsafe)
  char digits[16];
  const std::size_t n = local ? std::strftime(digits, sizeof digits, "%Y-%m-%d", local) : 0;
  return Text(digits, digits + n);
}

// As many rule characters as fill `width` cells.
Text rule_line(int width) {
  return Text(static_cast<std::size_t>(width / codepage::char_width(kRule)), kRule);
}

}  // namespace

Text clsCharacter::tCalHead(TextView tTitle, TextView tProject,
                            const std::vector<int32_t>& lStandards, TextView tDate) const {
  const int width = std::max<int>(iMaxChrNow(), kMaxAllowChr);
  const Text end = tConEnter1();
  Text head;
  const int title_width = static_cast<int>(typeset::markup_display_width(tTitle));
  head.append(static_cast<std::size_t>(std::max(0, (width - title_width) / 2)), u' ');
  head += u"_bb(" + Text(tTitle) + u")bb_" + end;
  // Texts by id with the language offset; an id that overflows with it has none.
  const auto text = [this](int32_t id) { return Text(language_text(id).value_or(TextView())); };
  head += tDelSuperSubSplitSign(text(text_id::kProjectNameLine)) + Text(tProject) + end;
  int32_t listed = 0;
  for (const int32_t id : lStandards) {
    const Text standard = text(id);
    if (standard.empty()) continue;
    if (listed++ == 0) head += text(text_id::kStandardsWord) + end;
    head.append(static_cast<std::size_t>(kSecPreSpace), u' ');
    head += tChrList(listed) + standard + end;
  }
  head += text(text_id::kDateWord) + (tDate.empty() ? today() : Text(tDate)) + end;
  head += rule_line(width) + end;
  return head;
}

void clsCharacter::CalHead(TextView tTitle, TextView tProject,
                           const std::vector<int32_t>& lStandards, TextView tDate) {
  Txt(tCalHead(tTitle, tProject, lStandards, tDate));
}

}  // namespace zelkora
