#include "document/psd/PsdLayerCollector.h"

#include "document/psd/PsdClipping.h"

namespace document {

namespace {

constexpr int kNarrow = 64;
/// Programs allow ten levels of groups; masks of more are not worth the time that a made-up file
/// could spend on them.
constexpr size_t kMostMasks = 10;

/// A channel without more than its compression has no picture.
bool hasPixels(const PsdLayerRecord& record) {
  return !record.rect.isEmpty() &&
         std::any_of(record.channels.begin(), record.channels.end(), [](const PsdChannel& channel) {
           return channel.id >= 0 && channel.length > 2;
         });
}

}  // namespace

std::vector<PsdPicture> PsdLayerCollector::collect(const std::vector<PsdLayerRecord>& records) {
  for (auto record = records.rbegin(); record != records.rend(); ++record) {
    switch (record->kind) {
      case PsdLayerRecord::Kind::Group:
        enter(*record);
        break;
      case PsdLayerRecord::Kind::GroupEnd:
        leave();
        break;
      case PsdLayerRecord::Kind::Layer:
        add(*record);
        break;
    }
  }
  giveUpClipping();
  return std::move(m_pictures);
}

void PsdLayerCollector::enter(const PsdLayerRecord& record) {
  giveUpClipping();
  warnAbout(record);
  if (record.clipped) m_warnings.add(PsdWarnings::Reason::Clipping, record.name);
  bool damaged = false;
  Group group{record.visible, record.opacity, maskOf(record, damaged)};
  if (damaged) m_warnings.add(PsdWarnings::Reason::Damaged, record.name);
  if (!m_groups.empty()) {
    group.visible &= m_groups.back().visible;
    group.opacity *= m_groups.back().opacity;
  }
  m_groups.push_back(std::move(group));
}

void PsdLayerCollector::leave() {
  giveUpClipping();
  if (!m_groups.empty()) m_groups.pop_back();
}

bool PsdLayerCollector::reserve(QSize size) {
  // Narrow rows cost more than their pixels.
  const qint64 pixels = qint64(std::max(size.width(), kNarrow)) * size.height();
  if (pixels > kMostPsdPixels - m_pixels) return false;
  m_pixels += pixels;
  return true;
}

std::unique_ptr<PsdMask> PsdLayerCollector::maskOf(const PsdLayerRecord& record, bool& damaged) {
  if (!record.mask || record.mask->disabled) return {};
  if (!reserve(record.mask->rect.size())) {
    damaged = true;
    return {};
  }
  std::optional<PsdMask> mask = m_decoder.mask(record);
  damaged = !mask;
  return mask ? std::make_unique<PsdMask>(std::move(*mask)) : nullptr;
}

bool PsdLayerCollector::canDecode(const PsdLayerRecord& record) {
  using Reason = PsdWarnings::Reason;
  if (!record.hasSaneRect) {
    m_warnings.add(Reason::Place, record.name);
  } else if (!hasPixels(record)) {
    m_warnings.add(Reason::NoPixels, record.name);
  } else if (!reserve(record.rect.size())) {
    m_warnings.add(Reason::TooLarge, record.name);
  } else {
    return true;
  }
  return false;
}

void PsdLayerCollector::warnAbout(const PsdLayerRecord& record) {
  using Reason = PsdWarnings::Reason;
  if (record.blended) m_warnings.add(Reason::Blending, record.name);
  if (record.hasEffects) m_warnings.add(Reason::Effects, record.name);
  // Programs that draw a vector mask also store it as an ordinary one.
  if (record.hasVectorMask && !record.channel(PsdChannel::UserMask))
    m_warnings.add(Reason::VectorMask, record.name);
}

void PsdLayerCollector::finishClipping(const PsdPicture& base, const PsdLayerRecord& record) {
  for (const size_t index : m_clipped) {
    PsdPicture& picture = m_pictures[index];
    clipPsdPicture(picture, base);
    picture.visible &= base.visible;
    picture.opacity *= record.opacity;
  }
  m_clipped.clear();
}

void PsdLayerCollector::giveUpClipping() {
  for (const size_t index : m_clipped)
    m_warnings.add(PsdWarnings::Reason::Clipping, m_pictures[index].name);
  m_clipped.clear();
}

std::optional<PsdPicture> PsdLayerCollector::decode(const PsdLayerRecord& record) {
  if (!canDecode(record)) return {};
  bool damaged = false;
  const std::unique_ptr<PsdMask> own = maskOf(record, damaged);
  std::vector<const PsdMask*> masks;
  if (own) masks.push_back(own.get());
  for (const Group& group : m_groups)
    if (group.mask && masks.size() < kMostMasks) masks.push_back(group.mask.get());
  std::optional<QImage> image;
  if (!damaged) image = m_decoder.image(record, masks);
  if (!image) {
    m_warnings.add(PsdWarnings::Reason::Damaged, record.name);
    return {};
  }
  PsdPicture picture{std::move(*image), record.name, record.rect.topLeft(), record.opacity,
                     record.visible};
  if (!m_groups.empty()) {
    picture.opacity *= m_groups.back().opacity;
    picture.visible &= m_groups.back().visible;
  }
  return picture;
}

void PsdLayerCollector::add(const PsdLayerRecord& record) {
  std::optional<PsdPicture> picture = decode(record);
  if (picture) warnAbout(record);
  if (record.clipped) {
    if (picture) m_clipped.push_back(m_pictures.size());
  } else if (picture) {
    finishClipping(*picture, record);
  } else {
    giveUpClipping();
  }
  if (picture) m_pictures.push_back(std::move(*picture));
}

}  // namespace document
