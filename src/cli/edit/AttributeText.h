#pragma once

#include "cli/LoadFailure.h"
#include "model/Attribute.h"

namespace cli {

/// Values of attributes from texts, as commands and batches write them.
class AttributeText {
 public:
  using Read = tl::expected<model::AttributeValue, LoadFailure>;

  /// Relative names of files begin at the folder.
  explicit AttributeText(QString folder) : m_folder(std::move(folder)) {}

  /// A value of the attribute's type: what values files take, and also fonts ("Inter Medium 36",
  /// the name or the size alone), "@FILE" for the content of a text file, the picture of an image
  /// file, or the path of a file.
  [[nodiscard]] Read value(const model::Attribute& attribute, const QString& text) const;
  /// Of one input of a rich font, by its full key.
  [[nodiscard]] Read richFontValue(const model::Attribute& attribute, const QString& key,
                                   const QString& text) const;

  /// The name behind "@", from the folder on; fails when there is no such file.
  [[nodiscard]] tl::expected<QString, LoadFailure> filePath(const QString& text) const;
  /// The picture in the file that "@FILE" or a name means.
  [[nodiscard]] tl::expected<QImage, LoadFailure> picture(const QString& text) const;
  /// Of pixels and degrees.
  [[nodiscard]] static tl::expected<double, LoadFailure> number(const QString& key,
                                                                const QString& text);
  [[nodiscard]] static tl::expected<bool, LoadFailure> flag(const QString& key,
                                                            const QString& text);
  [[nodiscard]] static tl::expected<foundation::Color, LoadFailure> color(const QString& key,
                                                                          const QString& text);

 private:
  [[nodiscard]] Read textValue(const QString& text) const;
  QString m_folder;
};

}  // namespace cli
