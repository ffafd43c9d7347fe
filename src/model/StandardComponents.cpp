#include "model/StandardComponents.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace model {

StandardComponents StandardComponents::located() {
  const auto folderIn = [](const QString& resources) {
    return QDir::cleanPath(resources + QStringLiteral("/QTZ Standard Components"));
  };
  // Who names a folder means that one: another one would hide the mistake.
  if (const QString named = qEnvironmentVariable("TESSARY_RESOURCES"); !named.isEmpty())
    return StandardComponents(folderIn(named));
  if (QCoreApplication::instance()) {
    const QString beside =
        folderIn(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/tessary"));
    if (QFileInfo(beside).isDir()) return StandardComponents(beside);
  }
  return StandardComponents(folderIn(QStringLiteral(TESSARY_BUILD_RESOURCES)));
}

std::optional<QString> StandardComponents::pathOf(const QString& name) const {
  const QString path = QDir(m_folder).filePath(name + QStringLiteral(".qtz"));
  if (name.contains(u'/') || !QFileInfo(path).isFile()) return {};
  return path;
}

foundation::Result<std::unique_ptr<quartz::QuartzComposition>> StandardComponents::load(
    const QString& name) const {
  const std::optional<QString> path = pathOf(name);
  if (!path)
    return foundation::failure(QStringLiteral("the standard component \"%1\" is missing").arg(name),
                               m_folder);
  return quartz::QuartzComposition::compositionWithFile(*path);
}

}  // namespace model
