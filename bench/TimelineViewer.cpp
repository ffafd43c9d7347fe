// Shows a graphic in the timeline, for looking at it: timeline_viewer [light] [WORD…].
// "folder=PATH" takes every composition file of a folder as a component, "broken" takes a file
// away, "empty" removes all, "expand" opens all rows. With "shot=FILE" it writes a picture of the
// window and ends.
#include <QApplication>
#include <QDir>
#include <QTimer>

#include "TimelineGraphic.h"
#include "timeline/TYTimelineView.h"
#include "widgets/TYStyleKit.h"

namespace {

void addFolder(TimelineGraphic& demo, const QString& folder) {
  for (const QFileInfo& file :
       QDir(folder).entryInfoList({QStringLiteral("*.qtz")}, QDir::Files, QDir::Name)) {
    QStringList warnings;
    if (auto* made =
            demo.graphic->addComponenWithQuartzCompositionFile(file.filePath(), {}, warnings))
      made->setTitle(file.completeBaseName());
    for (const QString& warning : warnings) qWarning("%s", qPrintable(warning));
  }
  demo.graphic->clearSelection();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  widgets::TYStyleKit::install(app);
  const QStringList words = app.arguments().mid(1);
  widgets::TYStyleKit::shared().setAppearance(words.contains(QStringLiteral("light"))
                                                  ? widgets::TYStyleKit::Appearance::Light
                                                  : widgets::TYStyleKit::Appearance::Dark);
  TimelineGraphic demo;
  timeline::TYTimelineView view;
  QString shot;
  for (const QString& word : words) {
    if (word.startsWith(QLatin1String("folder="))) addFolder(demo, word.mid(7));
    if (word.startsWith(QLatin1String("shot="))) shot = word.mid(5);
    if (word == QLatin1String("broken"))
      demo.component(QStringLiteral("Score Box"))
          ->setStoredValue(QByteArray(), QStringLiteral("quartzCompositionData"));
    if (word == QLatin1String("empty"))
      demo.graphic->removeComponents(demo.graphic->componentArray());
    if (word == QLatin1String("expand"))
      for (auto* component : demo.graphic->components()) component->setExpanded(true);
  }
  demo.context.clearHistory();
  view.setComposition(demo.graphic);
  const QStringList size =
      qEnvironmentVariable("TIMELINE_SIZE", QStringLiteral("1580x244")).split(u'x');
  view.resize(size[0].toInt(), size[1].toInt());
  view.show();
  view.setFocus();
  if (!shot.isEmpty())
    QTimer::singleShot(700, &app, [&] {
      view.grab().save(shot);
      app.quit();
    });
  const int status = app.exec();
  view.cleanUp();
  return status;
}
