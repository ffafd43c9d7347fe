#include <QElapsedTimer>

#include "CanvasFixture.h"
#include "support/GraphBuilder.h"

namespace canvas {

using model::QuartzComponent;

/// A component whose script does not end while its input "Hang" is 1.
class SlowComponents : public CanvasFixture {
 protected:
  SlowComponents() {
    support::GraphBuilder graph;
    const QString script =
        graph.node(QStringLiteral("QCJavaScript"),
                   {{QStringLiteral("script"),
                     QStringLiteral("function (__number side) main (__number hang) {\n"
                                    "  while (hang == 1) {}\n  return {side: 2};\n}")},
                    {QStringLiteral("newMode"), 1}});
    const QString sprite = graph.node(QStringLiteral("QCSprite"));
    graph.connect(script, QStringLiteral("side"), sprite, QStringLiteral("inputWidth"));
    graph.connect(script, QStringLiteral("side"), sprite, QStringLiteral("inputHeight"));
    graph.publishInput(script, QStringLiteral("hang"), QStringLiteral("Hang"));
    graph.setParameter(QStringLiteral("Hang"), 0.0);
    const auto file = quartz::QuartzComposition::compositionWithDictionary(graph.composition());
    EXPECT_TRUE(file->writeToFile(files.path(QStringLiteral("Slow.qtz")), false));
    QStringList warnings;
    slow = graphic->addComponenWithQuartzCompositionFile(files.path(QStringLiteral("Slow.qtz")), {},
                                                         warnings);
    EXPECT_TRUE(warnings.isEmpty()) << warnings.join(u' ').toStdString();
    slow->setOriginX(100);
    slow->setOriginY(100);
    slow->setWidth(200);
    slow->setHeight(100);
    slow->setSelected(true);
    CompositionLayer& layer = view.scene()->componentsLayer();
    layer.setLimits({.first = 0.2, .next = 0.05, .all = 0.1, .drawing = 10'000, .evaluation = 0.4});
    view.displayIfNeeded();
  }
  void hang(bool hangs) {
    slow->attributeForKey(QStringLiteral("Hang"))->setCurrentValue(hangs ? 1.0 : 0.0);
  }
  [[nodiscard]] const QList<BrokenMark>& marks() {
    return view.scene()->componentsLayer().brokenMarks();
  }
  [[nodiscard]] bool isDrawnAt(const QPointF& point) {
    const QPoint pixel = view.geometryOfPicture().viewPoint(point).toPoint();
    return view.scene()->componentsLayer().image().pixelColor(pixel).alpha() == 255;
  }
  QuartzComponent* slow = nullptr;
};

TEST_F(SlowComponents, AScriptThatDoesNotEndStopsNobodyAndIsMarkedUntilItEnds) {
  ASSERT_TRUE(isDrawnAt({200, 150}));
  hang(true);
  QElapsedTimer timer;
  timer.start();
  view.displayIfNeeded();
  EXPECT_LT(timer.elapsed(), 350);  // and not as long as it may take on its thread
  // What it drew before is still there, and goes where the hand takes it.
  EXPECT_TRUE(isDrawnAt({200, 150}));
  EXPECT_TRUE(marks().isEmpty());
  slow->setOriginX(500);
  view.displayIfNeeded();
  EXPECT_TRUE(isDrawnAt({600, 150}));
  EXPECT_FALSE(isDrawnAt({200, 150}));
  ASSERT_TRUE(QTest::qWaitFor([this] { return marks().size() == 1; }, 5000));
  EXPECT_TRUE(marks()[0].text().contains(QStringLiteral("takes too long: ")));
  EXPECT_FALSE(isDrawnAt({600, 150}));
  // It is left alone now, also by the refresh.
  const qint64 asked = view.scene()->componentsLayer().evaluations();
  view.scene()->componentsLayer().setNeedsDisplay();
  view.displayIfNeeded();
  EXPECT_EQ(view.scene()->componentsLayer().evaluations(), asked);
  hang(false);
  ASSERT_TRUE(QTest::qWaitFor([this] { return marks().isEmpty() && isDrawnAt({600, 150}); }, 5000));
}

TEST_F(SlowComponents, TheViewCanGoWhileAComponentIsBeingAsked) {
  hang(true);
  view.displayIfNeeded();
  view.cleanUp();
  QApplication::processEvents();
}

}  // namespace canvas
