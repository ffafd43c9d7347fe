#include "components/ComponentCompiler.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

#include "components/MacroBuilder.h"
#include "components/SourceReader.h"

namespace components {

using foundation::PropertyDictionary;
using foundation::PropertyValue;
using foundation::Result;
using quartz::QuartzComposition;
using quartz::QuartzPatch;

namespace {

QuartzPatch& addFrame(QuartzPatch& root, const QString& name) {
  const PropertyDictionary state{
      {QStringLiteral("colorCorrection"), 1},
      {QStringLiteral("mipmapLevels"), 1},
      {QStringLiteral("noDepthBuffer"), true},
      {QStringLiteral("noFeedback"), true},
      {QStringLiteral("target"), QStringLiteral("GL_TEXTURE_RECTANGLE_EXT")},
      {QStringLiteral("version"), 1}};
  const PropertyDictionary inputs{{QStringLiteral("inputMipmaps"), false},
                                  {QStringLiteral("inputRender"), true},
                                  {QStringLiteral("inputTarget"), 0}};
  QuartzPatch* frame = root.addPatchWithClass(QStringLiteral("QCRenderInImage"), state, inputs);
  frame->setKey(QStringLiteral("Component"));
  frame->setName(name);
  return *frame;
}

/// Publishes in the root what the frame publishes, with its defaults, then its size and its image.
void publishFrame(QuartzComposition& composition, QuartzPatch& frame,
                  const QJsonObject& component) {
  for (const PropertyValue& value : frame.state().value(u"publishedInputPorts").array()) {
    const PropertyDictionary& entry = value.dictionary();
    const QString key = entry.value(u"key").toString();
    frame.publishPort(key, key, QuartzPatch::labelOfPublishedPort(entry));
    const PropertyValue& stored = entry.value(u"state").dictionary().value(u"value");
    if (!stored.isNull()) composition.setInputParameter(stored, key);
  }
  const auto size = [&](const QString& port, const QString& label, const char* field) {
    const int pixels = component.value(QLatin1String(field)).toInt(200);
    frame.setPortValue(pixels, port);
    frame.publishPort(port, port, label);
    composition.setInputParameter(pixels, port);
  };
  size(QStringLiteral("inputWidth"), QStringLiteral("Width"), "width");
  size(QStringLiteral("inputHeight"), QStringLiteral("Height"), "height");
  frame.publishOutputPort(QStringLiteral("outputImage"), QStringLiteral("outputImage"));
}

MacroBuilder::Failure build(QuartzComposition& composition, const QJsonObject& source) {
  static const QStringList allowed =
      QStringList{QStringLiteral("name"), QStringLiteral("description"),
                  QStringLiteral("component"), QStringLiteral("defaults")} +
      MacroBuilder::contentFields();
  static const QStringList allowedInFrame =
      QStringList{QStringLiteral("width"), QStringLiteral("height")} +
      MacroBuilder::contentFields();
  if (auto e = MacroBuilder::checkFields(source, allowed, QString())) return e;
  for (const QString& field : {QStringLiteral("name"), QStringLiteral("description")})
    if (source.contains(field)) composition.data().insert(field, source.value(field).toString());
  QuartzPatch& root = *composition.rootPatch();
  const QJsonObject component = source.value(QLatin1String("component")).toObject();
  if (component.isEmpty()) return MacroBuilder(root, QString()).build(source);

  const QString place = QStringLiteral("component");
  if (auto e = MacroBuilder::checkFields(component, allowedInFrame, place)) return e;
  // Everything inside draws into an image of the component's size.
  QuartzPatch& frame = addFrame(root, source.value(QLatin1String("name")).toString());
  MacroBuilder builder(frame, place, source.value(QLatin1String("defaults")).toObject());
  if (auto e = builder.build(component)) return e;
  publishFrame(composition, frame, component);
  return {};
}

}  // namespace

Result<std::unique_ptr<QuartzComposition>> ComponentCompiler::compile(const QJsonObject& source,
                                                                      const QString& fileName) {
  auto composition = QuartzComposition::composition();
  if (auto error = build(*composition, source)) {
    error->file = fileName;
    return tl::unexpected(*error);
  }
  return composition;
}

Result<void> ComponentCompiler::compileFile(const QString& sourcePath, const QString& outputPath) {
  const auto source = SourceReader::objectFromFile(sourcePath);
  if (!source) return tl::unexpected(source.error());
  const auto composition = compile(*source, sourcePath);
  if (!composition) return tl::unexpected(composition.error());
  if (!QDir().mkpath(QFileInfo(outputPath).absolutePath()))
    return foundation::failure(QStringLiteral("its folder cannot be made"), outputPath);
  return (*composition)->writeToFile(outputPath, false);
}

}  // namespace components
