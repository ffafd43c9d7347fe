#pragma once

#include <QListWidget>

namespace document {
class PSDLayerImporter;
}

namespace app {

/// The layers of an imported file, each with a tick, a small picture, its name and its size.
class PSDLayerList : public QListWidget {
  Q_OBJECT

 public:
  /// Ticks show and hide the layers of the importer, which must outlive the list.
  explicit PSDLayerList(document::PSDLayerImporter& importer, QWidget* parent = nullptr);

  [[nodiscard]] int tickedCount() const;
  void tickAll(bool ticked);

 Q_SIGNALS:
  void ticksChanged();

 private:
  document::PSDLayerImporter& m_importer;
};

}  // namespace app
