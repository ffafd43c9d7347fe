#include "runtime/text/TextImage.h"

#include <QCache>
#include <QMutex>
#include <QPainter>

namespace runtime {

namespace {

struct TextKey {
  QString text;
  TextStyle style;
  qint64 pixelLimit = 0;
  friend bool operator==(const TextKey&, const TextKey&) = default;
};

size_t qHash(const TextKey& key, size_t seed = 0) {
  const TextStyle& s = key.style;
  return qHashMulti(seed, key.text, s.fontName, s.size, s.leading, s.kerning, s.width, s.height,
                    static_cast<int>(s.horizontal), static_cast<int>(s.vertical), key.pixelLimit);
}

constexpr qsizetype storeKilobytes = 64 * 1024;

/// What an image will hold once drawn, in kilobytes.
qsizetype cost(const TextKey& key, const TextLayout& layout) {
  const qint64 pixels = qint64{layout.size.width()} * layout.size.height();
  return 1 + (pixels * 4 + key.text.size() * 2 + qint64{layout.glyphCount} * 400) / 1024;
}

}  // namespace

QImage TextImage::pixels(const QRect& area) const {
  QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return image;
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  // The layout runs down from the image's top, areas up from its bottom.
  painter.translate(-area.x(), area.y() + area.height() - m_layout.size.height());
  for (const QPainterPath& glyph : m_layout.outlines) {
    // A path keeps a converted form inside once it was filled, unguarded: each drawing needs its
    // own, as several threads may draw this text at once.
    QPainterPath own;
    own.setFillRule(glyph.fillRule());
    own.addPath(glyph);
    painter.fillPath(own, Qt::white);
  }
  for (const TextLayout::Picture& picture : m_layout.pictures)
    painter.drawImage(picture.place, picture.image);
  return image;
}

std::shared_ptr<const TextImage> sharedTextImage(const QString& text, const TextStyle& style,
                                                 qint64 pixelLimit) {
  static QMutex mutex;
  static QCache<TextKey, std::shared_ptr<const TextImage>> store(storeKilobytes);
  const TextKey key{text, style, pixelLimit};
  {
    const QMutexLocker lock(&mutex);
    if (const std::shared_ptr<const TextImage>* known = store.object(key)) return *known;
  }
  // Set outside the lock: two threads that want the same text at once are rare.
  auto made = std::make_shared<const TextImage>(TextLayout::make(text, style, pixelLimit));
  const QMutexLocker lock(&mutex);
  store.insert(key, new std::shared_ptr<const TextImage>(made), cost(key, made->layout()));
  return made;
}

}  // namespace runtime
