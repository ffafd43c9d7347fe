#include "inspector/panes/PermissionRow.h"

#include <QCheckBox>
#include <QHBoxLayout>

#include "inspector/rows/InspectorRow.h"
#include "widgets/GlyphView.h"
#include "widgets/TokenLabel.h"

namespace inspector {

namespace {

constexpr int lineHeight = 24;
constexpr int boxFromRight = 30;

}  // namespace

PermissionRow::PermissionRow(QWidget* parent) : QWidget(parent) {
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(InspectorRow::margin, 2, boxFromRight, 2);
  line->setSpacing(6);
  m_name = new widgets::TokenLabel({}, widgets::TextStyle::Body, widgets::Token::Text);
  m_name->setFixedHeight(lineHeight);
  m_mark = new widgets::GlyphView(QStringLiteral("KeyOn"), 16, widgets::Token::Keyframe);
  m_mark->setToolTip(tr("Animated"));
  m_box = new QCheckBox;
  line->addWidget(m_name);
  line->addWidget(m_mark);
  line->addStretch();
  line->addWidget(m_box);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(m_box, &QCheckBox::clicked, this, &PermissionRow::switched);
  setObstacle({}, false);
}

void PermissionRow::setName(const QString& name) {
  m_name->setText(name);
  m_box->setAccessibleName(name);
}

QString PermissionRow::name() const {
  return m_name->text();
}

void PermissionRow::setPermission(int permission) {
  m_box->setTristate(permission < 0);
  m_box->setCheckState(permission < 0   ? Qt::PartiallyChecked
                       : permission > 0 ? Qt::Checked
                                        : Qt::Unchecked);
}

void PermissionRow::setObstacle(const QString& reason, bool isAnimated) {
  m_mark->setVisible(isAnimated);
  m_box->setEnabled(reason.isEmpty());
  setToolTip(reason);
  m_box->setToolTip(reason);
  m_box->setAccessibleDescription(reason);
}

}  // namespace inspector
