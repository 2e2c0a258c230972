// clsCharacter: reading the suite's INI files, asking the user, the help and
// the history.
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/cls_character.h"

namespace zelkora {

Text clsCharacter::ReadOneString(TextView Section, TextView Key, TextView tIniFile,
                                 TextView tDefault) const {
  return platform_->ini->read(Section, Key, tDefault, tIniFile);
}

int32_t clsCharacter::vbLoadDefaultData(bool bMsg) const {
  if (!bMsg) return platform::MessageBox::kYes;
  return platform_->messages->question(tString(text_id::kLoadDefaultsQuestion),
                                       tString(text_id::kLoadDefaultsTitle));
}

bool clsCharacter::bShowHelp(TextView tTopic) const {
  if (!suite_ || !platform_->help) return false;
  const Text file = suite_->full_path(u"Zelkora.chm");
  return !file.empty() && platform_->help->show(file, tTopic);
}

std::vector<Text> clsCharacter::tHistoryFiles(TextView tProgram) const {
  return suite_ ? suite_->history(tProgram) : std::vector<Text>{};
}

bool clsCharacter::bHistoryAdd(TextView tProgram, TextView tFile) const {
  return suite_ && suite_->add_history(tProgram, tFile);
}

}  // namespace zelkora
