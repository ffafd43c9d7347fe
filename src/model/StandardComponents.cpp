#include "model/StandardComponents.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace model {

StandardComponents StandardComponents::located() {
  QStringList resourceFolders;
  if (const QString named = qEnvironmentVariable("TESSARY_RESOURCES"); !named.isEmpty())
    resourceFolders.append(named);
  if (QCoreApplication::instance())
    resourceFolders.append(QCoreApplication::applicationDirPath() +
                           QStringLiteral("/../share/tessary"));
  resourceFolders.append(QStringLiteral(TESSARY_BUILD_RESOURCES));
  QString folder;
  for (const QString& resources : resourceFolders) {
    folder = QDir::cleanPath(resources + QStringLiteral("/QTZ Standard Components"));
    if (QFileInfo(folder).isDir()) break;
  }
  return StandardComponents(folder);
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
