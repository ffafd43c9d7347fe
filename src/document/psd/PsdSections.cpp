#include "document/psd/PsdSections.h"

#include "document/psd/PsdTaggedBlock.h"

namespace document {

namespace {

constexpr int kMostLayers = 10'000;

/// Resources are numbered; the colour profile is one of them.
QColorSpace readColorSpace(PsdReader resources) {
  constexpr quint16 kColorProfile = 1039;
  while (resources.remaining() > 0 && resources.take(4) == QByteArrayView("8BIM")) {
    const quint16 id = resources.u16();
    const quint8 nameLength = resources.u8();
    resources.skip(nameLength + (nameLength % 2 == 0 ? 1 : 0));
    const quint32 length = resources.u32();
    const QByteArrayView content = resources.take(length);
    if (!resources.isOk()) break;
    if (id == kColorProfile) return QColorSpace::fromIccProfile(content.toByteArray());
    if (length % 2 != 0) resources.skip(1);
  }
  return {};
}

/// The count, the records, then the channels of all layers in the same order.
void readLayers(PsdReader info, PsdSections& sections) {
  const int count = std::abs(int(info.i16()));
  sections.isDamaged = count > kMostLayers;
  for (int i = 0; i < count && !sections.isDamaged; ++i) {
    if (auto record = PsdLayerRecord::read(info))
      sections.records.push_back(std::move(*record));
    else
      sections.isDamaged = true;
  }
  if (sections.isDamaged) sections.records.clear();
  for (PsdLayerRecord& record : sections.records)
    for (PsdChannel& channel : record.channels) channel.bytes = info.take(channel.length);
  sections.isCutOff |= !info.isOk();
}

/// Pictures of 16 bits keep their layers in a block behind the place where others have them.
void readLayersFromBlocks(PsdReader& reader, PsdSections& sections) {
  reader.skip(reader.u32());  // mask of the whole picture
  while (std::optional<PsdTaggedBlock> block = PsdTaggedBlock::next(reader)) {
    if (!block->is("Lr16") && !block->is("Layr")) continue;
    readLayers(block->data, sections);
    return;
  }
}

}  // namespace

PsdSections PsdSections::read(PsdReader& reader) {
  PsdSections sections;
  reader.skip(reader.u32());  // tables of indexed colours
  sections.colorSpace = readColorSpace(reader.section(reader.u32()));
  PsdReader layersAndMasks = reader.section(reader.length());
  PsdReader info = layersAndMasks.section(layersAndMasks.length());
  if (info.remaining() >= 2) readLayers(info, sections);
  if (sections.records.empty() && !sections.isDamaged)
    readLayersFromBlocks(layersAndMasks, sections);
  sections.isCutOff |= !reader.isOk() || !layersAndMasks.isOk();
  sections.flattened = reader;
  return sections;
}

}  // namespace document
