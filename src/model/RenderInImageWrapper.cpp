#include "model/RenderInImageWrapper.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "quartz/QuartzComposition.h"

namespace model {

using foundation::PropertyDictionary;
using foundation::Result;

namespace {

const QString widthKey = QStringLiteral("inputWidth");
const QString heightKey = QStringLiteral("inputHeight");

quartz::QuartzPatch* addRenderInImage(quartz::QuartzPatch& root) {
  constexpr int size = 200;  // until a component drives the published inputs
  const PropertyDictionary state{
      {QStringLiteral("colorCorrection"), 1},
      {QStringLiteral("height"), size},
      {QStringLiteral("width"), size},
      {QStringLiteral("noDepthBuffer"), false},
      {QStringLiteral("noFeedback"), true},
      {QStringLiteral("pixelFormat"), QStringLiteral("RGBAf")},
      {QStringLiteral("target"), QStringLiteral("GL_TEXTURE_RECTANGLE_EXT")},
      {QStringLiteral("version"), 1}};
  const PropertyDictionary inputs{{heightKey, size},
                                  {QStringLiteral("inputMipmaps"), false},
                                  {QStringLiteral("inputRender"), true},
                                  {QStringLiteral("inputTarget"), 0},
                                  {widthKey, size}};
  return root.addPatchWithClass(QStringLiteral("QCRenderInImage"), state, inputs);
}

void wrap(quartz::QuartzComposition& wrapped, quartz::QuartzPatch& content) {
  quartz::QuartzPatch* wrapper = addRenderInImage(*wrapped.rootPatch());
  wrapper->addNodesOfPatch(content);
  wrapper->publishPort(widthKey, widthKey);
  wrapper->publishPort(heightKey, heightKey);
  wrapper->publishOutputPort(QStringLiteral("outputImage"), QStringLiteral("outputImage"));
}

}  // namespace

QString wrappedCompositionFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
         QStringLiteral("/com.brevant.Tessary");
}

Result<QString> compositionWrappedWithRenderInImage(const QString& path) {
  auto original = quartz::QuartzComposition::compositionWithFile(path);
  if (!original) return tl::unexpected(original.error());
  quartz::QuartzComposition wrapped((*original)->data());
  wrap(wrapped, *(*original)->rootPatch());

  const QString folder = wrappedCompositionFolder();
  const QString target = QDir(folder).filePath(
      QStringLiteral("%1-Wrapped.qtz").arg(QFileInfo(path).completeBaseName()));
  if (!QDir().mkpath(folder))
    return foundation::failure(QStringLiteral("the folder cannot be made"), folder);
  if (auto written = wrapped.writeToFile(target, true); !written)
    return tl::unexpected(written.error());
  return target;
}

}  // namespace model
