#include "widgets/FileChooser.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QImageReader>

namespace widgets {

QString FileChooser::filter(Kind kind) {
  const QString all = tr("All files (*)");
  if (kind == AnyFile) return all;
  if (kind == Movies)
    return tr("Movies (*.mov *.mp4 *.m4v *.mxf *.avi *.mkv *.webm)") + QStringLiteral(";;") + all;
  if (kind == Tables)
    return tr("Tables (*.csv *.tsv *.tab *.txt *.json)") + QStringLiteral(";;") + all;
  QStringList patterns;
  for (const QByteArray& format : QImageReader::supportedImageFormats())
    patterns.append(QStringLiteral("*.") + QString::fromLatin1(format));
  return tr("Pictures (%1)").arg(patterns.join(u' ')) + QStringLiteral(";;") + all;
}

void FileChooser::open(QWidget& beside, const QString& title, Kind kind, const QString& presentPath,
                       const std::function<void(const QString& path)>& chosen) {
  const QFileInfo present(presentPath);
  auto* dialog = new QFileDialog(
      beside.window(), title, present.isDir() ? present.filePath() : present.path(), filter(kind));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::ExistingFile);
  if (present.isFile()) dialog->selectFile(presentPath);
  QObject::connect(dialog, &QFileDialog::fileSelected, &beside, chosen);
  dialog->open();
}

}  // namespace widgets
