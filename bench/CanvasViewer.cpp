// Shows a graphic in the canvas, for looking at it: canvas_viewer [light] [TITLE…] selects the
// components of these titles; "turn" turns them, "edit" edits their text. "zoom=PERCENT", "chess",
// "broken" and "empty" change what is seen. With "shot=FILE" it writes a picture of the window and
// ends.
#include <QApplication>
#include <QTimer>

#include "CanvasGraphic.h"
#include "canvas/CompositionView.h"
#include "canvas/TYZoomScrollView.h"
#include "widgets/TYStyleKit.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  widgets::TYStyleKit::install(app);
  QStringList titles = app.arguments().mid(1);
  widgets::TYStyleKit::shared().setAppearance(titles.removeAll(QStringLiteral("light")) > 0
                                                  ? widgets::TYStyleKit::Appearance::Light
                                                  : widgets::TYStyleKit::Appearance::Dark);
  CanvasGraphic demo;
  canvas::TYZoomScrollView scroll;
  auto* view = new canvas::CompositionView;
  QString shot;
  int zoom = 0;
  bool rotates = false;
  for (const QString& title : titles) {
    if (title.startsWith(QLatin1String("shot="))) shot = title.mid(5);
    if (title.startsWith(QLatin1String("zoom="))) zoom = title.mid(5).toInt();
    if (title == QLatin1String("broken")) {
      auto* broken = demo.component(QStringLiteral("Score Box"));
      broken->setStoredValue(QByteArray(), QStringLiteral("quartzCompositionData"));
    }
    rotates = rotates || title == QLatin1String("turn");
    if (title == QLatin1String("chess"))
      demo.graphic->removeComponents(
          {demo.component(QStringLiteral("Sky")), demo.component(QStringLiteral("Water"))});
  }
  demo.graphic->setShowsSafeZones(true);
  demo.graphic->addRulerAtPosition(232, true);
  demo.graphic->addRulerAtPosition(120, false);
  for (const QString& title : titles)
    if (auto* component = demo.component(title)) {
      component->setSelected(true);
      if (rotates) component->setZRotation(12);
    }
  view->setComposition(demo.graphic);
  scroll.setDocumentView(view);
  demo.graphic->setZoomMode(zoom);
  demo.graphic->setEditorTimepoint(3.48);
  const QStringList size =
      qEnvironmentVariable("CANVAS_SIZE", QStringLiteral("1280x800")).split(u'x');
  scroll.resize(size[0].toInt(), size[1].toInt());
  scroll.show();
  view->setFocus();
  if (titles.contains(QLatin1String("edit"))) view->editText(*demo.graphic->firstSelected());
  if (titles.contains(QLatin1String("empty")))
    demo.graphic->removeComponents(demo.graphic->componentArray());
  if (!shot.isEmpty())
    QTimer::singleShot(700, &app, [&] {
      scroll.grab().save(shot);
      app.quit();
    });
  const int status = app.exec();
  view->cleanUp();
  return status;
}
