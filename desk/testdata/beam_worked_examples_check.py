#!/usr/bin/env python3
"""Runs the rules script (beam_cases.py) on the inputs of beam_worked_examples.csv and prints,
for every published value, the script's value and the relative difference; a difference
above TOL_PCT (the 1 % the program allows on every non-empty output column) is marked.
Python 3 standard library only."""

import csv
import os

import beam_cases as bc

HERE = os.path.dirname(os.path.abspath(__file__))
INT_COLS = {"concrete", "seismic", "legs", "compression", "d_min", "d_max",
            "through_n", "through_d", "auto_as"}
FLOAT_COLS = {"b", "h", "cover", "as", "m", "v", "t", "s", "ratio"}
TOL_PCT = 1.0
PUBLISHED = ["alpha_s", "xi", "as_flex", "asc", "as_min", "v_lim", "asv_s", "wt", "stirrup_d"]


def main():
    outside = 0
    with open(os.path.join(HERE, "beam_worked_examples.csv"), encoding="utf-8") as f:
        for row in csv.DictReader(f):
            p = {}
            for k in bc.INPUT_COLUMNS:
                v = row[k]
                if k in FLOAT_COLS and v == "":
                    p[k] = None  # only "as" may be empty (as from the bars, by rounds)
                else:
                    p[k] = int(v) if k in INT_COLS else float(v) if k in FLOAT_COLS else v
            res = bc.design(p)
            print(row["case"])
            for k in PUBLISHED:
                if row[k] == "":
                    continue
                pub = float(row[k])
                got = res[k]
                rel = (got - pub) / pub * 100.0 if got is not None and pub else float("nan")
                bad = not abs(rel) <= TOL_PCT
                outside += bad
                print("  %-9s published %-12s script %-14s diff %+.2f %%%s"
                      % (k, row[k], bc.fmt(got), rel, "   OUTSIDE 1 %" if bad else ""))
            print("  bars: tension %s, compression %s, stirrup d %s"
                  % (res["tension_bars"], res["compression_bars"], res["stirrup_d"]))
            if res["outcome"] == "doubly":
                print("  a's used %s (compression bars' centroid %s, asc_ok %s), a_actual %s, as_ok %s, rounds %d"
                      % (bc.fmt(res["asc_at"]), bc.fmt(res["a_c_actual"]), bc.fmt(res["asc_ok"]),
                         bc.fmt(res["a_actual"]), bc.fmt(res["as_ok"]), res["rounds"]))
    print("%d published value(s) outside %g %%" % (outside, TOL_PCT))


if __name__ == "__main__":
    main()
