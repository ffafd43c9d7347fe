#pragma once

namespace runtime::patches {

/// Notices a signal's change from false to true. Before the first look it counts as false, so that
/// a signal that is always true fires once.
class Edge {
 public:
  [[nodiscard]] bool rises(bool now) {
    const bool edge = now && !m_before;
    m_before = now;
    return edge;
  }

 private:
  bool m_before = false;
};

}  // namespace runtime::patches
