// A report Document as a QTextDocument; see the header.
#include "desk/report_view.h"

#include <QAbstractTextDocumentLayout>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextObjectInterface>
#include <QTextTable>
#include <algorithm>

#include "program/section_figure.h"
#include "zelkora/document/figure_placement.h"
#include "zelkora/document/read_report.h"
#include "zelkora/platform/grade_font.h"
#include "zelkora/platform/qt/qt_controls.h"

Q_DECLARE_METATYPE(zelkora::document::Figure)

namespace zelkora::desk {

namespace {

using document::Align;
using document::Paragraph;
using document::Run;

constexpr int kFigureObject = QTextFormat::UserObject + 7;
constexpr int kFigureProperty = QTextFormat::UserProperty + 7;
constexpr int kMostColumns = 64;

// The figure of a report, painted where the text holds its object.
class FigureObject : public QObject, public QTextObjectInterface {
  Q_OBJECT
  Q_INTERFACES(QTextObjectInterface)

 public:
  FigureObject(QObject* parent, FigureColours colours)
      : QObject(parent), colours_(std::move(colours)) {}

  QSizeF intrinsicSize(QTextDocument* doc, int /*position*/, const QTextFormat& format) override {
    const document::FigureSize figure =
        document::figure_size_mm(format.property(kFigureProperty).value<document::Figure>());
    const QSizeF mm(figure.width, figure.height);
    QPaintDevice* device = doc->documentLayout()->paintDevice();
    const qreal per_mm = (device ? device->logicalDpiX() : 96) / 25.4;
    QSizeF size = mm * per_mm;
    // No wider than the text.
    const qreal room = doc->pageSize().width() - 2 * doc->documentMargin() - 2;
    if (room > 0 && size.width() > room) size *= room / size.width();
    return size;
  }

  void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* /*doc*/, int /*position*/,
                  const QTextFormat& format) override {
    paint_figure(*painter, rect, format.property(kFigureProperty).value<document::Figure>(),
                 colours_);
  }

 private:
  FigureColours colours_;
};

Qt::Alignment alignment(Align align) {
  return align == Align::kRight    ? Qt::AlignRight
         : align == Align::kCenter ? Qt::AlignHCenter
                                   : Qt::AlignLeft;
}

// The text of a run as the view can show it: breaks and control characters
// as blanks, the grade symbols as letters where their font is missing.
QString shown_text(const Run& run, bool grade_font) {
  QString text = platform::qt::to_qstring(
      grade_font ? run.text : document::grade_symbols_as_letters(run.text));
  for (QChar& c : text) {
    if (c.unicode() < 0x20 || c == QChar(0x7F) || c == QChar::ParagraphSeparator ||
        c == QChar::LineSeparator) {
      c = QLatin1Char(' ');
    }
  }
  return text;
}

class Filler {
 public:
  Filler(QTextDocument& text, const ReportLook& look)
      : text_(text), look_(look), cursor_(&text), grade_font_(load_grade_font()) {
    cell_ = QFontMetricsF(look.font).horizontalAdvance(QChar(0x4E2D)) / 2;
  }

  void notice() {
    if (look_.notice.isEmpty()) return;
    QTextCharFormat format;
    format.setForeground(QColor(0xB0, 0, 0));
    format.setFontWeight(QFont::Bold);
    cursor_.insertText(look_.notice, format);
    cursor_.insertBlock(QTextBlockFormat(), QTextCharFormat());
  }

  void paragraph(const Paragraph& p) {
    QTextBlockFormat block;
    block.setAlignment(alignment(p.align));
    block.setLeftMargin(std::clamp(p.indent, 0, 400) * cell_);
    QTextCharFormat base;
    switch (p.kind) {
      case Paragraph::Kind::kTitle:
        block.setAlignment(Qt::AlignHCenter);
        base.setFontWeight(QFont::Bold);
        if (first_title_) base.setFontPointSize(look_.font.pointSizeF() * 1.4);
        first_title_ = false;
        break;
      case Paragraph::Kind::kHeading:
        block.setTopMargin(cell_ * (p.level <= 1 ? 1.2 : 0.6));
        base.setFontWeight(QFont::Bold);
        break;
      case Paragraph::Kind::kRule:
        block.setProperty(QTextFormat::BlockTrailingHorizontalRulerWidth,
                          QTextLength(QTextLength::PercentageLength, 100));
        break;
      default:
        break;
    }
    start_block(block);
    runs(p.runs, base);
    if (p.kind == Paragraph::Kind::kRule && !signed_) signature();
  }

  void table(const document::Table& t) {
    std::size_t columns = std::max(t.align.size(), t.widths.size());
    for (const auto& row : t.rows) columns = std::max(columns, row.size());
    columns = std::min<std::size_t>(columns, kMostColumns);
    if (t.rows.empty() || columns == 0) return;
    start_block(QTextBlockFormat());
    QTextTableFormat format;
    format.setBorder(std::max<qreal>(1, cell_ * 0.12));
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(QColor(Qt::black));
    format.setCellPadding(cell_ * 0.4);
    format.setCellSpacing(0);
    format.setLeftMargin(std::clamp(t.indent, 0, 400) * cell_);
    format.setAlignment(Qt::AlignLeft);
    if (t.header) format.setHeaderRowCount(1);
    QList<QTextLength> widths;
    for (std::size_t c = 0; c < columns; ++c) {
      const int w = c < t.widths.size() ? std::clamp(t.widths[c], 1, 400) : 0;
      widths << (w > 0 ? QTextLength(QTextLength::FixedLength, (w + 2) * cell_)
                       : QTextLength(QTextLength::VariableLength, 0));
    }
    format.setColumnWidthConstraints(widths);
    QTextTable* table =
        cursor_.insertTable(static_cast<int>(t.rows.size()), static_cast<int>(columns), format);
    for (std::size_t r = 0; r < t.rows.size(); ++r) {
      for (std::size_t c = 0; c < columns; ++c) {
        QTextCursor in =
            table->cellAt(static_cast<int>(r), static_cast<int>(c)).firstCursorPosition();
        QTextBlockFormat block;
        block.setAlignment(t.header && r == 0
                               ? Qt::AlignHCenter
                               : alignment(c < t.align.size() ? t.align[c] : Align::kLeft));
        in.setBlockFormat(block);
        if (c < t.rows[r].size()) runs_at(in, t.rows[r][c], QTextCharFormat());
      }
    }
    cursor_.movePosition(QTextCursor::End);
  }

  void figure(const document::Figure& f) {
    QTextBlockFormat block;
    block.setAlignment(Qt::AlignHCenter);
    block.setTopMargin(cell_);
    start_block(block);
    QTextCharFormat object;
    object.setObjectType(kFigureObject);
    object.setProperty(kFigureProperty, QVariant::fromValue(f));
    cursor_.insertText(QString(QChar::ObjectReplacementCharacter), object);
  }

  void signature(const document::Signature& s) { signature_ = &s; }

 private:
  void start_block(const QTextBlockFormat& block) {
    if (first_block_) {
      cursor_.setBlockFormat(block);
      first_block_ = false;
    } else {
      cursor_.insertBlock(block, QTextCharFormat());
    }
  }

  void runs(const std::vector<Run>& list, const QTextCharFormat& base) {
    runs_at(cursor_, list, base);
  }

  void runs_at(QTextCursor& at, const std::vector<Run>& list, const QTextCharFormat& base) {
    for (const Run& run : list) {
      QTextCharFormat format = base;
      if (run.bold) format.setFontWeight(QFont::Bold);
      if (run.script != document::Script::kNormal) {
        format.setVerticalAlignment(run.script == document::Script::kSubscript
                                        ? QTextCharFormat::AlignSubScript
                                        : QTextCharFormat::AlignSuperScript);
      }
      if (run.grade_symbol && grade_font_) {
        format.setFontFamilies({QString::fromLatin1(platform::kGradeFontFamily)});
      }
      at.insertText(shown_text(run, grade_font_), format);
    }
  }

  // 计算：____ 校对：____ 审核：____ 日期：…, under the header's rule.
  void signature() {
    signed_ = true;
    if (!signature_) return;
    const auto field = [](const char16_t* caption, const Text& name) {
      return platform::qt::to_qstring(caption) +
             (name.empty() ? QStringLiteral("________") : platform::qt::to_qstring(name));
    };
    const QString line =
        field(document::kCalculatedBy, signature_->calculated_by) + QStringLiteral("    ") +
        field(document::kCheckedBy, signature_->checked_by) + QStringLiteral("    ") +
        field(document::kApprovedBy, signature_->approved_by) + QStringLiteral("    ") +
        field(document::kDateCaption, signature_->date);
    start_block(QTextBlockFormat());
    cursor_.insertText(shown_text(Run{platform::qt::to_text(line)}, true), QTextCharFormat());
  }

  QTextDocument& text_;
  const ReportLook& look_;
  QTextCursor cursor_;
  bool grade_font_;
  qreal cell_ = 6;
  bool first_block_ = true;
  bool first_title_ = true;
  bool signed_ = false;
  const document::Signature* signature_ = nullptr;
};

}  // namespace

bool load_grade_font() {
  static const bool loaded = [] {
    const std::string_view ttf = platform::grade_font_ttf();
    if (ttf.empty()) return false;
    const int id = QFontDatabase::addApplicationFontFromData(
        QByteArray(ttf.data(), static_cast<qsizetype>(ttf.size())));
    return id >= 0 && QFontDatabase::applicationFontFamilies(id).contains(
                          QString::fromLatin1(platform::kGradeFontFamily));
  }();
  return loaded;
}

void fill_report(QTextDocument& text, const document::Document& document, const ReportLook& look) {
  text.clear();
  text.setDefaultFont(look.font);
  text.setMetaInformation(QTextDocument::DocumentTitle, platform::qt::to_qstring(document.title));
  // One handler: a refill's replaces the last one's.
  delete text.findChild<FigureObject*>(QString(), Qt::FindDirectChildrenOnly);
  text.documentLayout()->registerHandler(kFigureObject, new FigureObject(&text, look.colours));
  // One edit block: the layout runs once at its end, not after every
  // insertion (a 100-page report fills in tens of milliseconds, not seconds);
  // nothing to undo.
  text.setUndoRedoEnabled(false);
  QTextCursor edit(&text);
  edit.beginEditBlock();
  Filler fill(text, look);
  fill.signature(document.signature);
  fill.notice();
  for (const document::Block& block : document.blocks) {
    if (const auto* p = std::get_if<Paragraph>(&block)) fill.paragraph(*p);
    if (const auto* t = std::get_if<document::Table>(&block)) fill.table(*t);
    if (const auto* f = std::get_if<document::Figure>(&block)) fill.figure(*f);
  }
  edit.endEditBlock();
}

}  // namespace zelkora::desk

#include "report_view.moc"
