#include <QLineEdit>
#include <QMenu>

#include "TimelineFixture.h"
#include "timeline/AttributeCurve.h"
#include "timeline/InPlaceField.h"
#include "timeline/KeyFramePanel.h"
#include "timeline/TimelineEditors.h"
#include "timeline/TimelineMenu.h"
#include "timeline/TitlePainter.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYTimecodeField.h"

namespace {

using namespace timeline;

class Rows : public TimelineFixture {
 protected:
  [[nodiscard]] QPointF title(int row) const { return {60, row * 24 + 12.0}; }
  [[nodiscard]] QPointF eye(int row) {
    return TitlePainter::eyeRect(view.scene().componentsWidth).center() + QPointF(0, row * 24);
  }
};

TEST_F(Rows, showTheAttributesOfOpenComponents) {
  auto* lower = add(QStringLiteral("Lower"), 0, 5);
  auto* upper = add(QStringLiteral("Upper"), 0, 5);
  EXPECT_EQ(view.rows().count(), 2);
  EXPECT_EQ(view.rows().at(0).component, upper);
  click(Where::Titles, {10, 12});
  QApplication::processEvents();
  EXPECT_TRUE(upper->expanded());
  const int attributes = int(upper->children().size());
  EXPECT_EQ(view.rows().count(), 2 + attributes);
  EXPECT_EQ(view.rows().at(1).attribute, upper->children().first());
  EXPECT_EQ(view.rows().rowOf(*lower), 1 + attributes);
  EXPECT_EQ(view.timelineGeometry().timeAxisSize().height(), (2 + attributes) * 24);
  press(Where::Titles, {10, 12}, Qt::AltModifier);
  QApplication::processEvents();
  EXPECT_EQ(view.rows().count(), 2);
}

TEST_F(Rows, clicksSelectAsTheKeysSay) {
  QList<model::QuartzComponent*> all;
  for (int i = 0; i < 7; ++i) all.prepend(add(QString::number(i), 0, 5));
  const auto selected = [&] {
    QList<int> rows;
    for (int i = 0; i < all.size(); ++i)
      if (all[i]->selected()) rows.append(i);
    return rows;
  };
  click(Where::Rows, inRow(2, 1));
  click(Where::Rows, inRow(5, 1), Qt::ShiftModifier);
  EXPECT_EQ(selected(), (QList<int>{2, 3, 4, 5}));
  click(Where::Rows, inRow(3, 1), Qt::ControlModifier);
  EXPECT_EQ(selected(), (QList<int>{2, 4, 5}));
  click(Where::Titles, title(0), Qt::ControlModifier);
  EXPECT_EQ(selected(), (QList<int>{0, 2, 4, 5}));
  click(Where::Rows, inRow(4, 1));
  EXPECT_EQ(selected(), (QList<int>{0, 2, 4, 5}));
  click(Where::Titles, title(1));
  EXPECT_EQ(selected(), (QList<int>{1}));
  click(Where::Rows, inRow(12, 1));
  EXPECT_TRUE(selected().isEmpty());
}

TEST_F(Rows, clicksOnKeyFramesSelectThemAndTheirComponent) {
  auto* bar = add(QStringLiteral("Bar"), 0, 10);
  auto* opacity = key(*bar, "opacity", {1, 2});
  click(Where::Rows, at(*opacity, 1));
  EXPECT_EQ(opacity->selectedTimepoints(), (QList<double>{1}));
  EXPECT_TRUE(bar->selected());
  click(Where::Rows, at(*opacity, 2), Qt::ControlModifier);
  EXPECT_EQ(opacity->selectedTimepoints(), (QList<double>{1, 2}));
  click(Where::Rows, at(*opacity, 1), Qt::ControlModifier);
  EXPECT_EQ(opacity->selectedTimepoints(), (QList<double>{2}));
  click(Where::Rows, at(*opacity, 1));
  EXPECT_EQ(opacity->selectedTimepoints(), (QList<double>{1}));
  click(Where::Rows, at(*opacity, 7));
  EXPECT_TRUE(opacity->selectedTimepoints().isEmpty());
  EXPECT_FALSE(bar->selected());
}

TEST_F(Rows, eyesHideAndSolo) {
  auto* lower = add(QStringLiteral("Lower"), 0, 5);
  auto* upper = add(QStringLiteral("Upper"), 0, 5);
  press(Where::Titles, eye(0));
  EXPECT_FALSE(upper->visibleInCompositionEditor());
  EXPECT_EQ(undoName(), QStringLiteral("Hide Upper"));
  press(Where::Titles, eye(0));
  EXPECT_TRUE(upper->visibleInCompositionEditor());
  press(Where::Titles, eye(1), Qt::AltModifier);
  EXPECT_FALSE(upper->visibleInCompositionEditor());
  EXPECT_TRUE(lower->visibleInCompositionEditor());
  EXPECT_EQ(undoName(), QStringLiteral("Solo Lower"));
  press(Where::Titles, eye(1), Qt::AltModifier);
  EXPECT_TRUE(upper->visibleInCompositionEditor());
}

TEST_F(Rows, areRenamedInPlace) {
  auto* bar = add(QStringLiteral("Bar"), 0, 5);
  doubleClick(Where::Titles, title(0));
  auto* field = qobject_cast<InPlaceField*>(view.editors().open());
  ASSERT_TRUE(field);
  QTest::keyClicks(field, QStringLiteral("Strap"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(bar->title(), QStringLiteral("Strap"));
  EXPECT_EQ(undoName(), QStringLiteral("Rename"));
  keyPress(Qt::Key_F2);
  field = qobject_cast<InPlaceField*>(view.editors().open());
  ASSERT_TRUE(field);
  QTest::keyClicks(field, QStringLiteral("Nothing"));
  QTest::keyClick(field, Qt::Key_Escape);
  EXPECT_EQ(bar->title(), QStringLiteral("Strap"));
  EXPECT_EQ(steps(), 1);
}

TEST_F(Rows, stopFramesTakeTheirTriggerText) {
  model::StopFrame* stop = graphic->addStopFrame(2);
  settle();
  doubleClick(Where::Ruler, {3 + 600, 5});
  auto* field = qobject_cast<InPlaceField*>(view.editors().open());
  ASSERT_TRUE(field);
  QTest::keyClicks(field, QStringLiteral("Go"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(stop->triggerInformation(), QStringLiteral("Go"));
  EXPECT_EQ(undoName(), QStringLiteral("Change Trigger Text"));
  view.resize(1400, 400);
  view.editors().editTriggerText(*stop);
  field = qobject_cast<InPlaceField*>(view.editors().open());
  const int before = field->x();
  view.scrollBy({100, 0});
  EXPECT_EQ(field->x(), before - 100) << "it stays with its mark";
  QTest::keyClicks(field, QStringLiteral("Now"));
  view.zoomIn();
  view.zoomOut();
  EXPECT_EQ(stop->triggerInformation(), QStringLiteral("Now")) << "zooming drops nothing";
}

TEST_F(Rows, keyFramesAreEditedByDoubleClick) {
  auto* bar = add(QStringLiteral("Bar"), 0, 10);
  auto* x = key(*bar, "originX", {1, 2});
  doubleClick(Where::Rows, at(*x, 1));
  auto* panel = qobject_cast<KeyFramePanel*>(view.editors().open());
  ASSERT_TRUE(panel);
  auto* number = qobject_cast<widgets::TYNumberField*>(panel->valueControl());
  ASSERT_TRUE(number);
  EXPECT_EQ(number->value(), 10);
  QTest::keyClicks(number, QStringLiteral("77"));  // in place of what was there
  QTest::keyClick(number, Qt::Key_Tab);
  QTest::keyClicks(&panel->timeField(), QStringLiteral("+5"));
  QTest::keyClick(&panel->timeField(), Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_FALSE(view.editors().open()) << "one Return is enough";
  EXPECT_NEAR(x->sortedKeyFrames().first(), 1.2, 1e-6);
  EXPECT_EQ(x->valueAtTimepoint(1.2).toNumber(), 77);
  EXPECT_EQ(undoName(), QStringLiteral("Edit Key Frame"));
  EXPECT_EQ(steps(), 1);
  view.editors().editKeyFrame({x, 2});
  panel = qobject_cast<KeyFramePanel*>(view.editors().open());
  ASSERT_TRUE(panel);
  number = qobject_cast<widgets::TYNumberField*>(panel->valueControl());
  QTest::keyClicks(number, QStringLiteral("5"));
  QTest::keyClick(number, Qt::Key_Tab);
  EXPECT_EQ(x->valueForTimepoint(2).toNumber(), 5);
  panel->drop();
  EXPECT_EQ(x->valueForTimepoint(2).toNumber(), 20);
  EXPECT_EQ(steps(), 1);
}

TEST_F(Rows, curvesShowEditorAndPlayout) {
  auto* bar = add(QStringLiteral("Bar"), 0, 10);
  auto* x = key(*bar, "originX", {1, 2});
  const AttributeCurve curve(*x);
  EXPECT_EQ(curve.inEditor(), (QList<QPointF>{{1, 0}, {2, 1}}));
  ASSERT_EQ(curve.inPlayout().size(), 11);
  EXPECT_LT(curve.inPlayout()[2].y(), 0.2);  // it eases in
  EXPECT_NEAR(curve.inPlayout()[5].y(), 0.5, 1e-3);
  x->setValueForTimepoint(10.0, 2);
  EXPECT_TRUE(AttributeCurve(*x).isFlat());
}

TEST_F(Rows, contextMenusAreAboutWhatIsUnderThePointer) {
  auto* bar = add(QStringLiteral("Bar"), 0, 10);
  auto* opacity = key(*bar, "opacity", {1, 2});
  model::StopFrame* stop = graphic->addStopFrame(3);
  settle();
  const auto& scene = view.scene();
  const auto inView = [&](const QPointF& rows) {
    return (rows + QPointF(scene.componentsWidth, TYTimelineGeometry::rulerThickness)).toPoint();
  };
  const auto onKeyFrame = TimelineMenu::targetAt(scene, inView(at(*opacity, 2)));
  EXPECT_TRUE(onKeyFrame.isKeyFrame);
  EXPECT_EQ(onKeyFrame.attribute, opacity);
  EXPECT_EQ(onKeyFrame.time, 2);
  EXPECT_EQ(TimelineMenu::targetAt(scene, inView({903, -17})).stopFrame, stop);
  EXPECT_EQ(TimelineMenu::targetAt(scene, inView(at(*bar, 2))).component, bar);
  QMenu menu;
  TimelineMenu::fill(menu, view, onKeyFrame);
  for (QAction* action : menu.actions())
    if (action->text() == QStringLiteral("Remove Key Frame")) action->trigger();
  EXPECT_EQ(opacity->sortedKeyFrames(), (QList<double>{1}));
  EXPECT_EQ(undoName(), QStringLiteral("Remove Key Frame"));
}

TEST_F(Rows, onlyThoseThatAreSeenAreKept) {
  for (int i = 0; i < 40; ++i) add(QString::number(i), 0, 5)->setExpanded(true);
  settle();
  view.resize(1200, 200);
  view.scrollBy({0, 1e6});
  QApplication::processEvents();
  EXPECT_GT(view.timelineGeometry().visibleOrigin().y(), 1000);
  view.grab();
  EXPECT_LE(view.rows().listedComponents(), 3);
}

TEST_F(Rows, followComponentsThatComeAndGo) {
  auto* bar = add(QStringLiteral("Bar"), 0, 5);
  bar->setExpanded(true);
  QApplication::processEvents();
  const int before = view.rows().count();
  graphic->removeComponents({bar});
  QApplication::processEvents();
  EXPECT_EQ(view.rows().count(), 0);
  graphic.context->undo();
  QApplication::processEvents();
  EXPECT_GE(before, view.rows().count());
  EXPECT_GE(view.rows().count(), 1);
  view.setComposition(nullptr);
  view.grab();
  click(Where::Rows, {100, 12});
  keyPress(Qt::Key_Down);
  EXPECT_EQ(view.rows().count(), 0);
}

}  // namespace
