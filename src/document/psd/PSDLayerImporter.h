#pragma once

#include <QSizeF>
#include <QStringList>
#include <vector>

#include "document/psd/PSDLayer.h"
#include "foundation/Result.h"

class QPainter;

namespace document {

/// The layers of one layered image file (PSD). Owns them.
///
/// Origins are in pixels of the document. With flipped coordinates y grows downwards from the upper
/// left corner and an origin is the upper left corner of its layer; otherwise y grows upwards from
/// the lower left corner and an origin is the lower left corner of its layer.
class PSDLayerImporter {
 public:
  /// Fails when the path leads to no file, to a folder, or to a file that is empty or cannot be
  /// read. Any other file gives an importer; what could not be imported is in its warnings.
  [[nodiscard]] static foundation::Result<std::unique_ptr<PSDLayerImporter>> layerImporterWithPath(
      const QString& path, bool flippedCoordinates);
  /// Fails for empty data.
  [[nodiscard]] static foundation::Result<std::unique_ptr<PSDLayerImporter>> layerImporterWithData(
      const QByteArray& data, bool flippedCoordinates);
  PSDLayerImporter(const PSDLayerImporter&) = delete;
  PSDLayerImporter& operator=(const PSDLayerImporter&) = delete;

  /// Topmost first, as lists of layers show them; groups are resolved.
  [[nodiscard]] const std::vector<std::unique_ptr<PSDLayer>>& layers() const { return m_layers; }
  [[nodiscard]] int layerCount() const { return static_cast<int>(m_layers.size()); }
  /// True when no layer is hidden.
  [[nodiscard]] bool allLayersVisible() const;
  /// Empty for data.
  [[nodiscard]] const QString& path() const { return m_path; }
  /// The path's last component.
  [[nodiscard]] QString filename() const;
  /// The canvas of the document, pixels.
  [[nodiscard]] QSizeF PSDImageSize() const { return m_size; }
  [[nodiscard]] bool flippedCoordinates() const { return m_flippedCoordinates; }
  /// What was left out and why, in sentences for the person who imports.
  [[nodiscard]] const QStringList& warnings() const { return m_warnings; }
  [[nodiscard]] QString description() const;

  /// Takes over the layers and the size of a file's content. Data that is no layered image gives no
  /// layers and a warning.
  void loadPSDFromData(const QByteArray& data);

  /// All visible layers together, as large as the document; null without a document.
  [[nodiscard]] QImage combinedImageOfVisibleLayers() const;
  /// Draws the same, scaled so that the whole document fills the bounds.
  void drawVisibleLayers(QPainter& painter, const QRectF& bounds) const;

 private:
  PSDLayerImporter(QString path, bool flippedCoordinates)
      : m_path(std::move(path)), m_flippedCoordinates(flippedCoordinates) {}
  /// Where a layer lies, y down.
  [[nodiscard]] QRectF frameOfLayer(const PSDLayer& layer) const;

  std::vector<std::unique_ptr<PSDLayer>> m_layers;
  QString m_path;
  QSizeF m_size = QSizeF(0, 0);
  bool m_flippedCoordinates;
  QStringList m_warnings;
};

}  // namespace document
