// Scripts of real input events for the desktop program: demonstrations and
// regression runs. Each line is one step, delivered through the toolkit's
// event system as a user's hand would deliver it (mouse clicks on cells and
// buttons, key presses into editors), never as calls into the library:
//
//   menu CAPTION          click the menu row of that caption (a group folds
//                         or unfolds, a program opens its form)
//   edit ITEM TEXT        click the value cell of the item's row (ITEM: an
//                         item index or a caption), replace its text by
//                         typing, press Enter
//   pick ITEM TEXT        click the value cell, open its list, choose TEXT
//   click ROW COL         click a cell of the form's grid (the menu's when no
//                         form is open)
//   key NAME              press Enter, Tab, Shift+Tab, Space, Escape, Up,
//                         Down, Alt+Down, F1, F2, F4, F8, Ctrl+C, Ctrl+V,
//                         Ctrl+Z, Ctrl+Y or Ctrl+F where the focus is
//   undo, redo            press Ctrl+Z, Ctrl+Y in the grid
//   filter [TEXT]         click the filter box, replace its text by typing
//                         (nothing: clear it)
//   copy                  press Ctrl+C in the grid; prints "copied: " and
//                         the lines copied, "|" between them
//   paste ITEM TEXT...    click the item's value cell, put the texts on
//                         the clipboard, one a line, press Ctrl+V
//   defaults yes|cancel   the Defaults button, and the answer to its question
//   calculate             the Calculate button
//   save FILE, open FILE  the Save As and Open buttons, the file given
//                         instead of the dialog
//   type TEXT             type the characters where the focus is, no Enter
//   clip TEXT...          put the texts on the clipboard, one a line
//   toggle changed|refused  click the filter's 已修改 or 有错误 box
//   reset                 Edit ▸ 恢复默认值
//   mine save|restore     Edit ▸ 保存为我的默认值 or 恢复我的默认值
//   new, close            the New button; close the form's window
//   report FILE           the Save report button, the file given
//   export docx|pdf FILE  the 导出 Word or 导出 PDF button, the file given
//   preview               the 打印预览 button; prints "print preview: N
//                         pages | closed" and closes it
//   recent N              entry N of File ▸ Recent projects
//   answer yes [FILE]|no|cancel  the answer to the next question
//   shot PNGFILE          the window as a picture
//   case add              the table of load cases' 添加 button
//   case delete|up|down ROW  click case ROW, then 删除, 上移 or 下移
//   case ROW COL TEXT     double-click a cell of the table (from 1), type
//                         TEXT (a kind: choose it from the list), Enter
//   about                 帮助 ▸ 关于 of the menu window (its box is printed)
//
// Blank lines and lines starting with "#" are passed over. Every message box
// met is printed as "message: TITLE | TEXT" and answered: OK, or the answer
// the script gave.
#pragma once

#include <QMessageBox>
#include <QStringList>
#include <QTextStream>
#include <memory>

#include "program/script_steps.h"

namespace zelkora::desk {

class CalcForm;
class DeskApp;

// Runs steps one at a time on the program's windows; every message box met
// is printed on `out` and answered while the runner lives.
class ScriptRunner {
 public:
  ScriptRunner(DeskApp& app, QTextStream& out);
  ~ScriptRunner();
  ScriptRunner(const ScriptRunner&) = delete;
  ScriptRunner& operator=(const ScriptRunner&) = delete;

  // One step; StepError when it cannot run.
  void run(const QString& line);

 private:
  class Steps;
  std::unique_ptr<Steps> steps_;
};

// Runs the lines; 0 when every step ran, 2 with the reason on `err` (the
// line's number and text) when one could not.
// `project`, when given, is opened first (its program's form), with every
// box it shows printed and answered as the script's are.
int run_script(DeskApp& app, const QStringList& lines, QTextStream& out, QTextStream& err,
               const QString& project = {});

}  // namespace zelkora::desk
