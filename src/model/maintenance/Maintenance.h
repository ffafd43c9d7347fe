#pragma once

#include "model/CommandReport.h"
#include "model/StandardComponents.h"

namespace model {

class Attribute;
class Composition;
class QuartzComponent;

/// A file to be copied into the document when it is next saved.
struct EmbeddedResource {
  QString source;  ///< absolute path
  QString dest;    ///< absolute path in the package
  friend bool operator==(const EmbeddedResource&, const EmbeddedResource&) = default;
};

/// Tidies a graphic so that its export works on another machine. Each command is one undo step.
class Maintenance {
 public:
  Maintenance(Composition& composition, StandardComponents standardComponents)
      : m_composition(composition), m_standardComponents(std::move(standardComponents)) {}

  /// Reloads components of upgradable files from those that come with the program. Returns their
  /// titles; what could not be loaded is added to the warnings.
  [[nodiscard]] QStringList upgradeComponents(QStringList& warnings);
  /// Makes the paths in file attributes relative to the exported composition. Returns all of them
  /// as they were, changed or not; nothing for a document that was never saved.
  [[nodiscard]] QStringList makePathsRelative();
  /// Leaves only the names of files in file attributes, and says what has to be copied. Relative
  /// paths start at the package; what lies in it already is left alone.
  [[nodiscard]] QList<EmbeddedResource> embedResources();

  /// What the user is told afterwards.
  [[nodiscard]] static CommandReport upgradeReport(const QStringList& titles);
  [[nodiscard]] static CommandReport relativePathsReport(const QStringList& paths);
  [[nodiscard]] static CommandReport embedReport(const QList<EmbeddedResource>& resources);
  /// Instead, for a document that was never saved.
  [[nodiscard]] static CommandReport saveFirstForRelativePaths();
  [[nodiscard]] static CommandReport saveFirstForEmbedding();

 private:
  struct FilePath {
    QuartzComponent* component;
    Attribute* attribute;
    QString path;
  };
  [[nodiscard]] QList<FilePath> filePaths() const;

  Composition& m_composition;
  StandardComponents m_standardComponents;
};

}  // namespace model
