#pragma once

#include "cli/edit/Assignment.h"
#include "cli/edit/AttributeText.h"
#include "model/Composition.h"

namespace cli {

/// Sets what concerns a whole document from assignments.
class DocumentSettings {
 public:
  using Done = tl::expected<void, LoadFailure>;

  /// Relative names of files begin at the folder.
  DocumentSettings(model::Composition& composition, const QString& folder)
      : m_composition(composition), m_text(folder) {}

  [[nodiscard]] Done apply(const Assignment& assignment);
  [[nodiscard]] static QString help();
  /// The format of the name; fails with the names of all.
  [[nodiscard]] static tl::expected<model::VideoResolution, LoadFailure> mode(const QString& name);
  [[nodiscard]] static tl::expected<double, LoadFailure> duration(
      const QString& text, const foundation::TimecodeRate& rate);

 private:
  [[nodiscard]] Done setMode(const QString& value);
  [[nodiscard]] Done setDuration(const QString& value);
  [[nodiscard]] Done setBackground(const QString& value);
  [[nodiscard]] Done setMovie(const QString& value);
  [[nodiscard]] Done setPoster(const QString& value);
  [[nodiscard]] Done setSafeZones(const QString& value);
  [[nodiscard]] Done setGuides(const QString& value);

  model::Composition& m_composition;
  AttributeText m_text;
};

}  // namespace cli
