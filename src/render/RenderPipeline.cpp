#include "render/RenderPipeline.h"

#include <QPainter>
#include <QThread>
#include <QThreadPool>

#include "render/BackgroundThread.h"
#include "runtime/draw/FrameCanvas.h"

namespace render {

struct RenderPipeline::Frame {
  explicit Frame(const QSize& size) : canvas(size, 0) {}
  runtime::FrameCanvas canvas;
  std::optional<runtime::FrameCanvas> lowerCanvas;  ///< only where frames have two fields
  QImage composed;  ///< only where frames have two fields or lie on black
  Picture picture;
  QRect drawn;  ///< outside it the image is transparent
  QByteArray bytes;
  qint64 order = 0;
  [[nodiscard]] bool isComposed() const { return picture.onBlack || picture.lowerField; }
  /// The pixels to encode, in place.
  QImage& pixels() { return isComposed() ? composed : canvas.pixels(); }
};

RenderPipeline::RenderPipeline(FrameWriter& writer, const QSize& size, const Working& working)
    : m_writer(writer), m_size(size) {
  if (working.threads > 0) QThreadPool::globalInstance()->setMaxThreadCount(working.threads);
  m_threads = working.threads > 0 ? working.threads : QThread::idealThreadCount();
  m_mostDrawing = m_threads + 1;
  m_mostFrames = framesUnderWay(size, m_threads);
  m_delivery = std::thread([this, inBackground = working.inBackground] {
    if (inBackground) BackgroundThread::enter();
    deliverFrames();
  });
}

int RenderPipeline::framesUnderWay(const QSize& size, int threads) {
  constexpr qint64 mostBytes = qint64(2) << 30;
  // A canvas, and a second picture where frames lie on black or have no alpha.
  const qint64 bytes = std::max<qint64>(qint64(size.width()) * size.height() * 4 * 2, 1);
  return static_cast<int>(std::clamp<qint64>(mostBytes / bytes, 1, qint64(threads) + 1));
}

RenderPipeline::~RenderPipeline() {
  (void)finish();
}

bool RenderPipeline::add(Picture picture) {
  std::unique_ptr<Frame> frame;
  {
    QMutexLocker lock(&m_mutex);
    const auto isFull = [this] {
      return m_drawing >= m_mostDrawing || (m_idle.empty() && m_frames == m_mostFrames);
    };
    while (isFull() && !m_error) m_changed.wait(&m_mutex);
    if (m_error) return false;
    frame = takeIdle();
    if (!frame) return false;
    frame->order = m_added++;
    ++m_drawing;
  }
  frame->picture = std::move(picture);
  // Painting from outside this pool would be cut into small jobs for it, at half the speed. What
  // else is to be drawn meanwhile, such as the editor's canvas, goes first.
  constexpr int priority = -1;
  const auto work = [this, raw = frame.release()] {
    std::unique_ptr<Frame> owned(raw);
    drawFrame(*owned);
    const auto bytes = m_writer.encode(owned->pixels(), owned->drawn);
    const QMutexLocker lock(&m_mutex);
    --m_drawing;
    if (bytes)
      owned->bytes = *bytes;
    else if (!m_error)
      m_error = bytes.error();
    const qint64 order = owned->order;
    m_ready.emplace(order, std::move(owned));
    m_changed.wakeAll();
  };
  QThreadPool::globalInstance()->start(work, priority);
  return true;
}

void RenderPipeline::setGivesWay(bool givesWay) {
  const QMutexLocker lock(&m_mutex);
  m_mostDrawing = givesWay ? std::max(m_threads - 1, 1) : m_threads + 1;
}

std::unique_ptr<RenderPipeline::Frame> RenderPipeline::takeIdle() {
  if (!m_idle.empty()) {
    std::unique_ptr<Frame> frame = std::move(m_idle.back());
    m_idle.pop_back();
    return frame;
  }
  auto frame = std::make_unique<Frame>(m_size);
  ++m_frames;
  if (!frame->canvas.image().isNull()) return frame;
  m_error = foundation::Error{QStringLiteral("there is not enough memory for pictures of %1 x %2")
                                  .arg(m_size.width())
                                  .arg(m_size.height()),
                              {},
                              {}};
  return nullptr;
}

void RenderPipeline::drawFrame(Frame& frame) {
  frame.canvas.draw(frame.picture.list);
  frame.drawn = frame.canvas.touched();
  frame.picture.list.items.clear();
  if (!frame.isComposed()) return;
  if (frame.composed.isNull()) frame.composed = QImage(m_size, QImage::Format_ARGB32_Premultiplied);
  frame.composed.fill(frame.picture.onBlack ? Qt::black : Qt::transparent);
  QPainter(&frame.composed).drawImage(0, 0, frame.canvas.image());
  if (frame.picture.lowerField) weave(frame);
  if (frame.picture.onBlack) frame.drawn = frame.composed.rect();
}

/// Gives every second line to the second field.
void RenderPipeline::weave(Frame& frame) {
  if (!frame.lowerCanvas) frame.lowerCanvas.emplace(m_size, 0);
  frame.lowerCanvas->draw(*frame.picture.lowerField);
  frame.picture.lowerField->items.clear();
  frame.drawn |= frame.lowerCanvas->touched();
  QPainter painter(&frame.composed);
  if (!frame.picture.onBlack) painter.setCompositionMode(QPainter::CompositionMode_Source);
  for (int y = 1; y < m_size.height(); y += 2) {
    if (frame.picture.onBlack) painter.fillRect(0, y, m_size.width(), 1, Qt::black);
    painter.drawImage(QPoint(0, y), frame.lowerCanvas->image(), QRect(0, y, m_size.width(), 1));
  }
}

void RenderPipeline::deliverFrames() {
  QMutexLocker lock(&m_mutex);
  for (;;) {
    while (m_ready.find(m_delivered) == m_ready.end()) {
      if (m_finished && m_delivered == m_added) return;
      m_changed.wait(&m_mutex);
    }
    std::unique_ptr<Frame> frame = std::move(m_ready.extract(m_delivered).mapped());
    if (!m_error) {
      lock.unlock();
      const auto written = m_writer.deliver(frame->pixels(), frame->bytes, frame->picture.number);
      lock.relock();
      if (!written && !m_error) m_error = written.error();
    }
    frame->bytes.clear();
    ++m_delivered;
    m_idle.push_back(std::move(frame));
    m_changed.wakeAll();
  }
}

foundation::Result<void> RenderPipeline::finish() {
  if (m_delivery.joinable()) {
    {
      const QMutexLocker lock(&m_mutex);
      m_finished = true;
      m_changed.wakeAll();
    }
    m_delivery.join();
  }
  if (m_error) return tl::unexpected(*m_error);
  return {};
}

qint64 RenderPipeline::delivered() const {
  const QMutexLocker lock(&m_mutex);
  return m_delivered;
}

}  // namespace render
