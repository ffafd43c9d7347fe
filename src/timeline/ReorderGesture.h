#pragma once

#include <QCoreApplication>

#include "timeline/RowGesture.h"

namespace timeline {

/// A press on a title: selects, and dragged up or down puts the selected components elsewhere in
/// the stack.
class ReorderGesture : public RowGesture {
  Q_DECLARE_TR_FUNCTIONS(ReorderGesture)

 public:
  using RowGesture::RowGesture;

 protected:
  void drag(const TimelinePointer& pointer) override;
  void finishDrag() override;
  void cancelDrag() override { m_place.reset(); }

 private:
  /// How many components lie above the gap that is nearest to the point.
  [[nodiscard]] qsizetype placeAt(double y) const;
  [[nodiscard]] int rowOfPlace(qsizetype place) const;

  std::optional<qsizetype> m_place;
};

/// Puts components together at a place among all, from the front; they keep their order.
void moveComponentsToPlace(model::Composition& composition,
                           const QList<model::QuartzComponent*>& components, qsizetype place,
                           const QString& stepName);

}  // namespace timeline
