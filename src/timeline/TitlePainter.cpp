#include "timeline/TitlePainter.h"

#include <QPainter>

#include "model/Composition.h"
#include "timeline/RowPainter.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace timeline {

using widgets::DevicePixels;
using widgets::TextStyle;
using widgets::Token;
using widgets::TYGlyph;
using widgets::TYStyleKit;
using Measures = TimelineMeasures;

namespace {

constexpr double glyphSize = 16;
constexpr double glyphGap = 4;   // between disclosure and title
constexpr double eyeMargin = 6;  // from the column's right edge
constexpr double glyphTop = (Measures::componentHeight - glyphSize) / 2;

void drawTitle(QPainter& painter, const QRectF& box, const QString& title, TextStyle style,
               Token token) {
  painter.setFont(TYStyleKit::font(style));
  painter.setPen(TYStyleKit::colour(token));
  const QFontMetricsF metrics(painter.font());
  painter.drawText(box, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   metrics.elidedText(title, Qt::ElideMiddle, box.width()));
}

void drawComponentRow(QPainter& painter, const TimelineScene& scene,
                      const model::QuartzComponent& component, int index, const QRectF& rect) {
  const bool isHidden = !component.visibleInCompositionEditor();
  const bool isDim = isHidden || isBroken(component);
  TYGlyph::paint(
      painter,
      component.expanded() ? QStringLiteral("DisclosingOpen") : QStringLiteral("DisclosingClosed"),
      TitlePainter::disclosureRect().translated(rect.topLeft()),
      TYStyleKit::colour(component.selected() ? Token::Text : Token::Text2));
  const QRectF box = TitlePainter::textBox({const_cast<model::QuartzComponent*>(&component)},
                                           scene.componentsWidth)
                         .translated(rect.topLeft());
  drawTitle(painter, box, component.title(),
            component.selected() ? TextStyle::Medium : TextStyle::Body,
            isDim ? Token::Text2 : Token::Text);
  const bool isOver = scene.componentMouseOverRow == index;
  if (!isHidden && !isOver) return;
  TYGlyph::paint(painter, isHidden ? QStringLiteral("EyeOff") : QStringLiteral("Eye"),
                 TitlePainter::eyeRect(scene.componentsWidth).translated(rect.topLeft()),
                 TYStyleKit::colour(isOver && scene.mouseOverEye ? Token::Text : Token::Text2));
}

}  // namespace

QRectF TitlePainter::disclosureRect() {
  return {Measures::componentIndent1 - glyphGap - glyphSize, glyphTop, glyphSize, glyphSize};
}

QRectF TitlePainter::eyeRect(double componentsWidth) {
  return {componentsWidth - eyeMargin - glyphSize, glyphTop, glyphSize, glyphSize};
}

QRectF TitlePainter::textBox(const TimelineRow& row, double componentsWidth) {
  const double left = Measures::componentIndent1 + (row.attribute ? Measures::componentIndent2 : 0);
  const double right = eyeRect(componentsWidth).left() - glyphGap;
  return {left, 0, std::max(0.0, right - left), Measures::componentHeight - 1};
}

QString TitlePainter::fullTitle(const TimelineRow& row, double componentsWidth) {
  if (!row.component) return {};
  const QString title = row.attribute ? row.attribute->title() : row.component->title();
  const bool isMedium = !row.attribute && row.component->selected();
  const QFontMetricsF metrics(TYStyleKit::font(isMedium ? TextStyle::Medium : TextStyle::Body));
  return metrics.horizontalAdvance(title) > textBox(row, componentsWidth).width() ? title
                                                                                  : QString();
}

TitlePainter::Part TitlePainter::partAt(const TimelineRow& row, const QPointF& point,
                                        double componentsWidth) {
  if (!row.isComponent()) return Part::Title;
  if (point.x() < Measures::componentIndent1 - glyphGap / 2) return Part::Disclosure;
  const double margin = glyphGap;
  return eyeRect(componentsWidth).adjusted(-margin, -margin, margin, margin).contains(point)
             ? Part::Eye
             : Part::Title;
}

void TitlePainter::drawRow(QPainter& painter, const TimelineScene& scene, const TimelineRow& row,
                           int index, const QRectF& rect) {
  RowPainter::fillComponent(painter, row.isComponent() ? row.component : nullptr, rect, index);
  if (row.isComponent()) {
    drawComponentRow(painter, scene, *row.component, index, rect);
  } else if (row.attribute) {
    drawTitle(painter, textBox(row, scene.componentsWidth).translated(rect.topLeft()),
              row.attribute->title(), TextStyle::Body, Token::Text2);
  }
  if (row.component && scene.hasFocus && scene.currentRow == index && !scene.currentTime)
    DevicePixels(painter).edge(rect.adjusted(1, 0, -2, -1), TYStyleKit::colour(Token::Accent), 3,
                               2);
}

void TitlePainter::drawRuler(QPainter& painter, const TimelineScene& scene, const QRectF& exposed) {
  const double scrolled = scene.geometry.visibleOrigin().y();
  const int first =
      std::max(0, static_cast<int>((exposed.top() + scrolled) / Measures::componentHeight));
  const int last = static_cast<int>((exposed.bottom() + scrolled) / Measures::componentHeight);
  for (int row = first; row <= last; ++row)
    drawRow(painter, scene, scene.rows.at(row), row,
            {0, row * Measures::componentHeight - scrolled, scene.componentsWidth,
             Measures::componentHeight});
  if (scene.marks.insertRow >= 0)
    painter.fillRect(QRectF(0, scene.marks.insertRow * Measures::componentHeight - scrolled - 1,
                            scene.componentsWidth, 2),
                     TYStyleKit::colour(Token::Accent));
  DevicePixels(painter).vertical(scene.componentsWidth - 1, exposed.top(), exposed.bottom(),
                                 TYStyleKit::colour(Token::Separator));
}

}  // namespace timeline
