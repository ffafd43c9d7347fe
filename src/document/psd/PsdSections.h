#pragma once

#include <QColorSpace>
#include <vector>

#include "document/psd/PsdHeader.h"
#include "document/psd/PsdLayerRecord.h"

namespace document {

/// The parts that follow the header, as far as they are used. Points into the data that was read.
struct PsdSections {
  QColorSpace colorSpace;               ///< invalid when the file names none
  std::vector<PsdLayerRecord> records;  ///< lowest first, with the bytes of their channels
  PsdReader flattened;                  ///< the picture of all layers together
  bool isDamaged = false;               ///< the list of layers cannot be read
  bool isCutOff = false;                ///< the file ends before its content does

  /// Reads on behind the header.
  [[nodiscard]] static PsdSections read(PsdReader& reader);
};

}  // namespace document
