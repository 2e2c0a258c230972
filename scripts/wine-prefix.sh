#!/usr/bin/env bash
# Prepares a Wine prefix for the Windows build's programs, once:
#   null  no display: the null graphics driver, on which windows are still
#         made and their messages flow (the tests, the message boxes);
#   x11   drawing on an X display (Xvfb for screenshots).
# Either way the Chinese faces the suite's forms ask for ("宋体", "SimSun",
# "微软雅黑", ...) are drawn in WenQuanYi Micro Hei (fonts-wqy-microhei).
#
#   scripts/wine-prefix.sh PREFIX null|x11
# Uses WINE and WINESERVER when set.
set -euo pipefail
prefix=$1 driver=${2:-null}
WINE=${WINE:-/usr/lib/wine/wine64}
[ -x "$WINE" ] || WINE=$(command -v wine64 || command -v wine)
WINESERVER=${WINESERVER:-$(dirname "$WINE")/wineserver64}
[ -x "$WINESERVER" ] || WINESERVER=$(command -v wineserver)
export WINEPREFIX=$prefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
ready="$prefix/.zelkora-ready-$driver"
[ -f "$ready" ] && exit 0

echo "wine-prefix: preparing $prefix ($driver)"
LANG=C.UTF-8 "$WINE" wineboot --init >/dev/null 2>&1 || true
reg=$(mktemp --suffix=.reg)
trap 'rm -f "$reg"' EXIT
{
  printf 'Windows Registry Editor Version 5.00\r\n\r\n'
  printf '[HKEY_CURRENT_USER\\Software\\Wine\\Fonts\\Replacements]\r\n'
  for face in 宋体 新宋体 SimSun NSimSun 微软雅黑 "Microsoft YaHei" 黑体 SimHei; do
    printf '"%s"="WenQuanYi Micro Hei"\r\n' "$face"
  done
  if [ "$driver" = null ]; then
    printf '\r\n[HKEY_CURRENT_USER\\Software\\Wine\\Drivers]\r\n"Graphics"="null"\r\n'
  fi
} | iconv -f UTF-8 -t UTF-16LE | { printf '\xff\xfe'; cat; } >"$reg"
# The settings take effect with the next Wine server.
LANG=C.UTF-8 "$WINE" regedit /S "$(winepath -w "$reg" 2>/dev/null || echo "$reg")" >/dev/null 2>&1
"$WINESERVER" -w
touch "$ready"
