#!/usr/bin/python3
"""The load combination form's cases, computed from the codes' text apart from
the program (rules and sources: load_combination_rules.md). Writes
load_combination_cases.csv next to this script.

Each combination is written out as the clause gives it, for the form's one
effect S: G, Q, the wind W in both directions (+SWk, -SWk), the earthquake E
in both directions (+SEhk, -SEhk).
"""
import csv
import os

FIELDS = ["case", "edition", "years", "safety_class", "sgk", "sqk", "swk", "sehk", "gamma_g",
          "gamma_g_fav", "gamma_q", "gamma_eh", "psi_c", "psi_q", "psi_f", "psi_w", "psi_e",
          "psi_we", "seismic", "wind", "fault", "count_fund", "fund_max", "fund_min", "std_max", "std_min",
          "qp_max", "qp_min", "freq_max", "freq_min", "seis_max", "seis_min"]


def gamma_l(years):
    # GB 50009-2012 table 3.2.5 (5: 0.9, 50: 1.0, 100: 1.1), note 1: linear between.
    if years < 5 or years > 100:
        return None
    if years <= 50:
        return 0.9 + (1.0 - 0.9) * (years - 5) / (50 - 5)
    return 1.0 + (1.1 - 1.0) * (years - 50) / (100 - 50)


def fault_of(c):
    gb50009 = c["edition"] == "GB 50009-2012"
    if gamma_l(c["years"]) is None:
        return "years"
    # GB 50009 3.2.4: gamma_G 1.2; gamma_Q 1.4 (1.3 only for an industrial floor's live load,
    # so not with wind). GB 55001-2021: gamma_G 1.3, gamma_Q 1.5.
    least_g = 1.2 if gb50009 else 1.3
    least_q = (1.4 if c["wind"] else 1.3) if gb50009 else 1.5
    if c["gamma_g"] < least_g:
        return "gamma_g"
    if c["gamma_q"] < least_q:
        return "gamma_q"
    if not 0 <= c["gamma_g_fav"] <= 1.0:  # 3.2.4-1-2: not above 1.0
        return "gamma_g_fav"
    if c["seismic"] and c["gamma_eh"] < 1.3:  # GB 50011 table 5.4.1
        return "gamma_eh"
    return ""


def compute(c):
    out = dict(c)
    out["fault"] = fault_of(c)
    if out["fault"]:
        return out
    G, Q, W, E = c["sgk"], c["sqk"], c["swk"], c["sehk"]
    gq, gl, g0 = c["gamma_q"], gamma_l(c["years"]), {1: 1.1, 2: 1.0, 3: 0.9}[c["safety_class"]]
    pc, pq, pw, pe, pwe = c["psi_c"], c["psi_q"], c["psi_w"], c["psi_e"], c["psi_we"]
    winds = [+W, -W] if c["wind"] else []
    # A favourable permanent load: another action of the combination's
    # opposite in sign (3.2.4-1-2).
    favourable = any(G * x < 0 for x in [Q] + winds)
    gammas_g = [c["gamma_g"]] + ([c["gamma_g_fav"]] if favourable else [])

    # The variable loads that act together: Q present or not (a favourable
    # variable load is left out), the wind absent or in one direction.
    # (value, gamma_L, psi_c, psi_q, psi_f) of each; the wind's gamma_L is 1.0
    # (3.2.5-2), its psi_q 0 and psi_f 0.4 (8.1.4).
    sets = []
    for with_q in (False, True):
        for w in [None] + winds:
            s = [(Q, gl, pc, pq, c["psi_f"])] if with_q else []
            if w is not None:
                s.append((w, 1.0, pw, 0.0, 0.4))
            sets.append(s)

    # Fundamental: GB 50009 3.2.3-1, each variable load leading in turn.
    fund = []
    for s in sets:
        for gg in gammas_g:
            if not s:
                fund.append(gg * G)
            for i, (v, l, _, _, _) in enumerate(s):
                fund.append(gg * G + gq * l * v + sum(gq * l2 * p2 * v2 for j, (v2, l2, p2, _, _) in enumerate(s) if j != i))
        if c["edition"] == "GB 50009-2012":  # 3.2.3-2 with 1.35 (3.2.4)
            fund.append(1.35 * G + sum(gq * l * p * v for (v, l, p, _, _) in s))
    fund = [g0 * x for x in fund]  # gamma_0 S_d (3.2.2)
    out["count_fund"] = len(fund)
    out["fund_max"], out["fund_min"] = max(fund), min(fund)

    # Standard 3.2.8 and quasi-permanent 3.2.10.
    std = []
    for s in sets:
        if not s:
            std.append(G)
        for i, (v, _, _, _, _) in enumerate(s):
            std.append(G + v + sum(p2 * v2 for j, (v2, _, p2, _, _) in enumerate(s) if j != i))
    out["std_max"], out["std_min"] = max(std), min(std)
    qp = [G + sum(q * v for (v, _, _, q, _) in s) for s in sets]
    out["qp_max"], out["qp_min"] = max(qp), min(qp)
    # Frequent 3.2.9: one variable load at its frequent value, the others at
    # their quasi-permanent values.
    freq = []
    for s in sets:
        if not s:
            freq.append(G)
        for i, (v, _, _, _, f) in enumerate(s):
            freq.append(G + f * v + sum(q2 * v2 for j, (v2, _, _, q2, _) in enumerate(s) if j != i))
    out["freq_max"], out["freq_min"] = max(freq), min(freq)

    # Seismic GB 50011 5.4.1: 1.2 S_GE (favourable: gamma_G') + gamma_Eh S_Ehk
    # + psi_w 1.4 S_wk, S_GE = G + psi_E Q (5.1.3); no gamma_0.
    if c["seismic"]:
        seis = []
        sge = G + pe * Q
        wind_terms = [pwe * 1.4 * w for w in winds] if (c["wind"] and pwe > 0) else [0.0]
        # The gravity load favourable: the earthquake or the wind against it
        # (5.4.1: gamma_G not above 1.0).
        favourable_e = any(sge * x < 0 for x in [E, -E] + [w for w in winds if pwe > 0])
        for e in (E, -E):
            for wt in wind_terms:
                for gg in [1.2] + ([c["gamma_g_fav"]] if favourable_e else []):
                    seis.append(gg * sge + c["gamma_eh"] * e + wt)
        out["seis_max"], out["seis_min"] = max(seis), min(seis)
    return out


def case(name, **kw):
    c = dict(edition="GB 55001-2021", years=50, safety_class=2, sgk=100.0, sqk=50.0, swk=0.0,
             sehk=0.0, gamma_g=1.3, gamma_g_fav=1.0, gamma_q=1.5, gamma_eh=1.3, psi_c=0.7,
             psi_q=0.4, psi_f=0.5, psi_w=0.6, psi_e=0.5, psi_we=0.0, seismic=False, wind=False)
    c.update(kw)
    c["case"] = name
    return c


CASES = [
    case("55001 G+Q"),
    case("55001 class 1", safety_class=1),
    case("55001 class 3 5 years", safety_class=3, years=5),
    case("55001 100 years", years=100),
    case("55001 25 years interpolated", years=25),
    case("55001 wind", wind=True, swk=40.0),
    case("55001 wind governs uplift", wind=True, sgk=20.0, sqk=5.0, swk=60.0, psi_c=0.7),
    case("55001 favourable live load against", sgk=80.0, sqk=-30.0),
    case("55001 seismic", seismic=True, sehk=70.0),
    case("55001 seismic wind psi_we", seismic=True, wind=True, sehk=70.0, swk=30.0, psi_we=0.2),
    case("55001 gamma_eh 1.4 fav 0.9", seismic=True, sehk=200.0, gamma_eh=1.4, gamma_g_fav=0.9),
    case("50009 G+Q", edition="GB 50009-2012", gamma_g=1.2, gamma_q=1.4),
    case("50009 permanent governs", edition="GB 50009-2012", gamma_g=1.2, gamma_q=1.4, sgk=300.0, sqk=40.0),
    case("50009 gamma_q 1.3 no wind", edition="GB 50009-2012", gamma_g=1.2, gamma_q=1.3, sqk=120.0),
    case("50009 wind", edition="GB 50009-2012", gamma_g=1.2, gamma_q=1.4, wind=True, swk=35.0),
    case("50009 wind both signs", edition="GB 50009-2012", gamma_g=1.2, gamma_q=1.4, wind=True,
         sgk=30.0, sqk=10.0, swk=80.0),
    case("50009 seismic", edition="GB 50009-2012", gamma_g=1.2, gamma_q=1.4, seismic=True, sehk=90.0,
         psi_e=0.8),
    case("50009 all", edition="GB 50009-2012", gamma_g=1.35, gamma_q=1.4, wind=True, seismic=True,
         swk=25.0, sehk=60.0, psi_we=0.2, safety_class=1, years=100),
    case("50009 negative moment", edition="GB 50009-2012", gamma_g=1.2, gamma_q=1.4, sgk=-120.0,
         sqk=-45.0, wind=True, swk=20.0),
    case("55001 psi zero", psi_c=0.0, psi_q=0.0, wind=True, swk=10.0, psi_w=0.0),
    case("55001 zero loads", sgk=0.0, sqk=0.0),
    case("fault 55001 gamma_g 1.2", gamma_g=1.2),
    case("fault 55001 gamma_q 1.4", gamma_q=1.4),
    case("fault 50009 gamma_q 1.3 with wind", edition="GB 50009-2012", gamma_g=1.2, gamma_q=1.3,
         wind=True, swk=10.0),
    case("fault gamma_g_fav above 1", gamma_g_fav=1.1),
    case("fault gamma_eh 1.2", seismic=True, sehk=10.0, gamma_eh=1.2),
    case("fault 150 years", years=150),
]


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, "load_combination_cases.csv"), "w", newline="", encoding="utf-8") as f:
        w = csv.DictWriter(f, fieldnames=FIELDS, lineterminator="\n")
        w.writeheader()
        for c in CASES:
            row = compute(c)
            for k, v in row.items():
                if isinstance(v, bool):
                    row[k] = "1" if v else "0"
                elif isinstance(v, float):
                    row[k] = repr(round(v, 10))
            w.writerow({k: row.get(k, "") for k in FIELDS})


if __name__ == "__main__":
    main()
