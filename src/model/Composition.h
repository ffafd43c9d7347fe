#pragma once

#include <QImage>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"
#include "model/QuartzComponent.h"
#include "model/StopFrame.h"
#include "model/VideoResolution.h"

namespace model {

/// How the picture behind the components is filled, by the stored codes.
enum class BackgroundMode : qint32 { None = 0, SolidColor = 1, Image = 2 };

/// Names a published key: (component, separator, port name) → key. See Composition::standardKey().
using KeyFactory = std::function<QString(const QuartzComponent& component, const QString& separator,
                                         const QString& port)>;

/// A graphic: components on the canvas of a video format, stop frames, background. Owns them all.
/// Times are seconds.
class Composition {
 public:
  enum class Background { Exclude, Include };

  explicit Composition(VideoResolution videoResolution);
  ~Composition();
  Composition(const Composition&) = delete;
  Composition& operator=(const Composition&) = delete;

  [[nodiscard]] const VideoResolution& videoResolution() const { return m_videoResolution; }
  void setVideoResolution(const VideoResolution& resolution) { m_videoResolution = resolution; }
  [[nodiscard]] const QString& broadcastMode() const { return m_videoResolution.title(); }
  [[nodiscard]] double width() const { return m_videoResolution.width(); }
  [[nodiscard]] double height() const { return m_videoResolution.height(); }
  [[nodiscard]] double duration() const { return m_duration; }
  void setDuration(double duration) { m_duration = duration; }
  /// The time that animated attributes are read and written at; kept within the duration.
  [[nodiscard]] double editorTimepoint() const { return m_editorTimepoint; }
  void setEditorTimepoint(double timepoint);
  /// Negative: there is no poster frame time.
  [[nodiscard]] double posterFrameTimepoint() const { return m_posterFrameTimepoint; }
  void setPosterFrameTimepoint(double timepoint) { m_posterFrameTimepoint = timepoint; }

  [[nodiscard]] BackgroundMode backgroundMode() const { return m_backgroundMode; }
  void setBackgroundMode(BackgroundMode mode) { m_backgroundMode = mode; }
  [[nodiscard]] const foundation::Color& backgroundColor() const { return m_backgroundColor; }
  void setBackgroundColor(const foundation::Color& color) { m_backgroundColor = color; }
  [[nodiscard]] const QImage& backgroundImage() const { return m_backgroundImage; }
  void setBackgroundImage(const QImage& image) { m_backgroundImage = image; }
  /// Path of a movie; takes the image's place in image mode.
  [[nodiscard]] const QString& backgroundMovie() const { return m_backgroundMovie; }
  void setBackgroundMovie(const QString& path) { m_backgroundMovie = path; }

  /// On top of all others.
  QuartzComponent* addComponent(std::unique_ptr<QuartzComponent> component);
  /// Makes a component of the file and adds it; none, and a warning, when the file cannot be
  /// loaded.
  QuartzComponent* addComponenWithQuartzCompositionFile(
      const QString& path, const QMap<QString, AttributeValue>& inputValues, QStringList& warnings);
  [[nodiscard]] const std::vector<std::unique_ptr<QuartzComponent>>& components() const {
    return m_components;
  }
  /// The lowest first.
  [[nodiscard]] QList<QuartzComponent*> componentsSortedByZLevel() const;
  [[nodiscard]] QList<QuartzComponent*> componentsSortedByInverseZLevel() const;

  [[nodiscard]] const QList<StopFrame>& stopFrames() const { return m_stopFrames; }
  void addStopFrame(const StopFrame& stopFrame) { m_stopFrames.append(stopFrame); }
  [[nodiscard]] QList<double> stopFrameTimepoints() const;
  /// {"name", "time"} by ascending time; a stop frame without a name is a "Stopframe".
  [[nodiscard]] foundation::PropertyArray stopFrameDictionaries() const;

  /// The component's title, the separator and the port, joined.
  [[nodiscard]] static QString standardKey(const QuartzComponent& component,
                                           const QString& separator, const QString& port);
  /// What is neither alphanumeric nor "_" becomes "_".
  [[nodiscard]] static QString stringByTrimmingInvalidKeyCharacters(const QString& string);
  /// Writes the graphic as one playout composition. Nothing is written on failure.
  [[nodiscard]] foundation::Result<void> exportToPath(
      const QString& path, Background includeBackground,
      const KeyFactory& keyFactory = standardKey) const;

 private:
  VideoResolution m_videoResolution;
  double m_duration = 5;
  double m_editorTimepoint = 0;
  double m_posterFrameTimepoint = -1;
  BackgroundMode m_backgroundMode = BackgroundMode::None;
  foundation::Color m_backgroundColor = foundation::Color::white();
  QImage m_backgroundImage;
  QString m_backgroundMovie;
  std::vector<std::unique_ptr<QuartzComponent>> m_components;
  QList<StopFrame> m_stopFrames;
};

}  // namespace model
