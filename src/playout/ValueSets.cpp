#include "playout/ValueSets.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

namespace playout {

using foundation::failure;
using foundation::Result;

namespace {

const QString versionKey = QStringLiteral("version");
const QString thumbnailKey = QStringLiteral("thumbnail");
const QString setsKey = QStringLiteral("sets");
const QString nameKey = QStringLiteral("name");
const QString valuesKey = QStringLiteral("values");

constexpr int currentVersion = 1;

bool isControl(QChar character) {
  const auto category = character.category();
  return category == QChar::Other_Control || category == QChar::Separator_Line ||
         category == QChar::Separator_Paragraph;
}

Result<ValueSet> setFrom(const QJsonValue& entry, const QString& file, qsizetype number) {
  const QString place = QStringLiteral("set %1").arg(number);
  const QJsonValue name = entry[nameKey];
  const QJsonValue values = entry[valuesKey];
  if (!entry.isObject() || !name.isString() || !values.isObject())
    return failure(QStringLiteral("a set of values needs a name and an object of values"), file,
                   place);
  if (const auto usable = ValueSets::checkName(name.toString()); !usable)
    return failure(usable.error().message, file, place);
  return ValueSet{name.toString(), values.toObject()};
}

}  // namespace

QStringList ValueSets::names() const {
  QStringList names;
  for (const ValueSet& set : m_sets) names.append(set.name);
  return names;
}

const ValueSet* ValueSets::named(const QString& name) const {
  const auto found = std::find_if(m_sets.begin(), m_sets.end(),
                                  [&](const ValueSet& set) { return set.name == name; });
  return found == m_sets.end() ? nullptr : &*found;
}

std::vector<ValueSet>::iterator ValueSets::find(const QString& name) {
  return std::find_if(m_sets.begin(), m_sets.end(),
                      [&](const ValueSet& set) { return set.name == name; });
}

QString ValueSets::freeName(const QString& name) const {
  if (!named(name)) return name;
  for (int number = 2;; ++number) {
    const QString ending = QStringLiteral(" %1").arg(number);
    const QString free = name.left(longestName - ending.size()) + ending;
    if (!named(free)) return free;
  }
}

Result<void> ValueSets::checkName(const QString& name) {
  if (name.trimmed().isEmpty())
    return failure(QStringLiteral("the name of a set of values is empty"));
  if (name.size() > longestName)
    return failure(
        QStringLiteral("a name of a set of values has at most %1 letters").arg(longestName));
  if (std::any_of(name.begin(), name.end(), isControl))
    return failure(
        QStringLiteral("a name of a set of values holds no line ends or control characters"));
  if (name != name.trimmed())
    return failure(
        QStringLiteral("a name of a set of values neither begins nor ends with a blank"));
  if (name.startsWith(QLatin1String("./")))
    return failure(QStringLiteral("a name of a set of values does not begin with ./"));
  return {};
}

Result<void> ValueSets::add(const ValueSet& set) {
  if (named(set.name))
    return failure(QStringLiteral("there is a set of values called '%1' already").arg(set.name));
  return put(set);
}

Result<void> ValueSets::put(const ValueSet& set) {
  if (auto usable = checkName(set.name); !usable) return usable;
  if (const auto present = find(set.name); present != m_sets.end())
    *present = set;
  else
    m_sets.push_back(set);
  return {};
}

bool ValueSets::remove(const QString& name) {
  const auto present = find(name);
  if (present == m_sets.end()) return false;
  m_sets.erase(present);
  if (m_thumbnailName == name) m_thumbnailName.clear();
  return true;
}

Result<void> ValueSets::rename(const QString& from, const QString& to) {
  const auto present = find(from);
  if (present == m_sets.end())
    return failure(QStringLiteral("there is no set of values called '%1'").arg(from));
  if (from == to) return {};
  if (auto usable = checkName(to); !usable) return usable;
  if (named(to))
    return failure(QStringLiteral("there is a set of values called '%1' already").arg(to));
  present->name = to;
  if (m_thumbnailName == from) m_thumbnailName = to;
  return {};
}

Result<void> ValueSets::setThumbnailName(const QString& name) {
  if (!name.isEmpty() && !named(name))
    return failure(QStringLiteral("there is no set of values called '%1'").arg(name));
  m_thumbnailName = name;
  return {};
}

ValueSets ValueSets::merged(const ValueSets& before, const ValueSets& mine,
                            const ValueSets& theirs) {
  if (before == theirs || mine == theirs) return mine;
  if (before == mine) return theirs;
  const auto sameSet = [](const ValueSet* a, const ValueSet* b) {
    return a && b ? *a == *b : !a && !b;
  };
  ValueSets result = mine;
  for (const ValueSet& other : theirs.m_sets) {
    const ValueSet* own = mine.named(other.name);
    const ValueSet* old = before.named(other.name);
    if (sameSet(&other, old) || sameSet(&other, own)) continue;
    const auto place = result.find(other.name);
    if (place == result.m_sets.end())
      result.m_sets.push_back(other);
    else if (sameSet(own, old))
      *place = other;
    else
      result.m_sets.push_back({result.freeName(other.name), other.values});
  }
  for (const ValueSet& old : before.m_sets)
    if (!theirs.named(old.name) && sameSet(mine.named(old.name), &old)) result.remove(old.name);
  if (mine.m_thumbnailName == before.m_thumbnailName && result.named(theirs.m_thumbnailName))
    result.m_thumbnailName = theirs.m_thumbnailName;
  if (theirs.m_thumbnailName.isEmpty() && mine.m_thumbnailName == before.m_thumbnailName)
    result.m_thumbnailName.clear();
  return result;
}

QByteArray ValueSets::toJson() const {
  QJsonArray sets;
  for (const ValueSet& set : m_sets)
    sets.append(QJsonObject{{nameKey, set.name}, {valuesKey, set.values}});
  QJsonObject all{{versionKey, currentVersion}, {setsKey, sets}};
  if (!m_thumbnailName.isEmpty()) all.insert(thumbnailKey, m_thumbnailName);
  return QJsonDocument(all).toJson();
}

Result<ValueSets> ValueSets::fromJson(const QByteArray& bytes, const QString& file) {
  QJsonParseError parse;
  const QJsonDocument document = QJsonDocument::fromJson(bytes, &parse);
  if (parse.error != QJsonParseError::NoError)
    return failure(parse.errorString(), file, QStringLiteral("byte %1").arg(parse.offset));
  const int version = document[versionKey].toInt();
  if (version > currentVersion)
    return failure(QStringLiteral("was written by a later version of this program"), file);
  if (version < 1 || !document[setsKey].isArray())
    return failure(QStringLiteral("holds no sets of values"), file);
  ValueSets result;
  const QJsonArray entries = document[setsKey].toArray();
  for (const QJsonValue& entry : entries) {
    const auto set = setFrom(entry, file, static_cast<qsizetype>(result.m_sets.size()) + 1);
    if (!set) return tl::unexpected(set.error());
    if (result.named(set->name))
      return failure(QStringLiteral("two sets of values are called '%1'").arg(set->name), file);
    result.m_sets.push_back(*set);
  }
  const QJsonValue thumbnail = document[thumbnailKey];
  if (!thumbnail.isUndefined() && !thumbnail.isString())
    return failure(QStringLiteral("the name of the thumbnail's set is no text"), file);
  if (const auto chosen = result.setThumbnailName(thumbnail.toString()); !chosen)
    return failure(chosen.error().message, file, thumbnailKey);
  return result;
}

}  // namespace playout
