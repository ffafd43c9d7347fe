#pragma once

#include <QList>
#include <QString>
#include <functional>

namespace document {
class CompositionDocument;
}
namespace foundation {
class UserDefaults;
}

namespace app {

class RenderQueue;

/// What a document window asks of the program around it.
class ProgramServices {
 public:
  virtual ~ProgramServices() = default;
  [[nodiscard]] virtual foundation::UserDefaults& defaults() = 0;
  /// In the format of that name; without one, in the default format.
  virtual void newDocument(const QString& format) = 0;
  virtual void chooseDocuments() = 0;
  virtual void openDocument(const QString& path) = 0;
  [[nodiscard]] virtual QStringList recentDocuments() const = 0;
  virtual void clearRecentDocuments() = 0;
  /// The document lies there now.
  virtual void documentWasSaved(const document::CompositionDocument& document) = 0;
  /// Its window is gone: closes it for good.
  virtual void closeDocument(document::CompositionDocument& document) = 0;
  [[nodiscard]] virtual QList<document::CompositionDocument*> documents() const = 0;
  virtual void showDocument(document::CompositionDocument& document) = 0;
  /// In the preview player, one after the other.
  virtual void runSlideshow() = 0;
  /// What is being rendered into files.
  [[nodiscard]] virtual RenderQueue& renders() = 0;
  /// Whether the window of the document may be closed: asks about changes that are not saved, and
  /// about what the end of the program would end.
  virtual void mayClose(document::CompositionDocument& document,
                        std::function<void(bool)> answered) = 0;
  virtual void showPreferences() = 0;
  virtual void showAbout() = 0;
  virtual void showHelp() = 0;
  virtual void quit() = 0;
};

}  // namespace app
