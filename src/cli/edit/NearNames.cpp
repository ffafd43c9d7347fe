#include "cli/edit/NearNames.h"

#include <algorithm>
#include <vector>

namespace cli {

namespace {

constexpr qsizetype mostShown = 5;
constexpr qsizetype mostListed = 40;

/// How many letters must be changed, added or left out to make one of the other.
qsizetype distance(const QString& a, const QString& b) {
  std::vector<qsizetype> row(static_cast<size_t>(b.size()) + 1);
  for (size_t j = 0; j < row.size(); ++j) row[j] = static_cast<qsizetype>(j);
  for (qsizetype i = 1; i <= a.size(); ++i) {
    qsizetype diagonal = std::exchange(row[0], i);
    for (qsizetype j = 1; j <= b.size(); ++j) {
      const auto at = static_cast<size_t>(j);
      const qsizetype changed = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[at];
      row[at] = std::min({changed, row[at] + 1, row[at - 1] + 1});
    }
  }
  return row.back();
}

QString listed(const QStringList& names, qsizetype most) {
  QString text = names.mid(0, most).join(QStringLiteral(", "));
  if (names.size() > most) text += QStringLiteral(" and %1 more").arg(names.size() - most);
  return text;
}

}  // namespace

QString nearNames(const QString& wanted, const QStringList& names) {
  std::vector<std::pair<qsizetype, QString>> near;
  const QString low = wanted.left(100).toLower();
  for (const QString& name : names) {
    const QString other = name.left(100).toLower();
    const bool contains = low.size() > 2 && (other.contains(low) || low.contains(other));
    const qsizetype far = distance(low, other);
    if (contains || far <= std::max<qsizetype>(1, low.size() / 3)) near.emplace_back(far, name);
  }
  std::stable_sort(near.begin(), near.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  QStringList shown;
  for (const auto& [far, name] : near) shown.append(name);
  shown.removeDuplicates();
  if (!shown.isEmpty()) return QStringLiteral("did you mean %1?").arg(listed(shown, mostShown));
  if (names.isEmpty()) return QStringLiteral("there is none");
  return QStringLiteral("there are: ") + listed(names, mostListed);
}

}  // namespace cli
