#include "components/ComponentCompiler.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "components/SourceReader.h"

namespace {

using components::ComponentCompiler;
using components::SourceReader;
using foundation::PropertyDictionary;
using quartz::QuartzComposition;
using quartz::QuartzPatch;

class ComponentCompilerTest : public ::testing::Test {
 protected:
  QString write(const QString& name, const QByteArray& text) {
    const QString path = m_folder.filePath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return path;
  }
  foundation::Result<std::unique_ptr<QuartzComposition>> compile(const QByteArray& text) {
    const QString path = write(QStringLiteral("source.json"), text);
    const auto source = SourceReader::objectFromFile(path);
    if (!source) return tl::unexpected(source.error());
    return ComponentCompiler::compile(*source, path);
  }
  std::string errorOf(const QByteArray& text) {
    const auto result = compile(text);
    return result ? std::string() : result.error().text().toStdString();
  }
  QTemporaryDir m_folder;
};

QByteArray plate(const QByteArray& declared, const QByteArray& nodes = "") {
  return R"({"name": "Plate", "component": {"width": 40, "height": 30, "declare": [)" + declared +
         R"(], "nodes": [{"class": "QCClear", "key": "Fill"})" + nodes + "]}}";
}

TEST_F(ComponentCompilerTest, PublishesDeclaredInputsWithTheirDefaultsThroughTheFrame) {
  const auto made = compile(plate(R"(
      {"key": "Color", "type": "color", "label": "Colour", "value": "#FF800040"}, // straight
      {"key": "Mode", "type": "index", "value": 1, "menu": ["A", "-", "B"]},
      {"key": "Picture", "type": "image"})"));
  ASSERT_TRUE(made) << made.error().text().toStdString();
  const QuartzComposition& c = **made;
  ASSERT_EQ(c.rootPatch()->nodes().size(), 1u);  // the export takes the first node
  const QuartzPatch& frame = *c.rootPatch()->nodes().front();
  EXPECT_EQ(frame.patchClass(), QStringLiteral("QCRenderInImage"));

  QStringList keys;
  for (const auto& entry : c.rootPatch()->state().value(u"publishedInputPorts").array())
    keys.append(entry.dictionary().value(u"key").toString());
  EXPECT_EQ(keys.join(u','), QStringLiteral("Color,Mode,Picture,inputWidth,inputHeight"));
  const PropertyDictionary color = c.inputParameterForKey(QStringLiteral("Color")).dictionary();
  EXPECT_NEAR(color.value(u"alpha").toDouble(), 64 / 255.0, 1e-9);
  EXPECT_NEAR(color.value(u"green").toDouble(), 128 / 255.0, 1e-9);
  EXPECT_EQ(c.inputParameterForKey(QStringLiteral("Mode")).toInteger(), 1);
  EXPECT_TRUE(c.inputParameterForKey(QStringLiteral("Picture")).isNull());
  EXPECT_EQ(c.inputParameterForKey(QStringLiteral("inputHeight")).toInteger(), 30);

  // The frame alone, as it goes into an exported graphic, knows the same defaults.
  const PropertyDictionary mode = frame.infoForPublishedInputPortWithName(QStringLiteral("Mode"));
  EXPECT_EQ(mode.value(u"state").dictionary().value(u"value").toInteger(), 1);
  const QuartzPatch& splitter = *frame.nodes()[1];
  EXPECT_EQ(splitter.patchClass(), QStringLiteral("QCSplitter"));
  EXPECT_EQ(splitter.state().value(u"indexLabels").array().size(), 3);
}

TEST_F(ComponentCompilerTest, LinksAndConnectionsJoinTheNamedPorts) {
  const auto made = compile(
      plate(R"({"key": "Amount", "type": "number", "value": 2})",
            R"(,{"key": "Half", "expression": "a / 2", "inputs": {"a": "<- Amount", "b": 0.5}})"));
  ASSERT_TRUE(made) << made.error().text().toStdString();
  const QuartzPatch& frame = *(*made)->rootPatch()->nodes().front();
  const PropertyDictionary link =
      frame.state().value(u"connections").dictionary().value(u"connection_1").dictionary();
  EXPECT_EQ(link.value(u"sourceNode").toString(), QStringLiteral("Amount"));
  EXPECT_EQ(link.value(u"sourcePort").toString(), QStringLiteral("output"));
  EXPECT_EQ(link.value(u"destinationPort").toString(), QStringLiteral("a"));
  // The variables of an expression are ports that its state creates.
  const QuartzPatch& half = *frame.nodes().back();
  EXPECT_EQ(half.state().value(u"customInputPortStates").dictionary().size(), 1);
  EXPECT_TRUE(half.state().value(u"ivarInputPortStates").dictionary().isEmpty());
}

TEST_F(ComponentCompilerTest, IncludesAreMergedAndSpliced) {
  write(
      QStringLiteral("look.json"),
      R"([{"key": "A", "type": "number", "value": 1}, {"key": "B", "type": "number", "value": 2}])");
  write(QStringLiteral("part.json"), R"({"class": "QCSprite", "key": "S", "name": "Part"})");
  const auto made =
      compile(plate(R"({"include": "look.json"})", R"(,{"include": "part.json", "key": "T"})"));
  ASSERT_TRUE(made) << made.error().text().toStdString();
  const QuartzPatch& frame = *(*made)->rootPatch()->nodes().front();
  ASSERT_EQ(frame.nodes().size(), 4u);
  EXPECT_EQ(frame.nodes()[1]->key(), QStringLiteral("B"));
  EXPECT_EQ(frame.nodes()[3]->key(), QStringLiteral("T"));
  EXPECT_EQ(frame.nodes()[3]->patchClass(), QStringLiteral("QCSprite"));
}

TEST_F(ComponentCompilerTest, DefaultsOfASourceReplaceThoseOfTheIncludedOne) {
  write(QStringLiteral("base.json"), plate(R"({"key": "Size", "type": "number", "value": 1})"));
  const auto made = compile(R"({"include": "base.json", "defaults": {"Size": 7}})");
  ASSERT_TRUE(made) << made.error().text().toStdString();
  EXPECT_EQ((*made)->inputParameterForKey(QStringLiteral("Size")).toDouble(), 7);
  EXPECT_NE(errorOf(R"({"include": "base.json", "defaults": {"Sise": 7}})").find("Sise"),
            std::string::npos);
}

TEST_F(ComponentCompilerTest, ErrorsNameTheFileThePlaceAndTheReason) {
  const struct {
    QByteArray source;
    const char* part;
  } cases[] = {
      {"{\n// fine\n\"name\": }", "line 3"},
      {"[]", "one object"},
      {R"({"include": "missing.json"})", "missing.json"},
      {R"({"include": "source.json"})", "circles"},
      {R"({"nmae": "x"})", "nmae"},
      {plate(R"({"key": "A", "type": "colour", "value": "#000000"})"), "component.declare[0]"},
      {plate(R"({"key": "A", "type": "number", "value": "1"})"), "another type"},
      {plate(R"({"key": "Fill", "type": "number", "value": 1})"), "Fill"},
      {plate("", R"(,{"key": "X"})"), "component.nodes[1] (X)"},
      {plate("", R"(,{"class": "QCSprite", "key": "S", "inputs": {"inputX": "<- Nobody.out"}})"),
       "Nobody"},
      {plate("", R"(,{"class": "QCSprite", "key": "S", "inputs": {"inputColor": null}})"),
       "inputColor"},
      {R"({"nodes": [], "connections": ["A.b B.c"]})", "connections[0]"},
      {R"({"nodes": [], "publish": [{"port": "A.b"}]})", "publish[0]"},
  };
  for (const auto& c : cases) {
    const std::string text = errorOf(c.source);
    EXPECT_NE(text.find(c.part), std::string::npos) << text << "\n" << c.source.toStdString();
    EXPECT_NE(text.find("source.json"), std::string::npos) << text;
  }
}

TEST_F(ComponentCompilerTest, CommentsEndAtTheLineAndLeaveStringsAlone) {
  EXPECT_EQ(SourceReader::withoutComments("{\"a\": \"x//y\\\"//\"} // z\n1"),
            QByteArray("{\"a\": \"x//y\\\"//\"}     \n1"));
}

TEST_F(ComponentCompilerTest, TheSameSourceGivesTheSameBytes) {
  const QDir folder(QStringLiteral(TESSARY_COMPONENT_SOURCES));
  const QStringList names = folder.entryList({QStringLiteral("*.json")}, QDir::Files);
  ASSERT_GE(names.size(), 15);
  for (const QString& name : names) {
    QByteArray bytes[2];
    for (QByteArray& each : bytes) {
      const QString output = m_folder.filePath(QStringLiteral("out/") + name);
      const auto done = ComponentCompiler::compileFile(folder.filePath(name), output);
      ASSERT_TRUE(done) << done.error().text().toStdString();
      QFile file(output);
      ASSERT_TRUE(file.open(QIODevice::ReadOnly));
      each = file.readAll();
    }
    EXPECT_EQ(bytes[0], bytes[1]) << name.toStdString();
  }
}

}  // namespace
