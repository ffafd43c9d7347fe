#include "inspector/rows/ImageRow.h"

#include <QFileInfo>
#include <QImageReader>

#include "inspector/InspectorContext.h"
#include "widgets/FileChooser.h"
#include "widgets/TYImageWell.h"

namespace inspector {

using widgets::TYImageWell;

namespace {

/// A well is small; large pictures are made small once, not at every paint.
constexpr QSize mostShown(416, 240);

QImage forWell(const QImage& image) {
  if (image.width() <= mostShown.width() && image.height() <= mostShown.height()) return image;
  return image.scaled(mostShown, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

ImageRow::ImageRow(InspectorContext& context, const QString& label)
    : InspectorRow(context, label), m_well(new TYImageWell) {
  addControl(m_well, 0);
  addStretch();
  connect(m_well, &TYImageWell::fileDropped, this, &ImageRow::takeFile);
  connect(m_well, &TYImageWell::imageDropped, this, &ImageRow::take);
  connect(m_well, &TYImageWell::cleared, this, [this] { take({}); });
  connect(m_well, &QAbstractButton::clicked, this, &ImageRow::choose);
}

void ImageRow::choose() {
  widgets::FileChooser::open(*this, tr("Choose an Image"), widgets::FileChooser::Images, {},
                             [this](const QString& path) { takeFile(path); });
}

void ImageRow::takeFile(const QString& path) {
  QImageReader reader(path);
  reader.setAutoTransform(true);
  reader.setDecideFormatFromContent(true);
  const QImage image = reader.read();
  if (image.isNull())
    setComplaint(tr("“%1” cannot be read as a picture: %2.")
                     .arg(QFileInfo(path).fileName(), reader.errorString()));
  else
    take(image);
}

void ImageRow::take(const QImage& image) {
  if (!isBound()) return;
  setComplaint({});
  const model::AttributeValue value =
      image.isNull() ? model::AttributeValue() : model::AttributeValue(image);
  context().change(binding().stepName, [&] { binding().setAll(value); });
}

void ImageRow::showValues() {
  const bool mixed = binding().isMixed();
  const QImage image = mixed ? QImage() : binding().value().toImage();
  m_well->setToolTip(mixed            ? tr("Several different pictures")
                     : image.isNull() ? tr("Click to choose a picture, or drop one here")
                                      : tr("%1 × %2").arg(image.width()).arg(image.height()));
  if (image.cacheKey() == m_shown && !image.isNull()) return;
  m_shown = image.cacheKey();
  m_well->setImage(forWell(image));
}

void ImageRow::nameControls(const QString& name) {
  m_well->setAccessibleName(name);
}

}  // namespace inspector
