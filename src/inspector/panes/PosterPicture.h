#pragma once

#include <QLabel>
#include <QTimer>

namespace inspector {

class InspectorContext;

/// The poster frame as the saved document will have it. Making it plays the graphic up to its time,
/// so it waits until nothing is edited, and is made anew only for another time or format, and when
/// it comes into sight.
class PosterPicture : public QLabel {
  Q_OBJECT

 public:
  explicit PosterPicture(InspectorContext& context);

  void refresh();
  /// Makes it now.
  void update();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  InspectorContext& m_context;
  QTimer m_timer;
  QString m_shown;  ///< what the picture is of
};

}  // namespace inspector
