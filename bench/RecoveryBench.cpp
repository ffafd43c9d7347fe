// What keeping each step for recovery costs: one component of 10 to 10,000, each with a megabyte of
// composition, is moved with and without the journal, beside a bare write of as many bytes to a
// file. The cost must not depend on how many components there are.
#include <fcntl.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <cstdio>

#include "document/recovery/RecoveryJournal.h"
#include "model/Composition.h"
#include "quartz/QuartzComposition.h"

namespace {

constexpr int repetitions = 20000;

/// A component file of about a megabyte.
QString writeComponent(const QString& path) {
  quartz::QuartzComposition file;
  quartz::QuartzPatch* content = file.rootPatch()->addPatchWithClass(QStringLiteral("QCPatch"));
  content
      ->addPatchWithClass(QStringLiteral("QCSplitter"),
                          {{QStringLiteral("portClass"), QStringLiteral("QCGLImagePort")},
                           {QStringLiteral("weight"), QByteArray(1 << 20, 'x')}})
      ->publishOutputPort(QStringLiteral("output"), QStringLiteral("outputImage"));
  content->publishOutputPort(QStringLiteral("outputImage"), QStringLiteral("outputImage"));
  if (!file.writeToFile(path, false)) qFatal("cannot write %s", qPrintable(path));
  return path;
}

double microsecondsEach(const std::function<void(int)>& operation) {
  QElapsedTimer timer;
  timer.start();
  for (int i = 0; i < repetitions; ++i) operation(i);
  return static_cast<double>(timer.nsecsElapsed()) / 1000 / repetitions;
}

double bareWrite(const QString& path, qint64 size) {
  const int file = open(QFile::encodeName(path).constData(), O_CREAT | O_WRONLY | O_APPEND, 0600);
  const QByteArray bytes(size, 'x');
  const double each = microsecondsEach([&](int) {
    if (write(file, bytes.constData(), static_cast<size_t>(size)) != size) qFatal("cannot write");
  });
  close(file);
  return each;
}

void measure(int count, const QString& componentPath, const QTemporaryDir& folder) {
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
  model::QuartzComponent* moved = composition->components()[count / 2];
  const double without = microsecondsEach([&](int i) { moved->setOriginX(i + 1); });
  QElapsedTimer timer;
  timer.start();
  document::RecoveryJournal journal(
      context, document::RecoveryStore(folder.filePath(QStringLiteral("state"))),
      {folder.filePath(QStringLiteral("Bench.composition")), QStringLiteral("Bench")}, "base",
      {[] { return QByteArray(); }});
  const double open = static_cast<double>(timer.nsecsElapsed()) / 1e6;
  timer.start();
  moved->setOriginY(-1);
  const double first = static_cast<double>(timer.nsecsElapsed()) / 1e6;
  const qint64 before = journal.size();
  const double with = microsecondsEach([&](int i) { moved->setOriginX(i + 0.5); });
  const qint64 size = (journal.size() - before) / repetitions;
  const double bare = bareWrite(folder.filePath(QStringLiteral("bare")), size);
  std::printf("%10d %12.1f %12.1f %12.1f %10lld %12.2f %12.2f\n", count, without, with, bare,
              static_cast<long long>(size), open, first);
  journal.close();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  const QTemporaryDir folder;
  const QString path = writeComponent(folder.filePath(QStringLiteral("part.qtz")));
  std::printf("%10s %12s %12s %12s %10s %12s %12s\n", "components", "without, us", "with, us",
              "bare, us", "bytes", "open, ms", "first, ms");
  for (const int count : {10, 100, 1000, 10000}) measure(count, path, folder);
  return 0;
}
