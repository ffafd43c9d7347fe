#include "model/StandardComponents.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace model {

StandardComponents StandardComponents::located() {
  const auto folderIn = [](const QString& resources) {
    return QDir::cleanPath(resources + QStringLiteral("/QTZ Standard Components"));
  };
  // Who names a folder means that one: another one would hide the mistake.
  if (const QString named = qEnvironmentVariable("TESSARY_RESOURCES"); !named.isEmpty())
    return StandardComponents(folderIn(named));
  const QString program =
      QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path() + u'/';
  const QString installed = folderIn(program + QStringLiteral(TESSARY_RESOURCES_FROM_PROGRAM));
  const QString built = folderIn(program + QStringLiteral("../share/tessary"));
  return StandardComponents(QFileInfo(built).isDir() && !QFileInfo(installed).isDir() ? built
                                                                                      : installed);
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
