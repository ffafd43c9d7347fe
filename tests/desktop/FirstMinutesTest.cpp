#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QTest>

#include "canvas/CanvasRuler.h"
#include "canvas/CompositionView.h"
#include "desktop/EditorDesk.h"
#include "model/Composition.h"
#include "runtime/CompositionRenderer.h"
#include "widgets/TYSegmentedControl.h"

namespace desktop {

namespace {

using testing::SizeIs;

class FirstMinutesTest : public testing::Test, protected EditorDesk {};

}  // namespace

TEST_F(FirstMinutesTest, AGraphicIsMadeSavedAndFoundAgain) {
  EXPECT_EQ(window().windowTitle(), QStringLiteral("Untitled - 1080i25 RGBA[*]"));

  // A component out of the library, to where the pointer is.
  drag(libraryFile(QStringLiteral("Rectangle")), pixel({960, 700}));
  ASSERT_THAT(graphic().componentArray(), SizeIs(1));
  model::QuartzComponent& bar = *graphic().componentArray().first();
  EXPECT_NEAR(bar.centerH(), 960, 4);
  EXPECT_NEAR(bar.centerV(), 700, 4);

  // A guide out of the ruler at the left; the component snaps to it.
  const auto rulers = window().findChildren<canvas::CanvasRuler*>();
  const auto upright = std::find_if(rulers.begin(), rulers.end(), [](const QWidget* ruler) {
    return ruler->height() > ruler->width();
  });
  ASSERT_NE(upright, rulers.end());
  drag(middleOf(**upright), pixel({300, 540}));
  ASSERT_THAT(graphic().rulers().list(), SizeIs(1));
  const double guide = graphic().rulers().list().first()->position();
  EXPECT_NEAR(guide, 300, 3);
  const QPointF grip(bar.centerH() + 40, bar.centerV() + 20);
  drag(pixel(grip), pixel(grip + QPointF(guide - bar.originX() + 5, -200)));
  EXPECT_EQ(bar.originX(), guide);
  EXPECT_NEAR(bar.centerV(), 500, 6);

  // The handle at the right, then the keys.
  const double width = bar.width();
  const QPointF handle(bar.originX() + bar.width() - 2, bar.centerV());
  drag(pixel(handle), pixel(handle + QPointF(180, 0)));
  EXPECT_NEAR(bar.width(), width + 180, 6);
  const double x = bar.originX();
  key("Right", 3);
  EXPECT_NEAR(bar.originX(), x + 3, 0.01);

  // With Alt the middle stays.
  const double middleOfBar = bar.centerH();
  const double before = bar.width();
  const QPoint edge = pixel({bar.originX() + bar.width() - 2, bar.centerV()});
  perform([&](Hand& h) {
    h.move(edge.x(), edge.y());
    h.hold("alt");
    h.press();
    h.move(edge.x() + 40, edge.y());
    h.release();
    h.letGo("alt");
  });
  EXPECT_GT(bar.width(), before + 60);
  EXPECT_NEAR(bar.centerH(), middleOfBar, 1);

  // A text by the toolbar; copies, aligned, reordered.
  click(tool(QStringLiteral("Text")));
  ASSERT_THAT(graphic().componentArray(), SizeIs(2));
  key("ctrl+d", 2);
  ASSERT_THAT(graphic().componentArray(), SizeIs(4));
  key("ctrl+a");
  const auto controls = window().findChildren<widgets::TYSegmentedControl*>();
  const auto align = std::find_if(controls.begin(), controls.end(), [](const auto* control) {
    return control->count() == 6 && control->segment(0)->toolTip().startsWith(u"Align Left");
  });
  ASSERT_NE(align, controls.end());
  click(middleOf(*(*align)->segment(0)));
  for (const model::QuartzComponent* component : graphic().componentArray())
    EXPECT_EQ(component->originX(), graphic().componentArray().first()->originX());
  click(pixel({bar.centerH() + 60, bar.originY() + 8}));
  key("ctrl+shift+bracketleft");
  EXPECT_EQ(graphic().componentsSortedByZLevel().first(), &bar);

  // Everything back, and again.
  key("ctrl+z", 12);
  EXPECT_THAT(graphic().componentArray(), SizeIs(0));
  key("ctrl+shift+z", 12);
  EXPECT_THAT(graphic().componentArray(), SizeIs(4));

  // Background and zoom.
  openMenu(QStringLiteral("Edit"));
  choose(openedMenu(), QStringLiteral("Background"));
  const QImage red = [] {
    QImage image(64, 36, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
  }();
  ASSERT_TRUE(red.save(path("red.png")));
  choose(openedMenu(), QStringLiteral("Image"));
  giveFile(path("red.png"));
  EXPECT_EQ(graphic().backgroundMode(), model::BackgroundMode::Image);
  const auto zoom = view().zoomFactor();
  const QPoint middle = pixel({960, 540});
  perform([&](Hand& h) {
    h.move(middle.x(), middle.y());
    h.hold("ctrl");
    h.wheel(2);
    h.letGo("ctrl");
  });
  EXPECT_GT(view().zoomFactor(), zoom);
  openMenu(QStringLiteral("View"));
  choose(openedMenu(), QStringLiteral("Fit"));
  EXPECT_EQ(graphic().zoomMode(), 0);

  // Saved, closed, found in the recent files, exported.
  key("ctrl+s");
  giveFile(path("strap"));
  const QString package = path("strap.composition");
  ASSERT_TRUE(QFileInfo::exists(package + QStringLiteral("/data.xml")));
  EXPECT_FALSE(window().isWindowModified());
  click(pixel({-40, 540}));  // without a window manager nobody gives the keyboard back
  key("ctrl+n");
  ASSERT_THAT(editor().controller().documents(), SizeIs(2));
  editor().windowOf(*editor().controller().documents().first())->close();
  waitFor([this] { return editor().controller().documents().size() == 1; }, "a document to close");
  useWindow();
  openMenu(QStringLiteral("File"));
  choose(openedMenu(), QStringLiteral("Open Recent"));
  choose(openedMenu(), package);
  waitFor([this] { return graphic().componentArray().size() == 4; }, "the document to open");
  EXPECT_EQ(window().windowTitle(), QStringLiteral("strap - 1080i25 RGBA[*]"));
  key("ctrl+e");
  giveFile(path("strap.qtz"));
  EXPECT_TRUE(runtime::CompositionRenderer::fromFile(path("strap.qtz"), {}));
}

}  // namespace desktop
