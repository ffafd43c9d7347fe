#include "model/CompositionSource.h"

#include "ComponentFiles.h"

namespace model {

namespace {

class Source : public testing::Test {
 protected:
  void SetUp() override {
    const auto port = [](const char* name) { return QString::fromLatin1(name); };
    m_files.writeComponent(QStringLiteral("Card.qtz"),
                           {{port("Text"), port("QCStringPort"), QStringLiteral("x"), {}},
                            {port("Tint"), port("QCColorPort"), {}, {}},
                            {port("Amount"), port("QCNumberPort"), 1.0, {}},
                            {port("Shown"), port("QCBooleanPort"), true, {}},
                            {port("Choice"), port("QCIndexPort"), 0, {}},
                            {port("Picture"), port("QCGLImagePort"), {}, {}},
                            {port("Image_Path"), port("QCStringPort"), {}, {}}});
    QImage picture(3, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(m_files.path(QStringLiteral("logo.png"))));
  }
  foundation::Result<SourcedComposition> read(const QByteArray& json) {
    return CompositionSource(m_files.standardComponents())
        .compositionFromData(json, m_files.path(QStringLiteral("card.json")));
  }
  /// One component with these members besides what it must have.
  static QByteArray card(const QByteArray& members) {
    return R"({"format": "HD 1080p50", "duration": 2, "components": [
      {"title": "Name", "component": "Card", )" +
           members + "}]}";
  }
  QString errorOf(const QByteArray& json) {
    const auto result = read(json);
    return result ? QStringLiteral("no error") : result.error().text();
  }

  ComponentFiles m_files;
};

}  // namespace

TEST_F(Source, ReadsAGraphic) {
  const auto result = read(R"({
    "format": "HD 1080p50", "duration": 3.5, "poster": 0.8,
    "background": {"color": "#FF000080"},
    "stopFrames": [{"time": 0.8, "trigger": "Out"}, {"time": 2}],
    "components": [
      {"component": "Card.qtz", "width": 100, "height": 50},
      {"title": "Name", "component": "Card", "x": 10, "y": 20, "width": 30, "height": 40,
       "rotation": 5, "opacity": 0.5, "margins": [1, 2], "startTime": 1, "endTime": 2,
       "enabled": false, "permissions": ["Text", "originX"],
       "inputs": {"Text": "Hello", "Tint": "#00FF0080", "Amount": 2, "Shown": false, "Choice": 3,
                  "Picture": {"file": "logo.png"}, "Image_Path": {"file": "logo.png"}},
       "keyFrames": {"inputWidth": [[0, 0], [0.5, 30]]}}]})");
  ASSERT_TRUE(result) << result.error().text().toStdString();
  const Composition& graphic = *result->composition;
  EXPECT_EQ(graphic.broadcastMode(), QStringLiteral("HD 1080p50"));
  EXPECT_EQ(graphic.duration(), 3.5);
  EXPECT_EQ(graphic.posterFrameTimepoint(), 0.8);
  EXPECT_EQ(graphic.backgroundMode(), BackgroundMode::SolidColor);
  EXPECT_EQ(graphic.stopFrameTimepoints(), (QList<double>{0.8, 2}));
  const auto sorted = graphic.componentsSortedByZLevel();
  ASSERT_EQ(sorted.size(), 2);
  EXPECT_EQ(sorted[0]->title(), QStringLiteral("Card"));
  EXPECT_EQ(sorted[0]->drawingFrame(), QRectF(910, 515, 100, 50));
  EXPECT_EQ(sorted[0]->endTime(), 3.5);

  const QuartzComponent& card = *sorted[1];
  const auto value = [&](const char* key) {
    return card.attributeForKey(QString::fromLatin1(key))->currentValue();
  };
  EXPECT_EQ(card.originX(), 10);
  EXPECT_EQ(card.marginY(), 2);
  EXPECT_EQ(card.zRotation(), 5);
  EXPECT_EQ(card.startTime(), 1);
  EXPECT_FALSE(card.visibleInCompositionEditor());
  EXPECT_EQ(value("Text"), AttributeValue(QStringLiteral("Hello")));
  EXPECT_EQ(value("Tint"), AttributeValue(foundation::Color{0, 1, 0, 128 / 255.0}));
  EXPECT_EQ(value("Choice"), AttributeValue(qint64(3)));
  EXPECT_EQ(value("Shown"), AttributeValue(false));
  EXPECT_EQ(value("Picture").toImage().size(), QSize(3, 2));
  EXPECT_EQ(value("Image_Path"), AttributeValue(m_files.path(QStringLiteral("logo.png"))));
  EXPECT_TRUE(card.attributeForKey(QStringLiteral("Text"))->permissionToChange());
  EXPECT_FALSE(card.attributeForKey(QStringLiteral("Tint"))->permissionToChange());
  EXPECT_EQ(card.attributeForKey(QStringLiteral("inputWidth"))->valueAtTimepoint(0.25),
            AttributeValue(15.0));
}

TEST_F(Source, ErrorsNameTheFileAndThePlace) {
  const auto expectError = [&](const QByteArray& json, const char* part) {
    const QString error = errorOf(json);
    EXPECT_TRUE(error.contains(QString::fromUtf8(part))) << error.toStdString();
    EXPECT_TRUE(error.contains(QStringLiteral("card.json"))) << error.toStdString();
  };
  expectError("{\n \"format\": }", "line 2");
  expectError("[]", "must be an object");
  expectError(R"({"format": "VHS", "duration": 1})", "format: there is no video format \"VHS\"");
  expectError(R"({"format": "UHD p50", "duration": 0})", "duration: must be above 0");
  expectError(R"({"format": "UHD p50", "duration": 1, "colour": 1})", "colour: is not known");
  expectError(R"({"format": "UHD p50", "duration": 1, "stopFrames": [{"time": 2}]})",
              "stopFrames[0], time: must lie within the duration");
  expectError(R"({"format": "UHD p50", "duration": 1, "components": [{"component": "Nope"}]})",
              "components[0], component: there is no standard component \"Nope\"");
  expectError(card(R"("inputs": {"Nope": 1})"),
              "components[0] \"Name\", inputs.Nope: the component has no input \"Nope\"");
  expectError(card(R"("inputs": {"Tint": "red"})"), "inputs.Tint: must be a colour");
  expectError(card(R"("inputs": {"Amount": "1"})"), "inputs.Amount: must be a number");
  expectError(card(R"("inputs": {"Choice": 1.5})"), "inputs.Choice: must be a whole number");
  expectError(card(R"("inputs": {"Picture": {"file": "no.png"}})"), "there is no file \"no.png\"");
  expectError(card(R"("inputs": {"opacity": 1})"), "is set by x, y");
  expectError(card(R"("opacity": 2)"), "opacity: must lie between 0 and 1");
  expectError(card(R"("width": -1)"), "width: must not be negative");
  expectError(card(R"("startTime": 2, "endTime": 1)"), "the end lies before the start");
  expectError(card(R"("keyFrames": {"marginX": [[0, 1]]})"), "cannot be animated");
  expectError(card(R"("keyFrames": {"Amount": [[0, 1], [1]]})"),
              "keyFrames.Amount[1]: must be [time, value]");
  expectError(card(R"("keyFrames": {"Amount": [[0, 1]]}, "permissions": ["Amount"])"),
              "is animated and cannot be changed");
}

}  // namespace model
