#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <atomic>
#include <deque>
#include <memory>

namespace library {

/// What a file looks like, in small.
struct Thumbnail {
  QImage picture;    ///< null when the file cannot be shown
  QSize resolution;  ///< pixels of the whole; empty where the file does not say
  QString problem;   ///< why there is no picture
};

/// Makes thumbnails one after the other, off the interface's thread: of pictures by reading them
/// small, of components and documents by playing them under tight limits. What was asked for last
/// comes first, since that is what is being looked at.
class ThumbnailMaker : public QObject {
  Q_OBJECT

 public:
  /// Pictures fit into the size (device pixels) and keep their proportions.
  explicit ThumbnailMaker(const QSize& size, QObject* parent = nullptr);
  ~ThumbnailMaker() override;

  void request(const QString& path);
  /// Forgets what was asked for and not begun.
  void cancelRequests() { m_waiting.clear(); }
  [[nodiscard]] const QSize& size() const { return m_size; }

  /// At once, on the calling thread; safe to call from any.
  [[nodiscard]] static Thumbnail make(const QString& path, const QSize& size);

 Q_SIGNALS:
  void made(const QString& path, const library::Thumbnail& thumbnail);

 private:
  void beginNext();

  QSize m_size;
  std::deque<QString> m_waiting;
  bool m_busy = false;
  std::shared_ptr<std::atomic<bool>> m_isGone;
};

}  // namespace library
