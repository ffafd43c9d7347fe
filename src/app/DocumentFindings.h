#pragma once

#include <QObject>
#include <QTimer>

#include "model/CompositionFindings.h"
#include "store/ObjectContext.h"

namespace app {

/// What the findings of a graphic are now, looked for when its changes have come to rest.
class DocumentFindings : public QObject {
  Q_OBJECT

 public:
  /// What is the same in several places.
  struct Group {
    model::CompositionFinding finding;  ///< the first of them
    QStringList objects;
  };

  explicit DocumentFindings(QObject* parent = nullptr);
  /// None: nothing is looked at any more.
  void setComposition(model::Composition* composition);
  [[nodiscard]] const QList<Group>& groups() const { return m_groups; }
  /// At once, for instance after a file came back.
  void refresh();

 Q_SIGNALS:
  void changed();

 private:
  model::Composition* m_composition = nullptr;
  QList<Group> m_groups;
  QTimer m_rest;
  store::Subscription m_changes;
};

}  // namespace app
