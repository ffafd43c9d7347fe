#pragma once

#include <QByteArray>
#include <QTextDocument>

namespace foundation {

/// Writes a styled text as RTF in plain ASCII without attributes of the document. Everything that
/// the text leaves to the document's default font is written out. Equal texts give equal bytes.
class RtfWriter {
 public:
  /// No bytes for an empty document. Images, lists and frames of tables are not written; the text
  /// in them is.
  [[nodiscard]] static QByteArray write(const QTextDocument& document);
};

}  // namespace foundation
