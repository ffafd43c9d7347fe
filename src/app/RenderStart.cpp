#include "app/RenderStart.h"

#include <QFileInfo>

#include "app/ProgramServices.h"
#include "app/RenderQueue.h"
#include "app/RenderSheet.h"
#include "app/TYWindowController.h"
#include "foundation/UserDefaults.h"
#include "model/Composition.h"
#include "widgets/TYAlert.h"

namespace app {

using widgets::TYAlert;

void RenderStart::ask(TYWindowController& window) {
  const document::CompositionDocument& document = window.document();
  const QString file = document.fileURL().toLocalFile();
  ask(window, RenderChoices::proposed(window.services().defaults(), *window.composition(),
                                      QFileInfo(document.displayName()).completeBaseName(),
                                      file.isEmpty() ? QString() : QFileInfo(file).path()));
}

void RenderStart::ask(TYWindowController& window, const RenderChoices& choices) {
  auto* sheet = new RenderSheet(&window, *window.composition(), choices,
                                window.document().valueSets().names());
  QObject::connect(sheet, &RenderSheet::renderRequested, &window,
                   [&window](const RenderChoices& chosen) { take(window, chosen); });
  sheet->present();
}

void RenderStart::take(TYWindowController& window, const RenderChoices& choices) {
  choices.remember(window.services().defaults());
  const auto present = choices.presentFile();
  if (!present) {
    start(window, choices);
    return;
  }
  const bool isFolder = choices.kind == RenderChoices::Kind::Pictures;
  const QString name = QFileInfo(isFolder ? choices.path : *present).fileName();
  TYAlert::begin(&window,
                 {.title = isFolder ? tr("There are pictures in \"%1\" already").arg(name)
                                    : tr("\"%1\" is there already").arg(name),
                  .text = isFolder ? tr("Pictures of the same names are replaced.")
                                   : tr("Rendering replaces it when it has succeeded."),
                  .kind = TYAlert::Kind::Warning,
                  .list = {},
                  .defaultButton = tr("Replace"),
                  .alternateButton = tr("Cancel"),
                  .otherButton = {},
                  .preferencesKey = {}},
                 [&window, choices](TYAlert::Answer answer) {
                   if (answer == TYAlert::Answer::Default)
                     start(window, choices);
                   else if (window.composition())
                     ask(window, choices);
                 });
}

void RenderStart::start(TYWindowController& window, const RenderChoices& choices) {
  if (!window.composition()) return;
  const auto failed = [&window](const foundation::Error& error) {
    window.showError(tr("The graphic cannot be rendered"), error);
  };
  const auto settings = choices.settings(*window.composition());
  if (!settings) return failed(settings.error());
  RenderQueue& queue = window.services().renders();
  const QString path = RenderQueue::pathOf(*settings);
  if (queue.writes(path))
    return failed(
        {tr("It is being rendered just now. Choose another name, or cancel that."), path, {}});
  auto source = render::RenderSource::fromDocument(window.document(), settings->background);
  if (!source) return failed(source.error());
  const playout::ValueSet* set = window.document().valueSets().named(choices.valueSet);
  queue.add(std::make_unique<render::RenderTask>(std::move(*source), *settings,
                                                 set ? *set : playout::ValueSet()));
}

}  // namespace app
