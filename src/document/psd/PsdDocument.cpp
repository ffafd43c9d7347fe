#include "document/psd/PsdDocument.h"

#include "document/psd/PsdFlatPicture.h"
#include "document/psd/PsdLayerCollector.h"
#include "document/psd/PsdSections.h"

namespace document {

namespace {

struct Translated {
  Q_DECLARE_TR_FUNCTIONS(PsdDocument)
};

/// Documents that never had a second layer hold nothing but the flattened picture; the program
/// shows it as a layer of this name.
void addFlatPicture(PsdDocument& document, const PsdHeader& header, const PsdReader& reader,
                    PsdWarnings& warnings) {
  if (std::optional<QImage> image = readPsdFlatPicture(header, reader)) {
    document.layers.push_back({std::move(*image), Translated::tr("Background"), {}, 1, true});
    if (header.channels > header.colorChannels())
      warnings.add(
          Translated::tr("The file has no layers; channels beside its colours are left "
                         "out."));
  } else {
    warnings.add(Translated::tr("The file has no layers, and its picture is missing or damaged."));
  }
}

void convertToSrgb(PsdDocument& document, const QColorSpace& colorSpace) {
  const QColorSpace srgb(QColorSpace::SRgb);
  if (!colorSpace.isValid() || colorSpace == srgb) return;
  for (PsdPicture& picture : document.layers) {
    picture.image.setColorSpace(colorSpace);
    picture.image.convertToColorSpace(srgb);
  }
}

}  // namespace

PsdDocument PsdDocument::read(QByteArrayView data) {
  PsdDocument document;
  PsdReader reader(data);
  const foundation::Result<PsdHeader> header = PsdHeader::read(reader);
  if (!header) {
    document.warnings.append(header.error().message);
    return document;
  }
  document.size = header->size;
  PsdWarnings warnings;
  const PsdSections sections = PsdSections::read(reader);
  if (sections.isCutOff)
    warnings.add(Translated::tr("The file ends early; perhaps it was not copied as a whole."));
  if (sections.isDamaged)
    warnings.add(Translated::tr("The list of layers is damaged and cannot be read."));
  else if (!sections.records.empty())
    document.layers = PsdLayerCollector(*header, warnings).collect(sections.records);
  else
    addFlatPicture(document, *header, sections.flattened, warnings);
  if (header->mode == PsdHeader::Mode::Rgb) convertToSrgb(document, sections.colorSpace);
  document.warnings = warnings.texts();
  return document;
}

}  // namespace document
