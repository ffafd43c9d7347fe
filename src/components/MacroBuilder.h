#pragma once

#include <QHash>
#include <QJsonObject>
#include <QStringList>
#include <optional>

#include "foundation/Result.h"
#include "quartz/QuartzPatch.h"

namespace components {

/// Fills one macro patch from its source, inner macros included. Works through the patch model, so
/// keys, connections and published ports come out as everywhere else.
class MacroBuilder {
 public:
  using Failure = std::optional<foundation::Error>;

  /// The place is the path of the macro in the source, for messages. Values of declared inputs that
  /// stand in `defaults` replace those of the source.
  MacroBuilder(quartz::QuartzPatch& macro, QString place, QJsonObject defaults = {})
      : m_macro(macro), m_place(std::move(place)), m_defaults(std::move(defaults)) {}

  /// Nothing when all went well.
  [[nodiscard]] Failure build(const QJsonObject& source);

  /// The fields of a source that describe the content of a macro.
  [[nodiscard]] static const QStringList& contentFields();
  /// A failure when the object has a field that is not listed.
  [[nodiscard]] static Failure checkFields(const QJsonObject& object, const QStringList& allowed,
                                           const QString& place);

 private:
  struct Link {
    QString from;
    QString to;
    QString place;
  };
  struct PortName {
    QString node;
    QString port;
  };

  Failure addDeclaredInputs(const QJsonArray& inputs);
  Failure addDeclaredInput(const QJsonObject& input, const QString& place);
  Failure addNodes(const QJsonArray& nodes);
  Failure addNode(const QJsonObject& node, const QString& place);
  Failure setInputs(quartz::QuartzPatch& node, const QJsonObject& inputs, const QString& place);
  Failure readConnections(const QJsonArray& connections);
  Failure connectAll();
  Failure publishInputs(const QJsonArray& ports);
  Failure publishOutputs(const QJsonArray& ports);

  Failure take(quartz::QuartzPatch* node, const QString& key, const QString& place);
  [[nodiscard]] static PortName split(const QString& text);
  [[nodiscard]] static foundation::Error error(const QString& message, const QString& place);

  quartz::QuartzPatch& m_macro;
  QString m_place;
  QJsonObject m_defaults;
  QHash<QString, quartz::QuartzPatch*> m_nodes;
  QList<Link> m_links;
};

}  // namespace components
