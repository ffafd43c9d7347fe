#include "quartz/QuartzPatch.h"

#include "quartz/QuartzComposition.h"

namespace quartz {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

namespace {

QString text(const char16_t* characters) {
  return QString::fromUtf16(characters);
}

QStringList publishedKeys(const QuartzPatch& patch) {
  QStringList keys;
  for (const PropertyValue& entry : patch.state().value(u"publishedInputPorts").array())
    keys.append(entry.dictionary().value(u"key").toString());
  return keys;
}

}  // namespace

TEST(QuartzPatch, KeysNodesByClassAndNamesPlugIns) {
  QuartzPatch patch;
  EXPECT_EQ(patch.addPatchWithClass(text(u"QCSprite"))->key(), text(u"QCSprite_1"));
  QuartzPatch* second = patch.addPatchWithClass(text(u"QCSprite"));
  EXPECT_EQ(second->key(), text(u"QCSprite_2"));
  QuartzPatch* plugIn = patch.addPatchWithClass(text(u"BRVPatchTimePlugIn"));
  EXPECT_EQ(plugIn->key(), text(u"QCPlugInPatch_1"));
  EXPECT_EQ(plugIn->patchClass(), text(u"QCPlugInPatch"));
  EXPECT_EQ(plugIn->identifier(), text(u"BRVPatchTimePlugIn"));
  EXPECT_EQ(patch.addPatchWithClass(text(u"BRVOther"))->key(), text(u"QCPlugInPatch_2"));

  // The lowest free number counts, also after a key was given up.
  second->setKey(text(u"Title"));
  EXPECT_EQ(patch.addPatchWithClass(text(u"QCSprite"))->key(), text(u"QCSprite_2"));
  EXPECT_EQ(patch.addPatchWithClass(text(u"QCSprite"))->key(), text(u"QCSprite_3"));
  const auto taken = patch.takeNode(patch.nodes().front().get());
  EXPECT_EQ(taken->parentPatch(), nullptr);
  EXPECT_EQ(patch.addPatchWithClass(text(u"QCSprite"))->key(), text(u"QCSprite_1"));

  // So does it for keys that are wanted twice.
  const auto keyedTitle = [&] {
    QuartzPatch* node = patch.addPatchWithClass(text(u"QCSprite"));
    node->setKey(patch.uniqueNodeKey(text(u"Title")));
    return node;
  };
  QuartzPatch* third = keyedTitle();
  EXPECT_EQ(third->key(), text(u"Title_2"));
  EXPECT_EQ(keyedTitle()->key(), text(u"Title_3"));
  third->setKey(text(u"Other"));
  EXPECT_EQ(patch.uniqueNodeKey(text(u"Title")), text(u"Title_2"));
  second->setKey(text(u"Other_2"));
  EXPECT_EQ(patch.uniqueNodeKey(text(u"Title")), text(u"Title"));
}

TEST(QuartzPatch, InputValuesOfANewNodeReplaceThoseOfItsState) {
  QuartzPatch patch;
  const PropertyDictionary state{{text(u"ivarInputPortStates"), 5}, {text(u"version"), 2}};
  EXPECT_EQ(patch.addPatchWithClass(text(u"QCClear"), state)->state(),
            (PropertyDictionary{{text(u"connections"), PropertyDictionary()},
                                {text(u"ivarInputPortStates"), PropertyDictionary()},
                                {text(u"publishedInputPorts"), PropertyArray()},
                                {text(u"version"), 2}}));
  const QuartzPatch* node = patch.addPatchWithClass(text(u"QCClear"), {}, {{text(u"inputX"), 3}});
  EXPECT_EQ(node->state().value(u"ivarInputPortStates"),
            PropertyValue(
                PropertyDictionary{{text(u"inputX"), PropertyDictionary{{text(u"value"), 3}}}}));
}

TEST(QuartzPatch, ConnectionsCountOnFromTheHighestNumber) {
  const PropertyDictionary existing{{text(u"connection_1"), PropertyDictionary()},
                                    {text(u"connection_7"), PropertyDictionary()},
                                    {text(u"odd"), PropertyDictionary()}};
  QuartzPatch patch(
      PropertyDictionary{{text(u"state"), PropertyDictionary{{text(u"connections"), existing}}}});
  patch.addConnectionFromComponent(text(u"A"), text(u"out"), text(u"B"), text(u"in"));
  patch.addConnectionFromComponent(text(u"A"), text(u"out"), text(u"C"), text(u"in"));
  const PropertyDictionary& connections = patch.state().value(u"connections").dictionary();
  EXPECT_EQ(connections.size(), 5);
  EXPECT_EQ(connections.value(u"connection_8"),
            PropertyValue(PropertyDictionary{{text(u"sourceNode"), text(u"A")},
                                             {text(u"sourcePort"), text(u"out")},
                                             {text(u"destinationNode"), text(u"B")},
                                             {text(u"destinationPort"), text(u"in")}}));
  EXPECT_TRUE(connections.contains(u"connection_9"));
}

TEST(QuartzPatch, SettingAPublishedValueMovesTheEntryToTheEnd) {
  QuartzPatch patch;
  QuartzPatch* node = patch.addPatchWithClass(text(u"QCSprite"));
  for (const QString& key : {text(u"a"), text(u"b"), text(u"c")}) node->publishPort(key, key);
  patch.setPortValue(5, text(u"a"));
  EXPECT_EQ(publishedKeys(patch), (QStringList{text(u"b"), text(u"c"), text(u"a")}));
  const auto entry = patch.infoForPublishedInputPortWithName(text(u"a"));
  EXPECT_EQ(entry.value(u"state").dictionary().value(u"value"), PropertyValue(5));
  // Reading looks at the entry itself, where nothing writes.
  EXPECT_TRUE(patch.portValueForKey(text(u"a")).isNull());
  EXPECT_FALSE(patch.state().contains(u"ivarInputPortStates"));
}

TEST(QuartzPatch, PortValuesGoToTheBuiltInPortsElseToTheCustomOnes) {
  const auto valueIn = [](const QuartzPatch& patch, QStringView group) {
    return patch.state().value(group).dictionary().value(u"p").dictionary().value(u"value");
  };
  const PropertyDictionary custom{{text(u"customInputPortStates"), PropertyDictionary()}};
  QuartzPatch onlyCustom(PropertyDictionary{{text(u"state"), custom}});
  onlyCustom.setPortValue(1, text(u"p"));
  EXPECT_EQ(valueIn(onlyCustom, u"customInputPortStates"), PropertyValue(1));
  EXPECT_FALSE(onlyCustom.setPortValue(2, text(u"p"), text(u"ivarInputPortStates")));

  PropertyDictionary both = custom;
  both.insert(text(u"ivarInputPortStates"), PropertyDictionary());
  QuartzPatch withBoth(PropertyDictionary{{text(u"state"), both}});
  withBoth.setPortValue(1, text(u"p"));
  EXPECT_EQ(valueIn(withBoth, u"ivarInputPortStates"), PropertyValue(1));
  EXPECT_TRUE(valueIn(withBoth, u"customInputPortStates").isNull());
  QuartzPatch neither;
  neither.setPortValue(1, text(u"p"));
  EXPECT_EQ(neither.data(), QuartzPatch().data());
}

TEST(QuartzPatch, PublishesInTheParent) {
  QuartzPatch patch;
  QuartzPatch* node = patch.addPatchWithClass(text(u"QCSprite"));
  node->publishPort(text(u"inputX"), text(u"x"));
  node->publishPort(text(u"inputY"), text(u"y"), text(u"Up"));
  node->publishOutputPort(text(u"outputA"), text(u"a"));
  EXPECT_EQ(patch.infoForPublishedInputPortWithName(text(u"x")),
            (PropertyDictionary{{text(u"key"), text(u"x")},
                                {text(u"node"), text(u"QCSprite_1")},
                                {text(u"port"), text(u"inputX")}}));
  const auto labelled = patch.infoForPublishedInputPortWithName(text(u"y"));
  EXPECT_TRUE(labelled.value(u"state").dictionary().contains(u"userInfo"));
  EXPECT_EQ(QuartzPatch::labelOfPublishedPort(labelled), text(u"Up"));
  const PropertyArray outputs = patch.state().value(u"publishedOutputPorts").array();
  ASSERT_EQ(outputs.size(), 1);
  EXPECT_EQ(QuartzPatch::labelOfPublishedPort(outputs[0].dictionary()), text(u"a"));
  patch.publishPort(text(u"x"), text(u"x"));  // a root has nowhere to publish
}

TEST(QuartzPatch, NamesAndPlacesNodes) {
  QuartzPatch patch;
  QuartzPatch* node = patch.addPatchWithClass(text(u"QCSprite"));
  EXPECT_EQ(node->name(), text(u"QCSprite_1"));
  EXPECT_EQ(node->position(), QPointF());
  node->setName(text(u"Grün 1"));
  node->setPosition({-200, 500.5});
  EXPECT_EQ(node->name(), text(u"Grün 1"));
  EXPECT_EQ(node->position(), QPointF(-200, 500.5));
  EXPECT_EQ(patch.patchWithName(text(u"Grün 1")), node);
  EXPECT_EQ(patch.patchWithName(text(u"QCSprite_1")), nullptr);
  node->addPatchWithClass(text(u"QCClear"));
  EXPECT_EQ(patch.patchWithName(text(u"QCClear_1")), nullptr);  // only direct children
  EXPECT_EQ(patch.copy()->patchWithName(text(u"Grün 1"))->position(), QPointF(-200, 500.5));
}

TEST(QuartzPatch, MergingMovesNodesAndPublishesThrough) {
  auto inner = QuartzComposition::composition();
  QuartzPatch* sprite = inner->rootPatch()->addPatchWithClass(text(u"QCSprite"));
  sprite->publishPort(text(u"inputX"), text(u"x"), text(u"Across"));
  sprite->publishPort(text(u"inputY"), text(u"y"));
  inner->rootPatch()->addConnectionFromComponent(text(u"I"), text(u"o"), text(u"J"), text(u"i"));
  inner->rootPatch()->setTimebase(text(u"local"));
  inner->setInputParameter(4.0, text(u"x"));

  auto outer = QuartzComposition::composition();
  QuartzPatch* wrapper = outer->rootPatch()->addPatchWithClass(text(u"QCRenderInImage"));
  wrapper->addConnectionFromComponent(text(u"K"), text(u"o"), text(u"L"), text(u"i"));
  wrapper->addNodesOfPatch(*inner->rootPatch());

  EXPECT_TRUE(inner->rootPatch()->nodes().empty());
  EXPECT_EQ(sprite->parentPatch(), wrapper);
  EXPECT_EQ(sprite->composition(), outer.get());
  EXPECT_EQ(wrapper->timebase(), PropertyValue(text(u"local")));
  const auto& connections = wrapper->state().value(u"connections").dictionary();
  ASSERT_EQ(connections.size(), 1);  // the other patch's connection of the same name wins
  EXPECT_EQ(connections.value(u"connection_1").dictionary().value(u"sourceNode").toString(),
            text(u"I"));
  EXPECT_EQ(publishedKeys(*wrapper), (QStringList{text(u"x"), text(u"y")}));
  EXPECT_FALSE(wrapper->infoForPublishedInputPortWithName(text(u"y")).contains(u"state"));
  const auto outside = outer->rootPatch()->infoForPublishedInputPortWithName(text(u"x"));
  EXPECT_EQ(outside.value(u"port").toString(), text(u"x"));
  EXPECT_EQ(outside.value(u"node").toString(), wrapper->key());
  EXPECT_EQ(QuartzPatch::labelOfPublishedPort(outside), text(u"Across"));
  EXPECT_EQ(QuartzPatch::labelOfPublishedPort(
                outer->rootPatch()->infoForPublishedInputPortWithName(text(u"y"))),
            text(u"y"));
}

TEST(QuartzPatch, ThousandsOfNodesAreQuick) {
  QuartzPatch patch;
  for (int i = 0; i < 20000; ++i) {
    const QuartzPatch* node = patch.addPatchWithClass(text(u"QCSprite"));
    patch.addConnectionFromComponent(node->key(), text(u"o"), node->key(), text(u"i"));
  }
  EXPECT_EQ(patch.nodes().back()->key(), text(u"QCSprite_20000"));
  EXPECT_TRUE(patch.state().value(u"connections").dictionary().contains(u"connection_20000"));
}

}  // namespace quartz
