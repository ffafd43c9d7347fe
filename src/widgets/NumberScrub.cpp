#include "widgets/NumberScrub.h"

#include <cmath>

#include "widgets/TYValueField.h"

namespace widgets {
namespace {

constexpr double kThreshold = 3;

double stepsAPixel(Qt::KeyboardModifiers modifiers) {
  if (modifiers & Qt::ShiftModifier) return 10;
  return modifiers & (Qt::ControlModifier | Qt::AltModifier) ? 0.1 : 1;
}

}  // namespace

void NumberScrub::move(QPointF position, Qt::KeyboardModifiers modifiers) {
  const double distance = position.x() - m_last.x();
  if (!m_begun) {
    if (std::abs(distance) < kThreshold) return;
    m_begun = true;
    m_field.beginScrub();
  }
  m_last = position;
  m_steps += distance * stepsAPixel(modifiers);
  m_field.scrub(m_steps);
}

bool NumberScrub::finish() {
  if (m_begun) m_field.commitScrub();
  return m_begun;
}

void NumberScrub::cancel() {
  if (m_begun) m_field.cancelScrub();
}

}  // namespace widgets
