#include "runtime/patches/TextTools.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace runtime::patches {

QString capitalized(const QString& text) {
  QString result = text.toLower();
  bool atStart = true;
  for (QChar& c : result) {
    if (atStart) c = c.toUpper();
    atStart = c.isSpace();
  }
  return result;
}

QString truncatedCharacters(const QString& text, qsizetype most, TruncateAt place,
                            const QString& token) {
  if (text.size() <= most) return text;
  switch (place) {
    case TruncateAt::Start:
      return token + text.right(most);
    case TruncateAt::Middle:
      return text.left(most - most / 2) + token + text.right(most / 2);
    case TruncateAt::End:
      break;
  }
  return text.left(most) + token;
}

QString truncatedWords(const QString& text, qsizetype most, TruncateAt place,
                       const QString& token) {
  static const QRegularExpression space(QStringLiteral("\\s+"));
  const QStringList words = text.split(space, Qt::SkipEmptyParts);
  if (words.size() <= most) return text;
  const QString blank = QStringLiteral(" ");
  const auto joined = [&](qsizetype from, qsizetype count) {
    return words.mid(from, count).join(blank);
  };
  switch (place) {
    case TruncateAt::Start:
      return token + joined(words.size() - most, most);
    case TruncateAt::Middle:
      return joined(0, most - most / 2) + token + joined(words.size() - most / 2, most / 2);
    case TruncateAt::End:
      break;
  }
  return joined(0, most) + token;
}

QString timecodeText(double seconds) {
  constexpr int rate = 30;
  if (!std::isfinite(seconds)) seconds = 0;
  const double limited = std::min(std::abs(seconds), 359999.0 * 10);
  // A hair above: 0.1 s are three frames, not 2.999….
  const auto frames = static_cast<qint64>(std::floor(limited * rate + 1e-6));
  const auto two = [](qint64 n) { return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')); };
  const qint64 whole = frames / rate;
  const QString text =
      QStringLiteral("%1:%2:%3:%4")
          .arg(two(whole / 3600), two(whole / 60 % 60), two(whole % 60), two(frames % rate));
  return seconds < 0 && frames > 0 ? QLatin1Char('-') + text : text;
}

}  // namespace runtime::patches
