#include <gmock/gmock.h>

#include "ComponentFiles.h"
#include "model/ComponentProgram.h"
#include "runtime/CompositionRenderer.h"
#include "runtime/draw/RasterBackend.h"

namespace model {

namespace {

using FromCenter = ComponentResize::FromCenter;
using Proportional = ComponentResize::Proportional;

class ComponentGeometry : public testing::Test {
 protected:
  void SetUp() override {
    QStringList warnings;
    component = graphic->addComponenWithQuartzCompositionFile(
        files.writeComponent(QStringLiteral("a.qtz"), {}), {}, warnings);
    ASSERT_NE(component, nullptr);
    place(100, 200, 200, 100);
  }
  void place(double x, double y, double width, double height) {
    component->setOriginX(x);
    component->setOriginY(y);
    component->setWidth(width);
    component->setHeight(height);
  }
  QRectF resized(int handle, const QPointF& pointer, Proportional proportional = Proportional::No,
                 FromCenter center = FromCenter::No) {
    place(100, 200, 200, 100);
    component->resizeByMovingHandle(handle, pointer, proportional, center,
                                    component->drawingFrame());
    return component->drawingFrame();
  }

  ComponentFiles files;
  Graphic graphic = emptyGraphic();
  QuartzComponent* component = nullptr;
};

}  // namespace

TEST_F(ComponentGeometry, HandlesLieInsideTheFrameWithItsMargins) {
  component->setMarginX(10);
  component->setMarginY(5);
  const auto rects = component->handles().rects();
  EXPECT_EQ(rects[0], QRectF(90, 195, 220, 110));
  EXPECT_EQ(rects[1], QRectF(90, 195, 8, 8));
  EXPECT_EQ(rects[2], QRectF(90, 246, 8, 8));
  EXPECT_EQ(rects[3], QRectF(90, 297, 8, 8));
  EXPECT_EQ(rects[4], QRectF(196, 297, 8, 8));
  EXPECT_EQ(rects[5], QRectF(196, 195, 8, 8));
  EXPECT_EQ(rects[6], QRectF(302, 195, 8, 8));
  EXPECT_EQ(rects[7], QRectF(302, 246, 8, 8));
  EXPECT_EQ(rects[8], QRectF(302, 297, 8, 8));
}

TEST_F(ComponentGeometry, HitsAreTestedInTheUnrotatedFrameOfWhatIsShown) {
  const auto hit = [&](double x, double y) { return component->handleIndexForLocation({x, y}); };
  EXPECT_EQ(hit(104, 204), 1);
  EXPECT_EQ(hit(96, 204), 9);  // outside, although a grip's centre would be on the edge
  EXPECT_EQ(hit(150, 250), 0);
  EXPECT_EQ(hit(298, 298), 8);
  component->setZRotation(90);
  // Turned by 90 degrees about (200, 250) the frame reaches from (150, 150) to (250, 350).
  EXPECT_EQ(hit(110, 250), 9);
  EXPECT_EQ(hit(200, 340), 0);
  EXPECT_EQ(hit(154, 346), 8);  // the upper right corner is up left now
  component->setZRotation(0);
  component->setVisibleInCompositionEditor(false);
  EXPECT_EQ(hit(150, 250), 9);
  component->setVisibleInCompositionEditor(true);
  component->setStartTime(1);
  EXPECT_EQ(hit(150, 250), 9);
  graphic->setEditorTimepoint(1);
  EXPECT_EQ(hit(150, 250), 0);
}

TEST_F(ComponentGeometry, ResizingByEachSide) {
  EXPECT_EQ(resized(8, {330, 320}), QRectF(100, 200, 230, 120));
  EXPECT_EQ(resized(1, {90, 190}), QRectF(90, 190, 210, 110));
  EXPECT_EQ(resized(3, {110, 310}), QRectF(110, 200, 190, 110));
  EXPECT_EQ(resized(6, {310, 190}), QRectF(100, 190, 210, 110));
  EXPECT_EQ(resized(2, {90, 0}), QRectF(90, 200, 210, 100));
  EXPECT_EQ(resized(4, {0, 310}), QRectF(100, 200, 200, 110));
  EXPECT_EQ(resized(7, {310, 0}, Proportional::No, FromCenter::Yes), QRectF(90, 200, 220, 100));
  // Too narrow: nothing at all; too low: only the height stays.
  EXPECT_EQ(resized(8, {101, 320}), QRectF(100, 200, 200, 100));
  EXPECT_EQ(resized(8, {330, 201}), QRectF(100, 200, 230, 100));
}

TEST_F(ComponentGeometry, ProportionalResizingUsesOneRatioBothWays) {
  // Twice as wide as high: 10 to the right make it 20 higher.
  EXPECT_EQ(resized(8, {310, 300}, Proportional::Yes), QRectF(100, 200, 210, 120));
  EXPECT_EQ(resized(8, {300, 310}, Proportional::Yes), QRectF(100, 200, 220, 110));
  EXPECT_EQ(resized(1, {90, 200}, Proportional::Yes), QRectF(90, 180, 210, 120));
  EXPECT_EQ(resized(7, {310, 0}, Proportional::Yes), QRectF(90, 180, 220, 140));  // from the centre
  place(100, 200, 200, 0);  // no ratio to keep
  component->resizeByMovingHandle(8, {310, 230}, Proportional::Yes, FromCenter::No,
                                  component->drawingFrame());
  EXPECT_EQ(component->drawingFrame(), QRectF(100, 200, 210, 30));
}

TEST_F(ComponentGeometry, DerivedValuesAndPermissions) {
  EXPECT_EQ(component->extentH(), 300);
  EXPECT_EQ(component->extentV(), 300);
  EXPECT_EQ(component->centerH(), 200);
  EXPECT_EQ(component->centerV(), 250);
  component->setOpacityHumanReadable(25);
  EXPECT_EQ(component->opacity(), 0.25);
  component->setOriginX(0.1);
  EXPECT_EQ(component->originX(), static_cast<double>(0.1F));
  component->moveByDelta(5, 0);
  EXPECT_EQ(component->originY(), 200);

  EXPECT_EQ(component->permissionToMove(), 0);
  component->attributeForKey(QStringLiteral("originX"))->setPermissionToChange(true);
  EXPECT_EQ(component->permissionToMove(), -1);
  component->attributeForKey(QStringLiteral("originY"))->setPermissionToChange(true);
  EXPECT_EQ(component->permissionToMove(), 1);
  EXPECT_EQ(component->permissionToResize(), 0);
  EXPECT_EQ(component->nonStandardAttributes().size(), 3);  // margins, visible
  EXPECT_EQ(component->permissionToChangeAttributes(), 0);
  component->attributeForKey(QStringLiteral("marginX"))->setPermissionToChange(true);
  EXPECT_EQ(component->permissionToChangeAttributes(), -1);
}

TEST_F(ComponentGeometry, ConstrainedSidesFollowAndUndoAsOne) {
  component->setConstrainProportions(true);
  component->setHeight(33);
  EXPECT_EQ(component->width(), 66);
  graphic.context->undo();
  EXPECT_EQ(component->drawingFrame(), QRectF(100, 200, 200, 100));
  component->setConstrainProportions(false);
  component->setHeight(0);
  component->setConstrainProportions(true);
  component->setHeight(50);  // no ratio to keep
  EXPECT_EQ(component->height(), 0);
  const QRectF frame = component->drawingFrame();
  component->setConstrainProportions(false);
  component->setWidth(std::nan(""));
  component->setOriginX(1e300);  // beyond single precision
  EXPECT_EQ(component->drawingFrame(), frame);
}

/// A component that yields a picture: a red one of 60 by 40 when no size is asked for.
class DrawnComponent : public ComponentGeometry {
 protected:
  static QImage drawn(QuartzComponent& component, double time) {
    QImage canvas(192, 108, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    runtime::RasterBackend().draw(component.renderForView(canvas.size(), time), canvas);
    return canvas;
  }
};

TEST_F(DrawnComponent, IsPlacedTurnedAndFaded) {
  QImage red(60, 40, QImage::Format_ARGB32);
  red.fill(Qt::red);
  quartz::QuartzComposition file;
  quartz::QuartzPatch* clear = file.rootPatch()->addPatchWithClass(QStringLiteral("QCClear"));
  clear->setKey(QStringLiteral("Wipe"));
  quartz::QuartzPatch* content = file.rootPatch()->addPatchWithClass(QStringLiteral("QCPatch"));
  quartz::QuartzPatch* splitter =
      content->addPatchWithClass(QStringLiteral("QCSplitter"),
                                 {{QStringLiteral("portClass"), QStringLiteral("QCGLImagePort")}});
  splitter->publishPort(QStringLiteral("input"), QStringLiteral("Picture"));
  splitter->publishOutputPort(QStringLiteral("output"), QStringLiteral("outputImage"));
  content->publishPort(QStringLiteral("Picture"), QStringLiteral("Picture"));
  content->publishOutputPort(QStringLiteral("outputImage"), QStringLiteral("outputImage"));
  const QString path = files.path(QStringLiteral("picture.qtz"));
  ASSERT_TRUE(file.writeToFile(path, false));

  QStringList warnings;
  QuartzComponent* picture = graphic->addComponenWithQuartzCompositionFile(
      path, {{QStringLiteral("Picture"), red}}, warnings);
  ASSERT_NE(picture, nullptr) << warnings.join(u' ').toStdString();
  EXPECT_EQ(picture->drawingFrame(), QRectF(930, 520, 60, 40));  // fitted and centred
  EXPECT_EQ(picture->renderer()->inputKeys().filter(QStringLiteral("Picture")).size(), 1);
  EXPECT_FALSE(picture->program()->rootIsRenderInImage());

  picture->setWidth(400);
  picture->setConstrainProportions(true);
  picture->sizeToFit();
  EXPECT_EQ(picture->drawingFrame().size(), QSizeF(60, 40));  // whatever the ratio was
  EXPECT_TRUE(picture->constrainProportions());
  picture->setConstrainProportions(false);

  picture->setOriginX(200);
  picture->setOriginY(100);
  picture->setWidth(400);
  picture->setHeight(200);
  picture->setOpacity(0.5);
  QImage canvas = drawn(*picture, 0);
  EXPECT_NEAR(canvas.pixelColor(40, 108 - 20).alpha(), 127.5, 0.5);
  EXPECT_EQ(canvas.pixelColor(40, 108 - 20).red(), 255);
  EXPECT_EQ(canvas.pixelColor(19, 88).alpha(), 0);
  EXPECT_EQ(canvas.pixelColor(61, 88).alpha(), 0);
  EXPECT_EQ(canvas.pixelColor(40, 108 - 31).alpha(), 0);
  canvas.fill(Qt::blue);
  runtime::RasterBackend().draw(picture->renderForView(canvas.size(), 0), canvas);
  EXPECT_EQ(canvas.pixelColor(19, 88), QColor(Qt::blue));  // its own clear patch wipes nothing
  picture->setZRotation(90);
  canvas = drawn(*picture, 0);
  EXPECT_NEAR(canvas.pixelColor(40, 108 - 35).alpha(), 127.5, 0.5);  // 20 wide, 40 high now
  EXPECT_EQ(canvas.pixelColor(52, 108 - 20).alpha(), 0);
  picture->setVisibleInCompositionEditor(false);
  EXPECT_EQ(drawn(*picture, 0).pixelColor(40, 88).alpha(), 0);
  picture->setVisibleInCompositionEditor(true);
  picture->setStartTime(1);
  EXPECT_EQ(drawn(*picture, 0).pixelColor(40, 88).alpha(), 0);
}

}  // namespace model
