#include <gtest/gtest.h>

#include "support/GraphBuilder.h"

namespace {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using runtime::Budget;
using runtime::CompiledComposition;
using support::GraphBuilder;

PropertyDictionary numberSplitter() {
  return {{QStringLiteral("portClass"), QStringLiteral("QCNumberPort")}};
}

PropertyDictionary stored(const QString& port, double value) {
  return {{port, PropertyDictionary{{QStringLiteral("value"), value}}}};
}

foundation::Result<std::shared_ptr<const CompiledComposition>> compile(const GraphBuilder& graph,
                                                                       const Budget& budget = {}) {
  const auto made = quartz::QuartzComposition::compositionWithDictionary(graph.composition());
  return CompiledComposition::compile(*made, QStringLiteral("test.qtz"), budget);
}

/// A macro that publishes a splitter's input "in" and output "out".
GraphBuilder splitterContent(double innerValue) {
  GraphBuilder content;
  const QString splitter = content.node(
      QStringLiteral("QCSplitter"),
      {{QStringLiteral("portClass"), QStringLiteral("QCNumberPort")},
       {QStringLiteral("customInputPortStates"), stored(QStringLiteral("input"), innerValue)}});
  content.publishInput(splitter, QStringLiteral("input"), QStringLiteral("in"));
  content.publishOutput(splitter, QStringLiteral("output"), QStringLiteral("out"));
  return content;
}

double resultOf(const GraphBuilder& graph) {
  const auto renderer = graph.renderer();
  (void)renderer->renderAtTime(0, QSize(16, 9));
  return renderer->valueForOutputKey(QStringLiteral("result")).toNumber();
}

TEST(CompositionCompiler, ValuesComeFromTheOutermostPlaceThatHasOne) {
  GraphBuilder inner;
  QString macro = inner.macro(QStringLiteral("QCPatch"), splitterContent(1));
  inner.publishOutput(macro, QStringLiteral("out"), QStringLiteral("result"));
  EXPECT_EQ(resultOf(inner), 1);

  GraphBuilder root;
  PropertyDictionary override{
      {QStringLiteral("customInputPortStates"), stored(QStringLiteral("in"), 2)}};
  macro = root.macro(QStringLiteral("QCPatch"), splitterContent(1), {}, override);
  root.publishOutput(macro, QStringLiteral("out"), QStringLiteral("result"));
  EXPECT_EQ(resultOf(root), 2);

  root.publishInput(macro, QStringLiteral("in"), QStringLiteral("key"));
  root.setParameter(QStringLiteral("key"), 3.0);
  EXPECT_EQ(resultOf(root), 3);
  const auto renderer = root.renderer();
  EXPECT_EQ(renderer->inputAttributes(QStringLiteral("key"))->defaultValue.toNumber(), 3);
  EXPECT_TRUE(renderer->setValueForInputKey(runtime::Value(4.0), QStringLiteral("key")));
  EXPECT_FALSE(renderer->setValueForInputKey(runtime::Value(4.0), QStringLiteral("other")));
  (void)renderer->renderAtTime(0, QSize(16, 9));
  EXPECT_EQ(renderer->valueForOutputKey(QStringLiteral("result")).toNumber(), 4);
}

/// As exports with two filters of one kind have it.
TEST(CompositionCompiler, AKeySharedByInputsSetsThemAll) {
  const QString key = QStringLiteral("CIRadius");
  GraphBuilder root;
  for (const char16_t* result : {u"first", u"second"}) {
    const QString macro = root.macro(QStringLiteral("QCPatch"), splitterContent(1));
    root.publishInput(macro, QStringLiteral("in"), key);
    root.publishOutput(macro, QStringLiteral("out"), QString::fromUtf16(result));
  }
  root.setParameter(key, 3.0);
  const auto renderer = root.renderer();
  const auto results = [&] {
    (void)renderer->renderAtTime(0, QSize(16, 9));
    return std::pair(renderer->valueForOutputKey(QStringLiteral("first")).toNumber(),
                     renderer->valueForOutputKey(QStringLiteral("second")).toNumber());
  };
  EXPECT_EQ(results(), std::pair(3.0, 3.0));
  EXPECT_TRUE(renderer->setValueForInputKey(runtime::Value(4.0), key));
  EXPECT_EQ(results(), std::pair(4.0, 4.0));
}

TEST(CompositionCompiler, ConnectionsCrossMacroBorders) {
  GraphBuilder root;
  const QString source = root.macro(QStringLiteral("QCPatch"), splitterContent(7));
  const QString sink = root.macro(QStringLiteral("QCPatch"), splitterContent(1));
  root.connect(source, QStringLiteral("out"), sink, QStringLiteral("in"));
  root.publishOutput(sink, QStringLiteral("out"), QStringLiteral("result"));
  EXPECT_EQ(resultOf(root), 7);
}

TEST(CompositionCompiler, WhatDoesNotFitIsFoundAndPassedOver) {
  GraphBuilder root;
  const QString splitter = root.node(QStringLiteral("QCSplitter"), numberSplitter());
  const QString unknown = root.node(QStringLiteral("QCNeverHeardOf"));
  root.connect(QStringLiteral("Nobody"), QStringLiteral("out"), splitter, QStringLiteral("input"));
  root.connect(unknown, QStringLiteral("anything"), splitter, QStringLiteral("input"));
  root.publishOutput(splitter, QStringLiteral("output"), QStringLiteral("result"));
  root.publishInput(QStringLiteral("Nobody"), QStringLiteral("in"), QStringLiteral("key"));
  const auto compiled = compile(root);
  ASSERT_TRUE(compiled);
  const QString findings = (*compiled)->findings().join(QLatin1Char('\n'));
  EXPECT_TRUE(findings.contains(QStringLiteral("QCNeverHeardOf"))) << findings.toStdString();
  EXPECT_TRUE(findings.contains(QStringLiteral("Nobody"))) << findings.toStdString();
  EXPECT_TRUE((*compiled)->inputs().empty());
  EXPECT_EQ(resultOf(root), 0);
}

TEST(CompositionCompiler, LoopsUseThePreviousValue) {
  GraphBuilder root;
  const QString a = root.node(QStringLiteral("QCSplitter"), numberSplitter());
  const QString b = root.node(QStringLiteral("QCSplitter"), numberSplitter());
  root.connect(a, QStringLiteral("output"), b, QStringLiteral("input"));
  root.connect(b, QStringLiteral("output"), a, QStringLiteral("input"));
  root.publishOutput(b, QStringLiteral("output"), QStringLiteral("result"));
  EXPECT_EQ(resultOf(root), 0);
}

TEST(CompositionCompiler, BoundsEndInErrorsNotInCrashes) {
  GraphBuilder many;
  for (int i = 0; i < 20; ++i) many.node(QStringLiteral("QCSplitter"), numberSplitter());
  Budget small;
  small.nodes = 10;
  ASSERT_FALSE(compile(many, small));
  EXPECT_TRUE(compile(many, small).error().text().startsWith(QStringLiteral("test.qtz: ")));

  GraphBuilder chain;
  QString last = chain.node(QStringLiteral("QCSplitter"), numberSplitter());
  for (int i = 0; i < 6000; ++i) {
    const QString next = chain.node(QStringLiteral("QCSplitter"), numberSplitter());
    chain.connect(last, QStringLiteral("output"), next, QStringLiteral("input"));
    last = next;
  }
  EXPECT_FALSE(compile(chain));

  GraphBuilder deep;
  for (int i = 0; i < 100; ++i) {
    GraphBuilder outer;
    outer.macro(QStringLiteral("QCPatch"), deep);
    deep = outer;
  }
  EXPECT_FALSE(compile(deep));
}

TEST(CompositionCompiler, VirtualPatchesUnfoldWithTheirOwnDefaults) {
  GraphBuilder embedded = splitterContent(1);
  PropertyDictionary stand = embedded.composition();
  stand.insert(QStringLiteral("inputParameters"), PropertyDictionary{{QStringLiteral("in"), 5.0}});
  GraphBuilder root;
  const QString plain = root.node(QStringLiteral("/five"));
  root.publishOutput(plain, QStringLiteral("out"), QStringLiteral("result"));
  PropertyDictionary file = root.composition();
  file.insert(QStringLiteral("virtualPatches"),
              PropertyDictionary{{QStringLiteral("/five"), stand}});
  const auto run = [](const PropertyDictionary& tree) {
    const auto made = quartz::QuartzComposition::compositionWithDictionary(tree);
    auto compiled = CompiledComposition::compile(*made);
    EXPECT_TRUE(compiled);
    runtime::CompositionRenderer renderer(*compiled);
    (void)renderer.renderAtTime(0, QSize(16, 9));
    return renderer.valueForOutputKey(QStringLiteral("result")).toNumber();
  };
  EXPECT_EQ(run(file), 5);

  // One that embeds itself is refused.
  GraphBuilder self;
  self.node(QStringLiteral("/five"));
  file.insert(QStringLiteral("virtualPatches"),
              PropertyDictionary{{QStringLiteral("/five"), self.composition()}});
  const auto made = quartz::QuartzComposition::compositionWithDictionary(file);
  EXPECT_FALSE(CompiledComposition::compile(*made));
}

}  // namespace
