// zelkora-desk: the suite's desktop program.
//
//   zelkora-desk [PROJECTFILE] [--script FILE [--check [--host qt|both]]] [--quit] [--dark]
//   zelkora-desk --monkey SEED [--steps N] [--seconds S] [--host qt|both] [--keep-going]
//   zelkora-desk --help
//
// Opens the program menu; a project file opens in its program's form; a
// script of input events runs once the windows are up (desk/script.h), and
// with --quit the program ends after it; --dark draws it on a dark palette.
// --check runs the script with the random tester's checks after every step;
// --monkey runs the random tester (desk/monkey.h).
#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QTextStream>
#include <QTimer>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "desk/calc_form.h"
#include "desk/desk_app.h"
#include "desk/main_window.h"
#include "desk/monkey.h"
#include "desk/script.h"

namespace {

const char kUsage[] =
    "usage: zelkora-desk [PROJECTFILE] [--script FILE [--check [--host qt|both]]] [--quit] "
    "[--dark]\n"
    "       zelkora-desk --monkey SEED [--steps N] [--seconds S] [--host qt|both] "
    "[--keep-going]\n"
    "       zelkora-desk --help\n";

}  // namespace

int main(int argc, char** argv) {
  // Answered before Qt starts, so that it needs no display.
  if (argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
    std::fputs(kUsage, stdout);
    return 0;
  }
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("zelkora-desk"));
  // The installed desktop entry and icon (packaging/linux/): the desktop
  // shows the entry's name and icon for the program's windows.
  QApplication::setDesktopFileName(QStringLiteral("zelkora-desk"));
  QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("zelkora")));
  QStringList args = QApplication::arguments();
  args.removeFirst();
  QString script;
  QString project;
  bool quit = false;
  bool check = false;
  QString host = QStringLiteral("qt");
  std::optional<zelkora::desk::MonkeyRun> monkey;
  QTextStream err(stderr);
  const auto number = [&](int& i, auto& value) {
    bool ok = false;
    const double n = i + 1 < args.size() ? args[++i].toDouble(&ok) : 0;
    if (!ok || n < 0) return false;
    value = static_cast<std::remove_reference_t<decltype(value)>>(n);
    return true;
  };
  for (int i = 0; i < args.size(); ++i) {
    if (args[i] == QLatin1String("--monkey")) {
      monkey.emplace();
      if (!number(i, monkey->seed)) monkey.reset();
      if (!monkey) break;
    } else if (monkey && args[i] == QLatin1String("--steps")) {
      if (!number(i, monkey->steps)) monkey.reset();
    } else if (monkey && args[i] == QLatin1String("--seconds")) {
      if (!number(i, monkey->seconds)) monkey.reset();
    } else if (args[i] == QLatin1String("--host") && i + 1 < args.size()) {
      host = args[++i];
    } else if (monkey && args[i] == QLatin1String("--keep-going")) {
      monkey->keep_going = true;
    } else if (args[i] == QLatin1String("--check")) {
      check = true;
    } else if (args[i] == QLatin1String("--script") && i + 1 < args.size()) {
      script = args[++i];
    } else if (args[i] == QLatin1String("--quit")) {
      quit = true;
    } else if (args[i] == QLatin1String("--dark")) {
      QApplication::setStyle(QStringLiteral("Fusion"));
      QApplication::setPalette(zelkora::desk::dark_palette());
    } else if (!args[i].startsWith(QLatin1String("--")) && project.isEmpty()) {
      project = args[i];
    } else {
      monkey.reset();
      project = QStringLiteral("--");
      break;
    }
  }
  if (project == QLatin1String("--") || (!monkey && args.contains(QStringLiteral("--monkey"))) ||
      (check && script.isEmpty()) ||
      (!monkey && !check && args.contains(QStringLiteral("--host"))) ||
      (host != QLatin1String("qt") && host != QLatin1String("both"))) {
    err << kUsage;
    return 2;
  }
  if (monkey) {
    monkey->compare_hosts = host == QLatin1String("both");
    err.flush();
    return zelkora::desk::run_monkey(*monkey, zelkora::desk::qt_monkey_host, std::cout, std::cerr);
  }
  QStringList lines;
  if (!script.isEmpty()) {
    QFile file(script);
    if (!file.open(QIODevice::ReadOnly)) {
      err << "zelkora-desk: cannot read the script " << script << "\n";
      return 2;
    }
    lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
  }
  if (check) {
    std::vector<std::string> steps;
    for (const QString& line : lines) steps.push_back(line.toStdString());
    return zelkora::desk::check_script(steps, zelkora::desk::qt_monkey_host, std::cout, std::cerr,
                                       host == QLatin1String("both"));
  }

  zelkora::desk::DeskApp desk;
  desk.main_window().show();
  int status = 0;
  if (lines.isEmpty() && !quit) {
    if (!project.isEmpty()) desk.open_project(project);
  } else {
    // The project's boxes are answered as the script's: a run never waits.
    QTimer::singleShot(0, [&] {
      QTextStream out(stdout);
      status = zelkora::desk::run_script(desk, lines, out, err, project);
      if (quit || status != 0) {
        if (auto* form = desk.current_form()) form->ask_before_closing(false);
        QApplication::exit(status);
      }
    });
  }
  const int result = QApplication::exec();
  return status != 0 ? status : result;
}
