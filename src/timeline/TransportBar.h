#pragma once

#include <QWidget>
#include <vector>

#include "foundation/Result.h"
#include "foundation/Timecode.h"
#include "store/Observation.h"

class QLabel;
class QSlider;
namespace model {
class Composition;
}
namespace widgets {
class TYSegmentedControl;
class TYTimecodeField;
}  // namespace widgets

namespace timeline {

/// The row above the timeline: transport, the editor time as a field that takes typed times and
/// says beside it what is wrong with them, and the zoom of the timeline.
class TransportBar : public QWidget {
  Q_OBJECT
 public:
  explicit TransportBar(QWidget* parent = nullptr);

  /// Follows another composition, or none. It must outlive the bar or be taken away before it ends.
  void setComposition(model::Composition* composition);

  [[nodiscard]] widgets::TYSegmentedControl& controls() const { return *m_controls; }
  [[nodiscard]] widgets::TYTimecodeField& timecodeField() const { return *m_field; }
  [[nodiscard]] QSlider& zoomSlider() const { return *m_zoom; }
  /// From the least zoom to 1. Announces nothing.
  void setZoom(double zoom);
  /// How far the slider goes down; 0 to begin with.
  void setLeastZoom(double zoom);

 Q_SIGNALS:
  void zoomChanged(double zoom);
  /// Typing is through; the keyboard belongs to the timeline again.
  void typingEnded();
  /// What can be done, for the status line; empty: nothing in particular.
  void hintChanged(const QString& hint);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void makeControls();
  void fieldEvent(QEvent& event);
  void makeField();
  QWidget* makeZoom();
  void updatePlayMode();
  void updateTime();
  void updateRate();
  void updateRange();
  [[nodiscard]] foundation::Timecode end() const;
  [[nodiscard]] foundation::Result<double> framesFromText(const QString& text,
                                                          double present) const;

  model::Composition* m_composition = nullptr;
  foundation::TimecodeRate m_rate;
  widgets::TYSegmentedControl* m_controls;
  widgets::TYTimecodeField* m_field;
  QLabel* m_complaint;
  QSlider* m_zoom;
  std::vector<store::Subscription> m_observations;
};

}  // namespace timeline
