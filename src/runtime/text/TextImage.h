#pragma once

#include <memory>

#include "runtime/Image.h"
#include "runtime/text/TextLayout.h"

namespace runtime {

/// The picture of a set text: white on transparent black, premultiplied, grey edges; emoji keep
/// their colours. Drawn when its pixels are first needed, on whatever thread.
class TextImage : public ImageSource {
 public:
  explicit TextImage(TextLayout layout) : m_layout(std::move(layout)) {}
  [[nodiscard]] QRect extent() const override { return {QPoint(), m_layout.size}; }
  [[nodiscard]] QImage pixels(const QRect& area) const override;
  [[nodiscard]] const TextLayout& layout() const { return m_layout; }

 private:
  TextLayout m_layout;
};

/// Sets a text, or takes it from a small store that all compositions of the process share: equal
/// texts are set and drawn once. Thread-safe. The pixel limit is a budget's, for one image.
[[nodiscard]] std::shared_ptr<const TextImage> sharedTextImage(const QString& text,
                                                               const TextStyle& style,
                                                               qint64 pixelLimit);

}  // namespace runtime
