#pragma once

#include <QImage>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "preview/BackdropSource.h"

namespace preview {

/// Reads a still or plays a movie in real time, on a thread of its own, as pictures of the size
/// that is wanted. Shapes that differ are cut off at the longer sides. The last picture waits to
/// be taken.
class FileBackdrop {
 public:
  /// Called on the thread, which waits for them: pass it on and return.
  struct Hooks {
    std::function<void()> imageReady = {};  ///< once until it was taken
    /// There will be no further picture.
    std::function<void(const foundation::Error&)> failed = {};
  };

  /// The size in pixels.
  FileBackdrop(BackdropSource::Kind kind, const QString& path, const QSize& size, Hooks hooks);
  /// Ends what is being read of a movie.
  ~FileBackdrop();
  FileBackdrop(const FileBackdrop&) = delete;
  FileBackdrop& operator=(const FileBackdrop&) = delete;

  [[nodiscard]] BackdropSource::Kind kind() const { return m_kind; }
  [[nodiscard]] const QString& path() const { return m_path; }
  void setSize(const QSize& size);
  /// A movie plays from its beginning.
  void beginAnew();
  /// The latest; null when it was taken already.
  [[nodiscard]] QImage takeImage();

  /// The middle of the image, in that size.
  [[nodiscard]] static QImage covering(const QImage& image, const QSize& size);

 private:
  using Clock = std::chrono::steady_clock;
  /// What was asked for last.
  struct Order {
    Clock::time_point start = Clock::now();
    QSize size;
    int number = 0;
    [[nodiscard]] double secondsSinceStart() const;
  };
  void work();
  void play(BackdropSource source);
  [[nodiscard]] Order order() const;
  void change(const std::function<void(Order&)>& apply);
  /// Until the time, in seconds since the order's start; false when that order holds no more.
  [[nodiscard]] bool waitUntil(double time, const Order& order);
  void publish(const QImage& image);

  const BackdropSource::Kind m_kind;
  const QString m_path;
  const Hooks m_hooks;
  std::atomic<bool> m_ends = false;
  mutable std::mutex m_mutex;  // guards what follows
  std::condition_variable m_changed;
  Order m_order;
  QImage m_image;
  std::thread m_thread;
};

}  // namespace preview
