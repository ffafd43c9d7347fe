#pragma once

#include <QTimer>

#include "inspector/panes/InspectorPane.h"

class QLabel;
class QListWidget;

namespace inspector {

/// The keys that the export publishes, named as it will name them; keys that the file on the disk
/// has and the next export will not are told, because systems that fill them in would miss them.
/// Looking takes an export, so it waits until changes have come to rest.
class PublishedKeysPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit PublishedKeysPane(InspectorContext& context);
  void takeSelection() override { m_timer.start(0); }
  void refresh() override;
  void letGo() override;
  /// Looks now.
  void update();

 private:
  [[nodiscard]] QStringList keysOnDisk() const;
  void show(const QStringList& keys, const QStringList& lost);

  QTimer m_timer;
  QLabel* m_message;
  QListWidget* m_list;
};

}  // namespace inspector
