// Frames a second of the canvas while one of twenty components is dragged, from the pointer's event
// to the painted window, beside drawing the whole graphic anew for every event.
#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <cmath>
#include <cstdio>

#include "CanvasGraphic.h"
#include "canvas/CompositionView.h"
#include "canvas/TYZoomScrollView.h"
#include "widgets/TYStyleKit.h"

namespace {

constexpr int frames = 300;

void send(canvas::CompositionView& view, QEvent::Type type, const QPointF& point) {
  const QPointF inView = view.geometryOfPicture().viewPoint(point);
  QMouseEvent event(type, inView, view.mapToGlobal(inView), Qt::LeftButton, Qt::LeftButton,
                    Qt::NoModifier);
  QApplication::sendEvent(&view, &event);
}

enum class Drawn { Changes, Everything };

double framesASecond(canvas::CompositionView& view, const model::QuartzComponent& component,
                     Drawn drawn) {
  const QPointF start = component.drawingFrame().center();
  send(view, QEvent::MouseButtonPress, start);
  QElapsedTimer timer;
  timer.start();
  for (int i = 0; i < frames; ++i) {
    const double angle = 0.05 * i;
    send(view, QEvent::MouseMove,
         start + QPointF(150 * std::sin(angle), 100 * std::sin(2 * angle) + 20));
    if (drawn == Drawn::Everything) {
      view.scene()->componentsLayer().setNeedsDisplay();
      view.scene()->dropGround();
      view.update();
    }
    QApplication::processEvents();
  }
  const double seconds = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
  view.cancelGesture();
  QApplication::processEvents();
  return frames / seconds;
}

void measure(canvas::TYZoomScrollView& scroll, CanvasGraphic& demo, const char* title) {
  canvas::CompositionView& view = *scroll.documentView();
  const model::QuartzComponent* component = demo.component(QLatin1String(title));
  demo.graphic->sendSelectionTo(model::ZOrder::End::Front);
  const double changes = framesASecond(view, *component, Drawn::Changes);
  const double everything = framesASecond(view, *component, Drawn::Everything);
  std::printf("%-14s %6.0f x %-5.0f %12.0f %12.0f\n", title, component->width(),
              component->height(), changes, everything);
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  widgets::TYStyleKit::install(app);
  CanvasGraphic demo;
  canvas::TYZoomScrollView scroll;
  auto* view = new canvas::CompositionView;
  view->setComposition(demo.graphic);
  scroll.setDocumentView(view);
  scroll.resize(1920, 1080);
  scroll.show();
  QApplication::processEvents();
  std::printf("%d components, window 1920 x 1080, zoom to fit %.0f %%\n",
              static_cast<int>(demo.graphic->components().size()),
              static_cast<double>(view->zoomFactor()) * 100);
  std::printf("%-14s %-15s %10s %12s\n", "dragged", "its size", "frames / s", "all anew");
  for (const char* title : {"Clock", "Headline", "Photo", "Strap", "Sky"}) {
    demo.graphic->clearSelection();
    demo.component(QLatin1String(title))->setSelected(true);
    measure(scroll, demo, title);
  }
  view->cleanUp();
  return 0;
}
