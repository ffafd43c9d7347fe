#pragma once

#include <QWidget>
#include <vector>

#include "document/psd/PSDLayerImporter.h"

namespace app {

/// Shows the visible layers of an imported file together, and follows when one is shown or hidden.
class PSDView : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;

  /// Not owned; none shows nothing.
  void setImporter(document::PSDLayerImporter* importer);
  [[nodiscard]] QSize sizeHint() const override { return {392, 220}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  document::PSDLayerImporter* m_importer = nullptr;
  std::vector<store::Subscription> m_visibility;
};

}  // namespace app
