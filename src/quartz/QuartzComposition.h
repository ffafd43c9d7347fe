#pragma once

#include <QImage>
#include <QSizeF>
#include <memory>

#include "foundation/Color.h"
#include "foundation/PropertyValue.h"
#include "foundation/Result.h"
#include "quartz/QuartzPatch.h"

namespace quartz {

/// A composition file (.qtz) as an editable tree: the top-level property list and the root patch.
/// Everything that it does not know is kept and written back.
class QuartzComposition {
 public:
  /// An empty composition: no top-level entries, a root of class "QCPatch".
  QuartzComposition();
  explicit QuartzComposition(foundation::PropertyDictionary dictionary);
  QuartzComposition(const QuartzComposition&) = delete;
  QuartzComposition& operator=(const QuartzComposition&) = delete;

  [[nodiscard]] static std::unique_ptr<QuartzComposition> composition();
  [[nodiscard]] static std::unique_ptr<QuartzComposition> compositionWithDictionary(
      foundation::PropertyDictionary dictionary);
  /// Reads any property-list encoding; fails when the file is no dictionary, a patch in it is
  /// malformed or patches are nested more than a hundred deep.
  [[nodiscard]] static foundation::Result<std::unique_ptr<QuartzComposition>> compositionWithFile(
      const QString& path);
  /// The same for bytes in memory; the name is for messages.
  [[nodiscard]] static foundation::Result<std::unique_ptr<QuartzComposition>> compositionWithData(
      const QByteArray& bytes, const QString& fileName);

  /// The top-level dictionary without "rootPatch".
  [[nodiscard]] const foundation::PropertyDictionary& data() const { return m_data; }
  [[nodiscard]] foundation::PropertyDictionary& data() { return m_data; }
  [[nodiscard]] const QuartzPatch* rootPatch() const { return m_rootPatch.get(); }
  [[nodiscard]] QuartzPatch* rootPatch() { return m_rootPatch.get(); }

  /// Width and height of the editor's viewer; empty when the file does not say.
  [[nodiscard]] QSizeF viewerSize() const;
  /// Stores 46 more than the height (the title bar of the viewer's window), which viewerSize() does
  /// not take off again. Does nothing in a composition without a viewer setting of four fields.
  void setViewerSize(const QSizeF& size);
  void setAspectRatio(float aspectRatio);
  void setInputParameter(const foundation::PropertyValue& value, const QString& key);
  [[nodiscard]] foundation::PropertyValue inputParameterForKey(const QString& key) const;

  /// A colour as files hold it: always opaque, single precision.
  [[nodiscard]] static foundation::PropertyValue quartzValueForObject(
      const foundation::Color& color);
  /// An image as files hold it: TIFF data (empty for a null image).
  [[nodiscard]] static foundation::PropertyValue quartzValueForObject(const QImage& image);
  [[nodiscard]] static foundation::PropertyValue quartzValueForObject(
      const foundation::PropertyValue& value) {
    return value;
  }

  /// Takes "pixelFormat" out of every dictionary of the tree; below a dictionary that held one the
  /// search ends.
  static void removePixelFormatSettingFromCollection(foundation::PropertyValue& collection);

  [[nodiscard]] foundation::Result<QByteArray> fileDataByRemovingPixelFormatSetting(
      bool remove) const;
  /// Replaces the file in one step; on failure an earlier file stays as it was.
  [[nodiscard]] foundation::Result<void> writeToFile(const QString& path,
                                                     bool removePixelFormatSetting) const;
  /// The whole file as a tree.
  [[nodiscard]] foundation::PropertyDictionary fileDictionary() const;

 private:
  foundation::PropertyDictionary m_data;
  std::unique_ptr<QuartzPatch> m_rootPatch;
};

}  // namespace quartz
