#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace support {

/// Fails a test that logs a warning or an error which it did not announce with expectMessage().
class LogGuard : public testing::EmptyTestEventListener {
 public:
  static void install() {
    testing::UnitTest::GetInstance()->listeners().Append(new LogGuard);
    qInstallMessageHandler(handle);
  }
  /// Announces that the running test will log a message that contains the text.
  static void expectMessage(const QString& part) { expected().append(part); }

 private:
  static QStringList& expected() {
    static QStringList list;
    return list;
  }
  static QStringList& seen() {
    static QStringList list;
    return list;
  }
  static void handle(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    // What a platform without windows cannot do says nothing about the program.
    if (message.startsWith(QLatin1String("This plugin does not support"))) return;
    seen().append(message);
  }
  void OnTestStart(const testing::TestInfo&) override {
    expected().clear();
    seen().clear();
  }
  void OnTestEnd(const testing::TestInfo&) override {
    for (const QString& message : std::as_const(seen())) {
      bool announced = false;
      for (const QString& part : std::as_const(expected())) announced |= message.contains(part);
      if (!announced) ADD_FAILURE() << "unannounced message: " << message.toStdString();
    }
    for (const QString& part : std::as_const(expected()))
      if (seen().filter(part).isEmpty())
        ADD_FAILURE() << "announced but not logged: " << part.toStdString();
  }
};

}  // namespace support
