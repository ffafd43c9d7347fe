#pragma once

#include "runtime/CompositionRenderer.h"

namespace playout {

/// What an input takes from outside: the one statement that both the reading of values and the
/// JSON Schema follow, so that they cannot disagree.
class AcceptedValues {
 public:
  explicit AcceptedValues(const runtime::PortAttributes& port);

  /// Inclusive limits of a number or an index; nothing: none. Of an index with a menu they are the
  /// items that can be chosen, so there is at least one.
  [[nodiscard]] std::optional<double> lowest() const { return m_lowest; }
  [[nodiscard]] std::optional<double> highest() const { return m_highest; }
  /// Titles of the items that can be chosen, in order; item 0 first.
  [[nodiscard]] QStringList titles() const;
  [[nodiscard]] bool isWithinLimits(double number) const;
  /// " from 0 to 1", " from 0", " up to 1", or nothing.
  [[nodiscard]] QString limitsText() const;

  /// Meshes and interactions come from patches only.
  [[nodiscard]] static bool canBeGiven(runtime::PortType type);
  /// "#RRGGBB" or "#RRGGBBAA", as a whole.
  [[nodiscard]] static QString colorPattern();

 private:
  const runtime::PortAttributes& m_port;
  std::optional<double> m_lowest;
  std::optional<double> m_highest;
};

}  // namespace playout
