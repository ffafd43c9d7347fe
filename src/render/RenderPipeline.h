#pragma once

#include <QMutex>
#include <QWaitCondition>
#include <map>
#include <thread>

#include "render/FrameWriter.h"
#include "runtime/draw/DrawList.h"

namespace render {

/// Draws and encodes several frames at once and delivers them in order. Draw lists come from one
/// thread; the pixel work runs in the global thread pool, writing on a thread of its own. At most a
/// few frames are under way, so memory does not grow with their number, and fewer of large
/// pictures.
class RenderPipeline {
 public:
  struct Working {
    int threads = 0;            ///< that draw; 0: one a core
    bool inBackground = false;  ///< the thread that writes lets others go first
  };
  /// The writer must outlive the pipeline.
  RenderPipeline(FrameWriter& writer, const QSize& size, const Working& working);
  ~RenderPipeline();
  /// How many frames of the size may be under way at once: one more than can be drawn, so that a
  /// frame being written holds up nobody, but no more than fit into two gigabytes.
  [[nodiscard]] static int framesUnderWay(const QSize& size, int threads);
  RenderPipeline(const RenderPipeline&) = delete;
  RenderPipeline& operator=(const RenderPipeline&) = delete;

  struct Picture {
    runtime::DrawList list = {};
    std::optional<runtime::DrawList> lowerField =
        {};  ///< what the second, fourth … lines show instead
    bool onBlack = false;
    qint64 number = 0;  ///< for the writer
  };
  /// Hands in the next frame; waits while enough are under way. False once a frame has failed.
  bool add(Picture picture);
  /// Leaves one thread of the pool to others, if there is more than one.
  void setGivesWay(bool givesWay);
  /// Waits until everything is delivered; the first failure, if any.
  [[nodiscard]] foundation::Result<void> finish();
  [[nodiscard]] qint64 delivered() const;

 private:
  struct Frame;
  /// An idle frame, or a new one; none, and the error is set, when memory runs out.
  [[nodiscard]] std::unique_ptr<Frame> takeIdle();
  void drawFrame(Frame& frame);
  void weave(Frame& frame);
  void deliverFrames();

  FrameWriter& m_writer;
  QSize m_size;
  mutable QMutex m_mutex;
  QWaitCondition m_changed;
  int m_threads = 1;
  int m_mostDrawing = 1;
  int m_drawing = 0;
  int m_mostFrames = 1;
  int m_frames = 0;  ///< made so far
  std::vector<std::unique_ptr<Frame>> m_idle;
  std::map<qint64, std::unique_ptr<Frame>> m_ready;  ///< drawn, waiting for their turn
  qint64 m_added = 0;
  qint64 m_delivered = 0;
  bool m_finished = false;
  std::optional<foundation::Error> m_error;
  std::thread m_delivery;
};

}  // namespace render
