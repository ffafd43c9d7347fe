#pragma once

#include "playout/InputValues.h"

namespace render {

/// Values that an operator sends while a graphic plays: each is set once, at its time.
class ValueSchedule {
 public:
  struct Entry {
    double time = 0;  ///< seconds
    playout::InputValue input;
  };
  ValueSchedule() = default;
  /// Entries of equal times are set in the order given.
  explicit ValueSchedule(std::vector<Entry> entries);

  /// Sets what is due by the time (seconds); false when nothing was.
  bool apply(double time, runtime::CompositionRenderer& renderer);
  [[nodiscard]] bool isDone() const { return m_next == m_entries.size(); }
  /// A sentence for each value whose time did not come.
  [[nodiscard]] QStringList unused() const;

 private:
  std::vector<Entry> m_entries;  ///< by time
  size_t m_next = 0;
};

}  // namespace render
