#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include "cli/edit/ComponentSettings.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"
#include "cli/edit/NearNames.h"

namespace cli {

namespace {

const QString titleOption = QStringLiteral("title");
const QString imageComponent = QStringLiteral("ImageComponent");

void addOptions(CommandOptions& options) {
  options.value({titleOption}, QStringLiteral("TEXT"), QStringLiteral("the same as title=TEXT"));
}

QStringList standardNames(const model::StandardComponents& components) {
  QStringList names;
  const QDir folder(components.folder());
  for (const QString& file : folder.entryList({QStringLiteral("*.qtz")}, QDir::Files))
    names.append(QFileInfo(file).completeBaseName());
  names.removeAll(QStringLiteral("Renderer"));  // belongs to the export
  return names;
}

struct Source {
  QString path;
  model::InputValues values = {};
};

/// What "Rectangle", "file.qtz" and "logo.png" stand for.
tl::expected<Source, LoadFailure> sourceOf(const QString& name, const QString& folder,
                                           const model::StandardComponents& components) {
  if (const auto path = components.pathOf(name)) return Source{*path};
  const QString suffix = QFileInfo(name).suffix().toLower();
  const bool isPicture = QImageReader::supportedImageFormats().contains(suffix.toLatin1());
  if (suffix != QLatin1String("qtz") && !isPicture)
    return misused(QStringLiteral("there is no standard component '%1'; %2")
                       .arg(name, nearNames(name, standardNames(components))));
  const AttributeText text(folder);
  const auto path = text.filePath(name);
  if (!path) return tl::unexpected(path.error());
  if (!isPicture) return Source{*path};
  const auto picture = text.picture(name);
  if (!picture) return tl::unexpected(picture.error());
  const auto component = components.pathOf(imageComponent);
  if (!component)
    return failed(ExitStatus::MissingResources, QStringLiteral("holds no ImageComponent"),
                  components.folder());
  return Source{*component, {{QStringLiteral("Image"), *picture}}};
}

EditCommand::Done apply(model::QuartzComponent& component, const EditCall& call) {
  ComponentSettings settings(component, call.folder);
  bool hasX = false;
  bool hasY = false;
  for (const QString& word : call.words.mid(1)) {
    const auto assignment = Assignment::read(word);
    if (!assignment) return tl::unexpected(assignment.error());
    if (auto applied = settings.apply(*assignment); !applied) return applied;
    hasX = hasX || assignment->key == QLatin1String("x");
    hasY = hasY || assignment->key == QLatin1String("y");
  }
  // It was centred in the size that it came with.
  const model::Composition& composition = *component.composition();
  if (!hasX) component.setOriginX((composition.width() - component.width()) / 2);
  if (!hasY) component.setOriginY((composition.height() - component.height()) / 2);
  for (const QString& note : settings.notes()) call.session.addFinding(note);
  return settings.check();
}

EditCommand::Done run(EditCall& call) {
  const auto source =
      sourceOf(call.words[0], call.folder, call.document->document->standardComponents());
  if (!source) return tl::unexpected(source.error());
  QStringList warnings;
  model::QuartzComponent* component =
      call.document->composition().addComponenWithQuartzCompositionFile(source->path,
                                                                        source->values, warnings);
  if (!component) return failed(ExitStatus::InputUnreadable, warnings.join(u' '), source->path);
  if (!source->values.isEmpty()) component->setTitle(QFileInfo(call.words[0]).completeBaseName());
  if (call.options.isSet(titleOption)) component->setTitle(call.options.text(titleOption));
  auto applied = apply(*component, call);
  for (const QString& warning : warnings)
    call.session.addFinding(component->title() + QStringLiteral(": ") + warning);
  return applied;
}

}  // namespace

EditCommand addCommand() {
  return {
      QStringLiteral("add"),
      QStringLiteral("DOC COMPONENT [KEY=VALUE…]"),
      QStringLiteral("Adds a component on top of the others, in the middle unless x and y are "
                     "given. COMPONENT is the name\nof a standard component such as Rectangle, "
                     "a composition file (.qtz) or a picture. KEY is an input of\nthe component "
                     "by its key or label, or one of:\n\n") +
          ComponentSettings::help(),
      1,
      -1,
      run,
      EditCommand::Document::Changed,
      addOptions};
}

}  // namespace cli
