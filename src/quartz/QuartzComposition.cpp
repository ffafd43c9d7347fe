#include "quartz/QuartzComposition.h"

#include <QFileInfo>
#include <QSaveFile>

#include "foundation/PropertyList.h"
#include "quartz/TiffEncoder.h"

namespace quartz {

using foundation::Color;
using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyList;
using foundation::PropertyValue;
using foundation::Result;

namespace {
const QString rootPatchKey = QStringLiteral("rootPatch");
const QString parametersKey = QStringLiteral("inputParameters");
const QString viewerKey = QStringLiteral("editorViewerWindow");
const QString pixelFormatKey = QStringLiteral("pixelFormat");
constexpr int deepestPatch = 100;  // a hundred macros inside each other; real files reach about ten

/// What is wrong with the patch or one below it; empty when nothing is.
QString patchFault(const PropertyValue& patch, int depth) {
  if (depth > deepestPatch) return QStringLiteral("patches are nested too deeply");
  if (!patch.isDictionary()) return QStringLiteral("a patch is not a dictionary");
  const PropertyValue& state = patch.dictionary().value(u"state");
  if (state.isNull()) return {};
  if (!state.isDictionary()) return QStringLiteral("a patch's state is not a dictionary");
  const PropertyValue& nodes = state.dictionary().value(u"nodes");
  if (!nodes.isNull() && !nodes.isArray()) return QStringLiteral("the nodes are not a list");
  for (const PropertyValue& node : nodes.array())
    if (QString fault = patchFault(node, depth + 1); !fault.isEmpty()) return fault;
  return {};
}

Result<std::unique_ptr<QuartzComposition>> compositionFromTree(Result<PropertyValue>&& tree,
                                                               const QString& fileName) {
  if (!tree) return tl::unexpected(tree.error());
  if (!tree->isDictionary())
    return foundation::failure(QStringLiteral("is not a composition: no dictionary"), fileName);
  const PropertyValue& root = tree->dictionary().value(rootPatchKey);
  if (const QString fault = root.isNull() ? QString() : patchFault(root, 0); !fault.isEmpty())
    return foundation::failure(QStringLiteral("is not a composition: ") + fault, fileName);
  return QuartzComposition::compositionWithDictionary(std::move(tree->editDictionary()));
}

/// The collection without the setting, or nothing when it holds none: what does not change stays
/// shared with the live tree.
std::optional<PropertyValue> withoutPixelFormat(const PropertyValue& collection) {
  std::optional<PropertyValue> changed;
  if (collection.isArray()) {
    for (qsizetype i = 0; i < collection.array().size(); ++i) {
      std::optional<PropertyValue> element = withoutPixelFormat(collection.array()[i]);
      if (!element) continue;
      if (!changed) changed = collection;
      changed->editArray()[i] = std::move(*element);
    }
  } else if (collection.isDictionary() && collection.dictionary().contains(pixelFormatKey)) {
    changed = collection;
    changed->editDictionary().remove(pixelFormatKey);
  } else if (collection.isDictionary()) {
    for (const auto& [key, value] : collection.dictionary()) {
      std::optional<PropertyValue> element = withoutPixelFormat(value);
      if (!element) continue;
      if (!changed) changed = collection;
      changed->editDictionary().edit(key) = std::move(*element);
    }
  }
  return changed;
}
}  // namespace

QuartzComposition::QuartzComposition() : QuartzComposition(PropertyDictionary()) {}

QuartzComposition::QuartzComposition(PropertyDictionary dictionary)
    : m_data(std::move(dictionary)) {
  PropertyValue root = m_data.take(rootPatchKey);
  m_rootPatch = std::make_unique<QuartzPatch>(this, std::move(root.editDictionary()));
}

std::unique_ptr<QuartzComposition> QuartzComposition::composition() {
  return std::make_unique<QuartzComposition>();
}

std::unique_ptr<QuartzComposition> QuartzComposition::compositionWithDictionary(
    PropertyDictionary dictionary) {
  return std::make_unique<QuartzComposition>(std::move(dictionary));
}

Result<std::unique_ptr<QuartzComposition>> QuartzComposition::compositionWithFile(
    const QString& path) {
  return compositionFromTree(PropertyList::fromFile(path), path);
}

Result<std::unique_ptr<QuartzComposition>> QuartzComposition::compositionWithData(
    const QByteArray& bytes, const QString& fileName) {
  return compositionFromTree(PropertyList::fromData(bytes, fileName), fileName);
}

QSizeF QuartzComposition::viewerSize() const {
  const QStringList fields = m_data.value(viewerKey).toString().split(QLatin1Char(' '));
  if (fields.size() < 4) return {0, 0};
  return {fields[2].toFloat(), fields[3].toFloat()};
}

void QuartzComposition::setViewerSize(const QSizeF& size) {
  constexpr double titleBar = 46;
  QStringList fields = m_data.value(viewerKey).toString().split(QLatin1Char(' '));
  if (fields.size() < 4) return;
  fields[2] = QString::number(size.width(), 'f', 6);
  fields[3] = QString::number(size.height() + titleBar, 'f', 6);
  m_data.insert(viewerKey, fields.join(QLatin1Char(' ')));
}

void QuartzComposition::setAspectRatio(float aspectRatio) {
  m_data.insert(QStringLiteral("aspectRatio"), PropertyValue::fromFloat(aspectRatio));
}

void QuartzComposition::setInputParameter(const PropertyValue& value, const QString& key) {
  m_data.edit(parametersKey).editDictionary().insert(key, value);
}

PropertyValue QuartzComposition::inputParameterForKey(const QString& key) const {
  return m_data.value(parametersKey).dictionary().value(key);
}

PropertyValue QuartzComposition::quartzValueForObject(const Color& color) {
  const auto single = [](double v) { return PropertyValue::fromFloat(static_cast<float>(v)); };
  return PropertyDictionary{{QStringLiteral("alpha"), single(1)},
                            {QStringLiteral("blue"), single(color.blue)},
                            {QStringLiteral("green"), single(color.green)},
                            {QStringLiteral("red"), single(color.red)}};
}

PropertyValue QuartzComposition::quartzValueForObject(const QImage& image) {
  return tiffData(image);
}

void QuartzComposition::removePixelFormatSettingFromCollection(PropertyValue& collection) {
  if (std::optional<PropertyValue> changed = withoutPixelFormat(collection))
    collection = std::move(*changed);
}

PropertyDictionary QuartzComposition::fileDictionary() const {
  PropertyDictionary file = m_data;
  file.insert(rootPatchKey, m_rootPatch->patchDataForFileData());
  return file;
}

Result<QByteArray> QuartzComposition::fileDataByRemovingPixelFormatSetting(bool remove) const {
  // The tree is a value of its own, so nothing has to be parsed back to edit it.
  PropertyValue file = fileDictionary();
  if (remove) removePixelFormatSettingFromCollection(file);
  Result<QByteArray> bytes = PropertyList::toXml(file);
  if (!bytes) qCritical("Error when serializing QTZ: %s", qPrintable(bytes.error().text()));
  return bytes;
}

Result<void> QuartzComposition::writeToFile(const QString& path,
                                            bool removePixelFormatSetting) const {
  const Result<QByteArray> bytes = fileDataByRemovingPixelFormatSetting(removePixelFormatSetting);
  if (!bytes) return tl::unexpected(bytes.error());
  // The new file takes the name of the old one, which must not be a device or a pipe.
  if (const QFileInfo old(path); old.exists() && !old.isFile())
    return foundation::failure(QStringLiteral("cannot be written: it is no ordinary file"), path);
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(*bytes) != bytes->size() || !file.commit())
    return foundation::failure(QStringLiteral("cannot be written: %1").arg(file.errorString()),
                               path);
  return {};
}

}  // namespace quartz
