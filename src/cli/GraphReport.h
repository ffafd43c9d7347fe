#pragma once

#include <QString>

#include "quartz/QuartzComposition.h"

namespace cli {

/// The graph of a composition file as text, for those who write players: every node with its class,
/// what its ports are linked to or hold, what is published, and its own settings. The lowest layer
/// comes first, as in the file; what a node holds is indented below it.
class GraphReport {
 public:
  explicit GraphReport(const quartz::QuartzComposition& composition) : m_composition(composition) {}
  [[nodiscard]] QString text() const;

 private:
  const quartz::QuartzComposition& m_composition;
};

}  // namespace cli
