#pragma once

#include <QCoreApplication>
#include <functional>

#include "document/SaveOperation.h"

namespace app {

class TYWindowController;

/// Saves, exports and reverts the document of a window, asking for places where they are needed.
class DocumentSaving {
  Q_DECLARE_TR_FUNCTIONS(DocumentSaving)

 public:
  using Done = std::function<void(bool saved)>;

  explicit DocumentSaving(TYWindowController& window) : m_window(window) {}

  /// Where the document lies; asks for a place when it has none.
  void save(Done done = {});
  void saveAs(Done done = {});
  void saveCopy();
  void revert();
  void exportComposition();

 private:
  void write(const QString& path, document::SaveOperation operation, const Done& done);
  void askForPlace(const QString& title, document::SaveOperation operation, Done done);
  void overwriteOrAsk(Done done);

  TYWindowController& m_window;
};

}  // namespace app
