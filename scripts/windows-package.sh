#!/usr/bin/env bash
# The Windows build's programs as a zip and an installer (Debian's nsis:
# makensis runs on Linux): zelkora.exe, zelkora-desk.exe, a readme and the
# licences of the runtimes linked into them, in WINDOWS_BUILD/package/.
# Run by `make windows-package` (the target windows_package passes the
# version, CMake's PROJECT_VERSION).
#
#   scripts/windows-package.sh WINDOWS_BUILD VERSION
#
# The programs need nothing beside them: they are linked statically (the
# system's DLLs only) and carry the resources/ folder compiled in.
set -euo pipefail
win=$(realpath "$1")
version=$2
here=$(dirname "$(realpath "$0")")
source_dir=$(dirname "$here")
out="$win/package"
name="zelkora-$version-windows-x64"
stage="$out/$name"

rm -rf "$stage" "$out/$name.zip" "$out/$name-setup.exe"
mkdir -p "$stage/licenses"
cp "$win/zelkora.exe" "$win/zelkora-desk.exe" "$stage/"
x86_64-w64-mingw32-strip "$stage/zelkora.exe" "$stage/zelkora-desk.exe"

# Text files with Windows' line ends and a byte-order mark, so that every
# Notepad reads them as UTF-8; the readme names the version.
crlf() { printf '\xef\xbb\xbf'; sed -e 's/\r$//' -e 's/$/\r/' "$1"; }
sed "s/@VERSION@/$version/g" "$source_dir/packaging/windows/readme.txt" | crlf /dev/stdin \
  >"$stage/readme.txt"
# The licences of what is linked in, as Debian states them for the packages
# the programs were linked from: zlib, the MinGW-w64 runtime with
# winpthreads, GCC's runtime (libstdc++, libgcc).
crlf /usr/share/doc/libz-mingw-w64-dev/copyright >"$stage/licenses/zlib.txt"
crlf /usr/share/doc/mingw-w64-x86-64-dev/copyright >"$stage/licenses/mingw-w64-runtime.txt"
crlf /usr/share/doc/gcc-mingw-w64-x86-64-posix-runtime/copyright >"$stage/licenses/gcc-runtime.txt"

# Only the system's DLLs: a DLL of the toolchain would have to be shipped.
for exe in zelkora.exe zelkora-desk.exe; do
  other=$(x86_64-w64-mingw32-objdump -p "$stage/$exe" | sed -n 's/^\s*DLL Name: //p' |
    grep -viE '^(advapi32|comctl32|comdlg32|gdi32|kernel32|msvcrt|ole32|oleaut32|shell32|user32|windowscodecs|hhctrl)\.(dll|ocx)$' || true)
  if [ -n "$other" ]; then
    echo "windows-package: $exe needs DLLs that are not the system's: $other"
    exit 1
  fi
done

# The desktop program shows its own icon: an icon group (resource type 14)
# in its resources.
if ! x86_64-w64-mingw32-objdump -p "$stage/zelkora-desk.exe" | grep -q 'Entry: ID: 0x00000e,'; then
  echo "windows-package: zelkora-desk.exe carries no icon"
  exit 1
fi

(cd "$out" && cmake -E tar cf "$name.zip" --format=zip "$name")
makensis -V2 -INPUTCHARSET UTF8 -DVERSION="$version" -DSTAGE="$stage" \
  -DOUTFILE="$out/$name-setup.exe" "$source_dir/packaging/windows/zelkora.nsi"
ls -l "$out/$name.zip" "$out/$name-setup.exe" | awk '{print $5, $NF}'
