#include "model/maintenance/RelativePath.h"

#include <QStringList>

namespace model {

namespace {

/// The first component of an absolute path is "/".
QStringList pathComponents(const QString& path) {
  QStringList components = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
  if (path.startsWith(QLatin1Char('/'))) components.prepend(QStringLiteral("/"));
  return components;
}

}  // namespace

QString pathRelativeTo(const QString& path, const QString& base) {
  const QStringList from = pathComponents(base);
  const QStringList to = pathComponents(path);
  const QString root = QStringLiteral("/");
  if (from.isEmpty() || from.first() != root) return path;
  if (to.isEmpty() || to.first() != root) return path;
  qsizetype common = 0;
  while (common < std::min(from.size(), to.size()) && from[common] == to[common]) ++common;
  if (common == 0 || (common == 2 && from[1] == QLatin1String("Volumes"))) return path;
  QStringList steps;
  for (qsizetype i = common; i + 1 < from.size(); ++i) steps.append(QStringLiteral(".."));
  steps.append(to.mid(common));
  return steps.join(QLatin1Char('/'));
}

}  // namespace model
