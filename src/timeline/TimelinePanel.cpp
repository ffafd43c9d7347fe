#include "timeline/TimelinePanel.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include "document/TimeCommands.h"
#include "model/Composition.h"
#include "timeline/KeyFrameSelection.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TimelineHost.h"
#include "timeline/TransportBar.h"
#include "timeline/TransportCommands.h"

namespace timeline {

namespace {

constexpr int leastHeight = 158;
constexpr int usualHeight = 284;
constexpr int leastWidth = 480;
constexpr int largeStep = 10;  ///< frames

}  // namespace

TimelinePanel::TimelinePanel(QWidget* parent) : QWidget(parent) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  m_transport = new TransportBar;
  m_view = new TYTimelineView;
  column->addWidget(m_transport);
  column->addWidget(m_view, 1);
  setFocusProxy(m_view);  // the buttons above the rows have keys of their own
  m_transport->setZoom(m_view->zoom());
  connect(m_transport, &TransportBar::zoomChanged, m_view, &TYTimelineView::setZoom);
  connect(m_view, &TYTimelineView::zoomChanged, m_transport, &TransportBar::setZoom);
  connect(m_view, &TYTimelineView::leastZoomChanged, m_transport, &TransportBar::setLeastZoom);
  connect(m_transport, &TransportBar::hintChanged, this,
          [this](const QString& hint) { m_view->host().showHint(hint); });
  connect(m_transport, &TransportBar::typingEnded, this,
          [this] { m_view->setFocus(Qt::OtherFocusReason); });
}

void TimelinePanel::setComposition(model::Composition* composition) {
  m_composition = composition;
  m_transport->setComposition(composition);
  m_view->setComposition(composition);
}

void TimelinePanel::setHost(TimelineHost& host) {
  m_view->setHost(host);
}

void TimelinePanel::selectAllKeyFrames() {
  if (!m_composition) return;
  KeyFrameSelection selection(*m_composition);
  selection.set(selection.all());
}

void TimelinePanel::toggleKeyFrame() {
  if (model::Attribute* attribute = pasteTarget())
    TransportCommands(*m_composition).toggleKeyFrameOnAttribute(*attribute);
  else
    m_view->host().showHint(tr("Choose the row of an attribute in the timeline first."));
}

model::Attribute* TimelinePanel::pasteTarget() const {
  if (!m_composition) return nullptr;
  const TimelineRow row = m_view->rows().at(m_view->currentRow());
  // Whoever selected another component since is busy with that one.
  const bool isMeant =
      row.component && (row.component->selected() || !m_composition->validSelection());
  return isMeant ? row.attribute : nullptr;
}

QSize TimelinePanel::sizeHint() const {
  return {leastWidth * 2, usualHeight};
}

QSize TimelinePanel::minimumSizeHint() const {
  return {leastWidth, leastHeight};
}

void TimelinePanel::keyPressEvent(QKeyEvent* event) {
  const int direction = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
  const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
  const bool isLarge = modifiers == Qt::ShiftModifier;
  if (!m_composition || direction == 0 || (modifiers != Qt::NoModifier && !isLarge))
    return QWidget::keyPressEvent(event);
  document::TimeCommands(*m_composition).jumpByFrames(direction * (isLarge ? largeStep : 1));
  m_view->revealTime(m_composition->editorTimepoint());
}

}  // namespace timeline
