#pragma once

#include <QDialog>

class QStackedWidget;

namespace app {

class ApplicationPage;
class ProgramServices;

/// The window of the user's settings, in tabs. Every choice counts at once.
class TYPreferencesController : public QDialog {
  Q_OBJECT

 public:
  explicit TYPreferencesController(ProgramServices& services, QWidget* parent = nullptr);

 Q_SIGNALS:
  /// Another format is the one of new documents.
  void defaultFormatChanged();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QStackedWidget* m_pages;
  ApplicationPage* m_application;
};

}  // namespace app
