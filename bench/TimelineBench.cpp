// Frames a second of the timeline with 200 components of 20 key frames each, all open: while it is
// scrolled, zoomed, and while 100 selected key frames are dragged; the pixels that playing paints;
// and what is kept for rows. Beside it a stock graphics view of as many items does the same.
#include <QApplication>
#include <QElapsedTimer>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QScrollBar>
#include <cmath>
#include <cstdio>
#include <functional>

#include "model/Composition.h"
#include "model/StandardComponents.h"
#include "store/ObjectContext.h"
#include "timeline/TYTimelineRulerView.h"
#include "timeline/TYTimelineScrollView.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TYTimelneClipView.h"
#include "widgets/TYStyleKit.h"

namespace {

constexpr int components = 200;
constexpr int keyFrames = 20;
constexpr int frames = 240;
constexpr double duration = 20;
constexpr double rowHeight = timeline::TimelineMeasures::componentHeight;
constexpr double second = 130;

/// Calls with the number of each frame and waits until it is painted.
double framesASecond(const std::function<void(int)>& frame) {
  QElapsedTimer timer;
  timer.start();
  for (int i = 0; i < frames; ++i) {
    frame(i);
    QApplication::processEvents();
  }
  return frames * 1e9 / static_cast<double>(timer.nsecsElapsed());
}

double timeOf(int keyFrame) {
  return 1 + keyFrame * (duration - 2) / keyFrames;
}

void fill(model::Composition& graphic) {
  const auto path = model::StandardComponents::located().pathOf(QStringLiteral("Text"));
  if (!path) qFatal("the standard components are missing");
  for (int i = 0; i < components; ++i) {
    QStringList warnings;
    auto* made = graphic.addComponenWithQuartzCompositionFile(*path, {}, warnings);
    made->setTitle(QStringLiteral("Component %1").arg(i));
    made->setEndTime(duration);
    made->setExpanded(true);
    model::Attribute* attribute = made->attributeForKey(QStringLiteral("originX"));
    attribute->setAnimateable(true);
    for (int k = 0; k < keyFrames; ++k)
      attribute->setValueForTimepoint(std::sin(k + i) * 500, timeOf(k));
  }
  graphic.clearSelection();
}

/// The same rows as items of a scene.
void fill(QGraphicsScene& scene, int rows, int rowsOfComponent) {
  QPolygonF diamond;
  diamond << QPointF(0, -5) << QPointF(5, 0) << QPointF(0, 5) << QPointF(-5, 0);
  for (int row = 0; row < rows; ++row) {
    const double y = row * rowHeight;
    scene.addRect(0, y, duration * second, rowHeight, QPen(Qt::NoPen),
                  row % 2 != 0 ? QColor(31, 32, 37) : QColor(27, 28, 32));
    if (row % rowsOfComponent == 0)
      scene.addRect(0, y + 2, duration * second, rowHeight - 4, QPen(Qt::NoPen),
                    QColor(103, 108, 131));
    if (row % rowsOfComponent != rowsOfComponent - 1) continue;
    for (int k = 0; k < keyFrames; ++k) {
      auto* item = scene.addPolygon(diamond, QPen(Qt::NoPen), QColor(189, 193, 206));
      item->setPos(timeOf(k) * second, y + rowHeight / 2);
      item->setFlag(QGraphicsItem::ItemIsSelectable);
    }
  }
}

void tell(const char* what, double ours, double rivals) {
  std::printf("%-34s %10.0f %14.0f\n", what, ours, rivals);
}

void send(QWidget& widget, QEvent::Type type, const QPointF& point) {
  QMouseEvent event(type, point, widget.mapToGlobal(point), Qt::LeftButton, Qt::LeftButton,
                    Qt::NoModifier);
  QApplication::sendEvent(&widget, &event);
}

double ourDrag(timeline::TYTimelineView& view, model::Composition& graphic) {
  // A hundred key frames: five of each of twenty components from the top.
  model::Attribute* first = nullptr;
  graphic.deselectAllKeyFrames();
  int marked = 0;
  for (model::QuartzComponent* component : graphic.componentsSortedByInverseZLevel()) {
    if (marked++ >= 20) break;
    model::Attribute* attribute = component->attributeForKey(QStringLiteral("originX"));
    if (!first) first = attribute;
    for (int k = 0; k < 5; ++k)
      attribute->setTimePointSelected(model::roundedTimepoint(timeOf(3 + k)), true);
  }
  const int row = view.rows().rowOf(*first);
  view.revealRow(row);
  QWidget& clip = view.scrollView().clipView();
  const QPointF start = view.timelineGeometry().keyFrameRect(timeOf(3), row).center() -
                        view.timelineGeometry().visibleOrigin();
  send(clip, QEvent::MouseButtonPress, start);
  const double result = framesASecond([&](int i) {
    send(clip, QEvent::MouseMove, start + QPointF(80 * std::sin(0.05 * i) + 10, 0));
  });
  view.setFocus();
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  view.press(escape);
  return result;
}

double rivalDrag(QGraphicsView& rival) {
  rival.verticalScrollBar()->setValue(0);
  rival.horizontalScrollBar()->setValue(0);
  QList<QGraphicsItem*> dragged;
  for (QGraphicsItem* item : rival.scene()->items(Qt::AscendingOrder))
    if (item->flags().testFlag(QGraphicsItem::ItemIsSelectable) && dragged.size() < 100)
      dragged.append(item);
  double last = 0;
  return framesASecond([&](int i) {
    const double x = 80 * std::sin(0.05 * i) + 10;
    for (QGraphicsItem* item : dragged) item->moveBy(x - last, 0);
    last = x;
  });
}

qint64 painted(const timeline::TYTimelineView& view) {
  return view.scrollView().clipView().paintedPixels() +
         view.scrollView().horizontalRuler().paintedPixels() +
         view.scrollView().verticalRuler().paintedPixels();
}

void measurePlaying(timeline::TYTimelineView& view, model::Composition& graphic) {
  view.zoomAround(0, timeline::TYTimelineGeometry::zoomForUnitWidth(second));
  view.scrollBy({-1e6, -1e6});
  graphic.setEditorTimepoint(0);
  QApplication::processEvents();
  const qint64 before = painted(view);
  const double rate = framesASecond([&](int i) { graphic.setEditorTimepoint(0.04 * (i % 200)); });
  const double each = static_cast<double>(painted(view) - before) / frames;
  std::printf("\nplaying: %.0f frames a second, %.0f of %d pixels painted a frame\n", rate, each,
              view.width() * view.height());
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  widgets::TYStyleKit::install(app);
  store::ObjectContext context;
  model::Composition& graphic = *context.insert(
      std::make_unique<model::Composition>(model::VideoResolution(QStringLiteral("HD 1080i25"))));
  graphic.setDuration(duration);
  {
    const store::UndoSuspension suspension(context);
    fill(graphic);
  }
  const QStringList size =
      qEnvironmentVariable("TIMELINE_SIZE", QStringLiteral("1580x244")).split(u'x');
  timeline::TYTimelineView view;
  view.resize(size[0].toInt(), size[1].toInt());
  view.setComposition(&graphic);
  view.zoomAround(0, timeline::TYTimelineGeometry::zoomForUnitWidth(second));
  view.show();
  QGraphicsScene scene;
  fill(scene, view.rows().count(), view.rows().count() / components);
  QGraphicsView rival(&scene);
  rival.resize(view.size());
  rival.setAlignment(Qt::AlignLeft | Qt::AlignTop);
  rival.setRenderHint(QPainter::Antialiasing);
  rival.show();
  QApplication::processEvents();
  std::printf("%d components, %d rows, %d key frames each, window %d x %d\n", components,
              view.rows().count(), keyFrames, view.width(), view.height());
  std::printf("%-34s %10s %14s\n", "frames a second", "timeline", "graphics view");
  const double down = framesASecond([&](int i) {
    view.scrollBy({0, i < frames / 2 ? 37.0 : 41.0});
  });
  tell("scrolling down", down,
       framesASecond([&](int i) { rival.verticalScrollBar()->setValue(i * 37); }));
  const double sideways = framesASecond([&](int i) {
    view.scrollBy({i % 80 < 40 ? 11.0 : -11.0, 0});
  });
  tell("scrolling sideways", sideways, framesASecond([&](int i) {
         rival.horizontalScrollBar()->setValue(i % 80 < 40 ? i % 40 * 11 : 440 - i % 40 * 11);
       }));
  const double zooming =
      framesASecond([&](int i) { view.zoomAround(500, 0.5 + 0.45 * std::sin(i * 0.05)); });
  tell("zooming", zooming, framesASecond([&](int i) {
         rival.setTransform(QTransform::fromScale(1 + 0.8 * std::sin(i * 0.05), 1));
       }));
  rival.resetTransform();
  view.zoomAround(0, timeline::TYTimelineGeometry::zoomForUnitWidth(second));
  tell("dragging 100 key frames", ourDrag(view, graphic), rivalDrag(rival));
  measurePlaying(view, graphic);
  std::printf("attributes listed for %d components, of %d\n",
              static_cast<int>(view.rows().listedComponents()), components);
  view.cleanUp();
  return 0;
}
