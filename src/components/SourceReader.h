#pragma once

#include <QJsonObject>
#include <QString>

#include "foundation/Result.h"

namespace components {

/// Reads the readable source of a component: JSON in which a line may hold a comment from "//" on,
/// and in which {"include": "other.json", …} stands for the content of that file (relative to the
/// including one). Fields beside "include" replace those of the included object; an included array
/// in an array is spliced into it. Errors name the file and, for JSON, the line.
class SourceReader {
 public:
  [[nodiscard]] static foundation::Result<QJsonObject> objectFromFile(const QString& path);

  /// The text with its comments blanked out, so that places stay the same.
  [[nodiscard]] static QByteArray withoutComments(QByteArray text);
};

}  // namespace components
