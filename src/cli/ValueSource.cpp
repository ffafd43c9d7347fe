#include "cli/ValueSource.h"

#include <QFileInfo>

#include "cli/DocumentLoader.h"
#include "cli/InputAssignment.h"
#include "document/PackageValues.h"
#include "playout/ValueTable.h"

namespace cli {

using playout::InputValues;
using playout::ValueTable;
using Read = tl::expected<ValueSource, LoadFailure>;

namespace {

bool isNamed(const QString& path, const QStringList& endings) {
  return endings.contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
}

bool isTable(const QString& path, int row) {
  return row > 0 ||
         isNamed(path, {QStringLiteral("csv"), QStringLiteral("tsv"), QStringLiteral("txt")});
}

LoadFailure severalRows(const ValueTable& table) {
  const QString rows = table.rowCount() == 1 ? QStringLiteral("1 row")
                                             : QStringLiteral("%1 rows").arg(table.rowCount());
  return {ExitStatus::Usage,
          {QStringLiteral("has %1; --row takes the number of one of them").arg(rows),
           table.path(),
           {}}};
}

Read fromTable(const QString& path, int row, const runtime::CompositionRenderer& renderer) {
  const auto table = ValueTable::fromFile(path);
  if (!table) return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, table.error()});
  if (row > table->rowCount() || (row == 0 && table->rowCount() > 1))
    return tl::unexpected(severalRows(*table));
  const ValueTable::Fit fit = table->fit(InputValues::inputsOf(renderer));
  if (fit.isNone())
    return failed(ExitStatus::Usage,
                  QStringLiteral("none of its columns fits an input; there are: %1")
                      .arg(renderer.inputKeys().join(QStringLiteral(", "))),
                  path);
  const ValueTable::RowValues values = table->assign(std::max(row, 1) - 1, fit);
  if (!values.wrong.empty())
    return tl::unexpected(InputAssignment::told(values.wrong.front().failure));
  ValueSource source{values.json, QFileInfo(path).absolutePath(), path, {}};
  for (const ValueTable::UnusedColumn& unused : fit.unused)
    source.findings.append(QStringLiteral("%1: %2").arg(path, unused.sentence()));
  return source;
}

Read fromSet(const QString& name, const QString& document) {
  const auto package = document::PackageLayout::around(document);
  if (!package) return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, package.error()});
  document::PackageValues values;
  if (const auto read = values.read(*package); !read)
    return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, read.error()});
  const playout::ValueSet* set = values.sets().named(name);
  if (set) return ValueSource{set->values, package->folder(), package->values(), {}};
  const QString names = values.sets().names().join(QStringLiteral(", "));
  return misused(QStringLiteral("'%1' is neither a file nor a set of values of the document; %2")
                     .arg(name, names.isEmpty() ? QStringLiteral("it has none")
                                                : QStringLiteral("it has: ") + names));
}

}  // namespace

Read ValueSource::fromFile(const QString& path, int row,
                           const runtime::CompositionRenderer& renderer) {
  if (isTable(path, row)) return fromTable(path, row, renderer);
  return InputValues::objectFromFile(path)
      .map([&](const QJsonObject& object) {
        return ValueSource{object, QFileInfo(path).absolutePath(), path, {}};
      })
      .map_error([&](const playout::ValueFailure& failure) {
        const auto table = ValueTable::fromFile(path);
        const bool isList = isNamed(path, {QStringLiteral("json")}) && table;
        return isList ? severalRows(*table) : InputAssignment::told(failure);
      });
}

Read ValueSource::read(const QString& word, int row, const QString& played,
                       const runtime::CompositionRenderer& renderer) {
  return isSet(word, row, played) ? fromSet(word, played) : fromFile(word, row, renderer);
}

bool ValueSource::isSet(const QString& word, int row, const QString& played) {
  const QFileInfo info(word);
  const bool isFile = (info.exists() && !info.isDir()) || word.startsWith(QLatin1String("./")) ||
                      row > 0 || !DocumentLoader::isDocument(played);
  return !word.isEmpty() && !isFile;
}

tl::expected<int, LoadFailure> ValueSource::rowFrom(const QString& text) {
  bool isNumber = false;
  const int row = text.toInt(&isNumber);
  if (!isNumber || row < 1)
    return misused(
        QStringLiteral("--row takes the number of a row, from 1 on, not '%1'").arg(text));
  return row;
}

tl::expected<void, LoadFailure> ValueSource::assign(runtime::CompositionRenderer& renderer) const {
  const auto read = InputValues::fromObject(values, renderer, folder);
  if (!read) {
    LoadFailure failure = InputAssignment::told(read.error());
    if (failure.error.file.isEmpty()) failure.error.file = file;
    return tl::unexpected(failure);
  }
  for (const playout::InputValue& input : *read)
    renderer.setValueForInputKey(input.value, input.key);
  return {};
}

}  // namespace cli
