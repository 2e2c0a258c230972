// Serial labels: the numbers of report headings and lists.
//
// Headings are numbered on three levels, and their numbers are the only bold
// runs of a report, so the labels come as markup:
//
//   level 1  tChrSerial(3)   "_bb(三、)bb_"     Chinese numerals and "、"
//   level 2  tChrSerial2(3)  "_bb(（三）)bb_"   Chinese numerals in full-width brackets
//   level 3  tChrSl(3)       "_bb((3))bb_"      digits in ASCII brackets
//   list     tChrList(3)     "3."               digits and the user's list dot, plain
//   Roman    tLuoMaNum(3)    "Ⅲ"                as the catalogue writes grades ("Ⅲ级")
//
// Chinese numerals are written as in running text from 1 to 999: "十" for 10,
// "十一" to "十九" without a leading "一", "二十", "九十九", "一百", "一百零一",
// "一百一十", "九百九十九". Outside 1 to 999 (zero, negatives, 1000 and up)
// the two Chinese levels write the number in decimal digits in the same frame:
// "_bb(1000、)bb_", "_bb(（0）)bb_". The other labels take every number as it
// is: tChrSl(-1) is "_bb((-1))bb_", tChrList(0) "0.".
//
// Roman numerals: 1 to 12 are the single characters U+2160 "Ⅰ" to U+216B "Ⅻ"
// that the catalogue uses; 13 to 3999 are written in Roman letters, "XIII",
// "MMMCMXCIX"; any other number in decimal digits.
#pragma once

#include <cstdint>
#include <optional>

#include "zelkora/platform/text.h"

namespace zelkora::typeset {

// The Chinese numeral of 1 to 999, or nothing for any other number.
std::optional<Text> chinese_numeral(int32_t n);

// The Roman numeral of 1 to 3999 in letters ("XII" for 12), or nothing.
std::optional<Text> roman_letters(int32_t n);

// The labels described above; `list_dot` follows a list number.
Text heading_label(int32_t n);
Text subheading_label(int32_t n);
Text third_level_label(int32_t n);
Text list_label(int32_t n, TextView list_dot);
Text roman_label(int32_t n);

}  // namespace zelkora::typeset
