#!/usr/bin/env bash
# The Windows installer (make windows-package) under Wine, in a Wine prefix
# of its own with the Chinese code page: a silent install into the default
# folder; the files, the start-menu entries and the registry keys it should
# make; the installed programs run (zelkora.exe --help and a command,
# zelkora-desk.exe saving a project, then opening it through the command
# the .zks association registered); a silent uninstall refused while
# zelkora-desk.exe runs, then one after which what was installed is gone
# and the user's projects and settings are not.
#
#   scripts/windows-package-test.sh [WINDOWS_BUILD]
set -euo pipefail
win=$(realpath "${1:-build-windows}")
here=$(dirname "$(realpath "$0")")

setups=("$win"/package/zelkora-*-windows-x64-setup.exe)
if [ ${#setups[@]} -ne 1 ] || [ ! -f "${setups[0]}" ]; then
  echo "windows-package-test: not one installer in $win/package (make windows-package)"
  exit 1
fi
setup=${setups[0]}
version=$(basename "$setup" | sed -E 's/^zelkora-(.*)-windows-x64-setup\.exe$/\1/')

. "$here/wine-env.sh"
# A prefix of its own, made once (about a minute); what an earlier run left
# in it is taken away first.
export WINEPREFIX="$win/wine-package" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
unset LC_ALL LC_CTYPE LANGUAGE
WINE=$WINE WINESERVER=$WINESERVER "$here/wine-prefix.sh" "$WINEPREFIX" null
"$WINESERVER" -p &
trap '"$WINESERVER" -k 2>/dev/null || true' EXIT
export LANG=zh_CN.UTF-8

status=0
fail() {
  echo "windows-package-test: $*"
  status=1
}
# A Windows path as the programs print it, and as a Unix path.
win_var() { "$WINE" cmd /c "echo %$1%" | tr -d '\r'; }
unix_path() { winepath -u "$1" 2>/dev/null; }
# The data of a registry value (the key's default with no name), else nothing.
reg_value() {
  local out
  if [ -n "${2:-}" ]; then
    out=$("$WINE" reg query "$1" /v "$2" 2>/dev/null) || return 0
  else
    out=$("$WINE" reg query "$1" /ve 2>/dev/null) || return 0
  fi
  printf '%s\n' "$out" | tr -d '\r' | LC_ALL=C sed -nE 's/^ +[^ ].* +REG_[A-Z_]+ +(.*)$/\1/p' | head -1
}
reg_exists() { "$WINE" reg query "$1" >/dev/null 2>&1; }

instdir_win="$(win_var LOCALAPPDATA)\\Programs\\Zelkora"
instdir=$(unix_path "$instdir_win")
menu=$(unix_path "$(win_var APPDATA)\\Microsoft\\Windows\\Start Menu\\Programs\\Zelkora")
work="$(unix_path "$(win_var USERPROFILE)\\Documents")/zelkora-package-test"
classes='HKCU\Software\Classes'
uninstall='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zelkora'
settings='HKCU\Software\Zelkora 结构快速设计'
rm -rf "$instdir" "$menu" "$work"
for key in "$classes\\.zks" "$classes\\Zelkora.Project" "$uninstall" "$settings"; do
  "$WINE" reg delete "$key" /f >/dev/null 2>&1 || true
done

started=$SECONDS
echo "== $(basename "$setup") /S under Wine (LANG=$LANG)"
"$WINE" "$setup" /S || fail "the installer failed ($?)"
echo "installed in $instdir_win in $((SECONDS - started)) s"

installed=(zelkora-desk.exe zelkora.exe readme.txt uninstall.exe
  licenses/zlib.txt licenses/mingw-w64-runtime.txt licenses/gcc-runtime.txt)
shortcuts=("Zelkora 结构快速设计.lnk" "Zelkora 说明.lnk" "卸载 Zelkora.lnk")
want=$(printf '%s\n' "${installed[@]}" | sort)
have=$(cd "$instdir" 2>/dev/null && find . -type f | sed 's#^\./##' | sort)
[ "$want" = "$have" ] || fail "the installed files are not the ones listed:
$(diff <(echo "$want") <(echo "$have"))"
for link in "${shortcuts[@]}"; do
  [ -f "$menu/$link" ] || fail "no start-menu entry $link"
done

echo "== the registry"
open_command=$(reg_value "$classes\\Zelkora.Project\\shell\\open\\command")
checks=(
  "$classes\\.zks||Zelkora.Project"
  "$classes\\Zelkora.Project\\shell\\open\\command||\"$instdir_win\\zelkora-desk.exe\" \"%1\""
  "$classes\\Zelkora.Project\\DefaultIcon||$instdir_win\\zelkora-desk.exe,0"
  "$uninstall|DisplayVersion|$version"
  "$uninstall|InstallLocation|$instdir_win"
  "$uninstall|UninstallString|\"$instdir_win\\uninstall.exe\""
)
for check in "${checks[@]}"; do
  IFS='|' read -r key name wanted <<<"$check"
  got=$(reg_value "$key" "$name")
  [ "$got" = "$wanted" ] || fail "$key ${name:-(default)}: '$got', not '$wanted'"
done

echo "== the installed programs"
mkdir -p "$work"
cd "$work"
"$WINE" "$instdir/zelkora.exe" --help >help.out 2>&1 || fail "zelkora.exe --help failed"
grep -q "datafile" help.out || fail "zelkora.exe --help does not list the commands"
# zelkora-desk.exe saves a project and its report; the program folder gets
# the suite's files (the history, the user's defaults).
printf '%s\n' "menu 基本构件" "menu 梁配筋" "edit 10 300" "mine save" "calculate" \
  "save 梁.zks" "report saved.txt" "close" >save.txt
"$WINE" "$instdir/zelkora-desk.exe" --script save.txt --quit >save.out 2>&1 ||
  fail "zelkora-desk.exe --script save.txt failed: $(cat save.out)"
[ -s saved.txt ] && [ -s 梁.zks ] || fail "zelkora-desk.exe saved no project or report"
"$WINE" "$instdir/zelkora.exe" datafile verify 梁.zks >verify.out 2>&1 ||
  fail "zelkora.exe datafile verify failed: $(cat verify.out)"
# The project opened as the association opens it, its report the same.
exe=$(sed -nE 's/^"([^"]+)" "%1"$/\1/p' <<<"$open_command")
printf '%s\n' "calculate" "report opened.txt" "close" >open.txt
if [ -z "$exe" ]; then
  fail "the open command is not '\"PROGRAM\" \"%1\"': $open_command"
elif ! "$WINE" "$exe" "$(winepath -w "$work/梁.zks")" --script open.txt --quit >open.out 2>&1; then
  fail "zelkora-desk.exe 梁.zks failed: $(cat open.out)"
elif ! cmp -s saved.txt opened.txt; then
  fail "the project opened from the command line gives another report"
fi
for file in ZK_History.INI ZK_Form.INI; do
  [ -f "$instdir/$file" ] || fail "zelkora-desk.exe wrote no $file in its folder"
done

echo "== uninstall.exe /S"
# The user's files, which the uninstaller must leave: projects in the
# program folder and elsewhere, the suite's files and the settings.
cp 梁.zks "$instdir/项目.zks"
mkdir -p "$instdir/工程"
cp 梁.zks "$instdir/工程/梁.zks"
"$WINE" reg add "$settings\\Options" /v PackageTest /d kept /f >/dev/null
kept=("$instdir/项目.zks" "$instdir/工程/梁.zks" "$instdir/ZK_History.INI" "$instdir/ZK_Form.INI"
  "$work/梁.zks")
# While zelkora-desk.exe runs it cannot be deleted: the uninstaller gives up
# before it removes anything. (The program runs on after its script; the
# question it prints shows that it is up.)
echo "defaults cancel" >running.txt
"$WINE" "$instdir/zelkora-desk.exe" 梁.zks --script running.txt >running.out 2>&1 &
desk=$!
for _ in $(seq 60); do
  grep -q '^message:' running.out || ! kill -0 "$desk" 2>/dev/null && break
  sleep 0.5
done
if "$WINE" "$instdir/uninstall.exe" /S "_?=$instdir_win"; then
  fail "the uninstaller went on while zelkora-desk.exe ran"
fi
[ -f "$instdir/zelkora-desk.exe" ] && [ -f "$instdir/readme.txt" ] && reg_exists "$uninstall" ||
  fail "the uninstaller gave up, but removed files or keys"
"$WINE" taskkill /f /im zelkora-desk.exe >/dev/null 2>&1 || true
wait "$desk" || true

started=$SECONDS
"$WINE" "$instdir/uninstall.exe" /S "_?=$instdir_win" || fail "the uninstaller failed ($?)"
echo "uninstalled in $((SECONDS - started)) s"
# With _?= the uninstaller ran in place, so it is still there.
for file in "${installed[@]}"; do
  [ "$file" = uninstall.exe ] || [ ! -e "$instdir/$file" ] || fail "$file is still installed"
done
[ ! -e "$instdir/licenses" ] || fail "the folder licenses is still there"
[ ! -e "$menu" ] || fail "the start-menu folder is still there: $(ls "$menu")"
for key in "$classes\\.zks" "$classes\\Zelkora.Project" "$uninstall"; do
  ! reg_exists "$key" || fail "the key $key is still there"
done
for file in "${kept[@]}"; do
  [ -f "$file" ] || fail "the uninstaller removed the user's $file"
done
[ "$(reg_value "$settings\\Options" PackageTest)" = kept ] || fail "the uninstaller removed the settings"

if [ $status -eq 0 ]; then
  echo "windows-package-test: installed, run and uninstalled; the user's ${#kept[@]} files" \
    "and settings kept"
fi
exit $status
