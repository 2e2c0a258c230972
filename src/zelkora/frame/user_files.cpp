// clsCharacter: reading the suite's INI files and asking the user.
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/cls_character.h"

namespace zelkora {

namespace {}  // namespace

Text clsCharacter::ReadOneString(TextView Section, TextView Key, TextView tIniFile,
                                 TextView tDefault) const {
  return platform_->ini->read(Section, Key, tDefault, tIniFile);
}

int32_t clsCharacter::vbLoadDefaultData(bool bMsg) const {
  if (!bMsg) return platform::MessageBox::kYes;
  return platform_->messages->question(tString(text_id::kLoadDefaultsQuestion),
                                       tString(text_id::kLoadDefaultsTitle));
}

}  // namespace zelkora
