#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QTest>

#include "RunningEditor.h"
#include "app/TYPreferencesController.h"
#include "document/HiddenMessages.h"
#include "library/TYLibraryController.h"
#include "widgets/TYPathControl.h"
#include "widgets/TYSegmentedControl.h"

namespace app {

namespace {

class PreferencesTest : public RunningEditor {
 protected:
  PreferencesTest() {
    start();
    trigger("preferences");
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* found = qobject_cast<TYPreferencesController*>(widget)) preferences = found;
  }
  /// The control of that accessible name.
  template <typename T>
  [[nodiscard]] T* control(const char* name) const {
    for (T* candidate : preferences->findChildren<T*>())
      if (candidate->accessibleName() == QString::fromUtf8(name)) return candidate;
    ADD_FAILURE() << "there is no " << name;
    return nullptr;
  }
  void choose(const char* name, int segment) {
    QTest::mouseClick(control<widgets::TYSegmentedControl>(name)->segment(segment), Qt::LeftButton);
    settle();
  }

  TYPreferencesController* preferences = nullptr;
};

}  // namespace

TEST_F(PreferencesTest, TheDefaultFormatTakesTheShortcutAlong) {
  const auto shortcutOf = [this](const char* format) {
    return window()
        .actions()
        .action(QStringLiteral("new ") + QString::fromLatin1(format))
        ->shortcut();
  };
  EXPECT_EQ(shortcutOf("1080i25 RGBA"), QKeySequence(QKeySequence::New));
  auto* formats = control<QComboBox>("Format");
  formats->setCurrentText(QStringLiteral("HD 720p50"));
  Q_EMIT formats->textActivated(QStringLiteral("HD 720p50"));
  EXPECT_EQ(shortcutOf("1080i25 RGBA"), QKeySequence());
  EXPECT_EQ(shortcutOf("HD 720p50"), QKeySequence(QKeySequence::New));
  trigger("new HD 720p50");
  EXPECT_EQ(composition().height(), 720);
}

TEST_F(PreferencesTest, WhatIsOverThePictureChangesInAllWindows) {
  choose("Pages", 2);
  const bool before = composition().showsSafeZones();
  QTest::mouseClick(control<QCheckBox>("Show safe areas"), Qt::LeftButton, {}, QPoint(8, 8));
  settle();
  EXPECT_NE(composition().showsSafeZones(), before);
  EXPECT_FALSE(window().isWindowModified()) << "it is the user's, not the document's";
  EXPECT_TRUE(defaults.value(QStringLiteral("showsSafeZones")).isValid());
}

TEST_F(PreferencesTest, ANewFolderOfImagesIsListedAtOnce) {
  QDir(folder.path()).mkpath(QStringLiteral("badges/small"));
  QImage badge(8, 8, QImage::Format_RGB32);
  badge.fill(Qt::blue);
  badge.save(path("badges/badge.png"));
  defaults.setValue(path("badges/small"), QStringLiteral("imagesLibraryPath"));
  preferences->close();
  auto* fresh =
      new TYPreferencesController(static_cast<TYWindowController&>(window()).services(), &window());
  preferences = fresh;
  fresh->show();
  choose("Pages", 1);
  auto* images = control<widgets::TYPathControl>("Images");
  EXPECT_EQ(images->path(), path("badges/small"));
  // One name to the left: the folder above.
  images->setFocus();
  QTest::keyClick(images, Qt::Key_Left);
  QTest::keyClick(images, Qt::Key_Left);
  QTest::keyClick(images, Qt::Key_Right);
  QTest::keyClick(images, Qt::Key_Left);
  QTest::keyClick(images, Qt::Key_Return);
  EXPECT_EQ(images->path(), path("badges"));
  EXPECT_EQ(defaults.value(QStringLiteral("imagesLibraryPath")).toString(), path("badges"));
  auto* library = window().findChild<library::TYLibraryController*>();
  library->refresh();
  const auto& places = window().findChild<library::PlacesView*>()->places();
  ASSERT_GE(places.size(), 3);
  EXPECT_EQ(places.at(2).folder, path("badges"));
}

TEST_F(PreferencesTest, HiddenMessagesComeBack) {
  defaults.setValue(true, QStringLiteral("relativePaths"));
  EXPECT_EQ(document::HiddenMessages(defaults).count(), 1);
  preferences->close();
  preferences->show();
  choose("Pages", 2);
  for (QPushButton* button : preferences->findChildren<QPushButton*>())
    if (button->text() == QLatin1String("Show All Again"))
      QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_EQ(document::HiddenMessages(defaults).count(), 0);
  EXPECT_FALSE(defaults.value(QStringLiteral("relativePaths")).toBool());
}

}  // namespace app
