// The table of load cases as the desktop form shows it (program/load_cases.h):
// a list view whose cells are edited in place (a double click, F2 or typing
// opens a cell's editor; the kind is chosen from its list), and the buttons
// 添加, 删除, 上移 and 下移 over it. What the buttons do and what an edit
// means is the form's work (FormWork); the widget only reports.
#pragma once

#include <QWidget>
#include <functional>

#include "zelkora/platform/qt/qt_controls.h"

class QToolButton;

namespace zelkora::desk {

class CaseTable : public QWidget {
  Q_OBJECT

 public:
  explicit CaseTable(QWidget* parent = nullptr);

  // The table the form's work reads and writes.
  platform::qt::QtListView& table();
  // The row (from 1) of the current case, 0 for none; a row made current.
  int32_t current_case() const;
  void select_case(int32_t item);

  // What the form does: after a cell was edited, and for each button (each
  // gets the current row and answers the row to make current, 0 for none).
  std::function<void()> edited;
  std::function<int32_t()> add;
  std::function<bool(int32_t item)> remove;
  std::function<int32_t(int32_t item, int step)> move;

 private:
  class List;
  QToolButton* button(const char* text, const char* name, const char* tip);
  List* table_ = nullptr;
  bool filling_ = false;
};

}  // namespace zelkora::desk
