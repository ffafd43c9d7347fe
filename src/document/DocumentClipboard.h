#pragma once

#include <QMimeData>
#include <memory>

#include "foundation/Result.h"

namespace document {

class CompositionDocument;

/// Copying and pasting in a document. The data is the caller's to put on the clipboard; components
/// are kept under "ComponentPBoardType". Each command is one undo step.
class DocumentClipboard {
 public:
  explicit DocumentClipboard(CompositionDocument& document) : m_document(document) {}

  /// The selected components; nothing without a selection.
  [[nodiscard]] std::unique_ptr<QMimeData> copy() const;
  /// Copies, then removes the selected components.
  [[nodiscard]] std::unique_ptr<QMimeData> cut();
  [[nodiscard]] bool canCopy() const;

  /// Whether there is something to paste: components, an image or plain text.
  [[nodiscard]] static bool pasteboardIsValid(const QMimeData& data);
  /// Adds the first of these that is there: the components, an image component, a text component.
  /// What could not be loaded is added to the warnings; fails, and changes nothing, for data that
  /// is not what it says it is.
  [[nodiscard]] foundation::Result<void> paste(const QMimeData& data, QStringList& warnings);

 private:
  [[nodiscard]] foundation::Result<void> pasteComponents(const QByteArray& data,
                                                         QStringList& warnings);

  CompositionDocument& m_document;
};

}  // namespace document
