#include "runtime/patches/TextFormat.h"

namespace runtime::patches {

namespace {
constexpr qsizetype mostPlaces = 256;
}

TextFormat::TextFormat(const QString& format) : m_literals{QString()} {
  for (qsizetype i = 0; i < format.size(); ++i) {
    const bool percent = format[i] == QLatin1Char('%') && i + 1 < format.size();
    if (percent && format[i + 1] == QLatin1Char('@') && m_literals.size() <= mostPlaces) {
      m_literals.append(QString());
      ++i;
      continue;
    }
    m_literals.last().append(format[i]);
    if (percent && format[i + 1] == QLatin1Char('%')) ++i;
  }
}

QString TextFormat::print(const QStringList& arguments) const {
  QString text = m_literals.first();
  for (qsizetype i = 1; i < m_literals.size() && text.size() < longestText; ++i)
    text += arguments.value(i - 1) + m_literals[i];
  text.truncate(longestText);
  return text;
}

QStringList TextFormat::scan(const QString& text) const {
  if (!text.startsWith(m_literals.first())) return {};
  QStringList found;
  qsizetype from = m_literals.first().size();
  for (qsizetype i = 1; i < m_literals.size(); ++i) {
    const bool last = i + 1 == m_literals.size();
    // Two places in a row: the first gets nothing. The last literal must end the text.
    qsizetype to = last ? text.size() - m_literals[i].size() : text.indexOf(m_literals[i], from);
    if (to < from || (last && !text.endsWith(m_literals[i]))) return {};
    found.append(text.mid(from, to - from));
    from = to + m_literals[i].size();
  }
  return found;
}

}  // namespace runtime::patches
