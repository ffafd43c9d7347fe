#pragma once

#include <QList>
#include <functional>

#include "model/AttributeValue.h"

namespace model {
class Attribute;
class QuartzComponent;
}  // namespace model

namespace inspector {

/// What a control edits: one value that each of several objects has. A value that does not fit an
/// object leaves it as it is.
struct Binding {
  QString stepName;
  qsizetype count = 0;
  std::function<model::AttributeValue(qsizetype index)> get = {};
  std::function<void(qsizetype index, const model::AttributeValue& value)> set = {};

  /// The first one's; empty when there is none.
  [[nodiscard]] model::AttributeValue value() const;
  [[nodiscard]] bool isMixed() const;
  void setAll(const model::AttributeValue& value) const;

  /// The current values of attributes: written as a key frame at the current time where they are
  /// animated.
  [[nodiscard]] static Binding toAttributes(const QList<model::Attribute*>& attributes,
                                            const QString& stepName);
  /// A number of components by a key of theirs, with what its setter sees to.
  [[nodiscard]] static Binding toNumbers(const QList<model::QuartzComponent*>& components,
                                         const QString& key, const QString& stepName);
};

}  // namespace inspector
