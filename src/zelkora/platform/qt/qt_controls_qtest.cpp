// Tests of the Qt controls, on real widgets with a user's clicks and typing.
//
// Form state through a project data file, the in-memory controls' rules,
// the title box's drawing, the grid's drawing, the message box and the
// placement in twips.
#include "zelkora/platform/qt/qt_controls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <functional>
#include <memory>
#include <vector>

#include "zelkora/controls/form_controls.h"
#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/platform/headless/headless_controls.h"
#include "zelkora/platform/qt/qt_grid.h"

// The library's texts in failure messages.
template <>
inline char* QTest::toString(const std::u16string& text) {
  return QTest::toString(QString::fromStdU16String(text));
}

namespace zelkora::platform::qt {
namespace {

// The Qt widget's own view of its texts.
QStringList texts_of(const QListWidget& list, bool selected_only) {
  QStringList out;
  for (int i = 0; i < list.count(); ++i) {
    if (!selected_only || list.item(i)->isSelected()) out << list.item(i)->text();
  }
  return out;
}

QStringList items_of(const QComboBox& combo) {
  QStringList out;
  for (int i = 0; i < combo.count(); ++i) out << combo.itemText(i);
  return out;
}

// Each row of a list view as "text|sub 1|sub 2...".
QStringList rows_of(const QTreeWidget& view) {
  QStringList out;
  for (int i = 0; i < view.topLevelItemCount(); ++i) {
    QStringList cells;
    for (int c = 0; c < view.columnCount(); ++c) cells << view.topLevelItem(i)->text(c);
    out << cells.join(u'|');
  }
  return out;
}

QList<bool> checked_of(const QToolBar& bar) {
  QList<bool> out;
  for (const QAction* action : bar.actions()) out << action->isChecked();
  return out;
}

// Writes the file with `write` between the revision and the end.
bool save(const std::shared_ptr<Platform>& platform,
          const std::function<void(clsLoadSave&)>& write) {
  clsLoadSave ls(platform);
  if (!ls.OpenFileA(u"form.zks", u"OutPut") || !ls.WriteFile_RevisionA()) return false;
  write(ls);
  return ls.WriteFileEofAndCloseFileA();
}

// The form's reading loop: every group's name record to `dispatch`, up to
// "EOF"; the number of groups, or -1 when a reader failed.
int load(const std::shared_ptr<Platform>& platform,
         const std::function<bool(clsLoadSave&, UseBinRecord&)>& dispatch) {
  clsLoadSave ls(platform);
  if (!ls.OpenFileA(u"form.zks", u"InPut")) return -1;
  UseBinRecord rec;
  int32_t count = 0;
  int groups = 0;
  while (ls.ReadFileOneA(rec) && !(rec.ID == 0 && rec.Member == u"EOF")) {
    if (ls.bReadMsgError(count, 10000)) return -1;
    if (rec.ID == 0) continue;  // the revision
    if (!dispatch(ls, rec)) return -1;
    ++groups;
  }
  ls.CloseFileA();
  return groups;
}

// A calculation form's controls on a shown window, in control arrays.
struct Form {
  QWidget window;
  QVBoxLayout* layout = new QVBoxLayout(&window);
  std::vector<QtCheckBox*> checks;
  std::vector<QtOptionButton*> options;
  std::vector<QtComboBox*> combos;
  QtListBox* list = new QtListBox(&window);
  QtListView* view = new QtListView(&window);
  QtToolbar* bar = new QtToolbar(&window);
  ControlArray<platform::CheckBox> check_array;
  ControlArray<platform::OptionButton> option_array;
  ControlArray<platform::ComboBox> combo_array;
  ControlArray<platform::ListBox> list_array;
  ControlArray<platform::ListView> view_array;

  Form() {
    for (const char* caption : {"配筋", "抗震", "人防"}) {
      checks.push_back(new QtCheckBox(QString::fromUtf8(caption), &window));
      layout->addWidget(checks.back(), 0, Qt::AlignLeft);
      check_array.set(static_cast<int32_t>(checks.size()) - 1, checks.back());
    }
    for (const char* caption : {"矩形", "T 形"}) {
      options.push_back(new QtOptionButton(QString::fromUtf8(caption), &window));
      layout->addWidget(options.back(), 0, Qt::AlignLeft);
      option_array.set(static_cast<int32_t>(options.size()) - 1, options.back());
    }
    // 0: a drop-down list; 1: an editable entry; 2: editable, but greyed to
    // lock it.
    for (int i = 0; i < 3; ++i) {
      combos.push_back(new QtComboBox(&window));
      layout->addWidget(combos.back());
      combo_array.set(i, combos.back());
    }
    combos[0]->SetStyle(platform::ComboBox::kDropdownList);
    combos[0]->AddItem(u"C30");
    combos[0]->AddItem(u"C35");
    combos[2]->AddItem(u"HPB300");
    combos[2]->AddItem(u"HRB400");
    combos[2]->SetBackColor(kColourButtonFace);
    for (const char16_t* item : {u"一", u"二", u"三"}) list->AddItem(item);
    layout->addWidget(list);
    list_array.set(0, list);
    view->setHeaderLabels({"名称", "值", "单位"});
    layout->addWidget(view);
    view_array.set(0, view);
    for (const char* caption : {"A", "B", "C"}) bar->AddButton(caption);
    layout->addWidget(bar);
    window.show();
  }

  void click(QAbstractButton* button) { QTest::mouseClick(button, Qt::LeftButton); }
  void click_item(int index) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(index)).center());
  }
  void click_button(int index) {
    QTest::mouseClick(bar->widgetForAction(bar->actions().at(index)), Qt::LeftButton);
  }
  void type(QComboBox* combo, const QString& text) {
    combo->lineEdit()->clear();
    QTest::keyClicks(combo, text);
  }
};

// A palette whose roles all have colours of their own.
QPalette distinct_palette() {
  QPalette palette;
  const std::pair<QPalette::ColorRole, const char*> roles[] = {
      {QPalette::Window, "#010203"},
      {QPalette::Base, "#101112"},
      {QPalette::Text, "#202122"},
      {QPalette::Midlight, "#303132"},
      {QPalette::Dark, "#404142"},
      {QPalette::Highlight, "#505152"},
      {QPalette::HighlightedText, "#606162"},
      {QPalette::Button, "#707172"},
      {QPalette::ButtonText, "#808182"},
  };
  for (const auto& [role, name] : roles) palette.setColor(role, QColor(name));
  palette.setColor(QPalette::Disabled, QPalette::Text, QColor("#909192"));
  return palette;
}

// The title box's document: paragraphs joined by "|", bold runs between
// "*", runs in another colour than the palette's text as "{#rrggbb:run}".
QString drawing_of(const QTextEdit& box) {
  QStringList paragraphs;
  const QColor text_colour = box.palette().color(QPalette::Text);
  for (QTextBlock block = box.document()->begin(); block.isValid(); block = block.next()) {
    QString paragraph;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
      const QTextFragment fragment = it.fragment();
      QString run = fragment.text();
      const QTextCharFormat format = fragment.charFormat();
      if (format.fontWeight() == QFont::Bold) run = "*" + run + "*";
      const QColor colour = format.foreground().color();
      if (colour != text_colour) run = "{" + colour.name() + ":" + run + "}";
      paragraph += run;
    }
    paragraphs << paragraph;
  }
  return paragraphs.join(u'|');
}

constexpr char16_t kCaptionRtf[] = u"{\\rtf1 \\b Caption\\b0 \\par help}";

}  // namespace

class QtControlsTest : public QObject {
  Q_OBJECT

 private slots:
  void formStateRoundTripsThroughADataFile();
  void comboBoxTakesASavedText_data();
  void comboBoxTakesASavedText();
  void controlsKeepTheInMemoryRules();
  void formHelpersWorkTheAdapters();
  void comboBoxPaintsItsBackColor_data();
  void comboBoxPaintsItsBackColor();
  void systemColoursComeFromThePalette_data();
  void systemColoursComeFromThePalette();
  void titleBoxDrawsTheModel();
  void titleBoxFollowsFontSizeToolTipAndPalette();
  void gridDrawsWhatChangedWhileDrawingWasOff_data();
  void gridDrawsWhatChangedWhileDrawingWasOff();
  void messageBoxAnswersThroughTheRealDialog_data();
  void messageBoxAnswersThroughTheRealDialog();
  void diagnosticsGoToTheLog();
  void twipsToPixels_data();
  void twipsToPixels();
  void moveConvertsTwipsAndRefusesNegativeSizes_data();
  void moveConvertsTwipsAndRefusesNegativeSizes();
};

// Real widgets set by a user's clicks and typing, saved, changed, and read
// back through the form's reading loop.
void QtControlsTest::formStateRoundTripsThroughADataFile() {
  Form form;
  QVERIFY(QTest::qWaitForWindowExposed(&form.window));
  form.click(form.checks[0]);  // checked
  form.checks[1]->Value(2);    // grayed by the program
  form.click(form.options[1]);
  form.combos[0]->setCurrentIndex(1);
  form.type(form.combos[1], "C32 custom");
  form.combos[2]->Text(u"HRB400");
  form.click_item(0);
  form.click_item(2);
  form.view->SubItem(form.view->ListItemsAdd(u"荷载"), 2, u"kN");
  form.view->SubItem(form.view->ListItemsAdd(u""), 1, u"12.5");
  form.click_button(1);

  QCOMPARE(form.checks[0]->checkState(), Qt::Checked);
  QCOMPARE(form.combos[1]->lineEdit()->text(), QString("C32 custom"));
  QCOMPARE(texts_of(*form.list, true), QStringList({"一", "三"}));
  const QStringList rows{"荷载||kN", "|12.5|"};
  QCOMPARE(rows_of(*form.view), rows);
  QCOMPARE(checked_of(*form.bar), QList<bool>({false, true, false}));

  const auto platform = Platform::headless();
  QVERIFY(save(platform, [&](clsLoadSave& ls) {
    ls.WriteFile_Check_BsA(form.check_array, u"chk");
    ls.WriteFile_Option_BsA(form.option_array, u"opt");
    ls.WriteFile_ComboBox_BsA(form.combo_array, true, u"cbo");
    ls.WriteFile_ListBox_BsA(form.list_array, u"lst");
    ls.WriteFile_ListViewA(0, *form.view, u"lv");
    for (int32_t button = 1; button <= form.bar->ButtonsCount(); ++button) {
      ls.WriteFile_Toolbar_EditA(button, *form.bar, u"tb");
    }
  }));

  // The user changes everything.
  form.click(form.checks[0]);
  form.click(form.checks[1]);  // a click never grays: checked
  form.checks[2]->Value(1);
  form.click(form.options[0]);
  form.combos[0]->setCurrentIndex(0);
  form.type(form.combos[1], "other");
  form.combos[2]->Text(u"HPB300");
  form.combos[2]->Clear();
  form.click_item(0);
  form.click_item(1);
  form.view->ListItemsClear();
  form.view->ListItemsAdd(u"old");
  form.click_button(1);
  form.click_button(2);
  QCOMPARE(form.checks[1]->checkState(), Qt::Checked);
  QCOMPARE(form.combos[1]->lineEdit()->text(), QString("other"));
  QCOMPARE(form.combos[2]->lineEdit()->text(), QString("HPB300"));
  QCOMPARE(checked_of(*form.bar), QList<bool>({false, false, true}));

  const int groups = load(platform, [&](clsLoadSave& ls, UseBinRecord& rec) {
    switch (rec.ID) {
      case 202:
        return ls.ReadFile_Check_BA(form.check_array, rec);
      case 207:
        return ls.ReadFile_Option_BA(form.option_array, rec);
      case 204:
        return ls.ReadFile_ComboBox_BA(form.combo_array, rec);
      case 209:
        return ls.ReadFile_ListBox_BA(form.list_array, rec);
      case 225:
        return ls.ReadFile_ListViewA(form.view_array, rec);
      case 220:
        return ls.ReadFile_Toolbar_EditA(*form.bar, rec);
      default:
        return false;
    }
  });
  QCOMPARE(groups, 3 + 2 + 3 + 1 + 1 + 3);

  QCOMPARE(form.checks[0]->checkState(), Qt::Checked);
  QCOMPARE(form.checks[1]->checkState(), Qt::PartiallyChecked);
  QCOMPARE(form.checks[2]->checkState(), Qt::Unchecked);
  QVERIFY(!form.options[0]->isChecked());
  QVERIFY(form.options[1]->isChecked());
  QCOMPARE(form.combos[0]->currentIndex(), 1);
  QCOMPARE(form.combos[0]->currentText(), QString("C35"));
  QCOMPARE(form.combos[1]->lineEdit()->text(), QString("C32 custom"));
  QCOMPARE(items_of(*form.combos[2]), QStringList({"HPB300", "HRB400"}));
  QCOMPARE(form.combos[2]->lineEdit()->text(), QString("HRB400"));
  QCOMPARE(texts_of(*form.list, true), QStringList({"一", "三"}));
  QCOMPARE(rows_of(*form.view), rows);
  QCOMPARE(checked_of(*form.bar), QList<bool>({false, true, false}));
}

void QtControlsTest::comboBoxTakesASavedText_data() {
  QTest::addColumn<int>("style");
  QTest::addColumn<uint>("back_colour");
  QTest::addColumn<QStringList>("items");
  QTest::addColumn<QString>("shown");
  const uint window = kColourWindow;
  const uint white = rgb(255, 255, 255);
  const uint greyed = kColourButtonFace;
  QTest::newRow("editable on the window colour") << 0 << window << QStringList{} << "typed";
  QTest::newRow("editable on white") << 0 << white << QStringList{"a"} << "typed";
  QTest::newRow("greyed, not an item") << 0 << greyed << QStringList{"a"} << "old";
  QTest::newRow("greyed, an item") << 0 << greyed << QStringList{"a", "typed"} << "typed";
  QTest::newRow("list, not an item") << 2 << window << QStringList{"old", "a"} << "old";
  QTest::newRow("list, an item") << 2 << window << QStringList{"old", "typed"} << "typed";
}

// A typed text saved from one box and read into a box of each kind (the
// file holds no list, so the target keeps its items).
void QtControlsTest::comboBoxTakesASavedText() {
  QFETCH(int, style);
  QFETCH(uint, back_colour);
  QFETCH(QStringList, items);
  QFETCH(QString, shown);

  QtComboBox source;
  QTest::keyClicks(&source, "typed");
  QCOMPARE(source.Text(), Text(u"typed"));
  const auto platform = Platform::headless();
  QVERIFY(save(platform, [&](clsLoadSave& ls) { ls.WriteFile_ComboBox(0, source); }));

  QtComboBox target;
  target.SetStyle(static_cast<int16_t>(style));
  for (const QString& item : items) target.AddItem(to_text(item));
  target.Text(u"old");
  target.SetBackColor(back_colour);
  QCOMPARE(target.currentText(), QString("old"));
  ControlArray<platform::ComboBox> boxes;
  boxes.set(0, &target);
  QCOMPARE(load(platform, [&](clsLoadSave& ls,
                              UseBinRecord& rec) { return ls.ReadFile_ComboBox_BA(boxes, rec); }),
           1);
  QCOMPARE(target.currentText(), shown);
  QCOMPARE(items_of(target), items);
}

// The same calls on an in-memory control and on the Qt one leave the same
// state, read through the interface: numbering, ranges, ignored writes.
void QtControlsTest::controlsKeepTheInMemoryRules() {
  {
    headless::MemoryListView memory;
    memory.columns = 3;
    QtListView widget;
    widget.setColumnCount(3);
    for (platform::ListView* view :
         {static_cast<platform::ListView*>(&memory), static_cast<platform::ListView*>(&widget)}) {
      QCOMPARE(view->ListItemsAdd(u"a"), 1);
      QCOMPARE(view->ListItemsAdd(u"b"), 2);
      for (int32_t item = -1; item <= 3; ++item) {
        for (int32_t sub = -1; sub <= 3; ++sub) {
          view->SubItem(item, sub, to_text(QString("%1.%2").arg(item).arg(sub)));
        }
      }
    }
    for (int32_t item = -1; item <= 3; ++item) {
      QCOMPARE(widget.ItemText(item), memory.ItemText(item));
      for (int32_t sub = -1; sub <= 3; ++sub) {
        QCOMPARE(widget.SubItem(item, sub), memory.SubItem(item, sub));
      }
    }
    QCOMPARE(rows_of(widget), QStringList({"a|1.1|1.2", "b|2.1|2.2"}));
  }
  {
    headless::MemoryListBox memory;
    QtListBox widget;
    for (platform::ListBox* box :
         {static_cast<platform::ListBox*>(&memory), static_cast<platform::ListBox*>(&widget)}) {
      for (const char16_t* item : {u"a", u"b", u"c"}) box->AddItem(item);
      for (const int32_t index : {-1, 1, 2, 3}) box->Selected(index, true);
      box->Selected(2, false);
    }
    QCOMPARE(widget.ListCount(), memory.ListCount());
    for (int32_t index = -1; index <= 3; ++index) {
      QCOMPARE(widget.Selected(index), memory.Selected(index));
      QCOMPARE(widget.List(index), memory.List(index));
    }
    QCOMPARE(texts_of(widget, true), QStringList({"b"}));
  }
  {
    headless::MemoryToolbar memory;
    memory.values = {0, 0, 0};
    QtToolbar widget;
    for (const char* caption : {"A", "B", "C"}) widget.AddButton(caption);
    for (platform::Toolbar* bar :
         {static_cast<platform::Toolbar*>(&memory), static_cast<platform::Toolbar*>(&widget)}) {
      for (const int32_t index : {0, 1, 3, 4}) bar->ButtonValue(index, 1);
      bar->ButtonValue(1, 0);
    }
    QCOMPARE(widget.ButtonsCount(), memory.ButtonsCount());
    for (int32_t index = -1; index <= 4; ++index) {
      QCOMPARE(widget.ButtonValue(index), memory.ButtonValue(index));
    }
    QCOMPARE(checked_of(widget), QList<bool>({false, false, true}));
  }
  {
    headless::MemoryCheckBox memory;
    QtCheckBox widget;
    for (const int16_t value : {2, 1, 0, 2}) {
      memory.Value(value);
      widget.Value(value);
      QCOMPARE(widget.Value(), memory.Value());
    }
    QCOMPARE(widget.checkState(), Qt::PartiallyChecked);
  }
  {
    // Two option buttons of one group: choosing one lets the other go, and
    // the chosen one can be let go by the program.
    QWidget group;
    QtOptionButton first(&group), second(&group);
    first.Value(true);
    second.Value(true);
    QVERIFY(!first.Value());
    second.Value(false);
    QVERIFY(!second.isChecked());
    QVERIFY(!first.isChecked());
  }
  {
    // An editable combo box keeps its text through AddItem and Clear.
    headless::MemoryComboBox memory;
    QtComboBox widget;
    for (platform::ComboBox* box :
         {static_cast<platform::ComboBox*>(&memory), static_cast<platform::ComboBox*>(&widget)}) {
      box->Text(u"typed");
      box->AddItem(u"a");
      box->AddItem(u"b");
    }
    QCOMPARE(widget.Text(), memory.Text());
    QCOMPARE(widget.List(1), memory.List(1));
    QCOMPARE(widget.List(2), memory.List(2));
    widget.setCurrentIndex(1);  // the user picks "b"
    memory.Text(u"b");
    QCOMPARE(widget.Text(), memory.Text());
    memory.Clear();
    widget.Clear();
    QCOMPARE(widget.ListCount(), 0);
    QCOMPARE(widget.Text(), memory.Text());
  }
  {
    // A list shows nothing until an item is chosen; AddItem does not choose.
    QtComboBox list;
    list.SetStyle(platform::ComboBox::kDropdownList);
    list.AddItem(u"a");
    QCOMPARE(list.currentIndex(), -1);
    list.Text(u"b");
    QCOMPARE(list.Text(), Text());
    list.Text(u"a");
    QCOMPARE(list.Text(), Text(u"a"));
    QCOMPARE(list.Style(), platform::ComboBox::kDropdownList);
    list.SetStyle(1);  // not a style of the library: ignored
    QCOMPARE(list.Style(), platform::ComboBox::kDropdownList);
  }
}

void QtControlsTest::comboBoxPaintsItsBackColor_data() {
  QTest::addColumn<uint>("colour");
  QTest::addColumn<QPalette::ColorRole>("natural_role");  // NoRole: `plain`
  QTest::addColumn<QColor>("plain");
  QTest::newRow("window") << uint{kColourWindow} << QPalette::Base << QColor();
  QTest::newRow("button face") << uint{kColourButtonFace} << QPalette::Button << QColor();
  QTest::newRow("yellow") << rgb(255, 255, 0) << QPalette::NoRole << QColor(255, 255, 0);
}

// The box's base, in the editable box's line edit too; a system colour is
// the palette's from before the box was painted.
void QtControlsTest::comboBoxPaintsItsBackColor() {
  QFETCH(uint, colour);
  QFETCH(QPalette::ColorRole, natural_role);
  QFETCH(QColor, plain);
  QWidget window;
  window.setPalette(distinct_palette());
  QtComboBox combo(&window);
  QCOMPARE(combo.BackColor(), kColourWindow);
  combo.SetBackColor(rgb(1, 2, 3));  // painted once before
  combo.SetBackColor(colour);
  const QColor expected =
      natural_role == QPalette::NoRole ? plain : distinct_palette().color(natural_role);
  QCOMPARE(combo.BackColor(), colour);
  QCOMPARE(combo.palette().color(QPalette::Base), expected);
  QCOMPARE(combo.lineEdit()->palette().color(QPalette::Base), expected);
}

void QtControlsTest::systemColoursComeFromThePalette_data() {
  QTest::addColumn<uint>("colour");
  QTest::addColumn<QColor>("expected");
  const QPalette p = distinct_palette();
  QTest::newRow("0x00BBGGRR") << rgb(0x12, 0x34, 0x56) << QColor(0x12, 0x34, 0x56);
  QTest::newRow("black") << rgb(0, 0, 0) << QColor(0, 0, 0);
  QTest::newRow("window") << system_colour(5) << p.color(QPalette::Base);
  QTest::newRow("window text") << system_colour(8) << p.color(QPalette::Text);
  QTest::newRow("inactive border") << system_colour(11) << p.color(QPalette::Midlight);
  QTest::newRow("application workspace") << system_colour(12) << p.color(QPalette::Dark);
  QTest::newRow("highlight") << system_colour(13) << p.color(QPalette::Highlight);
  QTest::newRow("highlight text") << system_colour(14) << p.color(QPalette::HighlightedText);
  QTest::newRow("button face") << system_colour(15) << p.color(QPalette::Button);
  const QColor text = p.color(QPalette::Text), base = p.color(QPalette::Base);
  QTest::newRow("gray text") << system_colour(17)
                             << QColor((text.red() + base.red()) / 2,
                                       (text.green() + base.green()) / 2,
                                       (text.blue() + base.blue()) / 2);
  QTest::newRow("button text") << system_colour(18) << p.color(QPalette::ButtonText);
  QTest::newRow("scroll bar: any other") << system_colour(0) << p.color(QPalette::Window);
  QTest::newRow("index 40: any other") << system_colour(40) << p.color(QPalette::Window);
}

void QtControlsTest::systemColoursComeFromThePalette() {
  QFETCH(uint, colour);
  QFETCH(QColor, expected);
  QCOMPARE(to_qcolor(colour, distinct_palette()), expected);
}

// The document of the title box after the library's calls: bold runs,
// colours, paragraphs.
void QtControlsTest::titleBoxDrawsTheModel() {
  const QString gray = to_qcolor(kColourGrayText, QtRichTextBox().palette()).name();
  struct Case {
    const char* what;
    std::function<void(QtRichTextBox&)> calls;
    QString drawing;
  };
  const Case cases[] = {
      {"a caption in bold over its help", [](QtRichTextBox& box) { box.TextRTF(kCaptionRtf); },
       "*Caption*|help"},
      {"text inserted at the end in red, not bold",
       [](QtRichTextBox& box) {
         box.TextRTF(kCaptionRtf);
         box.SelStart(1000);
         box.SelColor(rgb(255, 0, 0));
         box.SelText(u" (kN)");
       },
       "*Caption*|help{#ff0000: (kN)}"},
      {"the bold caption replaced in gray text",
       [](QtRichTextBox& box) {
         box.TextRTF(kCaptionRtf);
         box.SelStart(0);
         box.SelLength(7);
         box.SelColor(kColourGrayText);
         box.SelText(u"标题");
       },
       "{" + gray + ":标题}|help"},
      {"a selection coloured in place",
       [](QtRichTextBox& box) {
         box.Text(u"abc");
         box.SelStart(1);
         box.SelLength(5);  // kept within the text
         box.SelColor(rgb(0, 0, 255));
       },
       "a{#0000ff:bc}"},
      {"plain text: every line break a paragraph",
       [](QtRichTextBox& box) { box.Text(u"a\r\nb\nc\r\rd"); }, "a|b|c||d"},
      {"plain text after rich text: no bold left",
       [](QtRichTextBox& box) {
         box.TextRTF(kCaptionRtf);
         box.Text(u"x");
       },
       "x"},
  };
  for (const Case& c : cases) {
    QtRichTextBox box;
    QVERIFY(box.isReadOnly());
    c.calls(box);
    QCOMPARE(QString(c.what) + ": " + drawing_of(box), QString(c.what) + ": " + c.drawing);
  }
}

void QtControlsTest::titleBoxFollowsFontSizeToolTipAndPalette() {
  QtRichTextBox box;
  box.TextRTF(kCaptionRtf);
  box.FontSize(10.5f);
  box.ToolTipText(u"说明");
  QCOMPARE(box.document()->defaultFont().pointSizeF(), 10.5);
  QCOMPARE(box.toolTip(), QString("说明"));

  // A new font keeps the size; a new palette recolours the window text.
  QFont font = box.font();
  font.setPointSizeF(20);
  font.setItalic(true);
  box.setFont(font);
  QCOMPARE(box.document()->defaultFont().pointSizeF(), 10.5);
  QVERIFY(box.document()->defaultFont().italic());
  QPalette palette = box.palette();
  palette.setColor(QPalette::Text, QColor(0, 128, 0));
  box.setPalette(palette);
  const QTextFragment first = box.document()->begin().begin().fragment();
  QCOMPARE(first.text(), QString("Caption"));
  QCOMPARE(first.charFormat().foreground().color(), QColor(0, 128, 0));
  QCOMPARE(drawing_of(box), QString("*Caption*|help"));

  box.FontSize(0);  // the widget's own size again
  QCOMPARE(box.document()->defaultFont().pointSizeF(), 20.0);
}

void QtControlsTest::messageBoxAnswersThroughTheRealDialog_data() {
  QTest::addColumn<bool>("question");
  QTest::addColumn<int>("click");
  QTest::addColumn<int>("answer");  // -1: a warning has none
  QTest::newRow("question, Yes") << true << int{QMessageBox::Yes} << int{MessageBox::kYes};
  QTest::newRow("question, Cancel") << true << int{QMessageBox::Cancel} << int{MessageBox::kCancel};
  QTest::newRow("warning, OK") << false << int{QMessageBox::Ok} << -1;
}

void QtControlsTest::messageBoxAnswersThroughTheRealDialog() {
  QFETCH(bool, question);
  QFETCH(int, click);
  QFETCH(int, answer);
  QWidget form;
  form.show();
  QtMessageBox messages(&form);
  QMessageBox* shown = nullptr;
  bool modal = false;
  QString text, title;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  QMessageBox::StandardButtons buttons;
  Qt::TextFormat format = Qt::AutoText;
  QWidget* parent = nullptr;
  messages.on_show = [&](QMessageBox& box) {
    shown = &box;
    text = box.text();
    format = box.textFormat();
    title = box.windowTitle();
    icon = box.icon();
    buttons = box.standardButtons();
    parent = box.parentWidget();
    QTimer::singleShot(0, [&] {
      modal = QApplication::activeModalWidget() == shown;
      QTest::mouseClick(shown->button(static_cast<QMessageBox::StandardButton>(click)),
                        Qt::LeftButton);
    });
  };
  const TextView message = u"错误：b ＝ -250 ≤ 0，\r\n<b> 应大于 0。";
  int result = -1;
  if (question) {
    result = messages.question(message, u"梁配筋计算");
  } else {
    messages.warning(message, u"梁配筋计算");
  }
  QVERIFY(shown);
  QVERIFY(modal);
  QCOMPARE(result, answer);
  QCOMPARE(text, QString("错误：b ＝ -250 ≤ 0，\n<b> 应大于 0。"));
  QCOMPARE(format, Qt::PlainText);
  QCOMPARE(parent, &form);
  QCOMPARE(title, QString("梁配筋计算"));
  QCOMPARE(icon, question ? QMessageBox::Question : QMessageBox::Warning);
  const QMessageBox::StandardButtons expected_buttons =
      question ? QMessageBox::Yes | QMessageBox::Cancel : QMessageBox::Ok;
  QCOMPARE(buttons.toInt(), expected_buttons.toInt());
}

void QtControlsTest::diagnosticsGoToTheLog() {
  std::vector<std::string> logged;
  QtMessageBox logging(nullptr, [&](std::string_view m) { logged.emplace_back(m); });
  logging.diagnostic("资源文件损坏");
  QCOMPARE(logged.size(), std::size_t{1});
  QCOMPARE(QString::fromStdString(logged[0]), QString("资源文件损坏"));

  QtMessageBox plain;
  QTest::ignoreMessage(QtWarningMsg, "资源文件损坏");
  plain.diagnostic("资源文件损坏");
}

void QtControlsTest::twipsToPixels_data() {
  QTest::addColumn<int>("twips");
  QTest::addColumn<double>("dpi");
  QTest::addColumn<int>("pixels");
  QTest::newRow("an inch") << 1440 << 96.0 << 96;
  QTest::newRow("an inch at 144") << 1440 << 144.0 << 144;
  QTest::newRow("15 twips a pixel at 96") << 15 << 96.0 << 1;
  QTest::newRow("below a half") << 7 << 96.0 << 0;
  QTest::newRow("above a half") << 8 << 96.0 << 1;
  QTest::newRow("a half, away from zero") << 15 << 48.0 << 1;
  QTest::newRow("negative half") << -15 << 48.0 << -1;
  QTest::newRow("half an inch at 120") << 720 << 120.0 << 60;
  QTest::newRow("zero") << 0 << 96.0 << 0;
  QTest::newRow("a wide form") << 28800 << 96.0 << 1920;
}

void QtControlsTest::twipsToPixels() {
  QFETCH(int, twips);
  QFETCH(double, dpi);
  QFETCH(int, pixels);
  QCOMPARE(twips_to_pixels(twips, dpi), pixels);
}

void QtControlsTest::moveConvertsTwipsAndRefusesNegativeSizes_data() {
  QTest::addColumn<QRect>("twips");  // left, top, width, height in whole inches
  QTest::addColumn<bool>("moved");
  QTest::newRow("inches") << QRect(1, 2, 3, 1) << true;
  QTest::newRow("left of and above the form") << QRect(-1, -2, 1, 1) << true;
  QTest::newRow("no size") << QRect(0, 0, 0, 0) << true;
  QTest::newRow("negative width") << QRect(1, 1, -1, 1) << false;
  QTest::newRow("negative height") << QRect(1, 1, 1, -1) << false;
}

void QtControlsTest::moveConvertsTwipsAndRefusesNegativeSizes() {
  QFETCH(QRect, twips);
  QFETCH(bool, moved);
  QWidget form;
  QtPanel panel(&form);
  QtRichTextBox title(&form);
  const std::pair<QWidget*, WindowControl*> controls[] = {{&panel, &panel}, {&title, &title}};
  for (const auto& [qwidget, control] : controls) {
    QWidget& widget = *qwidget;
    const QRect before(5, 6, 70, 80);
    widget.setGeometry(before);
    const int x = widget.logicalDpiX();
    const int y = widget.logicalDpiY();
    QCOMPARE(control->Move(twips.x() * 1440, twips.y() * 1440, twips.width() * 1440,
                           twips.height() * 1440),
             moved);
    const QRect expected(twips.x() * x, twips.y() * y, twips.width() * x, twips.height() * y);
    QCOMPARE(widget.geometry(), moved ? expected : before);
    QVERIFY(control->Visible());
    control->Visible(false);
    QVERIFY(widget.isHidden());
    QVERIFY(!control->Visible());
  }
}

// The changes a form makes to the grid with drawing off, each one reaching
// the table at Refresh and not before: the cells it changed, the sizes and
// the font, over a grid drawn before (a grid built again over its rows).
struct GridChange {
  const char* name;
  std::function<void(QtGridControl&)> change;
  std::function<bool(const QtGridControl&)> shown;
};

const std::vector<GridChange>& grid_changes() {
  static const std::vector<GridChange> changes{
      {"text", [](QtGridControl& g) { g.Text(2, 3, u"300"); },
       [](const QtGridControl& g) { return g.item(2, 3)->text() == "300"; }},
      {"text of a merged range, in its first column",
       [](QtGridControl& g) { g.Text(1, 2, u"基本信息"); },
       [](const QtGridControl& g) { return g.item(1, 1)->text() == "基本信息"; }},
      {"text changed and changed back",
       [](QtGridControl& g) {
         g.Text(2, 3, u"300");
         g.Text(2, 3, u"250");
         g.Text(2, 2, u"b");
       },
       [](const QtGridControl& g) {
         return g.item(2, 3)->text() == "250" && g.item(2, 2)->text() == "b";
       }},
      {"bold", [](QtGridControl& g) { g.FontBold(2, 3, true); },
       [](const QtGridControl& g) { return g.item(2, 3)->font().bold(); }},
      {"fore colour", [](QtGridControl& g) { g.ForeColor(2, 3, 0x0000FFu); },
       [](const QtGridControl& g) {
         return g.item(2, 3)->foreground().color() == QColor(255, 0, 0);
       }},
      {"back colour", [](QtGridControl& g) { g.BackColor(3, 2, 0x00FF00u); },
       [](const QtGridControl& g) {
         return g.item(3, 2)->background().color() == QColor(0, 255, 0);
       }},
      {"alignment", [](QtGridControl& g) { g.Alignment(2, 3, GridControl::kAlignLeft); },
       [](const QtGridControl& g) { return (g.item(2, 3)->textAlignment() & Qt::AlignLeft) != 0; }},
      {"locked", [](QtGridControl& g) { g.Locked(2, true); },
       [](const QtGridControl& g) { return !(g.item(2, 3)->flags() & Qt::ItemIsEditable); }},
      {"picture", [](QtGridControl& g) { g.SetImage(2, 1, u"dot"); },
       [](const QtGridControl& g) { return g.item(2, 1)->data(Qt::DecorationRole).isValid(); }},
      {"column width", [](QtGridControl& g) { g.ColWidth(2, 123); },
       [](const QtGridControl& g) { return g.columnWidth(2) == 123; }},
      {"row folded", [](QtGridControl& g) { g.RowHeight(3, 0); },
       [](const QtGridControl& g) { return g.isRowHidden(3); }},
      {"font size", [](QtGridControl& g) { g.DefaultFontSize(14); },
       [](const QtGridControl& g) { return g.item(2, 3)->font().pointSizeF() == 14; }},
      {"rows added", [](QtGridControl& g) { g.Rows(6); },
       [](const QtGridControl& g) { return g.rowCount() == 6 && g.item(5, 3) != nullptr; }},
  };
  return changes;
}

void QtControlsTest::gridDrawsWhatChangedWhileDrawingWasOff_data() {
  QTest::addColumn<int>("change");
  for (std::size_t i = 0; i < grid_changes().size(); ++i) {
    QTest::newRow(grid_changes()[i].name) << static_cast<int>(i);
  }
}

void QtControlsTest::gridDrawsWhatChangedWhileDrawingWasOff() {
  QFETCH(int, change);
  const GridChange& tested = grid_changes()[static_cast<std::size_t>(change)];
  QtGridControl grid;
  grid.resize(400, 200);
  grid.DefaultFontSize(9);
  grid.Rows(4);
  grid.Cols(4);
  for (int32_t col = 0; col < 4; ++col) grid.ColWidth(col, 60);
  grid.AddPicture(Picture{2, 2, std::vector<uint32_t>(4, 0xFF000000u)}, u"dot");
  grid.Merge(1, 1, 3);
  for (int32_t row = 1; row < 4; ++row) grid.Text(row, 3, u"250");
  grid.show();
  QVERIFY(QTest::qWaitForWindowExposed(&grid));
  QVERIFY(!tested.shown(grid));

  grid.AutoRedraw(false);
  tested.change(grid);
  QApplication::processEvents();
  QVERIFY2(!tested.shown(grid), "drawn before Refresh");
  grid.AutoRedraw(true);
  grid.Refresh();
  QVERIFY2(tested.shown(grid), "not drawn at Refresh");
}

// The form helpers on the Qt adapters: a list fills and selects as on the
// in-memory controls, a user's click on the check box greys the controls
// out, and a moved row keeps its sub-items and the selection.
void QtControlsTest::formHelpersWorkTheAdapters() {
  QtComboBox combo;
  combo.SetStyle(platform::ComboBox::kDropdownList);
  QVERIFY(controls::bCboB_FillFromText(combo, u"C25|C30"));
  QVERIFY(controls::bCboB_SelectText(combo, u" c30"));
  QCOMPARE(combo.currentText(), QString("C30"));
  QtListBox list;
  QVERIFY(controls::bLstB_FillFromText(list, u"锥形|阶梯形"));
  QVERIFY(controls::bLstB_SelectText(list, u"阶梯形"));
  QCOMPARE(texts_of(list, true), QStringList({"阶梯形"}));

  QWidget window;
  auto* check = new QtCheckBox("受扭", &window);
  auto* view = new QtListView(&window);
  auto* layout = new QVBoxLayout(&window);
  layout->addWidget(check);
  layout->addWidget(view);
  window.show();
  QVERIFY(QTest::qWaitForWindowExposed(&window));
  QTest::mouseClick(check, Qt::LeftButton, Qt::NoModifier, QPoint(8, check->height() / 2));
  QCOMPARE(check->Value(), int16_t{1});
  controls::ChkB_EnableControls(*check, {view, &combo}, true);
  QVERIFY(!view->isEnabled() && !view->Enabled() && !combo.isEnabled());
  controls::ChkB_EnableControls(*check, {view, &combo});
  QVERIFY(view->isEnabled() && combo.Enabled());

  view->setHeaderLabels({"荷载", "值"});
  for (const char* row : {"A", "B", "C"}) view->SubItem(view->ListItemsAdd(to_text(row)), 1, u"1");
  view->SubItem(3, 1, u"3");
  view->SelectedItem(3);
  QVERIFY(controls::bLstView_MoveRow(*view, view->SelectedItem(), -2));
  QCOMPARE(rows_of(*view), QStringList({"C|3", "A|1", "B|1"}));
  QCOMPARE(view->SelectedItem(), 1);
  QCOMPARE(view->currentItem()->text(0), QString("C"));
  QVERIFY(!controls::bLstView_MoveRow(*view, 1, -1));
}

}  // namespace zelkora::platform::qt

QTEST_MAIN(zelkora::platform::qt::QtControlsTest)
#include "qt_controls_qtest.moc"
