#include "app/BackgroundMenu.h"

#include <QColorDialog>

#include "app/ProgramServices.h"
#include "app/TYWindowController.h"
#include "foundation/UserDefaults.h"
#include "model/Composition.h"
#include "store/ObjectContext.h"
#include "widgets/FileChooser.h"

namespace app {

using model::BackgroundMode;
using model::Composition;

namespace {

QString stepName() {
  return TYWindowController::tr("Background");
}

void change(TYWindowController& window, const std::function<void(Composition&)>& apply) {
  if (!window.composition()) return;
  const store::UndoStep step(window.document().context(), stepName());
  apply(*window.composition());
}

void chooseColor(TYWindowController& window) {
  auto* dialog = new QColorDialog(window.composition()->backgroundColor().toQColor(), &window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(TYWindowController::tr("Background Color"));
  QObject::connect(dialog, &QColorDialog::colorSelected, &window, [&window](const QColor& chosen) {
    change(window, [&](Composition& composition) {
      composition.setBackgroundColor(foundation::Color::fromQColor(chosen));
      composition.setBackgroundMode(BackgroundMode::SolidColor);
    });
  });
  dialog->open();
}

void chooseFile(TYWindowController& window, const QString& title, widgets::FileChooser::Kind kind,
                const QString& folderKey, const std::function<void(const QString&)>& taken) {
  widgets::FileChooser::open(window, title, kind,
                             window.services().defaults().value(folderKey).toString(), taken);
}

void chooseImage(TYWindowController& window) {
  chooseFile(window, TYWindowController::tr("Background Image"), widgets::FileChooser::Images,
             QStringLiteral("imagesLibraryPath"), [&window](const QString& path) {
               const QImage image(path);
               if (image.isNull()) {
                 window.showError(TYWindowController::tr("The picture cannot be read"),
                                  {QStringLiteral("is no picture that can be read"), path, {}});
                 return;
               }
               change(window, [&](Composition& composition) {
                 composition.setBackgroundMovie({});
                 composition.setBackgroundImage(image);
                 composition.setBackgroundMode(BackgroundMode::Image);
               });
             });
}

void chooseMovie(TYWindowController& window) {
  chooseFile(window, TYWindowController::tr("Background Movie"), widgets::FileChooser::Movies,
             QStringLiteral("movieLibraryPath"), [&window](const QString& path) {
               change(window, [&](Composition& composition) {
                 composition.setBackgroundMovie(path);
                 composition.setBackgroundMode(BackgroundMode::Image);
               });
             });
}

}  // namespace

void addBackgroundCommands(TYWindowController& window, QMenu& menu) {
  const auto has = [&window] { return window.composition() != nullptr; };
  const auto shows = [&window](BackgroundMode mode, bool movie) {
    return [&window, mode, movie] {
      const Composition* composition = window.composition();
      return composition && composition->backgroundMode() == mode &&
             (mode != BackgroundMode::Image || movie != composition->backgroundMovie().isEmpty());
    };
  };
  ActionTable& actions = window.actions();
  actions.add(menu, {.identifier = QStringLiteral("background none"),
                     .text = TYWindowController::tr("&Chessboard"),
                     .run =
                         [&window] {
                           change(window, [](Composition& composition) {
                             composition.setBackgroundMode(BackgroundMode::None);
                           });
                         },
                     .canRun = has,
                     .isChecked = shows(BackgroundMode::None, false)});
  actions.add(menu, {.identifier = QStringLiteral("background color"),
                     .text = TYWindowController::tr("C&olor…"),
                     .run = [&window] { chooseColor(window); },
                     .canRun = has,
                     .isChecked = shows(BackgroundMode::SolidColor, false)});
  actions.add(menu, {.identifier = QStringLiteral("background image"),
                     .text = TYWindowController::tr("&Image…"),
                     .run = [&window] { chooseImage(window); },
                     .canRun = has,
                     .isChecked = shows(BackgroundMode::Image, false)});
  actions.add(menu, {.identifier = QStringLiteral("background movie"),
                     .text = TYWindowController::tr("&Movie…"),
                     .run = [&window] { chooseMovie(window); },
                     .canRun = has,
                     .isChecked = shows(BackgroundMode::Image, true)});
}

}  // namespace app
