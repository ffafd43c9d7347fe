#include "document/psd/PsdLayerRecord.h"

#include <QStringDecoder>

#include "document/psd/PsdHeader.h"
#include "document/psd/PsdTaggedBlock.h"

namespace document {

namespace {

constexpr int kMostChannels = 56;
constexpr qint64 kFarthest = 300'000;  // pixels from the canvas's corner

/// Nothing for a rectangle that no program would write.
std::optional<QRect> readRect(PsdReader& reader) {
  const qint64 top = reader.i32();
  const qint64 left = reader.i32();
  const qint64 height = reader.i32() - top;
  const qint64 width = reader.i32() - left;
  if (std::abs(top) > kFarthest || std::abs(left) > kFarthest || width < 0 || height < 0 ||
      width > kLargestPsdSide || height > kLargestPsdSide)
    return {};
  return QRect(static_cast<int>(left), static_cast<int>(top), static_cast<int>(width),
               static_cast<int>(height));
}

QString cleaned(QString name) {
  name.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
  return name;
}

/// The short name has no stated character set: UTF-8 where it is that, else Latin-1.
QString readShortName(PsdReader& reader) {
  const quint8 length = reader.u8();
  const QByteArrayView bytes = reader.take(length);
  reader.skip(std::min<qint64>(3 - length % 4, reader.remaining()));
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString name = utf8(bytes);
  return cleaned(utf8.hasError() ? QString::fromLatin1(bytes) : name);
}

QString readUnicodeName(PsdReader& reader) {
  const quint32 units = reader.u32();
  const QByteArrayView bytes = reader.take(quint64(units) * 2);
  return cleaned(QStringDecoder(QStringDecoder::Utf16BE, QStringDecoder::Flag::Stateless)(bytes));
}

std::optional<PsdMaskRecord> readMask(PsdReader reader) {
  if (reader.remaining() < 18) return {};
  const std::optional<QRect> rect = readRect(reader);
  const quint8 outside = reader.u8();
  const bool disabled = (reader.u8() & 2) != 0;
  if (!rect) return {};
  return PsdMaskRecord{*rect, outside, disabled};
}

bool isOrdinaryBlending(QByteArrayView key) {
  return key == QByteArrayView("norm") || key == QByteArrayView("pass");
}

void readDivider(PsdReader& reader, PsdLayerRecord& record) {
  using Kind = PsdLayerRecord::Kind;
  const quint32 type = reader.u32();
  if (type == 1 || type == 2) record.kind = Kind::Group;
  if (type == 3) record.kind = Kind::GroupEnd;
  if (reader.remaining() < 8) return;
  reader.skip(4);
  record.blended = !isOrdinaryBlending(reader.take(4));
}

void readBlock(PsdTaggedBlock& block, PsdLayerRecord& record) {
  if (block.is("luni")) {
    if (QString name = readUnicodeName(block.data); !name.isEmpty()) record.name = std::move(name);
  } else if (block.is("lsct") || block.is("lsdk")) {
    readDivider(block.data, record);
  } else if (block.is("iOpa") && block.data.remaining() > 0) {
    record.opacity *= block.data.u8() / 255.0;
  } else if (block.is("lfx2") || block.is("lrFX") || block.is("lmfx")) {
    record.hasEffects = true;
  } else if (block.is("vmsk") || block.is("vsms")) {
    record.hasVectorMask = true;
  }
}

/// Everything after the fixed part: mask, names, blocks.
void readExtra(PsdReader& reader, PsdLayerRecord& record) {
  record.mask = readMask(reader.section(reader.u32()));
  reader.skip(reader.u32());  // ranges of blending
  record.name = readShortName(reader);
  while (std::optional<PsdTaggedBlock> block = PsdTaggedBlock::next(reader))
    readBlock(*block, record);
}

}  // namespace

const PsdChannel* PsdLayerRecord::channel(int id) const {
  const auto found =
      std::find_if(channels.begin(), channels.end(), [&](const auto& c) { return c.id == id; });
  return found == channels.end() ? nullptr : &*found;
}

std::optional<PsdLayerRecord> PsdLayerRecord::read(PsdReader& reader) {
  PsdLayerRecord record;
  const std::optional<QRect> rect = readRect(reader);
  record.hasSaneRect = rect.has_value();
  record.rect = rect.value_or(QRect());
  const quint16 count = reader.u16();
  if (count > kMostChannels) return {};
  for (int i = 0; i < count; ++i) {
    const qint16 id = reader.i16();
    record.channels.push_back({id, reader.length()});
  }
  if (reader.take(4) != QByteArrayView("8BIM")) return {};
  record.blended = !isOrdinaryBlending(reader.take(4));
  record.opacity = reader.u8() / 255.0;
  record.clipped = reader.u8() != 0;
  record.visible = (reader.u8() & 2) == 0;
  reader.skip(1);
  PsdReader extra = reader.section(reader.u32());
  if (!reader.isOk()) return {};
  readExtra(extra, record);
  return record;
}

}  // namespace document
