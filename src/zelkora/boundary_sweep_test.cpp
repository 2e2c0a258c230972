// Every public check and reader called with hostile arguments: empty and
// 1 MB texts, NUL, lone surrogates, texts that look like numbers beyond
// every range, NaN and infinities, 32-bit extremes and language offsets that
// overflow every catalogue id. The checks answer with numbers and never
// raise; the readers raise only the faults their headers name, listed here
// with each call.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/headless/headless.h"

namespace zelkora {
namespace {

using frame::Variant;

constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
constexpr int32_t kMin = std::numeric_limits<int32_t>::min();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

std::vector<Text> hostile_texts() {
  return {u"",
          Text(1 << 20, u'9'),
          Text(1 << 19, u'Φ'),
          Text(1, u'\0'),
          Text(u"4\0Φ20", 5),
          Text(1, u'\xD800'),
          Text(u"\xDC00"
               u"abc"),
          u"NaN",
          u"-inf",
          u"1e309",
          u"-1e309",
          u"2147483648",
          u"-2147483649",
          u"32768Φ20",
          u"4Φ1e39",
          u"   ",
          u"_bb(",
          u"%%1%",
          u"S>0",
          u"|||"};
}

const double kNumbers[] = {kNaN, kInf, -kInf, 0.0, -0.0, 1e308, -1e308, 4.9e-324, kMax, kMin};
const int32_t kOffsets[] = {0, kMax, kMin, 1'000'000};
const int32_t kIds[] = {0, -1, 1050, 5300, kMax, kMin};

std::string shown(TextView text) { return std::to_string(text.size()) + " units"; }

TEST(BoundarySweep, ChecksAnswerWithNumbersAndNeverRaise) {
  const auto platform = platform::Platform::headless();
  const std::vector<Text> texts = hostile_texts();
  for (const int32_t offset : kOffsets) {
    clsErrChr err(platform);
    err.lLanguage(offset);
    for (const Text& t : texts) {
      SCOPED_TRACE("offset " + std::to_string(offset) + ", text of " + shown(t));
      for (const TextView sign : {TextView(t), TextView(u"S>0"), TextView(u"xS>=0_Lx")}) {
        EXPECT_NO_THROW(err.GenCheckCboEnterNumErrW(sign, t, t, true));
        EXPECT_NO_THROW(err.GenCheckCboEnterNumErr(sign, t, Variant(t), true));
      }
      for (const int32_t list : kIds) {
        EXPECT_NO_THROW(err.CheckCboListErrW(list, t, t, Compare::Text, true)) << list;
      }
      for (const int32_t upper : {-1, 0, 5, kMax, kMin}) {
        EXPECT_NO_THROW(err.GenCheckListErrW(t, t, {t, u"a"}, upper, t, Compare::Text, true))
            << upper;
      }
      EXPECT_NO_THROW(err.GenCheckHntQdDj(t, true));
      for (const int32_t criterion : {101, 102, 103, 105, 120, 153, 166, 202, 205, 450, 0, kMax}) {
        EXPECT_NO_THROW(err.CheckCriterionErr(criterion, t, Variant(t), t, Variant(t), true))
            << criterion;
      }
      for (const double n : kNumbers) {
        for (const TextView sign : {u"<", u">=", u"<>", u"="}) {
          EXPECT_NO_THROW(err.GenCheckConErrW(sign, t, n, t, -n, true)) << n;
        }
        EXPECT_NO_THROW(err.GenCheckConErr(u"<", t, Variant(n), t, Variant(t), true)) << n;
      }
    }
  }
}

// A reader, and the faults it may let through (as its header says).
struct Reader {
  const char* name;
  std::function<void(const clsCharacter&, const Text&, double)> call;
  std::set<FaultKind> allowed;
};

TEST(BoundarySweep, ReadersRaiseOnlyTheFaultsTheyName) {
  const Reader readers[] = {
      {"GjTextTurnW",  // a count or diameter beyond its type
       [](const clsCharacter& c, const Text& t, double) {
         int32_t n = 0, e = 0;
         double d = 0;
         c.GjTextTurnW(t, n, d, e);
       },
       {FaultKind::Overflow}},
      {"BanGjTextTurn",
       [](const clsCharacter& c, const Text& t, double) {
         float d = 0, a = 0;
         int32_t e = 0;
         c.BanGjTextTurn(t, d, a, e);
       },
       {FaultKind::Overflow}},
      {"vYsfTextTurnW",
       [](const clsCharacter& c, const Text& t, double) { c.vYsfTextTurnW(t); },
       {}},
      {"bSignEnter_SteelFy",
       [](const clsCharacter& c, const Text& t, double) { c.bSignEnter_SteelFy(t); },
       {}},
      {"tGjFhByFy",
       [](const clsCharacter& c, const Text& t, double) { c.tGjFhByFy(Variant(t)); },
       {}},
      {"tOpinionZeroText",
       [](const clsCharacter& c, const Text& t, double) { c.tOpinionZeroText(t); },
       {}},
      {"dGjDiameterQzW",
       [](const clsCharacter& c, const Text&, double n) { c.dGjDiameterQzW(n); },
       {}},
      {"dGjDiameterFromAsW",
       [](const clsCharacter& c, const Text&, double n) { c.dGjDiameterFromAsW(n, kMax); },
       {}},
      {"dGjDiameterQz (a text that is no number)",
       [](const clsCharacter& c, const Text& t, double) { c.dGjDiameterQz(Variant(t)); },
       {FaultKind::Conversion, FaultKind::Overflow}},
      {"tTurn_MultipleLastChr (a count beyond 32 bits)",
       [](const clsCharacter& c, const Text& t, double n) { c.tTurn_MultipleLastChr(t, u"。", n); },
       {FaultKind::Overflow}},
  };
  const auto platform = platform::Platform::headless();
  const std::vector<Text> texts = hostile_texts();
  for (const int32_t offset : kOffsets) {
    clsCharacter chr(platform);
    chr.lLanguage(offset);
    for (const Reader& reader : readers) {
      for (const Text& t : texts) {
        for (const double n : {kNaN, kInf, 1e18, 2.0}) {
          try {
            reader.call(chr, t, n);
          } catch (const Fault& fault) {
            EXPECT_TRUE(reader.allowed.contains(fault.kind()))
                << reader.name << ": " << fault.what() << " (text of " << shown(t) << ", " << n
                << ", offset " << offset << ")";
          } catch (const std::exception& e) {
            ADD_FAILURE() << reader.name << " raised " << e.what();
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace zelkora
