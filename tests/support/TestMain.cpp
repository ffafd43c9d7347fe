#include <gtest/gtest.h>

#include <QGuiApplication>

#include "support/LogGuard.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  support::LogGuard::install();
  return RUN_ALL_TESTS();
}
