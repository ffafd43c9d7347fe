#include "render/RenderPipeline.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QRandomGenerator>
#include <QThread>

#include "render/RawWriter.h"

namespace {

/// Takes a random time over each frame, so that frames overtake each other.
class RecordingWriter : public render::FrameWriter {
 public:
  foundation::Result<QByteArray> encode(QImage& frame, const QRect&) override {
    QThread::usleep(QRandomGenerator::global()->bounded(2000u));
    return QByteArray(1, static_cast<char>(frame.pixelColor(0, 0).red()));
  }
  foundation::Result<void> deliver(const QImage&, const QByteArray& bytes, qint64 number) override {
    if (number == failAt) return foundation::failure(QStringLiteral("the disk is full"));
    order.push_back(number);
    reds.push_back(static_cast<uchar>(bytes[0]));
    return {};
  }
  std::vector<qint64> order;
  std::vector<int> reds;
  qint64 failAt = -1;
};

runtime::DrawList filled(int red) {
  runtime::DrawList list;
  list.items.push_back(runtime::ClearItem{{red / 255.0, 0, 0, 1}, true, true});
  return list;
}

TEST(RenderPipeline, DeliversEveryFrameInOrder) {
  RecordingWriter writer;
  {
    render::RenderPipeline pipeline(writer, QSize(4, 4), {.threads = 4});
    for (int i = 0; i < 200; ++i) ASSERT_TRUE(pipeline.add({.list = filled(i), .number = i}));
    ASSERT_TRUE(pipeline.finish());
    EXPECT_EQ(pipeline.delivered(), 200);
  }
  for (int i = 0; i < 200; ++i) {
    ASSERT_EQ(writer.order[static_cast<size_t>(i)], i);
    ASSERT_EQ(writer.reds[static_cast<size_t>(i)], i);
  }
}

TEST(RenderPipeline, FewerFramesOfLargePicturesAreUnderWay) {
  EXPECT_EQ(render::RenderPipeline::framesUnderWay({1920, 1080}, 4), 5);
  EXPECT_EQ(render::RenderPipeline::framesUnderWay({16384, 8192}, 16), 2);  // 1 GiB each
  EXPECT_EQ(render::RenderPipeline::framesUnderWay({16384, 16384}, 16), 1);
  EXPECT_EQ(render::RenderPipeline::framesUnderWay({4, 4}, 256), 257);
}

TEST(RenderPipeline, FailureStopsTheRunAndIsReported) {
  RecordingWriter writer;
  writer.failAt = 5;
  render::RenderPipeline pipeline(writer, QSize(4, 4), {.threads = 2});
  int accepted = 0;
  while (accepted < 1000 && pipeline.add({.list = filled(0), .number = accepted})) ++accepted;
  EXPECT_LT(accepted, 20);
  const auto done = pipeline.finish();
  ASSERT_FALSE(done);
  EXPECT_EQ(done.error().message, QStringLiteral("the disk is full"));
  EXPECT_EQ(writer.order.size(), 5u);
}

TEST(RenderPipeline, FramesDoNotShineThroughEachOther) {
  RecordingWriter writer;
  render::RenderPipeline pipeline(writer, QSize(4, 4), {.threads = 1});
  for (int i = 0; i < 6; ++i)
    (void)pipeline.add(
        {.list = i % 2 == 0 ? filled(200) : runtime::DrawList(), .onBlack = i == 5, .number = i});
  ASSERT_TRUE(pipeline.finish());
  EXPECT_EQ(writer.reds, (std::vector<int>{200, 0, 200, 0, 200, 0}));
}

TEST(RawWriter, WritesWholeFramesAndReportsAReaderThatLeft) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  render::RawWriter writer(render::Alpha::Straight, ends[1]);
  QImage frame(10, 10, QImage::Format_ARGB32_Premultiplied);
  frame.fill(QColor(1, 2, 3));
  ASSERT_TRUE(writer.encode(frame, frame.rect()));
  ASSERT_TRUE(writer.deliver(frame, {}, 0));
  uchar bytes[400];
  ASSERT_EQ(read(ends[0], bytes, sizeof bytes), 400);
  EXPECT_EQ(bytes[396], 1);
  EXPECT_EQ(bytes[397], 2);
  EXPECT_EQ(bytes[398], 3);
  EXPECT_EQ(bytes[399], 255);
  close(ends[0]);
  const auto broken = writer.deliver(frame, {}, 1);
  ASSERT_FALSE(broken);
  EXPECT_TRUE(broken.error().text().startsWith(QStringLiteral("standard output: ")));
  close(ends[1]);
}

}  // namespace
