#!/usr/bin/env bash
# Installs what the build needs and a fresh machine lacks, with Debian's
# packages. Does nothing (and needs no network) when everything is there.
set -euo pipefail

missing=()
need_cmd() { command -v "$1" >/dev/null 2>&1 || missing+=("$2"); }
need_file() { [ -e "$1" ] || missing+=("$2"); }

need_cmd cmake cmake
need_cmd g++ g++
need_cmd make make
need_file /usr/include/gtest/gtest.h libgtest-dev
need_file /usr/include/gmock/gmock.h libgmock-dev
need_file /usr/include/benchmark/benchmark.h libbenchmark-dev
# zlib: the documents' ZIP containers (DOCX).
need_file /usr/include/zlib.h zlib1g-dev
# The desktop host and program (Qt 6 Widgets) and a CJK font for them.
compgen -G "/usr/lib/*/cmake/Qt6Widgets/Qt6WidgetsConfig.cmake" >/dev/null || missing+=(qt6-base-dev)
need_file /usr/share/fonts/truetype/wqy/wqy-microhei.ttc fonts-wqy-microhei
# Qt's own buttons and dialogs in Chinese (and the system's language).
need_file /usr/share/qt6/translations/qtbase_zh_CN.qm qt6-translations-l10n
# `install-deps.sh fuzz`: also clang and its libFuzzer runtime.
if [ "${1:-}" = fuzz ]; then
  need_cmd clang++ clang
  compgen -G "/usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.fuzzer-x86_64.a" >/dev/null ||
    missing+=(libclang-rt-dev)
fi

# `install-deps.sh peer`: also wxWidgets (the peer of the grid's benchmark,
# make bench-peer) and Xvfb, the X display both benchmarks draw on.
if [ "${1:-}" = peer ]; then
  need_file /usr/include/wx-3.2/wx/propgrid/propgrid.h libwxgtk3.2-dev
  need_cmd xvfb-run xvfb
  need_cmd xauth xauth
fi

# `install-deps.sh windows`: also the MinGW-w64 cross compiler, GoogleTest's
# sources, zlib built for Windows, Wine, and the Chinese locale that Wine
# takes its code page 936 from.
if [ "${1:-}" = windows ]; then
  need_cmd x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64
  need_file /usr/src/googletest/CMakeLists.txt googletest
  need_file /usr/x86_64-w64-mingw32/include/zlib.h libz-mingw-w64-dev
  need_file /usr/lib/wine/wine64 wine64
  need_file /usr/share/i18n/locales/zh_CN locales
fi

# `install-deps.sh windows-package`: also NSIS, whose makensis makes the
# Windows installer on Linux (make windows-package).
if [ "${1:-}" = windows-package ]; then
  need_cmd makensis nsis
fi

# `install-deps.sh documents`: also the readers that open the reports the
# writers make (make doc-check): python-docx, LibreOffice without its GUI,
# Chromium (a browser, for the HTML), and poppler's pdftotext, pdffonts and
# pdfinfo.
if [ "${1:-}" = documents ]; then
  need_file /usr/lib/python3/dist-packages/docx/__init__.py python3-docx
  need_cmd soffice libreoffice-writer-nogui
  need_cmd chromium chromium
  need_cmd pdftotext poppler-utils
fi

# `install-deps.sh docs`: also Doxygen, which makes the API reference of the
# public headers (make docs).
if [ "${1:-}" = docs ]; then
  need_cmd doxygen doxygen
fi

# `install-deps.sh font`: also FontForge's Python module, which makes the font of
# the steel-grade symbols from its description (make font, make font-check).
if [ "${1:-}" = font ]; then
  need_file /usr/bin/python3 python3
  compgen -G "/usr/lib/python3/dist-packages/fontforge*.so" >/dev/null || missing+=(python3-fontforge)
fi

# `install-deps.sh package`: also what makes and checks the Debian packages
# (make package, make package-test): dpkg-shlibdeps, from which CPack takes
# the packages' dependencies on the system's libraries, lintian, and the
# desktop entry's and MIME type's tools (gio asks GLib for a file's type).
if [ "${1:-}" = package ]; then
  need_cmd dpkg-shlibdeps dpkg-dev
  need_cmd lintian lintian
  need_cmd desktop-file-validate desktop-file-utils
  need_cmd update-mime-database shared-mime-info
  need_cmd gio libglib2.0-bin
fi

if [ "$(id -u)" -ne 0 ]; then
  SUDO=sudo
else
  SUDO=
fi
if [ ${#missing[@]} -gt 0 ]; then
  echo "install-deps: installing ${missing[*]}"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${missing[@]}"
fi
if [ "${1:-}" = windows ] && ! locale -a 2>/dev/null | grep -qix 'zh_CN.utf8'; then
  echo "install-deps: generating the locale zh_CN.UTF-8"
  $SUDO localedef -i zh_CN -f UTF-8 zh_CN.UTF-8
fi
