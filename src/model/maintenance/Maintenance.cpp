#include "model/maintenance/Maintenance.h"

#include <QDir>
#include <QFileInfo>

#include "model/Composition.h"
#include "model/maintenance/RelativePath.h"
#include "store/ObjectContext.h"

namespace model {

namespace {

CommandReport report(const QString& title, const QString& textWithItems, const QString& textWithout,
                     const QStringList& items, const char* preferenceKey) {
  return {title, items.isEmpty() ? textWithout : textWithItems + items.join(QLatin1Char('\n')),
          QString::fromLatin1(preferenceKey)};
}

}  // namespace

QStringList Maintenance::upgradeComponents(QStringList& warnings) {
  static const QStringList upgradable{QStringLiteral("Text.qtz")};
  const store::UndoStep step(*m_composition.context(), Composition::tr("Upgrade Components"));
  QStringList titles;
  for (QuartzComponent* component : m_composition.componentsSortedByZLevel()) {
    const QFileInfo file(component->compositionFilename());
    if (!upgradable.contains(file.fileName())) continue;
    const auto newest = m_standardComponents.pathOf(file.completeBaseName());
    if (!newest) continue;
    if (const auto updated = component->updateWithFile(*newest, warnings); !updated)
      warnings.append(updated.error().text());
    else
      titles.append(component->title());
  }
  return titles;
}

QList<Maintenance::FilePath> Maintenance::filePaths() const {
  QList<FilePath> found;
  for (QuartzComponent* component : m_composition.componentsSortedByZLevel())
    for (Attribute* attribute : component->attributes())
      if (attribute->isFilePath())
        found.append({component, attribute, attribute->currentValue().toString()});
  return found;
}

QStringList Maintenance::makePathsRelative() {
  QStringList paths;
  if (m_composition.fileURL().isEmpty()) return paths;
  const store::UndoStep step(*m_composition.context(), Composition::tr("Make Paths Relative"));
  const QString base = m_composition.fileURL().toLocalFile();
  for (const FilePath& file : filePaths()) {
    if (file.path.isEmpty()) continue;  // no file was chosen
    paths.append(file.path);
    file.attribute->setCurrentValue(pathRelativeTo(file.path, base));
  }
  return paths;
}

QList<EmbeddedResource> Maintenance::embedResources() {
  QList<EmbeddedResource> resources;
  if (m_composition.fileURL().isEmpty()) return resources;
  const store::UndoStep step(*m_composition.context(), Composition::tr("Embed Resources"));
  const QDir package(QFileInfo(m_composition.fileURL().toLocalFile()).absolutePath());
  for (const FilePath& file : filePaths()) {
    if (file.path.isEmpty()) continue;
    const QFileInfo source(QDir::cleanPath(package.absoluteFilePath(file.path)));
    const QString dest = package.filePath(source.fileName());
    if (!source.isFile() || source.filePath() == dest) continue;
    resources.append({source.filePath(), dest});
    file.attribute->setCurrentValue(source.fileName());
  }
  return resources;
}

CommandReport Maintenance::upgradeReport(const QStringList& titles) {
  return report(Composition::tr("Upgrade Components Complete"),
                Composition::tr("The following components in this composition were upgraded to "
                                "newer versions:\n\n"),
                Composition::tr("No components were upgraded in this composition."), titles,
                "upgradeComponents");
}

CommandReport Maintenance::relativePathsReport(const QStringList& paths) {
  return report(Composition::tr("Make Paths Relative"),
                Composition::tr("The following paths in this composition were changed to be "
                                "relative to the composition's path:\n\n"),
                Composition::tr("No paths were found in this composition."), paths,
                "relativePaths");
}

CommandReport Maintenance::embedReport(const QList<EmbeddedResource>& resources) {
  QStringList sources;
  for (const EmbeddedResource& resource : resources) sources.append(resource.source);
  return report(Composition::tr("Embed Resources"),
                Composition::tr("The following resources were embedded in the composition "
                                "document:\n\n"),
                Composition::tr("No resources were embedded in this composition."), sources,
                "embedResources");
}

CommandReport Maintenance::saveFirstForRelativePaths() {
  return {Composition::tr("Save Document"),
          Composition::tr("To make paths relative you must first save this document. Please save "
                          "first and then try again.")};
}

CommandReport Maintenance::saveFirstForEmbedding() {
  return {Composition::tr("Save Document"),
          Composition::tr("To embed resources you must first save this document. Please save first "
                          "and then try again.")};
}

}  // namespace model
