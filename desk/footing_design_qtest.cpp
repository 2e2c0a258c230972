// The footing design against cases computed without it: a script of the
// clauses written apart from the program (desk/testdata/footing_cases.py,
// which writes footing_cases.csv) and worked examples of published teaching
// material (footing_worked_examples.csv, each with its source); and the
// report's headings and governing values.
#include <QFile>
#include <QTest>
#include <QTextStream>
#include <cmath>
#include <map>
#include <random>
#include <tuple>

#include "desk/csv_cases.h"
#include "program/footing_design.h"
#include "program/footing_report.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

using platform::qt::to_text;

namespace {

using Row = CsvRow;

double num(const Row& row, const char* key, double fallback) {
  const auto it = row.find(QString::fromLatin1(key));
  bool ok = false;
  const double v = it == row.end() ? 0 : it->second.toDouble(&ok);
  return ok ? v : fallback;
}

std::optional<double> size(const Row& row, const char* key) {
  const auto it = row.find(QString::fromLatin1(key));
  bool ok = false;
  const double v = it == row.end() ? 0 : it->second.toDouble(&ok);
  return ok ? std::optional<double>(v) : std::nullopt;
}

FootingInput input_of(const Row& row) {
  FootingInput in;
  in.concrete = static_cast<int32_t>(num(row, "concrete", 25));
  in.steel = to_text(row.at(QStringLiteral("steel")));
  in.shape = row.at(QStringLiteral("shape")) == QLatin1String("stepped") ? FootingShape::kStepped
                                                                         : FootingShape::kTapered;
  in.bc = num(row, "bc", 0);
  in.hc = num(row, "hc", 0);
  in.e = num(row, "e", 0);
  in.b = size(row, "b");
  in.l = size(row, "l");
  in.h = num(row, "h", 0);
  in.h1 = num(row, "h1", 0);
  in.b1 = size(row, "b1");
  in.l1 = size(row, "l1");
  in.as = num(row, "as", 40);
  in.d = num(row, "d", 0);
  in.fak = num(row, "fak", 0);
  static const std::map<QString, SoilKind> kinds = {
      {"", SoilKind::kGiven},
      {"fill", SoilKind::kFill},
      {"clay", SoilKind::kClay},
      {"gravel_compacted", SoilKind::kCompactedGravel},
      {"coarse_sand", SoilKind::kCoarseSand}};
  in.soil = kinds.at(row.at(QStringLiteral("soil")));
  in.eta_b = num(row, "eta_b", 0);
  in.eta_d = num(row, "eta_d", 1);
  in.gamma = num(row, "gamma", 18);
  in.gamma_m = num(row, "gamma_m", 18);
  in.gamma_g = num(row, "gamma_g", 20);
  in.auto_bars = num(row, "auto_bars", 1) != 0;
  in.d_min = num(row, "d_min", 10);
  in.d_max = num(row, "d_max", 25);
  return in;
}

// "name:S|F:N:Mx:My:Vx:Vy;..."
std::vector<FootingLoad> loads_of(const Row& row) {
  std::vector<FootingLoad> loads;
  for (const QString& one : row.at(QStringLiteral("loads")).split(QLatin1Char(';'))) {
    const QStringList f = one.split(QLatin1Char(':'));
    if (f.size() != 7) continue;
    loads.push_back({to_text(f[0]), f[1] == QLatin1String("S"), false, f[2].toDouble(),
                     f[3].toDouble(), f[4].toDouble(), f[5].toDouble(), f[6].toDouble()});
  }
  return loads;
}

QString bars_key(const BarSet& set, bool chosen) {
  if (!chosen) return QStringLiteral("-");
  return set.found ? QStringLiteral("%1@%2").arg(set.d).arg(set.s) : QStringLiteral("none");
}

std::map<QString, QString> outputs_of(const FootingInput& in, const FootingDesign& d) {
  const auto n = [](double v) { return QString::number(v, 'g', 12); };
  const auto flag = [](bool v) { return v ? QStringLiteral("1") : QStringLiteral("0"); };
  std::map<QString, QString> out;
  if (!d.faults.empty()) return out;
  out["b_used"] = n(d.b);
  out["l_used"] = n(d.l);
  out["fa"] = n(d.fa);
  const FootingPressure& gp = d.pressures[static_cast<std::size_t>(d.governing_p)];
  const FootingPressure& gm = d.pressures[static_cast<std::size_t>(d.governing_pmax)];
  out["p_gov"] = platform::qt::to_qstring(gp.name);
  out["p"] = n(gp.p);
  out["pmax_gov"] = platform::qt::to_qstring(gm.name);
  out["pmax"] = n(gm.pmax);
  out["pmin"] = n(gm.pmin);
  out["contact"] = gm.full_contact ? "full" : "partial";
  out["bearing_ok"] = flag(d.bearing_ok);
  out["bearing_max_ok"] = flag(d.bearing_max_ok);
  for (const PunchingCheck& c : d.punching) {
    const QString tag = c.step ? QStringLiteral("step_") : QStringLiteral("col_");
    out[tag + "punch_load"] = platform::qt::to_qstring(c.load);
    out[tag + "fl"] = n(c.fl);
    out[tag + "cap"] = n(c.capacity);
    out[tag + "ok"] = flag(c.ok);
    if (!c.step) out["col_bhp"] = n(c.beta_hp);
  }
  if (d.shear_checked) {
    out["shear_load"] = platform::qt::to_qstring(d.shear.load);
    out["shear_vs"] = n(d.shear.vs);
    out["shear_cap"] = n(d.shear.capacity);
    out["beta_hs"] = n(d.shear.beta_hs);
    out["shear_ok"] = flag(d.shear.ok);
  }
  const char* dirs[] = {"x", "y"};
  for (int dir = 0; dir < 2; ++dir) {
    const QString s = QString::fromLatin1(dirs[dir]);
    out["m_load_" + s] = platform::qt::to_qstring(d.bending[dir].load);
    out["m_" + s] = n(d.bending[dir].m);
    out["as_" + s] = n(d.bending[dir].as_need);
    out["asmin_" + s] = n(d.as_min[dir]);
    out["astotal_" + s] = n(d.as_total[dir]);
    out["bars_" + s] = bars_key(d.bars[dir], in.auto_bars);
  }
  if (in.shape == FootingShape::kTapered)
    out["edge_ok"] = flag(d.edge_ok);
  else
    out["step_ok"] = flag(d.step_ok);
  return out;
}

// A fault of the script, by the words the design's message holds.
const std::map<QString, QString> kFaultWords = {
    {"e > b/6 for bending", "1/6"},
    {"biaxial partial contact", "双向偏心"},
    {"no fundamental load", "没有基本组合"},
    {"no standard load", "没有标准组合"},
};

void compare(const Row& row, double tolerance) {
  const FootingInput in = input_of(row);
  const FootingDesign d = design_footing(in, loads_of(row));
  const QString name = row.at(QStringLiteral("case"));
  const auto fault = row.find(QStringLiteral("fault"));
  if (fault != row.end() && !fault->second.isEmpty()) {
    const QString word = kFaultWords.at(fault->second);
    bool named = false;
    for (const Text& f : d.faults) named = named || platform::qt::to_qstring(f).contains(word);
    QVERIFY2(named, qPrintable(name + QStringLiteral(": no fault with ") + word));
    return;
  }
  QVERIFY2(d.faults.empty(),
           qPrintable(name + QStringLiteral(": ") +
                      (d.faults.empty() ? QString() : platform::qt::to_qstring(d.faults[0]))));
  const auto out = outputs_of(in, d);
  int compared = 0;
  for (const auto& [key, expected] : row) {
    if (key == QLatin1String("case") || key == QLatin1String("source") ||
        key == QLatin1String("notes"))
      continue;
    const auto it = out.find(key);
    if (it == out.end() || expected.trimmed().isEmpty()) continue;
    ++compared;
    const QString where = name + QStringLiteral(": ") + key + QStringLiteral(" expected ") +
                          expected + QStringLiteral(", got ") + it->second;
    bool numeric = false;
    const double want = expected.toDouble(&numeric);
    if (numeric && !key.startsWith(QLatin1String("bars_"))) {
      QVERIFY2(
          std::fabs(it->second.toDouble() - want) <= tolerance * std::max(1.0, std::fabs(want)),
          qPrintable(where));
    } else {
      QVERIFY2(it->second == expected, qPrintable(where));
    }
  }
  QVERIFY2(compared > 0, qPrintable(name));
}

}  // namespace

class FootingDesignTest : public QObject {
  Q_OBJECT

 private slots:
  // The script's cases to the last digit but the shear's mean pressure, which
  // the script integrates on a grid (exact for a linear pressure: the midpoint
  // rule); published results are rounded to four figures: 0.5 %.
  void casesComputedApart_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("index");
    QTest::addColumn<double>("tolerance");
    for (const auto& [file, least, tolerance] :
         {std::tuple{"footing_cases.csv", 20u, 1e-7},
          std::tuple{"footing_worked_examples.csv", 4u, 5e-3}}) {
      const std::vector<Row> rows = read_csv(QString::fromLatin1(file));
      QVERIFY(rows.size() >= least);
      for (std::size_t i = 0; i < rows.size(); ++i) {
        QTest::newRow(qPrintable(rows[i].at(QStringLiteral("case"))))
            << QString::fromLatin1(file) << static_cast<int>(i) << tolerance;
      }
    }
  }
  void casesComputedApart() {
    QFETCH(QString, file);
    QFETCH(int, index);
    QFETCH(double, tolerance);
    compare(read_csv(file)[static_cast<std::size_t>(index)], tolerance);
  }

  // β_hp of 8.2.8 at its ends and between.
  void betaHp() {
    QCOMPARE(beta_hp(500), 1.0);
    QCOMPARE(beta_hp(800), 1.0);
    QVERIFY(std::fabs(beta_hp(1400) - 0.95) < 1e-12);
    QCOMPARE(beta_hp(2000), 0.9);
    QCOMPARE(beta_hp(2500), 0.9);
  }

  // Random input, hostile values among it: either the design names a fault,
  // or every number it gives is finite and the bars it chooses hold the area.
  void randomInputsAreRefusedOrFinite() {
    std::mt19937 random(20261126);
    const auto uniform = [&](double lo, double hi) {
      return std::uniform_real_distribution<double>(lo, hi)(random);
    };
    const auto odd = [&](double value) {
      const double hostile[] = {NAN, INFINITY, -1, 0, 1e12};
      return random() % 20 == 0 ? hostile[random() % 5] : value;
    };
    int designed = 0;
    for (int i = 0; i < 20000; ++i) {
      FootingInput in;
      in.concrete = 15 + 5 * static_cast<int32_t>(random() % 8);
      in.shape = random() % 2 ? FootingShape::kStepped : FootingShape::kTapered;
      in.bc = odd(uniform(300, 900));
      in.hc = odd(uniform(300, 900));
      in.e = random() % 3 ? 0 : odd(uniform(-300, 300));
      in.b = random() % 5 ? std::optional<double>(odd(uniform(1200, 6000))) : std::nullopt;
      in.l = random() % 5 ? std::optional<double>(odd(uniform(1200, 6000))) : std::nullopt;
      in.h = odd(uniform(400, 2200));
      in.h1 = odd(uniform(200, 600));
      if (in.shape == FootingShape::kStepped || random() % 2) {
        in.b1 = odd(in.bc + uniform(100, 1500));
        in.l1 = odd(in.hc + uniform(100, 1500));
      }
      in.d = odd(uniform(300, 4000));
      in.fak = odd(uniform(80, 500));
      in.soil = static_cast<SoilKind>(random() % 12);
      in.d_min = 10 + 2 * static_cast<double>(random() % 4);
      in.d_max = in.d_min + 2 * static_cast<double>(random() % 8);
      std::vector<FootingLoad> loads;
      for (int k = 0; k < 1 + static_cast<int>(random() % 4); ++k) {
        loads.push_back({u"L", random() % 2 == 0, false, odd(uniform(-200, 8000)),
                         odd(uniform(-600, 600)), odd(uniform(-600, 600)), uniform(-100, 100),
                         uniform(-100, 100)});
      }
      const FootingDesign d = design_footing(in, loads);
      if (!d.faults.empty()) continue;
      ++designed;
      const QString where = QStringLiteral("case %1").arg(i);
      QVERIFY2(std::isfinite(d.fa) && d.b > 0 && d.l > 0, qPrintable(where));
      for (const FootingPressure& p : d.pressures)
        QVERIFY2(std::isfinite(p.pmax) && p.pmin >= 0 && p.pmax >= p.p - 1e-9, qPrintable(where));
      for (const PunchingCheck& c : d.punching)
        QVERIFY2(std::isfinite(c.fl) && c.capacity > 0 && c.ab >= c.at, qPrintable(where));
      for (int dir = 0; dir < 2; ++dir) {
        QVERIFY2(std::isfinite(d.as_total[dir]) && d.as_total[dir] >= d.as_min[dir],
                 qPrintable(where));
        if (d.bars[dir].found)
          QVERIFY2(d.bars[dir].area >= d.as_total[dir] - 1e-6, qPrintable(where));
      }
    }
    QVERIFY2(designed > 1000, qPrintable(QString::number(designed)));
  }

  // Each item of the form's soil list (item 28) names a row of table 5.2.4.
  void soilListReadsIntoTheTable() {
    clsCharacter chr;
    const std::vector<Text> kinds = chr.ComboBoxList(5138);
    QCOMPARE(kinds.size(), std::size_t{12});
    for (std::size_t i = 0; i < kinds.size(); ++i) {
      std::vector<Text> values(30, u"1");
      values[2] = u"25";
      values[3] = u"HRB400";
      values[7] = u"锥形";
      values[28] = kinds[i];
      std::vector<Text> unread;
      const FootingInput in = footing_input(values, chr, &unread);
      QVERIFY2(unread.empty(), qPrintable(platform::qt::to_qstring(kinds[i])));
      QCOMPARE(static_cast<std::size_t>(in.soil), i);
    }
  }

  // Values the design must refuse rather than answer.
  void inputsOutsideTheDesignAreNamed() {
    const std::vector<FootingLoad> loads = {{u"S", true, false, 900, 0, 0, 0, 0},
                                            {u"F", false, false, 1200, 0, 0, 0, 0}};
    struct Case {
      const char* what;
      void (*change)(FootingInput&, std::vector<FootingLoad>&);
    };
    const Case cases[] = {
        {"b not above bc", [](FootingInput& in, std::vector<FootingLoad>&) { in.b = 400; }},
        {"column outside", [](FootingInput& in, std::vector<FootingLoad>&) { in.e = 1100; }},
        {"h too small", [](FootingInput& in, std::vector<FootingLoad>&) { in.h = 120; }},
        {"C15", [](FootingInput& in, std::vector<FootingLoad>&) { in.concrete = 15; }},
        {"stepped without its upper step",
         [](FootingInput& in, std::vector<FootingLoad>&) { in.shape = FootingShape::kStepped; }},
        {"seismic load", [](FootingInput&, std::vector<FootingLoad>& l) { l[1].seismic = true; }},
        {"uplift", [](FootingInput&, std::vector<FootingLoad>& l) { l[0].N = -500; }},
        {"overturning", [](FootingInput&, std::vector<FootingLoad>& l) { l[0].My = 5000; }},
        {"NaN", [](FootingInput&, std::vector<FootingLoad>& l) { l[1].Mx = NAN; }},
        {"wide cantilever",
         [](FootingInput& in, std::vector<FootingLoad>&) { in.b = 4000, in.l = 4000; }},
    };
    for (const Case& c : cases) {
      FootingInput in;
      std::vector<FootingLoad> l = loads;
      c.change(in, l);
      QVERIFY2(!design_footing(in, l).faults.empty(), c.what);
    }
  }

  // The report: its headings, the governing loads named with their values,
  // the conclusions.
  void reportHoldsHeadingsAndGoverningValues() {
    clsCharacter chr;
    std::vector<Text> values(30);
    const std::pair<int, const char16_t*> items[] = {
        {1, u"J-1"},  {2, u"25"},   {3, u"HRB400"}, {4, u"400"},  {5, u"400"},   {6, u"0"},
        {7, u"锥形"}, {8, u"2500"}, {9, u"2500"},   {10, u"600"}, {11, u"1500"}, {12, u"180"},
        {13, u"0"},   {14, u"1.0"}, {15, u"18"},    {16, u"18"},  {17, u"20"},   {21, u"是"},
        {23, u"10"},  {24, u"25"},  {25, u"300"}};
    for (const auto& [item, value] : items) values[static_cast<std::size_t>(item)] = value;
    const std::vector<FootingLoad> loads = {{u"标准1", true, false, 1000, 0, 80, 20, 0},
                                            {u"基本1", false, false, 1350, 0, 108, 27, 0}};
    const std::vector<Text> lines = footing_report(values, loads, chr);
    Text all;
    for (const Text& line : lines) all += line + u"\n";
    const QString text = platform::qt::to_qstring(all);
    for (const char* piece : {"设计资料", "地基承载力", "受冲切", "受弯", "配筋", "结论", "标准1",
                              "基本1", "225.33", "198.00", "259.71", "满足"}) {
      QVERIFY2(text.contains(QString::fromUtf8(piece)), piece);
    }
    QVERIFY(!text.contains(QStringLiteral("不满足")));
    // A footing too small for the soil: the conclusion says so.
    values[8] = values[9] = u"1500";
    const std::vector<Text> failing = footing_report(values, loads, chr);
    Text rest;
    for (const Text& line : failing) rest += line;
    QVERIFY(platform::qt::to_qstring(rest).contains(QStringLiteral("不满足")));
  }
};

}  // namespace zelkora::desk

QTEST_MAIN(zelkora::desk::FootingDesignTest)
#include "footing_design_qtest.moc"
