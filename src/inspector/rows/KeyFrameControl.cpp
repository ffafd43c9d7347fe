#include "inspector/rows/KeyFrameControl.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QSet>
#include <cmath>
#include <limits>

#include "inspector/InspectorContext.h"
#include "model/Composition.h"
#include "widgets/TYKeyDiamond.h"
#include "widgets/TYStyleKit.h"

namespace inspector {

using model::Attribute;
using widgets::Token;
using State = widgets::TYKeyDiamond::State;

namespace {

constexpr int rowHeight = 24;
constexpr int diamondSide = 16;
constexpr int arrowWidth = 8;
constexpr double arrowReach = 3.5;  // half of its height

/// A narrow triangle beside the diamond.
class Arrow : public QAbstractButton {
 public:
  Arrow(int direction, QWidget* parent) : QAbstractButton(parent), m_direction(direction) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::NoFocus);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const Token token = !isEnabled()   ? Token::TextDisabled
                        : underMouse() ? Token::Text
                                       : Token::Text3;
    painter.setBrush(widgets::TYStyleKit::colour(token));
    const QPointF middle = QRectF(rect()).center();
    const double half = m_direction * arrowReach * 0.6;
    painter.drawPolygon(QPolygonF{middle + QPointF(-half, -arrowReach), middle + QPointF(half, 0),
                                  middle + QPointF(-half, arrowReach)});
  }

 private:
  int m_direction;
};

}  // namespace

KeyFrameControl::KeyFrameControl(InspectorContext& context, QWidget* parent)
    : QWidget(parent), m_context(context) {
  setFixedSize(columnWidth, rowHeight);
  m_previous = new Arrow(-1, this);
  m_previous->setGeometry(0, 0, arrowWidth, rowHeight);
  m_previous->setToolTip(tr("Previous key frame"));
  m_previous->setAccessibleName(m_previous->toolTip());
  m_diamond = new widgets::TYKeyDiamond(this);
  m_diamond->move(arrowWidth, (rowHeight - diamondSide) / 2);
  m_diamond->installEventFilter(this);
  m_next = new Arrow(1, this);
  m_next->setGeometry(arrowWidth + diamondSide, 0, arrowWidth, rowHeight);
  m_next->setToolTip(tr("Next key frame"));
  m_next->setAccessibleName(m_next->toolTip());
  connect(m_diamond, &QAbstractButton::clicked, this, &KeyFrameControl::toggleKeyFrame);
  connect(m_previous, &QAbstractButton::clicked, this, [this] { jump(-1); });
  connect(m_next, &QAbstractButton::clicked, this, [this] { jump(1); });
  setAttributes({}, {});
}

void KeyFrameControl::setAttributes(const QList<Attribute*>& attributes, const QString& name) {
  m_name = name;
  m_attributes = attributes;
  m_attributes.removeIf([](const Attribute* a) { return !a->animationPossible(); });
  if (m_attributes.isEmpty()) refresh();
}

bool KeyFrameControl::isAnimated() const {
  return std::any_of(m_attributes.begin(), m_attributes.end(),
                     [](const Attribute* a) { return a->animateable(); });
}

QList<Attribute*> KeyFrameControl::attributesWithoutKeyFrame() const {
  QSet<const model::AbstractComponent*> animated;
  for (const Attribute* attribute : m_attributes)
    if (attribute->animateable()) animated.insert(attribute->component());
  const double now = time();
  QList<Attribute*> missing;
  for (Attribute* attribute : m_attributes) {
    // Where X is animated and Y is not, Y stays as it is.
    const bool rests = !attribute->animateable() && animated.contains(attribute->component());
    if (!rests && !(attribute->animateable() && attribute->hasKeyframeAtTimePoint(now)))
      missing.append(attribute);
  }
  return missing;
}

double KeyFrameControl::time() const {
  return m_context.composition() ? m_context.composition()->editorTimepoint() : 0;
}

void KeyFrameControl::refresh() {
  const bool animated = isAnimated();
  const bool here = animated && attributesWithoutKeyFrame().isEmpty();
  m_diamond->setVisible(!m_attributes.isEmpty());
  m_diamond->setState(here ? State::KeyHere : animated ? State::Animated : State::Still);
  const QString pattern = here       ? tr("Key frame of %1 here. Click to remove it.")
                          : animated ? tr("%1 is animated. Click to set a key frame here.")
                                     : tr("Click to animate %1.");
  if (const QString words = pattern.arg(m_name); words != m_diamond->toolTip()) {
    m_diamond->setToolTip(words);
    m_diamond->setAccessibleName(words);
  }
  for (const auto& [button, direction] : {std::pair{m_previous, -1}, {m_next, 1}}) {
    button->setVisible(animated);
    if (animated) button->setEnabled(!std::isnan(neighbour(direction)));
  }
}

double KeyFrameControl::neighbour(int direction) const {
  const double now = time();
  double nearest = std::numeric_limits<double>::quiet_NaN();
  for (const Attribute* attribute : std::as_const(m_attributes)) {
    if (!attribute->animateable()) continue;
    const double at =
        direction < 0 ? attribute->previousTimePoint(now) : attribute->nextTimePoint(now);
    if (at == model::noTimepoint) continue;
    const bool nearer = std::isnan(nearest) || (direction < 0 ? at > nearest : at < nearest);
    if (nearer) nearest = at;
  }
  return nearest;
}

void KeyFrameControl::jump(int direction) {
  const double at = neighbour(direction);
  if (m_context.composition() && !std::isnan(at)) m_context.composition()->setEditorTimepoint(at);
}

void KeyFrameControl::toggleKeyFrame() {
  if (m_attributes.isEmpty()) return;
  const bool removes = m_diamond->state() == State::KeyHere;
  const double now = time();
  const QList<Attribute*> missing = removes ? QList<Attribute*>() : attributesWithoutKeyFrame();
  m_context.change(removes ? tr("Remove Key Frame") : tr("Add Key Frame"), [&] {
    for (Attribute* attribute : std::as_const(m_attributes)) {
      if (removes) attribute->deleteTimepoint(now);
    }
    for (Attribute* attribute : missing) attribute->addTimepoint(now, attribute->currentValue());
  });
  m_context.setNeedsRefresh();
}

bool KeyFrameControl::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Left && key != Qt::Key_Right) return false;
  jump(key == Qt::Key_Left ? -1 : 1);
  return true;
}

}  // namespace inspector
