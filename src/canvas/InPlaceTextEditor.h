#pragma once

#include <QPlainTextEdit>

#include "canvas/CanvasGeometry.h"

namespace model {
class Attribute;
class QuartzComponent;
}  // namespace model

namespace canvas {

/// Edits the text of a component where it stands. Return and a click elsewhere keep the text as one
/// undo step, Shift and Return begin a line, Escape drops it. Closes and deletes itself.
class InPlaceTextEditor : public QPlainTextEdit {
  Q_OBJECT
 public:
  /// The text that a double click edits; none when the component has none.
  [[nodiscard]] static model::Attribute* textOf(const model::QuartzComponent& component);

  InPlaceTextEditor(model::QuartzComponent& component, model::Attribute& text, QWidget* parent);

  /// Follows the component's place.
  void place(const CanvasGeometry& geometry);
  [[nodiscard]] const model::QuartzComponent& component() const { return m_component; }
  void keep();
  void drop();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void close();
  void fitHeight();

  QRect m_place;  ///< of the component
  model::QuartzComponent& m_component;
  model::Attribute& m_text;
  bool m_closed = false;
};

}  // namespace canvas
