#pragma once

#include <QCoreApplication>
#include <functional>

class QWidget;

namespace widgets {

/// Asks for a file with the desktop's own dialog, over the window that the widget is in.
class FileChooser {
  Q_DECLARE_TR_FUNCTIONS(FileChooser)

 public:
  enum Kind { Images, Movies, Tables, AnyFile };

  /// Calls back with the path unless it was cancelled or the widget is gone. Starts in
  /// the folder, or where the file is, that the path names.
  static void open(QWidget& beside, const QString& title, Kind kind, const QString& presentPath,
                   const std::function<void(const QString& path)>& chosen);

 private:
  [[nodiscard]] static QString filter(Kind kind);
};

}  // namespace widgets
