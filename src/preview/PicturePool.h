#pragma once

#include <QImage>
#include <memory>
#include <mutex>
#include <vector>

#include "runtime/draw/FrameCanvas.h"

namespace preview {

/// A finished picture, premultiplied ARGB32. Its canvas is drawn on again when nobody holds it.
struct Picture {
  runtime::FrameCanvas canvas;
  double time = 0;        ///< seconds, of the composition
  bool isOpaque = false;  ///< its alpha may be taken for 1, over black
  [[nodiscard]] const QImage& image() const { return canvas.image(); }
};

/// Hands out canvases of one size, and takes them back when they are let go, on any thread.
class PicturePool {
 public:
  PicturePool(const QSize& size, int bands) : m_shared(std::make_shared<Shared>(size, bands)) {}

  /// One that is free, or a further one.
  [[nodiscard]] std::shared_ptr<Picture> take();

 private:
  struct Shared {
    Shared(const QSize& s, int b) : size(s), bands(b) {}
    QSize size;
    int bands;
    std::mutex mutex;
    std::vector<std::unique_ptr<Picture>> idle;
  };
  std::shared_ptr<Shared> m_shared;  ///< held by the pictures as well
};

}  // namespace preview
