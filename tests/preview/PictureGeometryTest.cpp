#include "preview/PictureGeometry.h"

#include <gtest/gtest.h>

namespace preview {

namespace {

PictureGeometry geometry(const QSizeF& view, const QSize& picture, double ratio = 1) {
  PictureGeometry made;
  made.setView(view, ratio);
  made.setPicture(picture);
  return made;
}

}  // namespace

TEST(PictureGeometry, FitsOrShowsAPixelForAPixelOfTheScreen) {
  PictureGeometry g = geometry({1000, 600}, {2000, 1000});
  EXPECT_EQ(g.pictureRect(), QRectF(0, 50, 1000, 500));
  EXPECT_FALSE(g.isLargerThanView());
  EXPECT_EQ(g.shownPixels(), QSize(1000, 500));
  g.setZoom(100);
  EXPECT_EQ(g.pictureRect(), QRectF(-500, -200, 2000, 1000));
  EXPECT_TRUE(g.isLargerThanView());
  // A dense screen has two device pixels for each unit.
  g = geometry({1000, 600}, {2000, 1000}, 2);
  g.setZoom(100);
  EXPECT_EQ(g.scale(), 0.5);
  EXPECT_EQ(g.factor(), 1);
  EXPECT_EQ(g.pictureRect(), QRectF(0, 50, 1000, 500));
  g.setZoom(200);
  EXPECT_EQ(g.pictureRect().size(), QSizeF(2000, 1000));
  EXPECT_EQ(g.shownPixels(), QSize(2000, 1000));
}

TEST(PictureGeometry, MovesAsFarAsThereIsSomethingToSee) {
  PictureGeometry g = geometry({1000, 600}, {2000, 500});
  EXPECT_FALSE(g.moveBy({10, 10}));
  g.setZoom(100);
  EXPECT_TRUE(g.moveBy({100, 100}));
  // Where the whole height is seen it stays in the middle.
  EXPECT_EQ(g.pictureRect().topLeft(), QPointF(-400, 50));
  EXPECT_TRUE(g.moveBy({5000, 0}));
  EXPECT_EQ(g.pictureRect().left(), 0);
  EXPECT_FALSE(g.moveBy({1, 0}));
  // What is in the middle stays there in a window of another size.
  g.moveBy({-300, 0});
  g.setView({800, 600}, 1);
  EXPECT_EQ(g.pictureRect().left(), -400);
  g.setZoom(PictureGeometry::fit);
  EXPECT_EQ(g.pictureRect().left(), 0);
}

TEST(PictureGeometry, WhatIsUnderThePointerStaysThere) {
  PictureGeometry g = geometry({1000, 500}, {2000, 1000});
  const QPointF pointer(700, 100);
  const auto inPicture = [&] { return (pointer - g.pictureRect().topLeft()) / g.scale(); };
  const QPointF before = inPicture();
  for (const int percent : {75, 150, 800, 100}) {
    g.setZoom(percent, pointer);
    EXPECT_NEAR(inPicture().x(), before.x(), 1e-6) << percent;
    EXPECT_NEAR(inPicture().y(), before.y(), 1e-6) << percent;
  }
  // Not at the price of an empty edge.
  g.setZoom(100, {0, 0});
  g.setZoom(50, {1000, 500});
  EXPECT_EQ(g.pictureRect(), QRectF(0, 0, 1000, 500));
}

}  // namespace preview
