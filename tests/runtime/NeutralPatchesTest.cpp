#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "runtime/StructureMember.h"
#include "support/SinglePatch.h"

/// Patches that ask the machine, its devices or a network: graphics look the same everywhere, so
/// these answer as if nothing were there.
namespace {

using runtime::Value;
using support::GraphBuilder;
using support::outputOf;

QString s(const char* text) {
  return QString::fromLatin1(text);
}

TEST(NeutralPatches, AnswerTheSameOnEveryMachine) {
  struct Case {
    const char* patch;
    const char* output;
    const char* text;
  };
  const Case cases[] = {
      {"QCHostInfo", "outputComputerName", "localhost"},
      {"QCHostInfo", "outputIPAddress", "127.0.0.1"},
      {"QCHostInfo", "outputUserName", ""},
      {"QCHostInfo", "outputRAMSize", "0"},
      {"QCOpenGLInfo", "outputRenderer", "Software"},
      {"QCOpenGLInfo", "outputMaxTextureSize", "16384"},
      {"QCOpenGLInfo", "outputFloatComponents", "0"},
      {"QCInfo", "outputSafeMode", "0"},
      {"QCTablet", "outputPressure", "0"},
      {"QCTablet", "outputTipButton", "0"},
      {"QCAppleRemote", "outputAvailable", "0"},
      {"QCHIDInput", "outputAvailable", "0"},
      {"QCOSCReceiver", "outputSignal", "0"},
      {"QCNetworkReceiver", "outputString", ""},
      {"QCNetworkReceiver", "outputSignal", "0"},
      {"QCNetworkSynchronizer", "outputBroadcasting", "0"},
      {"QCSpotlight", "outputSignal", "0"},
      {"QCAudioInput", "outputPeak", "0"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(outputOf(s(c.patch), s(c.output), {}).toString(), s(c.text))
        << c.patch << "." << c.output;
  for (const auto& [patch, output] :
       {std::pair("QCBonjourServices", "outputServices"), std::pair("QCSpotlight", "outputFiles"),
        std::pair("QCRepositoryCompositions", "outputCompositions")})
    EXPECT_EQ(outputOf(s(patch), s(output), {}).toStructure().size(), 0) << patch;
  EXPECT_TRUE(outputOf(s("QCVideoInput"), s("outputImage"), {}).isEmpty());
  const auto spectrum = outputOf(s("QCAudioInput"), s("outputSpectrum"), {}).toStructure();
  ASSERT_EQ(spectrum.size(), 16);
  EXPECT_EQ(spectrum.at(15).toNumber(), 0);
}

TEST(NeutralPatches, SilentRenderersDrawNothing) {
  for (const char* patch : {"QCNetworkBroadcaster", "QCFPSDisplay", "QCMIDINotes",
                            "QCMIDIControllers", "QCMIDIClock"}) {
    GraphBuilder graph;
    graph.node(s(patch));
    const auto renderer = graph.renderer();
    EXPECT_TRUE(renderer->compiled().patchUses()[0].known) << patch;
    EXPECT_TRUE(renderer->renderAtTime(0, QSize(8, 8)).items.empty()) << patch;
  }
}

TEST(NeutralPatches, AnUntouchedObjectStaysWhereItStarts) {
  const GraphBuilder::Dictionary inputs{{s("inputInitialXDrag"), 0.25},
                                        {s("inputInitialYDrag"), -0.5},
                                        {s("inputInitialRotateValue"), 30.0}};
  EXPECT_EQ(outputOf(s("QCMouseInteraction"), s("outputXDrag"), inputs).toNumber(), 0.25);
  EXPECT_EQ(outputOf(s("QCMouseInteraction"), s("outputYDrag"), inputs).toNumber(), -0.5);
  EXPECT_EQ(outputOf(s("QCMouseInteraction"), s("outputRotateValue"), inputs).toNumber(), 30);
  EXPECT_EQ(outputOf(s("QCMouseInteraction"), s("outputMagnifyValue"), inputs).toNumber(), 1);
  EXPECT_FALSE(outputOf(s("QCMouseInteraction"), s("outputMouseDown"), inputs).toBoolean());
}

TEST(NeutralPatches, LogWritesItsValueAmongTheFindingsWhenItChanges) {
  GraphBuilder graph;
  const QString log = graph.node(s("QCLog"));
  graph.publishInput(log, s("inputValue"), s("text"));
  const auto renderer = graph.renderer();
  for (const char* text : {"first", "first", "second"}) {
    renderer->setValueForInputKey(s(text), s("text"));
    (void)renderer->renderAtTime(0, QSize(8, 8));
  }
  EXPECT_EQ(renderer->findings().filter(s("logs first")).size(), 1);
  EXPECT_EQ(renderer->findings().filter(s("logs second")).size(), 1);
}

TEST(NeutralPatches, PatchInfoTellsThePublishedKeysOfAFile) {
  GraphBuilder inner;
  const QString splitter = inner.node(s("QCSplitter"));
  inner.publishInput(splitter, s("input"), s("Name"));
  inner.publishOutput(splitter, s("output"), s("Result"));
  QTemporaryDir folder;
  const QString path = folder.filePath(s("inner.qtz"));
  ASSERT_TRUE(quartz::QuartzComposition::compositionWithDictionary(inner.composition())
                  ->writeToFile(path, false));
  const auto list = [](const QString& file, const char* output) {
    return outputOf(s("QCPatchInfo"), s(output), {{s("inputPath"), file}}).toStructure();
  };
  ASSERT_EQ(list(path, "outputInputList").size(), 1);
  EXPECT_EQ(list(path, "outputInputList").at(0).toString(), s("Name"));
  EXPECT_EQ(list(path, "outputOutputList").at(0).toString(), s("Result"));
  EXPECT_EQ(list(folder.filePath(s("none.qtz")), "outputInputList").size(), 0);
}

TEST(NeutralPatches, MembersByKeyAndKeysByIndex) {
  const GraphBuilder::Dictionary structure{
      {s("inputStructure"), GraphBuilder::Dictionary{{s("away"), 1.0}, {s("home"), 2.0}}}};
  const auto asked = [&](const char* identifier, const char* port,
                         const foundation::PropertyValue& value) {
    GraphBuilder::Dictionary inputs = structure;
    inputs.insert(s(port), value);
    return outputOf(s("QCStructureMember:") + s(identifier), s("outputMember"), inputs);
  };
  EXPECT_EQ(asked("key", "inputKey", s("home")).toNumber(), 2);
  EXPECT_TRUE(asked("key", "inputKey", s("nobody")).isEmpty());
  EXPECT_EQ(asked("keyAtIndex", "inputIndex", 1).toString(), s("home"));
  EXPECT_TRUE(asked("keyAtIndex", "inputIndex", 2).toString().isEmpty());
}

TEST(NeutralPatches, NoiseIsSmoothBoundedAndFollowsItsSeed) {
  const auto noise = [](int seed, double x, double y) {
    return outputOf(s("QCNoise"), s("outputValue"), {{s("input_1"), x}, {s("input_2"), y}},
                    {{s("dimensions"), 2}, {s("randomSeed"), seed}})
        .toNumber();
  };
  double largest = 0;
  for (int i = 0; i < 40; ++i) {
    const double x = i * 0.37;
    const double value = noise(1, x, 0.5);
    largest = std::max(largest, std::abs(value));
    EXPECT_NEAR(noise(1, x + 0.001, 0.5), value, 0.02);
    EXPECT_EQ(noise(1, x, 0.5), value);
  }
  EXPECT_LE(largest, 1);
  EXPECT_GT(largest, 0.1);
  EXPECT_NE(noise(1, 0.37, 0.5), noise(2, 0.37, 0.5));
}

}  // namespace
