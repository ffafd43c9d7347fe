#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "foundation/PropertyValue.h"
#include "store/ManagedObject.h"

namespace store {

/// An attribute of an object as a store file has it.
struct StoredValue {
  QString key;
  foundation::PropertyValue value;  ///< null when it could not be read
  bool isReadable = true;
  /// Nothing stands in its element that this program does not know.
  bool isWhole = true;
  QByteArray element = {};  ///< as it stands in the file, unless it is readable and whole
  size_t line = 0;
};

struct StoredRelation {
  QString key;
  ObjectId to = 0;
  QByteArray element = {};  ///< as for values
  size_t line = 0;
};

/// An object as a store file has it: what is known of it and what is not.
struct StoredObject {
  ObjectId id = 0;
  QString entity;
  std::vector<StoredValue> values = {};  ///< by ascending key once the whole file was read
  std::vector<StoredRelation> relations = {};
  QByteArray attributes = {};       ///< further XML attributes of its element, as they stand there
  QList<QByteArray> elements = {};  ///< elements in it that are neither, as they stand there
  size_t line = 0;

  /// None when there is no such attribute.
  [[nodiscard]] StoredValue* value(const QString& key);
};

/// Brings all objects of a store from one version to the next: renames, removes, computes. What
/// only was added needs no step, it gets its default.
using MigrationStep = std::function<void(std::vector<StoredObject>& objects)>;
/// The first step leads from version 1 to version 2, and so on: there is one version more than
/// steps.
using MigrationSteps = std::vector<MigrationStep>;

}  // namespace store
