#pragma once

#include <QWidget>
#include <memory>

#include "timeline/KeyFrameSelection.h"
#include "timeline/TYTimelineGeometry.h"

class QGridLayout;

namespace widgets {
class TYTimecodeField;
}

namespace timeline {

/// Edits the value and the time of a key frame beside it. What is set is seen at once; closing
/// keeps it as one undo step, Escape takes it back. Deletes itself when it closes.
class KeyFramePanel : public QWidget {
  Q_OBJECT
 public:
  KeyFramePanel(const KeyFrameReference& keyFrame, const foundation::TimecodeRate& rate,
                QWidget* parent);
  ~KeyFramePanel() override;

  [[nodiscard]] const KeyFrameReference& keyFrame() const { return m_keyFrame; }
  [[nodiscard]] widgets::TYTimecodeField& timeField() const { return *m_time; }
  /// None where values of that type are edited elsewhere.
  [[nodiscard]] QWidget* valueControl() const { return m_value; }
  void keep();
  void drop();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void addTime(QGridLayout& grid);
  void addValue(QGridLayout& grid);
  QWidget* makeNumber();
  QWidget* makeMenu();
  QWidget* makeSwitch();
  QWidget* makeColor();
  QWidget* makeText();
  void setValue(const QVariant& value);
  void moveTo(double time);
  void end(bool keeps);

  class Step;
  KeyFrameReference m_keyFrame;
  foundation::TimecodeRate m_rate;
  std::unique_ptr<Step> m_step;
  widgets::TYTimecodeField* m_time = nullptr;
  QWidget* m_value = nullptr;
  bool m_hasEnded = false;
};

}  // namespace timeline
