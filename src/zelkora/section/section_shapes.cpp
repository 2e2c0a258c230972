// clsCharacter: the shape names of the section-property forms, read back as
// shape codes and picture numbers.
#include "zelkora/frame/cls_character.h"

namespace zelkora {

namespace {

// The names in the order they are tried; a code is the catalogue id of its
// long name, `short_name` the id of a shorter one that forms also show (0 for
// none). Slab_BeamStair is not listed: its name reads as rectangular.
struct ShapeName {
  Section_Shapes code;
  int32_t short_name;
};

constexpr ShapeName kShapeNames[] = {
    {Rectangular_Shaped, 0},
    {Inverted_T_Shaped, 30282},  // "倒T形"
    {Inverted_L_Shaped, 30284},  // "倒L形"
    {T_Shaped, 30283},           // "T形"
    {I_Shaped_Symmetry, 0},
    {I_Shaped_Asymmetric, 30285},  // "工形", the asymmetric I rather than I_Shaped
    {Circular_Shaped, 0},
    {Ring_Shaped, 0},
    {I_Shaped, 0},
    {Square_Shaped, 0},
    {Inverted_Cone_Shape, 0},
    {Cone_Shape, 0},
    {Inverted_Stepped_Shape, 0},
    {Stepped_Shape, 0},
    {Box_Shape, 0},
};

struct ShapePicture {
  Section_Shapes code;
  int32_t picture;
};

// The two I sections share one picture.
constexpr ShapePicture kPictures[] = {
    {Inverted_T_Shaped, 3238}, {Inverted_L_Shaped, 3237},   {T_Shaped, 3241},
    {I_Shaped_Symmetry, 3239}, {I_Shaped_Asymmetric, 3239},
};
constexpr int32_t kOtherPicture = 3240;

}  // namespace

Section_Shapes clsCharacter::Get_Section_Shape(Text& tSectionShape) const {
  for (const ShapeName& name : kShapeNames) {
    if (tSectionShape == tString(name.code)) return name.code;
    if (name.short_name != 0 && tSectionShape == tString(name.short_name)) return name.code;
  }
  return Rectangular_Shaped;
}

int32_t clsCharacter::lSectionPicture(TextView tSectionShape) const {
  for (const ShapePicture& p : kPictures) {
    if (tSectionShape == tString(p.code)) return p.picture;
  }
  return kOtherPicture;
}

}  // namespace zelkora
