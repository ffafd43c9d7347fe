#pragma once

#include <QHash>
#include <memory>
#include <vector>

#include "foundation/Result.h"
#include "quartz/QuartzComposition.h"
#include "runtime/Host.h"
#include "runtime/PatchClass.h"

namespace runtime {

enum class TimeBase : quint8 { Parent, Local, External };

/// Where an input gets its value from.
struct Link {
  int node = -1;  ///< index of the source node; −1: a constant
  int output = -1;
};

/// One node of the graph, ready to run. Macros are nodes too; their published ports are resolved
/// away, so that every link joins the two nodes that really give and take.
struct CompiledNode {
  QString path;  ///< node keys from the root, for messages: "Patch_1/Sprite_2"
  NodeDescription description;
  const PatchClass* patchClass = nullptr;  ///< none: unknown, inert
  PatchPorts ports;
  std::vector<Value> constants;  ///< an input's value where no link gives one
  std::vector<Link> links;
  int enableInput = -1;  ///< the input "_enable" of consumers
  int timeInput = -1;    ///< the input "_time" with an external time base
  TimeBase timeBase = TimeBase::Parent;
  int scope = 0;     ///< the macro content that it stands in
  int content = -1;  ///< of a macro: its own content; stays −1 for others
  bool isConsumer = false;
  /// Something that it reads can change without the host setting a value.
  bool isVolatile = false;
  bool closesLoop = false;  ///< reads, by way of others, what it gave in the frame before

  [[nodiscard]] bool isMacro() const {
    return patchClass && patchClass->kind == PatchClass::Kind::Macro;
  }
  [[nodiscard]] int input(const QString& key) const;
  [[nodiscard]] int output(const QString& key) const;
};

/// The content of a macro, or the root.
struct CompiledScope {
  int macro = -1;   ///< the node whose content this is; −1 for the root
  int parent = -1;  ///< enclosing scope
  std::vector<int> nodes;
  std::vector<int> consumers;  ///< in layer order
  std::vector<int> inner;      ///< all scopes below this one
  bool iterates = false;       ///< inside an iterator: patches may have several memories
  int offscreenMacro = -1;     ///< nearest macro around it that draws into an image
  /// Published outputs whose values of the previous frame a feedback patch reads.
  QHash<QString, Link> feedback;
};

/// A published root port.
struct PublishedPort {
  QString key;
  QString label;
  int node = -1;
  int port = -1;
};

/// A class met in a file, for reports.
struct PatchUse {
  QString className;
  QString identifier;
  int count = 0;
  bool known = false;
  QString firstPath;  ///< of the first node of the class
};

/// A composition file turned into a flat graph. Immutable and shared by all its instances.
class CompiledComposition {
 public:
  /// Never fails over unknown patches, missing ports or resources: those become findings. Fails
  /// when the graph exceeds the budget or embeds itself.
  [[nodiscard]] static foundation::Result<std::shared_ptr<const CompiledComposition>> compile(
      const quartz::QuartzComposition& composition, const QString& fileName = {},
      const Budget& budget = {});

  [[nodiscard]] const std::vector<CompiledNode>& nodes() const { return m_nodes; }
  [[nodiscard]] const std::vector<CompiledScope>& scopes() const { return m_scopes; }
  [[nodiscard]] const std::vector<PublishedPort>& inputs() const { return m_inputs; }
  [[nodiscard]] const std::vector<PublishedPort>& outputs() const { return m_outputs; }
  /// Unknown patches, dropped connections and the like, one sentence each.
  [[nodiscard]] const QStringList& findings() const { return m_findings; }
  /// Every patch class of the file with its count, virtual patches unfolded once each.
  [[nodiscard]] const QList<PatchUse>& patchUses() const { return m_patchUses; }
  [[nodiscard]] const Budget& budget() const { return m_budget; }
  [[nodiscard]] bool hasConsumers() const { return !m_scopes.front().consumers.empty(); }
  [[nodiscard]] bool isTimeDependent() const;

 private:
  friend class CompositionCompiler;
  std::vector<CompiledNode> m_nodes;
  std::vector<CompiledScope> m_scopes;
  std::vector<PublishedPort> m_inputs;
  std::vector<PublishedPort> m_outputs;
  QStringList m_findings;
  QList<PatchUse> m_patchUses;
  Budget m_budget;
};

}  // namespace runtime
