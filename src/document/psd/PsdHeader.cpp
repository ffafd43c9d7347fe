#include "document/psd/PsdHeader.h"

#include <QCoreApplication>

namespace document {

namespace {

struct Translated {
  Q_DECLARE_TR_FUNCTIONS(PsdHeader)
};

QString nameOfMode(quint16 mode) {
  switch (mode) {
    case 0:
      return Translated::tr("bitmap");
    case 2:
      return Translated::tr("indexed colours");
    case 4:
      return QStringLiteral("CMYK");
    case 7:
      return Translated::tr("several separate channels");
    case 8:
      return Translated::tr("duotone");
    case 9:
      return QStringLiteral("Lab");
    default:
      return Translated::tr("unknown (%1)").arg(mode);
  }
}

}  // namespace

foundation::Result<PsdHeader> PsdHeader::read(PsdReader& reader) {
  using foundation::failure;
  if (reader.take(4) != QByteArrayView("8BPS"))
    return failure(Translated::tr("The file is not a layered image (PSD)."));
  const quint16 version = reader.u16();
  reader.skip(6);
  PsdHeader header;
  header.channels = reader.u16();
  const quint32 height = reader.u32();
  const quint32 width = reader.u32();
  header.depth = reader.u16();
  const quint16 mode = reader.u16();
  if (!reader.isOk()) return failure(Translated::tr("The file ends within its header."));
  if (version != 1 && version != 2)
    return failure(Translated::tr("Version %1 of the file format is not known.").arg(version));
  if (width == 0 || height == 0 || width > kLargestPsdSide || height > kLargestPsdSide)
    return failure(Translated::tr("The picture is %1 × %2 pixels large; from 1 to %3 are read.")
                       .arg(width)
                       .arg(height)
                       .arg(kLargestPsdSide));
  if (qint64(width) * height > kMostPsdPixels)
    return failure(Translated::tr("The picture has more than %1 million pixels.")
                       .arg(kMostPsdPixels / 1'000'000));
  if (mode != static_cast<quint16>(Mode::Gray) && mode != static_cast<quint16>(Mode::Rgb))
    return failure(Translated::tr("The colour mode of the picture is not read: %1. RGB and "
                                  "grayscale are.")
                       .arg(nameOfMode(mode)));
  if (header.depth != 8 && header.depth != 16)
    return failure(
        Translated::tr("The picture has %1 bits a channel; 8 and 16 are read.").arg(header.depth));
  header.mode = static_cast<Mode>(mode);
  header.size = QSize(static_cast<int>(width), static_cast<int>(height));
  header.large = version == 2;
  reader.setLarge(header.large);
  return header;
}

}  // namespace document
