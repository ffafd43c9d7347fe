#include "app/SingleInstance.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLocalServer>
#include <QTemporaryDir>
#include <QThread>

namespace app {

namespace {

/// A runtime folder of its own, which hides whatever editor runs here.
class SingleInstanceTest : public testing::Test {
 protected:
  SingleInstanceTest() { qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit()); }
  ~SingleInstanceTest() override {
    qputenv("XDG_RUNTIME_DIR", before);
    qunsetenv("XDG_ACTIVATION_TOKEN");
  }
  static std::unique_ptr<SingleInstance> make() {
    return std::make_unique<SingleInstance>(QStringLiteral("tessary-test"));
  }
  /// Whether a second start, in a thread of its own, handed its files over.
  static bool start(const QStringList& paths) {
    bool taken = false;
    std::unique_ptr<QThread> second(
        QThread::create([&] { taken = make()->handOverOrListen(paths); }));
    second->start();
    while (!second->wait(10)) QApplication::processEvents();
    return taken;
  }

  const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
  QTemporaryDir folder;
};

TEST_F(SingleInstanceTest, ASecondStartHandsItsFilesOver) {
  const auto first = make();
  ASSERT_FALSE(first->handOverOrListen({}));
  QStringList received;
  QObject::connect(first.get(), &SingleInstance::filesRequested, first.get(),
                   [&](const QStringList& paths) { received = paths; });
  qputenv("XDG_ACTIVATION_TOKEN", "from the desktop");
  EXPECT_TRUE(start({QStringLiteral("/a b.composition"), QStringLiteral("wörk/../ä.composition")}));
  const QString here = QDir::currentPath();
  EXPECT_EQ(received, QStringList({QStringLiteral("/a b.composition"),
                                   here + QStringLiteral("/ä.composition")}));
  EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "from the desktop");

  // Another person, or another session of the same one.
  const QTemporaryDir other;
  qputenv("XDG_RUNTIME_DIR", other.path().toLocal8Bit());
  EXPECT_FALSE(start({}));
}

TEST_F(SingleInstanceTest, WhatAKilledProgramLeftBehindIsTakenOver) {
  QString socket;
  {
    const auto killed = make();
    ASSERT_FALSE(killed->handOverOrListen({}));
    const QDir runtime(folder.path());
    socket = runtime.filePath(
        runtime.entryList({QStringLiteral("tessary-test*")}, QDir::System).value(0));
    ASSERT_TRUE(QFile::rename(socket, socket + QStringLiteral(".kept")));
  }
  ASSERT_TRUE(QFile::rename(socket + QStringLiteral(".kept"), socket));
  const auto first = make();
  ASSERT_FALSE(first->handOverOrListen({}));
  EXPECT_TRUE(start({}));
}

TEST_F(SingleInstanceTest, OfManyThatStartAtOnceOneRuns) {
  std::atomic<int> running = 0;
  std::atomic<int> handedOver = 0;
  std::vector<std::unique_ptr<QThread>> starts;
  std::atomic<bool> done = false;
  for (int i = 0; i < 6; ++i) {
    starts.emplace_back(QThread::create([&] {
      const auto instance = make();
      if (instance->handOverOrListen({})) {
        ++handedOver;
        return;
      }
      ++running;
      QEventLoop loop;
      while (!done) loop.processEvents(QEventLoop::AllEvents, 10);
    }));
    starts.back()->start();
  }
  while (running + handedOver < 6) QThread::msleep(10);
  done = true;
  for (const auto& thread : starts) thread->wait();
  EXPECT_EQ(running, 1);
}

}  // namespace

}  // namespace app
