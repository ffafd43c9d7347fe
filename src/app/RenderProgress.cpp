#include "app/RenderProgress.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QToolButton>
#include <QUrl>
#include <cmath>

#include "widgets/TYLinkButton.h"
#include "widgets/TokenLabel.h"

namespace app {

using widgets::TextStyle;
using widgets::Token;
using widgets::TokenLabel;
using widgets::TYLinkButton;

namespace {

constexpr int gap = 8;
constexpr int barWidth = 96;
constexpr int barSteps = 1000;
constexpr int longestName = 160;  ///< of a file, in pixels
constexpr int glyphSize = 12;

QString timeText(double seconds) {
  const qint64 whole = std::llround(std::ceil(seconds));
  if (whole < 60) return RenderProgress::tr("%1 s left").arg(whole);
  if (whole < 3600)
    return RenderProgress::tr("%1:%2 min left").arg(whole / 60).arg(whole % 60, 2, 10, QChar(u'0'));
  return RenderProgress::tr("%1:%2 h left")
      .arg(whole / 3600)
      .arg(whole / 60 % 60, 2, 10, QChar(u'0'));
}

}  // namespace

RenderProgress::RenderProgress(RenderQueue& queue, QWidget* parent)
    : QWidget(parent),
      m_queue(queue),
      m_title(new TokenLabel({}, TextStyle::Small, Token::Text)),
      m_bar(new QProgressBar),
      m_numbers(new TokenLabel({}, TextStyle::Small, Token::Text2)),
      m_cancel(new TYLinkButton(tr("Cancel"))),
      m_reveal(new TYLinkButton(tr("Show in Folder"))),
      m_dismiss(new QToolButton) {
  setObjectName(QStringLiteral("renderProgress"));
  setAccessibleName(tr("Rendering"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(gap);
  m_bar->setFixedWidth(barWidth);
  m_bar->setTextVisible(false);
  m_bar->setAccessibleName(tr("Progress of rendering"));
  m_dismiss->setAutoRaise(true);
  m_dismiss->setIcon(widgets::TYStyleKit::image(QStringLiteral("Close"), Token::Text2));
  m_dismiss->setIconSize({glyphSize, glyphSize});
  m_dismiss->setToolTip(tr("Dismiss"));
  m_dismiss->setAccessibleName(tr("Dismiss"));
  m_dismiss->setFocusPolicy(Qt::TabFocus);
  for (TYLinkButton* link : {m_cancel, m_reveal})
    link->setFont(widgets::TYStyleKit::font(TextStyle::Small));
  for (QWidget* part :
       std::initializer_list<QWidget*>{m_title, m_bar, m_numbers, m_cancel, m_reveal, m_dismiss})
    row->addWidget(part);
  connect(m_cancel, &QAbstractButton::clicked, this, [this] { m_queue.cancelCurrent(); });
  connect(m_reveal, &QAbstractButton::clicked, this, &RenderProgress::act);
  connect(m_dismiss, &QAbstractButton::clicked, this, [this] { m_queue.dismissNotices(); });
  connect(&m_queue, &RenderQueue::changed, this, &RenderProgress::showQueue);
  showQueue();
}

void RenderProgress::showQueue() {
  const bool runs = m_queue.current() != nullptr;
  const QList<RenderQueue::Notice>& notices = m_queue.notices();
  setVisible(runs || !notices.isEmpty());
  for (QWidget* part : std::initializer_list<QWidget*>{m_bar, m_numbers, m_cancel})
    part->setVisible(runs);
  const bool isMade = !runs && !notices.isEmpty() && !notices.last().isCancelled;
  m_reveal->setVisible(isMade);
  m_dismiss->setVisible(!runs);
  if (!runs) m_numbers->setMinimumWidth(0);
  if (runs)
    showRunning();
  else if (!notices.isEmpty())
    showNotices();
}

void RenderProgress::showRunning() {
  const render::RenderTask& task = *m_queue.current();
  const QString path = RenderQueue::pathOf(task.settings());
  const QString name =
      m_title->fontMetrics().elidedText(QFileInfo(path).fileName(), Qt::ElideMiddle, longestName);
  m_title->setText(tr("Rendering %1").arg(name));
  m_title->setToolTip(path);
  const auto progress = task.progress();
  m_bar->setRange(0, progress.total ? barSteps : 0);
  if (progress.total)
    m_bar->setValue(static_cast<int>(std::min<qint64>(
        progress.frames * barSteps / std::max<qint64>(*progress.total, 1), barSteps)));
  QString numbers = progressText(progress.frames, progress.total, progress.timeLeft);
  if (const qsizetype waiting = m_queue.waiting(); waiting > 0)
    numbers += tr(" (%1 more to come)").arg(waiting);
  m_numbers->setText(numbers);
  // What is read while it changes stays where it is.
  m_numbers->setMinimumWidth(std::max(m_numbers->minimumWidth(), m_numbers->sizeHint().width()));
}

QString RenderProgress::progressText(qint64 frames, std::optional<qint64> total,
                                     std::optional<double> timeLeft) {
  QString text = total && frames <= *total ? tr("%1 of %2").arg(frames).arg(*total)
                                           : tr("%1 frames").arg(frames);
  if (timeLeft && frames <= total.value_or(0)) text += QStringLiteral(", ") + timeText(*timeLeft);
  return text;
}

QString RenderProgress::outcome(const RenderQueue::Notice& notice) const {
  const QString name = m_title->fontMetrics().elidedText(QFileInfo(notice.path).fileName(),
                                                         Qt::ElideMiddle, longestName);
  return (notice.isCancelled ? tr("Rendering %1 was cancelled") : tr("Rendered %1")).arg(name);
}

void RenderProgress::showNotices() {
  const QList<RenderQueue::Notice>& notices = m_queue.notices();
  const bool isOne = notices.size() == 1;
  QStringList all;
  qsizetype findings = 0;
  for (const RenderQueue::Notice& notice : notices) {
    if (!isOne) all += outcome(notice);
    all += notice.findings;
    findings += notice.findings.size();
  }
  QString text = isOne ? outcome(notices.first()) : tr("%1 renderings ended").arg(notices.size());
  if (findings == 1) text += tr(", 1 finding");
  if (findings > 1) text += tr(", %1 findings").arg(findings);
  m_title->setText(text);
  m_title->setToolTip(all.isEmpty() ? notices.first().path : all.join(u'\n'));
}

void RenderProgress::act() {
  if (m_queue.notices().isEmpty()) return;
  const QFileInfo file(m_queue.notices().last().path);
  const QString folder = file.isDir() ? file.absoluteFilePath() : file.absolutePath();
  QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

}  // namespace app
