#pragma once

#include <QImage>
#include <optional>
#include <vector>

#include "document/psd/PsdChannelDecoder.h"
#include "document/psd/PsdMask.h"

namespace document {

/// Puts channels together to pictures: straight alpha, 8 bits a channel.
class PsdLayerDecoder {
 public:
  explicit PsdLayerDecoder(const PsdHeader& header) : m_header(header) {}

  /// The pixels of a layer's rectangle with all masks applied. Nothing when its data is damaged or
  /// memory is short.
  [[nodiscard]] std::optional<QImage> image(const PsdLayerRecord& record,
                                            const std::vector<const PsdMask*>& masks) const;
  /// The mask of a layer or group that has one; nothing when its data is damaged.
  [[nodiscard]] std::optional<PsdMask> mask(const PsdLayerRecord& record) const;

  /// A picture from one decoder a channel: colours as the header has them, then alpha; a missing
  /// colour is 0, a missing alpha 255. `topLeft` is where it lies, for the masks.
  [[nodiscard]] std::optional<QImage> assemble(
      std::vector<std::optional<PsdChannelDecoder>>& channels, QPoint topLeft, QSize size,
      const std::vector<const PsdMask*>& masks) const;

 private:
  const PsdHeader& m_header;
};

}  // namespace document
