#pragma once

#include "cli/DocumentLoader.h"

namespace cli {

/// The facts about a graphic's source as text for people and as JSON for programs: its format,
/// components with their attributes, key frames and stop frames.
class DocumentReport {
 public:
  /// The document must outlive the report.
  DocumentReport(QString file, const DocumentLoader& document);
  [[nodiscard]] QString text() const;
  [[nodiscard]] QString json() const;

 private:
  QString m_file;
  const model::Composition& m_composition;
  playout::ValueSets m_values;
  QStringList m_warnings;
};

}  // namespace cli
