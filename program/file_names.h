// The parts of a file's name as the forms show and keep them. A name is
// split at "/", on Windows at "\\" and after a drive ("C:") too.
//
//   file_name(u"/p/梁.tar.zks")           // 梁.tar.zks
//   file_suffix(u"/p/梁.tar.zks")         // zks   (empty: no dot in the name)
//   complete_base_name(u"/p/梁.tar.zks")  // 梁.tar
#pragma once

#include "zelkora/platform/text.h"

namespace zelkora::desk {

TextView file_name(TextView file);
// What follows the name's last dot.
TextView file_suffix(TextView file);
// The name up to its last dot.
TextView complete_base_name(TextView file);
// The file's full path, "." and ".." taken out, as the system spells it
// ("\\" between the parts on Windows).
Text native_absolute_path(TextView file);

}  // namespace zelkora::desk
