// The seven public classes: they can be made and released, and each holds
// its own objects.
#include <gtest/gtest.h>
#include "zelkora/checking/err_chr_internals.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/grid/grid_cell_internals.h"

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/controls/cls_controls_operation.h"
#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/load_save_internals.h"
#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/cls_grid_cell_main.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/section/cls_section_properties.h"

namespace zelkora {
namespace {

class ClassFrame : public ::testing::Test {
 protected:
  std::shared_ptr<platform::Platform> p = platform::Platform::headless();
  platform::ScopedPlatform scope{p};
};

TEST_F(ClassFrame, EveryClassIsMadeAndReleased) {
  auto chr = std::make_unique<clsCharacter>();
  auto err = std::make_unique<clsErrChr>();
  auto io = std::make_unique<clsLoadSave>();
  auto grid = std::make_unique<clsGridCell>();
  auto menu = std::make_unique<clsGridCellMain>();
  auto section = std::make_unique<clsSectionProperties>();
  auto controls = std::make_unique<clsControlsOperation>();
  EXPECT_EQ(&clsCharacter::Internals::platform(clsGridCell::Internals::character(*grid)), p.get());
  EXPECT_EQ(&clsLoadSave::Internals::suite(*io), p->suite.get());
  grid.reset();
  menu.reset();
  err.reset();
  chr.reset();
}

TEST_F(ClassFrame, ErrChrPassesItsLanguageToItsOwnCharacterOnly) {
  clsErrChr err;
  clsCharacter other;
  err.lLanguage(100000);
  EXPECT_EQ(clsErrChr::Internals::character(err).lLanguage(), 100000);
  EXPECT_EQ(clsErrChr::Internals::character(err).tString(100), u"");
  EXPECT_EQ(other.lLanguage(), 0);
}

TEST_F(ClassFrame, ErrChrCopiesTheThousandsSeparatorWhenMade) {
  auto comma = platform::Platform::headless();
  comma->locale = std::make_shared<platform::headless::FixedNumberLocale>(u",", u".");
  clsErrChr err(comma);
  EXPECT_EQ(clsErrChr::Internals::thousands_separator(err), u".");
}

TEST_F(ClassFrame, GridCellHoldsThreeObjectsOfItsOwn) {
  clsGridCell a, b;
  EXPECT_NE(&clsGridCell::Internals::character(a), &clsGridCell::Internals::character(b));
  EXPECT_NE(&clsGridCell::Internals::character(a),
            &clsErrChr::Internals::character(clsGridCell::Internals::errors(a)));
  clsGridCell::Internals::character(a).lLanguage(7);
  EXPECT_EQ(clsErrChr::Internals::character(clsGridCell::Internals::errors(a)).lLanguage(), 0);
  EXPECT_EQ(clsGridCell::Internals::character(b).lLanguage(), 0);
}

TEST(ControlsOperation, EveryMemberIsInert) {
  clsControlsOperation ops;
  ops.bAltDownValue(true);
  EXPECT_FALSE(ops.bAltDownValue());
  ops.ButtonsUse(nullptr);
  ops.ControlTag(u"tag");
  ops.ShiftValue(1);
  ops.iSignValue(2);
  ops.iEscValue(27);
  ops.KeyCodeValue(13);
  ops.bDisplayTuLi(true);
  EXPECT_EQ(ops.iToolBarButtonIndex(), 0);
  EXPECT_EQ(ops.iToolBarButtonIndexTuLi(), 0);
  EXPECT_EQ(ops.iKeyDownCode(), 0);
  int16_t last = 3, current = 4;
  EXPECT_FALSE(ops.ToolBar1_Enter_CurrentStep(last, current));
  EXPECT_EQ(last, 3);
  EXPECT_EQ(current, 4);
  std::vector<bool> enable{true, false, true};
  ops.CheckToolbarEnabled(enable);
  EXPECT_EQ(enable, (std::vector<bool>{true, false, true}));
  for (int16_t key : {int16_t{13}, int16_t{27}, int16_t{32}, int16_t{-1}}) {
    int16_t code = key, shift = 1, button = 5;
    EXPECT_FALSE(ops.Form_KeyDownD(nullptr, code, shift, button));
    EXPECT_FALSE(ops.Form_KeyDownR(nullptr, code, shift, button));
    EXPECT_FALSE(ops.Form_KeyDownT(nullptr, code, shift, button));
    EXPECT_EQ(code, key);
    EXPECT_EQ(shift, 1);
    EXPECT_EQ(button, 5);
  }
}

}  // namespace
}  // namespace zelkora
