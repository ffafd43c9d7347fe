#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "store/ObjectContext.h"

namespace model {
class Attribute;
class Composition;
class QuartzComponent;
}  // namespace model

namespace inspector {

using AttributesByKey = QHash<QString, QList<model::Attribute*>>;

/// What all panes of one inspector share: the composition, its selected components, and the gesture
/// that is going on. Announcements are gathered: many changes within one event are one signal.
class InspectorContext : public QObject {
  Q_OBJECT

 public:
  explicit InspectorContext(QObject* parent = nullptr);
  ~InspectorContext() override;

  /// None shows nothing. Must be told before the composition is gone.
  void setComposition(model::Composition* composition);
  [[nodiscard]] model::Composition* composition() const { return m_composition; }
  /// As of the last selectionChanged().
  [[nodiscard]] const QList<model::QuartzComponent*>& components() const { return m_components; }

  /// Their attributes by key, one of each component.
  [[nodiscard]] const AttributesByKey& attributesByKey();
  /// Those of these keys; the first component's come first.
  [[nodiscard]] QList<model::Attribute*> attributesForKeys(const QStringList& keys);

  /// Opens the undo step of one gesture; ends the one before.
  void begin(const QString& stepName);
  void commit() { end(true); }
  void cancel() { end(false); }
  [[nodiscard]] bool isEditing() const { return m_step != nullptr; }
  /// One change that is a step of its own.
  void change(const QString& stepName, const std::function<void()>& change);

  /// What is shown may be out of date.
  void setNeedsRefresh();
  /// Brings everything up to date now.
  void updateNow();
  /// Refreshes whenever the key of the object changes.
  [[nodiscard]] store::Subscription watch(store::ManagedObject& object, const QString& key);

 Q_SIGNALS:
  /// Bound objects may be gone: let go of them.
  void objectsLeft();
  /// Other components, or other attributes of theirs.
  void selectionChanged();
  void valuesChanged();

 private:
  void end(bool keep);
  void setNeedsRebuild();
  void schedule();
  void objectsChanged(const store::ChangeSet& changes);

  model::Composition* m_composition = nullptr;
  QList<model::QuartzComponent*> m_components;
  std::optional<AttributesByKey> m_attributes;
  std::unique_ptr<store::UndoStep> m_step;
  bool m_selectionIsDue = false;
  bool m_rebuildIsDue = false;
  bool m_isScheduled = false;
  std::vector<store::Subscription> m_subscriptions;
};

}  // namespace inspector
