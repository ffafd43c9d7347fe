#pragma once

#include <QByteArrayView>
#include <QTextDocument>
#include <memory>

namespace foundation {

/// Reads RTF into a styled text. Reading cannot fail: damaged RTF gives what can be read of it, and
/// bytes that are no RTF give themselves as plain text (UTF-8, else Western European). At most 64
/// MiB, 100,000 paragraphs and four million characters are read; the rest is left out.
class RtfReader {
 public:
  [[nodiscard]] static bool isRtf(QByteArrayView bytes);
  /// Sizes are points; font families are the names of the font table, whether here or not. Text of
  /// the automatic colour has no foreground. Works without an application object.
  [[nodiscard]] static std::unique_ptr<QTextDocument> read(QByteArrayView bytes);
};

}  // namespace foundation
