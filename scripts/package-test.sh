#!/usr/bin/env bash
# The Debian packages of `make package` (BUILD/deb), checked as a user's
# machine would meet them (make package-test):
#  - each package holds the files it should and none of the other's;
#  - lintian finds no error (its warnings and notes are printed);
#  - unpacked with dpkg-deb -x into a scratch root (no root rights needed),
#    the programs run from there in an empty environment: the tool's help
#    (every command in its manual page) and demo; zelkora-desk offscreen
#    saves a project and its report from a script, then opens that project
#    given on its command line, as a double-click does, to the same report;
#    the project file begins with the MIME type's magic;
#  - GLib takes the saved project, with its extension and without, for the
#    package's MIME type, which the desktop entry opens; the CMake package of
#    libzelkora-dev builds and runs examples/beam_check.
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
source_dir=$(cd "$(dirname "$0")/.." && pwd)
fail() {
  echo "package-test: $*" >&2
  exit 1
}
shopt -s nullglob
zk=("$build"/deb/zelkora_*.deb)
dev=("$build"/deb/libzelkora-dev_*.deb)
[ ${#zk[@]} -eq 1 ] && [ ${#dev[@]} -eq 1 ] || fail "expected one zelkora and one libzelkora-dev package in $build/deb"
zk=${zk[0]} dev=${dev[0]}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

echo "== Contents"
ls -l "$zk" "$dev" | awk '{print "  " $5 " bytes  " $9}'
contents() { dpkg-deb --contents "$1" | awk '{print $6}' | sed 's|^\./|/|'; }
contents "$zk" >"$scratch/zk.list"
contents "$dev" >"$scratch/dev.list"
expect() {
  local list=$1
  shift
  for path in "$@"; do
    grep -qx -- "$path" "$scratch/$list.list" || fail "$list package lacks $path"
  done
}
expect zk /usr/bin/zelkora /usr/bin/zelkora-desk \
  /usr/share/applications/zelkora-desk.desktop /usr/share/mime/packages/zelkora.xml \
  /usr/share/icons/hicolor/scalable/apps/zelkora.svg \
  /usr/share/icons/hicolor/48x48/apps/zelkora.png \
  /usr/share/icons/hicolor/128x128/apps/zelkora.png \
  /usr/share/icons/hicolor/256x256/apps/zelkora.png \
  /usr/share/man/man1/zelkora.1.gz /usr/share/man/man1/zelkora-desk.1.gz \
  /usr/share/doc/zelkora/copyright /usr/share/doc/zelkora/changelog.Debian.gz
libdir=$(grep -o '^/usr/lib/[^/]*/libzelkora\.a$' "$scratch/dev.list" | xargs -r dirname)
[ -n "$libdir" ] || fail "libzelkora-dev lacks libzelkora.a"
expect dev "$libdir/libzelkora_qt.a" "$libdir/cmake/zelkora/zelkoraConfig.cmake" \
  /usr/include/zelkora/frame/cls_character.h /usr/include/zelkora/platform/qt/qt_controls.h \
  /usr/share/zelkora/ZK_PROMENU.INI /usr/share/zelkora/layouts/clsBeamSteel.txt \
  /usr/share/doc/libzelkora-dev/copyright /usr/share/doc/libzelkora-dev/changelog.Debian.gz
! grep -E '^/usr/(include|lib|share/zelkora)/.' "$scratch/zk.list" || fail "zelkora holds development files"
! grep -E '^/usr/(bin|share/man|share/applications)/.' "$scratch/dev.list" || fail "libzelkora-dev holds programs"
dpkg-deb -f "$zk" Depends | grep -q 'libqt6widgets6' || fail "zelkora does not depend on Qt: $(dpkg-deb -f "$zk" Depends)"
echo "  zelkora depends on: $(dpkg-deb -f "$zk" Depends)"

echo "== lintian"
lintian --fail-on error --tag-display-limit 0 "$zk" "$dev" | sed 's/^/  /' ||
  fail "lintian reports errors"

echo "== The installed programs"
root=$scratch/root
dpkg-deb -x "$zk" "$root"
dpkg-deb -x "$dev" "$root"
! ldd "$root/usr/bin/zelkora-desk" | grep 'not found' || fail "zelkora-desk lacks libraries"
mkdir -p "$scratch/home" "$scratch/run" "$scratch/work"
chmod 700 "$scratch/run"
clean() {
  env -i HOME="$scratch/home" XDG_RUNTIME_DIR="$scratch/run" PATH=/usr/bin:/bin LANG=C.UTF-8 "$@"
}
clean "$root/usr/bin/zelkora" --help >"$scratch/help.txt"
zcat "$root/usr/share/man/man1/zelkora.1.gz" >"$scratch/zelkora.1"
commands=$(sed -n 's/^  \([a-z-]*\).*/\1/p' "$scratch/help.txt")
[ "$(wc -w <<<"$commands")" -gt 30 ] || fail "zelkora --help lists too few commands"
for command in $commands; do
  grep -qF "\\fB${command//-/\\-}\\fR" "$scratch/zelkora.1" || fail "zelkora.1 lacks the command $command"
done
clean "$root/usr/bin/zelkora" demo >"$scratch/demo.txt"
grep -q 'saved yes, loaded yes, values identical' "$scratch/demo.txt" || fail "zelkora demo: $(cat "$scratch/demo.txt")"
echo "  zelkora --help and demo ran ($(wc -w <<<"$commands") commands, all in zelkora.1)"
clean "$root/usr/bin/zelkora-desk" --help | grep -q '^usage: zelkora-desk' || fail "zelkora-desk --help"

cd "$scratch/work"
cat >first.txt <<'EOF'
menu 基本构件
menu 梁配筋
edit 10 300
calculate
save beam.zks
report beam.txt
EOF
printf 'calculate\nreport beam-opened.txt\n' >opened.txt
desk() { clean QT_QPA_PLATFORM=offscreen "$root/usr/bin/zelkora-desk" "$@"; }
desk --script first.txt --quit >first.out 2>&1 || fail "zelkora-desk: $(cat first.out)"
desk "$scratch/work/beam.zks" --script opened.txt --quit >opened.out 2>&1 ||
  fail "zelkora-desk with a project: $(cat opened.out)"
grep -q '梁配筋计算' beam.txt || fail "the report lacks its title"
cmp -s beam.txt beam-opened.txt || fail "the project opened from the command line gives another report"
! grep -q '^message:' first.out opened.out || fail "zelkora-desk showed a message: $(cat first.out opened.out)"
magic=$(head -c 10 beam.zks | od -An -tx1 | tr -d ' \n')
[ "$magic" = 000000000000c6000000 ] || fail "beam.zks begins with $magic, not the MIME type's magic"
echo "  zelkora-desk saved beam.zks and its report, and opened it from the command line to the same report"

echo "== Desktop integration"
# The MIME database of the package alone, asked by GLib (what file managers
# ask) for the type of the saved project, with its extension and without.
mkdir -p "$scratch/data" "$scratch/data-home"
cp -r "$root/usr/share/mime" "$scratch/data/mime"
update-mime-database "$scratch/data/mime" >/dev/null 2>&1 || fail "update-mime-database failed"
cp "$scratch/work/beam.zks" "$scratch/work/beam-without-extension"
for file in beam.zks beam-without-extension; do
  type=$(XDG_DATA_DIRS="$scratch/data" XDG_DATA_HOME="$scratch/data-home" \
    gio info -a standard::content-type "$scratch/work/$file" | sed -n 's/.*content-type: //p')
  [ "$type" = application/x-zelkora-project ] || fail "$file is taken for $type"
done
grep -qx 'MimeType=application/x-zelkora-project;' "$root/usr/share/applications/zelkora-desk.desktop" ||
  fail "the desktop entry does not open the MIME type"
grep -qx 'Exec=zelkora-desk %f' "$root/usr/share/applications/zelkora-desk.desktop" ||
  fail "the desktop entry does not pass the file"
if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$root/usr/share/applications/zelkora-desk.desktop"
fi
echo "  the saved project is application/x-zelkora-project by its name and by its magic;"
echo "  the desktop entry opens that type"

echo "== The CMake package of libzelkora-dev"
cmake -S "$source_dir/examples/beam_check" -B "$scratch/beam_check" -DCMAKE_PREFIX_PATH="$root/usr" \
  -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$scratch/beam_check" -j2 >/dev/null
"$scratch/beam_check/beam_check" 250 500 C30 HRB400 180 | grep -q '选用 3Φ25' ||
  fail "beam_check against the package"
echo "  examples/beam_check built against it and ran"
echo "package-test: passed"
