#include <gtest/gtest.h>

#include "runtime/draw/DrawList.h"
#include "support/GraphBuilder.h"

namespace {

using support::GraphBuilder;

/// A macro in whose off-screen destination of the given width the pixel count is read.
GraphBuilder innerWidth() {
  GraphBuilder content;
  const QString info = content.node(QStringLiteral("QCScreenInfo"));
  content.publishOutput(info, QStringLiteral("outputPixelsWide"), QStringLiteral("wide"));
  return content;
}

TEST(CompositionInstance, OffscreenContentSeesItsOwnDestination) {
  GraphBuilder root;
  const QString image =
      root.macro(QStringLiteral("QCRenderInImage"), innerWidth(),
                 {{QStringLiteral("inputWidth"), 320}, {QStringLiteral("inputHeight"), 100}});
  const QString outside = root.node(QStringLiteral("QCScreenInfo"));
  root.publishOutput(image, QStringLiteral("wide"), QStringLiteral("inner"));
  root.publishOutput(outside, QStringLiteral("outputPixelsWide"), QStringLiteral("outer"));
  const auto renderer = root.renderer();
  for (const int width : {64, 64, 1920}) {
    (void)renderer->renderAtTime(0, QSize(width, 36));
    EXPECT_EQ(renderer->valueForOutputKey(QStringLiteral("inner")).toIndex(), 320u);
    EXPECT_EQ(renderer->valueForOutputKey(QStringLiteral("outer")).toIndex(),
              static_cast<quint64>(width));
  }
}

TEST(CompositionInstance, OffscreenImagesStayWhileTheirContentIsTheSame) {
  GraphBuilder content;
  const QString sprite = content.node(QStringLiteral("QCSprite"));
  content.publishInput(sprite, QStringLiteral("inputX"), QStringLiteral("x"));
  GraphBuilder root;
  const QString image =
      root.macro(QStringLiteral("QCRenderInImage"), content,
                 {{QStringLiteral("inputWidth"), 16}, {QStringLiteral("inputHeight"), 16}});
  root.publishInput(image, QStringLiteral("x"), QStringLiteral("x"));
  root.publishOutput(image, QStringLiteral("outputImage"), QStringLiteral("image"));
  const auto renderer = root.renderer();
  const auto imageAt = [&](double time) {
    (void)renderer->renderAtTime(time, QSize(64, 36));
    return renderer->valueForOutputKey(QStringLiteral("image"));
  };
  const runtime::Value first = imageAt(0);
  EXPECT_TRUE(first == imageAt(1));
  renderer->setValueForInputKey(runtime::Value(0.5), QStringLiteral("x"));
  EXPECT_FALSE(first == imageAt(1));
  EXPECT_FALSE(renderer->isAnimated());
}

TEST(CompositionInstance, DisabledConsumersDrawNothing) {
  GraphBuilder inner;
  inner.node(QStringLiteral("QCSprite"));
  GraphBuilder root;
  const QString macro = root.macro(QStringLiteral("QCPatch"), inner);
  root.publishInput(macro, QStringLiteral("_enable"), QStringLiteral("on"));
  const auto renderer = root.renderer();
  EXPECT_EQ(renderer->renderAtTime(0, QSize(16, 9)).items.size(), 1u);
  renderer->setValueForInputKey(runtime::Value(false), QStringLiteral("on"));
  EXPECT_EQ(renderer->renderAtTime(0, QSize(16, 9)).items.size(), 0u);
}

TEST(CompositionInstance, IterationsDrawInOrderWithTheirOwnValues) {
  GraphBuilder content;
  const QString variables = content.node(QStringLiteral("QCIteratorVariables"));
  const QString sprite = content.node(QStringLiteral("QCSprite"));
  content.connect(variables, QStringLiteral("outputIndex"), sprite, QStringLiteral("inputX"));
  content.publishOutput(variables, QStringLiteral("outputPosition"), QStringLiteral("position"));
  GraphBuilder root;
  const QString iterator =
      root.macro(QStringLiteral("QCIterator"), content, {{QStringLiteral("inputCount"), 4}});
  root.publishOutput(iterator, QStringLiteral("position"), QStringLiteral("last"));
  root.publishInput(iterator, QStringLiteral("inputCount"), QStringLiteral("count"));
  const auto renderer = root.renderer();
  for (const int count : {4, 2, 0, 30'000}) {
    renderer->setValueForInputKey(runtime::Value(double(count)), QStringLiteral("count"));
    const runtime::DrawList list = renderer->renderAtTime(0, QSize(16, 9));
    ASSERT_EQ(list.items.size(), static_cast<size_t>(count));
    for (size_t i = 0; i < list.items.size(); ++i)
      ASSERT_EQ(std::get<runtime::QuadItem>(list.items[i]).matrix(0, 3), static_cast<float>(i));
    if (count > 0) {
      EXPECT_EQ(renderer->valueForOutputKey(QStringLiteral("last")).toNumber(), 1.0);
    }
  }
}

TEST(CompositionInstance, BudgetsCutEndlessWorkAndTellOnce) {
  GraphBuilder content;
  content.node(QStringLiteral("QCSprite"));
  GraphBuilder root;
  root.macro(QStringLiteral("QCIterator"), content,
             {{QStringLiteral("inputCount"), 1'000'000'000}});
  runtime::Budget budget;
  budget.iterations = 100;
  const auto renderer = root.renderer({}, budget);
  for (int frame = 0; frame < 3; ++frame)
    EXPECT_LE(renderer->renderAtTime(frame, QSize(16, 9)).items.size(), 100u);
  const QStringList told = renderer->findings().filter(QStringLiteral("iterations"));
  EXPECT_LE(told.size(), 1);
}

}  // namespace
