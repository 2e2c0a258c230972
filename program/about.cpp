// What 帮助 ▸ 关于 says.
#include "program/about.h"

#include <optional>
#include <string>

#include "zelkora/frame/catalogue.h"
#include "zelkora/frame/catalogue_ids.h"

// Given by the build (CMakeLists.txt): the project's version, the commit's
// short hash (empty outside a git checkout) and the day it was configured.
#ifndef ZELKORA_VERSION
#define ZELKORA_VERSION ""
#endif
#ifndef ZELKORA_COMMIT
#define ZELKORA_COMMIT ""
#endif
#ifndef ZELKORA_BUILD_DATE
#define ZELKORA_BUILD_DATE ""
#endif

namespace zelkora::desk {

namespace {

constexpr TextView kUnknown = u"未知";

Text or_unknown(const char* text) { return *text ? from_utf8(text) : Text(kUnknown); }

// The compiler that built this file, and so the program, with its version as
// the compiler tells it ("12.2.0"; Debian's MinGW-w64 GCC says only "12").
std::string compiler() {
#if defined(__clang__)
  return "Clang " + std::to_string(__clang_major__) + "." + std::to_string(__clang_minor__) + "." +
         std::to_string(__clang_patchlevel__);
#elif defined(__GNUC__)
  const std::string version = __VERSION__;
  const std::string number = version.substr(0, version.find_first_not_of("0123456789."));
#if defined(__MINGW64__)
  return "MinGW-w64 GCC " + number;
#else
  return "GCC " + number;
#endif
#elif defined(_MSC_VER)
  return "MSVC " + std::to_string(_MSC_VER);
#else
  return {};
#endif
}

// The system and the processor the program is built for.
std::string target() {
#if defined(_WIN32)
  std::string system = "Windows";
#elif defined(__linux__)
  std::string system = "Linux";
#elif defined(__APPLE__)
  std::string system = "macOS";
#else
  std::string system;
#endif
#if defined(__x86_64__) || defined(_M_X64)
  system += " x86-64";
#elif defined(__aarch64__) || defined(_M_ARM64)
  system += " ARM64";
#elif defined(__i386__) || defined(_M_IX86)
  system += " x86";
#endif
  return system;
}

constexpr BundledPart kGradeFont{u"Zelkora Grade 字体（钢筋符号）",
                                 u"Zelkora 自有字体，与 Zelkora 同一许可"};
constexpr BundledPart kZlib{u"zlib", u"zlib 许可"};

}  // namespace

std::vector<BundledPart> bundled_parts(AboutHost host) {
  if (host == AboutHost::kQt) {
    return {{u"Qt 6", u"GNU LGPL 第 3 版（LGPLv3）"}, kZlib, kGradeFont};
  }
  // The Windows program is linked statically: the compiler's runtime is in it.
  return {kZlib,
          {u"MinGW-w64 运行库", u"ZPL 2.1 许可，部分为公有领域"},
          {u"winpthreads", u"MIT 许可"},
          {u"GCC 运行库（libstdc++、libgcc）", u"GPLv3，附 GCC 运行库例外"},
          kGradeFont};
}

Text application_name(const platform::Platform& platform) {
  const std::optional<TextView> name = frame::catalogue_for(platform)->find(text_id::kApplication);
  return name ? Text(*name) : Text(u"Zelkora");
}

Text about_title(const platform::Platform& platform) {
  return u"关于 " + application_name(platform);
}

Text build_text() {
  const std::string made_by = compiler(), made_for = target();
  Text text = u"版本 " + or_unknown(ZELKORA_VERSION) + u"\n构建 " + or_unknown(ZELKORA_COMMIT) +
              u"，" + or_unknown(ZELKORA_BUILD_DATE) + u"\n" + or_unknown(made_by.c_str());
  if (!made_for.empty()) text += u"，" + from_utf8(made_for);
  return text;
}

Text about_text(const platform::Platform& platform, AboutHost host, TextView toolkit) {
  Text text = application_name(platform) + u"\n" + build_text();
  if (!toolkit.empty()) text += u"\n" + Text(toolkit);
  text += u"\n\n随附或链接的组件及其许可：";
  for (const BundledPart& part : bundled_parts(host)) {
    text += u"\n" + Text(part.name) + u"：" + Text(part.licence);
  }
  return text;
}

}  // namespace zelkora::desk
