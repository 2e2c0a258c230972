/// The small types that the subsystems share: the alignment of a report-table
/// column and the cross-section shape codes.
///
/// Shape codes are used by clsSectionProperties, clsCharacter::Get_Section_Shape
/// and lSectionPicture.
/// Each code is also the catalogue id of the shape's name, so a form fills its
/// shape combo box with tString(code) and reads the choice back with
/// Get_Section_Shape. Code 30271 lies inside the range but names no shape (its
/// catalogue text is the word for moment of inertia). @file
#pragma once

#include <cstdint>

namespace zelkora {

/// The alignment of a report-table column. Other values are accepted and give
/// a cell without padding.
enum eAlignment : int32_t {
  zkLeftJustify = -1,
  zkCenter = 0,
  zkRightJustify = 1,
};
/// The cross-section shapes: the catalogue ids of their names.
enum Section_Shapes : int32_t {
  Rectangular_Shaped = 30261,      ///< "矩形截面"
  Inverted_T_Shaped = 30262,       ///< "倒T形截面": flange at the bottom
  Inverted_L_Shaped = 30263,       ///< "倒L形截面": computed as a T
  T_Shaped = 30264,                ///< "T形截面": flange at the top
  I_Shaped_Symmetry = 30265,       ///< "工形截面（对称）"
  I_Shaped_Asymmetric = 30266,     ///< "工形截面（不对称）"
  Circular_Shaped = 30267,         ///< "圆形截面"
  Ring_Shaped = 30268,             ///< "环形截面"
  I_Shaped = 30269,                ///< "工形截面": computed as the asymmetric I
  Square_Shaped = 30270,           ///< "方形截面": not computed
  Slab_BeamStair = 30272,          ///< "梁式梯板": not computed
  Inverted_Cone_Shape = 30273,     ///< "倒锥形基础横截面"
  Cone_Shape = 30274,              ///< "锥形基础横截面"
  Inverted_Stepped_Shape = 30275,  ///< "倒阶梯形截面"
  Stepped_Shape = 30276,           ///< "阶梯形截面"
  Box_Shape = 30277,               ///< "箱形截面"
};

}  // namespace zelkora
