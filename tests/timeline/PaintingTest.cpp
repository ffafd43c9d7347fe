#include "TimelineFixture.h"
#include "support/GoldenImage.h"

namespace {

using namespace timeline;

class Painting : public TimelineFixture {
 protected:
  /// The rows alone: they hold no text.
  [[nodiscard]] QImage rowsPicture() {
    QApplication::processEvents();
    return view.scrollView().clipView().grab().toImage();
  }
};

TEST_F(Painting, showsBarsKeyFramesAndWhatIsDragged) {
  add(QStringLiteral("Missing"), 0.2, 1.4)
      ->setStoredValue(QByteArray(), QStringLiteral("quartzCompositionData"));
  add(QStringLiteral("Hidden"), 0.1, 1.2)->setVisibleInCompositionEditor(false);
  auto* bar = add(QStringLiteral("Bar"), 0.4, 1.8);
  key(*bar, "opacity", {0.4, 1, 1.6})->setTimePointSelected(1, true);
  for (model::Attribute* attribute : bar->children())
    if (attribute->key() != QLatin1String("opacity")) graphic.context->remove(*attribute);
  graphic->addStopFrame(1.2);
  graphic->setDuration(2);
  graphic->setEditorTimepoint(0.72);
  view.resize(184 + 380, 24 * 4 + 22 + 12);
  view.zoomAround(0, TYTimelineGeometry::zoomForUnitWidth(150));
  QApplication::processEvents();
  const QImage before = rowsPicture();
  support::expectGolden(before, QStringLiteral("timeline-rows"));
  press(Where::Rows, at(*bar, 0.8));
  move(Where::Rows, at(*bar, 0.8) + QPointF(10, 0), Qt::ControlModifier);
  move(Where::Rows, at(*bar, 0.8) + QPointF(15, 0), Qt::ControlModifier);
  support::expectGolden(rowsPicture(), QStringLiteral("timeline-dragging"));
  keyPress(Qt::Key_Escape);
  EXPECT_EQ(rowsPicture(), before);
}

}  // namespace
