#pragma once

#include <gtest/gtest.h>

#include <QHash>
#include <memory>

#include "quartz/QuartzComposition.h"
#include "runtime/CompositionRenderer.h"

namespace support {

/// Builds a small composition in code: nodes, connections, published ports. A builder also makes
/// the content of a macro.
class GraphBuilder {
 public:
  using Dictionary = foundation::PropertyDictionary;

  /// Adds a node and returns its key. The class may carry an identifier: "QCQuadric:sphere".
  QString node(const QString& className, const Dictionary& state = {},
               const Dictionary& inputs = {}) {
    const QStringList parts = className.split(QLatin1Char(':'));
    Dictionary whole = state;
    for (const auto& [port, value] : inputs)
      whole.edit(QStringLiteral("ivarInputPortStates"))
          .editDictionary()
          .insert(port, Dictionary{{QStringLiteral("value"), value}});
    const QString key = QStringLiteral("%1_%2").arg(parts[0]).arg(m_nodes.size() + 1);
    Dictionary entry{{QStringLiteral("class"), parts[0]},
                     {QStringLiteral("key"), key},
                     {QStringLiteral("state"), whole}};
    if (parts.size() > 1) entry.insert(QStringLiteral("identifier"), parts[1]);
    m_nodes.append(entry);
    return key;
  }
  /// Adds a macro with the content.
  QString macro(const QString& className, const GraphBuilder& content,
                const Dictionary& inputs = {}, const Dictionary& state = {}) {
    Dictionary whole = content.state();
    for (const auto& [key, value] : state) whole.insert(key, value);
    return node(className, whole, inputs);
  }
  void connect(const QString& source, const QString& output, const QString& destination,
               const QString& input) {
    m_connections.insert(QStringLiteral("connection_%1").arg(m_connections.size() + 1),
                         Dictionary{{QStringLiteral("sourceNode"), source},
                                    {QStringLiteral("sourcePort"), output},
                                    {QStringLiteral("destinationNode"), destination},
                                    {QStringLiteral("destinationPort"), input}});
  }
  void publishInput(const QString& node, const QString& port, const QString& key) {
    m_inputs.append(published(node, port, key));
  }
  void publishOutput(const QString& node, const QString& port, const QString& key) {
    m_outputs.append(published(node, port, key));
  }
  /// The value of a published root input.
  void setParameter(const QString& key, const foundation::PropertyValue& value) {
    m_parameters.insert(key, value);
  }

  [[nodiscard]] Dictionary state() const {
    return {{QStringLiteral("nodes"), m_nodes},
            {QStringLiteral("connections"), m_connections},
            {QStringLiteral("publishedInputPorts"), m_inputs},
            {QStringLiteral("publishedOutputPorts"), m_outputs}};
  }
  [[nodiscard]] Dictionary composition() const {
    return {{QStringLiteral("rootPatch"),
             Dictionary{{QStringLiteral("class"), QStringLiteral("QCPatch")},
                        {QStringLiteral("state"), state()}}},
            {QStringLiteral("inputParameters"), m_parameters}};
  }
  /// Never null; a graph that does not compile fails the test and yields an empty one.
  [[nodiscard]] std::unique_ptr<runtime::CompositionRenderer> renderer(
      const QString& fileName = {}, const runtime::Budget& budget = {}) const {
    const auto made = quartz::QuartzComposition::compositionWithDictionary(composition());
    auto compiled = runtime::CompiledComposition::compile(*made, fileName, budget);
    if (!compiled) {
      ADD_FAILURE() << "does not compile: " << compiled.error().message.toStdString();
      return GraphBuilder().renderer();
    }
    return std::make_unique<runtime::CompositionRenderer>(*compiled);
  }

 private:
  static Dictionary published(const QString& node, const QString& port, const QString& key) {
    return {{QStringLiteral("key"), key},
            {QStringLiteral("node"), node},
            {QStringLiteral("port"), port}};
  }
  foundation::PropertyArray m_nodes;
  Dictionary m_connections;
  foundation::PropertyArray m_inputs;
  foundation::PropertyArray m_outputs;
  Dictionary m_parameters;
};

}  // namespace support
