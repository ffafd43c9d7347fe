#include "document/psd/PSDLayerImporter.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPainter>

#include "document/psd/PsdDocument.h"

namespace document {

namespace {

using foundation::failure;
using foundation::Result;

struct Translated {
  Q_DECLARE_TR_FUNCTIONS(PSDLayerImporter)
};

constexpr qint64 kLargestFile = qint64(2) << 30;

Result<QByteArray> readFile(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists()) return failure(Translated::tr("The file does not exist."), path);
  if (info.isDir()) return failure(Translated::tr("This is a folder, not a file."), path);
  if (!info.isFile()) return failure(Translated::tr("This is not a regular file."), path);
  if (info.size() > kLargestFile)
    return failure(Translated::tr("The file is too large to be imported."), path);
  QFile file(path);
  if (!file.open(QFile::ReadOnly))
    return failure(Translated::tr("The file cannot be opened."), path, file.errorString());
  return file.readAll();
}

}  // namespace

Result<std::unique_ptr<PSDLayerImporter>> PSDLayerImporter::layerImporterWithPath(
    const QString& path, bool flippedCoordinates) {
  const Result<QByteArray> data = readFile(path);
  if (!data) return tl::unexpected(data.error());
  auto importer = layerImporterWithData(*data, flippedCoordinates);
  if (!importer) return failure(importer.error().message, path);
  (*importer)->m_path = path;
  return importer;
}

Result<std::unique_ptr<PSDLayerImporter>> PSDLayerImporter::layerImporterWithData(
    const QByteArray& data, bool flippedCoordinates) {
  if (data.isEmpty()) return failure(Translated::tr("The file is empty."));
  std::unique_ptr<PSDLayerImporter> importer(new PSDLayerImporter({}, flippedCoordinates));
  importer->loadPSDFromData(data);
  return importer;
}

void PSDLayerImporter::loadPSDFromData(const QByteArray& data) {
  PsdDocument document = PsdDocument::read(data);
  m_size = document.size.isValid() ? QSizeF(document.size) : QSizeF(0, 0);
  m_warnings = document.warnings;
  m_layers.clear();
  for (PsdPicture& picture : document.layers) {
    QPointF origin = picture.topLeft;
    if (!m_flippedCoordinates)
      origin.setY(m_size.height() - picture.topLeft.y() - picture.image.height());
    m_layers.push_back(PSDLayer::layerWithImage(std::move(picture.image), std::move(picture.name),
                                                origin, picture.opacity, picture.visible));
  }
}

bool PSDLayerImporter::allLayersVisible() const {
  return std::all_of(m_layers.begin(), m_layers.end(),
                     [](const auto& layer) { return layer->visible(); });
}

QString PSDLayerImporter::filename() const {
  return QFileInfo(m_path).fileName();
}

QString PSDLayerImporter::description() const {
  QStringList layers;
  for (const auto& layer : m_layers) layers.append(layer->description());
  return QStringLiteral("PSDLayerImporter path: %1, layer count: %2, layers:\n%3")
      .arg(m_path, QString::number(layerCount()), layers.join(QLatin1Char('\n')));
}

QRectF PSDLayerImporter::frameOfLayer(const PSDLayer& layer) const {
  const QSizeF size = layer.image().size();
  QPointF topLeft = layer.origin();
  if (!m_flippedCoordinates) topLeft.setY(m_size.height() - topLeft.y() - size.height());
  return {topLeft, size};
}

QImage PSDLayerImporter::combinedImageOfVisibleLayers() const {
  if (m_size.isEmpty()) return {};
  QImage image(m_size.toSize(), QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return {};
  image.fill(Qt::transparent);
  QPainter painter(&image);
  drawVisibleLayers(painter, QRectF(QPointF(), m_size));
  return image;
}

void PSDLayerImporter::drawVisibleLayers(QPainter& painter, const QRectF& bounds) const {
  if (m_size.isEmpty() || bounds.isEmpty()) return;
  painter.save();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setClipRect(bounds, Qt::IntersectClip);
  painter.translate(bounds.topLeft());
  painter.scale(bounds.width() / m_size.width(), bounds.height() / m_size.height());
  // The first layer is the topmost.
  for (auto layer = m_layers.rbegin(); layer != m_layers.rend(); ++layer) {
    if (!(*layer)->visible()) continue;
    painter.setOpacity((*layer)->opacity());
    painter.drawImage(frameOfLayer(**layer), (*layer)->image());
  }
  painter.restore();
}

}  // namespace document
