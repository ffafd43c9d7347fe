#include "widgets/TYProgressSheet.h"

#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVariantAnimation>

#include "widgets/TokenLabel.h"

namespace widgets {
namespace {

constexpr int kParts = 1000;
constexpr int kWanderingInMilliseconds = 1600;

}  // namespace

TYProgressSheet::TYProgressSheet(QWidget* window, const QString& title)
    : TYSheet(window),
      m_status(new TokenLabel({}, TextStyle::Body, Token::Text2)),
      m_bar(new QProgressBar),
      m_cancel(addButton(tr("Cancel"))),
      m_wandering(new QVariantAnimation(this)) {
  setSheetWidth(400);
  setAccessibleName(title);
  m_bar->setAccessibleName(title);
  m_bar->setTextVisible(false);
  body()->addWidget(new TokenLabel(title, TextStyle::SheetTitle, Token::Text));
  body()->addWidget(m_status);
  body()->addSpacing(4);
  body()->addWidget(m_bar);
  connect(m_cancel, &QPushButton::clicked, this, &TYProgressSheet::cancelled);

  // There and back again, for work whose end is not known.
  m_wandering->setDuration(kWanderingInMilliseconds);
  m_wandering->setLoopCount(-1);
  m_wandering->setKeyValueAt(0, 0.0);
  m_wandering->setKeyValueAt(0.5, 1.0);
  m_wandering->setKeyValueAt(1, 0.0);
  connect(m_wandering, &QVariantAnimation::valueChanged, this, [this](const QVariant& phase) {
    m_bar->setProperty("phase", phase);
    m_bar->update();
  });
  setFraction(-1);
}

void TYProgressSheet::setStatus(const QString& status) {
  const QFontMetrics metrics(m_status->font());
  m_status->setText(metrics.elidedText(status, Qt::ElideMiddle, 360));
}

void TYProgressSheet::setFraction(double fraction) {
  if (fraction < 0) {
    m_bar->setRange(0, 0);
    if (!TYStyleKit::reducedMotion()) m_wandering->start();
    return;
  }
  m_wandering->stop();
  m_bar->setRange(0, kParts);
  m_bar->setValue(int(std::clamp(fraction, 0.0, 1.0) * kParts));
}

void TYProgressSheet::cancelled() {
  if (m_cancelled) return;
  m_cancelled = true;
  m_cancel->setEnabled(false);
  setStatus(tr("Stopping..."));
  Q_EMIT cancelRequested();
}

}  // namespace widgets
