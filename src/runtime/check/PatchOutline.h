#pragma once

#include <QHash>
#include <QSet>
#include <map>
#include <memory>
#include <vector>

#include "foundation/Finding.h"
#include "quartz/QuartzComposition.h"
#include "runtime/PatchClass.h"

namespace runtime::check {

class VirtualPatches;

/// A patch of a file as its siblings see it: which ports it has, those that its state creates and
/// those that its content publishes included. The patch must outlive its outline.
struct PatchOutline {
  const quartz::QuartzPatch& patch;
  QString path;  ///< node keys from the outside in
  const PatchClass* patchClass = nullptr;
  /// False where nobody can say which ports there are besides those found: unknown classes.
  bool portsAreKnown = true;
  bool isConsumer = false;
  bool holdsUnknown = false;  ///< it or something in it is of an unknown class
  QHash<QString, Port> inputs;
  QHash<QString, Port> outputs;
  std::vector<std::unique_ptr<PatchOutline>> nodes;

  [[nodiscard]] static std::unique_ptr<PatchOutline> of(const quartz::QuartzPatch& patch,
                                                        const QString& path,
                                                        VirtualPatches& virtualPatches);
  /// The first of that key; null when there is none.
  [[nodiscard]] const PatchOutline* node(const QString& key) const;
  [[nodiscard]] QString className() const;  ///< with the identifier, "Class:identifier"
  /// The inputs of its nodes that something is connected to, as "node.port".
  [[nodiscard]] QSet<QString> connectedInputs() const;

 private:
  PatchOutline(const quartz::QuartzPatch& patch, QString path);
  void takeClass(VirtualPatches& virtualPatches);
  void takeContent(VirtualPatches& virtualPatches);
  void takePublished();
  void takeSystemPorts();

  QHash<QString, const PatchOutline*> m_nodesByKey;
};

/// The virtual patches embedded in a composition, outlined once each when first used.
class VirtualPatches {
 public:
  VirtualPatches(const quartz::QuartzComposition& composition, foundation::Findings& findings);
  /// Null where the composition has none of that name, or it contains itself; either is told once.
  const PatchOutline* outline(const QString& name, const QString& usedBy);
  /// A value of the embedded composition's own list of root values.
  struct Embedded {
    std::unique_ptr<quartz::QuartzComposition> composition;
    std::unique_ptr<PatchOutline> outline;  ///< none: being made, or not there
  };
  [[nodiscard]] const std::map<QString, Embedded>& all() const { return m_all; }

 private:
  const quartz::QuartzComposition& m_composition;
  foundation::Findings& m_findings;
  std::map<QString, Embedded> m_all;
};

}  // namespace runtime::check
