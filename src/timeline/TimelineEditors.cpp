#include "timeline/TimelineEditors.h"

#include <QScreen>

#include "model/Composition.h"
#include "store/ObjectContext.h"
#include "timeline/InPlaceField.h"
#include "timeline/KeyFramePanel.h"
#include "timeline/TYTimelineRulerView.h"
#include "timeline/TYTimelineScrollView.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TYTimelneClipView.h"
#include "timeline/TimeRulerPainter.h"
#include "timeline/TimelineScene.h"
#include "timeline/TitlePainter.h"
#include "widgets/TYStyleKit.h"

namespace timeline {

using Measures = TimelineMeasures;

namespace {

constexpr int fieldMargin = 4;
constexpr int triggerWidth = 180;
constexpr int panelDistance = 6;

}  // namespace

void TimelineEditors::close() {
  if (auto* field = qobject_cast<InPlaceField*>(m_open.data())) field->drop();
  if (auto* panel = qobject_cast<KeyFramePanel*>(m_open.data())) panel->drop();
  m_open.clear();
}

void TimelineEditors::finish() {
  if (auto* field = qobject_cast<InPlaceField*>(m_open.data())) field->keep();
  close();
}

void TimelineEditors::scrolled(const QPoint& moved) {
  // The field of a title is a child of its ruler, which takes it along.
  if (m_open && m_open->parentWidget() == &m_view && !m_open->isWindow())
    m_open->move(m_open->x() + moved.x(), m_open->y());
}

QWidget* TimelineEditors::open() const {
  return m_open && m_open->isVisible() ? m_open.data() : nullptr;
}

void TimelineEditors::rename(model::QuartzComponent& component) {
  close();
  const int row = m_view.rows().rowOf(component);
  if (row < 0 || !component.titleEditable()) return;
  m_view.revealRow(row);
  TYTimelineRulerView& titles = m_view.scrollView().verticalRuler();
  auto* field = new InPlaceField(component.title(), &titles, [&component](const QString& text) {
    if (!component.context() || text.trimmed().isEmpty()) return;
    const store::UndoStep step(*component.context(), TYTimelineView::tr("Rename"));
    component.setTitle(text);
  });
  m_open = field;
  field->setFont(widgets::TYStyleKit::font(widgets::TextStyle::Body));
  field->setAccessibleName(TYTimelineView::tr("Title"));
  const double top =
      row * Measures::componentHeight - m_view.timelineGeometry().visibleOrigin().y();
  QRectF box = TitlePainter::textBox({&component}, m_view.scene().componentsWidth);
  box.adjust(-fieldMargin, 1, fieldMargin, 0);
  field->setGeometry(box.translated(0, top).toRect());
  field->show();
  field->setFocus();
}

void TimelineEditors::editTriggerText(model::StopFrame& stopFrame) {
  close();
  TYTimelineRulerView& ruler = m_view.scrollView().horizontalRuler();
  m_view.revealTime(stopFrame.timepoint());
  auto* field =
      new InPlaceField(stopFrame.triggerInformation(), &m_view, [&stopFrame](const QString& text) {
        if (!stopFrame.context()) return;
        const store::UndoStep step(*stopFrame.context(), TYTimelineView::tr("Change Trigger Text"));
        stopFrame.setTriggerInformation(text);
      });
  m_open = field;
  field->setPlaceholderText(TYTimelineView::tr("Trigger text"));
  field->setAccessibleName(TYTimelineView::tr("Trigger text of the stop frame"));
  const QRectF mark =
      TimeRulerPainter::stopFrameRect(m_view.timelineGeometry(), stopFrame.timepoint());
  const int left =
      qBound(0, qRound(m_view.scene().componentsWidth + mark.center().x()) - triggerWidth / 2,
             std::max(0, m_view.width() - triggerWidth));
  field->setGeometry(left, ruler.height() + 2, triggerWidth, int(Measures::componentHeight));
  field->show();
  field->setFocus();
}

void TimelineEditors::editKeyFrame(const KeyFrameReference& keyFrame) {
  close();
  if (!keyFrame.attribute || !keyFrame.attribute->context()) return;
  m_view.composition()->deselectAllKeyFrames();
  KeyFrameSelection::add(keyFrame);
  const int row = m_view.rows().rowOf(*keyFrame.attribute);
  m_view.revealRow(row);
  m_view.revealTime(keyFrame.time);
  const TYTimelineGeometry& geometry = m_view.timelineGeometry();
  auto* panel = new KeyFramePanel(keyFrame, geometry.content().rate, &m_view);
  m_open = panel;
  panel->adjustSize();
  const QPointF centre =
      geometry.keyFrameRect(keyFrame.time, row).center() - geometry.visibleOrigin();
  QRect place(
      m_view.scrollView().clipView().mapToGlobal(
          (centre + QPointF(-panel->width() / 2.0, Measures::componentHeight / 2)).toPoint()),
      panel->size());
  const QRect room = m_view.screen()->availableGeometry();
  if (place.bottom() > room.bottom())
    place.moveBottom(place.top() - int(Measures::componentHeight) - panelDistance);
  place.moveLeft(
      qBound(room.left(), place.left(), std::max(room.left(), room.right() - place.width())));
  panel->move(place.topLeft());
  panel->show();
  if (panel->focusProxy()) panel->focusProxy()->setFocus(Qt::TabFocusReason);
}

}  // namespace timeline
