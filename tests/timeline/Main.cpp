#include <gtest/gtest.h>

#include <QApplication>

#include "support/LogGuard.h"
#include "widgets/TYStyleKit.h"

// These tests need widgets, styled as in the editor and dark whatever the desktop is.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  QApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  support::LogGuard::install();
  widgets::TYStyleKit::install(application);
  widgets::TYStyleKit::shared().setAppearance(widgets::TYStyleKit::Appearance::Dark);
  return RUN_ALL_TESTS();
}
