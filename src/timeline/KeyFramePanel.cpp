#include "timeline/KeyFramePanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <limits>

#include "model/Composition.h"
#include "store/ObjectContext.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYColorWell.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TYTimecodeField.h"
#include "widgets/TokenLabel.h"

namespace timeline {

using foundation::Timecode;
using model::Attribute;
using model::AttributeType;
using widgets::Token;

namespace {

constexpr int padding = 12;
constexpr int gap = 8;
constexpr int controlWidth = 128;

}  // namespace

/// All that is edited while the panel is open.
class KeyFramePanel::Step {
 public:
  explicit Step(store::ObjectContext& context)
      : m_step(context, KeyFramePanel::tr("Edit Key Frame")) {}
  void cancel() { m_step.cancel(); }

 private:
  store::UndoStep m_step;
};

KeyFramePanel::KeyFramePanel(const KeyFrameReference& keyFrame,
                             const foundation::TimecodeRate& rate, QWidget* parent)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_keyFrame(keyFrame),
      m_rate(rate),
      m_step(std::make_unique<Step>(*keyFrame.attribute->context())) {
  setAttribute(Qt::WA_DeleteOnClose);
  setAccessibleName(tr("Key frame of %1").arg(keyFrame.attribute->title()));
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(padding, padding, padding, padding);
  grid->setHorizontalSpacing(gap);
  grid->setVerticalSpacing(gap);
  addValue(*grid);
  addTime(*grid);
}

KeyFramePanel::~KeyFramePanel() {
  end(true);
}

void KeyFramePanel::addTime(QGridLayout& grid) {
  m_time = new widgets::TYTimecodeField;
  m_time->setNotation(
      [rate = m_rate](double frames) { return Timecode(std::llround(frames), rate).toString(); },
      [rate = m_rate](const QString& text, double present) -> foundation::Result<double> {
        const double seconds = Timecode(std::llround(present), rate).seconds();
        return Timecode::fromString(text, rate, seconds).map([](const Timecode& code) {
          return static_cast<double>(code.frames());
        });
      });
  m_time->setRange(0, std::numeric_limits<int>::max());
  m_time->setAccessibleName(tr("Time"));
  m_time->setFixedWidth(controlWidth);
  m_time->setValue(static_cast<double>(Timecode::fromSeconds(m_keyFrame.time, m_rate).frames()));
  connect(m_time, &widgets::TYTimecodeField::valueEdited, this,
          [this](double frames) { moveTo(Timecode(std::llround(frames), m_rate).seconds()); });
  m_time->installEventFilter(this);
  const int row = grid.rowCount();
  grid.addWidget(new widgets::TokenLabel(tr("Time"), widgets::TextStyle::Body, Token::Text2), row,
                 0);
  grid.addWidget(m_time, row, 1);
  if (!m_value) setFocusProxy(m_time);
}

void KeyFramePanel::addValue(QGridLayout& grid) {
  switch (m_keyFrame.attribute->type()) {
    case AttributeType::Index:
    case AttributeType::Number:
      m_value = makeNumber();
      break;
    case AttributeType::IndexWithMenu:
      m_value = makeMenu();
      break;
    case AttributeType::Boolean:
      m_value = makeSwitch();
      break;
    case AttributeType::Color:
      m_value = makeColor();
      break;
    case AttributeType::String:
      m_value = makeText();
      break;
    default:
      return;
  }
  m_value->setAccessibleName(m_keyFrame.attribute->title());
  grid.addWidget(new widgets::TokenLabel(m_keyFrame.attribute->title(), widgets::TextStyle::Body,
                                         Token::Text2),
                 0, 0);
  grid.addWidget(m_value, 0, 1);
  setFocusProxy(m_value);
}

QWidget* KeyFramePanel::makeNumber() {
  auto* field = new widgets::TYNumberField;
  const bool isIndex = m_keyFrame.attribute->type() == AttributeType::Index;
  field->setDecimals(isIndex ? 0 : 4);
  if (isIndex) field->setRange(0, 1e9);
  field->setFixedWidth(controlWidth);
  field->setValue(m_keyFrame.attribute->valueForTimepoint(m_keyFrame.time).toNumber());
  connect(field, &widgets::TYNumberField::valueEdited, this, [this](double v) { setValue(v); });
  field->installEventFilter(this);
  return field;
}

QWidget* KeyFramePanel::makeMenu() {
  auto* menu = new QComboBox;
  menu->addItems(m_keyFrame.attribute->possibleValues());
  menu->setFixedWidth(controlWidth);
  menu->setCurrentIndex(
      static_cast<int>(m_keyFrame.attribute->valueForTimepoint(m_keyFrame.time).toNumber()));
  connect(menu, &QComboBox::activated, this, [this](int index) { setValue(index); });
  return menu;
}

QWidget* KeyFramePanel::makeSwitch() {
  auto* box = new QCheckBox(tr("On"));
  box->setChecked(m_keyFrame.attribute->valueForTimepoint(m_keyFrame.time).toNumber() != 0);
  connect(box, &QCheckBox::clicked, this, [this](bool on) { setValue(on); });
  return box;
}

QWidget* KeyFramePanel::makeColor() {
  auto* well = new widgets::TYColorWell;
  const model::AttributeValue value = m_keyFrame.attribute->valueForTimepoint(m_keyFrame.time);
  if (const auto* color = value.as<foundation::Color>()) well->setColor(color->toQColor());
  connect(well, &widgets::TYColorWell::colorEdited, this,
          [this](const QColor& color) { setValue(color); });
  connect(well, &widgets::TYColorWell::editCancelled, this,
          [this, well] { setValue(well->color()); });
  return well;
}

QWidget* KeyFramePanel::makeText() {
  auto* field = new QLineEdit(m_keyFrame.attribute->valueForTimepoint(m_keyFrame.time).toString());
  field->setFixedWidth(2 * controlWidth);
  connect(field, &QLineEdit::textEdited, this, [this](const QString& text) { setValue(text); });
  field->installEventFilter(this);
  return field;
}

void KeyFramePanel::setValue(const QVariant& value) {
  Attribute& attribute = *m_keyFrame.attribute;
  if (m_hasEnded || !attribute.context()) return;
  if (const auto converted = attribute.valueFromVariant(value))
    attribute.setValueForTimepoint(*converted, m_keyFrame.time);
}

void KeyFramePanel::moveTo(double time) {
  Attribute& attribute = *m_keyFrame.attribute;
  if (m_hasEnded || !attribute.context()) return;
  attribute.deselectAllTimePoints();
  attribute.setTimePointSelected(m_keyFrame.time, true);
  m_keyFrame.time =
      attribute.adjustTimepointsBy(time - m_keyFrame.time, Attribute::Moved::OnlySelected);
  m_time->setValue(static_cast<double>(Timecode::fromSeconds(m_keyFrame.time, m_rate).frames()));
}

void KeyFramePanel::end(bool keeps) {
  if (std::exchange(m_hasEnded, true)) return;
  if (!keeps) m_step->cancel();
  m_step.reset();
}

void KeyFramePanel::keep() {
  // Not while the time or the value that was typed makes no sense.
  for (const auto* field : findChildren<widgets::TYValueField*>())
    if (field->isInvalid()) return;
  end(true);
  close();
}

void KeyFramePanel::drop() {
  end(false);
  close();
}

bool KeyFramePanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    // The field reads the text first; what it does not understand stays in it.
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
      QMetaObject::invokeMethod(this, &KeyFramePanel::keep, Qt::QueuedConnection);
  }
  return QWidget::eventFilter(watched, event);
}

void KeyFramePanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return drop();
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return keep();
  QWidget::keyPressEvent(event);
}

void KeyFramePanel::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (QWidget* field = focusWidget()) field->clearFocus();  // takes what was typed
  end(true);
  deleteLater();
}

void KeyFramePanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  widgets::DevicePixels(painter).box(rect(), widgets::TYStyleKit::colour(Token::Panel),
                                     widgets::TYStyleKit::colour(Token::Border), 6);
}

}  // namespace timeline
