#include "preview/PictureSaver.h"

#include <QBuffer>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageWriter>
#include <QPointer>
#include <QStandardPaths>
#include <QThreadPool>

#include "foundation/DurableFile.h"
#include "preview/PicturePainter.h"

namespace preview {

using foundation::Result;
using foundation::UserDefaults;

namespace {

const QString folderKey = QStringLiteral("previewPictureFolder");

QString lastFolder() {
  const QString kept = UserDefaults::standard().value(folderKey).toString();
  return QFileInfo(kept).isDir()
             ? kept
             : QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
}

}  // namespace

QImage PictureSaver::imageOf(const Subject& subject) {
  const QImage frame = PicturePainter::channelOf(*subject.picture, subject.channel);
  if (subject.part == Part::Frame) return frame;
  const int first = subject.part == Part::UpperField ? 0 : 1;
  if (frame.height() <= first) return {};
  return QImage(frame.constScanLine(first), frame.width(), (frame.height() + 1 - first) / 2,
                2 * frame.bytesPerLine(), frame.format())
      .copy();
}

Result<void> PictureSaver::write(const QImage& image, const QString& path) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QImageWriter writer(&buffer, "png");
  if (!writer.write(image)) return foundation::failure(writer.errorString(), path);
  return foundation::replaceFile(path, bytes);
}

QString PictureSaver::fileName(const Subject& subject) {
  QString name = subject.name;
  name.replace(u'/', u'-');
  if (subject.part == Part::UpperField) name += tr(" upper field");
  if (subject.part == Part::LowerField) name += tr(" lower field");
  return name + QStringLiteral(".png");
}

void PictureSaver::save(QWidget& beside, const Subject& subject, const Told& told) {
  auto* dialog = new QFileDialog(beside.window(), tr("Save Picture"), lastFolder());
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilter(tr("PNG pictures (*.png)"));
  dialog->setDefaultSuffix(QStringLiteral("png"));
  dialog->selectFile(fileName(subject));
  QObject::connect(dialog, &QFileDialog::fileSelected, &beside,
                   [&beside, subject, told](const QString& path) {
                     UserDefaults::standard().setValue(QFileInfo(path).path(), folderKey);
                     writeAside(beside, subject, path, told);
                   });
  dialog->open();
}

void PictureSaver::writeAside(QWidget& beside, const Subject& subject, const QString& path,
                              const Told& told) {
  QThreadPool::globalInstance()->start([guard = QPointer(&beside), subject, path, told] {
    const auto written = write(imageOf(subject), path).map([&] { return path; });
    // The program waits for its pool before it is gone.
    QMetaObject::invokeMethod(qApp, [guard, written, told] {
      if (guard) told(written);
    });
  });
}

}  // namespace preview
