#include "playout/AcceptedValues.h"

#include <cmath>

namespace playout {

using runtime::PortType;

namespace {

std::optional<double> finite(std::optional<double> limit) {
  return limit && std::isfinite(*limit) ? limit : std::nullopt;
}

}  // namespace

AcceptedValues::AcceptedValues(const runtime::PortAttributes& port) : m_port(port) {
  m_highest = finite(port.maximum);
  if (port.type == PortType::Index) {
    m_lowest = 0;  // like the runtime, which knows no other lowest index
    if (m_highest) m_highest = std::max(std::floor(*m_highest), 0.0);
    if (!port.menu.isEmpty()) {
      const double last = static_cast<double>(port.menu.size() - 1);
      m_highest = std::min(m_highest.value_or(last), last);
    }
  } else {
    m_lowest = finite(port.minimum);
    // Limits that leave nothing are a mistake of the file, not of who gives the value.
    if (m_lowest && m_highest && *m_lowest > *m_highest) m_lowest = m_highest = std::nullopt;
  }
}

QStringList AcceptedValues::titles() const {
  if (m_port.menu.isEmpty()) return {};
  return m_port.menu.mid(0, static_cast<qsizetype>(*m_highest) + 1);
}

bool AcceptedValues::isWithinLimits(double number) const {
  return !(m_lowest && number < *m_lowest) && !(m_highest && number > *m_highest);
}

QString AcceptedValues::limitsText() const {
  QString text;
  if (m_lowest) text += QStringLiteral(" from ") + runtime::numberText(*m_lowest);
  if (m_highest)
    text += (m_lowest ? QStringLiteral(" to ") : QStringLiteral(" up to ")) +
            runtime::numberText(*m_highest);
  return text;
}

bool AcceptedValues::canBeGiven(PortType type) {
  return type != PortType::Mesh && type != PortType::Interaction;
}

QString AcceptedValues::colorPattern() {
  return QStringLiteral("^#([0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})$");
}

}  // namespace playout
