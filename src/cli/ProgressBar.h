#pragma once

#include <QElapsedTimer>
#include <QString>

namespace cli {

/// A line on standard error that follows the work; silent where standard error is no terminal.
class ProgressBar {
 public:
  /// `total` frames; 0 when it is not known.
  ProgressBar(QString label, qint64 total, bool visible);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Redraws at most ten times a second.
  void update(qint64 done);
  void finish(qint64 done);

  /// The line as it would be shown.
  [[nodiscard]] static QString line(const QString& label, qint64 done, qint64 total,
                                    double seconds);

 private:
  void draw(qint64 done);
  QString m_label;
  qint64 m_total;
  bool m_visible;
  bool m_drawn = false;
  QElapsedTimer m_clock;
  qint64 m_lastDraw = -1000;
};

}  // namespace cli
