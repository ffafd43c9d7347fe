#pragma once

#include <QPointF>
#include <Qt>

namespace widgets {

class TYValueField;

/// One drag that changes a field's value: a step a pixel to the right, Shift ten, Ctrl or Alt a
/// tenth. It begins after a few pixels, so that a click stays a click.
class NumberScrub {
 public:
  NumberScrub(TYValueField& field, QPointF start) : m_field(field), m_last(start) {}

  void move(QPointF position, Qt::KeyboardModifiers modifiers);
  /// Whether it had begun.
  bool finish();
  void cancel();

 private:
  TYValueField& m_field;
  QPointF m_last;
  double m_steps = 0;
  bool m_begun = false;
};

}  // namespace widgets
