#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include "foundation/PropertyValue.h"
#include "runtime/PatchEvaluator.h"
#include "runtime/Value.h"

namespace runtime {

/// One input or output of a patch.
struct Port {
  QString key;
  PortType type = PortType::Virtual;
  Value defaultValue;  ///< empty: the type's zero
  QString label;
  std::optional<double> minimum;
  std::optional<double> maximum;
  QStringList menu;  ///< titles of an index port's values

  Port(QString key, PortType type, Value defaultValue = {}, QString label = {})
      : key(std::move(key)),
        type(type),
        defaultValue(std::move(defaultValue)),
        label(std::move(label)) {
    if (this->defaultValue.isEmpty()) this->defaultValue = Value::zero(type);
  }
  Port&& range(std::optional<double> lowest, std::optional<double> highest) && {
    minimum = lowest;
    maximum = highest;
    return std::move(*this);
  }
  /// Gives the port a menu; its values are 0 … count − 1.
  Port&& titles(QStringList menuTitles) && {
    menu = std::move(menuTitles);
    maximum = static_cast<double>(menu.size() - 1);
    return std::move(*this);
  }
};

struct PatchPorts {
  QList<Port> inputs;
  QList<Port> outputs;
};

/// What a node of a file says about itself, for making its ports and its evaluator.
struct NodeDescription {
  QString className;
  QString identifier;
  foundation::PropertyDictionary state;
  QString baseFolder;  ///< relative paths start here; empty when the file has no place
};

/// A patch class as the runtime knows it: one registration describes it and makes its evaluators.
struct PatchClass {
  enum class Kind : quint8 { Processor, Consumer, Provider, Macro };
  enum class TimeMode : quint8 {
    None,      ///< executes when an input changed
    TimeBase,  ///< also when its time changed
    Idle       ///< in every frame in which it is asked
  };
  /// What a patch inside an iterator remembers.
  enum class Memory : quint8 { PerIteration, Shared };

  QString className = {};
  QString identifier = {};  ///< empty: every identifier of the class
  QString title = {};       ///< the name in the editor, e.g. "Rendering Destination Dimensions"
  Kind kind = Kind::Processor;
  TimeMode timeMode = TimeMode::None;
  Memory memory = Memory::PerIteration;
  PatchPorts ports = {};        ///< built-in ports, in order
  QString dynamicPorts = {};    ///< for the documentation: which ports the state adds
  QString status = {};          ///< for the documentation: what is weaker than the original
  bool alwaysConsumer = false;  ///< a macro that draws whatever it holds
  bool drawsOffscreen = false;  ///< a macro whose content has a destination of its own
  bool repeatsContent = false;  ///< a macro that runs its content several times in a frame
  /// A class whose nodes draw or not, as their state says; none: as the kind says.
  std::function<bool(const NodeDescription&)> drawsWhen = {};
  /// Adds the ports that the state creates, after the built-in ones.
  std::function<void(const NodeDescription&, PatchPorts&)> addPorts = {};
  std::function<std::unique_ptr<PatchEvaluator>(const NodeDescription&)> make = {};

  /// Its outputs may change without a change of its inputs.
  [[nodiscard]] bool isVolatile() const {
    return timeMode != TimeMode::None || kind == Kind::Provider;
  }
};

/// Makes evaluators of a class that needs nothing but its ports.
template <typename Evaluator>
std::unique_ptr<PatchEvaluator> makeEvaluator(const NodeDescription&) {
  return std::make_unique<Evaluator>();
}
/// Makes evaluators of a class whose constructor reads the node.
template <typename Evaluator>
std::unique_ptr<PatchEvaluator> makeFromNode(const NodeDescription& node) {
  return std::make_unique<Evaluator>(node);
}

}  // namespace runtime
