#pragma once

#include <QHash>
#include <QJSEngine>

namespace runtime::script {

/// The interpreter that all scripts of one running composition share. Each script has globals, a
/// random generator and a `this` of its own; the clock is the one that it is given. Scripts reach
/// nothing outside: no files, no network. Needs an application object. Not thread-safe.
class ScriptEngine {
 public:
  ScriptEngine();

  /// A script that was started: its main function and what it has for `this`.
  struct Instance {
    QJSValue main;
    QJSValue self;
  };
  /// Runs the top level of a program (see ScriptSource). On failure main is the error.
  [[nodiscard]] Instance start(const QString& program, quint32 seed);
  /// Calls the main function; errors and whatever else is thrown come back as an error.
  [[nodiscard]] QJSValue call(const Instance& instance, const QJSValueList& arguments);

  /// The time that scripts read, in milliseconds since 1970.
  void setClock(qint64 milliseconds);
  [[nodiscard]] QJSEngine& engine() { return m_engine; }
  /// "line 3: ReferenceError: x is not defined".
  [[nodiscard]] static QString errorText(const QJSValue& error);

 private:
  [[nodiscard]] QJSValue run(const QJSValue& function, const QJSValue& self,
                             const QJSValueList& arguments);

  QJSEngine m_engine;
  QJSValue m_tools;
  QHash<QString, QJSValue> m_programs;
  qint64 m_clock = 0;
};

}  // namespace runtime::script
