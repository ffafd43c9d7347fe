#pragma once

#include <QWidget>

class QTextBrowser;

namespace app {

/// Shows the user's guide, which comes with the program and needs no network.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  /// The folder holds user-guide.md and its pictures.
  explicit HelpWindow(const QString& folder);

 private:
  QTextBrowser* m_text;
};

}  // namespace app
