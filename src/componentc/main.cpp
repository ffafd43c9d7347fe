#include <QCoreApplication>
#include <QTextStream>

#include "components/ComponentCompiler.h"

/// componentc SOURCE.json OUTPUT.qtz: compiles the readable source of a component.
int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  QTextStream err(stderr);
  if (arguments.size() != 3) {
    err << "usage: componentc SOURCE.json OUTPUT.qtz\n";
    return 2;
  }
  const auto done = components::ComponentCompiler::compileFile(arguments[1], arguments[2]);
  if (!done) err << done.error().text() << '\n';
  return done ? 0 : 1;
}
