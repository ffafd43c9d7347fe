#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace runtime::script {

/// A piece of JavaScript source. Comments and white space make no tokens.
struct ScriptToken {
  enum class Kind : quint8 { Name, Sign, Literal };
  Kind kind = Kind::Sign;
  qsizetype start = 0;
  qsizetype length = 0;
  [[nodiscard]] qsizetype end() const { return start + length; }
};

/// Splits a script into tokens, just well enough to find its names; never fails.
class ScriptTokens {
 public:
  explicit ScriptTokens(const QString& script);

  [[nodiscard]] qsizetype size() const { return m_tokens.size(); }
  [[nodiscard]] const ScriptToken& at(qsizetype index) const { return m_tokens[index]; }
  [[nodiscard]] QStringView text(qsizetype index) const;
  [[nodiscard]] bool is(qsizetype index, QStringView text) const {
    return index >= 0 && index < size() && this->text(index) == text;
  }
  /// The index of the bracket that closes the one at the index; −1 when there is none.
  [[nodiscard]] qsizetype closing(qsizetype open) const;
  /// Names that the script assigns to, wherever: what it does not declare becomes a global.
  [[nodiscard]] QStringList assignedNames() const;

 private:
  [[nodiscard]] qsizetype skipped(qsizetype at) const;
  [[nodiscard]] qsizetype quotedEnd(qsizetype at) const;
  [[nodiscard]] qsizetype patternEnd(qsizetype at) const;
  [[nodiscard]] qsizetype signEnd(qsizetype at) const;
  [[nodiscard]] bool patternMayStart() const;
  [[nodiscard]] bool isAssigned(qsizetype index) const;

  QString m_script;
  QList<ScriptToken> m_tokens;
};

}  // namespace runtime::script
