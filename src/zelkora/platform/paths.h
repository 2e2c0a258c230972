// Paths of the file system as library text and as UTF-8, the same on every
// system: a path is made from UTF-8 or UTF-16 text by its Unicode form, never
// through the system's ANSI code page, so Chinese folder and file names
// survive on a Western Windows as on Linux.
//
//   std::filesystem::path p = platform::path_from_text(u"D:\\项目\\梁.zks");
//   Text back = platform::text_from_path(p);  // the same text
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "zelkora/platform/text.h"

namespace zelkora::platform {

std::filesystem::path path_from_text(TextView text);

// A name as a system that spells names in bytes hands it over (a program's
// arguments, a folder's entries): its UTF-8, each byte that is no UTF-8
// kept as the lone surrogate U+DC80 + byte, which path_from_text turns back
// into that byte. So a file whose name is not UTF-8 is still found, and a
// file made from such a name gets exactly that name.
Text text_from_system_name(std::string_view name);
std::filesystem::path path_from_utf8(std::string_view utf8);

// The path as the system spells it (with "\\" on Windows).
Text text_from_path(const std::filesystem::path& path);
// The path in UTF-8 with "/" between its parts, for names inside a resource
// folder and for messages.
std::string utf8_from_path(const std::filesystem::path& path);

}  // namespace zelkora::platform
