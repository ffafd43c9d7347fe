#pragma once

#include <QImage>
#include <QPointF>
#include <functional>
#include <memory>

#include "store/Observation.h"

namespace document {

/// One layer of an imported file: a picture with its place. Only its visibility can be changed.
class PSDLayer {
 public:
  /// The origin is in the document's coordinate space, pixels; which corner of the image lies there
  /// is for the importer to say. The opacity is 0…1.
  PSDLayer(QImage image, QString name, QPointF origin, double opacity, bool isVisible);
  [[nodiscard]] static std::unique_ptr<PSDLayer> layerWithImage(QImage image, QString name,
                                                                QPointF origin, double opacity,
                                                                bool isVisible);
  PSDLayer(const PSDLayer&) = delete;
  PSDLayer& operator=(const PSDLayer&) = delete;

  [[nodiscard]] const QImage& image() const { return m_image; }
  [[nodiscard]] const QString& name() const { return m_name; }
  [[nodiscard]] QPointF origin() const { return m_origin; }
  [[nodiscard]] double opacity() const { return m_opacity; }
  /// Whether the layer is shown and imported.
  [[nodiscard]] bool visible() const { return m_visible; }
  void setVisible(bool visible);
  /// Calls back whenever `visible` has changed, until the subscription ends.
  [[nodiscard]] store::Subscription observeVisible(
      std::function<void(const PSDLayer& layer)> callback);

  /// All fields in one line, for logs.
  [[nodiscard]] QString description() const;

 private:
  QImage m_image;
  QString m_name;
  QPointF m_origin;
  double m_opacity;
  bool m_visible;
  store::ObserverList<PSDLayer> m_observers;
};

}  // namespace document
