/// clsErrChr: input checking and error messages.
///
/// The object holds its own clsCharacter, through which every message text is
/// fetched from the catalogue, and the fields of the last error: its number,
/// the composed message, and two caption/value pairs that fill the message's
/// placeholders. A caller names the error; the words come from the catalogue:
/// @code{.unparsed}
///   zelkora::clsErrChr err;
///   err.GenMsgErrorW(121, u"b", u"2e10", {}, {}, true);
///   err.tError_Txt();  // "错误：b ＝ 2e10 ＞ 1000000000，b 不应大于 1000000000。"
///   err.GenCheckCboEnterNumErrW(u"S>0", u"梁宽 b", u"-200");  // 155, shown at once
/// @endcode
/// Messages
///   Each error number has one composition: the catalogue texts of its
///   sentences and what fills their placeholders (frame/error_numbers.h names
///   the numbers the library sets). When
///   messages are not ignored, the sentences are separated and ended by two
///   blanks and two line breaks, and the message is shown in the platform's
///   warning box under "输入错误！" or the composition's own title, without
///   the "|" break marks and the markup of the stored text. When ignored,
///   nothing is shown and nothing separates the sentences. An error number no
///   composition knows repeats the previous message.
/// @code{.unparsed}
///   The ignore flag is one field: the bMsgIgnore argument of a call sets it
///   for the calls that follow, too.
/// @endcode
/// Checks
///   Each check returns the error number it set (0 when the entry is
///   accepted). The plain forms take Variants, the W forms texts and numbers
///   and the ignore flag, the X forms work on the fields as they stand.
/// @code{.unparsed}
///   Numeric entries are checked against a check expression, the descriptor:
/// @endcode
///     descriptor := head { "_" part }
///     head       := "UnCheckNum" | "0"     no check at all
///                 | "1"                    an item of the list lListRes
///                 | "X,Y"                  a coordinate pair "x, y"
///                 | "BanGJ"                a slab bar "10@200" (error 503)
///                 | "GJ"                   a bar text "4Φ20", read as GjTextTurnW
///                                          reads it (errors 3000100-3000150)
///                 | ["n"] ["x"] [type] [condition]
///     type       := "S" | "I" | "L"        largest number 3E14, 32767, 1E9
///     part       := condition | name
///     condition  := sign number            sign: >= <= <> > < (two-character
///                                          signs are looked for first)
///                 | [open] number "~" number [close]
///                                          open, close: one character each
/// @code{.unparsed}
///   - A leading "n" lets the entry be empty: "nS>=0" accepts "" and any
///     number not below zero.
///   - A leading "x" lets the entry be the word for an automatic choice
///     ("自动", catalogue 500): "xS>0_Lx" accepts "自动", which the form then
///     takes from the quantity that the part "Lx" names. A part that starts
///     with neither a sign, a bracket nor a number is such a name and no
///     condition.
///   - Without a type letter the limits of "S" apply. The type's largest
///     number is tested after the conditions: beyond 1E9 for "L" error 121,
///     beyond 3E14 for "S" error 122, below -3E14 error 123 (for "S" and
///     "L"); "I" allows -32768 to 32767 (errors 120 and 166 naming the
///     limit). A fraction in an "I" or "L" entry is accepted: the form rounds
///     it (half to even) where it takes the number.
///   - A part with "~" is an interval "15~80", which holds its bounds. Its
///     brackets are the characters before the lower and after the upper
///     bound that no number begins or ends with: "(" opens it exclusively,
///     any other bracket ("[", "{", "<", ...) or none inclusively; ")"
///     closes it exclusively, any other or none inclusively. So "{0~100)"
///     excludes 100 and "<0~100>" is "[0~100]". A failure is error 333 with
///     the range in words as the second caption: "(大于 0、且不大于 100)".
///   - An entered number is read with the user's decimal symbol and digit
///     grouping: "1,000" is 1000 where "," groups digits, and blanks around
///     it are allowed.
///   - A descriptor the grammar cannot read (an unknown sign, a limit that
///     is no number) checks what it can read: an unreadable condition is
///     skipped, so that a slip in a layout never locks a row.
/// @endcode
///   The limits are written into the messages as the two-value check writes
///   its values: tFmt with "6" for magnitudes in [0.000001, 1), else the
///   general number text. @file
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/variant.h"

namespace zelkora {

namespace frame {
struct TableValue;
}  // namespace frame
/// Input checking and error messages.
class clsErrChr {
 public:
  clsErrChr();  ///< Uses the current platform bundle.
  explicit clsErrChr(std::shared_ptr<const platform::Platform> platform);  ///< Uses `platform`.
  ~clsErrChr();
  clsErrChr(const clsErrChr&) = delete;
  clsErrChr& operator=(const clsErrChr&) = delete;

  /// Passes the offset on to the object's clsCharacter; keeps no copy.
  void lLanguage(int32_t offset) { character_->lLanguage(offset); }

  // ---- Fields ------------------------------------------------------------
  int32_t lError_ID() const { return error_id_; }  ///< The number of the last error; 0 for none.
  void lError_ID(int32_t id) { error_id_ = id; }   ///< Sets the error number.
  const Text& tError_Txt() const { return error_text_; }   ///< The last composed message.
  void tError_Txt(TextView text) { error_text_ = text; }   ///< Sets the message.
  bool bMessageIgnore() const { return message_ignore_; }  ///< Whether messages are not shown.
  void bMessageIgnore(bool ignore) { message_ignore_ = ignore; }  ///< Sets the flag.
  /// Saves the flag, then sets it; one level only.
  void bMessageIgnoreTemp(bool ignore) {
    saved_ignore_ = message_ignore_;
    message_ignore_ = ignore;
  }
  void bMessageIgnoreRestore() { message_ignore_ = saved_ignore_; }  ///< Restores the saved flag.
  void tCheckNumberSign(TextView sign) { check_sign_ = sign; }  ///< The descriptor of the X checks.
  void tCaption1(TextView text) { caption1_ = text; }           ///< Caption 1.
  void TextValue1(TextView text) { value1_ = text; }            ///< Value 1, as text.
  void tCaption2(TextView text) { caption2_ = text; }           ///< Caption 2.
  void TextValue2(TextView text) { value2_ = text; }            ///< Value 2, as text.
  void dValue1(double value) { number1_ = value; }              ///< Value 1, as a number.
  void dValue2(double value) { number2_ = value; }              ///< Value 2, as a number.
  void lListRes(int32_t id) { list_res_ = id; }                 ///< The list id of the XL check.

  // ---- Messages -----------------------------------------------------------
  using Variant = frame::Variant;  ///< The value type of the plain forms.

  /// @{ The values are written as text (an empty Variant gives empty text).
  void GenMsgError(int32_t lErr, TextView tCap1 = {}, const Variant& vT1 = {}, TextView tCap2 = {},
                   const Variant& vT2 = {}, bool bMsgIgnore = false);
  void GenMsgError(int32_t lErr, TextView tCap1, const Variant& vT1, TextView tCap2,
                   const Variant& vT2, bool bMsgIgnore, Text& tErr);  /// @}
  /// @{ Stores the error and its fields, composes and shows.
  void GenMsgErrorW(int32_t lErr, TextView tCap1 = {}, TextView Text1 = {}, TextView tCap2 = {},
                    TextView Text2 = {}, bool bMsgIgnore = false);
  void GenMsgErrorW(int32_t lErr, TextView tCap1, TextView Text1, TextView tCap2, TextView Text2,
                    bool bMsgIgnore, Text& tErr);  /// @}
  /// Composes from the fields as they stand and shows.
  void GenMsgErrorX();
  /// Sets the error number, keeps the other fields, composes and shows.
  void GenMsgErrorA(int32_t lErr);
  /// Appends an error to the caller's parallel lists (upper bound 0 at the
  /// start, so that the first error lands at index 1).
  void ErrorAddCon(int32_t lErr, TextView tErr, std::vector<int32_t>& lErrCon,
                   std::vector<Text>& tErrCon) const;
  /// The column-count errors of the load-case table (4603001 to 4603003).
  void ColumnNumberCheck(int32_t lError, int32_t lCount = 0);

  // ---- Checks -------------------------------------------------------------

  /// @{ A numeric entry against a descriptor (see above).
  int32_t GenCheckCboEnterNumErr(TextView tCheck, TextView tCaption, const Variant& vText,
                                 bool bMsgIgnore = false);
  int32_t GenCheckCboEnterNumErrW(TextView tCheck, TextView tCaption, TextView tText,
                                  bool bMsgIgnore = false);
  int32_t GenCheckCboEnterNumErrX();  /// @}
  /// As the X form, but an item of the list lListRes is accepted too (a row
  /// that offers words such as "自动" besides numbers).
  int32_t GenCheckCboEnterNumErrXL();

  /// @{ The text is one of vList(0) to vList(lU); else 106 naming tListName.
  int32_t GenCheckListErr(TextView tCap1, TextView tText, const std::vector<Variant>& vList,
                          int32_t lU, TextView tListName, Compare compare = Compare::Binary,
                          bool bMsgIgnore = false);
  int32_t GenCheckListErrW(TextView tCap1, TextView tText, const std::vector<zelkora::Text>& vList,
                           int32_t lU, TextView tListName, Compare compare = Compare::Binary,
                           bool bMsgIgnore = false);  /// @}

  /// @{ The text (trimmed, or else without its blanks) is an item of catalogue
  /// list lList; else 106.
  int32_t CheckCboListErr(int32_t lList, TextView tCaption, const Variant& vText,
                          Compare compare = Compare::Binary, bool bMsgIgnore = false);
  int32_t CheckCboListErrW(int32_t lList, TextView tCaption, TextView tText,
                           Compare compare = Compare::Binary, bool bMsgIgnore = false);
  int32_t CheckCboListErrX(Compare compare = Compare::Binary);  /// @}

  /// @{ Value 1 in relation tCheck to value 2 ("<", "<=", ">", ">=", "=", "<>";
  /// any other sign accepts). A Variant that is no number gives 101 for its
  /// caption.
  int32_t GenCheckConErr(TextView tCheck, TextView tCap1, const Variant& vValue1, TextView tCap2,
                         const Variant& vValue2, bool bMsgIgnore = false);
  int32_t GenCheckConErrW(TextView tCheck, TextView tCap1, double dVal1, TextView tCap2,
                          double dVal2, bool bMsgIgnore = false);
  int32_t GenCheckConErrX();  /// @}

  /// @{ The criterion of error lCheck, on vText (and vText2 where it compares):
  ///   102 a number > 0         103 a number >= 0       105 a number <> 0
  ///   120/154 a number <= vText2, 153 < vText2, 155 > vText2, 166 >= vText2,
  ///   168 = vText2, 169 <> vText2 (tCap2 names vText2)
  ///   202 a single character   205 not empty (after trimming)
  ///   450 a dimension: a number > 0
  /// A text that is no number where one is needed gives 101; any other lCheck
  /// is a caller's mistake and gives 39999.
  int32_t CheckCriterionErr(int32_t lCheck, TextView tCaption, const Variant& vText,
                            TextView tCap2 = {}, const Variant& vText2 = {},
                            bool bMsgIgnore = false);
  int32_t CheckCriterionErrX(int32_t lCheck);  /// @}

  /// @{ A concrete strength grade given as its number ("30"); else 104.
  int32_t GenCheckHntQdDj(TextView tC, bool bMsgIgnore = false);
  int32_t GenCheckHntQdDj(TextView tC, bool bMsgIgnore, Text& tErr);  /// @}

  /// @{ The value at dX (and dY) of a table held in a text, into dValue, as
  /// clsCharacter::dInterpolate and dInterpolate2 read it. A point outside
  /// the table is error 39997, whose message names the coordinate that is
  /// outside (tCapX, dX or tCapY, dY) and the range of its keys:
  /// "错误：混凝土强度等级 ＝ 85，超出了表中的范围（15～80）。"; a damaged table is
  /// 39999. dValue is left as it was on an error.
  ///   err.GenCheckInterpolateErrW(u"20|25|30;9.6|11.9|14.3", u"C", 27.5, fc);  // 0, fc 13.1
  int32_t GenCheckInterpolateErrW(TextView tTable, TextView tCapX, double dX, double& dValue,
                                  bool bMsgIgnore = false);
  int32_t GenCheckInterpolate2ErrW(TextView tTable, TextView tCapX, double dX, TextView tCapY,
                                   double dY, double& dValue, bool bMsgIgnore = false);  /// @}

  /// The library's own access to the object's state; defined in
  /// checking/err_chr_internals.h, which is not installed.
  struct Internals;

 private:
  /// The catalogue text of `id` + lLanguage; empty where the sum overflows.
  Text text_of(int32_t id) const;
  /// The text of a number in a message.
  Text number_text(double value);
  /// Clears the error and its message; returns 0.
  int32_t accept();
  /// Sets the error with the fields given, composes and returns the number.
  int32_t refuse(int32_t error);
  int32_t check_numeric_entry(bool accept_list_items);
  int32_t check_coordinate_pair();
  int32_t check_slab_bar();
  int32_t check_bar();
  bool in_catalogue_list(TextView text, Compare compare) const;
  int32_t report_table_value(const frame::TableValue& found, TextView tCapX, double dX,
                             TextView tCapY, double dY, double& dValue, bool bMsgIgnore);

  std::unique_ptr<clsCharacter> character_;
  int32_t error_id_ = 0;
  int32_t list_res_ = 0;
  Text error_text_;
  Text caption1_, value1_, caption2_, value2_;
  Text check_sign_;
  Text thousands_separator_;
  bool message_ignore_ = false;
  bool saved_ignore_ = false;
  double number1_ = 0;
  double number2_ = 0;
};

}  // namespace zelkora
