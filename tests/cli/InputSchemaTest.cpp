#include "playout/InputSchema.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <valijson/adapters/qtjson_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

#include "playout/InputValues.h"
#include "support/GraphBuilder.h"
#include "support/TessaryProgram.h"

namespace {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using support::Outcome;
using support::tessary;

QString q(const char* text) {
  return QString::fromUtf8(text);
}

/// A schema as somebody else's validator understands it.
class Schema {
 public:
  explicit Schema(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    EXPECT_TRUE(document.isObject()) << json.toStdString();
    root = document.object();
    valijson::SchemaParser().populateSchema(valijson::adapters::QtJsonAdapter(root), m_schema);
  }
  [[nodiscard]] bool takes(const QJsonObject& values) const {
    const QJsonValue value = values;
    return valijson::Validator().validate(m_schema, valijson::adapters::QtJsonAdapter(value),
                                          nullptr);
  }
  QJsonObject root;

 private:
  valijson::Schema m_schema;
};

/// Publishes an input of the type under the type's name.
void addInput(support::GraphBuilder& graph, const char* key, const char* type,
              const PropertyDictionary& state = {}) {
  PropertyDictionary whole = state;
  whole.insert(q("portClass"), q("QC") + q(type) + q("Port"));
  graph.publishInput(graph.node(q("QCSplitter"), whole), q("input"), q(key));
}

PropertyDictionary limits(double lowest, double highest) {
  return {{q("inputMin"), lowest}, {q("inputMax"), highest}};
}

PropertyDictionary menu(const QStringList& titles) {
  PropertyArray labels;
  for (const QString& title : titles) labels.append(title);
  return {{q("indexLabels"), labels}};
}

support::GraphBuilder everyKindOfInput() {
  support::GraphBuilder graph;
  addInput(graph, "Number", "Number");
  addInput(graph, "Share", "Number", limits(-0.25, 1.5));
  addInput(graph, "Impossible", "Number", limits(2, 1));
  addInput(graph, "Index", "Index");
  PropertyDictionary upTo{{q("inputMax"), 2.9}};
  addInput(graph, "Few", "Index", upTo);
  addInput(graph, "Choice", "Index",
           menu({q("Links"), q("-"), q("2"), q("Größer \"oben\""), q("Links")}));
  upTo = menu({q("A"), q("B"), q("C")});
  upTo.insert(q("inputMax"), 1.0);
  addInput(graph, "Shorter", "Index", upTo);
  upTo.insert(q("inputMax"), 7.0);
  addInput(graph, "Longer", "Index", upTo);
  addInput(graph, "Switch", "Boolean");
  addInput(graph, "Text", "String");
  addInput(graph, "Paint", "Color");
  addInput(graph, "Picture", "Image");
  addInput(graph, "Rows", "Structure");
  addInput(graph, "Anything", "Virtual");
  addInput(graph, "Ein \"Schlüssel\" \\n", "String");
  addInput(graph, "Shape", "Mesh");
  return graph;
}

TEST(InputSchema, TakesExactlyWhatIsTakenAsAValue) {
  const auto renderer = everyKindOfInput().renderer();
  const Schema schema(playout::InputSchema(q("All"), *renderer).json().toUtf8());
  const QByteArray probes =
      R"([0, 1, 2, 3, 4, 7, 8, -1, 0.5, -0.25, -0.26, 1.5, 1.5000001, 2.0, 1e9, true, false, null,
          "", "1", "2", "0.5", "on", "true", "A", "B", "C", "Links", "links", "-", "Größer \"oben\"",
          "#12345", "#123456", "#12345678", "#1234567", "123456", "#0x1234", "#+12345", "#12345G",
          " #123456", "#123456\n", "red", [], [1, "a", [true]], {}, {"a": {"b": null}}])";
  const QJsonArray values = QJsonDocument::fromJson(probes).array();
  ASSERT_EQ(values.size(), 46);
  for (const QString& key : renderer->inputKeys()) {
    const auto port = *renderer->inputAttributes(key);
    int taken = 0;
    for (const QJsonValue value : values) {
      const auto read = playout::InputValues::fromJson(value, port, QString());
      // What can be wrong with a picture's file is not the schema's to say.
      const bool isTaken = read || read.error().kind == playout::ValueFailure::Kind::Unreadable;
      taken += isTaken ? 1 : 0;
      EXPECT_EQ(schema.takes({{key, value}}), isTaken)
          << key.toStdString() << ": "
          << QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).toStdString();
    }
    EXPECT_EQ(taken == 0, key == q("Shape")) << key.toStdString();
  }
  EXPECT_TRUE(schema.takes({{q("Few"), 2}, {q("Share"), 1}, {q("Text"), 4}}));
  EXPECT_FALSE(schema.takes({{q("Few"), 2}, {q("Unknown"), 1}}));
}

TEST(InputSchema, DescribesInputsInTheOrderOfTheFile) {
  support::GraphBuilder graph;
  addInput(graph, "Zebra", "Number", limits(0, 1));
  addInput(graph, "apple", "Index", menu({q("Left"), q("Right")}));
  addInput(graph, "Middle", "Color");
  addInput(graph, "Rows", "Structure");
  graph.setParameter(q("Zebra"), 0.25);
  graph.setParameter(q("apple"), 1);
  graph.setParameter(
      q("Middle"),
      PropertyDictionary{{q("red"), 1.0}, {q("green"), 0.0}, {q("blue"), 0.2}, {q("alpha"), 0.0}});
  graph.setParameter(q("Rows"),
                     PropertyArray{PropertyDictionary{{q("name"), q("Ada")}, {q("points"), 3}}});
  const QByteArray text = playout::InputSchema(q("A \"b\""), *graph.renderer()).json().toUtf8();
  qsizetype last = -1;
  for (const char* key : {"\"Zebra\"", "\"apple\"", "\"Middle\"", "\"Rows\""}) {
    EXPECT_GT(text.indexOf(key), last) << key;
    last = text.indexOf(key);
  }
  const QJsonObject expected =
      QJsonDocument::fromJson(R"({"$schema": "https://json-schema.org/draft/2020-12/schema",
        "title": "A \"b\"", "type": "object", "additionalProperties": false, "properties": {
        "Zebra": {"title": "Input", "type": "number", "minimum": 0, "maximum": 1, "default": 0.25},
        "apple": {"title": "Input", "enum": ["Left", "Right", 0, 1], "default": "Right",
                  "description": "0 Left, 1 Right"},
        "Middle": {"title": "Input", "type": "string", "default": "#FF003300",
                   "pattern": "^#([0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})$",
                   "description": "#RRGGBB or #RRGGBBAA"},
        "Rows": {"title": "Input", "type": ["array", "object"],
                 "default": [{"name": "Ada", "points": 3}]}}})")
          .object();
  EXPECT_EQ(QJsonDocument::fromJson(text).object(), expected) << text.toStdString();
  const support::GraphBuilder empty;
  EXPECT_TRUE(Schema(playout::InputSchema({}, *empty.renderer()).json().toUtf8()).takes({}));
}

/// A schema and a graphic on air must agree: each is asked through the program.
class SchemaOfExample : public testing::Test {
 protected:
  void makeFrom(const QString& source) {
    const Outcome exported = tessary({q("export"), source, graphic});
    ASSERT_LE(exported.status, 1) << exported.error.toStdString();
    const Outcome shown = tessary({q("info"), graphic, q("--schema")});
    ASSERT_EQ(shown.status, 0) << shown.error.toStdString();
    schema.emplace(shown.out);
    const Outcome ofSource = tessary({q("info"), source, q("--schema")});
    EXPECT_EQ(Schema(ofSource.out).root[q("properties")], schema->root[q("properties")]);
  }
  int statusOfRender(const QJsonObject& values) {
    QFile file(folder.filePath(q("values.json")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(values).toJson());
    file.close();
    return tessary({q("render"), graphic, q("-o"), folder.filePath(q("out.png")), q("--size"),
                    q("32x18"), q("--values"), file.fileName()})
        .status;
  }
  QJsonObject defaults() const {
    QJsonObject values;
    const QJsonObject properties = schema->root[q("properties")].toObject();
    for (auto it = properties.begin(); it != properties.end(); ++it)
      if (it->toObject().contains(q("default")))
        values.insert(it.key(), it->toObject()[q("default")]);
    return values;
  }
  QTemporaryDir folder;
  QString graphic = folder.filePath(q("graphic.qtz"));
  std::optional<Schema> schema;
};

const char* const sheet = R"(new graphic.composition --mode "HD 1080p25" --duration 1
  stop 0.5
  add Rectangle title=Bar fields=Color,opacity,x
  add Text title=Name fields=Text,Font_Name,Justification,Smallest_Size
  add ImageComponent title=Logo Image=@logo.png fields=Image)";

TEST_F(SchemaOfExample, WhatItRefusesIsRefusedOnAir) {
  ASSERT_TRUE(QImage(2, 2, QImage::Format_RGB32).save(folder.filePath(q("logo.png"))));
  const Outcome made = support::batch(q(sheet), folder.path());
  ASSERT_EQ(made.status, 0) << made.error.toStdString();
  ASSERT_NO_FATAL_FAILURE(makeFrom(folder.filePath(q("graphic.composition"))));
  const char* const sound[] = {
      "{}",
      R"({"trigger": true, "clear_enable": false, "Bar_Enable": false, "Name_Text": "Ada",
          "Name_Justification": "Right", "Bar_Color": "#A1b2C3", "Logo_Image": "logo.png"})",
      R"({"Name_Text": 3.5, "Name_Justification": 1, "Bar_Color": "#00000000", "Logo_Image": ""})"};
  for (const char* text : sound) {
    const QJsonObject values = QJsonDocument::fromJson(text).object();
    EXPECT_TRUE(schema->takes(values)) << text;
    EXPECT_EQ(statusOfRender(values), 0) << text;
  }
  const char* const wrong[] = {R"({"Name Text": "Ada"})",
                               R"({"Name_Text": "Ada", "name_text": "Ada"})",
                               R"({"Name_Text": ["Ada"]})",
                               R"({"Name_Justification": 3})",
                               R"({"Name_Justification": "right"})",
                               R"({"Name_Justification": -1})",
                               R"({"Name_Justification": 0.5})",
                               R"({"Name_Smallest_Size": 0.5})",
                               R"({"Name_Smallest_Size": "48"})",
                               R"({"Bar_Color": "#12345"})",
                               R"({"Bar_Color": "blue"})",
                               R"({"Bar_Enable": 1})",
                               R"({"trigger": "on"})",
                               R"({"Logo_Image": null})"};
  for (const char* text : wrong) {
    const QJsonObject values = QJsonDocument::fromJson(text).object();
    ASSERT_FALSE(values.isEmpty()) << text;
    EXPECT_FALSE(schema->takes(values)) << text;
    EXPECT_EQ(statusOfRender(values), 2) << text;
  }
}

TEST_F(SchemaOfExample, DefaultsAreTaken) {
  for (const char* name : {"lower-third", "score-board", "ticker", "weather-strap"}) {
    ASSERT_NO_FATAL_FAILURE(
        makeFrom(QStringLiteral(TESSARY_EXAMPLES "/harbour/%1.composition").arg(q(name))));
    const QJsonObject values = defaults();
    EXPECT_GE(values.size(), 5) << name;
    EXPECT_TRUE(schema->takes(values)) << name;
    EXPECT_EQ(statusOfRender(values), 0) << name;
    EXPECT_FALSE(schema->root[q("properties")].toObject()[q("clear_enable")].isUndefined());
  }
}

TEST(InfoCommand, AsksForOneFormAtATime) {
  const Outcome outcome = tessary({q("info"), q("x.qtz"), q("--schema"), q("--json")});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_TRUE(outcome.error.contains(q("exclude"))) << outcome.error.toStdString();
  EXPECT_EQ(tessary({q("info"), q("x.qtz"), q("--schema")}).status, 3);
}

}  // namespace
