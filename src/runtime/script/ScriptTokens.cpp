#include "runtime/script/ScriptTokens.h"

#include <QSet>

namespace runtime::script {

namespace {

bool isNameCharacter(QChar c) {
  return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$');
}

/// Longest first.
const char16_t* const signs[] = {u">>>=", u"===", u"!==", u">>>", u"<<=", u">>=", u"==",
                                 u"!=",   u"<=",  u">=",  u"=>",  u"++",  u"--",  u"+=",
                                 u"-=",   u"*=",  u"/=",  u"%=",  u"&=",  u"|=",  u"^=",
                                 u"&&",   u"||",  u"<<",  u">>"};

bool isAssignment(QStringView sign) {
  static const QSet<QString> assignments = {
      QStringLiteral("="),   QStringLiteral("+="),  QStringLiteral("-="), QStringLiteral("*="),
      QStringLiteral("/="),  QStringLiteral("%="),  QStringLiteral("&="), QStringLiteral("|="),
      QStringLiteral("^="),  QStringLiteral("++"),  QStringLiteral("--"), QStringLiteral("<<="),
      QStringLiteral(">>="), QStringLiteral(">>>=")};
  return assignments.contains(sign.toString());
}

}  // namespace

ScriptTokens::ScriptTokens(const QString& script) : m_script(script) {
  qsizetype at = skipped(0);
  while (at < m_script.size()) {
    const QChar c = m_script[at];
    ScriptToken token{ScriptToken::Kind::Literal, at, 1};
    qsizetype end = at + 1;
    if (isNameCharacter(c)) {
      while (end < m_script.size() && isNameCharacter(m_script[end])) ++end;
      if (!c.isDigit()) token.kind = ScriptToken::Kind::Name;
    } else if (c == QLatin1Char('"') || c == QLatin1Char('\'') || c == QLatin1Char('`')) {
      end = quotedEnd(at);
    } else if (c == QLatin1Char('/') && patternMayStart()) {
      end = patternEnd(at);
    } else {
      token.kind = ScriptToken::Kind::Sign;
      end = signEnd(at);
    }
    token.length = end - at;
    m_tokens.append(token);
    at = skipped(end);
  }
}

QStringView ScriptTokens::text(qsizetype index) const {
  return QStringView(m_script).mid(m_tokens[index].start, m_tokens[index].length);
}

/// The first place from `at` on that is neither white space nor comment.
qsizetype ScriptTokens::skipped(qsizetype at) const {
  while (at < m_script.size()) {
    const QStringView rest = QStringView(m_script).mid(at);
    if (rest[0].isSpace()) {
      ++at;
    } else if (rest.startsWith(QLatin1String("//"))) {
      while (at < m_script.size() && m_script[at] != QLatin1Char('\n')) ++at;
    } else if (rest.startsWith(QLatin1String("/*"))) {
      const qsizetype end = m_script.indexOf(QLatin1String("*/"), at + 2);
      at = end < 0 ? m_script.size() : end + 2;
    } else {
      break;
    }
  }
  return at;
}

qsizetype ScriptTokens::quotedEnd(qsizetype at) const {
  const QChar quote = m_script[at];
  for (++at; at < m_script.size() && m_script[at] != quote; ++at)
    if (m_script[at] == QLatin1Char('\\')) ++at;
  return std::min(at + 1, m_script.size());
}

qsizetype ScriptTokens::patternEnd(qsizetype at) const {
  bool inClass = false;
  for (++at; at < m_script.size() && m_script[at] != QLatin1Char('\n'); ++at) {
    const QChar c = m_script[at];
    if (c == QLatin1Char('\\')) ++at;
    if (c == QLatin1Char('[')) inClass = true;
    if (c == QLatin1Char(']')) inClass = false;
    if (c == QLatin1Char('/') && !inClass) return at + 1;
  }
  return std::min(at, m_script.size());
}

qsizetype ScriptTokens::signEnd(qsizetype at) const {
  for (const char16_t* sign : signs)
    if (QStringView(m_script).mid(at).startsWith(QStringView(sign)))
      return at + QStringView(sign).size();
  return at + 1;
}

/// After a value a slash divides; anywhere else it starts a regular expression.
bool ScriptTokens::patternMayStart() const {
  if (m_tokens.isEmpty()) return true;
  const QStringView last = text(m_tokens.size() - 1);
  if (m_tokens.last().kind == ScriptToken::Kind::Name) return last == QLatin1String("return");
  if (m_tokens.last().kind == ScriptToken::Kind::Literal) return false;
  return last != QLatin1String(")") && last != QLatin1String("]") && last != QLatin1String("}");
}

qsizetype ScriptTokens::closing(qsizetype open) const {
  int depth = 0;
  for (qsizetype i = open; i < size(); ++i) {
    if (m_tokens[i].kind != ScriptToken::Kind::Sign) continue;
    const QChar c = text(i)[0];
    if (QStringView(u"([{").contains(c)) ++depth;
    if (QStringView(u")]}").contains(c) && --depth == 0) return i;
  }
  return -1;
}

bool ScriptTokens::isAssigned(qsizetype i) const {
  if (m_tokens[i].kind != ScriptToken::Kind::Name || is(i - 1, u".")) return false;
  if (i + 1 < size() && isAssignment(text(i + 1))) return true;
  if (is(i - 1, u"++") || is(i - 1, u"--")) return true;
  return is(i + 1, u"in") && is(i - 1, u"(") && is(i - 2, u"for");
}

QStringList ScriptTokens::assignedNames() const {
  QStringList names;
  QSet<QStringView> seen;
  for (qsizetype i = 0; i < size(); ++i) {
    if (!isAssigned(i) || seen.contains(text(i))) continue;
    seen.insert(text(i));
    names.append(text(i).toString());
  }
  return names;
}

}  // namespace runtime::script
