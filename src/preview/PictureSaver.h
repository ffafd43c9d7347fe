#pragma once

#include <QCoreApplication>
#include <functional>

#include "foundation/Result.h"
#include "preview/PictureOptions.h"
#include "preview/PicturePool.h"

class QWidget;

namespace preview {

/// Keeps what was played at a moment as a PNG file. Transparent pictures keep their alpha, and of
/// what was put behind them nothing is saved.
class PictureSaver {
  Q_DECLARE_TR_FUNCTIONS(PictureSaver)

 public:
  /// Of interlaced formats: the lines 0, 2, 4, … from the top, or 1, 3, 5, …
  enum class Part { Frame, UpperField, LowerField };
  struct Subject {
    std::shared_ptr<const Picture> picture;
    PictureOptions::Channel channel = PictureOptions::Channel::Picture;
    Part part = Part::Frame;
    QString name = {};  ///< of the graphic, offered for the file
  };
  /// The path that was written, or what went wrong.
  using Told = std::function<void(const foundation::Result<QString>&)>;

  /// Asks for the file over the window that the widget is in, writes without making anybody wait
  /// and tells unless the widget is gone by then. The picture is that of the call.
  static void save(QWidget& beside, const Subject& subject, const Told& told);

  [[nodiscard]] static QImage imageOf(const Subject& subject);
  [[nodiscard]] static foundation::Result<void> write(const QImage& image, const QString& path);

 private:
  static void writeAside(QWidget& beside, const Subject& subject, const QString& path,
                         const Told& told);
  [[nodiscard]] static QString fileName(const Subject& subject);
};

}  // namespace preview
