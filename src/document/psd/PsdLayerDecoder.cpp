#include "document/psd/PsdLayerDecoder.h"

namespace document {

namespace {

/// The samples of one row, channel after channel.
class RowBuffer {
 public:
  RowBuffer(int channels, int width)
      : m_width(width), m_samples(static_cast<size_t>(channels) * static_cast<size_t>(width)) {}
  quint8* channel(int index) { return m_samples.data() + qint64(index) * m_width; }

 private:
  int m_width;
  std::vector<quint8> m_samples;
};

void interleave(const quint8* red, const quint8* green, const quint8* blue, const quint8* alpha,
                QRgb* pixels, int width) {
  for (int i = 0; i < width; ++i) pixels[i] = qRgba(red[i], green[i], blue[i], alpha[i]);
}

}  // namespace

std::optional<QImage> PsdLayerDecoder::assemble(
    std::vector<std::optional<PsdChannelDecoder>>& channels, QPoint topLeft, QSize size,
    const std::vector<const PsdMask*>& masks) const {
  QImage image(size, QImage::Format_ARGB32);
  if (image.isNull()) return {};
  const int alpha = m_header.colorChannels();
  RowBuffer row(alpha + 1, size.width());
  for (int y = 0; y < size.height(); ++y) {
    if (!channels[static_cast<size_t>(alpha)])
      std::fill_n(row.channel(alpha), size.width(), quint8(255));
    for (int c = 0; c <= alpha; ++c) {
      auto& decoder = channels[static_cast<size_t>(c)];
      if (decoder && !decoder->nextRow(row.channel(c))) return {};
    }
    for (const PsdMask* mask : masks)
      mask->applyTo(row.channel(alpha), topLeft.x(), topLeft.y() + y, size.width());
    const int last = alpha - 1;  // of the colours; the only one of gray
    interleave(row.channel(0), row.channel(std::min(1, last)), row.channel(last),
               row.channel(alpha), reinterpret_cast<QRgb*>(image.scanLine(y)), size.width());
  }
  return image;
}

std::optional<QImage> PsdLayerDecoder::image(const PsdLayerRecord& record,
                                             const std::vector<const PsdMask*>& masks) const {
  std::vector<std::optional<PsdChannelDecoder>> channels;
  for (int i = 0; i <= m_header.colorChannels(); ++i) {
    const int id = i < m_header.colorChannels() ? i : PsdChannel::Transparency;
    const PsdChannel* channel = record.channel(id);
    channels.emplace_back();
    if (!channel) continue;
    channels.back() = PsdChannelDecoder::create(*channel, record.rect.size(), m_header);
    if (!channels.back()) return {};
  }
  return assemble(channels, record.rect.topLeft(), record.rect.size(), masks);
}

std::optional<PsdMask> PsdLayerDecoder::mask(const PsdLayerRecord& record) const {
  PsdMask mask{record.mask->rect, record.mask->outside, {}};
  if (mask.rect.isEmpty()) return mask;
  const PsdChannel* channel = record.channel(PsdChannel::UserMask);
  if (!channel) return {};
  auto decoder = PsdChannelDecoder::create(*channel, mask.rect.size(), m_header);
  if (!decoder) return {};
  const qint64 width = mask.rect.width();
  mask.samples.resize(width * mask.rect.height());
  auto* samples = reinterpret_cast<quint8*>(mask.samples.data());
  for (int y = 0; y < mask.rect.height(); ++y)
    if (!decoder->nextRow(samples + y * width)) return {};
  return mask;
}

}  // namespace document
