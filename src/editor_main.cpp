#include <QApplication>

#include "app/AppDelegate.h"
#include "app/SingleInstance.h"
#include "widgets/TYStyleKit.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tessary"));
  QApplication::setApplicationDisplayName(QStringLiteral("Tessary"));
  QApplication::setApplicationVersion(QStringLiteral(TESSARY_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("tessary"));
  const QStringList paths = QApplication::arguments().mid(1);
  app::SingleInstance instance(QStringLiteral("tessary"));
  if (instance.handOver(paths)) return 0;
  static_cast<void>(instance.listen());
  widgets::TYStyleKit::install(application);
  app::AppDelegate delegate(foundation::UserDefaults::standard());
  QObject::connect(&instance, &app::SingleInstance::filesRequested, &delegate,
                   &app::AppDelegate::openDocuments);
  delegate.start(paths);
  return QApplication::exec();
}
