#include "TimelineFixture.h"
#include "foundation/PropertyList.h"
#include "store/StoreSnapshot.h"
#include "timeline/RowSelecting.h"

namespace {

using namespace timeline;

/// Drags everything that can be dragged in one graphic. After Escape, and after undo, it must be
/// the same byte for byte.
class Escape : public TimelineFixture {
 protected:
  Escape() {
    add(QStringLiteral("Other"), 0, 8);
    bar = add(QStringLiteral("Bar"), 1, 3);
    opacity = key(*bar, "opacity", {1, 2, 2.4});
    graphic->addStopFrame(2, QStringLiteral("Go"));
    graphic->addStopFrame(3, QStringLiteral("On"));
    graphic->setEditorTimepoint(0.4);
    settle();
  }
  struct Drag {
    const char* name;  ///< of the undo step; none where nothing is changed
    Where where;
    QPointF from;
    QPointF by;
  };
  [[nodiscard]] std::vector<Drag> drags() {
    return {{"Move Bar", Where::Rows, at(*bar, 2), {333, 0}},
            {"Change Start of Bar", Where::Rows, at(*bar, 1) + QPointF(2, 0), {-150, 0}},
            {"Change End of Bar", Where::Rows, at(*bar, 3) - QPointF(2, 0), {410, 0}},
            {"Move Key Frame", Where::Rows, at(*opacity, 1), {300, 0}},  // onto the next
            {"", Where::Rows, at(*opacity, 0.5), {900, 4}},
            {"Arrange", Where::Titles, {60, 12}, {0, 580}},
            {"Move Stop Frame", Where::Ruler, {3 + 600, 5}, {300, 0}},  // onto the other
            {"Change Duration", Where::Ruler, {3 + 3000 + 4, 5}, {-600, 0}},
            {"", Where::Ruler, {3 + 1500, 15}, {300, 0}}};
  }
  void begin(const Drag& drag) {
    press(drag.where, drag.from);
    for (const double share : {0.2, 0.5, 0.9, 1.0})
      move(drag.where, drag.from + share * drag.by, Qt::ControlModifier);
  }
  [[nodiscard]] QByteArray bytes() const {
    return foundation::PropertyList::toXml(store::storeSnapshot(*graphic.context)).value();
  }
  model::QuartzComponent* bar = nullptr;
  model::Attribute* opacity = nullptr;
};

TEST_F(Escape, leavesEveryByteAsItWas) {
  const QByteArray before = bytes();
  for (const Drag& drag : drags()) {
    SCOPED_TRACE(drag.name);
    begin(drag);
    const bool changesAtOnce = *drag.name && drag.where != Where::Titles;
    EXPECT_EQ(bytes() != before, changesAtOnce);
    keyPress(Qt::Key_Escape);
    release(drag.where, drag.from + drag.by);
    QApplication::processEvents();
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(steps(), 0);
    EXPECT_FALSE(graphic.context->isInStep());
    EXPECT_EQ(graphic->editorTimepoint(), 0.4);
    EXPECT_TRUE(graphic->selectedComponents().isEmpty());
    EXPECT_TRUE(KeyFrameSelection(*graphic.composition).isEmpty());
  }
}

TEST_F(Escape, undoBringsEveryByteBack) {
  const QByteArray before = bytes();
  for (const Drag& drag : drags()) {
    SCOPED_TRACE(drag.name);
    begin(drag);
    release(drag.where, drag.from + drag.by, Qt::ControlModifier);
    QApplication::processEvents();
    EXPECT_EQ(undoName(), QString::fromUtf8(drag.name));
    EXPECT_EQ(steps(), *drag.name ? 1 : 0);
    if (*drag.name) {
      EXPECT_NE(bytes(), before);
      graphic.context->undo();
      QApplication::processEvents();
    }
    EXPECT_EQ(bytes(), before);
    graphic.context->clearHistory();
    RowSelecting::clear(*graphic.composition);
  }
}

TEST_F(Escape, stopFramesStayOnFramesAndApart) {
  graphic->setVideoResolution(model::VideoResolution(QStringLiteral("HD 1080i29.97")));
  bar->setStartTime(1.017);  // between two frames
  settle();
  const QPointF mark(3 + 600, 5);
  press(Where::Ruler, mark);
  move(Where::Ruler, {3 + 304, 5});
  EXPECT_EQ(view.scene().marks.snapTime, 1.017);
  release(Where::Ruler, {3 + 304, 5});
  const double there = graphic->stopFrameTimepoints().first();
  EXPECT_NE(there, 1.017);
  EXPECT_NEAR(there, 1.017, 0.02);
  click(Where::Ruler, {3 + 300 * there, 5});
  EXPECT_TRUE(graphic->stopFrameAtTimepoint(graphic->editorTimepoint())) << "so it can be removed";
  drag({3 + 900, 5}, {3 + 300 * there - 903, 0}, Where::Ruler);
  ASSERT_EQ(graphic->stopFrames().size(), 1);
  EXPECT_EQ(graphic->stopFramesSortedByTime().first()->triggerInformation(), QStringLiteral("On"));
}

}  // namespace
