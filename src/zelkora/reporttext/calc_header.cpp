// The calculation header at the head of a report.
#include <algorithm>
#include <chrono>
#include <cstdio>

#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/typeset/markup.h"

namespace zelkora {

namespace {

constexpr char16_t kRule = u'─';

Text today() {
  const std::chrono::year_month_day day{
      std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now())};
  char digits[16];
  std::snprintf(digits, sizeof digits, "%04d-%02u-%02u", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
  return Text(digits, digits + 10);
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
  head += tDelSuperSubSplitSign(tString(text_id::kProjectNameLine)) + Text(tProject) + end;
  int32_t listed = 0;
  for (const int32_t id : lStandards) {
    const Text standard = tString(id);
    if (standard.empty()) continue;
    if (listed++ == 0) head += tString(text_id::kStandardsWord) + end;
    head.append(static_cast<std::size_t>(kSecPreSpace), u' ');
    head += tChrList(listed) + standard + end;
  }
  head += tString(text_id::kDateWord) + (tDate.empty() ? today() : Text(tDate)) + end;
  head += rule_line(width) + end;
  return head;
}

void clsCharacter::CalHead(TextView tTitle, TextView tProject,
                           const std::vector<int32_t>& lStandards, TextView tDate) {
  Txt(tCalHead(tTitle, tProject, lStandards, tDate));
}

}  // namespace zelkora
