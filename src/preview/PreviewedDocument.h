#pragma once

#include <QObject>
#include <QTimer>

#include "document/CompositionDocument.h"

namespace preview {

/// The document whose export is shown, for as long as it is open: knows whether it has become
/// another one since, and can ask to be shown again while it is edited.
class PreviewedDocument : public QObject {
  Q_OBJECT

 public:
  explicit PreviewedDocument(QObject* parent = nullptr);

  /// As it is now; the document is not owned and must be let go before it is gone.
  void show(document::CompositionDocument& document);
  void letGo();
  /// None after letGo().
  [[nodiscard]] document::CompositionDocument* document() const { return m_document; }
  /// What it is now is what is shown.
  void noteShown(std::chrono::milliseconds cost);
  [[nodiscard]] bool isOutdated() const { return m_isOutdated; }
  /// Asks for each edit to be shown.
  void setFollows(bool follows);
  [[nodiscard]] bool follows() const { return m_follows; }

 Q_SIGNALS:
  void outdatedChanged(bool outdated);
  /// Soon after an edit, at most a few times a second, and only while it follows.
  void showRequested();

 private:
  void observe();
  void takeChange();
  void checkSoon();
  void check();
  void setOutdated(bool outdated);

  document::CompositionDocument* m_document = nullptr;
  store::Subscription m_replacement;  ///< of its objects by others
  store::Subscription m_changes;
  QMetaObject::Connection m_history;
  bool m_historyMoved = false;
  bool m_isChecking = false;
  int m_shownIndex = 0;  ///< in the history
  bool m_isOutdated = false;
  bool m_follows = false;
  QTimer m_soon;
};

}  // namespace preview
