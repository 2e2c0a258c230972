/// clsControlsOperation: the class through which a calculation form reports
/// its toolbar and keyboard events and asks which button or key is in effect.
///
/// Every member is inert on purpose: setters keep nothing, functions and
/// getters answer 0 or false, procedures do nothing and by-reference arguments
/// come back unchanged. Forms written against the class keep working and go on
/// with their own key handling. @file
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/platform/controls.h"
#include "zelkora/platform/text.h"

namespace zelkora {
/// The toolbar and keyboard events of a form; every member is inert (see the file).
class clsControlsOperation {
 public:
  using Control = platform::Control;  ///< The controls' base.

  void ButtonsUse(Control* /*buttons*/) {}      ///< Keeps nothing.
  void ControlTag(const Text& /*tag*/) {}       ///< Keeps nothing.
  void ShiftValue(int16_t /*shift*/) {}         ///< Keeps nothing.
  void iSignValue(int16_t /*sign*/) {}          ///< Keeps nothing.
  void iEscValue(int16_t /*esc*/) {}            ///< Keeps nothing.
  void KeyCodeValue(int16_t /*key_code*/) {}    ///< Keeps nothing.
  void bAltDownValue(bool /*down*/) {}          ///< Keeps nothing.
  bool bAltDownValue() const { return false; }  ///< Always false.
  void bDisplayTuLi(bool /*display*/) {}        ///< Keeps nothing.

  int16_t iToolBarButtonIndex() const { return 0; }      ///< Always 0.
  int16_t iToolBarButtonIndexTuLi() const { return 0; }  ///< Always 0.
  int16_t iKeyDownCode() const { return 0; }             ///< Always 0.

  void ToolBarButtonTuLiSet() {}                       ///< Does nothing.
  void CheckToolbarPress(int16_t /*iCurrentStep*/) {}  ///< Does nothing.
  bool ToolBar1_Enter_CurrentStep(int16_t& /*iLastStep*/, int16_t& /*iCurrentStep*/) {
    return false;
  }                                                            ///< Always false; the steps stay.
  void CheckToolbarEnabled(std::vector<bool>& /*bEnable*/) {}  ///< Does nothing.
  void CheckToolbarEditEnabled(int32_t /*lCount*/, int32_t /*lSel*/, bool /*bChkB3*/) {}
  ///< Does nothing.
  bool Form_KeyDownD(Control* /*btnX*/, int16_t& /*KeyCode*/, int16_t& /*Shift*/,
                     int16_t& /*iButton*/) {
    return false;
  }  ///< Always false; the arguments stay.
  bool Form_KeyDownR(Control* /*btnX*/, int16_t& /*KeyCode*/, int16_t& /*Shift*/,
                     int16_t& /*iButton*/) {
    return false;
  }  ///< Always false; the arguments stay.
  bool Form_KeyDownT(Control* /*btnX*/, int16_t& /*KeyCode*/, int16_t& /*Shift*/,
                     int16_t& /*iButton*/) {
    return false;
  }  ///< Always false; the arguments stay.
};

}  // namespace zelkora
