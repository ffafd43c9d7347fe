#pragma once

#include "cli/CompositionSummary.h"

namespace cli {

/// The facts about a composition file as text for people and as JSON for programs.
class InfoReport {
 public:
  InfoReport(QString file, CompositionSummary summary,
             const runtime::CompositionRenderer& renderer);
  [[nodiscard]] QString text() const;
  [[nodiscard]] QString json() const;

 private:
  QString m_file;
  CompositionSummary m_summary;
  std::vector<runtime::PortAttributes> m_inputs;
  std::vector<runtime::PortAttributes> m_outputs;
  QList<runtime::PatchUse> m_patches;
  QStringList m_findings;
};

}  // namespace cli
