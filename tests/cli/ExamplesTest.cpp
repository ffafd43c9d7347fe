#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "support/TessaryProgram.h"

namespace {

using support::Outcome;
using support::tessary;

QString q(const char* text) {
  return QString::fromLatin1(text);
}

class Examples : public testing::TestWithParam<const char*> {
 protected:
  QTemporaryDir folder;
  QString source = QStringLiteral(TESSARY_EXAMPLES "/harbour/%1.composition").arg(q(GetParam()));
  /// The bytes of the export, made in a folder of its own.
  QByteArray exported(const char* subfolder) {
    const QString path = folder.filePath(q(subfolder) + q("/out.qtz"));
    QDir().mkpath(QFileInfo(path).path());
    const Outcome outcome = tessary({q("export"), source, path, q("--background")});
    EXPECT_EQ(outcome.status, 0) << outcome.error.toStdString();
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
};

TEST_P(Examples, AreDrawnTheSameByAnyNumberOfThreads) {
  const auto frames = [this](const char* threads) {
    const Outcome outcome =
        tessary({q("render"), source, q("-o"), q("-"), q("--size"), q("480x270"), q("--fps"),
                 q("12"), q("--frames"), q("36"), q("--trigger"), q("auto"), q("--background"),
                 q("--clock"), q("2026-01-31T20:00:00Z"), q("--threads"), q(threads)});
    EXPECT_LE(outcome.status, 1) << outcome.error.toStdString();
    EXPECT_EQ(outcome.out.size(), 36 * 480 * 270 * 4);
    return outcome.out;
  };
  const QByteArray one = frames("1");
  EXPECT_NE(one.count('\0'), one.size()) << "nothing was drawn";
  for (const char* threads : {"2", "4"}) EXPECT_TRUE(frames(threads) == one) << threads;
}

TEST_P(Examples, GiveTheSameFileTwiceAndASoundOne) {
  const QByteArray first = exported("a");
  EXPECT_FALSE(first.isEmpty());
  EXPECT_TRUE(first == exported("another folder"));
  const Outcome check = tessary({q("check"), folder.filePath(q("a/out.qtz"))});
  EXPECT_EQ(check.status, 0) << check.out.toStdString();
}

INSTANTIATE_TEST_SUITE_P(All, Examples,
                         testing::Values("breaking-strap", "channel-bug", "lower-third",
                                         "lower-third-rtl", "opener", "score-board", "ticker",
                                         "weather-strap"),
                         [](const auto& info) {
                           std::string name = info.param;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
