#pragma once

#include <QCoreApplication>
#include <QPointF>
#include <optional>

class QHelpEvent;

namespace canvas {

class CanvasHost;
class CompositionView;

/// Tells the window, the rulers and screen readers what happens in a view.
class CanvasReporter {
  Q_DECLARE_TR_FUNCTIONS(CanvasReporter)

 public:
  explicit CanvasReporter(CompositionView& view);

  /// The host must outlive the view; at first there is one that does nothing.
  void setHost(CanvasHost& host) { m_host = &host; }
  [[nodiscard]] CanvasHost& host() const { return *m_host; }

  void tellSelection();
  /// Why the component there cannot be drawn, as a tooltip; false where all is well.
  bool tellProblem(const QHelpEvent& event);
  /// In the view's logical pixels; nothing once the pointer has left.
  void tellPointer(const std::optional<QPointF>& viewPoint);

 private:
  void tellScreenReaders();

  CompositionView& m_view;
  CanvasHost* m_host;
};

}  // namespace canvas
