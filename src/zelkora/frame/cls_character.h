/// clsCharacter: the text, number and formula typesetting class of the
/// library and the owner of the shared symbols.
///
/// Every class that produces user-visible text holds one. A new object reads
/// its symbols (steel-grade signs, power signs, list dot) from the per-user
/// settings store once, takes the decimal symbol and thousands separator from
/// the user's number locale, and fetches every text from the catalogue by id:
/// @code{.unparsed}
///   zelkora::clsCharacter chr;
///   chr.tString(1000);                        // "工程名称"
///   chr.tStringRe2(52200, u"0.25%", u"0.20%"); // placeholders filled in order
///   chr.Txt(u"第一行");  chr.Txt(u"，续");     // the accumulator appends
/// @endcode
/// Settings made on one object (its language offset, its markup switch) reach
/// no other object. The object belongs to the user-interface thread.
///
/// The class is declared here once; its operations are defined in the
/// subsystem that owns them (frame/ for the state and the catalogue access,
/// typeset/ for number formatting, ...). @file
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "zelkora/frame/number_symbols.h"
#include "zelkora/frame/shared_types.h"
#include "zelkora/frame/variant.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/text.h"

namespace zelkora {

namespace frame {
class Catalogue;
struct ColumnLayout;
}  // namespace frame
/// Text, number and formula typesetting, and the owner of the shared symbols.
class clsCharacter {
 public:
  /// Width of a standard report line and of a wide one, in display cells, and
  /// the standard indents of a paragraph's first and following lines.
  static constexpr int16_t kMaxAllowChr = 80;
  static constexpr int16_t kMaxAllowChrKh = 150;  ///< wide report line
  static constexpr int16_t kFstPreSpace = 0;      ///< first line's indent
  static constexpr int16_t kSecPreSpace = 4;      ///< following lines' indent

  /// Entries of the symbol table (`tValue` and the symbol properties).
  enum SymbolEntry : int {
    kListDot = 0,
    kF1 = 1,
    kF2 = 2,
    kF3 = 3,
    kPf = 4,  ///< squared sign, plain
    kLf = 5,  ///< cubed sign, plain
    kF4 = 6,
    kSquaredMarkup = 13,  ///< the settings section while starting
    kCubedMarkup = 14,    ///< the settings key suffix while starting
    kDecimalSymbol = 15,
    kThousandsSeparator = 16,
    kSymbolCount = 17,
  };

  /// @{ Starts with the current platform bundle, or with the one given.
  clsCharacter();
  explicit clsCharacter(std::shared_ptr<const platform::Platform> platform);  /// @}
  ~clsCharacter();
  clsCharacter(const clsCharacter&) = delete;
  clsCharacter& operator=(const clsCharacter&) = delete;

  // ---- Shared state ------------------------------------------------------

  /// The continuation text: U+3000 then CR LF; and CR LF, U+3000, CR LF.
  Text tConEnter1() const;
  Text tConEnter2() const;  ///< CR LF, then tConEnter1.

  int16_t iMaxAllowChr() const { return kMaxAllowChr; }  ///< The standard line width, kMaxAllowChr.
  int16_t iMaxAllowChr_Kh() const { return kMaxAllowChrKh; }  ///< The wide line width.
  int16_t iFstPreSpace() const { return kFstPreSpace; }       ///< kFstPreSpace.
  int16_t iSecPreSpace() const { return kSecPreSpace; }       ///< kSecPreSpace.
  /// The language offset added to catalogue ids by tString.
  int32_t lLanguage() const { return language_; }
  void lLanguage(int32_t offset) { language_ = offset; }  ///< Sets the language offset.

  /// The symbols chosen in the suite's options; a set stores the text as
  /// given, for this object only.
  const Text& tPubPf() const { return symbols_[kPf]; }
  /** Sets the squared sign. */ void tPubPf(TextView text) {
    symbols_[kPf] = text;
    pattern_code_valid_ = false;
  }
  const Text& tPubLf() const { return symbols_[kLf]; }  ///< The cubed sign.
  /** Sets the cubed sign. */ void tPubLf(TextView text) {
    symbols_[kLf] = text;
    pattern_code_valid_ = false;
  }
  const Text& tPubF1() const { return symbols_[kF1]; }            ///< Grade symbol 1.
  void tPubF1(TextView text) { symbols_[kF1] = text; }            ///< Sets grade symbol 1.
  const Text& tPubF2() const { return symbols_[kF2]; }            ///< Grade symbol 2.
  void tPubF2(TextView text) { symbols_[kF2] = text; }            ///< Sets grade symbol 2.
  const Text& tPubF3() const { return symbols_[kF3]; }            ///< Grade symbol 3.
  void tPubF3(TextView text) { symbols_[kF3] = text; }            ///< Sets grade symbol 3.
  const Text& tPubF4() const { return symbols_[kF4]; }            ///< Grade symbol 4.
  void tPubF4(TextView text) { symbols_[kF4] = text; }            ///< Sets grade symbol 4.
  const Text& tPubListDot() const { return symbols_[kListDot]; }  ///< The list dot.
  void tPubListDot(TextView text) { symbols_[kListDot] = text; }  ///< Sets the list dot.
  /// The current line width in cells (kMaxAllowChr at start).
  int16_t iMaxChrNow() const { return max_chr_now_; }
  void iMaxChrNow(int16_t width) { max_chr_now_ = width; }  ///< Sets the line width.

  /// The markup switch: markup (true) or plain (false) power signs in the
  /// texts produced afterwards.
  void bSuperSub(bool on) {
    super_sub_ = on;
    pattern_code_valid_ = false;
  }

  /// The text accumulator: the getter returns it, the setter appends.
  const Text& Txt() const { return accumulator_; }
  void Txt(TextView text) { accumulator_.append(text); }  ///< Appends `text`.
  void TxtClear() { accumulator_.clear(); }               ///< Empties the accumulator.
  void TxtReplace(TextView tFind, TextView tReplace, Compare compare = Compare::Binary);
  /**< Replaces every tFind in it. */
  /// The integer list: copied out to, or in from, the caller's array.
  void Get_List(std::vector<int16_t>& list) const { list = list_; }
  void Let_List(std::vector<int16_t>& list);  ///< Copies `list` in.

  /// The four steel-grade line texts (entries 0 to 3).
  void tFyLine1(TextView text);
  void tFyLine2(TextView text);     ///< Sets entry 1.
  void tFyLine1_RF(TextView text);  ///< Sets entry 2, appends to Txt.
  void tFyLine2_RF(TextView text);  ///< Sets entry 3.

  /// The field delimiter of the list and table operations.
  void Delimiter(TextView text) { delimiter_ = text; }
  /// The decimal symbol in use.
  const Text& tDecimalSymbol() const { return symbols_[kDecimalSymbol]; }
  const Text& ThousandsSeparator() const { return symbols_[kThousandsSeparator]; }
  /**< The digit-grouping symbol in use. */
  /// Indexed access to the symbol table; the two directions differ on purpose.
  Text tValue(int32_t index) const;
  void tValue(int32_t index, TextView text);  ///< Sets entry `index`.

  // ---- Text catalogue ----------------------------------------------------

  /// The text of an id, without the language offset. A missing id throws
  /// Fault(MissingResource).
  Text tResString(int16_t id) const;
  Text tResStr(int32_t id) const;  ///< The same with a 32-bit id.
  /// The text of `id` + lLanguage, or empty text when there is none.
  Text tString(int32_t id) const;
  /// @{ tString with "%%1%", then "%%2%", then "%%3%" replaced everywhere.
  Text tStringRe(int32_t id, TextView tReplace) const;
  Text tStringRe2(int32_t id, TextView tReplace1, TextView tReplace2) const;
  Text tStringRe3(int32_t id, TextView tReplace1, TextView tReplace2, TextView tReplace3) const;
  /// True when `text` without surrounding blanks equals catalogue text `lRes`.
  bool bTextEqResString(TextView text, int32_t lRes, Compare compare = Compare::Binary) const;
  /// The items of value list lList, numbered from 0: catalogue text 40000 +
  /// lList (with the language offset) split at "|"; a missing text gives no
  /// items. Lists 0, 100 and 200 are built from INI files instead: 0 and 100
  /// from the file named by the user setting "TuLiIniFile", 200 from the one
  /// named by "BanPjFaIniFile" (section "Settings", catalogue 104, of the
  /// application, catalogue 100). The items are the values of keys 1, 2, ...
  /// of the file's section [List], up to the first key that is missing or
  /// empty (at most 999 items):
  ///   [List]
  ///   1=图例一
  ///   2=图例二
  /// A missing setting or file gives no items.
  std::vector<Text> ComboBoxList(int32_t lList) const;  /// @}

  // ---- User files and questions (frame/user_files.cpp) -----------------------

  /// The value of Key in Section of the INI file tIniFile (the platform's INI
  /// reader: case-insensitive names, missing file or key give tDefault).
  Text ReadOneString(TextView Section, TextView Key, TextView tIniFile,
                     TextView tDefault = {}) const;
  /// Whether to load the default values: with bMsg the user is asked through
  /// the platform's message box (6 yes, 2 cancel); without, the answer is 6.
  int32_t vbLoadDefaultData(bool bMsg = true) const;
  /// Opens the suite's help file "Zelkora.chm", found by the suite services,
  /// at tTopic (a page of it, "beam.htm"; empty for its start) in the
  /// system's help viewer. False, quietly, when the suite has no help file
  /// or the system no viewer.
  bool bShowHelp(TextView tTopic = {}) const;
  /// The recent project files of program tProgram, newest first (at most
  /// ten), from the suite's history (platform/ini_history.h); none where the
  /// suite keeps no history.
  std::vector<Text> tHistoryFiles(TextView tProgram) const;
  /// Puts tFile at the top of the history of tProgram. False, quietly, where
  /// the suite keeps no history or the file cannot be kept there.
  bool bHistoryAdd(TextView tProgram, TextView tFile) const;

  // ---- Number formatting (typeset/number_format.cpp) ----------------------
  //
  // A format code names a count of decimals or a unit ("3", "kn", "mm2"),
  // optionally followed by "d" (print the unit symbol) and "_" and a digit
  // (override the decimals): "kn" gives "#0.0", "knd_2" "#0.00kN". Any other
  // code is taken as a picture pattern of the caller's own.

  /// The picture pattern of a code; sets the object's decimals (0 and up, -1
  /// for "Percent", -10 when the code is itself the pattern).
  Text tCF(TextView tEnter);
  /// The number formatted with the pattern of the code, all decimals shown.
  Text tFmtFix(double dVal, TextView tEnter = {});
  /// As tFmtFix, then trailing zeros trimmed: a bare number is trimmed and one
  /// with a unit symbol keeps its zeros; bFix crosses the rule.
  Text tFmt(double dVal, TextView tEnter = {}, bool bFix = false);
  /// As tFmt, with about decimals + 1 significant digits instead.
  Text tFmtV(double dVal, TextView tEnter = {}, bool bFix = false);
  /// @{ " ＝ " and tFmt: the right-hand side of an equation (the two agree).
  Text tFmtEq(double dVal, TextView tEnter = {}, bool bFix = false);
  Text tFmtEq1(double dVal, TextView tEnter = {}, bool bFix = false);  /// @}
  /// A signed term: "+" or "-" (with blanks around it when bSpace), then tFmt
  /// of the absolute value. The sign is that of the unrounded value.
  Text tFmtS(double dVal, TextView tEnter = {}, bool bFix = false, bool bSpace = false);
  /// @{ A whole expression: catalogue text lRes (or tStr), " ＝ ", tFmt.
  Text tExpRes(int32_t lRes, double dVal, TextView tEnter = {}, bool bFix = false);
  Text tExpStr(TextView tStr, double dVal, TextView tEnter = {}, bool bFix = false);  /// @}
  /// The pattern of the code with the unit symbol always printed; a numeric
  /// vVal from 0 to 9 overrides the decimals.
  Text tCFD(TextView tEnter, const frame::Variant& vVal = frame::Variant());
  /// tOldText with the run of tLastChr at its end (one or more repetitions)
  /// replaced by dChr repetitions; without such a run, dChr repetitions are
  /// appended. dChr is rounded half to even to a 32-bit count: NaN or a value
  /// beyond that range is Fault(Overflow), which reaches the caller as the
  /// count conversion of the suite's programs would.
  Text tTurn_MultipleLastChr(TextView tOldText, TextView tLastChr, double dChr,
                             bool bIgnoreCase = false) const;

  // ---- Formula markup (typeset/markup.cpp) ----------------------------------

  /// The text with its markup markers removed.
  Text tDelSuperSubSign(TextView tText) const;
  /// The text with every "|" removed, then its markup markers.
  Text tDelSuperSubSplitSign(TextView tText) const;

  // ---- Line splitting (typeset/line_split.cpp) -----------------------------
  /// tSngLine broken at every tSplit (found without regard to case) into lines
  /// of at most iMaxChr code page bytes (raised to 80; markers count as
  /// written), each followed by tEnter; the first iPreSpace blanks in, the
  /// others iPreSpace + iPreSpaceAdd (negative: none; a 16-bit overflow of
  /// the sum throws Fault(Overflow)). tMulLine is replaced, or left as it was
  /// for a line of blanks only.
  void SplitSngLineToMulLine(TextView tSngLine, Text& tMulLine, TextView tSplit, TextView tEnter,
                             int16_t iPreSpace = 0, int16_t iPreSpaceAdd = 0,
                             int16_t iMaxChr = 0) const;
  /// tText wrapped to iMaxChr cells as shown (0 or less: iMaxChrNow; markup
  /// stripped, a Chinese character two cells): tLines gets the lines from
  /// index 0, tMulLine the lines each followed by tEnter; returns the line
  /// count. The first line of each paragraph is iFstPreSpace blanks in, the
  /// others iSecPreSpace. The break rules: CR, LF and CR LF end a paragraph;
  /// a line breaks at blanks (dropped), after Chinese closing or separating
  /// punctuation, before a Chinese opening bracket and around a Chinese
  /// ideograph, never so that a line starts with closing punctuation or ends
  /// with an opening bracket, never inside a markup run nor between a base and
  /// its script; the last break point whose line fits is taken, and a word
  /// wider than the line is cut at the width. Trailing blanks are removed.
  int32_t SplitTextToMulLine(TextView tText, std::vector<Text>& tLines, Text& tMulLine,
                             TextView tEnter, int16_t iMaxChr = 0, int16_t iFstPreSpace = 0,
                             int16_t iSecPreSpace = 0) const;
  /// tText wrapped to iMaxChrNow with the current indents (0, then 4), the
  /// lines joined by tConEnter1 (none after the last). A text without line
  /// breaks that fits comes back as it is.
  Text SplitSP26(TextView tText) const;

  // ---- Serial labels (typeset/serial_labels.cpp) ----------------------------
  /// The numbers of report headings (bold markup) and lists:
  ///   tChrSerial(11) "_bb(十一、)bb_"   tChrSerial2(2) "_bb(（二）)bb_"
  ///   tChrSl(3) "_bb((3))bb_"          tChrList(4) "4." (tPubListDot)
  ///   tLuoMaNum(3) "Ⅲ", tLuoMaNum(13) "XIII"
  /// Chinese numerals as in running text from 1 to 999 ("十一", "一百零一");
  /// outside that range the two Chinese levels write decimal digits in the
  /// same frame ("_bb(1000、)bb_"). tChrSl and tChrList take any number as it
  /// is. Roman: 1 to 12 the single characters U+2160 to U+216B, 13 to 3999 in
  /// Roman letters, any other number in decimal digits.
  Text tChrSerial(int32_t n) const;
  Text tChrSerial2(int32_t n) const;  ///< "（二）" style, bold.
  Text tChrSl(int32_t n) const;       ///< "(3)" style, bold.
  Text tChrList(int32_t n) const;     ///< "4." with tPubListDot.
  Text tLuoMaNum(int32_t n) const;    ///< Roman numeral.

  // ---- Equations (typeset/equation_split.cpp) -------------------------------
  /// tEq broken at its operators into lines of at most iMaxChrNow cells as
  /// shown (never below 80), the lines joined by tConEnter1, none after the
  /// last. Empty for a blank equation. A line breaks before an operator ("＝",
  /// "+", "−", "-", "·", "×", "/"), which begins the next line; never inside a
  /// markup run, before the first right-hand side, inside a number
  /// ("165.6kN·m", "2.5e-3") or at a sign. The last break point whose line
  /// fits is taken, else the first. Further lines are indented to the first
  /// right-hand side ("A ＝ " is 5 cells), or by 4 blanks without "＝" or when
  /// that is more than half the width.
  Text SplitEQ(TextView tEq) const;
  /// SplitEQ(tEq) and tConEnter1 appended to Txt (nothing for a blank one).
  void SplitLineCalEQ(TextView tEq);

  // ---- Calculation header (reporttext/calc_header.cpp) ----------------------
  /// The head of a report, each line ended by tConEnter1:
  ///                         _bb(钢筋混凝土梁配筋计算)bb_        (centred)
  ///   工程名称：三号楼
  ///   设计依据：
  ///       1.《混凝土结构设计规范》（GB 50010－2010）
  ///   计算日期：2026-11-25
  ///   ────────────────────────────────────────────────────────
  /// The title is centred on iMaxChrNow (at least 80) cells as shown. The
  /// standards are catalogue ids (titles 59007 to 59911, with lLanguage);
  /// ids without a text are left out, and without any the 设计依据 lines go.
  /// An empty tDate is today's date, yyyy-mm-dd. The rule is as wide as the
  /// line. tCalHead returns the text; CalHead appends it to Txt.
  Text tCalHead(TextView tTitle, TextView tProject, const std::vector<int32_t>& lStandards,
                TextView tDate = {}) const;
  void CalHead(TextView tTitle, TextView tProject, const std::vector<int32_t>& lStandards,
               TextView tDate = {});  ///< The same, appended to Txt.

  // ---- Tables of values (reporttext/table_interpolation.cpp) ----------------
  /// The value at dX of a one-dimensional table held in a text, or at row key
  /// dX and column key dY of a two-dimensional one:
  ///   dInterpolate(u"20|25|30;9.6|11.9|14.3", 27.5, lErr)  // 13.1, lErr 0
  ///   dInterpolate2(u"b/h|1|2|3;100|0.5|0.6|0.7;200|0.8|0.9|1.0", 150, 2, lErr)
  /// Items are separated by "|", rows by ";" or a line break; a
  /// one-dimensional table is its keys, then its values; a two-dimensional one
  /// a corner item and the column keys, then per row its key and values. Each
  /// item is read by its leading number with "." ("30MPa" is 30). Keys must be
  /// strictly increasing or decreasing. Between keys the value is on the
  /// straight line (in two dimensions along the columns first), on a key it
  /// is that key's value.
  /// lErr is 0, 39997 for a point outside the table (no extrapolation) or 39999
  /// for a damaged table; the value is then 0. Nothing is shown: clsErrChr's
  /// GenCheckInterpolateErrW reports the errors.
  double dInterpolate(TextView tTable, double dX, int32_t& lErr) const;
  double dInterpolate2(TextView tTable, double dX, double dY, int32_t& lErr) const;
  /**< In two dimensions. */
  // ---- Report tables (reporttext/report_table.cpp) -----------------------
  //
  // A fixed-pitch table: each column has a width in cells, an alignment and
  // extra blanks; a cell text is fitted into width - extra blanks (numbers
  // lose trailing digits, other texts end in "...") and padded. An index
  // outside the columns throws Fault(IndexOutOfRange), a width sum beyond 32
  // bits Fault(Overflow). Widths are counted as code page 936 shows a text
  // (ASCII one cell, Chinese two); a row is the cells padded and joined, its
  // columns from lStart on, appended to Txt by ListOut_TextAddRow.

  /// The upper column index of the next ListOut_Initialize; negative for a
  /// table without columns.
  void ListOut_Ubound(int32_t ubound);
  /// Makes columns 0 to the upper index, all zero, and sets lStart and up.
  void ListOut_Initialize(int32_t lStart, int32_t lWidth, eAlignment lAlign = zkRightJustify,
                          int32_t lSpcAdd = 1);
  void ListOut_Index_Width(int32_t Index, int32_t lWidth);     ///< Sets the width of column Index.
  void ListOut_Index_Align(int32_t Index, eAlignment lAlign);  ///< Sets its alignment.
  void ListOut_Index_SpcAdd(int32_t Index, int32_t lSpcAdd);   ///< Sets its extra blanks.
  /// The text fitted into column Index and padded to its width.
  Text tFormatByLenA(TextView tCell, int32_t Index) const;
  /// The text in a one-off column; the object's own layout is left as it is.
  Text tFormatByLen(TextView tCell, int32_t lWidth, eAlignment lAlign = zkRightJustify,
                    int32_t lSpcAdd = 0) const;
  /// Does nothing; kept for the forms that still call it.
  void FormatByLenSet(std::vector<int16_t>& /*iWidth*/, std::vector<int16_t>& /*iAlign*/,
                      std::vector<int16_t>& /*iSpcAdd*/) const {}
  /// Appends a row of cells lStart to the upper index, then tEnd and
  /// tConEnter1, to Txt (tPreSpc first when lStart is 0).
  void ListOut_TextAddRow(const std::vector<Text>& cells, int32_t lStart, TextView tPreSpc = {},
                          TextView tEnd = {});
  /// The same on tText, with columns lStart to lU.
  void TextAddRowA(Text& tText, const std::vector<Text>& cells, int32_t lU, int32_t lStart = 0,
                   TextView tPreSpc = {}, TextView tEnd = {}) const;
  /// @{ Widens the columns from lAdjustStart on so that the table fills
  /// iMaxChrNow; lAllWidth receives the width before widening. The W form
  /// returns it. Fault(DivisionByZero) when there is room to fill and no
  /// column to widen, or lAdjust is 0.
  void ListOUt_AdjustWidth() { ListOUt_AdjustWidthW(); }
  void ListOUt_AdjustWidth(int32_t& lAllWidth, int32_t lAdjustStart = 3, int32_t lAdd = 4);
  void ListOUt_AdjustWidth(int32_t& lAllWidth, int32_t lAdjustStart, int32_t lAdd,
                           int32_t& lAdjust);
  int32_t ListOUt_AdjustWidthW(int32_t lAdjustStart = 3, int32_t lAdd = 4, int32_t lAdjust = 1);
  /// The header row of the standard three-column table (column number,
  /// control, seismic); sets the widths of columns 0 to 2, which must exist.
  Text ListOut_ConCaptionListCap_Text();                                       /// @}
  void ListOut_ConCaptionListCap() { Txt(ListOut_ConCaptionListCap_Text()); }  ///< Appends it.
  /// KeyIn when the key may be typed (a character of catalogue text lResStr,
  /// backspace, or copy, paste, cut, undo), else 0. lResStr is read without
  /// the language offset; a missing id throws Fault(MissingResource).
  int16_t iValiTextEnter(int16_t KeyIn, int32_t lResStr) const;
  int16_t ValiTextEnter(int16_t /*KeyIn*/, TextView /*ValidateString*/, bool /*Editable*/) const {
    return 0;
  }  ///< Always 0; kept for the forms that call it.
  /// Hands iSign, panelM, N and L to the platform's progress display, if any.
  void DisplayProcess(int32_t L, int32_t N, platform::Control* panelM, int16_t iSign = 0) const;

  // ---- Rebar notation (reporttext/rebar.cpp) -------------------------------
  // Reinforcement as typed on the forms. Outputs are written only as far as
  // the reading got; nothing shows a message: a failed reading gives an
  // error number (frame/error_numbers.h; clsErrChr composes its message, and
  // the check expression "GJ" checks a bar text).

  /// A bar text "4Φ20", "3-25", "Φ20", "20": count and diameter; lErr 0 or
  /// 3000100 to 3000150.
  void GjTextTurnW(TextView tText, int32_t& lN, double& dD, int32_t& lErr) const;
  void GjTextTurnW(TextView tText, int32_t& lN, double& dD) const;  ///< Without lErr.
  /// GjTextTurnW narrowed: a count beyond 16 bits or a diameter beyond single
  /// precision throws Fault(Overflow) and leaves every output as it was.
  void GjTextTurn(TextView tText, int16_t& N, float& D, int32_t& lErr) const;
  void GjTextTurn(TextView tText, int16_t& N, float& D) const;  ///< Without lErr.
  /// A slab bar text "10@200": diameter and spacing; lErr 0 or 503.
  void BanGjTextTurn(TextView tText, float& sD, float& sA, int32_t& lErr) const;
  void BanGjTextTurn(TextView tText, float& sD, float& sA) const;  ///< Without lErr.
  /// @{ A number with at most one operator evaluated ("360*0.9" gives "324" and
  /// iSign 1); invalid text comes back trimmed with iSign -1; an empty or
  /// incomplete number gives "0" and leaves iSign alone.
  Text vYsfTextTurnW(TextView tText, int16_t& iSign) const;
  Text vYsfTextTurnW(TextView tText) const;  ///< Without iSign.
  frame::Variant vYsfTextTurn(const frame::Variant& vText, int16_t& iSign) const;
  frame::Variant vYsfTextTurn(const frame::Variant& vText) const;  ///< On a Variant, without iSign.
  /// The trimmed text, or "0" for empty text and the pieces of "-.+".
  Text tOpinionZeroText(TextView tText) const;  /// @}
  /// The grade symbol (tPubF1 to tPubF4) for a strength, a strength with one
  /// operator, or a grade name; tPubF1 for anything unknown.
  Text tGjFhByFy(const frame::Variant& Fy) const;
  /// True when the text, blanks removed, names a known grade; dFy its
  /// strength, or 0.
  bool bSignEnter_SteelFy(TextView tText, double& dFy) const;
  bool bSignEnter_SteelFy(TextView tText) const;  ///< Without dFy.
  /// @{ The standard diameter for an area shared by lGs bars. The Variant forms
  /// here read their argument as a number the way the suite's programs
  /// convert a Variant: a text that is no number is Fault(Conversion), which
  /// reaches the caller.
  double dGjDiameterFromAsW(double dAs, int32_t lGs = 1) const;
  frame::Variant dGjDiameterFromAs(const frame::Variant& dAs, int32_t lGs = 1) const;  /// @}
  /// dD rounded up to the standard series (above 50: to a whole number).
  double dGjDiameterQzW(double dD) const;
  frame::Variant dGjDiameterQz(const frame::Variant& D) const;  ///< On a Variant.
  /// The diameter lChange steps up (or down, negative) the series.
  double dChangeSteelD(double dD, int32_t lChange) const;
  /// The same on a Variant, read by value before each step; lChange 0 gives
  /// the Variant as a number (Fault(Conversion) for a text that is none).
  double dChangeGanJinD(const frame::Variant& D, int16_t lChange = 1) const;
  /// @{ The bar list number of tFirst, or of the last digits of tGjBh (whose
  /// part before a "%%" is kept in tGjBh).
  int16_t iGJListW(Text& tGjBh, TextView tFirst = {}) const;
  int16_t iGJList(const frame::Variant& tGjBh) const;  /// @}
  /// The answer words of the combo boxes, trimmed and without case.
  bool bAutoText(TextView tText) const;
  bool bYesText(TextView tText) const;              ///< The word yes.
  bool bMinorFlexuralMember(TextView tText) const;  ///< The word for a minor member.
  /// False only for the word that hides the provided reinforcement.
  bool bDisplaySpGj(TextView tText) const;
  /// Replaces the steel-grade lines in Txt with their wrapped forms (SplitSP26).
  void TxtReplaceFy2();

  // ---- Section shapes (section/section_shapes.cpp) --------------------------
  /// The shape code of a name shown in a shape combo box: the names of the
  /// catalogue (through tString, so the language offset applies), also the
  /// short names "倒T形", "倒L形", "T形" and "工形" (the asymmetric I).
  /// Compared exactly; any other text gives Rectangular_Shaped. The text is
  /// not changed.
  Section_Shapes Get_Section_Shape(Text& tSectionShape) const;
  /// The number of the picture that illustrates the shape of a long name (the
  /// pictures belong to the calling program): 3238 inverted T, 3237 inverted
  /// L, 3241 T, 3239 for the symmetric and the asymmetric I alike, 3240 for
  /// any other text.
  int32_t lSectionPicture(TextView tSectionShape) const;

  /// The number symbols in use, for reading and writing numbers (Variant's
  /// conversions take them): the first characters of tDecimalSymbol and
  /// ThousandsSeparator (a digit there, as where the locale groups no digits,
  /// means no grouping).
  frame::NumberSymbols number_symbols() const;

  /// The library's own access to the object's state; defined in
  /// frame/character_internals.h, which is not installed.
  struct Internals;

 private:
  void start();
  /// The text of `id` + lLanguage (empty when there is none), or nothing when
  /// the sum overflows.
  std::optional<TextView> language_text(int32_t id) const;
  /// Sets the decimals and the pattern of a format code; the pattern stays in
  /// a buffer of the object, reused from call to call.
  const Text& format_pattern(TextView tEnter);

  std::shared_ptr<const platform::Platform> platform_;
  std::shared_ptr<const frame::Catalogue> catalogue_;
  std::shared_ptr<platform::SuiteServices> suite_;

  std::array<Text, kSymbolCount> symbols_;
  Text application_;
  Text continuation_;
  int16_t max_chr_now_ = kMaxAllowChr;
  int16_t first_indent_ = kFstPreSpace;
  int16_t following_indent_ = kSecPreSpace;
  int32_t language_ = 0;
  Text accumulator_;
  Text delimiter_;
  std::vector<int16_t> list_;
  bool super_sub_ = false;
  std::vector<Text> fy_lines_;
  int16_t decimals_ = 0;
  /// The last code of tCF, its pattern and decimals, reused while the same
  /// code comes again and the power signs stay.
  Text pattern_code_;
  Text pattern_;
  bool pattern_code_valid_ = false;
  /// The text between the blank and the equals sign of tFmtEq1; nothing sets it.
  Text equation_prefix_;
  std::unique_ptr<frame::ColumnLayout> columns_;
};

}  // namespace zelkora
