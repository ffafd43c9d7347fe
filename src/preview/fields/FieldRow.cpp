#include "preview/fields/FieldRow.h"

#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

#include "preview/fields/ElidedNote.h"
#include "preview/fields/FieldDescription.h"
#include "preview/fields/FieldsModel.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYScrubLabel.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TYValueField.h"
#include "widgets/TokenLabel.h"

namespace preview {

using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr int lineHeight = 24;
constexpr int lineMargin = 2;
constexpr int resetColumn = 34;
constexpr int resetSide = 16;
constexpr int pendingBar = 3;

}  // namespace

FieldRow::FieldRow(FieldsModel& model, const QString& key, const QString& title, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_key(key),
      m_editor(FieldEditor::forField(*model.field(key))),
      m_reset(new QToolButton),
      m_note(new ElidedNote) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(margin, lineMargin, 0, lineMargin);
  column->setSpacing(lineMargin);
  addControls(*column, title);
  observeEditor();
  refresh();
}

void FieldRow::addControls(QVBoxLayout& column, const QString& title) {
  const runtime::PortAttributes& port = m_model.field(m_key)->port;
  QWidget& control = m_editor->control();
  control.setObjectName(m_key);
  control.setAccessibleName(port.label.isEmpty() ? m_key : port.label);
  auto* label = new widgets::TYScrubLabel(QString(title).replace(u'&', QLatin1String("&&")),
                                          qobject_cast<widgets::TYValueField*>(&control));
  label->setFixedSize(labelWidth, lineHeight);
  setToolTip(FieldDescription::toolTip(port));
  m_reset->setIcon(TYStyleKit::image(QStringLiteral("Revert")));
  m_reset->setIconSize({resetSide, resetSide});
  m_reset->setAutoRaise(true);
  m_reset->setFixedSize(lineHeight, lineHeight);
  m_reset->setFocusPolicy(Qt::TabFocus);
  m_reset->setToolTip(
      tr("Back to the File's Value: %1").arg(FieldDescription::valueText(port.defaultValue, port)));
  m_reset->setAccessibleName(tr("Reset %1").arg(control.accessibleName()));
  auto* mark = new QWidget;
  mark->setFixedSize(resetColumn, lineHeight);
  m_reset->setParent(mark);
  m_reset->move((resetColumn - lineHeight) / 2, 0);
  auto* line = new QHBoxLayout;
  line->setSpacing(0);
  line->addWidget(label, 0, Qt::AlignTop);
  line->addSpacing(gap);
  const bool isSwitch = port.type == runtime::PortType::Boolean;
  line->addWidget(m_editor, isSwitch ? 0 : 1);
  if (isSwitch) {
    line->addSpacing(gap);
    line->addWidget(m_note, 1);
  }
  line->addWidget(mark, 0, Qt::AlignTop);
  column.addLayout(line);
  if (isSwitch) return;
  auto* below = new QHBoxLayout;
  below->setContentsMargins(labelWidth + gap, 0, margin, 2);
  below->addWidget(m_note, 1);
  column.addLayout(below);
}

void FieldRow::observeEditor() {
  connect(m_editor, &FieldEditor::began, this, [this] {
    if (const Field* field = m_model.field(m_key)) m_before = field->value;
  });
  connect(m_editor, &FieldEditor::entered, this,
          [this](const QJsonValue& json) { tell(m_model.enter(m_key, json)); });
  connect(m_editor, &FieldEditor::enteredText, this,
          [this](const QString& text) { tell(m_model.enterText(m_key, text)); });
  connect(m_editor, &FieldEditor::cancelled, this, [this] { m_model.restore(m_key, m_before); });
  connect(m_editor, &FieldEditor::refused, this, &FieldRow::setComplaint);
  connect(m_editor, &FieldEditor::left, this, &FieldRow::left);
  connect(m_editor, &FieldEditor::resetRequested, this, &FieldRow::reset);
  connect(m_reset, &QToolButton::clicked, this, &FieldRow::reset);
}

void FieldRow::dropEntry() {
  if (m_editor->hasEntry()) m_editor->dropEntry();
  setComplaint({});
}

void FieldRow::reset() {
  dropEntry();
  m_model.reset(m_key);
}

void FieldRow::tell(const tl::expected<void, QString>& result) {
  if (result) m_editor->entryTaken(*m_model.field(m_key));
  setComplaint(result ? QString() : result.error());
}

void FieldRow::refresh() {
  const Field* field = m_model.field(m_key);
  if (!field) return;
  m_editor->showValue(*field);
  m_reset->setVisible(field->value.has_value());
  if (!m_editor->hasEntry()) setComplaint({});
  if (m_isPending != field->isPending()) {
    m_isPending = field->isPending();
    update();
  }
  showNote();
}

void FieldRow::showNote() {
  const Field* field = m_model.field(m_key);
  if (!field) return;
  m_note->setText(m_isPending ? tr("Held · %1").arg(m_key) : m_key,
                  FieldDescription::details(field->port));
  m_note->setToken(m_isPending ? Token::Warning : Token::Text3);
  m_note->setVisible(m_complaint.isEmpty());
}

void FieldRow::setComplaint(const QString& complaint) {
  if (complaint == m_complaint) return;
  m_complaint = complaint;
  m_editor->setInvalid(!complaint.isEmpty());
  m_editor->control().setAccessibleDescription(complaint);
  delete m_wrong;
  m_wrong = nullptr;
  if (!complaint.isEmpty()) {
    m_wrong = new widgets::TokenLabel(complaint, widgets::TextStyle::Small, Token::Broken);
    m_wrong->setWordWrap(true);
    m_wrong->setContentsMargins(labelWidth + gap, 0, margin, 2);
    static_cast<QVBoxLayout*>(layout())->addWidget(m_wrong);
  }
  showNote();
}

bool FieldRow::matches(const QString& text) const {
  const Field* field = m_model.field(m_key);
  const auto contains = [&text](const QString& in) {
    return in.contains(text, Qt::CaseInsensitive);
  };
  return contains(m_key) ||
         (field && (contains(field->port.label) ||
                    contains(FieldDescription::valueText(field->current(), field->port))));
}

void FieldRow::paintEvent(QPaintEvent*) {
  if (!m_isPending) return;
  QPainter painter(this);
  const widgets::DevicePixels pixels(painter);
  pixels.fill(QRect(0, lineMargin, pendingBar, height() - 2 * lineMargin),
              TYStyleKit::colour(Token::Warning));
}

}  // namespace preview
