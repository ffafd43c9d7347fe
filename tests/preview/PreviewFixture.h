#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include "preview/PreviewView.h"
#include "preview/TYPreviewController.h"

namespace preview {

using document::CompositionDocument;

/// The player, worked with keys; temporary files lie in a folder of the test.
class PreviewTest : public testing::Test {
 protected:
  PreviewTest() {
    qputenv("TMPDIR", QFile::encodeName(temporary.path()));
    PictureOptions().keep(foundation::UserDefaults::standard());
    foundation::UserDefaults::standard().setValue(false, QStringLiteral("showsPreviewFields"));
  }
  ~PreviewTest() override {
    TYPreviewController::closeShared();
    settle();
    qunsetenv("TMPDIR");
  }

  static std::unique_ptr<CompositionDocument> graphic(double duration, double stop = -1) {
    auto document = std::make_unique<CompositionDocument>();
    document->emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("SD PAL")));
    document->composition()->setDuration(duration);
    if (stop >= 0) document->composition()->addStopFrame(stop);
    return document;
  }
  static void settle() {
    for (int i = 0; i < 5; ++i) {
      QApplication::processEvents();
      QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }
  [[nodiscard]] static TYPreviewController& player() { return *TYPreviewController::shared(); }
  [[nodiscard]] static QString status() { return player().statusRow().status(); }
  [[nodiscard]] static bool reaches(const QString& wanted) {
    return QTest::qWaitFor([&] { return status() == wanted; }, 10'000);
  }
  [[nodiscard]] QStringList temporaryFiles() const {
    return QDir(temporary.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
  }

  const QString waiting = QStringLiteral("Waiting for Trigger");
  const QString playing = QStringLiteral("Playing Untitled");
  const QString finished = QStringLiteral("Playout finished");
  QTemporaryDir temporary;
};

}  // namespace preview
