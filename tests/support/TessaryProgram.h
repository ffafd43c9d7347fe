#pragma once

#include <QProcess>
#include <QProcessEnvironment>

namespace support {

/// What became of a call of the program.
struct Outcome {
  int status = -1;
  QByteArray out;
  QString error;
};

/// Runs a program as its users do, without a display.
inline Outcome run(const QString& program, const QStringList& arguments, const QString& folder = {},
                   const QString& resources = {}, const QString& input = {}) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.remove(QStringLiteral("DISPLAY"));
  environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
  // Whatever the person who runs the tests prefers.
  environment.insert(QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/nonexistent"));
  if (!resources.isEmpty()) environment.insert(QStringLiteral("TESSARY_RESOURCES"), resources);
  process.setProcessEnvironment(environment);
  if (!folder.isEmpty()) process.setWorkingDirectory(folder);
  process.start(program, arguments);
  process.write(input.toUtf8());
  process.closeWriteChannel();
  process.waitForFinished(60'000);
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
          process.readAllStandardOutput(), QString::fromUtf8(process.readAllStandardError())};
}

/// Runs the command line.
inline Outcome tessary(const QStringList& arguments, const QString& folder = {},
                       const QString& resources = {}, const QString& input = {}) {
  return run(QStringLiteral(TESSARY_PROGRAM), arguments, folder, resources, input);
}

/// Runs a script in the folder.
inline Outcome batch(const QString& script, const QString& folder) {
  return tessary({QStringLiteral("batch")}, folder, {}, script);
}

}  // namespace support
