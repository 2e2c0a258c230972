#!/usr/bin/env bash
# Runs the Windows build under Wine: the test suites zelkora_tests.exe,
# zelkora_program_tests.exe (the programs' layer) and
# zelkora_win32gui_tests.exe (the native controls) with a Western system code
# page (LANG=C.UTF-8) and a Chinese one (LANG=zh_CN.UTF-8); then the tool's
# examples (`zelkora demo` and scripts/demo.sh) through zelkora.exe, whose
# output must be byte for byte the output of the Linux build; last the
# desktop program, zelkora-desk.exe, whose script must write the Linux
# program's files (windows-desk-test.sh).
#
#   scripts/windows-test.sh [WINDOWS_BUILD [LINUX_BUILD]]
set -euo pipefail
win=$(realpath "${1:-build-windows}")
linux=$(realpath "${2:-build}")
here=$(dirname "$(realpath "$0")")

. "$here/wine-env.sh"
# A Wine of the build's own, quiet, without the Mono and Gecko installers.
export WINEPREFIX="$win/wine" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
unset LC_ALL LC_CTYPE LANGUAGE

WINE=$WINE WINESERVER=$WINESERVER "$here/wine-prefix.sh" "$WINEPREFIX" null
# One Wine server for the whole run: a program started while the server of
# the one before is shutting down may fail to start.
"$WINESERVER" -w
"$WINESERVER" -p
trap '"$WINESERVER" -k 2>/dev/null || true' EXIT

status=0
for run in C.UTF-8:1252 zh_CN.UTF-8:936; do
  lang=${run%%:*} code_page=${run##*:}
  for suite in zelkora_tests zelkora_program_tests zelkora_win32gui_tests; do
    echo "== $suite.exe under Wine, LANG=$lang (code page $code_page)"
    if ! LANG=$lang ZELKORA_TEST_CODE_PAGE=$code_page ZELKORA_TEST_BOXES=shown \
      "$WINE" "$win/$suite.exe" --gtest_brief=1; then
      echo "windows-test: $suite failed with LANG=$lang"
      status=1
    fi
  done
done

echo "== the tool's examples: zelkora.exe under Wine against the Linux zelkora"
wrapper="$win/zelkora-wine"
printf '#!/bin/sh\nexec "%s" "%s/zelkora.exe" "$@"\n' "$WINE" "$win" >"$wrapper"
chmod +x "$wrapper"
for zk in "$linux/zelkora" "$wrapper"; do
  out="$win/tool-$(basename "$zk").txt"
  # The names of the example's temporary files differ from run to run.
  { LANG=C.UTF-8 "$zk" demo; LANG=C.UTF-8 "$here/demo.sh" "$zk"; } 2>&1 |
    sed -E 's#/tmp/tmp\.[A-Za-z0-9]+#/tmp/tmp.X#g' >"$out" || true
done
if diff -u "$win/tool-zelkora.txt" "$win/tool-zelkora-wine.txt" >"$win/tool.diff"; then
  echo "the same output, $(wc -l <"$win/tool-zelkora.txt") lines"
else
  echo "windows-test: the tool's output differs on Windows ($win/tool.diff):"
  head -40 "$win/tool.diff"
  status=1
fi

echo "== the desktop program: zelkora-desk.exe under Wine against the Linux zelkora-desk"
WINE=$WINE "$here/windows-desk-test.sh" "$win" "$linux" || status=1
exit $status
