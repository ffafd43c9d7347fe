#include "widgets/MessageList.h"

#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {

constexpr int kRowHeight = 28;
constexpr int kMostRows = 8;
constexpr int kPadding = 10;
constexpr int kGlyph = 16;

class Rows : public QWidget {
 public:
  explicit Rows(const QStringList& rows) : m_rows(rows) {
    setFixedHeight(int(rows.size()) * kRowHeight);
    setBackgroundRole(QPalette::Base);
    setAccessibleName(rows.join(QLatin1Char('\n')).replace(QLatin1Char('\t'), QLatin1Char(' ')));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const DevicePixels pixels(painter);
    for (int i = 0; i < m_rows.size(); ++i) {
      const QRect row(0, i * kRowHeight, width(), kRowHeight);
      if (i > 0) pixels.horizontal(0, width(), row.top(), TYStyleKit::colour(Token::Separator));
      paintRow(painter, row.adjusted(kPadding, 0, -kPadding, 0), m_rows.at(i));
    }
  }

 private:
  static void paintRow(QPainter& painter, QRect row, const QString& text) {
    const QStringList parts = text.split(QLatin1Char('\t'));
    const TYGlyph* glyph = parts.size() > 1 ? TYGlyph::named(parts.constFirst()) : nullptr;
    if (glyph) {
      const QRectF box(row.left(), row.top() + (kRowHeight - kGlyph) / 2.0, kGlyph, kGlyph);
      glyph->paint(painter, box, TYStyleKit::colour(Token::Text2));
      row.setLeft(row.left() + kGlyph + kPadding);
    }
    painter.setPen(TYStyleKit::colour(Token::Text));
    painter.drawText(
        row, Qt::AlignVCenter,
        painter.fontMetrics().elidedText(parts.constLast(), Qt::ElideMiddle, row.width()));
  }

  QStringList m_rows;
};

}  // namespace

MessageList::MessageList(const QStringList& rows, QWidget* parent) : QScrollArea(parent) {
  setWidget(new Rows(rows));
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setBackgroundRole(QPalette::Base);
  const int shown = std::min(int(rows.size()), kMostRows);
  setFixedHeight(shown * kRowHeight + 2 * frameWidth());
  setFocusPolicy(rows.size() > kMostRows ? Qt::StrongFocus : Qt::NoFocus);
}

}  // namespace widgets
