#pragma once

#include <QListWidget>

#include "store/ObjectContext.h"

namespace app {

/// The steps of a document that can be undone and redone; choosing one goes there.
class HistoryPanel : public QListWidget {
  Q_OBJECT

 public:
  explicit HistoryPanel(QWidget* parent = nullptr);

  /// None shows nothing. Must be told before the context is gone.
  void setContext(store::ObjectContext* context);

 private:
  void showSteps();
  void goTo(int index);

  store::ObjectContext* m_context = nullptr;
  QMetaObject::Connection m_connection;
  bool m_showing = false;
};

}  // namespace app
