#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QUrl>
#include <functional>
#include <optional>

#include "foundation/Result.h"
#include "model/CommandReport.h"
#include "model/Playback.h"
#include "model/QuartzComponent.h"
#include "model/Ruler.h"
#include "model/Selection.h"
#include "model/StopFrame.h"
#include "model/VideoResolution.h"
#include "model/ZOrder.h"

namespace store {
struct ChangeSet;
}

namespace model {

/// How the picture behind the components is filled, by the stored codes.
enum class BackgroundMode : qint32 { None = 0, SolidColor = 1, Image = 2 };

/// Names a published key: (component, separator, port name) → key. See Composition::standardKey().
using KeyFactory = std::function<QString(const QuartzComponent& component, const QString& separator,
                                         const QString& port)>;

/// A graphic, the root of a document: components on the canvas of a video format, stop frames,
/// guide lines, background. Owns them all. Times are seconds. What is only for editing (editor
/// time, selection, playback, zoom) is neither stored nor undone.
class Composition : public store::ManagedObject {
  Q_DECLARE_TR_FUNCTIONS(Composition)

 public:
  enum class Background { Exclude, Include };

  struct Declaration : store::Entity {
    Declaration();
    store::Property<qint64> backgroundMode = property<qint64>("backgroundMode");
    store::Property<foundation::Color> backgroundColor =
        property<foundation::Color>("backgroundColor", foundation::Color::white());
    store::Property<QImage> backgroundImage = property<QImage>("backgroundImage");
    store::Property<QString> backgroundMovie = property<QString>("backgroundMovie");
    store::Property<QImage> posterFrameImage = property<QImage>("posterFrameImage");
    store::Property<double> posterFrameTimepoint = property<double>("posterFrameTimepoint", -1);
    store::Property<double> duration = property<double>("duration", 5);
    store::Property<QString> broadcastMode = property<QString>("broadcastMode");
    store::Property<bool> showsRulers = property<bool>("showsRulers");
    store::Property<bool> showsSafeZones = property<bool>("showsSafeZones");
    store::Property<double> editorTimepoint = transient<double>("editorTimepoint");
    store::Property<bool> playMode = transient<bool>("playMode");
    store::Property<qint32> zoomMode = transient<qint32>("zoomMode");
    store::ToMany<QuartzComponent> components =
        toMany<QuartzComponent>("components", store::DeleteRule::Cascade);
    store::ToMany<StopFrame> stopFrames =
        toMany<StopFrame>("stopFrames", store::DeleteRule::Cascade);
    store::ToMany<Ruler> rulers = toMany<Ruler>("rulers", store::DeleteRule::Cascade);
  };
  [[nodiscard]] static const Declaration& declaration();

  /// An empty graphic; insert it into a context before anything else.
  explicit Composition(const VideoResolution& videoResolution);
  ~Composition() override;
  /// Ends every observation.
  void cleanUp();

  [[nodiscard]] const VideoResolution& videoResolution() const { return m_videoResolution; }
  void setVideoResolution(const VideoResolution& resolution);
  [[nodiscard]] const QString& broadcastMode() const { return get(declaration().broadcastMode); }
  [[nodiscard]] double width() const { return m_videoResolution.width(); }
  [[nodiscard]] double height() const { return m_videoResolution.height(); }
  [[nodiscard]] QSizeF size() const { return {width(), height()}; }
  /// Whole ticks a second, as times are snapped to.
  [[nodiscard]] quint64 ticksPerSecond() const { return m_ticksPerSecond; }
  [[nodiscard]] double duration() const { return get(declaration().duration); }
  void setDuration(double duration) { set(declaration().duration, duration); }
  /// Where the exported composition of the document lies; empty before the document was saved.
  [[nodiscard]] const QUrl& fileURL() const { return m_fileURL; }
  void setFileURL(const QUrl& fileURL);

  [[nodiscard]] BackgroundMode backgroundMode() const {
    return static_cast<BackgroundMode>(get(declaration().backgroundMode));
  }
  void setBackgroundMode(BackgroundMode mode) {
    set(declaration().backgroundMode, static_cast<qint64>(mode));
  }
  [[nodiscard]] bool imageBackgroundMode() const {
    return backgroundMode() == BackgroundMode::Image;
  }
  [[nodiscard]] bool solidColorBackgroundMode() const {
    return backgroundMode() == BackgroundMode::SolidColor;
  }
  [[nodiscard]] const foundation::Color& backgroundColor() const {
    return get(declaration().backgroundColor);
  }
  void setBackgroundColor(const foundation::Color& color) {
    set(declaration().backgroundColor, color);
  }
  [[nodiscard]] const QImage& backgroundImage() const { return get(declaration().backgroundImage); }
  void setBackgroundImage(const QImage& image) { set(declaration().backgroundImage, image); }
  /// Path of a movie; takes the image's place in image mode.
  [[nodiscard]] const QString& backgroundMovie() const {
    return get(declaration().backgroundMovie);
  }
  void setBackgroundMovie(const QString& path) { set(declaration().backgroundMovie, path); }
  [[nodiscard]] bool showsRulers() const { return get(declaration().showsRulers); }
  void setShowsRulers(bool shows) { set(declaration().showsRulers, shows); }
  [[nodiscard]] bool showsSafeZones() const { return get(declaration().showsSafeZones); }
  void setShowsSafeZones(bool shows) { set(declaration().showsSafeZones, shows); }
  [[nodiscard]] qint32 zoomMode() const { return get(declaration().zoomMode); }
  void setZoomMode(qint32 mode) { set(declaration().zoomMode, mode); }

  // Components
  /// Types of dragged data that become components: components from elsewhere in the program, files.
  [[nodiscard]] static QStringList supportedDraggedTypes();
  [[nodiscard]] store::ObjectsOf<QuartzComponent> components() const {
    return get(declaration().components);
  }
  [[nodiscard]] QList<QuartzComponent*> componentArray() const { return components().list(); }
  /// Puts a component that belongs to the composition on top of all others and selects only it.
  void addComponent(QuartzComponent& component);
  /// Makes a component of the file and adds it; none, and a warning, when the file cannot be
  /// loaded.
  QuartzComponent* addComponenWithQuartzCompositionFile(const QString& path,
                                                        const InputValues& inputValues,
                                                        QStringList& warnings);
  void removeComponents(const QList<QuartzComponent*>& components);

  // Stacking; the lowest is drawn first.
  [[nodiscard]] QList<QuartzComponent*> componentsSortedByZLevel() const {
    return m_zOrder.sorted();
  }
  [[nodiscard]] QList<QuartzComponent*> componentsSortedByInverseZLevel() const;
  void moveSelectionByLevel(qsizetype step);
  void moveComponents(const QList<QuartzComponent*>& components, qsizetype byLevel);
  void sendForward() { moveSelectionByLevel(1); }
  void sendBackward() { moveSelectionByLevel(-1); }
  void bringSelectionToFront() { sendSelectionTo(ZOrder::End::Front); }
  void sendSelectionToBack() { sendSelectionTo(ZOrder::End::Back); }
  void sendSelectionTo(ZOrder::End end);
  void adjustZLevels(const QList<QuartzComponent*>& ordered);
  /// Nothing, and what to tell the user, unless two components are selected.
  [[nodiscard]] std::optional<CommandReport> swapSelected();

  // Selection
  [[nodiscard]] QList<QuartzComponent*> selectedComponents() const {
    return m_selection.components();
  }
  /// In componentArray().
  [[nodiscard]] QList<qsizetype> selectedComponentsIndexes() const;
  /// Rows in a list that shows the front first, by the levels.
  [[nodiscard]] QList<qsizetype> selectedComponentsIndexesSortedByZLevel() const;
  /// Rows in componentsSortedByInverseZLevel().
  [[nodiscard]] QList<qsizetype> selectionIndexPaths() const;
  void setSelectionIndexPaths(const QList<qsizetype>& rows);
  [[nodiscard]] bool validSelection() const { return !m_selection.isEmpty(); }
  [[nodiscard]] bool isComponentSelected(const QuartzComponent& component) const {
    return m_selection.contains(component);
  }
  [[nodiscard]] QuartzComponent* firstSelected() const { return m_selection.first(); }
  void clearSelection() { m_selection.clear(); }
  void selectAllComponents() { m_selection.set(componentArray()); }
  void sizeToFitSelection();
  void selectionDidChange();
  /// Called by a component whose flag changed, before observers are.
  void followSelectionOf(QuartzComponent& component) { m_selection.follow(component); }

  // What the editor shows
  /// Hides what is not selected; a second time everything is shown again.
  void soloSelectedComponents();
  void showAllComponents();

  // Time
  /// The time that animated attributes are read and written at; kept within the duration.
  [[nodiscard]] double editorTimepoint() const { return get(declaration().editorTimepoint); }
  void setEditorTimepoint(double timepoint);
  /// Brings the time into the composition and to the nearest tick. True when it is then another
  /// than the editor time.
  [[nodiscard]] bool validateEditorTimepoint(double& timepoint) const;
  void setEditorTimepointForNearestTick(double timepoint);
  [[nodiscard]] bool playMode() const { return get(declaration().playMode); }
  void setPlayMode(bool playing);
  void updatePlayTimepoint() { m_playback.update(); }
  [[nodiscard]] Playback& playback() { return m_playback; }

  // Stop frames and key frames
  [[nodiscard]] store::ObjectsOf<StopFrame> stopFrames() const {
    return get(declaration().stopFrames);
  }
  StopFrame* addStopFrame(double timepoint, const QString& triggerInformation = {});
  void removeStopFrame(StopFrame& stopFrame);
  /// None when there is none at the time, to the hundredth of a second.
  [[nodiscard]] StopFrame* stopFrameAtTimepoint(double timepoint) const;
  [[nodiscard]] QList<StopFrame*> stopFramesSortedByTime() const;
  [[nodiscard]] QList<double> stopFrameTimepoints() const;
  /// What systems that list documents are told: size, duration, stop frames, components.
  [[nodiscard]] foundation::PropertyDictionary compositionInfo() const;
  /// {"name", "time"} by ascending time; a stop frame without a name is a "Stopframe".
  [[nodiscard]] foundation::PropertyArray stopFrameDictionaries() const;
  [[nodiscard]] QList<Attribute*> attributesWithSelectedKeyframes() const;
  void deselectAllKeyFrames();
  void sendChangeNotificationForValues();

  // Poster frame
  [[nodiscard]] const QImage& posterFrameImage() const {
    return get(declaration().posterFrameImage);
  }
  void setPosterFrameImage(const QImage& image) { set(declaration().posterFrameImage, image); }
  /// Negative: there is no poster frame time.
  [[nodiscard]] double posterFrameTimepoint() const {
    return get(declaration().posterFrameTimepoint);
  }
  void setPosterFrameTimepoint(double timepoint) {
    set(declaration().posterFrameTimepoint, timepoint);
  }
  /// 1 without a poster frame time, else 0.
  [[nodiscard]] int posterFrameMode() const { return posterFrameTimepoint() >= 0 ? 0 : 1; }
  /// 0 takes the editor time, anything else none.
  void setPosterFrameMode(int mode);

  // Guide lines
  [[nodiscard]] store::ObjectsOf<Ruler> rulers() const { return get(declaration().rulers); }
  /// Shows the guides too.
  Ruler* addRulerAtPosition(double position, bool horizontal);
  void removeRuler(Ruler& ruler);

  /// The component's title, the separator and the port, joined.
  [[nodiscard]] static QString standardKey(const QuartzComponent& component,
                                           const QString& separator, const QString& port);
  /// What is neither alphanumeric nor "_" becomes "_".
  [[nodiscard]] static QString stringByTrimmingInvalidKeyCharacters(const QString& string);
  /// Writes the graphic as one playout composition. Nothing is written on failure.
  [[nodiscard]] foundation::Result<void> exportToPath(
      const QString& path, Background includeBackground,
      const KeyFactory& keyFactory = standardKey) const;

 protected:
  void awakeFromInsert() override;
  void awakeFromFetch() override;
  void valueDidChange(const QString& key) override;

 private:
  void commonSetup();
  void readDefaults();
  void objectsChanged(const store::ChangeSet& changes);
  void zOrderDidChange();
  [[nodiscard]] double snapped(double timepoint) const;

  VideoResolution m_videoResolution;
  quint64 m_ticksPerSecond = 0;
  QUrl m_fileURL;
  Selection m_selection{*this};
  ZOrder m_zOrder{*this};
  Playback m_playback{*this};
  store::Subscription m_contextChanges;
};

}  // namespace model
