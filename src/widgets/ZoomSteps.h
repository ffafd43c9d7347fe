#pragma once

#include <QList>

namespace widgets {

/// The zoom modes that pictures are shown in, in percent; 0 fits the picture into the window.
class ZoomSteps {
 public:
  static constexpr qint32 fit = 0;
  /// In the menu, besides fit.
  [[nodiscard]] static QList<qint32> menuModes() { return {50, 100, 150, 200}; }
  /// The next step up or down from the factor; the last one at the end.
  [[nodiscard]] static qint32 above(double zoomFactor);
  [[nodiscard]] static qint32 below(double zoomFactor);
  /// A mode for any factor, within the steps.
  [[nodiscard]] static qint32 nearest(double zoomFactor);
};

}  // namespace widgets
