#include "runtime/CompositionChecker.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>

#include "support/GraphBuilder.h"

namespace {

using foundation::Finding;
using foundation::Findings;
using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using support::GraphBuilder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

QString s(const char* text) {
  return QString::fromLatin1(text);
}

Findings check(const PropertyDictionary& file, const QString& fileName = {}) {
  const auto composition = quartz::QuartzComposition::compositionWithDictionary(file);
  return runtime::CompositionChecker::check(*composition, fileName);
}
Findings check(const GraphBuilder& graph, const QString& fileName = {}) {
  return check(graph.composition(), fileName);
}

/// "code at object" of each finding.
std::vector<std::string> places(const Findings& findings) {
  std::vector<std::string> texts;
  for (const Finding& finding : findings) {
    EXPECT_FALSE(finding.sentence.isEmpty());
    texts.push_back((finding.code + s(" at ") + finding.object).toStdString());
  }
  return texts;
}

/// A connection as GraphBuilder makes it, for places where that would be refused.
PropertyDictionary connection(const char* from, const char* output, const char* to,
                              const char* input) {
  return {{s("sourceNode"), s(from)},
          {s("sourcePort"), s(output)},
          {s("destinationNode"), s(to)},
          {s("destinationPort"), s(input)}};
}

TEST(CompositionChecker, SoundGraphsHaveNoFindings) {
  GraphBuilder inner;
  const QString sprite = inner.node(s("QCSprite"));
  inner.publishInput(sprite, s("inputX"), s("Place"));
  inner.publishInput(sprite, s("_enable"), s("Shown"));
  const QString math = inner.node(s("QCMath"), {{s("numberOfOperations"), 2}});
  inner.publishInput(math, s("operand_2"), s("Plus"));
  inner.publishOutput(math, s("outputValue"), s("Sum"));
  GraphBuilder graph;
  const QString macro = graph.macro(s("QCPatch"), inner);
  const QString lfo = graph.node(s("QCLFO"));
  const QString clear =
      graph.node(s("QCClear"), {},
                 {{s("inputColor"),
                   PropertyDictionary{
                       {s("red"), 1}, {s("green"), 0.5}, {s("blue"), true}, {s("alpha"), 1.0}}}});
  graph.connect(lfo, s("outputValue"), macro, s("Place"));
  graph.connect(lfo, s("outputValue"), macro, s("_enable"));
  graph.connect(macro, s("Sum"), clear, s("_enable"));
  graph.publishInput(macro, s("Plus"), s("Plus"));
  graph.setParameter(s("Plus"), 3);
  EXPECT_THAT(places(check(graph)), IsEmpty());
}

TEST(CompositionChecker, ConnectionsThatLeadNowhere) {
  GraphBuilder graph;
  const QString lfo = graph.node(s("QCLFO"));        // QCLFO_1
  const QString sprite = graph.node(s("QCSprite"));  // QCSprite_2
  graph.connect(s("Gone"), s("output"), sprite, s("inputX"));
  graph.connect(lfo, s("outputValue"), s("Gone"), s("input"));
  graph.connect(lfo, s("outputNothing"), sprite, s("inputY"));
  graph.connect(lfo, s("outputValue"), sprite, s("inputNothing"));
  EXPECT_THAT(places(check(graph)),
              UnorderedElementsAre("connection-from-missing-node at Root/QCSprite_2",
                                   "connection-to-missing-node at Root/QCLFO_1",
                                   "connection-from-missing-port at Root/QCLFO_1",
                                   "connection-to-missing-port at Root/QCSprite_2"));
}

TEST(CompositionChecker, PortsThatTheStateMakesCountAndNoOthers) {
  GraphBuilder graph;
  const QString lfo = graph.node(s("QCLFO"));
  const QString math = graph.node(s("QCMath"), {{s("numberOfOperations"), 1}});
  graph.connect(lfo, s("outputValue"), math, s("operand_1"));
  EXPECT_THAT(places(check(graph)), IsEmpty());
  graph.connect(lfo, s("outputValue"), math, s("operand_2"));
  EXPECT_THAT(places(check(graph)), ElementsAre("connection-to-missing-port at Root/QCMath_2"));
}

TEST(CompositionChecker, ConnectionsThatCannotCarryAnything) {
  struct Case {
    const char* source;
    const char* output;
    const char* destination;
    const char* input;
    bool fits;
  };
  const Case cases[] = {
      {"QCLFO", "outputValue", "QCSprite", "inputImage", false},
      {"QCImageLoader", "outputImage", "QCSprite", "inputX", false},
      {"QCImageLoader", "outputImage", "QCSprite", "_enable", true},
      {"QCLFO", "outputValue", "QCSprite", "inputColor", true},
      {"QCStringMD5", "outputString", "QCSprite", "inputColor", false},
      {"QCStringMD5", "outputString", "QCSprite", "inputX", true},
      {"QCStringComponents", "outputComponents", "QCStringMD5", "inputString", true},
      {"QCStringComponents", "outputComponents", "QCSprite", "inputX", false},
      {"QCLFO", "outputValue", "QCStructureCount", "inputStructure", false},
      {"QCSplitter", "output", "QCSprite", "inputImage", true}};
  for (const Case& c : cases) {
    GraphBuilder graph;
    const QString source = graph.node(s(c.source));
    const QString destination = graph.node(s(c.destination));
    graph.connect(source, s(c.output), destination, s(c.input));
    const Findings findings = check(graph);
    EXPECT_EQ(findings.isEmpty(), c.fits) << c.source << " " << c.destination << "." << c.input;
    for (const Finding& finding : findings) EXPECT_EQ(finding.code, s("connection-type-mismatch"));
  }
}

TEST(CompositionChecker, InputsAndKeysThatAreTakenTwice) {
  const PropertyDictionary splitter{{s("class"), s("QCSplitter")}, {s("key"), s("A")}};
  const PropertyDictionary state{
      {s("nodes"),
       PropertyArray{splitter, splitter, splitter,
                     PropertyDictionary{{s("class"), s("QCSprite")}, {s("key"), s("B")}}}},
      {s("connections"), PropertyDictionary{{s("c1"), connection("A", "output", "B", "inputX")},
                                            {s("c2"), connection("A", "output", "B", "inputX")}}}};
  EXPECT_THAT(
      places(check(PropertyDictionary{
          {s("rootPatch"), PropertyDictionary{{s("class"), s("QCPatch")}, {s("state"), state}}}})),
      UnorderedElementsAre("duplicate-node-key at Root/A", "input-connected-twice at Root/B"));
}

TEST(CompositionChecker, PublishedPorts) {
  GraphBuilder inner;
  const QString sprite = inner.node(s("QCSprite"));
  inner.publishInput(sprite, s("inputX"), s("Place"));
  inner.publishInput(sprite, s("inputY"), s("Place"));
  inner.publishInput(sprite, s("inputQ"), s("Other"));
  inner.publishOutput(s("Gone"), s("output"), s("Result"));
  inner.publishOutput(sprite, s("outputX"), s("Place"));  // inputs and outputs are kept apart
  GraphBuilder graph;
  const QString macro = graph.macro(s("QCPatch"), inner);
  graph.publishInput(macro, s("Place"), s("Place"));
  graph.publishInput(macro, s("inputX"), s("Inner"));
  EXPECT_THAT(places(check(graph)),
              UnorderedElementsAre("published-key-twice at Root/QCPatch_1",
                                   "published-port-missing-port at Root/QCPatch_1/QCSprite_1",
                                   "published-port-missing-node at Root/QCPatch_1",
                                   "published-port-missing-port at Root/QCPatch_1/QCSprite_1",
                                   "published-port-missing-port at Root/QCPatch_1"));
}

TEST(CompositionChecker, ValuesOfAWrongType) {
  const std::pair<const char*, PropertyDictionary> cases[] = {
      {"QCStringMD5", {{s("inputString"), QByteArray("text")}}},
      {"QCSprite", {{s("inputX"), s("left")}}},
      {"QCSprite", {{s("inputColor"), s("red")}}},
      {"QCSprite", {{s("inputColor"), PropertyDictionary{{s("red"), 1.0}}}}},
      {"QCSprite", {{s("inputImage"), 1}}},
      {"QCStructureCount", {{s("inputStructure"), s("a")}}}};
  for (const auto& [name, inputs] : cases) {
    GraphBuilder graph;
    graph.node(s(name), {}, inputs);
    EXPECT_THAT(places(check(graph)),
                ElementsAre(std::string("port-value-type at Root/") + name + "_1"));
  }
  GraphBuilder graph;  // what is connected is not looked at, what the root holds is
  const QString sprite = graph.node(s("QCSprite"), {}, {{s("inputX"), s("left")}});
  graph.connect(graph.node(s("QCLFO")), s("outputValue"), sprite, s("inputX"));
  graph.publishInput(sprite, s("inputY"), s("Y"));
  EXPECT_THAT(places(check(graph)), IsEmpty());
  graph.setParameter(s("Y"), s("up"));
  EXPECT_THAT(places(check(graph)), ElementsAre("port-value-type at Root"));
}

TEST(CompositionChecker, UnknownPatchesAreToldOnceAndTheirPortsNotJudged) {
  GraphBuilder inner;
  inner.node(s("XYDrawing"));
  GraphBuilder graph;
  const QString first = graph.node(s("XYDrawing"));
  const QString macro = graph.macro(s("QCPatch"), inner);
  graph.connect(first, s("outputWhatever"), first, s("inputWhatever"));
  graph.connect(first, s("outputSwitch"), macro, s("_enable"));  // it may hold something that draws
  graph.publishInput(first, s("inputMore"), s("More"));
  EXPECT_THAT(places(check(graph)), ElementsAre("unknown-class at Root/XYDrawing_1"));
}

TEST(CompositionChecker, VirtualPatchesAreLookedAtOnce) {
  GraphBuilder content;
  const QString sprite = content.node(s("QCSprite"), {}, {{s("inputX"), s("left")}});
  content.publishInput(sprite, s("inputY"), s("Y"));
  GraphBuilder graph;
  const QString lfo = graph.node(s("QCLFO"));
  for (int i = 0; i < 2; ++i)
    graph.connect(lfo, s("outputValue"), graph.node(s("/box")), i == 0 ? s("Y") : s("Q"));
  graph.node(s("/gone"));
  PropertyDictionary file = graph.composition();
  file.insert(s("virtualPatches"), PropertyDictionary{{s("/box"), content.composition()}});
  EXPECT_THAT(places(check(file)), UnorderedElementsAre("port-value-type at /box/QCSprite_1",
                                                        "connection-to-missing-port at Root//box_3",
                                                        "missing-virtual-patch at Root//gone_4"));

  GraphBuilder itself;
  itself.node(s("/box"));
  file.insert(s("virtualPatches"), PropertyDictionary{{s("/box"), itself.composition()}});
  const std::vector<std::string> found = places(check(file));
  EXPECT_THAT(found, testing::Contains("virtual-patch-contains-itself at /box//box_1"));
  EXPECT_THAT(found, testing::Contains("not-playable at Root"));
}

TEST(CompositionChecker, LoopsThatFeedThemselvesOnly) {
  GraphBuilder graph;
  const QString a = graph.node(s("QCSplitter"));
  const QString b = graph.node(s("QCMath"), {{s("numberOfOperations"), 1}});
  graph.connect(a, s("output"), b, s("inputValue"));
  graph.connect(b, s("outputValue"), a, s("input"));
  const Findings closed = check(graph);
  EXPECT_THAT(places(closed), ElementsAre("feedback-loop at Root/QCSplitter_1"));
  EXPECT_TRUE(closed[0].sentence.contains(QStringLiteral("QCSplitter_1 → QCMath_2 → QCSplitter_1")))
      << closed[0].sentence.toStdString();
  // Adding up what comes from outside is what loops are used for.
  graph.connect(graph.node(s("QCLFO")), s("outputValue"), b, s("operand_1"));
  EXPECT_THAT(places(check(graph)), IsEmpty());
}

TEST(CompositionChecker, WaysThroughMacrosThatOnlyLookLikeLoops) {
  GraphBuilder inner;
  const QString first = inner.node(s("QCSplitter"));
  const QString second = inner.node(s("QCSplitter"));
  inner.publishInput(first, s("input"), s("in1"));
  inner.publishOutput(first, s("output"), s("out1"));
  inner.publishInput(second, s("input"), s("in2"));
  inner.publishOutput(second, s("output"), s("out2"));
  GraphBuilder graph;
  const QString macro = graph.macro(s("QCPatch"), inner);
  graph.connect(macro, s("out1"), macro, s("in2"));
  EXPECT_THAT(places(check(graph)), IsEmpty());
}

TEST(CompositionChecker, FilesThatAreNeededBesides) {
  QTemporaryDir folder;
  const QString file = folder.filePath(s("graphic.qtz"));
  for (const QString& name : {file, folder.filePath(s("there.png"))}) {
    QFile made(name);
    ASSERT_TRUE(made.open(QIODevice::WriteOnly));
  }
  const std::pair<const char*, const char*> pictures[] = {{"", ""},
                                                          {"there.png", ""},
                                                          {"http://example.org/a.png", ""},
                                                          {"gone.png", "missing-file"},
                                                          {"~/gone.png", "absolute-path"},
                                                          {"file:///gone.png", "absolute-path"},
                                                          {"/there.png", "absolute-path"}};
  for (const auto& [location, code] : pictures) {
    GraphBuilder graph;
    graph.node(s("QCImageDownloader"), {}, {{s("inputURL"), s(location)}});
    const Findings findings = check(graph, file);
    EXPECT_EQ(findings.isEmpty() ? QString() : findings[0].code, s(code)) << location;
    EXPECT_LE(findings.size(), 1);
  }
  GraphBuilder unplaced;  // nobody can say what lies beside a file without a place
  unplaced.node(s("QCImageDownloader"), {}, {{s("inputURL"), s("gone.png")}});
  EXPECT_THAT(places(check(unplaced)), IsEmpty());

  GraphBuilder others;
  others.node(s("QCPatchRenderer"), {}, {{s("inputPath"), s("graphic.qtz")}});
  others.node(s("QCImageLoader"), {{s("imagePath"), s("~/a.png")}});
  others.node(s("QCImageLoader"),
              {{s("imagePath"), s("~/a.png")}, {s("imageData"), QByteArray("GIF")}});
  EXPECT_THAT(places(check(others, file)),
              UnorderedElementsAre("composition-loads-itself at Root/QCPatchRenderer_1",
                                   "missing-file at Root/QCImageLoader_2"));
}

TEST(CompositionChecker, LocationsAreFollowedThroughSplittersAndPublishedPorts) {
  GraphBuilder inner;
  const QString loader = inner.node(s("QCImageDownloader"));
  inner.publishInput(loader, s("inputURL"), s("Picture"));
  GraphBuilder graph;
  const QString macro = graph.macro(s("QCPatch"), inner);
  const QString splitter = graph.node(s("QCSplitter"), {{s("portClass"), s("QCStringPort")}});
  graph.connect(splitter, s("output"), macro, s("Picture"));
  graph.publishInput(splitter, s("input"), s("Logo"));
  graph.setParameter(s("Logo"), s("/logos/a.png"));
  EXPECT_THAT(places(check(graph)),
              ElementsAre("absolute-path at Root/QCPatch_1/QCImageDownloader_1"));
}

TEST(CompositionChecker, LocationsThatAMacrosOwnInputHolds) {
  GraphBuilder inner;
  const QString loader = inner.node(s("QCMovieImporter"));
  const PropertyDictionary published{
      {s("key"), s("Filename")},
      {s("node"), loader},
      {s("port"), s("inputMovieLocation")},
      {s("state"), PropertyDictionary{{s("value"), s("/movies/a.mov")}}}};
  GraphBuilder graph;
  const QString macro =
      graph.macro(s("QCPatch"), inner, {}, {{s("publishedInputPorts"), PropertyArray{published}}});
  EXPECT_THAT(places(check(graph)),
              ElementsAre("absolute-path at Root/QCPatch_1/QCMovieImporter_1"));

  // What is connected counts instead.
  const QString splitter = graph.node(s("QCSplitter"), {{s("portClass"), s("QCStringPort")}});
  graph.connect(splitter, s("output"), macro, s("Filename"));
  EXPECT_THAT(places(check(graph)), IsEmpty());
}

}  // namespace
