#pragma once

#include <QFlags>
#include <QRectF>
#include <QString>

class QPainter;

namespace timeline {

/// What stands around a time: items before it, at it, after it.
enum class ControlFlag { Before = 1, Here = 2, After = 4 };
Q_DECLARE_FLAGS(ControlFlags, ControlFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(ControlFlags)

/// Go to the previous one, add or remove, go to the next one: a group of three glyphs that is drawn
/// in a row of the timeline and told of clicks. All lengths are in points of the view, y downwards.
class TYTimelineControlButtons {
 public:
  enum class Action { Previous = 0, Next = 1, Add = 2, Remove = 3, None = 4 };

  /// The glyphs by their names.
  TYTimelineControlButtons(QString addImage, QString removeImage, double spacing);

  [[nodiscard]] QSizeF size() const;
  /// In the left part, of that width, of a view with these bounds.
  [[nodiscard]] QRectF rectInView(const QRectF& bounds, double width) const;
  /// At the right end of a row.
  [[nodiscard]] QRectF rectInRect(const QRectF& row) const;
  /// What leads nowhere is faint.
  void drawAtPoint(QPainter& painter, const QPointF& point, ControlFlags flags) const;
  /// The action of a click at the point, for the group in the rectangle.
  [[nodiscard]] Action controlActionInRect(const QRectF& rect, const QPointF& point,
                                           ControlFlags flags) const;

 private:
  [[nodiscard]] QPointF previousOrigin() const;
  [[nodiscard]] QPointF addOrigin() const;
  [[nodiscard]] QPointF nextOrigin() const;

  QString m_addImage;
  QString m_removeImage;
  double m_spacing;
};

}  // namespace timeline
