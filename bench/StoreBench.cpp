// One change on a composition of 10 to 10,000 components: what it costs to journal it and to tell
// those concerned, beside the same change to a plain structure. The cost must not depend on how
// many components there are.
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <cstdio>

#include "model/Composition.h"
#include "quartz/QuartzComposition.h"
#include "store/ObjectContext.h"

namespace {

/// A component file with no inputs and one macro.
QString writeComponent(const QString& path) {
  quartz::QuartzComposition file;
  quartz::QuartzPatch* content = file.rootPatch()->addPatchWithClass(QStringLiteral("QCPatch"));
  content
      ->addPatchWithClass(QStringLiteral("QCSplitter"),
                          {{QStringLiteral("portClass"), QStringLiteral("QCGLImagePort")}})
      ->publishOutputPort(QStringLiteral("output"), QStringLiteral("outputImage"));
  content->publishOutputPort(QStringLiteral("outputImage"), QStringLiteral("outputImage"));
  if (!file.writeToFile(path, false)) qFatal("cannot write %s", qPrintable(path));
  return path;
}

double nanosecondsEach(int repetitions, const std::function<void(int)>& operation) {
  QElapsedTimer timer;
  timer.start();
  for (int i = 0; i < repetitions; ++i) operation(i);
  return static_cast<double>(timer.nsecsElapsed()) / repetitions;
}

struct Row {
  double change;
  double undo;
  double drag;
  double observerCalls;
};

Row measure(int count, const QString& componentPath) {
  store::ObjectContext context;
  auto* composition = context.insert(
      std::make_unique<model::Composition>(model::VideoResolution(QStringLiteral("HD 1080i25"))));
  {
    const store::UndoSuspension suspension(context);
    QStringList warnings;
    auto* first = composition->addComponenWithQuartzCompositionFile(componentPath, {}, warnings);
    const auto dictionary = first->dictionaryWithData();
    for (int i = 1; i < count; ++i)
      (void)model::QuartzComponent::createWithDictionaryData(dictionary, *composition, warnings);
  }
  // As an editor would: every row of a list, the canvas and the selection look on.
  qint64 calls = 0;
  std::vector<store::Subscription> subscriptions;
  for (model::QuartzComponent* component : composition->components())
    subscriptions.push_back(
        component->observe(QStringLiteral("drawingFrame"), [&](const store::Change&) { ++calls; }));
  subscriptions.push_back(context.observeChanges([&](const store::ChangeSet&) { ++calls; }));
  model::QuartzComponent* moved = composition->components()[count / 2];
  moved->setSelected(true);
  constexpr int repetitions = 20000;
  Row row{};
  row.change = nanosecondsEach(repetitions, [&](int i) { moved->setOriginX(i + 1); });
  row.observerCalls = static_cast<double>(calls) / repetitions;
  row.undo = nanosecondsEach(repetitions, [&](int) { context.undo(); });
  store::UndoStep step(context, QStringLiteral("Move"));
  row.drag = nanosecondsEach(repetitions, [&](int i) { moved->setOriginX(i + 2); });
  return row;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  const QTemporaryDir folder;
  const QString path = writeComponent(folder.filePath(QStringLiteral("part.qtz")));
  struct Plain {
    double originX = 0;
  };
  std::vector<Plain> plain(10000);
  volatile double sink = 0;
  const double bare = nanosecondsEach(2000000, [&](int i) {
    plain[static_cast<size_t>(i % 10000)].originX = i;
    sink = plain[static_cast<size_t>(i % 10000)].originX;
  });
  std::printf("a plain assignment: %.1f ns\n\n", bare);
  std::printf("%10s %14s %14s %16s %16s\n", "components", "change, ns", "undo, ns", "in a drag, ns",
              "calls a change");
  for (const int count : {10, 100, 1000, 10000}) {
    const Row row = measure(count, path);
    std::printf("%10d %14.0f %14.0f %16.0f %16.1f\n", count, row.change, row.undo, row.drag,
                row.observerCalls);
  }
  return 0;
}
