#include "preview/PicturePainter.h"

#include <gmock/gmock.h>

#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>

#include "preview/PictureSaver.h"
#include "support/DrawTools.h"

namespace preview {

namespace {

using Backdrop = PictureOptions::Backdrop;
using Channel = PictureOptions::Channel;
using foundation::Color;

constexpr QSize size(8, 6);

/// Its rows are translucent in other reds, on nothing at the right.
std::shared_ptr<const Picture> picture(int width = 4, bool isOpaque = false) {
  static PicturePool pool(size, 1);
  auto made = pool.take();
  std::vector<runtime::DrawItem> rows;
  for (int y = 0; y < size.height(); ++y)
    rows.push_back(
        drawing::plain(QRectF(0, y, width, 1), size, Color(0.2 * y, 0, 0, y == 0 ? 1 : 0.5)));
  made->canvas.draw(drawing::listOf(rows));
  made->isOpaque = isOpaque;
  return made;
}

QImage painted(const PicturePainter& painter) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::magenta);
  QPainter to(&image);
  painter.paint(to, QRectF(image.rect()), true);
  return image;
}

PicturePainter painter(const PictureOptions& options) {
  PicturePainter made;
  made.setOptions(options);
  made.setPicture(picture());
  return made;
}

}  // namespace

TEST(PicturePainter, ShowsKeyAndFillAlone) {
  PicturePainter looked = painter({.channel = Channel::Key});
  QImage key = painted(looked);
  EXPECT_EQ(key.pixel(1, 0), qRgb(255, 255, 255));
  EXPECT_EQ(key.pixel(1, 3), qRgb(128, 128, 128));
  EXPECT_EQ(key.pixel(6, 3), qRgb(0, 0, 0));
  // What a narrower picture no longer covers is black again.
  EXPECT_LT(looked.setPicture(picture(2)).width(), size.width());
  key = painted(looked);
  EXPECT_EQ(key.pixel(1, 3), qRgb(128, 128, 128));
  EXPECT_EQ(key.pixel(3, 3), qRgb(0, 0, 0));

  looked.setOptions({.channel = Channel::Fill});
  const QImage fill = painted(looked);
  EXPECT_EQ(qAlpha(looked.picture()->image().pixel(1, 5)), 128);
  EXPECT_EQ(fill.pixel(1, 5), qRgb(128, 0, 0));
  EXPECT_EQ(fill.pixel(6, 5), qRgb(0, 0, 0));
}

TEST(PicturePainter, KeyWaitsForAPictureWithoutBackground) {
  PicturePainter looked;
  looked.setPicture(picture(4, true));
  const QImage before = painted(looked);
  looked.setOptions({.channel = Channel::Key});
  EXPECT_EQ(painted(looked), before);
  EXPECT_EQ(looked.setPicture(picture(4, true)).width(), 5);
  EXPECT_EQ(painted(looked), before);
  EXPECT_EQ(looked.setPicture(picture()), QRect(QPoint(), size));
  EXPECT_EQ(painted(looked).pixel(1, 3), qRgb(128, 128, 128));
}

TEST(PicturePainter, PutsWhatWasChosenBehindTheGraphic) {
  PicturePainter looked = painter({.backdrop = Backdrop::Color, .color = Qt::blue});
  QImage image = painted(looked);
  EXPECT_EQ(image.pixel(6, 3), qRgb(0, 0, 255));
  EXPECT_EQ(image.pixel(1, 5), qRgb(128, 0, 127));
  looked.setOptions({.backdrop = Backdrop::Chessboard});
  EXPECT_EQ(painted(looked).pixel(6, 3), qRgb(0xC9, 0xC9, 0xC9));
  // Nothing is there yet.
  looked.setOptions({.backdrop = Backdrop::Still});
  EXPECT_EQ(painted(looked).pixel(6, 3), qRgb(0, 0, 0));
  QImage still(size, QImage::Format_ARGB32_Premultiplied);
  still.fill(Qt::green);
  looked.setBackdrop(still);
  image = painted(looked);
  EXPECT_EQ(image.pixel(6, 3), qRgb(0, 255, 0));
  EXPECT_EQ(image.pixel(1, 5), qRgb(128, 127, 0));
  looked.setOptions({.backdrop = Backdrop::Still, .showsSafeAreas = true});
  EXPECT_NE(painted(looked), image);
}

TEST(PictureSaver, WritesTheFramesPixelsWithTheirAlphaOrTheLinesOfAField) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("a.png"));
  PictureSaver::Subject subject{.picture = picture()};
  const auto saved = [&] {
    EXPECT_TRUE(PictureSaver::write(PictureSaver::imageOf(subject), path));
    return QImage(path);
  };
  const QImage frame = subject.picture->image();
  const QImage whole = saved();
  EXPECT_TRUE(whole.hasAlphaChannel());
  EXPECT_EQ(whole.pixel(6, 0), 0U);
  EXPECT_EQ(qRed(whole.pixel(1, 5)), 255);
  EXPECT_EQ(whole.convertToFormat(frame.format()), frame);

  for (const auto part : {PictureSaver::Part::UpperField, PictureSaver::Part::LowerField}) {
    subject.part = part;
    const QImage field = saved();
    ASSERT_EQ(field.size(), QSize(8, 3));
    for (int y = 0; y < field.height(); ++y)
      EXPECT_EQ(field.pixel(1, y),
                whole.pixel(1, 2 * y + (part == PictureSaver::Part::LowerField ? 1 : 0)));
  }
  subject.part = PictureSaver::Part::Frame;
  subject.channel = Channel::Key;
  EXPECT_EQ(saved().convertToFormat(QImage::Format_RGB32).pixel(1, 3), qRgb(128, 128, 128));

  const QString nowhere = folder.filePath(QStringLiteral("none/a.png"));
  const auto failed = PictureSaver::write(frame, nowhere);
  ASSERT_FALSE(failed);
  EXPECT_EQ(failed.error().file, nowhere);
  EXPECT_FALSE(failed.error().message.isEmpty());
}

TEST(PictureOptions, AreKeptAndForgiveWhatTheyDoNotKnow) {
  const QTemporaryDir folder;
  foundation::UserDefaults defaults(folder.filePath(QStringLiteral("a.conf")));
  EXPECT_EQ(PictureOptions::fromDefaults(defaults), PictureOptions());
  PictureOptions options{.backdrop = Backdrop::Movie,
                         .channel = Channel::Key,
                         .showsSafeAreas = true,
                         .color = QColor(1, 2, 3),
                         .still = QStringLiteral("/a b.png"),
                         .movie = QStringLiteral("/c.mov")};
  options.keep(defaults);
  // The next day a key would be taken for the graphic.
  options.channel = Channel::Picture;
  EXPECT_EQ(PictureOptions::fromDefaults(defaults), options);
  defaults.setValue(QStringLiteral("other"), QStringLiteral("previewBackdrop"));
  defaults.setValue(QStringLiteral("#12"), QStringLiteral("previewBackdropColor"));
  const PictureOptions read = PictureOptions::fromDefaults(defaults);
  EXPECT_EQ(read.backdrop, Backdrop::Own);
  EXPECT_EQ(read.color, PictureOptions().color);
}

}  // namespace preview
