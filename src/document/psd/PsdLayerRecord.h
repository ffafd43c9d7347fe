#pragma once

#include <QRect>
#include <QString>
#include <optional>
#include <vector>

#include "document/psd/PsdReader.h"

namespace document {

/// One channel of a layer; the bytes begin with its compression.
struct PsdChannel {
  enum Id : qint16 { Transparency = -1, UserMask = -2 };

  qint16 id = 0;  ///< 0…2: colour
  quint64 length = 0;
  QByteArrayView bytes = {};  ///< shorter than `length` when the file is cut off
};

/// Where a layer's mask lies and what holds around it.
struct PsdMaskRecord {
  QRect rect;  ///< canvas, y down
  quint8 outside = 0;
  bool disabled = false;
};

/// One entry of the list of layers, as stored: a layer, or the top or the bottom of a group.
struct PsdLayerRecord {
  enum class Kind : quint8 { Layer, Group, GroupEnd };

  Kind kind = Kind::Layer;
  QString name;
  QRect rect;  ///< canvas, y down; may reach beyond it
  bool hasSaneRect = true;
  double opacity = 1;
  bool visible = true;
  bool clipped = false;     ///< drawn only where the layer below is
  bool blended = false;     ///< combined with what is below in a special way
  bool hasEffects = false;  ///< shadows, outlines and the like
  bool hasVectorMask = false;
  std::vector<PsdChannel> channels;
  std::optional<PsdMaskRecord> mask;

  [[nodiscard]] const PsdChannel* channel(int id) const;

  /// Nothing when the bytes are no such record or end before it does.
  [[nodiscard]] static std::optional<PsdLayerRecord> read(PsdReader& reader);
};

}  // namespace document
