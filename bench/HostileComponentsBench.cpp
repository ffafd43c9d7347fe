// The longest time for which the canvas takes no input while a component is on it that never comes
// to its end, draws far too much or is enormous; and how long adding it takes.
#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

#include "CanvasGraphic.h"
#include "canvas/CompositionView.h"
#include "canvas/TYZoomScrollView.h"
#include "quartz/QuartzComposition.h"
#include "widgets/TYStyleKit.h"

namespace {

using quartz::QuartzComposition;
using quartz::QuartzPatch;

constexpr int observed = 5000;  // milliseconds

QString q(const char* text) {
  return QString::fromLatin1(text);
}

void addScript(QuartzComposition& file, const char* loop) {
  QuartzPatch& root = *file.rootPatch();
  const QString text =
      q("function (__number side) main (__number time) { %1 return {side: 1}; }").arg(q(loop));
  QuartzPatch* time = root.addPatchWithClass(q("QCPatchTime"));
  QuartzPatch* script =
      root.addPatchWithClass(q("QCJavaScript"), {{q("script"), text}, {q("newMode"), 1}}, {});
  QuartzPatch* sprite = root.addPatchWithClass(q("QCSprite"));
  root.addConnectionFromComponent(time->key(), q("outputTime"), script->key(), q("time"));
  root.addConnectionFromComponent(script->key(), q("side"), sprite->key(), q("inputWidth"));
}

void addSprites(QuartzComposition& file, int count, double side) {
  for (int i = 0; i < count; ++i)
    file.rootPatch()->addPatchWithClass(
        q("QCSprite"), {},
        {{q("inputWidth"), side}, {q("inputHeight"), side}, {q("inputBlending"), 1}});
}

void addChain(QuartzComposition& file, int count) {
  QuartzPatch& root = *file.rootPatch();
  QString before;
  for (int i = 0; i < count; ++i) {
    QuartzPatch* math = root.addPatchWithClass(q("QCMath"), {{q("numberOfOperations"), 1}}, {});
    if (i > 0)
      root.addConnectionFromComponent(before, q("outputNumber"), math->key(), q("inputNumber"));
    before = math->key();
  }
  QuartzPatch* sprite = root.addPatchWithClass(q("QCSprite"));
  root.addConnectionFromComponent(before, q("outputNumber"), sprite->key(), q("inputWidth"));
}

struct Hostile {
  const char* name;
  void (*make)(QuartzComposition&);
};

constexpr Hostile hostiles[] = {
    {"nothing", nullptr},
    {"a script that never ends", [](QuartzComposition& f) { addScript(f, "while (true) {}"); }},
    {"a script of about half a second",
     [](QuartzComposition& f) {
       addScript(f, "var n = 0; for (var i = 0; i < 1e7; i++) n += i % 7;");
     }},
    {"2,000 sprites over all", [](QuartzComposition& f) { addSprites(f, 2000, 2); }},
    {"50,000 small sprites", [](QuartzComposition& f) { addSprites(f, 50'000, 0.05); }},
    {"50,000 nodes in a row", [](QuartzComposition& f) { addChain(f, 50'000); }},
};

/// The longest pause of the event loop, which is kept awake.
qint64 longestPause(canvas::CompositionView& view, model::QuartzComponent* dragged) {
  QElapsedTimer all;
  QElapsedTimer pause;
  qint64 longest = 0;
  all.start();
  pause.start();
  for (int i = 0; all.elapsed() < observed; ++i) {
    if (i % 10 == 0 && dragged) dragged->setOriginX(100 + i % 400);
    QApplication::processEvents(QEventLoop::AllEvents, 1);
    longest = std::max(longest, pause.restart());
  }
  Q_UNUSED(view)
  return longest;
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  widgets::TYStyleKit::install(app);
  QTemporaryDir folder;
  std::printf("%-36s %10s %14s  %s\n", "with", "added in", "longest pause", "mark");
  for (const Hostile& hostile : hostiles) {
    CanvasGraphic demo;
    canvas::TYZoomScrollView scroll;
    auto* view = new canvas::CompositionView;
    view->setComposition(demo.graphic);
    scroll.setDocumentView(view);
    scroll.resize(1920, 1080);
    scroll.show();
    QApplication::processEvents();
    QElapsedTimer adding;
    adding.start();
    if (hostile.make) {
      QuartzComposition file;
      hostile.make(file);
      const QString path = folder.filePath(q("hostile.qtz"));
      QStringList warnings;
      if (!file.writeToFile(path, false)) return 1;
      adding.start();
      demo.graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
      if (!warnings.isEmpty()) std::printf("%s\n", qPrintable(warnings.join(u'\n')));
    }
    const qint64 added = adding.elapsed();
    const qint64 pause = longestPause(*view, demo.component(QLatin1String("Clock")));
    const auto& marks = view->scene()->componentsLayer().brokenMarks();
    std::printf("%-36s %7lld ms %11lld ms  %s\n", hostile.name, added, pause,
                marks.isEmpty() ? "" : qPrintable(marks.first().text()));
    std::fflush(stdout);
    view->cleanUp();
  }
  return 0;
}
