#pragma once

#include <QCoreApplication>
#include <QPointF>
#include <QSet>
#include <QStringList>
#include <optional>

#include "model/StandardComponents.h"

class QMimeData;

namespace model {
class Composition;
class QuartzComponent;
}  // namespace model

namespace canvas {

class CanvasHost;

/// Makes components of what is dropped on the canvas: files, and components from elsewhere in the
/// program. One drop is one undo step.
class ComponentDrop {
  Q_DECLARE_TR_FUNCTIONS(ComponentDrop)

 public:
  ComponentDrop(model::Composition& composition, model::StandardComponents standardComponents,
                CanvasHost& host)
      : m_composition(composition), m_standard(std::move(standardComponents)), m_host(host) {}

  /// Where the middle of what is dropped comes to lie, in pixels of the picture; without one it is
  /// where components begin.
  void setPlace(const QPointF& place) { m_place = place; }

  /// Whether there is anything in it that could become a component.
  [[nodiscard]] static bool canTake(const QMimeData& data);
  /// False when nothing usable was dropped or a component could not be made.
  bool take(const QMimeData& data, bool commandKeyPressed);

  /// Composition files become components, images become image components, and what is neither is
  /// left out. A layered file is handed to the host, unless the command key asks for one flat
  /// image. False when a composition file could not be loaded; the others are added all the same.
  bool addComponentsFromPaths(const QStringList& paths, bool commandKeyPressed);
  /// By its first bytes.
  [[nodiscard]] static bool isPSDFile(const QString& path);

 private:
  bool addPath(const QString& path, bool commandKeyPressed);
  bool addComposition(const QString& path);
  void addImage(const QString& path, bool isFlatPSD);
  bool addArchived(const QByteArray& data);
  void tellWarnings(const QStringList& warnings);
  enum class Keeps { Distances, Nothing };
  /// Moves what was added since there were so many to the place: together, or each by itself.
  void place(const QSet<const model::QuartzComponent*>& before, Keeps keeps) const;
  [[nodiscard]] QSet<const model::QuartzComponent*> present() const;

  model::Composition& m_composition;
  model::StandardComponents m_standard;
  CanvasHost& m_host;
  std::optional<QPointF> m_place;
};

}  // namespace canvas
