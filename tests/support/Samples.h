#pragma once

#include <QDir>
#include <QStringList>

namespace support {

/// The sample compositions at hand: the folder named by TESSARY_SAMPLES, or one beside the source
/// tree. Empty when there is neither.
inline QStringList samplePaths() {
  QString folder = qEnvironmentVariable("TESSARY_SAMPLES");
  if (folder.isEmpty()) folder = QStringLiteral(TESSARY_SOURCE_DIR "/../shared/samples/qtz");
  QStringList paths;
  const QDir dir(folder);
  for (const QString& name : dir.entryList({QStringLiteral("*.qtz")}, QDir::Files, QDir::Name))
    paths.append(dir.filePath(name));
  return paths;
}

}  // namespace support
