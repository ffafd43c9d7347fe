#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "support/LogGuard.h"
#include "widgets/TYStyleKit.h"

// These tests need widgets, styled as in the editor and dark whatever the desktop is.
int main(int argc, char** argv) {
  // Another one to try the same under a real display: TESSARY_TEST_PLATFORM=wayland.
  const QByteArray platform = qgetenv("TESSARY_TEST_PLATFORM");
  qputenv("QT_QPA_PLATFORM", platform.isEmpty() ? "offscreen" : platform);
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  // Settings of whoever runs the tests are neither read nor written.
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", QFile::encodeName(settings.path()));
  QApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  support::LogGuard::install();
  widgets::TYStyleKit::install(application);
  widgets::TYStyleKit::shared().setAppearance(widgets::TYStyleKit::Appearance::Dark);
  return RUN_ALL_TESTS();
}
