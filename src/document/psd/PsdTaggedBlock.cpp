#include "document/psd/PsdTaggedBlock.h"

namespace document {

namespace {

bool isSignature(QByteArrayView bytes) {
  return bytes == QByteArrayView("8BIM", 4) || bytes == QByteArrayView("8B64", 4);
}

/// The large variant keeps lengths of 32 bits but for the blocks that grow with the pictures.
bool hasLongLength(QByteArrayView key) {
  static constexpr const char* kKeys[] = {"LMsk", "Lr16", "Lr32", "Layr", "Mt16", "Mt32", "Mtrn",
                                          "Alph", "FMsk", "lnk2", "FEid", "FXid", "PxSD"};
  return std::any_of(std::begin(kKeys), std::end(kKeys),
                     [&](const char* long_) { return key == QByteArrayView(long_, 4); });
}

}  // namespace

std::optional<PsdTaggedBlock> PsdTaggedBlock::next(PsdReader& reader) {
  // Programs disagree on how blocks are padded: up to three bytes may lie between two.
  for (int padding = 0; padding < 3 && !isSignature(reader.peek(4)) && reader.remaining() > 12;
       ++padding)
    reader.skip(1);
  if (reader.remaining() < 12 || !isSignature(reader.take(4))) return {};
  PsdTaggedBlock block;
  block.key = reader.take(4);
  const quint64 length = hasLongLength(block.key) ? reader.length() : reader.u32();
  block.data = reader.section(length);
  return block;
}

}  // namespace document
