// Opens a package, changes its duration to 9 seconds, saves it and says by its exit status whether
// that succeeded: 0 saved, 1 not saved, 2 not opened.
//   save_probe save|save-as|save-to PACKAGE TARGET
#include <QGuiApplication>
#include <QLoggingCategory>

#include "document/CompositionDocument.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  document::CompositionDocument document;
  if (!document.readFromURL(QUrl::fromLocalFile(arguments.at(2)))) return 2;
  document.composition()->setDuration(9);
  using document::SaveOperation;
  const QString& how = arguments.at(1);
  const SaveOperation operation = how == QLatin1String("save")      ? SaveOperation::Save
                                  : how == QLatin1String("save-as") ? SaveOperation::SaveAs
                                                                    : SaveOperation::SaveTo;
  return document.saveToURL(QUrl::fromLocalFile(arguments.at(3)), operation) ? 0 : 1;
}
