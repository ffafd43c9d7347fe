#include "cli/ProgressBar.h"

#include <cstdio>

namespace cli {

ProgressBar::ProgressBar(QString label, qint64 total, bool visible)
    : m_label(std::move(label)), m_total(total), m_visible(visible) {
  m_clock.start();
}

ProgressBar::~ProgressBar() {
  if (m_drawn) std::fputc('\n', stderr);
}

void ProgressBar::update(qint64 done) {
  if (!m_visible || m_clock.elapsed() - m_lastDraw < 100) return;
  draw(done);
}

void ProgressBar::finish(qint64 done) {
  if (m_visible) draw(done);
}

void ProgressBar::draw(qint64 done) {
  m_lastDraw = m_clock.elapsed();
  m_drawn = true;
  const QByteArray text =
      line(m_label, done, m_total, static_cast<double>(m_lastDraw) / 1000).toUtf8();
  std::fprintf(stderr, "\r\033[K%s", text.constData());
  std::fflush(stderr);
}

QString ProgressBar::line(const QString& label, qint64 done, qint64 total, double seconds) {
  constexpr int width = 30;
  const double rate = seconds > 0 ? static_cast<double>(done) / seconds : 0;
  if (total <= 0)
    return QStringLiteral("%1  %2 frames  %3/s").arg(label).arg(done).arg(rate, 0, 'f', 0);
  const int filled = static_cast<int>(done * width / total);
  QString text =
      QStringLiteral("%1  [%2%3] %4 %  %5/%6  %7/s")
          .arg(label, QString(filled, QLatin1Char('#')), QString(width - filled, QLatin1Char('.')))
          .arg(done * 100 / total, 3)
          .arg(done)
          .arg(total)
          .arg(rate, 0, 'f', 0);
  if (rate > 0 && done < total)
    text += QStringLiteral("  %1 s left").arg(static_cast<double>(total - done) / rate, 0, 'f', 0);
  return text;
}

}  // namespace cli
