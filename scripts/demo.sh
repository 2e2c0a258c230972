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
