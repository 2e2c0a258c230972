#!/usr/bin/env bash
# The desktop program's script (win32desk/testdata/three_programs.txt) run
# by the Linux program (Qt, offscreen) and by zelkora-desk.exe under Wine
# (the null driver) in a Western and a Chinese code page, each in a folder
# and with settings and suite files of its own: the project files, the
# reports and the lines printed (the boxes met) must be the same, byte for
# byte.
#
#   scripts/windows-desk-test.sh [WINDOWS_BUILD [LINUX_BUILD]]
# Uses WINE, WINESERVER and WINEPREFIX when set (scripts/windows-test.sh).
set -euo pipefail
win=$(realpath "${1:-build-windows}")
linux=$(realpath "${2:-build}")
here=$(dirname "$(realpath "$0")")
script="$here/../win32desk/testdata/three_programs.txt"

WINE=${WINE:-/usr/lib/wine/wine64}
[ -x "$WINE" ] || WINE=$(command -v wine64 || command -v wine)
export WINEPREFIX=${WINEPREFIX:-$win/wine} WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
WINE=$WINE "$here/wine-prefix.sh" "$WINEPREFIX" null

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/linux" "$work/bin"
# The program's folder holds the suite's files it writes (ZK_Form.INI, the
# history): a copy of its own starts with none, as the Linux run does.
(cd "$work/linux" && LANG=C.UTF-8 ZELKORA_SETTINGS="$work/linux.ini" QT_QPA_PLATFORM=offscreen \
  "$linux/zelkora-desk" --script "$script" --quit >lines.out 2>"$work/linux.err") ||
  { echo "windows-desk-test: the Linux program failed:"; cat "$work/linux.err"; exit 1; }
files=$(cd "$work/linux" && ls)

# zelkora-desk.exe with a Western system code page at 96 dpi and with a
# Chinese one at 144 dpi (150 %): neither changes a byte written.
set_dpi() {
  "$WINE" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1
}
trap 'set_dpi 96; rm -rf "$work"' EXIT
for run_as in C.UTF-8:96 zh_CN.UTF-8:144; do
  lang=${run_as%:*} dpi=${run_as#*:}
  set_dpi "$dpi"
  run="$work/windows-$lang"
  mkdir "$run" "$work/bin-$lang"
  cp "$win/zelkora-desk.exe" "$work/bin-$lang/"
  (cd "$run" && LANG=$lang ZELKORA_SETTINGS="$work/windows-$lang.ini" \
    "$WINE" "$work/bin-$lang/zelkora-desk.exe" --script "$script" --quit >lines.out \
    2>"$work/windows.err") ||
    { echo "windows-desk-test: zelkora-desk.exe failed (LANG=$lang, $dpi dpi):"; cat "$work/windows.err"; exit 1; }
  if [ "$files" != "$(cd "$run" && ls)" ]; then
    echo "windows-desk-test: the programs wrote different files (LANG=$lang):"
    diff <(echo "$files") <(cd "$run" && ls) || true
    exit 1
  fi
  if ! diff -r "$work/linux" "$run" >"$work/desk.diff"; then
    echo "windows-desk-test: zelkora-desk.exe wrote other bytes than the Linux program (LANG=$lang):"
    head -40 "$work/desk.diff"
    exit 1
  fi
  echo "zelkora-desk.exe under Wine, LANG=$lang at $dpi dpi: the same $(echo "$files" | wc -l) files as the" \
    "Linux program ($(wc -l <"$work/linux/lines.out") lines printed)"
done
set_dpi 96

# The print preview on a calculated beam report: the step prints its count
# of pages (one at least) and closes it, and the form, its owner, takes the
# next step again.
mkdir "$work/bin-preview" && cp "$win/zelkora-desk.exe" "$work/bin-preview/"
(cd "$work" && LANG=C.UTF-8 ZELKORA_SETTINGS="$work/preview.ini" "$WINE" "$work/bin-preview/zelkora-desk.exe" \
  --script "$(realpath "$here/../win32desk/testdata/preview.txt")" --quit >preview.out 2>&1) ||
  { echo "windows-desk-test: the preview script failed:"; cat "$work/preview.out"; exit 1; }
grep -qE '^print preview: [1-9][0-9]* pages \| closed$' "$work/preview.out" && [ -s "$work/after-preview.txt" ] ||
  { echo "windows-desk-test: no print preview, or the form stayed shut after it:"; cat "$work/preview.out"; exit 1; }
echo "zelkora-desk.exe: $(grep '^print preview' "$work/preview.out")"

# The random tester's kept scripts, each run by zelkora-desk.exe with the
# tester's checks after every step and the headless form taking the same
# steps: every rule holds.
held=0 failed=0
for kept in "$here"/../desk/testdata/monkey/*.txt; do
  name=$(basename "$kept" .txt)
  if (cd "$work" && LANG=C.UTF-8 "$WINE" "$work/bin-C.UTF-8/zelkora-desk.exe" \
    --script "$(realpath "$kept")" --check --host both >"$work/check.out" 2>&1); then
    held=$((held + 1))
  else
    echo "windows-desk-test: the kept script $name breaks a rule on Windows:"
    cat "$work/check.out"
    failed=$((failed + 1))
  fi
done
echo "zelkora-desk.exe --check --host both: $held kept scripts hold every rule, $failed do not"
[ "$failed" -eq 0 ]
