#include "app/PSDView.h"

#include <QPainter>

#include "document/psd/PSDLayer.h"
#include "widgets/Chessboard.h"

namespace app {

void PSDView::setImporter(document::PSDLayerImporter* importer) {
  m_importer = importer;
  m_visibility.clear();
  if (importer)
    for (const auto& layer : importer->layers())
      m_visibility.push_back(
          layer->observeVisible([this](const document::PSDLayer&) { update(); }));
  update();
}

void PSDView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (!m_importer || m_importer->PSDImageSize().isEmpty()) return;
  QRectF bounds({0, 0}, m_importer->PSDImageSize().scaled(size(), Qt::KeepAspectRatio));
  bounds.moveCenter(QRectF(rect()).center());
  painter.fillRect(bounds, widgets::chessboardBrush(8));
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  m_importer->drawVisibleLayers(painter, bounds);
}

}  // namespace app
