#pragma once

#include <QFontMetricsF>
#include <QRectF>
#include <QString>

class QPainter;

namespace widgets {

/// Text whose digits all have the width of "0", so that running time codes and stacked ruler labels
/// stand still whatever the font does.
class TabularText {
 public:
  [[nodiscard]] static double width(const QFont& font, const QString& text);
  /// In the painter's font and pen, as QPainter::drawText does for the same alignment.
  static void draw(QPainter& painter, const QRectF& rect, Qt::Alignment alignment,
                   const QString& text);
};

}  // namespace widgets
