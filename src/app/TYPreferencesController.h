#pragma once

#include <QDialog>

#include "foundation/UserDefaults.h"

class QFormLayout;
class QVBoxLayout;

namespace app {

/// The window of the user's settings. Every choice counts at once.
class TYPreferencesController : public QDialog {
  Q_OBJECT

 public:
  explicit TYPreferencesController(foundation::UserDefaults& defaults, QWidget* parent = nullptr);

 Q_SIGNALS:
  /// Another format is the one of new documents.
  void defaultFormatChanged();

 private:
  QFormLayout* addSection(QVBoxLayout& column, const QString& title);
  void addNewDocuments(QFormLayout& form);
  void addBackground(QFormLayout& form);
  void addFont(QFormLayout& form);
  void addFolder(QFormLayout& form, const QString& label, const QString& key);
  void addAppearance(QFormLayout& form);

  foundation::UserDefaults& m_defaults;
};

}  // namespace app
