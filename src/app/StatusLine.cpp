#include "app/StatusLine.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QToolButton>
#include <cmath>

#include "foundation/Timecode.h"
#include "model/Composition.h"
#include "widgets/TokenLabel.h"

namespace app {

namespace {

constexpr int lineHeight = 24;
constexpr int margin = 12;
constexpr int gap = 20;
constexpr int glyphSize = 16;
constexpr int widthForFormat = 760;

/// Takes the room that is left, and shortens what is longer: a hint never widens its window.
class HintLabel : public widgets::TokenLabel {
 public:
  HintLabel() : TokenLabel({}, widgets::TextStyle::Small, widgets::Token::Text2) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, width()));
  }
};

QLabel* addLabel(QHBoxLayout& row) {
  auto* label = new widgets::TokenLabel({}, widgets::TextStyle::Small, widgets::Token::Text2);
  row.addWidget(label);
  return label;
}

}  // namespace

StatusLine::StatusLine(QWidget* parent) : QWidget(parent) {
  setFixedHeight(lineHeight);
  setAccessibleName(tr("Status"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(margin, 0, margin, 0);
  row->setSpacing(gap);
  m_selection = addLabel(*row);
  m_zoom = addLabel(*row);
  m_pointer = addLabel(*row);
  m_hint = new HintLabel;
  row->addWidget(m_hint, 1);
  m_findings = new QToolButton;
  m_findings->setObjectName(QStringLiteral("findings"));
  m_findings->setAutoRaise(true);
  m_findings->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  m_findings->setIcon(
      widgets::TYStyleKit::image(QStringLiteral("Warning"), widgets::Token::Warning));
  m_findings->setIconSize({glyphSize, glyphSize});
  m_findings->setFont(widgets::TYStyleKit::font(widgets::TextStyle::Small));
  m_findings->setFixedHeight(lineHeight - 4);
  m_findings->setFocusPolicy(Qt::TabFocus);
  m_findings->hide();
  connect(m_findings, &QToolButton::clicked, this, &StatusLine::findingsRequested);
  row->addWidget(m_findings);
  m_format = addLabel(*row);
  m_duration = addLabel(*row);
}

void StatusLine::showComposition(const model::Composition* composition, double zoomFactor) {
  if (!composition) {
    m_selection->setText(tr("The document holds no composition"));
    return;
  }
  const qsizetype all = composition->components().size();
  const qsizetype selected = composition->selectedComponents().size();
  m_selection->setText(all == 0        ? tr("No components")
                       : selected == 0 ? all == 1 ? tr("1 component") : tr("%1 components").arg(all)
                                       : tr("%1 of %2 selected").arg(selected).arg(all));
  // A format that is not known has no size, and nothing is so much larger or smaller than that.
  const bool hasSize = composition->width() > 0 && composition->height() > 0;
  const bool hasZoom = hasSize && std::isfinite(zoomFactor);
  m_zoom->setText(hasZoom ? tr("Zoom %1 %").arg(qRound(zoomFactor * 100)) : QString());
  const double rate = composition->videoResolution().framesPerSecond();
  m_format->setText(hasSize ? tr("%1 × %2, %3 fps")
                                  .arg(composition->width())
                                  .arg(composition->height())
                                  .arg(std::round(rate * 100) / 100)
                            : QString());
  m_duration->setText(
      tr("Duration %1")
          .arg(foundation::Timecode::fromSeconds(composition->duration(),
                                                 composition->videoResolution().timecodeRate())
                   .toString()));
}

void StatusLine::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  for (QLabel* label : {m_format, m_duration}) label->setVisible(width() >= widthForFormat);
}

void StatusLine::showHint(const QString& hint) {
  m_hint->setText(hint);
  m_hint->setToolTip(hint);
}

void StatusLine::showPointer(const std::optional<QPointF>& pixel) {
  m_pointer->setText(
      pixel ? tr("Pointer %1, %2").arg(std::lround(pixel->x())).arg(std::lround(pixel->y()))
            : QString());
}

void StatusLine::showFindings(qsizetype count) {
  m_findings->setVisible(count > 0);
  m_findings->setText(count == 1 ? tr("1 finding") : tr("%1 findings").arg(count));
  m_findings->setToolTip(tr("What will not come out as it may be expected"));
}

void StatusLine::addProgress(QWidget* progress) {
  auto* row = static_cast<QHBoxLayout*>(layout());
  row->insertWidget(row->indexOf(m_findings), progress);
}

QPoint StatusLine::findingsCorner() const {
  return m_findings->mapToGlobal(QPoint(m_findings->width(), -4));
}

}  // namespace app
