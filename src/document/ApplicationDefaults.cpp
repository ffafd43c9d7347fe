#include "document/ApplicationDefaults.h"

#include <QStandardPaths>

#include "foundation/archive/KeyedArchive.h"
#include "model/DefaultFont.h"

namespace document {

void registerApplicationDefaults(foundation::UserDefaults& defaults) {
  const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
  const QString movies = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
  const auto white = foundation::KeyedArchive::write(foundation::Color::white());
  defaults.registerDefaults({
      {QStringLiteral("defaultDocumentMode"), QStringLiteral("1080i25 RGBA")},
      {QStringLiteral("imagesLibraryPath"), pictures},
      {QStringLiteral("movieLibraryPath"), movies},
      // Components and documents are looked for where the pictures are until the user says else.
      {QStringLiteral("componentsLibraryPath"), pictures},
      {QStringLiteral("compositionsLibraryPath"), pictures},
      {QStringLiteral("defaultCompositionBackgroundColorData"), white.value_or(QByteArray())},
  });
  model::DefaultFont::registerDefaults(defaults);
}

}  // namespace document
