#pragma once

#include <QDateTime>
#include <QHash>
#include <QPointF>
#include <QSet>
#include <QString>
#include <QVariant>
#include <QVariantHash>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace runtime {

/// Limits for graphs that nobody vouches for. Reaching one ends the frame's work on the item
/// concerned and is reported once.
struct Budget {
  qint64 nodes = 200'000;             ///< nodes of a compiled composition, virtual patches unfolded
  qint64 iterations = 100'000;        ///< passes of all iterators in one frame
  qint64 drawItems = 200'000;         ///< items of one frame
  qint64 imagePixels = 64'000'000;    ///< pixels of one image
  qint64 scriptMilliseconds = 1'000;  ///< one run of a script
  int depth = 64;                     ///< nesting of macros
};

/// Ends an evaluation before it is through: when its time is over or when somebody asks, from any
/// thread.
class Interruption {
 public:
  using Clock = std::chrono::steady_clock;
  explicit Interruption(std::chrono::milliseconds allowed) : m_end(Clock::now() + allowed) {}

  void request() { m_requested = true; }
  [[nodiscard]] bool isDue() const { return m_requested || Clock::now() >= m_end; }
  /// Until it is due; none when it was requested.
  [[nodiscard]] std::chrono::milliseconds remaining() const {
    if (m_requested) return {};
    return std::max(std::chrono::milliseconds(),
                    std::chrono::ceil<std::chrono::milliseconds>(m_end - Clock::now()));
  }

 private:
  Clock::time_point m_end;
  std::atomic<bool> m_requested = false;
};

/// What a frame is given from outside; the runtime itself reads no clock and no device.
struct FrameArguments {
  QPointF mouse{0.5, 0.5};     ///< 0…1 on both axes from the lower left
  bool mouseButtons[3] = {};   ///< left, right, other
  QSet<char16_t> pressedKeys;  ///< UTF-16 code units of keys that are down
  /// The wall clock; composition time never depends on it.
  QDateTime wallClock = QDateTime::fromMSecsSinceEpoch(978307200000, Qt::UTC);
  QVariantHash playout;  ///< what a playout system says of the clip on air, by its parameter names
  std::shared_ptr<const Interruption> interruption;  ///< none: the frame takes what it needs
};

/// The surface that a patch draws to, in pixels; always 2 units wide.
struct Destination {
  int pixelsWide = 1;
  int pixelsHigh = 1;
  [[nodiscard]] double aspect() const { return static_cast<double>(pixelsWide) / pixelsHigh; }
  [[nodiscard]] double height() const { return 2.0 * pixelsHigh / pixelsWide; }
  [[nodiscard]] double pixelsPerUnit() const { return pixelsWide / 2.0; }
  friend bool operator==(const Destination&, const Destination&) = default;
};

}  // namespace runtime
