#include "widgets/OutlineParser.h"

#include <QLineF>
#include <QtMath>
#include <cmath>

namespace widgets {
namespace {

class OutlineParser {
 public:
  explicit OutlineParser(QStringView text) : m_text(text) {}

  std::optional<QPainterPath> parse() {
    QChar command;
    while (skipSpace()) {
      if (m_text.at(m_at).isLetter()) command = m_text.at(m_at++);
      if (!run(command.toLatin1())) return std::nullopt;
      // Further pairs after a move are lines.
      if (command == QLatin1Char('M')) command = QLatin1Char('L');
    }
    return m_path;
  }

 private:
  bool run(char command) {
    const bool smooth = command == 'S';
    if (!smooth) m_mirror = m_path.currentPosition();
    switch (command) {
      case 'M':
        return take(2) && (m_path.moveTo(point(0)), true);
      case 'L':
        return take(2) && (m_path.lineTo(point(0)), true);
      case 'H':
        return take(1) && (m_path.lineTo(m_n[0], m_path.currentPosition().y()), true);
      case 'V':
        return take(1) && (m_path.lineTo(m_path.currentPosition().x(), m_n[0]), true);
      case 'C':
        return take(6) && cubic(point(0), point(2), point(4));
      case 'S':
        return take(4) && cubic(m_mirror, point(0), point(2));
      case 'Q':
        return take(4) && (m_path.quadTo(point(0), point(2)), true);
      case 'A':
        return take(7) && arc();
      case 'Z':
        return m_path.closeSubpath(), true;
      case 'R':
        return take(5) && rectangle();
      case 'E':
        return take(4) && (m_path.addEllipse(point(0), m_n[2], m_n[3]), true);
      default:
        return false;
    }
  }

  bool cubic(QPointF first, QPointF second, QPointF end) {
    m_path.cubicTo(first, second, end);
    m_mirror = 2 * end - second;
    return true;
  }

  bool rectangle() {
    m_path.addRoundedRect(m_n[0], m_n[1], m_n[2], m_n[3], m_n[4], m_n[4]);
    return true;
  }

  // From the current point to the end: radius, (ry, rotation), large arc, sweep, end.
  bool arc() {
    const QPointF from = m_path.currentPosition();
    const QPointF to = point(5);
    const QLineF chord(from, to);
    if (chord.length() == 0) return true;
    const double radius = std::max(m_n[0], chord.length() / 2);
    const double height =
        std::sqrt(std::max(0.0, radius * radius - std::pow(chord.length() / 2, 2)));
    const bool large = m_n[3] != 0;
    const bool sweep = m_n[4] != 0;
    const QPointF normal(-chord.dy() / chord.length(), chord.dx() / chord.length());
    const QPointF centre = chord.center() + normal * (large == sweep ? -height : height);
    const double start = QLineF(centre, from).angle();
    double length = QLineF(centre, to).angle() - start;
    // Angles run counter-clockwise; a sweep runs clockwise on the screen.
    if (sweep && length > 0) length -= 360;
    if (!sweep && length < 0) length += 360;
    const QPointF r(radius, radius);
    m_path.arcTo(QRectF(centre - r, centre + r), start, length);
    return true;
  }

  bool take(int count) {
    for (int i = 0; i < count; ++i) {
      skipSpace();
      const qsizetype start = m_at;
      bool dot = false;
      if (m_at < m_text.size() && m_text.at(m_at) == QLatin1Char('-')) ++m_at;
      while (m_at < m_text.size() &&
             (m_text.at(m_at).isDigit() || (!dot && m_text.at(m_at) == QLatin1Char('.')))) {
        dot |= m_text.at(m_at) == QLatin1Char('.');
        ++m_at;
      }
      bool ok = false;
      m_n[i] = m_text.sliced(start, m_at - start).toDouble(&ok);
      if (!ok) return false;
    }
    return true;
  }

  bool skipSpace() {
    while (m_at < m_text.size() && m_text.at(m_at).isSpace()) ++m_at;
    return m_at < m_text.size();
  }

  [[nodiscard]] QPointF point(int index) const { return {m_n[index], m_n[index + 1]}; }

  QStringView m_text;
  qsizetype m_at = 0;
  double m_n[7] = {};
  QPointF m_mirror;
  QPainterPath m_path;
};

}  // namespace

std::optional<QPainterPath> parseOutline(QStringView text) {
  return OutlineParser(text).parse();
}

}  // namespace widgets
