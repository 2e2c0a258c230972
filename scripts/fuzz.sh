#!/usr/bin/env bash
# Runs fuzz harnesses built in a folder, each for a time or a number of runs:
#   scripts/fuzz.sh BUILD SECONDS [RUNS] [HARNESS...]
# Each starts from its seed corpus (fuzz/corpus/NAME, copied: what the fuzzer
# finds goes to BUILD/corpus/NAME, not into the sources) with its dictionary
# (fuzz/NAME.dict) where there is one. A finding stops the run; its input is
# left in BUILD/findings/. Prints a line per harness: runs made and the time.
set -euo pipefail
build=$1 seconds=$2 runs=${3:-0}
shift 3 || shift $#
here="$(cd "$(dirname "$0")/.." && pwd)"
harnesses=("$@")
if [ ${#harnesses[@]} -eq 0 ]; then
  for f in "$build"/*_fuzz; do harnesses+=("$(basename "$f")"); done
fi
mkdir -p "$build/findings"
for name in "${harnesses[@]}"; do
  corpus="$build/corpus/$name"
  mkdir -p "$corpus"
  if [ -d "$here/fuzz/corpus/$name" ]; then cp -n "$here/fuzz/corpus/$name"/* "$corpus"/ 2>/dev/null || true; fi
  args=(-max_total_time="$seconds" -artifact_prefix="$build/findings/$name-" -print_final_stats=1)
  [ "$runs" -gt 0 ] && args+=(-runs="$runs")
  [ -f "$here/fuzz/$name.dict" ] && args+=(-dict="$here/fuzz/$name.dict")
  log="$build/$name.log"
  if "$build/$name" "${args[@]}" "$corpus" >"$log" 2>&1; then
    made=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo "?")
    took=$(grep -o 'Done [0-9]* runs in [0-9]* second' "$log" | grep -o 'in [0-9]*' | grep -o '[0-9]*' || echo "?")
    echo "$name: no finding in $made runs, ${took} s"
  else
    echo "$name: FINDING (see $log and $build/findings/)"
    tail -30 "$log"
    exit 1
  fi
done
