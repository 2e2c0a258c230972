// clsCharacter: values from tables of the design codes held in texts.
#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/value_table.h"

namespace zelkora {

double clsCharacter::dInterpolate(TextView tTable, double dX, int32_t& lErr) const {
  const frame::TableValue found = frame::interpolate(tTable, dX);
  lErr = frame::error_number(found.fault);
  return found.value;
}

double clsCharacter::dInterpolate2(TextView tTable, double dX, double dY, int32_t& lErr) const {
  const frame::TableValue found = frame::interpolate(tTable, dX, dY);
  lErr = frame::error_number(found.fault);
  return found.value;
}

}  // namespace zelkora
