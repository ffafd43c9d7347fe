#include "canvas/CanvasReporter.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QToolTip>

#include "canvas/CanvasHost.h"
#include "canvas/CanvasRuler.h"
#include "canvas/ComponentWalk.h"
#include "canvas/CompositionView.h"
#include "canvas/TYZoomScrollView.h"
#include "model/Composition.h"

namespace canvas {

namespace {

CanvasHost& nobody() {
  static CanvasHost host;
  return host;
}

}  // namespace

CanvasReporter::CanvasReporter(CompositionView& view) : m_view(view), m_host(&nobody()) {}

void CanvasReporter::tellSelection() {
  m_host->showHint(
      m_view.selectedComponents().isEmpty()
          ? QString()
          : tr("Drag to move, Shift keeps the direction, Ctrl ignores guides. Arrow keys nudge."));
  if (QAccessible::isActive() && m_view.hasFocus()) tellScreenReaders();
}

bool CanvasReporter::tellProblem(const QHelpEvent& event) {
  const QString text = m_view.scene() ? m_view.scene()->problemAt(event.pos()) : QString();
  if (text.isEmpty())
    QToolTip::hideText();
  else
    QToolTip::showText(event.globalPos(), text, &m_view);
  return !text.isEmpty();
}

void CanvasReporter::tellScreenReaders() {
  const auto shown = componentsToWalk(*m_view.composition());
  const qsizetype child = shown.indexOf(m_view.composition()->firstSelected());
  if (child < 0) return;
  QAccessibleEvent event(&m_view, QAccessible::Focus);
  event.setChild(static_cast<int>(child));
  QAccessible::updateAccessibility(&event);
}

void CanvasReporter::tellPointer(const std::optional<QPointF>& viewPoint) {
  std::optional<QPointF> inPicture;
  std::optional<double> across;
  std::optional<double> down;
  if (viewPoint) {
    inPicture = m_view.geometryOfPicture().picturePoint(*viewPoint);
    across = viewPoint->x() + m_view.x();
    down = viewPoint->y() + m_view.y();
  }
  m_host->pointerMoved(inPicture);
  if (!m_view.scrollView()) return;
  m_view.scrollView()->horizontalRuler().setPointer(across);
  m_view.scrollView()->verticalRuler().setPointer(down);
}

}  // namespace canvas
