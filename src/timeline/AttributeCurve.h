#pragma once

#include <QList>
#include <QPointF>

namespace model {
class Attribute;
}

namespace timeline {

/// How the value of an animated attribute goes over time, between its first and its last key
/// frame: as the editor interpolates it, and as the exported file plays it. x is seconds, y the
/// share of the way from the smallest to the greatest value. Colours are followed by their
/// lightness; what has no order has no curve.
class AttributeCurve {
 public:
  explicit AttributeCurve(const model::Attribute& attribute);

  [[nodiscard]] const QList<QPointF>& inEditor() const { return m_inEditor; }
  [[nodiscard]] const QList<QPointF>& inPlayout() const { return m_inPlayout; }
  /// No curve is better than a straight line.
  [[nodiscard]] bool isFlat() const { return m_inEditor.isEmpty(); }

 private:
  void sampleEditor(const model::Attribute& attribute, const QList<double>& times);
  void samplePlayout(const model::Attribute& attribute, const QList<double>& times);
  void normalize();

  QList<QPointF> m_inEditor;
  QList<QPointF> m_inPlayout;
};

}  // namespace timeline
