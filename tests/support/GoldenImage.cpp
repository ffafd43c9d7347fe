#include "support/GoldenImage.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

namespace support {

namespace {

constexpr int tolerance = 1;

QString goldenPath(const QString& name) {
  return QStringLiteral(TESSARY_GOLDEN_DIR "/") + name + QStringLiteral(".png");
}

QString outputPath(const QString& name, const QString& suffix) {
  QDir().mkpath(QFileInfo(QStringLiteral(TESSARY_GOLDEN_OUTPUT "/") + name).path());
  return QStringLiteral(TESSARY_GOLDEN_OUTPUT "/") + name + suffix + QStringLiteral(".png");
}

QImage premultiplied(const QImage& image) {
  return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// As the picture comes back from a PNG file, which holds straight colours.
QImage throughFile(const QImage& image) {
  return premultiplied(image.convertToFormat(QImage::Format_ARGB32));
}

int difference(QRgb a, QRgb b) {
  const int alpha = std::abs(qAlpha(a) - qAlpha(b));
  const int red = std::abs(qRed(a) - qRed(b));
  const int green = std::abs(qGreen(a) - qGreen(b));
  const int blue = std::abs(qBlue(a) - qBlue(b));
  return std::max({alpha, red, green, blue});
}

/// White where the pictures differ by 32 or more, black where they are the same.
QImage differencePicture(const QImage& a, const QImage& b) {
  QImage picture(a.size().boundedTo(b.size()), QImage::Format_Grayscale8);
  for (int y = 0; y < picture.height(); ++y) {
    const auto* rowA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
    const auto* rowB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
    uchar* out = picture.scanLine(y);
    for (int x = 0; x < picture.width(); ++x)
      out[x] = static_cast<uchar>(std::min(255, difference(rowA[x], rowB[x]) * 8));
  }
  return picture;
}

}  // namespace

int largestDifference(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return 256;
  const QImage first = premultiplied(a);
  const QImage second = premultiplied(b);
  int largest = 0;
  for (int y = 0; y < first.height(); ++y) {
    const auto* rowA = reinterpret_cast<const QRgb*>(first.constScanLine(y));
    const auto* rowB = reinterpret_cast<const QRgb*>(second.constScanLine(y));
    for (int x = 0; x < first.width(); ++x)
      largest = std::max(largest, difference(rowA[x], rowB[x]));
  }
  return largest;
}

void expectGolden(const QImage& image, const QString& name) {
  const QString path = goldenPath(name);
  if (qEnvironmentVariableIntValue("TESSARY_REBASELINE") == 1) {
    QDir().mkpath(QFileInfo(path).path());
    ASSERT_TRUE(image.convertToFormat(QImage::Format_ARGB32).save(path))
        << "cannot write " << path.toStdString();
    return;
  }
  const QImage actual = throughFile(image);
  const QImage expected = premultiplied(QImage(path));
  const int largest = expected.isNull() ? 256 : largestDifference(actual, expected);
  if (largest <= tolerance) return;
  const QString actualPath = outputPath(name, QStringLiteral("-actual"));
  image.convertToFormat(QImage::Format_ARGB32).save(actualPath);
  if (expected.isNull()) {
    ADD_FAILURE() << "no reference picture " << path.toStdString()
                  << "; drawn: " << actualPath.toStdString()
                  << " (TESSARY_REBASELINE=1 takes it over)";
    return;
  }
  const QString differencePath = outputPath(name, QStringLiteral("-difference"));
  differencePicture(actual, expected).save(differencePath);
  ADD_FAILURE() << name.toStdString() << " differs from its reference by "
                << (largest == 256 ? std::string("size") : std::to_string(largest) + "/255")
                << "; see " << actualPath.toStdString() << " and " << differencePath.toStdString();
}

}  // namespace support
