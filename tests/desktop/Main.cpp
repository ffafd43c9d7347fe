#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "support/LogGuard.h"
#include "widgets/TYStyleKit.h"

// These tests need a screen and its server; they bring neither along.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "xcb");
  // Dialogs of the desktop could not be typed into.
  qunsetenv("XDG_CURRENT_DESKTOP");
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
