#include "model/AttributeLabel.h"

namespace model {

namespace {

/// The text between the first opening character and the first closing one after it; null without.
QString between(const QString& text, QChar opening, QChar closing) {
  const qsizetype start = text.indexOf(opening);
  const qsizetype end = start < 0 ? -1 : text.indexOf(closing, start);
  return end < 0 ? QString() : text.mid(start + 1, end - start - 1);
}

/// The integer that the text begins with; 0 when it begins with none.
quint64 leadingInteger(const QString& text) {
  const QString trimmed = text.trimmed();
  qsizetype length = 0;
  while (length < trimmed.size() && trimmed[length].isDigit()) ++length;
  return trimmed.first(length).toULongLong();
}

}  // namespace

AttributeLabel AttributeLabel::parse(const QString& label) {
  AttributeLabel result{label, {}, noPosition};
  if (const QString number = between(label, u'[', u']'); !number.isNull())
    result.position = leadingInteger(number);
  if (const QString category = between(label, u'(', u')'); !category.isNull())
    result.category = category;
  qsizetype cut = std::max<qsizetype>(label.indexOf(u'['), 0);
  const qsizetype parenthesis = label.indexOf(u'(');
  if (parenthesis >= 0 && parenthesis < cut) cut = parenthesis;
  if (cut > 0) result.text = label.first(cut);
  return result;
}

}  // namespace model
