#pragma once

#include <memory>
#include <vector>

#include "document/psd/PsdDocument.h"
#include "document/psd/PsdLayerDecoder.h"
#include "document/psd/PsdWarnings.h"

namespace document {

/// Walks the list of records from the top, follows groups in and out, and decodes the layers with
/// what their groups add (visibility, opacity and masks) and with what the layer below adds to
/// those that are clipped to it.
class PsdLayerCollector {
 public:
  PsdLayerCollector(const PsdHeader& header, PsdWarnings& warnings)
      : m_decoder(header), m_warnings(warnings) {}

  /// The records, lowest first; the pictures come topmost first.
  [[nodiscard]] std::vector<PsdPicture> collect(const std::vector<PsdLayerRecord>& records);

 private:
  struct Group {
    bool visible = true;
    double opacity = 1;
    std::unique_ptr<PsdMask> mask;
  };

  void enter(const PsdLayerRecord& record);
  void leave();
  void add(const PsdLayerRecord& record);
  [[nodiscard]] std::optional<PsdPicture> decode(const PsdLayerRecord& record);
  /// Clips what waits for a base; without one, warns.
  void finishClipping(const PsdPicture& base, const PsdLayerRecord& record);
  void giveUpClipping();
  [[nodiscard]] bool canDecode(const PsdLayerRecord& record);
  [[nodiscard]] std::unique_ptr<PsdMask> maskOf(const PsdLayerRecord& record, bool& damaged);
  void warnAbout(const PsdLayerRecord& record);
  /// Counts pixels that are going to be decoded; false when there would be too many.
  [[nodiscard]] bool reserve(QSize size);

  PsdLayerDecoder m_decoder;
  PsdWarnings& m_warnings;
  std::vector<Group> m_groups;  ///< from the outermost; opacity and visibility of all together
  std::vector<PsdPicture> m_pictures;
  std::vector<size_t> m_clipped;  ///< pictures that are clipped to the next layer, or to nothing
  qint64 m_pixels = 0;
};

}  // namespace document
