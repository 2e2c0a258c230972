// The load combinations against cases computed without them: a script of the
// codes' rules written apart from the program (desk/testdata/
// load_combination_cases.py, which writes load_combination_cases.csv), and
// worked examples of published teaching material
// (load_combination_worked_examples.csv, each with its source). The form's
// values go in as the form holds them, so their reading is tested too.
#include <QFile>
#include <QTest>
#include <QTextStream>
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "desk/csv_cases.h"
#include "program/load_combination.h"
#include "program/load_combination_report.h"
#include "zelkora/platform/qt/qt_controls.h"

namespace zelkora::desk {

using platform::qt::to_qstring;
using platform::qt::to_text;

namespace {

using Row = CsvRow;

// The form's values (by item of "clsLoadCombination") of a row.
std::vector<Text> values_of(const Row& row) {
  const auto at = [&](const char* key) { return to_text(row.at(QString::fromLatin1(key))); };
  const auto yes = [&](const char* key) -> Text {
    return row.at(QString::fromLatin1(key)) == "1" ? u"是" : u"否";
  };
  static const char16_t* kClasses[] = {u"一级", u"二级", u"三级"};
  std::vector<Text> v(22);
  v[0] = u"工程";
  v[1] = u"KL-1";
  v[2] = at("years");
  v[3] = kClasses[row.at(QStringLiteral("safety_class")).toInt() - 1];
  const char* numbers[] = {"sgk",         "sqk",     "swk",      "sehk",  "gamma_g",
                           "gamma_g_fav", "gamma_q", "gamma_eh", "psi_c", "psi_q",
                           "psi_w",       "psi_e",   "psi_we"};
  for (int i = 0; i < 13; ++i) v[static_cast<std::size_t>(4 + i)] = at(numbers[i]);
  v[17] = yes("seismic");
  v[18] = yes("wind");
  v[19] = u"否";
  v[20] = at("edition");
  // The published examples give no ψf (they check no frequent combination).
  v[21] = row.count(QStringLiteral("psi_f")) ? at("psi_f") : Text(u"0.5");
  return v;
}

struct Result {
  std::vector<Text> faults;
  std::vector<Combination> combinations;
};

Result result_of(const Row& row) {
  clsCharacter chr{platform::Platform::headless()};
  std::vector<Text> unread;
  const LoadCombinationInput in = load_combination_input(values_of(row), chr, &unread);
  Result r;
  if (!unread.empty()) {
    r.faults = unread;
    return r;
  }
  if (in.options.gamma_l == 0) {
    r.faults.emplace_back(u"years");
    return r;
  }
  r.combinations = combine(form_actions(in), in.options, r.faults);
  return r;
}

const std::map<QString, CombinationKind> kKinds = {{"fundamental", CombinationKind::kFundamental},
                                                   {"standard", CombinationKind::kStandard},
                                                   {"quasi", CombinationKind::kQuasiPermanent},
                                                   {"seismic", CombinationKind::kSeismic}};

}  // namespace

class LoadCombinationTest : public QObject {
  Q_OBJECT

 private slots:
  // The script's cases to 1e-9: the governing values of each kind, the
  // number of fundamental combinations, and the refusals.
  void casesComputedApart_data() {
    QTest::addColumn<int>("index");
    const std::vector<Row> rows = read_csv(QStringLiteral("load_combination_cases.csv"));
    QVERIFY(rows.size() >= 20);
    for (std::size_t i = 0; i < rows.size(); ++i)
      QTest::newRow(qPrintable(rows[i].at(QStringLiteral("case")))) << static_cast<int>(i);
  }
  void casesComputedApart() {
    QFETCH(int, index);
    const Row row =
        read_csv(QStringLiteral("load_combination_cases.csv"))[static_cast<std::size_t>(index)];
    const Result r = result_of(row);
    if (!row.at(QStringLiteral("fault")).isEmpty()) {
      QVERIFY2(!r.faults.empty() && r.combinations.empty(), "a fault expected");
      return;
    }
    QVERIFY2(r.faults.empty(), r.faults.empty() ? "" : qPrintable(to_qstring(r.faults.front())));
    const std::size_t fundamental = static_cast<std::size_t>(std::count_if(
        r.combinations.begin(), r.combinations.end(),
        [](const Combination& c) { return c.kind == CombinationKind::kFundamental; }));
    QCOMPARE(static_cast<qulonglong>(fundamental),
             row.at(QStringLiteral("count_fund")).toULongLong());
    const std::pair<const char*, CombinationKind> kinds[] = {
        {"fund", CombinationKind::kFundamental},
        {"std", CombinationKind::kStandard},
        {"qp", CombinationKind::kQuasiPermanent},
        {"freq", CombinationKind::kFrequent},
        {"seis", CombinationKind::kSeismic}};
    for (const auto& [prefix, kind] : kinds) {
      const QString hi = QString::fromLatin1(prefix) + "_max",
                    lo = QString::fromLatin1(prefix) + "_min";
      bool found = false;
      for (const Governing& g : governing(r.combinations)) {
        if (g.kind != kind) continue;
        found = true;
        QVERIFY2(std::fabs(r.combinations[g.largest].effects[0] - row.at(hi).toDouble()) < 1e-9,
                 qPrintable(hi));
        QVERIFY2(std::fabs(r.combinations[g.smallest].effects[0] - row.at(lo).toDouble()) < 1e-9,
                 qPrintable(lo));
      }
      QVERIFY2(found == !row.at(hi).isEmpty(), qPrintable(hi));
    }
  }

  // Published combinations, found by their label: the values as printed.
  void workedExamples() {
    const std::vector<Row> rows = read_csv(QStringLiteral("load_combination_worked_examples.csv"));
    QVERIFY(rows.size() >= 2);
    for (const Row& row : rows) {
      const Result r = result_of(row);
      QVERIFY(r.faults.empty());
      for (const QString& one : row.at(QStringLiteral("expected")).split(QLatin1Char(';'))) {
        const QString kind = one.section(QLatin1Char(':'), 0, 0);
        const Text label =
            to_text(one.section(QLatin1Char(':'), 1).section(QLatin1Char('='), 0, 0));
        const double want = one.section(QLatin1Char('='), 1).toDouble();
        const auto it = std::find_if(
            r.combinations.begin(), r.combinations.end(),
            [&](const Combination& c) { return c.kind == kKinds.at(kind) && c.label == label; });
        QVERIFY2(it != r.combinations.end(),
                 qPrintable(row.at(QStringLiteral("case")) + ": " + one));
        QVERIFY2(std::fabs(it->effects[0] - want) < 1e-9 * std::max(1.0, want), qPrintable(one));
      }
    }
  }

  // Several cases and components, as a footing's: permanent cases together,
  // at most one wind and one seismic case in a combination, the governing
  // values of each component.
  void severalCasesAndComponents() {
    const std::vector<Action> actions = {
        {u"G1", ActionKind::kPermanent, {100, 10}, 0, 0, 0, 0},
        {u"G2", ActionKind::kPermanent, {50, -5}, 0, 0, 0, 0},
        {u"Q1", ActionKind::kVariable, {40, 8}, 0.7, 0.5, 0.4, 0.5},
        {u"Q2", ActionKind::kVariable, {20, -30}, 0.7, 0.6, 0.5, 0.5},
        {u"Wx", ActionKind::kWind, {5, 60}, 0.6, 0.4, 0, 0},
        {u"Wy", ActionKind::kWind, {-5, -60}, 0.6, 0.4, 0, 0},
        {u"Ex", ActionKind::kSeismic, {0, 90}, 0, 0, 0, 0},
    };
    Options o;
    o.wind = o.seismic = true;
    o.psi_we = 0.2;
    std::vector<Text> faults;
    const std::vector<Combination> all = combine(actions, o, faults);
    QVERIFY(faults.empty());
    for (const Combination& c : all) {
      QVERIFY(c.factors[0] > 0 && c.factors[0] == c.factors[1]);  // G1 and G2 together
      QVERIFY(c.factors[4] == 0 || c.factors[5] == 0);            // one wind direction
      QCOMPARE(c.kind == CombinationKind::kSeismic, c.factors[6] != 0);
    }
    // Component 1: the largest fundamental value is 1.3(10−5) + 1.5·60 +
    // 1.5·0.7·8, Q2 (−30) being left out; the smallest has G at 1.0.
    const std::vector<Governing> g = governing(all);
    const auto of = [&](CombinationKind kind, std::size_t k) {
      return *std::find_if(g.begin(), g.end(),
                           [&](const Governing& x) { return x.kind == kind && x.component == k; });
    };
    QCOMPARE(all[of(CombinationKind::kFundamental, 1).largest].effects[1],
             1.3 * 5 + 1.5 * 60 + 1.5 * 0.7 * 8);
    QCOMPARE(all[of(CombinationKind::kFundamental, 1).smallest].effects[1],
             1.0 * 5 - 1.5 * 60 - 1.5 * 0.7 * 30);
    QCOMPARE(all[of(CombinationKind::kFundamental, 1).smallest].label,
             Text(u"G1+G2+1.5Wy+1.5×0.7Q2"));
    QCOMPARE(g.size(), 10u);  // five kinds, two components
    // Frequent (3.2.9), component 0: Q1 leading with ψf, Q2 with ψq.
    QCOMPARE(all[of(CombinationKind::kFrequent, 0).largest].effects[0], 150 + 0.5 * 40 + 0.5 * 20);
  }

  // The permanent load favourable across components: G only in N, the wind
  // only in M; the least N beside the wind's M has G at γG' (3.2.4-1-2), and
  // likewise the gravity load at 1.0 in the seismic combination.
  void favourableAcrossComponents() {
    const std::vector<Action> actions = {{u"G", ActionKind::kPermanent, {100, 0}, 0, 0, 0, 0},
                                         {u"W", ActionKind::kWind, {0, 60}, 0.6, 0.4, 0, 0},
                                         {u"E", ActionKind::kSeismic, {0, 90}, 0, 0, 0, 0}};
    Options o;
    o.wind = o.seismic = true;
    std::vector<Text> faults;
    const std::vector<Combination> all = combine(actions, o, faults);
    QVERIFY(faults.empty());
    for (const auto& [kind, least] : {std::pair{CombinationKind::kFundamental, 100.0},
                                      std::pair{CombinationKind::kSeismic, 100.0}}) {
      const std::vector<Governing> g = governing(all);
      const auto it = std::find_if(g.begin(), g.end(), [&](const Governing& x) {
        return x.kind == kind && x.component == 0;
      });
      QVERIFY(it != g.end());
      QCOMPARE(all[it->smallest].effects[0], least);
      QVERIFY(all[it->smallest].favourable);
    }
  }

  // Values the combinations must refuse rather than answer.
  void inputsOutsideAreNamed() {
    const Action g{u"G", ActionKind::kPermanent, {1}, 0, 0, 0, 0};
    struct Case {
      const char* what;
      std::vector<Action> actions;
      void (*change)(Options&);
    };
    const Case cases[] = {
        {"no actions", {}, [](Options&) {}},
        {"components differ",
         {g, {u"Q", ActionKind::kVariable, {1, 2}, 0.7, 0.5, 0.4, 0}},
         [](Options&) {}},
        {"not a number", {{u"G", ActionKind::kPermanent, {NAN}, 0, 0, 0, 0}}, [](Options&) {}},
        {"ψ above 1", {g, {u"Q", ActionKind::kVariable, {1}, 1.2, 0.5, 0.4, 0}}, [](Options&) {}},
        {"γ0 0.8", {g}, [](Options& o) { o.gamma_0 = 0.8; }},
        {"γL 1.2", {g}, [](Options& o) { o.gamma_l = 1.2; }},
        {"ψwE 2", {g}, [](Options& o) { o.psi_we = 2; }},
        {"earthquake without its case", {g}, [](Options& o) { o.seismic = true; }},
    };
    for (const Case& c : cases) {
      Options o;
      c.change(o);
      std::vector<Text> faults;
      QVERIFY2(combine(c.actions, o, faults).empty() && !faults.empty(), c.what);
    }
  }

  // The report of a case read back: its headings in order, the governing
  // values in the conclusion, a table of only the governing rows or of all.
  void reportReadBack() {
    std::vector<Row> rows = read_csv(QStringLiteral("load_combination_cases.csv"));
    const Row row = *std::find_if(rows.begin(), rows.end(), [](const Row& r) {
      return r.at(QStringLiteral("case")) == "50009 all";
    });
    clsCharacter chr{platform::Platform::headless()};
    QString text;
    for (const Text& line : load_combination_report(values_of(row), chr))
      text += to_qstring(line) + "\n";
    qsizetype at = 0;
    for (const char* heading :
         {"一、)bb__bb(设计资料", "二、)bb__bb(基本组合", "三、)bb__bb(标准组合与准永久组合",
          "四、)bb__bb(地震组合", "五、)bb__bb(结论"}) {
      const qsizetype next = text.indexOf(QString::fromUtf8(heading), at);
      QVERIFY2(next >= at, qPrintable(QString::fromUtf8(heading) + "\n" + text));
      at = next;
    }
    const QString conclusion = text.mid(at);
    for (const char* key :
         {"fund_max", "fund_min", "std_max", "std_min", "qp_max", "seis_max", "seis_min"}) {
      const QString value = QString::number(row.at(QString::fromLatin1(key)).toDouble(), 'f', 2);
      QVERIFY2(conclusion.contains(value),
               qPrintable(QString::fromLatin1(key) + " " + value + "\n" + conclusion));
    }
    QVERIFY(text.contains(QStringLiteral("只列出起控制作用的组合")));
    QVERIFY(text.contains(QStringLiteral("GB 50009－2012（荷载组合与分项系数）")));
    QVERIFY(text.contains(QStringLiteral("1.35")));
    // 输出全部荷载组合: every combination has its row (the governing ones had
    // theirs already).
    std::vector<Text> values = values_of(row);
    const std::size_t governing_only = load_combination_report(values, chr).size();
    values[19] = u"是";
    const std::vector<Combination> all = result_of(row).combinations;
    std::set<std::size_t> shown;
    for (const Governing& g : governing(all)) shown.insert({g.largest, g.smallest});
    QCOMPARE(load_combination_report(values, chr).size() - governing_only,
             all.size() - shown.size());
  }
};

}  // namespace zelkora::desk

QTEST_MAIN(zelkora::desk::LoadCombinationTest)
#include "load_combination_qtest.moc"
