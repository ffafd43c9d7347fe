#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "runtime/CompositionRenderer.h"

namespace canvas {

/// Evaluates one component on a thread of its own, with a renderer of its own, for components that
/// take too long to be waited for.
class BackgroundEvaluation {
 public:
  struct Request {
    std::shared_ptr<const runtime::CompiledComposition> compiled;
    QVariantHash userInfo;
    std::vector<std::pair<QString, runtime::Value>> inputs;
    double time = 0;  ///< the component's own, in seconds
    QSize size;
    runtime::FrameArguments arguments;
    QRectF frame;  ///< passed on to the result

    /// What the renderer would be asked at this moment.
    [[nodiscard]] static Request of(runtime::CompositionRenderer& renderer, double time,
                                    const QSize& size, const runtime::FrameArguments& arguments,
                                    const QRectF& frame);
  };
  struct Result {
    runtime::DrawList list;
    QRectF frame;
    double seconds = 0;           ///< that it took
    bool wasInterrupted = false;  ///< after the time that a frame may take
  };

  /// A frame may take so long. `finished` is called on the thread, for every result.
  BackgroundEvaluation(std::chrono::milliseconds mostTime, std::function<void()> finished);
  /// Waits for the patch that is running at the moment.
  ~BackgroundEvaluation();
  BackgroundEvaluation(const BackgroundEvaluation&) = delete;
  BackgroundEvaluation& operator=(const BackgroundEvaluation&) = delete;

  /// While a request is worked on, the last one that came meanwhile waits.
  void ask(Request request);
  [[nodiscard]] bool isBusy() const;
  /// The last result, once.
  [[nodiscard]] std::optional<Result> takeResult();

 private:
  void run();
  [[nodiscard]] Result evaluate(Request request);
  void prepareRenderer(const Request& request);
  /// From now on the frame may take so long as it may; it ends at once when all shall end.
  [[nodiscard]] std::shared_ptr<const runtime::Interruption> beginFrame();

  std::chrono::milliseconds m_mostTime;
  std::function<void()> m_finished;
  std::unique_ptr<runtime::CompositionRenderer> m_renderer;  // the thread's
  mutable std::mutex m_mutex;                                // guards what follows
  std::condition_variable m_changed;
  std::optional<Request> m_waiting;
  std::optional<Result> m_result;
  std::shared_ptr<runtime::Interruption> m_running;
  bool m_works = false;
  bool m_ends = false;
  std::thread m_thread;
};

}  // namespace canvas
