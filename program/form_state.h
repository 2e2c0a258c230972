// A calculation form's state as text lines, read through its work and the
// grid control alike on every host, for comparing two hosts step by step:
//
//   row 8: 300 | 300 bold          item value | value cell's text, marks
//   row 17: 2,16 | 2, 16 hidden    ... "hidden", "refused" where they apply
//   row 7: - | 截面尺寸             a heading has no item
//   active 8,3 editing
//   changed yes, refused 0, undo yes, redo no
//   filter "钢筋" changed          the filter's text and toggles
//   title 梁配筋计算 - 未命名[*]
//   notes 梁的截面宽度 b / ... / 默认值：250
//   report 0 lines
#pragma once

#include <vector>

#include "program/form_work.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

std::vector<Text> form_state(FormWork& work);

}  // namespace zelkora::desk
