#include "model/export/PlayoutExport.h"

#include <QFile>

#include "ComponentFiles.h"
#include "foundation/PropertyList.h"
#include "support/LogGuard.h"

namespace model {

using foundation::Color;
using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using quartz::QuartzPatch;

namespace {

QString q(const char* text) {
  return QString::fromUtf8(text);
}

class Playout : public testing::Test {
 protected:
  QuartzComponent* add(const QString& title, const QList<ComponentFiles::Input>& inputs,
                       bool timebased = false) {
    const QString path = m_files.writeComponent(q("part.qtz"), inputs, timebased);
    QStringList warnings;
    auto* component = m_graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
    EXPECT_NE(component, nullptr) << warnings.join(u' ').toStdString();
    component->setTitle(title);
    return component;
  }
  const quartz::QuartzComposition& build(ExportOptions options = {}) {
    m_export = std::make_unique<PlayoutExport>(*m_graphic, m_files.standardComponents(), options,
                                               m_keyFactory);
    const auto built = m_export->build();
    EXPECT_TRUE(built) << (built ? "" : built.error().text().toStdString());
    checkGraph();
    return m_export->file();
  }
  const QuartzPatch& root() const { return *m_export->file().rootPatch(); }
  const QuartzPatch* node(const char* key) const {
    for (const auto& candidate : root().nodes())
      if (candidate->key() == q(key)) return candidate.get();
    return nullptr;
  }
  QStringList nodeKeys() const {
    QStringList keys;
    for (const auto& candidate : root().nodes()) keys.append(candidate->key());
    return keys;
  }
  QStringList published(const char16_t* list) const {
    QStringList keys;
    for (const PropertyValue& entry : root().state().value(list).array())
      keys.append(entry.dictionary().value(u"key").toString());
    return keys;
  }
  QString label(const char* key) const {
    return QuartzPatch::labelOfPublishedPort(root().infoForPublishedInputPortWithName(q(key)));
  }
  PropertyValue parameter(const char* key) const {
    return m_export->file().inputParameterForKey(q(key));
  }
  /// The source of an input as "node.port"; empty when it is not connected.
  QString sourceOf(const char* destination, const char* port) const {
    for (const auto& [name, entry] : root().state().value(u"connections").dictionary()) {
      const PropertyDictionary& c = entry.dictionary();
      if (c.value(u"destinationNode").toString() == q(destination) &&
          c.value(u"destinationPort").toString() == q(port))
        return c.value(u"sourceNode").toString() + u'.' + c.value(u"sourcePort").toString();
    }
    return {};
  }
  PropertyValue portValue(const QuartzPatch& patch, const char* key) const {
    const auto entry = patch.infoForPublishedInputPortWithName(q(key));
    return entry.value(u"state").dictionary().value(u"value");
  }
  PropertyDictionary timeLine(qsizetype i) const {
    return node("TimeLine_Component_1")->state().value(u"timeLines").array()[i].dictionary();
  }

  ComponentFiles m_files;
  Graphic m_graphic = emptyGraphic();
  KeyFactory m_keyFactory = Composition::standardKey;
  std::unique_ptr<PlayoutExport> m_export;

 private:
  /// What must hold of every export.
  void checkGraph() const {
    QStringList keys = nodeKeys();
    EXPECT_EQ(keys.removeDuplicates(), 0) << keys.join(u' ').toStdString();
    for (const auto& [name, entry] : root().state().value(u"connections").dictionary()) {
      EXPECT_TRUE(keys.contains(entry.dictionary().value(u"sourceNode").toString()));
      EXPECT_TRUE(keys.contains(entry.dictionary().value(u"destinationNode").toString()));
    }
    QStringList inputs = published(u"publishedInputPorts");
    EXPECT_EQ(inputs.removeDuplicates(), 0) << inputs.join(u' ').toStdString();
    for (const PropertyValue& entry : root().state().value(u"publishedInputPorts").array())
      EXPECT_TRUE(keys.contains(entry.dictionary().value(u"node").toString()));
  }
};

const QString text = QStringLiteral("QCStringPort");
const QString number = QStringLiteral("QCNumberPort");
const QString color = QStringLiteral("QCColorPort");

}  // namespace

TEST_F(Playout, AnEmptyGraphicHasTheClockOnly) {
  build();
  EXPECT_EQ(nodeKeys(),
            (QStringList{q("QCClear_1"), q("Scaler"), q("stopframetimer"), q("QCPlugInPatch_1")}));
  EXPECT_EQ(published(u"publishedInputPorts"), QStringList{q("clear_enable")});
  EXPECT_EQ(published(u"publishedOutputPorts"), QStringList{q("active")});
  EXPECT_EQ(label("clear_enable"), q("Enable Clear"));
  EXPECT_EQ(parameter("clear_enable"), PropertyValue(true));
  EXPECT_EQ(node("QCPlugInPatch_1")->state().value(u"plugInState"),
            PropertyValue(PropertyDictionary{{q("compositionDuration"), 2.0},
                                             {q("enableStopframesInBRVApps"), false}}));
  EXPECT_EQ(node("QCPlugInPatch_1")->identifier(), q("BRVStopframesPlugIn"));
  EXPECT_EQ(node("stopframetimer")->identifier(), q("BRVPatchTimePlugIn"));
  EXPECT_EQ(node("stopframetimer")->name(), q("Stop Frame Timer"));
  EXPECT_EQ(node("stopframetimer")->position(), QPointF(-200, 500));
  EXPECT_EQ(sourceOf("QCPlugInPatch_1", "_time"), q("stopframetimer.outputTime"));
  EXPECT_EQ(portValue(*node("Scaler"), "compositionWidth"), PropertyValue(1920.0));
  EXPECT_FALSE(m_export->file().data().contains(u"editorViewerWindow"));
  // No clear colour: giving a node input values replaces those of its state.
  EXPECT_EQ(node("QCClear_1")->state().value(u"ivarInputPortStates"),
            PropertyValue(PropertyDictionary()));
}

TEST_F(Playout, StopFramesBringATriggerAndTimeLinesThatFollow) {
  m_graphic->addStopFrame(1.5, q("Out"));
  m_graphic->addStopFrame(0.5);
  add(q("Box"), {})->attributeForKey(q("opacity"))->addTimepoint(0, 0.0);
  build();
  EXPECT_EQ(published(u"publishedOutputPorts"), (QStringList{q("waitingForTrigger"), q("active")}));
  EXPECT_EQ(label("trigger"), q("trigger"));
  const auto settings = node("QCPlugInPatch_1")->state().value(u"plugInState").dictionary();
  EXPECT_EQ(
      settings.value(u"stopframes"),
      PropertyValue(PropertyArray{PropertyDictionary{{q("name"), q("Stopframe")}, {q("time"), 0.5}},
                                  PropertyDictionary{{q("name"), q("Out")}, {q("time"), 1.5}}}));
  EXPECT_EQ(node("TimeLine_Component_1")->timebase(), PropertyValue(q("external")));
  EXPECT_EQ(sourceOf("TimeLine_Component_1", "_time"), q("QCPlugInPatch_1.outputTime"));

  for (int i = 2; i < 256; ++i) m_graphic->addStopFrame(1);
  build();  // 256 count as none
  EXPECT_FALSE(published(u"publishedInputPorts").contains(q("trigger")));
}

TEST_F(Playout, ComponentsAreWiredToTheirRenderers) {
  QuartzComponent* component = add(q("Head line"), {}, true);
  component->setStartTime(0.5);
  component->setEndTime(9);
  component->setVisibleInCompositionEditor(false);
  build();
  const QuartzPatch* drawn = node("Component_1");
  EXPECT_EQ(drawn->name(), q("Head line"));
  EXPECT_EQ(drawn->position(), QPointF(500, 750));
  EXPECT_EQ(drawn->timebase(), PropertyValue(q("external")));
  EXPECT_EQ(sourceOf("Component_1", "_time"), q("timer_Renderer_1.time"));
  EXPECT_EQ(node("Renderer_1")->name(), q("Renderer 1"));
  EXPECT_EQ(node("Renderer_1")->position(), QPointF(750, 750));
  EXPECT_EQ(sourceOf("Renderer_1", "image"), q("Component_1.outputImage"));
  EXPECT_EQ(sourceOf("Renderer_1", "scaleFactorHeight"), q("Scaler.heightScalingFactor"));
  EXPECT_EQ(sourceOf("Renderer_1", "renderWidth"), q("Scaler.renderWidth"));
  EXPECT_EQ(sourceOf("Renderer_1", "_enable"), q("enablelogic_Renderer_1.outputResult"));
  EXPECT_EQ(sourceOf("enablelogic_Renderer_1", "inputValue1"),
            q("enabler_Renderer_1.outputResult"));
  for (const char* key : {"timer_Renderer_1", "enabler_Renderer_1"}) {
    EXPECT_EQ(sourceOf(key, "patchTime"), q("QCPlugInPatch_1.outputTime"));
    EXPECT_EQ(portValue(*node(key), "startTime"), PropertyValue(0.5));
    EXPECT_EQ(portValue(*node(key), "endTime"), PropertyValue(2.0));  // the graphic's end
  }
  EXPECT_EQ(label("Head_line_Enable"), q("Head line Enable"));
  EXPECT_EQ(parameter("Head_line_Enable"), PropertyValue(false));
  // What may not be changed is baked in and not published.
  EXPECT_EQ(portValue(*node("Renderer_1"), "opacity"), PropertyValue(1.0));
  EXPECT_EQ(published(u"publishedInputPorts"),
            (QStringList{q("clear_enable"), q("Head_line_Enable")}));
}

TEST_F(Playout, KeysAreUniqueAndLabelled) {
  for (int i = 0; i < 2; ++i) {
    QuartzComponent* component =
        add(q("Title"), {{q("Text"), text, q("Hello"), {}}, {q("Fixed"), number, 7.0, {}}});
    component->attributeForKey(q("Text"))->setPermissionToChange(true);
    component->attributeForKey(q("originX"))->setPermissionToChange(true);
  }
  m_graphic->components()[0]->setMarginX(10);
  build({false, true, false});
  EXPECT_EQ(label("Title_Text"), q("Title_Text"));
  EXPECT_EQ(label("Title_Text_1"), q("Title_Text_1"));
  EXPECT_EQ(parameter("Title_Text_1"), PropertyValue(q("Hello")));
  EXPECT_EQ(label("Title_originX_1"), q("Title_originX"));  // geometry: without the counter
  EXPECT_EQ(parameter("Title_originX").toDouble(), parameter("Title_originX_1").toDouble() - 10);
  EXPECT_EQ(label("Title_Enable_1"), q("Title_Enable"));
  const auto fixed = portValue(*node("Component_2"), "Fixed");
  EXPECT_EQ(fixed, PropertyValue(7.0));
  EXPECT_FALSE(published(u"publishedInputPorts").contains(q("Title_Fixed")));

  build();  // separated by blanks, which keys cannot have
  EXPECT_EQ(label("Title_Text_1"), q("Title Text 1"));
}

TEST_F(Playout, FilterInputsKeepTheirOwnKey) {
  QuartzComponent* component = add(q("Blur"), {{q("CIRadius"), number, 3.0, {}}});
  ASSERT_TRUE(component->attributeForKey(q("CIRadius"))->permissionToChange());
  build();
  EXPECT_EQ(label("CIRadius"), q("CIRadius Blur"));
  EXPECT_EQ(parameter("CIRadius"), PropertyValue(3.0));
}

TEST_F(Playout, AnimationBecomesTimeLines) {
  QuartzComponent* component = add(
      q("A"),
      {{q("Text"), text, q("x"), {}}, {q("Tint"), color, {}, {}}, {q("Amount"), number, 1.0, {}}});
  component->attributeForKey(q("Text"))->addTimepoint(0, q("one"));
  component->attributeForKey(q("Text"))->addTimepoint(1, q("two"));
  component->attributeForKey(q("Tint"))->addTimepoint(0, Color{1, 0, 0, 1});
  component->attributeForKey(q("Amount"))->addTimepoint(1, 5.0);
  component->attributeForKey(q("inputWidth"))->addTimepoint(0, 0.0);
  component->attributeForKey(q("inputWidth"))->addTimepoint(1, 100.0);
  component->attributeForKey(q("originX"))->addTimepoint(0, 0.0);
  build();
  EXPECT_EQ(node("TimeLine_Component_1")->name(), q("TimeLine A"));
  EXPECT_EQ(node("TimeLine_Component_1")->state().value(u"timeLines").array().size(), 7);
  const QList<const char*> order{"Text",   "Tint_red",   "Tint_green", "Tint_blue",
                                 "Amount", "inputWidth", "originX"};
  for (qsizetype i = 0; i < order.size(); ++i) {
    EXPECT_EQ(timeLine(i).value(u"identifier").toString(), q(order[i]));
    EXPECT_EQ(timeLine(i).value(u"portNumber"), PropertyValue(qint64(i + 1)));
    EXPECT_FALSE(timeLine(i).value(u"color").toData().isEmpty());
  }
  EXPECT_EQ(sourceOf("Multiplexer_Text", "inputIndex"), q("TimeLine_Component_1.output_1"));
  EXPECT_EQ(sourceOf("Component_1", "Text"), q("Multiplexer_Text.output"));
  const auto& sources = node("Multiplexer_Text")->state();
  EXPECT_EQ(sources.value(u"inputCount"), PropertyValue(2));
  EXPECT_EQ(sources.value(u"customInputPortStates").dictionary().value(u"source_1"),
            PropertyValue(PropertyDictionary{{q("value"), q("two")}}));
  EXPECT_EQ(sourceOf("ColorMaker_Tint", "input1"), q("TimeLine_Component_1.output_2"));
  EXPECT_EQ(sourceOf("ColorMaker_Tint", "input3"), q("TimeLine_Component_1.output_4"));
  EXPECT_EQ(sourceOf("Component_1", "Tint"), q("ColorMaker_Tint.outputColor"));
  EXPECT_EQ(node("ColorMaker_Tint")->identifier(), q("rgb"));
  EXPECT_EQ(sourceOf("Component_1", "Amount"), q("TimeLine_Component_1.output_5"));
  // A size drives both, once; a place only the renderer.
  EXPECT_EQ(sourceOf("Component_1", "inputWidth"), q("TimeLine_Component_1.output_6"));
  EXPECT_EQ(sourceOf("Renderer_1", "inputWidth"), q("TimeLine_Component_1.output_6"));
  EXPECT_EQ(sourceOf("Renderer_1", "originX"), q("TimeLine_Component_1.output_7"));
  EXPECT_EQ(sourceOf("Component_1", "originX"), QString());
}

TEST_F(Playout, TwoComponentsMayAnimateInputsOfTheSameName) {
  for (const char* title : {"A", "B"}) {
    QuartzComponent* component = add(q(title), {{q("Text"), text, q("x"), {}}});
    component->attributeForKey(q("Text"))->addTimepoint(0, q(title));
  }
  build();
  EXPECT_EQ(sourceOf("Component_1", "Text"), q("Multiplexer_Text.output"));
  EXPECT_EQ(sourceOf("Component_2", "Text"), q("Multiplexer_Text_2.output"));
}

TEST_F(Playout, BackgroundsOnlyForPreviews) {
  m_graphic->setBackgroundMode(BackgroundMode::SolidColor);
  m_graphic->setBackgroundColor({1, 0, 0, 0.5});
  build();
  EXPECT_EQ(node("Background"), nullptr);
  build({true, false, true});
  EXPECT_EQ(nodeKeys().at(1), q("Background"));
  EXPECT_EQ(nodeKeys().last(), q("Background_2"));  // the frame-rate overlay
  EXPECT_EQ(portValue(*node("Background"), "backgroundColor").dictionary().value(u"alpha"),
            PropertyValue(1.0));
  m_graphic->setBackgroundMode(BackgroundMode::Image);
  m_graphic->setBackgroundMovie(q("movie.mov"));
  build({true, false, false});
  EXPECT_EQ(node("Background"), nullptr);  // the standard component is not there: no complaint
}

TEST_F(Playout, TheSameGraphicGivesTheSameBytesAndFailuresWriteNothing) {
  QuartzComponent* component = add(q("A"), {{q("Text"), text, q("x"), {}}});
  component->attributeForKey(q("Text"))->setPermissionToChange(true);
  const auto bytes = [&](const char* name) {
    PlayoutExport playout(*m_graphic, m_files.standardComponents(), {}, m_keyFactory);
    EXPECT_TRUE(playout.writeToPath(m_files.path(q(name))));
    QFile file(m_files.path(q(name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  };
  const QByteArray first = bytes("1.qtz");
  EXPECT_FALSE(first.isEmpty());
  EXPECT_EQ(first, bytes("2.qtz"));

  support::LogGuard::expectMessage(q("Unable to write output file!"));
  PlayoutExport nowhere(*m_graphic, m_files.standardComponents(), {}, m_keyFactory);
  const auto unwritten = nowhere.writeToPath(m_files.path(q("no/where.qtz")));
  ASSERT_FALSE(unwritten);
  EXPECT_EQ(unwritten.error().message, q("Unable to write output file!"));

  PlayoutExport without(*m_graphic, StandardComponents(q("/nowhere")), {}, m_keyFactory);
  EXPECT_FALSE(without.writeToPath(m_files.path(q("1.qtz"))));
  QFile untouched(m_files.path(q("1.qtz")));
  ASSERT_TRUE(untouched.open(QIODevice::ReadOnly));
  EXPECT_EQ(untouched.readAll(), first);

  QFile::copy(m_files.path(q("Background.qtz")), m_files.path(q("Renderer2.qtz")));
  QFile::remove(m_files.path(q("Renderer.qtz")));
  QFile::rename(m_files.path(q("Renderer2.qtz")), m_files.path(q("Renderer.qtz")));
  support::LogGuard::expectMessage(q("Unable to find scaling patch"));
  PlayoutExport scalerless(*m_graphic, m_files.standardComponents(), {}, m_keyFactory);
  EXPECT_FALSE(scalerless.build());
}

TEST(PublishedKeys, CleansWhatKeysCannotHold) {
  const auto cleaned = &Composition::stringByTrimmingInvalidKeyCharacters;
  EXPECT_EQ(cleaned(q("Größe 1/2: α_β")), q("Größe_1_2__α_β"));
  EXPECT_EQ(cleaned(q("a\U0001F600b")), q("a_b"));
}

}  // namespace model
