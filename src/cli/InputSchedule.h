#pragma once

#include "cli/LoadFailure.h"
#include "cli/RenderOptions.h"
#include "playout/InputValues.h"

namespace cli {

/// Values that an operator sends while a graphic plays: each is set once, at its time.
class InputSchedule {
 public:
  InputSchedule() = default;
  /// Reads all values at once, so that a wrong one is told before anything is played.
  [[nodiscard]] static tl::expected<InputSchedule, LoadFailure> read(
      const std::vector<RenderOptions::Update>& updates,
      const runtime::CompositionRenderer& renderer);

  /// Sets what is due by the time (seconds); false when nothing was.
  bool apply(double time, runtime::CompositionRenderer& renderer);
  [[nodiscard]] bool isDone() const { return m_next == m_entries.size(); }
  /// A sentence for each value whose time did not come.
  [[nodiscard]] QStringList unused() const;

 private:
  struct Entry {
    double time = 0;
    playout::InputValue input;
  };
  std::vector<Entry> m_entries;  ///< by time; equal times in the order given
  size_t m_next = 0;
};

}  // namespace cli
