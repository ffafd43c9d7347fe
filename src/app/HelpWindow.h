#pragma once

#include <QDir>
#include <QUrl>
#include <QWidget>

class QTextBrowser;

namespace app {

/// Shows the user's guide and the pages that it leads to. They come with the program and need no
/// network.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  /// The folder holds user-guide.md and its pictures.
  explicit HelpWindow(const QString& folder);

  /// Shows a page of the folder, from a heading on when one is named as links name it.
  void showPage(const QString& page, const QString& heading = {});
  /// The page that was left last; nothing on the first one.
  void goBack();
  [[nodiscard]] const QString& page() const { return m_page; }
  [[nodiscard]] QTextBrowser& text() const { return *m_text; }

 private:
  void follow(const QUrl& link);
  void load(const QString& page);
  void scrollTo(const QString& heading);

  QDir m_folder;
  QTextBrowser* m_text;
  QString m_page;
  QStringList m_left;  ///< pages, the last one last
};

}  // namespace app
