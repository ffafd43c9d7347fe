#include "ComponentFiles.h"

namespace model {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using quartz::QuartzComposition;
using quartz::QuartzPatch;

namespace {

/// A macro whose inputs are splitters, one a port.
QuartzPatch* addMacro(QuartzComposition& file, const QString& key, const QStringList& inputs,
                      const QString& output) {
  QuartzPatch* macro = file.rootPatch()->addPatchWithClass(QStringLiteral("QCPatch"));
  macro->setKey(key);
  const PropertyDictionary state{{QStringLiteral("portClass"), QStringLiteral("QCNumberPort")}};
  for (const QString& input : inputs)
    macro->addPatchWithClass(QStringLiteral("QCSplitter"), state)
        ->publishPort(QStringLiteral("input"), input);
  if (!output.isEmpty())
    macro->addPatchWithClass(QStringLiteral("QCSplitter"), state)
        ->publishOutputPort(QStringLiteral("output"), output);
  return macro;
}

}  // namespace

ComponentFiles::ComponentFiles() {
  writeRenderer();
}

void ComponentFiles::writeRenderer() {
  QuartzComposition file;
  const auto q = [](const char* text) { return QString::fromLatin1(text); };
  addMacro(file, q("Scaling Factor"), {q("compositionWidth"), q("compositionHeight")}, {});
  addMacro(file, q("Renderer"),
           {q("image"), q("scaleFactorWidth"), q("scaleFactorHeight"), q("renderWidth"),
            q("renderHeight"), q("originX"), q("originY"), q("inputWidth"), q("inputHeight"),
            q("opacity"), q("zRotation")},
           {});
  const QStringList times{q("startTime"), q("endTime"), q("patchTime")};
  addMacro(file, q("Timer"), times, q("time"));
  addMacro(file, q("Enabler"), times, q("outputResult"));
  file.rootPatch()->addPatchWithClass(q("QCLogic"), {}, {})->setKey(q("Logic_1"));
  EXPECT_TRUE(file.writeToFile(path(q("Renderer.qtz")), false));

  QuartzComposition background;
  addMacro(background, q("Background"), {q("backgroundColor"), q("backgroundImage")}, {});
  EXPECT_TRUE(background.writeToFile(path(q("Background.qtz")), false));
  EXPECT_TRUE(background.writeToFile(path(q("FPS.qtz")), false));
}

QString ComponentFiles::writeComponent(const QString& name, const QList<Input>& inputs,
                                       bool timebased) {
  QuartzComposition file;
  QuartzPatch* content = file.rootPatch()->addPatchWithClass(QStringLiteral("QCPatch"));
  content->setKey(QStringLiteral("Content"));
  if (timebased) content->setTimebase(QStringLiteral("parent"));
  for (const Input& input : inputs) {
    content
        ->addPatchWithClass(QStringLiteral("QCSplitter"),
                            {{QStringLiteral("portClass"), input.portClass}})
        ->publishPort(QStringLiteral("input"), input.key);
    content->publishPort(input.key, input.key, input.label.isEmpty() ? input.key : input.label);
    if (!input.value.isNull()) file.setInputParameter(input.value, input.key);
  }
  content
      ->addPatchWithClass(QStringLiteral("QCSplitter"),
                          {{QStringLiteral("portClass"), QStringLiteral("QCGLImagePort")}})
      ->publishOutputPort(QStringLiteral("output"), QStringLiteral("outputImage"));
  content->publishOutputPort(QStringLiteral("outputImage"), QStringLiteral("outputImage"));
  EXPECT_TRUE(file.writeToFile(path(name), false));
  return path(name);
}

QString ComponentFiles::writeConsumer(const QString& name) {
  QuartzComposition file;
  QuartzPatch* clear = file.rootPatch()->addPatchWithClass(QStringLiteral("QCClear"));
  clear->publishPort(QStringLiteral("inputColor"), QStringLiteral("Paint"));
  EXPECT_TRUE(file.writeToFile(path(name), false));
  return path(name);
}

Graphic emptyGraphic() {
  Graphic graphic;
  graphic.composition = graphic.context->insert(
      std::make_unique<Composition>(VideoResolution(QStringLiteral("HD 1080p50"))));
  graphic->setDuration(2);
  return graphic;
}

}  // namespace model
