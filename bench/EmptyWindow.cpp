#include <QApplication>
#include <QMainWindow>
#include <cstdio>

#include "app/FirstFrame.h"

// The smallest program with a window, the rival of bench_startup: what Qt needs for itself.
int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const app::FirstFrame firstFrame([] {
    std::puts("shown");
    std::fflush(stdout);
    QApplication::exit();
  });
  QMainWindow window;
  window.resize(1180, 720);
  window.show();
  return QApplication::exec();
}
