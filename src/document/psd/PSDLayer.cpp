#include "document/psd/PSDLayer.h"

namespace document {

PSDLayer::PSDLayer(QImage image, QString name, QPointF origin, double opacity, bool isVisible)
    : m_image(std::move(image)),
      m_name(std::move(name)),
      m_origin(origin),
      m_opacity(opacity),
      m_visible(isVisible) {}

std::unique_ptr<PSDLayer> PSDLayer::layerWithImage(QImage image, QString name, QPointF origin,
                                                   double opacity, bool isVisible) {
  return std::make_unique<PSDLayer>(std::move(image), std::move(name), origin, opacity, isVisible);
}

void PSDLayer::setVisible(bool visible) {
  if (m_visible == visible) return;
  m_visible = visible;
  m_observers.call(*this);
}

store::Subscription PSDLayer::observeVisible(std::function<void(const PSDLayer&)> callback) {
  return m_observers.add(std::move(callback));
}

QString PSDLayer::description() const {
  return QStringLiteral(
             "PSDLayer name: %1, image: %2 x %3, origin: (%4, %5), opacity: %6, "
             "visible: %7")
      .arg(m_name, QString::number(m_image.width()), QString::number(m_image.height()),
           QString::number(m_origin.x()), QString::number(m_origin.y()), QString::number(m_opacity),
           m_visible ? QStringLiteral("YES") : QStringLiteral("NO"));
}

}  // namespace document
