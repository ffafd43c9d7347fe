#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QtEndian>
#include <optional>
#include <utility>
#include <vector>

namespace support {

/// A layer of a file that is made for a test.
struct PsdTestLayer {
  QString name = QStringLiteral("Layer");
  QPoint topLeft;
  QImage image;  ///< none: a rectangle without area
  quint8 opacity = 255;
  bool hidden = false;
  int divider = 0;  ///< 1, 2: top of a group; 3: its bottom
  QByteArray blendMode = "norm";
  bool clipped = false;
  bool unicodeName = true;
  std::vector<std::pair<QByteArray, QByteArray>> blocks = {};

  QImage mask = {};  ///< grayscale
  QPoint maskTopLeft = {};
  quint8 maskOutside = 0;
  bool maskDisabled = false;
};

/// Writes layered image files, in every way of storing that is read.
class PsdWriter {
 public:
  QSize size = QSize(8, 6);
  int depth = 8;
  bool gray = false;
  bool large = false;
  quint16 compression = 1;
  bool layersInBlock = false;  ///< behind the usual place, as for 16 bits
  QByteArray colorProfile;
  QImage flattened;
  std::vector<PsdTestLayer> layers;  ///< lowest first

  [[nodiscard]] QByteArray bytes() const {
    QByteArray file = "8BPS" + u16(large ? 2 : 1) + QByteArray(6, '\0') + u16(gray ? 1 : 3) +
                      u32(quint32(size.height())) + u32(quint32(size.width())) +
                      u16(quint16(depth)) + u16(gray ? 1 : 3);
    file += u32(0);
    const QByteArray resources = colorProfile.isEmpty() ? QByteArray() : profileResource();
    file += u32(quint32(resources.size())) + resources;
    const QByteArray info = layers.empty() ? QByteArray() : layerInfo();
    QByteArray section = length(layersInBlock ? 0 : info.size());
    if (!layersInBlock) section += info;
    section += u32(0);
    if (layersInBlock) section += "8BIMLr16" + length(info.size()) + info;
    file += length(section.size()) + section;
    return flattened.isNull() ? file : file + flatPicture();
  }

  static QByteArray u16(quint16 value) { return number(value); }
  static QByteArray u32(quint32 value) { return number(value); }

 private:
  template <typename T>
  static QByteArray number(T value) {
    QByteArray bytes(sizeof(T), '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
  }
  [[nodiscard]] QByteArray length(qint64 value) const {
    return large ? number(static_cast<quint64>(value)) : number(static_cast<quint32>(value));
  }
  static QByteArray block(const QByteArray& key, const QByteArray& content) {
    return "8BIM" + key + u32(quint32(content.size())) + content;
  }
  static QByteArray rect(const QPoint& topLeft, QSize size) {
    return number(topLeft.y()) + number(topLeft.x()) + number(topLeft.y() + size.height()) +
           number(topLeft.x() + size.width());
  }
  [[nodiscard]] QByteArray profileResource() const {
    QByteArray resource =
        "8BIM" + u16(1039) + u16(0) + u32(quint32(colorProfile.size())) + colorProfile;
    return resource.size() % 2 == 0 ? resource : resource + '\0';
  }

  // Rows of one channel, unpacked.
  [[nodiscard]] std::vector<QByteArray> rowsOf(const QImage& image, int id) const {
    std::vector<QByteArray> rows;
    for (int y = 0; y < image.height(); ++y) {
      QByteArray row;
      for (int x = 0; x < image.width(); ++x) {
        const auto sample = static_cast<quint8>(sampleOf(image.pixel(x, y), id));
        row += static_cast<char>(sample);
        if (depth == 16) row += static_cast<char>(sample);  // 257 × the sample
      }
      rows.push_back(row);
    }
    return rows;
  }
  static int sampleOf(QRgb pixel, int id) {
    return id == 0 ? qRed(pixel) : id == 1 ? qGreen(pixel) : id == 2 ? qBlue(pixel) : qAlpha(pixel);
  }
  static QByteArray packed(const QByteArray& row) {
    QByteArray out;
    for (qsizetype i = 0; i < row.size();) {
      qsizetype run = 1;
      while (i + run < row.size() && run < 128 && row[i + run] == row[i]) ++run;
      if (run > 1) {
        out += static_cast<char>(1 - run);
      } else {
        while (i + run < row.size() && run < 128 && row[i + run] != row[i + run - 1]) ++run;
        out += static_cast<char>(run - 1);
      }
      out += row.mid(i, out.back() < 0 ? 1 : run);
      i += run;
    }
    return out;
  }
  [[nodiscard]] QByteArray predicted(const QByteArray& row) const {
    QByteArray out = row;
    const qsizetype step = depth / 8;
    for (qsizetype i = row.size() - step; i >= step; i -= step) {
      if (step == 1)
        out[i] = static_cast<char>(row[i] - row[i - 1]);
      else
        qToBigEndian(static_cast<quint16>(qFromBigEndian<quint16>(row.constData() + i) -
                                          qFromBigEndian<quint16>(row.constData() + i - 2)),
                     out.data() + i);
    }
    return out;
  }
  /// The packed lengths of the rows and the rows.
  [[nodiscard]] std::pair<QByteArray, QByteArray> pack(const std::vector<QByteArray>& rows) const {
    QByteArray table;
    QByteArray content;
    for (const QByteArray& row : rows) {
      const QByteArray bytes = compression == 1   ? packed(row)
                               : compression == 3 ? predicted(row)
                                                  : row;
      if (compression == 1)
        table += large ? u32(quint32(bytes.size())) : u16(quint16(bytes.size()));
      content += bytes;
    }
    if (compression >= 2) content = qCompress(content).mid(4);
    return {table, content};
  }
  [[nodiscard]] QByteArray channelData(const QImage& image, int id) const {
    const auto [table, content] = pack(rowsOf(image, id));
    return u16(compression) + table + content;
  }
  [[nodiscard]] QByteArray flatPicture() const {
    QByteArray tables;
    QByteArray contents;
    for (int id = 0; id < (gray ? 1 : 3); ++id) {
      const auto [table, content] = pack(rowsOf(flattened, id));
      tables += table;
      contents += content;
    }
    return u16(compression) + tables + contents;
  }

  [[nodiscard]] std::vector<std::pair<qint16, QByteArray>> channelsOf(
      const PsdTestLayer& layer) const {
    std::vector<std::pair<qint16, QByteArray>> channels;
    for (const qint16 id : {-1, 0, 1, 2}) {
      if (gray && id > 0) continue;
      channels.emplace_back(id, layer.image.isNull() ? u16(0) : channelData(layer.image, id));
    }
    if (!layer.mask.isNull()) channels.emplace_back(-2, channelData(layer.mask, 0));
    return channels;
  }
  static QByteArray maskData(const PsdTestLayer& layer) {
    if (layer.mask.isNull()) return u32(0);
    return u32(20) + rect(layer.maskTopLeft, layer.mask.size()) +
           static_cast<char>(layer.maskOutside) + static_cast<char>(layer.maskDisabled ? 2 : 0) +
           u16(0);
  }
  static QByteArray extraData(const PsdTestLayer& layer) {
    QByteArray shortName = layer.name.toUtf8().left(250);
    shortName.prepend(static_cast<char>(shortName.size()));
    shortName.append(QByteArray((4 - shortName.size() % 4) % 4, '\0'));
    QByteArray extra = maskData(layer) + u32(0) + shortName;
    if (layer.unicodeName) {
      QByteArray units;
      for (const QChar unit : layer.name) units += u16(unit.unicode());
      extra += block("luni", u32(quint32(layer.name.size())) + units);
    }
    if (layer.divider != 0)
      extra += block("lsct", u32(quint32(layer.divider)) + "8BIM" + layer.blendMode);
    for (const auto& [key, content] : layer.blocks) extra += block(key, content);
    return extra;
  }
  [[nodiscard]] QByteArray layerInfo() const {
    QByteArray info = number(static_cast<qint16>(layers.size()));
    QByteArray pixels;
    for (const PsdTestLayer& layer : layers) {
      const auto channels = channelsOf(layer);
      info += rect(layer.topLeft, layer.image.size()) + u16(quint16(channels.size()));
      for (const auto& [id, bytes] : channels) {
        info += number(id) + length(bytes.size());
        pixels += bytes;
      }
      const QByteArray extra = extraData(layer);
      info += "8BIM" + layer.blendMode + static_cast<char>(layer.opacity) +
              static_cast<char>(layer.clipped ? 1 : 0) + static_cast<char>(layer.hidden ? 2 : 0) +
              '\0' + u32(quint32(extra.size())) + extra;
    }
    return info + pixels;
  }
};

}  // namespace support
