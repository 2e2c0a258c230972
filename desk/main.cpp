// zelkora-desk: the suite's desktop program.
//
//   zelkora-desk [PROJECTFILE] [--script FILE] [--quit] [--dark]
//
// Opens the program menu; a project file opens in its program's form; a
// script of input events runs once the windows are up (desk/script.h), and
// with --quit the program ends after it; --dark draws it on a dark palette.
#include <QApplication>
#include <QFile>
#include <QTextStream>
#include <QTimer>

#include "desk/calc_form.h"
#include "desk/desk_app.h"
#include "desk/main_window.h"
#include "desk/script.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("zelkora-desk"));
  QStringList args = QApplication::arguments();
  args.removeFirst();
  QString script;
  QString project;
  bool quit = false;
  QTextStream err(stderr);
  for (int i = 0; i < args.size(); ++i) {
    if (args[i] == QLatin1String("--script") && i + 1 < args.size()) {
      script = args[++i];
    } else if (args[i] == QLatin1String("--quit")) {
      quit = true;
    } else if (args[i] == QLatin1String("--dark")) {
      QApplication::setStyle(QStringLiteral("Fusion"));
      QApplication::setPalette(zelkora::desk::dark_palette());
    } else if (!args[i].startsWith(QLatin1String("--")) && project.isEmpty()) {
      project = args[i];
    } else {
      err << "usage: zelkora-desk [PROJECTFILE] [--script FILE] [--quit] [--dark]\n";
      return 2;
    }
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
