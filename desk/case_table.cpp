// The desktop's table of load cases; see the header.
#include "desk/case_table.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QVBoxLayout>

#include "program/load_cases.h"

namespace zelkora::desk {

using platform::qt::to_qstring;

namespace {

constexpr int kKindColumn = 1;

// The kind of a case is chosen from its list; the other cells are typed.
class KindDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override {
    if (index.column() != kKindColumn)
      return QStyledItemDelegate::createEditor(parent, option, index);
    auto* box = new QComboBox(parent);
    box->addItems({QStringLiteral("永久"), QStringLiteral("可变"), QStringLiteral("风"),
                   QStringLiteral("地震")});
    return box;
  }
  void setEditorData(QWidget* editor, const QModelIndex& index) const override {
    if (auto* box = qobject_cast<QComboBox*>(editor)) {
      box->setCurrentIndex(std::max(0, box->findText(index.data().toString())));
      return;
    }
    QStyledItemDelegate::setEditorData(editor, index);
  }
  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& index) const override {
    if (auto* box = qobject_cast<QComboBox*>(editor)) {
      model->setData(index, box->currentText());
      return;
    }
    QStyledItemDelegate::setModelData(editor, model, index);
  }
};

}  // namespace

// The list view, its items editable in place.
class CaseTable::List : public platform::qt::QtListView {
 public:
  explicit List(QWidget* parent) : QtListView(parent) {}
  int32_t ListItemsAdd(TextView text) override {
    const int32_t item = QtListView::ListItemsAdd(text);
    QTreeWidgetItem* entry = topLevelItem(item - 1);
    entry->setFlags(entry->flags() | Qt::ItemIsEditable);
    return item;
  }
};

CaseTable::CaseTable(QWidget* parent) : QWidget(parent) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(4, 4, 4, 4);
  column->setSpacing(2);
  auto* bar = new QHBoxLayout;
  bar->addWidget(new QLabel(QStringLiteral("荷载工况（标准值，作用于基础顶面）"), this));
  bar->addStretch(1);
  bar->addWidget(button("添加", "caseAdd", "在最后添加一个荷载工况"));
  bar->addWidget(button("删除", "caseDelete", "删除当前的荷载工况"));
  bar->addWidget(button("上移", "caseUp", "当前的荷载工况上移一行"));
  bar->addWidget(button("下移", "caseDown", "当前的荷载工况下移一行"));
  column->addLayout(bar);
  table_ = new List(this);
  table_->setObjectName(QStringLiteral("cases"));
  QStringList captions;
  for (const TextView caption : case_captions()) captions << to_qstring(caption);
  table_->setHeaderLabels(captions);
  table_->setItemDelegate(new KindDelegate(table_));
  table_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
  table_->header()->setStretchLastSection(false);
  table_->header()->setSectionResizeMode(QHeaderView::Stretch);
  column->addWidget(table_, 1);
  connect(table_, &QTreeWidget::itemChanged, this, [this] {
    if (!filling_ && edited) edited();
  });
  setMinimumHeight(150);
}

QToolButton* CaseTable::button(const char* text, const char* name, const char* tip) {
  auto* b = new QToolButton(this);
  b->setText(QString::fromUtf8(text));
  b->setObjectName(QString::fromLatin1(name));
  b->setToolTip(QString::fromUtf8(tip));
  connect(b, &QToolButton::clicked, this, [this, which = QByteArray(name)] {
    const int32_t current = current_case();
    int32_t next = 0;
    filling_ = true;  // the work refills the table itself
    if (which == "caseAdd" && add) {
      next = add();
    } else if (which == "caseDelete" && remove && remove(current)) {
      next = std::min(current, table_->ListItemsCount());
    } else if ((which == "caseUp" || which == "caseDown") && move) {
      next = move(current, which == "caseUp" ? -1 : 1);
      if (next == 0) next = current;
    }
    filling_ = false;
    select_case(next);
  });
  return b;
}

platform::qt::QtListView& CaseTable::table() { return *table_; }

int32_t CaseTable::current_case() const {
  QTreeWidgetItem* item = table_->currentItem();
  return item ? table_->indexOfTopLevelItem(item) + 1 : 0;
}

void CaseTable::select_case(int32_t item) {
  if (item >= 1 && item <= table_->ListItemsCount()) {
    table_->setCurrentItem(table_->topLevelItem(item - 1),
                           table_->currentColumn() < 0 ? 0 : table_->currentColumn());
  }
}

}  // namespace zelkora::desk
