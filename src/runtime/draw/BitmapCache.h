#pragma once

#include <QHash>
#include <QImage>
#include <QSize>
#include <array>
#include <list>
#include <mutex>

#include "foundation/Color.h"

namespace runtime {

/// What is to be done to an image's pixels before they are drawn.
struct BitmapChange {
  std::array<quint32, 4> factors{unity, unity, unity, unity};  ///< red, green, blue, all; 0…unity
  QImage mask;        ///< its luminance, stretched over the image, multiplies all components
  int halvingsX = 0;  ///< how often the width is halved
  int halvingsY = 0;

  static constexpr quint32 unity = 1U << 16;
  [[nodiscard]] bool isNothing() const;
  /// Multiplies red, green and blue by the colour's.
  void tint(const foundation::Color& color);
  /// Multiplies all components.
  void fade(double opacity);
  /// Halves as often as is needed to draw an image of the size over so many pixels without
  /// skipping any of its own.
  void reduce(const QSize& size, const QSizeF& pixels);
};

/// Changed bitmaps, kept while they are used and at most so many bytes of them. Thread-safe.
class BitmapCache {
 public:
  /// Above so many bytes what was not asked for during so many calls is let go: a graphic that
  /// begins anew makes its bitmaps anew, and those of its last playing would fill the cache for
  /// nothing.
  static constexpr qsizetype usualBytes = qsizetype{16} << 20;
  static constexpr quint64 patience = 1U << 12;

  [[nodiscard]] static BitmapCache& shared();
  explicit BitmapCache(qsizetype limit) : m_limit(limit) {}

  /// The bitmap (premultiplied ARGB32) with the change made.
  [[nodiscard]] QImage changed(const QImage& bitmap, const BitmapChange& change);
  /// Of the bitmaps that are kept.
  [[nodiscard]] qsizetype bytes() const;

 private:
  struct Key {
    qint64 bitmap = 0;
    qint64 mask = 0;
    std::array<quint32, 4> factors{};
    int halvingsX = 0;
    int halvingsY = 0;
    friend bool operator==(const Key&, const Key&) = default;
    friend size_t qHash(const Key& key, size_t seed) {
      return qHashMulti(seed, key.bitmap, key.mask, key.factors[0], key.factors[1], key.factors[2],
                        key.factors[3], key.halvingsX, key.halvingsY);
    }
  };
  struct Entry {
    Key key;
    QImage image;
    quint64 used = 0;  ///< number of the call that asked for it last
  };

  void insert(const Key& key, const QImage& image);

  mutable std::mutex m_mutex;
  std::list<Entry> m_entries;  ///< last used first
  QHash<Key, std::list<Entry>::iterator> m_index;
  qsizetype m_bytes = 0;
  quint64 m_calls = 0;
  qsizetype m_limit;
};

}  // namespace runtime
