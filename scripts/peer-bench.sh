#!/usr/bin/env bash
# The Qt grid beside wxPropertyGrid: desk_bench (on the xcb plugin) and
# grid_peer_bench on one X display, taken in turns, then the pairs of the
# four operations with the ratio Qt / wx (below 1: the Qt grid is faster).
# Run it under Xvfb: `xvfb-run -a scripts/peer-bench.sh build` (make
# bench-peer does). REPS: repetitions of each benchmark (their median is
# compared), ROUNDS: turns of the two programs.
set -euo pipefail

build=${1:-build}
reps=${REPS:-5}
rounds=${ROUNDS:-2}
ops='Build500Rows|LeaveCycle|FilterHalf500Rows|CollapseExpandAll500Rows|FilterKeystroke500Rows'
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

run() {  # program, csv file, extra arguments
  "$1" "${@:3}" --benchmark_filter="BM_($ops)(<QtForm>)?\$" \
    --benchmark_repetitions="$reps" --benchmark_report_aggregates_only=true \
    --benchmark_min_time=0.2 --benchmark_format=csv 2>/dev/null |
    grep '_median"\?,' >>"$2" || true
}
for ((round = 1; round <= rounds; ++round)); do
  echo "peer-bench: round $round of $rounds" >&2
  run "$build/desk_bench" "$out/qt.csv" -platform xcb
  run "$build/grid_peer_bench" "$out/wx.csv"
done

# name (without the form), time in ms; the median of the rounds' medians.
awk -F, -v qt="$out/qt.csv" -v wx="$out/wx.csv" '
  function ms(t, unit) { return unit == "ns" ? t / 1e6 : unit == "us" ? t / 1e3 : unit == "s" ? t * 1e3 : t }
  function op(name) { gsub(/"/, "", name); sub(/^BM_/, "", name); sub(/<QtForm>/, "", name); sub(/_median$/, "", name); return name }
  FILENAME == qt { q[op($1)] = q[op($1)] " " ms($3, $5) }
  FILENAME == wx { w[op($1)] = w[op($1)] " " ms($3, $5) }
  function median(list,   n, v, i, j, t) {
    n = split(list, v, " ")
    for (i = 1; i <= n; ++i) for (j = i + 1; j <= n; ++j) if (v[j] < v[i]) { t = v[i]; v[i] = v[j]; v[j] = t }
    return n % 2 ? v[(n + 1) / 2] : (v[n / 2] + v[n / 2 + 1]) / 2
  }
  END {
    printf "%-26s %12s %12s %10s\n", "operation (500 rows)", "Qt ms", "wx ms", "Qt / wx"
    split("Build500Rows LeaveCycle FilterHalf500Rows CollapseExpandAll500Rows FilterKeystroke500Rows", order, " ")
    for (k = 1; k <= 5; ++k) {
      name = order[k]
      if (!(name in q) || !(name in w)) { printf "%-26s %12s\n", name, "missing"; continue }
      a = median(q[name]); b = median(w[name])
      printf "%-26s %12.3f %12.3f %10.2f\n", name, a, b, (b > 0 ? a / b : 0)
    }
  }' "$out/qt.csv" "$out/wx.csv"
