#!/usr/bin/env bash
# A short showcase of the zelkora tool on the catalogue texts.
set -euo pipefail
zk=${1:-build/zelkora}

show() {
  printf '\n$ zelkora %s\n' "$*"
  "$zk" "$@" || printf '(exit %d)\n' "$?"
}

echo "Zelkora: the shared component library of the suite, from the command line."
show text 100
show text 52200 --re "0.25%" "0.20%"
show text 51692 --re "柱下"
show text 53218 --re b 2e10 1000000000
show res 41096
show eqres "  自动 " 500
show eqres "hrb400" 32509 --text
show symbols
settings=$(mktemp)
printf '[Zelkora 结构快速设计/Options]\n1cboOpt=²\n8cboOpt=、\n' >"$settings"
echo; echo "# with a settings file that chooses ² and 、, and a decimal comma:"
ZELKORA_SETTINGS=$settings ZELKORA_DECIMAL_SYMBOL=, ZELKORA_GROUPING_SYMBOL=. show symbols
rm -f "$settings"
show text 1000 --lang 100000
show res 99999

echo; echo "# Numbers with units, as the reports print them:"
show cf knd_2
show fmt 2.5 knd_3
show fmt 2.5 knd_3 --fix
show fmtv 0.0123456 3
show fmt 1256.637 mm2d --markup
show fmteq 123.456 knmd
show fmts -0.001 2 --space
show format 1234567.891 Standard
show format -0.004 "0.00;(0.00)"
ZELKORA_DECIMAL_SYMBOL=, ZELKORA_GROUPING_SYMBOL=. show format 1234567.891 Standard

echo; echo "# Formula markup, its plain form and its width:"
show strip "f_ub(a)ub_ ＝ f_ub(ak)ub_ + η_ub(b)ub_·γ(b - 3)"
show width "f_ub(a)ub_ ＝ 1.0"
show split "弯矩设计值 M ＝ 123.456kN·m，剪力设计值 V ＝ 45.6kN，轴力设计值 N ＝ 1200.0kN，偏心距 e_ub(0)ub_ ＝ 102.9mm" "，" --indent 2 --indent-add 4
show cell 3.14159265 10 --spaces 1

echo; echo "# Report headings, equations and tables of the codes:"
show header 钢筋混凝土梁配筋计算 --project 三号楼 --standards 59899,59009 --date 2026-11-25
show label serial 11
show label serial2 101
show label roman 3
show equation "M ＝ 1.2 × 30.5 × 6.0_up(2)up_ / 8 + 1.4 × 20.1 × 6.0_up(2)up_ / 8 + 0.7 × 8.4 × 6.0_up(2)up_ / 8 + 0.6 × 3.2 × 6.0_up(2)up_ / 8 ＝ 318.9kN·m"
show interpolate "8|10|12|14|16;1.0|0.98|0.95|0.92|0.87" 11
show interpolate "8|10|12|14|16;1.0|0.98|0.95|0.92|0.87" 20

echo; echo "# A small report table (columns fitted by their width in code page 936, numbers by tFmt):"
zk_fmt() { "$zk" fmt "$@"; }
show table --widths 6,22,14,14 --align right,left,right,right \
  "序号|项目|设计值|限值" \
  "1|剪力设计值 V|$(zk_fmt 123.456 knd)|$(zk_fmt 150 knd)" \
  "2|钢筋面积 A_ub(s)ub_|$(zk_fmt 1256.637 mm2d)|$(zk_fmt 1017 mm2d)" \
  "3|配筋率|$(zk_fmt 0.0085 percent)|$(zk_fmt 0.002 percent)" \
  "4|裂缝宽度 w_ub(max)ub_|$(zk_fmt 0.1834 mmd_3)|$(zk_fmt 0.3 mmd_3)"

echo; echo "# Reinforcement as it is typed, and a cross-section:"
show rebar "4Φ20"
show slabbar "10@200"
show arith "360*0.9"
show grade HRB400
show diameter --area 1257 --bars 4
show diameter --step 22 1
show barlist "L%%KZ12"
show section T形截面 --B 250 --H 600 --Bf1 800 --Hf1 120

echo; echo "# Checking what an engineer typed (the message box prints its title first):"
show check "S>0" "梁宽 b" "-200" --show
show check "(0~1.0" "折减系数 ψ" "0.85"
show check "15~80" "混凝土保护层厚度 c" "90"
show compare ">=" 2 2 --c1 "n" --c2 "n_ub(min)ub_"
show listcheck 1096 "抗震等级" "二 级"
show gradecheck C30

echo; echo "# A small project data file, saved safely (with a backup copy) and read back:"
project=$(mktemp -d)
zk_abs=$(realpath "$zk")
(
  cd "$project"
  zk=$zk_abs
  printf 'old' >beam.zks
  printf '\n$ zelkora datafile write beam.zks < (five records)\n'
  printf '100\tdB\n2000\t250\n100\tdH\n2000\t600\n7\t混凝土 C30，4\\uE00220\n' |
    "$zk" datafile write beam.zks
  show datafile dump beam.zks
  show datafile verify beam.zks
  printf '\n$ ls\n'; ls
)
rm -rf "$project"
echo; echo "# A form's property grid, headless: a group value refused, then accepted; a value changed (bold):"
grid_script=$(mktemp)
grid_data=$(mktemp -u).zks
printf '%s\n' "enter 17" "type 2,16,3" "leave" "type 3,20" "leave" "enter 8" "type 300" "leave" >"$grid_script"
show grid clsBeamSteel --script "$grid_script" --save "$grid_data"
echo; echo "# The values back from the data file; the folded heading opened, Enter on the last row:"
printf '%s\n' "click 26 1" "enter 31" "key 13" >"$grid_script"
show grid clsbeamsteel --load "$grid_data" --script "$grid_script"
echo; echo "# Items that do not apply take their heading along; defaults answered with cancel, then yes:"
printf '%s\n' "hide 4 5 19" "enter 8" "type 300" "leave" "defaults cancel" >"$grid_script"
show grid clsBeamSteel --script "$grid_script"
printf '%s\n' "enter 8" "type 300" "leave" "defaults yes" >"$grid_script"
show grid clsBeamSteel --script "$grid_script"
rm -f "$grid_script" "$grid_data"
echo; echo "# A report's lines as a document: as text, then as Word, RTF and HTML files (the same bytes on every system):"
report_dir=$(mktemp -d)
cp "$(dirname "$0")/../src/zelkora/document/testdata/sample_report.txt" "$report_dir/j1.txt"
(
  cd "$report_dir"
  zk=$zk_abs
  show report j1.txt --to text - --program 独立基础计算 --checked-by 李工
  for format in docx rtf html; do
    show report j1.txt --to "$format" "j1.$format" --program 独立基础计算
    printf 'sha256 %s\n' "$(sha256sum <"j1.$format" | cut -c1-16)"
  done
)
rm -rf "$report_dir"
