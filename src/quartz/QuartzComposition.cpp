#include "quartz/QuartzComposition.h"

#include <QBuffer>
#include <QSaveFile>

#include "foundation/PropertyList.h"

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
}  // namespace

QuartzComposition::QuartzComposition() : QuartzComposition(PropertyDictionary()) {}

QuartzComposition::QuartzComposition(const PropertyDictionary& dictionary) : m_data(dictionary) {
  const PropertyValue root = m_data.take(rootPatchKey);
  m_rootPatch = std::make_unique<QuartzPatch>(this, root.dictionary());
}

std::unique_ptr<QuartzComposition> QuartzComposition::composition() {
  return std::make_unique<QuartzComposition>();
}

std::unique_ptr<QuartzComposition> QuartzComposition::compositionWithDictionary(
    const PropertyDictionary& dictionary) {
  return std::make_unique<QuartzComposition>(dictionary);
}

Result<std::unique_ptr<QuartzComposition>> QuartzComposition::compositionWithFile(
    const QString& path) {
  const Result<PropertyValue> tree = PropertyList::fromFile(path);
  if (!tree) return tl::unexpected(tree.error());
  if (!tree->isDictionary())
    return foundation::failure(QStringLiteral("is not a composition: no dictionary"), path);
  return compositionWithDictionary(tree->dictionary());
}

Result<std::unique_ptr<QuartzComposition>> QuartzComposition::compositionWithData(
    const QByteArray& bytes, const QString& fileName) {
  const Result<PropertyValue> tree = PropertyList::fromData(bytes, fileName);
  if (!tree) return tl::unexpected(tree.error());
  if (!tree->isDictionary())
    return foundation::failure(QStringLiteral("is not a composition: no dictionary"), fileName);
  return compositionWithDictionary(tree->dictionary());
}

QSizeF QuartzComposition::viewerSize() const {
  const QStringList fields = m_data.value(viewerKey).toString().split(QLatin1Char(' '));
  if (fields.size() < 4) return {0, 0};
  return {fields[2].toFloat(), fields[3].toFloat()};
}

void QuartzComposition::setViewerSize(const QSizeF& size) {
  constexpr double titleBar = 46;
  if (!m_data.value(viewerKey).isString()) return;
  QStringList fields = m_data.value(viewerKey).toString().split(QLatin1Char(' '));
  Q_ASSERT(fields.size() >= 4);
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
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "TIFF");
  return bytes;
}

void QuartzComposition::removePixelFormatSettingFromCollection(PropertyValue& collection) {
  if (collection.isArray()) {
    for (PropertyValue& element : collection.editArray())
      removePixelFormatSettingFromCollection(element);
  } else if (collection.isDictionary()) {
    PropertyDictionary& dictionary = collection.editDictionary();
    if (dictionary.remove(pixelFormatKey)) return;
    for (const QString& key : dictionary.keys())
      removePixelFormatSettingFromCollection(dictionary.edit(key));
  }
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
  if (!bytes) qWarning("Error when serializing QTZ: %s", qPrintable(bytes.error().message));
  return bytes;
}

Result<void> QuartzComposition::writeToFile(const QString& path,
                                            bool removePixelFormatSetting) const {
  const Result<QByteArray> bytes = fileDataByRemovingPixelFormatSetting(removePixelFormatSetting);
  if (!bytes) return tl::unexpected(bytes.error());
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(*bytes) != bytes->size() || !file.commit())
    return foundation::failure(QStringLiteral("cannot be written: %1").arg(file.errorString()),
                               path);
  return {};
}

}  // namespace quartz
