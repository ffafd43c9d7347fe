#include <QDir>
#include <QJsonDocument>
#include <QTemporaryDir>

#include "cli/Console.h"
#include "cli/DocumentLoader.h"
#include "cli/ValueSource.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"
#include "playout/InputValues.h"

namespace cli {

namespace {

using playout::ValueSets;
using Done = EditCommand::Done;

const QString rowOption = QStringLiteral("row");

void addOptions(CommandOptions& options) {
  options.value({rowOption}, QStringLiteral("N"),
                QStringLiteral("with set: the row of a table, from 1 on"));
}

Done done(const foundation::Result<void>& result) {
  if (result) return {};
  return tl::unexpected(LoadFailure{ExitStatus::Usage, result.error()});
}

tl::unexpected<LoadFailure> noSuchSet(const QString& name, const ValueSets& sets) {
  return misused(QStringLiteral("there is no set of values '%1'; the document has: %2")
                     .arg(name, sets.isEmpty() ? QStringLiteral("none")
                                               : sets.names().join(QStringLiteral(", "))));
}

Done list(EditCall&, const ValueSets& sets) {
  for (const playout::ValueSet& set : sets.list())
    Console::print(set.name == sets.thumbnailName() ? set.name + QStringLiteral("  (thumbnail)")
                                                    : set.name);
  return {};
}

Done show(EditCall& call, const ValueSets& sets) {
  const playout::ValueSet* set = sets.named(call.words[1]);
  if (!set) return noSuchSet(call.words[1], sets);
  Console::print(QString::fromUtf8(QJsonDocument(set->values).toJson()).trimmed());
  return {};
}

/// What the values have to fit: the graphic as it is now.
tl::expected<std::unique_ptr<runtime::CompositionRenderer>, LoadFailure> playable(
    const OpenDocument& open) {
  const QTemporaryDir folder;
  const QString exported = folder.filePath(QStringLiteral("Composition.qtz"));
  if (const auto written = DocumentLoader::exportWithSetKeys(*open.document, exported, false);
      !written)
    return tl::unexpected(LoadFailure{ExitStatus::OutputFailed, written.error()});
  auto renderer = runtime::CompositionRenderer::fromFile(exported);
  if (!renderer) return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, renderer.error()});
  return std::move(*renderer);
}

QStringList pictureKeys(const runtime::CompositionRenderer& renderer) {
  QStringList keys;
  for (const runtime::PortAttributes& port : playout::InputValues::inputsOf(renderer))
    if (port.type == runtime::PortType::Image) keys.append(port.key);
  return keys;
}

/// Pictures that the file names from its own folder are to be found from the package, too.
QJsonObject withWholePaths(const ValueSource& source, const QStringList& pictureKeys) {
  QJsonObject values = source.values;
  for (const QString& key : pictureKeys)
    if (const QString name = values.value(key).toString(); !name.isEmpty())
      values[key] = QDir::cleanPath(QDir(source.folder).absoluteFilePath(name));
  return values;
}

Done set(EditCall& call, ValueSets& sets) {
  const bool hasRow = call.options.isSet(rowOption);
  const auto row = hasRow ? ValueSource::rowFrom(call.options.text(rowOption)) : 0;
  if (!row) return tl::unexpected(row.error());
  const auto renderer = playable(*call.document);
  if (!renderer) return tl::unexpected(renderer.error());
  const auto source =
      ValueSource::fromFile(QDir(call.folder).filePath(call.words[2]), *row, **renderer);
  if (!source) return tl::unexpected(source.error());
  if (auto fits = source->assign(**renderer); !fits) return fits;
  for (const QString& finding : source->findings) call.session.addFinding(finding);
  call.document->pictureKeys = pictureKeys(**renderer);
  return done(sets.put({call.words[1], withWholePaths(*source, call.document->pictureKeys)}));
}

Done remove(EditCall& call, ValueSets& sets) {
  if (!sets.remove(call.words[1])) return noSuchSet(call.words[1], sets);
  return {};
}

Done rename(EditCall& call, ValueSets& sets) {
  if (!sets.named(call.words[1])) return noSuchSet(call.words[1], sets);
  return done(sets.rename(call.words[1], call.words[2]));
}

Done thumbnail(EditCall& call, ValueSets& sets) {
  const QString name = call.words.value(1);
  if (!name.isEmpty() && !sets.named(name)) return noSuchSet(name, sets);
  return done(sets.setThumbnailName(name));
}

struct Action {
  const char* word;
  qsizetype fewest;  ///< words after it
  qsizetype most;
  Done (*look)(EditCall& call, const ValueSets& sets);
  Done (*change)(EditCall& call, ValueSets& sets);
};

constexpr Action actions[] = {
    {"list", 0, 0, list, nullptr},     {"show", 1, 1, show, nullptr},
    {"set", 2, 2, nullptr, set},       {"remove", 1, 1, nullptr, remove},
    {"rename", 2, 2, nullptr, rename}, {"thumbnail", 0, 1, nullptr, thumbnail}};

Done run(EditCall& call) {
  const QString word = call.words.value(0, QStringLiteral("list"));
  for (const Action& action : actions) {
    if (word != QLatin1String(action.word)) continue;
    const qsizetype given = std::max<qsizetype>(call.words.size() - 1, 0);
    if (given < action.fewest || given > action.most)
      return misused(QStringLiteral("values %1 takes %2 after it, not %3")
                         .arg(word)
                         .arg(action.fewest == action.most
                                  ? QStringLiteral("%1 words").arg(action.most)
                                  : QStringLiteral("a name or nothing"))
                         .arg(given));
    ValueSets sets = call.document->valueSets();
    if (action.look) return action.look(call, sets);
    auto changed = action.change(call, sets);
    if (changed) call.document->values = sets;
    return changed;
  }
  return misused(
      QStringLiteral("values takes list, show, set, remove, rename or thumbnail, not '%1'")
          .arg(word));
}

}  // namespace

EditCommand valuesCommand() {
  return {
      QStringLiteral("values"),
      QStringLiteral("DOC [list | show NAME | set NAME FILE [--row N] | remove NAME | "
                     "rename NAME NEW | thumbnail [NAME]]"),
      QStringLiteral(
          "Lists and changes the sets of values that a document keeps for its published "
          "inputs:\nrender --values NAME plays with one of them, and the one that is chosen for "
          "it shows in the thumbnail.\nFILE is JSON with one object, or a table (.csv, .tsv, "
          ".txt, or .json with --row)."),
      0,
      3,
      run,
      EditCommand::Document::Read,
      addOptions};
}

}  // namespace cli
