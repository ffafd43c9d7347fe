#pragma once

#include "foundation/Result.h"
#include "store/EntityFactories.h"
#include "store/ObjectContext.h"
#include "store/StoredObject.h"
#include "store/xml/KeptParts.h"

namespace store {

/// One document's store file "data.xml": readable, the same for the same contents, and made so that
/// a small change of the document is a small change of the file. It has a version; older files are
/// brought to the current one. What a file holds that this program does not know is remembered, by
/// the numbers of the objects, and written back. docs/file-formats.md describes the format.
class XmlStore {
 public:
  /// The steps lead to the current version, which is their number plus one.
  explicit XmlStore(EntityFactories factories, MigrationSteps steps = {});

  /// Takes the objects of the file into the empty context (nothing is recorded). Errors name the
  /// path, the line and the reason; then the context and what was remembered stay as they were.
  [[nodiscard]] foundation::Result<void> read(const QByteArray& xml, const QString& path,
                                              ObjectContext& context);
  /// The whole file for what the context holds, unknown things included. Same contents, same bytes.
  [[nodiscard]] QByteArray write(const ObjectContext& context) const;
  /// What the last read() noticed: another version, values that could not be read, things unknown.
  /// Plain sentences, not too many of them.
  [[nodiscard]] const QStringList& warnings() const { return m_warnings; }

 private:
  [[nodiscard]] int currentVersion() const { return static_cast<int>(m_steps.size()) + 1; }

  EntityFactories m_factories;
  MigrationSteps m_steps;
  xml::KeptFromFile m_kept;
  QStringList m_warnings;
};

}  // namespace store
