#include "canvas/InPlaceTextEditor.h"

#include <QKeyEvent>
#include <algorithm>
#include <cmath>

#include "model/QuartzComponent.h"
#include "store/ObjectContext.h"

namespace canvas {

using model::Attribute;
using model::AttributeType;
using model::QuartzComponent;

namespace {

constexpr double smallestFont = 11;  // points of the screen
constexpr double largestFont = 72;
constexpr int margin = 2;  // points around the text
constexpr int leastWidth = 120;
constexpr int leastHeight = 28;

QFont fontOf(const QuartzComponent& component, double zoom, const QFont& fallback) {
  for (const Attribute* attribute : component.attributes()) {
    if (attribute->type() != AttributeType::Font) continue;
    const model::AttributeValue current = attribute->currentValue();
    const auto* value = current.as<model::FontValue>();
    if (!value || value->name.isEmpty()) continue;
    QFont font(value->name);
    font.setPixelSize(qRound(std::clamp(value->size * zoom, smallestFont, largestFont)));
    return font;
  }
  return fallback;
}

}  // namespace

Attribute* InPlaceTextEditor::textOf(const QuartzComponent& component) {
  Attribute* first = nullptr;
  for (Attribute* attribute : component.attributesSortedByTitle()) {
    if (attribute->type() != AttributeType::String || !attribute->quartzAttribute()) continue;
    if (attribute->key() == QLatin1String("Text")) return attribute;
    if (!first) first = attribute;
  }
  return first;
}

InPlaceTextEditor::InPlaceTextEditor(QuartzComponent& component, Attribute& text, QWidget* parent)
    : QPlainTextEdit(parent), m_component(component), m_text(text) {
  setAttribute(Qt::WA_DeleteOnClose);
  setAccessibleName(tr("Text of %1").arg(component.title()));
  setLineWrapMode(QPlainTextEdit::WidgetWidth);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setTabChangesFocus(true);
  document()->setDocumentMargin(margin);
  connect(this, &QPlainTextEdit::textChanged, this, &InPlaceTextEditor::fitHeight);
  setPlainText(text.currentValue().toString());
  selectAll();
}

void InPlaceTextEditor::place(const CanvasGeometry& geometry) {
  setFont(fontOf(m_component, geometry.zoomFactor(), parentWidget()->font()));
  m_place = geometry.viewRect(m_component.drawingFrame()).toAlignedRect();
  fitHeight();
}

void InPlaceTextEditor::fitHeight() {
  // Text that needs more room than the component has grows over what is below it.
  const double lines = std::max(1.0, document()->size().height());
  const double needed = lines * QFontMetricsF(font()).lineSpacing() + 2.0 * (margin + frameWidth());
  setGeometry(m_place.x(), m_place.y(), std::max(m_place.width(), leastWidth),
              std::max({m_place.height(), leastHeight, static_cast<int>(std::ceil(needed))}));
}

void InPlaceTextEditor::keep() {
  if (m_closed) return;
  if (m_text.context() && toPlainText() != m_text.currentValue().toString()) {
    const store::UndoStep step(*m_text.context(), tr("Edit %1").arg(m_component.title()));
    m_text.setCurrentValue(toPlainText());
  }
  close();
}

void InPlaceTextEditor::drop() {
  if (!m_closed) close();
}

void InPlaceTextEditor::close() {
  m_closed = true;
  hide();
  if (parentWidget()) parentWidget()->setFocus();
  deleteLater();
}

void InPlaceTextEditor::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->key() == Qt::Key_Escape)
    drop();
  else if (isReturn && !event->modifiers().testFlag(Qt::ShiftModifier))
    keep();
  else
    QPlainTextEdit::keyPressEvent(event);
}

void InPlaceTextEditor::focusOutEvent(QFocusEvent* event) {
  QPlainTextEdit::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
    keep();
}

}  // namespace canvas
