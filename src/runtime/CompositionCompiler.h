#pragma once

#include "runtime/CompiledComposition.h"

namespace runtime {

/// Builds a CompiledComposition: makes a node of every patch, unfolds virtual patches, and resolves
/// published ports so that links join the nodes that give and take.
class CompositionCompiler {
 public:
  CompositionCompiler(const quartz::QuartzComposition& composition, QString fileName,
                      const Budget& budget);
  foundation::Result<std::shared_ptr<const CompiledComposition>> compile();

 private:
  struct PortPlace {
    int node = -1;
    QString port;
  };
  /// The names inside one macro content, needed only while compiling.
  struct ScopeNames {
    QHash<QString, int> nodes;
    QHash<QString, PortPlace> inputs;
    QHash<QString, PortPlace> outputs;
  };

  bool compileContent(const quartz::QuartzPatch& patch, int scope, const QString& path, int depth);
  int compileNode(const quartz::QuartzPatch& patch, int scope, const QString& path, int depth);
  bool compileMacroContent(const quartz::QuartzPatch& patch, int node, int depth);
  bool compileVirtual(const quartz::QuartzPatch& patch, int node, int depth);
  int addScope(int parent, int macro);
  void addSystemPorts(CompiledNode& node);
  void readStoredValues(const quartz::QuartzPatch& patch, int node);
  void readPublished(const quartz::QuartzPatch& patch, int scope);
  void readConnections(const quartz::QuartzPatch& patch, int scope);
  void applyInputParameters(const foundation::PropertyDictionary& parameters, int scope);
  void publishRoot(const quartz::QuartzPatch& root,
                   const foundation::PropertyDictionary& parameters);
  bool setConstant(int node, const QString& port, const foundation::PropertyValue& stored);
  Link resolveInput(int node, const QString& port, int depth = 0);
  Link resolveOutput(int node, const QString& port, int depth = 0);
  void linkFeedback();
  bool markVolatile();
  void countUse(const QString& className, const QString& identifier, bool known,
                const QString& path);
  void reportUnknown();
  void finding(const QString& text);
  bool fail(const QString& message, const QString& detail = {});

  const quartz::QuartzComposition& m_composition;
  QString m_fileName;
  QString m_baseFolder;
  Budget m_budget;
  std::shared_ptr<CompiledComposition> m_result;
  std::vector<ScopeNames> m_names;
  QHash<QString, std::shared_ptr<quartz::QuartzComposition>> m_virtual;
  QStringList m_virtualPath;  // those being unfolded, to catch one that embeds itself
  std::optional<foundation::Error> m_error;
};

}  // namespace runtime
