#include "timeline/TYTimelineControlButtons.h"

#include <QPainter>

#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace timeline {

using widgets::TYGlyph;
using widgets::TYStyleKit;

namespace {

constexpr double glyphSide = 16;     ///< of all glyphs
constexpr QSizeF arrowSize(10, 10);  ///< what the arrows fill of it, in its middle
constexpr QSizeF toggleSize(16, 16);
constexpr double viewMargin = 8;
constexpr double rowMargin = 4;
constexpr float faint = 0.3F;

void drawGlyph(QPainter& painter, const QString& name, const QRectF& place, bool isFaint) {
  QRectF box(0, 0, glyphSide, glyphSide);
  box.moveCenter(place.center());
  QColor colour = TYStyleKit::colour(widgets::Token::Text);
  if (isFaint) colour.setAlphaF(colour.alphaF() * faint);
  TYGlyph::paint(painter, name, box, colour);
}

}  // namespace

TYTimelineControlButtons::TYTimelineControlButtons(QString addImage, QString removeImage,
                                                   double spacing)
    : m_addImage(std::move(addImage)), m_removeImage(std::move(removeImage)), m_spacing(spacing) {}

QSizeF TYTimelineControlButtons::size() const {
  return {2 * arrowSize.width() + toggleSize.width() + 2 * m_spacing, toggleSize.height()};
}

QRectF TYTimelineControlButtons::rectInView(const QRectF& bounds, double width) const {
  return {
      {bounds.x() + width - size().width() - viewMargin, bounds.center().y() - size().height() / 2},
      size()};
}

QRectF TYTimelineControlButtons::rectInRect(const QRectF& row) const {
  return {{row.right() - size().width() - rowMargin, row.center().y() - size().height() / 2},
          size()};
}

QPointF TYTimelineControlButtons::previousOrigin() const {
  return {0, (size().height() - arrowSize.height()) / 2};
}

QPointF TYTimelineControlButtons::addOrigin() const {
  return {arrowSize.width() + m_spacing, 0};
}

QPointF TYTimelineControlButtons::nextOrigin() const {
  return {size().width() - arrowSize.width(), previousOrigin().y()};
}

void TYTimelineControlButtons::drawAtPoint(QPainter& painter, const QPointF& point,
                                           ControlFlags flags) const {
  drawGlyph(painter, QStringLiteral("PreviousKeyframe"), {point + previousOrigin(), arrowSize},
            !flags.testFlag(ControlFlag::Before));
  drawGlyph(painter, flags.testFlag(ControlFlag::Here) ? m_removeImage : m_addImage,
            {point + addOrigin(), toggleSize}, false);
  drawGlyph(painter, QStringLiteral("NextKeyframe"), {point + nextOrigin(), arrowSize},
            !flags.testFlag(ControlFlag::After));
}

TYTimelineControlButtons::Action TYTimelineControlButtons::controlActionInRect(
    const QRectF& rect, const QPointF& point, ControlFlags flags) const {
  if (!rect.contains(point)) return Action::None;
  const double dx = point.x() - rect.x();
  if (dx < addOrigin().x())
    return flags.testFlag(ControlFlag::Before) ? Action::Previous : Action::None;
  if (dx > nextOrigin().x())
    return flags.testFlag(ControlFlag::After) ? Action::Next : Action::None;
  return flags.testFlag(ControlFlag::Here) ? Action::Remove : Action::Add;
}

}  // namespace timeline
