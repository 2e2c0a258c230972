// What 帮助 ▸ 关于 says, the same words on both desktop hosts: the program's
// name (the catalogue's), its version, the build (the commit and the day it
// was configured, the compiler and the target) and the licences of what the
// host's program bundles or links.
//
//   box(about_title(*platform), about_text(*platform, AboutHost::kQt, u"Qt 6.4.2"));
#pragma once

#include <vector>

#include "zelkora/platform/platform.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// The host whose program is described: what it links differs.
enum class AboutHost { kQt, kWindows };

// A part of the program that is not the project's own code, or the project's
// own font, with its licence.
struct BundledPart {
  TextView name;
  TextView licence;
};

// What the host's program bundles or links.
std::vector<BundledPart> bundled_parts(AboutHost host);

// "Zelkora 结构快速设计": the catalogue's name of the program.
Text application_name(const platform::Platform& platform);

// "关于 Zelkora 结构快速设计": the box's title.
Text about_title(const platform::Platform& platform);

// The build: "版本 0.1.0\n构建 1a2b3c4，2026-11-27\nGCC 12.2.0，Linux x86-64"
// ("未知" for the commit of a tree that was not a git checkout).
Text build_text();

// The box's text: the name, build_text(), the toolkit's version when the host
// has one ("Qt 6.4.2"), and the bundled parts with their licences.
Text about_text(const platform::Platform& platform, AboutHost host, TextView toolkit = {});

}  // namespace zelkora::desk
