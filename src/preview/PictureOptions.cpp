#include "preview/PictureOptions.h"

#include <array>

namespace preview {

namespace {

using Backdrop = PictureOptions::Backdrop;

const QString backdropKey = QStringLiteral("previewBackdrop");
const QString safeAreasKey = QStringLiteral("previewShowsSafeAreas");
const QString colorKey = QStringLiteral("previewBackdropColor");
const QString stillKey = QStringLiteral("previewBackdropStill");
const QString movieKey = QStringLiteral("previewBackdropMovie");

/// In the order of the values.
constexpr std::array backdropWords{"own", "chessboard", "color", "still", "movie"};

template <typename Enum, size_t count>
Enum fromWord(const QString& word, const std::array<const char*, count>& words) {
  for (size_t i = 0; i < count; ++i)
    if (word == QLatin1String(words[i])) return static_cast<Enum>(i);
  return {};
}

template <typename Enum, size_t count>
QString wordOf(Enum value, const std::array<const char*, count>& words) {
  return QString::fromLatin1(words[static_cast<size_t>(value)]);
}

}  // namespace

PictureOptions PictureOptions::fromDefaults(const foundation::UserDefaults& defaults) {
  const auto text = [&](const QString& key) { return defaults.value(key).toString(); };
  PictureOptions options{.backdrop = fromWord<Backdrop>(text(backdropKey), backdropWords),
                         .showsSafeAreas = defaults.value(safeAreasKey).toBool(),
                         .still = text(stillKey),
                         .movie = text(movieKey)};
  if (const QColor color(text(colorKey)); color.isValid()) options.color = color;
  return options;
}

void PictureOptions::keep(foundation::UserDefaults& defaults) const {
  defaults.setValue(wordOf(backdrop, backdropWords), backdropKey);
  defaults.setValue(showsSafeAreas, safeAreasKey);
  defaults.setValue(color.name(), colorKey);
  defaults.setValue(still, stillKey);
  defaults.setValue(movie, movieKey);
}

}  // namespace preview
