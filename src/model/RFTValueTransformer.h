#pragma once

#include <QTextDocument>
#include <memory>

namespace model {

/// Between the rich text of an attribute, a string that holds RTF, and the styled text that is
/// edited.
class RFTValueTransformer {
 public:
  /// Never null: a string that is no RTF is a plain text, an empty one an empty text.
  [[nodiscard]] static std::unique_ptr<QTextDocument> transformedValue(const QString& rtf);
  /// The whole text as RTF without attributes of the document; the empty string for an empty text
  /// and for none at all.
  [[nodiscard]] static QString reverseTransformedValue(const QTextDocument* text);
};

}  // namespace model
