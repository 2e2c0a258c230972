// clsControlsOperation: the class through which a calculation form reports
// its toolbar and keyboard events and asks which button or key is in effect.
//
// Every member is inert on purpose: setters keep nothing, functions and
// getters answer 0 or false, procedures do nothing and by-reference arguments
// come back unchanged. Forms written against the class keep working and go on
// with their own key handling.
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/platform/controls.h"
#include "zelkora/platform/text.h"

namespace zelkora {

class clsControlsOperation {
 public:
  using Control = platform::Control;

  void ButtonsUse(Control* /*buttons*/) {}
  void ControlTag(const Text& /*tag*/) {}
  void ShiftValue(int16_t /*shift*/) {}
  void iSignValue(int16_t /*sign*/) {}
  void iEscValue(int16_t /*esc*/) {}
  void KeyCodeValue(int16_t /*key_code*/) {}
  void bAltDownValue(bool /*down*/) {}
  bool bAltDownValue() const { return false; }
  void bDisplayTuLi(bool /*display*/) {}

  int16_t iToolBarButtonIndex() const { return 0; }
  int16_t iToolBarButtonIndexTuLi() const { return 0; }
  int16_t iKeyDownCode() const { return 0; }

  void ToolBarButtonTuLiSet() {}
  void CheckToolbarPress(int16_t /*iCurrentStep*/) {}
  bool ToolBar1_Enter_CurrentStep(int16_t& /*iLastStep*/, int16_t& /*iCurrentStep*/) {
    return false;
  }
  void CheckToolbarEnabled(std::vector<bool>& /*bEnable*/) {}
  void CheckToolbarEditEnabled(int32_t /*lCount*/, int32_t /*lSel*/, bool /*bChkB3*/) {}

  bool Form_KeyDownD(Control* /*btnX*/, int16_t& /*KeyCode*/, int16_t& /*Shift*/,
                     int16_t& /*iButton*/) {
    return false;
  }
  bool Form_KeyDownR(Control* /*btnX*/, int16_t& /*KeyCode*/, int16_t& /*Shift*/,
                     int16_t& /*iButton*/) {
    return false;
  }
  bool Form_KeyDownT(Control* /*btnX*/, int16_t& /*KeyCode*/, int16_t& /*Shift*/,
                     int16_t& /*iButton*/) {
    return false;
  }
};

}  // namespace zelkora
