#pragma once

#include <QSize>
#include <memory>
#include <optional>
#include <vector>

#include "document/psd/PsdHeader.h"
#include "document/psd/PsdLayerRecord.h"
#include "document/psd/PsdRows.h"

namespace document {

/// Gives the rows of one channel at 8 bits a sample, from top to bottom.
class PsdChannelDecoder {
 public:
  PsdChannelDecoder(std::unique_ptr<PsdRows> rows, int width, int depth);

  /// Fills `width` samples; false when the data is damaged or at its end.
  [[nodiscard]] bool nextRow(quint8* samples);

  /// Nothing when the channel's bytes cannot hold a picture of that size. They must outlive the
  /// result.
  [[nodiscard]] static std::optional<PsdChannelDecoder> create(const PsdChannel& channel,
                                                               QSize size, const PsdHeader& header);

 private:
  std::unique_ptr<PsdRows> m_rows;
  int m_width;
  std::vector<quint16> m_wide;  ///< a row of big-endian samples; empty for 8 bits
};

}  // namespace document
