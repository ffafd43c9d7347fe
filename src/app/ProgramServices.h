#pragma once

#include <QList>
#include <QString>

namespace document {
class CompositionDocument;
}
namespace foundation {
class UserDefaults;
}

namespace app {

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
  virtual void showPreferences() = 0;
  virtual void showAbout() = 0;
  virtual void showHelp() = 0;
  virtual void quit() = 0;
};

}  // namespace app
