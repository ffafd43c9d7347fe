#pragma once

#include <QPointF>
#include <QString>
#include <optional>

class QMenu;

namespace model {
class Composition;
struct CommandReport;
}  // namespace model

namespace canvas {

/// What the canvas needs of the window around it. By default nothing is shown and layered files are
/// not imported.
class CanvasHost {
 public:
  virtual ~CanvasHost() = default;
  CanvasHost() = default;
  CanvasHost(const CanvasHost&) = delete;
  CanvasHost& operator=(const CanvasHost&) = delete;

  /// Tells the user, without waiting for an answer.
  virtual void showReport(const model::CommandReport&) {}
  /// What can be done next, for the status line; empty: nothing in particular.
  virtual void showHint(const QString&) {}
  /// Adds what can be done with the selection, or with the canvas where nothing is selected.
  virtual void fillContextMenu(QMenu&, const model::Composition&) {}
  /// In pixels of the picture; nothing while the pointer is elsewhere.
  virtual void pointerMoved(const std::optional<QPointF>&) {}
  /// Asks how a layered image file is to be imported, and does it with the component file for
  /// images. False when it cannot be.
  virtual bool importPSDFile(const QString& path, const QString& qtzFile) {
    Q_UNUSED(path)
    Q_UNUSED(qtzFile)
    return false;
  }
};

}  // namespace canvas
