#include "inspector/rows/InspectorRow.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>

#include "inspector/InspectorContext.h"
#include "inspector/ValueMenu.h"
#include "inspector/rows/KeyFrameControl.h"
#include "model/Attribute.h"
#include "widgets/TYScrubLabel.h"
#include "widgets/TYValueField.h"
#include "widgets/TokenLabel.h"

namespace inspector {

namespace {

constexpr int lineHeight = 24;
constexpr int lineMargin = 2;

}  // namespace

InspectorRow::InspectorRow(InspectorContext& context, const QString& label, QWidget* parent)
    : QWidget(parent), m_context(context) {
  m_column = new QVBoxLayout(this);
  m_column->setContentsMargins(margin, lineMargin, 0, lineMargin);
  m_column->setSpacing(2);
  m_line = new QHBoxLayout;
  m_line->setSpacing(gap);
  m_label = new widgets::TYScrubLabel(label);
  m_label->setFixedSize(labelWidth, lineHeight);
  m_controls = new QHBoxLayout;
  m_controls->setSpacing(gap);
  m_keyFrames = new KeyFrameControl(context);
  m_line->addWidget(m_label, 0, Qt::AlignTop);
  m_line->addLayout(m_controls, 1);
  m_line->addWidget(m_keyFrames, 0, Qt::AlignTop);
  m_line->setSpacing(0);
  m_line->insertSpacing(1, gap);
  m_column->addLayout(m_line);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setLabel(label);
}

InspectorRow::~InspectorRow() = default;

QString InspectorRow::label() const {
  return m_label->property("label").toString();
}

void InspectorRow::setLabel(const QString& label) {
  // An ampersand is a character of the name here.
  m_label->setText(QString(label).replace(QLatin1Char('&'), QLatin1String("&&")));
  m_label->setProperty("label", label);
  const bool fits = m_label->fontMetrics().horizontalAdvance(label) <= labelWidth;
  m_label->setToolTip(fits ? QString() : label);
}

void InspectorRow::bind(const QList<Binding>& bindings) {
  m_watched.clear();
  m_attributes.clear();
  m_bindings = bindings;
  m_keyFrames->setAttributes({}, {});
  setComplaint({});
  dropEntries();
  nameControls(label());
}

void InspectorRow::setAttributes(const QList<model::Attribute*>& attributes) {
  m_attributes = attributes;
  m_keyFrames->setAttributes(attributes, label());
  m_watched.clear();
  watchFirst();
}

void InspectorRow::watchFirst() {
  // Gestures elsewhere move all that is selected; one of them tells of the others.
  const qsizetype ofFirst = std::min(m_attributes.size(), m_bindings.size());
  for (qsizetype i = 0; i < ofFirst; ++i)
    m_watched.push_back(m_context.watch(*m_attributes[i], QStringLiteral("currentValue")));
}

bool InspectorRow::isBound() const {
  return !m_bindings.isEmpty() && m_bindings.first().count > 0;
}

void InspectorRow::refresh() {
  setEnabled(isBound());
  if (!isBound()) return;
  showValues();
  m_keyFrames->refresh();
}

void InspectorRow::addControl(QWidget* control, int stretch) {
  m_controls->addWidget(control, stretch, stretch == 0 ? Qt::AlignLeft : Qt::Alignment());
}

void InspectorRow::addStretch() {
  // Takes as much as a second control would, the gap included.
  m_controls->addWidget(new QWidget, 1);
}

void InspectorRow::setScrubField(widgets::TYValueField* field) {
  static_cast<widgets::TYScrubLabel*>(m_label)->setField(field);
}

void InspectorRow::setComplaint(const QString& complaint, const QString& button,
                                const std::function<void()>& mend) {
  if (complaint == this->complaint()) return;
  delete m_complaintLine;
  m_complaintLine = nullptr;
  if (complaint.isEmpty()) return;
  m_complaintLine = new QWidget;
  auto* line = new QHBoxLayout(m_complaintLine);
  line->setContentsMargins(labelWidth + gap, 0, KeyFrameControl::columnWidth, 2);
  line->setSpacing(gap);
  auto* text =
      new widgets::TokenLabel(complaint, widgets::TextStyle::Small, widgets::Token::Broken);
  text->setObjectName(QStringLiteral("complaint"));
  text->setWordWrap(true);
  line->addWidget(text, 1);
  if (mend) {
    auto* mending = new QPushButton(button);
    connect(mending, &QPushButton::clicked, this, [mend] { mend(); });
    line->addWidget(mending, 0, Qt::AlignTop);
  }
  m_column->addWidget(m_complaintLine);
}

QString InspectorRow::complaint() const {
  const auto* text =
      m_complaintLine ? m_complaintLine->findChild<QLabel*>(QStringLiteral("complaint")) : nullptr;
  return text ? text->text() : QString();
}

void InspectorRow::contextMenuEvent(QContextMenuEvent* event) {
  if (m_attributes.isEmpty()) return;
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  if (m_bindings.size() == 1) fillValueMenu(*menu, m_context, m_attributes, label());
  if (m_keyFrames->isAnimated()) {
    menu->addSeparator();
    menu->addAction(tr("Previous Key Frame"), m_keyFrames, [this] { m_keyFrames->jump(-1); });
    menu->addAction(tr("Next Key Frame"), m_keyFrames, [this] { m_keyFrames->jump(1); });
  }
  if (menu->isEmpty())
    delete menu;
  else
    menu->popup(event->globalPos());
}

}  // namespace inspector
