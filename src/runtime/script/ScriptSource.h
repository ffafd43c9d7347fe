#pragma once

#include <QList>
#include <QString>

#include "runtime/Value.h"

namespace runtime::script {

class ScriptTokens;

/// An input or output that a script declares.
struct ScriptParameter {
  QString key;   ///< of the port; of an array the part before "_0", "_1" …
  QString name;  ///< in the script
  PortType type = PortType::Virtual;
  int count = 0;  ///< ports of an array; 0: a single one

  [[nodiscard]] int portCount() const { return count > 0 ? count : 1; }
  [[nodiscard]] QString portKey(int index) const {
    return count > 0 ? QStringLiteral("%1_%2").arg(key).arg(index) : key;
  }
};

/// A script of a composition: its ports, and the plain JavaScript that it stands for. There are two
/// dialects. The newer declares its ports in the head of its main function,
///   function (__number sum, __structure list) main (__number a, __string b[2]) { … }
/// which returns an object with the outputs. The older is run as a whole, reads the array `inputs`
/// and fills the array `outputs`.
class ScriptSource {
 public:
  /// Without a head for main, the script is of the older dialect with the given numbers of ports.
  ScriptSource(const QString& script, int inputCount, int outputCount);

  [[nodiscard]] const QList<ScriptParameter>& inputs() const { return m_inputs; }
  [[nodiscard]] const QList<ScriptParameter>& outputs() const { return m_outputs; }
  /// An expression: a function of (Math, _testMode) that returns a function which runs the script
  /// once and returns its main function. Lines count as in the script.
  [[nodiscard]] const QString& program() const { return m_program; }

  static constexpr int mostPorts = 1024;  ///< of one parameter list

 private:
  bool readHead(const QString& script, const ScriptTokens& tokens);
  void readPositional(const QString& script, int inputCount, int outputCount);

  QList<ScriptParameter> m_inputs;
  QList<ScriptParameter> m_outputs;
  QString m_program;
};

}  // namespace runtime::script
